// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/CurveColors.h"

#include "platform/ColorVision.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

constexpr Rgb kPaper = rgb(255, 255, 255);
constexpr Rgb kInk = rgb(0, 0, 0);      ///< of axes and labels
constexpr double kLeastContrast = 2.5;  ///< of a line one pixel wide on white paper
constexpr double kLeastDistance = 90.0; ///< of two curves, in steps of one colour part
constexpr double kFromInk = 50.0;
constexpr size_t kRemembered = 6; ///< beyond so many curves some must be alike
constexpr int kTries = 60;

int part(Rgb color, int shift)
{
    return static_cast<int>((static_cast<quint32>(color) >> shift) & 255u);
}

/// Weighed by how the eye sees the three parts.
double distance(Rgb a, Rgb b)
{
    const double red = part(a, 16) - part(b, 16), green = part(a, 8) - part(b, 8), blue = part(a, 0) - part(b, 0);
    return std::sqrt((2.0 * red * red + 4.0 * green * green + 3.0 * blue * blue) / 3.0);
}

} // namespace

Rgb readableOn(Rgb back)
{
    const Rgb black = rgb(0, 0, 0);
    return contrastRatio(back, black) >= contrastRatio(back, kPaper) ? black : kPaper;
}

CurveColors::CurveColors(Generator generator) : m_generator(std::move(generator))
{
    if (!m_generator)
        m_generator = [] { return QRandomGenerator::global()->bounded(256); };
}

/// At least 1 for a colour that will do.
double CurveColors::merit(Rgb color) const
{
    double least = std::min(contrastRatio(color, kPaper) / kLeastContrast, distance(color, kInk) / kFromInk);
    for (const Rgb last : m_last)
        least = std::min(least, distance(color, last) / kLeastDistance);
    return least;
}

Rgb CurveColors::next()
{
    Rgb best = rgb(0, 0, 0);
    double bestMerit = -1.0;
    for (int i = 0; i < kTries && bestMerit < 1.0; ++i) {
        const auto draw = [this] { return std::clamp(m_generator(), 0, 255); };
        const int red = draw(), green = draw(), blue = draw();
        if (const double is = merit(rgb(red, green, blue)); is > bestMerit) {
            best = rgb(red, green, blue);
            bestMerit = is;
        }
    }
    while (contrastRatio(best, kPaper) < kLeastContrast)
        best = rgb(part(best, 16) * 3 / 4, part(best, 8) * 3 / 4, part(best, 0) * 3 / 4);
    taken(best);
    return best;
}

void CurveColors::taken(Rgb color)
{
    m_last.push_back(color);
    if (m_last.size() > kRemembered)
        m_last.erase(m_last.begin());
}

} // namespace kalvo
