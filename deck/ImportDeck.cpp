// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/ImportDeck.h"

#include "deck/Deck.h"
#include "deck/ImportFile.h"
#include "platform/text.h"

#include <QDir>
#include <QRandomGenerator>

#include <algorithm>

namespace kalvo {

using namespace deck_layout;

namespace {

constexpr qsizetype kCardWidth = 80;
constexpr Rgb kStationText = rgb(252, 22, 22);
/// The palest part of a colour, and how many steps lead from it towards white.
constexpr int kPalest = 205;
constexpr double kPaleSteps = 50.0;

class Raised
{
public:
    explicit Raised(bool& flag) : m_flag(flag) { m_flag = true; }
    ~Raised() { m_flag = false; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

private:
    bool& m_flag;
};

void setEmpty(FlexGrid& grid)
{
    const FlexGrid::Bulk bulk(grid);
    grid.clear();
    grid.setCols(kColumns);
    grid.setRows(kLeastRows);
    grid.setAllRowHeights(kRowHeight);
    numberRowsAndColumns(grid);
    grid.setCursor(1, 1);
    grid.setTopRow(1);
    grid.setLeftCol(1);
}

} // namespace

void numberRowsAndColumns(FlexGrid& grid)
{
    const FlexGrid::Bulk bulk(grid);
    for (int column = 0; column < grid.cols(); ++column)
        grid.setTextMatrix(0, column, QString::number(column));
    for (int row = 1; row < grid.rows(); ++row)
        grid.setTextMatrix(row, 0, QString::number(row));
}

ImportDeck::ImportDeck(Services& services, Random random)
    : m_services(services),
      m_random(random ? std::move(random) : [] { return QRandomGenerator::global()->generateDouble(); })
{
    Grid1.setDefaultRowHeight(kRowHeight);
    setEmpty(Grid1);
}

ImportDeck::~ImportDeck() = default;

QString ImportDeck::title() const
{
    if (m_path.isEmpty())
        return QStringLiteral(" Import HEC-1 DATA");
    return QStringLiteral("Import HEC-1 Data from ") + QDir::toNativeSeparators(m_path);
}

bool ImportDeck::import()
{
    const Raised raised(m_importing);
    for (int column = 0; column < Grid1.cols(); ++column)
        Grid1.setColAlignment(column, FlexGrid::LeftCenter);
    const auto file = chooseTextFile(m_services, QStringLiteral("IMPORT / OPEN HEC-1 DATA FILES"));
    if (!file)
        return false;
    m_path = file->path;
    const FlexGrid::Bulk bulk(Grid1);
    fill(linesOf(file->bytes));
    colourStations();
    Q_EMIT imported();
    return true;
}

void ImportDeck::fill(const QStringList& lines)
{
    setEmpty(Grid1);
    const int cards = static_cast<int>(lines.size());
    Grid1.setRows(std::max(cards + 1, kLeastRows));
    numberRowsAndColumns(Grid1);
    int tooLong = 0;
    QStringList cells;
    for (int row = 1; row <= cards; ++row) {
        const QString& line = lines[row - 1];
        tooLong += RTrim(line).size() > kCardWidth ? 1 : 0;
        cells.clear();
        for (int column = 1; column < Grid1.cols(); ++column)
            cells.append(Deck::getrecnums(line, column));
        Grid1.setRowTexts(row, kIdColumn, cells);
    }
    m_remark = tooLong == 0 ? QString()
                            : QStringLiteral("%1 line(s) are longer than a card; what stands behind column 80 is not "
                                             "here. A free format deck is opened by [Use FREE Format] on File Menu.")
                                  .arg(tooLong);
}

void ImportDeck::colourStations()
{
    const auto idAt = [this](int row) { return Trim(Grid1.textMatrix(row, kIdColumn)); };
    const auto paint = [this](int row, const CellFormat& look) {
        for (int column = kIdColumn; column < Grid1.cols(); ++column)
            Grid1.setCellFormat(row, column, look);
    };
    const auto pale = [this] { return static_cast<int>(m_random() * kPaleSteps) + kPalest; };
    bool inStation = false;
    CellFormat plain;
    for (int row = 1; row < Grid1.rows(); ++row) {
        const QString id = idAt(row);
        if (id == u"KK") {
            inStation = true;
            const int red = pale();
            const int green = pale();
            plain.backColor = rgb(red, green, pale());
            CellFormat station = plain;
            station.foreColor = kStationText;
            station.bold = true;
            paint(row, station);
            continue;
        }
        if (id == u"ZZ")
            inStation = false;
        if (inStation)
            paint(row, plain);
    }
}

void ImportDeck::editcopy()
{
    QString block = Grid1.clip();
    block.replace(QStringLiteral("\r"), QStringLiteral("\r\n"));
    m_services.clipboard.setText(block);
    Q_EMIT copied();
}

void ImportDeck::forget()
{
    m_path.clear();
    m_remark.clear();
    setEmpty(Grid1);
}

} // namespace kalvo
