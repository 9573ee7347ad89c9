// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace kalvo {

/// One secondary screen as lower rooms see it: by name, without its class. A screen that is unloaded forgets its data.
class Screen
{
public:
    virtual ~Screen() = default;
    virtual void showScreen() = 0;
    virtual void hideScreen() = 0;
    virtual bool isScreenVisible() const = 0;
    /// Shows again what the files or tables now hold.
    virtual void repaintScreen() {}
};

/// The registry of screens: each a single instance, made on first use, found by its given name ("GRAPHER", "Form10").
/// A room registers what it builds; a lower room unloads or repaints by name and never includes. A name that nobody
/// registered is no error for `unload`, `isLoaded`, `isVisible` and `repaint`: its screen is just not there.
class Screens : public QObject
{
    Q_OBJECT

public:
    using Factory = std::function<std::unique_ptr<Screen>()>;

    explicit Screens(QObject* parent = nullptr);
    ~Screens() override;

    void add(const QString& name, Factory factory);
    bool isKnown(const QString& name) const;
    QStringList names() const; ///< sorted

    /// The instance, made if need be; null for an unknown name.
    Screen* load(const QString& name);
    /// By type, for callers of the same or a higher room; null when unknown or of another type.
    template <class T> T* loadAs(const QString& name) { return dynamic_cast<T*>(load(name)); }
    bool isLoaded(const QString& name) const;
    bool isVisible(const QString& name) const;
    void show(const QString& name);    ///< loads and shows
    void repaint(const QString& name); ///< if loaded
    /// Deletes the instance. Safe while one of its own slots runs: the object goes when control is back in the event
    /// loop, its data and window at once.
    void unload(const QString& name);
    void unloadAll();
    QStringList loaded() const; ///< in order of loading

Q_SIGNALS:
    void screenUnloaded(const QString& name);

private:
    QHash<QString, Factory> m_factories;
    QHash<QString, std::shared_ptr<Screen>> m_loaded;
    QStringList m_order;
};

} // namespace kalvo
