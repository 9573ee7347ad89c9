// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/deck/MainScreen.h"

#include "deck/StatusPanelLabel.h"

#include <QDropEvent>
#include <QMimeData>
#include <QProgressBar>
#include <QToolBar>
#include <QToolButton>

namespace kalvo {
namespace {

using Form1Window = MainScreen;

// -- Menus
// -------------------------------------------------------------------------------------------------------------

std::string listed(const QMenu& menu)
{
    std::string text;
    const QList<QAction*> actions = menu.actions();
    for (const QAction* action : actions) {
        if (action->isSeparator())
            continue;
        text += "  " + action->text().toStdString();
        if (!action->shortcut().isEmpty())
            text += " (" + action->shortcut().toString(QKeySequence::PortableText).toStdString() + ")";
        text += action->isVisible() ? "\n" : " -\n";
    }
    return text;
}

/// The whole menu as a user would read it; a "-" marks what starts hidden.
constexpr auto kWholeMenu = R"(&File
  &New HEC-1 Input Data (Ctrl+N)
  Clone -
  Close Clone -
  &Open HEC-1 Input Data (Ctrl+O)
  &Import Input Data
  Use &FREE or RAW Format
  Open FREE Format -
  Convert to Text File (FREE)
  Parse Paste from &Clipboard -
  &Save HEC-1 Input Data (Ctrl+S)
  Save &As HEC-1 Input Data
  Print Set&up
  Printer &Left Margin
  &Print HEC-1 Input Data
  &Quit Program
  Open Recent Files Saved As:
&Edit
  &Copy (Ctrl+C)
  Cu&t (Ctrl+X)
  &Paste Above Line / Insert Lines (Ctrl+P)
  &Area Paste Over (Ctrl+V)
  C&lear Contents (Ctrl+L)
  &Find and Replace (Ctrl+R)
  Clear Clipboard
  &Undo Edit (Ctrl+Z)
  Undo to Last Ru&n File (Ctrl+W)
  &Redo Edit (Ctrl+A)
  &Delete Lines (Ctrl+D)
&Insert Row
&Delete Row
&Comment Entry
&Audit Data
&Run
&View HEC Output
&Graph Data
  &Graph
  ...&Hydrodata (All)
  ...Save All Hydrographs
  ...&Peak Flows (Linear Format) -
  ...Runoff &Volumes
  ...&Tabular Peak Flows (Table)
  &Monitor Hydrograph -
  Copy All Hydrograph Data to Clipboard
  &Detailed Reservoir Routings (F9)
  &Reservoir Routing Output (F12)
  Reservoir Storage Conic Volumes (Ctrl+F1)
  Reservoir Storage End Areas
  Auto Com&pare KK Plans (Ctrl+F2)
  &Multi-KK Compare (Ctrl+F3)
  Peak Flow Monitor (Ctrl+F4)
  Extention Basin Iterator (Ctrl+F5) -
&Settings
  Use &Full Screen
  Reset Undo
  Undo Off
  &Color Changes
  &Grid Font
  &Restore Default Colors (F1)
  Toggle Gridli&nes
  Res&et
  &Adjustable Grids (Ctrl+M)
  &Default Row/Font (F2)
  Set Monospace Printer Fon&t
  Clean Up Screen (F3)
  Bold (Ctrl+B)
  &Highlight Current Text
  Highlight F&ont
  Hid&e Selected Rows (Ctrl+H)
  &Unhide All Rows (Ctrl+U)
  Show Card Ru&ler
&Tools
  &Identify KK Cards (Ctrl+K)
  Identify  &Cards (Ctrl+Q)
  Identify KK Groups (Ctrl+I)
  Go To ... (Ctrl+G)
  Trim Grid to ZZ Card (Ctrl+T)
  &Add KO Print Card (Ctrl+J)
  Create SCS Watershed (Shift+F3)
  Create Reservoir Storage (Shift+F4)
  Display Hec-1 as Window
  Run with Debug Screen (Ctrl+Y)
  &Fit Rows
  Fi&t Columns
  F&it Rows and Columns (Ctrl+F)
  Help Ti&ps
  Toggle Toolbar
  Se&lect Recent Files to Clear
  Iterater (Ctrl+E)
  Rainfall Data Type Library (Shift+F1)
  Rainfall Values
  Input Data Report (Shift+F2)
&Help
  Windows Style Help -
  HEC-1 Manual (pdf)
  HEC-1 Manual (doc)
  Kalvo Manual
  Browse Help Files
  Search Help Files
  Show Status &Text (F6)
  Show &Memory in Use (Shift+F6)
  &About Kalvo
)";

TEST_F(Form1Window, TheMenuReadsAsItShould)
{
    std::string read;
    const QList<QAction*> bar = form.menuBar()->actions();
    for (const QAction* action : bar) {
        read += action->text().toStdString() + (action->isVisible() ? "\n" : " -\n");
        if (const QMenu* menu = action->menu())
            read += listed(*menu);
    }
    EXPECT_EQ(read, kWholeMenu);
    EXPECT_EQ(listed(*find<QMenu>("Popup")),
              "  Input Screen Menu\n  Copy\n  Cut\n  Paste Above / Insert Lines\n  Area Paste Over\n  Clear Contents\n"
              "  Insert a Line\n  Delete Lines\n  Run\n  Undo\n  Redo\n");
}

TEST_F(Form1Window, EveryEntryHasACommandBehindItOrIsDisabled)
{
    int alive = 0;
    for (const MenuRow& row : mainMenuRows()) {
        if (row.kind != MenuRow::Kind::Entry)
            continue;
        SCOPED_TRACE(row.name);
        const QAction& action = entry(row.name);
        EXPECT_TRUE(!action.isEnabled() || page.commands.has(QString::fromLatin1(row.name)));
        if (action.isVisible()) {
            EXPECT_EQ(action.isEnabled(), page.commands.isEnabled(QString::fromLatin1(row.name)));
        }
        alive += action.isEnabled() ? 1 : 0;
    }
    EXPECT_GE(alive, 9);
    for (const ToolButton& button : toolButtons()) {
        SCOPED_TRACE(button.key);
        EXPECT_EQ(entry(button.key).isVisible(), !button.twin);
        EXPECT_EQ(entry(button.key).isEnabled(),
                  !button.twin && page.commands.isEnabled(QString::fromLatin1(button.command)));
        EXPECT_FALSE(entry(button.key).icon().isNull());
    }
}

TEST_F(Form1Window, EveryCommandOfTheStartRunsFromItsEntryAndItsKey)
{
    // Something to copy and something to paste, else the entries for that are closed.
    grid.setTextMatrix(1, 1, "KK");
    services.clipboard.setText("KK");
    page.deck.setTextbox();
    // Stands for each command in turn, so that the walk tries the wiring of every entry.
    QStringList ran;
    for (const MenuRow& row : mainMenuRows()) {
        if (row.kind != MenuRow::Kind::Entry || row.hidden || QByteArrayView(row.name) == "quit")
            continue;
        const QString name = QString::fromLatin1(row.name);
        page.commands.add(name, [&ran, name] { ran << name; });
        page.commands.setEnabled(name, true);
    }
    page.commands.setEnabled("graphdata", true);
    for (const MenuRow& row : mainMenuRows()) {
        const QString name = QString::fromLatin1(row.name);
        if (row.kind != MenuRow::Kind::Entry || row.hidden || !page.commands.has(name) || name == "quit")
            continue;
        ran.clear();
        entry(row.name).trigger();
        EXPECT_EQ(ran, QStringList(name));
        if (*row.key == '\0')
            continue;
        ran.clear();
        const QKeyCombination key = entry(row.name).shortcut()[0];
        for (QWidget* from : {static_cast<QWidget*>(&Grid1()), static_cast<QWidget*>(&Text1())}) {
            from->setFocus();
            QTest::keyClick(from, key.key(), key.keyboardModifiers());
        }
        EXPECT_EQ(ran, QStringList({name, name})) << row.key;
    }
}

TEST_F(Form1Window, TheGraphMenuIsClosedUntilThereIsOutput)
{
    page.commands.add("mnu_detailed_ReservoirRoutings", [] { FAIL() << "its menu is disabled"; });
    EXPECT_FALSE(find<QMenu>("graphdata")->menuAction()->isEnabled());
    QTest::keyClick(&Grid1(), Qt::Key_F9);
}

TEST_F(Form1Window, TicksShowTheState)
{
    auto* toolbar = find<QToolBar>("Toolbar1");
    EXPECT_TRUE(entry("mnu_toggletoolbar").isChecked());
    entry("mnu_toggletoolbar").trigger();
    EXPECT_FALSE(entry("mnu_toggletoolbar").isChecked());
    EXPECT_FALSE(toolbar->isVisible());
    entry("mnu_toggletoolbar").trigger();
    EXPECT_TRUE(toolbar->isVisible());
    entry("mnu_usefullscreen").trigger();
    EXPECT_TRUE(entry("mnu_usefullscreen").isChecked());
    EXPECT_TRUE(form.isMaximized());
    entry("mnu_usefullscreen").trigger();
    EXPECT_FALSE(form.isMaximized());
}

TEST_F(Form1Window, RecentFilesStandInTheFileMenu)
{
    EXPECT_FALSE(find<QMenu>("oldfile")->menuAction()->isEnabled());
    const QString path = put("KKA\r\nZZ\r\n", "a & b.dat");
    page.files.UPDATEOLDFILES(path);
    QAction& first = entry("oldfile1");
    EXPECT_TRUE(first.isChecked());
    EXPECT_TRUE(first.text().contains("a && b.dat [ "));
    first.trigger();
    EXPECT_EQ(page.deck.id(1), "KK");
    EXPECT_EQ(panel(1), QString(" " + path + " "));
    EXPECT_TRUE(first.isChecked()) << "a click does not take the tick away";
}

TEST_F(Form1Window, AToolButtonWithoutACommandIsTold)
{
    services.dialogs.willAnswer(Button::Ok);
    form.toolButtonClicked("");
    EXPECT_EQ(services.dialogs.last().text, "Add '' button code.");
    page.commands.add("hiliteKK", [this] { page.panels.set(7, "marked"); });
    auto* button = form.findChild<QToolButton*>("KK");
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(panel(7), "marked");
}

TEST_F(Form1Window, TextGrowsAndShrinksByTheToolbar)
{
    open("KKSUB1\r\nZZ\r\n");
    entry("uptext").trigger();
    EXPECT_EQ(grid.cellFormat(1, 1).fontSize, 9.25);
    EXPECT_EQ(Text1().font().pointSizeF(), 9.25);
    EXPECT_EQ(Text1().geometry(), Grid1().cellRect(1, 1));
    entry("downtext").trigger();
    EXPECT_EQ(grid.cellFormat(200 < grid.rows() ? 200 : 1, 1).fontSize, 8.25);
}

// -- Status bar
// --------------------------------------------------------------------------------------------------------

TEST_F(Form1Window, PanelsShowWhatLogicWrites)
{
    auto* bar = find<StatusPanelBar>("StatusBar1");
    page.panels.set(6, "TAREA");
    EXPECT_EQ(bar->shownText(6), "TAREA");
    auto* undo = find<StatusPanelLabel>("panel2");
    EXPECT_FALSE(undo->isPicture());
    page.panels.set(2, "Undo 12 ");
    EXPECT_TRUE(undo->isPicture());
    EXPECT_NE(undo->pictureTextColor(), QColor(255, 0, 0));
    page.panels.setLook(2, {.foreColor = rgb(255, 0, 0), .centred = true, .minimumWidth = 500, .fontSize = 8.0});
    EXPECT_EQ(undo->pictureTextColor(), QColor(255, 0, 0));
}

TEST_F(Form1Window, TheTipOfPanelSevenSaysWhichHec1IsUsed)
{
    page.engineText = [] { return QStringLiteral("HEC-1: /opt/hec1"); };
    page.panels.set(7, "a long text that the bar may cut");
    page.panels.setToolTip(7, "metric");
    EXPECT_EQ(find<StatusPanelBar>("StatusBar1")->tip(7),
              "a long text that the bar may cut\n\nmetric\n\nHEC-1: /opt/hec1");
}

TEST_F(Form1Window, AClickOnPanelSevenTellsTheMemory)
{
    QTest::mouseClick(find<StatusPanelLabel>("panel7"), Qt::LeftButton);
    EXPECT_TRUE(panel(7).startsWith("Memory in Use: ")) << panel(7).toStdString();
    EXPECT_TRUE(panel(7).contains(" MB  Total RAM: "));
    EXPECT_TRUE(panel(7).endsWith(" MB"));
}

TEST_F(Form1Window, ARunCanBeStoppedByEscOrByTheButton)
{
    auto* cancel = find<QToolButton>("Cancel");
    EXPECT_FALSE(cancel->isVisible());
    for (const bool byKey : {true, false}) {
        SCOPED_TRACE(byKey);
        services.process.willHang([&] {
            EXPECT_TRUE(cancel->isVisible());
            EXPECT_EQ(Grid1().cursor().shape(), Qt::WaitCursor);
            form.close();
            EXPECT_TRUE(form.isVisible()) << "not while HEC-1 runs";
            if (byKey)
                QTest::keyClick(&Text1(), Qt::Key_Escape);
            else
                QTest::mouseClick(cancel, Qt::LeftButton);
        });
        services.dialogs.willAlwaysSayOk();
        page.panels.setWaiting(true);
        EXPECT_EQ(services.services.process.run({.program = "hec1", .workingFolder = services.directory.path()}).kind,
                  ProcessEnd::Kind::Stopped);
        page.panels.setWaiting(false);
        EXPECT_FALSE(cancel->isVisible());
        EXPECT_NE(Grid1().cursor().shape(), Qt::WaitCursor);
    }
}

TEST_F(Form1Window, ACommandThatFailsLeavesTheScreenOpen)
{
    page.commands.add("mnu_goto", [this] {
        page.deck.setEditorActive(false);
        page.deck.setGridShown(false);
        page.panels.setWaiting(true);
        page.panels.setProgress(40);
        throw std::runtime_error("half-way");
    });
    entry("mnu_goto").trigger();
    EXPECT_TRUE(page.deck.isEditorActive());
    EXPECT_TRUE(Grid1().isVisible());
    EXPECT_TRUE(Text1().isVisible());
    EXPECT_FALSE(page.panels.isWaiting());
    EXPECT_FALSE(find<QProgressBar>("pb")->isVisible());
}

// -- Files, dropping, closing
// ------------------------------------------------------------------------------------------

void drop(Form1& form, const QList<QUrl>& urls)
{
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(50, 200), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&form, &enter);
    QDropEvent event(QPointF(50, 200), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&form, &event);
}

