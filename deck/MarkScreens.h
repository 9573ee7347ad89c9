// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

#include <QObject>
#include <QPoint>

namespace kalvo {

class Form1;
class Workspace;

/// What audit, comment entry, marks and colours need of the main screen that shows their deck: their own screens, the
/// focus on the grid when the audit's list goes, and the colours of the window itself.
class MarkScreens : public QObject
{
    Q_OBJECT

public:
    /// Belongs to `form`, which must have its grid and its editor.
    explicit MarkScreens(Form1& form);
    ~MarkScreens() override;

private:
    void registerScreens();
    void followAudit();
    void followLooks();
    void paintForm(Rgb back, Rgb fore);
    QPoint currentCell() const;

    Form1& m_form;
    Workspace& m_page; ///< outlives the form; the form is half gone when its children go
};

} // namespace kalvo
