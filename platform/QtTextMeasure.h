// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"

#include <QFont>

#include <array>

namespace kalvo {

/// Widths in a font of the desktop. The widths of the Latin-1 characters are taken once, because the deck's column
/// rules ask for tens of thousands of texts: a text costs nanoseconds for each of its characters.
class QtTextMeasure : public TextMeasure
{
public:
    explicit QtTextMeasure(const QFont& font);
    void setFont(const QFont& font);
    const QFont& font() const { return m_font; }

    int textWidth(const QString& text) const override;
    QStringList fontNames() const override;

private:
    QFont m_font;
    std::array<double, 256> m_advances{}; ///< pixels
};

} // namespace kalvo
