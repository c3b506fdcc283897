#include "drawing/entities/EntityRecord.h"

namespace zv::dwg {

namespace {

constexpr unsigned kFewestPointBits = 6, kFewestDoubleBits = 2;

void readPoints(RecordReader& in, std::vector<Point3>& points)
{
    points.resize(in.count(kFewestPointBits));
    for (Point3& point : points)
        point = in.bitPoint3();
}

void skipBreaks(RecordReader& in)
{
    const std::uint32_t pairs = in.count(2 * kFewestPointBits);
    for (std::uint32_t i = 0; i < pairs; ++i) {
        in.bitPoint3();
        in.bitPoint3();
    }
}

std::vector<Point3> readLeaderLine(RecordReader& in)
{
    std::vector<Point3> points;
    readPoints(in, points);
    if (in.bitLong() > 0) {
        in.bitLong(); // The segment that is broken.
        skipBreaks(in);
    }
    in.bitLong(); // Its number.
    if (in.version() >= Version::R2010) {
        in.bitShort(); // Straight or curved.
        in.color();
        in.handle();    // Linetype.
        in.bitLong();   // Lineweight.
        in.bitDouble(); // Size of the arrow.
        in.handle();    // Arrow.
        in.bitLong();
    }
    return points;
}

/// All the lines that meet at one point, from where a landing leads to the text.
void readLeaderRoot(RecordReader& in, MultiLeader& leader)
{
    constexpr unsigned kFewestLineBits = 6;
    const bool hasEnd = in.bit();
    const bool hasLanding = in.bit();
    const Point3 end = in.bitPoint3();
    const Point3 direction = in.bitPoint3();
    skipBreaks(in);
    in.bitLong(); // Its number.
    const double landing = in.bitDouble();
    const std::uint32_t lines = in.count(kFewestLineBits);
    for (std::uint32_t i = 0; i < lines && in.ok(); ++i) {
        auto points = readLeaderLine(in);
        if (hasEnd)
            points.push_back(end);
        leader.lines.push_back(std::move(points));
    }
    if (hasEnd && hasLanding)
        leader.landings.push_back(
            {end,
             {end.x + direction.x * landing, end.y + direction.y * landing, end.z + direction.z * landing}});
    if (in.version() >= Version::R2010)
        in.bitShort(); // Which way the text hangs on.
}

void readLeaderText(RecordReader& in, MultiLeader& leader)
{
    MText& text = leader.text;
    text.text = in.text();
    text.normal = in.bitPoint3();
    text.style = in.handle();
    text.insertion = in.bitPoint3();
    text.xAxis = in.bitPoint3();
    in.bitDouble(); // Rotation, which the direction tells too.
    text.width = in.bitDouble();
    text.boxHeight = in.bitDouble();
    text.lineSpacing = in.bitDouble();
    text.lineSpacingStyle = in.bitShort();
    leader.textColor = in.color();
    // Left, middle or right; the text hangs from its top.
    text.attachment = in.bitShort();
    text.direction = in.bitShort();
    text.backgroundColor = in.color();
    text.backgroundScale = in.bitDouble();
    in.bitLong(); // Transparency.
    text.backgroundFill = in.bit();
    text.backgroundWindowColor = in.bit();
    in.bitShort(); // Columns.
    in.bit();
    in.bitDouble();
    in.bitDouble();
    in.bit();
    const std::uint32_t columns = in.count(kFewestDoubleBits);
    for (std::uint32_t i = 0; i < columns; ++i)
        in.bitDouble();
    in.bit(); // Words may be broken.
    in.bit();
}

void readLeaderBlock(RecordReader& in, Insert& insert)
{
    insert.block = in.handle();
    insert.normal = in.bitPoint3();
    insert.position = in.bitPoint3();
    insert.scale = in.bitPoint3();
    insert.rotation = in.bitDouble();
    in.color();
    for (int i = 0; i < 16; ++i) // The same as a matrix.
        in.bitDouble();
}

void readLeaderContent(RecordReader& in, MultiLeader& leader)
{
    constexpr unsigned kFewestRootBits = 24;
    const std::uint32_t roots = in.count(kFewestRootBits);
    for (std::uint32_t i = 0; i < roots && in.ok(); ++i)
        readLeaderRoot(in, leader);
    in.bitDouble(); // Scale.
    in.bitPoint3(); // Where the content is.
    leader.text.height = in.bitDouble();
    leader.arrowSize = in.bitDouble();
    in.bitDouble();             // Gap.
    for (int i = 0; i < 4; ++i) // How the content hangs on.
        in.bitShort();
    leader.hasText = in.bit();
    if (leader.hasText)
        readLeaderText(in, leader);
    else if (in.bit())
        readLeaderBlock(in, leader.block);
}

} // namespace

void readMultiLeader(RecordReader& in, EntityRecord& out)
{
    auto& leader = out.geometry.emplace<MultiLeader>();
    if (in.version() >= Version::R2010)
        in.bitShort(); // Version.
    readLeaderContent(in, leader);
}

} // namespace zv::dwg
