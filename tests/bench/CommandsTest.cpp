#include "BenchFixture.h"
#include "support/RealDrawings.h"

namespace zv::bench {

namespace {

using Commands = BenchFixture;

TEST_F(Commands, LinesAndCirclesAreDrawnAndUndone)
{
    line.type("LINE 0,0 1,0 @0,1 \r");
    line.type("_circle 5,5 2 ");
    ASSERT_EQ(entities().size(), 3U);
    EXPECT_EQ(shape<dwg::Line>(1).end.y, 1);
    EXPECT_EQ(shape<dwg::Circle>(2).radius, 2);
    line.type("U\r");
    EXPECT_EQ(entities().size(), 2U);
    line.type("undo 2 ");
    EXPECT_TRUE(entities().empty());
    line.type("U\r");
    EXPECT_EQ(history.back(), "Everything has been undone");
}

TEST_F(Commands, InvalidAnswersAskAgain)
{
    line.type("circle here ");
    EXPECT_EQ(prompt(), "Specify center point for circle:");
    line.type("1,1 -3 ");
    EXPECT_EQ(prompt(), "Specify radius of circle:");
    line.cancel();
    EXPECT_EQ(prompt(), "Command:");
}

TEST_F(Commands, EnterRepeatsTheLastCommand)
{
    line.type("LINE 0,0 1,1 \r");
    line.type("\r");
    EXPECT_EQ(prompt(), "Specify first point:");
}

TEST_F(Commands, UnknownCommandIsToldAndForgotten)
{
    line.type("FROBNICATE\r");
    EXPECT_EQ(history.back(), "Unknown command \"FROBNICATE\". HELP lists the commands.");
    EXPECT_TRUE(line.isIdle());
}

TEST_F(Commands, UnfinishedEntryWaitsForItsEnd)
{
    line.type("LI");
    EXPECT_TRUE(line.isIdle());
    line.type("NE\r");
    EXPECT_EQ(prompt(), "Specify first point:");
}

TEST_F(Commands, VariablesAreTypedChecked)
{
    line.type("DIMSCALE 48 ");
    EXPECT_EQ(drawing().variables().real("DIMSCALE"), 48);
    line.type("filedia 2 0 ");
    EXPECT_EQ(workshop.variables().whole("FILEDIA"), 0);
    line.type("(setvar \"FILEDIA\" 1)\r");
    EXPECT_EQ(workshop.variables().whole("FILEDIA"), 1);
    EXPECT_FALSE(workshop.variables().set("FILEDIA", 1.0));
    EXPECT_FALSE(workshop.variables().set("ACADVER", std::string("1")));
    EXPECT_FALSE(workshop.variables().set("NONSENSE", std::int64_t{1}));
    EXPECT_TRUE(drawing().variables().set("DIMSCALE", std::int64_t{2}));
}

TEST_F(Commands, SeveralDrawingsForbidTheSingleMode)
{
    workshop.add();
    EXPECT_FALSE(workshop.variables().set("SDI", std::int64_t{1}));
    workshop.close(workshop.active());
    EXPECT_TRUE(workshop.variables().set("SDI", std::int64_t{1}));
    workshop.add();
    EXPECT_EQ(workshop.drawings().size(), 1U);
}

TEST_F(Commands, ZoomTakesItsOptions)
{
    line.type("ZOOM E ZOOM A ZOOM 2x ZOOM W 0,0 2,2 ZOOM P ");
    ASSERT_EQ(zooms.size(), 5U);
    EXPECT_EQ(zooms[2].factor, 2);
    EXPECT_EQ(zooms[3].kind, ZoomRequest::Kind::Window);
    EXPECT_EQ(zooms[4].kind, ZoomRequest::Kind::Previous);
}

TEST_F(Commands, OpenSaveAndPropertiesWorkOnFiles)
{
    static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{0}));
    const std::string path = makeBolt();
    line.type("OPEN\r" + path + "\r");
    ASSERT_EQ(workshop.drawings().size(), 2U);
    EXPECT_EQ(drawing().path(), folder.file("Bolt.dwg"));
    line.type(".DWGPROPS\r");
    EXPECT_TRUE(drawing().isModified());
    line.type(".qsave\r");
    EXPECT_FALSE(drawing().isModified()) << history.back();
    const auto again = BenchDrawing::load(path);
    ASSERT_TRUE(again);
    EXPECT_EQ((*again)->properties().comments, u"edited");
    line.type("CLOSE\r");
    EXPECT_EQ(workshop.drawings().size(), 1U);
}

