// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Screens.h"
#include "results/ResultDesk.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QAction;
class QMenu;

namespace kalvo {

class ResultGrid;

/// The window of a result screen: known by its name, shown above the main screen, hidden by Return and by closing, with
/// menus whose commands run inside the guard. What a screen has beyond that it builds in its constructor:
///
/// @code
///     Form10::Form10(std::shared_ptr<ResultDesk> desk, MainWindow mainWindow)
///         : ResultWindow("Form10", " Peak Flows", std::move(desk), std::move(mainWindow))
///     {
///         QMenu* file = addMenu("mnu_file", "&File");
///         addEntry(file, "mnu_return", "&Return", [this] { returnToMain(); });
/// @endcode
///
/// The controls go before the desk does. A screen that shows grids of its own calls `dropControls` in its destructor.
class ResultWindow : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    using MainWindow = std::function<QWidget*()>; ///< the first main screen, null as long as there is none

    ~ResultWindow() override;

    /// Comes above the main screen with the keyboard on `firstFocus`.
    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }

protected:
    ResultWindow(const char* name, const QString& caption, std::shared_ptr<ResultDesk> desk, MainWindow mainWindow);

    ResultDesk& desk() const { return *m_desk; }
    const std::shared_ptr<ResultDesk>& sharedDesk() const { return m_desk; }
    ResultTables& tables() const { return m_desk->tables(); }
    Services& services() const { return m_desk->services(); }

    /// A menu of the menu bar under its given name.
    QMenu* addMenu(const char* name, const QString& caption);
    /// An entry under its given name; its command runs inside the guard. Without a menu it stands in the menu bar.
    QAction* addEntry(QMenu* menu, const char* name, const QString& caption, std::function<void()> body);
    /// `mnu_saveCsv`, which every table of results has.
    QAction* addCsvEntry(QMenu* menu, ResultGrid* grid);
    void setFirstFocus(QWidget* widget) { m_firstFocus = widget; }
    /// Runs a command inside the guard under the log of this room.
    void run(const char* command, const std::function<void()>& body);

    /// Hides the screen and brings the main screen forward.
    void returnToMain();
    /// The user closed the window: by default it is hidden like on Return, and the pages are told that it was closed.
    virtual void closedByUser();
    /// The window has become the active one.
    virtual void activated() {}
    /// The window has another size; `central` is the place of the controls.
    virtual void layOut(const QSize& central) { Q_UNUSED(central); }
    /// Deletes the controls, ahead of the grids that they show.
    void dropControls();

    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const std::shared_ptr<ResultDesk> m_desk;
    const MainWindow m_mainWindow;
    QWidget* m_firstFocus = nullptr;
};

/// Twips as pixels, for sizes that are told in twips.
constexpr int fromTwips(int twips)
{
    return twips / kTwipsPerPixel;
}

} // namespace kalvo
