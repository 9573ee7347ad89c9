// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Commands.h"
#include "platform/Screens.h"
#include "run/RunState.h"

#include <QObject>

namespace kalvo {

/// The output viewer as one main screen asks for it: adds `viewhec1`, which shows `Form12`, and lets open viewers read
/// again whenever a run of that screen is over.
class ViewerCommands : public QObject
{
    Q_OBJECT

public:
    ViewerCommands(Commands& commands, Screens& screens, const RunEvents& events);
    ~ViewerCommands() override;
};

} // namespace kalvo
