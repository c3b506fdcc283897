#include "BenchFixture.h"

#include <algorithm>
#include <cmath>

namespace zv::bench {

namespace {

using Insert = BenchFixture;

std::string command(const std::string& path, const std::string& scale)
{
    return "(command \"_.-insert\" \"" + path + "\"\"X\"\"" + scale + "\"\"Y\"\"" + scale + "\"\"Z\"\"" +
           scale + "\")\r";
}

TEST_F(Insert, ScriptedScalesLeavePointAndRotationToTheUser)
{
    line.type(command(makeBolt(), "2"));
    EXPECT_EQ(prompt(), "Specify insertion point or [Scale/X/Y/Z/Rotate]:");
    EXPECT_TRUE(line.prompt().takesPoint);
    EXPECT_TRUE(line.pick({3, 4, 0}));
    EXPECT_EQ(prompt(), "Specify rotation angle <0>:");
    line.type("\r");
    EXPECT_TRUE(line.isIdle());
    ASSERT_EQ(entities().size(), 1U);
    const auto& insert = shape<dwg::Insert>(0);
    EXPECT_EQ(insert.position.x, 3);
    EXPECT_EQ(insert.position.y, 4);
    EXPECT_EQ(insert.scale.x, 2);
    EXPECT_EQ(insert.scale.y, 2);
    EXPECT_EQ(insert.scale.z, 2);
    EXPECT_EQ(insert.rotation, 0);
    const dwg::BlockRecord* const block = drawing().document().block(insert.block);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->name, u"Bolt");
    EXPECT_EQ(block->base.x, 1);
    EXPECT_EQ(layerName(drawing().document(), block->entities.at(0).layer), "Steel");
}

TEST_F(Insert, APickedPointLeavesItsPromptInTheHistory)
{
    line.type("_.-insert\r" + makeBolt() + "\r");
    line.pick({3, 4, 0});
    EXPECT_EQ(history.back(), "Specify insertion point or [Scale/X/Y/Z/Rotate]: 3,4");
}

TEST_F(Insert, TypedExplodedInsertionPutsThePartsAtThePoint)
{
    line.type("_.-insert\r*" + makeBolt() + "\r10,5,0\r2\r");
    EXPECT_EQ(prompt(), "Specify rotation angle <0>:");
    line.type("90\r");
    ASSERT_EQ(entities().size(), 1U);
    const auto& part = shape<dwg::Line>(0);
    EXPECT_NEAR(part.start.x, 10, 1e-12);
    EXPECT_NEAR(part.start.y, 5, 1e-12);
    EXPECT_NEAR(part.end.x, 10, 1e-12);
    EXPECT_NEAR(part.end.y, 7, 1e-12);
    EXPECT_EQ(findBlock(drawing().document(), u"Bolt"), nullptr);
}

TEST_F(Insert, WhatIsPlacedIsSeenThoughTheCommandWasSeenAskingBefore)
{
    const std::string path = makeBolt();
    line.type("(command \"_.-insert\" \"" + path + "\"\"X\"\"1\"\"Y\"\"1\"\"Z\"\"1\")\r");
    int seen = drawing().revision();
    line.type("3,4\r0\r");
    EXPECT_GT(drawing().revision(), seen);

    line.type("_.-insert\r*" + path + "\r");
    seen = drawing().revision();
    line.type("1,2\r1\r0\r");
    EXPECT_GT(drawing().revision(), seen);
    EXPECT_EQ(entities().size(), 2U);
}

TEST_F(Insert, TypedEntriesEndAtBlanksButAPathKeepsThem)
{
    const std::string path = makeBolt("a bolt.dwg");
    line.type("-insert " + path + "\r1,2 3 4 45 ");
    EXPECT_TRUE(line.isIdle());
    ASSERT_EQ(entities().size(), 1U);
    const auto& insert = shape<dwg::Insert>(0);
    EXPECT_EQ(insert.scale.x, 3);
    EXPECT_EQ(insert.scale.y, 4);
    EXPECT_EQ(insert.scale.z, 3);
    EXPECT_NEAR(insert.rotation, std::acos(-1.0) / 4, 1e-12);
}

TEST_F(Insert, EnterTakesTheDefaults)
{
    line.type("-insert\r" + makeBolt() + "\r0,0\r\r\r\r");
    ASSERT_EQ(entities().size(), 1U);
    const auto& insert = shape<dwg::Insert>(0);
    EXPECT_EQ(insert.scale.x, 1);
    EXPECT_EQ(insert.scale.y, 1);
    EXPECT_EQ(insert.rotation, 0);
}

TEST_F(Insert, NameWithoutAPathTakesABlockOfTheDrawingFirst)
{
    line.type("-insert\r" + makeBolt() + "\r0,0\r\r\r\r");
    std::filesystem::remove(folder.file("Bolt.dwg"));
    line.type("-insert\rbolt\r1,1\r\r\r\r");
    EXPECT_EQ(entities().size(), 2U);
    EXPECT_EQ(shape<dwg::Insert>(0).block, shape<dwg::Insert>(1).block);
}

TEST_F(Insert, NameAndPathRedefine)
{
    line.type("-insert\r" + makeBolt() + "\r0,0\r\r\r\r");
    const dwg::Handle block = shape<dwg::Insert>(0).block;
    line.type("-insert\rBolt=" + makeBolt("Other.dwg") + "\r1,1\r\r\r\r");
    EXPECT_EQ(shape<dwg::Insert>(1).block, block);
    EXPECT_EQ(findBlock(drawing().document(), u"Other"), nullptr);
}

TEST_F(Insert, PresetsOfOneAxisAreNotAskedAgain)
{
    line.type("-insert\r" + makeBolt() + "\rX\r2\rR\r90\r5,6\r");
    EXPECT_EQ(prompt(), "Enter Y scale factor <use X scale factor>:");
    line.type("\r");
    ASSERT_EQ(entities().size(), 1U);
    EXPECT_EQ(shape<dwg::Insert>(0).scale.y, 2);
    EXPECT_NEAR(shape<dwg::Insert>(0).rotation, std::acos(-1.0) / 2, 1e-12);
}

TEST_F(Insert, PauseHandsOnePromptToTheUser)
{
    line.type("(command \"_.-insert\" \"" + makeBolt() + "\" pause \"2\" \"2\" \"0\")\r");
    EXPECT_EQ(prompt(), "Specify insertion point or [Scale/X/Y/Z/Rotate]:");
    line.pick({7, 8, 0});
    EXPECT_TRUE(line.isIdle());
    ASSERT_EQ(entities().size(), 1U);
    EXPECT_EQ(shape<dwg::Insert>(0).position.x, 7);
    EXPECT_EQ(shape<dwg::Insert>(0).scale.x, 2);
}

TEST_F(Insert, LispTextsResolveTheirEscapes)
{
    LispItem item;
    std::size_t used = 0;
    EXPECT_EQ(readLisp(R"(("a\\b\"c\101""x"'(1 2.5)) rest)", item, used), LispOutcome::Whole);
    ASSERT_EQ(item.items.size(), 3U);
    EXPECT_EQ(item.items[0].text, "a\\b\"cA");
    EXPECT_EQ(item.items[1].text, "x");
    EXPECT_EQ(item.items[2].items[1].items[1].number, 2.5);
    EXPECT_EQ(readLisp("(command \"a", item, used), LispOutcome::Incomplete);
    EXPECT_EQ(readLisp(")", item, used), LispOutcome::Malformed);
    EXPECT_EQ(readLisp(std::string(10'000, '('), item, used), LispOutcome::Malformed);
}

TEST_F(Insert, MissingFileEndsTheScriptAndLeavesNothing)
{
    line.type(command("/no/such.dwg", "1"));
    EXPECT_TRUE(line.isIdle());
    EXPECT_TRUE(entities().empty());
    EXPECT_FALSE(drawing().isModified());
}

TEST_F(Insert, EscapeTakesTheBlockBack)
{
    line.type(command(makeBolt(), "1"));
    EXPECT_NE(findBlock(drawing().document(), u"Bolt"), nullptr);
    line.cancel();
    EXPECT_TRUE(line.isIdle());
    EXPECT_EQ(findBlock(drawing().document(), u"Bolt"), nullptr);
    EXPECT_FALSE(drawing().isModified());
}

TEST_F(Insert, AnotherExpressionTakesOverFromAWaitingOne)
{
    line.type(command(makeBolt(), "1"));
    line.type(command(makeBolt("Nut.dwg"), "1"));
    line.pick({0, 0, 0});
    line.type("\r");
    ASSERT_EQ(entities().size(), 1U);
    EXPECT_EQ(findBlock(drawing().document(), u"Bolt"), nullptr);
    EXPECT_NE(findBlock(drawing().document(), u"Nut"), nullptr);
}

TEST_F(Insert, UnitsScaleByTheirRatioAndNoneByNothing)
{
    static_cast<void>(drawing().variables().set("INSUNITS", std::int64_t{6}));
    line.type(command(makeBolt("cm.dwg", 5), "1") + "0,0\r0\r");
    line.type(command(makeBolt("none.dwg", 0), "1") + "0,0\r0\r");
    ASSERT_EQ(entities().size(), 2U);
    EXPECT_NEAR(shape<dwg::Insert>(0).scale.x, 0.01, 1e-15);
    EXPECT_EQ(shape<dwg::Insert>(1).scale.x, 1);
}

TEST_F(Insert, DrafterIsToldWhenAFileOfATakenNameIsAnotherOne)
{
    std::filesystem::create_directory(folder.file("B"));
    const std::string first = makeBolt();
    dwg::Document other = emptyDocument();
    other.blocks[other.modelSpace].entities.push_back(
        newEntity(other, "CIRCLE", dwg::Circle{{0, 0, 0}, 5, 0, dwg::kZAxis}, 0));
    const std::string second =
        typedPath(folder.write("B/Bolt.dwg", dwg::writeDocument(other, {}).valueOr("")));
    line.type(command(first, "1") + "0,0\r0\r");
    line.type(command(first, "1") + "0,0\r0\r");
    const std::string told = "Block Bolt is in the drawing already; " + second + " was not read";
    EXPECT_EQ(std::count(history.begin(), history.end(), told), 0);
    line.type(command(second, "1") + "0,0\r0\r");
    EXPECT_EQ(std::count(history.begin(), history.end(), told), 1);
    EXPECT_EQ(entities().size(), 3U);
}

TEST_F(Insert, SameFileAfterReopeningIsNotTold)
{
    const std::string bolt = makeBolt();
    line.type(command(bolt, "1") + "0,0\r0\r");
    const std::string plan = folder.file("Plan.dwg");
    ASSERT_TRUE(drawing().save(plan));
    workshop.close(workshop.active());
    ASSERT_TRUE(workshop.open(plan));
    history.clear();
    line.type(command(bolt, "1") + "0,0\r0\r");
    for (const std::string& told : history)
        EXPECT_EQ(told.find("was not read"), std::string::npos) << told;
}

TEST_F(Insert, EqualsInAFoldersNameIsNoOtherName)
{
    std::filesystem::create_directory(folder.file("a=b"));
    makeBolt("a=b/Bolt.dwg");
    line.type(command(typedPath(folder.file("a=b/Bolt.dwg")), "1") + "0,0\r0\r");
    ASSERT_EQ(entities().size(), 1U);
    EXPECT_NE(findBlock(drawing().document(), u"Bolt"), nullptr);
}

TEST_F(Insert, WithoutADrawingSaysSo)
{
    workshop.close(workshop.active());
    line.type("-INSERT\r");
    EXPECT_EQ(history.back(), "No drawing is open. NEW begins one, OPEN opens one.");
    EXPECT_TRUE(line.isIdle());
}

TEST_F(Insert, BlockThatWouldHoldItselfIsRefused)
{
    dwg::Document document = emptyDocument();
    const auto inner = importAsBlock(document, emptyDocument(), u"Loop");
    ASSERT_TRUE(inner);
    dwg::Insert insert;
    insert.block = *inner;
    document.blocks[document.modelSpace].entities.push_back(newEntity(document, "INSERT", insert, 0));
    const std::string path = folder.write("Loop.dwg", dwg::writeDocument(document, {}).valueOr(""));
    line.type(command(path, "1"));
    EXPECT_TRUE(line.isIdle());
    EXPECT_EQ(findBlock(drawing().document(), u"Loop"), nullptr);
}

TEST_F(Insert, SavedDrawingHoldsTheBlockReference)
{
    line.type(command(makeBolt(), "2") + "3,4\r0\r");
    const std::string path = folder.file("Saved.dwg");
    static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{0}));
    line.type("SAVEAS\r" + path + "\r");
    ASSERT_FALSE(drawing().isModified()) << history.back();
    const auto loaded = BenchDrawing::load(path);
    ASSERT_TRUE(loaded);
    const auto& insert = std::get<dwg::Insert>((*loaded)->modelSpace().entities.at(0).geometry);
    EXPECT_EQ(insert.position.x, 3);
    EXPECT_EQ(insert.scale.x, 2);
    EXPECT_EQ((*loaded)->document().block(insert.block)->name, u"Bolt");
}

} // namespace

} // namespace zv::bench
