// SPDX-License-Identifier: GPL-3.0-or-later
// How a FlexGrid keeps its cells. For the grid's own source files; everyone else goes through FlexGrid.
#pragma once

#include "platform/FlexGrid.h"

#include <QList>
#include <QSharedData>
#include <QSharedDataPointer>

#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

namespace kalvo {
namespace grid_data {

/// Every look that a grid uses, once. Looks are only ever added, so that a number stays good for all snapshots that
/// share the table, and references stay valid. Number 0 is the plain look.
class LookTable
{
public:
    LookTable() { m_looks.emplace_back(); }
    quint32 numberOf(const CellFormat& look);
    const CellFormat& operator[](quint32 number) const { return m_looks[number]; }

private:
    struct Hash
    {
        size_t operator()(const CellFormat& look) const;
    };
    std::deque<CellFormat> m_looks;
    std::unordered_map<CellFormat, quint32, Hash> m_numbers;
};

/// Cells of one row. Both lists end where nothing but empty text or plain look follows, so that a row of a number table
/// costs nothing but its label.
struct RowCells : QSharedData
{
    std::vector<QString> texts;
    std::vector<quint32> looks;
};
using RowPtr = QSharedDataPointer<RowCells>; ///< null: an empty row

struct NumberColumn
{
    int firstRow = 0;
    std::vector<double> values;
    FlexGrid::NumberFormatter format;

    bool backs(int row) const { return row >= firstRow; }
    double at(int row) const;
    QString textAt(int row) const;
};
using NumberColumnPtr = std::shared_ptr<NumberColumn>; ///< null: a text column

/// All that a snapshot keeps. A copy of it shares everything: the lists copy themselves (a pointer a row) and the rows
/// copy themselves when they are written.
struct Body
{
    int cols = 0;
    QList<RowPtr> rows;
    QList<int> heights;             ///< twips
    QList<NumberColumnPtr> numbers; ///< empty, or one for each column
    std::shared_ptr<LookTable> looks = std::make_shared<LookTable>();
    int row = 0, col = 0, rowSel = 0, colSel = 0, topRow = 0;

    int rowCount() const { return static_cast<int>(rows.size()); }
    const NumberColumn* numberColumn(int atCol) const { return numbers.isEmpty() ? nullptr : numbers.at(atCol).get(); }
    QString textAt(int atRow, int atCol) const;
    quint32 lookAt(int atRow, int atCol) const;
    void checkRow(int atRow) const;
    void checkCol(int atCol) const;
    void checkCell(int atRow, int atCol) const
    {
        checkRow(atRow);
        checkCol(atCol);
    }
};

[[noreturn]] void throwOutside(const char* what, int index, int last);

} // namespace grid_data

struct FlexGrid::Private
{
    explicit Private(FlexGrid& owner) : q(owner) {}

    FlexGrid& q;
    grid_data::Body body;
    QList<int> widths; ///< twips
    QList<int> alignments;
    int fixedRows = 1, fixedCols = 1;
    int leftCol = 1;
    int defaultRowHeight = kStandardRowHeight;
    FillStyle fillStyle = FillStyle::Single;
    QString fontName;
    double fontSize = 8.25;
    GridColors colors;
    bool gridLines = true;
    bool mayHaveLooks = false; ///< false: surely none
    int bulkDepth = 0;
    bool bulkPending = false;
    quint64 revision = 0, layoutRevision = 0;

    grid_data::RowCells& writable(int row);
    /// Writes one text and tells nobody; false where it stood there already.
    bool writeText(int row, int col, const QString& text);
    grid_data::NumberColumn& writableNumbers(int col);
    void turnIntoText(int col);
    void moveNumbers(int at, int insertedRows, int removedRows);
    void cutNumbers();

    /// The area that a property set on the cursor goes to.
    Area target() const;
    template <typename Change> void changeLook(const Area& area, Change change);
    const CellFormat& cursorLook() const;

    /// Cursor and selection at once, with the signals of a move.
    void moveTo(int row, int col, int rowSel, int colSel);
    /// Runs `work` that may drop rows or columns, down to the given counts, and brings a cursor that would then stand
    /// outside back.
    void shrinkTo(int rowCount, int colCount, const std::function<void()>& work);

    void cellsChanged(int top, int left, int bottom, int right);
    void layoutChanged();
    void selectionChanged();
    void setTop(int row);
};

struct FlexGrid::Snapshot::Data
{
    grid_data::Body body;
};

} // namespace kalvo
