// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/EditContext.h"

#include <QObject>

#include <random>

namespace kalvo {

/// Comment entry, marks and the ready KO card of one page. Adds `Commententry`, `hiliteKK`, `mnu_identkkgroups`,
/// `recolorKKGroups` (for commands that move cards, in no menu), `mnu_newidcards` and `mnu_addkocard` to the commands.
class MarkCommands : public QObject
{
    Q_OBJECT

public:
    explicit MarkCommands(const EditContext& context);

    /// Shows the screen `editcomms` on the current row when it is a text card; nothing on all others.
    void Commententry();
    /// Cuts the text into the cells of a row, as one undo level. A row that is not there is ignored.
    void saveComment(int row, const QString& text);
    /// Selection back to the cursor alone.
    void collapseSelection();

    /// Inserts a KO card that asks for the hydrograph (21 in field 5) above the cursor row and tells in panel 7 which
    /// station it belongs to.
    void mnu_addkocard();

private:
    QString stationOf(int row) const;

    EditContext m_context;
    std::mt19937 m_random;
};

} // namespace kalvo
