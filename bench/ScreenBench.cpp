// SPDX-License-Identifier: GPL-3.0-or-later
// What the user waits for on the main screen: a deck of 5,000 cards opened into the shown grid, one key in the editor
// over decks of 500 to 50,000 (with its undo level, colours, and the paint), one step of the cursor, and the start of
// the program to its first paint. Beside them the same repaint with nothing to do, and a program that only opens a
// window, as bare limits.
#include "bench/BenchServices.h"
#include "deck/Form1_MainScreen.h"
#include "deck/Workspace.h"
#include "platform/FlexGridView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace kalvo;

namespace {

constexpr int kCards = 5000;

QByteArray deckText(int cards)
{
    QByteArray text = "ID    A DECK OF MANY CARDS\r\n";
    for (int card = 1; card < cards - 1; ++card)
        text += card % 7 == 1 ? "KK  SUB1  A STATION WITH A DESCRIPTION\r\n"
                              : "PC0.0000  0.0053  0.0108  0.0164  0.0223  0.0284  0.0347  0.0414  0.0483  0.0555\r\n";
    return text + "ZZ\r\n";
}

struct MainWindow : BenchServices<>
{
    Screens screens;
    Workspace page{services, screens};
    Form1 form{page};
    QString path = directory.filePath(QStringLiteral("deck.dat"));

    explicit MainWindow(int cards = kCards) : BenchServices({}, {QStringLiteral(KALVO_BIN_DIR)})
    {
        if (!writeFile(path, deckText(cards)))
            qFatal("cannot write %s", qPrintable(path));
        form.load();
        form.resize(1280, 760);
        form.show();
        QApplication::processEvents();
    }
    void paint()
    {
        form.repaint();
        QApplication::processEvents();
    }
    QLineEdit& Text1() { return *form.findChild<QLineEdit*>(QStringLiteral("Text1")); }
    void press(int key, const QString& text = {})
    {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
        QApplication::sendEvent(&Text1(), &down);
    }
};

void repaintAlone(benchmark::State& state)
{
    MainWindow window;
    window.page.files.opener(window.path);
    for (auto _ : state)
        window.paint();
}

void openIntoMainScreen(benchmark::State& state)
{
    MainWindow window;
    for (auto _ : state) {
        if (!window.page.files.opener(window.path))
            state.SkipWithError("not opened");
        window.paint();
    }
}

void keystroke(benchmark::State& state)
{
    const int cards = static_cast<int>(state.range(0));
    MainWindow window(cards);
    window.page.files.opener(window.path);
    window.page.deck.Grid1.setCursor(cards / 2, 5);
    window.Text1().setFocus();
    bool typing = true;
    for (auto _ : state) {
        if (typing)
            window.press(Qt::Key_7, QStringLiteral("7"));
        else
            window.press(Qt::Key_Backspace, QStringLiteral("\b"));
        QApplication::processEvents();
        typing = !typing;
    }
}

void stepOfTheCursor(benchmark::State& state)
{
    MainWindow window;
    window.page.files.opener(window.path);
    window.page.deck.Grid1.setCursor(2500, 5);
    window.Text1().setFocus();
    bool down = true;
    for (auto _ : state) {
        window.press(down ? Qt::Key_Down : Qt::Key_Up);
        QApplication::processEvents();
        down = !down;
    }
}

void runOnce(benchmark::State& state, const QStringList& arguments)
{
    QTemporaryDir home;
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KALVO_HOME"), home.path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    program.setProcessEnvironment(environment);
    for (auto _ : state) {
        program.start(QStringLiteral(KALVO_BIN_DIR "/kalvo"), arguments);
        if (!program.waitForFinished(20'000) || program.exitCode() != 0)
            state.SkipWithError("the program did not come to its first paint");
    }
}

void processAlone(benchmark::State& state)
{
    runOnce(state, {QStringLiteral("--version")});
}

void startToFirstPaint(benchmark::State& state)
{
    runOnce(state, {QStringLiteral("--no-splash"), QStringLiteral("--until-first-paint")});
}

BENCHMARK(repaintAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(openIntoMainScreen)->Unit(benchmark::kMillisecond);
BENCHMARK(keystroke)->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);
BENCHMARK(stepOfTheCursor)->Unit(benchmark::kMillisecond);
BENCHMARK(processAlone)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(startToFirstPaint)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
