// Stairs, ramps and ladders: exactly one panel.
#include "Library.h"

#include <cmath>
#include <numbers>

namespace zv::samples {

namespace {
constexpr double kTread = 11;
constexpr double kRadian = std::numbers::pi / 180;

Sample sheet(const std::string& name, const std::string& comments, const std::string& keywords,
             double scale = 48)
{
    return {name, name, comments, "stair, " + keywords, Draft(Units::Inches, scale)};
}

void travel(Draft& d, const std::vector<Point2>& way, const std::string& word)
{
    d.on("A-STRS-TRVL", 1);
    d.lines(way);
    const Point2 tip = way.back(), before = way[way.size() - 2];
    const double length = std::hypot(tip.x - before.x, tip.y - before.y), size = d.noteHeight();
    const double dx = (tip.x - before.x) / length * size, dy = (tip.y - before.y) / length * size;
    d.solid({tip, {tip.x - dx - dy / 3, tip.y - dy + dx / 3}, {tip.x - dx + dy / 3, tip.y - dy - dx / 3}});
    d.circle(way.front().x, way.front().y, 1.5);
    d.text(way.front().x, way.front().y - 2 * d.noteHeight(), word, Align::Centre);
}

/// Treads from (x, y) on, each `kTread` up the sheet.
void flight(Draft& d, double x, double y, double width, int treads)
{
    d.on("A-STRS", 2, {}, 35);
    for (int i = 0; i <= treads; ++i)
        d.line(x, y + i * kTread, x + width, y + i * kTread);
    d.on("A-STRS-STRG", 3);
    d.rect(x - 1.5, y, 1.5, treads * kTread);
    d.rect(x + width, y, 1.5, treads * kTread);
    d.on("A-STRS-RAIL", 6);
    for (const double rail : {x + 2.5, x + width - 4})
        d.rect(rail, y - 6, 1.5, treads * kTread + 12);
}

Sample straight(int width, int risers)
{
    const std::string size = std::to_string(width);
    Sample s = sheet("Stair Straight " + size,
                     std::to_string(risers) + " risers at 7 in., treads 11 in., " + size + " in. clear.",
                     "straight, plan");
    Draft& d = s.draft;
    flight(d, 0, 0, width, risers - 1);
    travel(d, {{width / 2.0, -8}, {width / 2.0, (risers - 1) * kTread - 4}},
           "UP " + std::to_string(risers) + "R");
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, (risers - 1) * kTread, width, (risers - 1) * kTread, (risers - 1) * kTread + 24);
    d.dimY(width, 0, width, (risers - 1) * kTread, width + 30);
    return s;
}

Sample lShaped()
{
    Sample s =
        sheet("Stair L Shaped", "Two flights with a square landing, 16 risers in all.", "landing, plan");
    Draft& d = s.draft;
    flight(d, 0, 0, 42, 8);
    d.on("A-STRS", 2);
    d.rect(0, 88, 42, 42);
    for (int i = 0; i <= 7; ++i)
        d.line(42 + i * kTread, 88, 42 + i * kTread, 130);
    travel(d, {{21, -8}, {21, 109}, {115, 109}}, "UP 16R");
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, 130, 42, 130, 150);
    return s;
}

Sample uShaped(bool winders)
{
    Sample s = sheet(winders ? "Stair Winder" : "Stair U Shaped",
                     winders ? "Half turn with six winders about a newel."
                             : "Half turn with landing between floors.",
                     winders ? "winder, newel, plan" : "switchback, landing, plan");
    Draft& d = s.draft;
    flight(d, 0, 0, 42, 8);
    flight(d, 48, 0, 42, 8);
    d.on("A-STRS", 2);
    d.rect(0, 88, 90, 42);
    if (winders)
        for (int i = 1; i < 6; ++i) {
            const double angle = i * 30 * kRadian;
            const double reach = std::min(45 / std::abs(std::cos(angle) + 1e-9), 42 / std::sin(angle));
            d.line(45, 88, 45 + reach * std::cos(angle), 88 + reach * std::sin(angle));
        }
    travel(d, {{21, -8}, {21, 109}, {69, 109}, {69, 0}}, "UP");
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, 130, 90, 130, 150);
    return s;
}

