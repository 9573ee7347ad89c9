// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

#include <functional>
#include <vector>

namespace kalvo {

/// Black or white, whichever can be read on `back`.
Rgb readableOn(Rgb back);

/// Colours of curves: three random numbers each, drawn again while the colour is too pale to see on white or too near
/// one of the last curves.
class CurveColors
{
public:
    using Generator = std::function<int()>; ///< 0 to 255

    explicit CurveColors(Generator generator = {});

    /// Ends whatever the generator gives: after many tries the best of them stands, darkened if it is too pale.
    Rgb next();
    /// A curve that kept its colour: the next ones keep their distance from it.
    void taken(Rgb color);
    /// No curve is left to be mistaken for.
    void forget() { m_last.clear(); }

private:
    double merit(Rgb color) const;

    Generator m_generator;
    std::vector<Rgb> m_last;
};

} // namespace kalvo
