#include "Office.h"

#include "drawing/Reader.h"
#include "drawing/preview/Preview.h"
#include "drawing/properties/PropertiesReader.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "platform/Text.h"
#include "support/SilentScan.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zv::samples {
namespace {
namespace fs = std::filesystem;

dwg::Pixels greySquare(const dwg::Document&)
{
    return {8, 8, std::vector<std::uint8_t>(8 * 8 * 4, 128)};
}

/// The office, made once for all tests.
class Office : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_folder = std::make_unique<TemporaryFolder>();
        const fs::path installation = fs::path(s_folder->path()) / "bin";
        fs::create_directories(installation / "fonts");
        ASSERT_TRUE(writeFile((installation / "zelvora").string(), "program").ok());
        ASSERT_TRUE(writeFile((installation / "fonts" / "a.shx").string(), "font").ok());
        const auto made = makeOffice(installation, office(), greySquare);
        ASSERT_TRUE(made.ok()) << made.error().text;
    }
    static void TearDownTestSuite() { s_folder.reset(); }

    static fs::path office() { return fs::path(s_folder->path()) / "office"; }
    static std::string profile() { return (office() / "Zelvora.ini").string(); }
    static int libraries() { return profileInt(profile(), "Library", "libnum", -1); }
    static std::string library(int number)
    {
        return profileString(profile(), "Library", "lib" + std::to_string(number), "");
    }

    struct Line {
        std::string path, label;
    };
    static std::vector<Line> lines(const std::string& name)
    {
        std::vector<Line> result;
        const auto bytes = readFile((office() / (name + ".lst")).string());
        EXPECT_TRUE(bytes.ok()) << name;
        for (std::size_t at = 0; bytes && at < bytes->size();) {
            const std::size_t end = bytes->find("\r\n", at);
            const std::string line = bytes->substr(at, end - at);
            const std::size_t split = line.rfind(';');
            result.push_back({line.substr(0, split), line.substr(split + 1)});
            at = end + 2;
        }
        return result;
    }
    static std::vector<std::size_t> counts()
    {
        std::vector<std::size_t> result;
        for (int i = 1; i <= libraries(); ++i)
            result.push_back(lines(library(i)).size());
        return result;
    }

    static std::unique_ptr<TemporaryFolder> s_folder;
};
std::unique_ptr<TemporaryFolder> Office::s_folder;

TEST_F(Office, HoldsEightLibrariesAndTwoHundredDrawingsAtLeast)
{
    EXPECT_GE(libraries(), 8);
    std::size_t drawings = 0;
    for (const auto& entry : fs::recursive_directory_iterator(office()))
        drawings += entry.path().extension() == ".dwg" ? 1 : 0;
    EXPECT_GE(drawings, 200u);
}

TEST_F(Office, HasLibrariesOfTheSizesThatPanelsAreTriedWith)
{
    const std::vector<std::size_t> sizes = counts();
    EXPECT_GT(lines(kFirstLibrary).size(), 60u);
    EXPECT_TRUE(std::count(sizes.begin(), sizes.end(), 20u));
    EXPECT_EQ(std::count(sizes.begin(), sizes.end(), 21u), 1);
    EXPECT_EQ(std::count(sizes.begin(), sizes.end(), 0u), 1);
}

TEST_F(Office, IsListedByTheNameThatWindowsMachinesKnowItBy)
{
    const fs::path folder = fs::path(s_folder->path()) / "shared";
    ASSERT_TRUE(makeOffice(fs::path(s_folder->path()) / "bin", folder, {}, "\\\\server\\cad").ok());
    EXPECT_EQ(profileString((folder / "Zelvora.ini").string(), "Path", "ZVRpath", ""), "\\\\server\\cad");
    const std::string list = readFile((folder / "Vendor Details.lst").string()).valueOr("");
    const std::string line = list.substr(0, list.find(';'));
    EXPECT_EQ(line.rfind("\\\\server\\cad\\", 0), 0u) << line;
    EXPECT_NE(list.find("\\\\server\\cad\\Vendor Details\\Canopy Bracket.dwg;CANOPY BRACKET\r\n"),
              std::string::npos);
}

TEST_F(Office, EveryListedDrawingIsReadableButOneMissingAndOneDamaged)
{
    int missing = 0, damaged = 0;
    for (int i = 1; i <= libraries(); ++i) {
        for (const Line& line : lines(library(i))) {
            EXPECT_TRUE(fs::path(line.path).is_absolute());
            const auto source = openByteSource(line.path);
            if (!source) {
                ++missing;
                continue;
            }
            const auto document = dwg::readDocument(**source);
            if (!document) {
                ++damaged;
                continue;
            }
            EXPECT_TRUE(document->damage.empty()) << line.path;
            EXPECT_TRUE(document->skipped.empty()) << line.path;
            EXPECT_FALSE(document->blocks[document->modelSpace].entities.empty()) << line.path;
            EXPECT_GE(document->layers.size(), 2u) << line.path;
        }
    }
    EXPECT_EQ(missing, 1);
    EXPECT_EQ(damaged, 1);
}

