// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/FloatingLabels.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kKeyStep = 5; ///< pixels
const QString kHowToEnd = QStringLiteral("Dbl Click to Close");

} // namespace

FloatingMover::FloatingMover(QWidget& moved, Qt::KeyboardModifiers keys) : m_moved(moved), m_keys(keys)
{
    moved.installEventFilter(this);
}

void FloatingMover::moveTo(const QPoint& topLeft)
{
    const QWidget* paper = m_moved.parentWidget();
    m_moved.move(std::clamp(topLeft.x(), 0, std::max(0, paper->width() - m_moved.width())),
                 std::clamp(topLeft.y(), 0, std::max(0, paper->height() - m_moved.height())));
}

bool FloatingMover::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::KeyPress)
        return takeKey(*static_cast<QKeyEvent*>(event));
    const auto mouse = [event]() -> const QMouseEvent& { return *static_cast<QMouseEvent*>(event); };
    switch (event->type()) {
    case QEvent::MouseButtonDblClick:
        m_isDown = false;
        Q_EMIT stuck();
        return true;
    case QEvent::MouseButtonPress:
        m_isDown = mouse().button() == Qt::LeftButton;
        m_isMoving = false;
        m_pressedAt = mouse().position().toPoint();
        return false;
    case QEvent::MouseMove: {
        const QPoint way = mouse().position().toPoint() - m_pressedAt;
        m_isMoving = m_isDown && (m_isMoving || way.manhattanLength() >= QApplication::startDragDistance());
        if (m_isMoving)
            moveTo(m_moved.pos() + way);
        return m_isMoving;
    }
    case QEvent::MouseButtonRelease:
        m_isDown = m_isMoving = false;
        return false;
    default:
        return false;
    }
}

bool FloatingMover::takeKey(const QKeyEvent& key)
{
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        Q_EMIT stuck();
        return true;
    }
    if (key.key() == Qt::Key_Escape) {
        Q_EMIT dropped();
        return true;
    }
    if ((key.modifiers() & ~Qt::KeypadModifier) != m_keys)
        return false;
    const int right = (key.key() == Qt::Key_Right ? 1 : 0) - (key.key() == Qt::Key_Left ? 1 : 0);
    const int down = (key.key() == Qt::Key_Down ? 1 : 0) - (key.key() == Qt::Key_Up ? 1 : 0);
    if (right == 0 && down == 0)
        return false;
    moveTo(m_moved.pos() + kKeyStep * QPoint(right, down));
    return true;
}

FloatingRow::FloatingRow(const QString& text, const QColor& own, QWidget* parent)
    : QLabel(text, parent), mover(*this, Qt::NoModifier), color(own)
{
    setTextFormat(Qt::PlainText);
    setObjectName(QStringLiteral("FloatingRow"));
    setToolTip(QStringLiteral("Dbl Clk to Stick"));
    setCursor(Qt::SizeAllCursor);
    setFocusPolicy(Qt::StrongFocus);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setAutoFillBackground(true);
    QPalette colors = palette();
    colors.setColor(QPalette::Window, Qt::white);
    colors.setColor(QPalette::WindowText, own);
    setPalette(colors);
    adjustSize();
}

void FloatingRow::mousePressEvent(QMouseEvent* event)
{
    setFocus();
    event->accept();
}

void FloatingRow::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
}

void FloatingRow::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
}

FloatingText::FloatingText(QWidget* parent) : QLineEdit(parent), mover(*this, Qt::AltModifier)
{
    setPlaceholderText(kHowToEnd);
    setToolTip(kHowToEnd);
    QPalette colors = palette(); // those of the paper that it lies on, also on a dark desktop
    colors.setColor(QPalette::Base, Qt::white);
    colors.setColor(QPalette::Text, Qt::black);
    colors.setColor(QPalette::PlaceholderText, Qt::gray);
    setPalette(colors);
    resize(sizeHint());
    hide();
}

} // namespace kalvo
