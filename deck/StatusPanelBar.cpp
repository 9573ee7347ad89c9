// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/StatusPanelBar.h"

#include "deck/StatusPanelLabel.h"
#include "platform/text.h"

#include <QProgressBar>
#include <QToolButton>

#include <algorithm>

namespace kalvo {

namespace {

/// How the bar's width is shared: a panel is at least as wide as its sample, and takes of what is left by its weight.
struct PanelShape
{
    const char* sample;
    int stretch;
};
constexpr PanelShape kShapes[StatusPanels::kPanels] = {
    {"mmmmm.dat", 2},
    {"Undo 1000", 0},
    {"WW Card", 0},
    {"Row 0000", 0},
    {"Field 10", 0},
    {"WWWWW", 0},
    {"Help and System Information.", 9},
};

/// Panel 2 tells levels of undo as a picture.
bool isUndoText(const QString& text)
{
    return text.startsWith(QLatin1String("Undo "));
}

} // namespace

StatusPanelBar::StatusPanelBar(StatusPanels& panels, QWidget* parent) : QStatusBar(parent), m_panels(panels)
{
    setObjectName(QStringLiteral("StatusBar1"));
    setSizeGripEnabled(false);
    setContentsMargins(4, 0, 4, 0);
    buildPanels();
    buildRunControls();
    connect(&panels, &StatusPanels::panelChanged, this, &StatusPanelBar::showPanel);
    connect(&panels, &StatusPanels::lookChanged, this, &StatusPanelBar::showPanel);
    for (int panel = 1; panel <= StatusPanels::kPanels; ++panel)
        showPanel(panel);
}

void StatusPanelBar::buildPanels()
{
    for (int panel = 1; panel <= StatusPanels::kPanels; ++panel) {
        const PanelShape& shape = kShapes[panel - 1];
        auto* label = new StatusPanelLabel(this);
        label->setObjectName(QStringLiteral("panel%1").arg(panel));
        label->setSample(QString::fromLatin1(shape.sample));
        label->setLineAhead(panel > 1);
        label->setTip([this, panel] { return tip(panel); });
        connect(label, &StatusPanelLabel::clicked, this, [this, panel] { Q_EMIT panelClicked(panel); });
        m_labels.at(static_cast<size_t>(panel - 1)) = label;
        addWidget(label, shape.stretch);
    }
    m_labels[1]->setGrowsWithText(true); // the message about the system, at start
    m_labels.front()->setElideMode(Qt::ElideMiddle);
    m_labels.back()->setCursor(Qt::PointingHandCursor);
}

void StatusPanelBar::buildRunControls()
{
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("pb"));
    m_progress->setRange(0, 100);
    m_progress->setMaximumSize(140, fontMetrics().height());
    m_progress->setTextVisible(false);
    m_progress->hide();
    addPermanentWidget(m_progress);

    m_cancel = new QToolButton(this);
    m_cancel->setObjectName(QStringLiteral("Cancel"));
    m_cancel->setText(tr("Cancel"));
    m_cancel->setToolTip(tr("Stop HEC-1 (Esc)"));
    m_cancel->setFocusPolicy(Qt::NoFocus);
    m_cancel->hide();
    addPermanentWidget(m_cancel);
    connect(m_cancel, &QToolButton::clicked, this, &StatusPanelBar::cancelClicked);

    connect(&m_panels, &StatusPanels::progressChanged, this, [this](int percent) {
        m_progress->setVisible(percent >= 0);
        m_progress->setValue(std::max(percent, 0));
    });
    connect(&m_panels, &StatusPanels::waitingChanged, m_cancel, &QWidget::setVisible);
}

void StatusPanelBar::PanelSetText(int panel, const QString& text, const QColor& back, const QColor& fore)
{
    m_labels.at(static_cast<size_t>(panel - 1))->setPicture(text, back, fore);
}

QString StatusPanelBar::shownText(int panel) const
{
    return m_labels.at(static_cast<size_t>(panel - 1))->text();
}

QString StatusPanelBar::tip(int panel) const
{
    QStringList said = {Trim(m_panels.text(panel)), m_panels.toolTip(panel)};
    if (panel == StatusPanels::kPanels && m_engineText)
        said << m_engineText();
    said.removeAll(QString());
    return said.join(QStringLiteral("\n\n"));
}

void StatusPanelBar::showPanel(int panel)
{
    const QString text = m_panels.text(panel);
    const PanelLook& look = m_panels.look(panel);
    StatusPanelLabel& label = *m_labels.at(static_cast<size_t>(panel - 1));
    label.setLook(look);
    if (panel == 2 && isUndoText(text)) {
        PanelSetText(panel, text, palette().color(QPalette::Button),
                     look.foreColor == Rgb::None ? palette().color(QPalette::ButtonText)
                                                 : QColor(static_cast<QRgb>(look.foreColor)));
        return;
    }
    label.setPlainText(text);
}

} // namespace kalvo