TEST_F(Form1Window, ADroppedDeckIsOpenedAndABinaryFileRefused)
{
    drop(form, {QUrl::fromLocalFile(put("KKDROP\r\nZZ\r\n"))});
    EXPECT_EQ(cell(1, 2), "DROP");
    EXPECT_EQ(Text1().text(), "KK");
    services.dialogs.willAnswer(Button::Ok);
    const QString binary = put(QByteArray("\x00\x01\x02", 3), "b.bin");
    drop(form, {QUrl::fromLocalFile(binary)});
    EXPECT_EQ(services.dialogs.last().text, QString("The File " + binary + " is Incompatible with HEC-1! "));
    drop(form, {QUrl::fromLocalFile(binary), QUrl::fromLocalFile(binary)});
    EXPECT_EQ(cell(1, 2), "DROP");
}

TEST_F(Form1Window, ASavedDeckClosesWithoutAQuestion)
{
    open("KKSUB1\r\nZZ\r\n");
    for (int i = 0; i < 5; ++i)
        press(Qt::Key_Down);
    EXPECT_TRUE(form.close());
}

struct CloseRow
{
    const char* name;
    Button answer;
    std::optional<bool> dialogTakesAName;
    bool closes;
};

struct Form1Close : MainScreen, testing::WithParamInterface<CloseRow>
{
};

