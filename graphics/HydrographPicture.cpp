// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/HydrographPicture.h"

#include "platform/ChartExport.h"
#include "platform/ChartSeries.h"

#include <QSaveFile>

#include "platform/CustomPlot.h"

#include <array>

namespace kalvo {
namespace {

constexpr int kWidth = 1200;
constexpr int kPanelHeight = 330;
constexpr int kSingleHeight = 700;
constexpr int kMostPanels = 12;
constexpr int kMostCurves = 16;

QPen penOf(int index)
{
    constexpr std::array<Qt::PenStyle, 4> kDashes = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};
    const ChartLook look = chartLook(index, false);
    QPen pen(QColor::fromRgb(static_cast<QRgb>(look.color)));
    pen.setWidthF(1.8);
    pen.setStyle(kDashes[static_cast<size_t>(look.dash)]);
    return pen;
}

struct Panel
{
    QString title; ///< station; empty when all share the axes
    QVector<const HydrographSeries*> curves;
};

QVector<Panel> panelsOf(const QVector<HydrographSeries>& series)
{
    QVector<Panel> byStation;
    for (const HydrographSeries& one : series) {
        if (byStation.isEmpty() || byStation.last().title != one.station)
            byStation.append({one.station, {}});
        byStation.last().curves.append(&one);
    }
    const bool oneEach =
        std::all_of(byStation.cbegin(), byStation.cend(), [](const Panel& p) { return p.curves.size() == 1; });
    if (!oneEach)
        return byStation;
    Panel shared;
    for (const Panel& panel : byStation)
        shared.curves.append(panel.curves);
    return {shared};
}

QString curveName(const HydrographSeries& one, bool withStation)
{
    QStringList parts;
    if (withStation)
        parts << one.station;
    if (one.ratio > 1 || !withStation)
        parts << QStringLiteral("Ratio %1").arg(one.ratio);
    if (one.plan > 1)
        parts << QStringLiteral("Plan %1").arg(one.plan);
    if (one.jd > 1)
        parts << QStringLiteral("JD %1").arg(one.jd);
    return parts.join(QLatin1Char(' '));
}

void drawCurve(QCustomPlot& plot, QCPAxisRect& rect, const HydrographSeries& one, const QString& name, int index)
{
    QCPGraph* graph = plot.addGraph(rect.axis(QCPAxis::atBottom), rect.axis(QCPAxis::atLeft));
    QVector<double> hours(one.minutes.size());
    std::transform(one.minutes.cbegin(), one.minutes.cend(), hours.begin(), [](double m) { return m / 60.0; });
    graph->setData(hours, one.flows, true);
    graph->setPen(penOf(index));
    graph->setName(name);
    graph->setAdaptiveSampling(true);
}

void drawPanel(QCustomPlot& plot, QCPLayout& place, const Panel& panel)
{
    auto* rect = new QCPAxisRect(&plot);
    rect->setupFullAxesBox(true);
    auto* grid = new QCPLayoutGrid;
    static_cast<QCPLayoutGrid&>(place).addElement(grid);
    if (!panel.title.isEmpty())
        grid->addElement(0, 0, new QCPTextElement(&plot, panel.title, QFont(plot.font().family(), 11, QFont::Bold)));
    grid->addElement(grid->rowCount(), 0, rect);
    auto* legend = new QCPLegend;
    rect->insetLayout()->addElement(legend, Qt::AlignTop | Qt::AlignRight);
    legend->setLayer(QStringLiteral("legend"));
    plot.setAutoAddPlottableToLegend(false);

    const QString unit = panel.curves.isEmpty() ? QString() : panel.curves.first()->unit;
    rect->axis(QCPAxis::atBottom)->setLabel(QStringLiteral("Time (hours)"));
    rect->axis(QCPAxis::atLeft)->setLabel(QStringLiteral("Flow (%1)").arg(unit));
    const auto shown = std::min<qsizetype>(panel.curves.size(), kMostCurves);
    for (qsizetype k = 0; k < shown; ++k) {
        const HydrographSeries& one = *panel.curves[k];
        drawCurve(plot, *rect, one, curveName(one, panel.title.isEmpty()), static_cast<int>(k));
        legend->addItem(new QCPPlottableLegendItem(legend, plot.graph(plot.graphCount() - 1)));
    }
    if (shown < panel.curves.size())
        grid->addElement(grid->rowCount(), 0,
                         new QCPTextElement(
                             &plot, QStringLiteral("first %1 of %2 hydrographs").arg(shown).arg(panel.curves.size())));
    rect->axis(QCPAxis::atBottom)->rescale();
    rect->axis(QCPAxis::atLeft)->rescale();
    // A flood starts from nothing: an axis that starts elsewhere makes a small rise look like one.
    QCPRange flows = rect->axis(QCPAxis::atLeft)->range();
    flows.lower = std::min(0.0, flows.lower);
    flows.upper = flows.upper > flows.lower ? flows.upper + 0.06 * (flows.upper - flows.lower) : flows.lower + 1.0;
    rect->axis(QCPAxis::atLeft)->setRange(flows);
}

} // namespace

QString writeHydrographPicture(const QVector<HydrographSeries>& series, const QString& title, const QString& path)
{
    const auto kind = pictureKindOf(path);
    if (!kind || kind == PictureKind::Bmp)
        return QStringLiteral("'%1' ends in neither .png, .svg nor .pdf.").arg(path);
    if (series.isEmpty())
        return QStringLiteral("There is no hydrograph to draw.");

    QVector<Panel> panels = panelsOf(series);
    const qsizetype all = panels.size();
    if (all > kMostPanels)
        panels.resize(kMostPanels);

    QCustomPlot plot;
    plot.setAntialiasedElements(QCP::aeAll);
    plot.plotLayout()->clear();
    plot.plotLayout()->addElement(0, 0, new QCPTextElement(&plot, title, QFont(plot.font().family(), 14, QFont::Bold)));
    auto* place = new QCPLayoutGrid;
    place->setWrap(2);
    place->setFillOrder(QCPLayoutGrid::foColumnsFirst);
    plot.plotLayout()->addElement(1, 0, place);
    for (const Panel& panel : panels)
        drawPanel(plot, *place, panel);
    if (panels.size() < all)
        plot.plotLayout()->addElement(
            2, 0, new QCPTextElement(&plot, QStringLiteral("first %1 of %2 stations").arg(panels.size()).arg(all)));

    const int height =
        panels.size() == 1 ? kSingleHeight : 40 + kPanelHeight * static_cast<int>((panels.size() + 1) / 2);
    QString why;
    const QByteArray bytes = plotPicture(plot, QSize(kWidth, height), *kind, 2.0, why);
    if (!why.isEmpty())
        return why;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return QStringLiteral("'%1' could not be written: %2").arg(path, file.errorString());
    return {};
}

} // namespace kalvo
