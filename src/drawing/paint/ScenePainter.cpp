#include "drawing/paint/ScenePainter.h"

#include "drawing/paint/ClipPolygon.h"
#include "drawing/paint/ImageFiles.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <unordered_map>

namespace zv::dwg {

namespace {

/// Straight pieces that one picture may come to, so that a drawing made to hurt ends soon.
constexpr std::size_t kMostPoints = 12'000'000;
constexpr double kTolerance = 0.12;     ///< Pixels between a curve and its straight pieces.
constexpr double kSmallestStep = 0.3;   ///< Points of a line closer than this are left out.
constexpr double kSmallestLetter = 1.6; ///< Letters below this height are drawn as a line.
constexpr double kFarOutside = 4000;    ///< Pixels; areas that reach farther are cut first.

class Artist {
public:
    Artist(QPainter& painter, const Scene& scene, const Affine& map, const QRectF& area,
           const PaintOptions& options);
    void paint();

private:
    void paintItem(const SceneItem& item);
    void strokes(const SceneItem& item);
    void area(const SceneItem& item, const Box& box);
    void image(const SceneItem& item, const Box& box);
    void glyphs(const SceneItem& item);
    void greek(const SceneItem& item);
    void run(std::span<const Point2> points, bool closed, double width);
    void segment(Point2 a, Point2 b);
    void usePen(const QColor& color, double width);
    void flush();
    void useClip(int clip);
    void thicken(const SceneItem& item, const QColor& color);
    double widthOf(const SceneItem& item) const;
    QColor colorOf(SceneColor color) const;
    QPainterPath areaPath(const SceneItem& item, const Box& box);
    const QPainterPath& outline(const Glyph* glyph);
    Box device(const Box& box) const;

