// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ReportViewer.h"

#include "platform/Hourglass.h"

#include <QEvent>

namespace kalvo {

ReportViewer::ReportViewer(const char* name, const QString& caption, const ViewerSurroundings& around)
    : ViewerWindow(name, caption, around, OnClose::Keep), m_report(around.services)
{
}

void ReportViewer::showScreen()
{
    bringForward(reportControl());
    readReport();
}

void ReportViewer::repaintScreen()
{
    m_report.forget();
    if (isVisible())
        readReport();
}

void ReportViewer::reload()
{
    m_report.forget();
    readReport();
}

void ReportViewer::readReport()
{
    run("report", [this] {
        if (m_report.isStale()) {
            const Hourglass hourglass;
            loadReport();
        }
        showLines();
    });
}

bool ReportViewer::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate)
        readReport();
    return QMainWindow::event(event);
}

} // namespace kalvo
