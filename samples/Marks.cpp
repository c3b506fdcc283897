// Section marks, north arrows, scale bars and title blocks.
#include "Library.h"

#include <cmath>

namespace zv::samples {

namespace {
Sample mark(const std::string& name, const std::string& comments, const std::string& keywords)
{
    Sample s{name, name, comments, "mark, symbol, " + keywords, Draft(Units::Inches, 1)};
    s.draft.on("G-ANNO-SYMB", 2, {}, 35);
    return s;
}

/// A point of a unit circle, clockwise from the top in degrees.
Point2 compass(double radius, double bearing)
{
    return {radius * std::sin(bearing * 0.0174532925), radius * std::cos(bearing * 0.0174532925)};
}

Sample section(bool wall)
{
    Sample s =
        mark(wall ? "Section Wall" : "Section Building",
             wall ? "Wall section mark with sheet number." : "Building section mark with cutting line.",
             "section, cut");
    Draft& d = s.draft;
    d.circle(0, 0, 0.3);
    d.line(-0.3, 0, 0.3, 0);
    d.fill(Fill::Solid, {{{-0.3, 0, -1}, {0.3, 0}, {0.45, 0}, {0, 0.48}, {-0.45, 0}}});
    d.letters(0, 0.13, 0.13, wall ? "3" : "A");
    d.letters(0, -0.13, 0.11, "A-301");
    if (wall) {
        d.on("G-ANNO-CUTL", 1, "PHANTOM", 50);
        d.line(0, -0.3, 0, -1.4);
    } else {
        d.on("G-ANNO-CUTL", 1, "PHANTOM", 50);
        d.line(0.3, 0, 2, 0);
    }
    return s;
}

Sample detail()
{
    Sample s = mark("Detail Callout", "Detail mark with dashed surround.", "detail, callout");
    Draft& d = s.draft;
    d.circle(0, 0, 0.3);
    d.line(-0.3, 0, 0.3, 0);
    d.letters(0, 0.13, 0.13, "7");
    d.letters(0, -0.13, 0.11, "A-501");
    d.on("G-ANNO-CLOU", 1, "DASHED");
    const double b = 0.41421356;
    d.outline({{1.2, -0.5},
               {2.2, -0.5, b},
               {2.4, -0.3},
               {2.4, 0.3, b},
               {2.2, 0.5},
               {1.2, 0.5, b},
               {1, 0.3},
               {1, -0.3, b}});
    d.on("G-ANNO-SYMB", 2);
    d.line(0.3, 0, 1, 0);
    return s;
}

Sample elevation(int ways)
{
    Sample s = mark(ways == 1 ? "Elevation Exterior" : "Elevation Interior",
                    ways == 1 ? "Exterior elevation mark." : "Interior elevations, four ways.", "elevation");
    Draft& d = s.draft;
    for (int way = 0; way < ways; ++way) {
        const Point2 tip = compass(0.43, way * 90), left = compass(0.3, way * 90 - 45),
                     right = compass(0.3, way * 90 + 45);
        d.fill(Fill::Solid, {{{left.x, left.y, -0.19891237}, {right.x, right.y}, {tip.x, tip.y}}});
        if (ways > 1) {
            const Point2 at = compass(0.56, way * 90);
            d.letters(at.x, at.y, 0.11, std::to_string(way + 1));
        }
    }
    d.circle(0, 0, 0.3);
    d.letters(0, 0, 0.12, ways == 1 ? "2" : "A-401");
    return s;
}

Sample north(int style)
{
    static const char* const kNames[] = {"Plain", "Compass", "Half Filled", "True and Plan"};
    Sample s = mark(std::string("North Arrow ") + kNames[style], "North arrow for plans and site plans.",
                    "north, arrow, orientation");
    Draft& d = s.draft;
    if (style == 0) {
        d.circle(0, 0, 0.5);
        d.lines({{0, -0.5}, {0, 0.75}});
        d.solid({{0, 0.75}, {-0.12, 0.3}, {0.12, 0.3}});
    } else if (style == 1) {
        for (int point = 0; point < 8; ++point) {
            const double reach = point % 2 == 0 ? 0.75 : 0.45, bearing = point * 45;
            const Point2 tip = compass(reach, bearing), a = compass(0.16, bearing - 22.5),
                         b = compass(0.16, bearing + 22.5);
            d.lines({{0, 0}, a, tip, b, {0, 0}});
            d.solid({{0, 0}, b, tip});
        }
        d.circle(0, 0, 0.5);
    } else if (style == 2) {
        d.circle(0, 0, 0.5);
        d.lines({{0, 0.5}, {-0.28, -0.41}, {0, -0.2}, {0.28, -0.41}}, true);
        d.solid({{0, 0.5}, {0, -0.2}, {0.28, -0.41}});
    } else {
        d.circle(0, 0, 0.45);
        d.fill(Fill::Solid, {{{0, 0.45}, {-0.17, -0.42}, {0, -0.25}}});
        d.lines({{0, 0.45}, {0.17, -0.42}, {0, -0.25}});
        const Point2 tip = compass(0.8, 30);
        d.line(0, 0, tip.x, tip.y);
        d.letters(tip.x + 0.1, tip.y + 0.1, 0.1, "TRUE");
    }
    d.letters(0, style == 3 ? 0.6 : 0.95, 0.2, "N");
    return s;
}

Sample scaleBar(bool metric)
{
    Sample s =
        mark(metric ? "Scale Bar Metric" : "Scale Bar Feet",
             metric ? "Graphic scale 1:100." : "Graphic scale 1/8 in. to the foot.", "scale, bar, graphic");
    Draft& d = s.draft;
    const double unit = metric ? 0.3937 : 0.5;
    static const int kFeet[] = {0, 4, 8, 16}, kMetres[] = {0, 1, 2, 4};
    const int* steps = metric ? kMetres : kFeet;
    for (int i = 0; i < 3; ++i) {
        const double x1 = steps[i] * unit / (metric ? 1 : 4), x2 = steps[i + 1] * unit / (metric ? 1 : 4);
        d.rect(x1, 0, x2 - x1, 0.1);
        d.solid({{x1, i % 2 == 0 ? 0.05 : 0},
                 {x2, i % 2 == 0 ? 0.05 : 0},
                 {x2, i % 2 == 0 ? 0.1 : 0.05},
                 {x1, i % 2 == 0 ? 0.1 : 0.05}});
    }
    for (int i = 0; i < 4; ++i)
        d.letters(steps[i] * unit / (metric ? 1 : 4), 0.22, 0.1,
                  std::to_string(steps[i]) + (metric ? "" : "'"));
    d.text(0, -0.2, metric ? "1:100" : "SCALE: 1/8\" = 1'-0\"");
    return s;
}

Sample bubble(bool grid)
{
    Sample s = mark(grid ? "Grid Bubble" : "Level Mark",
                    grid ? "Column grid bubble with centre line." : "Level mark with datum target.",
                    grid ? "grid, column" : "level, datum, elevation");
    Draft& d = s.draft;
    if (grid) {
        d.circle(0, 0, 0.25);
        d.letters(0, 0, 0.18, "B");
        d.on("G-ANNO-GRID", 1, "CENTER");
        d.line(0, -0.25, 0, -3);
    } else {
        d.circle(0, 0, 0.12);
        d.fill(Fill::Solid, {{{0, 0}, {0.12, 0, 0.41421356}, {0, 0.12}}});
        d.fill(Fill::Solid, {{{0, 0}, {-0.12, 0, 0.41421356}, {0, -0.12}}});
        d.line(-0.25, 0, 0.25, 0);
        d.line(0.12, 0, 1.8, 0);
        d.text(0.3, 0.06, "LEVEL 2");
        d.text(0.3, -0.17, "EL. 113'-4\"");
    }
    return s;
}

Sample tag(const std::string& kind)
{
    Sample s = mark("Tag " + kind, kind + " tag with its number.", "tag, " + kind);
    Draft& d = s.draft;
    if (kind == "Door") {
        d.circle(0, 0, 0.2);
        d.letters(0, 0, 0.12, "101");
    } else if (kind == "Window") {
        Outline hexagon;
        for (int corner = 0; corner < 6; ++corner) {
            const Point2 at = compass(0.22, corner * 60 + 30);
            hexagon.push_back({at.x, at.y});
        }
        d.outline(hexagon);
        d.letters(0, 0, 0.12, "W3");
    } else if (kind == "Room") {
        d.letters(0, 0.16, 0.16, "OFFICE");
        d.rect(-0.3, -0.2, 0.6, 0.22);
        d.letters(0, -0.09, 0.12, "204");
    } else if (kind == "Revision") {
        d.lines({{-0.2, -0.12}, {0.2, -0.12}, {0, 0.24}}, true);
        d.letters(0, 0.0, 0.12, "1");
    } else {
        d.lines({{0, 0.22}, {0.22, 0}, {0, -0.22}, {-0.22, 0}}, true);
        d.letters(0, 0, 0.12, "W1");
    }
    return s;
}

Sample breakLine()
{
    Sample s = mark("Break Line", "Long break line.", "break, line");
    s.draft.lines({{-1.5, 0}, {-0.12, 0}, {-0.06, 0.2}, {0.06, -0.2}, {0.12, 0}, {1.5, 0}});
    return s;
}

Sample cloud()
{
    Sample s = mark("Revision Cloud", "Revision cloud with delta.", "revision, cloud");
    Outline line;
    for (int i = 0; i < 6; ++i)
        line.push_back({i * 0.4, 0, 0.55});
    for (int i = 0; i < 3; ++i)
        line.push_back({2.4, i * 0.4, 0.55});
    for (int i = 6; i > 0; --i)
        line.push_back({i * 0.4, 1.2, 0.55});
    for (int i = 3; i > 0; --i)
        line.push_back({0, i * 0.4, 0.55});
    s.draft.outline(line);
    s.draft.lines({{2.5, -0.3}, {2.9, -0.3}, {2.7, 0.05}}, true);
    s.draft.letters(2.7, -0.18, 0.12, "2");
    return s;
}

Sample titleBlock(const std::string& sheetName, Units units, double width, double height)
{
    const bool metric = units == Units::Millimetres;
    Sample s{"Title Block " + sheetName, "Title block " + sheetName,
             "Border and title block, sheet " + sheetName + ", with attributes for the project.",
             "title, block, border, sheet", Draft(units, 1)};
    Draft& d = s.draft;
    const double u = metric ? 25.4 : 1, margin = 0.5 * u, strip = (width > 20 * u ? 3 : 2.2) * u,
                 x = width - margin - strip;
    d.on("G-ANNO-TTLB-TRIM", 8);
    d.rect(0, 0, width, height);
    d.on("G-ANNO-TTLB", 7, {}, 100);
    d.outline(rectangle(margin, margin, width - 2 * margin, height - 2 * margin), true, 0.03 * u);
    d.line(x, margin, x, height - margin);
    d.on("G-ANNO-TTLB-LINE", 3, {}, 35);
    const double rows[] = {0.9, 1.5, 2.1, 2.7, 3.9};
    for (const double row : rows)
        d.line(x, margin + row * u, width - margin, margin + row * u);
    d.line(x, height - margin - 1.6 * u, width - margin, height - margin - 1.6 * u);
    for (int column = 1; column < 8; ++column) {
        const double at = margin + column * (x - margin) / 8;
        d.line(at, margin, at, margin - 0.15 * u);
        d.line(at, height - margin, at, height - margin + 0.15 * u);
    }
    d.on("G-ANNO-TTLB-TEXT", 2);
    const double left = x + 0.08 * u;
    const char* const names[] = {"SHEET", "SCALE", "DATE", "DRAWN", "PROJECT"};
    const char* const values[] = {"A-101", "1/4\" = 1'-0\"", "2024-05-06", "ZV", "COMMUNITY LIBRARY"};
    const double bases[] = {0, 0.9, 1.5, 2.1, 2.7};
    d.block("TITLE-" + sheetName, [&] {});
    for (int i = 0; i < 5; ++i) {
        d.text(left, margin + (rows[i] - 0.14) * u, names[i], Align::Left, 0.07 * u);
        d.on("G-ANNO-TTLB-ATTR", 4);
        d.attribute(names[i], values[i], left, margin + (bases[i] + 0.12) * u, (i == 0 ? 0.4 : 0.15) * u);
        d.on("G-ANNO-TTLB-TEXT", 2);
    }
    d.insert("TITLE-" + sheetName, 0, 0);
    const double logo = x + strip / 2, top = height - margin - 0.75 * u;
    d.on("G-ANNO-TTLB-LOGO", 5, {}, 35);
    d.lines({{logo - 0.5 * u, top + 0.45 * u},
             {logo + 0.5 * u, top + 0.45 * u},
             {logo - 0.5 * u, top - 0.35 * u},
             {logo + 0.5 * u, top - 0.35 * u}});
    d.letters(logo, top - 0.6 * u, 0.12 * u, "SAMPLE OFFICE");
    return s;
}
} // namespace

Library draftingMarks()
{
    Library library{"Drafting Marks", {}};
    auto& out = library.samples;
    out = {section(false), section(true), detail(),     elevation(1), elevation(4),
           north(0),       north(1),      north(2),     north(3),     scaleBar(false),
           scaleBar(true), bubble(true),  bubble(false)};
    for (const char* kind : {"Door", "Window", "Room", "Revision", "Wall"})
        out.push_back(tag(kind));
    out.insert(out.end(),
               {breakLine(), cloud(), titleBlock("ANSI B", Units::Inches, 17, 11),
                titleBlock("ANSI D", Units::Inches, 34, 22), titleBlock("ARCH D", Units::Inches, 36, 24),
                titleBlock("ISO A1", Units::Millimetres, 841, 594),
                titleBlock("ISO A3", Units::Millimetres, 420, 297)});
    out[11].preview = out[19].preview = false;
    return library;
}

std::vector<Library> allLibraries()
{
    return {doorsAndWindows(),   stairs(),          steelSections(), boltsAndWelds(), concreteDetails(),
            electricalSymbols(), plumbingSymbols(), hvacSymbols(),   siteSymbols(),   draftingMarks()};
}

Sample failedDrawing()
{
    Sample s{"failed", "Drawing cannot be shown", "Stands in for a drawing that cannot be shown.", "",
             Draft(Units::Inches, 1)};
    Draft& d = s.draft;
    d.on("FRAME", 8, {}, 35);
    d.rect(0, 0, 4, 3);
    d.on("CROSS", 1, {}, 50);
    d.line(0, 0, 4, 3);
    d.line(0, 3, 4, 0);
    d.on("WORDS", 7);
    d.mask(0.2, 1.05, 3.6, 0.9);
    d.letters(2, 1.68, 0.24, "Drawing cannot");
    d.letters(2, 1.3, 0.24, "be shown");
    return s;
}

} // namespace zv::samples
