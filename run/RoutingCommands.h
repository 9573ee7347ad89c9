// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Commands.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "run/RunState.h"

#include <QByteArrayView>
#include <QObject>

namespace kalvo {

/// The viewers of reservoir routings as one main screen asks for them: adds `mnu_routing` and
/// `mnu_detailed_ReservoirRoutings`, and lets open viewers read again whenever a run of that screen is over.
class RoutingCommands : public QObject
{
    Q_OBJECT

public:
    RoutingCommands(Services& services, Commands& commands, Screens& screens, const RunEvents& events);
    ~RoutingCommands() override;

    void mnu_routing();
    void mnu_detailed_ReservoirRoutings();

private:
    void readAgain();

    Services& m_services;
    Screens& m_screens;
};

/// `mnu_Save` of the viewers: asks for a name and writes the text. An empty text is told and not written, a write that
/// fails is told too.
/// @param text lines ended by CR LF, as they stand in the file
void saveRoutings(Services& services, QByteArrayView text);

} // namespace kalvo
