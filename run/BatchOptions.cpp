// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/BatchOptions.h"

#include <QFileInfo>

#include <cmath>

namespace kalvo {

namespace {

const QString kStandardOutput = QStringLiteral("-");

/// One option that takes a file.
struct FileOption
{
    const char* name;
    QString BatchOptions::*target;
    bool toStandardOutput;
    const char* placeholder;
    const char* words;
};

constexpr FileOption kFileOptions[] = {
    {"--peaks", &BatchOptions::peaks, true, "FILE|-", "peak flow of every hydrograph, as CSV"},
    {"--hydrographs", &BatchOptions::hydrographs, true, "FILE|-", "every flow, as CSV in long form"},
    {"--json", &BatchOptions::json, true, "FILE|-", "all of it, with verdicts and errors, as JSON"},
    {"--report", &BatchOptions::report, true, "FILE|-", "HEC-1's printed report"},
    {"--details", &BatchOptions::details, true, "FILE|-",
     "what lies between rain and flow, as CSV (engine of this program)"},
    {"--plot", &BatchOptions::plot, false, "FILE", "picture of the hydrographs: .png, .svg or .pdf"},
};

QString quoted(const QString& text)
{
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

QString wholeNumberError(const QString& name, const QString& value)
{
    return QStringLiteral("%1 takes a whole number above 0, not %2").arg(name, quoted(value));
}

bool hasPictureName(const QString& file)
{
    for (const char* suffix : {".png", ".svg", ".pdf"})
        if (file.endsWith(QLatin1String(suffix), Qt::CaseInsensitive))
            return true;
    return false;
}

/// Takes the options that need a value; the name may carry it behind "=".
QString takeValue(BatchOptions& options, const QString& name, const QString& value)
{
    for (const FileOption& option : kFileOptions) {
        if (name != QLatin1String(option.name))
            continue;
        if (value.isEmpty())
            return name + QStringLiteral(" takes the name of a file");
        if (!option.toStandardOutput && value == kStandardOutput)
            return name + QStringLiteral(" cannot go to standard output");
        options.*option.target = value;
        return {};
    }
    bool isNumber = false;
    if (name == QLatin1String("--jobs")) {
        options.jobs = value.toInt(&isNumber);
        return isNumber && options.jobs > 0 ? QString() : wholeNumberError(name, value);
    }
    // --timeout
    const double seconds = value.toDouble(&isNumber);
    if (!isNumber || !(seconds > 0.0) || seconds > 1e6)
        return QStringLiteral("%1 takes seconds above 0, not %2").arg(name, quoted(value));
    options.timeoutMs = std::max(1, static_cast<int>(std::lround(seconds * 1000.0)));
    return {};
}

bool needsValue(const QString& name)
{
    for (const FileOption& option : kFileOptions)
        if (name == QLatin1String(option.name))
            return true;
    return name == QLatin1String("--jobs") || name == QLatin1String("--timeout");
}

/// One file for all spellings of a path.
QString identity(const QString& path)
{
    const QFileInfo file(path);
    const QString canonical = file.canonicalFilePath();
    if (!canonical.isEmpty())
        return canonical;
    const QString folder = QFileInfo(file.absolutePath()).canonicalFilePath();
    return (folder.isEmpty() ? file.absolutePath() : folder) + QLatin1Char('/') + file.fileName();
}

/// Outputs must neither overwrite a deck nor each other.
QString clash(const BatchOptions& options)
{
    QStringList taken;
    for (const QString& deck : options.decks)
        taken << identity(deck);
    for (const QString& output : options.outputs()) {
        const QString id = output == kStandardOutput ? output : identity(output);
        if (taken.contains(id))
            return output == kStandardOutput
                       ? QStringLiteral("only one output can go to standard output")
                       : quoted(output) + QStringLiteral(" is named twice, as an output and otherwise");
        taken << id;
    }
    return {};
}

} // namespace

QStringList BatchOptions::outputs() const
{
    QStringList named;
    for (const FileOption& option : kFileOptions)
        if (!(this->*option.target).isEmpty())
            named << this->*option.target;
    return named;
}

BatchOptions batchOptions(const QStringList& arguments)
{
    BatchOptions options;
    bool onlyDecks = false;
    for (qsizetype i = 1; i < arguments.size() && options.usageError.isEmpty(); ++i) {
        const QString& argument = arguments[i];
        if (onlyDecks || !argument.startsWith(QLatin1Char('-')) || argument == kStandardOutput) {
            options.decks << argument;
        } else if (argument == QLatin1String("--")) {
            onlyDecks = true;
        } else if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            options.wantsHelp = true;
        } else if (argument == QLatin1String("--version")) {
            options.wantsVersion = true;
        } else if (argument == QLatin1String("--keep")) {
            options.keep = true;
        } else {
            const qsizetype equals = argument.indexOf(QLatin1Char('='));
            const QString name = argument.left(equals);
            if (!needsValue(name))
                options.usageError = QStringLiteral("there is no option %1").arg(quoted(argument));
            else if (equals < 0 && i + 1 == arguments.size())
                options.usageError = name + QStringLiteral(" needs a value");
            else
                options.usageError = takeValue(options, name, equals < 0 ? arguments[++i] : argument.mid(equals + 1));
        }
    }
    if (!options.usageError.isEmpty() || options.wantsHelp || options.wantsVersion)
        return options;
    if (options.decks.isEmpty())
        options.usageError = QStringLiteral("no deck is named");
    else if (options.decks.contains(kStandardOutput) || options.decks.contains(QString()))
        options.usageError = QStringLiteral("a deck is a file; it cannot come from standard input");
    else if (!options.plot.isEmpty() && !hasPictureName(options.plot))
        options.usageError = QStringLiteral("--plot takes a file that ends in .png, .svg or .pdf");
    else
        options.usageError = clash(options);
    if (options.outputs().isEmpty())
        options.peaks = kStandardOutput;
    return options;
}

QString batchHelp()
{
    QString text = QStringLiteral("Usage: kalvo-run [OPTION]... DECK...\n"
                                  "Runs HEC-1 on decks without a window and writes what it computed.\n\n");
    const auto line = [&text](const QString& option, const QString& words) {
        text += QStringLiteral("  %1 %2\n").arg(option, -22).arg(words);
    };
    for (const FileOption& option : kFileOptions)
        line(QLatin1String(option.name) + QLatin1Char(' ') + QLatin1String(option.placeholder),
             QString::fromLatin1(option.words));
    line(QStringLiteral("--jobs N"), QStringLiteral("decks at once (default: one for each processor)"));
    line(QStringLiteral("--timeout SECONDS"), QStringLiteral("stop a deck that takes longer"));
    line(QStringLiteral("--keep"), QStringLiteral("leave the run folders behind and tell where they are"));
    line(QStringLiteral("--help, --version"), QString());
    text += QStringLiteral(
        "\nWithout an output the peaks go to standard output (FILE \"-\"). Each deck runs in a folder of its own, "
        "handed to\n"
        "HEC-1 byte for byte; results come in the order of the decks.\n\n"
        "Flows are in cfs and volumes in acre-feet; with an IM card in the deck m3/s and 1000 m3. Plan, ratio and JD\n"
        "count from 1.\n\n"
        "Exit status, the highest of all decks: 0 all ended normally, 1 HEC-1 told errors, 2 wrong usage, 3 trouble "
        "with\n"
        "a file, 5 timed out or cancelled, 6 HEC-1 crashed, wrote nothing or could not be started.\n\n"
        "KALVO_HEC1 names the HEC-1 to run; otherwise it is looked for in the program's folder, beside this program "
        "and\n"
        "on the path.\n");
    return text;
}

} // namespace kalvo
