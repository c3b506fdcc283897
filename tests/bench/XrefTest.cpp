#include "BenchFixture.h"

#include <algorithm>

namespace zv::bench {

namespace {

/// References to drawings; each file has one line on a layer "Steel", and references of its own where said.
class Xref : public BenchFixture {
protected:
    Xref() { static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{0})); }

    struct Reference {
        dwg::Text path;
        bool overlay = false;
    };
    /// A drawing with a line from (1,1) to (`end`,1) that shows each reference at its origin.
    std::string makeFile(const std::string& name, double end, const std::vector<Reference>& references = {})
    {
        dwg::Document document = emptyDocument();
        dwg::Layer layer;
        layer.name = u"Steel";
        layer.handle = giveHandle(document);
        document.layers.push_back(layer);
        dwg::BlockRecord& space = document.blocks[document.modelSpace];
        space.entities.push_back(
            newEntity(document, "LINE", dwg::Line{{1, 1, 0}, {end, 1, 0}, 0, dwg::kZAxis}, layer.handle));
        for (const Reference& reference : references) {
            dwg::BlockRecord block;
            block.handle = giveHandle(document);
            block.name = wide(fileStem(narrow(reference.path)));
            block.xref = true;
            block.xrefOverlay = reference.overlay;
            block.xrefPath = reference.path;
            dwg::Insert insert;
            insert.block = block.handle;
            document.blocks.push_back(block);
            document.blocks[document.modelSpace].entities.push_back(
                newEntity(document, "INSERT", std::move(insert), layer.handle));
        }
        reindex(document);
        return typedPath(folder.write(name, dwg::writeDocument(document, {}).valueOr("")));
    }
    void attach(const std::string& path, const std::string& option = "A")
    {
        line.type("-XREF " + option + " " + path + "\r5,5 1 1 0 ");
        EXPECT_TRUE(line.isIdle()) << prompt();
    }
    std::vector<dwg::Entity> seen(const char16_t* block)
    {
        for (const dwg::BlockRecord& record : drawing().seen().blocks) {
            if (record.name == block)
                return record.entities;
        }
        return {};
    }
    std::u16string textOf(const char16_t* block)
    {
        const auto entities = seen(block);
        const auto* const text =
            entities.empty() ? nullptr : std::get_if<dwg::TextLine>(&entities[0].geometry);
        return text != nullptr ? text->text : u"";
    }
};

TEST_F(Xref, ContentIsSeenOnLayersOfItsOwnAndThePathIsKept)
{
    const std::string path = makeFile("Site.dwg", 2);
    attach(path);
    ASSERT_EQ(seen(u"Site").size(), 1U);
    EXPECT_EQ(layerName(drawing().seen(), seen(u"Site")[0].layer), "Site|Steel");
    EXPECT_EQ(findLayer(drawing().document(), u"Site|Steel"), nullptr);

    const std::string saved = folder.file("Plan.dwg");
    ASSERT_TRUE(drawing().save(saved));
    const auto again = BenchDrawing::load(saved);
    ASSERT_TRUE(again);
    const dwg::BlockRecord* const block = findBlock((*again)->document(), u"Site");
    ASSERT_NE(block, nullptr);
    EXPECT_TRUE(block->xref);
    EXPECT_FALSE(block->xrefOverlay);
    EXPECT_EQ(block->xrefPath, wide(path));
    EXPECT_EQ((*again)->seen().block(block->handle)->entities.size(), 1U);
}

TEST_F(Xref, ItsBaseAndItsUnitsAreMinded)
{
    dwg::Document document = emptyDocument();
    document.header.insertionBase = {1, 1, 0};
    document.header.insertionUnits = 5;
    const std::string path = folder.write("Cm.dwg", dwg::writeDocument(document, {}).valueOr(""));
    static_cast<void>(drawing().variables().set("INSUNITS", std::int64_t{6}));
    attach(path, "O");
    EXPECT_NEAR(shape<dwg::Insert>(0).scale.x, 0.01, 1e-12);
    EXPECT_EQ(findBlock(drawing().document(), u"Cm")->base.x, 1);
}

TEST_F(Xref, OneLineAnswersEveryPrompt)
{
    line.type("._xref\rOverlay\r" + makeFile("Site plan.dwg", 2) + "\r1,2,0\rXYZ\r2\r3\r4\r90\r");
    EXPECT_TRUE(line.isIdle()) << prompt();
    ASSERT_EQ(entities().size(), 1U);
    const auto& insert = shape<dwg::Insert>(0);
    EXPECT_EQ(insert.position.y, 2);
    EXPECT_EQ(insert.scale.x, 2);
    EXPECT_EQ(insert.scale.y, 3);
    EXPECT_EQ(insert.scale.z, 4);
    EXPECT_NEAR(insert.rotation, 1.5707963267948966, 1e-12);
}

