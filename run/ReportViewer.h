// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/ReportText.h"
#include "run/ViewerWindow.h"

class QPushButton;

namespace kalvo {

/// A viewer of the printed report of the last run, `checky.out`. It reads the report again whenever it comes to the
/// front and another run's report lies there.
class ReportViewer : public ViewerWindow
{
    Q_OBJECT

public:
    void showScreen() override;
    /// A run is over: the report is read again, now or when the screen is next shown, whatever its stamp says.
    void repaintScreen() override;

protected:
    ReportViewer(const char* name, const QString& caption, const ViewerSurroundings& around);

    /// The control that shows the report.
    virtual QWidget& reportControl() = 0;
    /// Another report lies there: `report().take()` has it.
    virtual void loadReport() = 0;
    /// The window has come to the front, with the report read that now lies there.
    virtual void showLines() = 0;

    /// The font that the lines stand in.
    static QFont reportFont(bool isZoomedIn);
    /// A button that nobody sees, known by its name, for what panels and others do.
    QPushButton* hiddenButton(const char* name, std::function<void()> body);

    ReportText& report() { return m_report; }
    void readReport();
    /// Reads the report again also when it is the one that is shown.
    void reload();
    bool event(QEvent* event) override;

private:
    ReportText m_report;
};

} // namespace kalvo
