#include "drawing/entities/SolidEdges.h"
#include "drawing/write/BitWriter.h"

#include <gtest/gtest.h>

namespace zv::dwg {
namespace {

/// Reads the model, and tries all that is left of it when it is cut short.
std::vector<PictureFigure> read(const std::string& model, bool binary)
{
    const auto all = readSolidEdges(model, binary).figures;
    for (std::size_t size = 0; size < model.size(); ++size)
        EXPECT_LE(readSolidEdges(std::string_view(model).substr(0, size), binary).figures.size(), all.size())
            << "cut after byte " << size;
    return all;
}

TEST(SolidEdges, StraightEdgesOfOldText)
{
    const auto figures = read("106 6 1 0 \n"
                              "body $-1 $1 $-1 $-1 #\n"
                              "edge $-1 $2 $3 $-1 $6 0 #\n"
                              "vertex $-1 $1 $4 #\n"
                              "vertex $-1 $1 $5 #\n"
                              "point $-1 1 2 3 #\n"
                              "point $-1 4 2.5 3 #\n"
                              "straight-curve $-1 1 2 3 1 0 0 0 0 #\n"
                              "End-of-ACIS-data ",
                              false);
    ASSERT_EQ(figures.size(), 1u);
    const auto& ring = std::get<Outline>(figures[0].shape).rings.at(0);
    EXPECT_EQ(ring.at(0).x, 1);
    EXPECT_EQ(ring.at(1).x, 4);
    EXPECT_EQ(ring.at(1).y, 2.5);
}

TEST(SolidEdges, RoundEdgesOfTextInThePlaceOfTheBody)
{
    // A quarter of a circle run backwards, and a whole one.
    const auto figures =
        read("700 9 1 0 \n"
             "@14 Some # modeller @3 ASM\n"
             "1 9.99e-007 1e-010 \n"
             "-0 body $-1 -1 $-1 $-1 $-1 $1 #\n"
             "-1 transform $-1 -1 1 0 0 0 1 0 0 0 1 10 20 0 2 no_rotate no_reflect no_shear #\n"
             "-2 edge $-1 -1 $-1 $4 0 $5 1.5 $-1 $8 reversed @7 unknown #\n"
             "-3 edge $-1 -1 $-1 $4 0 $4 6.28 $-1 $8 forward @7 unknown #\n"
             "-4 vertex $-1 -1 $-1 $2 $6 #\n"
             "-5 vertex $-1 -1 $-1 $2 $7 #\n"
             "-6 point $-1 -1 $-1 0 5 0 #\n"
             "-7 point $-1 -1 $-1 5 0 0 #\n"
             "-8 ellipse-curve $-1 -1 $-1 0 0 0 0 0 1 5 0 0 1 I I #\n",
             false);
    ASSERT_EQ(figures.size(), 2u);
    const auto& quarter = std::get<Ellipse>(figures[0].shape);
    EXPECT_NEAR(quarter.startParameter, 0, 1e-12);
    EXPECT_NEAR(quarter.endParameter, 1.5707963267948966, 1e-12);
    EXPECT_EQ(figures[0].place.origin.y, 20);
    EXPECT_EQ(figures[0].place.x.x, 2);
    const auto& whole = std::get<Ellipse>(figures[1].shape);
    EXPECT_NEAR(whole.endParameter - whole.startParameter, 6.283185307179586, 1e-12);
}

TEST(SolidEdges, StraightEdgesOfABinaryModel)
{
    BitWriter out;
    const auto name = [&](std::string_view letters) {
        out.rawChar(13);
        out.rawChar(static_cast<std::uint8_t>(letters.size()));
        out.rawBytes(letters);
    };
    const auto pointer = [&](std::int32_t place) {
        out.rawChar(12);
        out.rawLong(static_cast<std::uint32_t>(place));
    };
    const auto end = [&] { out.rawChar(17); };
    out.rawBytes("ACIS BinaryFile");
    for (const std::uint32_t number : {400, 6, 1, 0})
        out.rawLong(number);
    out.rawChar(7);
    out.rawChar(3);
    out.rawBytes("ASM");
    out.rawChar(6);
    out.rawDouble(1);
    name("edge");
    for (const int place : {-1, 1, 2, -1, 5})
        pointer(place);
    out.rawChar(11);
    end();
    for (const int place : {3, 4}) {
        name("vertex");
        for (const int other : {-1, 0, place})
            pointer(other);
        end();
    }
    for (const double x : {1.0, 4.0}) {
        name("point");
        pointer(-1);
        out.rawChar(19);
        for (const double value : {x, 2.0, 0.0})
            out.rawDouble(value);
        end();
    }
    out.rawChar(14);
    out.rawChar(8);
    out.rawBytes("straight");
    name("curve");
    pointer(-1);
    end();
    const auto figures = read(out.bytes(), true);
    ASSERT_EQ(figures.size(), 1u);
    const auto& ring = std::get<Outline>(figures[0].shape).rings.at(0);
    EXPECT_EQ(ring.at(0).x, 1);
    EXPECT_EQ(ring.at(1).x, 4);
}

TEST(SolidEdges, RecordsThatPointAtNothingUsefulGiveNoEdge)
{
    EXPECT_TRUE(read("106 2 1 0 \nedge $-1 $0 $0 $-1 $0 0 #\nedge $9 $9 $1e300 $nan $-5 #\n", false).empty());
    EXPECT_TRUE(read("", false).empty());
    EXPECT_TRUE(read("ACIS BinaryFile", true).empty());
}

} // namespace
} // namespace zv::dwg
