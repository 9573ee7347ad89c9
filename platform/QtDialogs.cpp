// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/QtDialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace kalvo {

namespace {

QMessageBox::Icon qtIcon(Icon icon)
{
    switch (icon) {
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Warning:
        return QMessageBox::Warning;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton qtButton(Button button)
{
    switch (button) {
    case Button::Cancel:
        return QMessageBox::Cancel;
    case Button::Yes:
        return QMessageBox::Yes;
    case Button::No:
        return QMessageBox::No;
    case Button::Ok:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButtons qtButtons(Buttons buttons)
{
    switch (buttons) {
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

Button buttonOf(int result, Buttons buttons)
{
    switch (result) {
    case QMessageBox::Ok:
        return Button::Ok;
    case QMessageBox::Yes:
        return Button::Yes;
    case QMessageBox::No:
        return Button::No;
    default:
        break;
    }
    // The box was closed without a button: the answer that changes nothing.
    return buttons == Buttons::Ok ? Button::Ok : buttons == Buttons::YesNo ? Button::No : Button::Cancel;
}

} // namespace

QStringList qtNameFilters(const QString& filter)
{
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns;
        for (const QString& pattern : parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            // "*.*" means every file here; taken by its letters it would hide those without an extension.
            const QString trimmed = pattern.trimmed();
            patterns << (trimmed == QLatin1String("*.*") ? QStringLiteral("*") : trimmed);
        }
        QString caption = parts[i].trimmed();
        // Qt reads its patterns from the last parentheses, so those of the caption give way.
        if (caption.endsWith(QLatin1Char(')')) && caption.contains(QLatin1Char('(')))
            caption = caption.left(caption.lastIndexOf(QLatin1Char('('))).trimmed();
        if (!patterns.isEmpty())
            filters << QStringLiteral("%1 (%2)").arg(caption, patterns.join(QLatin1Char(' ')));
    }
    return filters;
}

QWidget* QtDialogs::parentNow() const
{
    QWidget* active = QApplication::activeWindow();
    return active ? active : m_parent.data();
}

Button QtDialogs::message(const MessageBox& box)
{
    QMessageBox dialog(parentNow());
    dialog.setWindowTitle(box.title);
    dialog.setTextFormat(Qt::PlainText);
    dialog.setText(box.text);
    dialog.setIcon(qtIcon(box.icon));
    dialog.setStandardButtons(qtButtons(box.buttons));
    if (box.defaultButton)
        dialog.setDefaultButton(qtButton(*box.defaultButton));
    return buttonOf(dialog.exec(), box.buttons);
}

std::optional<QString> QtDialogs::input(const QString& prompt, const QString& title, const QString& preset)
{
    bool ok = false;
    const QString text = QInputDialog::getText(parentNow(), title, prompt, QLineEdit::Normal, preset, &ok);
    return ok ? std::optional(text) : std::nullopt;
}

std::optional<QString> QtDialogs::askForFile(const FileDialog& ask, bool save)
{
    QFileDialog dialog(parentNow(), ask.title);
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(ask.fileMustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !ask.overwritePrompt);
    dialog.setDefaultSuffix(ask.defaultExtension);
    const QStringList filters = qtNameFilters(ask.filter);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        dialog.selectNameFilter(filters.value(ask.filterIndex - 1, filters.front()));
    }
    if (!ask.initialName.isEmpty()) {
        const QFileInfo initial(ask.initialName);
        if (initial.isAbsolute())
            dialog.setDirectory(initial.isDir() ? initial.filePath() : initial.path());
        if (!initial.isDir())
            dialog.selectFile(initial.fileName());
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return QFileInfo(dialog.selectedFiles().front()).absoluteFilePath();
}

std::optional<QString> QtDialogs::openFile(const FileDialog& dialog)
{
    return askForFile(dialog, false);
}

std::optional<QString> QtDialogs::saveFile(const FileDialog& dialog)
{
    return askForFile(dialog, true);
}

std::optional<Rgb> QtDialogs::color(Rgb preset)
{
    const QColor start = preset == Rgb::None ? QColor(Qt::white) : QColor(static_cast<QRgb>(preset));
    const QColor chosen = QColorDialog::getColor(start, parentNow());
    if (!chosen.isValid())
        return std::nullopt;
    return rgb(chosen.red(), chosen.green(), chosen.blue());
}

std::optional<CellFormat> QtDialogs::font(const CellFormat& preset)
{
    QFont start = QApplication::font();
    if (!preset.fontName.isEmpty())
        start.setFamily(preset.fontName);
    if (preset.fontSize > 0.0)
        start.setPointSizeF(preset.fontSize);
    start.setBold(preset.bold);
    start.setItalic(preset.italic);
    start.setUnderline(preset.underline);
    start.setStrikeOut(preset.strikeThrough);
    bool ok = false;
    const QFont chosen = QFontDialog::getFont(&ok, start, parentNow());
    if (!ok)
        return std::nullopt;
    CellFormat format = preset;
    format.fontName = chosen.family();
    format.fontSize = chosen.pointSizeF();
    format.bold = chosen.bold();
    format.italic = chosen.italic();
    format.underline = chosen.underline();
    format.strikeThrough = chosen.strikeOut();
    return format;
}

} // namespace kalvo
