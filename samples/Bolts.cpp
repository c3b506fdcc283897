// Bolts, nuts, anchors in millimetres, and welding symbols: one more than a panel holds.
#include "Library.h"

#include <cmath>

namespace zv::samples {

namespace {
struct Thread {
    int size;
    double head, across, nut; ///< Head height, width over flats, nut height.
};
constexpr Thread kThreads[] = {
    {12, 7.5, 18, 10.8}, {16, 10, 24, 14.8}, {20, 12.5, 30, 18}, {24, 15, 36, 21.5}, {30, 18.7, 46, 25.6}};

Sample sheet(const std::string& name, const std::string& comments, const std::string& keywords, double scale)
{
    return {name, name, comments, keywords, Draft(Units::Millimetres, scale)};
}

/// A hexagon seen from the side, its corners rounded off by arcs, lying along x from `x`.
void hexagonSide(Draft& d, double x, double height, double across, bool roundedAtLeft)
{
    const double corner = across / 0.866 / 2, quarter = corner / 2, face = roundedAtLeft ? x : x + height;
    const double far = roundedAtLeft ? x + height : x, in = roundedAtLeft ? 1 : -1, drop = corner * 0.08;
    d.lines({{face + in * drop * 2, -corner}, {far, -corner}, {far, corner}, {face + in * drop * 2, corner}});
    for (const double y : {-quarter, quarter})
        d.line(face + in * drop * 2, y, far, y);
    const double bulge = roundedAtLeft ? 0.3 : -0.3;
    d.outline({{face + in * drop * 2, quarter, bulge}, {face + in * drop * 2, -quarter}}, false);
    d.outline({{face + in * drop * 2, corner, bulge}, {face + in * drop * 2, quarter}}, false);
    d.outline({{face + in * drop * 2, -quarter, bulge}, {face + in * drop * 2, -corner}}, false);
    d.line(face + in * drop * 0.6, -corner * 0.7, face + in * drop * 0.6, corner * 0.7);
}

void shank(Draft& d, double from, double to, double threadFrom, double size)
{
    const double r = size / 2, chamfer = size * 0.08;
    d.on("M-FAST", 2, {}, 35);
    d.lines(
        {{from, r}, {to - chamfer, r}, {to, r - chamfer}, {to, chamfer - r}, {to - chamfer, -r}, {from, -r}});
    d.line(threadFrom, -r, threadFrom, r);
    d.line(to - chamfer, -r, to - chamfer, r);
    d.on("M-FAST-THRD", 8);
    for (const double y : {r * 0.84, -r * 0.84})
        d.line(threadFrom, y, to - chamfer, y);
}

void centreLine(Draft& d, double from, double to)
{
    d.on("M-CNTR", 1, "CENTER");
    d.line(from - d.paper(4), 0, to + d.paper(4), 0);
}

Sample bolt(const Thread& t)
{
    const std::string size = "M" + std::to_string(t.size);
    const double length = t.size * 5;
    Sample s = sheet("Bolt " + size,
                     "Hexagon bolt " + size + " x " + std::to_string(t.size * 5) + ", partly threaded.",
                     "bolt, hexagon, fastener, metric", t.size / 12.0);
    Draft& d = s.draft;
    d.on("M-FAST", 2, {}, 35);
    hexagonSide(d, -t.head, t.head, t.across, true);
    shank(d, 0, length, length - t.size * 2 - 6, t.size);
    centreLine(d, -t.head, length);
    d.on("M-DIMS", 3);
    d.dimX(0, -t.size / 2.0, length, -t.size / 2.0, -t.across);
    d.dimX(-t.head, t.across / 2, 0, t.across / 2, t.across);
    d.text(length / 2, t.across * 0.75, size, Align::Centre, 5);
    return s;
}

Sample nut(const Thread& t)
{
    const std::string size = "M" + std::to_string(t.size);
    Sample s = sheet("Nut " + size, "Hexagon nut " + size + ", front and side.",
                     "nut, hexagon, fastener, metric", t.size / 12.0);
    Draft& d = s.draft;
    const double corner = t.across / 0.866 / 2;
    Outline hexagon;
    for (int i = 0; i < 6; ++i)
        hexagon.push_back({corner * std::cos((i * 60 + 30) * 0.0174532925),
                           corner * std::sin((i * 60 + 30) * 0.0174532925)});
    d.on("M-FAST", 2, {}, 35);
    d.outline(hexagon);
    d.circle(0, 0, t.across / 2 * 0.97);
    d.circle(0, 0, t.size * 0.42);
    d.on("M-FAST-THRD", 8);
    d.arc(0, 0, t.size / 2.0, 20, 290);
    d.on("M-FAST", 2);
    hexagonSide(d, corner + t.size, t.nut, t.across, false);
    centreLine(d, -corner, corner + t.size + t.nut);
    d.on("M-DIMS", 3);
    d.dimY(-corner * 0.866, -t.across / 2, -corner * 0.866, t.across / 2, -corner - d.paper(12),
           "AF " + std::to_string(static_cast<int>(t.across)));
    d.dimX(corner + t.size, -corner, corner + t.size + t.nut, -corner, -corner - d.paper(12));
    return s;
}

Sample washer(int size, double outer, double thick)
{
    const std::string name = "M" + std::to_string(size);
    Sample s = sheet("Washer " + name, "Plain washer for " + name + ", front and section.",
                     "washer, plain, fastener, metric", size / 12.0);
    Draft& d = s.draft;
    d.on("M-FAST", 2, {}, 35);
    d.circle(0, 0, outer / 2);
    d.circle(0, 0, size / 2.0 + 0.5);
    const double x = outer * 0.8, hole = size / 2.0 + 0.5;
    d.rect(x, -outer / 2, thick, outer);
    d.line(x, hole, x + thick, hole);
    d.line(x, -hole, x + thick, -hole);
    d.on("M-PATT", 8);
    d.fill(Fill::Steel, {rectangle(x, hole, thick, outer / 2 - hole)}, 0.6);
    d.fill(Fill::Steel, {rectangle(x, -outer / 2, thick, outer / 2 - hole)}, 0.6);
    centreLine(d, -outer / 2, x + thick);
    d.on("M-DIMS", 3);
    d.dimDiameter(0, 0, outer / 2, 130);
    return s;
}

Sample anchor(const std::string& kind)
{
    Sample s = sheet("Anchor " + kind, kind + " anchor in concrete.", "anchor, concrete, " + kind, 4);
    Draft& d = s.draft;
    const Outline block = rectangle(0, -70, 150, 140);
    d.on("S-CONC-PATT", 8);
    d.fill(Fill::Concrete, {block, rectangle(0, -11, kind == "Hook" ? 120 : 112, 22)}, 0.7);
    d.on("S-CONC", 7, {}, 50);
    d.line(0, -70, 0, 70);
    shank(d, -45, kind == "Hook" ? 110 : 105, -44, 20);
    d.on("M-FAST", 2, {}, 35);
    if (kind == "Hook")
        d.outline({{110, 10, -0.41421356}, {130, -10}, {130, -45}, {110, -45}, {110, -10}}, false);
    if (kind == "Expansion")
        d.lines({{70, 10}, {100, 14}, {105, 10}, {105, -10}, {100, -14}, {70, -10}});
    if (kind == "Headed")
        hexagonSide(d, 92, 12.5, 30, false);
    if (kind == "Adhesive") {
        d.on("M-ADHE", 5);
        d.rect(0, 10, 112, 2);
        d.rect(0, -12, 112, 2);
    }
    d.on("M-FAST", 2);
    d.rect(-12, -40, 12, 80);
    hexagonSide(d, -30, 18, 30, true);
    centreLine(d, -45, 130);
    d.on("M-DIMS", 3);
    d.dimX(0, 70, 105, 70, 90);
    return s;
}

Sample weld(const std::string& kind, const std::string& words)
{
    Sample s = sheet("Weld " + kind, words, "weld, symbol, " + kind, 1);
    Draft& d = s.draft;
    d.on("S-WELD-SYMB", 6, {}, 35);
    d.lines({{0, -20}, {18, 0}, {62, 0}});
    d.solid({{0, -20}, {3.2, -14}, {5, -16}});
    d.lines({{70, 6}, {62, 0}, {70, -6}});
    d.text(72, -1.25, "E70XX");
    if (kind == "Fillet")
        d.lines({{38, 0}, {38, -6}, {44, 0}});
    if (kind == "Fillet Both Sides") {
        d.lines({{38, 0}, {38, -6}, {44, 0}});
        d.lines({{38, 0}, {38, 6}, {44, 0}});
    }
    if (kind == "Groove V")
        d.lines({{36, -6}, {40, 0}, {44, -6}});
    if (kind == "Bevel Backing") {
        d.lines({{38, 6}, {38, 0}, {43, 6}});
        d.rect(36, -4, 8, 4);
    }
    if (kind == "All Around Field") {
        d.circle(18, 0, 2.5);
        d.lines({{18, 0}, {18, 14}, {26, 11}, {18, 8}});
        d.lines({{38, 0}, {38, -6}, {44, 0}});
    }
    d.text(32, kind == "Bevel Backing" ? 2 : -5, "6", Align::Right);
    d.on("S-STL", 2, {}, 50);
    d.rect(-30, -26, 60, 6);
    d.rect(-6, -20, 6, 26);
    return s;
}
} // namespace

Library boltsAndWelds()
{
    Library library{"Bolts and Welds", {}};
    auto& out = library.samples;
    for (const Thread& thread : kThreads)
        out.push_back(bolt(thread));
    for (const Thread& thread : kThreads)
        out.push_back(nut(thread));
    out.push_back(washer(16, 30, 3));
    out.push_back(washer(20, 37, 3));
    for (const char* kind : {"Hook", "Expansion", "Headed", "Adhesive"})
        out.push_back(anchor(kind));
    out.push_back(weld("Fillet", "Fillet weld on the arrow side."));
    out.push_back(weld("Fillet Both Sides", "Fillet weld on both sides."));
    out.push_back(weld("Groove V", "V groove weld on the arrow side."));
    out.push_back(weld("Bevel Backing", "Bevel groove with backing bar."));
    out.push_back(weld("All Around Field", "Fillet all around, made in the field."));
    return library;
}

} // namespace zv::samples
