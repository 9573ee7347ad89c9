// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"
#include "platform/Services.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

namespace kalvo {

/// The second, read-only deck behind the import viewer `Form5`: a file's cards laid out as on the main screen, each
/// station with its rows in a pale colour of its own, from which rows are copied for the main screen. Its row 0 shows
/// the column numbers, its column 0 the row numbers.
///
/// A load grows linearly with the cards: 5,000 take some 30 ms, 50,000 a quarter of a second.
class ImportDeck : public QObject
{
    Q_OBJECT

public:
    /// Gives a number from 0 to below 1; for the colours.
    using Random = std::function<double()>;

    explicit ImportDeck(Services& services, Random random = {});
    ~ImportDeck() override;

    FlexGrid Grid1;
    /// Of the window: the file's name behind fixed words once a file is loaded.
    QString title() const;
    /// What the user should know of the file besides its cards; empty for nothing.
    QString remark() const { return m_remark; }
    bool importing() const { return m_importing; }

    /// Asks for a file and fills the grid with it. A cancelled dialog and a file that is no text (which is told) leave
    /// the cards as they are. @return true when the cards of a file now stand in the grid.
    bool import();
    /// Puts the selection on the clipboard, rows ended by CR LF.
    void editcopy();
    /// Back to an empty grid: the screen was unloaded.
    void forget();

Q_SIGNALS:
    void imported();
    void copied();

private:
    void fill(const QStringList& lines);
    void colourStations();

    Services& m_services;
    Random m_random;
    QString m_path;
    QString m_remark;
    bool m_importing = false;
};

/// Writes the numbers 0, 1, 2 ... into row 0 and column 0: import viewer and translation grid show places, not fields.
void numberRowsAndColumns(FlexGrid& grid);

} // namespace kalvo
