// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ChartSeries.h"
#include "platform/Services.h"

#include <QMainWindow>

class QFrame;
class QMenu;

namespace kalvo {

class Chart;

/// " Quick HydroGrapher for Kalvo": a chart of the block of cells that is selected in a table of hydrographs. It keeps
/// the values it was given: a later run or selection changes nothing here. Closing the window deletes it.
class HydroGrapher : public QMainWindow
{
    Q_OBJECT

public:
    explicit HydroGrapher(Services& services, QWidget* parent = nullptr);

    /// Draws the selection of `table`, whose flows are in `flowUnit`; tells the user when that is a single cell, and
    /// stays empty then.
    void drawSelection(const FlexGrid& table, const QString& flowUnit);

    void mnu_EditTitle();
    /// Both switch the selected curve off; it can be brought back.
    void mnu_DeleteSelectedHydrograph() { excludeSelected(); }
    void mnu_Exclude() { excludeSelected(); }
    void mnu_ToggleLegend();
    void mnu_Copypicture();
    void mnu_copyMetaFile();
    void mnu_export();
    void mnu_exportAs();
    void mnu_options();
    /// Rain of the selected curve's station out of the last report, above the flow; the second time away again.
    void mnu_rain();
    void mnu_help();
    void mnu_quit();

private:
    void buildMenus();
    void addEntry(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key,
                  void (HydroGrapher::*body)());
    void buildChart();
    void excludeSelected();
    void fillBringBack();
    void copyPicture(double scale);
    void savePicture(const QString& path);
    void showTip(int series, int index);
    /// The curve that a command without a selection of its own means; -1 for none.
    int seriesMeant() const;

    Services& m_services;
    Chart* MSChart1 = nullptr;
    QFrame* Picture1 = nullptr;
    QMenu* m_bringBack = nullptr;
};

} // namespace kalvo
