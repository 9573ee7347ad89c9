// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Chart.h"

#include "platform/ChartPlot.h"
#include "platform/DarkPaper.h"
#include "platform/text.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <cmath>

namespace kalvo {
namespace {

constexpr double kHitRadius = 7.0; ///< pixels

QString withUnit(const QString& title, const QString& unit)
{
    return unit.isEmpty() ? title : QStringLiteral("%1 (%2)").arg(title, unit);
}

QString numberText(double value)
{
    return generalText(roundHalfEven(value, 6));
}

const QString& readOutHint()
{
    static const QString hint = QStringLiteral("Arrow keys read values. Wheel: zoom, drag: move, Home: all.");
    return hint;
}

} // namespace

Chart::Chart(QWidget* parent) : QWidget(parent), m_plot(new ChartPlot(this)), m_readOut(new QLabel(this))
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAccessibleName(QStringLiteral("Chart"));
    m_titleEditorName = QStringLiteral("TitleEditor");
    m_readOut->setObjectName(QStringLiteral("ReadOut"));
    m_readOut->setTextFormat(Qt::PlainText);
    m_readOut->setContentsMargins(8, 2, 8, 3);
    m_readOut->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_plot, 1);
    layout->addWidget(m_readOut);
    takePalette();
    showReadOut();
    connect(m_plot, &QCustomPlot::afterReplot, this, [this] {
        if (m_titleEditor)
            m_titleEditor->setGeometry(titleRect());
    });
}

Chart::~Chart() = default;

// -- What it shows ---------------------------------------------------------------------------------------------------

void Chart::setSeries(QVector<ChartSeries> all)
{
    for (ChartSeries& one : all) {
        const qsizetype count = std::min(one.x.size(), one.y.size());
        one.x.resize(count);
        one.y.resize(count);
    }
    m_series = std::move(all);
    m_selected = -1;
    setCursorPoint({});
    dropTip();
    m_plot->showSeries(m_series);
    showWhole();
}

void Chart::setExcluded(int series, bool excluded)
{
    if (!isSeries(series) || m_series[series].excluded == excluded)
        return;
    m_series[series].excluded = excluded;
    if (excluded && m_selected == series)
        m_selected = -1;
    if (excluded && m_cursor.series == series)
        setCursorPoint({});
    if (excluded && m_tipped.series == series)
        dropTip();
    m_plot->markSeries(m_series, m_selected);
    if (m_isWhole)
        showWhole();
    Q_EMIT excludedChanged();
}

void Chart::bringAllBack()
{
    for (int s = 0; s < m_series.size(); ++s)
        setExcluded(s, false);
}

void Chart::setRain(const QVector<double>& times, const QVector<double>& depths, const QString& unit,
                    const QString& label)
{
    m_rain = {label, times, depths, unit};
    const qsizetype count = std::min(times.size(), depths.size());
    m_rain.times.resize(count);
    m_rain.depths.resize(count);
    m_plot->showRain(m_rain);
    if (m_isWhole)
        showWhole();
}

// -- Titles, legend, options -----------------------------------------------------------------------------------------

void Chart::setTitle(const QString& title)
{
    m_title = title;
    m_plot->setTitle(title);
}

void Chart::editTitle()
{
    if (m_titleEditor)
        return;
    if (m_title.isEmpty())
        m_plot->setTitle(QStringLiteral(" ")); // makes the place where the editor stands
    const QRect place = titleRect();
    m_titleEditor = new QLineEdit(m_title, this);
    m_titleEditor->setObjectName(m_titleEditorName);
    m_titleEditor->setAlignment(Qt::AlignHCenter);
    QFont large = font();
    large.setPointSize(13);
    large.setBold(true);
    m_titleEditor->setFont(large);
    m_titleEditor->setGeometry(place);
    m_titleEditor->selectAll();
    m_titleEditor->installEventFilter(this);
    m_titleEditor->show();
    m_titleEditor->setFocus();
    connect(m_titleEditor, &QLineEdit::editingFinished, this, [this] { closeTitleEditor(true); });
}

void Chart::closeTitleEditor(bool take)
{
    if (!m_titleEditor)
        return;
    QLineEdit* editor = m_titleEditor;
    m_titleEditor = nullptr; // hiding it takes its focus, which comes here again
    const QString text = editor->text();
    editor->setObjectName(QString());
    editor->hide();
    editor->deleteLater();
    setFocus();
    setTitle(take ? text : m_title);
    if (take)
        Q_EMIT titleEdited(m_title);
}

QRect Chart::titleRect() const
{
    return m_plot->titleRect();
}

void Chart::setAxisTitles(const QString& time, const QString& timeUnit, const QString& value, const QString& valueUnit)
{
    m_timeTitle = withUnit(time, timeUnit);
    m_valueTitle = withUnit(value, valueUnit);
    m_plot->setAxisTitles(m_timeTitle, m_valueTitle);
    setReadOutUnits(timeUnit, valueUnit);
}

void Chart::setReadOutUnits(const QString& timeUnit, const QString& valueUnit)
{
    m_timeUnit = timeUnit;
    m_valueUnit = valueUnit;
    showReadOut();
}

void Chart::setLegendShown(bool shown)
{
    m_legendShown = shown;
    m_plot->setLegendShown(shown);
}

void Chart::setOptions(const ChartOptions& options)
{
    const bool scaleChanges = options.logValues != m_options.logValues;
    m_options = options;
    m_plot->setOptions(options);
    if (scaleChanges)
        showWhole();
}

// -- What part of it is in view --------------------------------------------------------------------------------------

