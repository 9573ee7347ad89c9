// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GraphScreens.h"

namespace kalvo {

void registerGrapher(Screens& screens, std::shared_ptr<ResultDesk> desk, GraphSources sources)
{
    screens.add(QStringLiteral("GRAPHER"), [desk = std::move(desk), sources = std::move(sources)] {
        return std::make_unique<GRAPHER>(desk, sources);
    });
}

} // namespace kalvo
