// SPDX-License-Identifier: GPL-3.0-or-later
// What is left of a deck after a crash. A program that dies is one whose screens and page go without a close.
#include "tests/deck/MainScreen.h"

#include <QDir>
#include <QProcess>

namespace kalvo {
namespace {

constexpr auto kDeck = "KKSUB1  \r\nBA   1.5\r\nZZ\r\n";

struct Program
{
    Screens screens;
    Workspace page;
    Form1 form{page};

    explicit Program(ScriptedServices& services, const QString& deck = {}) : page(services, screens)
    {
        form.setCloneMaker(
            [this](Workspace& first) { return std::make_unique<Workspace>(first.services, screens, &first); });
        form.load();
        form.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
        page.files.opencommandline(deck);
        form.offerLeftDecks();
    }
    QLineEdit& Text1() { return *form.findChild<QLineEdit*>("Text1"); }
    RecoveryCopy& copy() { return page.files.recoveryCopy(); }
    QString cell(int row, int col) { return page.deck.Grid1.textMatrix(row, col); }
    /// Types into a cell and leaves the text in the edit box.
    void type(int row, int col, const char* text, Form1* where = nullptr)
    {
        Form1& screen = where ? *where : form;
        screen.page().deck.Grid1.setCursor(row, col);
        auto* box = screen.findChild<QLineEdit*>("Text1");
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QString::fromLatin1(text));
    }
    /// The same, and the copy's time has come.
    void keep(int row, int col, const char* text)
    {
        type(row, col, text);
        copy().tick();
    }
};

struct CrashTest : testing::Test
{
    ScriptedServices services;
    std::unique_ptr<Program> program;

