// Plumbing fixtures in plan, and valves and drains of piping diagrams.
#include "Library.h"

namespace zv::samples {

namespace {
Sample fixture(const std::string& name, const std::string& comments, const std::string& keywords,
               double scale = 16)
{
    return {name, name, comments, "plumbing, " + keywords, Draft(Units::Inches, scale)};
}

Draft& fixtureLayer(Draft& d)
{
    return d.on("P-FIXT", 4, {}, 35);
}

void roundedRect(Draft& d, double x, double y, double w, double h, double r)
{
    const double b = 0.41421356;
    d.outline({{x + r, y},
               {x + w - r, y, b},
               {x + w, y + r},
               {x + w, y + h - r, b},
               {x + w - r, y + h},
               {x + r, y + h, b},
               {x, y + h - r},
               {x, y + r, b}});
}

void drain(Draft& d, double x, double y, double r = 1)
{
    d.circle(x, y, r);
    d.line(x - r, y, x + r, y);
    d.line(x, y - r, x, y + r);
}

void faucet(Draft& d, double x, double y, double reach)
{
    d.on("P-FIXT-TRIM", 1);
    d.rect(x - 4, y, 8, 1.5);
    d.rect(x - 0.6, y - reach, 1.2, reach);
    d.circle(x - 3, y + 0.75, 0.9);
    d.circle(x + 3, y + 0.75, 0.9);
    fixtureLayer(d);
}

Sample toilet(bool wallHung)
{
    Sample s = fixture(wallHung ? "Water Closet Wall" : "Water Closet Tank",
                       wallHung ? "Wall hung closet with flush valve."
                                : "Floor mounted closet with tank, 12 in. rough in.",
                       "toilet, closet, fixture, plan");
    Draft& d = s.draft;
    fixtureLayer(d);
    if (wallHung) {
        roundedRect(d, -4, 22, 8, 3, 0.5);
        d.circle(0, 25.5, 1);
    } else {
        roundedRect(d, -10, 20.5, 20, 8, 1.5);
        d.circle(7, 25, 0.8);
    }
    d.ellipse(0, 10, 7, 9.5);
    d.ellipse(0, 9.5, 4.6, 6.5);
    d.lines({{-5.6, 16}, {-5.2, 20.5}});
    d.lines({{5.6, 16}, {5.2, 20.5}});
    d.on("P-ANNO-DIMS", 3);
    d.dimX(-10, 20, 10, 20, 36);
    d.on("A-WALL", 7, {}, 50);
    d.line(-18, 29.5, 18, 29.5);
    return s;
}

Sample lavatory(const std::string& kind)
{
    Sample s = fixture("Lavatory " + kind, kind + " lavatory with two handle faucet.",
                       "lavatory, sink, fixture, plan", 12);
    Draft& d = s.draft;
    fixtureLayer(d);
    if (kind == "Oval") {
        d.ellipse(0, 0, 10, 8);
        d.ellipse(0, -0.6, 8, 5.8);
    } else if (kind == "Corner") {
        d.outline({{-12, 12}, {12, 12}, {12, -12, 0}, {4, -12, -0.25}, {-12, 4}});
        d.circle(3, 3, 6);
    } else {
        roundedRect(d, -10, -9, 20, 18, 2);
        d.ellipse(0, -1.5, 7.5, 5);
    }
    drain(d, kind == "Corner" ? 3 : 0, kind == "Corner" ? 3 : -1);
    faucet(d, kind == "Corner" ? 5 : 0, kind == "Corner" ? 9.5 : 5.5, 4);
    return s;
}

Sample bathtub(int length)
{
    Sample s =
        fixture("Bathtub " + std::to_string(length), "Recessed tub " + std::to_string(length) + " x 32 in.",
                "tub, bath, fixture, plan", 24);
    Draft& d = s.draft;
    fixtureLayer(d);
    d.rect(0, 0, length, 32);
    d.outline({{5, 5}, {length - 14.0, 4, 0.35}, {length - 14.0, 28}, {5, 27, 0.2}});
    drain(d, 10, 16, 1.5);
    d.on("P-ANNO-DIMS", 3);
    d.dimX(0, 32, length, 32, 42);
    return s;
}

Sample shower(int size)
{
    Sample s = fixture("Shower " + std::to_string(size), "Shower receptor with curb and centre drain.",
                       "shower, receptor, fixture, plan", 16);
    Draft& d = s.draft;
    fixtureLayer(d);
    const double n = size;
    d.rect(0, 0, n, n);
    d.rect(3, 3, n - 6, n - 6);
    d.line(3, 3, n - 3, n - 3);
    d.line(3, n - 3, n - 3, 3);
    d.mask(n / 2 - 2.5, n / 2 - 2.5, 5, 5);
    drain(d, n / 2, n / 2, 2);
    d.on("P-ANNO-DIMS", 3);
    d.dimX(0, 0, n, 0, -8);
    return s;
}

Sample kitchenSink(bool twin)
{
    Sample s = fixture(twin ? "Sink Double" : "Sink Single",
                       twin ? "Double bowl kitchen sink 33 x 22." : "Single bowl kitchen sink 25 x 22.",
                       "sink, kitchen, fixture, plan", 16);
    Draft& d = s.draft;
    fixtureLayer(d);
    const double width = twin ? 33 : 25;
    roundedRect(d, 0, 0, width, 22, 1.5);
    for (int bowl = 0; bowl < (twin ? 2 : 1); ++bowl) {
        const double w = twin ? 14 : 21, x = 2 + bowl * 15.0;
        roundedRect(d, x, 2, w, 15.5, 2);
        drain(d, x + w / 2, 10, 1.75);
    }
    faucet(d, width / 2, 19, 8);
    d.on("P-ANNO-DIMS", 3);
    d.dimX(0, 0, width, 0, -6);
    return s;
}

Sample urinal()
{
    Sample s = fixture("Urinal", "Wall hung urinal with flush valve.", "urinal, fixture, plan", 12);
    Draft& d = s.draft;
    fixtureLayer(d);
    d.outline({{-7, 0}, {-7, -6, 0.2}, {-4, -13, 0.4}, {4, -13, 0.2}, {7, -6}, {7, 0}});
    d.ellipse(0, -7, 4, 4.5);
    d.circle(0, 1.5, 1);
    d.on("A-WALL", 7, {}, 50);
    d.line(-14, 3, 14, 3);
    return s;
}

Sample floorDrain(bool section)
{
    Sample s = fixture(section ? "Floor Drain Section" : "Floor Drain Plan", "Floor drain 6 in. with trap.",
                       "drain, floor", 6);
    Draft& d = s.draft;
    fixtureLayer(d);
    if (!section) {
        d.circle(0, 0, 3);
        d.circle(0, 0, 2.6);
        for (int i = -2; i <= 2; ++i) {
            const double half = i == 0 ? 2.3 : i == 1 || i == -1 ? 2 : 1.4;
            d.outline({{-half, i * 0.8 - 0.15},
                       {half, i * 0.8 - 0.15, 1},
                       {half, i * 0.8 + 0.15},
                       {-half, i * 0.8 + 0.15, 1}});
        }
        d.text(3.6, 2, "FD-1");
        return s;
    }
    d.on("S-CONC-PATT", 8);
    d.fill(Fill::Concrete,
           {
               {{-12, 0.2}, {-3, 0}, {-3, -1}, {-1.5, -4}, {-12, -4}},
           },
           0.6);
    d.fill(Fill::Concrete, {{{12, 0.2}, {3, 0}, {3, -1}, {1.5, -4}, {12, -4}}}, 0.6);
    fixtureLayer(d);
    d.lines({{-12, 0.2}, {-3, 0}, {3, 0}, {12, 0.2}});
    d.lines({{-3, 0}, {-3, -1}, {-1.5, -4}, {-1.5, -7}});
    d.lines({{3, 0}, {3, -1}, {1.5, -4}, {1.5, -7}});
    d.outline({{-1.5, -7, 1}, {5.5, -7}}, false);
    d.outline({{1.5, -7, 1}, {2.5, -7}}, false);
    d.outline({{5.5, -7, -0.41421356}, {7, -5.5}, {12, -5.5}}, false);
    d.outline({{2.5, -7, -0.41421356}, {7, -2.5}, {12, -2.5}}, false);
    d.on("P-ANNO-NOTE", 7);
    d.leader({{2, -0.2}, {5, 3}, {6, 3}}, "STRAINER");
    return s;
}

Sample valve(const std::string& kind)
{
    Sample s = fixture("Valve " + kind, kind + " valve, symbol for diagrams.", "valve, piping, symbol", 1);
    Draft& d = s.draft;
    d.on("P-PIPE", 5, {}, 50);
    d.line(-1.2, 0, -0.4, 0);
    d.line(0.4, 0, 1.2, 0);
    d.on("P-VALV", 2, {}, 35);
    if (kind == "Check") {
        d.lines({{-0.4, -0.25}, {-0.4, 0.25}, {0.4, -0.25}, {0.4, 0.25}});
        d.disc(-0.4, 0.25, 0.06);
    } else {
        d.lines({{-0.4, -0.25}, {0.4, 0.25}, {0.4, -0.25}, {-0.4, 0.25}}, true);
    }
    if (kind == "Globe")
        d.disc(0, 0, 0.1);
    if (kind == "Ball") {
        d.mask(-0.08, -0.08, 0.16, 0.16);
        d.circle(0, 0, 0.14);
    }
    if (kind == "Gate")
        d.lines({{0, 0}, {0, 0.45}, {-0.2, 0.45}, {0.2, 0.45}});
    if (kind == "Pressure Reducing") {
        d.lines({{0, 0}, {0, 0.3}});
        d.arc(0, 0.3, 0.25, 0, 180);
        d.line(-0.25, 0.3, 0.25, 0.3);
        d.lines({{0.25, 0.42}, {0.9, 0.42}, {0.9, 0}});
    }
    return s;
}
} // namespace

Library plumbingSymbols()
{
    Library library{"Plumbing Fixtures", {}};
    auto& out = library.samples;
    out = {toilet(false),      toilet(true),      lavatory("Oval"),   lavatory("Rectangular"),
           lavatory("Corner"), bathtub(60),       bathtub(72),        shower(32),
           shower(36),         shower(48),        kitchenSink(false), kitchenSink(true),
           urinal(),           floorDrain(false), floorDrain(true)};
    for (const char* kind : {"Gate", "Globe", "Check", "Ball", "Pressure Reducing"})
        out.push_back(valve(kind));
    return library;
}

} // namespace zv::samples