TEST_F(Office, EveryDrawingHasCommentsKeywordsAndAScale)
{
    for (const Library& each : allLibraries()) {
        for (const Line& line : lines(each.name)) {
            const auto source = openByteSource(line.path);
            ASSERT_TRUE(source.ok()) << line.path;
            const auto properties = dwg::readProperties(**source);
            ASSERT_TRUE(properties.ok() && properties->has_value()) << line.path;
            EXPECT_FALSE((*properties)->comments.empty()) << line.path;
            EXPECT_FALSE((*properties)->keywords.empty()) << line.path;
            ASSERT_FALSE((*properties)->custom.empty()) << line.path;
            EXPECT_EQ((*properties)->custom.front().first, u"Scale");
            EXPECT_FALSE((*properties)->custom.front().second.empty());
        }
    }
}

TEST_F(Office, MostDrawingsCarryAPictureAndSomeDoNot)
{
    int with = 0, without = 0;
    for (const Library& each : allLibraries()) {
        for (const Line& line : lines(each.name)) {
            const auto source = openByteSource(line.path);
            ASSERT_TRUE(source.ok());
            const auto previews = dwg::readPreviews(**source);
            ASSERT_TRUE(previews.ok()) << line.path;
            (previews->empty() ? without : with) += 1;
        }
    }
    EXPECT_GT(without, 0);
    EXPECT_GT(with, without * 5);
}

TEST_F(Office, LabelsAreTheFileNamesInCapitals)
{
    const std::vector<Line> first = lines("Bolts and Welds");
    ASSERT_FALSE(first.empty());
    EXPECT_EQ(first.front().label, "BOLT M12");
    EXPECT_EQ(fs::path(first.front().path).filename(), "Bolt M12.dwg");
}

TEST_F(Office, IsAnInstallationFolderOfItsOwn)
{
    EXPECT_TRUE(fileExists((office() / "zelvora").string()));
    EXPECT_TRUE(fileExists((office() / "fonts" / "a.shx").string()));
    EXPECT_EQ(profileString(profile(), "Path", "ZVRpath", ""), "");
}

TEST_F(Office, ItsUserSeesTheLargeLibraryInTheDesignSize)
{
    ASSERT_TRUE(makeUser(office()).ok());
    std::string login = systemLoginName();
    if (login.empty())
        login = "User";
    const std::string user = (office() / "user" / "data" / "zelvora" / (login + ".ini")).string();
    EXPECT_EQ(profileString(user, "LibLoad", "LastLoad", ""), kFirstLibrary);
    EXPECT_EQ(profileInt(user, "LibLoad", "del", -1), 0);
    const std::string store = (office() / "user" / "config" / "zelvora" / "Zelvora.ini").string();
    EXPECT_EQ(profileInt(store, "Settings", "MainWidth", 0), 10695);
    EXPECT_EQ(profileInt(store, "Settings", "MainHeight", 0), 9090);
    // A second time leaves what the user has changed.
    WritePrivateProfileStringA("LibLoad", "LastLoad", "Site Symbols", user.c_str());
    ASSERT_TRUE(makeUser(office()).ok());
    EXPECT_EQ(profileString(user, "LibLoad", "LastLoad", ""), "Site Symbols");
}

Result<std::string> storedKeywords(const std::string& path)
{
    const auto source = openByteSource(path);
    if (!source)
        return source.error();
    const auto properties = dwg::readProperties(**source);
    if (!properties)
        return properties.error();
    return narrow(properties->value_or(dwg::Properties{}).keywords);
}

// A missing and a damaged drawing stand in one library each, which a search gives up there.
TEST_F(Office, ASearchOfAllLibrariesFindsWhatIsKnownToBeThere)
{
    struct Known {
        const char* word;
        std::size_t hits;
    };
    for (const auto& [word, hits] :
         {Known{"valve", 5}, Known{"DOOR", 47}, Known{"steel", 52}, Known{"nowhere", 0}}) {
        SilentScan window(office().string(), {}, word);
        KeywordScan scan(storedKeywords);
        scan.scanAllLibraries = 1;
        scan.run(window);
        EXPECT_EQ(window.hits.size(), hits) << word;
        EXPECT_EQ(window.counted, int(window.hits.size())) << word;
        EXPECT_EQ(window.told.size(), 2u) << word;
    }
}

TEST_F(Office, TheStandInDrawingIsOneToo)
{
    const auto file = drawingFile(failedDrawing(), greySquare);
    ASSERT_TRUE(file.ok()) << file.error().text;
    const MemorySource source(std::as_bytes(std::span(file->data(), file->size())));
    EXPECT_TRUE(dwg::readDocument(source).ok());
    EXPECT_FALSE(dwg::readPreviews(source)->empty());
}
} // namespace
} // namespace zv::samples
