// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Catalogue.h"

#include "deck/Deck.h"
#include "platform/StatusPanels.h"
#include "platform/text.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace kalvo {

namespace {

constexpr int kRecordItems = 11; ///< the ID and ten fields
constexpr qsizetype kStationName = 8;
constexpr int kHelpPanel = 7;

struct CommentKind
{
    QLatin1String id;
    QLatin1String text;
};
constexpr std::array<CommentKind, 5> kCommentKinds = {{
    {QLatin1String("*D"), QLatin1String(" DIAGRAM ")},
    {QLatin1String("*F"), QLatin1String(" FORMAT ")},
    {QLatin1String("*N"), QLatin1String(" NO LIST ")},
    {QLatin1String("*"), QLatin1String(" INPUT CARD COMMENT ")},
    {QLatin1String("*L"), QLatin1String(" LIST ")},
}};

double equivalentDiameter(double area)
{
    // 3.14 and not pi: the figures have to stay those that users know.
    return std::sqrt(area * 4.0 / 3.14) * 12.0;
}

struct Conversion
{
    QLatin1String variable;
    double (*compute)(double value);
    int decimals;
    QLatin1String tail;
};
constexpr std::array<Conversion, 5> kConversions = {{
    {QLatin1String("TAREA"), [](double v) { return v * 640.0; }, 3, QLatin1String(" Acres)")},
    {QLatin1String("TLAG"), [](double v) { return v / 0.6; }, 3, QLatin1String(" Time of Conc. hrs)")},
    {QLatin1String("RAREA"), [](double v) { return v * 43560.0; }, 2, QLatin1String(" Square Feet)")},
    {QLatin1String("DSTRMX"), [](double v) { return v * 43560.0; }, 2, QLatin1String(" Cubic Feet)")},
    {QLatin1String("CAREA"), equivalentDiameter, 2, QLatin1String(" Equiv. Diameter inches )")},
}};

void setSize(FlexGrid& grid, int rows, int cols)
{
    grid.setFixedRows(0);
    grid.setFixedCols(0);
    grid.setRows(rows);
    grid.setCols(cols);
}

void emptyFrom(FlexGrid& grid, int firstRow)
{
    for (int row = firstRow; row < grid.rows(); ++row)
        for (int col = 0; col < grid.cols(); ++col)
            grid.setTextMatrix(row, col, QString());
}

} // namespace

Catalogue::Catalogue(Services& services) : m_services(services)
{
    setSize(hecgrid1, kCardRows, 12);
    setSize(grid3, kVariableRows, 4);
    setSize(Grid4, kDescriptionRows, 2);
    grid3.setRowTexts(0, 1, {QStringLiteral("Variable"), QStringLiteral("Location"), QStringLiteral("Description")});
}

// -- Reading ---------------------------------------------------------------------------------------------------------

void Catalogue::load()
{
    loadhecdatarecords();
    loadhecvariabledescriptions();
    loadcarddescriptions();
}

std::optional<QByteArray> Catalogue::fileBytes(const QString& name, QString* why) const
{
    const QString path = m_services.folder.dataFile(name);
    if (!path.isEmpty())
        return readFile(path, why);
    if (why)
        *why = QStringLiteral("File not found");
    return {};
}

void Catalogue::loadhecdatarecords()
{
    const FlexGrid::Bulk bulk(hecgrid1);
    emptyFrom(hecgrid1, 0);
    const auto bytes = fileBytes(QStringLiteral("hec1datarecs.txt"));
    if (!bytes)
        return;
    const QStringList items = listItemsOf(*bytes);
    for (int row = 0; row < kCardRows && (row + 1) * kRecordItems <= items.size(); ++row)
        hecgrid1.setRowTexts(row, 0, items.mid(row * kRecordItems, kRecordItems));
}

void Catalogue::loadhecvariabledescriptions()
{
    const FlexGrid::Bulk bulk(grid3);
    emptyFrom(grid3, 1);
    QString why;
    if (const auto bytes = fileBytes(QStringLiteral("hec1variabledescription.txt"), &why)) {
        int row = 0;
        for (const QString& line : linesOf(*bytes)) {
            ++row;
            const qsizetype first = line.indexOf(u'\t');
            const qsizetype second = first < 0 ? -1 : line.indexOf(u'\t', first + 1);
            if (second < 0)
                why = QStringLiteral("Line %1 has fewer than two tabs").arg(row);
            else if (row >= kVariableRows)
                why = QStringLiteral("More than %1 lines").arg(kVariableRows - 1);
            if (!why.isEmpty())
                break;
            grid3.setRowTexts(row, 1,
                              {line.left(first), line.mid(first + 1, second - first - 1), line.mid(second + 1)});
        }
    }
    if (!why.isEmpty())
        m_services.dialogs.tell(why + QStringLiteral(" - Error in Hec1variabledescription.txt file"));
}

