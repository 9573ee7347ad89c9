// SPDX-License-Identifier: GPL-3.0-or-later
// Keys, wheel and mouse on the grid and in the editor.
#include "deck/EditorBox.h"
#include "deck/Form1_MainScreen.h"
#include "platform/FlexGridView.h"
#include "platform/GridActions.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

namespace kalvo {

namespace {

/// The character that a key types on the grid, empty for any other key. Ctrl with Alt is AltGr.
QString typedCharacter(const QKeyEvent& key)
{
    const Qt::KeyboardModifiers modifiers = key.modifiers();
    const bool alt = modifiers.testFlag(Qt::AltModifier);
    const bool ctrl = modifiers.testFlag(Qt::ControlModifier);
    if (alt != ctrl || modifiers.testFlag(Qt::MetaModifier))
        return {};
    const QString text = key.text();
    return text.size() == 1 && text[0] >= u' ' && text[0] <= u'~' ? text : QString();
}

/// Keys that type or delete something, or are Enter: what a key press is, as opposed to a key going down.
bool isKeyPress(const QKeyEvent& key)
{
    return !key.text().isEmpty() && (!key.modifiers().testFlag(Qt::ControlModifier) || !typedCharacter(key).isEmpty());
}

} // namespace

void Form1::connectKeys()
{
    connect(Text1, &EditorBox::keyInBox, this, &Form1::keyInEditor);
    connect(Text1, &EditorBox::mousePressedInBox, this, &Form1::outputIsStale);
    connect(Text1, &EditorBox::menuAsked, this, &Form1::showPopup);
    const auto commentEntry = [this] { m_page.commands.run(QStringLiteral("Commententry")); };
    connect(Text1, &EditorBox::doubleClicked, this, commentEntry);
    connect(Grid1, &FlexGridView::gridDoubleClicked, this, commentEntry);
    connect(Grid1, &FlexGridView::keyOnGrid, this, &Form1::keyOnGrid);
    connect(Grid1, &FlexGridView::contextMenuAsked, this, &Form1::showPopup);
    connect(Grid1, &FlexGridView::wheelTurned, this, &Form1::MouseWheel);
    // A click on the grid is meant for the grid.
    connect(Grid1, &FlexGridView::leftPressed, this, [this] { m_refocusEditor = false; });
}

void Form1::outputIsStale()
{
    m_page.commands.setEnabled(QStringLiteral("viewhec1"), false);
    m_page.commands.setEnabled(QStringLiteral("graphdata"), false);
}

// -- Keys in the editor ----------------------------------------------------------------------------------------------

void Form1::keyInEditor(QKeyEvent* key)
{
    m_page.commands.setEnabled(QStringLiteral("runhec"), true);
    if (isPopupKey(*key)) {
        key->accept();
        return;
    }
    if (key->key() == Qt::Key_F5) {
        m_page.editing.convertArea();
        key->accept();
        return;
    }
    if (isKeyPress(*key)) {
        // A key that changes nothing must not take the warning from a field that is too long.
        setTint(tintAfterTyping(m_page.deck.Grid1.col(), Text1->text().size()));
        outputIsStale();
    }
    const FlexGrid& grid = m_page.deck.Grid1;
    const EditorState state{grid.row(),
                            grid.col(),
                            grid.rows(),
                            grid.cols(),
                            Text1->cursorPosition(),
                            static_cast<int>(Text1->text().size())};
    const EditorMove move = editorMove(static_cast<Qt::Key>(key->key()), key->modifiers(), state);
    if (move.kind == EditorMove::Kind::None)
        return;
    key->accept();
    followMove(move);
}

void Form1::followMove(const EditorMove& move)
{
    switch (move.kind) {
    case EditorMove::Kind::None:
        return;
    case EditorMove::Kind::Grid:
        Grid1->setFocus(Qt::OtherFocusReason);
        return;
    case EditorMove::Kind::Cell:
        m_page.deck.Grid1.setCursor(move.row, move.col);
        break;
    case EditorMove::Kind::Reenter:
        // Left and entered without a step aside: the neighbour is neither trimmed nor told.
        m_page.editing.leaveCell();
        m_page.editing.enterCell();
        break;
    }
    Grid1->showCursorCell();
    if (isShown())
        Text1->setFocus(Qt::OtherFocusReason);
    if (move.caretAtEnd)
        Text1->end(false);
}

// -- Keys on the grid ------------------------------------------------------------------------------------------------

void Form1::keyOnGrid(QKeyEvent* key)
{
    if (isPopupKey(*key)) {
        key->accept();
        return;
    }
    if (key->key() == Qt::Key_F5) {
        m_page.editing.convertArea();
        key->accept();
        return;
    }
    if (key->key() == Qt::Key_F10 && key->modifiers().testFlag(Qt::ControlModifier)) {
        m_page.commands.run(QStringLiteral("center_of_mass"));
        key->accept();
        return;
    }
    if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && isShown()) {
        Text1->setFocus(Qt::OtherFocusReason);
        key->accept();
        return;
    }
    if (const QString character = typedCharacter(*key); !character.isEmpty()) {
        key->accept();
        startTyping(character);
    }
}

void Form1::startTyping(const QString& character)
{
    if (!isShown() || !m_page.deck.isEditorActive()) {
        QApplication::beep(); // a hidden row: what is typed would go nowhere
        return;
    }
    m_page.commands.setEnabled(QStringLiteral("runhec"), true);
    outputIsStale();
    Text1->setFocus(Qt::OtherFocusReason);
    Text1->setText(character);
    Text1->setCursorPosition(1);
    setTint(tintAfterTyping(m_page.deck.Grid1.col(), 1));
}

// -- Mouse -----------------------------------------------------------------------------------------------------------

void Form1::MouseWheel(int delta, Qt::KeyboardModifiers modifiers)
{
    const bool wheelPageMode = modifiers.testFlag(Qt::ControlModifier);
    FlexGrid& grid = m_page.deck.Grid1;
    const int step = wheelStep(wheelPageMode, Grid1->heightTwips(), grid.rowHeight(0));
    grid.setTopRow(wheelTopRow(grid.topRow(), grid.rows(), delta, step));
}

/// Shift+F10 stands for the menu key, which many keyboards do not have; not every platform sees to that itself.
bool Form1::isPopupKey(const QKeyEvent& key)
{
    if (key.key() != Qt::Key_F10 || key.modifiers() != Qt::ShiftModifier)
        return false;
    const FlexGrid& grid = m_page.deck.Grid1;
    showPopup(Grid1->mapToGlobal(Grid1->cellRect(grid.row(), grid.col()).center()));
    return true;
}

void Form1::showPopup(const QPoint& globalPoint)
{
    m_popup->popup(globalPoint);
}

} // namespace kalvo
