#include "Draft.h"

#include "Patterns.h"
#include "platform/Text.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zv::samples {

using namespace zv::dwg;

namespace {
constexpr double kDegree = std::numbers::pi / 180;

Entity entityOf(Geometry geometry, Handle layer)
{
    Entity entity;
    entity.layer = layer;
    entity.geometry = std::move(geometry);
    return entity;
}

std::vector<PolylineVertex> vertices(const Outline& outline)
{
    std::vector<PolylineVertex> out;
    for (const Corner& corner : outline)
        out.push_back({{corner.x, corner.y, 0}, corner.bulge});
    return out;
}
} // namespace

Outline rectangle(double x, double y, double width, double height)
{
    return {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
}

Outline ring(double x, double y, double radius)
{
    return {{x - radius, y, 1}, {x + radius, y, 1}};
}

Draft::Draft(Units units, double scale) : m_units(units), m_scale(scale)
{
    BlockRecord space;
    space.handle = give();
    space.name = u"*Model_Space";
    space.layout = true;
    m_document.blocks.push_back(space);
    m_boxes.emplace_back();
    TextStyle style;
    style.name = u"Standard";
    style.handle = 0x11;
    style.font = u"simplex.shx";
    m_document.textStyles.push_back(style);
    DimensionStyle dimensions;
    dimensions.handle = 0x27;
    dimensions.name = u"Standard";
    dimensions.scale = scale;
    dimensions.textHeight = noteHeight() / scale;
    dimensions.arrowSize = dimensions.textHeight;
    m_document.dimensionStyles.push_back(dimensions);
    HeaderVariables& header = m_document.header;
    header.measurement = units == Units::Millimetres ? 1 : 0;
    header.insertionUnits = units == Units::Millimetres ? 4 : 1;
    header.linetypeScale = units == Units::Millimetres ? scale * 10 : scale * 0.5;
    header.dimScale = scale;
    header.textSize = noteHeight();
    on("0");
}

double Draft::noteHeight() const
{
    return m_scale * (m_units == Units::Inches ? 3.0 / 32 : 2.5);
}

Draft& Draft::on(const std::string& layer, int color, const std::string& type, int lineweight)
{
    const Text name = wide(layer);
    for (const Layer& each : m_document.layers) {
        if (each.name == name) {
            m_layer = each.handle;
            return *this;
        }
    }
    Layer added;
    added.handle = layer == "0" ? 0x10 : give();
    added.name = name;
    added.color.index = static_cast<std::uint8_t>(color);
    added.linetype = type.empty() ? 0 : linetype(type);
    added.lineweight = lineweight;
    m_document.layers.push_back(added);
    m_layer = added.handle;
    return *this;
}

Handle Draft::linetype(const std::string& name)
{
    const Text wanted = wide(name);
    for (const Linetype& each : m_document.linetypes)
        if (each.name == wanted)
            return each.handle;
    Linetype added = linetypeOf(name);
    added.handle = give();
    m_document.linetypes.push_back(added);
    return added.handle;
}

void Draft::see(double x, double y)
{
    Box& box = m_boxes[m_blocks.back()];
    box.x1 = std::min(box.x1, x);
    box.y1 = std::min(box.y1, y);
    box.x2 = std::max(box.x2, x);
    box.y2 = std::max(box.y2, y);
}

void Draft::add(Geometry geometry)
{
    m_document.blocks[m_blocks.back()].entities.push_back(entityOf(std::move(geometry), m_layer));
}

void Draft::line(double x1, double y1, double x2, double y2)
{
    see(x1, y1);
    see(x2, y2);
    add(Line{{x1, y1, 0}, {x2, y2, 0}});
}

void Draft::lines(const std::vector<Point2>& points, bool closed)
{
    Outline corners;
    for (const Point2& point : points)
        corners.push_back({point.x, point.y});
    outline(corners, closed);
}

void Draft::outline(const Outline& corners, bool closed, double width)
{
    Polyline polyline;
    polyline.vertices = vertices(corners);
    polyline.closed = closed;
    polyline.constantWidth = width;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Corner& from = corners[i];
        see(from.x, from.y);
        if (from.bulge != 0) {
            // The arc's height over its chord, to the right of the way for a positive bulge.
            const Corner& to = corners[(i + 1) % corners.size()];
            see((from.x + to.x) / 2 + (to.y - from.y) / 2 * from.bulge,
                (from.y + to.y) / 2 - (to.x - from.x) / 2 * from.bulge);
        }
    }
    add(polyline);
}

void Draft::circle(double x, double y, double radius)
{
    see(x - radius, y - radius);
    see(x + radius, y + radius);
    add(Circle{{x, y, 0}, radius});
}

void Draft::arc(double x, double y, double radius, double from, double to)
{
    while (to < from)
        to += 360;
    const auto at = [&](double angle) {
        see(x + radius * std::cos(angle * kDegree), y + radius * std::sin(angle * kDegree));
    };
    at(from);
    at(to);
    for (double quarter = std::ceil(from / 90) * 90; quarter < to; quarter += 90)
        at(quarter);
    add(Arc{{x, y, 0}, radius, std::fmod(from + 720, 360) * kDegree, std::fmod(to + 720, 360) * kDegree});
}

void Draft::ellipse(double x, double y, double halfWidth, double halfHeight, double from, double to)
{
    see(x - halfWidth, y - halfHeight);
    see(x + halfWidth, y + halfHeight);
    Ellipse shape;
    shape.center = {x, y, 0};
    const bool flat = halfWidth >= halfHeight;
    const double turn = flat ? 0 : -90; // Parameters count from the major axis.
    shape.majorAxis = flat ? Point3{halfWidth, 0, 0} : Point3{0, halfHeight, 0};
    shape.axisRatio = flat ? halfHeight / halfWidth : halfWidth / halfHeight;
    const bool whole = to - from >= 360;
    shape.startParameter = whole ? 0 : (from + turn) * kDegree;
    shape.endParameter = whole ? 2 * std::numbers::pi : (to + turn) * kDegree;
    add(shape);
}

