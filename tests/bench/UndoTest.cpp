#include "BenchFixture.h"

namespace zv::bench {

namespace {

using Undo = BenchFixture;

TEST_F(Undo, GoesBackToTheOpeningOfTheDrawing)
{
    for (int i = 0; i < 120; ++i)
        line.type("CIRCLE 0,0 " + std::to_string(i + 1) + " ");
    ASSERT_EQ(entities().size(), 120U);
    line.type("UNDO 120 ");
    EXPECT_TRUE(entities().empty());
    EXPECT_FALSE(drawing().isModified());
    line.type("U ");
    EXPECT_EQ(history.back(), "Everything has been undone");
}

TEST_F(Undo, RedoBringsBack)
{
    line.type("CIRCLE 0,0 1 CIRCLE 5,5 2 UNDO 2 ");
    EXPECT_TRUE(entities().empty());
    line.type("REDO REDO ");
    ASSERT_EQ(entities().size(), 2U);
    EXPECT_EQ(shape<dwg::Circle>(1).radius, 2);
    line.type("REDO ");
    EXPECT_EQ(history.back(), "There is nothing to bring back");
    line.type("U CIRCLE 1,1 9 REDO ");
    EXPECT_EQ(history.back(), "There is nothing to bring back");
    EXPECT_EQ(shape<dwg::Circle>(1).radius, 9);
}

TEST_F(Undo, ErasedObjectsStandWhereTheyStood)
{
    line.type("CIRCLE 0,0 1 CIRCLE 5,5 2 CIRCLE 9,9 3 ERASE 6,5 3,5  ");
    ASSERT_EQ(entities().size(), 2U) << history.back();
    line.type("U ");
    ASSERT_EQ(entities().size(), 3U);
    EXPECT_EQ(shape<dwg::Circle>(1).radius, 2);
    line.type("REDO ");
    EXPECT_EQ(shape<dwg::Circle>(1).radius, 3);
}

TEST_F(Undo, CountsVariables)
{
    line.type("DIMSCALE 48 LTSCALE 2 U ");
    EXPECT_EQ(drawing().variables().real("LTSCALE"), 1);
    EXPECT_EQ(drawing().variables().real("DIMSCALE"), 48);
    line.type("U ");
    EXPECT_EQ(drawing().variables().real("DIMSCALE"), 1);
    EXPECT_FALSE(drawing().isModified());
    line.type("REDO ");
    EXPECT_EQ(drawing().variables().real("DIMSCALE"), 48);
    EXPECT_TRUE(drawing().isModified());
}

TEST_F(Undo, InsideLineOneSegmentAtATime)
{
    line.type("LINE 0,0 1,0 2,0 3,0 U U ");
    EXPECT_EQ(entities().size(), 1U);
    line.type("1,7 \r");
    ASSERT_EQ(entities().size(), 2U);
    EXPECT_EQ(shape<dwg::Line>(1).start.x, 1);
    EXPECT_EQ(shape<dwg::Line>(1).end.y, 7);
    line.type("U ");
    EXPECT_TRUE(entities().empty());
}

TEST_F(Undo, InsideLineBackToTheFirstPoint)
{
    line.type("LINE 0,0 1,0 U U ");
    EXPECT_EQ(prompt(), "Specify first point:");
    EXPECT_TRUE(entities().empty());
    EXPECT_FALSE(drawing().isModified());
}

TEST_F(Undo, TakesABlockAwayWithItsInsertion)
{
    line.type("-INSERT\r" + makeBolt() + "\r0,0 1 1 0 ");
    ASSERT_NE(findBlock(drawing().document(), u"Bolt"), nullptr);
    line.type("U ");
    EXPECT_EQ(findBlock(drawing().document(), u"Bolt"), nullptr);
    line.type("REDO ");
    ASSERT_EQ(entities().size(), 1U);
    EXPECT_EQ(drawing().document().block(shape<dwg::Insert>(0).block)->entities.size(), 1U);
}

TEST_F(Undo, TheMarkOfUnsavedWorkFollows)
{
    line.type("CIRCLE 0,0 1 ");
    ASSERT_TRUE(drawing().save(folder.file("Plan.dwg")));
    line.type("CIRCLE 0,0 2 ");
    EXPECT_TRUE(drawing().isModified());
    line.type("U ");
    EXPECT_FALSE(drawing().isModified());
    line.type("U ");
    EXPECT_TRUE(drawing().isModified());
    line.type("REDO ");
    EXPECT_FALSE(drawing().isModified());
    line.type("U CIRCLE 0,0 3 U ");
    EXPECT_TRUE(drawing().isModified()) << "what was saved cannot be had back";
}

} // namespace

} // namespace zv::bench
