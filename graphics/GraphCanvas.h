// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPointF>
#include <QScrollArea>
#include <QString>
#include <QWidget>

namespace kalvo {

/// `P1` as a control: shows an image and tells of pointer and keys. It has a pointer for the keyboard too: arrows move
/// it (by 10 pixels, with Shift by one), the space bar presses there.
class GraphCanvas : public QWidget
{
    Q_OBJECT

public:
    explicit GraphCanvas(QWidget* parent = nullptr);

    /// @param image must outlive the canvas and is shown as large as the canvas.
    void setImage(const QImage* image) { m_image = image; }
    /// Size at which a pixel of the image is a pixel of the canvas, and how much larger it is shown.
    void setSizes(const QSizeF& base, double zoom);
    QSizeF base() const { return m_base; }
    double zoom() const { return m_zoom; }
    /// Words in the middle, for as long as there is nothing else to see.
    void setHint(const QString& hint);
    QString hint() const { return m_hint; }
    /// Where the keyboard points, in pixels of the base size.
    QPointF keyPoint() const;

Q_SIGNALS:
    // Points are pixels of the base size.
    void pointed(const QPointF& point, bool isPressed);
    void pressed(const QPointF& point);
    void released(const QPointF& point);
    void menuAsked(const QPoint& globalPoint);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QPointF basePoint(const QPointF& own) const { return own / m_zoom; }

    const QImage* m_image = nullptr;
    QSizeF m_base{1.0, 1.0};
    double m_zoom = 1.0;
    QString m_hint;
    QPointF m_key{-1.0, -1.0}; ///< negative: in the middle
    bool m_isDown = false;
};

/// The window through which a canvas is seen when it is zoomed.
class GraphWindow : public QScrollArea
{
    Q_OBJECT

public:
    using QScrollArea::QScrollArea;

Q_SIGNALS:
    void resized();

protected:
    void resizeEvent(QResizeEvent* event) override;
};

} // namespace kalvo
