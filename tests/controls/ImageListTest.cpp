#include "controls/ImageList.h"
#include "controls/ProgramStyle.h"

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <gtest/gtest.h>

#include <vector>

namespace zv {
namespace {

struct PalettePair {
    QPalette light{QColor(0xef, 0xef, 0xef)};
    QPalette dark{QColor(0x30, 0x30, 0x30)};
};

QImage drawn(const QIcon& icon, int edge = 24)
{
    return icon.pixmap(QSize(edge, edge)).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

bool holdsInk(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 128)
                return true;
    return false;
}

class ImageListTest : public testing::Test {
protected:
    ~ImageListTest() override { QApplication::setPalette(m_before); }

private:
    QPalette m_before = QApplication::palette();
};

TEST_F(ImageListTest, EveryIndexHasAPicture)
{
    ASSERT_EQ(ImageList::a().count(), 14);
    ASSERT_EQ(ImageList::b().count(), 36);
    ASSERT_EQ(ImageList::c().count(), 18);
    ASSERT_EQ(ImageList::d().count(), 4);
    for (const ImageList* list : {&ImageList::a(), &ImageList::b(), &ImageList::c(), &ImageList::d()})
        for (int index = 1; index <= list->count(); ++index)
            EXPECT_TRUE(holdsInk(drawn(list->picture(index)))) << list->letter() << index;
}

TEST_F(ImageListTest, AnIndexOutsideTheListHasNoPicture)
{
    for (int index : {-1, 0, 15})
        EXPECT_TRUE(ImageList::a().picture(index).isNull()) << index;
    EXPECT_TRUE(ImageList::b().picture(37).isNull());
    EXPECT_TRUE(namedPicture(QStringLiteral("no such picture")).isNull());
}

TEST_F(ImageListTest, MessageBoxesCarryThePictureOfTheirKindInTheProgramsStyle)
{
    const ProgramStyle style;
    std::vector<QImage> seen;
    for (const QStyle::StandardPixmap kind : {QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxWarning,
                                              QStyle::SP_MessageBoxCritical, QStyle::SP_MessageBoxQuestion}) {
        const QImage picture = drawn(style.standardIcon(kind, nullptr, nullptr));
        EXPECT_TRUE(holdsInk(picture)) << kind;
        for (const QImage& other : seen)
            EXPECT_NE(picture, other) << kind;
        seen.push_back(picture);
    }
    EXPECT_EQ(style.styleHint(QStyle::SH_DialogButtonBox_ButtonsHaveIcons, nullptr, nullptr, nullptr), 0);
}

TEST_F(ImageListTest, APictureUnderTheMouseDiffersFromTheSameAtRest)
{
    struct Pair {
        const ImageList& list;
        int over;
        int reset;
    };
    const std::vector<Pair> pairs{
        {ImageList::b(), 28, 27}, {ImageList::b(), 26, 25}, {ImageList::b(), 34, 33},
        {ImageList::b(), 36, 35}, {ImageList::b(), 22, 21}, {ImageList::b(), 30, 29},
        {ImageList::b(), 32, 31}, {ImageList::b(), 24, 23}, {ImageList::b(), 16, 15},
        {ImageList::b(), 20, 19}, {ImageList::b(), 18, 17}, {ImageList::b(), 14, 13},
        {ImageList::a(), 14, 13}, {ImageList::b(), 12, 11}, {ImageList::a(), 12, 11},
        {ImageList::a(), 12, 10}, {ImageList::a(), 5, 3},   {ImageList::a(), 5, 4},
        {ImageList::b(), 5, 3},   {ImageList::b(), 9, 10},  {ImageList::a(), 2, 1},
        {ImageList::a(), 7, 6},   {ImageList::a(), 9, 8},
    };
    for (const Pair& pair : pairs)
        EXPECT_NE(drawn(pair.list.picture(pair.over)), drawn(pair.list.picture(pair.reset)))
            << pair.list.letter() << pair.over;
}

TEST_F(ImageListTest, TheChosenTabDiffersFromTheOther)
{
    EXPECT_NE(drawn(ImageList::a().picture(3)), drawn(ImageList::a().picture(4)));
    EXPECT_NE(drawn(ImageList::a().picture(10)), drawn(ImageList::a().picture(11)));
}

TEST_F(ImageListTest, APictureFollowsThePalette)
{
    const QIcon icon = ImageList::b().picture(25);
    QApplication::setPalette(PalettePair().light);
    const QImage onLight = drawn(icon);
    QApplication::setPalette(PalettePair().dark);
    const QImage onDark = drawn(icon);
    // The middle of the cross is plain ink.
    EXPECT_LT(qGray(onLight.pixel(12, 12)), 80);
    EXPECT_GT(qGray(onDark.pixel(12, 12)), 175);
}

TEST_F(ImageListTest, APictureIsDrawnAnewAtTwiceTheSize)
{
    const QIcon icon = ImageList::b().picture(33);
    const QPixmap twice = icon.pixmap(QSize(24, 24), 2.0);
    EXPECT_EQ(twice.size(), QSize(48, 48));
    EXPECT_NE(twice.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
              drawn(icon).scaled(48, 48));
}

} // namespace
} // namespace zv
