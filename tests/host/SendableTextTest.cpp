#include "host/SendableText.h"

#include "support/AnsweredMessages.h"

#include <gtest/gtest.h>

#include <clocale>

namespace zv {

namespace {

using namespace std::string_literals;

TEST(SendableText, PathsAsTheyOccurCanBeSent)
{
    for (const char* text : {"", "C:\\Lib\\Door (90) %%d; it's #1*.dwg", "\\\\server\\a b\\~x.dwg", "1.00"})
        EXPECT_TRUE(canBeSent(text)) << text;
}

TEST(SendableText, DoubleQuoteAndControlCharactersCannot)
{
    EXPECT_FALSE(canBeSent("/x.dwg\" \"0,0\" \"1\") (setvar \"DIMSCALE\" 42) (princ "));
    for (int unit = 0; unit < 0x20; ++unit)
        EXPECT_FALSE(canBeSent("C:/a"s + static_cast<char>(unit) + "b.dwg")) << unit;
    EXPECT_FALSE(canBeSent("C:/a\x7F.dwg"));
}

TEST(SendableText, ControlCharactersBeyondAsciiCannotWhereTheCodePageHasThem)
{
    if (!std::setlocale(LC_ALL, "C.UTF-8"))
        GTEST_SKIP() << "no such locale";
    EXPECT_FALSE(canBeSent("C:/a\xC2\x9B.dwg"));
    EXPECT_TRUE(canBeSent("C:/\xC3\x9C\xC2\xA0\xE2\x80\x9C.dwg"));
    std::setlocale(LC_ALL, "C");
}

TEST(SendableText, BytesThatAreNoTextCannot)
{
    if (!std::setlocale(LC_ALL, "C.UTF-8"))
        GTEST_SKIP() << "no such locale";
    EXPECT_FALSE(canBeSent("/lib/T\xFCr.dwg"));
    EXPECT_TRUE(canBeSent("/lib/T\xC3\xBCr.dwg"));
    std::setlocale(LC_ALL, "C");
    EXPECT_FALSE(canBeSent("/lib/T\xFCr.dwg"));
    EXPECT_TRUE(canBeSent("/lib/T\xC3\xBCr.dwg")) << "it goes as it is";
}

TEST(SendableText, WhatIsRefusedIsTold)
{
    AnsweredMessages messages;
    EXPECT_FALSE(refusesDrawing("C:\\a.dwg", messages));
    EXPECT_FALSE(refusesText("1.00", messages));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(refusesDrawing("C:\\a\".dwg", messages));
    EXPECT_TRUE(refusesText("1\r", messages));
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0].text, "The name of this drawing cannot be sent to AutoCAD: C:\\a\".dwg");
    EXPECT_EQ(messages.shown[1].text, "This text cannot be sent to AutoCAD: 1\r");
    for (const Message& message : messages.shown) {
        EXPECT_EQ(message.title, "Zelvora");
        EXPECT_EQ(message.icon, MessageIcon::Warning);
    }
}

} // namespace

} // namespace zv