ChartRange Chart::timeRange() const
{
    return m_plot->timeRange();
}

ChartRange Chart::valueRange() const
{
    return m_plot->valueRange();
}

void Chart::setTimeRange(ChartRange range)
{
    // A picture of nothing, or of less than the numbers can tell, helps nobody and ends in divisions by 0.
    const ChartRange whole = wholeTimeRange(m_series, m_rain);
    if (!std::isfinite(range.size()) || range.size() < 1e-6 * whole.size() || range.size() > 1e3 * whole.size())
        return;
    m_plot->setTimeRange(range);
    m_isWhole = false;
}

void Chart::setValueRange(ChartRange range)
{
    const ChartRange whole = wholeValueRange(m_series, m_options.logValues);
    const bool isPossible = m_options.logValues
                                ? range.lower > 1e-12 * whole.lower && range.upper < 1e12 * whole.upper &&
                                      range.upper > range.lower * 1.0001
                                : range.size() >= 1e-6 * whole.size() && range.size() <= 1e3 * whole.size();
    if (!std::isfinite(range.size()) || !isPossible)
        return;
    m_plot->setValueRange(range);
    m_isWhole = false;
}

void Chart::showWhole()
{
    m_plot->setTimeRange(wholeTimeRange(m_series, m_rain));
    m_plot->setValueRange(wholeValueRange(m_series, m_options.logValues));
    m_isWhole = true;
}

void Chart::zoom(double factor)
{
    const ChartScale time = m_plot->timeScale(), value = m_plot->valueScale();
    setTimeRange(time.zoomed(0.5 * (time.pixelLower + time.pixelUpper), factor));
    setValueRange(value.zoomed(0.5 * (value.pixelLower + value.pixelUpper), factor));
}

// -- Reading it ------------------------------------------------------------------------------------------------------

bool Chart::isPoint(ChartPoint point) const
{
    return isSeries(point.series) && !m_series[point.series].excluded && point.index >= 0 &&
           point.index < m_series[point.series].x.size() && hasPoint(m_series[point.series], point.index);
}

ChartPoint Chart::pointAt(QPoint place) const
{
    if (!m_plot->flowRect().adjusted(-4, -4, 4, 4).contains(place))
        return {};
    return nearestPoint(m_series, m_plot->timeScale(), m_plot->valueScale(), place.x(), place.y(), kHitRadius);
}

int Chart::seriesAt(QPoint place) const
{
    const int row = m_plot->legendSeriesAt(place);
    if (row >= 0 || !m_plot->flowRect().adjusted(-4, -4, 4, 4).contains(place))
        return row;
    return nearestSeries(m_series, m_plot->timeScale(), m_plot->valueScale(), place.x(), place.y(), kHitRadius);
}

QPoint Chart::placeOf(ChartPoint point) const
{
    if (!isSeries(point.series) || point.index < 0 || point.index >= m_series[point.series].x.size())
        return {-1, -1};
    const ChartSeries& series = m_series.at(point.series);
    const double x = m_plot->timeScale().pixel(series.x.at(point.index));
    const double y = m_plot->valueScale().pixel(series.y.at(point.index));
    if (!std::isfinite(x))
        return {-1, -1};
    return {qRound(x), std::isfinite(y) ? qRound(y) : -1}; // a log axis has no place for 0 and below
}

void Chart::selectSeries(int series)
{
    const int selected = isSeries(series) && !m_series[series].excluded ? series : -1;
    if (selected == m_selected)
        return;
    m_selected = selected;
    m_plot->markSeries(m_series, selected);
    Q_EMIT selectionChanged(selected);
}

void Chart::setCursorPoint(ChartPoint point)
{
    m_cursor = isPoint(point) ? point : ChartPoint{};
    if (m_cursor.isNone())
        m_plot->hideCrosshair();
    else
        m_plot->showCrosshair(m_series[m_cursor.series].x[m_cursor.index], m_series[m_cursor.series].y[m_cursor.index]);
    showReadOut();
}

void Chart::showReadOut()
{
    QString text = readOutHint();
    if (isPoint(m_cursor)) {
        const ChartSeries& series = m_series[m_cursor.series];
        const auto quantity = [](double value, const QString& unit) {
            return unit.isEmpty() ? numberText(value) : numberText(value) + QLatin1Char(' ') + unit;
        };
        text = QStringLiteral("%1:  %2 at %3   (point %4 of %5)")
                   .arg(series.label, quantity(series.y[m_cursor.index], m_valueUnit),
                        quantity(series.x[m_cursor.index], m_timeUnit))
                   .arg(m_cursor.index + 1)
                   .arg(series.x.size());
    }
    m_readOut->setText(text);
    setAccessibleDescription(text);
}

// -- Pictures --------------------------------------------------------------------------------------------------------

QByteArray Chart::picture(PictureKind kind, QString& why, double scale, QSize size)
{
    const bool dark = m_plot->isDark();
    const ChartPoint cursor = m_cursor;
    const QSize onScreen = m_plot->size();
    setCursorPoint({});
    if (!size.isEmpty())
        m_plot->resize(size);
    m_plot->setPaper(false); // lays out anew, the legend for this size
    const QByteArray bytes = plotPicture(*m_plot, m_plot->size(), kind, scale, why);
    m_plot->resize(onScreen);
    m_plot->setPaper(dark);
    setCursorPoint(cursor);
    return bytes;
}

void Chart::drawNow()
{
    m_plot->drawNow();
}

void Chart::takePalette()
{
    m_plot->setPaper(hasDarkPaper(palette()));
}

void Chart::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        takePalette();
}

} // namespace kalvo
