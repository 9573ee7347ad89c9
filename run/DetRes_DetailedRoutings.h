// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/RoutingWindow.h"

class QListView;
class QModelIndex;
class QStringListModel;

namespace kalvo {

class LargeTextView;

/// "Detailed Reservoir Routings": the file of stages and storages that HEC-1 writes for pools with an ST card, and a
/// list of its stations and ratios to jump to. Closing forgets both.
class DetRes : public RoutingWindow
{
    Q_OBJECT

public:
    explicit DetRes(ViewerSurroundings around);

    /// Reads the file, shows it, and tells when it is empty.
    void showScreen() override;
    /// Reads again; what is missing is said on the screen alone.
    void repaintScreen() override;

    /// Scrolls `rb` so that a line, from 0, stands at the top.
    void SetTopLine(qsizetype line);

private:
    void buildControls();
    void buildMenus();
    /// Gives the list the width of its entries.
    void fitList();
    void jump(const QModelIndex& entry);
    void copySelection(bool asData);
    void find(bool again);

    QString m_why; ///< why the file cannot be read
    LargeTextView* rb = nullptr;
    QListView* List1 = nullptr;
    QStringListModel* m_entries = nullptr;
};

} // namespace kalvo
