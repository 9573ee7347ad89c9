// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Deck.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kalvo {

using namespace deck_layout;

namespace {

/// Points of the cell font times this give a row's standard height in twips.
constexpr int kTwipsPerPoint = 39;
/// The column rule: points x (text width + room) x 0.15, and a little air.
constexpr double kColumnRoom = 66.0;
constexpr double kColumnScale = 0.15;
constexpr double kColumnAir = 1.12;

int wholeTwips(double twips)
{
    return static_cast<int>(std::lrint(twips)); // the default rounding mode is half to even
}

double columnValue(double points, int textWidth)
{
    return points * (textWidth + kColumnRoom) * kColumnScale;
}

/// Suspends the editor for a move of the cursor that belongs to a command, without hiding the box: hiding it would send
/// the keyboard focus away.
class LockedEditor
{
public:
    explicit LockedEditor(Deck& deck) : m_deck(deck), m_was(deck.isEditorActive()) { deck.setEditorActive(false); }
    ~LockedEditor() { m_deck.setEditorActive(m_was); }
    LockedEditor(const LockedEditor&) = delete;
    LockedEditor& operator=(const LockedEditor&) = delete;

private:
    Deck& m_deck;
    bool m_was;
};

bool keepsLeadingBlanks(const QString& id)
{
    return id == u"*D" || id == u"*F" || id == u"KM" || id == u"ID" || id == u"*N" || id == u"*L";
}

} // namespace

Deck::Deck(Services& services, StatusPanels& panels, QObject* parent)
    : QObject(parent), m_services(services), m_panels(panels)
{
    Grid1.setDefaultRowHeight(kRowHeight);
    setEmptyLayout();
}

Deck::~Deck() = default;

// -- The editor ------------------------------------------------------------------------------------------------------

void Deck::storeEditBox()
{
    if (!m_editorActive || !m_editBox || !m_editBox->isShown())
        return;
    const int row = Grid1.row();
    const int column = Grid1.col();
    if (row < 1 || column < 1)
        return;
    const QString text = m_editBox->text();
    // The box never shows leading blanks of a number; that alone is no edit, and the blanks may matter on the card
    // line.
    if (text == Grid1.textMatrix(row, column) || text == editText(row, column))
        return;
    Grid1.setTextMatrix(row, column, text);
    if (column == kIdColumn)
        newlines();
    noteChange();
}

void Deck::setTextbox()
{
    if (m_editorActive && m_editBox)
        m_editBox->place();
}

QString Deck::editText(int row, int column) const
{
    const QString text = Grid1.textMatrix(row, column);
    return keepsLeadingBlanks(id(row)) ? text : LTrim(text);
}

void Deck::setGridShown(bool on)
{
    if (on == m_gridShown)
        return;
    m_gridShown = on;
    Q_EMIT gridShownChanged(on);
}

Deck::BulkWork::BulkWork(Deck& deck)
    : m_deck(deck), m_bulk(std::in_place, deck.Grid1), m_wasActive(deck.isEditorActive()),
      m_wasShown(deck.editBox() && deck.editBox()->isShown())
{
    m_deck.setEditorActive(false);
    if (m_wasShown)
        m_deck.editBox()->setShown(false);
}

Deck::BulkWork::~BulkWork()
{
    m_bulk.reset();
    m_deck.setEditorActive(m_wasActive);
    if (m_wasShown && m_deck.editBox())
        m_deck.editBox()->setShown(true);
    m_deck.setTextbox();
}

void Deck::noteChange()
{
    dataSaved = false;
    Q_EMIT changed();
}

// -- Layout ----------------------------------------------------------------------------------------------------------

void Deck::setEmptyLayout()
{
    const FlexGrid::Bulk bulk(Grid1);
    Grid1.setCols(kColumns);
    Grid1.setRows(kNewRows);
    Grid1.setFixedRows(1);
    Grid1.setFixedCols(1);
    setrowheight();
    Setcolwidths();
    newlines();
    setcolnums();
    setcolaligns();
    Grid1.setCursor(1, 1);
}

