// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPoint>

namespace kalvo {

/// Lets a control that lies on a picture be moved: dragged with the left button, or by arrow keys. It stays within its
/// parent.
class FloatingMover : public QObject
{
    Q_OBJECT

public:
    /// @param keys that must be held with an arrow; a control with a text cursor needs the bare ones itself.
    FloatingMover(QWidget& moved, Qt::KeyboardModifiers keys);
    void moveTo(const QPoint& topLeft);

Q_SIGNALS:
    void stuck();   ///< a double click, or Enter
    void dropped(); ///< Esc

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool takeKey(const QKeyEvent& key);

    QWidget& m_moved;
    const Qt::KeyboardModifiers m_keys;
    QPoint m_pressedAt; ///< within the control
    bool m_isDown = false, m_isMoving = false;
};

/// A row of the legend on its way to a place on the picture.
class FloatingRow : public QLabel
{
    Q_OBJECT

public:
    FloatingRow(const QString& text, const QColor& color, QWidget* parent);
    FloatingMover mover;
    const QColor color;

protected:
    // The picture below must not take them for its own.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};

/// `Text10`: the label that is being typed.
class FloatingText : public QLineEdit
{
    Q_OBJECT

public:
    explicit FloatingText(QWidget* parent);
    FloatingMover mover;
};

} // namespace kalvo
