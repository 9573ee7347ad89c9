// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

#include <QBasicTimer>
#include <QPoint>
#include <QTableView>

#include <functional>
#include <memory>

namespace kalvo {

class FlexGridModel;
class FlexGridHeader;
class FlexGridPainter;

/// Shows a FlexGrid and lets the user move its cursor, stretch its selection, scroll and (when allowed) resize. The
/// fixed rows and columns are the table's headers, drawn with their cells' own texts, looks and alignment. It edits
/// nothing: a screen that wants an editor lays a text box over `cellRect` of the current cell.
///
/// @code
///     auto* Grid1 = new FlexGridView(deck.Grid1, this);
///     connect(Grid1, &FlexGridView::viewMoved, this, [&deck] { deck.setTextbox(); });
///     connect(Grid1, &FlexGridView::keyOnGrid, this, [this](QKeyEvent* key) {
///         if (startsTyping(*key)) { ...; key->accept(); }     // accepted: the view leaves the key alone
///     });
/// @endcode
///
/// Grid and view are always one: cursor, selection, `topRow` and `leftCol` go both ways, a change of the grid shows at
/// once (at the end of a FlexGrid::Bulk, once), and all that measures the view takes the grid as it stands at that
/// moment, also within a Bulk. A frame costs the cells it shows, however many there are; a change of the layout costs a
/// look at each row's height and each column's width. The grid must outlive the view.
///
/// Measures of the view are device independent pixels from its own top left corner, or twips (15 to a pixel).
class FlexGridView : public QTableView
{
    Q_OBJECT

public:
    explicit FlexGridView(FlexGrid& grid, QWidget* parent = nullptr);
    ~FlexGridView() override;

    FlexGrid& grid() const { return m_grid; }

    /// Lets the user drag the edges of columns and rows, which writes twips into the grid. Off until set.
    void setUserResizing(bool on);
    bool userResizing() const { return m_userResizing; }
    /// Scrolls to the cursor's cell whenever the cursor moves. On until set.
    void setFollowsCursor(bool on) { m_followsCursor = on; }
    /// Scrolls so that the cursor's cell is in view.
    void showCursorCell();

    /// Where a cell of the grid (fixed ones too) stands, in pixels, right and lower grid line included; parts may lie
    /// outside the view. Throws std::out_of_range for a cell that is not there.
    QRect cellRect(int row, int col) const;
    // The same in twips, each for the current cell.
    int CellTop() const;
    int CellLeft() const;
    int CellWidth() const;
    int CellHeight() const;
    /// Top of a row in twips; negative when it is scrolled out above.
    int rowPos(int row) const;
    /// True when any part of the row, or column, is in view. Fixed ones always are.
    bool rowIsVisible(int row) const;
    bool colIsVisible(int col) const;
    /// Height and width of the view in twips.
    int heightTwips() const { return height() * kTwipsPerPixel; }
    int widthTwips() const { return width() * kTwipsPerPixel; }
    /// The grid's row and column under a point, -1 where there is none. In the headers they are the fixed ones.
    int rowAtPoint(const QPoint& point) const;
    int colAtPoint(const QPoint& point) const;
    /// Rows that fit below the fixed ones when all are as high as row `topRow`; at least 1.
    int rowsPerPage() const;

    /// What the tool tip over a cell says (row and column of the grid); an empty text shows none.
    using TipText = std::function<QString(int row, int col)>;
    void setTipText(TipText tip) { m_tip = std::move(tip); }

    void selectAll() override;

Q_SIGNALS:
    /// A key came while the view has the focus. Whoever accepts the event takes it; otherwise arrows, Page Up and Down,
    /// Home and End (with Ctrl: first and last row) move the cursor, with Shift stretch the selection, and all else
    /// goes to the parent.
    void keyOnGrid(QKeyEvent* key);
    void gridDoubleClicked(int row, int col);
    /// Right mouse button or menu key; the point is global. The cursor stays where it is.
    void contextMenuAsked(const QPoint& globalPoint);
    /// One step of the wheel: 120 away from the user, -120 towards. With nobody connected the view scrolls by itself.
    void wheelTurned(int delta, Qt::KeyboardModifiers modifiers);
    /// The pointer moved, with no button down, in twips from the view's top left.
    void pointerMoved(int xTwips, int yTwips);
    /// Left button went down on a cell or header.
    void leftPressed();
    /// Cells stand elsewhere: scrolled, resized, or heights and widths changed. What is laid over a cell follows now.
    void viewMoved();
    /// The user has let go of an edge that he dragged; the grid has the new size.
    void resizedByUser();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildHeaders();
    void connectGrid();
    void connectHeader(FlexGridHeader* header, bool columns);
    /// Brings the view up to what the grid is now; next to nothing when it is.
    void follow();
    void followLayout();
    void followSelection();
    void followScroll();
    void applySizes(FlexGridHeader& header, bool columns);
    void writeScrollBack();
    void takeGridFont();
    bool moveByKey(const QKeyEvent& key);
    void stretchTo(const QPoint& viewportPoint);
    void pressHeader(int section, bool columns, bool stretch);
    void takeUserSize(int section, int pixels, bool columns);
    bool showTip(const QPoint& globalPoint);
    void paintCorner(QWidget& corner);

    FlexGrid& m_grid;
    std::unique_ptr<FlexGridPainter> m_painter;
    FlexGridModel* m_model;
    FlexGridHeader* m_columns = nullptr; ///< the fixed rows
    FlexGridHeader* m_lines = nullptr;   ///< the fixed columns
    QWidget* m_corner = nullptr;
    TipText m_tip;
    QBasicTimer m_followTimer, m_dragTimer;
    quint64 m_seen = ~quint64(0), m_seenLayout = ~quint64(0);
    int m_seenRow = -1, m_seenCol = -1, m_seenTop = -1, m_seenLeft = -1;
    FlexGrid::Area m_seenArea{-1, -1, -1, -1};
    int m_wheelRest = 0;
    bool m_moved = false; ///< viewMoved is due
    bool m_following = false, m_applyingSizes = false;
    bool m_followsCursor = true, m_holdScroll = false;
    bool m_userResizing = false, m_userResized = false;
    bool m_dragging = false;
};

} // namespace kalvo
