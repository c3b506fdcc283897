// Rolled steel in section, with the sizes of the mills' tables, and some connections.
#include "Library.h"

#include <algorithm>
#include <cmath>

namespace zv::samples {

namespace {
struct Shape {
    const char* name;
    double depth, width, flange, web;
};

constexpr Shape kWide[] = {
    {"W6x15", 5.99, 5.99, 0.26, 0.23},     {"W6x25", 6.38, 6.08, 0.455, 0.32},
    {"W8x18", 8.14, 5.25, 0.33, 0.23},     {"W8x31", 8.00, 8.00, 0.435, 0.285},
    {"W8x48", 8.50, 8.11, 0.685, 0.40},    {"W10x22", 10.17, 5.75, 0.36, 0.24},
    {"W10x33", 9.73, 7.96, 0.435, 0.29},   {"W10x49", 9.98, 10.0, 0.56, 0.34},
    {"W12x26", 12.22, 6.49, 0.38, 0.23},   {"W12x50", 12.19, 8.08, 0.64, 0.37},
    {"W12x65", 12.12, 12.0, 0.605, 0.39},  {"W14x22", 13.74, 5.0, 0.335, 0.23},
    {"W14x90", 14.02, 14.52, 0.71, 0.44},  {"W16x31", 15.88, 5.53, 0.44, 0.275},
    {"W18x50", 17.99, 7.495, 0.57, 0.355}, {"W21x44", 20.66, 6.5, 0.45, 0.35},
    {"W24x76", 23.92, 8.99, 0.68, 0.44},   {"W30x99", 29.65, 10.45, 0.67, 0.52},
};
constexpr Shape kChannels[] = {
    {"C6x8.2", 6, 1.92, 0.343, 0.2},    {"C8x11.5", 8, 2.26, 0.39, 0.22},
    {"C10x15.3", 10, 2.6, 0.436, 0.24}, {"C12x20.7", 12, 2.94, 0.501, 0.282},
    {"C15x33.9", 15, 3.4, 0.65, 0.4},   {"MC12x31", 12, 3.67, 0.7, 0.37},
};
constexpr Shape kAngles[] = {
    {"L2x2x1-4", 2, 2, 0.25, 0.25},      {"L3x2x1-4", 3, 2, 0.25, 0.25},   {"L3x3x1-4", 3, 3, 0.25, 0.25},
    {"L4x3x5-16", 4, 3, 0.3125, 0.3125}, {"L4x4x3-8", 4, 4, 0.375, 0.375}, {"L5x3x3-8", 5, 3, 0.375, 0.375},
    {"L6x4x1-2", 6, 4, 0.5, 0.5},        {"L6x6x5-8", 6, 6, 0.625, 0.625},
};
constexpr Shape kTubes[] = {
    {"HSS3x3x1-4", 3, 3, 0.25, 0.25},   {"HSS4x4x1-4", 4, 4, 0.25, 0.25},   {"HSS6x4x1-4", 6, 4, 0.25, 0.25},
    {"HSS6x6x3-8", 6, 6, 0.375, 0.375}, {"HSS8x4x3-8", 8, 4, 0.375, 0.375}, {"HSS8x8x1-2", 8, 8, 0.5, 0.5},
};
constexpr Shape kPipes[] = {
    {"Pipe 3 STD", 3.5, 3.5, 0.216, 0.216},
    {"Pipe 4 STD", 4.5, 4.5, 0.237, 0.237},
    {"Pipe 6 STD", 6.625, 6.625, 0.28, 0.28},
};
constexpr Shape kTees[] = {{"WT6x25", 6.095, 8.08, 0.64, 0.37}, {"WT9x25", 8.995, 7.495, 0.57, 0.355}};

const double kQuarter = std::tan(0.39269908169872414); ///< Bulge of a quarter turn.

/// One inch of the sheet stands for this much, so that the section fills a detail's frame.
double scaleFor(double size)
{
    for (const double scale : {1.0, 2.0, 4.0, 8.0, 12.0})
        if (size / scale <= 3.2)
            return scale;
    return 16;
}

Sample section(const Shape& shape, const std::string& kind, const std::string& word)
{
    Sample s{shape.name, kind + " " + shape.name,
             kind + " " + shape.name + ", cross section with depth, width and thickness.",
             "steel, section, structural, " + word,
             Draft(Units::Inches, scaleFor(std::max(shape.depth, shape.width)))};
    return s;
}

void drawn(Draft& d, const std::vector<Outline>& loops)
{
    d.on("S-STL-PATT", 8);
    d.fill(Fill::Steel, loops);
    d.on("S-STL", 2, {}, 50);
    for (const Outline& loop : loops)
        d.outline(loop);
}

void axes(Draft& d, double halfWidth, double halfDepth)
{
    const double past = d.paper(0.25);
    d.on("S-GRID-CNTR", 1, "CENTER");
    d.line(-halfWidth - past, 0, halfWidth + past, 0);
    d.line(0, -halfDepth - past, 0, halfDepth + past);
}

void sizes(Draft& d, const Shape& shape, double left, double bottom)
{
    const double gap = d.noteHeight() * 4;
    d.on("S-ANNO-DIMS", 3);
    d.dimX(left, bottom, left + shape.width, bottom, bottom - gap);
    d.dimY(left, bottom, left, bottom + shape.depth, left - gap);
    d.on("S-ANNO-TEXT", 7);
    d.text(left + shape.width / 2, bottom - gap * 2, shape.name, Align::Centre, 0.15);
}

Outline wideFlange(const Shape& s)
{
    const double w = s.width / 2, h = s.depth / 2, t = s.web / 2, f = h - s.flange, r = s.flange * 0.8;
    return {{-w, h},
            {-w, f},
            {-t - r, f, -kQuarter},
            {-t, f - r},
            {-t, -f + r, -kQuarter},
            {-t - r, -f},
            {-w, -f},
            {-w, -h},
            {w, -h},
            {w, -f},
            {t + r, -f, -kQuarter},
            {t, -f + r},
            {t, f - r, -kQuarter},
            {t + r, f},
            {w, f},
            {w, h}};
}

Sample wide(const Shape& shape)
{
    Sample s = section(shape, "Wide flange", "beam, column, wide flange");
    drawn(s.draft, {wideFlange(shape)});
    axes(s.draft, shape.width / 2, shape.depth / 2);
    sizes(s.draft, shape, -shape.width / 2, -shape.depth / 2);
    return s;
}

Sample channel(const Shape& shape)
{
    Sample s = section(shape, "Channel", "channel, stringer");
    const double w = shape.width, h = shape.depth / 2, slope = (w - shape.web) / 12, t = shape.flange;
    const double r = shape.web;
    // The inner faces of the flanges fall by one in six.
    drawn(s.draft, {{{0, -h},
                     {w, -h},
                     {w, -h + t - slope - r * 0.5},
                     {w - r * 0.5, -h + t - slope},
                     {shape.web + r, -h + t + slope, -kQuarter},
                     {shape.web, -h + t + slope + r},
                     {shape.web, h - t - slope - r, -kQuarter},
                     {shape.web + r, h - t - slope},
                     {w - r * 0.5, h - t + slope},
                     {w, h - t + slope + r * 0.5},
                     {w, h},
                     {0, h}}});
    axes(s.draft, w, h);
    sizes(s.draft, shape, 0, -h);
    return s;
}

Sample angle(const Shape& shape)
{
    Sample s = section(shape, "Angle", "angle, lintel, clip");
    const double w = shape.width, h = shape.depth, t = shape.web, r = t * 0.6;
    drawn(s.draft, {{{0, 0},
                     {w, 0},
                     {w, t - r, kQuarter},
                     {w - r, t},
                     {t + r, t, -kQuarter},
                     {t, t + r},
                     {t, h - r, kQuarter},
                     {t - r, h},
                     {0, h}}});
    sizes(s.draft, shape, 0, 0);
    s.draft.on("S-ANNO-DIMS", 3);
    s.draft.dimX(0, h, t, h, h + s.draft.noteHeight() * 3);
    return s;
}

Outline rounded(double w, double h, double r)
{
    return {{-w + r, -h}, {w - r, -h, kQuarter}, {w, -h + r}, {w, h - r, kQuarter},
            {w - r, h},   {-w + r, h, kQuarter}, {-w, h - r}, {-w, -h + r, kQuarter}};
}

Sample tube(const Shape& shape)
{
    Sample s = section(shape, "Tube", "tube, hollow, column, HSS");
    const double w = shape.width / 2, h = shape.depth / 2, t = shape.web;
    drawn(s.draft, {rounded(w, h, t * 2), rounded(w - t, h - t, t)});
    axes(s.draft, w, h);
    sizes(s.draft, shape, -w, -h);
    return s;
}

Sample pipe(const Shape& shape)
{
    Sample s = section(shape, "Pipe", "pipe, round, column");
    const double r = shape.width / 2;
    drawn(s.draft, {ring(0, 0, r), ring(0, 0, r - shape.web)});
    axes(s.draft, r, r);
    s.draft.on("S-ANNO-DIMS", 3);
    s.draft.dimDiameter(0, 0, r, 40);
    s.draft.on("S-ANNO-TEXT", 7);
    s.draft.text(0, -r - s.draft.noteHeight() * 7, shape.name, Align::Centre, 0.15);
    return s;
}

Sample tee(const Shape& shape)
{
    Sample s = section(shape, "Structural tee", "tee, chord");
    const double w = shape.width / 2, h = shape.depth, t = shape.web / 2, f = shape.flange, r = f * 0.8;
    drawn(s.draft, {{{-t, 0},
                     {t, 0},
                     {t, h - f - r, -kQuarter},
                     {t + r, h - f},
                     {w, h - f},
                     {w, h},
                     {-w, h},
                     {-w, h - f},
                     {-t - r, h - f, -kQuarter},
                     {-t, h - f - r}}});
    axes(s.draft, w, h);
    sizes(s.draft, shape, -w, 0);
    return s;
}

Sample connection(const std::string& name, const std::string& comments, const std::string& keywords,
                  double scale)
{
    return {name, name, comments, "steel, connection, " + keywords, Draft(Units::Inches, scale)};
}

/// A bolt from the front: hexagon, washer, centre lines.
void boltHead(Draft& d, double x, double y, double size)
{
    d.block("BOLT", [&] {
        Outline hexagon;
        for (int corner = 0; corner < 6; ++corner)
            hexagon.push_back({0.85 * size * std::cos(corner * 1.0471975512),
                               0.85 * size * std::sin(corner * 1.0471975512)});
        d.outline(hexagon);
        d.circle(0, 0, size);
        d.circle(0, 0, size / 2);
    });
    d.on("S-BOLT", 6);
    d.insert("BOLT", x, y);
}

/// A beam from the side, cut off at its far end.
void beamSide(Draft& d, double x, double y, double length, double depth)
{
    d.on("S-STL", 2, {}, 50);
    d.lines({{x + length, y}, {x, y}, {x, y + depth}, {x + length, y + depth}});
    d.on("S-STL-THIN", 3);
    d.line(x, y + 0.57, x + length, y + 0.57);
    d.line(x, y + depth - 0.57, x + length, y + depth - 0.57);
    d.on("S-ANNO-BRKL", 8);
    const double mid = y + depth / 2;
    d.lines({{x + length, y - 2},
             {x + length, mid - 1},
             {x + length + 1, mid - 0.5},
             {x + length - 1, mid + 0.5},
             {x + length, mid + 1},
             {x + length, y + depth + 2}});
}

void columnSide(Draft& d, double width, double from, double to)
{
    d.on("S-STL", 2, {}, 50);
    for (const double x : {-width / 2, width / 2})
        d.line(x, from, x, to);
    d.on("S-STL-THIN", 3);
    for (const double x : {-width / 2 + 0.56, width / 2 - 0.56})
        d.line(x, from, x, to);
}

Sample shearTab()
{
    Sample s = connection("Shear Tab", "W18 beam on a W10 column by a shear plate with four 3/4 in. bolts.",
                          "shear, tab, bolt, simple", 8);
    Draft& d = s.draft;
    columnSide(d, 10, -10, 30);
    beamSide(d, 5.5, 0, 24, 18);
    d.on("S-STL-PLAT", 4, {}, 35);
    d.rect(5, 3, 4.5, 12);
    for (const double y : {4.5, 7.5, 10.5, 13.5})
        boltHead(d, 8, y, 0.8);
    d.on("S-ANNO-NOTE", 7);
    d.leader({{8, 13.5}, {14, 24}, {17, 24}}, "(4) 3/4%%c A325");
    d.leader({{5, 5}, {12, -6}, {15, -6}}, "PL 3/8 x 4 1/2 x 1'-0\"");
    d.on("S-ANNO-DIMS", 1);
    d.dimY(8, 4.5, 8, 13.5, -10, "3 @ 3\"");
    return s;
}

Sample basePlate()
{
    Sample s =
        connection("Base Plate", "W10x49 column on a 16 x 16 x 1 plate, four anchor rods, 1 1/2 in. grout.",
                   "base, plate, anchor, grout, column", 8);
    Draft& d = s.draft;
    columnSide(d, 10, 1, 26);
    d.on("S-STL-PLAT", 4, {}, 50);
    d.rect(-8, 0, 16, 1);
    d.on("S-CONC-PATT", 8);
    d.fill(Fill::Gravel, {{{-8, 0}, {8, 0}, {9.5, -1.5}, {-9.5, -1.5}}}, 0.4);
    d.fill(Fill::Concrete, {rectangle(-12, -18, 24, 16.5)}, 0.6);
    d.on("S-CONC", 2);
    d.lines({{-8, 0}, {-9.5, -1.5}, {9.5, -1.5}, {8, 0}});
    d.lines({{-12, -18}, {-12, -1.5}, {12, -1.5}, {12, -18}});
    d.on("S-BOLT", 6, {}, 35);
    for (const double x : {-6.5, 6.5}) {
        d.lines({{x - 0.4, 3.5}, {x - 0.4, -14}});
        d.lines({{x + 0.4, 3.5}, {x + 0.4, -14}});
        d.rect(x - 0.4, 3.5, 0.8, 0.1);
        d.rect(x - 1.1, 1, 2.2, 0.9);
        d.rect(x - 1.1, -14.8, 2.2, 0.9);
    }
    d.on("S-ANNO-NOTE", 7);
    d.leader({{8, 0.5}, {14, 6}, {16, 6}}, "PL 1 x 16 x 1'-4\"");
    d.leader({{6.9, -10}, {14, -6}, {16, -6}}, "(4) 3/4%%c ANCHOR RODS");
    d.leader({{9, -1}, {14, 0}, {16, 0}}, "1 1/2\" GROUT");
    d.on("S-ANNO-DIMS", 1);
    d.dimX(-6.5, 26, 6.5, 26, 30);
    return s;
}

Sample moment()
{
    Sample s =
        connection("Moment Connection", "Welded flange plates at a W14 column with stiffeners, bolted web.",
                   "moment, weld, stiffener", 10);
    Draft& d = s.draft;
    columnSide(d, 14, -14, 32);
    beamSide(d, 7.5, 0, 28, 18);
    d.on("S-STL-PLAT", 4, {}, 35);
    d.rect(7, 18, 14, 0.75);
    d.rect(7, -0.75, 14, 0.75);
    d.rect(-6.4, 18, 12.8, 0.75);
    d.rect(-6.4, -0.75, 12.8, 0.75);
    d.rect(7, 3, 4.5, 12);
    for (const double y : {4.5, 7.5, 10.5, 13.5})
        boltHead(d, 10, y, 0.8);
    d.on("S-WELD", 6);
    for (const double y : {18.75, -0.75})
        d.solid({{7, y}, {7.8, y}, {7, y > 0 ? y + 0.8 : y - 0.8}});
    d.on("S-ANNO-NOTE", 7);
    d.leader({{7, 19.2}, {14, 27}, {18, 27}}, "CJP, TYP.");
    d.leader({{-4, 18.4}, {-14, 24}, {-16, 24}}, "STIFFENER 3/4\"");
    return s;
}

Sample splice()
{
    Sample s = connection("Column Splice", "Column splice with flange plates and fill, erection bolts.",
                          "column, splice", 10);
    Draft& d = s.draft;
    columnSide(d, 12, -26, 0);
    columnSide(d, 10, 0.1, 26);
    d.on("S-STL", 2);
    d.line(-6, 0, 6, 0);
    d.on("S-STL-PLAT", 4, {}, 35);
    for (const double side : {-1.0, 1.0}) {
        d.rect(side > 0 ? 6 : -6.75, -12, 0.75, 24);
        d.rect(side > 0 ? 5 : -6, 0, 1, 12);
        d.on("S-BOLT", 6);
        for (const double y : {-9.0, -6.0, -3.0, 3.0, 6.0, 9.0})
            d.rect(side > 0 ? 4 : -7.6, y - 0.375, 3.6, 0.75);
        d.on("S-STL-PLAT", 4);
    }
    d.on("S-ANNO-NOTE", 7);
    d.leader({{6.75, 8}, {14, 14}, {16, 14}}, "PL 3/4 x 10 x 2'-0\"");
    d.leader({{5.5, 4}, {14, 4}, {16, 4}}, "FILL PL 1\"");
    d.on("S-ANNO-DIMS", 1);
    d.dimY(-6.75, -12, -6.75, 12, -14);
    return s;
}
} // namespace

Library steelSections()
{
    Library library{"Steel Sections", {}};
    auto& out = library.samples;
    for (const Shape& shape : kWide)
        out.push_back(wide(shape));
    for (const Shape& shape : kChannels)
        out.push_back(channel(shape));
    for (const Shape& shape : kAngles)
        out.push_back(angle(shape));
    for (const Shape& shape : kTubes)
        out.push_back(tube(shape));
    for (const Shape& shape : kPipes)
        out.push_back(pipe(shape));
    for (const Shape& shape : kTees)
        out.push_back(tee(shape));
    out.insert(out.end(), {shearTab(), basePlate(), moment(), splice()});
    return library;
}

} // namespace zv::samples