    QPainter& m_painter;
    const Scene& m_scene;
    const Affine m_map;
    const Box m_area;
    const PaintOptions& m_options;
    QPen m_pen;
    bool m_penSet = false;
    int m_clip = -1;
    std::vector<QLineF> m_lines;
    std::vector<QPointF> m_dots;
    std::vector<Point2> m_scratch;
    std::size_t m_points = 0;
    std::unordered_map<const Glyph*, QPainterPath> m_outlines;
};

Box boxOf(const QRectF& rect)
{
    Box box;
    box.add(Point2{rect.left(), rect.top()});
    box.add(Point2{rect.right(), rect.bottom()});
    return box;
}

QPointF qpoint(Point2 p)
{
    return {p.x, p.y};
}

Artist::Artist(QPainter& painter, const Scene& scene, const Affine& map, const QRectF& area,
               const PaintOptions& options)
    : m_painter(painter), m_scene(scene), m_map(map), m_area(boxOf(area)), m_options(options)
{
}

void Artist::paint()
{
    m_painter.save();
    for (const SceneItem& item : m_scene.items) {
        paintItem(item);
        if (m_points > kMostPoints)
            break;
    }
    flush();
    m_painter.restore();
}

Box Artist::device(const Box& box) const
{
    Box out;
    out.add(m_map.map(box.min));
    out.add(m_map.map(box.max));
    return out;
}

double Artist::widthOf(const SceneItem& item) const
{
    const double width = m_options.lineweights ? item.lineweight / 100.0 * m_options.pixelsPerMillimetre : 0;
    return std::max(width, m_options.thinnest);
}

QColor Artist::colorOf(SceneColor color) const
{
    if (!m_options.blackOnly)
        return paintedColor(color, m_options.background);
    return QColor(0, 0, 0, color.alpha);
}

void Artist::paintItem(const SceneItem& item)
{
    Box box = device(item.bounds);
    const double width = widthOf(item);
    const Box grown{{box.min.x - width, box.min.y - width}, {box.max.x + width, box.max.y + width}};
    if (item.count == 0 || !grown.touches(m_area))
        return;
    if (item.clip != m_clip)
        useClip(item.clip);
    switch (item.kind) {
    case SceneItem::Kind::Stroke:
        usePen(colorOf(item.color), width);
        if (!m_options.exact && box.width() < 0.5 && box.height() < 0.5) {
            m_dots.push_back(qpoint(box.center()));
            ++m_points;
        } else {
            strokes(item);
        }
        break;
    case SceneItem::Kind::Glyphs:
        glyphs(item);
        break;
    case SceneItem::Kind::Image:
        image(item, box);
        break;
    default:
        area(item, box);
    }
}

void Artist::useClip(int clip)
{
    flush();
    m_clip = clip;
    if (clip < 0) {
        m_painter.setClipping(false);
        return;
    }
    const Box box = device(m_scene.clips[static_cast<std::size_t>(clip)]);
    m_painter.setClipRect(QRectF(qpoint(box.min), qpoint(box.max)));
}

void Artist::usePen(const QColor& color, double width)
{
    if (m_penSet && m_pen.color() == color && m_pen.widthF() == width)
        return;
    flush();
    m_pen = QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    m_pen.setCosmetic(true);
    m_penSet = true;
    m_painter.setPen(m_pen);
    m_painter.setBrush(Qt::NoBrush);
}

void Artist::flush()
{
    if (!m_lines.empty())
        m_painter.drawLines(m_lines.data(), static_cast<int>(m_lines.size()));
    if (!m_dots.empty())
        m_painter.drawPoints(m_dots.data(), static_cast<int>(m_dots.size()));
    m_lines.clear();
    m_dots.clear();
}

void Artist::segment(Point2 a, Point2 b)
{
    if (clipSegment(a, b, m_area, 4))
        m_lines.emplace_back(a.x, a.y, b.x, b.y);
}

void Artist::run(std::span<const Point2> points, bool closed, double width)
{
    m_points += points.size();
    if (points.size() < 2 || (points.size() == 2 && length(points[0] - points[1]) < 1e-9)) {
        m_dots.push_back(qpoint(points[0]));
        return;
    }
    // Thin lines need no joins; wide ones and exact files keep their runs whole.
    if (width <= 1 && !m_options.exact) {
        Point2 last = points[0];
        for (std::size_t i = 1; i < points.size(); ++i) {
            const Point2 next = points[i];
            if (i + 1 < points.size() &&
                std::abs(next.x - last.x) + std::abs(next.y - last.y) < kSmallestStep)
                continue;
            segment(last, next);
            last = next;
        }
        if (closed)
            segment(last, points[0]);
        return;
    }
    QPolygonF polygon;
    Box box;
    for (const Point2& p : points) {
        polygon.append(qpoint(p));
        box.add(p);
    }
    if (box.width() > kFarOutside || box.height() > kFarOutside) {
        for (std::size_t i = 1; i < points.size(); ++i)
            segment(points[i - 1], points[i]);
        if (closed)
            segment(points.back(), points[0]);
        return;
    }
    if (closed)
        m_painter.drawPolygon(polygon);
    else
        m_painter.drawPolyline(polygon);
}

void Artist::strokes(const SceneItem& item)
{
    const double width = widthOf(item);
    flatten(m_scene.elements(item), m_scene.path.arcs, m_map, kTolerance, m_scratch,
            [&](std::span<const Point2> points, bool closed) { run(points, closed, width); });
}

QPainterPath Artist::areaPath(const SceneItem& item, const Box& box)
{
    const bool far = box.width() > kFarOutside || box.height() > kFarOutside;
    QPainterPath path;
    path.setFillRule(item.winding ? Qt::WindingFill : Qt::OddEvenFill);
    std::vector<Point2> cut;
    flatten(m_scene.elements(item), m_scene.path.arcs, m_map, kTolerance, m_scratch,
            [&](std::span<const Point2> points, bool) {
                m_points += points.size();
                if (points.size() < 3)
                    return;
                if (far) {
                    cut = clipPolygon(points, m_area, 8);
                    points = cut;
                }
                for (std::size_t i = 0; i < points.size(); ++i)
                    i == 0 ? path.moveTo(qpoint(points[i])) : path.lineTo(qpoint(points[i]));
                if (!points.empty())
                    path.closeSubpath();
            });
    return path;
}

QBrush gradientBrush(const SceneItem& item, Point2 center, Point2 along, const QColor& from, const QColor& to)
{
    const double reach = std::max(length(along), 1e-3);
    if (item.gradient == GradientForm::Linear || item.gradient == GradientForm::Cylinder) {
        QLinearGradient across(qpoint(center - along), qpoint(center + along));
        across.setColorAt(0, from);
        across.setColorAt(1, item.gradient == GradientForm::Linear ? to : from);
        if (item.gradient == GradientForm::Cylinder)
            across.setColorAt(0.5, to);
        return across;
    }
    // Half spheres are lit from their foot, curved ones from aside.
    Point2 middle = center;
    if (item.gradient == GradientForm::Hemisphere)
        middle = {center.x, center.y + reach * 0.7};
    else if (item.gradient == GradientForm::Curved)
        middle = center - along;
    QRadialGradient round(qpoint(middle), item.gradient == GradientForm::Sphere ? reach : reach * 1.7);
    round.setColorAt(0, to);
    round.setColorAt(1, from);
    return round;
}

void Artist::area(const SceneItem& item, const Box& box)
{
    flush();
    QBrush brush(colorOf(item.color));
    if (item.kind == SceneItem::Kind::Mask)
        brush = QBrush(m_options.background);
    if (item.kind == SceneItem::Kind::Gradient) {
        const Point2 center = box.center();
        const Point2 direction{std::cos(double(item.angle)), -std::sin(double(item.angle))};
        const double reach = (box.width() * std::abs(direction.x) + box.height() * std::abs(direction.y)) / 2;
        const Point2 along = direction * reach;
        brush = gradientBrush(item, center, along, colorOf(item.color), colorOf(item.color2));
    }
    if (!m_options.exact && box.width() < 1 && box.height() < 1) {
        m_painter.fillRect(QRectF(box.center().x - 0.5, box.center().y - 0.5, 1, 1), brush);
        return;
    }
    m_painter.fillPath(areaPath(item, box), brush);
    if (item.kind != SceneItem::Kind::Fill)
        return;
    // An area thinner than a pixel is still seen.
    if (m_options.exact) {
        thicken(item, brush.color());
    } else if (box.width() < 1 || box.height() < 1 || item.winding) {
        usePen(brush.color(), std::min(1.0, m_options.thinnest));
        m_painter.drawPath(areaPath(item, box));
    }
}

/// Draws the outline of those runs of a filled area that are thinner than the thinnest line, as wide as they
/// lack. A long run has its area divided by half its outline for a width.
void Artist::thicken(const SceneItem& item, const QColor& color)
{
    flatten(m_scene.elements(item), m_scene.path.arcs, m_map, kTolerance, m_scratch,
            [&](std::span<const Point2> points, bool) {
                double doubleArea = 0, outline = 0;
                for (std::size_t i = 0; i < points.size(); ++i) {
                    const Point2 a = points[i], b = points[(i + 1) % points.size()];
                    doubleArea += a.x * b.y - b.x * a.y;
                    outline += length(b - a);
                }
                const double width = outline > 0 ? std::abs(doubleArea) / outline : 0;
                if (width >= m_options.thinnest)
                    return;
                usePen(color, m_options.thinnest - width);
                run(points, true, m_options.thinnest);
            });
}

void Artist::image(const SceneItem& item, const Box& box)
{
    const SceneImage& shown = m_scene.images[item.image];
    const Affine map = m_map.of(shown.place);
    if (!shown.loaded || std::abs(map.xx * map.yy - map.xy * map.yx) < 1)
        return;
    flush();
    m_painter.save();
    m_painter.setClipPath(areaPath(item, box), Qt::IntersectClip);
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform);
    m_painter.setTransform(QTransform(map.xx, map.xy, map.yx, map.yy, map.dx, map.dy), true);
    m_painter.drawImage(QRectF(0, 0, 1, 1), shown.loaded->picture);
    m_painter.restore();
}

const QPainterPath& Artist::outline(const Glyph* glyph)
{
    const auto [found, isNew] = m_outlines.try_emplace(glyph);
    QPainterPath& path = found->second;
    if (!isNew)
        return path;
    path.setFillRule(Qt::WindingFill);
    flatten(glyph->path.elements, glyph->path.arcs, {}, 0.002, m_scratch,
            [&](std::span<const Point2> points, bool) {
                for (std::size_t i = 0; i < points.size(); ++i)
                    i == 0 ? path.moveTo(qpoint(points[i])) : path.lineTo(qpoint(points[i]));
                path.closeSubpath();
            });
    return path;
}

void Artist::greek(const SceneItem& item)
{
    const auto places = m_scene.places(item);
    QColor color = colorOf(item.color);
    color.setAlpha(color.alpha() * 5 / 8);
    usePen(color, m_options.thinnest);
    // One line through the middle of the letters, broken where the text goes on elsewhere.
    const auto middle = [&](const GlyphPlace& place, double x) { return m_map.map(place.map.map({x, 0.5})); };
    for (std::size_t i = 0; i < places.size();) {
        std::size_t j = i;
        while (j + 1 < places.size() &&
               length(middle(places[j], places[j].glyph->advance) - middle(places[j + 1], 0)) < 3)
            ++j;
        segment(middle(places[i], 0), middle(places[j], places[j].glyph->advance));
        i = j + 1;
    }
    m_points += places.size();
}

void Artist::glyphs(const SceneItem& item)
{
    const auto places = m_scene.places(item);
    const double letter = m_map.of(places.front().map).scale();
    if (!m_options.exact && letter < kSmallestLetter) {
        greek(item);
        return;
    }
    const QColor color = colorOf(item.color);
    usePen(color, widthOf(item));
    for (const GlyphPlace& place : places) {
        const Affine map = m_map.of(place.map);
        if (place.glyph->filled) {
            flush();
            const QTransform transform(map.xx, map.xy, map.yx, map.yy, map.dx, map.dy);
            const QPainterPath& shape = outline(place.glyph);
            m_points += static_cast<std::size_t>(shape.elementCount());
            m_painter.fillPath(transform.map(shape), color);
            continue;
        }
        const double width = widthOf(item);
        flatten(place.glyph->path.elements, place.glyph->path.arcs, map, kTolerance, m_scratch,
                [&](std::span<const Point2> points, bool closed) { run(points, closed, width); });
        if (m_points > kMostPoints)
            return;
    }
}

} // namespace

