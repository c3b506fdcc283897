// Concrete in section: footings, walls, slabs, beams and columns with their bars.
#include "Library.h"

namespace zv::samples {

namespace {
Sample sheet(const std::string& name, const std::string& comments, const std::string& keywords,
             double scale = 16)
{
    return {name, name, comments, "concrete, section, " + keywords, Draft(Units::Inches, scale)};
}

void cast(Draft& d, const Outline& shape)
{
    d.on("S-CONC-PATT", 8);
    d.fill(Fill::Concrete, {shape}, 0.8);
    d.on("S-CONC", 2, {}, 50);
    d.outline(shape);
}

/// A bar cut across.
void bar(Draft& d, double x, double y, double size = 0.75)
{
    d.on("S-RBAR", 1, {}, 35);
    d.disc(x, y, size / 2);
}

void bars(Draft& d, const std::vector<Point2>& way)
{
    d.on("S-RBAR", 1, {}, 35);
    Outline line;
    for (const Point2& point : way)
        line.push_back({point.x, point.y});
    d.outline(line, false, 0.4);
}

void earth(Draft& d, double x, double y, double width, double depth)
{
    d.on("C-TOPO-PATT", 8);
    d.fill(Fill::Earth, {rectangle(x, y - depth, width, depth)}, 0.8);
    d.on("C-TOPO", 3, {}, 50);
    d.line(x, y, x + width, y);
}

void called(Draft& d, const std::vector<Point2>& way, const std::string& words)
{
    d.on("S-ANNO-NOTE", 7);
    d.leader(way, words);
}

Sample spread(int width, int depth)
{
    const double w = width, h = depth;
    Sample s = sheet("Footing " + std::to_string(width) + "x" + std::to_string(depth),
                     "Spread footing with pier, bars both ways, dowels.", "footing, pier, spread",
                     width > 50 ? 24 : 16);
    Draft& d = s.draft;
    const double pier = 8;
    cast(d, {{-w / 2, 0},
             {w / 2, 0},
             {w / 2, h},
             {pier, h},
             {pier, h + 24},
             {-pier, h + 24},
             {-pier, h},
             {-w / 2, h}});
    for (double x = -w / 2 + 4; x <= w / 2 - 4 + 0.01; x += (w - 8) / 6)
        bar(d, x, 4.2);
    bars(d, {{-w / 2 + 3, 3.3}, {w / 2 - 3, 3.3}});
    for (const double x : {-pier + 2.5, pier - 2.5})
        bars(d, {{x < 0 ? x - 8 : x + 8, 4.8}, {x, 4.8}, {x, h + 22}});
    for (int tie = 0; tie < 3; ++tie)
        bars(d, {{-pier + 2, h + 4 + tie * 8.0}, {pier - 2, h + 4 + tie * 8.0}});
    earth(d, -w / 2 - 12, 0, w + 24, 8);
    called(d, {{w / 2 - 6, 3.3}, {w / 2 + 10, h + 6}, {w / 2 + 14, h + 6}}, "#6 @ 8\" E.W.");
    d.on("S-ANNO-DIMS", 1);
    d.dimX(-w / 2, 0, w / 2, 0, -20);
    d.dimY(-w / 2, 0, -w / 2, h, -w / 2 - 20);
    return s;
}

Sample strip(bool keyed)
{
    Sample s = sheet(keyed ? "Strip Footing Keyed" : "Strip Footing",
                     "Continuous wall footing, 8 in. wall, slab on grade.", "footing, strip, wall, slab");
    Draft& d = s.draft;
    cast(d, {{-12, 0}, {12, 0}, {12, 12}, {-12, 12}});
    cast(d, keyed
                ? Outline{{-4, 12}, {-2, 12}, {-1.5, 10.5}, {1.5, 10.5}, {2, 12}, {4, 12}, {4, 48}, {-4, 48}}
                : rectangle(-4, 12, 8, 36));
    cast(d, rectangle(4.5, 38, 32, 4));
    d.on("S-GRAV-PATT", 8);
    d.fill(Fill::Gravel, {rectangle(4.5, 32, 32, 6)}, 0.6);
    d.on("S-VAPR", 5, "DASHED");
    d.line(4.5, 38, 36.5, 38);
    for (const double x : {-8.0, 0.0, 8.0})
        bar(d, x, 3.5);
    bars(d, {{-8, 4.2}, {0, 4.2}, {0, 46}});
    earth(d, -36, 36, 32, 8);
    d.on("S-JOIN", 5);
    d.rect(4, 38, 0.5, 4);
    called(d, {{4.25, 41}, {14, 50}, {18, 50}}, "1/2\" JOINT FILLER");
    d.on("S-ANNO-DIMS", 1);
    d.dimX(-12, 0, 12, 0, -8);
    d.dimX(-4, 48, 4, 48, 54);
    return s;
}

Sample retaining()
{
    Sample s = sheet("Retaining Wall", "Cantilever retaining wall with key, drain and weep hole.",
                     "retaining, wall, cantilever, drain", 32);
    Draft& d = s.draft;
    cast(d, {{-36, 0},
             {-2, 0},
             {-2, -12},
             {10, -12},
             {10, 0},
             {48, 0},
             {48, 16},
             {12, 16},
             {8, 120},
             {-2, 120},
             {-2, 16},
             {-36, 16}});
    bars(d, {{46, 12}, {8, 12}, {8.5, 14}, {5, 116}});
    bars(d, {{-34, 3}, {46, 3}});
    for (int i = 0; i < 8; ++i)
        bar(d, -31 + i * 10.0, 4.5, 1);
    earth(d, 10, 116, 60, 14);
    earth(d, -60, 24, 58, 8);
    d.on("S-GRAV-PATT", 8);
    d.fill(Fill::Gravel, {{{12, 16}, {26, 16}, {22, 100}, {9, 100}}}, 0.6);
    d.on("C-STRM", 5, {}, 35);
    d.circle(18, 22, 3);
    d.circle(18, 22, 2.6);
    called(d, {{18, 22}, {40, 40}, {46, 40}}, "4\" DRAIN");
    d.on("S-ANNO-DIMS", 1);
    d.dimX(-36, 0, 48, 0, -26);
    d.dimY(-36, 16, -2, 120, -66);
    return s;
}

Sample column(const std::string& name, int width, int depth, int along)
{
    Sample s = sheet(name, "Tied column, vertical bars and ties with hooks.", "column, tie", 8);
    Draft& d = s.draft;
    cast(d, rectangle(0, 0, width, depth));
    const double w = width - 4.5, h = depth - 4.5;
    d.on("S-RBAR", 1, {}, 35);
    d.outline({{2.75, 2.25},
               {w + 1.75, 2.25, 0.4142},
               {w + 2.25, 2.75},
               {w + 2.25, h + 1.75, 0.4142},
               {w + 1.75, h + 2.25},
               {2.75, h + 2.25, 0.4142},
               {2.25, h + 1.75},
               {2.25, 2.75, 0.4142}},
              true, 0.375);
    d.outline({{2.5, h + 1.9}, {5, h - 0.6}}, false, 0.375);
    for (int i = 0; i < along; ++i) {
        const double x = 3.1 + i * (width - 6.2) / (along - 1);
        bar(d, x, 3.1, 1);
        bar(d, x, depth - 3.1, 1);
    }
    if (depth > 14)
        for (const double x : {3.1, width - 3.1})
            bar(d, x, depth / 2.0, 1);
    called(d, {{width - 3.1, depth - 3.1}, {width + 4.0, depth + 3.0}, {width + 6.0, depth + 3.0}},
           "#8 VERT.");
    d.on("S-ANNO-DIMS", 1);
    d.dimX(0, 0, width, 0, -4);
    d.dimY(0, 0, 0, depth, -4);
    return s;
}

Sample roundColumn()
{
    Sample s = sheet("Column Round 24", "Spiral column 24 in., eight bars.", "column, spiral, round", 8);
    Draft& d = s.draft;
    d.on("S-CONC-PATT", 8);
    d.fill(Fill::Concrete, {ring(0, 0, 12)}, 0.8);
    d.on("S-CONC", 2, {}, 50);
    d.circle(0, 0, 12);
    d.on("S-RBAR", 1, {}, 35);
    d.outline(ring(0, 0, 10), true, 0.5);
    const double points[8][2] = {{9, 0},  {6.36, 6.36},   {0, 9},  {-6.36, 6.36},
                                 {-9, 0}, {-6.36, -6.36}, {0, -9}, {6.36, -6.36}};
    for (const auto& point : points)
        bar(d, point[0], point[1], 1.1);
    d.on("S-ANNO-DIMS", 1);
    d.dimDiameter(0, 0, 12, 45);
    return s;
}

Sample beam(bool tee)
{
    Sample s = sheet(tee ? "Beam T" : "Beam Rectangular", "Beam with stirrups, top and bottom bars.",
                     tee ? "beam, slab, stirrup" : "beam, stirrup", 12);
    Draft& d = s.draft;
    cast(d, tee ? Outline{{0, 0}, {14, 0}, {14, 18}, {36, 18}, {36, 24}, {-22, 24}, {-22, 18}, {0, 18}}
                : rectangle(0, 0, 14, 24));
    bars(d, {{4, 22.2}, {2.2, 22.2}, {2.2, 1.8}, {11.8, 1.8}, {11.8, 22.2}, {10, 22.2}});
    for (const double x : {3.2, 7.0, 10.8})
        bar(d, x, 2.8, 1);
    for (const double x : {3.2, 10.8})
        bar(d, x, 21.2, 0.8);
    if (tee)
        bars(d, {{-20, 22.8}, {34, 22.8}});
    called(d, {{11.8, 12}, {20, 8}, {22, 8}}, "#4 STIR. @ 6\"");
    called(d, {{10.8, 2.8}, {20, 2}, {22, 2}}, "(3) #8");
    d.on("S-ANNO-DIMS", 1);
    d.dimX(0, 0, 14, 0, -5);
    d.dimY(0, 0, tee ? -22 : 0, 24, tee ? -30 : -6);
    return s;
}

Sample slab(const std::string& kind)
{
    Sample s =
        sheet("Slab " + kind, kind + " in a 6 in. slab on grade over gravel.", "slab, joint, " + kind, 8);
    Draft& d = s.draft;
    cast(d, rectangle(-24, 0, 24, 6));
    cast(d, kind == "Thickened Edge" ? Outline{{0, 0}, {4, -10}, {16, -10}, {16, 6}, {0, 6}}
                                     : rectangle(0, 0, 24, 6));
    d.on("S-GRAV-PATT", 8);
    d.fill(Fill::Gravel, {rectangle(-24, -4, kind == "Thickened Edge" ? 24 : 48, 4)}, 0.6);
    if (kind == "Control Joint") {
        d.on("S-JOIN", 5, {}, 35);
        d.solid({{-0.1, 6}, {0.1, 6}, {0.1, 4.5}, {-0.1, 4.5}});
        d.spline({{0, 4.5}, {0.3, 3.5}, {-0.3, 2.5}, {0.2, 1.2}, {0, 0}});
        called(d, {{0, 5}, {6, 11}, {8, 11}}, "SAW CUT 1 1/2\"");
    } else if (kind == "Expansion Joint") {
        d.on("S-JOIN", 5, {}, 35);
        d.rect(-0.25, 0, 0.5, 5.5);
        d.solid({{-0.25, 5.5}, {0.25, 5.5}, {0.25, 6}, {-0.25, 6}});
        called(d, {{0, 5.8}, {6, 11}, {8, 11}}, "SEALANT");
    } else if (kind == "Doweled Joint") {
        d.on("S-JOIN", 5);
        d.line(0, 0, 0, 6);
        d.on("S-RBAR", 1, {}, 35);
        d.rect(-9, 2.6, 18, 0.75);
        called(d, {{6, 3}, {10, 11}, {12, 11}}, "3/4%%c x 18\" SMOOTH DOWEL");
    } else {
        bar(d, 7, -7.5);
        bar(d, 13, -7.5);
        called(d, {{13, -7.5}, {20, -10}, {22, -10}}, "(2) #5 CONT.");
    }
    d.on("S-WWF", 1, "DASHED");
    d.line(-22, 4, -1, 4);
    d.on("S-ANNO-DIMS", 1);
    d.dimY(-24, 0, -24, 6, -30);
    return s;
}

Sample pileCap(int piles)
{
    Sample s = sheet("Pile Cap " + std::to_string(piles),
                     "Pile cap on " + std::to_string(piles) + " piles 14 in., plan.", "pile, cap, plan", 32);
    Draft& d = s.draft;
    std::vector<Point2> at{{-21, -21}, {21, -21}, {-21, 21}, {21, 21}};
    if (piles == 3)
        at = {{-21, -12}, {21, -12}, {0, 24}};
    const Outline cap = piles == 3 ? Outline{{-38, -28}, {38, -28}, {38, -2}, {13, 40}, {-13, 40}, {-38, -2}}
                                   : rectangle(-38, -38, 76, 76);
    d.on("S-CONC", 2, {}, 50);
    d.outline(cap);
    d.rect(-9, -9, 18, 18);
    d.on("S-PILE", 3, "HIDDEN");
    for (const Point2& pile : at)
        d.circle(pile.x, pile.y, 7);
    d.on("S-GRID-CNTR", 1, "CENTER");
    d.line(-48, 0, 48, 0);
    d.line(0, -48, 0, 50);
    d.on("S-ANNO-DIMS", 1);
    d.dimX(-21, at[0].y, 21, at[1].y, -56);
    return s;
}
} // namespace

Library concreteDetails()
{
    Library library{"Concrete Details", {}};
    auto& out = library.samples;
    out = {spread(36, 12), spread(48, 14), spread(60, 18), spread(72, 20),
           strip(false),   strip(true),    retaining()};
    out.push_back(column("Column 12x12", 12, 12, 2));
    out.push_back(column("Column 16x16", 16, 16, 3));
    out.push_back(column("Column 12x24", 24, 12, 4));
    out.insert(out.end(), {roundColumn(), beam(false), beam(true)});
    for (const char* kind : {"Control Joint", "Expansion Joint", "Doweled Joint", "Thickened Edge"})
        out.push_back(slab(kind));
    out.push_back(pileCap(3));
    out.push_back(pileCap(4));
    return library;
}

} // namespace zv::samples