    void start(const QString& deck = {})
    {
        program.reset();
        program = std::make_unique<Program>(services, deck);
    }
    QStringList copies() const { return QDir(services.directory.path()).entryList({"checkycopy*"}, QDir::Files); }
    /// Leaves the copy of a deck with one changed field behind.
    QString leave(const char* name, const char* area)
    {
        const QString path = services.put(QString::fromLatin1(name), kDeck);
        start(path);
        program->keep(2, 2, area);
        program.reset();
        return path;
    }
    void save(const QString& path)
    {
        services.dialogs.willAnswer(path);
        EXPECT_TRUE(program->page.files.savehec());
    }
};

TEST_F(CrashTest, WhatWasHalfTypedComesBack)
{
    const QString path = services.put("storm.dat", kDeck);
    start(path);
    EXPECT_FALSE(program->copy().isArmed()) << "nothing to keep yet";
    program->type(2, 2, "7.25");
    EXPECT_TRUE(program->copy().isArmed());
    EXPECT_LE(RecoveryCopy::kDelayMs, 60'000);
    program->copy().tick();
    EXPECT_FALSE(program->copy().isArmed());
    EXPECT_EQ(program->cell(2, 2), "1.5") << "still in the box alone";
    EXPECT_EQ(services.bytes("storm.dat"), kDeck);
    program.reset();
    services.dialogs.willAnswer(Button::Yes);
    start();
    EXPECT_EQ(program->cell(2, 2), "7.25");
}

TEST_F(CrashTest, YesOpensItAsAnUnsavedDeckAndSaveOffersItsFile)
{
    services.clock.setNow(QDateTime(QDate(2024, 5, 6), QTime(7, 8)));
    const QString path = leave("storm.dat", "7.25");
    services.dialogs.willAnswer(Button::Yes);
    start();
    const auto& asked = services.dialogs.last();
    EXPECT_TRUE(asked.text.contains(path) && asked.text.contains("2024-05-06 07:08")) << asked.text.toStdString();
    EXPECT_EQ(asked.buttons, Buttons::YesNo);
    EXPECT_EQ(program->cell(2, 2), "7.25");
    EXPECT_EQ(program->cell(1, 2), "SUB1  ");
    EXPECT_TRUE(program->page.deck.currentFilePath.isEmpty());
    EXPECT_FALSE(program->page.deck.dataSaved);
    EXPECT_EQ(services.bytes("storm.dat"), kDeck);

    // A second crash before the save loses nothing either.
    services.dialogs.willAnswer(Button::Yes);
    start();
    EXPECT_TRUE(services.dialogs.last().text.contains(path));
    save(path);
    EXPECT_EQ(services.dialogs.last().file.initialName, path);
    EXPECT_TRUE(services.bytes("storm.dat").contains("BA  7.25"));
    EXPECT_EQ(copies(), QStringList());
    start();
}

TEST_F(CrashTest, NoPutsItAsideAndNobodyAsksAgain)
{
    leave("storm.dat", "7.25");
    services.dialogs.willAnswer(Button::No);
    start();
    EXPECT_TRUE(services.bytes("checkyrecovered.dat").contains("BA  7.25"));
    EXPECT_EQ(program->cell(1, 1), "");
    EXPECT_EQ(copies(), QStringList());
    start();
    EXPECT_TRUE(program->page.panels.toolTip(7).contains("checkyrecovered.dat"));
}

TEST_F(CrashTest, ACopyIsWrittenOnlyWhenTheDeckIsAnotherOneAndGoesWhenNothingWouldBeLost)
{
    const QString path = services.put("storm.dat", kDeck);
    start(path);
    program->keep(2, 2, "7.25");
    const QByteArray kept = services.bytes("checkycopy1.dat");
    services.clock.setNow(services.clock.now().addDays(1));
    program->page.deck.noteChange();
    EXPECT_TRUE(program->copy().isArmed());
    program->copy().tick();
    EXPECT_EQ(services.bytes("checkycopy1.dat"), kept) << "the same cards";
    program->keep(2, 2, "1.5");
    EXPECT_EQ(copies(), QStringList()) << "back to what the file holds";

    program->keep(2, 2, "2.5");
    services.dialogs.willAnswer(Button::No);
    EXPECT_TRUE(program->form.close());
    EXPECT_EQ(copies(), QStringList()) << "closed in the usual way";
    EXPECT_TRUE(services.bytes("checkyrecovered.dat").contains("BA   2.5"));
}

TEST_F(CrashTest, ACloseThatTheOtherPageCancelsKeepsBothCopies)
{
    start(services.put("storm.dat", kDeck));
    program->page.commands.run("mnu_clone");
    program->type(2, 2, "7.25");
    program->type(1, 1, "KM", program->form.clonePage());
    program->copy().tick();
    program->form.clonePage()->page().files.recoveryCopy().tick();
    EXPECT_EQ(copies().filter(".lock").size(), 2);
    services.dialogs.willAnswer(Button::No);
    services.dialogs.willAnswer(Button::Cancel);
    EXPECT_FALSE(program->form.close());
    EXPECT_EQ(copies().size(), 4) << copies().join(' ').toStdString();
}

TEST_F(CrashTest, NobodyIsAskedAboutWhatIsSafeOrBelongsToALivingProgram)
{
    // The file has the change by now, though it is older than the copy.
    const QString path = leave("storm.dat", "7.25");
    QByteArray saved = kDeck;
    services.put("storm.dat", saved.replace(" 1.5", "7.25"));
    start();
    EXPECT_EQ(copies(), QStringList());

    services.put("checkycopy4.dat", "cut off in the mid");
    program->keep(1, 1, "KK");
    Program second(services); // asks nobody
    EXPECT_EQ(copies().filter(".dat"), QStringList({"checkycopy1.dat", "checkycopy1.dat.lock", "checkycopy4.dat.bad"}));
    second.keep(1, 1, "ID");
    EXPECT_TRUE(second.copy().path().endsWith("checkycopy2.dat"));
}

TEST_F(CrashTest, EachPageTakesOneAndTheRestWaitsForTheNextStart)
{
    // Three programs died side by side.
    std::vector<std::unique_ptr<Program>> dying;
    for (const char* name : {"a.dat", "b.dat", "c.dat"}) {
        dying.push_back(std::make_unique<Program>(services, services.put(QString::fromLatin1(name), kDeck)));
        dying.back()->keep(2, 2, "7.25");
    }
    dying.clear();
    const QString other = services.put("other.dat", kDeck);
    services.dialogs.willAnswer(Button::No);  // a.dat
    services.dialogs.willAnswer(Button::Yes); // b.dat, to the clone: the first page shows another deck
    services.dialogs.willAnswer(Button::Ok);  // c.dat is told of
    start(other);
    EXPECT_EQ(program->page.deck.currentFilePath, other);
    ASSERT_NE(program->form.clonePage(), nullptr);
    EXPECT_EQ(program->form.clonePage()->page().deck.offeredFilePath, services.path("b.dat"));
    EXPECT_TRUE(services.dialogs.last().text.startsWith("1 more deck"));

    services.dialogs.willAnswer(Button::Yes); // b.dat again, to the page that shows its file
    services.dialogs.willAnswer(Button::Yes); // c.dat
    start(services.path("b.dat"));
    EXPECT_EQ(program->page.deck.offeredFilePath, services.path("b.dat"));
    EXPECT_EQ(program->cell(2, 2), "7.25");
}

TEST_F(CrashTest, AFolderThatTakesNothingIsToldOnceAndKeepsNobodyFromTyping)
{
    start();
    services.directory.remove();
    program->keep(1, 1, "KK");
    EXPECT_TRUE(program->page.panels.text(7).startsWith("No recovery copy of this deck could be kept"));
    program->type(1, 2, "OUT");
    program->page.panels.set(7, "next");
    program->copy().tick();
    EXPECT_EQ(program->page.panels.text(7), "next");
    EXPECT_EQ(program->Text1().text(), "OUT");
}

TEST_F(CrashTest, AKilledProgramGivesItsCopyAwayAndALivingOneDoesNot)
{
    QProcess child;
#ifdef Q_OS_WIN
    const QString name = QStringLiteral(KALVO_BIN_DIR "/keeping_child.exe");
#else
    const QString name = QStringLiteral(KALVO_BIN_DIR "/keeping_child");
#endif
    child.start(name, {services.directory.path()});
    ASSERT_TRUE(child.waitForReadyRead(30'000)) << child.errorString().toStdString();
    EXPECT_TRUE(leftDecks(services).empty());
    child.kill();
    ASSERT_TRUE(child.waitForFinished(30'000));
    const std::vector<LeftDeck> left = leftDecks(services);
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0].deck.cards, QList<QStringList>({{"KK", "KILLED"}}));
}

TEST_F(CrashTest, AnOwnerThatDiedUnderTheSameProcessNumberIsDead)
{
    start();
    program->keep(1, 1, "KK");
    EXPECT_TRUE(leftDecks(services).empty());
    const QByteArray owner = services.bytes("checkycopy1.dat.lock");
    EXPECT_TRUE(owner.startsWith(QByteArray::number(QCoreApplication::applicationPid()))) << owner.toStdString();
    program.reset();
    services.put("checkycopy1.dat.lock", owner);
    EXPECT_EQ(leftDecks(services).size(), 1U);
    EXPECT_EQ(copies(), QStringList("checkycopy1.dat"));
}

// -- The file itself -------------------------------------------------------------------------------------------------

TEST(KeptDeckTest, EveryCellComesBackAsItWasAndNoPartOfTheFilePassesForTheWhole)
{
    const KeptDeck deck{"/a folder/s\\t\u00e9.dat",
                        QDateTime(QDate(2024, 5, 6), QTime(7, 8, 9)),
                        {{"BA", "123456789012"}, {}, {"LONGID", "", "a\tb", "c\\d\r\n\\t", "\u00e9\u4e2d"}, {"", " "}}};
    const QByteArray bytes = bytesOf(deck);
    const auto read = keptDeckOf(bytes);
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->path, deck.path);
    EXPECT_EQ(read->kept, deck.kept);
    ASSERT_EQ(read->cards.size(), deck.cards.size());
    EXPECT_EQ(read->cards[2], deck.cards[2]);
    EXPECT_EQ(bytesOf(*read), bytes);
    for (qsizetype length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(keptDeckOf(bytes.left(length)).has_value()) << length;
    QByteArray changed = bytes;
    changed[30] = static_cast<char>(changed[30] ^ 1);
    EXPECT_FALSE(keptDeckOf(changed).has_value());
}

} // namespace
} // namespace kalvo
