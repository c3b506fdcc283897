#include "controls/PanelPictures.h"

#include "drawing/Writer.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace zv {
namespace {

constexpr QSize kRoom(85, 75); ///< Of a cell.

class PanelPicturesTest : public testing::Test {
protected:
    ~PanelPicturesTest() override { EXPECT_TRUE(waitForWorkers(std::chrono::seconds(5))); }

    /// A drawing whose preview is of this width, below 10.
    std::string drawing(const std::string& name, int width)
    {
        const dwg::Pixels pixels{width, 4, std::vector<std::uint8_t>(std::size_t(width) * 16, 255)};
        std::string bytes = dwg::writeDocument({}, {{}, pixels}).valueOr({});
        // All of them are of one size, so that only the time tells them apart.
        bytes.resize(64 * 1024);
        return folder.write(name, bytes);
    }
    static int widthOf(const Result<QImage>& picture) { return picture ? picture->width() : -1; }

    TemporaryFolder folder;
    PanelPictures pictures;
};

TEST_F(PanelPicturesTest, GivesThePicturesInTheOrderOfThePanel)
{
    pictures.read({drawing("a.dwg", 4), drawing("b.dwg", 8), folder.file("gone.dwg"), drawing("c.dwg", 5)},
                  kRoom);
    EXPECT_EQ(widthOf(pictures.take(0)), 4);
    EXPECT_EQ(widthOf(pictures.take(1)), 8);
    EXPECT_EQ(pictures.take(2).error().code, ErrorCode::NotFound);
    EXPECT_EQ(widthOf(pictures.take(3)), 5);
}

TEST_F(PanelPicturesTest, WhatWasReadAheadIsNotReadAgain)
{
    const std::string path = drawing("a.dwg", 4);
    // Not every file system keeps more than seconds.
    const auto time = std::chrono::floor<std::chrono::seconds>(std::filesystem::last_write_time(path));
    std::filesystem::last_write_time(path, time);
    pictures.readAhead({path}, kRoom);
    pictures.read({path}, kRoom);
    ASSERT_EQ(widthOf(pictures.take(0)), 4);
    drawing("a.dwg", 8);
    std::filesystem::last_write_time(path, time);
    pictures.read({path}, kRoom);
    EXPECT_EQ(widthOf(pictures.take(0)), 4);
}

TEST_F(PanelPicturesTest, AFileThatHasChangedIsReadAgain)
{
    const std::string path = drawing("a.dwg", 4);
    // Not every file system keeps more than seconds.
    const auto time = std::chrono::floor<std::chrono::seconds>(std::filesystem::last_write_time(path));
    std::filesystem::last_write_time(path, time);
    pictures.readAhead({path}, kRoom);
    pictures.read({path}, kRoom);
    ASSERT_EQ(widthOf(pictures.take(0)), 4);
    drawing("a.dwg", 8);
    std::filesystem::last_write_time(path, time + std::chrono::seconds(1));
    pictures.read({path}, kRoom);
    EXPECT_EQ(widthOf(pictures.take(0)), 8);
    std::filesystem::remove(path);
    pictures.read({path}, kRoom);
    EXPECT_EQ(widthOf(pictures.take(0)), -1);
}

TEST_F(PanelPicturesTest, OnlyTheLastPanelReadAheadIsKept)
{
    const std::string path = drawing("a.dwg", 4);
    // Not every file system keeps more than seconds.
    const auto time = std::chrono::floor<std::chrono::seconds>(std::filesystem::last_write_time(path));
    std::filesystem::last_write_time(path, time);
    pictures.readAhead({path}, kRoom);
    pictures.read({path}, kRoom);
    ASSERT_EQ(widthOf(pictures.take(0)), 4);
    pictures.readAhead({drawing("b.dwg", 5)}, kRoom);
    drawing("a.dwg", 8);
    std::filesystem::last_write_time(path, time);
    pictures.read({path}, kRoom);
    EXPECT_EQ(widthOf(pictures.take(0)), 8);
}

} // namespace
} // namespace zv
