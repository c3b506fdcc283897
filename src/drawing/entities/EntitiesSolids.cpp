#include "drawing/entities/EntityRecord.h"
#include "drawing/entities/SolidEdges.h"

#include <array>
#include <cmath>
#include <string_view>

namespace zv::dwg {

namespace {

/// The modeller's own bytes, which may be masked text in blocks or binary with an end of their own.
StoredPicture readModel(RecordReader& in)
{
    constexpr int kText = 1, kBinary = 2;
    constexpr std::string_view kEnds[] = {"End\x0E\x02of\x0E\x04"
                                          "ACIS\x0D\x04"
                                          "data",
                                          "End-of-ACIS-data", "End-of-ASM-data"};
    in.bit();
    const int form = in.bitShort();
    if (form == kText) {
        std::string model;
        while (const std::uint32_t size = in.count(8))
            model += in.bytes(size);
        for (char& c : model) {
            const auto code = static_cast<unsigned char>(c);
            if (code > ' ')
                c = static_cast<char>(159 - code);
        }
        return readSolidEdges(model, false);
    }
    if (form != kBinary) {
        in.fail();
        return {};
    }
    const std::size_t start = in.position();
    const std::string bytes = in.bytes(in.left() / 8);
    for (const std::string_view end : kEnds) {
        const std::size_t found = bytes.find(end);
        if (found == std::string::npos)
            continue;
        in.seek(start + (found + end.size()) * 8);
        return readSolidEdges(std::string_view(bytes).substr(0, found), true);
    }
    in.fail();
    return {};
}

/// A wire's points; its own look is not used.
void readWire(RecordReader& in, StoredPicture& picture)
{
    constexpr unsigned kFewestPointBits = 6;
    in.rawChar(); // Kind.
    in.bitLong(); // Mark.
    if (in.version() >= Version::R2004)
        in.bitLong(); // Colour.
    else
        in.bitShort();
    in.bitLong(); // Place in the model.
    PictureFigure figure;
    std::vector<Point3> points(in.count(kFewestPointBits));
    for (Point3& point : points)
        point = in.bitPoint3();
    if (in.bit()) {
        Placement& place = figure.place;
        for (Point3* axis : {&place.x, &place.y, &place.z, &place.origin})
            *axis = in.bitPoint3();
        const double scale = in.bitDouble();
        for (Point3* axis : {&place.x, &place.y, &place.z})
            *axis = {axis->x * scale, axis->y * scale, axis->z * scale};
        in.skip(3); // Turned, mirrored, skewed.
    }
    Outline line;
    line.rings.push_back(std::move(points));
    figure.shape = std::move(line);
    picture.figures.push_back(std::move(figure));
}

void readWires(RecordReader& in, StoredPicture& picture)
{
    constexpr unsigned kFewestWireBits = 8 + 9;
    const std::uint32_t wires = in.count(kFewestWireBits);
    for (std::uint32_t i = 0; i < wires && in.ok(); ++i)
        readWire(in, picture);
}

/// The outlines that a view shows; those of a view from above are kept.
void readSilhouettes(RecordReader& in, StoredPicture& picture)
{
    constexpr unsigned kFewestViewBits = 22;
    const std::uint32_t views = in.count(kFewestViewBits);
    for (std::uint32_t i = 0; i < views && in.ok(); ++i) {
        in.bitLong(); // The view.
        in.bitPoint3();
        const Point3 direction = in.bitPoint3();
        in.bitPoint3();
        in.bit(); // With perspective.
        if (!in.bit())
            continue;
        const bool fromAbove = direction.x == 0 && direction.y == 0 && direction.z > 0;
        StoredPicture other;
        readWires(in, fromAbove ? picture : other);
    }
}

} // namespace

void readModelGeometry(RecordReader& in, EntityRecord& out)
{
    // From R2013 on the shape stands in a section of its own, and what is left here is told nowhere.
    if (in.version() >= Version::R2013)
        return;
    RecordReader attempt = in;
    StoredPicture picture;
    if (!attempt.bit())
        picture = readModel(attempt);
    if (attempt.bit()) {
        if (attempt.bit())
            attempt.bitPoint3();
        attempt.bitLong(); // Lines on a curved face.
        if (attempt.bit())
            readWires(attempt, picture);
        readSilhouettes(attempt, picture);
    }
    if (attempt.ok() && !picture.figures.empty())
        out.geometry = std::move(picture);
}

} // namespace zv::dwg
