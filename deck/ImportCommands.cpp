// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/ImportCommands.h"

#include "deck/FreeFormat.h"
#include "deck/MainMenu.h"

namespace kalvo {

ImportCommands::ImportCommands(Deck& deck, Services& services, Commands& commands, Screens& screens,
                               RecentFiles& recent, ImportCommands* first)
    : m_deck(deck), m_services(services), m_commands(commands), m_screens(screens),
      m_importDeck(first ? first->m_importDeck : std::make_shared<ImportDeck>(services)),
      m_freeFormat(first ? first->m_freeFormat : std::make_shared<FreeFormatDesk>(services, screens, recent))
{
    commands.add(QStringLiteral("mnu_import"), [this] { mnu_import(); });
    commands.add(QStringLiteral("mnu_freeformat"), [this] { mnu_freeformat(); });
    commands.add(QStringLiteral("mnu_SaveAsTextFile"), [this] { mnu_SaveAsTextFile(); });
    // Hidden entries that lead nowhere: opening is done in the free format editor, pasting there too.
    for (const char* name : {"mnu_openfreeformat", "mnu_parser"}) {
        commands.add(QString::fromLatin1(name), [] {});
        commands.setShown(QString::fromLatin1(name), false);
    }
    if (!first)
        connect(&screens, &Screens::screenUnloaded, this, [this](const QString& name) {
            // A screen that goes forgets what it showed.
            if (name == u"Form5")
                m_importDeck->forget();
            else if (name == u"Form7")
                m_freeFormat->forgetTranslation();
            else if (name == u"Free")
                m_freeFormat->setDelimited(QString());
        });
    connect(m_importDeck.get(), &ImportDeck::copied, this, &ImportCommands::enablePaste);
    connect(m_freeFormat.get(), &FreeFormatDesk::copied, this, &ImportCommands::enablePaste);
}

ImportCommands::~ImportCommands() = default;

void ImportCommands::enablePaste()
{
    for (const QString& name : pasteCommands())
        m_commands.setEnabled(name, true);
}

void ImportCommands::mnu_import()
{
    if (m_importDeck->import())
        m_screens.show(QStringLiteral("Form5"));
}

void ImportCommands::mnu_freeformat()
{
    m_screens.show(QStringLiteral("Form8"));
}

void ImportCommands::mnu_SaveAsTextFile()
{
    bool cardsWent = false;
    int dropped = 0;
    {
        const QObject watch;
        connect(&m_deck, &Deck::cardsDropped, &watch, [&cardsWent] { cardsWent = true; });
        dropped = m_deck.trimtozz();
    }
    if (cardsWent)
        m_deck.noteChange();
    else if (dropped > 0)
        m_deck.dataSaved = false;

    m_freeFormat->setDelimited(QString());
    const auto text = delimitedText(m_deck.Grid1);
    m_deck.setTextbox();
    if (!text) {
        m_services.dialogs.tell(QStringLiteral("No Data or Bad Data - This will not work properly!"));
        return;
    }
    m_freeFormat->setDelimited(*text);
    m_screens.show(QStringLiteral("Free"));
}

} // namespace kalvo
