#include "drawing/scene/Ink.h"

#include "drawing/scene/Dashes.h"

namespace zv::dwg {

namespace {

constexpr std::size_t kMostElements = 3'000'000;
constexpr std::size_t kMostGlyphs = 1'000'000;
constexpr std::size_t kMostItems = 1'500'000;
/// Far fewer than the elements, so that one drawing's tiny dashes cannot use them all up.
constexpr std::size_t kMostDashes = 1'000'000;

/// Beyond this nothing is a length of a drawing any more, and sums of it stop being exact.
constexpr double kFarthest = 1e15;

bool usable(const Path& path)
{
    for (const PathElement& e : path.elements)
        if (!(std::abs(e.to.x) < kFarthest && std::abs(e.to.y) < kFarthest))
            return false;
    for (const PathArc& a : path.arcs)
        for (const double v : {a.center.x, a.center.y, a.u.x, a.u.y, a.v.x, a.v.y, a.start, a.sweep})
            if (!(std::abs(v) < kFarthest))
                return false;
    return !path.elements.empty();
}

} // namespace

bool Ink::full() const
{
    return m_scene.path.elements.size() > kMostElements || m_scene.glyphs.size() > kMostGlyphs ||
           m_scene.items.size() > kMostItems;
}

void Ink::add(const Path& path, SceneItem item)
{
    if (!usable(path))
        return;
    if (full()) {
        m_scene.complete = false;
        return;
    }
    Path& all = m_scene.path;
    item.first = static_cast<std::uint32_t>(all.elements.size());
    item.count = static_cast<std::uint32_t>(path.elements.size());
    const auto base = static_cast<std::uint32_t>(all.arcs.size());
    for (PathElement e : path.elements) {
        e.arc += base;
        all.elements.push_back(e);
    }
    all.arcs.insert(all.arcs.end(), path.arcs.begin(), path.arcs.end());
    item.bounds = path.bounds();
    item.clip = m_clip;
    if (m_clip < 0)
        m_scene.bounds.add(item.bounds);
    m_scene.items.push_back(item);
}

void Ink::stroke(const Path& path, const Pen& pen)
{
    if (pen.linetype && strokeDashed(path, pen))
        return;
    SceneItem item;
    item.color = pen.color;
    item.lineweight = static_cast<std::int16_t>(pen.lineweight);
    add(path, item);
}

bool Ink::strokeDashed(const Path& path, const Pen& pen)
{
    if (!usable(path) || m_dashes > kMostDashes)
        return false;
    Dashes dashes(*pen.linetype, pen.dashScale, pen.throughVertices);
    std::vector<GlyphPlace> figures;
    if (!dashes.cut(path, figures, m_figures))
        return false;
    m_dashes += dashes.path().elements.size();
    SceneItem item;
    item.color = pen.color;
    item.lineweight = static_cast<std::int16_t>(pen.lineweight);
    add(dashes.path(), item);
    glyphs(figures, pen.color, pen.lineweight);
    return true;
}

void Ink::fill(const Path& path, SceneColor color, bool winding)
{
    SceneItem item;
    item.kind = SceneItem::Kind::Fill;
    item.color = color;
    item.winding = winding;
    add(path, item);
}

void Ink::gradient(const Path& path, SceneColor from, SceneColor to, double angle, GradientForm form)
{
    SceneItem item;
    item.kind = SceneItem::Kind::Gradient;
    item.color = from;
    item.color2 = to;
    item.angle = static_cast<float>(angle);
    item.gradient = form;
    add(path, item);
}

void Ink::mask(const Path& path)
{
    SceneItem item;
    item.kind = SceneItem::Kind::Mask;
    add(path, item);
}

void Ink::image(const Path& path, SceneImage image)
{
    constexpr std::size_t kMostImages = 1000;
    if (m_scene.images.size() >= kMostImages)
        return;
    SceneItem item;
    item.kind = SceneItem::Kind::Image;
    item.image = static_cast<std::uint32_t>(m_scene.images.size());
    m_scene.images.push_back(std::move(image));
    add(path, item);
}

void Ink::glyphs(const std::vector<GlyphPlace>& places, SceneColor color, int lineweight)
{
    SceneItem item;
    item.kind = SceneItem::Kind::Glyphs;
    item.color = color;
    item.lineweight = static_cast<std::int16_t>(lineweight);
    item.clip = m_clip;
    item.first = static_cast<std::uint32_t>(m_scene.glyphs.size());
    for (const GlyphPlace& place : places) {
        if (full()) {
            m_scene.complete = false;
            break;
        }
        const Box& box = place.glyph->bounds;
        if (box.empty())
            continue;
        Box placed;
        for (const Point2 corner :
             {box.min, box.max, Point2{box.min.x, box.max.y}, Point2{box.max.x, box.min.y}})
            placed.add(place.map.map(corner));
        if (placed.empty() || std::max(std::abs(placed.min.x), std::abs(placed.max.x)) > kFarthest ||
            std::max(std::abs(placed.min.y), std::abs(placed.max.y)) > kFarthest)
            continue;
        item.bounds.add(placed);
        m_scene.glyphs.push_back(place);
        ++item.count;
    }
    if (item.count == 0)
        return;
    if (m_clip < 0)
        m_scene.bounds.add(item.bounds);
    m_scene.items.push_back(item);
}

} // namespace zv::dwg
