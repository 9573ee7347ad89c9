// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Commands.h"
#include "results/ResultDesk.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace kalvo {

/// The commands of one main screen that open result screens: `mnu_peakflows`, `mnu_tabular`, `mnu_runoffvolumes`.
class ResultCommands : public QObject
{
    Q_OBJECT

public:
    ResultCommands(std::shared_ptr<ResultDesk> desk, Commands& commands);

private:
    void addScreen(const char* command, const char* screen);
    void takeClosed(const QString& screen);

    const std::shared_ptr<ResultDesk> m_desk;
    Commands& m_commands;
};

} // namespace kalvo