void Deck::setrowheight()
{
    Grid1.setAllRowHeights(kRowHeight);
}

void Deck::Setcolwidths()
{
    const FlexGrid::Bulk bulk(Grid1);
    const TextMeasure& measure = m_services.measure;
    const int wide = measure.textWidth(QStringLiteral("WWWWWWWW"));
    for (int column = 3; column < Grid1.cols(); ++column)
        Grid1.setColWidth(column, wide);
    Grid1.setColWidth(0, measure.textWidth(QStringLiteral("-WW.")));
    Grid1.setColWidth(1, measure.textWidth(QStringLiteral("WW.")));
    Grid1.setColWidth(2, measure.textWidth(QStringLiteral("WWWWWW ")));
}

void Deck::setcolnums()
{
    const FlexGrid::Bulk bulk(Grid1);
    for (int column = 2; column < Grid1.cols(); ++column)
        Grid1.setTextMatrix(0, column, QString::number(column - 1));
}

void Deck::setcolaligns()
{
    const FlexGrid::Bulk bulk(Grid1);
    Grid1.setColAlignment(0, FlexGrid::LeftTop);
    for (int column = 1; column < Grid1.cols(); ++column)
        Grid1.setColAlignment(column, FlexGrid::RightTop);
}

void Deck::newlines()
{
    const FlexGrid::Bulk bulk(Grid1);
    int number = 0;
    for (int row = 1; row < Grid1.rows(); ++row) {
        const QString label = isCommentRow(row) ? QString() : QString::number(++number);
        if (Grid1.textMatrix(row, 0) != label)
            Grid1.setTextMatrix(row, 0, label);
    }
}

void Deck::default_Row()
{
    const BulkWork work(*this);
    const bool oneSize = !Grid1.hasCellFormats();
    const int height = wholeTwips(Grid1.fontSize() * kTwipsPerPoint);
    for (int row = 0; row < Grid1.rows(); ++row) {
        if (isHiddenRow(row))
            continue;
        if (oneSize) {
            Grid1.setRowHeight(row, height);
            continue;
        }
        double largest = 0.0;
        for (int column = 0; column < Grid1.cols(); ++column) {
            const double size = Grid1.cellFormat(row, column).fontSize;
            largest = std::max(largest, size > 0.0 ? size : Grid1.fontSize());
        }
        Grid1.setRowHeight(row, wholeTwips(largest * kTwipsPerPoint));
    }
}

void Deck::default_Col()
{
    const BulkWork work(*this);
    const TextMeasure& measure = m_services.measure;
    const bool oneSize = !Grid1.hasCellFormats();
    std::array<double, kColumns> widest{};
    for (int row = 0; row < Grid1.rows(); ++row) {
        const QStringList texts = Grid1.rowTexts(row);
        for (int column = 1; column < kColumns; ++column) {
            const double own = oneSize ? 0.0 : Grid1.cellFormat(row, column).fontSize;
            const double value = columnValue(own > 0.0 ? own : Grid1.fontSize(), measure.textWidth(texts[column]));
            widest[static_cast<size_t>(column)] = std::max(widest[static_cast<size_t>(column)], value);
        }
    }
    // An empty column would shrink to a few pixels that nobody could type into. The line numbers keep their width.
    const int lineNumbers = Grid1.colWidth(0);
    Setcolwidths();
    Grid1.setColWidth(0, lineNumbers);
    for (int column = 1; column < kColumns; ++column) {
        const int fitted = wholeTwips(widest[static_cast<size_t>(column)] * kColumnAir);
        Grid1.setColWidth(column, std::max(fitted, Grid1.colWidth(column)));
    }
}

int Deck::whichRow(int yTwips) const
{
    int row = std::max(Grid1.topRow(), 1);
    int lowerEdge = Grid1.rowHeight(std::min(row, Grid1.rows() - 1));
    while (row < Grid1.rows() - 1 && yTwips >= lowerEdge)
        lowerEdge += Grid1.rowHeight(++row);
    return std::min(row, Grid1.rows() - 1);
}

// -- Cards -----------------------------------------------------------------------------------------------------------

