#include "platform/ByteSource.h"
#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Profile.h"
#include "platform/windows/WidePath.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>

namespace zv {
namespace {

using Names = std::vector<std::string>;

/// A share of a server. Wine looks for shares among its own files, where a test can make one.
class ShareTest : public testing::Test {
protected:
    const std::string server = "zelvora-test-" + std::to_string(::GetCurrentProcessId());
    const std::string share = "\\\\" + server + "\\share";
    const std::string start = currentFolder();
    std::string place; ///< Of the server, among Wine's files.

    void SetUp() override
    {
        wchar_t files[MAX_PATH] = {};
        if (::GetEnvironmentVariableW(L"WINECONFIGDIR", files, MAX_PATH) == 0)
            GTEST_SKIP() << "only under Wine can a test make a share";
        constexpr std::wstring_view kMark = L"\\??\\";
        const std::string all = textOf(std::wstring_view(files).substr(kMark.size())) + "\\dosdevices\\unc";
        static_cast<void>(makeFolder(all).ok());
        place = all + "\\" + server;
        ASSERT_TRUE(makeFolder(place));
        ASSERT_TRUE(makeFolder(place + "\\share"));
    }
    void TearDown() override
    {
        EXPECT_TRUE(setCurrentFolder(start));
        // What lies too deep for the standard library is put where it can delete it.
        static_cast<void>(renameFile(deep(), share + "\\d").ok());
        std::error_code ignored;
        if (!place.empty())
            std::filesystem::remove_all(std::filesystem::path(wideText(place)), ignored);
    }
    std::string deep() const { return share + "\\" + std::string(130, 'a') + "\\" + std::string(130, 'b'); }
    void makeDeep() const
    {
        for (const std::string& folder : foldersDownTo(deep())) {
            if (folder != share) {
                ASSERT_TRUE(makeFolder(folder));
            }
        }
    }
};

TEST_F(ShareTest, DrawingsOnItAreListedReadAndCopied)
{
    ASSERT_TRUE(makeFolder(share + "\\\xE9\x97\xA8"));
    const std::string drawing = share + "\\\xE9\x97\xA8\\\xC3\x9C.dwg";
    ASSERT_TRUE(writeFile(drawing, "x"));
    EXPECT_TRUE(folderExists(share));
    EXPECT_EQ(foldersIn(share).valueOr({}), Names{"\xE9\x97\xA8"});
    EXPECT_EQ(filesIn(share + "\\\xE9\x97\xA8", ".dwg").valueOr({}), Names{"\xC3\x9C.dwg"});
    EXPECT_TRUE(openByteSource(drawing));
    EXPECT_TRUE(copyIntoPlace(drawing, share + "\\copy.dwg"));
    EXPECT_EQ(readFile(share + "\\copy.dwg").valueOr(""), "x");
}

TEST_F(ShareTest, PathsOnItMayBeLong)
{
    makeDeep();
    const std::string drawing = deep() + "\\Door.dwg", list = deep() + "\\a.lst";
    ASSERT_TRUE(writeFile(drawing, "x"));
    EXPECT_EQ(filesIn(deep(), ".dwg").valueOr({}), Names{"Door.dwg"});
    EXPECT_TRUE(copyIntoPlace(drawing, share + "\\near.dwg"));
    EXPECT_TRUE(appendLines(list, "one\r\n", deep() + "\\a.ls$"));
    EXPECT_TRUE(replaceFile(list, deep() + "\\a.ls$", "two\r\n"));
    EXPECT_EQ(readFile(list).valueOr(""), "two\r\n");
    EXPECT_TRUE(writeProfileString(deep() + "\\Zelvora.ini", "a", "k", "1"));
    EXPECT_EQ(profileString(deep() + "\\Zelvora.ini", "a", "k", ""), "1");
}

TEST_F(ShareTest, AFolderOfItMayBeTheCurrentOne)
{
    makeDeep();
    for (const std::string& folder : {share, deep()}) {
        ASSERT_TRUE(setCurrentFolder(folder));
        EXPECT_EQ(currentFolder(), folder);
        EXPECT_EQ(fullPath("a.dwg"), folder + "\\a.dwg");
        EXPECT_TRUE(writeFile("a.dwg", "x"));
        EXPECT_TRUE(fileExists(folder + "\\a.dwg"));
    }
}

TEST_F(ShareTest, AServerThatIsNotThereHoldsNothing)
{
    EXPECT_FALSE(fileExists("\\\\no-such-server\\share\\a.dwg"));
    EXPECT_FALSE(folderExists("\\\\no-such-server\\share"));
    EXPECT_FALSE(filesIn("\\\\no-such-server\\share", ".dwg"));
}

} // namespace
} // namespace zv
