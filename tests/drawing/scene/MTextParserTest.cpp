#include "drawing/scene/MTextParser.h"
#include "drawing/geometry/Transform.h"

#include <gtest/gtest.h>

namespace zv::dwg {
namespace {

std::vector<MTextParagraph> parse(const Text& text)
{
    MTextLook look;
    look.height = 2;
    return parseMText(text, look);
}

Text plain(const std::vector<MTextParagraph>& paragraphs)
{
    Text out;
    for (std::size_t i = 0; i < paragraphs.size(); ++i) {
        out += i > 0 ? u"|" : u"";
        for (const MTextPiece& piece : paragraphs[i].pieces)
            out += piece.text;
    }
    return out;
}

TEST(MTextParser, ParagraphsAreSplit)
{
    EXPECT_EQ(plain(parse(u"one\\Ptwo\nthree")), u"one|two|three");
}

TEST(MTextParser, EscapedSignsAreText)
{
    EXPECT_EQ(plain(parse(u"a\\\\b\\{c\\}")), u"a\\b{c}");
}

TEST(MTextParser, GroupsRestoreTheLook)
{
    const auto found = parse(u"a{\\H4;\\C1;b}c");
    ASSERT_EQ(found[0].pieces.size(), 3u);
    EXPECT_EQ(found[0].pieces[1].look.height, 4);
    ASSERT_TRUE(found[0].pieces[1].look.color);
    EXPECT_EQ(found[0].pieces[1].look.color->index, 1);
    EXPECT_EQ(found[0].pieces[2].look.height, 2);
    EXPECT_FALSE(found[0].pieces[2].look.color);
}

TEST(MTextParser, RelativeHeightsMultiply)
{
    EXPECT_DOUBLE_EQ(parse(u"\\H0.5x;a")[0].pieces[0].look.height, 1);
}

TEST(MTextParser, TrueColourIsWrittenBlueFirst)
{
    const auto color = parse(u"\\c255;a")[0].pieces[0].look.color;
    ASSERT_TRUE(color);
    EXPECT_EQ(color->rgb, 0xff0000u);
}

TEST(MTextParser, LinesOverUnderAndThroughSwitch)
{
    const auto p = parse(u"\\Lu\\l\\Oo\\o\\Ks\\kn")[0].pieces;
    ASSERT_EQ(p.size(), 4u);
    EXPECT_TRUE(p[0].look.underline);
    EXPECT_TRUE(p[1].look.overline && !p[1].look.underline);
    EXPECT_TRUE(p[2].look.strike && !p[2].look.overline);
    EXPECT_FALSE(p[3].look.strike);
}

TEST(MTextParser, WidthSlantTrackingAndAlignment)
{
    const MTextLook look = parse(u"\\W0.8;\\Q15;\\T1.5;\\A1;x")[0].pieces[0].look;
    EXPECT_DOUBLE_EQ(look.widthFactor, 0.8);
    EXPECT_NEAR(look.oblique, 15 * kPi / 180, 1e-12);
    EXPECT_DOUBLE_EQ(look.tracking, 1.5);
    EXPECT_EQ(look.align, 1);
}

TEST(MTextParser, FontsByFamilyAndByFile)
{
    const MTextLook family = parse(u"\\fArial|b1|i0|c0|p34;x")[0].pieces[0].look;
    EXPECT_EQ(family.typeface, u"Arial");
    EXPECT_TRUE(family.bold);
    EXPECT_FALSE(family.italic);
    EXPECT_EQ(parse(u"\\Fromans.shx;x")[0].pieces[0].look.font, u"romans.shx");
}

TEST(MTextParser, StacksHaveTwoPartsAndABar)
{
    const MTextPiece stack = parse(u"\\S1/2;")[0].pieces[0];
    EXPECT_EQ(stack.kind, MTextPiece::Kind::Stack);
    EXPECT_EQ(stack.text, u"1");
    EXPECT_EQ(stack.second, u"2");
    EXPECT_EQ(stack.bar, u'/');
    EXPECT_EQ(parse(u"\\S+0.1^-0.2;")[0].pieces[0].bar, u'^');
    EXPECT_EQ(parse(u"\\S3#4;")[0].pieces[0].bar, u'#');
    EXPECT_EQ(parse(u"\\S1\\/2/3;")[0].pieces[0].text, u"1/2");
}

TEST(MTextParser, PercentAndUnicodeCodes)
{
    EXPECT_EQ(plain(parse(u"45%%d %%p1 %%c2 50%% %%065")), u"45\u00b0 \u00b11 \u22052 50%% A");
    EXPECT_EQ(plain(parse(u"\\U+00e9\\u")), u"\u00e9u");
}

TEST(MTextParser, ParagraphSettings)
{
    const auto found = parse(u"\\pi1,l2,qc;a\\Pb");
    EXPECT_EQ(found[0].justify, u'c');
    EXPECT_DOUBLE_EQ(found[0].indent, 1);
    EXPECT_DOUBLE_EQ(found[0].left, 2);
    EXPECT_EQ(found[1].justify, u'c') << "settings go on";
    EXPECT_EQ(parse(u"\\pxqr;a")[0].justify, u'r');
}

TEST(MTextParser, StandsEveryTruncation)
{
    const Text whole = u"{\\fArial|b0;a\\H2x;\\C1;\\S1/2;\\pxqc,i1;\\U+00e9%%d^I\\A1;\\W.5;}\\P\\~z";
    for (std::size_t size = 0; size <= whole.size(); ++size)
        EXPECT_FALSE(parse(whole.substr(0, size)).empty());
}

TEST(MTextParser, DeepGroupsEnd)
{
    EXPECT_EQ(plain(parse(Text(100000, u'{') + u"x")), u"x");
}

TEST(MTextParser, SingleLinesSwitchMarks)
{
    const MarkedText text = parseTextLine(u"a%%ub%%uc%%d%%130\\U+0041");
    EXPECT_EQ(text.characters, std::u32string(U"abc\u00b0\x82"
                                              U"A"));
    EXPECT_EQ(text.marks[0], 0);
    EXPECT_EQ(text.marks[1], 1);
    EXPECT_EQ(text.marks[2], 0);
}

} // namespace
} // namespace zv::dwg
