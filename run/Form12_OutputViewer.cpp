// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/Form12_OutputViewer.h"

#include "deck/StatusPanelLabel.h"
#include "platform/LargeTextView.h"
#include "platform/TextFindBar.h"
#include "run/LineCount.h"
#include "run/OutlineDock.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

namespace kalvo {

namespace {

/// What the panels say that are clicked, from panel 2 on.
constexpr const char* kPanelTexts[] = {"Top", "Bottom", "Return"};
constexpr const char* kUnderPointer = " ***";

const QString kFileMenu = QStringLiteral("&File");
const QString kEditMenu = QStringLiteral("&Edit");

} // namespace

Form12::Form12(const ViewerSurroundings& around)
    : ReportViewer("Form12", QStringLiteral("HEC-1 Output -  Large File Viewer"), around)
{
    buildText();
    buildFileMenu();
    buildEditMenu();
    buildPopup();
    buildStatusBar();
    resize(1240, 720);
    rb1->setFocus();
}

Form12::~Form12()
{
    delete m_outline; // ahead of the text that it lists
    m_outline = nullptr;
}

// -- Controls --------------------------------------------------------------------------------------------------------

void Form12::buildText()
{
    auto* middle = new QWidget(this);
    rb1 = new LargeTextView(middle);
    rb1->setObjectName(QStringLiteral("rb1"));
    rb1->setAccessibleName(tr("HEC-1 output"));
    m_findBar = new TextFindBar(*rb1, middle);
    auto* layout = new QVBoxLayout(middle);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_findBar);
    layout->addWidget(rb1, 1);
    setCentralWidget(middle);

    m_outline = new OutlineDock(rb1->text(), this);
    addDockWidget(Qt::LeftDockWidgetArea, m_outline);
    resizeDocks({m_outline}, {260}, Qt::Horizontal);
    connect(m_outline, &OutlineDock::lineChosen, this, &Form12::goToLine);
    connect(rb1, &LargeTextView::topLineChanged, m_outline, &OutlineDock::follow);
}

void Form12::buildFileMenu()
{
    addViewerEntry(*this, kFileMenu, "mnu_Save", QStringLiteral("&Save Output File"), [this] {
        mnu_Save();
    })->setShortcut(QKeySequence::Save);
    // Printing is still to come.
    addViewerEntry(*this, kFileMenu, "mnu_printersetup", QStringLiteral("Print Setup"), [] {})->setEnabled(false);
    addViewerEntry(*this, kFileMenu, "printersettings", QStringLiteral("Printer Margins"), [] {})->setEnabled(false);
    addViewerEntry(*this, kFileMenu, "mnu_print", QStringLiteral("Print"), [] {})->setEnabled(false);
    addViewerEntry(*this, kFileMenu, "mnu_Quit", QStringLiteral("&Return"), [this] {
        close();
    })->setShortcut(QKeySequence::Close);
}

void Form12::buildEditMenu()
{
    const auto add = [this](const char* name, const QString& caption, const QKeySequence& key, auto body) {
        QAction* action = addViewerEntry(*this, kEditMenu, name, caption, body);
        action->setShortcut(key);
        return action;
    };
    add("mnu_shrinkoutput", QStringLiteral("Shrin&k Output"), QKeySequence(Qt::CTRL | Qt::Key_F11), [this] {
        mnu_shrinkoutput();
    })->setToolTip(tr("Takes out repeated page headings and empty lines; the file is not touched"));
    add("mnu_SelectAll", QStringLiteral("Select &All"), QKeySequence::SelectAll, [this] { mnu_SelectAll(); });
    add("mnu_Copy", QStringLiteral("&Copy"), QKeySequence::Copy, [this] { mnu_Copy(); });
    m_zoomIn = add("mnu_zoom", QStringLiteral("Zoom In"), QKeySequence::ZoomIn, [this] { zoom(true); });
    m_zoomOut = add("mnu_zoomout", QStringLiteral("Zoom Out"), QKeySequence::ZoomOut, [this] { zoom(false); });
    m_zoomOut->setEnabled(false);

    QMenu* edit = nullptr;
    for (QAction* top : menuBar()->actions()) {
        top->menu()->setObjectName(top->text() == kFileMenu ? QStringLiteral("mnu_File") : QStringLiteral("mnu_Edit"));
        top->menu()->setToolTipsVisible(true);
        edit = top->menu();
    }
    edit->addSeparator();
    add("mnu_find", tr("&Find..."), QKeySequence::Find, [this] { m_findBar->open(); });
    add("mnu_findnext", tr("Find &Next"), QKeySequence(Qt::Key_F3), [this] { m_findBar->findNext(); });
    add("mnu_findprevious", tr("Find &Previous"), QKeySequence(Qt::SHIFT | Qt::Key_F3),
        [this] { m_findBar->findPrevious(); });
    edit->addSeparator();
    QAction* outline = m_outline->toggleViewAction();
    outline->setObjectName(QStringLiteral("mnu_outline"));
    outline->setText(tr("&Outline"));
    edit->addAction(outline);
    add("mnu_reload", tr("Read the &Whole Output Again"), QKeySequence::Refresh, [this] { reload(); });
}

