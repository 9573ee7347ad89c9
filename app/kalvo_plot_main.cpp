// SPDX-License-Identifier: GPL-3.0-or-later
// kalvo-plot draws the table that `kalvo-run --hydrographs` writes. It is a program of its own so that kalvo-run, which
// starts thousands of times in a night, need not load a single widget library.
#include "graphics/HydrographPicture.h"
#include "platform/Services.h"

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>

namespace {

int fail(const QString& why)
{
    std::fprintf(stderr, "kalvo-plot: %s\n", qUtf8Printable(why));
    return 3;
}

} // namespace

int main(int argc, char* argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kalvo-plot"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Draws hydrographs of a CSV table."));
    parser.addHelpOption();
    const QCommandLineOption in(QStringLiteral("hydrographs"), QStringLiteral("Table in long form."),
                                QStringLiteral("FILE.csv"));
    const QCommandLineOption out(QStringLiteral("out"), QStringLiteral("Picture to write."),
                                 QStringLiteral("FILE.png|.svg|.pdf"));
    const QCommandLineOption title(QStringLiteral("title"), QStringLiteral("Heading of the picture."),
                                   QStringLiteral("TEXT"));
    parser.addOptions({in, out, title});
    parser.process(app);
    if (!parser.isSet(in) || !parser.isSet(out)) {
        std::fputs(qUtf8Printable(parser.helpText()), stderr);
        return 2;
    }

    QString why;
    const auto bytes = kalvo::readFile(parser.value(in), &why);
    if (!bytes)
        return fail(why);
    const auto series = kalvo::readHydrographCsv(*bytes, why);
    if (!why.isEmpty())
        return fail(why);
    why = kalvo::writeHydrographPicture(series, parser.value(title), parser.value(out));
    return why.isEmpty() ? 0 : fail(why);
}
