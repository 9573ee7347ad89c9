// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Form1_MainScreen.h"

#include "deck/CardRulerBar.h"
#include "deck/EditMenus.h"
#include "deck/EditorBox.h"
#include "deck/ImportScreens.h"
#include "deck/MarkScreens.h"
#include "deck/OldFileManager_RecentFiles.h"
#include "deck/RecoveryOffer.h"
#include "deck/StatusPanelBar.h"
#include "platform/FlexGridView.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QToolBar>
#include <QVBoxLayout>

namespace kalvo {

namespace {

/// Left and right of the grid together.
constexpr int kGridMargins = 400 / kTwipsPerPixel;
constexpr int kSmallestWidth = 560;
constexpr int kSmallestHeight = 320;

constexpr QRgb kCloneBackground = qRgb(244, 244, 244);

/// The one file of a drag, empty for anything else.
QString droppedFile(const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 ? urls.front().toLocalFile() : QString();
}

} // namespace

Form1::Form1(Workspace& page, QWidget* parent) : QMainWindow(parent), m_page(page)
{
    setObjectName(QStringLiteral("Form1"));
    setAcceptDrops(true);
    setMinimumSize(kSmallestWidth, kSmallestHeight);
    setContextMenuPolicy(Qt::NoContextMenu);
    addWindowCommands();
    buildMenus();
    buildToolbar();
    buildGrid();
    buildEditor();
    buildStatusBar();
    connectKeys();
    followPage();
    m_page.deck.attachEditBox(this);
    new EditMenus(*this, m_page);
    new MarkScreens(*this);
    if (!m_page.isClone()) {
        OldFileManager::registerIn(m_page.screens, m_page.files.recentFiles(), m_page.services);
        registerImportScreens(m_page.screens, m_page.imports, *this);
    }
}

Form1::~Form1()
{
    m_page.deck.attachEditBox(nullptr);
    // Going, the window still takes the focus from its controls and hides them: nobody of ours is there to follow.
    Text1->disconnect(this);
    Grid1->disconnect(this);
}

void Form1::buildGrid()
{
    auto* middle = new QWidget(this);
    auto* layout = new QVBoxLayout(middle);
    layout->setSpacing(0);
    layout->setContentsMargins(kGridMargins / 2, 2, kGridMargins - kGridMargins / 2, 4);
    Grid1 = new FlexGridView(m_page.deck.Grid1, middle);
    Grid1->setObjectName(QStringLiteral("Grid1"));
    Grid1->setTipText([this](int row, int col) { return gridTip(row, col); });
    m_ruler = new CardRulerBar(m_page.deck, m_page.catalogue, *Grid1, middle);
    layout->addWidget(m_ruler);
    layout->addWidget(Grid1, 1);
    setCentralWidget(middle);
    if (m_page.isClone()) {
        // Told apart from the first page at a glance; the text must suit this paper on a dark desktop too.
        QPalette paper = Grid1->palette();
        paper.setColor(QPalette::Base, QColor(kCloneBackground));
        paper.setColor(QPalette::Text, Qt::black);
        Grid1->setPalette(paper);
    }
}

void Form1::load()
{
    resize(standardSize());
    showCaption();
    m_page.start();
    Grid1->setFocus();
    Text1->setTint(EditBox::Tint::AtRest);
}

void Form1::addWindowCommands()
{
    Commands& commands = m_page.commands;
    const auto toggled = [&commands](const QString& name) {
        commands.setChecked(name, !commands.isChecked(name));
        return commands.isChecked(name);
    };
    commands.add(QStringLiteral("quit"), [this] { close(); });
    commands.add(QStringLiteral("mnu_usefullscreen"), [this, toggled] {
        if (toggled(QStringLiteral("mnu_usefullscreen")))
            showMaximized();
        else
            showNormal();
    });
    commands.setChecked(QStringLiteral("mnu_toggletoolbar"), true);
    commands.add(QStringLiteral("mnu_toggletoolbar"),
                 [this, toggled] { m_toolbar->setVisible(toggled(QStringLiteral("mnu_toggletoolbar"))); });
    commands.setChecked(QStringLiteral("mnu_ruler"), true);
    commands.add(QStringLiteral("mnu_ruler"), [this, toggled] {
        toggled(QStringLiteral("mnu_ruler"));
        showRuler();
    });
    commands.add(QStringLiteral("mnu_statustext"), [this] { showStatusText(); });
    commands.add(QStringLiteral("mnu_memory"), [this] { showMemory(); });
    commands.add(QStringLiteral("mnu_fieldtips"), [toggled] { toggled(QStringLiteral("mnu_fieldtips")); });
    if (m_page.isClone()) {
        commands.setEnabled(QStringLiteral("newhec1"), false);
        commands.setEnabled(QStringLiteral("mnu_clone"), false);
        commands.setShown(QStringLiteral("mnu_closeclone"), true);
        commands.add(QStringLiteral("mnu_closeclone"), [this] { close(); });
    }
}

void Form1::followPage()
{
    connect(&m_page.deck, &Deck::gridShownChanged, this, [this](bool on) {
        Grid1->setVisible(on);
        showRuler();
    });
    connect(&m_page.files, &FileCommands::standardSizeWanted, this, [this] {
        if (!isMaximized() && !isFullScreen())
            resize(standardSize());
    });
    connect(&m_page, &Workspace::focusWanted, this, [this] {
        raise();
        activateWindow();
        (Text1->isHidden() ? static_cast<QWidget*>(Grid1) : Text1)->setFocus();
    });
    connect(&m_page.panels, &StatusPanels::panelChanged, this, [this](int panel) {
        if (panel == 1)
            showCaption();
    });
}

void Form1::showRuler()
{
    m_ruler->setVisible(m_page.commands.isChecked(QStringLiteral("mnu_ruler")) && m_page.deck.isGridShown());
}

void Form1::showCaption()
{
    if (m_page.isClone()) {
        setWindowTitle(QStringLiteral("Clone Page"));
        return;
    }
    const QString& deckName = m_page.deck.currentFileName;
    const QString program = QString::fromLatin1(kApplicationTitle);
    setWindowTitle(deckName.isEmpty() ? program : deckName + QStringLiteral(" - ") + program);
}

// -- The second page -------------------------------------------------------------------------------------------------

void Form1::setCloneMaker(CloneMaker maker)
{
    m_cloneMaker = std::move(maker);
    Commands& commands = m_page.commands;
    commands.add(QStringLiteral("mnu_clone"), [this] { openClone(); });
    commands.add(QStringLiteral("mnu_closeclone"), [this] {
        if (m_clone)
            m_clone->hide();
        m_page.commands.setShown(QStringLiteral("mnu_closeclone"), false);
    });
    commands.setShown(QStringLiteral("mnu_clone"), true);
}

void Form1::openClone()
{
    if (!m_clone) {
        m_clonePage = m_cloneMaker(m_page);
        m_clone = std::make_unique<Form1>(*m_clonePage);
        m_clone->load();
    }
    // A page that was only hidden comes back with its deck: nothing that was typed there is lost.
    m_clone->show();
    m_clone->raise();
    m_clone->activateWindow();
    m_page.commands.setShown(QStringLiteral("mnu_closeclone"), true);
}

void Form1::offerLeftDecks()
{
    RecoveryPages pages{m_page.files};
    if (m_cloneMaker)
        pages.second = [this] {
            openClone();
            return &m_clone->m_page.files;
        };
    kalvo::offerLeftDecks(m_page.services, pages);
}

// -- Closing and dropping --------------------------------------------------------------------------------------------

bool Form1::mayEnd()
{
    if (!m_page.files.mayClose())
        return false;
    return !m_clone || m_clone->m_page.files.mayClose();
}

void Form1::closeEvent(QCloseEvent* event)
{
    if (m_page.isClone()) {
        // Only hidden: the end of the program asks for its deck.
        event->ignore();
        hide();
        return;
    }
    if (!mayEnd()) {
        event->ignore();
        return;
    }
    m_page.files.ended();
    m_page.screens.unloadAll();
    if (m_clone) {
        m_clone->m_page.files.ended();
        m_clone->hide();
    }
    event->accept();
}

void Form1::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_toolbar)
        drawIcons();
    else if (event->type() == QEvent::ActivationChange && isActiveWindow())
        m_page.files.lookAtFile();
}

void Form1::dragEnterEvent(QDragEnterEvent* event)
{
    if (!droppedFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void Form1::dropEvent(QDropEvent* event)
{
    const QString file = droppedFile(event->mimeData());
    if (file.isEmpty())
        return;
    event->setDropAction(Qt::CopyAction); // the file stays where it is, whatever was offered
    event->accept();
    m_page.deck.storeEditBox();
    m_page.files.dropped(file);
}

} // namespace kalvo
