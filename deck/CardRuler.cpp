// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/CardRuler.h"

#include "deck/Catalogue.h"
#include "deck/Deck.h"
#include "platform/text.h"

#include <algorithm>

namespace kalvo {

using namespace deck_layout;

namespace {

constexpr int kFirstField = 2;
/// HEC-1 takes 9999 ordinates, ten to a card.
constexpr int kLongestSeries = 1000;

int fieldOf(int column)
{
    return column - kFirstField + 1;
}

/// Ten values of one kind, which go on with the next card of this ID. A format is one text.
bool isSeries(const QStringList& names)
{
    return !names.isEmpty() && !names[0].isEmpty() && names[0] != u"FORMAT" && names.count(names[0]) == names.size();
}

CardRuler::Span note(const QString& text)
{
    return {kFirstField, kLastColumn, text, true};
}

QString cardWords(const Catalogue& catalogue, const QString& id)
{
    const QString words = catalogue.getcarddescription(id);
    return words.isEmpty() ? QStringLiteral("%1 is no card that the catalogue knows").arg(id) : words;
}

/// Fields beside each other that hold one text together are one span.
QList<CardRuler::Span> textSpans(const QStringList& names)
{
    QList<CardRuler::Span> spans;
    for (int column = kFirstField; column <= kLastColumn; ++column) {
        const QString name = names.value(column - kFirstField);
        if (!spans.isEmpty() && spans.back().text == name)
            spans.back().right = column;
        else
            spans.append({column, column, name});
    }
    return spans;
}

QList<CardRuler::Span> fieldSpans(const QStringList& names, int cardsAhead)
{
    QList<CardRuler::Span> spans;
    const bool isCounted = isSeries(names) && cardsAhead < kLongestSeries;
    for (int column = kFirstField; column <= kLastColumn; ++column) {
        QString name = names.value(column - kFirstField);
        if (isCounted)
            name += QStringLiteral(" %1").arg(names.size() * cardsAhead + fieldOf(column));
        spans.append({column, column, name});
    }
    return spans;
}

} // namespace

const CardRuler::Span& CardRuler::spanAt(int column) const
{
    const auto span = std::find_if(spans.begin(), spans.end(), [column](const Span& s) { return column <= s.right; });
    return span == spans.end() ? spans.back() : *span;
}

CardRuler cardRuler(const Catalogue& catalogue, const QString& id, int cardsAhead)
{
    CardRuler ruler{trimmedId(id), {}};
    ruler.spans = {{kIdColumn, kIdColumn, ruler.id}};
    const QStringList names = catalogue.fieldNames(ruler.id);
    if (ruler.id.isEmpty())
        ruler.spans.append(note(QStringLiteral("No card yet: its ID goes into the first column")));
    else if (names.count(QString()) == names.size() || isFreeTextId(ruler.id) || ruler.id.startsWith(u'*'))
        ruler.spans.append(note(cardWords(catalogue, ruler.id)));
    else
        ruler.spans.append(isTextCard(ruler.id) ? textSpans(names) : fieldSpans(names, cardsAhead));
    return ruler;
}

int cardsAhead(const Deck& deck, int row, const QString& id)
{
    const QString wanted = trimmedId(id);
    int ahead = 0;
    for (int above = row - 1; above >= 1 && ahead < kLongestSeries; --above) {
        if (deck.isCommentRow(above))
            continue;
        if (trimmedId(deck.id(above)) != wanted)
            break;
        ++ahead;
    }
    return ahead;
}

QString rulerTip(const Catalogue& catalogue, const CardRuler& ruler, int column)
{
    if (ruler.id.isEmpty())
        return {};
    const CardRuler::Span& span = ruler.spanAt(column);
    if (column == kIdColumn || span.isNote)
        return QStringLiteral("%1: %2").arg(ruler.id, cardWords(catalogue, ruler.id));
    const QString name = catalogue.fieldNames(ruler.id).value(column - kFirstField);
    if (name.isEmpty())
        return QStringLiteral("%1, field %2: not used").arg(ruler.id).arg(fieldOf(column));
    return QStringLiteral("%1, field %2, %3: %4")
        .arg(ruler.id)
        .arg(fieldOf(column))
        .arg(name, catalogue.gethecvariabledesc(ruler.id, name, {}));
}

} // namespace kalvo
