// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/MarkScreens.h"

#include "deck/EditorBox.h"
#include "deck/Form1_MainScreen.h"
#include "deck/Form2_Audit.h"
#include "deck/NewIDCard_IdentifyCards.h"
#include "deck/editcomms_CommentEntry.h"
#include "platform/FlexGridView.h"

#include <QApplication>

namespace kalvo {

namespace {

constexpr const char* kScreens[] = {"Form2", "editcomms", "NewIDCard"};

} // namespace

MarkScreens::MarkScreens(Form1& form) : QObject(&form), m_form(form), m_page(form.page())
{
    registerScreens();
    followAudit();
    followLooks();
}

// They speak to a page that may go next.
MarkScreens::~MarkScreens()
{
    Workspace& page = m_page;
    page.screens.disconnect(this);
    for (const char* name : kScreens)
        page.screens.unload(page.editContext.screenName(name));
}

void MarkScreens::registerScreens()
{
    Workspace& page = m_page;
    Form2::registerIn(page.audit, page.editContext, &m_form);
    editcomms::registerIn(page.marks, page.editContext, &m_form, [this] { return currentCell(); });
    NewIDCard::registerIn(page.editContext, &m_form);
}

QPoint MarkScreens::currentCell() const
{
    const FlexGridView* view = m_form.grid();
    const FlexGrid& grid = view->grid();
    return view->mapToGlobal(view->cellRect(grid.row(), grid.col()).topLeft());
}

void MarkScreens::followAudit()
{
    Workspace& page = m_page;
    connect(&page.screens, &Screens::screenUnloaded, this, [this, &page](const QString& name) {
        if (name == page.editContext.screenName("Form2"))
            m_form.grid()->setFocus(Qt::OtherFocusReason);
    });
}

void MarkScreens::followLooks()
{
    LookCommands& looks = m_page.looks;
    connect(&looks, &LookCommands::formColorsChanged, this, &MarkScreens::paintForm);
    connect(&looks, &LookCommands::editTextColorWanted, this, [this](Rgb color) {
        if (auto* Text1 = m_form.findChild<EditorBox*>(QStringLiteral("Text1")))
            Text1->setLook(Text1->font(), color == Rgb::None ? QColor(Qt::black) : QColor(static_cast<QRgb>(color)));
    });
}

/// The window and its bars; the grid has colours of its own.
void MarkScreens::paintForm(Rgb back, Rgb fore)
{
    QPalette colors;
    if (back != Rgb::None) {
        colors.setColor(QPalette::Window, QColor(static_cast<QRgb>(back)));
        colors.setColor(QPalette::Button, QColor(static_cast<QRgb>(back)));
    }
    if (fore != Rgb::None) {
        colors.setColor(QPalette::WindowText, QColor(static_cast<QRgb>(fore)));
        colors.setColor(QPalette::ButtonText, QColor(static_cast<QRgb>(fore)));
    }
    m_form.setPalette(colors);
}

} // namespace kalvo
