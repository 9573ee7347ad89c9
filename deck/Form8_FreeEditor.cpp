// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Form8_FreeEditor.h"

#include "deck/FreeFormatDesk.h"
#include "deck/ImportScreens.h"
#include "deck/ScreenWindow.h"

#include <QAction>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTextDocument>
#include <QVBoxLayout>

#include <exception>

namespace kalvo {

Form8::Form8(std::shared_ptr<FreeFormatDesk> desk, std::shared_ptr<QTextDocument> text, QWidget* parent)
    : QMainWindow(parent), m_desk(std::move(desk)), m_text(std::move(text))
{
    setObjectName(QStringLiteral("Form8"));
    setWindowTitle(QStringLiteral(" Kalvo Free Format Editor"));
    auto* middle = new QWidget(this);
    RichTextBox1 = cardTextBox("RichTextBox1", middle);
    RichTextBox1->setDocument(m_text.get());
    RichTextBox1->setPlaceholderText(QStringLiteral("Open a free format file, paste one, or type:\n"
                                                    "an ID, then fields parted by commas, blanks or TABs."));
    auto* layout = new QVBoxLayout(middle);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->addWidget(RichTextBox1);
    setCentralWidget(middle);
    buildMenu();
    connect(m_text.get(), &QTextDocument::blockCountChanged, this, &Form8::showLength);
    showLength();
    resize(860, 560);
}

Form8::~Form8()
{
    // Ahead of the text that it shows, which may go with this screen.
    m_text->disconnect(this);
    delete takeCentralWidget();
}

void Form8::buildMenu()
{
    const QString file = QStringLiteral("&File");
    const QString edit = QStringLiteral("&Edit");
    addMenuEntry(*this, file, "mnu_open", QStringLiteral("&Open HEC-1 Free Input"), [this] {
        mnu_open();
    })->setShortcut(QKeySequence::Open);
    addMenuEntry(*this, file, "mnu_SaveasFREEFormat", QStringLiteral("&Save as FREE Format"), [this] {
        m_desk->saveFree(RichTextBox1->toPlainText());
    })->setShortcut(QKeySequence::Save);
    addMenuEntry(*this, file, "mnu_close", QStringLiteral("&Close"), [this] {
        close();
    })->setShortcut(QKeySequence::Close);
    QAction* undo = addMenuEntry(*this, edit, "mnu_undo", QStringLiteral("&Undo"), [this] { m_text->undo(); });
    undo->setEnabled(m_text->isUndoAvailable());
    connect(m_text.get(), &QTextDocument::undoAvailable, undo, &QAction::setEnabled);
    addMenuEntry(*this, edit, "mnu_paste", QStringLiteral("&Paste Over All"), [this] { mnu_paste(); });
    addMenuEntry(*this, edit, "mnu_removeblankLines", QStringLiteral("Remove Blank Lines"),
                 [this] { mnu_removeblankLines(); });
    addMenuEntry(*this, QString(), "mnu_convert", QStringLiteral("Con&vert to Fixed Format"),
                 [this] { m_desk->convert(RichTextBox1->toPlainText()); });
}

void Form8::mnu_open()
{
    const auto text = m_desk->openFree();
    if (!text)
        return;
    RichTextBox1->hide(); // else a long text would be laid out while it comes in
    replaceText(*m_text, *text);
    RichTextBox1->moveCursor(QTextCursor::Start);
    RichTextBox1->show();
    RichTextBox1->setFocus();
}

void Form8::mnu_paste()
{
    const auto text = m_desk->pasteOverAll();
    if (!text)
        return;
    replaceText(*m_text, *text);
    RichTextBox1->moveCursor(QTextCursor::Start);
}

void Form8::mnu_removeblankLines()
{
    try {
        replaceText(*m_text, withoutBlankLines(RichTextBox1->toPlainText()));
        RichTextBox1->moveCursor(QTextCursor::Start);
    } catch (const std::exception&) {
        m_desk->services().dialogs.tell(QStringLiteral("Error in mnu_removeblanklines"));
    }
}

void Form8::showLength()
{
    const int lines = m_text->isEmpty() ? 0 : m_text->blockCount();
    statusBar()->showMessage(QStringLiteral("%1 line(s)").arg(lines));
}

void Form8::showScreen()
{
    show();
    raise();
    activateWindow();
    RichTextBox1->setFocus();
}

} // namespace kalvo
