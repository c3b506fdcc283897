#include "drawing/geometry/Nurbs.h"
#include "drawing/scene/SceneParts.h"

namespace zv::dwg {

void SceneParts::arrow(Point3 tip, Point3 tail, double size, const Matrix& map, const Look& look)
{
    const Point3 back = tail - tip;
    const double space = length(back);
    if (!(size > 0) || space < size * 0.5)
        return;
    constexpr double kHalfWidth = 1.0 / 6;
    const Point3 along = unit(back) * size;
    const Point3 across = cross(kZAxis, along) * kHalfWidth;
    Path path;
    const Point2 start = flat(map.point(tip));
    path.moveTo(start);
    path.lineTo(flat(map.point(tip + along + across)));
    path.lineTo(flat(map.point(tip + along - across)));
    path.close(start);
    m_ink.fill(path, look.color);
}

void SceneParts::draw(const Leader& leader, const Look& look)
{
    if (leader.points.size() < 2)
        return;
    const auto points = leader.splined ? curveThrough(leader.points, false, {}, {}) : leader.points;
    strokePoints(points, look.frame.map, false, look);
    if (!leader.arrow)
        return;
    double size = 0.18;
    if (const DimensionStyle* style = dimensionStyle(leader.style))
        size = style->arrowSize * (style->scale > 0 ? style->scale : m_document.header.dimScale);
    arrow(points[0], leader.points[1], size, look.frame.map, look);
}

void SceneParts::draw(const MultiLeader& leader, const Look& look)
{
    for (const auto& points : leader.lines) {
        if (points.size() < 2)
            continue;
        strokePoints(points, look.frame.map, false, look);
        arrow(points[0], points[1], leader.arrowSize, look.frame.map, look);
    }
    for (const auto& landing : leader.landings)
        strokePoints({landing[0], landing[1]}, look.frame.map, false, look);
    if (leader.hasText) {
        Look own = look;
        own.color = resolve(leader.textColor, look.layer, look.frame, look.entity.alpha);
        drawMText(leader.text, look.frame.map, own);
    }
    if (leader.block.block != 0)
        draw(leader.block, look);
}

void SceneParts::draw(const MLine& line, const Look& look)
{
    const MLineStyle* style = mlineStyle(line.style);
    std::size_t count = 0;
    for (const MLineVertex& v : line.vertices)
        count = std::max(count, v.elements.size());
    if (line.vertices.size() < 2 || count == 0 || count > 64)
        return;
    const auto at = [&](const MLineVertex& v, std::size_t element) {
        const double along =
            element < v.elements.size() && !v.elements[element].empty() ? v.elements[element][0] : 0;
        return v.position + v.miter * along;
    };
    constexpr std::uint32_t kFilled = 1, kJoints = 2, kStartSquare = 16, kEndSquare = 256;
    const auto crossLine = [&](const MLineVertex& v) {
        strokePoints({at(v, 0), at(v, count - 1)}, look.frame.map, false, look);
    };
    if (style && style->flags & kFilled) {
        Path area;
        for (const MLineVertex& v : line.vertices)
            area.elements.empty() ? area.moveTo(flat(look.frame.map.point(at(v, 0))))
                                  : area.lineTo(flat(look.frame.map.point(at(v, 0))));
        for (auto v = line.vertices.rbegin(); v != line.vertices.rend(); ++v)
            area.lineTo(flat(look.frame.map.point(at(*v, count - 1))));
        area.close(area.elements.front().to);
        m_ink.fill(area, resolve(style->fill, look.layer, look.frame, look.entity.alpha));
    }
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<Point3> points;
        for (const MLineVertex& v : line.vertices)
            points.push_back(at(v, i));
        Entity element = look.entity;
        if (style && i < style->elements.size()) {
            if (element.color.kind == Color::Kind::ByLayer)
                element.color = style->elements[i].color;
            if (element.linetype == 0)
                element.linetype = style->elements[i].linetype;
        }
        const SceneColor color = resolve(element.color, look.layer, look.frame, element.alpha);
        const Look own{look.frame, element, look.layer, color, penOf(element, look.layer, color, look.frame),
                       look.owner};
        strokePoints(points, look.frame.map, line.closed, own);
    }
    if (style && style->flags & kJoints)
        for (std::size_t i = 1; i + 1 < line.vertices.size(); ++i)
            crossLine(line.vertices[i]);
    if (line.closed || !style)
        return;
    if (style->flags & kStartSquare && !line.noStartCap)
        crossLine(line.vertices.front());
    if (style->flags & kEndSquare && !line.noEndCap)
        crossLine(line.vertices.back());
}

