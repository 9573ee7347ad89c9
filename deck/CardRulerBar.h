// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/CardRuler.h"

#include <QWidget>

namespace kalvo {

class Catalogue;
class Deck;
class FlexGridView;

/// A strip over the grid that names the fields of the current card, each above its column, the current one marked. It
/// is worked out when it is painted or asked, so a move of the cursor costs next to nothing.
class CardRulerBar : public QWidget
{
    Q_OBJECT

public:
    /// All of them must outlive the bar.
    CardRulerBar(const Deck& deck, const Catalogue& catalogue, const FlexGridView& view, QWidget* parent = nullptr);

    /// The ruler of the current row, with the ID as it stands in the edit box.
    CardRuler ruler() const;
    /// Where a span of columns stands in the bar, as far as it can be seen; empty when it is scrolled out of sight.
    QRect areaOf(const CardRuler::Span& span) const;
    QString tipAt(const QPoint& point) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    void followView();
    void paintSpan(QPainter& painter, const CardRuler::Span& span, bool isCurrent) const;

    const Deck& m_deck;
    const Catalogue& m_catalogue;
    const FlexGridView& m_view;
};

} // namespace kalvo
