#include "BenchFixture.h"

#include <cstdlib>

namespace zv::bench {

namespace {

/// The drawings that are saved with references in them are read back: by this program's own reader, and by an
/// independent one, LibreDWG's, where that is installed.
class SavedReferences : public BenchFixture {
protected:
    SavedReferences() { static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{0})); }

    static bool hasIndependentReader() { return std::system("command -v dwgread > /dev/null 2>&1") == 0; }
    /// What the independent reader prints of a drawing, field by field; nothing when it cannot read it.
    std::string readIndependently(const std::string& path) const
    {
        const std::string printed = folder.file("printed");
        const std::string command = "dwgread -v3 '" + path + "' > '" + printed + "' 2>&1";
        return std::system(command.c_str()) == 0 ? readFile(printed).valueOr("") : "";
    }
    /// As the two commands of the attach dialog type it: one with all answers, one that asks for the point.
    std::string saveWithReferences()
    {
        const std::string site = makeBolt("Site.dwg"), grid = makeBolt("Grid.dwg");
        line.type("._xref\rAttach\r" + site + "\r12.5,-3,0\rXYZ\r2\r2\r2\r90\r");
        line.type("(command \"._xref\" \"Overlay\"\"" + grid +
                  "\"\"X\"\"0.5\"\"Y\"\"0.5\"\"Z\"\"0.5\"\"R\"\"0.00\")\r");
        line.type("7,8\r");
        EXPECT_TRUE(line.isIdle()) << prompt();
        const std::string path = folder.file("Plan.dwg");
        line.type("SAVEAS\r" + path + "\r");
        EXPECT_EQ(drawing().path(), path) << history.back();
        return path;
    }
};

TEST_F(SavedReferences, AreWhatWasTypedToTheOwnReader)
{
    const auto again = BenchDrawing::load(saveWithReferences());
    ASSERT_TRUE(again);
    dwg::Document& document = (*again)->document();
    const dwg::BlockRecord *const site = findBlock(document, u"Site"), *const grid =
                                                                           findBlock(document, u"Grid");
    ASSERT_TRUE(site && grid);
    EXPECT_EQ(site->xrefPath, wide(typedPath(folder.file("Site.dwg"))));
    EXPECT_EQ(grid->xrefPath, wide(typedPath(folder.file("Grid.dwg"))));
    EXPECT_TRUE(site->xref && !site->xrefOverlay);
    EXPECT_TRUE(grid->xref && grid->xrefOverlay);
    ASSERT_EQ((*again)->modelSpace().entities.size(), 2U);
    const auto& first = std::get<dwg::Insert>((*again)->modelSpace().entities[0].geometry);
    EXPECT_EQ(first.block, site->handle);
    EXPECT_DOUBLE_EQ(first.position.x, 12.5);
    EXPECT_DOUBLE_EQ(first.position.y, -3);
    EXPECT_DOUBLE_EQ(first.scale.y, 2);
    EXPECT_NEAR(first.rotation, 1.5707963, 1e-6);
}

TEST_F(SavedReferences, AreTheSameToAnIndependentReaderWhereOneIsInstalled)
{
    if (!hasIndependentReader())
        GTEST_SKIP() << "no dwgread here";
    const std::string fields = readIndependently(saveWithReferences());
    ASSERT_NE(fields, "");
    for (const char* complaint : {"ERROR", "Warning"})
        EXPECT_EQ(fields.find(complaint), std::string::npos) << fields.substr(fields.find(complaint), 200);
    for (const std::string& expected :
         {"xref_pname: \"" + folder.file("Site.dwg") + "\"",
          "xref_pname: \"" + folder.file("Grid.dwg") + "\"", std::string("xrefoverlaid: 1"),
          std::string("ins_pt: (12.5, -3, 0)"), std::string("ins_pt: (7, 8, 0)"),
          std::string("scale: (2, 2, 2)"), std::string("scale: (0.5, 0.5, 0.5)"),
          std::string("rotation: 1.5708")})
        EXPECT_NE(fields.find(expected), std::string::npos) << expected;
}

} // namespace

} // namespace zv::bench