void Form12::buildPopup()
{
    m_popup = new QMenu(this);
    m_popup->setObjectName(QStringLiteral("Popup"));
    const auto add = [this](const char* name, const QString& caption, void (Form12::*body)()) {
        QAction* action = m_popup->addAction(caption);
        action->setObjectName(QString::fromLatin1(name));
        connect(action, &QAction::triggered, this,
                [this, name, body] { run(name, [this, body] { (this->*body)(); }); });
    };
    add("Pop_top", QStringLiteral("&Top"), &Form12::goTop);
    add("pop_Bot", QStringLiteral("&Bottom"), &Form12::goBottom);
    add("pop_copy", QStringLiteral("&Copy"), &Form12::mnu_Copy);
    connect(rb1, &LargeTextView::contextMenuAsked, m_popup, [this](const QPoint& point) { m_popup->popup(point); });
}

void Form12::buildStatusBar()
{
    statusBar()->setObjectName(QStringLiteral("StatusBar1"));
    statusBar()->setSizeGripEnabled(false);
    QPushButton* const buttons[] = {hiddenButton("Command3", [this] { goTop(); }),
                                    hiddenButton("Command2", [this] { goBottom(); }),
                                    hiddenButton("Command1", [this] { close(); })};
    for (int i = 0; i < kPanels; ++i) {
        auto* panel = new StatusPanelLabel(this);
        panel->setObjectName(QStringLiteral("panel%1").arg(i + 1));
        panel->setLineAhead(i > 0);
        m_panels.at(static_cast<size_t>(i)) = panel;
        statusBar()->addWidget(panel, i == 0 ? 1 : 0);
        if (i == 0)
            continue;
        panel->setSample(QStringLiteral("mBottom ***"));
        panel->setCursor(Qt::PointingHandCursor);
        panel->installEventFilter(this);
        connect(panel, &StatusPanelLabel::clicked, buttons[i - 1], &QPushButton::click);
    }
    m_panels.front()->setTip([this] { return m_shrunk ? shrinkSummary(*m_shrunk) : QString(); });
    showPanels(nullptr);
}

void Form12::showPanels(const QObject* under)
{
    for (size_t i = 1; i < m_panels.size(); ++i) {
        const QString text = QString::fromLatin1(kPanelTexts[i - 1]);
        m_panels[i]->setPlainText(m_panels[i] == under ? text + QString::fromLatin1(kUnderPointer) : text);
    }
}

bool Form12::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Enter)
        showPanels(watched);
    else if (event->type() == QEvent::Leave)
        showPanels(nullptr);
    return QMainWindow::eventFilter(watched, event);
}

// -- The report ------------------------------------------------------------------------------------------------------

QWidget& Form12::reportControl()
{
    return *rb1;
}

void Form12::loadReport()
{
    rb1->setText(report().take()); // which leaves SelStart where it was
    rb1->setPlaceholder(report().why());
    m_shrunk.reset();
    textChanged();
}

void Form12::textChanged()
{
    m_outline->restart();
    m_findBar->restart();
    showLines();
}

void Form12::showLines()
{
    QString text = QStringLiteral("%1 Lines at full width").arg(lineCount(*rb1));
    if (m_shrunk)
        text += tr(", shrunk from %1").arg(m_shrunk->linesBefore);
    m_panels.front()->setPlainText(text);
}

void Form12::deleteOutputLine(qsizetype line)
{
    const qsizetype cut = rb1->editableText().deleteOutputLine(line);
    if (cut < 0)
        return;
    rb1->setFocus();
    rb1->refresh();
    rb1->setSelStart(cut);
    textChanged();
}

void Form12::mnu_shrinkoutput()
{
    const ShrinkResult result = shrinkOutput(rb1->editableText());
    const qsizetype whole = m_shrunk ? m_shrunk->linesBefore : result.linesBefore;
    rb1->refresh();
    if (result.linesTaken() > 0) {
        rb1->setFocus();
        rb1->setSelStart(result.lastPosition);
        const ShrinkResult former = m_shrunk.value_or(ShrinkResult());
        m_shrunk = result;
        m_shrunk->linesBefore = whole;
        m_shrunk->headings += former.headings;
        m_shrunk->emptyLines += former.emptyLines;
        m_shrunk->blankLines += former.blankLines;
    }
    textChanged();
}

void Form12::mnu_Save()
{
    FileDialog dialog;
    dialog.title = QStringLiteral(" Kalvo Save HEC-1 Output");
    dialog.filter = QStringLiteral("OUT Files(*.out)|*.out| Text Files (*.txt)|*.txt");
    dialog.defaultExtension = QStringLiteral("out");
    dialog.overwritePrompt = true;
    saveViewerText(services(), rb1->editableText().whole(), dialog);
}

// -- Moving about ----------------------------------------------------------------------------------------------------

void Form12::mnu_SelectAll()
{
    rb1->select(1, rb1->text().length());
}

void Form12::mnu_Copy()
{
    copyReport(services(), rb1->text(), rb1->SelStart(), rb1->SelLength());
}

void Form12::zoom(bool in)
{
    rb1->setFont(reportFont(in));
    m_zoomIn->setEnabled(!in);
    m_zoomOut->setEnabled(in);
}

void Form12::goTop()
{
    rb1->setSelStart(1);
}

void Form12::goBottom()
{
    rb1->setSelStart(rb1->text().length());
}

void Form12::goToLine(qsizetype line)
{
    rb1->setSelStart(rb1->text().lineStart(line));
    rb1->setTopLine(line);
}

} // namespace kalvo
