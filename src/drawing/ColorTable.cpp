#include "drawing/ColorTable.h"

#include <algorithm>
#include <cmath>

namespace zv::dwg {

namespace {

std::uint32_t rgb(int r, int g, int b)
{
    return static_cast<std::uint32_t>(r) << 16 | static_cast<std::uint32_t>(g) << 8 |
           static_cast<std::uint32_t>(b);
}

/// One channel of a pure hue: full for 60 degrees each way round its own angle, then falling over 60 more.
double channel(double hue, double own)
{
    const double away = std::abs(std::remainder(hue - own, 360.0));
    return std::clamp(2 - away / 60, 0.0, 1.0);
}

} // namespace

std::uint32_t indexedColor(std::uint8_t index)
{
    static constexpr std::uint32_t kNamed[10] = {0x000000, 0xff0000, 0xffff00, 0x00ff00, 0x00ffff,
                                                 0x0000ff, 0xff00ff, 0xffffff, 0x808080, 0xc0c0c0};
    static constexpr int kGreys[6] = {51, 91, 132, 173, 214, 255};
    if (index < 10)
        return kNamed[index];
    if (index >= 250)
        return rgb(kGreys[index - 250], kGreys[index - 250], kGreys[index - 250]);
    // 24 hues of 15 degrees; each in five strengths, pure and pale by turns.
    static constexpr double kStrength[5] = {1, 0.65, 0.5, 0.3, 0.15};
    static constexpr int kBrightest[5] = {255, 165, 127, 76, 38};
    const int hueNumber = index / 10 - 1;
    const double hue = hueNumber * 15.0;
    const int step = index % 10 / 2;
    const bool pale = index % 2 == 1;
    const auto value = [&](double own) {
        const double pure = channel(hue, own);
        const double mixed = pale ? 0.5 + 0.5 * pure : pure;
        return std::min(kBrightest[step], static_cast<int>(255 * kStrength[step] * mixed));
    };
    return rgb(value(0), value(120), value(240));
}

} // namespace zv::dwg
