// SPDX-License-Identifier: GPL-3.0-or-later
// What the user does on the Grapher's picture by hand: reading values, wiping, labels, legend rows, copies.
#include "graphics/FloatingLabels.h"
#include "graphics/GRAPHER_Grapher.h"
#include "graphics/GraphCanvas.h"
#include "platform/ChartExport.h"
#include "platform/CommandGuard.h"
#include "platform/FlexGridView.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>

#include <cmath>

namespace kalvo {

namespace {

constexpr Rgb kEraserPreview = rgb(45, 23, 123);
constexpr Rgb kPaper = rgb(255, 255, 255);
constexpr Rgb kInk = rgb(0, 0, 0);
constexpr QPoint kTextInBox(4, 3); ///< pixels from the corner of a floating label to its text

} // namespace

void GRAPHER::connectHand()
{
    connect(P1, &GraphCanvas::pointed, this, &GRAPHER::pointAt);
    connect(P1, &GraphCanvas::pressed, this, &GRAPHER::press);
    connect(P1, &GraphCanvas::released, this, &GRAPHER::release);
    connect(&Text10->mover, &FloatingMover::stuck, this, &GRAPHER::writeText10);
    connect(&Text10->mover, &FloatingMover::dropped, this, [this] {
        Text10->hide();
        P1->setFocus();
    });
    connect(fg, &FlexGridView::keyOnGrid, this, [this](QKeyEvent* key) {
        key->setAccepted(key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter);
        if (!key->isAccepted())
            return;
        if (FloatingRow* label = floatRow(m_legend.row(), (P1->keyPoint() * P1->zoom()).toPoint()))
            label->setFocus();
    });
    fg->viewport()->installEventFilter(this);
}

// -- Values under the pointer, labels, eraser ------------------------------------------------------------------------

void GRAPHER::pointAt(const QPointF& pixel, bool isPressed)
{
    const QPointF twips = m_picture.twipsAt(pixel);
    if (Check1->isChecked()) {
        if (isPressed && m_isWiping)
            wipeTo(twips);
        return;
    }
    if (m_curves.empty())
        return;
    Text8->setText(pointerHoursText(m_scale, twips.x()));
    Text9->setText(pointerFlowText(m_scale, twips.y()));
}

void GRAPHER::press(const QPointF& pixel)
{
    if (!Check1->isChecked()) {
        placeText10(pixel);
        return;
    }
    m_isWiping = true;
    m_wiped = m_picture.twipsAt(pixel);
    wipeTo(m_wiped);
}

/// Wipes from where the eraser stood to where it now is, without a gap however fast the pointer went.
void GRAPHER::wipeTo(const QPointF& twips)
{
    const QPointF way = twips - m_wiped;
    const double step = GraphPicture::kEraserTwips / 2.0;
    const int steps = static_cast<int>(std::ceil(std::max(std::abs(way.x()), std::abs(way.y())) / step));
    for (int i = 0; i < steps; ++i)
        addMark({m_wiped + way * i / steps});
    m_wiped = twips;
    m_picture.fillBox(m_wiped, kEraserPreview);
    P1->update();
}

void GRAPHER::release()
{
    if (!m_isWiping)
        return;
    m_isWiping = false;
    addMark({m_wiped});
}

void GRAPHER::placeText10(const QPointF& pixel)
{
    if (!Text10->isVisible())
        Text10->clear();
    Text10->show();
    Text10->raise();
    Text10->mover.moveTo((pixel * P1->zoom()).toPoint());
    Text10->setFocus();
}

void GRAPHER::writeText10()
{
    if (!Text10->text().isEmpty())
        addMark({m_picture.twipsAt(QPointF(Text10->pos() + kTextInBox) / P1->zoom()), Text10->text(), kInk});
    Text10->hide();
    P1->setFocus();
}

/// Puts a mark on the picture and remembers it for pictures of another size.
void GRAPHER::addMark(const Mark& mark)
{
    m_marks.push_back(mark);
    if (mark.text.isEmpty())
        m_picture.fillBox(mark.at, kPaper);
    else
        m_picture.writeText(mark.at, mark.text, mark.color);
    P1->update();
}

// -- Rows of the legend ----------------------------------------------------------------------------------------------

FloatingRow* GRAPHER::floatRow(int row, const QPoint& onCanvas)
{
    const QString text = m_legend.textMatrix(row, 0);
    if (text.isEmpty())
        return nullptr;
    auto* label = new FloatingRow(text, QColor(static_cast<QRgb>(m_legend.cellFormat(row, 0).backColor)), P1);
    label->mover.moveTo(onCanvas - QPoint(label->width() / 2, label->height() / 2));
    label->show();
    connect(&label->mover, &FloatingMover::stuck, this, [this, label] { stick(*label); });
    connect(&label->mover, &FloatingMover::dropped, label, &QObject::deleteLater);
    return label;
}

void GRAPHER::stick(FloatingRow& row)
{
    addMark({m_picture.twipsAt(QPointF(row.pos() + kTextInBox) / P1->zoom()), row.text(),
             rgb(row.color.red(), row.color.green(), row.color.blue())});
    row.hide();
    row.deleteLater();
    P1->setFocus();
}

/// Labels on their way stay over the same place of a picture that has grown or shrunk.
void GRAPHER::moveFloating(const QSizeF& sizeBefore)
{
    if (sizeBefore == P1->size() || sizeBefore.isEmpty())
        return;
    const auto moved = [&](const QPoint& at) {
        return QPoint(static_cast<int>(at.x() * P1->width() / sizeBefore.width()),
                      static_cast<int>(at.y() * P1->height() / sizeBefore.height()));
    };
    Text10->mover.moveTo(moved(Text10->pos()));
    for (FloatingRow* row : P1->findChildren<FloatingRow*>())
        row->mover.moveTo(moved(row->pos()));
}

bool GRAPHER::eventFilter(QObject* watched, QEvent* event)
{
    if (fg && watched == fg->viewport() && dragRow(event))
        return true;
    return QMainWindow::eventFilter(watched, event);
}

/// The right button takes a row along; let go beside the picture, it is back in the legend.
bool GRAPHER::dragRow(QEvent* event)
{
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseMove &&
        event->type() != QEvent::MouseButtonRelease)
        return false;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const QPoint onCanvas = P1->mapFromGlobal(mouse->globalPosition().toPoint());
    if (event->type() == QEvent::MouseButtonPress && mouse->button() == Qt::RightButton) {
        const int row = fg->rowAtPoint(fg->viewport()->mapTo(fg, mouse->position().toPoint()));
        if (row >= 0) {
            m_legend.setCursor(row, 0);
            m_draggedRow = floatRow(row, onCanvas);
            if (m_draggedRow)
                m_draggedRow->hide(); // until it has come to the picture
        }
        return true;
    }
    if (event->type() == QEvent::MouseMove && m_draggedRow && (mouse->buttons() & Qt::RightButton)) {
        const bool isOver = m_window->viewport()->rect().contains(
            m_window->viewport()->mapFromGlobal(mouse->globalPosition().toPoint()));
        m_draggedRow->setVisible(isOver);
        m_draggedRow->mover.moveTo(onCanvas - QPoint(m_draggedRow->width() / 2, m_draggedRow->height() / 2));
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease && mouse->button() == Qt::RightButton && m_draggedRow) {
        if (!m_draggedRow->isVisible())
            m_draggedRow->deleteLater();
        m_draggedRow = nullptr;
        return true;
    }
    return false;
}

