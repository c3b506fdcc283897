#include "Patterns.h"

#include "platform/Text.h"

#include <cmath>
#include <numbers>

namespace zv::samples {

using namespace zv::dwg;

namespace {
/// A family of parallel lines: the angle in degrees, how far the next one stands off, how far it is
/// shifted along, and its dashes; lengths in sheet inches.
struct Family {
    double angle = 0, apart = 0.125, shift = 0;
    std::vector<double> dashes{};
    Point2 base{};
};

struct Pattern {
    const char* name;
    std::vector<Family> families;
};

Pattern patternOf(Fill fill)
{
    switch (fill) {
    case Fill::Solid:
        return {"SOLID", {}};
    case Fill::Steel:
        return {"ANSI31", {{45, 0.0625}}};
    case Fill::Concrete:
        return {"CONCRETE",
                {{50, 0.19, 0.11, {0.05, -0.31}},
                 {355, 0.23, 0.17, {0.04, -0.27}, {0.07, 0.05}},
                 {100, 0.21, 0.09, {0.04, -0.33}, {0.03, 0.11}},
                 {0, 0.061, 0.031, {0, -0.113}},
                 {20, 0.087, 0.053, {0, -0.137}, {0.02, 0.03}}}};
    case Fill::Earth:
        return {"EARTH", {{45, 0.06, 0, {0.18, -0.18}}, {135, 0.06, 0, {0.18, -0.18}, {0.127, 0.127}}}};
    case Fill::Gravel:
        return {"GRAVEL",
                {{0, 0.09, 0.05, {0.05, -0.06}},
                 {60, 0.11, 0.03, {0.04, -0.09}, {0.02, 0.01}},
                 {120, 0.1, 0.06, {0.04, -0.1}, {0.05, 0.02}}}};
    case Fill::Insulation:
        return {"INSULATION", {{60, 0.06}, {120, 0.06}}};
    case Fill::Wood:
        return {"WOOD", {{15, 0.05, 0.02, {0.4, -0.06}}, {12, 0.11, 0.05, {0.22, -0.09}, {0.05, 0.02}}}};
    case Fill::Glass:
        return {"GLASS", {{45, 0.3, 0, {0.2, -0.4}}, {45, 0.3, 0, {0.12, -0.48}, {0.06, 0}}}};
    case Fill::Brick:
        return {"BRICK",
                {{0, 0.083333},
                 {90, 0.25, 0.083333, {0.083333, -0.083333}},
                 {90, 0.25, 0.083333, {0.083333, -0.083333}, {0.125, 0.083333}}}};
    case Fill::Grass:
        return {"GRASS",
                {{90, 0.17, 0.11, {0.04, -0.2}},
                 {45, 0.17, 0.11, {0.03, -0.22}},
                 {135, 0.17, 0.11, {0.03, -0.22}}}};
    }
    return {"SOLID", {}};
}
} // namespace

Hatch hatchOf(Fill fill, double unit)
{
    const Pattern pattern = patternOf(fill);
    Hatch hatch;
    hatch.pattern = wide(pattern.name);
    hatch.solid = fill == Fill::Solid;
    hatch.scale = unit;
    for (const Family& family : pattern.families) {
        const double angle = family.angle * std::numbers::pi / 180;
        HatchPatternLine line;
        line.angle = angle;
        line.base = {family.base.x * unit, family.base.y * unit};
        line.offset = {(family.shift * std::cos(angle) - family.apart * std::sin(angle)) * unit,
                       (family.shift * std::sin(angle) + family.apart * std::cos(angle)) * unit};
        for (const double dash : family.dashes)
            line.dashes.push_back(dash * unit);
        hatch.lines.push_back(line);
    }
    return hatch;
}

Linetype linetypeOf(const std::string& name)
{
    struct Known {
        const char *name, *description;
        std::vector<double> dashes{};
    };
    static const Known kKnown[] = {
        {"DASHED", "Dashed __ __ __ __", {0.5, -0.25}},
        {"HIDDEN", "Hidden _ _ _ _ _ _", {0.25, -0.125}},
        {"CENTER", "Center ____ _ ____ _", {1.25, -0.25, 0.25, -0.25}},
        {"PHANTOM", "Phantom ____ _ _ ____", {1.25, -0.25, 0.25, -0.25, 0.25, -0.25}},
    };
    Linetype type;
    type.name = wide(name);
    for (const Known& known : kKnown) {
        if (name != known.name)
            continue;
        type.description = wide(known.description);
        for (const double length : known.dashes) {
            LinetypeDash dash;
            dash.length = length;
            type.dashes.push_back(dash);
            type.patternLength += std::abs(length);
        }
    }
    return type;
}

} // namespace zv::samples