TEST_F(Commands, OfAFileThatHoldsMoreOnlyThePropertiesAreSaved)
{
    static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{0}));
    const RealDrawings real;
    if (real.missing())
        GTEST_SKIP() << "the real drawings are not there";
    const std::string old = real.bytesOf("2018/sample_2018.dwg");
    const std::string path = folder.write("More.dwg", old);
    line.type("OPEN\r" + path + "\r");
    ASSERT_EQ(drawing().path(), path) << history.back();
    line.type(".DWGPROPS\r.qsave\r");
    EXPECT_FALSE(drawing().isModified()) << history.back();
    const auto again = BenchDrawing::load(path);
    ASSERT_TRUE(again);
    EXPECT_EQ((*again)->properties().comments, u"edited");
    EXPECT_EQ((*again)->modelSpace().entities.size(), entities().size());

    const std::string saved = folder.read("More.dwg");
    line.type("LINE\r0,0\r1,1\r\rQSAVE\r");
    EXPECT_TRUE(drawing().isModified());
    EXPECT_NE(history.back().find("itself cannot be written"), std::string::npos) << history.back();
    EXPECT_EQ(prompt(), "Save under another name? [Yes/No] <Yes>:");
    EXPECT_EQ(folder.read("More.dwg"), saved);
}

TEST_F(Commands, FileDialogsAreAskedWhenTheyAreOn)
{
    chosenFile = makeBolt();
    line.type("OPEN\r");
    EXPECT_EQ(drawing().path(), folder.file("Bolt.dwg"));
}

TEST_F(Commands, FileThatCannotBeReadIsTold)
{
    static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{0}));
    line.type("OPEN\r" + folder.write("bad.dwg", "no drawing") + "\r");
    EXPECT_EQ(workshop.drawings().size(), 1U);
    EXPECT_FALSE(history.back().empty());
}

TEST_F(Commands, XrefIsAttachedByPathAndDetached)
{
    static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{0}));
    const std::string path = makeBolt();
    line.type("-XREF O " + path + "\r5,5 1 1 0 ");
    ASSERT_EQ(entities().size(), 1U) << history.back();
    const dwg::BlockRecord* block = findBlock(drawing().document(), u"Bolt");
    ASSERT_NE(block, nullptr);
    EXPECT_TRUE(block->xref);
    EXPECT_TRUE(block->xrefOverlay);
    line.type("-insert\rBolt\r");
    EXPECT_TRUE(line.isIdle());
    line.type("-XREF D Bolt\r");
    EXPECT_TRUE(entities().empty());
}

TEST_F(Commands, VariablesThatTheFileKeepsMarkTheDrawing)
{
    const std::string path = folder.file("Plan.dwg");
    ASSERT_TRUE(drawing().save(path));
    line.type("OSMODE 0 ");
    EXPECT_FALSE(drawing().isModified());
    line.type("DIMSCALE 48 ");
    EXPECT_TRUE(drawing().isModified());
    EXPECT_EQ(drawing().variables().whole("DBMOD"), 4);
    line.type("QSAVE\r");
    EXPECT_FALSE(drawing().isModified());
    const auto again = BenchDrawing::load(path);
    ASSERT_TRUE(again);
    EXPECT_EQ((*again)->variables().real("DIMSCALE"), 48);
    EXPECT_FALSE((*again)->isModified());
}

TEST_F(Commands, UndoAfterSavingMarksTheDrawing)
{
    line.type("LINE 0,0 1,0 \r");
    ASSERT_TRUE(drawing().save(folder.file("Plan.dwg")));
    EXPECT_FALSE(drawing().isModified());
    line.type("U\r");
    EXPECT_TRUE(drawing().isModified());
}

TEST_F(Commands, SavingWritesTheExtents)
{
    const std::string path = folder.file("Plan.dwg");
    const auto saved = [&] {
        EXPECT_TRUE(drawing().save(path));
        return (*BenchDrawing::load(path))->document().header;
    };
    const dwg::HeaderVariables empty = saved();
    EXPECT_GT(empty.extentsMin.x, empty.extentsMax.x);
    line.type("CIRCLE 5,6 2 LINE -1,0 1,0 \r");
    const dwg::HeaderVariables header = saved();
    EXPECT_NEAR(header.extentsMin.x, -1, 1e-9);
    EXPECT_NEAR(header.extentsMin.y, 0, 1e-9);
    EXPECT_NEAR(header.extentsMax.x, 7, 1e-9);
    EXPECT_NEAR(header.extentsMax.y, 8, 1e-9);
}

} // namespace

} // namespace zv::bench
