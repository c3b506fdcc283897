#include "Office.h"

#include "BenchDrawing.h"
#include "DocumentEdit.h"

#include "platform/Files.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace zv::samples {
namespace {
namespace fs = std::filesystem;

dwg::Pixels darkSquare(const dwg::Document&)
{
    return {8, 8, std::vector<std::uint8_t>(8 * 8 * 4, 40)};
}

/// Opens a drawing, adds to it, saves it; nothing when that went well, else the reason.
std::string worked(const std::string& path, double radius)
{
    const auto drawing = bench::BenchDrawing::load(path);
    if (!drawing)
        return drawing.error().text;
    (*drawing)->beginChange();
    dwg::Document& document = (*drawing)->document();
    document.blocks[document.modelSpace].entities.push_back(bench::newEntity(
        document, "CIRCLE", dwg::Circle{{1, 1, 0}, radius, 0, dwg::kZAxis}, document.header.currentLayer));
    const Result<void> saved = (*drawing)->save();
    return saved ? std::string() : saved.error().text;
}

std::size_t previewsOf(const std::string& path)
{
    const Result<std::string> bytes = readFile(path);
    const auto previews = dwg::readPreviews(MemorySource(std::as_bytes(std::span(*bytes))));
    return previews ? previews->size() : 0;
}

TEST(OfficeWork, EveryDrawingIsOpenedWorkedOnAndSavedAgainAndAgain)
{
    TemporaryFolder folder;
    const fs::path installation = fs::path(folder.path()) / "bin",
                   office = fs::path(folder.path()) / "office";
    fs::create_directories(installation / "fonts");
    ASSERT_TRUE(writeFile((installation / "zelvora").string(), "program"));
    ASSERT_TRUE(makeOffice(installation, office, darkSquare));
    int drawings = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(office)) {
        const std::string path = entry.path().string();
        if (entry.path().extension() != ".dwg")
            continue;
        const auto before = bench::BenchDrawing::load(path);
        if (!before)
            continue; // The one that is damaged on purpose.
        ++drawings;
        EXPECT_EQ((*before)->outlook().way, bench::SaveWay::Whole) << path;
        const std::size_t previews = previewsOf(path);
        for (int round = 1; round <= 2; ++round)
            EXPECT_EQ(worked(path, round), "") << path;
        const auto after = bench::BenchDrawing::load(path);
        ASSERT_TRUE(after) << path;
        EXPECT_EQ((*after)->outlook().way, bench::SaveWay::Whole) << path;
        EXPECT_EQ((*after)->modelSpace().entities.size(), (*before)->modelSpace().entities.size() + 2)
            << path;
        EXPECT_EQ((*after)->modelSpace().attributes.size(), (*before)->modelSpace().attributes.size())
            << path;
        EXPECT_EQ((*after)->document().blocks.size(), (*before)->document().blocks.size()) << path;
        const dwg::Properties &old = (*before)->properties(), &now = (*after)->properties();
        EXPECT_EQ(now.comments, old.comments) << path;
        EXPECT_EQ(now.keywords, old.keywords) << path;
        EXPECT_EQ(now.custom, old.custom) << path;
        EXPECT_EQ(previewsOf(path), previews) << path;
    }
    EXPECT_GT(drawings, 200);
}

} // namespace
} // namespace zv::samples
