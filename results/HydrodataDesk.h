// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"
#include "results/ResultDesk.h"

#include <QObject>
#include <QString>

#include <memory>

namespace kalvo {

/// What can be done with the table of hydrographs, for its screen `hydrodata` and for the commands of every page, and
/// the tables of the centers of mass. One serves all pages.
///
/// It also keeps the order of life: what was worked out of the table of hydrographs goes with it, by whatever way
/// `hydrodata` is unloaded.
class HydrodataDesk : public QObject
{
    Q_OBJECT

public:
    explicit HydrodataDesk(std::shared_ptr<ResultDesk> desk);

    ResultDesk& desk() const { return *m_desk; }
    const std::shared_ptr<ResultDesk>& sharedDesk() const { return m_desk; }
    FlexGrid& table() const { return m_desk->tables().hydrographTable; }

    /// Fills the tables of `Form11` and `Form20` and shows `Form20`. A cell that is no number ends it without a word:
    /// `Form11` stays half filled, `Form20` as it was, and the log names the cell.
    /// @return true when all hydrographs have their center.
    bool center_of_mass();
    /// Asks for a file and writes the table's selection to it.
    void mnu_saveselect();
    /// Asks for a file and writes `Form20`'s table to it.
    void mnu_save();
    /// Hides the table and every chart that was made of it; the main screen comes forward.
    void Endhydrodata();
    /// Goes back from a screen of the centers of mass to the table of hydrographs where that is shown, else to the main
    /// screen.
    void leaveCenters(const QString& screen);

    FlexGrid Form11Grid; ///< the working table of the centers of mass
    FlexGrid Form20Grid; ///< the centers of mass as a list

private:
    void follow(const QString& unloaded);
    void hide(const QString& screen);
    void tellNotSaved(const QString& why);

    const std::shared_ptr<ResultDesk> m_desk;
};

} // namespace kalvo