QString Deck::getrecnums(QStringView line, int column)
{
    switch (column) {
    case 1:
        return Mid(line, 1, fieldWidth(1));
    case 2:
        return Mid(line, 3, fieldWidth(2));
    default:
        return Mid(line, (column - 2) * 8 + 1, 8);
    }
}

bool Deck::isCommentRow(int row) const
{
    return id(row).contains(u'*');
}

bool Deck::isHiddenRow(int row) const
{
    return !isVisibleHeight(Grid1.rowHeight(row));
}

int Deck::ISZZ() const
{
    for (int row = 1; row < Grid1.rows(); ++row)
        if (id(row) == u"ZZ")
            return 1;
    return 0;
}

void Deck::TRIMMER()
{
    const FlexGrid::Bulk bulk(Grid1);
    for (int row = 1; row < Grid1.rows(); ++row) {
        const QString text = id(row);
        const QString trimmed = trimmedId(text);
        if (trimmed == text)
            continue;
        Grid1.setTextMatrix(row, kIdColumn, trimmed);
        // A box that still showed the blanks would put them back with the next store.
        if (m_editBox && row == Grid1.row() && Grid1.col() == kIdColumn)
            m_editBox->setText(trimmed);
    }
}

int Deck::trimtozz()
{
    storeEditBox();
    int last = 1;
    while (last < Grid1.rows() && id(last) != u"ZZ")
        ++last;
    if (last == Grid1.rows()) {
        m_services.dialogs.tell(
            QStringLiteral("No \"ZZ\" Card Found - Input Data Requires a ZZ (End) Card in the last line."));
        return -1;
    }
    const int dropped = Grid1.rows() - 1 - last;
    QStringList cards;
    for (int row = last + 1; row < Grid1.rows(); ++row) {
        const QString card = Grid1.rowTexts(row, kIdColumn).join(QString());
        if (!Trim(card).isEmpty())
            cards.append(card);
    }
    {
        const LockedEditor locked(*this);
        const FlexGrid::Bulk bulk(Grid1);
        if (Grid1.row() > last)
            Grid1.setRow(last);
        Grid1.setRows(last + 1);
    }
    setTextbox();
    if (!cards.isEmpty()) {
        m_panels.set(7, QStringLiteral("%1 card(s) behind the ZZ card were taken out of the grid").arg(cards.size()));
        Q_EMIT cardsDropped(cards);
    }
    return dropped;
}

void Deck::setCards(const QStringList& lines)
{
    const BulkWork work(*this);
    const int cards = static_cast<int>(lines.size());
    Grid1.setRows(std::max(cards + 1, kLeastRows));
    QStringList cells;
    cells.reserve(kLastColumn);
    for (int row = 1; row < Grid1.rows(); ++row) {
        const QStringView line = row <= cards ? QStringView(lines[row - 1]) : QStringView();
        cells.clear();
        for (int column = 1; column <= kLastColumn; ++column)
            cells.append(getrecnums(line, column));
        Grid1.setRowTexts(row, kIdColumn, cells);
    }
}

bool isFreeTextId(const QString& id)
{
    if (id == u"KM" || id == u"ID" || id == u"ZR" || id == u"ZW")
        return true;
    return id.contains(u'*') && id != u"*" && id != u"* ";
}

QString trimmedId(const QString& id)
{
    return id == u"ZW" || id == u"* " ? id : Trim(id);
}

int iskk(const QString& name, const QStringList& stations, Dialogs& dialogs)
{
    constexpr qsizetype kLongestName = 24;
    constexpr qsizetype kStationName = 8;
    if (name.isEmpty()) {
        dialogs.tell(QStringLiteral("Unknown Error in iskk - Restart Application!"));
        return 0;
    }
    QString wanted = name;
    if (wanted.size() > kLongestName)
        if (const qsizetype blank = InStr(wanted, u" "); blank > 0)
            wanted = Left(wanted, blank - 1);
    const QString trimmed = Trim(wanted);
    for (const QString& station : stations)
        if (wanted.size() > kStationName || Trim(station) == trimmed)
            return 1;
    return 0;
}

} // namespace kalvo
