// Air devices, ducts and equipment.
#include "Library.h"

#include <cmath>

namespace zv::samples {

namespace {
Sample sheet(const std::string& name, const std::string& comments, const std::string& keywords,
             double scale = 24)
{
    return {name, name, comments, "HVAC, " + keywords, Draft(Units::Inches, scale)};
}

Draft& device(Draft& d)
{
    return d.on("M-HVAC-DIFF", 4, {}, 35);
}
Draft& duct(Draft& d)
{
    return d.on("M-HVAC-DUCT", 2, {}, 35);
}

void size(Draft& d, double x, double y, const std::string& words)
{
    d.on("M-ANNO-TEXT", 7);
    d.text(x, y, words, Align::Centre);
}

void flowArrow(Draft& d, double x, double y, double angle)
{
    d.block("FLOW", [&] {
        d.line(-8, 0, 4, 0);
        d.solid({{8, 0}, {3, 2}, {3, -2}});
    });
    d.on("M-HVAC-FLOW", 1);
    d.insert("FLOW", x, y, angle);
}

Sample diffuser(int inches, bool round)
{
    const std::string n = std::to_string(inches);
    Sample s =
        sheet(std::string("Diffuser ") + (round ? "Round " : "Square ") + n,
              "Ceiling supply diffuser " + n + " in., four way.", "diffuser, supply, ceiling, plan", 12);
    Draft& d = s.draft;
    device(d);
    for (int i = 0; i < 4; ++i) {
        const double half = inches / 2.0 * (1 - i * 0.23);
        if (round)
            d.circle(0, 0, half);
        else
            d.rect(-half, -half, half * 2, half * 2);
    }
    const double half = inches / 2.0;
    if (!round) {
        d.line(-half, -half, half, half);
        d.line(-half, half, half, -half);
    }
    for (int way = 0; way < 4; ++way)
        flowArrow(d, (half + 10) * std::cos(way * 1.5707963268), (half + 10) * std::sin(way * 1.5707963268),
                  way * 90.0);
    size(d, 0, -half - 22, n + "\"%%c 250 CFM");
    return s;
}

Sample grille(bool exhaust)
{
    Sample s = sheet(exhaust ? "Grille Exhaust" : "Grille Return",
                     exhaust ? "Ceiling exhaust grille." : "Ceiling return grille.",
                     "grille, return, exhaust, plan", 12);
    Draft& d = s.draft;
    device(d);
    d.rect(-12, -12, 24, 24);
    d.rect(-10.5, -10.5, 21, 21);
    d.line(-10.5, -10.5, 10.5, 10.5);
    if (exhaust)
        d.line(-10.5, 10.5, 10.5, -10.5);
    else
        for (int blade = 1; blade < 8; ++blade)
            d.line(-10.5, -10.5 + blade * 2.625, -10.5 + blade * 2.625, -10.5 + blade * 2.625);
    size(d, 0, -18, "24x24");
    return s;
}

Sample elbow(bool vaned)
{
    Sample s = sheet(vaned ? "Duct Elbow Vaned" : "Duct Elbow Radius", "Rectangular duct turn, 90 degrees.",
                     "duct, elbow, plan");
    Draft& d = s.draft;
    duct(d);
    if (vaned) {
        d.lines({{0, 36}, {0, 0}, {-36, 0}});
        d.lines({{18, 36}, {18, -18}, {-36, -18}});
        for (int vane = 0; vane < 6; ++vane)
            d.arc(2.0 + vane * 3 - 3, -2.0 - vane * 3 + 3, 4, 270, 360);
    } else {
        d.arc(-18, 18, 18, 270, 360);
        d.arc(-18, 18, 36, 270, 360);
        d.lines({{0, 18}, {0, 36}});
        d.lines({{18, 18}, {18, 36}});
        d.lines({{-18, 0}, {-36, 0}});
        d.lines({{-18, -18}, {-36, -18}});
    }
    flowArrow(d, -26, -9, 0);
    flowArrow(d, 9, 28, 90);
    size(d, -26, -28, "18x12");
    return s;
}

Sample transition()
{
    Sample s = sheet("Duct Transition", "Transition 24 to 16 in., one in four.", "duct, transition, plan");
    Draft& d = s.draft;
    duct(d);
    for (const double side : {1.0, -1.0})
        d.lines({{-30, side * 12}, {0, side * 12}, {16, side * 8}, {46, side * 8}});
    d.line(0, -12, 0, 12);
    d.line(16, -8, 16, 8);
    flowArrow(d, -14, 0, 0);
    size(d, -15, -20, "24x12");
    size(d, 32, -16, "16x12");
    return s;
}

Sample tee()
{
    Sample s = sheet("Duct Tee Branch", "Branch with 45 degree entry and volume damper.",
                     "duct, tee, branch, damper, plan");
    Draft& d = s.draft;
    duct(d);
    d.line(-36, 10, 44, 10);
    d.lines({{-36, -10}, {-8, -10}, {0, -18}, {0, -44}});
    d.lines({{44, -10}, {12, -10}, {12, -44}});
    d.line(-8, -10, 12, -10);
    d.on("M-HVAC-DAMP", 6);
    d.line(0, -30, 12, -26);
    d.disc(6, -28, 1.2);
    flowArrow(d, -22, 0, 0);
    flowArrow(d, 6, -38, 270);
    return s;
}

Sample riser(bool supply, bool up)
{
    Sample s = sheet(std::string("Duct ") + (supply ? "Supply " : "Return ") + (up ? "Up" : "Down"),
                     std::string(supply ? "Supply" : "Return") + " duct in section, rising or dropping.",
                     "duct, riser, section");
    Draft& d = s.draft;
    duct(d);
    d.rect(-12, -8, 24, 16);
    if (supply && up)
        d.line(-12, -8, 12, 8);
    d.line(-12, 8, 12, -8);
    if (supply && !up)
        d.line(-12, -8, 12, 8);
    if (supply && up)
        d.fill(Fill::Solid, {{{-12, -8}, {12, -8}, {0, 0}}});
    if (!supply && up)
        d.fill(Fill::Solid, {{{-12, 8}, {12, -8}, {12, 8}}});
    size(d, 0, -16, "24x16");
    return s;
}

Sample flexible()
{
    Sample s = sheet("Duct Flexible", "Flexible runout 8 in. to a diffuser.", "duct, flexible, plan");
    Draft& d = s.draft;
    duct(d);
    for (int fold = 0; fold < 14; ++fold) {
        const double x = fold * 3.0, y = 10 * std::sin(fold * 0.3);
        d.arc(x, y, 4.2, 60, 120);
        d.arc(x, y, 4.2, 240, 300);
    }
    d.spline({{-2, 4}, {6, 7}, {16, 16}, {28, 8}, {42, -4}});
    d.spline({{-2, -4}, {6, -1}, {16, 8}, {28, 0}, {42, -12}});
    device(d);
    d.rect(43, -20, 24, 24);
    d.circle(55, -8, 4);
    return s;
}

Sample fan()
{
    Sample s = sheet("Fan Exhaust", "Inline centrifugal exhaust fan.", "fan, exhaust, equipment");
    Draft& d = s.draft;
    d.on("M-HVAC-EQPM", 3, {}, 35);
    d.rect(-14, -14, 28, 28);
    d.circle(0, 0, 10);
    d.circle(0, 0, 3);
    d.block("VANE", [&] { d.outline({{3, 0, -0.4}, {10, 0}}, false); });
    for (int vane = 0; vane < 8; ++vane)
        d.insert("VANE", 0, 0, vane * 45.0);
    duct(d);
    for (const double side : {-1.0, 1.0}) {
        d.line(side * 14, 7, side * 30, 7);
        d.line(side * 14, -7, side * 30, -7);
    }
    size(d, 0, 18, "EF-1");
    return s;
}

Sample unit(const std::string& name, const std::string& mark, double width, double depth)
{
    Sample s = sheet(name, name + " with coil, filter and fan sections.", "equipment, unit, plan", 32);
    Draft& d = s.draft;
    d.on("M-HVAC-EQPM", 3, {}, 35);
    d.rect(0, 0, width, depth);
    d.line(width * 0.3, 0, width * 0.3, depth);
    d.line(width * 0.5, 0, width * 0.5, depth);
    d.circle(width * 0.75, depth / 2, depth * 0.3);
    d.circle(width * 0.75, depth / 2, depth * 0.1);
    for (int fold = 0; fold < 6; ++fold)
        d.lines({{width * 0.34, depth * fold / 6},
                 {width * 0.46, depth * (fold + 0.5) / 6},
                 {width * 0.34, depth * (fold + 1) / 6}});
    d.on("M-HVAC-CLNC", 8, "DASHED");
    d.rect(0, -30, width, 30);
    size(d, width / 2, depth + 4, mark);
    d.on("M-ANNO-DIMS", 1);
    d.dimX(0, depth, width, depth, depth + 18);
    return s;
}

Sample damper(bool fire)
{
    Sample s = sheet(fire ? "Damper Fire" : "Damper Volume",
                     fire ? "Fire damper in a rated wall with access door." : "Manual volume damper.",
                     "damper, duct, fire", 16);
    Draft& d = s.draft;
    duct(d);
    d.line(-30, 8, 30, 8);
    d.line(-30, -8, 30, -8);
    d.on("M-HVAC-DAMP", 6, {}, 35);
    if (fire) {
        d.on("A-WALL-PATT", 8);
        d.fill(Fill::Brick, {rectangle(-4, 8, 8, 16)}, 0.5);
        d.fill(Fill::Brick, {rectangle(-4, -24, 8, 16)}, 0.5);
        d.on("M-HVAC-DAMP", 6);
        d.rect(-4, -8, 8, 16);
        d.lines({{-4, -8}, {4, 0}, {-4, 8}});
        d.text(8, 11, "FD");
    } else {
        d.line(-5, -5, 5, 5);
        d.disc(0, 0, 1.2);
        d.text(8, 11, "VD");
    }
    return s;
}
} // namespace

Library hvacSymbols()
{
    Library library{"HVAC Symbols", {}};
    auto& out = library.samples;
    out = {diffuser(12, false),
           diffuser(24, false),
           diffuser(10, true),
           diffuser(14, true),
           grille(false),
           grille(true),
           elbow(false),
           elbow(true),
           transition(),
           tee(),
           riser(true, true),
           riser(true, false),
           riser(false, true),
           riser(false, false),
           flexible(),
           fan(),
           unit("Air Handler", "AHU-1", 96, 48),
           unit("Rooftop Unit", "RTU-2", 120, 60),
           damper(true),
           damper(false)};
    for (std::size_t i = 3; i < out.size(); i += 7)
        out[i].preview = false;
    return library;
}

} // namespace zv::samples
