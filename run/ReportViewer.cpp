// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ReportViewer.h"

#include "platform/Hourglass.h"
#include "platform/LargeTextView.h"

#include <QEvent>
#include <QPushButton>

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

QFont ReportViewer::reportFont(bool isZoomedIn)
{
    return fixedPitchFont(isZoomedIn ? 11.0 : 8.25);
}

QPushButton* ReportViewer::hiddenButton(const char* name, std::function<void()> body)
{
    auto* button = new QPushButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->hide();
    connect(button, &QPushButton::clicked, this, std::move(body));
    return button;
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
