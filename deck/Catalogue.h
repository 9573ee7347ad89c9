// SPDX-License-Identifier: GPL-3.0-or-later
// What each field of each card means. The knowledge lies in three text files beside the program, not in the code.
#pragma once

#include "deck/CellEditing.h"
#include "platform/FlexGrid.h"
#include "platform/Services.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

namespace kalvo {

class Deck;
class StatusPanels;

/// The card catalogue: read once at start, then only searched. A missing file leaves its part empty, and the program
/// works without those words. Every search walks at most 300 rows, some microseconds.
class Catalogue
{
public:
    static constexpr int kCardRows = 126;        ///< of `hecgrid1`, filled from row 0
    static constexpr int kVariableRows = 300;    ///< of `grid3`, filled from row 1
    static constexpr int kDescriptionRows = 200; ///< of `Grid4`, filled from row 1

    explicit Catalogue(Services& services);

    /// All three files.
    void load();
    /// Fills `hecgrid1` from `hec1datarecs.txt`, a stream of list items, 11 to a card. Stops without a word at the
    /// first record that is not whole and at the first one past the last row.
    void loadhecdatarecords();
    /// Fills `grid3` from `hec1variabledescription.txt`: name, cards, description, parted by TABs. Tells any failure in
    /// a box and keeps what was read so far.
    void loadhecvariabledescriptions();
    /// Fills `Grid4` from `Carddescriptiontext.txt`: card, TAB, description. Stops without a word at a line without a
    /// TAB.
    void loadcarddescriptions();

    /// The text of panel 6 for a field: the variable's name, or the kind of a comment, between blanks.
    /// @param fieldHeader header of the column; the empty one of the ID column gives the ID itself.
    /// @return none when the card is unknown: the panel then keeps what it shows.
    std::optional<QString> GETHECINFO(const QString& cardID, const QString& fieldHeader) const;
    /// The text of panel 7: what a variable of a card means, with the value converted to other units for the few
    /// variables that have such; empty when no row of the catalogue fits name and card.
    /// @param cellText what stands in the field; the number at its start is the value.
    QString gethecvariabledesc(const QString& cardID, const QString& variableName, const QString& cellText) const;
    /// Empty when the card is unknown.
    QString getcarddescription(const QString& cardID) const;
    /// The variables of fields 1 to 10 of a card, empty texts where it has none; an empty list for an unknown card.
    QStringList fieldNames(const QString& cardID) const;

    FlexGrid hecgrid1; ///< column 0 the card's ID, columns 1 to 10 the variables of its fields
    FlexGrid grid3;    ///< from row 1: column 1 the variable, 2 the cards that hold it, 3 what it means
    FlexGrid Grid4;    ///< from row 1: column 0 the card's ID, column 1 what it is for

private:
    std::optional<QByteArray> fileBytes(const QString& name, QString* why = nullptr) const;

    Services& m_services;
};

/// What a value works out to in other units, " (1056 Acres)"; empty for a variable without a conversion and for a value
/// that is not above zero. Areas in square miles, lags in hours, volumes in acre-feet, openings in square feet.
QString convertedValue(const QString& variable, double value);

/// 1 when `name` is long enough to be the header line of a station rather than its name (more than 8 characters) and
/// the list has an item, else 0. It compares with no station and cuts nothing. An empty name is told in a box.
int istapeheader(const QString& name, const QStringList& stations, Dialogs& dialogs);

/// The catalogue as the status bar of one page asks it: reads the value from the cell under the cursor, keeps panel 6
/// over an unknown card, and gives panel 7 a tip where a metric deck makes a converted value wrong.
class CatalogueHelp : public QObject, public FieldHelp
{
    Q_OBJECT

public:
    CatalogueHelp(const Catalogue& catalogue, const Deck& deck, StatusPanels& panels, QObject* parent = nullptr);

    QString variableName(const QString& id, const QString& field) const override;
    QString variableDescription(const QString& id, const QString& variable) const override;
    QString cardDescription(const QString& id) const override;

private:
    void tipFor(const QString& text);

    const Catalogue& m_catalogue;
    const Deck& m_deck;
    StatusPanels& m_panels;
};

/// True when the deck holds an IM card: all its values are metric.
bool isMetricDeck(const Deck& deck);

} // namespace kalvo
