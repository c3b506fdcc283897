#include "drawing/fonts/ShxFont.h"
#include "drawing/fonts/StrokeFont.h"

#include <gtest/gtest.h>

namespace zv::dwg {
namespace {

using namespace std::string_literals;

std::string word(std::size_t value)
{
    return {char(value & 0xff), char(value >> 8)};
}

/// A file of the shapes form with figures from number 65 up; capitals are 10 high.
std::string shapesFile(const std::vector<std::string>& codes)
{
    std::vector<std::pair<std::size_t, std::string>> figures{{0, "TEST\0\x0a\x03\x02\0"s}};
    for (std::size_t i = 0; i < codes.size(); ++i)
        figures.emplace_back(65 + i, "\0"s + codes[i] + "\0"s);
    std::string file = "AutoCAD-86 shapes V1.0\r\n\x1a";
    file += word(0) + word(figures.back().first) + word(figures.size());
    for (const auto& [number, bytes] : figures)
        file += word(number) + word(bytes.size());
    for (const auto& [number, bytes] : figures)
        file += bytes;
    return file + "EOF";
}

const Glyph* glyphOf(const std::string& code, bool vertical = false)
{
    static std::shared_ptr<ShxFont> kept;
    kept = ShxFont::read(shapesFile({code, "\x14"s}), vertical).value();
    return kept->glyph(U'A');
}

Point2 endOf(const Glyph* glyph)
{
    return glyph->path.elements.back().to;
}

TEST(ShxFont, NameAndHeightComeFromFigureZero)
{
    const auto font = ShxFont::read(shapesFile({"\x14"s}));
    ASSERT_TRUE(font);
    EXPECT_EQ(font.value()->name(), "TEST");
    EXPECT_TRUE(font.value()->isFont());
    EXPECT_NEAR(endOf(font.value()->glyph(U'A')).y, 0.1, 1e-12);
}

TEST(ShxFont, VectorsGoInSixteenDirections)
{
    const double kX[16] = {1, 1, 1, .5, 0, -.5, -1, -1, -1, -1, -1, -.5, 0, .5, 1, 1};
    const double kY[16] = {0, .5, 1, 1, 1, 1, 1, .5, 0, -.5, -1, -1, -1, -1, -1, -.5};
    for (int i = 0; i < 16; ++i) {
        const Glyph* glyph = glyphOf(std::string(1, char(0x20 | i)));
        EXPECT_NEAR(endOf(glyph).x, 0.2 * kX[i], 1e-12) << i;
        EXPECT_NEAR(endOf(glyph).y, 0.2 * kY[i], 1e-12) << i;
    }
}

TEST(ShxFont, PenUpMovesWithoutDrawing)
{
    const Glyph* glyph = glyphOf("\x02\x20\x01\x14"s);
    ASSERT_EQ(glyph->path.elements.size(), 2u);
    EXPECT_NEAR(glyph->path.elements[0].to.x, 0.2, 1e-12);
    EXPECT_NEAR(glyph->advance, 0.2, 1e-12);
}

TEST(ShxFont, ScaleFactorsMultiplyAndDivide)
{
    EXPECT_NEAR(endOf(glyphOf("\x04\x03\x20"s)).x, 0.6, 1e-12);
    EXPECT_NEAR(endOf(glyphOf("\x03\x02\x20"s)).x, 0.1, 1e-12);
    EXPECT_NEAR(endOf(glyphOf("\x03\0\x20"s)).x, 0.2, 1e-12) << "division by zero is passed over";
}

TEST(ShxFont, PlacesArePushedAndPopped)
{
    const Glyph* glyph = glyphOf("\x05\x20\x06\x14"s);
    ASSERT_EQ(glyph->path.elements.size(), 4u);
    EXPECT_NEAR(endOf(glyph).x, 0, 1e-12);
    EXPECT_NEAR(endOf(glyph).y, 0.1, 1e-12);
}

TEST(ShxFont, FiguresCallOthers)
{
    const Glyph* glyph = glyphOf("\x07\x42\x10"s);
    EXPECT_NEAR(endOf(glyph).x, 0.1, 1e-12);
    EXPECT_NEAR(endOf(glyph).y, 0.1, 1e-12);
}

TEST(ShxFont, AFigureThatCallsItselfEnds)
{
    EXPECT_NE(glyphOf("\x07\x41\x07\x41\x07\x41\x10"s), nullptr);
}

TEST(ShxFont, LongMovesAreSigned)
{
    const Glyph* glyph = glyphOf("\x08\x05\xfd"s);
    EXPECT_NEAR(endOf(glyph).x, 0.5, 1e-12);
    EXPECT_NEAR(endOf(glyph).y, -0.3, 1e-12);
}

TEST(ShxFont, SeveralMovesEndAtZero)
{
    const Glyph* glyph = glyphOf("\x09\x01\x02\x03\x04\0\0\x10"s);
    EXPECT_EQ(glyph->path.elements.size(), 4u);
    EXPECT_NEAR(endOf(glyph).x, 0.5, 1e-12);
    EXPECT_NEAR(endOf(glyph).y, 0.6, 1e-12);
}

TEST(ShxFont, OctantArcsTurnBothWays)
{
    // A quarter from the east: centre to the left of the start.
    const Glyph* left = glyphOf("\x0a\x05\x02"s);
    EXPECT_NEAR(endOf(left).x, -0.5, 1e-9);
    EXPECT_NEAR(endOf(left).y, 0.5, 1e-9);
    const Glyph* right = glyphOf("\x0a\x05\xfe"s);
    EXPECT_NEAR(endOf(right).x, -0.5, 1e-9);
    EXPECT_NEAR(endOf(right).y, -0.5, 1e-9);
    const Glyph* full = glyphOf("\x0a\x05\x10"s);
    EXPECT_NEAR(full->bounds.width(), 1, 1e-9);
    EXPECT_NEAR(full->bounds.height(), 1, 1e-9);
}

TEST(ShxFont, FractionalArcsStartAndEndInsideOctants)
{
    // From 55 to 95 degrees: offsets of 56/256 and 28/256 of an octant.
    const Glyph* glyph = glyphOf("\x0b\x38\x1c\0\x03\x12"s);
    const double from = (1 + 56.0 / 256) * kPi / 4, to = (2 + 28.0 / 256) * kPi / 4;
    EXPECT_NEAR(endOf(glyph).x, 0.3 * (std::cos(to) - std::cos(from)), 1e-9);
    EXPECT_NEAR(endOf(glyph).y, 0.3 * (std::sin(to) - std::sin(from)), 1e-9);
}

TEST(ShxFont, BulgesAreHalfCirclesAt127)
{
    const Glyph* one = glyphOf("\x0c\x04\0\x7f"s);
    EXPECT_NEAR(one->bounds.min.y, -0.2, 1e-9);
    EXPECT_NEAR(endOf(one).x, 0.4, 1e-9);
    const Glyph* more = glyphOf("\x0d\x04\0\x81\x04\0\x7f\0\0\x14"s);
    EXPECT_NEAR(more->bounds.max.y, 0.2, 1e-9);
    EXPECT_NEAR(endOf(more).x, 0.8, 1e-9);
    EXPECT_NEAR(endOf(more).y, 0.1, 1e-9);
}

TEST(ShxFont, VerticalCommandsAreForVerticalText)
{
    const std::string code = "\x0e\x08\x05\x05\x10"s;
    EXPECT_NEAR(endOf(glyphOf(code)).x, 0.1, 1e-12);
    EXPECT_NEAR(endOf(glyphOf(code, true)).x, 0.6, 1e-12);
}

TEST(ShxFont, BigFontsAreFoundByTwoByteCode)
{
    const std::string head = "BIG\0\x0a\0\x02\x0a\0"s, sign = "\0\x28\0"s;
    std::string file = "AutoCAD-86 bigfont 1.0\r\n\x1a";
    file += word(8) + word(2) + word(1) + word(0x8140) + word(0x9ffc);
    const std::size_t data = file.size() + 16;
    file += word(0) + word(head.size()) + word(data) + word(0);
    file += word(0x8140) + word(sign.size()) + word(data + head.size()) + word(0);
    file += head + sign;
    const auto font = ShxFont::read(file);
    ASSERT_TRUE(font);
    EXPECT_EQ(font.value()->kind(), ShxFont::Kind::BigFont);
    ASSERT_NE(font.value()->glyph(0x8140), nullptr);
    EXPECT_NEAR(font.value()->glyph(0x8140)->advance, -0.2, 1e-12);
}

TEST(ShxFont, ShapeFilesWithoutFigureZeroAreNoFonts)
{
    std::string file = "AutoCAD-86 shapes V1.0\r\n\x1a";
    const std::string figure = "TRACK\0\x40\0"s;
    file += word(130) + word(130) + word(1) + word(130) + word(figure.size()) + figure;
    const auto font = ShxFont::read(file);
    ASSERT_TRUE(font);
    EXPECT_FALSE(font.value()->isFont());
    EXPECT_EQ(font.value()->numberOf("TRACK"), 130u);
    EXPECT_NEAR(font.value()->figure(130)->advance, 4, 1e-12);
}

TEST(ShxFont, OwnLetteringComesBackFromItsFile)
{
    StrokeFont drawn;
    const auto font = ShxFont::read(strokeFontFile());
    ASSERT_TRUE(font);
    EXPECT_EQ(font.value()->kind(), ShxFont::Kind::UniFont);
    for (const char32_t c : U"ABCxyz0189 &@\u00e4\u00d8\u2205\u017d") {
        if (c == 0)
            continue;
        const Glyph *a = drawn.glyph(c), *b = font.value()->glyph(c);
        ASSERT_NE(a, nullptr) << unsigned(c);
        ASSERT_NE(b, nullptr) << unsigned(c);
        EXPECT_NEAR(a->advance, b->advance, 1e-9) << unsigned(c);
        if (a->bounds.empty())
            continue;
        EXPECT_NEAR(a->bounds.min.x, b->bounds.min.x, 0.01) << unsigned(c);
        EXPECT_NEAR(a->bounds.max.y, b->bounds.max.y, 0.01) << unsigned(c);
    }
}

TEST(ShxFont, OwnLetteringHoldsTheLatinAlphabets)
{
    StrokeFont font;
    for (char32_t c = 0x20; c < 0x7f; ++c)
        EXPECT_NE(font.glyph(c), nullptr) << unsigned(c);
    for (char32_t c = 0xa0; c <= 0xff; ++c)
        EXPECT_TRUE(c == 0xaa || c == 0xba || font.glyph(c)) << unsigned(c);
}

TEST(ShxFont, RefusesWhatIsNoShapeFile)
{
    EXPECT_EQ(ShxFont::read("").error().code, ErrorCode::Damaged);
    EXPECT_EQ(ShxFont::read("AutoCAD-86 shapes V1.0").error().code, ErrorCode::Damaged);
    EXPECT_EQ(ShxFont::read("AutoCAD-86 letters 1.0\r\n\x1a").error().code, ErrorCode::Damaged);
}

TEST(ShxFont, StandsEveryTruncation)
{
    for (const std::string& whole : {strokeFontFile().substr(0, 900), shapesFile({"\x0d\x04\0\x81\0\0"s})})
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const auto font = ShxFont::read(whole.substr(0, size));
            for (char32_t c = 1; font && c < 0x80; ++c)
                font.value()->glyph(c);
        }
}

TEST(ShxFont, StandsEveryDamagedByte)
{
    const std::string whole = shapesFile({"\x0d\x04\0\x81\0\0"s, "\x07\x41\x0a\x05\x02"s});
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const int value : {0x00, 0x07, 0x7f, 0xff}) {
            std::string damaged = whole;
            damaged[at] = char(value);
            const auto font = ShxFont::read(damaged);
            for (std::uint32_t n = 0; font && n < 0x80; ++n)
                font.value()->figure(n);
        }
}

} // namespace
} // namespace zv::dwg
