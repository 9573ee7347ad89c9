// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Form7_FreeTranslation.h"

#include "deck/FreeFormatDesk.h"
#include "deck/ImportScreens.h"
#include "deck/ScreenWindow.h"
#include "platform/FlexGridView.h"

#include <QAction>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QTextDocument>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr int kRemarksHeight = 104;

} // namespace

Form7::Form7(std::shared_ptr<FreeFormatDesk> desk, std::shared_ptr<QTextDocument> text, QWidget* parent)
    : QMainWindow(parent), m_desk(std::move(desk)), m_text(std::move(text))
{
    setObjectName(QStringLiteral("Form7"));
    setWindowTitle(QStringLiteral(" Kalvo FREE Format Input Translation"));
    buildControls();
    buildMenu();
    connect(m_desk.get(), &FreeFormatDesk::converted, this, &Form7::repaintScreen);
    resize(1180, 600);
    Form7::repaintScreen();
}

Form7::~Form7()
{
    delete takeCentralWidget(); // ahead of the text and the grid that it shows, which may go with this screen
}

void Form7::buildControls()
{
    auto* middle = new QWidget(this);
    auto* panels = new QSplitter(Qt::Horizontal, middle);
    panels->setChildrenCollapsible(false);
    RichTextBox1 = cardTextBox("RichTextBox1", panels);
    RichTextBox1->setDocument(m_text.get());
    Grid1 = new FlexGridView(m_desk->Grid1, panels);
    Grid1->setObjectName(QStringLiteral("Grid1"));
    Grid1->setUserResizing(true);
    panels->setStretchFactor(0, 1);
    panels->setStretchFactor(1, 3);
    panels->setSizes({260, 920});

    m_remarks = new QPlainTextEdit(middle);
    m_remarks->setObjectName(QStringLiteral("Remarks"));
    m_remarks->setReadOnly(true);
    m_remarks->setFixedHeight(kRemarksHeight);
    m_remarks->setTabChangesFocus(true);

    auto* layout = new QVBoxLayout(middle);
    layout->setContentsMargins(8, 4, 8, 8);
    layout->setSpacing(6);
    layout->addWidget(panels, 1);
    layout->addWidget(m_remarks);
    setCentralWidget(middle);
}

void Form7::buildMenu()
{
    const QString file = QStringLiteral("&File");
    const QString edit = QStringLiteral("&Edit");
    addMenuEntry(*this, file, "mnu_save", QStringLiteral("&Save All Data"), [this] {
        m_desk->saveFixed();
    })->setShortcut(QKeySequence::Save);
    addMenuEntry(*this, file, "mnu_returnfrom7", QStringLiteral("&Return"), [this] {
        m_desk->returnFromTranslation();
    })->setShortcut(QKeySequence::Close);
    QAction* undo =
        addMenuEntry(*this, edit, "mnu_undo", QStringLiteral("&Undo in Left Panel"), [this] { m_text->undo(); });
    undo->setEnabled(m_text->isUndoAvailable());
    connect(m_text.get(), &QTextDocument::undoAvailable, undo, &QAction::setEnabled);
    addMenuEntry(*this, edit, "mnu_copy", QStringLiteral("&Copy Selection"), [this] { m_desk->copySelection(); });
    addMenuEntry(*this, edit, "mnu_removesp", QStringLiteral("&Remove Extra Spaces"), [this] { mnu_removesp(); });
    addMenuEntry(*this, QString(), "mnu_convert", QStringLiteral("Con&vert Left Panel to Grid"),
                 [this] { m_desk->convert(RichTextBox1->toPlainText()); });
    addMenuEntry(*this, QString(), "mnu_help", QStringLiteral("&Help"), [this] {
        m_desk->services().dialogs.tell(
            QStringLiteral("Procedure: Select Rows, Copy, Paste Selection on Main Input Screen"));
    });
    // On the grid alone: in the text beside it the same keys copy what is marked there.
    auto* copyKey = new QAction(Grid1);
    copyKey->setShortcut(QKeySequence::Copy);
    copyKey->setShortcutContext(Qt::WidgetShortcut);
    Grid1->addAction(copyKey);
    connect(copyKey, &QAction::triggered, this, [this] { m_desk->copySelection(); });
}

void Form7::mnu_removesp()
{
    replaceText(*m_text, twospaces(RichTextBox1->toPlainText()));
    RichTextBox1->selectAll();
    RichTextBox1->verticalScrollBar()->setValue(0);
}

void Form7::showScreen()
{
    show();
    raise();
    activateWindow();
    Grid1->setFocus();
}

void Form7::repaintScreen()
{
    setCardWidths(m_desk->Grid1);
    m_remarks->setPlainText(m_desk->remarks().join(u'\n'));
    m_remarks->setVisible(!m_desk->remarks().isEmpty());
}

} // namespace kalvo