void Catalogue::loadcarddescriptions()
{
    const FlexGrid::Bulk bulk(Grid4);
    emptyFrom(Grid4, 1);
    const auto bytes = fileBytes(QStringLiteral("Carddescriptiontext.txt"));
    if (!bytes)
        return;
    int row = 0;
    for (const QString& line : linesOf(*bytes)) {
        const qsizetype tab = line.indexOf(u'\t');
        if (tab < 0 || ++row >= kDescriptionRows)
            return;
        Grid4.setRowTexts(row, 0, {line.left(tab), line.mid(tab + 1)});
    }
}

// -- Searching -------------------------------------------------------------------------------------------------------

std::optional<QString> Catalogue::GETHECINFO(const QString& cardID, const QString& fieldHeader) const
{
    if (cardID.isEmpty())
        return QString();
    const QString kind = RTrim(cardID); // a comment card as read from a file has the ID "* "
    for (const CommentKind& comment : kCommentKinds)
        if (kind == comment.id)
            return QString(comment.text);
    const double field = leadingNumber(fieldHeader);
    if (field < 0.0 || field > hecgrid1.cols() - 1)
        return {};
    for (int row = 0; row < hecgrid1.rows(); ++row)
        if (hecgrid1.textMatrix(row, 0) == cardID)
            return u' ' + hecgrid1.textMatrix(row, static_cast<int>(field)) + u' ';
    return {};
}

QString Catalogue::gethecvariabledesc(const QString& cardID, const QString& variableName, const QString& cellText) const
{
    if (cardID.isEmpty())
        return {};
    const QString name = Trim(variableName);
    for (int row = 1; row < grid3.rows(); ++row) {
        if (grid3.textMatrix(row, 1) != name || !grid3.textMatrix(row, 2).contains(cardID))
            continue;
        const double value = leadingNumber(cellText);
        if (value < 0.0 && name == u"CAREA")
            return QStringLiteral("Orifice Area is Negative!");
        return grid3.textMatrix(row, 3) + convertedValue(name, value);
    }
    return {};
}

QString Catalogue::getcarddescription(const QString& cardID) const
{
    if (cardID.isEmpty())
        return {};
    for (int row = 1; row < Grid4.rows(); ++row)
        if (Grid4.textMatrix(row, 0) == cardID)
            return Grid4.textMatrix(row, 1);
    return {};
}

QStringList Catalogue::fieldNames(const QString& cardID) const
{
    if (cardID.isEmpty())
        return {};
    for (int row = 0; row < hecgrid1.rows(); ++row)
        if (hecgrid1.textMatrix(row, 0) == cardID)
            return hecgrid1.rowTexts(row, 1).mid(0, kRecordItems - 1);
    return {};
}

QString convertedValue(const QString& variable, double value)
{
    if (!(value > 0.0))
        return {};
    for (const Conversion& conversion : kConversions) {
        if (variable != conversion.variable)
            continue;
        // Through its text, so that the figure is that of the digits which the user sees.
        const double shown = leadingNumber(generalText(value));
        const double converted = conversion.compute(shown);
        if (!std::isfinite(converted))
            return {};
        return QStringLiteral(" (") + generalText(roundHalfEven(converted, conversion.decimals)) + conversion.tail;
    }
    return {};
}

int istapeheader(const QString& name, const QStringList& stations, Dialogs& dialogs)
{
    if (name.isEmpty()) {
        dialogs.tell(QStringLiteral("Unknown Error in istapeheader - Restart Application!"));
        return 0;
    }
    return !stations.isEmpty() && name.size() > kStationName ? 1 : 0;
}

// -- The status bar --------------------------------------------------------------------------------------------------

CatalogueHelp::CatalogueHelp(const Catalogue& catalogue, const Deck& deck, StatusPanels& panels, QObject* parent)
    : QObject(parent), m_catalogue(catalogue), m_deck(deck), m_panels(panels)
{
    connect(&panels, &StatusPanels::panelChanged, this, [this](int panel, const QString& text) {
        if (panel == kHelpPanel)
            tipFor(text);
    });
}

QString CatalogueHelp::variableName(const QString& id, const QString& field) const
{
    return m_catalogue.GETHECINFO(id, field).value_or(m_panels.text(6));
}

QString CatalogueHelp::variableDescription(const QString& id, const QString& variable) const
{
    return m_catalogue.gethecvariabledesc(id, variable, m_deck.Grid1.text());
}

QString CatalogueHelp::cardDescription(const QString& id) const
{
    return m_catalogue.getcarddescription(id);
}

void CatalogueHelp::tipFor(const QString& text)
{
    bool converted = false;
    for (const Conversion& conversion : kConversions)
        converted = converted || text.endsWith(conversion.tail);
    // A lag in hours is the same in both systems.
    const bool inEnglishUnits = converted && !text.endsWith(QStringLiteral(" hrs)"));
    m_panels.setToolTip(kHelpPanel, inEnglishUnits && isMetricDeck(m_deck)
                                        ? QStringLiteral("The figure in brackets holds for English units only: this "
                                                         "deck has an IM card, its values are metric.")
                                        : QString());
}

bool isMetricDeck(const Deck& deck)
{
    for (int row = 1; row < deck.Grid1.rows(); ++row)
        if (deck.id(row) == u"IM")
            return true;
    return false;
}

} // namespace kalvo
