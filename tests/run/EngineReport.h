// SPDX-License-Identifier: GPL-3.0-or-later
// Reports as the engine that is built here prints them.
#pragma once

#include "platform/Services.h"
#include "platform/TextBuffer.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kalvo {

/// The report of a deck file; the test fails when there is none.
inline TextBuffer engineReport(const QString& deck)
{
    const QTemporaryDir folder;
    QProcess engine;
    engine.setWorkingDirectory(folder.path());
    engine.start(QStringLiteral(KALVO_BIN_DIR "/hec1"),
                 {QStringLiteral("INPUT=") + deck, QStringLiteral("OUTPUT=report")});
    EXPECT_TRUE(engine.waitForFinished(60'000));
    auto report = TextBuffer::load(folder.filePath(QStringLiteral("report")));
    EXPECT_TRUE(report) << deck.toStdString();
    return report ? std::move(*report) : TextBuffer();
}

/// An example deck with so many comment cards more that its listing takes several pages.
inline TextBuffer longEngineReport(const QString& example, int comments)
{
    const QTemporaryDir folder;
    QByteArray deck = readFile(example).value_or(QByteArray());
    QByteArray lines;
    for (int i = 0; i < comments; ++i)
        lines += "KM  COMMENT " + QByteArray::number(i) + (i % 9 == 0 ? "  \n" : "\n");
    deck.insert(deck.indexOf('\n', deck.indexOf("\nKK") + 1) + 1, lines);
    EXPECT_TRUE(writeFile(folder.filePath(QStringLiteral("deck")), deck));
    return engineReport(folder.filePath(QStringLiteral("deck")));
}

} // namespace kalvo
