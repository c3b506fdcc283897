#include "drawing/records/ObjectMap.h"
#include "drawing/write/BitWriter.h"

#include <gtest/gtest.h>

namespace zv::dwg {
namespace {

using Step = std::pair<std::uint64_t, std::int64_t>; ///< To the next handle, to the next place.

/// One part of a map, with its size and room for its check sum.
std::string part(const std::vector<Step>& steps)
{
    std::string body;
    for (const auto& [handle, place] : steps) {
        putModularCharUnsigned(body, handle);
        putModularChar(body, place);
    }
    const std::size_t size = body.size() + 2;
    return std::string{static_cast<char>(size >> 8), static_cast<char>(size)} + body + std::string(2, '\0');
}

const std::string kEnd("\0\2\0\0", 4);

Result<ObjectMap> read(const std::string& bytes)
{
    return ObjectMap::read(std::as_bytes(std::span(bytes)));
}

TEST(ObjectMap, CountsFromTheLastHandleAndPlaceOfEachPart)
{
    const auto map = read(part({{5, 1000}, {2, -300}}) + part({{300, 70000}}) + kEnd);
    ASSERT_TRUE(map);
    ASSERT_EQ(map.value().places().size(), 3u);
    EXPECT_EQ(map.value().places()[map.value().find(7)].offset, 700u);
    EXPECT_EQ(map.value().places()[map.value().find(300)].offset, 70000u);
    EXPECT_EQ(map.value().find(6), ObjectMap::kNone);
    EXPECT_EQ(map.value().find(0), ObjectMap::kNone);
}

TEST(ObjectMap, LaterEntryOfAHandleCounts)
{
    const auto map = read(part({{9, 10}}) + part({{5, 1000}, {4, 20}}) + kEnd);
    ASSERT_TRUE(map);
    ASSERT_EQ(map.value().places().size(), 2u);
    EXPECT_EQ(map.value().places()[map.value().find(9)].offset, 1020u);
}

TEST(ObjectMap, RefusesEveryTruncation)
{
    const std::string whole = part({{5, 1000}, {2, -300}}) + part({{300, 70000}}) + kEnd;
    // The check sum of the end may be missing.
    for (std::size_t size = 0; size + 2 < whole.size(); ++size) {
        const auto map = read(whole.substr(0, size));
        ASSERT_FALSE(map) << "cut after byte " << size;
        EXPECT_EQ(map.error().code, ErrorCode::Damaged);
    }
}

TEST(ObjectMap, RefusesAPlaceBeforeTheStream)
{
    EXPECT_FALSE(read(part({{5, 10}, {1, -11}}) + kEnd));
}

TEST(ObjectMap, RefusesAPartShorterThanItsCheckSum)
{
    EXPECT_FALSE(read(std::string("\0\1\0\0\0\2", 6)));
}

} // namespace
} // namespace zv::dwg
