// Doors in plan: the wall that they stand in, frame, leaf and swing.
#include "DoorParts.h"

namespace zv::samples {

namespace {
constexpr double kWall = 4.875; ///< Stud, and board on both sides.
constexpr double kLeaf = 1.75;
constexpr double kStub = 12; ///< Wall shown beside the opening.
constexpr double kJamb = 2;

/// The wall on both sides of an opening from 0 to `width`, its studs hatched, with the jambs.
void wallWithOpening(Draft& d, double width)
{
    d.on("A-WALL", 7, {}, 50);
    d.outline({{-kStub, 0}, {-kJamb, 0}, {-kJamb, kWall}, {-kStub, kWall}}, false);
    d.outline({{width + kStub, 0}, {width + kJamb, 0}, {width + kJamb, kWall}, {width + kStub, kWall}},
              false);
    d.on("A-WALL-PATT", 8);
    d.fill(Fill::Steel, {rectangle(-kStub, 0, kStub - kJamb, kWall)});
    d.fill(Fill::Steel, {rectangle(width + kJamb, 0, kStub - kJamb, kWall)});
    d.on("A-DOOR-FRAM", 3);
    for (const double x : {-kJamb, width}) {
        d.rect(x, -0.5, kJamb, kWall + 1);
        d.rect(x == width ? x - 0.5 : 0, kLeaf, 0.5, 1.5);
    }
}

void openingDimension(Draft& d, double width)
{
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, 0, width, 0, -d.noteHeight() * 4);
}

/// A leaf that stands open at right angles, and the way of its edge.
void leaf(Draft& d, double hinge, double width, bool toRight, double side)
{
    d.on("A-DOOR", 2, {}, 35);
    d.rect(toRight ? hinge : hinge - kLeaf, side > 0 ? 0 : -width, kLeaf, width);
    d.on("A-DOOR-SWNG", 8);
    if (side > 0)
        d.arc(hinge, 0, width, toRight ? 0 : 90, toRight ? 90 : 180);
    else
        d.arc(hinge, 0, width, toRight ? 270 : 180, toRight ? 360 : 270);
    d.on("A-DOOR", 2);
    const double knob = toRight ? hinge + kLeaf + 1 : hinge - kLeaf - 1;
    d.circle(knob, side * (width - 2.75), 1);
}

Sample swinging(int width, bool right)
{
    const std::string hand = right ? "RH" : "LH", size = std::to_string(width);
    Sample s = doorSample("Door " + size + " Single " + hand, "Single swing door, " + size + " in., " + hand,
                          "Single hinged door " + size + " in. wide in a 4 7/8 in. stud partition, " +
                              (right ? "right" : "left") + " hand, 90 degree swing.",
                          "door, single, swing, plan");
    Draft& d = s.draft;
    wallWithOpening(d, width);
    leaf(d, right ? width : 0, width, !right, -1);
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, kWall, width, kWall, kWall + d.noteHeight() * 4);
    return s;
}

Sample pair(int width)
{
    const std::string size = std::to_string(width);
    Sample s = doorSample("Door " + size + " Pair", "Pair of swing doors, " + size + " in.",
                          "Pair of hinged doors in a " + size + " in. opening, both leaves active.",
                          "door, double, pair, swing, plan");
    Draft& d = s.draft;
    wallWithOpening(d, width);
    leaf(d, 0, width / 2.0, true, -1);
    leaf(d, width, width / 2.0, false, -1);
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, kWall, width, kWall, kWall + d.noteHeight() * 4);
    return s;
}

Sample doubleActing(int width)
{
    const std::string size = std::to_string(width);
    Sample s = doorSample("Door " + size + " Double Acting", "Double acting door, " + size + " in.",
                          "Leaf on a floor spring that swings both ways, as between kitchen and dining room.",
                          "door, double acting, swing, kitchen, plan");
    Draft& d = s.draft;
    wallWithOpening(d, width);
    d.on("A-DOOR", 2, {}, 35);
    d.outline({{0, kWall / 2 - 0.875},
               {static_cast<double>(width), kWall / 2 - 0.875},
               {static_cast<double>(width), kWall / 2 + 0.875},
               {0, kWall / 2 + 0.875}});
    d.on("A-DOOR-SWNG", 8, "DASHED");
    d.arc(0, kWall / 2, width, -90, 90);
    d.line(0, kWall / 2, 0, kWall / 2 - width);
    d.line(0, kWall / 2, 0, kWall / 2 + width);
    openingDimension(d, width);
    return s;
}

Sample bifold(int width)
{
    const std::string size = std::to_string(width);
    Sample s =
        doorSample("Door " + size + " Bifold", "Bifold closet door, " + size + " in.",
                   "Four panel bifold door on an overhead track, half open.", "door, bifold, closet, plan");
    Draft& d = s.draft;
    wallWithOpening(d, width);
    const double panel = width / 4.0, rise = panel * 0.8, run = panel * 0.6, mid = kWall / 2;
    d.on("A-DOOR", 2, {}, 35);
    for (const double side : {1.0, -1.0}) {
        const double from = side > 0 ? 0 : width;
        d.outline({{from, mid}, {from + side * run, mid - rise}}, false, 1.125);
        d.outline({{from + side * run, mid - rise}, {from + side * 2 * run, mid}}, false, 1.125);
    }
    d.on("A-DOOR-TRAK", 8, "DASHED");
    d.line(0, mid, width, mid);
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, kWall, width, kWall, kWall + d.noteHeight() * 4);
    return s;
}

