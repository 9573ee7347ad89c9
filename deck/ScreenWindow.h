// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

class QAction;
class QMainWindow;
class QPushButton;
class QString;
class QWidget;

namespace kalvo {

/// Shows a screen that the registry owns above its main screen, and gives it the keyboard.
void showAbove(QWidget& screen, const QWidget* window);

/// A button with its given name. Enter presses it while it has the keyboard, and not from elsewhere.
QPushButton* namedButton(const char* name, const QString& caption, QWidget* parent);

/// An entry of a screen's menu bar, or with `menu` of that menu ("&File"), under its given name.
QAction* addMenuEntry(QMainWindow& screen, const QString& menu, const char* name, const QString& caption,
                      std::function<void()> body);

} // namespace kalvo
