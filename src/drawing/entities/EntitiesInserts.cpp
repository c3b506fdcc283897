#include "drawing/entities/InsertLayouts.h"
#include "drawing/records/ExtendedData.h"

#include <algorithm>
#include <cmath>

namespace zv::dwg {

namespace {

/// The handles of attributes stand behind that of the block.
void readInsertRecord(RecordReader& in, EntityRecord& out, bool repeated)
{
    EntityFieldsIn fields(in, out);
    bool attributes = false;
    std::int64_t owned = 0;
    layoutInsert(fields, out.geometry.emplace<Insert>(), repeated, attributes, owned);
    if (attributes)
        readChain(in, owned, out.chain);
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

// After the mark "MVIEW" a version, two
/// points and a row of numbers.
void readOldView(EntityFieldsIn& fields, Viewport& view)
{
    for (const ExtendedData& data : readExtendedData(fields.reader(), fields.record().header)) {
        int points = 0, reals = 0, numbers = 0;
        for (const ExtendedItem& item : data.items) {
            if (item.code == 1010)
                (points++ == 0 ? view.viewTarget : view.viewDirection) = item.point;
            if (item.code == 1040) {
                double* const inOrder[] = {&view.twist, &view.viewHeight, &view.viewCenter.x,
                                           &view.viewCenter.y};
                if (reals < 4)
                    *inOrder[reals] = item.real;
                ++reals;
            }
            if (item.code == 1070 && numbers++ == 1)
                view.flags = static_cast<std::uint32_t>(item.number);
        }
        if (points >= 2)
            return;
    }
}

void readInsert(RecordReader& in, EntityRecord& out)
{
    readInsertRecord(in, out, false);
}

void readMInsert(RecordReader& in, EntityRecord& out)
{
    readInsertRecord(in, out, true);
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
    in.skip(std::size_t{2} * 8); // Contrast, fade.
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

} // namespace zv::dwg
