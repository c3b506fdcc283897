// Electrical symbols, at their sheet size for a quarter-inch plan.
#include "Library.h"

#include <cmath>
#include <functional>

namespace zv::samples {

namespace {
using Drawing = std::function<void(Draft&)>;

Sample symbol(const std::string& name, const std::string& words, const std::string& keywords,
              const Drawing& draw)
{
    Sample s{name, words, words + ". Symbol for plans at 1/4 in. to the foot.",
             "electrical, symbol, " + keywords, Draft(Units::Inches, 48)};
    s.draft.on("E-POWR-SYMB", 3, {}, 35);
    draw(s.draft);
    return s;
}

void wallStub(Draft& d)
{
    d.on("A-WALL", 8, {}, 50);
    d.line(-18, -6, 18, -6);
    d.line(-18, -10.875, 18, -10.875);
    d.on("E-POWR-SYMB", 3);
}

/// A receptacle: circle on the wall with `strokes` across.
void receptacle(Draft& d, int strokes)
{
    wallStub(d);
    d.circle(0, 0, 6);
    const double apart = 2.5;
    for (int i = 0; i < strokes; ++i) {
        const double x = (i - (strokes - 1) / 2.0) * apart;
        d.line(x, -9, x, 9);
    }
}

Sample switchSymbol(const std::string& suffix, const std::string& words)
{
    return symbol("Switch S" + suffix, words, "switch, lighting, " + words, [&](Draft& d) {
        wallStub(d);
        d.letters(0, 3, 9, "S");
        if (!suffix.empty())
            d.letters(6.5, 0, 4.5, suffix);
        d.line(0, -6, 0, -3);
        d.circle(0, 3, 9);
    });
}

void letteredCircle(Draft& d, const std::string& letters, double radius = 7)
{
    d.circle(0, 0, radius);
    d.letters(0, 0, letters.size() > 2 ? radius * 0.6 : radius * 0.9, letters);
}

void addReceptacles(std::vector<Sample>& out)
{
    out.push_back(symbol("Receptacle Single", "Single receptacle", "receptacle, outlet",
                         [](Draft& d) { receptacle(d, 1); }));
    out.push_back(symbol("Receptacle Duplex", "Duplex receptacle", "receptacle, outlet",
                         [](Draft& d) { receptacle(d, 2); }));
    out.push_back(symbol("Receptacle Triplex", "Triplex receptacle", "receptacle, outlet",
                         [](Draft& d) { receptacle(d, 3); }));
    out.push_back(symbol("Receptacle Quad", "Double duplex receptacle", "receptacle, outlet", [](Draft& d) {
        receptacle(d, 2);
        d.line(-9, 0, 9, 0);
    }));
    out.push_back(symbol("Receptacle GFI", "Duplex receptacle with ground fault interrupter",
                         "receptacle, GFI, outlet", [](Draft& d) {
                             receptacle(d, 2);
                             d.text(9, 2, "GFI");
                         }));
    out.push_back(symbol("Receptacle WP", "Weatherproof duplex receptacle",
                         "receptacle, weatherproof, outlet", [](Draft& d) {
                             receptacle(d, 2);
                             d.text(9, 2, "WP");
                         }));
    out.push_back(symbol("Receptacle Split", "Split wired duplex receptacle", "receptacle, split, outlet",
                         [](Draft& d) {
                             receptacle(d, 2);
                             d.fill(Fill::Solid, {{{-6, 0, 1}, {6, 0}}});
                         }));
    out.push_back(
        symbol("Receptacle Range", "Range receptacle, 240 V", "receptacle, range, outlet", [](Draft& d) {
            receptacle(d, 2);
            d.text(9, 2, "R");
        }));
    out.push_back(
        symbol("Receptacle Floor", "Floor duplex receptacle", "receptacle, floor, outlet", [](Draft& d) {
            d.rect(-9, -9, 18, 18);
            d.circle(0, 0, 6);
            d.line(-1.25, -6, -1.25, 6);
            d.line(1.25, -6, 1.25, 6);
        }));
    out.push_back(
        symbol("Receptacle Special", "Special purpose outlet", "receptacle, special, outlet", [](Draft& d) {
            wallStub(d);
            d.circle(0, 0, 6);
            d.solid({{0, 5}, {-4.5, -3}, {4.5, -3}});
        }));
    for (const auto& [suffix, words] : {std::pair{"", "Single pole switch"},
                                        {"2", "Double pole switch"},
                                        {"3", "Three way switch"},
                                        {"4", "Four way switch"},
                                        {"D", "Dimmer switch"},
                                        {"K", "Key operated switch"}})
        out.push_back(switchSymbol(suffix, words));
}

void addLights(std::vector<Sample>& out)
{
    out.push_back(symbol("Light Ceiling", "Ceiling light fixture", "light, ceiling, fixture", [](Draft& d) {
        d.circle(0, 0, 6);
        for (int i = 0; i < 4; ++i) {
            const double c = std::cos(i * 1.5707963268), n = std::sin(i * 1.5707963268);
            d.line(6 * c, 6 * n, 10 * c, 10 * n);
        }
    }));
    out.push_back(symbol("Light Recessed", "Recessed downlight", "light, recessed, downlight", [](Draft& d) {
        d.circle(0, 0, 6);
        d.circle(0, 0, 3.5);
    }));
    out.push_back(symbol("Light Wall", "Wall bracket light", "light, wall, sconce", [](Draft& d) {
        wallStub(d);
        d.circle(0, 2, 6);
        d.line(0, -6, 0, -4);
        d.lines({{-10, 2}, {-6, 2}});
        d.lines({{6, 2}, {10, 2}});
    }));
    out.push_back(symbol("Light Fluorescent 2x4", "Fluorescent troffer 2 x 4 ft",
                         "light, fluorescent, troffer", [](Draft& d) {
                             d.rect(-24, -12, 48, 24);
                             for (const double y : {-5.0, 0.0, 5.0})
                                 d.line(-20, y, 20, y);
                             d.circle(0, 0, 3);
                         }));
    out.push_back(symbol("Light Fluorescent 2x2", "Fluorescent troffer 2 x 2 ft",
                         "light, fluorescent, troffer", [](Draft& d) {
                             d.rect(-12, -12, 24, 24);
                             d.line(-12, -12, 12, 12);
                             d.line(-12, 12, 12, -12);
                             d.circle(0, 0, 3);
                         }));
    out.push_back(symbol("Light Strip", "Fluorescent strip, surface", "light, strip", [](Draft& d) {
        d.rect(-24, -3, 48, 6);
        d.line(-24, 0, -3, 0);
        d.line(3, 0, 24, 0);
        d.circle(0, 0, 3);
    }));
    out.push_back(symbol("Light Exit", "Exit light, one face, arrows", "light, exit, egress", [](Draft& d) {
        d.circle(0, 0, 6);
        d.fill(Fill::Solid, {{{-6, 0, -1}, {6, 0}}});
        d.lines({{9, 0}, {18, 0}, {14, 2}, {18, 0}, {14, -2}});
        d.lines({{-9, 0}, {-18, 0}, {-14, 2}, {-18, 0}, {-14, -2}});
    }));
    out.push_back(
        symbol("Light Emergency", "Emergency battery light", "light, emergency, egress", [](Draft& d) {
            d.rect(-6, -5, 12, 8);
            for (const double x : {-5.0, 5.0}) {
                d.circle(x, 6.5, 3);
                d.line(x, 3, x, 3.5);
            }
            d.letters(0, -1, 4, "EM");
        }));
    out.push_back(symbol("Light Track", "Track with three heads", "light, track", [](Draft& d) {
        d.rect(-24, -1, 48, 2);
        for (const double x : {-16.0, 0.0, 16.0}) {
            d.circle(x, -5, 4);
            d.solid({{x - 3, -8}, {x + 3, -8}, {x, -12}});
        }
    }));
    out.push_back(symbol("Fan Ceiling", "Ceiling fan", "fan, ceiling", [](Draft& d) {
        d.circle(0, 0, 4);
        d.block("BLADE", [&] { d.outline({{4, -2}, {24, -3.5, 0.5}, {24, 3.5}, {4, 2}}); });
        for (int blade = 0; blade < 4; ++blade)
            d.insert("BLADE", 0, 0, 45.0 + blade * 90);
    }));
}

void addDevices(std::vector<Sample>& out)
{
    out.push_back(symbol("Panel Board", "Lighting panel, surface", "panel, distribution", [](Draft& d) {
        d.rect(-10, -3, 20, 6);
        d.solid({{-10, -3}, {10, -3}, {10, 3}, {-10, 3}});
        d.text(0, 6, "LP-1", Align::Centre);
    }));
    out.push_back(symbol("Transformer", "Dry type transformer", "transformer, power", [](Draft& d) {
        for (const double y : {6.0, -6.0})
            for (int i = 0; i < 4; ++i)
                d.arc(-9 + i * 6, y, 3, y > 0 ? 180 : 0, y > 0 ? 360 : 180);
        d.line(-12, 0.75, 12, 0.75);
        d.line(-12, -0.75, 12, -0.75);
        for (const double x : {-12.0, 12.0}) {
            d.line(x, 6, x, 14);
            d.line(x, -6, x, -14);
        }
    }));
    out.push_back(symbol("Motor", "Motor", "motor, power", [](Draft& d) { letteredCircle(d, "M"); }));
    out.push_back(
        symbol("Junction Box", "Junction box", "junction, box", [](Draft& d) { letteredCircle(d, "J"); }));
    out.push_back(symbol("Smoke Detector", "Smoke detector", "fire, smoke, detector",
                         [](Draft& d) { letteredCircle(d, "SD"); }));
    out.push_back(
        symbol("Thermostat", "Thermostat", "thermostat, control", [](Draft& d) { letteredCircle(d, "T"); }));
    out.push_back(symbol("Telephone Outlet", "Telephone outlet", "telephone, data", [](Draft& d) {
        wallStub(d);
        d.solid({{-6, -6}, {6, -6}, {0, 5}});
    }));
    out.push_back(symbol("Data Outlet", "Data outlet, two jacks", "data, network", [](Draft& d) {
        wallStub(d);
        d.lines({{-6, -6}, {6, -6}, {0, 5}}, true);
        d.text(5, 2, "2D");
    }));
    out.push_back(symbol("Fire Alarm Pull", "Fire alarm pull station", "fire, alarm, pull", [](Draft& d) {
        d.rect(-6, -6, 12, 12);
        d.letters(0, 0, 7, "F");
    }));
    out.push_back(
        symbol("Fire Alarm Horn", "Fire alarm horn and strobe", "fire, alarm, horn, strobe", [](Draft& d) {
            d.rect(-5, -5, 10, 10);
            d.letters(0, 0, 5, "F");
            d.lines({{5, -2}, {12, -7}, {12, 7}, {5, 2}});
        }));
}
} // namespace

Library electricalSymbols()
{
    Library library{"Electrical Symbols", {}};
    addReceptacles(library.samples);
    addLights(library.samples);
    addDevices(library.samples);
    // Office practice: symbols are small enough to be drawn when they are shown.
    for (std::size_t i = 0; i < library.samples.size(); i += 6)
        library.samples[i].preview = false;
    return library;
}

} // namespace zv::samples
