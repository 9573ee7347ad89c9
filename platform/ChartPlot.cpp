// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ChartPlot.h"

#include "platform/text.h"

#include <QFontMetrics>

#include <array>
#include <cmath>

namespace kalvo {
namespace {

/// From here on curves are drawn thin and without smoothing: a smoothed line costs ten times a plain one.
constexpr int kManyPoints = 20000;
constexpr int kMarkersOnACurve = 10;
constexpr int kLegendLabelWidth = 170; ///< pixels; longer labels are cut with dots
constexpr double kLegendShare = 0.4;   ///< of the width at most
constexpr double kRainShare = 0.3;     ///< of the flow panel's height

/// Ticks through the program's own number texts, so that no locale changes them.
class PlainTicker : public QCPAxisTicker
{
protected:
    QString getTickLabel(double tick, const QLocale&, QChar, int) override { return tickLabel(tick, m_step); }
    double getTickStep(const QCPRange& range) override { return m_step = QCPAxisTicker::getTickStep(range); }
    double m_step = 1.0;
};

class HourTicker : public PlainTicker
{
protected:
    QString getTickLabel(double tick, const QLocale&, QChar, int) override { return hourTickLabel(tick, m_step); }
    double getTickStep(const QCPRange& range) override { return m_step = hourTickStep(range.size(), 8); }
    int getSubTickCount(double step) override { return step >= 6.0 ? 5 : 3; }
};

class LogTicker : public QCPAxisTickerLog
{
protected:
    QString getTickLabel(double tick, const QLocale&, QChar, int) override { return generalText(tick); }
};

QColor colorOf(Rgb color)
{
    return QColor::fromRgb(static_cast<QRgb>(color));
}

QCPScatterStyle markerOf(ChartMarker marker, const QColor& color, const QColor& paper)
{
    static constexpr std::array<QCPScatterStyle::ScatterShape, 7> kShapes = {
        QCPScatterStyle::ssCircle,          QCPScatterStyle::ssSquare, QCPScatterStyle::ssTriangle,
        QCPScatterStyle::ssDiamond,         QCPScatterStyle::ssCross,  QCPScatterStyle::ssPlus,
        QCPScatterStyle::ssTriangleInverted};
    return {kShapes[static_cast<size_t>(marker)], QPen(color, 1.2), QBrush(paper), 7.0};
}

Qt::PenStyle penStyleOf(ChartDash dash)
{
    constexpr std::array<Qt::PenStyle, 4> kStyles = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};
    return kStyles[static_cast<size_t>(dash)];
}

QSharedPointer<QCPGraphDataContainer> dataOf(const QVector<double>& x, const QVector<double>& y)
{
    QVector<QCPGraphData> points;
    points.reserve(x.size());
    for (qsizetype i = 0; i < x.size(); ++i)
        if (std::isfinite(x[i]))
            points.append({x[i], std::isfinite(y[i]) ? y[i] : qQNaN()}); // a NaN as value parts the line
    QSharedPointer<QCPGraphDataContainer> data(new QCPGraphDataContainer);
    data->set(points);
    return data;
}

} // namespace

ChartPlot::ChartPlot(QWidget* parent) : QCustomPlot(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setLocale(QLocale::c());
    setAutoAddPlottableToLegend(false);
    setPlottingHints(QCP::phCacheLabels | QCP::phFastPolylines);
    m_flow = axisRect();
    m_flow->setupFullAxesBox(true);
    m_flow->insetLayout()->take(legend);
    delete legend;
    m_margins = new QCPMarginGroup(this);
    m_flow->setMarginGroup(QCP::msLeft | QCP::msRight, m_margins);
    m_flow->setMinimumMargins(QMargins(12, 8, 12, 8));
    xAxis->setTicker(QSharedPointer<HourTicker>::create());
    yAxis->setTicker(QSharedPointer<PlainTicker>::create());
    connect(xAxis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, [this](const QCPRange& range) {
        if (m_rainRect)
            m_rainRect->axis(QCPAxis::atBottom)->setRange(range);
    });
    connect(this, &QCustomPlot::afterReplot, this, [this] { m_stale = false; });
    buildCrosshair();
    colorAll();
    layOut();
}

