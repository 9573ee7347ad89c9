// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ViewerScreens.h"

#include "run/Form12_OutputViewer.h"
#include "run/Oform_OutputList.h"

namespace kalvo {

void registerOutputViewers(const ViewerSurroundings& around)
{
    around.screens.add(QStringLiteral("Form12"), [around] { return std::make_unique<Form12>(around); });
    around.screens.add(QStringLiteral("Oform"), [around] { return std::make_unique<Oform>(around); });
}

} // namespace kalvo
