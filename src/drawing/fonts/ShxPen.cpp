#include "drawing/fonts/ShxPen.h"

namespace zv::dwg {

namespace {

constexpr int kDeepestCall = 8;
constexpr std::size_t kDeepestStack = 16;

enum Op : unsigned {
    kEnd,
    kPenDown,
    kPenUp,
    kDivide,
    kMultiply,
    kPush,
    kPop,
    kCall,
    kMove,
    kMoves,
    kOctantArc,
    kFractionalArc,
    kBulge,
    kBulges,
    kIfVertical,
};

} // namespace

Glyph ShxPen::take()
{
    Glyph glyph;
    glyph.bounds = m_path.bounds();
    glyph.path = std::move(m_path);
    glyph.advance = m_at.x;
    return glyph;
}

void ShxPen::run(std::uint32_t number, int depth)
{
    const auto found = m_font.m_figures.find(number);
    if (found == m_font.m_figures.end() || depth > kDeepestCall)
        return;
    Code code{std::span(m_font.m_bytes).subspan(found->second.offset, found->second.size)};
    while (!code.done() && m_left-- > 0 && step(code, depth)) {
    }
}

bool ShxPen::step(Code& code, int depth)
{
    unsigned op = code.byte();
    bool perform = true;
    if (op == kIfVertical) {
        perform = m_font.m_vertical;
        op = code.byte();
    }
    if (op == kEnd)
        return !perform;
    if (op <= kIfVertical) {
        special(op, code, depth, perform);
        return true;
    }
    if (op < 16 || !perform)
        return true;
    // A vector: its length above, one of sixteen directions below.
    static constexpr double kX[16] = {1, 1, 1, .5, 0, -.5, -1, -1, -1, -1, -1, -.5, 0, .5, 1, 1};
    static constexpr double kY[16] = {0, .5, 1, 1, 1, 1, 1, .5, 0, -.5, -1, -1, -1, -1, -1, -.5};
    const double size = op >> 4;
    move(kX[op & 15] * size, kY[op & 15] * size);
    return true;
}

void ShxPen::special(unsigned op, Code& code, int depth, bool perform)
{
    switch (op) {
    case kPenDown:
    case kPenUp:
        if (perform)
            m_down = op == kPenDown;
        break;
    case kDivide:
    case kMultiply: {
        const double by = code.byte();
        if (perform && by > 0)
            m_scale = m_scale * (op == kDivide ? 1 / by : by);
        m_scale = {std::clamp(m_scale.x, -1e6, 1e6), std::clamp(m_scale.y, -1e6, 1e6)};
        break;
    }
    case kPush:
        if (perform && m_stack.size() < kDeepestStack)
            m_stack.push_back(m_at);
        break;
    case kPop:
        if (perform && !m_stack.empty()) {
            m_at = m_stack.back();
            m_stack.pop_back();
            m_moved = true;
        }
        break;
    case kCall:
        callFigure(code, depth, perform);
        break;
    case kMove: {
        const int x = code.signedByte(), y = code.signedByte();
        if (perform)
            move(x, y);
        break;
    }
    case kMoves:
        while (!code.done() && m_left-- > 0) {
            const int x = code.signedByte(), y = code.signedByte();
            if (x == 0 && y == 0)
                break;
            if (perform)
                move(x, y);
        }
        break;
    case kOctantArc:
        octantArc(code, perform);
        break;
    case kFractionalArc:
        fractionalArc(code, perform);
        break;
    case kBulge: {
        const int x = code.signedByte(), y = code.signedByte(), height = code.signedByte();
        if (perform)
            bulge(x, y, height);
        break;
    }
    case kBulges:
        while (!code.done() && m_left-- > 0) {
            const int x = code.signedByte(), y = code.signedByte();
            if (x == 0 && y == 0)
                break;
            const int height = code.signedByte();
            if (perform)
                bulge(x, y, height);
        }
        break;
    default:
        break;
    }
}

void ShxPen::lower()
{
    if (m_moved)
        m_path.moveTo(m_at);
    m_moved = false;
}

void ShxPen::move(double x, double y)
{
    const Point2 to{m_at.x + x * m_scale.x, m_at.y + y * m_scale.y};
    if (m_down) {
        lower();
        m_path.lineTo(to);
    } else {
        m_moved = true;
    }
    m_at = to;
}

void ShxPen::callFigure(Code& code, int depth, bool perform)
{
    std::uint32_t number = code.byte();
    Point2 scale = m_scale;
    Point2 base = m_at;
    if (m_font.m_kind == ShxFont::Kind::UniFont) {
        number = number << 8 | code.byte();
    } else if (m_font.m_kind == ShxFont::Kind::BigFont && number == 0) {
        // The long form places a part of a sign in a rectangle of its own.
        number = code.byte() << 8;
        number |= code.byte();
        const int x = code.signedByte(), y = code.signedByte();
        const unsigned width = code.byte(), height = code.byte();
        base = m_at + Point2{x * m_scale.x, y * m_scale.y};
        const double whole = m_font.m_unit > 0 ? 1 / m_font.m_unit : 1;
        scale = {m_scale.x * width / whole, m_scale.y * height / whole};
    }
    if (!perform)
        return;
    const Point2 kept = m_scale;
    const bool placed = base.x != m_at.x || base.y != m_at.y || scale.x != kept.x || scale.y != kept.y;
    const Point2 back = m_at;
    m_at = base;
    m_scale = scale;
    m_moved = m_moved || placed;
    run(number, depth + 1);
    m_scale = kept;
    if (placed) {
        m_at = back;
        m_moved = true;
    }
}

void ShxPen::octantArc(Code& code, bool perform)
{
    const double radius = code.byte();
    const int how = code.signedByte();
    const unsigned bits = static_cast<unsigned>(how < 0 ? -how : how);
    const unsigned start = bits >> 4 & 7, octants = (bits & 7) == 0 ? 8 : bits & 7;
    if (perform)
        drawArc(radius, start * kPi / 4, (how < 0 ? -1.0 : 1.0) * octants * kPi / 4);
}

void ShxPen::fractionalArc(Code& code, bool perform)
{
    const double startOffset = code.byte(), endOffset = code.byte();
    const double highRadius = code.byte();
    const double radius = highRadius * 256 + code.byte();
    const int how = code.signedByte();
    const unsigned bits = static_cast<unsigned>(how < 0 ? -how : how);
    const double direction = how < 0 ? -1 : 1;
    const unsigned start = bits >> 4 & 7;
    double octants = (bits & 7) == 0 ? 8 : bits & 7;
    // The offsets are 256ths of an octant behind the octant in which the arc starts or ends.
    if (endOffset > 0)
        octants += endOffset / 256 - 1;
    octants -= startOffset / 256;
    if (perform)
        drawArc(radius, (start + direction * startOffset / 256) * kPi / 4, direction * octants * kPi / 4);
}

void ShxPen::drawArc(double radius, double start, double sweep)
{
    const Point2 u{radius * m_scale.x, 0}, v{0, radius * m_scale.y};
    const Point2 center = m_at - u * std::cos(start) - v * std::sin(start);
    const PathArc arc{center, u, v, start, sweep};
    if (m_down) {
        lower();
        m_path.arcTo(arc);
    } else {
        m_moved = true;
    }
    m_at = arc.at(start + sweep);
}

void ShxPen::bulge(int x, int y, int height)
{
    const Point2 to{m_at.x + x * m_scale.x, m_at.y + y * m_scale.y};
    if (m_down) {
        lower();
        m_path.bulgeTo(m_at, to, std::clamp(height, -127, 127) / 127.0);
    } else {
        m_moved = true;
    }
    m_at = to;
}

} // namespace zv::dwg
