// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/CellEditing.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kalvo {

using namespace deck_layout;

QString FieldHelp::variableName(const QString&, const QString&) const
{
    return {};
}

QString FieldHelp::variableDescription(const QString&, const QString&) const
{
    return {};
}

QString FieldHelp::cardDescription(const QString&) const
{
    return {};
}

namespace {

constexpr int kPageRows = 10;

EditorMove toCell(const EditorState& state, int row, int col, bool caretAtEnd = false)
{
    if (row == state.row && col == state.col)
        return {};
    return {EditorMove::Kind::Cell, row, col, caretAtEnd};
}

EditorMove afterEnter(const EditorState& state)
{
    if (state.row >= state.rows - 1)
        return {};
    if (state.col >= state.cols - 1)
        return {EditorMove::Kind::Reenter, state.row, state.col, false};
    return toCell(state, state.row, state.col + 1);
}

EditorMove leftward(const EditorState& state, bool alt)
{
    if (state.col < 2 || (!alt && state.caret > 0))
        return {};
    return toCell(state, state.row, state.col - 1, !alt);
}

EditorMove rightward(const EditorState& state, bool alt)
{
    if (state.col >= state.cols - 1 || (!alt && state.caret < state.textLength))
        return {};
    return toCell(state, state.row, state.col + 1);
}

} // namespace

EditorMove editorMove(Qt::Key key, Qt::KeyboardModifiers modifiers, const EditorState& state)
{
    const bool alt = modifiers.testFlag(Qt::AltModifier);
    const int lastRow = state.rows - 1;
    switch (key) {
    case Qt::Key_Control:
        if (alt || modifiers.testFlag(Qt::GroupSwitchModifier))
            return {};
        return {EditorMove::Kind::Grid, state.row, state.col, false};
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return afterEnter(state);
    case Qt::Key_PageUp:
        return toCell(state, state.row >= kPageRows + 1 ? state.row - kPageRows : 1, state.col);
    case Qt::Key_PageDown:
        return toCell(state, state.row < state.rows - kPageRows ? state.row + kPageRows : lastRow, state.col);
    case Qt::Key_End:
        return toCell(state, state.row, state.cols - 1);
    case Qt::Key_Home:
        return toCell(state, state.row, 1);
    case Qt::Key_Left:
        return leftward(state, alt);
    case Qt::Key_Right:
        return rightward(state, alt);
    case Qt::Key_Up:
        return toCell(state, state.row >= 2 ? state.row - 1 : state.row, state.col);
    case Qt::Key_Down:
        return toCell(state, state.row < lastRow ? state.row + 1 : state.row, state.col);
    default:
        return {};
    }
}

SquareMiles squareMilesOf(const QString& acres)
{
    const bool hasDigit = std::any_of(acres.cbegin(), acres.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!hasDigit)
        return {{}, QStringLiteral("No area taken: \"%1\" is not a number").arg(acres)};
    const double taken = leadingNumber(acres);
    const double miles = roundHalfEven(taken / 640.0, 6);
    const QString told = QStringLiteral("%1 %2 = %3 sq mi")
                             .arg(generalText(taken), taken == 1.0 ? QStringLiteral("acre") : QStringLiteral("acres"),
                                  generalText(miles));
    // A cut may only take decimals away; of a larger number it would take the last digits.
    if (!std::isfinite(miles) || miles < 0.0 || miles >= 1e6)
        return {{}, told + QStringLiteral(" is no area that field 1 can hold: not stored")};
    return {Trim(Left(signedText(miles), 7)), told};
}

EditBox::Tint tintAfterTyping(int column, qsizetype length)
{
    return length > fieldWidth(column) ? EditBox::Tint::TooLong : EditBox::Tint::Pressed;
}

EditBox::Tint tintOnEntering(int column, qsizetype length, bool hasFocus)
{
    const EditBox::Tint tint = tintAfterTyping(column, length);
    return tint == EditBox::Tint::Pressed && !hasFocus ? EditBox::Tint::AtRest : tint;
}

bool isTextCard(const QString& id)
{
    static const std::array<QLatin1String, 7> kIds = {QLatin1String("ID"), QLatin1String("KM"), QLatin1String("  "),
                                                      QLatin1String("ZW"), QLatin1String("ZR"), QLatin1String("KK"),
                                                      QLatin1String("ZZ")};
    return id.contains(u'*') || std::any_of(kIds.begin(), kIds.end(), [&](QLatin1String text) { return id == text; });
}

