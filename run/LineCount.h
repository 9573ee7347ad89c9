// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <stdexcept>

class QWidget;

namespace kalvo {

/// Thrown for a control that holds no text of lines; `number` is 20000.
struct NoEditControl : std::runtime_error
{
    NoEditControl() : std::runtime_error("Expected: Text Box or other edit control") {}
    int number = 20000;
};

/// `lineCount`: lines of an edit control as it shows them at its present width, 1 for one of a single line. Any other
/// control throws NoEditControl.
qsizetype lineCount(const QWidget& control);

} // namespace kalvo
