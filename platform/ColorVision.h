// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FlexGrid.h"

namespace kalvo {

/// How a pair of eyes sees colours: all three cones, or one kind missing.
enum class Vision
{
    Full,
    NoRed,
    NoGreen,
    NoBlue
};

/// How far two colours stand apart to such eyes, as the CIE 1976 distance: 2 can just be told apart side by side, 10 at
/// a glance, black from white is 100. Missing cones after Machado, Oliveira and Fernandes (2009).
double colorDistance(Rgb a, Rgb b, Vision vision = Vision::Full);
/// The least distance over all four kinds of eyes.
double leastColorDistance(Rgb a, Rgb b);
/// Contrast of two colours by WCAG 2.1, 1 to 21; lines and symbols should have 3 against what they are drawn on.
double contrastRatio(Rgb a, Rgb b);

} // namespace kalvo
