// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Audit.h"
#include "deck/EditContext.h"

#include <QObject>

namespace kalvo {

/// "Audit Data" of one page: adds `auditdata` to the commands. The deck is cut behind its ZZ card first; nothing else
/// of it changes, and no undo level is recorded. The findings stay until the next audit and do not follow edits.
class AuditCommands : public QObject
{
    Q_OBJECT

public:
    explicit AuditCommands(const EditContext& context);

    void auditdata();
    /// The last audit, also one that ended early.
    const AuditResult& result() const { return m_result; }
    /// Puts the cursor on the cell that a line of the list is about. Nothing for a line about the whole deck.
    /// @param index of the finding, from 0; one that is not there is ignored.
    void showFinding(int index);

    int numKKCards = 0; ///< rows with a KK card at the last complete audit

private:
    void runAudit();
    void resetCursor();

    EditContext m_context;
    AuditResult m_result;
};

} // namespace kalvo
