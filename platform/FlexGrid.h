// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace kalvo {

/// A colour as 0xRRGGBB. Logic has no QColor; `Rgb::None` stands for "the view's own colour".
enum class Rgb : quint32
{
    None = 0xFFFFFFFF
};

/// The colour of three parts, each 0 to 255.
constexpr Rgb rgb(int red, int green, int blue)
{
    return static_cast<Rgb>((static_cast<quint32>(red) << 16) | (static_cast<quint32>(green) << 8) |
                            static_cast<quint32>(blue));
}

/// Twips to a pixel at 96 dots per inch. All heights and widths of a grid are twips.
inline constexpr int kTwipsPerPixel = 15;

/// The look of one cell. Cells share few looks, so a grid keeps each look once and a cell its number.
struct CellFormat
{
    Rgb foreColor = Rgb::None;
    Rgb backColor = Rgb::None;
    QString fontName = {}; ///< empty: the grid's own font
    double fontSize = 0.0; ///< points; 0: the grid's own size
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeThrough = false;

    bool operator==(const CellFormat&) const = default;
};

/// The grid's own colours, for cells without one. `Rgb::None` follows the palette of the view, light or dark.
struct GridColors
{
    Rgb foreColor = Rgb::None;
    Rgb backColor = Rgb::None;
    Rgb backColorBkg = Rgb::None; ///< behind and beside the cells
    Rgb foreColorFixed = Rgb::None;
    Rgb backColorFixed = Rgb::None;
    Rgb foreColorSel = Rgb::None;
    Rgb backColorSel = Rgb::None;
    Rgb gridColor = Rgb::None;
    Rgb gridColorFixed = Rgb::None;

    bool operator==(const GridColors&) const = default;
};

/// The grid behind the deck and every result table: text cells under fixed header rows and beside fixed columns, a
/// cursor (`row`, `col`), a selection that stretches from the cursor to (`rowSel`, `colSel`), heights and widths in
/// twips, and a look for every cell. It is a model without any widget; FlexGridView shows it.
///
/// Rows and columns count from 0. A row or column outside the grid throws std::out_of_range, whatever the call.
///
/// A newcomer's tour:
/// @code
///     FlexGrid grid;                         // 2 x 2, one fixed row and one fixed column
///     grid.setCols(12);
///     grid.setRows(201);
///     grid.setTextMatrix(1, 1, "KK");
///     grid.select(1, 1, 3, 4);               // cursor at (1, 1), stretched to (3, 4)
///     const QString block = grid.clip();     // cells joined by TAB, rows by CR
///     {
///         FlexGrid::Bulk bulk(grid);         // one signal for all that follows
///         grid.setFillStyle(FlexGrid::FillStyle::Repeat);
///         grid.setCellBackColor(rgb(255, 255, 0)); // goes to the whole selection
///         grid.setFillStyle(FlexGrid::FillStyle::Single);
///     }
/// @endcode
class FlexGrid : public QObject
{
    Q_OBJECT

public:
    enum class FillStyle
    {
        Single = 0,
        Repeat = 1
    };

    /// Values of a column's alignment, numbered as the deck and its screens name them.
    enum Alignment
    {
        LeftTop = 0,
        LeftCenter = 1,
        CenterCenter = 4,
        RightTop = 6,
        RightCenter = 7
    };

    static constexpr int kStandardRowHeight = 240; ///< twips, of a row that nobody has set
    static constexpr int kStandardColWidth = 960;  ///< twips, of a column that nobody has set

    explicit FlexGrid(QObject* parent = nullptr);
    ~FlexGrid() override;

    // -- Size ---------------------------------------------------------------------------------------------------
    int rows() const;
    int cols() const;
    /// Grows with empty rows of the standard height (`defaultRowHeight`) or drops rows at the end. A cursor left
    /// outside moves to the last row, with `leavingCell` ahead of the drop and `enteredCell` behind it. A negative
    /// count throws std::out_of_range.
    void setRows(int rows);
    void setCols(int cols);
    int fixedRows() const;
    int fixedCols() const;
    void setFixedRows(int rows);
    void setFixedCols(int cols);
    /// Puts `count` empty rows ahead of `at` (0..rows()); rows below move down with heights and looks. The cursor keeps
    /// its row number, so that another row's cell may now be current: neither leaving nor entering is signalled.
    void insertRow(int at, int count = 1);
    /// Takes `count` rows out from `at` on; rows below move up. The cursor behaves as with `insertRow`, and as with
    /// `setRows` where it would stand outside.
    void removeRow(int at, int count = 1);
    /// Empties every cell, fixed ones too, and its look; size, heights, widths and alignments stay.
    void clear();

