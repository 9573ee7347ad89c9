// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ColorVision.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kalvo {
namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

// Machado, Oliveira, Fernandes: A Physiologically-based Model for Simulation of Color Vision Deficiency, IEEE TVCG 15
// (2009), severity 1, on linear light.
constexpr Matrix kNoRed{
    {{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}};
constexpr Matrix kNoGreen{
    {{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}};
constexpr Matrix kNoBlue{
    {{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}};
// sRGB (IEC 61966-2-1) to CIE XYZ, divided by the white point D65.
constexpr Matrix kToXyz{{{0.4124564 / 0.95047, 0.3575761 / 0.95047, 0.1804375 / 0.95047},
                         {0.2126729, 0.7151522, 0.0721750},
                         {0.0193339 / 1.08883, 0.1191920 / 1.08883, 0.9503041 / 1.08883}}};

Triple times(const Matrix& m, const Triple& v)
{
    Triple product{};
    for (size_t i = 0; i < 3; ++i)
        product[i] = m[i][0] * v[0] + m[i][1] * v[1] + m[i][2] * v[2];
    return product;
}

/// Linear light of the three parts, 0 to 1.
Triple lightOf(Rgb color)
{
    Triple light{};
    for (size_t i = 0; i < 3; ++i) {
        const double part = static_cast<double>((static_cast<quint32>(color) >> (16 - 8 * i)) & 0xFF) / 255.0;
        light[i] = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    }
    return light;
}

Triple labOf(Rgb color, Vision vision)
{
    Triple light = lightOf(color);
    if (vision != Vision::Full)
        light = times(vision == Vision::NoRed ? kNoRed : vision == Vision::NoGreen ? kNoGreen : kNoBlue, light);
    for (double& part : light)
        part = std::clamp(part, 0.0, 1.0);
    Triple xyz = times(kToXyz, light);
    for (double& part : xyz)
        part = part > 216.0 / 24389.0 ? std::cbrt(part) : (24389.0 / 27.0 * part + 16.0) / 116.0;
    return {116.0 * xyz[1] - 16.0, 500.0 * (xyz[0] - xyz[1]), 200.0 * (xyz[1] - xyz[2])};
}

} // namespace

double colorDistance(Rgb a, Rgb b, Vision vision)
{
    const Triple one = labOf(a, vision), other = labOf(b, vision);
    return std::hypot(one[0] - other[0], one[1] - other[1], one[2] - other[2]);
}

double leastColorDistance(Rgb a, Rgb b)
{
    double least = colorDistance(a, b, Vision::Full);
    for (const Vision vision : {Vision::NoRed, Vision::NoGreen, Vision::NoBlue})
        least = std::min(least, colorDistance(a, b, vision));
    return least;
}

double contrastRatio(Rgb a, Rgb b)
{
    const double one = times(kToXyz, lightOf(a))[1] + 0.05, other = times(kToXyz, lightOf(b))[1] + 0.05;
    return std::max(one, other) / std::min(one, other);
}

} // namespace kalvo
