// SPDX-License-Identifier: GPL-3.0-or-later
// A program that keeps a copy of an edited deck in the folder of its first argument, says so, and waits to be killed.
#include "deck/RecoveryCopy.h"
#include "tests/support/ScriptedServices.h"

#include <QCoreApplication>

#include <chrono>
#include <iostream>
#include <thread>

int main(int argc, char* argv[])
{
    using namespace kalvo;
    const QCoreApplication app(argc, argv);
    ScriptedServices scripted;
    ProgramFolder folder(QString::fromLocal8Bit(argc > 1 ? argv[1] : "."), {});
    Services services{scripted.dialogs, scripted.clipboard, scripted.clock, scripted.process, folder, scripted.measure};
    StatusPanels panels;
    Deck deck(services, panels);
    RecoveryCopy copy(deck, [] { return true; });
    deck.Grid1.setTextMatrix(1, 1, QStringLiteral("KK"));
    deck.Grid1.setTextMatrix(1, 2, QStringLiteral("KILLED"));
    copy.tick();
    std::cout << "kept" << std::endl;
    std::this_thread::sleep_for(std::chrono::minutes(2));
    return 0;
}
