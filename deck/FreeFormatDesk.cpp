// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/FreeFormatDesk.h"

#include "deck/Deck.h"
#include "deck/ImportDeck.h"
#include "deck/ImportFile.h"

#include <QFileInfo>

#include <algorithm>
#include <exception>

namespace kalvo {

using namespace deck_layout;

namespace {

constexpr Rgb kStripe = rgb(224, 248, 250);

QString absolute(const QString& name)
{
    return QFileInfo(name).absoluteFilePath();
}

/// Back to an empty grid of `cards` rows and at least `columns` columns, one blank row behind the cards.
void layOut(FlexGrid& grid, int cards, int columns)
{
    grid.clear();
    grid.setCols(columns);
    grid.setRows(std::max(cards + 2, kLeastRows));
    grid.setAllRowHeights(kRowHeight);
    grid.setCursor(1, 1);
    grid.setTopRow(1);
    grid.setLeftCol(1);
    numberRowsAndColumns(grid);
    CellFormat stripe;
    stripe.backColor = kStripe;
    for (int row = 0; row < grid.rows(); ++row)
        for (int column = 0; column < grid.cols(); column += 2)
            grid.setCellFormat(row, column, stripe);
}

} // namespace

FreeFormatDesk::FreeFormatDesk(Services& services, Screens& screens, RecentFiles& recent)
    : m_services(services), m_screens(screens), m_recent(recent)
{
    Grid1.setDefaultRowHeight(kRowHeight);
    forgetTranslation();
}

FreeFormatDesk::~FreeFormatDesk() = default;

// -- Form8 -----------------------------------------------------------------------------------------------------------

bool FreeFormatDesk::refuse(const QString& what, const QString& text)
{
    const QString why = whyNotFreeText(text);
    if (why.isEmpty())
        return false;
    m_services.dialogs.warn(QStringLiteral("%1 is not taken.\r\n%2").arg(what, why));
    return true;
}

std::optional<QString> FreeFormatDesk::openFree()
{
    const auto file = chooseTextFile(m_services, QStringLiteral("OPEN HEC-1 FREE FORM DATA FILES"));
    if (!file)
        return std::nullopt;
    const QString text = freeTextOf(file->bytes);
    if (refuse(QStringLiteral("The File: %1").arg(file->path), text))
        return std::nullopt;
    return text;
}

std::optional<QString> FreeFormatDesk::pasteOverAll()
{
    if (!m_services.clipboard.hasText()) {
        m_services.dialogs.tell(QStringLiteral("There is no text on the clipboard."));
        return std::nullopt;
    }
    const QString text = withLf(m_services.clipboard.text());
    if (refuse(QStringLiteral("The text on the clipboard"), text))
        return std::nullopt;
    return text;
}

void FreeFormatDesk::writeText(const QString& path, const QString& text, const QString& stillWhere)
{
    int lost = 0;
    const QByteArray bytes = textFileBytes(text, &lost);
    if (writeChosenFile(m_services, path, bytes, stillWhere) && lost > 0)
        m_services.dialogs.warn(
            QStringLiteral("The text is saved, but %1 character(s) that a HEC-1 deck cannot hold became \"?\".")
                .arg(lost));
}

void FreeFormatDesk::saveFree(const QString& text)
{
    if (text.isEmpty()) {
        m_services.dialogs.tell(QStringLiteral("No Data to Save!"));
        return;
    }
    FileDialog dialog;
    dialog.title = QStringLiteral("Save as FREE Format");
    dialog.filter = QString::fromLatin1(kTextFileFilter);
    dialog.defaultExtension = QStringLiteral(".dat");
    dialog.overwritePrompt = true;
    const auto chosen = m_services.dialogs.saveFile(dialog);
    if (chosen && !chosen->isEmpty())
        writeText(absolute(*chosen), text, QStringLiteral("in the editor"));
}

void FreeFormatDesk::convert(const QString& text)
{
    if (text.isEmpty())
        return;
    try {
        if (refuse(QStringLiteral("The text"), text))
            return;
        const FixedCards cards = fixedFromFree(text);
        fill(cards);
        m_screens.show(QStringLiteral("Form7"));
        if (cards.overflow)
            m_services.dialogs.tell(
                QStringLiteral("Some of the Data has been translated beyond the allowable columns!\r\r"
                               "Check the Number of Delimiters."));
        if (!cards.longIdRows.isEmpty())
            m_services.dialogs.warn(QStringLiteral("IDs of more than 2 characters, marked in the grid: %1, in row(s) "
                                                   "%2.\r\nPart each from its first field, or the deck cannot be "
                                                   "saved.")
                                        .arg(cards.longIdRows.size())
                                        .arg(rowList(cards.longIdRows)));
        if (cards.overflow || !cards.longIdRows.isEmpty())
            m_screens.show(QStringLiteral("Form7")); // a box has brought the window it came from to the front
    } catch (const std::exception& error) {
        m_services.dialogs.tell(QString::fromLocal8Bit(error.what()) +
                                QStringLiteral(" - Improper procedure user in mnu_convert"));
    }
}

void FreeFormatDesk::fill(const FixedCards& cards)
{
    {
        const FlexGrid::Bulk bulk(Grid1);
        layOut(Grid1, static_cast<int>(cards.rows.size()), cards.columns);
        for (qsizetype i = 0; i < cards.rows.size(); ++i)
            Grid1.setRowTexts(static_cast<int>(i) + 1, kIdColumn, cards.rows[i]);
        CellFormat tooLong;
        tooLong.backColor = tintColor(EditBox::Tint::TooLong);
        for (const int row : cards.longIdRows)
            Grid1.setCellFormat(row, kIdColumn, tooLong);
    }
    m_remarks = remarksOn(cards);
    Q_EMIT converted();
}

// -- Form7 -----------------------------------------------------------------------------------------------------------

void FreeFormatDesk::forgetTranslation()
{
    fill(FixedCards());
}

void FreeFormatDesk::copySelection()
{
    // Turned to run forwards whatever way it was dragged: else a drag from column 13 back to 1 would slip past the cut.
    FlexGrid::Area area = Grid1.selection();
    const bool trimmed = area.right > kLastColumn;
    area.left = std::min(area.left, kLastColumn);
    area.right = std::min(area.right, kLastColumn);
    Grid1.select(area.top, area.left, area.bottom, area.right);
    if (trimmed)
        m_services.dialogs.tell(QStringLiteral("The number of Columns in the selection has been trimmed to fit!\r"));
    m_services.clipboard.setText(Grid1.clip());
    Q_EMIT copied();
}

void FreeFormatDesk::saveFixed()
{
    FileDialog dialog;
    dialog.title = QStringLiteral("Save As HEC-1 Input Data");
    dialog.filter = QStringLiteral("Data Files(*.dat)|*.dat|Text Files (*.txt)|*.txt");
    dialog.defaultExtension = QStringLiteral(".dat");
    dialog.overwritePrompt = true;
    const auto chosen = m_services.dialogs.saveFile(dialog);
    if (!chosen || chosen->isEmpty()) {
        m_services.dialogs.tell(QStringLiteral("Save As Cancelled:"));
        return;
    }
    const DeckBytes deck = writeFixedCards(Grid1);
    if (deck.longIdRow > 0) {
        // Nothing is written: half a deck would look like a whole one.
        m_services.dialogs.message({QStringLiteral("Unknown Error in Form7.savefile!\r\nThe ID \"%1\" of row %2 has "
                                                   "more than 2 characters. No file was written.")
                                        .arg(Grid1.textMatrix(deck.longIdRow, kIdColumn))
                                        .arg(deck.longIdRow),
                                    QString::fromLatin1(kApplicationTitle), Icon::Critical});
        return;
    }
    const QString path = absolute(*chosen);
    if (!writeChosenFile(m_services, path, deck.bytes, QStringLiteral("in the grid")))
        return;
    tellAfterSave(deck);
    m_recent.UPDATEOLDFILES(path);
}

void FreeFormatDesk::tellAfterSave(const DeckBytes& deck)
{
    QStringList news;
    const auto tell = [&news](const QList<int>& rows, const QString& text) {
        if (!rows.isEmpty())
            news.append(text.arg(rowList(rows)));
    };
    tell(deck.pushedRows, QStringLiteral("Fields longer than their columns push the rest of the line: row(s) %1."));
    tell(deck.overlongRows, QStringLiteral("Longer than 82 characters, so that Open will refuse the file: row(s) %1."));
    tell(deck.oddRows, QStringLiteral("With characters that Open refuses: row(s) %1."));
    if (!news.isEmpty())
        m_services.dialogs.warn(QStringLiteral("The deck is saved, but some of its lines need care.\r\n") +
                                news.join(QStringLiteral("\r\n")));
}

void FreeFormatDesk::returnFromTranslation()
{
    m_screens.unload(QStringLiteral("Form7"));
    m_screens.unload(QStringLiteral("Form8"));
    Q_EMIT returned();
}

// -- Free ------------------------------------------------------------------------------------------------------------

void FreeFormatDesk::setDelimited(const QString& text)
{
    m_delimited = text;
    Q_EMIT delimitedChanged();
}

void FreeFormatDesk::saveDelimited(const QString& text)
{
    if (text.isEmpty()) {
        m_services.dialogs.tell(QStringLiteral("No Data to Save!"));
        return;
    }
    FileDialog dialog;
    dialog.title = QStringLiteral(" Save as Text File");
    dialog.filter = QString::fromLatin1(kTextFileFilter);
    dialog.filterIndex = 3;
    dialog.defaultExtension = QStringLiteral("txt");
    dialog.overwritePrompt = true;
    const auto chosen = m_services.dialogs.saveFile(dialog);
    if (!chosen)
        return;
    if (chosen->isEmpty()) {
        m_services.dialogs.tell(QStringLiteral("Need a File Name!"));
        return;
    }
    writeText(absolute(*chosen), text, QStringLiteral("in the window"));
}

void FreeFormatDesk::copyText(const QString& text)
{
    QString lines = withLf(text);
    m_services.clipboard.setText(lines.replace(QStringLiteral("\n"), QStringLiteral("\r\n")));
}

} // namespace kalvo
