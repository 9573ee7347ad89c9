// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

namespace kalvo {

/// The dialogs of the desktop, over the active window of the program or, when none is active, over `parent`.
class QtDialogs : public Dialogs
{
public:
    explicit QtDialogs(QWidget* parent = nullptr) : m_parent(parent) {}
    void setParentWidget(QWidget* parent) { m_parent = parent; }

    Button message(const MessageBox& box) override;
    std::optional<QString> input(const QString& prompt, const QString& title, const QString& preset) override;
    std::optional<QString> openFile(const FileDialog& dialog) override;
    std::optional<QString> saveFile(const FileDialog& dialog) override;
    std::optional<Rgb> color(Rgb preset) override;
    std::optional<CellFormat> font(const CellFormat& preset) override;

private:
    QWidget* parentNow() const;
    std::optional<QString> askForFile(const FileDialog& dialog, bool save);

    QPointer<QWidget> m_parent;
};

/// The filters of a FileDialog ("Decks (*.dat)|*.dat;*.ih1|All files|*.*") as Qt wants them ("Decks (*.dat *.ih1)",
/// "All files (*)"). A caption without patterns behind it is dropped.
QStringList qtNameFilters(const QString& filter);

} // namespace kalvo
