// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Deck.h"
#include "deck/EditorPlacement.h"
#include "deck/MainMenu.h"
#include "deck/Workspace.h"

#include <QHash>
#include <QMainWindow>

#include <functional>
#include <memory>

class QAction;
class QMenu;
class QToolBar;

namespace kalvo {

class CardRulerBar;
class EditorBox;
class FlexGridView;
class StatusPanelBar;

/// The main screen: shows the deck of a Workspace in the grid `Grid1`, lays the editor `Text1` over the current cell,
/// and mirrors the workspace's commands in menus, tool buttons and shortcuts and its panels in the status bar. It holds
/// no data of its own; what a key or a click means is decided by the workspace's logic.
///
/// @code
///     Workspace page(services, screens);
///     Form1 form(page);
///     form.load();
///     form.show();
///     page.files.opencommandline(path);
/// @endcode
class Form1 : public QMainWindow, private EditBox
{
    Q_OBJECT

public:
    /// The workspace must outlive the screen.
    explicit Form1(Workspace& page, QWidget* parent = nullptr);
    ~Form1() override;

    /// An empty deck, first texts of the panels, the standard size.
    void load();

    /// Makes the workspace of a clone page with all its command groups.
    using CloneMaker = std::function<std::unique_ptr<Workspace>(Workspace& first)>;
    /// Lets the user open a second page; the entry is shown from now on.
    void setCloneMaker(CloneMaker maker);
    Form1* clonePage() const { return m_clone.get(); }

    Workspace& page() const { return m_page; }
    FlexGridView* grid() const { return Grid1; }

    /// Once the program has started: asks about the decks that a crash left behind.
    void offerLeftDecks();

    /// Runs the command behind a tool button's key; an unknown key is told.
    void toolButtonClicked(const QString& key);
    /// 14600 x 9200 twips.
    static QSize standardSize() { return {14600 / kTwipsPerPixel, 9200 / kTwipsPerPixel}; }

    QMenu* createPopupMenu() override { return nullptr; } // the toolbar has an entry of its own

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // Form1_MainScreen.cpp: building and window
    void buildGrid();
    void addWindowCommands();
    void followPage();
    void showCaption();
    void showRuler();
    void openClone();
    bool mayEnd();

    // Form1_Menu.cpp: menus and toolbar
    void buildMenus();
    QAction* addEntry(const MenuRow& row);
    void buildRecentMenu(QMenu& menu, const MenuRow& row);
    void fillRecentMenu();
    void buildToolbar();
    void drawIcons();
    void mirrorCommand(const QString& name);

    // Form1_StatusBar.cpp
    void buildStatusBar();
    void showMemory();
    void showStatusText();
    void showWaiting(bool on);

    // Form1_Editor.cpp: the floating editor as the deck sees it, and where it lies
    bool isShown() const override;
    void setShown(bool on) override;
    QString text() const override;
    void setText(const QString& text) override;
    void setTint(Tint tint) override;
    void place() override;
    void buildEditor();
    void followView();
    void fillEditor();
    QRect editorArea(const EditorPlace& place) const;
    void relocateEditor();
    void fitEditor();
    void layEditor(const QRect& area);
    void hideEditor();
    EditorSurroundings surroundings() const;
    QString gridTip(int row, int col) const;

    // Form1_Keys.cpp: keys, wheel, mouse
    void keyInEditor(QKeyEvent* key);
    void keyOnGrid(QKeyEvent* key);
    void startTyping(const QString& character);
    void followMove(const EditorMove& move);
    void outputIsStale();
    void MouseWheel(int delta, Qt::KeyboardModifiers modifiers);
    void showPopup(const QPoint& globalPoint);
    bool isPopupKey(const QKeyEvent& key);
    void connectKeys();

    Workspace& m_page;
    FlexGridView* Grid1 = nullptr;
    CardRulerBar* m_ruler = nullptr;
    EditorBox* Text1 = nullptr;
    StatusPanelBar* m_statusBar = nullptr;
    QToolBar* m_toolbar = nullptr;
    QMenu* m_popup = nullptr;
    QMenu* m_recent = nullptr;
    QAction* m_stopRun = nullptr;
    QHash<QString, QMenu*> m_menus;
    QMultiHash<QString, QAction*> m_mirrors; ///< every action that shows a command's state
    QHash<QString, QString> m_iconNames;     ///< by tool button's key
    int m_filledRow = -1;                    ///< the cell whose text the editor holds
    int m_filledCol = -1;
    bool m_refocusEditor = false; ///< it had the focus when it was hidden
    int m_noFitAfterDrag = 1;     ///< 1: the end of a drag of an edge does not fit the editor

    CloneMaker m_cloneMaker;
    std::unique_ptr<Workspace> m_clonePage;
    std::unique_ptr<Form1> m_clone; ///< goes ahead of its workspace
};

} // namespace kalvo