QString rowTip(const Deck& deck, int row)
{
    if (row < 1 || row >= deck.Grid1.rows())
        return {};
    return deck.Grid1.rowTexts(row, kIdColumn).join(u',');
}

CellEditing::CellEditing(Deck& deck, QObject* parent) : QObject(parent), m_deck(deck)
{
    connect(&deck.Grid1, &FlexGrid::leavingCell, this, &CellEditing::leaveCell);
    connect(&deck.Grid1, &FlexGrid::enteredCell, this, &CellEditing::enterCell);
}

void CellEditing::setFieldHelp(const FieldHelp* help)
{
    m_help = help ? help : &m_noHelp;
}

void CellEditing::setRecorder(std::function<void()> recordUndo)
{
    m_recordUndo = std::move(recordUndo);
}

void CellEditing::leaveCell()
{
    if (m_deck.isEditorActive())
        m_deck.storeEditBox();
}

void CellEditing::enterCell()
{
    if (!m_deck.isEditorActive())
        return;
    const int row = m_deck.Grid1.row();
    const int col = m_deck.Grid1.col();
    if (row < 1 || col < kIdColumn)
        return;
    if (!m_deck.isHiddenRow(row)) {
        const QString lineNumber = m_deck.Grid1.textMatrix(row, 0);
        const QString shown = m_deck.editText(row, col);
        if (!isTextCard(m_deck.id(row)) && m_deck.Grid1.textMatrix(row, col) != shown)
            m_deck.Grid1.setTextMatrix(row, col, shown);
        growIfNearEnd(row);
        tellField(row, col, lineNumber, Help::Show);
    }
    m_deck.setTextbox();
}

void CellEditing::showField()
{
    const int row = m_deck.Grid1.row();
    const int col = m_deck.Grid1.col();
    if (row >= 1 && col >= kIdColumn)
        tellField(row, col, m_deck.Grid1.textMatrix(row, 0), Help::Leave);
}

void CellEditing::tellField(int row, int col, const QString& lineNumber, Help help)
{
    StatusPanels& panels = m_deck.panels();
    const QString id = m_deck.id(row);
    const QString field = m_deck.Grid1.textMatrix(0, col);
    const QString variable = m_help->variableName(id, field);
    const bool isIdColumn = col == kIdColumn;
    panels.set(3, id + QStringLiteral(" Card "));
    panels.set(4, QStringLiteral(" Row ") + lineNumber + u' ');
    panels.set(5, isIdColumn ? QStringLiteral(" Field 0 ") : QStringLiteral(" Field ") + field + u' ');
    panels.set(6, variable);
    // Another cell's help goes in any case; what a command has told stays.
    if (help == Help::Leave && panels.text(7) != m_toldHelp)
        return;
    m_toldHelp = isIdColumn ? m_help->cardDescription(id) : m_help->variableDescription(id, variable);
    panels.set(7, m_toldHelp);
}

void CellEditing::growIfNearEnd(int row)
{
    FlexGrid& grid = m_deck.Grid1;
    const int rows = grid.rows();
    if (row < rows - 3)
        return;
    const FlexGrid::Bulk bulk(grid);
    grid.setRows(rows + 2);
    grid.setRowHeight(rows, kRowHeight);
    grid.setRowHeight(rows + 1, kRowHeight);
    m_deck.newlines();
}

void CellEditing::typed()
{
    EditBox* box = m_deck.editBox();
    if (!box || !box->isShown())
        return;
    if (m_recordUndo)
        m_recordUndo();
    box->setTint(tintAfterTyping(m_deck.Grid1.col(), box->text().size()));
}

bool CellEditing::convertArea()
{
    FlexGrid& grid = m_deck.Grid1;
    const int row = grid.row();
    if (grid.col() != 2 || m_deck.id(row) != QLatin1String("BA"))
        return false;
    const auto answer = m_deck.services().dialogs.input(
        QStringLiteral("Enter Area in Acres (converts to Square Miles) "), QString::fromLatin1(kApplicationTitle), {});
    if (!answer || answer->isEmpty())
        return true;
    const SquareMiles area = squareMilesOf(*answer);
    m_deck.panels().set(7, area.message);
    if (area.text.isEmpty())
        return true;
    if (m_recordUndo)
        m_recordUndo();
    grid.setTextMatrix(row, 2, area.text);
    m_deck.noteChange();
    if (EditBox* box = m_deck.editBox(); box && box->isShown()) {
        box->setText(area.text);
        box->setTint(tintAfterTyping(2, area.text.size()));
    }
    return true;
}

} // namespace kalvo
