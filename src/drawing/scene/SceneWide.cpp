#include "drawing/scene/SceneParts.h"

namespace zv::dwg {

namespace {

/// A point of the middle line with the half width that the line has there.
struct WidePoint {
    Point2 at;
    double half = 0;
};

/// The pieces of a wide line as straight lengths; arcs in steps of at most 5 degrees.
std::vector<std::vector<WidePoint>> widePieces(const Polyline& line)
{
    std::vector<std::vector<WidePoint>> pieces;
    const auto& v = line.vertices;
    const std::size_t count = line.closed ? v.size() : v.size() - 1;
    for (std::size_t i = 0; i < count; ++i) {
        const PolylineVertex &a = v[i], &b = v[(i + 1) % v.size()];
        const bool own = a.startWidth > 0 || a.endWidth > 0;
        const double from = (own ? a.startWidth : line.constantWidth) / 2;
        const double to = (own ? a.endWidth : line.constantWidth) / 2;
        const Point2 start = flat(a.position), end = flat(b.position);
        std::vector<WidePoint> piece{{start, from}};
        if (std::abs(a.bulge) > 1e-9 && length(end - start) > 0 && std::isfinite(a.bulge)) {
            const PathArc arc = bulgeArc(start, end, a.bulge);
            const int steps = std::clamp(static_cast<int>(std::abs(arc.sweep) * 36 / kPi) + 1, 2, 72);
            for (int k = 1; k < steps; ++k) {
                const double t = static_cast<double>(k) / steps;
                piece.push_back({arc.at(arc.start + arc.sweep * t), from + (to - from) * t});
            }
        }
        piece.push_back({end, to});
        if (length(end - start) > 0)
            pieces.push_back(std::move(piece));
    }
    return pieces;
}

Point2 normalOf(Point2 a, Point2 b)
{
    const Point2 d = b - a;
    const double size = length(d);
    return size > 0 ? Point2{-d.y / size, d.x / size} : Point2{};
}

/// Where the edges of two lengths meet: the normals' common direction, as long as a sharp corner may be.
Point2 miter(Point2 before, Point2 after)
{
    const Point2 sum = before + after;
    const double size = sum.x * sum.x + sum.y * sum.y;
    constexpr double kSharpest = 0.1;
    return size > kSharpest ? sum * (2 / size) : after;
}

void addQuad(Path& path, Point2 a, Point2 b, Point2 c, Point2 d)
{
    // All turn the same way, so that where they overlap the area stays filled.
    const double area = (c.x - a.x) * (d.y - b.y) - (d.x - b.x) * (c.y - a.y);
    if (area < 0)
        std::swap(b, d);
    path.moveTo(a);
    path.lineTo(b);
    path.lineTo(c);
    path.lineTo(d);
    path.close(a);
}

} // namespace

void SceneParts::widePolyline(const Polyline& line, const Matrix& map, const Look& look)
{
    const auto pieces = widePieces(line);
    if (pieces.empty())
        return;
    Path thin, wide;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const auto& piece = pieces[i];
        const bool first = i == 0 && !line.closed, last = i + 1 == pieces.size() && !line.closed;
        const auto& previous = pieces[(i + pieces.size() - 1) % pieces.size()];
        const auto& next = pieces[(i + 1) % pieces.size()];
        const bool none =
            std::all_of(piece.begin(), piece.end(), [](const WidePoint& p) { return p.half <= 0; });
        if (none) {
            thin.moveTo(piece.front().at);
            for (std::size_t k = 1; k < piece.size(); ++k)
                thin.lineTo(piece[k].at);
            continue;
        }
        const std::size_t n = piece.size();
        std::vector<Point2> normals;
        for (std::size_t k = 0; k + 1 < n; ++k)
            normals.push_back(normalOf(piece[k].at, piece[k + 1].at));
        const auto offset = [&](std::size_t k) {
            Point2 side = k == 0       ? normals.front()
                          : k + 1 == n ? normals.back()
                                       : miter(normals[k - 1], normals[k]);
            if (k == 0 && !first && previous.back().half == piece.front().half)
                side = miter(normalOf(previous[previous.size() - 2].at, previous.back().at), normals.front());
            if (k + 1 == n && !last && next.front().half == piece.back().half)
                side = miter(normals.back(), normalOf(next[0].at, next[1].at));
            return side * piece[k].half;
        };
        for (std::size_t k = 0; k + 1 < n; ++k) {
            const Point2 a = offset(k), b = offset(k + 1);
            addQuad(wide, piece[k].at + a, piece[k].at - a, piece[k + 1].at - b, piece[k + 1].at + b);
        }
    }
    Matrix placed = map;
    placed.origin = map.point({0, 0, line.elevation});
    if (!wide.elements.empty()) {
        if (m_document.header.fillMode)
            m_ink.fill(mapped(wide, placed), look.color, true);
        else
            m_ink.stroke(mapped(wide, placed), {look.color, look.pen.lineweight, nullptr, 1, false});
    }
    if (!thin.elements.empty())
        m_ink.stroke(mapped(thin, placed), look.pen);
}

} // namespace zv::dwg