// -- What is shown ---------------------------------------------------------------------------------------------------

void ChartPlot::showSeries(const QVector<ChartSeries>& all)
{
    for (QCPGraph* graph : m_graphs)
        removeGraph(graph);
    m_graphs.clear();
    m_series = all;
    for (const ChartSeries& one : all) {
        QCPGraph* graph = addGraph(xAxis, yAxis);
        graph->setData(dataOf(one.x, one.y));
        graph->setAdaptiveSampling(true);
        m_graphs.append(graph);
    }
    markSeries(all, -1);
}

void ChartPlot::markSeries(const QVector<ChartSeries>& all, int selected)
{
    m_series = all;
    m_selected = selected;
    for (qsizetype s = 0; s < m_graphs.size(); ++s)
        m_graphs[s]->setVisible(!m_series[s].excluded);
    applyLooks();
    layOut();
}

void ChartPlot::showRain(const ChartRain& rain)
{
    m_rain = rain;
    layOut();
}

void ChartPlot::setTitle(const QString& title)
{
    m_title = title;
    layOut();
}

void ChartPlot::setAxisTitles(const QString& time, const QString& value)
{
    xAxis->setLabel(time);
    yAxis->setLabel(value);
    drawSoon();
}

void ChartPlot::setLegendShown(bool shown)
{
    m_legendShown = shown;
    layOut();
}