    // -- Text ---------------------------------------------------------------------------------------------------
    QString textMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, const QString& text);
    /// Text of the cursor's cell.
    QString text() const;
    /// With FillStyle::Repeat the text goes to every cell of the selection. Texts that are there already cost nothing:
    /// no row is copied and nothing is signalled, here and in all that writes texts or looks.
    void setText(const QString& text);
    /// One row's texts from `firstCol` to the last column; the quickest way to read a whole deck.
    QStringList rowTexts(int row, int firstCol = 0) const;
    /// Writes `texts` from `firstCol` on; what reaches past the last column is dropped.
    void setRowTexts(int row, int firstCol, const QStringList& texts);

    // -- Numbers ------------------------------------------------------------------------------------------------
    using NumberFormatter = std::function<QString(double)>;
    /// Backs column `col` by numbers: cell (firstRow + i, col) shows `format(values[i])`, made when it is asked for,
    /// and NaN shows as empty text. Costs eight bytes a value. Cells above firstRow keep their texts, those below the
    /// last value become empty. Writing a text at or below firstRow turns the column into text. Values that reach past
    /// the last row throw std::out_of_range. `format` must be callable as long as the grid or a snapshot of it lives.
    void setNumberColumn(int col, int firstRow, std::vector<double> values, NumberFormatter format);
    bool isNumberColumn(int col) const;
    /// The number behind a cell, NaN where none stands (text column, above the first row, below the last value).
    double number(int row, int col) const;
    /// The numbers behind a column as they lie in memory, for loops over millions of them.
    struct Numbers
    {
        int firstRow = 0; ///< row of the first one
        std::span<const double> values;
        const NumberFormatter* format = nullptr;
    };
    /// None for a text column. Good until the grid changes.
    std::optional<Numbers> numbers(int col) const;

    // -- Cursor and selection -----------------------------------------------------------------------------------
    int row() const;
    int col() const;
    int rowSel() const;
    int colSel() const;
    /// Moves the cursor and collapses the selection onto it. `leavingCell` is signalled ahead of the move, while the
    /// old cell is still current, `enteredCell` behind it; neither when the cursor stays where it is.
    void setRow(int row);
    void setCol(int col);
    /// Both at once: one leaving, one entering.
    void setCursor(int row, int col);
    /// Stretch the selection, in any direction, from the cursor.
    void setRowSel(int row);
    void setColSel(int col);
    /// Cursor to (row, col), stretched to (rowSel, colSel).
    void select(int row, int col, int rowSel, int colSel);
    struct Area
    {
        int top, left, bottom, right; ///< all four belong to the area
        bool operator==(const Area&) const = default;
    };
    /// The selection from its top left to its bottom right, whatever way it was dragged.
    Area selection() const;
    /// The selection's texts, cells joined by TAB, rows by CR, nothing behind the last cell.
    QString clip() const;
    /// Writes the text from the selection's top left, cells parted by TAB, rows by CR. What reaches past the selection
    /// is dropped; cells that the text does not reach keep what they hold. A CR always parts two rows, so that
    /// `setClip` of `clip()` changes nothing: behind a CR at the very end stands one more row, with one empty cell.
    void setClip(QStringView text);
    /// First row shown below the fixed ones. A fixed row stands for the first one behind them; a view that cannot
    /// scroll so far comes back with the last row it can put on top.
    int topRow() const;
    void setTopRow(int row);
    int leftCol() const;
    void setLeftCol(int col);

    // -- Heights, widths, alignment -----------------------------------------------------------------------------
    // A negative height or width counts as 0.
    int rowHeight(int row) const;
    void setRowHeight(int row, int twips);
    void setAllRowHeights(int twips);
    int defaultRowHeight() const;
    void setDefaultRowHeight(int twips); ///< of rows added from now on
    int colWidth(int col) const;
    void setColWidth(int col, int twips);
    int colAlignment(int col) const;
    void setColAlignment(int col, int alignment); ///< a value of Alignment; LeftCenter until set

    // -- Looks --------------------------------------------------------------------------------------------------
    FillStyle fillStyle() const;
    void setFillStyle(FillStyle style);
    /// The look of any cell, and setting it for that cell alone.
    const CellFormat& cellFormat(int row, int col) const;
    void setCellFormat(int row, int col, const CellFormat& format);
    /// Looks of the cursor's cell; setting one goes to the whole selection with FillStyle::Repeat.
    Rgb cellForeColor() const;
    Rgb cellBackColor() const;
    QString cellFontName() const;
    /// The cell's size in points, or the grid's own when the cell has none.
    double cellFontSize() const;
    bool cellFontBold() const;
    bool cellFontItalic() const;
    bool cellFontUnderline() const;
    bool cellFontStrikeThrough() const;
    void setCellForeColor(Rgb color);
    void setCellBackColor(Rgb color);
    void setCellFontName(const QString& name);
    void setCellFontSize(double points);
    void setCellFontBold(bool on);
    void setCellFontItalic(bool on);
    void setCellFontUnderline(bool on);
    void setCellFontStrikeThrough(bool on);
    /// The grid's own font, for cells without one.
    QString fontName() const;
    double fontSize() const; ///< points; 8.25 until set
    void setFont(const QString& name, double points);
    const GridColors& colors() const;
    void setColors(const GridColors& colors);
    /// Lines between the cells; on until turned off.
    bool gridLines() const;
    void setGridLines(bool on);
    /// True when any cell has a look of its own: views and loops may take the short way when none has.
    bool hasCellFormats() const;

    // -- Snapshots ----------------------------------------------------------------------------------------------
    class Snapshot;
    /// The whole grid as it stands: texts, heights, looks, cursor. Costs one pointer a row; a row is copied only when
    /// the grid writes to it afterwards.
    Snapshot snapshot() const;
    /// Puts a snapshot back: texts, numbers, heights, looks, cursor, selection and `topRow`. Widths, alignments, fixed
    /// rows and columns, the grid's font and the fill style stay. Signalled like a Bulk. An empty snapshot does
    /// nothing.
    void restore(const Snapshot& snapshot);
    /// Puts back only how many rows there were and their texts; heights, looks and all else stay where they are. A row
    /// without looks of its own, here and there, is shared with the snapshot again and costs no copy. Signalled like a
    /// Bulk; a cursor that would stand outside behaves as with `setRows`. An empty snapshot does nothing.
    void restoreTexts(const Snapshot& snapshot);
    /// True while row `row` is still the very row that the snapshot holds, no copy: nothing was written to it since.
    bool sharesRow(const Snapshot& snapshot, int row) const;

    // -- Bulk changes -------------------------------------------------------------------------------------------
    /// While a Bulk lives, changes are gathered; when the last one of a nest goes, by whatever way, `bulkChanged` is
    /// signalled once if anything changed. leavingCell and enteredCell are not held back: who does not want them
    /// closes its own gate.
    class Bulk
    {
    public:
        explicit Bulk(FlexGrid& grid);
        ~Bulk();
        Bulk(const Bulk&) = delete;
        Bulk& operator=(const Bulk&) = delete;

    private:
        FlexGrid& m_grid;
    };

    /// Counts up with every change, also within a Bulk: whoever keeps something derived from the grid sees by it
    /// whether that is stale, without a signal. The second one counts sizes alone: rows, columns, heights, widths,
    /// alignments.
    quint64 revision() const;
    quint64 layoutRevision() const;

