#include "controls/Clip.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <fstream>
#include <random>

namespace zv {
namespace {

/// A clip whose every pixel tells its place and its frame.
Clip sample(int width = 5, int height = 3, int frames = 3)
{
    Clip clip{width, height, 40, {}};
    for (int f = 0; f < frames; ++f) {
        std::vector<std::uint32_t> frame;
        for (int i = 0; i < width * height; ++i)
            frame.push_back(static_cast<std::uint32_t>((f + 1) << 16 | i << 8 | (255 - i)));
        clip.frames.push_back(frame);
    }
    return clip;
}

std::string patched(std::string bytes, std::string_view after, std::size_t offset, char value)
{
    bytes[bytes.find(after) + offset] = value;
    return bytes;
}

// Counted from the start of the name of the format record: name, size, then the bitmap header.
constexpr std::size_t kWidthAt = 12;
constexpr std::size_t kHeightAt = 16;
constexpr std::size_t kBitsAt = 22;
constexpr std::size_t kCompressionAt = 24;

TEST(ClipFile, WhatIsWrittenIsReadBack)
{
    const Clip clip = sample();
    const Result<Clip> back = readClip(writeClip(clip));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->width, clip.width);
    EXPECT_EQ(back->height, clip.height);
    EXPECT_EQ(back->frameMs, clip.frameMs);
    EXPECT_EQ(back->frames, clip.frames);
}

TEST(ClipFile, StartsAsAnAviFileAndTellsItsOwnLength)
{
    const std::string bytes = writeClip(sample());
    EXPECT_EQ(bytes.substr(0, 4), "RIFF");
    EXPECT_EQ(bytes.substr(8, 4), "AVI ");
    const auto length = static_cast<unsigned char>(bytes[4]) | static_cast<unsigned char>(bytes[5]) << 8;
    EXPECT_EQ(static_cast<std::size_t>(length), bytes.size() - 8);
}

TEST(ClipFile, RefusesEveryTruncation)
{
    const std::string whole = writeClip(sample());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Result<Clip> clip = readClip(std::string_view(whole).substr(0, size));
        ASSERT_FALSE(clip) << "cut after byte " << size;
        EXPECT_EQ(clip.error().code, ErrorCode::Damaged);
    }
}

TEST(ClipFile, RefusesAFrameThatIsCutShort)
{
    const std::string bytes = patched(writeClip(sample()), "strf", kHeightAt, 4);
    const Result<Clip> clip = readClip(bytes);
    ASSERT_FALSE(clip);
    EXPECT_EQ(clip.error().code, ErrorCode::Damaged);
}

TEST(ClipFile, RefusesCompressedFramesAndOtherDepths)
{
    for (const std::string& bytes : {patched(writeClip(sample()), "strf", kCompressionAt, 1),
                                     patched(writeClip(sample()), "strf", kBitsAt, 8)}) {
        const Result<Clip> clip = readClip(bytes);
        ASSERT_FALSE(clip);
        EXPECT_EQ(clip.error().code, ErrorCode::Unsupported);
    }
}

TEST(ClipFile, RefusesSidesThatAreNoneOrTooLong)
{
    const Result<Clip> none = readClip(patched(writeClip(sample()), "strf", kWidthAt, 0));
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error().code, ErrorCode::Damaged);
    const Result<Clip> huge = readClip(patched(writeClip(sample()), "strf", kWidthAt + 2, 0x7f));
    ASSERT_FALSE(huge);
    EXPECT_EQ(huge.error().code, ErrorCode::TooLarge);
}

TEST(ClipFile, RefusesAClipWithoutFrames)
{
    EXPECT_FALSE(readClip(writeClip(sample(5, 3, 0))));
}

TEST(ClipFile, TakesAnyDamageWithoutHarm)
{
    const std::string whole = writeClip(sample());
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        std::string bytes = whole;
        for (int i = 0; i < 4; ++i)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        const Result<Clip> clip = readClip(bytes);
        if (clip) {
            EXPECT_LE(clip->frames.size(), bytes.size());
        }
    }
}

class ClipPlayerTest : public testing::Test {
protected:
    std::string file(const std::string& bytes)
    {
        const std::string path = m_folder.filePath(QStringLiteral("clip.avi")).toStdString();
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(ClipPlayerTest, ShowsTheFirstFrameUntilItPlays)
{
    ClipPlayer player;
    ASSERT_TRUE(player.open(file(writeClip(sample()))));
    EXPECT_FALSE(player.isPlaying());
    EXPECT_EQ(player.frame(), 0);
    EXPECT_EQ(player.sizeHint(), QSize(5, 3));
    player.resize(5, 3);
    EXPECT_EQ(player.grab().toImage().pixel(1, 0) & 0xffffff, sample().frames[0][1]);
}

TEST_F(ClipPlayerTest, PlaysAtOnceWithAutoPlayAndGoesRound)
{
    ClipPlayer player;
    player.setAutoPlay(true);
    ASSERT_TRUE(player.open(file(writeClip(sample(5, 3, 2)))));
    EXPECT_TRUE(player.isPlaying());
    EXPECT_TRUE(QTest::qWaitFor([&] { return player.frame() == 1; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return player.frame() == 0; }));
    player.stop();
    EXPECT_FALSE(player.isPlaying());
}

TEST_F(ClipPlayerTest, RefusesWhatItCannotReadAndThenPlaysNothing)
{
    ClipPlayer player;
    ASSERT_TRUE(player.open(file(writeClip(sample()))));
    EXPECT_FALSE(player.open(file("RIFF")));
    player.play();
    EXPECT_FALSE(player.isPlaying());
    EXPECT_FALSE(player.open("/no such folder/clip.avi"));
    EXPECT_FALSE(player.open(""));
    EXPECT_FALSE(player.open("/"));
}

} // namespace
} // namespace zv