void Draft::spline(const std::vector<Point2>& points)
{
    // A clamped curve with the points as its control points.
    Spline curve;
    curve.degree = static_cast<int>(std::min<std::size_t>(3, points.size() - 1));
    for (const Point2& point : points) {
        see(point.x, point.y);
        curve.controlPoints.push_back({point.x, point.y, 0});
    }
    const int inner = static_cast<int>(points.size()) - curve.degree;
    for (int i = -curve.degree; i <= inner + curve.degree; ++i)
        curve.knots.push_back(std::clamp(i, 0, inner));
    add(curve);
}

void Draft::disc(double x, double y, double radius)
{
    fill(Fill::Solid, {ring(x, y, radius)});
}

void Draft::fill(Fill fill, const std::vector<Outline>& loops, double factor)
{
    // Patterns are told in sheet inches.
    const double unit = m_units == Units::Inches ? m_scale : m_scale * 25.4;
    Hatch hatch = hatchOf(fill, unit * factor);
    for (std::size_t i = 0; i < loops.size(); ++i) {
        HatchLoop loop;
        loop.flags = i == 0 ? 3 : 18;
        loop.polyline = vertices(loops[i]);
        hatch.loops.push_back(loop);
        for (const Corner& corner : loops[i])
            see(corner.x, corner.y);
    }
    add(hatch);
}

void Draft::solid(const std::vector<Point2>& corners)
{
    Solid shape;
    for (std::size_t i = 0; i < 4; ++i) {
        // Third and fourth corner cross over in a solid.
        const std::size_t at = i == 2 ? 3 : i == 3 ? 2 : i;
        const Point2& corner = corners[std::min(at, corners.size() - 1)];
        shape.corners[i] = {corner.x, corner.y, 0};
        see(corner.x, corner.y);
    }
    add(shape);
}

void Draft::mask(double x, double y, double width, double height)
{
    Wipeout shape;
    shape.insertion = {x, y, 0};
    shape.uVector = {width, 0, 0};
    shape.vVector = {0, height, 0};
    shape.pixels = {1, 1};
    shape.clip = {{-0.5, -0.5}, {0.5, -0.5}, {0.5, 0.5}, {-0.5, 0.5}, {-0.5, -0.5}};
    add(shape);
}

void Draft::seeInsert(const Box box, const Insert& insert)
{
    if (box.x1 > box.x2)
        return;
    const double cosine = std::cos(insert.rotation), sine = std::sin(insert.rotation);
    for (const Point2& corner :
         {Point2{box.x1, box.y1}, {box.x2, box.y1}, {box.x1, box.y2}, {box.x2, box.y2}}) {
        const double px = corner.x * insert.scale.x, py = corner.y * insert.scale.y;
        see(insert.position.x + px * cosine - py * sine, insert.position.y + px * sine + py * cosine);
    }
}

void Draft::block(const std::string& name, const std::function<void()>& draw)
{
    const Text wanted = wide(name);
    for (const BlockRecord& block : m_document.blocks)
        if (block.name == wanted)
            return;
    BlockRecord added;
    added.handle = give();
    added.name = wanted;
    added.anonymous = name.front() == '*';
    m_document.blocks.push_back(added);
    m_boxes.emplace_back();
    m_blocks.push_back(m_document.blocks.size() - 1);
    const Handle layer = m_layer;
    draw();
    m_layer = layer;
    m_blocks.pop_back();
}

void Draft::attribute(const std::string& tag, const std::string& value, double x, double y, double height)
{
    Attribute shape;
    shape.tag = wide(tag);
    shape.text.text = wide(value);
    shape.text.insertion = {x, y, 0};
    shape.text.height = height;
    m_pendingAttributes.push_back(entityOf(shape, m_layer));
}

void Draft::insert(const std::string& name, double x, double y, double angle, double scaleX, double scaleY)
{
    const Text wanted = wide(name);
    for (std::size_t i = 0; i < m_document.blocks.size(); ++i) {
        if (m_document.blocks[i].name != wanted)
            continue;
        Insert shape;
        shape.block = m_document.blocks[i].handle;
        shape.position = {x, y, 0};
        shape.scale = {scaleX, scaleY, 1};
        shape.rotation = angle * kDegree;
        seeInsert(m_boxes[i], shape);
        BlockRecord& owner = m_document.blocks[m_blocks.back()];
        for (Entity& pending : m_pendingAttributes) {
            shape.attributes.push_back(static_cast<std::uint32_t>(owner.attributes.size()));
            owner.attributes.push_back(std::move(pending));
        }
        m_pendingAttributes.clear();
        add(shape);
        return;
    }
}

Document Draft::document() const
{
    Document done = m_document;
    const Box& box = m_boxes.front();
    if (box.x1 <= box.x2) {
        done.header.extentsMin = {box.x1, box.y1, 0};
        done.header.extentsMax = {box.x2, box.y2, 0};
        done.header.limitsMin = {box.x1, box.y1};
        done.header.limitsMax = {box.x2, box.y2};
    }
    const auto index = [](const auto& entries, auto& places) {
        for (std::size_t i = 0; i < entries.size(); ++i)
            places[entries[i].handle] = i;
    };
    index(done.blocks, done.blockIndex);
    index(done.layers, done.layerIndex);
    index(done.linetypes, done.linetypeIndex);
    index(done.textStyles, done.textStyleIndex);
    return done;
}

} // namespace zv::samples
