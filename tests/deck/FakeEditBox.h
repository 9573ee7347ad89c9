// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/Deck.h"

namespace kalvo {

/// The floating editor without a screen: what the user would see in it stands in `shown`, `contents` and `tint`.
class FakeEditBox : public EditBox
{
public:
    explicit FakeEditBox(Deck& deck) : m_deck(deck)
    {
        deck.attachEditBox(this);
        deck.setEditorActive(true);
        place();
    }
    ~FakeEditBox() override { m_deck.attachEditBox(nullptr); }

    bool isShown() const override { return shown; }
    void setShown(bool on) override { shown = on; }
    QString text() const override { return contents; }
    void setText(const QString& text) override { contents = text; }
    void setTint(Tint wanted) override { tint = wanted; }
    void place() override
    {
        contents = m_deck.editText(m_deck.Grid1.row(), m_deck.Grid1.col());
        ++placed;
    }

    bool shown = true;
    QString contents;
    Tint tint = Tint::AtRest;
    int placed = 0;

private:
    Deck& m_deck;
};

} // namespace kalvo