Sample spiral(int diameter)
{
    Sample s = sheet("Stair Spiral " + std::to_string(diameter),
                     "Steel spiral stair on a 4 in. column, 30 degree treads.", "spiral, steel, plan", 32);
    Draft& d = s.draft;
    const double r = diameter / 2.0;
    d.on("A-STRS", 2, {}, 35);
    d.circle(0, 0, 2);
    d.arc(0, 0, r, 0, 330);
    for (int i = 0; i <= 11; ++i) {
        const double angle = i * 30 * kRadian;
        d.line(2 * std::cos(angle), 2 * std::sin(angle), r * std::cos(angle), r * std::sin(angle));
    }
    d.on("A-STRS-RAIL", 6);
    d.arc(0, 0, r - 1.5, 0, 330);
    d.on("A-STRS-TRVL", 1);
    d.arc(0, 0, r * 0.65, 5, 315);
    d.text(r * 0.65, -3 * d.noteHeight(), "UP", Align::Centre);
    d.on("A-ANNO-DIMS", 1);
    d.dimDiameter(0, 0, r, 45);
    return s;
}

Sample section(int risers, double rise)
{
    Sample s = sheet("Stair Section " + std::to_string(risers) + "R",
                     "Concrete stair in section, waist 6 in.", "concrete, section, waist", 32);
    Draft& d = s.draft;
    Outline shape;
    for (int i = 0; i < risers; ++i) {
        shape.push_back({i * kTread, i * rise});
        shape.push_back({i * kTread, (i + 1) * rise});
    }
    const double run = (risers - 1) * kTread, height = risers * rise,
                 drop = 6 / std::cos(std::atan2(rise, kTread));
    shape.push_back({run + 36, height});
    shape.push_back({run + 36, height - 6});
    shape.push_back({run + 4, height - 6});
    shape.push_back({run, height - rise - drop});
    shape.push_back({kTread, -drop + rise - rise});
    d.on("S-CONC-PATT", 8);
    d.fill(Fill::Concrete, {shape}, 0.6);
    d.on("S-CONC", 2, {}, 50);
    d.outline(shape);
    d.on("S-RBAR", 1, {}, 35);
    d.line(kTread, -drop + 1.5, run + 2, height - rise - drop + 2);
    d.on("A-STRS-RAIL", 6);
    d.line(-4, 36, run + 12, height + 34 - rise);
    for (int i = 0; i < risers; i += 3)
        d.line(i * kTread + 5, (i + 1) * rise, i * kTread + 5, (i + 1) * rise + 32);
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, 0, run, 0, -20, std::to_string(risers - 1) + " @ 11\"");
    d.dimY(0, 0, 0, height, -20);
    return s;
}

Sample ramp(double run, const std::string& slope)
{
    Sample s = sheet("Ramp " + slope, "Accessible ramp, slope " + slope + ", with level landings and rails.",
                     "ramp, accessible, slope, plan");
    Draft& d = s.draft;
    d.on("A-FLOR", 2, {}, 35);
    d.rect(0, 0, 60, 48);
    d.rect(60, 0, run, 48);
    d.rect(60 + run, 0, 60, 48);
    d.on("A-FLOR-RAIL", 6);
    for (const double y : {-1.5, 48.0})
        d.rect(48, y, run + 24, 1.5);
    travel(d, {{66, 24}, {54 + run, 24}}, "UP " + slope);
    d.on("A-ANNO-DIMS", 1);
    d.dimX(60, 48, 60 + run, 48, 70);
    d.dimY(120 + run, 0, 120 + run, 48, 144 + run);
    return s;
}

Sample treadDetail(const std::string& kind)
{
    Sample s =
        sheet("Tread " + kind, kind + " tread with nosing, at full detail.", "tread, nosing, detail", 4);
    Draft& d = s.draft;
    d.on("S-DETL", 2, {}, 50);
    if (kind == "Concrete Pan") {
        d.outline({{0, 0}, {0, 7}, {0.75, 7.3}, {0.75, 5.5}, {11, 5.5}, {11, 12.5}}, false, 0.1);
        d.on("S-CONC-PATT", 8);
        d.fill(Fill::Concrete, {{{0.8, 5.6}, {10.9, 5.6}, {10.9, 7.5}, {0.8, 7.5}}});
    } else if (kind == "Wood") {
        d.on("A-WOOD", 3, {}, 35);
        d.outline({{-1, 7}, {-1, 8.25, 0}, {11, 8.25}, {11, 7}});
        d.rect(0, 0, 0.75, 7);
        d.rect(11, 7.25, 0.75, 7);
        d.on("A-WOOD-PATT", 8);
        d.fill(Fill::Wood, {{{-1, 7}, {-1, 8.25}, {11, 8.25}, {11, 7}}});
    } else {
        d.on("S-GRTG", 3, {}, 35);
        d.rect(0, 7, 10.5, 1.5);
        for (int bar = 1; bar < 12; ++bar)
            d.line(bar * 0.875, 7, bar * 0.875, 8.5);
        d.rect(-0.75, 7, 0.75, 1.5);
        d.rect(1, 5.5, 8, 1.5);
    }
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, 8.5, 11, 8.5, 10.5);
    d.on("A-ANNO-NOTE", 7);
    d.leader({{1, 7.2}, {3, 3}, {4, 3}}, kind == "Wood"      ? "1 1/4 OAK"
                                         : kind == "Grating" ? "BAR GRATING"
                                                             : "2\" CONC FILL");
    return s;
}

