// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/LineCount.h"

#include "platform/LargeTextView.h"

#include <QLineEdit>
#include <QPlainTextEdit>

namespace kalvo {

qsizetype lineCount(const QWidget& control)
{
    if (const auto* view = qobject_cast<const LargeTextView*>(&control))
        return view->text().lineCount();
    if (const auto* box = qobject_cast<const QPlainTextEdit*>(&control))
        return box->document()->lineCount();
    if (qobject_cast<const QLineEdit*>(&control))
        return 1;
    throw NoEditControl();
}

} // namespace kalvo
