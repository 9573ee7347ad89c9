// SPDX-License-Identifier: GPL-3.0-or-later
// The reader of recovery copies: any bytes are survived, and what it takes for whole it writes again as it was.
#include "deck/KeptDeck.h"

#include <cstdint>
#include <cstdlib>

using namespace kalvo;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    keptDeckOf(bytes);

    // No random bytes carry a right checksum: the rest of the reader is reached by a deck made of them.
    KeptDeck made;
    made.path = QString::fromLatin1(bytes.left(20));
    for (qsizetype at = 20; at < bytes.size(); at += 40) {
        QStringList cells;
        for (qsizetype part = at; part < std::min(at + 40, bytes.size()); part += 8)
            cells << QString::fromLatin1(bytes.mid(part, 8));
        made.cards << cells;
    }
    const auto again = keptDeckOf(bytesOf(made));
    if (!again || again->path != made.path || again->cards != made.cards)
        std::abort();
    return 0;
}
