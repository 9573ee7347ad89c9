// SPDX-License-Identifier: GPL-3.0-or-later
// Choosing a text file beside the deck: what the import viewer and the free format editor share.
#pragma once

#include "platform/Services.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace kalvo {

inline constexpr auto kTextFileFilter = "All Files (*.*)|*.*|DAT Files(*.dat)|*.dat|Text Files (*.txt)|*.txt";

struct ChosenFile
{
    QString path; ///< absolute
    QByteArray bytes;
};

/// Asks for a file and reads it. None when the dialog was cancelled, and after a file that cannot be read or is no text
/// (see isTextFile), of which the user has been told.
std::optional<ChosenFile> chooseTextFile(Services& services, const QString& title);

/// Writes a file the user owns and tells him when that fails; what was there before is kept as NAME.bak.
/// @param stillWhere where the text still is, for the message ("in the editor").
bool writeChosenFile(Services& services, const QString& path, const QByteArray& bytes, const QString& stillWhere);

/// A text as bytes, lines ended by CR LF. A character that no byte holds becomes "?" and is counted in `lost`.
QByteArray textFileBytes(const QString& text, int* lost);

} // namespace kalvo
