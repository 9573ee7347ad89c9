// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ResultGrid.h"

#include "platform/CommandGuard.h"
#include "platform/GridActions.h"
#include "platform/Hourglass.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>

#include <algorithm>

namespace kalvo {

ResultGrid::ResultGrid(FlexGrid& grid, Services& services, QWidget* parent)
    : FlexGridView(grid, parent), m_services(services)
{
    setUserResizing(true);
    connect(this, &FlexGridView::leftPressed, this, [this] { setFocus(Qt::MouseFocusReason); });
    connect(this, &FlexGridView::wheelTurned, this, &ResultGrid::turnWheel);
    connect(this, &FlexGridView::contextMenuAsked, this, [this](const QPoint& point) {
        if (m_popup)
            m_popup->popup(point);
    });
}

void ResultGrid::setCsv(std::function<QString()> offeredName, UnitOfColumn unit)
{
    m_offeredName = std::move(offeredName);
    m_unit = std::move(unit);
}

void ResultGrid::guard(const char* command, const std::function<void()>& body)
{
    guarded(logResults(), command, body);
}

void ResultGrid::copyAs(CopyRule rule)
{
    guard("copy", [this, rule] {
        if (!confirmLargeCopy(grid(), m_services.dialogs))
            return;
        QString why;
        {
            const Hourglass hourglass;
            why = copySelection(grid(), rule, m_services.clipboard);
        }
        if (!why.isEmpty())
            m_services.dialogs.warn(why);
    });
}

void ResultGrid::selectWhole()
{
    guard("select all", [this] { kalvo::selectWhole(grid()); });
}

bool ResultGrid::toggleTitles()
{
    return kalvo::toggleTitles(grid());
}

void ResultGrid::saveCsvOf(const FlexGrid& table)
{
    guard("mnu_saveCsv", [this, &table] {
        FileDialog dialog;
        dialog.title = QStringLiteral("Save as CSV");
        dialog.filter = QStringLiteral("CSV Files (*.csv)|*.csv|All Files (*.*)|*.*");
        dialog.initialName = m_offeredName ? m_offeredName() : QString();
        dialog.defaultExtension = QStringLiteral(".csv");
        dialog.overwritePrompt = true;
        const auto chosen = m_services.dialogs.saveFile(dialog);
        if (!chosen || chosen->isEmpty())
            return;
        QString why;
        {
            const Hourglass hourglass;
            why = writeGridCsv(table, *chosen, m_unit);
        }
        if (!why.isEmpty())
            m_services.dialogs.warn(QStringLiteral("The table is not saved.\r\n%1").arg(why));
    });
}

QAction* ResultGrid::addPopupEntry(const char* name, const QString& caption, std::function<void()> body)
{
    if (!m_popup) {
        m_popup = new QMenu(this);
        m_popup->setObjectName(QStringLiteral("Popup"));
    }
    QAction* entry = m_popup->addAction(caption);
    entry->setObjectName(QString::fromLatin1(name));
    connect(entry, &QAction::triggered, this, [this, name, body = std::move(body)] { guard(name, body); });
    return entry;
}

void ResultGrid::followToggle(QAction* entry)
{
    entry->setCheckable(true);
    connect(entry, &QAction::triggered, this,
            [this, entry] { guard("toggle titles", [this, entry] { entry->setChecked(toggleTitles()); }); });
}

void ResultGrid::followEditMenu(QMenu* menu, QAction* copyEntry)
{
    connect(menu, &QMenu::aboutToShow, copyEntry, [this, copyEntry] { copyEntry->setEnabled(hasRange(grid())); });
}

void ResultGrid::keyPressEvent(QKeyEvent* event)
{
    FlexGridView::keyPressEvent(event);
    if (event->isAccepted())
        return;
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::SelectAll))
        selectWhole();
    else
        return;
    event->accept();
}

void ResultGrid::turnWheel(int delta, Qt::KeyboardModifiers modifiers)
{
    if (grid().rows() == 0)
        return;
    const bool pageMode = modifiers.testFlag(Qt::ControlModifier);
    const int step = wheelStep(pageMode, heightTwips(), grid().rowHeight(0));
    grid().setTopRow(wheelTopRow(grid().topRow(), grid().rows(), delta, step, std::min(1, grid().fixedRows())));
}

} // namespace kalvo
