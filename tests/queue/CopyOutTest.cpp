#include "queue/CopyOut.h"

#include "platform/Files.h"
#include "support/OneStepFails.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace zv {
namespace {

class CopyOutTest : public testing::Test {
protected:
    CopyOutTest()
    {
        for (const char* name : {"to", "other"})
            std::filesystem::create_directory(folder.file(name));
        a = folder.write("A.dwg", "a");
        b = folder.write("B.dwg", "b");
        otherA = folder.write("other/A.dwg", "other a");
    }
    Result<CopyOutEnd> copy(const std::vector<std::string>& drawings)
    {
        return copyOut(drawings, folder.file("to"),
                       {[this](const std::string& name) {
                            asked.push_back(name);
                            return yes;
                        },
                        [this](std::size_t done) {
                            told.push_back(done);
                            return done < giveUpAfter;
                        }});
    }

    TemporaryFolder folder;
    std::string a, b, otherA;
    std::vector<std::string> asked;
    std::vector<std::size_t> told;
    bool yes = false;
    std::size_t giveUpAfter = 1000;
};

TEST_F(CopyOutTest, EachDrawingGoesToTheFolderUnderItsOwnName)
{
    const auto end = copy({a, b});
    ASSERT_TRUE(end);
    EXPECT_EQ(*end, CopyOutEnd::Done);
    EXPECT_EQ(folder.read("to/A.dwg") + folder.read("to/B.dwg"), "ab");
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(told, (std::vector<std::size_t>{1, 2}));
}

TEST_F(CopyOutTest, NothingIsWrittenOverBecauseItCouldNotBeAskedFor)
{
    folder.write("to/A.dwg", "old");
    bool reached = true;
    for (int number = 0; reached; ++number) {
        {
            const OneStepFails files(FileStep::Status, number);
            static_cast<void>(copy({a}));
            reached = files.wasReached();
        }
        ASSERT_EQ(folder.read("to/A.dwg"), "old") << "question " << number;
    }
}

TEST_F(CopyOutTest, NoSkipsThatDrawingOnly)
{
    folder.write("to/A.dwg", "old");
    ASSERT_TRUE(copy({a, b}));
    EXPECT_EQ(asked, (std::vector<std::string>{"A.dwg"}));
    EXPECT_EQ(folder.read("to/A.dwg"), "old");
    EXPECT_EQ(folder.read("to/B.dwg"), "b");
}

TEST_F(CopyOutTest, TwoEntriesOfOneNameRaiseTheQuestionForTheSecond)
{
    yes = true;
    ASSERT_TRUE(copy({a, otherA}));
    EXPECT_EQ(asked, (std::vector<std::string>{"A.dwg"}));
    EXPECT_EQ(folder.read("to/A.dwg"), "other a");
}

TEST_F(CopyOutTest, ADrawingThatLiesThereItselfIsPassedOverWithoutAQuestion)
{
    const std::string there = folder.write("to/C.dwg", "c");
    ASSERT_TRUE(copy({there, a}));
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(folder.read("to/C.dwg"), "c");
    EXPECT_EQ(folder.read("to/A.dwg"), "a");
}

TEST_F(CopyOutTest, AMissingDrawingEndsTheCopyAndIsNamed)
{
    const auto end = copy({a, folder.file("gone.dwg"), b});
    ASSERT_FALSE(end);
    EXPECT_NE(end.error().text.find(folder.file("gone.dwg")), std::string::npos);
    EXPECT_EQ(folder.read("to/A.dwg"), "a");
    EXPECT_FALSE(fileExists(folder.file("to/B.dwg")));
}

TEST_F(CopyOutTest, GivingUpHappensBetweenTwoDrawings)
{
    giveUpAfter = 1;
    const auto end = copy({a, b});
    ASSERT_TRUE(end);
    EXPECT_EQ(*end, CopyOutEnd::GivenUp);
    EXPECT_EQ(folder.read("to/A.dwg"), "a");
    EXPECT_FALSE(fileExists(folder.file("to/B.dwg")));
}

TEST_F(CopyOutTest, AfterTheLastDrawingThereIsNothingToGiveUp)
{
    giveUpAfter = 2;
    EXPECT_EQ(copy({a, b}).valueOr(CopyOutEnd::GivenUp), CopyOutEnd::Done);
}

TEST_F(CopyOutTest, NothingToCopyIsDone)
{
    EXPECT_EQ(copy({}).valueOr(CopyOutEnd::GivenUp), CopyOutEnd::Done);
}

} // namespace
} // namespace zv