Sample ladder(bool cage)
{
    Sample s = sheet(cage ? "Ladder Caged" : "Ladder Fixed", "Fixed steel ladder, rungs at 12 in.",
                     "ladder, steel, elevation", 32);
    Draft& d = s.draft;
    d.on("A-STRS-LADR", 2, {}, 35);
    for (const double x : {0.0, 18.0})
        d.rect(x, 0, 0.5, 162);
    for (int rung = 1; rung <= 12; ++rung)
        d.rect(0.5, rung * 12 - 0.375, 17.5, 0.75);
    if (cage) {
        d.on("A-STRS-CAGE", 6);
        for (int hoop = 0; hoop < 4; ++hoop)
            d.rect(-4.5, 84 + hoop * 24, 27.5, 2);
        for (const double x : {-4.5, 4.0, 13.0, 21.0})
            d.rect(x, 84, 2, 74);
    }
    d.on("A-ELEV-GRND", 7, {}, 70);
    d.line(-20, 0, 40, 0);
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, 162, 18.5, 162, 172);
    d.dimY(18, 12, 18, 24, 36);
    return s;
}

Sample railing()
{
    Sample s = sheet("Guard Rail", "Guard 42 in. high with pickets at 4 in. and a graspable rail.",
                     "guard, railing, picket, elevation", 16);
    Draft& d = s.draft;
    d.on("A-STRS-RAIL", 6, {}, 35);
    d.rect(0, 40.5, 72, 1.5);
    d.rect(0, 3, 72, 1.5);
    for (const double x : {0.0, 35.0, 70.0})
        d.rect(x, 0, 2, 42);
    for (int picket = 1; picket < 18; ++picket)
        if (picket != 9)
            d.rect(picket * 4.0, 4.5, 0.5, 36);
    d.on("A-FLOR", 2, {}, 50);
    d.line(-6, 0, 78, 0);
    d.on("A-ANNO-DIMS", 1);
    d.dimY(72, 0, 72, 42, 84);
    d.dimX(8, 4.5, 12, 4.5, -8, "4\" MAX");
    return s;
}

Sample elevator()
{
    Sample s = sheet("Elevator 2500", "Passenger elevator 2500 lb, hoistway, car and doors.",
                     "elevator, hoistway, plan");
    Draft& d = s.draft;
    d.on("A-WALL", 7, {}, 50);
    const Outline outer = rectangle(-8, -8, 116, 92), inner = rectangle(0, 0, 100, 76);
    d.on("A-WALL-PATT", 8);
    d.fill(Fill::Steel, {outer, inner});
    d.on("A-WALL", 7);
    d.outline(outer);
    d.outline(inner);
    d.on("A-FLOR-EVTR", 2, {}, 35);
    d.rect(8, 8, 84, 56);
    d.lines({{8, 8}, {92, 64}});
    d.lines({{8, 64}, {92, 8}});
    d.rect(29, 2, 42, 2);
    d.rect(4, 30, 4, 8);
    d.rect(92, 30, 4, 8);
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, 0, 100, 0, -28);
    return s;
}
} // namespace

Library stairs()
{
    Library library{"Stairs and Ramps", {}};
    auto& out = library.samples;
    for (const int width : {36, 44, 60})
        out.push_back(straight(width, width == 36 ? 14 : 12));
    out.push_back(lShaped());
    out.push_back(uShaped(false));
    out.push_back(uShaped(true));
    for (const int diameter : {48, 60, 72})
        out.push_back(spiral(diameter));
    out.push_back(section(6, 7));
    out.push_back(section(9, 7));
    out.push_back(ramp(144, "1-12"));
    out.push_back(ramp(240, "1-20"));
    for (const char* kind : {"Concrete Pan", "Wood", "Grating"})
        out.push_back(treadDetail(kind));
    out.push_back(ladder(false));
    out.push_back(ladder(true));
    out.push_back(railing());
    out.push_back(elevator());
    return library;
}

} // namespace zv::samples
