// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Commands.h"
#include "platform/StatusPanels.h"
#include "results/HydrodataDesk.h"

#include <QObject>

#include <functional>
#include <memory>

namespace kalvo {

/// What the hydrograph commands of a page ask of its run commands.
struct HydrodataSource
{
    std::function<bool()> graph;    ///< reads the last run into the tables; true when they hold all of it
    std::function<bool()> hecRanOK; ///< HEC-1 was run and its end looked at
};

/// The commands of one main screen around the table of hydrographs: `mnu_hydrodata`, `mnu_CopyHydrographs` and
/// `center_of_mass`, the last one for a key alone.
class HydrodataCommands : public QObject
{
    Q_OBJECT

public:
    HydrodataCommands(std::shared_ptr<HydrodataDesk> hydrodata, Commands& commands, StatusPanels& panels,
                      HydrodataSource source);

    /// Shows the table of hydrographs; reads it again when its closed screen has taken it along.
    void mnu_hydrodata();
    /// Reads the last run and puts all hydrographs on the clipboard, rows ended by CR alone. Above 36,000 values it
    /// asks first.
    void mnu_CopyHydrographs();
    /// Reads the last run and shows its centers of mass in one step, with neither graph nor table in the way. Nothing
    /// ahead of the first run.
    void center_of_mass();

private:
    bool mayCopy(qint64 values);

    const std::shared_ptr<HydrodataDesk> m_hydrodata;
    StatusPanels& m_panels;
    const HydrodataSource m_source;
};

} // namespace kalvo
