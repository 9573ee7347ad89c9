// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/CommandGuard.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

namespace kalvo {

/// The commands of one main screen by their given names ("runhec", "mnu_undo"), with the state that menus, tool buttons
/// and shortcuts mirror. Command groups add what they can do and set states; a menu only shows them. An entry that no
/// group has added is never enabled, whatever was set: a dead entry cannot be clicked.
class Commands : public QObject
{
    Q_OBJECT

public:
    explicit Commands(QObject* parent = nullptr);
    ~Commands() override;

    /// A failure of `body` is written to the category `log`. Adding a name again replaces its body; states that were
    /// set ahead of it stay.
    void add(const QString& name, std::function<void()> body, const QLoggingCategory& (*log)() = logDeck);
    QStringList names() const; ///< of all that were added, sorted
    bool has(const QString& name) const;

    /// Runs an enabled command: first the gate (which stores the edit box as leaving its cell would), then the body,
    /// guarded; after a failure `reopen` runs. A disabled or unknown command does nothing.
    /// @return true when it ran to its end.
    bool run(const QString& name);
    void setGate(std::function<void()> gate);
    /// Runs after a command failed: shows the grid again, releases the editor, puts the pointer back.
    void setReopen(std::function<void()> reopen);

    bool isEnabled(const QString& name) const; ///< added and not disabled
    void setEnabled(const QString& name, bool on);
    /// What was set, whether or not a command stands behind the name.
    bool isEnabledFlag(const QString& name) const;
    bool isChecked(const QString& name) const;
    void setChecked(const QString& name, bool on);
    bool isShown(const QString& name) const;
    void setShown(const QString& name, bool on);

Q_SIGNALS:
    void stateChanged(const QString& name);

private:
    struct Entry
    {
        std::function<void()> body;
        const QLoggingCategory& (*log)() = logDeck;
        bool enabled = true;
        bool checked = false;
        bool shown = true;
    };
    void setState(const QString& name, bool Entry::*state, bool on);

    QHash<QString, Entry> m_entries;
    std::function<void()> m_gate;
    std::function<void()> m_reopen;
};

} // namespace kalvo
