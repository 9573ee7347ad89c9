// SPDX-License-Identifier: GPL-3.0-or-later
// HEC-1's error lines and the texts that the program keeps for their numbers (HECErrorDEscriptions.txt).
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace kalvo {

/// Texts of HEC-1's error numbers, out of records of three list items: number, title, description. A last record that
/// is short adds nothing.
class HecErrorTexts
{
public:
    HecErrorTexts() = default;
    explicit HecErrorTexts(const QByteArray& file);
    /// `HecErrorText`: title, CR LF, description of the last record with that number, compared as text ("03" is not
    /// "3"); empty for a number that is not listed.
    QString text(const QString& number) const { return m_texts.value(number); }

private:
    QHash<QString, QString> m_texts;
};

/// `findHecError`: for each error line of a report CR LF and the text of its number. Collecting ends once there is more
/// than any box would show.
QString findHecErrors(const QString& reportPath, const HecErrorTexts& texts);
/// From so many characters on the errors are only said to be numerous.
inline constexpr int kNumerousErrorsLength = 2001;
/// Number of the error that a report line tells, by its place in the line; none for any other line.
std::optional<QString> hecErrorNumber(const QString& line);

} // namespace kalvo