Q_SIGNALS:
    void leavingCell();
    void enteredCell();
    /// Cursor or selection is now another one. Ahead of enteredCell, so that views have scrolled when it comes. Not
    /// within a Bulk, whose end tells.
    void selectionChanged();
    /// Texts or looks of an area changed (not within a Bulk).
    void cellsChanged(int top, int left, int bottom, int right);
    /// Rows, columns, heights, widths, alignments or the grid's own colours and lines changed (not within a Bulk).
    void layoutChanged();
    void topRowChanged(int row);  ///< not within a Bulk
    void leftColChanged(int col); ///< not within a Bulk
    /// Anything at all may have changed within a Bulk.
    void bulkChanged();

private:
    struct Private;
    std::unique_ptr<Private> d;
    friend class Bulk;
};

/// What FlexGrid::snapshot() gives: a value, cheap to copy and to keep by the hundred.
class FlexGrid::Snapshot
{
public:
    Snapshot();
    Snapshot(const Snapshot&);
    Snapshot& operator=(const Snapshot&);
    ~Snapshot();
    bool isEmpty() const; ///< true for one that no grid has given
    int rows() const;
    int cols() const;
    /// Text of a cell as it was; numbers of number columns are formatted like in the grid.
    QString textMatrix(int row, int col) const;

private:
    struct Data;
    std::shared_ptr<const Data> d;
    friend class FlexGrid;
};

} // namespace kalvo
