// Doors and windows as they are seen from the front, and windows in plan.
#include "DoorParts.h"

#include <cmath>

namespace zv::samples {

namespace {
/// A door seen from the front: floor line, frame and leaf.
Sample doorFront(const std::string& kind, const std::string& words, double width)
{
    Sample s = doorSample("Door Elev " + kind, "Door elevation, " + words,
                          "Door " + words + ", 36 x 84 in., in a 2 in. hollow metal frame.",
                          "door, elevation, " + words);
    Draft& d = s.draft;
    d.on("A-ELEV-GRND", 7, {}, 70);
    d.line(-14, 0, width + 14, 0);
    d.on("A-DOOR-FRAM", 3, {}, 35);
    d.outline({{-2, 0}, {-2, 86}, {width + 2, 86}, {width + 2, 0}}, false);
    d.on("A-DOOR", 2, {}, 35);
    d.rect(0, 0.5, width, 83.5);
    d.on("A-DOOR-HDWR", 1);
    d.circle(width - 2.75, 38, 1.1);
    d.circle(width - 2.75, 38, 0.5);
    for (const double y : {8.0, 40.0, 74.0})
        d.rect(-0.5, y, 1, 4.5);
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, 0.5, width, 0.5, -d.noteHeight() * 4);
    d.dimY(0, 0, 0, 84, -d.noteHeight() * 6);
    return s;
}

void panel(Draft& d, double x, double y, double width, double height)
{
    d.on("A-DOOR-PANL", 8);
    d.rect(x, y, width, height);
    d.rect(x + 1.25, y + 1.25, width - 2.5, height - 2.5);
}

void glass(Draft& d, double x, double y, double width, double height)
{
    d.on("A-GLAZ", 4);
    d.rect(x, y, width, height);
    d.rect(x + 0.75, y + 0.75, width - 1.5, height - 1.5);
    d.on("A-GLAZ-PATT", 9);
    d.fill(Fill::Glass, {rectangle(x + 0.75, y + 0.75, width - 1.5, height - 1.5)});
}

void addDoorFronts(std::vector<Sample>& out)
{
    out.push_back(doorFront("Flush", "flush wood", 36));
    Sample six = doorFront("Six Panel", "six panel", 36);
    for (const double x : {5.0, 19.5}) {
        panel(six.draft, x, 9, 11.5, 22);
        panel(six.draft, x, 38, 11.5, 28);
        panel(six.draft, x, 70, 11.5, 9);
    }
    out.push_back(six);
    Sample half = doorFront("Half Lite", "half lite", 36);
    glass(half.draft, 6, 42, 24, 36);
    panel(half.draft, 6, 9, 24, 26);
    out.push_back(half);
    Sample narrow = doorFront("Vision Lite", "narrow vision lite", 36);
    glass(narrow.draft, 26, 42, 5, 34);
    out.push_back(narrow);
    Sample full = doorFront("Full Glass", "full glass aluminum", 36);
    glass(full.draft, 5, 10, 26, 69);
    out.push_back(full);
    Sample louver = doorFront("Louver", "with bottom louver", 36);
    louver.draft.on("A-DOOR-LOUV", 8);
    louver.draft.rect(6, 9, 24, 24);
    for (int blade = 1; blade < 12; ++blade)
        louver.draft.line(6, 9 + blade * 2.0, 30, 9 + blade * 2.0);
    out.push_back(louver);
    Sample dutch = doorFront("Dutch", "dutch with shelf", 36);
    dutch.draft.on("A-DOOR", 2);
    dutch.draft.line(0, 42, 36, 42);
    dutch.draft.rect(-1, 42, 38, 1.25);
    panel(dutch.draft, 6, 9, 24, 26);
    glass(dutch.draft, 6, 49, 24, 28);
    out.push_back(dutch);
}

Sample windowPlan(const std::string& kind, int width)
{
    const std::string size = std::to_string(width);
    Sample s =
        doorSample("Window " + size + " " + kind, kind + " window, " + size + " in.",
                   kind + " window in a 6 in. brick and block wall, plan at sill.", "window, plan, " + kind);
    Draft& d = s.draft;
    const double wall = 11.625, face = 3.625, w = width;
    for (const double x : {-16.0, w}) {
        d.on("A-WALL-PATT", 8);
        d.fill(Fill::Brick, {rectangle(x, 0, 16, face)}, 0.5);
        d.fill(Fill::Concrete, {rectangle(x, face + 1, 16, wall - face - 1)}, 0.5);
        d.on("A-WALL", 7, {}, 50);
        d.lines({{x, 0}, {x + 16, 0}});
        d.lines({{x, face}, {x + 16, face}});
        d.lines({{x, face + 1}, {x + 16, face + 1}});
        d.lines({{x, wall}, {x + 16, wall}});
        const double end = x < 0 ? x + 16 : x;
        d.line(end, 0, end, wall);
    }
    d.on("A-WIND-SILL", 3);
    d.rect(-1, -1.5, w + 2, 1.5 + face);
    d.on("A-WIND", 2, {}, 35);
    d.rect(0, face + 0.5, 2, 4.5);
    d.rect(w - 2, face + 0.5, 2, 4.5);
    d.on("A-GLAZ", 4);
    const double y = face + 2;
    if (kind == "Sliding") {
        d.rect(2, y, w / 2 - 1, 1);
        d.rect(w / 2 - 1, y + 1.25, w / 2 - 1, 1);
    } else {
        d.rect(2, y, w - 4, 1.5);
        d.line(2, y + 0.75, w - 2, y + 0.75);
    }
    if (kind == "Casement") {
        d.on("A-WIND-SWNG", 8, "DASHED");
        d.arc(2, y, w - 4, 270, 360);
        d.line(2, y, 2, y - w + 4);
    }
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, wall, w, wall, wall + d.noteHeight() * 4);
    return s;
}

