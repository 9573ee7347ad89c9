// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ChartExport.h"
#include "platform/ChartSeries.h"

#include <QPoint>
#include <QWidget>

class QLabel;
class QLineEdit;
class QRubberBand;

namespace kalvo {

class ChartPlot;

/// How a chart looks, as its user sets it.
struct ChartOptions
{
    bool gridLines = true;
    bool markers = true;    ///< some on each curve, spread out, so that colour is never the only difference
    bool logValues = false; ///< values of 0 and below are gaps then
    double lineWidth = 1.6; ///< pixels; charts of very many points are drawn thinner

    bool operator==(const ChartOptions&) const = default;
};

/// Curves over one time axis, with a legend, a title that is edited in place, rain hung upside down above when there is
/// any, and a line below that reads values. Follows the palette, light or dark; pictures are always on white.
///
/// The user: wheel zooms (over an axis that axis alone; Ctrl values, Shift times), drag moves, Shift and drag zooms
/// into a rectangle, Home or a double click on empty paper shows all. A click on a point or curve selects. Left and
/// Right move a cursor along the curve (with Ctrl ten points), Up and Down change the curve, + and - zoom, Esc takes
/// the cursor away.
///
/// @code
///     auto* chart = new Chart(this);
///     chart->setAxisTitles("Time", "hours", "Flow", "cfs");
///     chart->setSeries({{"SITE  1  1  1", hours, flows}});
///     QString why;
///     const QByteArray png = chart->picture(PictureKind::Png, why);
/// @endcode
class Chart : public QWidget
{
    Q_OBJECT

public:
    explicit Chart(QWidget* parent = nullptr);
    ~Chart() override;

    // -- What it shows --------------------------------------------------------------------------------------------
    /// Replaces all curves and shows the whole; points of a curve that `x` and `y` do not both have are dropped.
    void setSeries(QVector<ChartSeries> all);
    const QVector<ChartSeries>& series() const { return m_series; }
    /// Takes a curve out of the picture, or brings it back. Indexes outside are ignored.
    void setExcluded(int series, bool excluded);
    void bringAllBack();
    /// Bars from the top in a panel of their own over the same times; `depths[i]` fell in the time that ends at
    /// `times[i]`. Empty times take the panel away.
    void setRain(const QVector<double>& times, const QVector<double>& depths, const QString& unit,
                 const QString& label = QString());
    const ChartRain& rain() const { return m_rain; }

    // -- Titles, legend, options ----------------------------------------------------------------------------------
    const QString& title() const { return m_title; }
    void setTitle(const QString& title);
    /// Lays a text box over the title; Enter, a double click on it or leaving it takes the text, Esc does not.
    void editTitle();
    /// The object name of that text box.
    void setTitleEditorName(const QString& name) { m_titleEditorName = name; }
    QRect titleRect() const;
    /// Units stand in brackets behind the titles, empty ones are left out.
    void setAxisTitles(const QString& time, const QString& timeUnit, const QString& value, const QString& valueUnit);
    /// Units that the line below tells, for charts whose axes name none.
    void setReadOutUnits(const QString& timeUnit, const QString& valueUnit);
    QString timeTitle() const { return m_timeTitle; }
    QString valueTitle() const { return m_valueTitle; }
    void setLegendShown(bool shown);
    bool isLegendShown() const { return m_legendShown; }
    const ChartOptions& options() const { return m_options; }
    void setOptions(const ChartOptions& options);

    // -- What part of it is in view -------------------------------------------------------------------------------
    ChartRange timeRange() const;
    ChartRange valueRange() const;
    void setTimeRange(ChartRange range);
    void setValueRange(ChartRange range);
    void showWhole();
    /// Shows `factor` times as much about the middle.
    void zoom(double factor);

    // -- Reading it -----------------------------------------------------------------------------------------------
    /// The data point within a few pixels of a place; the curve there; the place of a point, (-1, -1) for one that is
    /// not there. Pixels of this widget.
    ChartPoint pointAt(QPoint place) const;
    int seriesAt(QPoint place) const;
    QPoint placeOf(ChartPoint point) const;
    int selectedSeries() const { return m_selected; } ///< -1: none
    void selectSeries(int series);
    ChartPoint cursorPoint() const { return m_cursor; }
    /// Puts the cross hairs on a point and reads it; none takes them away.
    void setCursorPoint(ChartPoint point);
    /// The tool tip of the point that was just clicked; it goes when the pointer moves off the point.
    void showPointTip(ChartPoint point, const QString& text);

    // -- Pictures -------------------------------------------------------------------------------------------------
    /// On white paper, as large as on the screen where `size` is empty. Empty with the reason in `why` when it failed.
    QByteArray picture(PictureKind kind, QString& why, double scale = 2.0, QSize size = {});
    /// Draws anew at once: for measuring.
    void drawNow();

Q_SIGNALS:
    void pointClicked(int series, int index);
    void pointLeft(); ///< the pointer moved off the point whose tip was shown
    void seriesDoubleClicked(int series);
    void selectionChanged(int series);
    void excludedChanged();
    void titleEdited(const QString& title);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isSeries(int series) const { return series >= 0 && series < m_series.size(); }
    bool isPoint(ChartPoint point) const;
    void takePalette();
    void showReadOut();
    void closeTitleEditor(bool take);
    void click(QPoint place);
    void dragTo(QPoint place);
    void zoomInto(const QRect& band);
    void dropTip();
    bool moveCursor(const QKeyEvent& key);

    ChartPlot* m_plot;
    QLabel* m_readOut;
    QLineEdit* m_titleEditor = nullptr;
    QRubberBand* m_band = nullptr;
    QVector<ChartSeries> m_series;
    ChartRain m_rain;
    ChartOptions m_options;
    QString m_title, m_timeTitle, m_timeUnit, m_valueTitle, m_valueUnit;
    QString m_titleEditorName;
    ChartPoint m_cursor, m_tipped;
    int m_selected = -1;
    bool m_legendShown = true, m_isWhole = true;
    struct Drag
    {
        bool isOn = false, hasMoved = false;
        QPoint from;
        ChartScale time, value;
    } m_drag;
};

} // namespace kalvo
