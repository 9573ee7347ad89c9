// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Commands.h"

#include <QPointer>

namespace kalvo {

Commands::Commands(QObject* parent) : QObject(parent) {}
Commands::~Commands() = default;

void Commands::add(const QString& name, std::function<void()> body, const QLoggingCategory& (*log)())
{
    Entry& entry = m_entries[name];
    entry.body = std::move(body);
    entry.log = log;
    Q_EMIT stateChanged(name);
}

bool Commands::has(const QString& name) const
{
    const auto found = m_entries.constFind(name);
    return found != m_entries.constEnd() && found->body;
}

QStringList Commands::names() const
{
    QStringList all;
    for (auto entry = m_entries.constBegin(); entry != m_entries.constEnd(); ++entry)
        if (entry->body)
            all << entry.key();
    all.sort();
    return all;
}

bool Commands::run(const QString& name)
{
    if (!isEnabled(name))
        return false;
    // Copies, because a command may add others, or close the window that owns all of this.
    const Entry entry = m_entries.value(name);
    const auto gate = m_gate;
    const auto reopen = m_reopen;
    const QPointer<Commands> self(this);
    const auto work = [&] {
        if (gate)
            gate();
        entry.body();
    };
    return guarded(entry.log(), name.toUtf8().constData(), work, [&] {
        if (self && reopen)
            reopen();
    });
}

void Commands::setGate(std::function<void()> gate)
{
    m_gate = std::move(gate);
}

void Commands::setReopen(std::function<void()> reopen)
{
    m_reopen = std::move(reopen);
}

bool Commands::isEnabled(const QString& name) const
{
    const auto found = m_entries.constFind(name);
    return found != m_entries.constEnd() && found->body && found->enabled;
}

bool Commands::isEnabledFlag(const QString& name) const
{
    return m_entries.value(name).enabled;
}

bool Commands::isChecked(const QString& name) const
{
    return m_entries.value(name).checked;
}

bool Commands::isShown(const QString& name) const
{
    return m_entries.value(name).shown;
}

void Commands::setState(const QString& name, bool Entry::*state, bool on)
{
    Entry& entry = m_entries[name];
    if (entry.*state == on)
        return;
    entry.*state = on;
    Q_EMIT stateChanged(name);
}

void Commands::setEnabled(const QString& name, bool on)
{
    setState(name, &Entry::enabled, on);
}

void Commands::setChecked(const QString& name, bool on)
{
    setState(name, &Entry::checked, on);
}

void Commands::setShown(const QString& name, bool on)
{
    setState(name, &Entry::shown, on);
}

} // namespace kalvo
