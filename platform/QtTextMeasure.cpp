// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/QtTextMeasure.h"

#include <QFontDatabase>
#include <QFontMetricsF>

#include <cmath>

namespace kalvo {

namespace {

QFontMetricsF metricsOf(QFont font)
{
    // Without kerning a text is as wide as its characters together, which is what the table of widths relies on.
    font.setKerning(false);
    return QFontMetricsF(font);
}

} // namespace

QtTextMeasure::QtTextMeasure(const QFont& font)
{
    setFont(font);
}

void QtTextMeasure::setFont(const QFont& font)
{
    m_font = font;
    const QFontMetricsF metrics = metricsOf(font);
    for (size_t code = 0; code < m_advances.size(); ++code)
        m_advances[code] = metrics.horizontalAdvance(QChar(static_cast<char16_t>(code)));
}

int QtTextMeasure::textWidth(const QString& text) const
{
    double pixels = 0.0;
    for (const QChar c : text) {
        if (c.unicode() >= m_advances.size()) {
            pixels = metricsOf(m_font).horizontalAdvance(text);
            break;
        }
        pixels += m_advances[c.unicode()];
    }
    return static_cast<int>(std::lround(pixels * kTwipsPerPixel));
}

QStringList QtTextMeasure::fontNames() const
{
    return QFontDatabase::families();
}

} // namespace kalvo
