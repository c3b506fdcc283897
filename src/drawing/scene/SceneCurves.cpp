#include "drawing/geometry/Nurbs.h"
#include "drawing/scene/SceneParts.h"

namespace zv::dwg {

namespace {

/// A sweep from one angle to another, counter-clockwise, a full turn when they meet.
double sweepOf(double start, double end)
{
    if (!std::isfinite(start) || !std::isfinite(end))
        return 0;
    double sweep = std::fmod(end - start, 2 * kPi);
    if (sweep <= 1e-12)
        sweep += 2 * kPi;
    return sweep;
}

/// Tilted lines seen from above show their thickness as a second line and its joins.
Point3 raised(double thickness)
{
    return {0, 0, thickness};
}

} // namespace

void SceneParts::draw(const Line& line, const Look& look)
{
    Path path;
    const Point2 a = flat(look.frame.map.point(line.start)), b = flat(look.frame.map.point(line.end));
    path.moveTo(a);
    path.lineTo(b);
    if (line.thickness != 0) {
        const Point2 rise =
            flat(look.frame.map.vector(ocsMatrix(line.normal).vector(raised(line.thickness))));
        if (length(rise) > 1e-9 * std::abs(line.thickness)) {
            path.lineTo(b + rise);
            path.lineTo(a + rise);
            path.close(a);
        }
    }
    m_ink.stroke(path, look.pen);
}

void SceneParts::draw(const Circle& circle, const Look& look)
{
    circleArc(circle.center, circle.radius, 0, 2 * kPi, circle.normal, circle.thickness, look);
}

void SceneParts::draw(const Arc& arc, const Look& look)
{
    circleArc(arc.center, arc.radius, arc.startAngle, sweepOf(arc.startAngle, arc.endAngle), arc.normal,
              arc.thickness, look);
}

void SceneParts::circleArc(Point3 center, double radius, double start, double sweep, Point3 normal,
                           double thickness, const Look& look)
{
    const Matrix map = look.frame.map.of(ocsMatrix(normal));
    const auto one = [&](Point3 at) {
        Path path;
        const PathArc arc{flat(map.point(at)), flat(map.vector({radius, 0, 0})),
                          flat(map.vector({0, radius, 0})), start, sweep};
        path.moveTo(arc.at(start));
        path.arcTo(arc);
        Pen pen = look.pen;
        pen.throughVertices = true;
        m_ink.stroke(path, pen);
    };
    one(center);
    if (thickness != 0 && length(flat(map.vector(raised(1)))) > 1e-9)
        one(center + raised(thickness));
}

void SceneParts::draw(const Ellipse& ellipse, const Look& look)
{
    const Point3 minor = cross(unit(ellipse.normal), ellipse.majorAxis) * ellipse.axisRatio;
    const PathArc arc{flat(look.frame.map.point(ellipse.center)),
                      flat(look.frame.map.vector(ellipse.majorAxis)), flat(look.frame.map.vector(minor)),
                      ellipse.startParameter, sweepOf(ellipse.startParameter, ellipse.endParameter)};
    Path path;
    path.moveTo(arc.at(arc.start));
    path.arcTo(arc);
    Pen pen = look.pen;
    pen.throughVertices = true;
    m_ink.stroke(path, pen);
}

void SceneParts::strokePoints(const std::vector<Point3>& points, const Matrix& map, bool closed,
                              const Look& look)
{
    Path path;
    for (const Point3& p : points) {
        if (path.elements.empty())
            path.moveTo(flat(map.point(p)));
        else
            path.lineTo(flat(map.point(p)));
    }
    if (closed && !points.empty())
        path.close(flat(map.point(points.front())));
    Pen pen = look.pen;
    pen.throughVertices = true;
    m_ink.stroke(path, pen);
}

void SceneParts::draw(const Spline& spline, const Look& look)
{
    strokePoints(splinePoints(spline), look.frame.map, false, look);
}

void SceneParts::draw(const Polyline& line, const Look& look)
{
    Polyline shown = line;
    std::erase_if(shown.vertices, [](const PolylineVertex& v) { return v.splineFrame; });
    // A frame without a curve is what there is to see.
    const std::vector<PolylineVertex>& v = shown.vertices.empty() ? line.vertices : shown.vertices;
    if (v.empty())
        return;
    const Matrix map = line.threeD ? look.frame.map : look.frame.map.of(ocsMatrix(line.normal));
    const auto at = [&](std::size_t i) {
        Point3 p = v[i].position;
        if (!line.threeD)
            p.z = line.elevation;
        return p;
    };
    const bool wide = line.constantWidth > 0 || std::any_of(v.begin(), v.end(), [](const PolylineVertex& p) {
                          return p.startWidth > 0 || p.endWidth > 0;
                      });
    if (wide && !line.threeD && v.size() > 1) {
        if (shown.vertices.empty())
            shown.vertices = line.vertices;
        widePolyline(shown, map, look);
        return;
    }
    const double rise = line.threeD ? 0 : line.thickness;
    const bool tilted = rise != 0 && length(flat(map.vector(raised(1)))) > 1e-9;
    for (int pass = 0; pass < (tilted ? 2 : 1); ++pass) {
        Path flatPath;
        flatPath.moveTo(flat(at(0)));
        const std::size_t pieces = line.closed ? v.size() : v.size() - 1;
        for (std::size_t i = 0; i < pieces; ++i) {
            const std::size_t next = (i + 1) % v.size();
            if (line.threeD)
                flatPath.lineTo(flat(at(next)));
            else
                flatPath.bulgeTo(flat(at(i)), flat(at(next)), v[i].bulge);
        }
        Matrix placed = map;
        placed.origin = map.point({0, 0, line.threeD ? 0 : line.elevation + pass * rise});
        Path path = mapped(flatPath, placed);
        if (line.threeD)
            for (std::size_t i = 0; i < path.elements.size(); ++i)
                path.elements[i].to = flat(map.point(at(i % v.size())));
        if (v.size() == 1)
            path.lineTo(path.elements.front().to);
        Pen pen = look.pen;
        pen.throughVertices = line.plinegen;
        m_ink.stroke(path, pen);
    }
}

void SceneParts::draw(const Mesh& mesh, const Look& look)
{
    Path path;
    const auto at = [&](std::size_t i) { return flat(look.frame.map.point(mesh.vertices[i])); };
    const auto edge = [&](std::size_t a, std::size_t b) {
        path.moveTo(at(a));
        path.lineTo(at(b));
    };
    const std::size_t count = mesh.vertices.size();
    for (const auto& face : mesh.faces) {
        for (std::size_t k = 0; k < 4; ++k) {
            if (face[k] == 0)
                continue;
            std::size_t next = (k + 1) % 4;
            while (face[next] == 0 && next != k)
                next = (next + 1) % 4;
            const auto a = static_cast<std::size_t>(std::abs(static_cast<long long>(face[k])));
            const auto b = static_cast<std::size_t>(std::abs(static_cast<long long>(face[next])));
            if (face[k] > 0 && a <= count && b <= count && b > 0)
                edge(a - 1, b - 1);
        }
    }
    const auto m = static_cast<std::size_t>(std::max(mesh.m, 0)),
               n = static_cast<std::size_t>(std::max(mesh.n, 0));
    if (mesh.faces.empty() && m > 0 && n > 0 && m <= count && n <= count / m) {
        for (std::size_t i = 0; i < m; ++i)
            for (std::size_t j = 0; j < n; ++j) {
                if (j + 1 < n || (mesh.closedN && n > 2))
                    edge(i * n + j, i * n + (j + 1) % n);
                if (i + 1 < m || (mesh.closedM && m > 2))
                    edge(i * n + j, (i + 1) % m * n + j);
            }
    }
    if (!path.elements.empty())
        m_ink.stroke(path, look.pen);
}

void SceneParts::draw(const Solid& solid, const Look& look)
{
    const Matrix map = look.frame.map.of(ocsMatrix(solid.normal));
    Path path;
    for (const std::size_t corner : {0u, 1u, 3u, 2u}) {
        const Point2 p = flat(map.point(solid.corners[corner]));
        if (path.elements.empty())
            path.moveTo(p);
        else
            path.lineTo(p);
    }
    path.close(path.elements.front().to);
    if (m_document.header.fillMode)
        m_ink.fill(path, look.color);
    else
        m_ink.stroke(path, look.pen);
}

void SceneParts::draw(const Face3D& face, const Look& look)
{
    Path path;
    for (std::size_t k = 0; k < 4; ++k) {
        const std::size_t next = (k + 1) % 4;
        if (face.hiddenEdges >> k & 1)
            continue;
        path.moveTo(flat(look.frame.map.point(face.corners[k])));
        path.lineTo(flat(look.frame.map.point(face.corners[next])));
    }
    if (!path.elements.empty())
        m_ink.stroke(path, look.pen);
}

void SceneParts::draw(const Ray& ray, const Look& look)
{
    const Point2 start = flat(look.frame.map.point(ray.start));
    const Point2 direction = flat(look.frame.map.vector(ray.direction));
    m_rays.push_back({start, direction, ray.bothWays, look.pen});
}

void SceneParts::draw(const PointShape& point, const Look& look)
{
    const Point2 at = flat(look.frame.map.point(point.position));
    const int mode = look.frame.dimension ? 0 : m_document.header.pointMode;
    if (mode == 0 || mode == 1) {
        Path path;
        path.moveTo(at);
        path.lineTo(at);
        if (mode == 0)
            m_ink.stroke(path, {look.color, 0, nullptr, 1, false});
        else
            m_scene.bounds.add(at);
    } else if (m_document.header.pointSize > 0) {
        pointMark(at, m_document.header.pointSize, point.xAxisAngle, look.color);
    } else {
        m_scene.bounds.add(at);
        m_points.push_back({at, point.xAxisAngle, look.color});
    }
}

void SceneParts::pointMark(Point2 at, double size, double angle, SceneColor color)
{
    const int mode = m_document.header.pointMode;
    const double half = size / 2;
    const Point2 x = Point2{std::cos(angle), -std::sin(angle)} * half, y{-x.y, x.x};
    Path path;
    const auto line = [&](Point2 a, Point2 b) {
        path.moveTo(a);
        path.lineTo(b);
    };
    switch (mode & 7) {
    case 0:
        line(at, at);
        break;
    case 2:
        line(at - x * 2, at + x * 2);
        line(at - y * 2, at + y * 2);
        break;
    case 3:
        line(at - x * 2 - y * 2, at + x * 2 + y * 2);
        line(at - x * 2 + y * 2, at + x * 2 - y * 2);
        break;
    case 4:
        line(at, at + y);
        break;
    default:
        break;
    }
    if (mode & 32) {
        path.moveTo(at + x);
        path.arcTo({at, x, y, 0, 2 * kPi});
    }
    if (mode & 64) {
        path.moveTo(at - x - y);
        path.lineTo(at + x - y);
        path.lineTo(at + x + y);
        path.lineTo(at - x + y);
        path.close(at - x - y);
    }
    if (!path.elements.empty())
        m_ink.stroke(path, {color, 0, nullptr, 1, false});
}

void SceneParts::drawDeferred()
{
    const Box box = m_scene.bounds;
    const double height = box.height() > 0 ? box.height() : std::max(box.width(), 1.0);
    const double percent = m_document.header.pointSize < 0 ? -m_document.header.pointSize : 5;
    for (const DeferredPoint& point : m_points)
        pointMark(point.at, height * std::min(percent, 100.0) / 100, point.angle, point.color);
    // Endless lines end a little outside everything else.
    const bool nothing = box.empty();
    for (const DeferredRay& ray : m_rays) {
        Box reach = box;
        if (nothing)
            reach.add(ray.start);
        const double size = length(ray.direction);
        if (!(size > 0) || reach.empty())
            continue;
        const double margin = std::max({reach.width(), reach.height(), 1.0}) * 0.25;
        const double far = length(ray.start - reach.center()) + reach.width() + reach.height() + margin;
        const Point2 step = ray.direction * (1 / size);
        double from = ray.bothWays ? -far : 0, to = far;
        const auto clip = [&](double origin, double slope, double low, double high) {
            if (std::abs(slope) < 1e-12) {
                if (origin < low || origin > high)
                    to = from - 1;
                return;
            }
            const double a = (low - origin) / slope, b = (high - origin) / slope;
            from = std::max(from, std::min(a, b));
            to = std::min(to, std::max(a, b));
        };
        clip(ray.start.x, step.x, reach.min.x - margin, reach.max.x + margin);
        clip(ray.start.y, step.y, reach.min.y - margin, reach.max.y + margin);
        if (to <= from)
            continue;
        Path path;
        path.moveTo(ray.start + step * from);
        path.lineTo(ray.start + step * to);
        m_ink.stroke(path, ray.pen);
    }
}

} // namespace zv::dwg
