#include "controls/FlowLayout.h"

#include <QLabel>
#include <gtest/gtest.h>

namespace zv {
namespace {

using enum FlowLayout::Place;

class FlowLayoutTest : public testing::Test {
protected:
    QWidget* add(int width, FlowLayout::Place place = Next)
    {
        auto* control = new QWidget(&form);
        control->setFixedSize(width, 20);
        flow->addControl(control, place);
        control->show();
        return control;
    }
    void layOut(int width, int height)
    {
        form.resize(width, height);
        flow->setGeometry(form.rect());
    }

    QWidget form;
    FlowLayout* flow = new FlowLayout(&form, 10);
};

TEST_F(FlowLayoutTest, OneLineHoldsWhatFits)
{
    const QWidget* first = add(50);
    const QWidget* second = add(40);
    layOut(100, 30);
    EXPECT_EQ(first->geometry(), QRect(0, 5, 50, 20));
    EXPECT_EQ(second->geometry(), QRect(60, 5, 40, 20));
    EXPECT_EQ(flow->heightForWidth(100), 20);
}

TEST_F(FlowLayoutTest, WhatDoesNotFitGoesOnInLinesOfTheSameLengthInColumns)
{
    const QWidget* first = add(50);
    const QWidget* second = add(40);
    const QWidget* third = add(40);
    const QWidget* fourth = add(40);
    layOut(170, 60);
    EXPECT_EQ(second->y(), first->y()) << "three would fit in the first line";
    EXPECT_EQ(third->x(), first->x());
    EXPECT_EQ(fourth->x(), second->x());
    EXPECT_GT(third->y(), first->geometry().bottom());
    EXPECT_EQ(flow->heightForWidth(170), 44);
}

TEST_F(FlowLayoutTest, BesideIsNeverPartedAndRightStandsAtTheEnd)
{
    add(60);
    const QWidget* label = add(30);
    const QWidget* field = add(30, Beside);
    layOut(120, 60);
    EXPECT_EQ(label->y(), field->y());
    EXPECT_EQ(label->x(), 0);
    const QWidget* button = add(40, Right);
    layOut(300, 30);
    EXPECT_EQ(button->geometry().right(), 299);
    const QWidget* own = add(20, NewLine);
    layOut(300, 60);
    EXPECT_EQ(own->x(), 0);
}

TEST_F(FlowLayoutTest, WhatIsHiddenTakesNoRoomAndWhatIsTooWideIsMadeNarrower)
{
    QWidget* hidden = add(50);
    hidden->hide();
    auto* wide = new QLabel(&form);
    wide->setText(QString(100, QLatin1Char('w')));
    flow->addControl(wide, Next);
    wide->show();
    layOut(60, 30);
    EXPECT_EQ(wide->geometry().left(), 0);
    EXPECT_EQ(wide->width(), 60);
}

} // namespace
} // namespace zv
