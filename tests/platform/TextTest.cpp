#include "platform/Text.h"

#include <gtest/gtest.h>

#include <clocale>

namespace zv {
namespace {

class TextTest : public testing::Test {
protected:
    void SetUp() override { std::setlocale(LC_ALL, "C.UTF-8"); }
    void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

std::string everyByte()
{
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes.push_back(static_cast<char>(i));
    return bytes;
}

TEST_F(TextTest, EveryByteComesBackFromWideText)
{
    EXPECT_EQ(narrow(wide(everyByte())), everyByte());
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(narrow(wide(everyByte())), everyByte());
}

TEST_F(TextTest, EveryPairOfBytesComesBackFromWideText)
{
    for (const char* locale : {"C.UTF-8", "C"}) {
        std::setlocale(LC_ALL, locale);
        for (int first = 0x80; first < 256; ++first) {
            for (int second = 0; second < 256; ++second) {
                const std::string bytes{static_cast<char>(first), static_cast<char>(second), 'x'};
                ASSERT_EQ(narrow(wide(bytes)), bytes) << locale << " " << first << " " << second;
            }
        }
    }
}

TEST(Text, Utf8GoesBothWays)
{
    EXPECT_EQ(fromUtf8("a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"), u"a\u00E4\u20AC\U0001F600");
    EXPECT_EQ(toUtf8(u"a\u00E4\u20AC\U0001F600"), "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(Text, DamagedUtf8BecomesTheReplacement)
{
    EXPECT_EQ(fromUtf8("a\x80z"), u"a\uFFFDz");
    EXPECT_EQ(fromUtf8("\xC0\x80"), u"\uFFFD\uFFFD");
    EXPECT_EQ(fromUtf8("\xE2\x82"), u"\uFFFD\uFFFD");
    EXPECT_EQ(fromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(fromUtf8("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(toUtf8(std::u16string(1, char16_t(0xD800))), "\xEF\xBF\xBD");
}

TEST_F(TextTest, CaseMakesNoDifferenceToSameText)
{
    EXPECT_TRUE(sameText("Settings", "sETTINGS"));
    EXPECT_FALSE(sameText("Settings", "Setting"));
    EXPECT_TRUE(sameText("", ""));
    EXPECT_TRUE(sameName("Zelvora.ini", "zelvora.INI"));
    EXPECT_FALSE(sameName("a", ""));
}

TEST_F(TextTest, CapitalsKeepWhatIsNoText)
{
    EXPECT_EQ(upper("a.dwg"), "A.DWG");
    EXPECT_EQ(upper("\x81"
                    "b"),
              "\x81"
              "B");
}

TEST_F(TextTest, FindsWithoutRegardToCase)
{
    EXPECT_EQ(findText("Door Jamb", "JAMB"), 5u);
    EXPECT_EQ(findText("Door", ""), 0u);
    EXPECT_EQ(findText("", ""), 0u);
    EXPECT_EQ(findText("Door", "doors"), std::string_view::npos);
    EXPECT_EQ(findText("\xFF\xFE Door", "door"), 3u);
    EXPECT_EQ(findText("\xFF\xFE Door", "x"), std::string_view::npos);
}

TEST(Text, NumbersAreShortPlainDecimals)
{
    EXPECT_EQ(numberText(0), "0");
    EXPECT_EQ(numberText(-0.0), "0");
    EXPECT_EQ(numberText(1), "1");
    EXPECT_EQ(numberText(2.5), "2.5");
    EXPECT_EQ(numberText(-0.125), "-0.125");
    EXPECT_EQ(numberText(0.1 + 0.2), "0.3");
    EXPECT_EQ(numberText(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(numberText(1e15), "1000000000000000");
    EXPECT_EQ(numberText(1e20), "100000000000000000000");
    EXPECT_EQ(numberText(1e-7), "0.0000001");
    EXPECT_EQ(numberText(123456.789), "123456.789");
    EXPECT_EQ(numberText(9.9999999999999995), "10");
}

TEST(Text, NumbersAreReadWhole)
{
    double value = 7;
    EXPECT_TRUE(textNumber(" 2.5 ", value));
    EXPECT_EQ(value, 2.5);
    EXPECT_TRUE(textNumber("-3", value));
    EXPECT_EQ(value, -3);
    EXPECT_TRUE(textNumber("+.5", value));
    EXPECT_EQ(value, 0.5);
    EXPECT_TRUE(textNumber("4.", value));
    EXPECT_EQ(value, 4);
    EXPECT_TRUE(textNumber("1E3", value));
    EXPECT_EQ(value, 1000);
    EXPECT_TRUE(textNumber("4e-1", value));
    EXPECT_EQ(value, 0.4);
    for (const char* text :
         {"", " ", "x", "1x", "1 2", "--1", "1e", "e3", "1e999", "2,5", "0x10", "nan", "inf", "-", "."})
        EXPECT_FALSE(textNumber(text, value)) << text;
    EXPECT_EQ(value, 0.4);
}

TEST(Text, RoundingIsHalfToEven)
{
    EXPECT_EQ(roundHalfEven(0.5), 0);
    EXPECT_EQ(roundHalfEven(1.5), 2);
    EXPECT_EQ(roundHalfEven(2.5), 2);
    EXPECT_EQ(roundHalfEven(-2.5), -2);
    EXPECT_EQ(roundHalfEven(2.51), 3);
    EXPECT_EQ(roundHalfEven(1e300), 1e300);
}

TEST(Text, FileNameStandsBehindTheLastSeparatorOfEitherKind)
{
    EXPECT_EQ(fileNamePart("C:\\a\\b.dwg"), "b.dwg");
    EXPECT_EQ(fileNamePart("/a/b.dwg"), "b.dwg");
    EXPECT_EQ(fileNamePart("/a\\b/c.dwg"), "c.dwg");
    EXPECT_EQ(fileNamePart("b.dwg"), "b.dwg");
    EXPECT_EQ(fileNamePart("a\\"), "");
}

} // namespace
TEST(Text, ADrawingIsNamedAsItsFileInCapitalsWithoutItsEnding)
{
    EXPECT_EQ(drawingName("C:\\details\\detail.dwg"), "DETAIL");
    EXPECT_EQ(drawingName("/details/detail.DWG"), "DETAIL");
    EXPECT_EQ(drawingName("a.dwg.dwg"), "A");
    EXPECT_EQ(drawingName("a.dwg.dwg.dwg"), "A.DWG");
    EXPECT_EQ(drawingName("a.dwgx.dwg"), "AX");
    EXPECT_EQ(drawingName("a.b"), "A.B");
    EXPECT_EQ(drawingName("a..dwgdwg.dwg"), "A.DWG") << "what a deletion joins is not looked at again";
    EXPECT_EQ(drawingName("C:\\a.DWG\\Bolt.dwg"), "BOLT");
    EXPECT_EQ(drawingName("Bolt"), "BOLT");
    EXPECT_EQ(drawingName("C:\\details\\"), "");
}

} // namespace zv