Sample pocket(int width)
{
    const std::string size = std::to_string(width);
    Sample s = doorSample("Door " + size + " Pocket", "Pocket door, " + size + " in.",
                          "Sliding leaf that runs into a cased pocket of the partition.",
                          "door, pocket, sliding, plan");
    Draft& d = s.draft;
    const double mid = kWall / 2;
    d.on("A-WALL", 7, {}, 50);
    d.outline({{-kStub, 0}, {-kJamb, 0}, {-kJamb, kWall}, {-kStub, kWall}}, false);
    d.line(width + kJamb, 0, 2.0 * width + kStub, 0);
    d.line(width + kJamb, kWall, 2.0 * width + kStub, kWall);
    d.line(2.0 * width + 1, mid - 1.25, 2.0 * width + 1, mid + 1.25);
    d.on("A-DOOR-FRAM", 3);
    d.rect(-kJamb, -0.5, kJamb, kWall + 1);
    d.rect(width, -0.5, kJamb, kWall / 2 - 0.75);
    d.rect(width, mid + 1.25, kJamb, kWall / 2 - 0.75);
    d.line(width + kJamb, mid - 1.25, 2.0 * width + 1, mid - 1.25);
    d.line(width + kJamb, mid + 1.25, 2.0 * width + 1, mid + 1.25);
    d.on("A-DOOR", 2, {}, 35);
    d.rect(width * 0.4, mid - 0.6875, width, 1.375);
    d.on("A-DOOR-TRAK", 8, "DASHED");
    d.line(0, mid, 2.0 * width, mid);
    openingDimension(d, width);
    return s;
}

Sample sliding(int width)
{
    const std::string size = std::to_string(width);
    Sample s = doorSample("Door " + size + " Sliding Glass", "Sliding glass door, " + size + " in.",
                          "Two panel glass door, one panel fixed and one sliding.",
                          "door, sliding, glass, patio, plan");
    Draft& d = s.draft;
    wallWithOpening(d, width);
    const double half = width / 2.0, mid = kWall / 2;
    d.on("A-GLAZ", 4, {}, 35);
    d.rect(0, mid + 0.25, half + 1.5, 1.5);
    d.rect(half - 1.5, mid - 1.75, half + 1.5, 1.5);
    d.line(3, mid + 1, half - 1.5, mid + 1);
    d.line(half + 1.5, mid - 1, width - 3.0, mid - 1);
    d.on("A-DOOR-SILL", 8);
    d.line(0, 0, width, 0);
    d.line(0, kWall, width, kWall);
    d.on("A-ANNO-NOTE", 7);
    d.leader({{half * 1.5, mid - 1.75}, {half * 1.5 - 6, -10}, {half * 1.5 - 12, -10}}, "SLIDES");
    d.on("A-ANNO-DIMS", 1);
    d.dimX(0, kWall, width, kWall, kWall + d.noteHeight() * 4);
    return s;
}

Sample overhead(int width)
{
    const std::string size = std::to_string(width);
    Sample s = doorSample("Door " + size + " Overhead", "Overhead sectional door, " + size + " in.",
                          "Sectional garage door with its tracks and the open position dashed.",
                          "door, overhead, garage, sectional, plan", 96);
    Draft& d = s.draft;
    wallWithOpening(d, width);
    d.on("A-DOOR", 2, {}, 35);
    d.rect(-1, kWall, width + 2.0, 2);
    d.on("A-DOOR-OVHD", 8, "DASHED");
    d.rect(-1, kWall + 2, width + 2.0, 84);
    for (const double x : {-4.0, width + 4.0})
        d.line(x, kWall, x, kWall + 96);
    for (int section = 1; section < 4; ++section)
        d.line(-1, kWall + 2 + section * 21, width + 1.0, kWall + 2 + section * 21);
    openingDimension(d, width);
    return s;
}

Sample revolving(int diameter)
{
    const std::string size = std::to_string(diameter);
    Sample s = doorSample("Door " + size + " Revolving", "Revolving door, " + size + " in. diameter",
                          "Four wing revolving door with curved glass enclosure.",
                          "door, revolving, entrance, plan", 64);
    Draft& d = s.draft;
    const double r = diameter / 2.0;
    d.on("A-GLAZ", 4, {}, 35);
    for (const double from : {135.0, 315.0}) {
        d.arc(0, 0, r, from, from + 90);
        d.arc(0, 0, r + 2, from, from + 90);
    }
    d.on("A-DOOR", 2, {}, 35);
    d.block("WING", [&] { d.rect(3, -0.875, r - 4, 1.75); });
    for (int wing = 0; wing < 4; ++wing)
        d.insert("WING", 0, 0, 45.0 + wing * 90);
    d.circle(0, 0, 3);
    d.on("A-DOOR-SWNG", 8, "DASHED");
    d.circle(0, 0, r);
    d.on("A-WALL", 7, {}, 50);
    for (const double side : {-1.0, 1.0}) {
        d.line(side * (r + 2), -3, side * (r + 20), -3);
        d.line(side * (r + 2), 3, side * (r + 20), 3);
    }
    d.on("A-ANNO-DIMS", 1);
    d.dimDiameter(0, 0, r, 60);
    return s;
}
} // namespace

void addDoorPlans(std::vector<Sample>& out)
{
    for (const int width : {24, 28, 30, 32, 34, 36, 42})
        for (const bool right : {false, true})
            out.push_back(swinging(width, right));
    for (const int width : {48, 60, 64, 72})
        out.push_back(pair(width));
    for (const int width : {36, 42})
        out.push_back(doubleActing(width));
    for (const int width : {36, 48, 60, 72})
        out.push_back(bifold(width));
    for (const int width : {28, 30, 32, 36})
        out.push_back(pocket(width));
    for (const int width : {60, 72, 96})
        out.push_back(sliding(width));
    for (const int width : {96, 108, 192})
        out.push_back(overhead(width));
    for (const int diameter : {78, 96})
        out.push_back(revolving(diameter));
}

} // namespace zv::samples
