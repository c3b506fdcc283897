#include "platform/Profile.h"

#include "platform/Files.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstring>

namespace zv {
namespace {

class ProfileTest : public testing::Test {
protected:
    TemporaryFolder folder;

    /// A new file for each call.
    std::string profile(const std::string& bytes)
    {
        return folder.write("p" + std::to_string(++m_count) + ".ini", bytes);
    }
    std::string bytesOf(const std::string& file) const
    {
        std::ifstream in(file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    /// What "k" of "[a]" reads as when the file says "k=" and the text.
    std::string readAs(const std::string& text)
    {
        return profileString(profile("[a]\r\nk=" + text + "\r\n"), "a", "k", "default");
    }
    int readAsNumber(const std::string& text)
    {
        return profileInt(profile("[a]\r\nk=" + text + "\r\n"), "a", "k", -7);
    }
    static std::string value(const std::string& file, const char* key)
    {
        return profileString(file, "a", key, "-");
    }

private:
    int m_count = 0;
};

/// The bytes that a call left in a buffer of stars, and the count that it gave.
struct Read {
    unsigned long count;
    std::string bytes;
};

Read readRaw(const std::string& file, const char* section, const char* key, const char* fallback,
             unsigned long size)
{
    std::string buffer(size + 8, '*');
    const unsigned long count =
        GetPrivateProfileStringA(section, key, fallback, buffer.data(), size, file.c_str());
    return {count, buffer};
}

TEST_F(ProfileTest, NamesMeetWithoutRegardToCase)
{
    const std::string file = profile("[Settings]\r\nInsertMode=2\r\n");
    EXPECT_EQ(profileString(file, "sETTINGS", "insertmode", ""), "2");
    EXPECT_EQ(profileInt(folder.file("P1.INI"), "settings", "INSERTMODE", 0), 2);
    EXPECT_TRUE(writeProfileString(folder.file("P1.Ini"), "SETTINGS", "INSERTMODE", "3"));
    EXPECT_EQ(bytesOf(file), "[Settings]\r\nInsertMode=3\r\n");
}

TEST_F(ProfileTest, BlanksAroundNamesDoNotCount)
{
    const std::string file = profile("  [a]\r\n  k =1\r\n");
    EXPECT_EQ(profileString(file, "a", " k ", ""), "1");
    EXPECT_EQ(profileString(file, "a ", "k", ""), "1");
}

TEST_F(ProfileTest, DefaultsStandForWhatIsMissing)
{
    const std::string file = profile("[a]\r\nb=1\r\n");
    EXPECT_EQ(profileString(file, "a", "c", "x"), "x");
    EXPECT_EQ(profileString(file, "c", "b", "x"), "x");
    EXPECT_EQ(profileString(folder.file("none.ini"), "a", "b", "x"), "x");
    EXPECT_EQ(profileString("", "a", "b", "x"), "x");
    EXPECT_EQ(profileString(folder.path(), "a", "b", "x"), "x");
    EXPECT_EQ(profileInt(folder.file("none.ini"), "a", "b", -1), -1);
    EXPECT_EQ(profileInt("", "a", "b", -1), -1);
}

TEST_F(ProfileTest, TrailingBlanksOfADefaultAreDropped)
{
    const std::string file = profile("[a]\r\n");
    EXPECT_EQ(profileString(file, "a", "k", "  d  "), "  d");
    EXPECT_EQ(profileString(file, "a", "k", " "), "");
    EXPECT_EQ(profileString(file, "a", "k", ""), "");
    EXPECT_EQ(readRaw(file, "a", "k", "d  ", 256).count, 1u);
}

TEST_F(ProfileTest, ValuesLoseTheBlanksAroundThem)
{
    EXPECT_EQ(readAs("  v v\t "), "v v");
    EXPECT_EQ(readAs(" "), "");
    EXPECT_EQ(readAs(""), "");
}

TEST_F(ProfileTest, OnePairOfQuotesIsTakenOff)
{
    EXPECT_EQ(readAs("\"q\""), "q");
    EXPECT_EQ(readAs("'q'"), "q");
    EXPECT_EQ(readAs("\" q \""), " q ");
    EXPECT_EQ(readAs("\"\"q\"\""), "\"q\"");
    EXPECT_EQ(readAs("\"\""), "");
    EXPECT_EQ(readAs("\"q"), "\"q");
    EXPECT_EQ(readAs("q\""), "q\"");
    EXPECT_EQ(readAs("\"q'"), "\"q'");
}

TEST_F(ProfileTest, SemicolonsStartACommentOnlyAtTheFrontOfALine)
{
    const std::string file = profile("; [b]\r\n[a]\r\n;k=no\r\nk=x ; y\r\n ; m=1\r\n");
    EXPECT_EQ(value(file, "k"), "x ; y");
    EXPECT_EQ(value(file, "m"), "-");
}

TEST_F(ProfileTest, EqualSignsInAValueStay)
{
    EXPECT_EQ(readAs("a=b"), "a=b");
    EXPECT_EQ(readAs("=a"), "=a");
}

TEST_F(ProfileTest, TheFirstOfEqualKeysCountsAndALaterEqualSectionIsNotSeen)
{
    const std::string file = profile("[a]\r\nk=1\r\nk=2\r\n[a]\r\nm=3\r\nk=4\r\n");
    EXPECT_EQ(value(file, "k"), "1");
    EXPECT_EQ(value(file, "m"), "-");
    EXPECT_TRUE(writeProfileString(file, "a", "k", "5"));
    EXPECT_EQ(bytesOf(file), "[a]\r\nk=5\r\nk=2\r\n[a]\r\nm=3\r\nk=4\r\n");
}

TEST_F(ProfileTest, BothLineEndsAndALastLineWithoutOneAreRead)
{
    const std::string file = profile("[a]\nk=1\nm=2\r\nlast=3");
    EXPECT_EQ(value(file, "k"), "1");
    EXPECT_EQ(value(file, "m"), "2");
    EXPECT_EQ(value(file, "last"), "3");
    EXPECT_TRUE(writeProfileString(file, "a", "new", "4"));
    EXPECT_EQ(value(file, "last"), "3");
    EXPECT_EQ(value(file, "new"), "4");
}

TEST_F(ProfileTest, EveryLineThatIsNotChangedKeepsItsBytes)
{
    const std::string other = "; \xFC\r\n\r\n[ \xFC ]\r\n \xE4 = \x81\xC3\xBC ;\n\r\n[a]\r\nold=\xFC\r\nk=";
    const std::string file = profile(other + "\xFC\r\n");
    EXPECT_TRUE(writeProfileString(file, "a", "k", "\xC3\x9C"));
    EXPECT_EQ(bytesOf(file), other + "\xC3\x9C\r\n");
    EXPECT_EQ(value(file, "k"), "\xC3\x9C");
}

TEST_F(ProfileTest, ANulEndsAValue)
{
    EXPECT_EQ(readAs(std::string("1\0002", 3)), "1");
}

TEST_F(ProfileTest, MarksOfUnicodeEditorsAreUnderstood)
{
    EXPECT_EQ(value(profile("\xEF\xBB\xBF[a]\r\nk=1\r\n"), "k"), "1");
    std::string wideBytes = "\xFF\xFE";
    for (const char c : std::string("[a]\r\nk=1\r\n"))
        wideBytes += std::string{c, '\0'};
    const std::string file = profile(wideBytes);
    EXPECT_EQ(value(file, "k"), "1");
    EXPECT_TRUE(writeProfileString(file, "a", "k", "2"));
    EXPECT_EQ(value(file, "k"), "2");
    EXPECT_EQ(bytesOf(file).substr(0, 4), std::string("\xFF\xFE[\0", 4));
}

TEST_F(ProfileTest, ValuesAreCutToTheBuffer)
{
    EXPECT_EQ(readAs(std::string(255, 'x')), std::string(255, 'x'));
    EXPECT_EQ(readAs(std::string(256, 'x')), std::string(255, 'x'));
    EXPECT_EQ(readAs(std::string(300, 'x')), std::string(255, 'x'));
    EXPECT_EQ(profileString(profile(""), "a", "k", std::string(300, 'x')), std::string(255, 'x'));
    const std::string file = profile("[a]\r\nk=" + std::string(300, 'x') + "\r\n");
    EXPECT_EQ(readRaw(file, "a", "k", "", 400).count, 300u);
}

TEST_F(ProfileTest, TheBufferIsEndedByANulAndNotTouchedBehindIt)
{
    const std::string file = profile("[a]\r\nk=abc\r\n");
    const struct {
        unsigned long size;
        unsigned long count;
        std::string bytes;
    } cases[] = {{0, 0, "****"},
                 {1, 0, std::string("\0***", 4)},
                 {2, 1, std::string("a\0**", 4)},
                 {4, 3, std::string("abc\0*", 5)},
                 {9, 3, std::string("abc\0*", 5)}};
    for (const auto& expected : cases) {
        const Read read = readRaw(file, "a", "k", "d", expected.size);
        EXPECT_EQ(read.count, expected.count) << expected.size;
        EXPECT_EQ(read.bytes.substr(0, expected.bytes.size()), expected.bytes) << expected.size;
    }
}

TEST_F(ProfileTest, NullPointersListNames)
{
    const std::string file = profile("[a]\r\nk=1\r\nm=2\r\n[b]\r\nn=3\r\n");
    Read read = readRaw(file, "a", nullptr, "d", 256);
    EXPECT_EQ(read.count, 4u);
    EXPECT_EQ(read.bytes.substr(0, 6), std::string("k\0m\0\0*", 6));
    read = readRaw(file, nullptr, nullptr, "d", 256);
    EXPECT_EQ(read.count, 4u);
    EXPECT_EQ(read.bytes.substr(0, 6), std::string("a\0b\0\0*", 6));
    EXPECT_EQ(readRaw(file, "none", nullptr, "d", 256).bytes.substr(0, 2), std::string("d\0", 2));
    EXPECT_EQ(readRaw(file, "a", "none", nullptr, 256).count, 0u);
    EXPECT_EQ(GetPrivateProfileStringA("a", "k", "d", nullptr, 256, file.c_str()), 0u);
}

TEST_F(ProfileTest, NumbersAreTheLeadingDigits)
{
    EXPECT_EQ(readAsNumber("2.5"), 2);
    EXPECT_EQ(readAsNumber("12abc"), 12);
    EXPECT_EQ(readAsNumber("1 2"), 1);
    EXPECT_EQ(readAsNumber("010"), 10);
    EXPECT_EQ(readAsNumber("abc"), 0);
    EXPECT_EQ(readAsNumber("-5"), -5);
    EXPECT_EQ(readAsNumber("+5"), 5);
    EXPECT_EQ(readAsNumber("- 5"), 0);
    EXPECT_EQ(readAsNumber("--3"), 0);
    EXPECT_EQ(readAsNumber("\t7"), 7);
    EXPECT_EQ(readAsNumber("\"8\""), 8);
    EXPECT_EQ(readAsNumber("4294967297"), 1);
}

TEST_F(ProfileTest, ANumberWithoutAValueIsTheDefault)
{
    EXPECT_EQ(readAsNumber(""), -7);
    EXPECT_EQ(readAsNumber(" "), -7);
}

TEST_F(ProfileTest, WritingCreatesChangesAndIsSeenAtOnce)
{
    const std::string file = folder.file("new.ini");
    EXPECT_TRUE(writeProfileString(file, "Path", "ZVRpath", "C:\\a b"));
    EXPECT_EQ(bytesOf(file), "[Path]\r\nZVRpath=C:\\a b\r\n");
    EXPECT_TRUE(writeProfileString(file, "path", "zvrPATH", "d"));
    EXPECT_EQ(bytesOf(file), "[Path]\r\nZVRpath=d\r\n");
    EXPECT_EQ(profileString(file, "Path", "ZVRpath", ""), "d");
}

TEST_F(ProfileTest, NewKeysStandAtTheEndOfTheirSectionAndNewSectionsAtTheEnd)
{
    const std::string file = profile("[a]\r\nk=1\r\n[b]\r\nx=1\r\n");
    EXPECT_TRUE(writeProfileString(file, "a", "m", "2"));
    EXPECT_TRUE(writeProfileString(file, "c", "y", "3"));
    EXPECT_EQ(bytesOf(file), "[a]\r\nk=1\r\nm=2\r\n[b]\r\nx=1\r\n[c]\r\ny=3\r\n");
}

TEST_F(ProfileTest, BlanksAndQuotesThatAreWrittenReadAsBefore)
{
    const std::string file = profile("[a]\r\nk=1\r\n");
    EXPECT_TRUE(writeProfileString(file, "a", "k", " "));
    EXPECT_EQ(value(file, "k"), "");
    EXPECT_TRUE(writeProfileString(file, "a", "k", "  v  "));
    EXPECT_EQ(value(file, "k"), "v");
    EXPECT_TRUE(writeProfileString(file, "a", "k", "\" v \""));
    EXPECT_EQ(value(file, "k"), " v ");
    EXPECT_TRUE(writeProfileString(file, "a", "k", ""));
    EXPECT_EQ(value(file, "k"), "");
    EXPECT_EQ(bytesOf(file), "[a]\r\nk=\r\n");
}

TEST_F(ProfileTest, CommentsAndStrayLinesOutliveAWrite)
{
    const std::string file = profile("; c\r\n[a]\r\nk=1\r\njunk\r\n;m=2\r\n");
    EXPECT_TRUE(writeProfileString(file, "a", "z", "2"));
    EXPECT_EQ(bytesOf(file), "; c\r\n[a]\r\nk=1\r\njunk\r\n;m=2\r\nz=2\r\n");
}

TEST_F(ProfileTest, NullPointersDeleteKeysAndSections)
{
    const std::string file = profile("[a]\r\nk=1\r\nm=2\r\n[b]\r\nn=3\r\n");
    EXPECT_NE(WritePrivateProfileStringA("A", "K", nullptr, file.c_str()), 0);
    EXPECT_EQ(bytesOf(file), "[a]\r\nm=2\r\n[b]\r\nn=3\r\n");
    EXPECT_NE(WritePrivateProfileStringA("a", nullptr, nullptr, file.c_str()), 0);
    EXPECT_EQ(bytesOf(file), "[b]\r\nn=3\r\n");
    EXPECT_NE(WritePrivateProfileSectionA("b", nullptr, file.c_str()), 0);
    EXPECT_EQ(profileString(file, "b", "n", "-"), "-");
    EXPECT_EQ(WritePrivateProfileStringA(nullptr, nullptr, nullptr, file.c_str()), 0);
}

TEST_F(ProfileTest, EmptyTextAndABlankBothClearASection)
{
    for (const char* blank : {"", " "}) {
        const std::string file = profile("[Path]\r\nk=1\r\nm=2\r\n[b]\r\nx=1\r\n");
        EXPECT_TRUE(writeProfileSection(file, "path", {blank}));
        EXPECT_EQ(profileString(file, "Path", "k", "-"), "-");
        EXPECT_EQ(profileString(file, "Path", "m", "-"), "-");
        EXPECT_EQ(profileString(file, "b", "x", "-"), "1");
        EXPECT_TRUE(writeProfileString(file, "Path", "n", "4"));
        EXPECT_EQ(bytesOf(file), "[Path]\r\nn=4\r\n[b]\r\nx=1\r\n");
    }
}

TEST_F(ProfileTest, ASectionIsWrittenAsAWhole)
{
    const std::string file = profile("[a]\r\nk=1\r\nm=2\r\n[b]\r\nx=1\r\n");
    EXPECT_TRUE(writeProfileSection(file, "A", {"libnum=2", "lib1=x", "lib2="}));
    EXPECT_EQ(bytesOf(file), "[a]\r\nlibnum=2\r\nlib1=x\r\nlib2=\r\n[b]\r\nx=1\r\n");
    EXPECT_TRUE(writeProfileSection(file, "c", {"y=1"}));
    EXPECT_EQ(profileString(file, "c", "y", "-"), "1");
}

TEST_F(ProfileTest, ManyKeysReadTheSameAsOneByOne)
{
    const std::string file =
        profile("[a]\r\nk1=1\r\nk2=" + std::string(300, 'x') + "\r\nk1=2\r\nK3=\" q\"\r\n");
    using Values = std::vector<std::string>;
    EXPECT_EQ(readProfileStrings(file, "A", {"K1", "k2", "k3", "k4"}).valueOr({}),
              (Values{"1", std::string(255, 'x'), " q", ""}));
    EXPECT_EQ(readProfileStrings(folder.file("none.ini"), "a", {"k"}).valueOr({}), Values{""});
}

TEST_F(ProfileTest, AFolderInTheFilesPlaceIsLeftAlone)
{
    EXPECT_FALSE(writeProfileString(folder.path(), "a", "k", "v"));
    EXPECT_FALSE(writeProfileSection(folder.path(), "a", {" "}));
    EXPECT_FALSE(writeProfileString(folder.file("no/such.ini"), "a", "k", "v"));
    EXPECT_FALSE(writeProfileString("", "a", "k", ""));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path()));
}

TEST_F(ProfileTest, AReadOnlyFileKeepsWhatItHolds)
{
    const std::string file = profile("[a]\r\nk=1\r\n");
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    if (kPathSeparator == '\\' && std::ofstream(file, std::ios::app))
        GTEST_SKIP() << "Wine lets the administrator write to read-only files";
    EXPECT_FALSE(writeProfileString(file, "a", "k", "2"));
    EXPECT_EQ(value(file, "k"), "1");
}

} // namespace
} // namespace zv
