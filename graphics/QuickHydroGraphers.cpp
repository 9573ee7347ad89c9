// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/QuickHydroGraphers.h"

#include "deck/ScreenWindow.h"
#include "graphics/HydroGrapher_QuickHydroGrapher.h"

#include <QPoint>

namespace kalvo {
namespace {

constexpr int kStep = 28; ///< pixels, so that no window hides the title of another
constexpr int kMostSteps = 8;
constexpr int kFirstPlace = 60; ///< pixels from the corner of the screen

} // namespace

QuickHydroGraphers::QuickHydroGraphers(Services& services, QObject* parent) : QObject(parent), m_services(services) {}

QuickHydroGraphers::~QuickHydroGraphers()
{
    closeAll();
}

void QuickHydroGraphers::open(const FlexGrid& table, const QString& flowUnit)
{
    std::erase_if(m_list, [](const QPointer<HydroGrapher>& window) { return window.isNull(); });
    if (m_list.empty())
        hydroGrapherIndex = 0;
    auto* window = new HydroGrapher(m_services);
    m_list.emplace_back(window);
    const int way = kFirstPlace + kStep * (hydroGrapherIndex++ % kMostSteps);
    placeOnDisplay(*window, QPoint(way, way));
    window->show();
    window->raise();
    window->activateWindow();
    window->drawSelection(table, flowUnit);
}

void QuickHydroGraphers::closeAll()
{
    for (const QPointer<HydroGrapher>& window : m_list)
        if (window) {
            window->hide();
            window->deleteLater(); // one of its own commands may be what asks
        }
    m_list.clear();
    hydroGrapherIndex = 0;
}

std::vector<HydroGrapher*> QuickHydroGraphers::hydroGraphers() const
{
    std::vector<HydroGrapher*> open;
    for (const QPointer<HydroGrapher>& window : m_list)
        if (window && window->isVisible())
            open.push_back(window.data());
    return open;
}

} // namespace kalvo
