// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/ImportScreens.h"

#include "deck/Deck.h"
#include "deck/Form5_ImportViewer.h"
#include "deck/Form7_FreeTranslation.h"
#include "deck/Form8_FreeEditor.h"
#include "deck/Free_TextView.h"
#include "deck/ImportCommands.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QLabel>
#include <QMainWindow>
#include <QPlainTextDocumentLayout>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>

namespace kalvo {

namespace {

constexpr double kGridPoints = 9.0;

} // namespace

void registerImportScreens(Screens& screens, ImportCommands& commands, QWidget& mainScreen)
{
    // Editor and left panel of the translation show one text, so that what is typed in one stands in the other.
    auto freeText = std::make_shared<QTextDocument>();
    freeText->setDocumentLayout(new QPlainTextDocumentLayout(freeText.get()));
    freeText->setDefaultFont(cardFont());

    const auto importDeck = commands.importDeck();
    const auto desk = commands.freeFormat();
    screens.add(QStringLiteral("Form5"), [importDeck, &screens, desk] {
        return std::make_unique<Form5>(importDeck, screens, desk->services());
    });
    screens.add(QStringLiteral("Form7"), [desk, freeText] { return std::make_unique<Form7>(desk, freeText); });
    screens.add(QStringLiteral("Form8"), [desk, freeText] { return std::make_unique<Form8>(desk, freeText); });
    screens.add(QStringLiteral("Free"), [desk, &screens] { return std::make_unique<Free>(desk, screens); });
    QObject::connect(&screens, &Screens::screenUnloaded, freeText.get(), [text = freeText.get()](const QString& name) {
        if (name == u"Form8")
            text->clear();
    });
    QObject::connect(desk.get(), &FreeFormatDesk::returned, &mainScreen, [&mainScreen] {
        mainScreen.raise();
        mainScreen.activateWindow();
    });
}

QFont cardFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setStyleHint(QFont::Monospace);
    return font;
}

void setCardWidths(FlexGrid& grid)
{
    const FlexGrid::Bulk bulk(grid);
    QFont font = cardFont();
    font.setPointSizeF(kGridPoints);
    grid.setFont(font.family(), kGridPoints);
    const int character = QFontMetrics(font).horizontalAdvance(u'W') * kTwipsPerPixel;
    const auto wide = [character](int characters) { return (characters + 1) * character + 8 * kTwipsPerPixel; };
    grid.setColWidth(0, wide(4));
    for (int column = 1; column < grid.cols(); ++column)
        grid.setColWidth(column, wide(deck_layout::fieldWidth(column)));
}

QPlainTextEdit* cardTextBox(const char* name, QWidget* parent)
{
    auto* box = new QPlainTextEdit(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setFont(cardFont());
    box->setLineWrapMode(QPlainTextEdit::NoWrap);
    return box;
}

void replaceText(QTextDocument& document, const QString& text)
{
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.insertText(text);
    cursor.endEditBlock();
}

QLabel* adviceLabel(const char* name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setContentsMargins(2, 2, 2, 2);
    label->hide();
    return label;
}

void setAdvice(QLabel& label, const QString& words)
{
    label.setText(words);
    label.setVisible(!words.isEmpty());
}

} // namespace kalvo
