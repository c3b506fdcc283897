#include "search/KeywordMatch.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

using enum Keyword;

/// All flags by the number of their combination, from 0 to 728.
std::array<Keyword, kKeywords> combination(int number)
{
    std::array<Keyword, kKeywords> flags{};
    for (Keyword& flag : flags) {
        flag = static_cast<Keyword>(number % 3);
        number /= 3;
    }
    return flags;
}

constexpr int kCombinations = 729;

/// The six clauses as they are told, one after the other.
bool clauseHolds(int clause, const std::array<Keyword, kKeywords>& flags)
{
    if (flags[std::size_t(clause)] != Found)
        return false;
    for (int other = 0; other < 6; ++other) {
        if (clause == 5 && other == 4) {
            if (flags[4] == Found)
                return false;
        } else if (other != clause && flags[std::size_t(other)] == Wanted) {
            return false;
        }
    }
    return true;
}

TEST(HitTest, FollowsTheSixClausesForEveryCombinationOfFlags)
{
    for (int number = 0; number < kCombinations; ++number) {
        const auto flags = combination(number);
        bool expected = false;
        for (int clause = 0; clause < 6; ++clause)
            expected = expected || clauseHolds(clause, flags);
        EXPECT_EQ(isHit(flags), expected) << number;
    }
}

TEST(HitTest, NothingAskedForIsNoHit)
{
    EXPECT_FALSE(isHit({}));
}

TEST(HitTest, EveryKeywordGivenHasToBeFound)
{
    EXPECT_TRUE(isHit({Found, Absent, Found, Absent, Absent, Absent}));
    EXPECT_FALSE(isHit({Found, Absent, Wanted, Absent, Absent, Absent}));
}

TEST(HitTest, TheSixthIsContentWithAFifthThatIsNotFound)
{
    EXPECT_TRUE(isHit({Absent, Absent, Absent, Absent, Wanted, Found}));
    EXPECT_FALSE(isHit({Absent, Absent, Absent, Absent, Wanted, Absent}));
    EXPECT_FALSE(isHit({Absent, Absent, Absent, Wanted, Wanted, Found}));
    EXPECT_FALSE(isHit({Absent, Absent, Absent, Absent, Found, Wanted}));
}

TEST(HitTest, AllSixFoundIsAHit)
{
    EXPECT_TRUE(isHit({Found, Found, Found, Found, Found, Found}));
}

TEST(KeywordMatch, CarriesWhatIsFoundFromOneSourceToTheNext)
{
    const Keywords keywords{"WALL", "", "SOCKET"};
    KeywordMatch match(keywords);
    EXPECT_FALSE(match.findIn("WALL_12"));
    EXPECT_FALSE(match.findIn("a label"));
    EXPECT_TRUE(match.findIn("double socket"));
}

TEST(KeywordMatch, FindsAPartOfAWordInAnyCase)
{
    const Keywords keywords{"ELEC"};
    EXPECT_TRUE(KeywordMatch(keywords).findIn("WALL_ELECTRIC"));
    EXPECT_TRUE(KeywordMatch(keywords).findIn("selected"));
}

TEST(KeywordMatch, TakesSpacesAndStarsAsPlainCharacters)
{
    EXPECT_TRUE(KeywordMatch(Keywords{"A B"}).findIn("x a b"));
    EXPECT_FALSE(KeywordMatch(Keywords{"A B"}).findIn("b a"));
    EXPECT_FALSE(KeywordMatch(Keywords{"W*L"}).findIn("WALL"));
    EXPECT_TRUE(KeywordMatch(Keywords{"W*L"}).findIn("aw*l"));
}

TEST(FileStem, IsTheFileNameWithoutItsLastFourCharactersInCapitals)
{
    EXPECT_EQ(fileStem("C:\\Walls\\Oak door.dwg"), "OAK DOOR");
    EXPECT_EQ(fileStem("/srv/walls/Oak.dwg"), "OAK");
    EXPECT_EQ(fileStem("Oak.2024"), "OAK.");
    EXPECT_EQ(fileStem("a\\.dwg"), "");
}

TEST(FileStem, IsMissingForAShorterFileName)
{
    EXPECT_FALSE(fileStem("C:\\Walls\\abc"));
    EXPECT_FALSE(fileStem("C:\\Walls\\"));
    EXPECT_FALSE(fileStem(""));
}

} // namespace
} // namespace zv
