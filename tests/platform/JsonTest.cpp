#include "platform/Json.h"

#include <gtest/gtest.h>

#include <limits>

namespace zv {

namespace {

std::string again(std::string_view text)
{
    const Result<Json> json = readJson(text);
    return json ? writeJson(*json) : "error";
}

TEST(Json, ValuesComeBackAsTheyWere)
{
    for (const char* text :
         {"null", "true", "false", "0", "-7", "9223372036854775807", "1.5", "2.0", "-0.0", "1e+300", "\"\"",
          "\"a b\"", "[]", "[1,[2,3],{}]", "{}", "{\"point\":[1.5,2.0,0.0]}", "{\"id\":1,\"op\":\"get\"}"})
        EXPECT_EQ(again(text), text);
}

TEST(Json, WholeNumbersAndDoublesStayApart)
{
    EXPECT_NE(readJson("2")->whole(), nullptr);
    EXPECT_NE(readJson("2.0")->number(), nullptr);
    EXPECT_NE(readJson("2e0")->number(), nullptr);
    EXPECT_EQ(writeJson(Json(2.0)), "2.0");
    EXPECT_EQ(writeJson(Json(std::int64_t{2})), "2");
    EXPECT_NE(readJson("9223372036854775808")->number(), nullptr);
}

TEST(Json, TextsKeepEveryCharacter)
{
    EXPECT_EQ(*readJson(R"("\"\\\/\b\f\n\r\t\u00e9\ud83d\ude00")")->text(),
              "\"\\/\b\f\n\r\t\u00e9\U0001F600");
    EXPECT_EQ(writeJson(Json("a\r\"\\\x01\u00e9")), "\"a\\u000d\\\"\\\\\\u0001\u00e9\"");
}

TEST(Json, NumberThatIsNotFiniteIsNull)
{
    EXPECT_EQ(writeJson(Json(std::numeric_limits<double>::infinity())), "null");
}

TEST(Json, RefusesWhatIsNoJson)
{
    for (const char* text : {"",
                             " ",
                             "nul",
                             "tru",
                             "01",
                             "+1",
                             "1.",
                             ".5",
                             "1e",
                             "-",
                             "\"",
                             "\"\\x\"",
                             "\"\\u12\"",
                             "\"\\ud800\"",
                             "\"\\udc00\"",
                             "\"\\ud800\\u0041\"",
                             "\"\n\"",
                             "[1,]",
                             "[1",
                             "{\"a\"}",
                             "{\"a\":}",
                             "{a:1}",
                             "{\"a\":1,}",
                             "1 2",
                             "[]]",
                             "\"\xff\"",
                             "\"\xc0\x80\"",
                             "\"\xed\xa0\x80\"",
                             "\"\xf4\x90\x80\x80\"",
                             "1e999"})
        EXPECT_FALSE(readJson(text)) << text;
}

TEST(Json, RefusesEveryTruncation)
{
    const std::string whole = R"({"id":3,"result":{"point":[1.5,-2e3,0]},"t":"\u00e9é"})";
    ASSERT_TRUE(readJson(whole));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(readJson(std::string_view(whole).substr(0, size))) << size;
}

TEST(Json, DepthAndCountAreBounded)
{
    const std::string deep = std::string(1000, '[') + std::string(1000, ']');
    ASSERT_FALSE(readJson(deep));
    EXPECT_EQ(readJson(deep).error().code, ErrorCode::TooLarge);
    std::string many = "[0";
    for (int count = 0; count < 1'100'000; ++count)
        many += ",0";
    EXPECT_EQ(readJson(many + "]").error().code, ErrorCode::TooLarge);
}

TEST(Json, FirstMemberOfANameCounts)
{
    const Result<Json> json = readJson(R"({"a":1,"A":2,"a":3})");
    EXPECT_EQ(*json->member("a")->whole(), 1);
    EXPECT_EQ(*json->member("A")->whole(), 2);
    EXPECT_EQ(json->member("b"), nullptr);
}

} // namespace

} // namespace zv
