// SPDX-License-Identifier: GPL-3.0-or-later
// The floating editor as the deck sees it, and where it lies.
#include "deck/CardRulerBar.h"
#include "deck/EditorBox.h"
#include "deck/Form1_MainScreen.h"
#include "platform/FlexGridView.h"

#include <QFontMetrics>

namespace kalvo {

namespace {

/// Narrower than this nobody can type into it.
constexpr int kNarrowest = 8;

int toTwips(int pixels)
{
    return pixels * kTwipsPerPixel;
}

int toPixels(int twips)
{
    return twips / kTwipsPerPixel;
}

QFont fontOfCell(const CellFormat& look, QFont font)
{
    if (!look.fontName.isEmpty())
        font.setFamily(look.fontName);
    if (look.fontSize > 0.0)
        font.setPointSizeF(look.fontSize);
    font.setBold(look.bold);
    font.setItalic(look.italic);
    font.setUnderline(look.underline);
    font.setStrikeOut(look.strikeThrough);
    return font;
}

} // namespace

void Form1::buildEditor()
{
    Text1 = new EditorBox(Grid1);
    Text1->hide();
    connect(Text1, &EditorBox::typed, this, [this] {
        m_page.editing.typed();
        if (m_page.deck.Grid1.col() == deck_layout::kIdColumn)
            m_ruler->update();
    });
    connect(Text1, &EditorBox::focusChanged, this, [this](bool hasFocus) {
        const int column = m_page.deck.Grid1.col();
        setTint(hasFocus ? tintAfterTyping(column, Text1->text().size()) : Tint::FocusLost);
    });
    connect(Text1, &EditorBox::toolTipAsked, this, [this] {
        const bool tips = m_page.commands.isChecked(QStringLiteral("mnu_fieldtips"));
        Text1->setToolTip(tips ? m_page.panels.text(StatusPanels::kPanels) : QString());
    });
    connect(Grid1, &FlexGridView::viewMoved, this, &Form1::followView);
    connect(Grid1, &FlexGridView::pointerMoved, this, [this](int x, int y) {
        if (Grid1->userResizing())
            m_noFitAfterDrag = noFitAfterMove(m_noFitAfterDrag, surroundings(), x, y);
    });
    // The editor has followed its cell all through the drag; what is left is its shape.
    connect(Grid1, &FlexGridView::resizedByUser, this, [this] {
        if (m_noFitAfterDrag != 1)
            fitEditor();
    });
}

bool Form1::isShown() const
{
    // A box with another cell's text, as while the cursor is on its way, must never be stored into this one.
    const FlexGrid& grid = m_page.deck.Grid1;
    return !Text1->isHidden() && m_filledRow == grid.row() && m_filledCol == grid.col();
}

void Form1::setShown(bool on)
{
    if (on)
        relocateEditor();
    else
        hideEditor();
}

QString Form1::text() const
{
    return Text1->text();
}

void Form1::setText(const QString& text)
{
    m_filledRow = m_page.deck.Grid1.row();
    m_filledCol = m_page.deck.Grid1.col();
    Text1->fill(text);
}

void Form1::setTint(Tint tint)
{
    Text1->setTint(tint);
}

void Form1::place()
{
    fillEditor();
    relocateEditor();
    setTint(tintOnEntering(m_page.deck.Grid1.col(), Text1->text().size(), focusWidget() == Text1));
}

void Form1::fillEditor()
{
    const FlexGrid& grid = m_page.deck.Grid1;
    const int row = grid.row();
    const int col = grid.col();
    const CellFormat& look = grid.cellFormat(row, col);
    const Rgb color = grid.cellForeColor();
    Text1->setLook(fontOfCell(look, Grid1->font()),
                   color == Rgb::None ? QColor(Qt::black) : QColor(static_cast<QRgb>(color)));
    setText(m_page.deck.editText(row, col));
}

EditorSurroundings Form1::surroundings() const
{
    const FlexGrid& grid = m_page.deck.Grid1;
    const int lastRow = grid.rows() - 1;
    const QRect corner = Grid1->cellRect(0, 0);
    EditorSurroundings around;
    around.gridWidth = Grid1->widthTwips();
    around.gridHeight = Grid1->heightTwips();
    around.cellTop = Grid1->CellTop();
    around.cellLeft = Grid1->CellLeft();
    around.cellWidth = Grid1->CellWidth();
    around.cellHeight = Grid1->CellHeight();
    around.headerHeight = toTwips(corner.bottom());
    around.headerWidth = toTwips(corner.right());
    around.isFirstRowVisible = Grid1->rowIsVisible(1);
    around.isLastRowVisible = Grid1->rowIsVisible(lastRow);
    around.isCellVisible = Grid1->rowIsVisible(grid.row()) && Grid1->colIsVisible(grid.col());
    around.roomUnderLastRow = around.gridHeight - Grid1->rowPos(lastRow) - grid.rowHeight(lastRow);
    around.isHiddenRow = m_page.deck.isHiddenRow(grid.row());
    around.fontSize = grid.cellFontSize();
    around.lineHeight = toTwips(QFontMetrics(Text1->font()).height());
    return around;
}

/// What of a place can be seen, in pixels; empty when there is no room for the box.
QRect Form1::editorArea(const EditorPlace& place) const
{
    const QRect area(toPixels(place.left), toPixels(place.top), toPixels(place.width), toPixels(place.height));
    const QRect seen = area.intersected(Grid1->viewport()->geometry());
    return place.shown && seen.width() >= kNarrowest && seen.height() >= kNarrowest ? seen : QRect();
}

/// Lays the box over the current cell as it is, with what was typed so far.
void Form1::relocateEditor()
{
    layEditor(editorArea(placeEditor(surroundings())));
}

void Form1::fitEditor()
{
    if (!m_page.deck.isEditorActive())
        return;
    if (!isShown())
        place();
    const QRect area = editorArea(FitTextBox(surroundings()));
    if (area.isEmpty())
        m_page.deck.storeEditBox(); // a box that is not shown stores nothing
    layEditor(area);
}

void Form1::layEditor(const QRect& area)
{
    if (area.isEmpty()) {
        hideEditor();
        return;
    }
    Text1->setGeometry(area);
    if (Text1->isHidden()) {
        Text1->show();
        Text1->raise();
        if (m_refocusEditor && focusWidget() == Grid1)
            Text1->setFocus(Qt::OtherFocusReason);
    }
    m_refocusEditor = false;
}

void Form1::hideEditor()
{
    if (Text1->isHidden())
        return;
    // While the box is hidden the grid has the keyboard, so that the arrows go on.
    if (focusWidget() == Text1) {
        m_refocusEditor = true;
        Grid1->setFocus(Qt::OtherFocusReason);
    }
    Text1->hide();
}

void Form1::followView()
{
    if (!m_page.deck.isEditorActive())
        return;
    const bool wasShown = isShown();
    // A cell that is scrolled out of sight takes what was typed with it: a box that is not shown stores nothing.
    if (wasShown && editorArea(placeEditor(surroundings())).isEmpty())
        m_page.deck.storeEditBox();
    if (wasShown)
        relocateEditor();
    else
        place();
}

QString Form1::gridTip(int row, int col) const
{
    if (col != 0 || row < 1 || !m_page.commands.isChecked(QStringLiteral("mnu_fieldtips")))
        return {};
    return rowTip(m_page.deck, row);
}

} // namespace kalvo
