// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/DiskWatch.h"

#include "platform/SameFile.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace kalvo {

namespace {

constexpr int kNamePanel = 1;
constexpr int kHelpPanel = 7;
/// Whatever this is by now, it is not the deck that was opened.
constexpr qint64 kLargestDeck = qint64{64} << 20;

QByteArray digestOf(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

} // namespace

void DiskWatch::remember(const QString& path, const QByteArray& bytes)
{
    m_path = path;
    m_digest = digestOf(bytes);
    m_told = {};
    show({});
}

void DiskWatch::forget()
{
    m_path.clear();
    m_digest.clear();
    m_told = {};
    show({});
}

DiskWatch::Found DiskWatch::find() const
{
    if (m_path.isEmpty())
        return {};
    const QFileInfo file(m_path);
    if (!file.exists())
        return {State::Gone};
    if (!file.isFile())
        return {};
    if (file.size() > kLargestDeck)
        return {State::Changed};
    const auto bytes = readFile(m_path);
    if (!bytes)
        return {};
    const QByteArray digest = digestOf(*bytes);
    return {digest == m_digest ? State::Same : State::Changed, digest};
}

void DiskWatch::look()
{
    if (m_path.isEmpty() || m_path != m_deck.currentFilePath || m_deck.panels().isWaiting())
        return;
    const Found found = find();
    if (found == m_told || found.state == State::Unknown)
        return;
    m_told = found;
    switch (found.state) {
    case State::Changed:
        show(QStringLiteral("%1 was changed by another program since it was opened"));
        break;
    case State::Gone:
        m_deck.dataSaved = false;
        show(QStringLiteral("%1 is no longer there: the deck stands in the grid alone until it is saved"));
        break;
    case State::Same:
    case State::Unknown:
        show({});
        break;
    }
}

/// `news` with "%1" for the file; the empty text takes former news away.
void DiskWatch::show(const QString& news)
{
    StatusPanels& panels = m_deck.panels();
    panels.setToolTip(kNamePanel, news.isEmpty() ? news : news.arg(m_path));
    panels.setLook(kNamePanel, news.isEmpty() ? PanelLook{} : PanelLook{.foreColor = rgb(208, 84, 0)});
    if (!news.isEmpty())
        panels.set(kHelpPanel, news.arg(QFileInfo(m_path).fileName()));
}

DiskWatch::Answer DiskWatch::mayWriteOver(const QString& path)
{
    if (m_path.isEmpty() || !isSameFile(path, m_path) || find().state != State::Changed)
        return Answer::Write;
    const MessageBox box{QStringLiteral("%1 was changed by another program since it was opened. Save over it?\r\n"
                                        "Yes saves over it (what it holds now is kept as %1.bak), No asks for another "
                                        "name.")
                             .arg(path),
                         QString::fromLatin1(kApplicationTitle), Icon::Warning, Buttons::YesNoCancel, Button::No};
    switch (m_deck.services().dialogs.message(box)) {
    case Button::Yes:
        return Answer::Write;
    case Button::No:
        return Answer::OtherName;
    default:
        return Answer::Cancel;
    }
}

} // namespace kalvo
