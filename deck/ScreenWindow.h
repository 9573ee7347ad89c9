// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

class QAction;
class QMainWindow;
class QPoint;
class QPushButton;
class QString;
class QWidget;

namespace kalvo {

/// Shrinks a window that was made larger than its display has room for, as with large fonts on a small display.
void fitToDisplay(QWidget& window);
/// The same, and moves it to a place from the display's corner, or as near to it as leaves all of it in sight.
void placeOnDisplay(QWidget& window, QPoint place);

/// Shows a screen that the registry owns above its main screen, and gives it the keyboard.
void showAbove(QWidget& screen, const QWidget* window);

/// A button with its given name. Enter presses it while it has the keyboard, and not from elsewhere.
QPushButton* namedButton(const char* name, const QString& caption, QWidget* parent);

/// An entry of a screen's menu bar, or with `menu` of that menu ("&File"), under its given name.
QAction* addMenuEntry(QMainWindow& screen, const QString& menu, const char* name, const QString& caption,
                      std::function<void()> body);

} // namespace kalvo