void ChartPlot::setOptions(const ChartOptions& options)
{
    m_options = options;
    yAxis->setScaleType(options.logValues ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
    yAxis->setTicker(options.logValues ? QSharedPointer<QCPAxisTicker>(new LogTicker)
                                       : QSharedPointer<QCPAxisTicker>(new PlainTicker));
    colorAll();
    applyLooks();
    drawSoon();
}

void ChartPlot::setPaper(bool dark)
{
    m_dark = dark;
    colorAll();
    applyLooks();
    layOut();
}

// -- Looks -----------------------------------------------------------------------------------------------------------

bool ChartPlot::isHeavy() const
{
    qsizetype points = 0;
    for (const ChartSeries& one : m_series)
        points += one.excluded ? 0 : one.x.size();
    return points > kManyPoints;
}

void ChartPlot::applyLooks()
{
    const bool heavy = isHeavy();
    setNotAntialiasedElements(heavy ? QCP::aePlottables | QCP::aeScatters : QCP::aeNone);
    setAntialiasedElements(heavy ? QCP::aeNone : QCP::aePlottables | QCP::aeScatters);
    for (int s = 0; s < m_graphs.size(); ++s) {
        const ChartLook look = chartLook(s, m_dark);
        QPen pen(colorOf(look.color));
        // Width 0 is one pixel of the screen whatever its scaling, which is drawn without a stroker.
        const double width = heavy ? 0.0 : m_options.lineWidth;
        pen.setWidthF(s == m_selected ? std::max(1.0, width) + 1.4 : width);
        pen.setStyle(penStyleOf(look.dash));
        m_graphs[s]->setPen(pen);
    }
    applyMarkers();
}

void ChartPlot::applyMarkers()
{
    const QColor paper = colorOf(m_dark ? kDarkPaper : kLightPaper);
    const double shown = xAxis->range().size();
    for (int s = 0; s < m_graphs.size(); ++s) {
        const ChartSeries& one = m_series[s];
        if (!m_options.markers || one.x.size() < 2) {
            m_graphs[s]->setScatterStyle(one.x.size() < 2 ? QCPScatterStyle::ssDisc : QCPScatterStyle::ssNone);
            continue;
        }
        const ChartLook look = chartLook(s, m_dark);
        m_graphs[s]->setScatterStyle(markerOf(look.marker, colorOf(look.color), paper));
        // Spread over what is in view, whatever the zoom.
        const double whole = std::max(1e-12, std::abs(one.x.last() - one.x.first()));
        const double inView = static_cast<double>(one.x.size()) * std::min(1.0, shown / whole);
        const double skip = std::isfinite(inView) ? inView / kMarkersOnACurve : 0.0;
        m_graphs[s]->setScatterSkip(std::max(0, static_cast<int>(skip) - 1));
    }
}

void ChartPlot::colorAxis(QCPAxis& axis)
{
    const QColor ink = m_dark ? QColor(224, 226, 230) : QColor(40, 40, 40);
    const QColor line = m_dark ? QColor(128, 131, 137) : QColor(110, 110, 110);
    axis.setBasePen(line);
    axis.setTickPen(line);
    axis.setSubTickPen(line);
    axis.setTickLabelColor(ink);
    axis.setLabelColor(ink);
    const bool isBorder = axis.axisType() == QCPAxis::atTop || axis.axisType() == QCPAxis::atRight;
    axis.setTicks(!isBorder);
    axis.setSubTicks(!isBorder);
    axis.grid()->setVisible(m_options.gridLines && !isBorder);
    axis.grid()->setPen(QPen(m_dark ? QColor(62, 64, 68) : QColor(222, 222, 222), 0.0));
    axis.grid()->setZeroLinePen(QPen(line, 0.0));
}

void ChartPlot::colorAll()
{
    setBackground(QBrush(colorOf(m_dark ? kDarkPaper : kLightPaper)));
    for (QCPAxis* axis : m_flow->axes())
        colorAxis(*axis);
    const QPen hair(m_dark ? QColor(240, 200, 120) : QColor(150, 90, 0), 0.0, Qt::DashLine);
    m_crossTime->setPen(hair);
    m_crossValue->setPen(hair);
}

// -- Layout ----------------------------------------------------------------------------------------------------------

void ChartPlot::layOut()
{
    if (m_rainRect)
        for (QCPGraph* graph : m_rainRect->graphs())
            removeGraph(graph);
    QCPLayoutGrid& page = *plotLayout();
    page.take(m_flow);
    page.clear();
    m_titleText = nullptr;
    m_rainRect = nullptr;
    m_table = nullptr;
    m_legendRows.clear();
    if (!m_title.isEmpty()) {
        m_titleText = new QCPTextElement(this, m_title, QFont(font().family(), 13, QFont::Bold));
        m_titleText->setTextColor(xAxis->labelColor());
        m_titleText->setMargins(QMargins(4, 6, 4, 0));
        page.addElement(page.rowCount(), 0, m_titleText);
    }
    if (!m_rain.times.isEmpty())
        addRainPanel();
    page.addElement(page.rowCount(), 0, m_flow);
    if (m_rainRect)
        page.setRowStretchFactor(page.rowCount() - 2, kRainShare);
    if (m_legendShown)
        addLegend();
    drawSoon();
}

void ChartPlot::addRainPanel()
{
    m_rainRect = new QCPAxisRect(this);
    m_rainRect->setupFullAxesBox(false);
    m_rainRect->setMarginGroup(QCP::msLeft | QCP::msRight, m_margins);
    m_rainRect->setMinimumMargins(QMargins(12, 8, 12, 0));
    for (QCPAxis* axis : m_rainRect->axes())
        colorAxis(*axis);
    QCPAxis& times = *m_rainRect->axis(QCPAxis::atBottom);
    QCPAxis& depths = *m_rainRect->axis(QCPAxis::atLeft);
    times.setTicker(xAxis->ticker());
    times.setTickLabels(false);
    times.setRange(xAxis->range());
    depths.setTicker(QSharedPointer<PlainTicker>::create());
    depths.ticker()->setTickCount(3);
    depths.setRangeReversed(true);
    depths.setLabel(m_rain.unit.isEmpty() ? QStringLiteral("Rain") : QStringLiteral("Rain (%1)").arg(m_rain.unit));
    double most = 0.0;
    for (const double depth : m_rain.depths)
        if (std::isfinite(depth))
            most = std::max(most, depth);
    depths.setRange(0.0, most > 0.0 ? most * 1.05 : 1.0);

    // Steps to the right value: what is told at an ordinate fell in the time that ends there.
    QCPGraph* bars = addGraph(&times, &depths);
    bars->setData(dataOf(m_rain.times, m_rain.depths));
    bars->setLineStyle(QCPGraph::lsStepRight);
    const QColor blue = m_dark ? QColor(110, 170, 255) : QColor(40, 100, 190);
    bars->setPen(QPen(blue, 0.0));
    bars->setBrush(QColor(blue.red(), blue.green(), blue.blue(), 150));
    if (!m_rain.label.isEmpty()) {
        auto* name = new QCPTextElement(this, m_rain.label, QFont(font().family(), 8));
        name->setTextColor(depths.labelColor());
        name->setMargins(QMargins(4, 2, 8, 4));
        m_rainRect->insetLayout()->addElement(name, Qt::AlignRight | Qt::AlignBottom);
    }
    plotLayout()->addElement(plotLayout()->rowCount(), 0, m_rainRect);
}

void ChartPlot::addLegend()
{
    QFont small = font();
    small.setPointSizeF(8.5);
    const int rowHeight = QFontMetrics(small).height() + 4;
    int count = 0;
    for (const ChartSeries& one : m_series)
        count += one.excluded ? 0 : 1;
    if (count == 0)
        return;
    const int rows = std::max(1, (height() - 90) / rowHeight);
    const int columnWidth = kLegendLabelWidth + 45;
    const int most = std::max(1, static_cast<int>(kLegendShare * width()) / columnWidth);
    const int columns = std::clamp((count + rows - 1) / rows, 1, most);

    m_table = new QCPLegend;
    m_table->setFont(small);
    m_table->setTextColor(xAxis->labelColor());
    m_table->setBorderPen(Qt::NoPen);
    m_table->setBrush(Qt::NoBrush);
    m_table->setIconSize(28, rowHeight - 5);
    m_table->setRowSpacing(1);
    m_table->setMargins(QMargins(4, 4, 8, 4));
    m_table->setFillOrder(QCPLayoutGrid::foRowsFirst);
    m_table->setWrap(rows);
    // Beside the curves from the top down; the empty place below takes the height that it does not need.
    m_table->setMaximumSize(QWIDGETSIZE_MAX, (std::min(rows, count) + 1) * (rowHeight + 1));
    auto* column = new QCPLayoutGrid;
    column->setRowSpacing(0);
    plotLayout()->addElement(plotLayout()->rowCount() - 1, 1, column);
    column->addElement(0, 0, m_table);
    column->addElement(1, 0, new QCPLayoutElement(this));
    column->setRowStretchFactor(1, 0.001);
    m_table->setLayer(QStringLiteral("legend"));
    plotLayout()->setColumnStretchFactor(0, 1.0);
    plotLayout()->setColumnStretchFactor(1, 0.001);
    fillLegend(*m_table, rows * columns, count);
}

void ChartPlot::fillLegend(QCPLegend& table, int room, int count)
{
    const QFontMetrics measure(table.font());
    for (int s = 0; s < m_graphs.size(); ++s) {
        if (m_series[s].excluded)
            continue;
        if (m_legendRows.size() == room - 1 && count > room) {
            auto* rest = new QCPTextElement(this, QStringLiteral("and %1 more").arg(count - room + 1), table.font());
            rest->setTextColor(table.textColor());
            table.addElement(rest);
            return;
        }
        m_graphs[s]->setName(measure.elidedText(m_series[s].label, Qt::ElideMiddle, kLegendLabelWidth));
        table.addItem(new QCPPlottableLegendItem(&table, m_graphs[s]));
        m_legendRows.append(s);
    }
}

void ChartPlot::resizeEvent(QResizeEvent* event)
{
    QCustomPlot::resizeEvent(event);
    if (m_legendShown && event->size().height() != event->oldSize().height())
        layOut(); // other rows of the legend fit
    m_stale = true;
}

// -- Ranges and places -----------------------------------------------------------------------------------------------

void ChartPlot::setTimeRange(ChartRange range)
{
    xAxis->setRange(range.lower, range.upper);
    applyMarkers();
    drawSoon();
}

void ChartPlot::setValueRange(ChartRange range)
{
    yAxis->setRange(range.lower, range.upper);
    drawSoon();
}

ChartRange ChartPlot::timeRange() const
{
    return {xAxis->range().lower, xAxis->range().upper};
}

ChartRange ChartPlot::valueRange() const
{
    return {yAxis->range().lower, yAxis->range().upper};
}

ChartScale ChartPlot::timeScale()
{
    const QRect rect = flowRect();
    return {timeRange(), static_cast<double>(rect.left()), static_cast<double>(rect.left() + rect.width()), false};
}

ChartScale ChartPlot::valueScale()
{
    const QRect rect = flowRect();
    return {valueRange(), static_cast<double>(rect.top() + rect.height()), static_cast<double>(rect.top()),
            m_options.logValues};
}

QRect ChartPlot::flowRect()
{
    if (m_stale)
        drawNow();
    return m_flow->rect();
}

QRect ChartPlot::titleRect()
{
    if (m_stale)
        drawNow();
    return m_titleText ? m_titleText->outerRect() : QRect();
}

int ChartPlot::legendSeriesAt(QPoint point)
{
    if (m_stale)
        drawNow();
    for (int i = 0; m_table && i < m_legendRows.size() && i < m_table->elementCount(); ++i)
        if (const QCPLayoutElement* row = m_table->elementAt(i); row && row->outerRect().contains(point))
            return m_legendRows[i];
    return -1;
}

// -- Cross hairs and drawing -----------------------------------------------------------------------------------------

void ChartPlot::buildCrosshair()
{
    // A buffer of its own, so that moving the cursor does not draw all curves again.
    layer(QStringLiteral("overlay"))->setMode(QCPLayer::lmBuffered);
    for (QCPItemStraightLine** line : {&m_crossTime, &m_crossValue}) {
        *line = new QCPItemStraightLine(this);
        (*line)->setLayer(QStringLiteral("overlay"));
        (*line)->setClipAxisRect(m_flow);
        (*line)->setVisible(false);
        for (QCPItemPosition* position : (*line)->positions()) {
            position->setAxes(xAxis, yAxis);
            position->setAxisRect(m_flow);
        }
    }
    m_crossTime->point1->setTypeY(QCPItemPosition::ptAxisRectRatio);
    m_crossTime->point2->setTypeY(QCPItemPosition::ptAxisRectRatio);
    m_crossValue->point1->setTypeX(QCPItemPosition::ptAxisRectRatio);
    m_crossValue->point2->setTypeX(QCPItemPosition::ptAxisRectRatio);
}

void ChartPlot::showCrosshair(double time, double value)
{
    m_crossTime->point1->setCoords(time, 0.0);
    m_crossTime->point2->setCoords(time, 1.0);
    m_crossValue->point1->setCoords(0.0, value);
    m_crossValue->point2->setCoords(1.0, value);
    m_crossTime->setVisible(true);
    m_crossValue->setVisible(!m_options.logValues || value > 0.0);
    layer(QStringLiteral("overlay"))->replot();
}

void ChartPlot::hideCrosshair()
{
    if (!m_crossTime->visible())
        return;
    m_crossTime->setVisible(false);
    m_crossValue->setVisible(false);
    layer(QStringLiteral("overlay"))->replot();
}

void ChartPlot::drawSoon()
{
    m_stale = true;
    replot(rpQueuedReplot);
}

void ChartPlot::drawNow()
{
    replot(rpQueuedRefresh);
}

} // namespace kalvo
