// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QDialog;
class QWidget;

namespace kalvo {

class Chart;

/// Opens the option dialog of a chart: grid lines, markers, logarithmic values, line width. What is set there shows at
/// once; the dialog goes with its window. @return the dialog, which does not wait.
QDialog* openChartOptions(Chart& chart, QWidget* window);

} // namespace kalvo