/// What Xattach types, in its eight forms; where something is left open the user answers.
TEST_F(Xref, EveryFormOfTheTypedAttachmentIsAnswered)
{
    const std::string path = makeFile("Site.dwg", 2);
    struct Form {
        std::string text, answers;
    };
    const std::string scripted = "(command \"._xref\" \"Attach\"\"" + path + "\"";
    const std::string typed = "._xref\rOverlay\r" + path + "\r1,2,0\rXYZ\r2\r2\r2\r";
    const Form forms[] = {
        {scripted + ")\r", "1,2\r2\r2\r30\r"},
        {scripted + "\"X\"\"2\"\"Y\"\"2\"\"Z\"\"2\"\"R\"\"30\")\r", "1,2\r"},
        {scripted + "pause\"X\"pause pause\"30\")\r", "1,2\r2\r2\r"},
        {scripted + "\"X\"\"2\"\"Y\"\"2\"\"Z\"\"2\")\r", "1,2\r30\r"},
        {typed + "30\r", ""},
        {typed, "30\r"},
        {typed, "30\r"},
        {typed + "30\r", ""},
    };
    std::size_t placed = 0;
    for (const Form& form : forms) {
        line.type(form.text);
        EXPECT_EQ(line.isIdle(), form.answers.empty()) << form.text << prompt();
        line.type(form.answers);
        EXPECT_TRUE(line.isIdle()) << form.text << prompt();
        ASSERT_EQ(entities().size(), ++placed) << form.text;
        const auto& insert = shape<dwg::Insert>(placed - 1);
        EXPECT_EQ(insert.position.y, 2) << form.text;
        EXPECT_EQ(insert.scale.x, 2) << form.text;
        EXPECT_EQ(insert.scale.y, 2) << form.text;
        EXPECT_NEAR(insert.rotation, 0.52359877559829887, 1e-12) << form.text;
    }
}

TEST_F(Xref, AttachedOnesNestAndOverlaysDoNot)
{
    makeFile("Bolt.dwg", 3);
    makeFile("Note.dwg", 4);
    attach(makeFile("Site.dwg", 2, {{u"Bolt.dwg", false}, {u"Note.dwg", true}}));
    EXPECT_EQ(seen(u"Site|Bolt").size(), 1U);
    EXPECT_EQ(seen(u"Site|Note").size(), 0U);
}

TEST_F(Xref, MissingFileIsShownAsItsPath)
{
    const std::string path = makeFile("Site.dwg", 2, {{u"C:\\gone\\Bolt.dwg", false}});
    attach(path);
    EXPECT_EQ(textOf(u"Site|Bolt"), u"Xref C:\\gone\\Bolt.dwg");
    std::filesystem::remove(path);
    line.type("-XREF R Site\r");
    EXPECT_EQ(textOf(u"Site"), u"Xref " + wide(path));
}

TEST_F(Xref, FileOfAMovedFolderIsFoundBesideTheDrawing)
{
    makeFile("Bolt.dwg", 3);
    const auto opened = BenchDrawing::load(makeFile("Plan.dwg", 2, {{u"C:\\old place\\Bolt.dwg", false}}));
    ASSERT_TRUE(opened);
    const dwg::BlockRecord* const block = findBlock((*opened)->document(), u"Bolt");
    EXPECT_EQ((*opened)->seen().block(block->handle)->entities.at(0).kind, "LINE");
}

TEST_F(Xref, ReloadReadsTheFileAnew)
{
    attach(makeFile("Site.dwg", 2));
    EXPECT_EQ(std::get<dwg::Line>(seen(u"Site").at(0).geometry).end.x, 2);
    makeFile("Site.dwg", 7);
    EXPECT_EQ(std::get<dwg::Line>(seen(u"Site").at(0).geometry).end.x, 2);
    const int revision = drawing().revision();
    line.type("-XREF R Site\r");
    EXPECT_EQ(std::get<dwg::Line>(seen(u"Site").at(0).geometry).end.x, 7);
    EXPECT_GT(drawing().revision(), revision);
    line.type("-XREF R Nothing\r");
    EXPECT_EQ(history.back(), "No matching xref names found.");
}

TEST_F(Xref, FilesThatReferToEachOtherEnd)
{
    makeFile("B.dwg", 2, {{u"A.dwg", false}});
    attach(makeFile("A.dwg", 2, {{u"B.dwg", false}}));
    EXPECT_EQ(seen(u"A|B").size(), 2U);
    EXPECT_EQ(textOf(u"A|B|A"), u"Xref A.dwg");
}

TEST_F(Xref, DrawingCannotReferToItselfNorToWhatIsNoDrawing)
{
    const std::string path = folder.file("Plan.dwg");
    ASSERT_TRUE(drawing().save(path));
    line.type("-XREF A " + path + "\r");
    EXPECT_EQ(history.back(), "A drawing cannot refer to itself");
    line.type("-XREF A " + folder.write("bad.dwg", "no drawing") + "\r");
    EXPECT_TRUE(line.isIdle());
    EXPECT_EQ(findBlock(drawing().document(), u"bad"), nullptr);
}

TEST_F(Xref, ExtentsCountWhatIsSeen)
{
    attach(makeFile("Site.dwg", 3));
    const std::string path = folder.file("Plan.dwg");
    ASSERT_TRUE(drawing().save(path));
    const auto again = BenchDrawing::load(path);
    ASSERT_TRUE(again);
    const dwg::HeaderVariables& header = (*again)->document().header;
    EXPECT_NEAR(header.extentsMin.x, 6, 1e-9);
    EXPECT_NEAR(header.extentsMax.x, 8, 1e-9);
    EXPECT_NEAR(header.extentsMin.y, 6, 1e-9);
}

} // namespace

} // namespace zv::bench
