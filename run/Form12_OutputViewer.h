// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/OutputShrink.h"
#include "run/ReportViewer.h"

#include <array>
#include <optional>

class QMenu;

namespace kalvo {

class LargeTextView;
class OutlineDock;
class StatusPanelLabel;
class TextFindBar;

/// "HEC-1 Output -  Large File Viewer": the printed report of the last run, `checky.out`, to read, find in, shrink and
/// save.
class Form12 : public ReportViewer
{
    Q_OBJECT

public:
    explicit Form12(const ViewerSurroundings& around);
    ~Form12() override;

    /// Takes out one line of the report, counted from 0; a line that is not there changes nothing.
    void deleteOutputLine(qsizetype line);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static constexpr int kPanels = 4;

    void buildText();
    void buildFileMenu();
    void buildEditMenu();
    void buildPopup();
    void buildStatusBar();

    QWidget& reportControl() override;
    void loadReport() override;
    void showLines() override;
    void textChanged();
    void showPanels(const QObject* under);

    void mnu_shrinkoutput();
    void mnu_SelectAll();
    void mnu_Copy();
    void mnu_Save();
    void zoom(bool in);
    void goTop();
    void goBottom();
    void goToLine(qsizetype line);

    std::optional<ShrinkResult> m_shrunk;
    LargeTextView* rb1 = nullptr;
    TextFindBar* m_findBar = nullptr;
    OutlineDock* m_outline = nullptr;
    QMenu* m_popup = nullptr;
    QAction* m_zoomIn = nullptr;
    QAction* m_zoomOut = nullptr;
    std::array<StatusPanelLabel*, kPanels> m_panels{};
};

} // namespace kalvo
