// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QPushButton;
class QString;
class QWidget;

namespace kalvo {

/// Shows a screen that the registry owns above its main screen, and gives it the keyboard.
void showAbove(QWidget& screen, const QWidget* window);

/// A button with its given name that Enter elsewhere does not press.
QPushButton* namedButton(const char* name, const QString& caption, QWidget* parent);

} // namespace kalvo
