// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/CardRulerBar.h"

#include "deck/Catalogue.h"
#include "deck/Deck.h"
#include "platform/FlexGridPainter.h"
#include "platform/FlexGridView.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kSideMargin = 4; ///< as the grid's own cells have
constexpr int kRoom = 6;       ///< above and below the words together
constexpr int kLeastWidth = 6; ///< pixels; what is narrower shows nothing

} // namespace

CardRulerBar::CardRulerBar(const Deck& deck, const Catalogue& catalogue, const FlexGridView& view, QWidget* parent)
    : QWidget(parent), m_deck(deck), m_catalogue(catalogue), m_view(view)
{
    setObjectName(QStringLiteral("CardRulerBar"));
    setAccessibleName(tr("Fields of the current card"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    const auto repaint = [this] { update(); };
    const FlexGrid& grid = deck.Grid1;
    connect(&grid, &FlexGrid::selectionChanged, this, repaint);
    connect(&grid, &FlexGrid::cellsChanged, this, repaint);
    connect(&grid, &FlexGrid::bulkChanged, this, repaint);
    connect(&view, &FlexGridView::viewMoved, this, &CardRulerBar::followView);
}

void CardRulerBar::followView()
{
    if (minimumSizeHint().height() != height())
        updateGeometry();
    update();
}

CardRuler CardRulerBar::ruler() const
{
    const int row = m_deck.Grid1.row();
    if (row < 1)
        return cardRuler(m_catalogue, QString(), 0);
    const EditBox* box = m_deck.editBox();
    const bool isIdTyped = m_deck.Grid1.col() == deck_layout::kIdColumn && box && box->isShown();
    const QString id = isIdTyped ? box->text() : m_deck.id(row);
    return cardRuler(m_catalogue, id, cardsAhead(m_deck, row, id));
}

QRect CardRulerBar::areaOf(const CardRuler::Span& span) const
{
    const int shift = m_view.x() - x();
    const QRect first = m_view.cellRect(0, span.left);
    const QRect last = m_view.cellRect(0, span.right);
    const int left = std::max(first.left(), m_view.cellRect(0, 0).right() + 1);
    const int edge = m_view.viewport()->geometry().right();
    const int right = span.isNote ? edge : std::min(last.right(), edge);
    return right - left < kLeastWidth ? QRect() : QRect(left + shift, 0, right - left + 1, height());
}

QString CardRulerBar::tipAt(const QPoint& point) const
{
    const CardRuler shown = ruler();
    for (int column = deck_layout::kIdColumn; column <= deck_layout::kLastColumn; ++column)
        if (areaOf({column, column}).contains(point))
            return rulerTip(m_catalogue, shown, column);
    return {};
}

QSize CardRulerBar::sizeHint() const
{
    return minimumSizeHint();
}

QSize CardRulerBar::minimumSizeHint() const
{
    return {0, QFontMetrics(m_view.font()).height() + kRoom};
}

void CardRulerBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const CardRuler shown = ruler();
    for (const CardRuler::Span& span : shown.spans) {
        const int column = m_deck.Grid1.col();
        paintSpan(painter, span, column >= span.left && column <= span.right && !span.isNote);
    }
}

void CardRulerBar::paintSpan(QPainter& painter, const CardRuler::Span& span, bool isCurrent) const
{
    const QRect area = areaOf(span);
    if (area.isEmpty())
        return;
    const QColor window = palette().color(QPalette::Window);
    const QColor ink = palette().color(QPalette::WindowText);
    if (isCurrent)
        painter.fillRect(area, blend(window, palette().color(QPalette::Highlight), 0.35));
    painter.fillRect(area.right(), area.top() + 3, 1, area.height() - 6, blend(window, ink, 0.25));
    QFont font = m_view.font();
    font.setItalic(span.isNote);
    const QRect room = area.adjusted(kSideMargin, 0, -kSideMargin, 0);
    font.setBold(isCurrent || span.left == deck_layout::kIdColumn);
    if (QFontMetrics(font).horizontalAdvance(span.text) > room.width())
        font.setBold(false); // better plain than cut
    painter.setFont(font);
    painter.setPen(span.isNote ? blend(ink, window, 0.25) : ink);
    const bool isWide = span.right > span.left;
    painter.drawText(room, (isWide ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(span.text, isWide ? Qt::ElideRight : Qt::ElideMiddle, room.width()));
}

bool CardRulerBar::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), tipAt(help->pos()), this);
        return true;
    }
    return QWidget::event(event);
}

} // namespace kalvo
