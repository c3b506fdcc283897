#include "controls/Resizer.h"

#include <QApplication>
#include <QSignalSpy>
#include <QWidget>
#include <gtest/gtest.h>

namespace zv {
namespace {

void resizeTo(QWidget& form, int width, int height)
{
    form.resize(width, height);
    QApplication::processEvents();
}

TEST(ProportionalAxis, KeepsEveryShareWhenThereIsRoom)
{
    ProportionalAxis axis;
    axis.add(10, 30, 5);
    axis.add(40, 90, 0);
    axis.solve(100, 300);
    EXPECT_EQ(axis.at(10), 30);
    EXPECT_EQ(axis.at(30), 90);
    EXPECT_EQ(axis.at(40), 120);
    EXPECT_EQ(axis.at(90), 270);
}

TEST(ProportionalAxis, KeepsTheLeastLengthAndLetsTheOthersGive)
{
    ProportionalAxis axis;
    axis.add(0, 20, 18);
    axis.add(20, 100, 0);
    axis.solve(100, 50);
    EXPECT_EQ(axis.at(20), 18);
    EXPECT_EQ(axis.at(100), 50);
}

TEST(ProportionalAxis, GivesALongSpanOnlyWhatItsPartsHaveNotTaken)
{
    ProportionalAxis axis;
    axis.add(0, 50, 20);
    axis.add(0, 100, 30);
    axis.solve(100, 30);
    EXPECT_EQ(axis.at(100), 30);
    EXPECT_GE(axis.at(50), 20);
}

TEST(ProportionalAxis, SqueezesAllAlikeWhenTheLeastLengthsDoNotFit)
{
    ProportionalAxis axis;
    axis.add(0, 50, 40);
    axis.add(50, 100, 40);
    axis.solve(100, 40);
    EXPECT_EQ(axis.at(50), 20);
    EXPECT_EQ(axis.at(100), 40);
}

TEST(Resizer, PlacesControlsInProportionToTheirDesign)
{
    QWidget form;
    auto* inner = new QWidget(&form);
    auto* innermost = new QWidget(inner);
    Resizer resizer(&form, {200, 100});
    resizer.place(inner, {20, 10, 100, 50});
    resizer.place(innermost, {50, 0, 50, 25});
    resizeTo(form, 400, 300);
    resizer.layOut();
    EXPECT_EQ(inner->geometry(), QRect(40, 30, 200, 150));
    EXPECT_EQ(innermost->geometry(), QRect(100, 0, 100, 75));
}

TEST(Resizer, RowsThatShareNoHeightDoNotPushEachOther)
{
    QWidget form;
    auto* above = new QWidget(&form);
    auto* left = new QWidget(&form);
    auto* right = new QWidget(&form);
    Resizer resizer(&form, {200, 100});
    resizer.place(above, {0, 0, 50, 40}, {60, 0});
    resizer.place(left, {0, 50, 100, 40}, {30, 0});
    resizer.place(right, {100, 50, 100, 40}, {60, 0});
    resizeTo(form, 100, 100);
    resizer.layOut();
    EXPECT_EQ(above->width(), 60);
    EXPECT_EQ(right->width(), 60);
    EXPECT_EQ(right->geometry().right(), 99);
}

TEST(Resizer, FollowsTheFormAndTellsAfterwards)
{
    QWidget form;
    auto* control = new QWidget(&form);
    Resizer resizer(&form, {100, 100});
    resizer.place(control, {0, 0, 50, 50});
    form.show();
    QRect atSignal;
    QObject::connect(&resizer, &Resizer::resized, [&] { atSignal = control->geometry(); });
    resizeTo(form, 300, 200);
    EXPECT_EQ(atSignal, QRect(0, 0, 150, 100));
}

TEST(Resizer, KeepsALineOfTextReadableInASmallForm)
{
    QWidget form;
    auto* line = new QWidget(&form);
    auto* panel = new QWidget(&form);
    Resizer resizer(&form, {100, 200});
    resizer.place(line, {0, 0, 100, 20}, {0, 20});
    resizer.place(panel, {0, 20, 100, 180});
    resizeTo(form, 100, 100);
    resizer.layOut();
    EXPECT_EQ(line->height(), 20);
    EXPECT_EQ(panel->geometry(), QRect(0, 20, 100, 80));
    resizer.setLeast(line, {0, 30});
    resizer.layOut();
    EXPECT_EQ(line->height(), 30);
}

TEST(Resizer, KeepsAReservedAreaFree)
{
    QWidget form;
    auto* frame = new QWidget(&form);
    auto* list = new QWidget(frame);
    Resizer resizer(&form, {100, 200});
    resizer.place(frame, {0, 0, 100, 200});
    resizer.reserve(frame, {0, 0, 100, 20}, {0, 16});
    resizer.place(list, {0, 20, 100, 180});
    resizeTo(form, 100, 50);
    resizer.layOut();
    EXPECT_EQ(list->geometry(), QRect(0, 16, 100, 34));
}

TEST(Resizer, LeavesTheFontAsItIs)
{
    QWidget form;
    auto* control = new QWidget(&form);
    Resizer resizer(&form, {100, 100});
    resizer.place(control, {0, 0, 50, 50});
    const QFont before = control->font();
    resizeTo(form, 500, 500);
    EXPECT_EQ(control->font(), before);
}

TEST(Resizer, KnowsTheDesignPlace)
{
    QWidget form;
    auto* control = new QWidget(&form);
    Resizer resizer(&form, {100, 100});
    resizer.place(control, {1, 2, 3, 4});
    EXPECT_EQ(resizer.designPlace(control), QRect(1, 2, 3, 4));
    EXPECT_TRUE(resizer.designPlace(&form).isNull());
}

} // namespace
} // namespace zv
