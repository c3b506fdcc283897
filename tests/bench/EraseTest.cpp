#include "BenchFixture.h"

namespace zv::bench {

namespace {

/// Erasing in a drawing with a line from (0,0) to (10,0), a circle of radius 1 round (5,5), and a text.
class Erase : public BenchFixture {
protected:
    Erase()
    {
        line.type("LINE 0,0 10,0 \rCIRCLE 5,5 1 ");
        dwg::TextLine text;
        text.text = u"MM";
        text.insertion = {20, 0, 0};
        entities().push_back(newEntity(drawing().document(), "TEXT", std::move(text), 0));
        drawing().continueChange();
        line.type("ERASE ");
    }
    std::vector<std::string> left()
    {
        line.type("\r");
        EXPECT_TRUE(line.isIdle());
        std::vector<std::string> kinds;
        for (const dwg::Entity& entity : entities())
            kinds.push_back(entity.kind);
        return kinds;
    }
    using Kinds = std::vector<std::string>;
};

TEST_F(Erase, APickTakesTheObjectUnderIt)
{
    line.pick({5, 0.05, 0});
    EXPECT_EQ(history.back(), "1 found, 1 total");
    EXPECT_EQ(left(), (Kinds{"CIRCLE", "TEXT"}));
}

TEST_F(Erase, ALetterIsTakenInsideItAndACircleOnlyAtItsLine)
{
    line.pick({20.4, 0.4, 0});
    line.pick({5, 5, 0});
    EXPECT_EQ(prompt(), "Specify opposite corner:");
    line.pick({5.1, 5.1, 0});
    EXPECT_EQ(history.back(), "0 found, 1 total");
    EXPECT_EQ(left(), (Kinds{"LINE", "CIRCLE"}));
}

TEST_F(Erase, AWindowToTheRightTakesWhatIsInside)
{
    line.pick({3, -1, 0});
    line.pick({7, 7, 0});
    EXPECT_EQ(left(), (Kinds{"LINE", "TEXT"}));
}

TEST_F(Erase, AWindowToTheLeftTakesWhatItCrosses)
{
    line.pick({7, 5.5, 0});
    line.pick({4.5, -1, 0});
    EXPECT_EQ(left(), (Kinds{"TEXT"}));
}

TEST_F(Erase, TheOptionsSayWhichWindowIsMeant)
{
    line.type("C 4.5,-1 7,5.5 ");
    EXPECT_EQ(history.back(), "2 found, 2 total");
    line.type("W 15,-5 30,5 ");
    EXPECT_EQ(left(), Kinds());
}

TEST_F(Erase, AWindowThroughACurvesEmptyMiddleTakesNothing)
{
    line.type("C 4.9,4.9 5.1,5.1 ");
    EXPECT_EQ(left().size(), 3U);
}

TEST_F(Erase, LastAllAndPrevious)
{
    line.type("L ");
    EXPECT_EQ(left(), (Kinds{"LINE", "CIRCLE"}));
    line.type("U ");
    line.type("ERASE P ");
    EXPECT_EQ(left(), (Kinds{"LINE", "CIRCLE"}));
    line.type("ERASE ALL ");
    EXPECT_EQ(left(), Kinds());
}

TEST_F(Erase, EscapeLeavesEverything)
{
    line.pick({5, 0, 0});
    line.cancel();
    EXPECT_EQ(entities().size(), 3U);
}

TEST_F(Erase, AnObjectOnALayerThatIsOffCannotBePicked)
{
    drawing().document().layers[0].off = true;
    line.pick({5, 0, 0});
    line.pick({6, 1, 0});
    EXPECT_EQ(left().size(), 3U);
}

} // namespace

} // namespace zv::bench
