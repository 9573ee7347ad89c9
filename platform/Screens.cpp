// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Screens.h"

namespace kalvo {

namespace {

/// Keeps a screen alive until control is back in the event loop it was unloaded from. A plain queued call would not do:
/// a slot of the screen may unload it and then wait for HEC-1 in a loop of its own, which runs queued calls. None
/// outlives the registry.
class Farewell : public QObject
{
public:
    Farewell(std::shared_ptr<Screen> screen, QObject* parent) : QObject(parent), m_screen(std::move(screen)) {}

private:
    std::shared_ptr<Screen> m_screen;
};

} // namespace

Screens::Screens(QObject* parent) : QObject(parent) {}

Screens::~Screens()
{
    // Last loaded goes first: what was built on another screen may still reach it while it goes.
    while (!m_order.isEmpty()) {
        const std::shared_ptr<Screen> last = m_loaded.take(m_order.takeLast());
    }
}

void Screens::add(const QString& name, Factory factory)
{
    m_factories.insert(name, std::move(factory));
}

bool Screens::isKnown(const QString& name) const
{
    return m_factories.contains(name);
}

QStringList Screens::names() const
{
    QStringList all = m_factories.keys();
    all.sort();
    return all;
}

Screen* Screens::load(const QString& name)
{
    if (const auto found = m_loaded.constFind(name); found != m_loaded.constEnd())
        return found->get();
    // A copy, because a screen may register others while it is built.
    const Factory factory = m_factories.value(name);
    std::shared_ptr<Screen> made = factory ? factory() : nullptr;
    if (!made)
        return nullptr;
    m_loaded.insert(name, made);
    m_order.append(name);
    return made.get();
}

bool Screens::isLoaded(const QString& name) const
{
    return m_loaded.contains(name);
}

bool Screens::isVisible(const QString& name) const
{
    const std::shared_ptr<Screen> screen = m_loaded.value(name);
    return screen && screen->isScreenVisible();
}

void Screens::show(const QString& name)
{
    if (Screen* screen = load(name))
        screen->showScreen();
}

void Screens::repaint(const QString& name)
{
    if (const std::shared_ptr<Screen> screen = m_loaded.value(name))
        screen->repaintScreen();
}

void Screens::unload(const QString& unloaded)
{
    const QString name = unloaded; // which may be the very entry that goes
    std::shared_ptr<Screen> screen = m_loaded.take(name);
    if (!screen)
        return;
    m_order.removeAll(name);
    screen->hideScreen();
    (new Farewell(std::move(screen), this))->deleteLater();
    Q_EMIT screenUnloaded(name);
}

void Screens::unloadAll()
{
    while (!m_order.isEmpty())
        unload(m_order.last());
}

QStringList Screens::loaded() const
{
    return m_order;
}

} // namespace kalvo
