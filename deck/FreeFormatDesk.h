// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/FreeFormat.h"
#include "deck/RecentFiles.h"
#include "platform/FlexGrid.h"
#include "platform/Screens.h"
#include "platform/Services.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

namespace kalvo {

/// What stands between free and fixed format: the commands of the free format editor `Form8`, the translation grid of
/// `Form7` with its remarks, and the delimited text of `Free`. The free text itself belongs to the editor's text box
/// and is handed over with each command. One desk serves all pages.
class FreeFormatDesk : public QObject
{
    Q_OBJECT

public:
    FreeFormatDesk(Services& services, Screens& screens, RecentFiles& recent);
    ~FreeFormatDesk() override;

    Services& services() const { return m_services; }

    // -- Form8: the free text ------------------------------------------------------------------------------------
    /// Asks for a free file and gives its text for the editor; none when cancelled or refused, which has been told.
    std::optional<QString> openFree();
    /// The clipboard's text for the editor; none when it holds no text or far too much, which has been told.
    std::optional<QString> pasteOverAll();
    /// Asks for a name and writes the text as it stands, lines ended by CR LF.
    void saveFree(const QString& text);
    /// Lays the text out in the translation grid, shows `Form7`, and tells what did not fit. An empty text does
    /// nothing.
    void convert(const QString& text);

    // -- Form7: the translation ----------------------------------------------------------------------------------
    FlexGrid Grid1;
    /// What the user should look at before he trusts the translation; empty for nothing.
    const QStringList& remarks() const { return m_remarks; }
    /// Puts the selection on the clipboard, rows parted by CR, without columns behind the tenth field.
    void copySelection();
    /// Asks for a name and writes the translation as a fixed-format deck.
    void saveFixed();
    /// Unloads `Form7` and `Form8`.
    void returnFromTranslation();
    void forgetTranslation();

    // -- Free: the main deck as delimited text ---------------------------------------------------------------------
    QString delimited() const { return m_delimited; }
    /// Takes the text; `Free` is shown by its caller.
    void setDelimited(const QString& text);
    void saveDelimited(const QString& text);
    /// Puts lines on the clipboard, ended by CR LF.
    void copyText(const QString& text);

Q_SIGNALS:
    void converted();
    void delimitedChanged();
    /// A block for the main screen is on the clipboard.
    void copied();
    /// The user goes back to the main screen.
    void returned();

private:
    bool refuse(const QString& what, const QString& text);
    void fill(const FixedCards& cards);
    void tellAfterSave(const DeckBytes& deck);
    void writeText(const QString& path, const QString& text, const QString& stillWhere);

    Services& m_services;
    Screens& m_screens;
    RecentFiles& m_recent;
    QStringList m_remarks;
    QString m_delimited;
};

} // namespace kalvo