TEST_P(Form1Close, AsksForAnUnsavedDeckEvenWhileACellIsBeingTyped)
{
    const CloseRow& p = GetParam();
    open("KKSUB1\r\nZZ\r\n");
    editAt(1, 2);
    Text1().selectAll();
    type("MINE");
    services.dialogs.willAnswer(p.answer);
    if (p.dialogTakesAName) {
        if (*p.dialogTakesAName)
            services.dialogs.willAnswer(services.path("saved.dat"));
        else
            services.dialogs.willCancel();
    }
    EXPECT_EQ(form.close(), p.closes);
    EXPECT_EQ(services.dialogs.shown().front().text, "Save Data before Closing?");
    EXPECT_EQ(services.dialogs.shown().front().title, "Save Dialog");
    EXPECT_EQ(form.isVisible(), !p.closes);
    EXPECT_EQ(cell(1, 2), "MINE");
    EXPECT_EQ(services.bytes("saved.dat").contains("MINE"), p.dialogTakesAName.value_or(false));
}

INSTANTIATE_TEST_SUITE_P(, Form1Close,
                         testing::Values(CloseRow{"Cancel", Button::Cancel, {}, false},
                                         CloseRow{"No", Button::No, {}, true},
                                         CloseRow{"YesAndSaved", Button::Yes, true, true},
                                         CloseRow{"YesButNoName", Button::Yes, false, false}),
                         [](const auto& row) { return row.param.name; });

