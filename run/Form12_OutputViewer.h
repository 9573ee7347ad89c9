// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/OutputShrink.h"
#include "run/ReportText.h"
#include "run/ViewerScreens.h"

#include <QMainWindow>

#include <array>
#include <optional>

class QMenu;
class QPushButton;

namespace kalvo {

class LargeTextView;
class OutlineDock;
class StatusPanelLabel;
class TextFindBar;

/// "HEC-1 Output -  Large File Viewer": the printed report of the last run, `checky.out`, to read, find in, shrink and
/// save. Reads the report again whenever it comes to the front and another run's report lies there.
class Form12 : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    explicit Form12(const ViewerSurroundings& around, QWidget* parent = nullptr);
    ~Form12() override;

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    /// A run is over: the report is read again, now or when the screen is next shown, whatever its stamp says.
    void repaintScreen() override;

    /// Takes out one line of the report, counted from 0; a line that is not there changes nothing.
    void deleteOutputLine(qsizetype line);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    static constexpr int kPanels = 4;

    void buildText();
    void buildFileMenu();
    void buildEditMenu();
    void buildPopup();
    void buildStatusBar();
    QPushButton* hiddenButton(const char* name, void (Form12::*body)());

    void readReport();
    void reload();
    void textChanged();
    void showLines();
    void showPanels(const QObject* under);

    void mnu_shrinkoutput();
    void mnu_SelectAll();
    void mnu_Copy();
    void mnu_Save();
    void zoom(bool in);
    void goTop();
    void goBottom();
    void goBack();
    void goToLine(qsizetype line);

    ViewerSurroundings m_around;
    ReportText m_report;
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
