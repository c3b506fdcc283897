#include "drawing/tool/Info.h"
#include "platform/Files.h"
#include "platform/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>

namespace zv::dwg {
namespace {

// Drawings that other programs made, with values that two independent readers agree on. They are not part of
// the repository.
const std::string kFolder = ZELVORA_SOURCE_DIR "/../shared/drawings/";

Json expectedValues()
{
    const auto text = readFile(kFolder + "expected.json");
    if (!text)
        return {};
    auto json = readJson(*text);
    return json ? *json : Json();
}

bool close(const Json& a, const Json& b)
{
    double x = 0, y = 0;
    if (!a.asDouble(x) || !b.asDouble(y))
        return false;
    return std::abs(x - y) <= 1e-9 * std::max({1e-3, std::abs(x), std::abs(y)});
}

bool closeExtents(const Json& a, const Json& b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() && b.isNull();
    return a.array()->size() == 4 && b.array()->size() == 4 &&
           std::equal(a.array()->begin(), a.array()->end(), b.array()->begin(), close);
}

class DrawingInfo : public testing::TestWithParam<std::string> {
protected:
    static const Json& all()
    {
        static const Json values = expectedValues();
        return values;
    }
};

std::vector<std::string> names()
{
    std::vector<std::string> result;
    const Json all = expectedValues();
    if (all.object() != nullptr) {
        for (const auto& [name, values] : *all.object())
            result.push_back(name);
    }
    return result;
}

TEST_P(DrawingInfo, GivesTheKnownValues)
{
    const Json& expected = *all().member(GetParam());
    const auto found = describeDrawing(kFolder + GetParam());
    if (GetParam().starts_with("older/")) {
        ASSERT_FALSE(found.ok());
        EXPECT_EQ(found.error().code, ErrorCode::Unsupported);
        EXPECT_NE(found.error().text.find("earlier than R13"), std::string::npos) << found.error().text;
        return;
    }
    ASSERT_TRUE(found.ok()) << found.error().text;
    const Json none;
    for (const char* key :
         {"version", "size", "preview", "previewOthers", "properties", "entities", "blocks", "layers"}) {
        const Json* wanted = expected.member(key);
        const Json* got = found->member(key);
        EXPECT_EQ(writeJson(got != nullptr ? *got : none), writeJson(wanted != nullptr ? *wanted : none))
            << key;
    }
    EXPECT_TRUE(closeExtents(*found->member("extents"), *expected.member("extents")))
        << writeJson(*found->member("extents")) << " for " << writeJson(*expected.member("extents"));
}

INSTANTIATE_TEST_SUITE_P(Files, DrawingInfo, testing::ValuesIn(names()), [](const auto& parameter) {
    std::string name = parameter.param;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
});
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(DrawingInfo);

TEST(ShownPath, IsTheSameBytesWhenTheyAreUtf8InAnyLocale)
{
    EXPECT_EQ(shownPath("T\xC3\xBCr.dwg"), "T\xC3\xBCr.dwg");
}

TEST(ShownPath, IsUtf8WhateverTheBytesAre)
{
    const std::string shown = shownPath("T\xFCr.dwg");
    EXPECT_EQ(toUtf8(fromUtf8(shown)), shown);
}

} // namespace
} // namespace zv::dwg