TEST_F(Form1Window, QuitClosesAndUnloadsTheOtherScreens)
{
    screens.show("OldFileManager");
    entry("quit").trigger();
    EXPECT_FALSE(form.isVisible());
    EXPECT_FALSE(screens.isLoaded("OldFileManager"));
}

TEST_F(Form1Window, TheCaptionNamesTheDeck)
{
    EXPECT_EQ(form.windowTitle(), "Kalvo");
    page.files.opencommandline(put("KKSUB1\r\nZZ\r\n", "river.dat"));
    EXPECT_EQ(form.windowTitle(), "river.dat - Kalvo");
}

// -- Clone
// -------------------------------------------------------------------------------------------------------------

TEST_F(Form1Window, TheClonePageHasADeckAndCommandsOfItsOwn)
{
    EXPECT_FALSE(entry("mnu_clone").isVisible());
    form.setCloneMaker([this](Workspace& first) { return std::make_unique<Workspace>(services, screens, &first); });
    EXPECT_TRUE(entry("mnu_clone").isVisible());
    open("KKFIRST\r\nZZ\r\n");
    entry("mnu_clone").trigger();
    Form1* clone = form.clonePage();
    ASSERT_NE(clone, nullptr);
    EXPECT_TRUE(clone->isVisible());
    EXPECT_EQ(clone->windowTitle(), "Clone Page");
    EXPECT_EQ(clone->grid()->palette().color(QPalette::Base), QColor(244, 244, 244));
    EXPECT_FALSE(clone->findChild<QAction*>("newhec1")->isEnabled());
    EXPECT_FALSE(clone->findChild<QAction*>("mnu_clone")->isEnabled());

    services.dialogs.willAnswer(put("KKSECOND\r\nZZ\r\n", "second.dat"));
    clone->findChild<QAction*>("openhec")->trigger();
    EXPECT_EQ(clone->page().deck.Grid1.textMatrix(1, 2), "SECOND");
    EXPECT_EQ(cell(1, 2), "FIRST");
    EXPECT_EQ(panel(1).contains("second"), false);

    clone->page().deck.Grid1.setCursor(1, 3);
    clone->page().deck.noteChange();
    clone->findChild<QAction*>("mnu_closeclone")->trigger();
    EXPECT_FALSE(clone->isVisible());
    entry("mnu_clone").trigger();
    EXPECT_EQ(form.clonePage(), clone) << "hidden, not forgotten";
    services.dialogs.willAnswer(Button::Cancel);
    EXPECT_FALSE(form.close()) << "the end of the program asks for the clone's deck too";
    services.dialogs.willAnswer(Button::No);
    EXPECT_TRUE(form.close());
    EXPECT_FALSE(clone->isVisible());
}

} // namespace
} // namespace kalvo
