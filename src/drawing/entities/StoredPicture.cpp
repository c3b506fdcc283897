#include "drawing/entities/StoredPicture.h"

#include "drawing/bits/CodePage.h"
#include "drawing/geometry/Vector.h"

#include <array>

namespace zv::dwg {

namespace {

/// The kinds of chunks that are used; all others are passed over by their size.
enum class Chunk : std::uint32_t {
    Circle = 2,
    CircleThrough = 3,
    Arc = 4,
    ArcThrough = 5,
    Polyline = 6,
    Polygon = 7,
    Mesh = 8,
    Shell = 9,
    Text = 10,
    StyledText = 11,
    XLine = 12,
    Ray = 13,
    Color = 14,
    Layer = 16,
    Linetype = 18,
    Fill = 20,
    TrueColor = 22,
    Lineweight = 23,
    LinetypeScale = 24,
    PushMatrix = 29,
    PushMatrixAgain = 30,
    PopMatrix = 31,
    PolylineWithNormal = 32,
    LightPolyline = 33,
    WideText = 36,
    StyledWideText = 38,
    EllipticArc = 44,
};

constexpr double kTurn = 6.283185307179586;
constexpr unsigned kPointBits = 192;

Point3 vector(const Placement& map, Point3 p)
{
    return map.x * p.x + map.y * p.y + map.z * p.z;
}
/// First `inner`, then `outer`.
Placement joined(const Placement& outer, const Placement& inner)
{
    return {vector(outer, inner.x), vector(outer, inner.y), vector(outer, inner.z),
            vector(outer, inner.origin) + outer.origin};
}

/// Letters of the name without its ending, small.
Text fontName(const Text& name)
{
    Text out;
    for (const char16_t c : name) {
        if (c == u'.')
            break;
        out += c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
    }
    return out;
}

class PictureReader {
public:
    PictureReader(const Document& document, const Entity& entity) : m_document(document), m_entity(entity)
    {
        takeLook(m_look, entity);
    }

    /// False when a part is damaged.
    bool read(std::span<const std::byte> bytes)
    {
        constexpr std::size_t kHead = 8;
        BitReader in(bytes);
        in.skip(std::size_t{2} * 32); // Size, number of chunks.
        std::size_t at = kHead;
        while (in.ok() && bytes.size() - at >= kHead) {
            const std::size_t size = in.rawLong();
            const auto chunk = static_cast<Chunk>(in.rawLong());
            if (size < kHead || size > bytes.size() - at)
                return false;
            const auto content = bytes.subspan(at + kHead, size - kHead);
            BitReader fields(content);
            readChunk(chunk, fields, content);
            if (!fields.ok())
                return false;
            at += size;
            in.seek(at * 8);
        }
        return in.ok();
    }

    StoredPicture picture;

private:
    void readChunk(Chunk chunk, BitReader& in, std::span<const std::byte> content);
    void readLook(Chunk chunk, BitReader& in);
    Color colorOf(std::uint32_t packed) const;

    void addFigure(BitReader& in, decltype(PictureFigure::shape) shape, const Placement& place = {});
    void addRound(BitReader& in, Point3 center, Point3 start, Point3 normal, double ratio, double from,
                  double to);
    void readArc(BitReader& in, bool whole);
    void readThrough(BitReader& in, bool whole);
    void readEllipticArc(BitReader& in);
    void readOutline(BitReader& in, bool closed);
    void readMesh(BitReader& in);
    void readShell(BitReader& in);
    void readText(BitReader& in, bool styled, bool wide);
    void readLine(BitReader& in, bool bothWays);
    void readLightLine(BitReader& in, std::span<const std::byte> content);
    void pushMatrix(BitReader& in);

    Text text(BitReader& in, bool wide) const;
    Handle styleOf(const Text& typeface, const Text& font) const;

