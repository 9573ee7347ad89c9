// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/EditContext.h"

#include <QString>

namespace kalvo {

/// The search behind the screen `frmGOTO`: from a start cell on through the deck, case ignored. Where it goes on stands
/// in the two number fields, so that the user sees and may change it. Adds `frmGOTO_Find`.
class GoTo
{
public:
    explicit GoTo(const EditContext& context);
    GoTo(const GoTo&) = delete;
    GoTo& operator=(const GoTo&) = delete;

    /// Another text is searched from the cursor's cell on, that cell included.
    void setText(const QString& text);
    /// As typed; what is not a number of at least 1 counts as 1.
    void setStart(const QString& row, const QString& column);
    const QString& text() const { return m_text; }
    const QString& startRow() const { return m_startRow; }
    const QString& startColumn() const { return m_startColumn; }
    void reset();

    /// Puts the cursor on the first cell from the start on that holds the text and the start behind that cell. Without
    /// a hit the start is row 1, column 1 again: the search never begins anew by itself.
    /// @return true on a hit; false also for an empty text, which changes nothing.
    bool search();

private:
    bool goTo(int row, int column);

    EditContext m_context;
    QString m_text;
    QString m_startRow = QStringLiteral("1");
    QString m_startColumn = QStringLiteral("1");
};

} // namespace kalvo