void SceneParts::draw(const Viewport& view, const Look& look)
{
    constexpr int kPaperItself = 1;
    constexpr std::uint32_t kViewportOff = 0x20000;
    if (look.frame.depth > 0 || m_options.block == 0 || m_document.modelSpace >= m_document.blocks.size())
        return;
    const BlockRecord& model = m_document.blocks[m_document.modelSpace];
    if (view.id == kPaperItself || !view.on || view.flags & kViewportOff || &model == look.owner ||
        !(view.viewHeight > 0) || !(view.height > 0) || !(view.width > 0))
        return;
    const double scale = view.height / view.viewHeight;
    // The world turned so that the view's direction points at the viewer.
    const Matrix eye = ocsMatrix(view.viewDirection);
    Matrix turned;
    turned.x = {eye.x.x, eye.y.x, eye.z.x};
    turned.y = {eye.x.y, eye.y.y, eye.z.y};
    turned.z = {eye.x.z, eye.y.z, eye.z.z};
    const Point3 paper = {view.center.x, view.center.y, 0};
    Frame frame;
    frame.map = Matrix::translation(paper)
                    .of(Matrix::scaling({scale, scale, scale}))
                    .of(Matrix::translation({-view.viewCenter.x, -view.viewCenter.y, 0}))
                    .of(Matrix::rotationZ(view.twist))
                    .of(turned)
                    .of(Matrix::translation(view.viewTarget * -1.0));
    frame.dashScale = look.frame.dashScale * (m_document.header.paperSpaceLinetypeScaling ? 1 : scale);
    frame.depth = 1;
    Box clip;
    clip.add(Point2{view.center.x - view.width / 2, view.center.y - view.height / 2});
    clip.add(Point2{view.center.x + view.width / 2, view.center.y + view.height / 2});
    if (clip.empty() || m_scene.clips.size() > 1000)
        return;
    if (!look.layer || !look.layer->off) {
        Path border;
        border.moveTo(clip.min);
        for (const Point2 corner : {Point2{clip.max.x, clip.min.y}, clip.max, Point2{clip.min.x, clip.max.y}})
            border.lineTo(corner);
        border.close(clip.min);
        m_ink.stroke(border, look.pen);
    }
    m_scene.bounds.add(clip);
    m_scene.clips.push_back(clip);
    m_ink.setClip(static_cast<int>(m_scene.clips.size() - 1));
    m_frozen = &view.frozenLayers;
    drawBlock(model, frame);
    m_frozen = nullptr;
    m_ink.setClip(-1);
}

void SceneParts::draw(const StoredPicture& picture, const Look& look)
{
    Entity own;
    own.kind = look.entity.kind;
    own.alpha = look.entity.alpha;
    Frame frame = look.frame;
    for (const PictureFigure& figure : picture.figures) {
        own.layer = figure.layer;
        own.color = figure.color;
        own.linetype = figure.linetype;
        own.linetypeScale = figure.linetypeScale;
        own.lineweight = figure.lineweight;
        const Placement& place = figure.place;
        frame.map = look.frame.map.of({place.x, place.y, place.z, place.origin});
        if (const auto figureLook = lookOf(own, *look.owner, frame))
            std::visit([&](const auto& shape) { draw(shape, *figureLook); }, figure.shape);
    }
}

void SceneParts::draw(const Outline& outline, const Look& look)
{
    if (!outline.filled || !m_document.header.fillMode) {
        for (const auto& ring : outline.rings)
            strokePoints(ring, look.frame.map, outline.closed, look);
        return;
    }
    Path area;
    for (const auto& ring : outline.rings) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const Point2 p = flat(look.frame.map.point(ring[i]));
            i == 0 ? area.moveTo(p) : area.lineTo(p);
        }
        if (!ring.empty())
            area.close(flat(look.frame.map.point(ring.front())));
    }
    m_ink.fill(area, look.color);
}

} // namespace zv::dwg
