// SPDX-License-Identifier: GPL-3.0-or-later
// What one redraw of a chart costs, beside the bare limit: the same points as plain polylines of a QPainter.
#include "platform/Chart.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

#include <benchmark/benchmark.h>

using namespace kalvo;

namespace {

constexpr int kWidth = 1200;
constexpr int kHeight = 700;

/// Floods that rise and recede one after another, with the small steps that printed flows have.
QVector<ChartSeries> floods(int curves, int points)
{
    QVector<ChartSeries> all(curves);
    for (int s = 0; s < curves; ++s) {
        all[s].label = QStringLiteral("ST%1  1  1  1").arg(s + 1);
        for (int i = 0; i < points; ++i) {
            const double t = 10.0 * i / points / (1.0 + 0.01 * s);
            all[s].x.append(i / 12.0);
            all[s].y.append(std::round((100.0 + 17.0 * s) * t * t * std::exp(-t) * 100.0) / 100.0);
        }
    }
    return all;
}

void BM_Redraw_BarePolylines(benchmark::State& state)
{
    const auto all = floods(static_cast<int>(state.range(0)), 2000);
    const ChartRange times = wholeTimeRange(all), flows = wholeValueRange(all, false);
    const ChartScale x{times, 60.0, kWidth - 20.0, false}, y{flows, kHeight - 40.0, 30.0, false};
    QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::white);
        QPainter painter(&image);
        for (const ChartSeries& one : all) {
            QPolygonF line(one.x.size());
            for (qsizetype i = 0; i < one.x.size(); ++i)
                line[i] = {x.pixel(one.x[i]), y.pixel(one.y[i])};
            painter.drawPolyline(line);
        }
    }
}
BENCHMARK(BM_Redraw_BarePolylines)->Arg(6)->Arg(60)->Unit(benchmark::kMillisecond);

void redraw(benchmark::State& state, bool zoomedIn)
{
    Chart chart;
    chart.resize(kWidth, kHeight);
    chart.setAxisTitles(QStringLiteral("Time"), QStringLiteral("hours"), QStringLiteral("Flow"), QStringLiteral("cfs"));
    chart.setTitle(QStringLiteral("Hydrographs"));
    chart.setSeries(floods(static_cast<int>(state.range(0)), 2000));
    chart.show();
    QApplication::processEvents();
    if (zoomedIn)
        chart.zoom(0.4);
    QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        chart.drawNow();
        chart.render(&image);
    }
}
void BM_Redraw_Chart(benchmark::State& state)
{
    redraw(state, false);
}
BENCHMARK(BM_Redraw_Chart)->Arg(6)->Arg(60)->Unit(benchmark::kMillisecond);

void BM_Redraw_ChartZoomedIn(benchmark::State& state)
{
    redraw(state, true);
}
BENCHMARK(BM_Redraw_ChartZoomedIn)->Arg(60)->Unit(benchmark::kMillisecond);

/// A turn of the wheel as its user has it: hit, both ranges, redraw.
void BM_Wheel_Chart(benchmark::State& state)
{
    Chart chart;
    chart.resize(kWidth, kHeight);
    chart.setSeries(floods(60, 2000));
    chart.show();
    QApplication::processEvents();
    int delta = 120;
    for (auto _ : state) {
        const QPointF at(500, 300);
        QWheelEvent turn(at, at, {}, {0, delta = -delta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&chart, &turn);
        QApplication::processEvents();
    }
}
BENCHMARK(BM_Wheel_Chart)->Unit(benchmark::kMillisecond);

void BM_SetSeries_Chart(benchmark::State& state)
{
    const auto all = floods(60, 2000);
    Chart chart;
    chart.resize(kWidth, kHeight);
    chart.show();
    for (auto _ : state) {
        chart.setSeries(all);
        chart.drawNow();
    }
}
BENCHMARK(BM_SetSeries_Chart)->Unit(benchmark::kMillisecond);

void BM_CursorStep_Chart(benchmark::State& state)
{
    Chart chart;
    chart.resize(kWidth, kHeight);
    chart.setSeries(floods(60, 2000));
    chart.show();
    QApplication::processEvents();
    int at = 0;
    for (auto _ : state)
        chart.setCursorPoint({7, at = (at + 1) % 2000});
}
BENCHMARK(BM_CursorStep_Chart)->Unit(benchmark::kMillisecond);

} // namespace