Sample windowFront(const std::string& kind, double width, double height, int columns, int rows)
{
    Sample s = doorSample("Window Elev " + kind, "Window elevation, " + kind,
                          kind + " window seen from outside, with sill and head height.",
                          "window, elevation, " + kind);
    Draft& d = s.draft;
    d.on("A-WIND-TRIM", 3, {}, 35);
    d.rect(-3.5, -1, width + 7, height + 4.5);
    d.rect(-5, -3, width + 10, 2);
    d.on("A-WIND", 2, {}, 35);
    d.rect(0, 0, width, height);
    const double w = width / columns, h = height / rows;
    for (int column = 0; column < columns; ++column)
        for (int row = 0; row < rows; ++row)
            glass(d, column * w + 1.5, row * h + 1.5, w - 3, h - 3);
    d.on("A-WIND-OPNG", 8, "DASHED");
    if (kind == "Casement Pair")
        for (const double side : {0.0, width})
            d.lines({{width / 2, 0}, {side, height / 2}, {width / 2, height}});
    if (kind == "Awning")
        d.lines({{0, 0}, {width / 2, height}, {width, 0}});
    if (kind == "Hopper")
        d.lines({{0, height}, {width / 2, 0}, {width, height}});
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, -3, width, -3, -3 - d.noteHeight() * 4);
    d.dimY(width, 0, width, height, width + 3.5 + d.noteHeight() * 4);
    return s;
}

Sample roundHead()
{
    Sample s = windowFront("Round Head", 36, 40, 2, 2);
    Draft& d = s.draft;
    d.on("A-WIND", 2);
    d.arc(18, 43.5, 21.5, 0, 180);
    d.arc(18, 43.5, 18, 0, 180);
    d.arc(18, 43.5, 6, 0, 180);
    for (const double angle : {45.0, 90.0, 135.0}) {
        const double c = std::cos(angle * 0.0174532925), n = std::sin(angle * 0.0174532925);
        d.line(18 + 6 * c, 43.5 + 6 * n, 18 + 18 * c, 43.5 + 18 * n);
    }
    return s;
}
} // namespace

void addOpeningElevations(std::vector<Sample>& out)
{
    addDoorFronts(out);
    for (const char* kind : {"Fixed", "Casement", "Sliding", "Double Hung"})
        for (const int width : {24, 36, 48})
            out.push_back(windowPlan(kind, width));
    out.push_back(windowFront("Double Hung", 36, 60, 1, 2));
    out.push_back(windowFront("Six Over Six", 36, 60, 3, 4));
    out.push_back(windowFront("Casement Pair", 48, 48, 2, 1));
    out.push_back(windowFront("Awning", 36, 24, 1, 1));
    out.push_back(windowFront("Hopper", 32, 20, 1, 1));
    out.push_back(windowFront("Picture", 72, 54, 1, 1));
    out.push_back(windowFront("Slider", 60, 36, 2, 1));
    out.push_back(roundHead());
}

Library doorsAndWindows()
{
    Library library{"Doors and Windows", {}};
    addDoorPlans(library.samples);
    addOpeningElevations(library.samples);
    return library;
}

} // namespace zv::samples
