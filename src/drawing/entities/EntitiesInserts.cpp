#include "drawing/entities/EntityRecord.h"
#include "drawing/records/ExtendedData.h"

#include <algorithm>
#include <cmath>

namespace zv::dwg {

namespace {

constexpr unsigned kFewestHandleBits = 8;

Point3 readScale(RecordReader& in)
{
    if (in.version() <= Version::R14)
        return in.bitPoint3();
    Point3 scale{1, 1, 1};
    switch (in.bitPair()) {
    case 0:
        scale.x = in.rawDouble();
        scale.y = in.defaultDouble(scale.x);
        scale.z = in.defaultDouble(scale.x);
        break;
    case 1:
        scale.y = in.defaultDouble(1);
        scale.z = in.defaultDouble(1);
        break;
    case 2:
        scale.x = scale.y = scale.z = in.rawDouble();
        break;
    default:
        break;
    }
    return scale;
}

/// What the fields tell of attributes; their handles stand behind that of the block.
struct AttributeCount {
    bool any = false;
    std::int64_t owned = 0;
};

AttributeCount readInsertFields(RecordReader& in, Insert& insert)
{
    AttributeCount attributes;
    insert.position = in.bitPoint3();
    insert.scale = readScale(in);
    insert.rotation = in.bitDouble();
    insert.normal = in.bitPoint3();
    attributes.any = in.bit();
    if (in.version() >= Version::R2004 && attributes.any)
        attributes.owned = in.bitLong();
    return attributes;
}

void readInsertHandles(RecordReader& in, EntityRecord& out, const AttributeCount& attributes)
{
    std::get<Insert>(out.geometry).block = in.handle();
    if (!attributes.any)
        return;
    if (in.version() <= Version::R2000) {
        out.chain.first = in.handle();
        out.chain.last = in.handle();
        return;
    }
    out.chain.owned.resize(in.handles().checkedCount(attributes.owned, kFewestHandleBits));
    for (Handle& handle : out.chain.owned)
        handle = in.handle();
}

/// Before R2000 what a viewport shows hangs on it as extended data: after the mark "MVIEW" a version, two
/// points and a row of numbers.
void readOldView(RecordReader& in, const EntityHeader& header, Viewport& view)
{
    for (const ExtendedData& data : readExtendedData(in, header)) {
        int points = 0, reals = 0, numbers = 0;
        for (const ExtendedItem& item : data.items) {
            if (item.code == 1010)
                (points++ == 0 ? view.viewTarget : view.viewDirection) = item.point;
            if (item.code == 1040) {
                double* const fields[] = {&view.twist, &view.viewHeight, &view.viewCenter.x,
                                          &view.viewCenter.y};
                if (reals < 4)
                    *fields[reals] = item.real;
                ++reals;
            }
            if (item.code == 1070 && numbers++ == 1)
                view.flags = static_cast<std::uint32_t>(item.number);
        }
        if (points >= 2)
            return;
    }
}

/// The corners of what is seen of an underlay. A clip that is a hole goes round the hole and, through a slit,
/// round the whole sheet.
std::vector<Point2> underlayFrame(const std::vector<Point2>& clip, unsigned flags)
{
    constexpr unsigned kClipped = 1, kHole = 16;
    if (clip.empty())
        return {};
    Point2 low = clip.front(), high = low;
    for (const Point2& corner : clip) {
        low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
        high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
    }
    if (clip.size() == 2 || (flags & kClipped) == 0)
        return {low, {high.x, low.y}, high, {low.x, high.y}};
    if ((flags & kHole) == 0)
        return clip;
    std::vector<Point2> hole;
    for (const Point2& corner : clip) {
        if (corner.x != low.x && corner.x != high.x && corner.y != low.y && corner.y != high.y)
            hole.push_back(corner);
    }
    return hole;
}

} // namespace

void readInsert(RecordReader& in, EntityRecord& out)
{
    const AttributeCount attributes = readInsertFields(in, out.geometry.emplace<Insert>());
    readInsertHandles(in, out, attributes);
}

void readMInsert(RecordReader& in, EntityRecord& out)
{
    auto& insert = out.geometry.emplace<Insert>();
    const AttributeCount attributes = readInsertFields(in, insert);
    insert.columns = in.bitShort();
    insert.rows = in.bitShort();
    insert.columnSpacing = in.bitDouble();
    insert.rowSpacing = in.bitDouble();
    readInsertHandles(in, out, attributes);
}

void readImage(RecordReader& in, EntityRecord& out)
{
    constexpr unsigned kVertexBits = 128;
    constexpr int kRectangle = 1;
    constexpr unsigned kShown = 1;
    auto& image = out.geometry.emplace<Wipeout>();
    in.bitLong(); // Version.
    image.insertion = in.bitPoint3();
    image.uVector = in.bitPoint3();
    image.vVector = in.bitPoint3();
    image.pixels = in.rawPoint2();
    image.frame = (static_cast<std::uint16_t>(in.bitShort()) & kShown) != 0;
    const bool clipped = in.bit();
    in.skip(3 * 8); // Brightness, contrast, fade.
    image.clipIsHole = in.version() >= Version::R2010 && in.bit();
    if (in.bitShort() == kRectangle) {
        const Point2 low = in.rawPoint2();
        const Point2 high = in.rawPoint2();
        image.clip = {low, {high.x, low.y}, high, {low.x, high.y}};
    } else {
        image.clip.resize(in.count(kVertexBits));
        for (Point2& vertex : image.clip)
            vertex = in.rawPoint2();
    }
    if (!clipped)
        image.clip.clear();
    out.imageDefinition = in.handle();
}

void readUnderlay(RecordReader& in, EntityRecord& out)
{
    constexpr unsigned kVertexBits = 128;
    auto& figure = out.geometry.emplace<StoredPicture>().figures.emplace_back();
    Polyline frame;
    frame.closed = true;
    frame.normal = in.bitPoint3();
    const Point3 at = in.bitPoint3();
    const double angle = in.bitDouble();
    const Point3 scale = in.bitPoint3();
    const unsigned flags = in.rawChar();
    in.skip(2 * 8); // Contrast, fade.
    std::vector<Point2> clip(in.count(kVertexBits));
    for (Point2& corner : clip)
        corner = in.rawPoint2();
    clip = underlayFrame(clip, flags);
    frame.elevation = at.z;
    const double c = std::cos(angle), s = std::sin(angle);
    for (const Point2& corner : clip) {
        const double x = corner.x * scale.x, y = corner.y * scale.y;
        frame.vertices.emplace_back().position = {at.x + x * c - y * s, at.y + x * s + y * c, at.z};
    }
    figure.shape = std::move(frame);
}

void readViewport(RecordReader& in, EntityRecord& out)
{
    constexpr std::uint32_t kOff = 0x20000;
    auto& view = out.geometry.emplace<Viewport>();
    view.center = in.bitPoint3();
    view.width = in.bitDouble();
    view.height = in.bitDouble();
    if (in.version() <= Version::R14)
        return readOldView(in, out.header, view);
    view.viewTarget = in.bitPoint3();
    view.viewDirection = in.bitPoint3();
    view.twist = in.bitDouble();
    view.viewHeight = in.bitDouble();
    for (int i = 0; i < 4; ++i) // Lens, clipping planes, angle of the snap.
        in.bitDouble();
    view.viewCenter = in.rawPoint2();
    in.skip(3 * 128); // Snap base and spacing, grid.
    in.bitShort();    // Smoothness of circles.
    if (in.version() >= Version::R2007)
        in.bitShort(); // Grid lines.
    const std::int64_t frozen = in.bitLong();
    view.flags = static_cast<std::uint32_t>(in.bitLong());
    view.on = (view.flags & kOff) == 0;
    view.frozenLayers.resize(in.handles().checkedCount(frozen, kFewestHandleBits));
    for (Handle& layer : view.frozenLayers)
        layer = in.handle();
}

} // namespace zv::dwg
