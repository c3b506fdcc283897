#pragma once

#include "drawing/fonts/ShxFont.h"

#include <span>

namespace zv::dwg {

/// Follows the pen movements of a figure and of those that it calls.
class ShxPen {
public:
    explicit ShxPen(const ShxFont& font) : m_font(font), m_scale{font.m_unit, font.m_unit} {}
    void draw(std::uint32_t number) { run(number, 0); }
    /// The figure drawn; its advance is where the pen came to rest.
    Glyph take();

private:
    /// Reads the bytes of one figure; a read past the end gives zero, which ends the figure.
    struct Code {
        std::span<const char> bytes;
        std::size_t at = 0;
        unsigned byte() { return at < bytes.size() ? static_cast<unsigned char>(bytes[at++]) : (++at, 0u); }
        int signedByte() { return static_cast<signed char>(byte()); }
        bool done() const { return at >= bytes.size(); }
    };

    void run(std::uint32_t number, int depth);
    bool step(Code& code, int depth);
    void special(unsigned op, Code& code, int depth, bool perform);
    void move(double x, double y);
    void callFigure(Code& code, int depth, bool perform);
    void octantArc(Code& code, bool perform);
    void fractionalArc(Code& code, bool perform);
    void drawArc(double radius, double start, double sweep);
    void bulge(int x, int y, int height);
    void lower();

    const ShxFont& m_font;
    Path m_path;
    Point2 m_at;
    Point2 m_scale;
    bool m_down = true;
    bool m_moved = true; ///< The pen has to be put down anew before it draws.
    std::vector<Point2> m_stack;
    int m_left = 20000; ///< Steps before a figure that calls itself in circles is given up.
};

} // namespace zv::dwg
