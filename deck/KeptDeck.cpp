// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/KeptDeck.h"

#include "deck/Deck.h"

#include <QCryptographicHash>

namespace kalvo {

namespace {

constexpr auto kTitle = "Kalvo recovery copy 1\n";
constexpr auto kPath = "path\t";
constexpr auto kTime = "kept\t";
constexpr auto kEnd = "end\t";

/// A cell may hold whatever a file or the clipboard brought.
QString escaped(QString text)
{
    text.replace(u'\\', QStringLiteral("\\\\"));
    text.replace(u'\t', QStringLiteral("\\t"));
    text.replace(u'\n', QStringLiteral("\\n"));
    text.replace(u'\r', QStringLiteral("\\r"));
    return text;
}

QString plain(const QString& text)
{
    if (!text.contains(u'\\'))
        return text;
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const QChar code = text[++i];
        out += code == u't' ? QChar(u'\t') : code == u'n' ? QChar(u'\n') : code == u'r' ? QChar(u'\r') : code;
    }
    return out;
}

QByteArray checksum(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
}

/// The text of a line behind its mark; none when the line does not begin with it.
std::optional<QString> behind(const QString& line, const char* mark)
{
    const QLatin1String start(mark);
    return line.startsWith(start) ? std::optional(plain(line.mid(start.size()))) : std::nullopt;
}

} // namespace

bool isHalfTyped(const Deck& deck)
{
    const EditBox* box = deck.editBox();
    const int row = deck.Grid1.row();
    const int col = deck.Grid1.col();
    if (!box || !deck.isEditorActive() || !box->isShown() || row < 1 || col < deck_layout::kIdColumn)
        return false;
    const QString text = box->text();
    return text != deck.Grid1.textMatrix(row, col) && text != deck.editText(row, col);
}

QList<QStringList> cardsOf(const Deck& deck)
{
    const FlexGrid& grid = deck.Grid1;
    QList<QStringList> cards;
    cards.reserve(grid.rows());
    qsizetype used = 0;
    for (int row = 1; row < grid.rows(); ++row) {
        QStringList cells = grid.rowTexts(row, deck_layout::kIdColumn);
        if (row == grid.row() && isHalfTyped(deck))
            cells[grid.col() - deck_layout::kIdColumn] = deck.editBox()->text();
        while (!cells.isEmpty() && cells.back().isEmpty())
            cells.removeLast();
        cards.append(cells);
        if (!cells.isEmpty())
            used = cards.size();
    }
    cards.resize(used);
    return cards;
}

QByteArray bytesOf(const KeptDeck& deck)
{
    QString text = QString::fromLatin1(kTitle) + QLatin1String(kPath) + escaped(deck.path) + u'\n' +
                   QLatin1String(kTime) + deck.kept.toString(Qt::ISODate) + u'\n';
    for (const QStringList& cells : deck.cards) {
        for (qsizetype i = 0; i < cells.size(); ++i) {
            if (i > 0)
                text += u'\t';
            text += escaped(cells[i]);
        }
        text += u'\n';
    }
    QByteArray bytes = text.toUtf8();
    return bytes + kEnd + checksum(bytes) + '\n';
}

std::optional<KeptDeck> keptDeckOf(const QByteArray& bytes)
{
    const qsizetype end = bytes.lastIndexOf(kEnd);
    if (!bytes.startsWith(kTitle) || end < 0 || bytes.mid(end) != kEnd + checksum(bytes.first(end)) + '\n')
        return std::nullopt;
    QStringList lines = QString::fromUtf8(bytes.left(end)).split(u'\n');
    lines.removeLast(); // what stands behind the last line end
    if (lines.size() < 3)
        return std::nullopt;
    const auto path = behind(lines[1], kPath);
    const auto time = behind(lines[2], kTime);
    if (!path || !time)
        return std::nullopt;
    KeptDeck deck{*path, QDateTime::fromString(*time, Qt::ISODate), {}};
    for (const QString& line : lines.mid(3)) {
        QStringList cells = line.split(u'\t');
        if (cells.size() > deck_layout::kLastColumn)
            return std::nullopt;
        for (QString& cell : cells)
            cell = plain(cell);
        deck.cards.append(cells);
    }
    return deck;
}

} // namespace kalvo
