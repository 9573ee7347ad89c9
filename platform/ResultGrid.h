// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGridView.h"
#include "platform/GridCopy.h"
#include "platform/GridCsv.h"
#include "platform/Services.h"

#include <functional>

class QAction;
class QMenu;

namespace kalvo {

/// The grid of every screen that shows results: copy in the screen's own form, select all, titles that become ordinary
/// cells, a pop-up menu, the wheel, CSV. Screens hang their entries on it and keep no grid handling of their own.
///
/// @code
///     Grid1 = new ResultGrid(desk->tables().peakTable, desk->services(), middle);
///     Grid1->setObjectName("Grid1");
///     Grid1->setCopyRule(CopyRule::CrLf);
///     Grid1->setCsv([desk] { return desk->offeredName(); }, [](int col) { return col > 0 ? "cfs" : ""; });
///     Grid1->followToggle(addEntry(edit, "mnu_ToggleRowsandColumns", "Toggle &Titles", {}));
///     QAction* copy = addEntry(edit, "mnu_copy", "&Copy", [this] { Grid1->copy(); });
///     Grid1->followEditMenu(edit, copy);
///     Grid1->addPopupEntry("pop_Copy", "Copy", [this] { Grid1->copy(); });
/// @endcode
///
/// Ctrl+C copies and Ctrl+A selects all, titles too, whatever the menus say; arrows, Page, Home and End as in
/// FlexGridView. All of it runs inside the guard, and what cannot be done is told.
class ResultGrid : public FlexGridView
{
    Q_OBJECT

public:
    /// The grid must outlive the view.
    ResultGrid(FlexGrid& grid, Services& services, QWidget* parent = nullptr);

    void setCopyRule(CopyRule rule) { m_copyRule = rule; }
    /// @param offeredName base name for the dialog, asked when it opens.
    /// @param unit of each column, asked while the file is written.
    void setCsv(std::function<QString()> offeredName, UnitOfColumn unit);

    /// Puts the selection on the clipboard in the screen's own form; asks ahead of very many cells.
    void copy() { copyAs(m_copyRule); }
    void copyAs(CopyRule rule);
    /// Everything, titles too; see kalvo::selectWhole.
    void selectWhole();
    /// @return true when titles are ordinary cells now.
    bool toggleTitles();
    /// Asks for a name and writes the grid as CSV.
    void saveCsv() { saveCsvOf(grid()); }
    /// The same with another grid in place of the one shown, where that is laid out for the eye.
    void saveCsvOf(const FlexGrid& table);

    /// An entry of the pop-up menu `Popup`, which opens on the right button and the menu key once it has any.
    QAction* addPopupEntry(const char* name, const QString& caption, std::function<void()> body);
    /// The entry toggles the titles and carries the tick. Select All leaves the tick alone.
    void followToggle(QAction* entry);
    /// The entry is disabled when its menu opens without a range. Ctrl+C still copies the one cell.
    void followEditMenu(QMenu* menu, QAction* copyEntry);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void guard(const char* command, const std::function<void()>& body);
    void turnWheel(int delta, Qt::KeyboardModifiers modifiers);

    Services& m_services;
    CopyRule m_copyRule = CopyRule::CrLf;
    std::function<QString()> m_offeredName;
    UnitOfColumn m_unit;
    QMenu* m_popup = nullptr;
};

} // namespace kalvo
