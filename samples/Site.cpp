// Trees, parking, utilities and paving of site plans.
#include "Library.h"

#include <cmath>
#include <numbers>

namespace zv::samples {

namespace {
constexpr double kRadian = std::numbers::pi / 180;

Sample sheet(const std::string& name, const std::string& comments, const std::string& keywords,
             double scale = 120)
{
    return {name, name, comments, "site, " + keywords, Draft(Units::Inches, scale)};
}

Point2 polar(double radius, double angle)
{
    return {radius * std::cos(angle * kRadian), radius * std::sin(angle * kRadian)};
}

/// A wavy crown: arcs between points on a circle.
void crown(Draft& d, double radius, int lobes, double bulge)
{
    Outline line;
    for (int i = 0; i < lobes; ++i) {
        const Point2 p = polar(radius * (i % 3 == 1 ? 0.94 : 1), i * 360.0 / lobes);
        line.push_back({p.x, p.y, bulge});
    }
    d.outline(line);
}

Sample deciduous(int feet)
{
    const double r = feet * 6;
    Sample s = sheet("Tree Deciduous " + std::to_string(feet),
                     "Deciduous tree, crown " + std::to_string(feet) + " ft.",
                     "tree, deciduous, planting, plan", r / 1.2);
    Draft& d = s.draft;
    d.on("L-PLNT-TREE", 3, {}, 35);
    crown(d, r, 24, 0.55);
    d.on("L-PLNT-BRCH", 92);
    for (int branch = 0; branch < 9; ++branch) {
        const double angle = branch * 40 + (branch % 2) * 9;
        const Point2 a = polar(r * 0.06, angle), b = polar(r * 0.45, angle + 4),
                     c = polar(r * 0.8, angle - 5);
        d.lines({a, b, c});
        d.lines({b, polar(r * 0.74, angle + 16)});
    }
    d.disc(0, 0, r * 0.05);
    return s;
}

Sample evergreen(int feet)
{
    const double r = feet * 6;
    Sample s = sheet("Tree Evergreen " + std::to_string(feet),
                     "Evergreen tree, spread " + std::to_string(feet) + " ft.",
                     "tree, evergreen, planting, plan", r / 1.2);
    Draft& d = s.draft;
    d.on("L-PLNT-TREE", 94, {}, 35);
    for (int needle = 0; needle < 36; ++needle) {
        const Point2 outer = polar(r * (needle % 2 == 0 ? 1 : 0.8), needle * 10);
        d.line(0, 0, outer.x, outer.y);
    }
    Outline star;
    for (int i = 0; i < 36; ++i) {
        const Point2 p = polar(r * (i % 2 == 0 ? 1 : 0.8), i * 10);
        star.push_back({p.x, p.y});
    }
    d.outline(star);
    return s;
}

Sample palm()
{
    Sample s = sheet("Tree Palm", "Fan palm.", "tree, palm, planting, plan", 60);
    Draft& d = s.draft;
    d.block("FROND", [&] {
        d.on("L-PLNT-TREE", 3);
        d.spline({{4, 0}, {30, 6}, {60, 4}, {72, -6}});
        for (int leaf = 1; leaf < 7; ++leaf) {
            d.line(leaf * 10, 3.5, leaf * 10 + 8, 11);
            d.line(leaf * 10, 3.5, leaf * 10 + 8, -5);
        }
    });
    for (int frond = 0; frond < 10; ++frond)
        d.insert("FROND", 0, 0, frond * 36, frond % 2 == 0 ? 1 : 0.85, 1);
    d.circle(0, 0, 6);
    return s;
}

Sample shrub(bool hedge)
{
    Sample s =
        sheet(hedge ? "Hedge" : "Shrub", hedge ? "Clipped hedge, per running length." : "Shrub, spread 4 ft.",
              "shrub, hedge, planting, plan", 32);
    Draft& d = s.draft;
    d.on("L-PLNT-SHRB", 3, {}, 35);
    if (!hedge) {
        crown(d, 24, 11, 0.7);
        crown(d, 12, 7, 0.7);
        d.disc(0, 0, 1.5);
        return s;
    }
    Outline line;
    for (int i = 0; i < 12; ++i)
        line.push_back({i * 8.0, 0, 0.6});
    line.push_back({96, 0, 0.6});
    for (int i = 12; i >= 0; --i)
        line.push_back({i * 8.0, 24, i == 0 ? 0.3 : 0.6});
    d.outline(line);
    d.on("L-PLNT-PATT", 92);
    d.fill(Fill::Grass, {rectangle(0, 2, 96, 20)}, 0.8);
    return s;
}

void wheelchair(Draft& d, double x, double y)
{
    d.block("ACCESSIBLE", [&] {
        d.on("C-PKNG-SYMB", 5, {}, 50);
        d.disc(2, 27, 4);
        d.outline({{1, 21}, {2, 8}, {14, 8}, {19, -4}, {24, -2}}, false, 2.5);
        d.outline({{2, 15}, {12, 15}}, false, 2.5);
        d.arc(4, 2, 13, 150, 340);
        d.arc(4, 2, 11, 150, 340);
    });
    d.insert("ACCESSIBLE", x, y, 0, 1.4, 1.4);
}

Sample parking(int angle, bool accessible)
{
    Sample s = sheet(accessible ? "Parking Accessible" : "Parking " + std::to_string(angle),
                     accessible ? "Accessible stalls with van aisle and wheel stops."
                                : "Row of stalls 9 x 18 ft at " + std::to_string(angle) + " degrees.",
                     "parking, stall, accessible, plan", 192);
    Draft& d = s.draft;
    const double stall = 108, deep = 216, lean = angle == 90 ? 0 : deep * std::cos(angle * kRadian),
                 step = stall / std::sin(angle * kRadian), rise = deep * std::sin(angle * kRadian);
    d.on("C-PKNG-STRP", 2, {}, 35);
    for (int i = 0; i <= 4; ++i)
        d.outline({{i * step, 0}, {i * step + lean, rise}}, false, 4);
    d.on("C-PKNG-CURB", 7, {}, 50);
    d.line(lean - 24, rise, 4 * step + lean + 24, rise);
    d.line(lean - 24, rise + 6, 4 * step + lean + 24, rise + 6);
    d.on("C-PKNG-STOP", 8);
    for (int i = 0; i < 4; ++i)
        if (angle == 90)
            d.rect(i * step + 18, rise - 30, 72, 6);
    if (accessible) {
        wheelchair(d, 44, 60);
        wheelchair(d, 44 + 2 * step, 60);
        d.on("C-PKNG-STRP", 2);
        for (int stripe = 0; stripe < 8; ++stripe)
            d.line(step, stripe * 27.0, 2 * step, stripe * 27.0 + 27);
    }
    d.on("C-ANNO-DIMS", 1);
    d.dimX(0, 0, step, 0, -60);
    return s;
}

Sample lettered(const std::string& name, const std::string& letters, bool square, const std::string& comments)
{
    Sample s = sheet(name, comments, "utility, symbol, plan", 24);
    Draft& d = s.draft;
    d.on("C-UTIL-SYMB", 4, {}, 35);
    if (square) {
        d.rect(-16, -16, 32, 32);
        for (int bar = -2; bar <= 2; ++bar)
            d.line(-16, bar * 5.3, 16, bar * 5.3);
        d.text(20, 6, letters);
    } else {
        d.circle(0, 0, 15);
        d.circle(0, 0, 12.5);
        d.letters(0, 0, 9, letters);
    }
    return s;
}

Sample hydrant()
{
    Sample s =
        sheet("Fire Hydrant", "Hydrant with gate valve and thrust block.", "hydrant, fire, water, plan", 32);
    Draft& d = s.draft;
    d.on("C-FIRE", 1, {}, 35);
    d.circle(0, 0, 9);
    d.fill(Fill::Solid, {{{-9, 0, 1}, {9, 0}}});
    for (const double side : {-1.0, 1.0})
        d.rect(side > 0 ? 9 : -13, -3, 4, 6);
    d.on("C-WATR", 5, {}, 50);
    d.line(0, -9, 0, -60);
    d.line(-40, -60, 40, -60);
    d.on("C-WATR-VALV", 2);
    d.lines({{-4, -30}, {4, -42}, {-4, -42}, {4, -30}}, true);
    d.text(12, 8, "F.H.");
    return s;
}

Sample lightPole()
{
    Sample s = sheet("Light Pole", "Two head parking lot light on a concrete base.", "light, pole, plan", 48);
    Draft& d = s.draft;
    d.on("C-LITE", 2, {}, 35);
    d.circle(0, 0, 12);
    d.disc(0, 0, 4);
    for (const double side : {-1.0, 1.0}) {
        d.line(side * 4, 0, side * 30, 0);
        d.rect(side > 0 ? 30 : -54, -9, 24, 18);
    }
    return s;
}

Sample paving(const std::string& kind, Fill pattern, double factor)
{
    Sample s = sheet("Paving " + kind, kind + " paving, pattern field.", "paving, pattern, " + kind, 32);
    Draft& d = s.draft;
    const Outline field{{0, 0}, {96, 0}, {96, 48, 0.3}, {60, 84}, {0, 84}};
    d.on("L-SITE-PATT", 8);
    d.fill(pattern, {field}, factor);
    d.on("L-SITE", 2, {}, 50);
    d.outline(field);
    return s;
}

Sample curb()
{
    Sample s = sheet("Curb and Gutter", "Concrete curb and gutter on base course, section.",
                     "curb, gutter, section", 8);
    Draft& d = s.draft;
    const Outline shape{{0, 0}, {24, 0}, {24, 6}, {6, 7.5}, {5, 13, 0.4}, {4, 14}, {0, 14}};
    d.on("C-CONC-PATT", 8);
    d.fill(Fill::Concrete, {shape});
    d.on("C-CONC", 2, {}, 50);
    d.outline(shape);
    d.on("C-PVMT", 7, {}, 35);
    d.fill(Fill::Solid, {rectangle(24, 3, 16, 3)});
    d.on("C-PVMT-PATT", 8);
    d.fill(Fill::Gravel, {rectangle(24, -5, 16, 8)}, 0.8);
    d.fill(Fill::Gravel, {rectangle(0, -5, 24, 5)}, 0.8);
    d.on("C-TOPO", 3);
    d.fill(Fill::Grass, {rectangle(-14, 14, 14, 3)}, 0.6);
    d.line(-14, 14, 0, 14);
    d.on("C-ANNO-DIMS", 1);
    d.dimX(0, 0, 24, 0, -10);
    d.dimY(0, 0, 0, 14, -8);
    return s;
}

Sample bench()
{
    Sample s = sheet("Bench", "Park bench 6 ft with back.", "bench, furniture, plan", 20);
    Draft& d = s.draft;
    d.on("L-SITE-FURN", 32, {}, 35);
    for (int slat = 0; slat < 5; ++slat)
        d.rect(0, slat * 3.6, 72, 3);
    d.rect(0, 20, 72, 2);
    for (const double x : {4.0, 66.0})
        d.rect(x, -1, 2, 24);
    return s;
}

Sample car()
{
    Sample s = sheet("Car", "Passenger car 6 x 15 ft, for clearances.", "car, vehicle, plan", 60);
    Draft& d = s.draft;
    d.on("C-VEHI", 6, {}, 35);
    d.outline({{10, 0},
               {165, 0, 0.35},
               {180, 14, 0.12},
               {180, 58, 0.35},
               {165, 72},
               {10, 72, 0.35},
               {0, 60, 0.1},
               {0, 12, 0.35}});
    d.outline({{55, 8}, {118, 8}, {132, 5, 0.1}, {132, 67}, {118, 64}, {55, 64}, {38, 66, 0.1}, {38, 6}});
    d.lines({{55, 8}, {58, 36}, {55, 64}});
    d.lines({{118, 8}, {112, 36}, {118, 64}});
    for (const double y : {-4.0, 72.0})
        d.rect(118, y, 6, 4);
    return s;
}
} // namespace

Library siteSymbols()
{
    Library library{"Site Symbols", {}};
    auto& out = library.samples;
    for (const int feet : {12, 20, 30})
        out.push_back(deciduous(feet));
    for (const int feet : {10, 18})
        out.push_back(evergreen(feet));
    out.insert(out.end(), {palm(), shrub(false), shrub(true), parking(90, false), parking(60, false),
                           parking(45, false), parking(90, true), hydrant(), lightPole()});
    out.push_back(lettered("Manhole Sanitary", "S", false, "Sanitary manhole, 24 in. cover."));
    out.push_back(lettered("Manhole Storm", "ST", false, "Storm manhole, 24 in. cover."));
    out.push_back(lettered("Manhole Electric", "E", false, "Electric manhole."));
    out.push_back(lettered("Catch Basin", "CB", true, "Catch basin with grate."));
    out.push_back(paving("Brick", Fill::Brick, 1));
    out.push_back(paving("Gravel", Fill::Gravel, 1));
    out.push_back(paving("Lawn", Fill::Grass, 1));
    out.insert(out.end(), {curb(), bench(), car()});
    for (std::size_t i = 4; i < out.size(); i += 8)
        out[i].preview = false;
    return library;
}

} // namespace zv::samples
