// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/EditContext.h"

#include <QString>

namespace kalvo {

/// Find and Replace over the selected cards, behind the screen `FR`. Adds `FR_ReplaceAll`, so that a replacement passes
/// the same gate as any other command.
class FindReplace
{
public:
    explicit FindReplace(const EditContext& context);
    FindReplace(const FindReplace&) = delete;
    FindReplace& operator=(const FindReplace&) = delete;

    /// Another text to find empties the replacement, which was meant for the former one.
    void setFind(const QString& text);
    void setReplacement(const QString& text) { m_replacement = text; }
    const QString& find() const { return m_find; }
    const QString& replacement() const { return m_replacement; }
    void reset();

    /// Replaces every occurrence in the selection, exact case, and records one level. Cells are searched one by one;
    /// only a find text or replacement with a TAB or line end works on the selection as one text, in which such
    /// characters part the cells, and that is asked about first. Panel 7 tells the number of places. Costs one look at
    /// each cell.
    void replaceAll();

private:
    bool crossesCells() const;
    bool mayCrossCells() const;
    qint64 replaceInCells(const FlexGrid::Area& area);
    qint64 replaceInClip(const FlexGrid::Area& area);

    EditContext m_context;
    QString m_find;
    QString m_replacement;
};

} // namespace kalvo
