// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/RoutingScreens.h"

#include <QMainWindow>

class QListView;
class QModelIndex;
class QStringListModel;

namespace kalvo {

class LargeTextView;

/// "Detailed Reservoir Routings": the file of stages and storages that HEC-1 writes for pools with an ST card, and a
/// list of its stations and ratios to jump to. Closing forgets both.
class DetRes : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    explicit DetRes(RoutingSurroundings around, QWidget* parent = nullptr);

    /// Reads the file, shows it, and tells when it is empty.
    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    /// Reads again; what is missing is said on the screen alone.
    void repaintScreen() override;

    /// Scrolls `rb` so that a line, from 0, stands at the top.
    void SetTopLine(qsizetype line);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildControls();
    void buildMenus();
    /// Gives the list the width of its entries.
    void fitList();
    void jump(const QModelIndex& entry);
    void copySelection(bool asData);
    void find(bool again);

    const RoutingSurroundings m_around;
    QString m_why; ///< why the file cannot be read
    QString m_sought;
    LargeTextView* rb = nullptr;
    QListView* List1 = nullptr;
    QStringListModel* m_entries = nullptr;
};

} // namespace kalvo
