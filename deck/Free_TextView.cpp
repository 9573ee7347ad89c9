// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Free_TextView.h"

#include "deck/FreeFormatDesk.h"
#include "deck/ImportScreens.h"
#include "deck/ScreenWindow.h"
#include "platform/FlexGrid.h"

#include <QAction>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTextDocumentFragment>

#include <algorithm>

namespace kalvo {

namespace {

// What the window has more than its text box: width left and right, height for title, menu and status.
constexpr int kMoreWidth = 400 / kTwipsPerPixel;
constexpr int kMoreHeight = 1200 / kTwipsPerPixel;
constexpr int kAbove = 6;
constexpr int kAdviceGap = 4;

} // namespace

Free::Free(std::shared_ptr<FreeFormatDesk> desk, Screens& screens, QWidget* parent)
    : QMainWindow(parent), m_desk(std::move(desk)), m_screens(screens)
{
    setObjectName(QStringLiteral("Free"));
    setWindowTitle(QStringLiteral(" View of Input File as Delimited Text File"));
    auto* middle = new QWidget(this);
    Text1 = cardTextBox("Text1", middle);
    setCentralWidget(middle);
    m_advice = new QLabel(QStringLiteral("Text cards (KM, ID, comments) are joined with blanks. There is no *FREE "
                                         "card, and HEC-1 need not take double blanks for a skipped field."),
                          middle);
    m_advice->setObjectName(QStringLiteral("Label1"));
    m_advice->setWordWrap(true);
    m_advice->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    buildMenu();
    connect(m_desk.get(), &FreeFormatDesk::delimitedChanged, this, &Free::repaintScreen);
    resize(900, 560);
    Free::repaintScreen();
}

void Free::buildMenu()
{
    addMenuEntry(*this, QString(), "mnu_Save", QStringLiteral("&Save"), [this] {
        m_desk->saveDelimited(Text1->toPlainText());
    })->setShortcut(QKeySequence::Save);
    addMenuEntry(*this, QString(), "mnu_Copy", QStringLiteral("&Copy"), [this] { mnu_Copy(); });
    addMenuEntry(*this, QString(), "mnu_Help", QStringLiteral("&Help"), [this] {
        m_desk->services().dialogs.tell(
            QStringLiteral("This is the Input screen as it will look saved as a Text File - "
                           "will work as a HEC-1 Free Format"));
    });
    addMenuEntry(*this, QString(), "mnu_Quit", QStringLiteral("&Quit"), [this] {
        m_screens.unload(QStringLiteral("Free"));
    })->setShortcut(QKeySequence::Close);
}

void Free::mnu_Copy()
{
    const QTextCursor cursor = Text1->textCursor();
    m_desk->copyText(cursor.hasSelection() ? cursor.selection().toPlainText() : Text1->toPlainText());
}

void Free::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    const int left = kMoreWidth / 2;
    const int wide = width() - kMoreWidth;
    const int room = centralWidget()->height() - kAbove - m_advice->heightForWidth(wide) - 2 * kAdviceGap;
    const int high = std::min(height() - kMoreHeight, room);
    Text1->setGeometry(left, kAbove, wide, high);
    const int below = kAbove + high + kAdviceGap;
    m_advice->setGeometry(left, below, wide, centralWidget()->height() - below);
}

void Free::showScreen()
{
    show();
    raise();
    activateWindow();
    Text1->setFocus();
}

void Free::repaintScreen()
{
    Text1->setPlainText(m_desk->delimited());
}

} // namespace kalvo
