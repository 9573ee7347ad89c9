// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/FileCommands.h"

#include "deck/DeckFile.h"
#include "platform/SameFile.h"
#include "platform/text.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QScopedValueRollback>

#include <algorithm>

namespace kalvo {

namespace {

Q_LOGGING_CATEGORY(logFiles, "kalvo.deck.files")

/// The command line's line array.
constexpr qsizetype kCommandLineLines = 2000;
/// No deck is this large (it would be 800,000 cards); what is, is something else, and reading it would only take
/// memory.
constexpr qint64 kLargestDeck = qint64{64} << 20;

QString applicationTitle()
{
    return QString::fromLatin1(kApplicationTitle);
}

/// A name is made absolute the moment it arrives; the process's own folder is never changed afterwards.
QString absolute(const QString& name)
{
    return QFileInfo(name).absoluteFilePath();
}

QString nameBehindFolder(const QString& path)
{
    const qsizetype mark = std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/'));
    return path.mid(mark + 1);
}

QString linesText(int count)
{
    return count == 1 ? QStringLiteral("1 line") : QStringLiteral("%1 lines").arg(count);
}

} // namespace

FileCommands::FileCommands(Deck& deck, Services& services, Commands& commands, StatusPanels& panels, Screens& screens,
                           RecentFiles* shared)
    : m_deck(deck), m_services(services), m_commands(commands), m_panels(panels), m_screens(screens),
      m_ownRecent(shared ? nullptr : std::make_unique<RecentFiles>(services)),
      m_recent(shared ? shared : m_ownRecent.get()), m_recovery(deck),
      m_copy(deck, [this] { return m_recovery.differsFromFile(); }), m_watch(deck)
{
    commands.add(QStringLiteral("openhec"), [this] { openhec(); });
    commands.add(QStringLiteral("savehec"), [this] { savehec(); });
    commands.add(QStringLiteral("saveashec1"), [this] { saveashec1(); });
    commands.add(QStringLiteral("newhec1"), [this] { newhec1(); });
    commands.add(QStringLiteral("clearrecentfiles"), [this] { clearrecentfiles(); });
}

FileCommands::~FileCommands() = default;

// -- Opening ---------------------------------------------------------------------------------------------------------

bool FileCommands::isHecRunning()
{
    if (!m_services.process.isRunning())
        return false;
    // The run reads its results for the deck that started it.
    m_services.dialogs.tell(
        QStringLiteral("HEC-1 is still running. Wait for its end, or press Esc to stop it, and try again."));
    return true;
}

/// Reads the whole file before anything on the screen is touched.
bool FileCommands::loadable(const QString& path, QByteArray& bytes)
{
    const QFileInfo file(path);
    QString why;
    if (!file.exists()) {
        m_services.dialogs.tell(QStringLiteral("The File: %1 does not Exist!").arg(path));
        return false;
    }
    if (!file.isFile())
        why = QStringLiteral("It is not a file.");
    else if (file.size() > kLargestDeck)
        why = QStringLiteral("It is too large for a HEC-1 input deck.");
    else if (auto all = readFile(path, &why)) {
        bytes = *all;
        return true;
    }
    m_services.dialogs.warn(QStringLiteral("The File: %1 could not be read.\r\n%2").arg(path, why));
    return false;
}

bool FileCommands::opener(const QString& fileName)
{
    if (fileName.isEmpty() || isHecRunning())
        return false;
    const QString path = QDir::isRelativePath(fileName) ? m_services.folder.file(fileName) : fileName;
    QByteArray bytes;
    if (!loadable(path, bytes))
        return false;

    m_deck.storeEditBox();
    if (!m_deck.dataSaved) {
        const MessageBox box{QStringLiteral("Add the New Data?"), applicationTitle(), Icon::Question,
                             Buttons::OkCancel};
        if (m_services.dialogs.message(box) != Button::Ok)
            return false;
    }
    m_deck.dataSaved = false;
    m_deck.currentFileName = nameBehindFolder(path);
    m_deck.setGridShown(false);
    m_commands.setEnabled(QStringLiteral("viewhec1"), false);
    m_screens.unload(QStringLiteral("Form12"));
    m_commands.setEnabled(QStringLiteral("graphdata"), false);
    m_commands.setEnabled(QStringLiteral("auditdata"), true);
    clearGrid();

    const DeckLines deck = readDeck(bytes);
    if (deck.refusal) {
        forgetPath();
        if (*deck.refusal == DeckRefusal::LineTooLong) {
            m_deck.setGridShown(true);
            m_services.dialogs.tell(
                QStringLiteral("This File Is Corrupted or is not a Fixed Format HEC-1 Input File\r\n"
                               "Try [Use FREE Format] on File Menu!"));
        } else {
            m_services.dialogs.tell(QStringLiteral("Improper File Type or Bad Data"));
        }
        return false;
    }
    {
        const Deck::BulkWork work(m_deck);
        m_deck.setCards(deck.lines);
        m_deck.setcolaligns();
        m_deck.default_Row();
        m_deck.default_Col();
        m_deck.newlines();
    }
    if (!QDir::isRelativePath(fileName)) // a run file is nobody else's
        m_watch.remember(path, bytes);
    finishLoad(path, deck.lines);
    return true;
}

/// An empty deck of standard layout, the editor at rest on its first cell.
void FileCommands::clearGrid()
{
    const Deck::BulkWork work(m_deck);
    m_deck.Grid1.clear();
    m_deck.setEmptyLayout();
    m_deck.Grid1.setTopRow(1);
    m_deck.offeredFilePath.clear();
    if (EditBox* box = m_deck.editBox()) {
        box->setText(QString());
        box->setTint(EditBox::Tint::AtRest);
    }
}

void FileCommands::resetUndo()
{
    m_deck.undoCount = 1;
    for (const char* name : {"mnu_undo", "mnu_redo", "mnupopupundo", "mnu_popupredo"})
        m_commands.setEnabled(QString::fromLatin1(name), false);
    m_panels.set(2, QStringLiteral("Undo %1 ").arg(m_deck.undoCount));
}

void FileCommands::showName(const QString& name)
{
    m_panels.set(1, QStringLiteral(" %1 ").arg(name));
}

void FileCommands::forgetPath()
{
    m_deck.currentFileName.clear();
    m_deck.currentFilePath.clear();
    m_watch.forget();
    m_panels.set(1, QString());
}

/// What every load ends with, once the cards stand in the grid.
void FileCommands::loaded(const QString& name)
{
    m_commands.setEnabled(QStringLiteral("auditdata"), true);
    m_commands.setEnabled(QStringLiteral("runhec"), true);
    resetUndo();
    // The tick alone: recording stays as the user set it. New leaves both.
    m_commands.setChecked(QStringLiteral("mnu_undooff"), false);
    showName(name);
    m_deck.dataSaved = true;
    m_deck.setGridShown(true);
    Q_EMIT m_deck.replaced();
}

void FileCommands::finishLoad(const QString& path, const QStringList& lines)
{
    loaded(path);
    tellEffectOfSaving(lines);
    if (const QString news = freeFormatNews(m_deck); !news.isEmpty())
        m_services.dialogs.warn(news);
}

void FileCommands::tellEffectOfSaving(const QStringList& lines)
{
    const SaveEffect effect = effectOfSaving(lines, m_deck.Grid1);
    QStringList news;
    if (effect.changedLines > 0)
        news.append(linesText(effect.changedLines) + QStringLiteral(" will change when saved"));
    if (effect.droppedLines > 0)
        news.append(linesText(effect.droppedLines) + QStringLiteral(" behind ZZ will be dropped when saved"));
    if (!news.isEmpty())
        m_panels.set(7, news.join(QStringLiteral(", ")));
}

bool FileCommands::isTextFile(const QString& fileName) const
{
    const QFileInfo file(fileName);
    if (!file.isFile() || file.size() > kLargestDeck)
        return false;
    const auto bytes = readFile(fileName);
    return bytes && kalvo::isTextFile(*bytes);
}

/// Opens a deck that the user chose; nothing of the old deck goes before the new one stands in the grid.
bool FileCommands::openUserDeck(const QString& path)
{
    if (!opener(path))
        return false;
    m_deck.currentFilePath = path;
    m_commands.setEnabled(QStringLiteral("runhec"), true);
    for (const char* screen : {"frmMulti", "frmCompare", "frmRouting", "GRAPHER", "Iterater", "SVols", "IRep"})
        m_screens.unload(QString::fromLatin1(screen));
    m_deck.setEditorActive(true);
    return true;
}

void FileCommands::openhec()
{
    FileDialog dialog;
    dialog.title = QStringLiteral("OPEN HEC-1 DATA FILES");
    dialog.filter =
        QStringLiteral("All Files (*.*)|*.*|HEC-1 Input Files (*.dat;*.ih1)|*.dat;*.ih1|DAT Files(*.dat)|*.dat|"
                       "Text Files (*.txt)|*.txt");
    dialog.filterIndex = 2;
    const auto chosen = m_services.dialogs.openFile(dialog);
    if (!chosen || chosen->isEmpty())
        return;
    const QString path = absolute(*chosen);
    QByteArray bytes;
    if (!loadable(path, bytes))
        return;
    if (!kalvo::isTextFile(bytes)) {
        m_services.dialogs.message({QStringLiteral("This file is Incompatible with Kalvo!\r"), applicationTitle(),
                                    Icon::Critical, Buttons::OkCancel});
        return;
    }
    openUserDeck(path);
}

void FileCommands::opencommandline(const QString& argument)
{
    if (argument.isEmpty())
        return;
    const QString path = absolute(argument);
    const QFileInfo file(path);
    QStringList lines;
    std::optional<QByteArray> bytes;
    bool good = file.isFile() && file.size() <= kLargestDeck;
    if (good) {
        bytes = readFile(path);
        if (bytes)
            lines = linesOf(*bytes);
        good = bytes.has_value() && lines.size() <= kCommandLineLines;
    }
    m_commands.setEnabled(QStringLiteral("viewhec1"), false);
    m_commands.setEnabled(QStringLiteral("graphdata"), false);
    m_commands.setEnabled(QStringLiteral("auditdata"), true);
    clearGrid();
    Q_EMIT standardSizeWanted();
    if (!good) {
        forgetPath();
        m_services.dialogs.tell(QStringLiteral("Command Line File Error"));
        return;
    }
    m_deck.currentFilePath = path;
    m_deck.currentFileName = nameBehindFolder(path);
    {
        const Deck::BulkWork work(m_deck);
        m_deck.setCards(lines);
        m_deck.setcolaligns();
        m_deck.setrowheight();
        m_deck.newlines();
    }
    m_watch.remember(path, *bytes);
    finishLoad(path, lines);
}

void FileCommands::dropped(const QString& fileName)
{
    const QString path = absolute(fileName);
    QByteArray bytes;
    if (!loadable(path, bytes))
        return;
    if (!kalvo::isTextFile(bytes)) {
        m_services.dialogs.warn(QStringLiteral("The File %1 is Incompatible with HEC-1! ").arg(path));
        return;
    }
    openUserDeck(path);
}

void FileCommands::oldfile(int index)
{
    const QString path = RecentFiles::pathOf(m_recent->caption(index));
    if (path.isEmpty() || !QFileInfo(path).isFile()) {
        m_services.dialogs.tell(QStringLiteral("The File Name %1  does Not Exist!").arg(path));
        return;
    }
    openUserDeck(absolute(path));
}

void FileCommands::newhec1()
{
    if (isHecRunning())
        return;
    const MessageBox box{QStringLiteral("Warning! This will ERASE current Input Data"), applicationTitle(),
                         Icon::Warning, Buttons::OkCancel};
    const Button answer = m_services.dialogs.message(box);
    m_deck.dataSaved = true;
    if (answer != Button::Ok)
        return;
    for (const char* name : {"graph", "graphdata", "viewhec1", "runhec"})
        m_commands.setEnabled(QString::fromLatin1(name), false);
    clearGrid();
    forgetPath();
    resetUndo();
    for (const char* screen : {"frmMulti", "frmCompare", "frmRouting", "GRAPHER"})
        m_screens.unload(QString::fromLatin1(screen));
    m_deck.setGridShown(true);
    Q_EMIT m_deck.replaced();
    Q_EMIT standardSizeWanted();
}

// -- Saving ----------------------------------------------------------------------------------------------------------

bool FileCommands::savehec()
{
    FileDialog dialog;
    dialog.title = QStringLiteral("Save HEC-1 Input Data");
    dialog.filter = QStringLiteral("All Files (*.*)|*.*|DAT Files(*.dat)|*.dat|Text Files (*.txt)|*.txt");
    return saveAs(dialog);
}

bool FileCommands::saveashec1()
{
    FileDialog dialog;
    dialog.title = QStringLiteral("Save As HEC-1 Input Data");
    dialog.filter = QStringLiteral("Data Files(*.dat)|*.dat|Text Files (*.txt)|*.txt");
    if (!saveAs(dialog))
        return false;
    UPDATEOLDFILES(m_deck.currentFilePath);
    return true;
}

/// Asks for a name until it may be written or the user gives up.
std::optional<QString> FileCommands::nameToSave(const FileDialog& asked)
{
    FileDialog dialog = asked;
    dialog.initialName = m_deck.usersFilePath();
    dialog.defaultExtension = QStringLiteral("dat");
    dialog.overwritePrompt = true;
    for (;;) {
        const auto chosen = m_services.dialogs.saveFile(dialog);
        if (!chosen || chosen->isEmpty())
            return std::nullopt;
        const QString path = absolute(*chosen);
        switch (m_watch.mayWriteOver(path)) {
        case DiskWatch::Answer::Write:
            return path;
        case DiskWatch::Answer::Cancel:
            return std::nullopt;
        case DiskWatch::Answer::OtherName:
            break;
        }
    }
}

void FileCommands::lookAtFile()
{
    if (!m_isSaving)
        m_watch.look();
}

bool FileCommands::saveAs(const FileDialog& asked)
{
    if (!mayWriteFreeFormat(m_deck))
        return false;
    const auto path = nameToSave(asked);
    if (!path)
        return false;
    const QScopedValueRollback saving(m_isSaving, true);
    const QString before = m_panels.text(7);
    const SaveOutcome outcome = savefile(*path);
    const QString toldBySave = m_panels.text(7) == before ? QString() : m_panels.text(7);
    const bool isCutOff = outcome.status == SaveOutcome::Status::LongId;
    if (outcome.isSaved() || (isCutOff && *path == m_deck.currentFilePath))
        m_watch.remember(*path, outcome.bytes);
    if (!outcome.isSaved())
        return false;
    m_deck.currentFilePath = *path;
    m_deck.offeredFilePath.clear();
    showName(*path);
    m_copy.tick();
    tellAfterSave(outcome, toldBySave);
    return true;
}

/// What the next Open, or HEC-1, will stumble over; the file is saved all the same.
void FileCommands::tellAfterSave(const SaveOutcome& outcome, const QString& toldBySave)
{
    QStringList news;
    if (!outcome.overlongRows.isEmpty())
        news.append(QStringLiteral("Longer than %1 characters, so Open will ask for [Use FREE Format]: line(s) %2.")
                        .arg(kLongestLine)
                        .arg(lineNumbers(m_deck.Grid1, outcome.overlongRows)));
    if (!outcome.oddRows.isEmpty())
        news.append(QStringLiteral("With characters that Open refuses: line(s) %1.")
                        .arg(lineNumbers(m_deck.Grid1, outcome.oddRows)));
    if (!news.isEmpty())
        m_services.dialogs.warn(QStringLiteral("The deck is saved, but some of its lines need care.\r\n") +
                                news.join(QStringLiteral("\r\n")));
    if (!outcome.pushedRows.isEmpty()) {
        const QString pushed =
            QStringLiteral("Fields longer than their columns push the rest of their line: line(s) %1")
                .arg(lineNumbers(m_deck.Grid1, outcome.pushedRows));
        m_panels.set(7, toldBySave.isEmpty() ? pushed : pushed + QStringLiteral("; ") + toldBySave);
    }
}

// -- Recent files and the end ----------------------------------------------------------------------------------------

void FileCommands::clearrecentfiles()
{
    m_screens.show(QStringLiteral("OldFileManager"));
}

void FileCommands::saveoldfiles()
{
    QString why;
    if (!m_recent->saveoldfiles(&why))
        m_services.dialogs.warn(QStringLiteral("The list of recent files could not be written.\r\n%1").arg(why));
}

bool FileCommands::mayClose()
{
    if (isHecRunning())
        return false;
    m_deck.storeEditBox();
    if (!m_deck.dataSaved) {
        const MessageBox box{QStringLiteral("Save Data before Closing?"), QStringLiteral("Save Dialog"), Icon::Question,
                             Buttons::YesNoCancel};
        const Button answer = m_services.dialogs.message(box);
        if (answer == Button::Cancel)
            return false;
        if (answer == Button::Yes && !savehec())
            return false;
    }
    saveoldfiles();
    QString why;
    m_isKeptElsewhere = m_recovery.keepIfUnsaved(&why);
    if (!m_isKeptElsewhere)
        qCWarning(logFiles) << "no recovery copy of the unsaved deck:" << why;
    return true;
}

void FileCommands::ended()
{
    if (m_isKeptElsewhere)
        m_copy.drop();
    else
        m_copy.tick();
}

// -- After a crash ---------------------------------------------------------------------------------------------------

bool FileCommands::mayTake(const KeptDeck& deck) const
{
    if (!m_deck.dataSaved || !m_copy.path().isEmpty())
        return false;
    if (m_deck.currentFilePath.isEmpty())
        return !m_recovery.differsFromFile();
    return isSameFile(m_deck.currentFilePath, deck.path);
}

void FileCommands::takeLeftDeck(LeftDeck left)
{
    for (const char* name : {"viewhec1", "graphdata"})
        m_commands.setEnabled(QString::fromLatin1(name), false);
    clearGrid();
    forgetPath();
    {
        const Deck::BulkWork work(m_deck);
        m_deck.setCards(QStringList(left.deck.cards.size()));
        for (int row = 1; row <= left.deck.cards.size(); ++row)
            m_deck.Grid1.setRowTexts(row, deck_layout::kIdColumn, left.deck.cards[row - 1]);
        m_deck.setcolaligns();
        m_deck.default_Row();
        m_deck.default_Col();
        m_deck.newlines();
    }
    const QString& path = left.deck.path;
    m_deck.currentFileName = nameBehindFolder(path);
    loaded(QStringLiteral("%1 (recovered, not saved)").arg(path.isEmpty() ? QStringLiteral("New deck") : path));
    m_deck.dataSaved = false;
    m_deck.offeredFilePath = path;
    m_copy.adopt(std::move(left.file));
    m_panels.set(7, QStringLiteral("This is the deck as it was kept; it is in no file until you save it"));
}

} // namespace kalvo