void paintScene(QPainter& painter, const Scene& scene, const Affine& map, const QRectF& area,
                const PaintOptions& options)
{
    Artist(painter, scene, map, area, options).paint();
}

Affine fitted(const Box& box, const QRectF& area, double margin)
{
    if (box.empty())
        return {1, 0, 0, -1, area.center().x(), area.center().y()};
    const double wide = std::max(area.width() - 2 * margin, 1.0);
    const double high = std::max(area.height() - 2 * margin, 1.0);
    double scale = std::min(box.width() > 0 ? wide / box.width() : std::numeric_limits<double>::infinity(),
                            box.height() > 0 ? high / box.height() : std::numeric_limits<double>::infinity());
    if (!std::isfinite(scale) || scale <= 0)
        scale = 1;
    const Point2 center = box.center();
    return {scale, 0, 0, -scale, area.center().x() - center.x * scale, area.center().y() + center.y * scale};
}

QColor paintedColor(SceneColor color, const QColor& background)
{
    const QColor contrast = background.lightness() < 128 ? Qt::white : Qt::black;
    QColor out = color.foreground ? contrast : QColor::fromRgb(color.rgb);
    // What is drawn in the colour of the ground would not be seen.
    const int apart = std::abs(out.red() - background.red()) + std::abs(out.green() - background.green()) +
                      std::abs(out.blue() - background.blue());
    constexpr int kHardlySeen = 40;
    if (apart < kHardlySeen)
        out = contrast;
    out.setAlpha(color.alpha);
    return out;
}

} // namespace zv::dwg
