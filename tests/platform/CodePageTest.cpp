#include "platform/windows/CodePage.h"

#include "platform/FileText.h"
#include "platform/Text.h"
#include "platform/Utf8.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

constexpr unsigned kWestern = 1252, kJapanese = 932, kChinese = 936;

TEST(CodePage, ValidUtf8StandsAsItIs)
{
    const std::string text = "C:\\T\xC3\xBCren\\\xE9\x97\xA8.dwg;\xE9\x97\xA8\r\n";
    for (const unsigned page : {kWestern, kJapanese, kChinese})
        EXPECT_EQ(textFromFile(text, page), text);
}

TEST(CodePage, EachLineThatIsNotUtf8IsReadInTheCodePage)
{
    EXPECT_EQ(textFromFile("C:\\T\xFCr.dwg;T\xDCR\r\nC:\\T\xC3\xBCr.dwg;\xE2\x82\xAC\nplain\r\xFC", kWestern),
              "C:\\T\xC3\xBCr.dwg;T\xC3\x9CR\r\nC:\\T\xC3\xBCr.dwg;\xE2\x82\xAC\nplain\r\xC3\xBC");
}

TEST(CodePage, LinesAndTheirEndsStayInTheirPlaces)
{
    EXPECT_EQ(textFromFile("\r\n\n\xFC\r\r\n", kWestern), "\r\n\n\xC3\xBC\r\r\n");
    EXPECT_EQ(textFromFile("", kWestern), "");
}

TEST(CodePage, ASecondByteThatLooksLikeABackslashIsPartOfItsCharacter)
{
    // Each of these characters ends in the byte 5C.
    const std::string japanese = textFromFile("C:\\\x95\x5C\\\x83\x5C.dwg;\x83\x5C", kJapanese);
    EXPECT_EQ(japanese, "C:\\\xE8\xA1\xA8\\\xE3\x82\xBD.dwg;\xE3\x82\xBD");
    EXPECT_EQ(fileNamePart(japanese.substr(0, japanese.rfind(';'))), "\xE3\x82\xBD.dwg");
    EXPECT_EQ(textFromFile("C:\\\x81\x5C.dwg;\x81\x5C", kChinese), "C:\\\xE4\xB9\x97.dwg;\xE4\xB9\x97");
}

TEST(CodePage, BytesThatAreNoTextInTheCodePageComeBack)
{
    const std::string stray = "\x95\x5C\xFC!";
    const std::string text = textFromFile(stray, kJapanese);
    EXPECT_EQ(text, "\xE8\xA1\xA8\xFC!");
    EXPECT_EQ(narrow(wide(text)), text);
    EXPECT_EQ(textForFile(text, kJapanese), stray);
}

TEST(CodePage, WhatIsWrittenIsReadAsTheSameText)
{
    EXPECT_EQ(textForFile("\xE9\x97\xA8", kWestern), "\xE9\x97\xA8");
    // Beside a byte that is no text even UTF-8 would be read in the code page.
    const std::string mixed = "\xFC!;\xE8\xA1\xA8";
    EXPECT_EQ(textFromFile(textForFile(mixed, kJapanese), kJapanese), mixed);
}

TEST(CodePage, EveryByteComesBackFromTheCodePage)
{
    for (const unsigned page : {kWestern, kJapanese, kChinese}) {
        for (int first = 0x80; first < 256; ++first) {
            for (int second = 0x20; second < 256; ++second) {
                const std::string bytes{static_cast<char>(first), static_cast<char>(second), '!'};
                ASSERT_EQ(toCodePage(fromCodePage(bytes, page), page), bytes)
                    << page << " " << first << " " << second;
            }
        }
    }
}

TEST(CodePage, AnEditorsMarkOfUtf8IsNoText)
{
    EXPECT_EQ(textFromFile("\xEF\xBB\xBF"
                           "a;A\r\n\xEF\xBB\xBF"
                           "b;B\r\n",
                           kWestern),
              "a;A\r\nb;B\r\n");
}

TEST(CodePage, TheSystemHasAnEightBitOne)
{
    EXPECT_NE(systemCodePage(), 0u);
    EXPECT_NE(systemCodePage(), 65001u);
    EXPECT_EQ(textFromFile("\xFC!", systemCodePage()), textFromFile("\xFC!"));
}

} // namespace
} // namespace zv
