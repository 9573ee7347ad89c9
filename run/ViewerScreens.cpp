// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ViewerScreens.h"

#include "deck/ScreenWindow.h"
#include "platform/CommandGuard.h"
#include "run/Form12_OutputViewer.h"
#include "run/Oform_OutputList.h"

namespace kalvo {

void registerOutputViewers(const ViewerSurroundings& around)
{
    around.screens.add(QStringLiteral("Form12"), [around] { return std::make_unique<Form12>(around); });
    around.screens.add(QStringLiteral("Oform"), [around] { return std::make_unique<Oform>(around); });
}

QAction* addViewerEntry(QMainWindow& viewer, const QString& menu, const char* name, const QString& caption,
                        std::function<void()> body)
{
    return addMenuEntry(viewer, menu, name, caption, [name, body = std::move(body)] { guarded(logRun(), name, body); });
}

} // namespace kalvo
