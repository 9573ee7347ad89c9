// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Form2_Audit.h"

#include "deck/ScreenWindow.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kFromEdge = 48; ///< pixels; the status bar stays in view

} // namespace

Form2::Form2(AuditCommands& audit, const EditContext& context, QString name, QWidget* window)
    : m_audit(audit), m_context(context), m_name(std::move(name)), m_window(window)
{
    setObjectName(QStringLiteral("Form2"));
    setWindowTitle(QStringLiteral(" Audit HEC-1 Input DATA"));
    buildControls();
    resize(640, 300);
    repaintScreen();
}

void Form2::registerIn(AuditCommands& audit, const EditContext& context, QWidget* window)
{
    const QString name = context.screenName("Form2");
    context.screens.add(
        name, [&audit, context, name, window] { return std::make_unique<Form2>(audit, context, name, window); });
}

void Form2::buildControls()
{
    List1 = new QListWidget(this);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setUniformItemSizes(true); // a bad deck has a line for each of its cells
    List1->setAlternatingRowColors(true);
    List1->setSpacing(2);
    List1->installEventFilter(this);
    connect(List1, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { m_audit.showFinding(List1->row(item)); });
    connect(List1, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem* item) { goToDeck(List1->row(item)); });

    m_hint = new QLabel(this);
    m_hint->setObjectName(QStringLiteral("Label1"));
    m_hint->setWordWrap(true);
    Command1 = namedButton("Command1", QStringLiteral("&Close"), this);
    connect(Command1, &QPushButton::clicked, this, &Form2::reject);

    auto* foot = new QHBoxLayout;
    foot->addWidget(m_hint, 1);
    foot->addWidget(Command1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 20, 20, 16);
    column->setSpacing(10);
    column->addWidget(List1, 1);
    column->addLayout(foot);
}

void Form2::repaintScreen()
{
    QStringList lines;
    bool anyRow = false;
    for (const AuditFinding& finding : m_audit.result().findings) {
        lines << finding.text;
        anyRow = anyRow || finding.row > 0;
    }
    List1->clear();
    List1->addItems(lines);
    m_hint->setText(anyRow ? QStringLiteral("A click shows the card of a line; Enter or a double click goes there.")
                           : QString());
}

/// Low on the right of the main screen: cards and their numbers stay in view beside it.
void Form2::placeBesideDeck()
{
    const QRect main = m_window->frameGeometry();
    move(main.right() - frameGeometry().width() - kFromEdge, main.bottom() - frameGeometry().height() - kFromEdge);
}

void Form2::showScreen()
{
    const bool first = !isVisible();
    showAbove(*this, m_window);
    if (first && m_window)
        placeBesideDeck();
    if (List1->currentRow() < 0 && List1->count() > 0)
        List1->setCurrentRow(0);
    List1->setFocus();
}

bool Form2::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == List1 && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Space) {
            m_audit.showFinding(List1->currentRow());
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            goToDeck(List1->currentRow());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

/// The list stays open; the keyboard goes to the deck.
void Form2::goToDeck(int index)
{
    m_audit.showFinding(index);
    if (!m_window)
        return;
    m_window->raise();
    m_window->activateWindow();
}

void Form2::reject()
{
    m_context.screens.unload(m_name);
}

} // namespace kalvo
