// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the benchmarks of the result screens, which stand in files of their own.
#include <QApplication>

#include <benchmark/benchmark.h>

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
