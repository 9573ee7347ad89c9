// SPDX-License-Identifier: GPL-3.0-or-later
// The drawing half of a chart, for Chart's own source files. Everyone else goes through platform/Chart.h.
#pragma once

#include "platform/Chart.h"
#include "platform/ChartSeries.h"
#include "platform/CustomPlot.h"

namespace kalvo {

/// Lays out and draws what a Chart shows; takes no input of its own.
class ChartPlot : public QCustomPlot
{
    Q_OBJECT

public:
    explicit ChartPlot(QWidget* parent);

    void showSeries(const QVector<ChartSeries>& all);
    void showRain(const ChartRain& rain); ///< without times: none
    void setTitle(const QString& title);
    void setAxisTitles(const QString& time, const QString& value);
    void setLegendShown(bool shown);
    void setOptions(const ChartOptions& options);
    void setPaper(bool dark);
    bool isDark() const { return m_dark; }
    /// Hides and shows curves as `excluded` says, and draws the selected one (-1: none) thicker.
    void markSeries(const QVector<ChartSeries>& all, int selected);

    void setTimeRange(ChartRange range);
    void setValueRange(ChartRange range);
    ChartRange timeRange() const;
    ChartRange valueRange() const;
    // Where things stand, laid out anew if need be.
    ChartScale timeScale();
    ChartScale valueScale();
    QRect flowRect();
    QRect titleRect(); ///< empty without a title
    /// The curve whose row of the legend lies under a point; -1 for none.
    int legendSeriesAt(QPoint point);

    /// Cross hairs through a place of the flow panel; drawn alone, without the curves.
    void showCrosshair(double time, double value);
    void hideCrosshair();
    void drawSoon();
    void drawNow();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();
    void fillLegend(QCPLegend& table, int room, int count);
    void addLegend();
    void buildCrosshair();
    void colorAxis(QCPAxis& axis);
    void colorAll();
    void applyLooks();
    void applyMarkers();
    void addRainPanel();
    bool isHeavy() const;

    QVector<ChartSeries> m_series; ///< shares its data with the chart's own
    ChartRain m_rain;
    QString m_title;
    ChartOptions m_options;
    bool m_dark = false, m_legendShown = true, m_stale = true;
    int m_selected = -1;
    QVector<QCPGraph*> m_graphs;
    QVector<int> m_legendRows; ///< which curve each row of the legend names
    QCPAxisRect* m_flow = nullptr;
    QCPAxisRect* m_rainRect = nullptr;
    QCPMarginGroup* m_margins = nullptr;
    QCPTextElement* m_titleText = nullptr;
    QCPLegend* m_table = nullptr;
    QCPItemStraightLine* m_crossTime = nullptr;
    QCPItemStraightLine* m_crossValue = nullptr;
};

} // namespace kalvo
