// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Form1_MainScreen.h"
#include "deck/StatusPanelBar.h"
#include "platform/FlexGridView.h"
#include "platform/MemoryInfo.h"

#include <QAction>
#include <QToolTip>

namespace kalvo {

namespace {
constexpr int kReadingMs = 30'000;
} // namespace

void Form1::buildStatusBar()
{
    m_statusBar = new StatusPanelBar(m_page.panels, this);
    setStatusBar(m_statusBar);
    m_statusBar->setEngineText([this] { return m_page.engineText ? m_page.engineText() : QString(); });
    connect(m_statusBar, &StatusPanelBar::panelClicked, this, [this](int panel) {
        if (panel == StatusPanels::kPanels)
            showMemory();
    });

    // Only while HEC-1 runs: at any other time the key belongs to whoever has the focus.
    m_stopRun = new QAction(this);
    m_stopRun->setShortcut(Qt::Key_Escape);
    m_stopRun->setShortcutContext(Qt::ApplicationShortcut);
    m_stopRun->setEnabled(false);
    addAction(m_stopRun);
    const auto stop = [this] { m_page.services.process.stop(); };
    connect(m_stopRun, &QAction::triggered, this, stop);
    connect(m_statusBar, &StatusPanelBar::cancelClicked, this, stop);
    connect(&m_page.panels, &StatusPanels::waitingChanged, this, &Form1::showWaiting);
}

/// The keyboard's way to what the pointer reads by resting on the help panel.
void Form1::showStatusText()
{
    const QRect bar = m_statusBar->rect();
    QToolTip::showText(m_statusBar->mapToGlobal(bar.topLeft()), m_statusBar->tip(StatusPanels::kPanels), m_statusBar,
                       bar, kReadingMs);
}

void Form1::showMemory()
{
    const MemoryInfo memory = memoryInfo();
    constexpr quint64 kMegabyte = quint64{1024} * 1024;
    m_page.panels.set(StatusPanels::kPanels, QStringLiteral("Memory in Use: %1 MB  Total RAM: %2 MB")
                                                 .arg(memory.loadPercent)
                                                 .arg(memory.totalBytes / kMegabyte));
}

void Form1::showWaiting(bool on)
{
    if (on)
        Grid1->setCursor(Qt::WaitCursor);
    else
        Grid1->unsetCursor();
    m_stopRun->setEnabled(on);
}

} // namespace kalvo