bool GRAPHER::hasFloatingLabels() const
{
    if (Text10->isVisible())
        return true;
    for (const FloatingRow* row : P1->findChildren<FloatingRow*>())
        if (row->isVisible())
            return true;
    return false;
}

// -- The picture for other programs ----------------------------------------------------------------------------------

void GRAPHER::copyPicture()
{
    guarded(logGraphics(), "copyPicture", [this] {
        const QByteArray bytes = m_picture.encoded("PNG");
        if (bytes.isEmpty()) {
            m_desk->services().dialogs.warn(QStringLiteral("There is no memory for a copy of the picture."));
            return;
        }
        m_desk->services().clipboard.setPicture(bytes);
        m_news->setText(QStringLiteral("Copied the picture to the clipboard"));
    });
}

void GRAPHER::savePicture()
{
    guarded(logGraphics(), "savePicture", [this] {
        FileDialog dialog;
        dialog.title = QStringLiteral("Kalvo Save Picture of Hydrographs");
        dialog.filter = QStringLiteral("PNG Files (*.png)|*.png|BMP Files (*.bmp)|*.bmp|");
        dialog.defaultExtension = QStringLiteral("png");
        dialog.initialName = m_desk->offeredName();
        dialog.overwritePrompt = true;
        const auto path = m_desk->services().dialogs.saveFile(dialog);
        if (!path || path->isEmpty())
            return;
        Dialogs& dialogs = m_desk->services().dialogs;
        const auto kind = pictureKindOf(*path);
        if (kind != PictureKind::Png && kind != PictureKind::Bmp) {
            dialogs.warn(QStringLiteral("'%1' ends in neither .png nor .bmp.").arg(*path));
            return;
        }
        const QByteArray bytes = m_picture.encoded(kind == PictureKind::Bmp ? "BMP" : "PNG");
        QString why = QStringLiteral("There is no memory for it.");
        if (bytes.isEmpty() || !writeFile(*path, bytes, &why))
            dialogs.warn(QStringLiteral("The picture could not be written to %1\r\n%2").arg(*path, why));
    });
}

} // namespace kalvo
