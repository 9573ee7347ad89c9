// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Audit.h"

#include "deck/Deck.h"
#include "deck/DeckFile.h"
#include "platform/text.h"

#include <algorithm>

namespace kalvo {

using namespace deck_layout;

namespace {

constexpr int kFieldOne = 2;
constexpr int kOutputColumn = 6; ///< field 5 of a KO card: the unit of the hydrograph file
constexpr int kCardLength = 80;

/// One audit on its way; each pass adds its lines at the end.
class Auditor
{
public:
    explicit Auditor(const FlexGrid& grid) : m_grid(grid) {}

    AuditResult run();

private:
    using Result = AuditResult;

    QString id(int row) const { return m_grid.textMatrix(row, kIdColumn); }
    QString label(int row) const { return m_grid.textMatrix(row, 0); }
    void add(int row, int col, const QString& text) { m_result.findings.push_back({text, row, col}); }
    void addForDeck(const QString& text) { add(0, 0, text); }

    bool hasZZ() const;
    bool passIds();
    void passFieldOne();
    void passIdCharacters();
    void checkCharacter(int row, QChar character, bool blankIsGood);
    void passOtherFields();
    void passFreeFormat();
    void passKK();
    void passKO();

    const FlexGrid& m_grid;
    Result m_result;
};

AuditResult Auditor::run()
{
    m_result.deck = m_grid.snapshot();
    if (!hasZZ()) {
        addForDeck(QStringLiteral("ZZ Card is Missing"));
        m_result.end = Result::End::NoZZ;
        return std::move(m_result);
    }
    if (!passIds()) {
        m_result.end = Result::End::TooManyRows;
        return std::move(m_result);
    }
    passFieldOne();
    passIdCharacters();
    passOtherFields();
    passFreeFormat();
    passKK();
    passKO();
    if (m_result.findings.empty())
        addForDeck(QStringLiteral("   Primary Input Check is O.K."));
    return std::move(m_result);
}

bool Auditor::hasZZ() const
{
    for (int row = 1; row < m_grid.rows(); ++row)
        if (id(row) == u"ZZ")
            return true;
    return false;
}

/// False when too many rows have no ID.
bool Auditor::passIds()
{
    int empty = 0;
    for (int row = 1; row < m_grid.rows(); ++row) {
        const QString text = id(row);
        if (text.isEmpty()) {
            if (++empty > kMostEmptyIds)
                return false;
            add(row, kIdColumn, QStringLiteral("Data Missing Row %1 Col 1").arg(label(row)));
        }
        if (LTrim(text).size() > fieldWidth(kIdColumn))
            add(row, kIdColumn, QStringLiteral("Wrong Number of Card ID Letters - Line ") + label(row));
        if (text == u"*" || text == u" *")
            add(row, kIdColumn,
                QStringLiteral("Incorrect Syntax for Comment Card - use Space after star Col 1 and Un-labeled Row"));
    }
    return true;
}

void Auditor::passFieldOne()
{
    for (int row = 1; row < m_grid.rows(); ++row) {
        if (LTrim(m_grid.textMatrix(row, kFieldOne)).size() <= fieldWidth(kFieldOne))
            continue;
        const QString own = label(row);
        add(row, kFieldOne,
            own.isEmpty() ? QStringLiteral("Too Many Characters in Un-labeled Row after %1 Col 1").arg(label(row - 1))
                          : QStringLiteral("Too Many Characters Row %1 Col 1").arg(own));
    }
}

void Auditor::passIdCharacters()
{
    for (int row = 1; row < m_grid.rows(); ++row) {
        const QString text = id(row);
        if (text.size() < fieldWidth(kIdColumn)) {
            add(row, kIdColumn, QStringLiteral("Not enough Character(s) %1 in row %2").arg(text, label(row)));
            continue;
        }
        checkCharacter(row, text[0], false);
        checkCharacter(row, text[1], true);
        for (const QChar character : {text[0], text[1]})
            if (character >= u'+' && character <= u'?') // codes 43 to 63: signs and digits
                add(row, kIdColumn, QStringLiteral("Incorrect Character(s) %1 in row %2").arg(text, label(row)));
    }
}

/// The closing bracket, the star, the at sign, the capitals and the opening square bracket pass here.
void Auditor::checkCharacter(int row, QChar character, bool blankIsGood)
{
    constexpr char16_t kLowest = 41;
    constexpr char16_t kHighest = 91;
    if ((blankIsGood && character == u' ') || (character >= kLowest && character <= kHighest))
        return;
    add(row, kIdColumn, QStringLiteral("Lower Case or Incorrect Character(s) %1 in row %2").arg(id(row), label(row)));
}

/// Told column by column, but looked at row by row: a row's cells lie side by side in memory.
void Auditor::passOtherFields()
{
    std::vector<std::vector<int>> rowsOf(static_cast<size_t>(m_grid.cols()));
    for (int row = 1; row < m_grid.rows(); ++row)
        for (int col = kFieldOne + 1; col < m_grid.cols(); ++col)
            if (m_grid.textMatrix(row, col).size() > fieldWidth(col))
                rowsOf[static_cast<size_t>(col)].push_back(row);
    for (int col = kFieldOne + 1; col < m_grid.cols(); ++col)
        for (const int row : rowsOf[static_cast<size_t>(col)])
            add(row, col,
                QStringLiteral("Too Many Characters Row %1 Col %2").arg(label(row), m_grid.textMatrix(0, col)));
}

void Auditor::passFreeFormat()
{
    for (int row = 1; row < m_grid.rows(); ++row)
        if (id(row) == u"*F" && Trim(m_grid.textMatrix(row, kFieldOne)) == u"REE")
            add(row, kIdColumn,
                QStringLiteral("Can't Use *FREE Format Card-Convert to Column Format - Delete that Row!"));
}

void Auditor::passKK()
{
    for (int row = 1; row < m_grid.rows(); ++row)
        m_result.numKKCards += id(row) == u"KK" ? 1 : 0;
    if (m_result.numKKCards == 0)
        addForDeck(QStringLiteral("There are no KK cards!"));
}

void Auditor::passKO()
{
    int withOutput = 0;
    for (int row = 1; row < m_grid.rows(); ++row) {
        if (id(row) != u"KO")
            continue;
        if (m_grid.textMatrix(row, kOutputColumn).contains(u"21"))
            ++withOutput;
        else
            add(row, kOutputColumn,
                QStringLiteral("Line %1 Has no 21 in col 5 and will not provide a hydrograph to plot").arg(label(row)));
    }
    if (withOutput == 0)
        addForDeck(QStringLiteral("None of the KK stations are identified with a 21 in Column 5 in the KO card - "
                                  "Graph Data will not be provided."));
}

bool holdsCard(const FlexGrid& grid, int row, const FlexGrid::Snapshot& deck, int deckRow)
{
    if (grid.sharesRow(deck, row) && row == deckRow)
        return true;
    for (int col = kIdColumn; col < grid.cols(); ++col)
        if (grid.textMatrix(row, col) != deck.textMatrix(deckRow, col))
            return false;
    return true;
}

/// Characters of a card line that Open refuses or that HEC-1 would take as something else.
struct LineTrouble
{
    bool tab = false;
    bool foreign = false;
};

LineTrouble troubleIn(QByteArrayView line)
{
    LineTrouble trouble;
    for (const char byte : line) {
        const auto code = static_cast<unsigned char>(byte);
        trouble.tab = trouble.tab || code == '\t';
        trouble.foreign = trouble.foreign || code > '~' || (code < ' ' && code != '\t');
    }
    return trouble;
}

void addRemark(QStringList& remarks, const FlexGrid& grid, const QList<int>& rows, const char* what)
{
    if (!rows.isEmpty())
        remarks << QStringLiteral("%1: line %2").arg(QLatin1String(what), lineNumbers(grid, rows));
}

} // namespace

AuditResult auditDeck(const FlexGrid& grid)
{
    return Auditor(grid).run();
}

int rowOfFinding(const FlexGrid& grid, const AuditResult& result, const AuditFinding& finding)
{
    if (finding.row < 1 || finding.row >= result.deck.rows())
        return 0;
    const int rows = grid.rows();
    for (int away = 0; away < std::max(rows, finding.row + 1); ++away)
        for (const int row : {finding.row - away, finding.row + away})
            if (row >= 1 && row < rows && holdsCard(grid, row, result.deck, finding.row))
                return row;
    return finding.row < rows ? finding.row : 0;
}

QStringList auditRemarks(const FlexGrid& grid)
{
    const DeckBytes written = writeDeck(grid);
    QList<int> longRows, tabRows, foreignRows = written.oddRows;
    const QByteArrayView bytes(written.bytes);
    qsizetype start = 0;
    for (int row = 1; start < bytes.size(); ++row) {
        const qsizetype end = bytes.indexOf("\r\n", start);
        if (end < 0)
            break;
        const QByteArrayView line = bytes.sliced(start, end - start);
        if (line.size() > kCardLength)
            longRows << row;
        const LineTrouble trouble = troubleIn(line);
        if (trouble.tab)
            tabRows << row;
        if (trouble.foreign)
            foreignRows << row;
        start = end + 2;
    }
    std::sort(foreignRows.begin(), foreignRows.end());
    foreignRows.erase(std::unique(foreignRows.begin(), foreignRows.end()), foreignRows.end());
    QStringList remarks;
    addRemark(remarks, grid, longRows, "Longer than the card's 80 columns");
    addRemark(remarks, grid, tabRows, "TAB in a field");
    addRemark(remarks, grid, foreignRows, "Characters that HEC-1 may not read");
    return remarks;
}

} // namespace kalvo