    const Document& m_document;
    const Entity& m_entity;
    PictureFigure m_look; ///< That of the next figure; its shape is not used.
    bool m_fill = false;  ///< The next closed figure is filled.
    std::vector<Placement> m_places{{}};
};

void PictureReader::readChunk(Chunk chunk, BitReader& in, std::span<const std::byte> content)
{
    switch (chunk) {
    case Chunk::Circle:
    case Chunk::Arc:
        return readArc(in, chunk == Chunk::Circle);
    case Chunk::CircleThrough:
    case Chunk::ArcThrough:
        return readThrough(in, chunk == Chunk::CircleThrough);
    case Chunk::EllipticArc:
        return readEllipticArc(in);
    case Chunk::Polyline:
    case Chunk::PolylineWithNormal:
    case Chunk::Polygon:
        return readOutline(in, chunk == Chunk::Polygon);
    case Chunk::Mesh:
        return readMesh(in);
    case Chunk::Shell:
        return readShell(in);
    case Chunk::Text:
    case Chunk::WideText:
        return readText(in, false, chunk == Chunk::WideText);
    case Chunk::StyledText:
    case Chunk::StyledWideText:
        return readText(in, true, chunk == Chunk::StyledWideText);
    case Chunk::XLine:
    case Chunk::Ray:
        return readLine(in, chunk == Chunk::XLine);
    case Chunk::LightPolyline:
        return readLightLine(in, content);
    case Chunk::PushMatrix:
    case Chunk::PushMatrixAgain:
        return pushMatrix(in);
    case Chunk::PopMatrix:
        if (m_places.size() > 1)
            m_places.pop_back();
        return;
    default:
        return readLook(chunk, in);
    }
}

void PictureReader::readLook(Chunk chunk, BitReader& in)
{
    constexpr std::uint32_t kIndexed = 0xC3000000, kByLayer = 0xC0000000;
    constexpr std::uint32_t kLinetypeByBlock = 32766;
    switch (chunk) {
    case Chunk::Color: {
        const std::uint32_t index = in.rawLong();
        m_look.color = colorOf(index < 256 ? kIndexed | index : kByLayer);
        break;
    }
    case Chunk::TrueColor:
        m_look.color = colorOf(in.rawLong());
        break;
    case Chunk::Layer: {
        const std::uint32_t place = in.rawLong();
        m_look.layer = place < m_document.layers.size() ? m_document.layers[place].handle : m_entity.layer;
        break;
    }
    case Chunk::Linetype: {
        const std::uint32_t place = in.rawLong();
        m_look.linetype = 0;
        if (place == kLinetypeByBlock)
            m_look.linetype = m_entity.linetype;
        else if (place < m_document.linetypes.size())
            m_look.linetype = m_document.linetypes[place].handle;
        break;
    }
    case Chunk::Fill:
        m_fill = in.rawLong() != 0;
        break;
    case Chunk::Lineweight: {
        const auto weight = static_cast<std::int32_t>(in.rawLong());
        m_look.lineweight = weight >= kLineweightDefault && weight <= 211 ? weight : kLineweightDefault;
        if (m_look.lineweight == kLineweightByBlock)
            m_look.lineweight = m_entity.lineweight;
        break;
    }
    case Chunk::LinetypeScale:
        m_look.linetypeScale = in.rawDouble();
        break;
    default:
        break;
    }
}

Color PictureReader::colorOf(std::uint32_t packed) const
{
    const Color color = packedColor(packed);
    return color.kind == Color::Kind::ByBlock ? m_entity.color : color;
}

void PictureReader::addFigure(BitReader& in, decltype(PictureFigure::shape) shape, const Placement& place)
{
    m_fill = false;
    if (!in.ok())
        return;
    PictureFigure figure = m_look;
    figure.shape = std::move(shape);
    figure.place = joined(m_places.back(), place);
    picture.figures.push_back(std::move(figure));
}

/// An arc of an ellipse that is `ratio` as wide across its axis as along it; filled ones become polygons.
void PictureReader::addRound(BitReader& in, Point3 center, Point3 start, Point3 normal, double ratio,
                             double from, double to)
{
    if (!m_fill || to - from < kTurn - 1e-6) {
        Ellipse round;
        round.center = center;
        round.majorAxis = start;
        round.normal = normal;
        round.axisRatio = ratio;
        round.startParameter = std::min(from, to);
        round.endParameter = std::max(from, to);
        return addFigure(in, round);
    }
    constexpr int kCorners = 72;
    const Point3 across = cross(normal, start) * ratio;
    Outline area;
    area.closed = area.filled = true;
    std::vector<Point3>& ring = area.rings.emplace_back();
    for (int i = 0; i < kCorners; ++i) {
        const double t = kTurn * i / kCorners;
        ring.push_back(center + start * std::cos(t) + across * std::sin(t));
    }
    addFigure(in, std::move(area));
}

void PictureReader::readArc(BitReader& in, bool whole)
{
    const Point3 center = in.rawPoint3();
    const double radius = in.rawDouble();
    const Point3 normal = unit(in.rawPoint3());
    // A circle begins anywhere in its plane.
    Point3 start = std::abs(normal.x) < 0.9 ? cross(normal, {1, 0, 0}) : cross(normal, {0, 1, 0});
    double sweep = kTurn;
    if (!whole) {
        start = in.rawPoint3();
        sweep = in.rawDouble();
    }
    addRound(in, center, unit(start, {1, 0, 0}) * radius, normal, 1, 0, sweep);
}

/// A circle through three points, or the arc from the first through the second to the third.
void PictureReader::readThrough(BitReader& in, bool whole)
{
    const Point3 first = in.rawPoint3();
    const Point3 second = in.rawPoint3();
    const Point3 third = in.rawPoint3();
    const Point3 a = second - first, b = third - first;
    const Point3 plane = cross(a, b);
    const double size = dot(plane, plane);
    if (!(size > 0) || !std::isfinite(size)) {
        Outline straight;
        straight.rings = {{first, second, third}};
        return addFigure(in, std::move(straight));
    }
    const Point3 center =
        first + (cross(plane, a) * dot(b, b) + cross(b, plane) * dot(a, a)) * (1 / (2 * size));
    const Point3 start = first - center, normal = unit(plane);
    double sweep = kTurn;
    if (!whole) {
        const Point3 end = third - center;
        sweep = std::atan2(dot(cross(start, end), normal), dot(start, end));
        if (sweep <= 0)
            sweep += kTurn;
    }
    addRound(in, center, start, normal, 1, 0, sweep);
}

void PictureReader::readEllipticArc(BitReader& in)
{
    const Point3 center = in.rawPoint3();
    const Point3 normal = unit(in.rawPoint3());
    const double major = in.rawDouble();
    const double minor = in.rawDouble();
    const double from = in.rawDouble();
    const double to = in.rawDouble();
    const double angle = in.rawDouble();
    constexpr double kNearPole = 1.0 / 64;
    const bool nearPole = std::abs(normal.x) < kNearPole && std::abs(normal.y) < kNearPole;
    const Point3 x = unit(cross(nearPole ? Point3{0, 1, 0} : kZAxis, normal), {1, 0, 0});
    const Point3 axis = x * std::cos(angle) + cross(normal, x) * std::sin(angle);
    addRound(in, center, axis * major, normal, major != 0 ? minor / major : 1, from, to);
}

std::vector<Point3> readPoints(BitReader& in, std::uint64_t number)
{
    std::vector<Point3> points(in.checkedCount(static_cast<std::int64_t>(number), kPointBits));
    for (Point3& point : points)
        point = in.rawPoint3();
    return points;
}

void PictureReader::readOutline(BitReader& in, bool closed)
{
    Outline outline;
    const std::uint32_t number = in.rawLong();
    outline.rings.push_back(readPoints(in, number));
    outline.closed = closed;
    outline.filled = closed && m_fill;
    addFigure(in, std::move(outline));
}

void PictureReader::readMesh(BitReader& in)
{
    constexpr std::uint32_t kMost = 1 << 15;
    Mesh mesh;
    const std::uint32_t rows = in.rawLong(), columns = in.rawLong();
    if (rows > kMost || columns > kMost)
        return in.fail();
    mesh.m = static_cast<int>(rows);
    mesh.n = static_cast<int>(columns);
    mesh.vertices = readPoints(in, std::uint64_t{rows} * columns);
    addFigure(in, std::move(mesh));
}

void PictureReader::readShell(BitReader& in)
{
    constexpr unsigned kEntryBits = 32;
    const std::uint32_t number = in.rawLong();
    const std::vector<Point3> points = readPoints(in, number);
    std::uint32_t entries = in.checkedCount(in.rawLong(), kEntryBits);
    Outline faces;
    faces.closed = true;
    faces.filled = m_fill;
    while (entries > 0 && in.ok()) {
        // A negative number of corners is that of a hole in the face before.
        const auto corners =
            static_cast<std::uint32_t>(std::abs(std::int64_t{static_cast<std::int32_t>(in.rawLong())}));
        if (corners > --entries)
            return in.fail();
        entries -= corners;
        std::vector<Point3>& ring = faces.rings.emplace_back();
        for (std::uint32_t i = 0; i < corners; ++i) {
            const std::uint32_t corner = in.rawLong();
            if (corner >= points.size())
                return in.fail();
            ring.push_back(points[corner]);
        }
    }
    addFigure(in, std::move(faces));
}

/// A text up to its zero; what fills it up to whole groups of four bytes is passed over.
Text PictureReader::text(BitReader& in, bool wide) const
{
    constexpr std::size_t kGroupBits = 32;
    const std::size_t start = in.position();
    std::string bytes;
    Text units;
    while (in.ok()) {
        const char16_t c = wide ? static_cast<char16_t>(in.rawShort()) : in.rawChar();
        if (c == 0)
            break;
        if (wide)
            units += c;
        else
            bytes += static_cast<char>(c);
    }
    // The last one need not be filled up.
    const std::size_t size = in.position() - start;
    const std::size_t rest = (kGroupBits - size % kGroupBits) % kGroupBits;
    in.skip(std::min(rest, in.left()));
    return wide ? decodeUnits(std::move(units)) : decodeText(bytes, m_document.codePage);
}

Handle PictureReader::styleOf(const Text& typeface, const Text& font) const
{
    const Text file = fontName(font);
    for (const TextStyle& style : m_document.textStyles) {
        if (!style.shapeFile &&
            (typeface.empty() ? !file.empty() && fontName(style.font) == file : style.typeface == typeface))
            return style.handle;
    }
    return typeface.empty() || file.empty() ? 0 : styleOf({}, font);
}

void PictureReader::readText(BitReader& in, bool styled, bool wide)
{
    Placement place;
    TextLine line;
    place.origin = in.rawPoint3();
    place.z = unit(in.rawPoint3());
    const Point3 along = in.rawPoint3();
    if (styled) {
        line.text = text(in, wide);
        in.skip(std::size_t{2} * 32); // Length, and whether codes are left as they are.
    }
    line.height = in.rawDouble();
    line.widthFactor = in.rawDouble();
    line.oblique = in.rawDouble();
    if (styled) {
        in.rawDouble(); // Tracking.
        line.backward = in.rawLong() != 0;
        line.upsideDown = in.rawLong() != 0;
        in.skip(std::size_t{3} * 32); // Upright, underlined, overlined.
        Text typeface;
        if (wide) {
            in.skip(std::size_t{4} * 32); // Bold, italic, characters, pitch.
            typeface = text(in, true);
        }
        const Text font = text(in, wide);
        line.style = styleOf(typeface, font);
    } else {
        line.text = text(in, wide);
    }
    const Point3 across = cross(place.z, along);
    if (length(across) > 0) {
        place.x = unit(along);
        place.y = unit(across);
    }
    addFigure(in, std::move(line), place);
}

void PictureReader::readLine(BitReader& in, bool bothWays)
{
    Ray ray;
    ray.start = in.rawPoint3();
    ray.direction = in.rawPoint3() - ray.start;
    ray.bothWays = bothWays;
    addFigure(in, ray);
}

void PictureReader::readLightLine(BitReader& in, std::span<const std::byte> content)
{
    constexpr std::size_t kSizeBytes = 4;
    const std::uint32_t size = in.rawLong();
    if (!in.ok() || size > content.size() - kSizeBytes)
        return in.fail();
    // The fields are those of the entity.
    RecordReader fields(content.subspan(kSizeBytes, size), m_document.version, m_document.codePage);
    EntityRecord record;
    readLightPolyline(fields, record);
    if (!fields.ok())
        return in.fail();
    addFigure(in, std::get<Polyline>(std::move(record.geometry)));
}

void PictureReader::pushMatrix(BitReader& in)
{
    // Row by row; the origin is the last column.
    std::array<double, 16> m{};
    for (double& value : m)
        value = in.rawDouble();
    if (in.ok())
        m_places.push_back(
            joined(m_places.back(),
                   {{m[0], m[4], m[8]}, {m[1], m[5], m[9]}, {m[2], m[6], m[10]}, {m[3], m[7], m[11]}}));
}

} // namespace

void takeLook(PictureFigure& figure, const Entity& entity)
{
    figure.layer = entity.layer;
    figure.color = entity.color;
    figure.linetype = entity.linetype;
    figure.linetypeScale = entity.linetypeScale;
    figure.lineweight = entity.lineweight;
}

StoredPicture readStoredPicture(std::span<const std::byte> bytes, const Document& document,
                                const Entity& entity, bool& complete)
{
    PictureReader reader(document, entity);
    complete = reader.read(bytes);
    return std::move(reader.picture);
}

} // namespace zv::dwg
