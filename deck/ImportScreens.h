// SPDX-License-Identifier: GPL-3.0-or-later
// The four screens around the border between the deck and other files, and what they share.
#pragma once

#include "platform/FlexGrid.h"
#include "platform/Screens.h"

#include <QFont>
#include <QString>

class QLabel;
class QPlainTextEdit;
class QTextDocument;
class QWidget;

namespace kalvo {

class ImportCommands;

/// Makes the screens known as "Form5", "Form7", "Form8" and "Free".
/// @param mainScreen comes to the front when the user goes back to it.
void registerImportScreens(Screens& screens, ImportCommands& commands, QWidget& mainScreen);

/// Every character as wide as the next: cards are read by their columns.
QFont cardFont();

/// Widths of the columns of a card grid in that font.
void setCardWidths(FlexGrid& grid);

/// A text box for card lines: no wrapping, line by line as in the file.
QPlainTextEdit* cardTextBox(const char* name, QWidget* parent);

/// Replaces a whole text in one step that the user can take back.
void replaceText(QTextDocument& document, const QString& text);

/// A line of advice below the controls, hidden while it has no words.
QLabel* adviceLabel(const char* name, QWidget* parent);
void setAdvice(QLabel& label, const QString& words);

} // namespace kalvo
