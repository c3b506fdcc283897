#include "BenchFixture.h"

#include "support/RealDrawings.h"

#include <map>

namespace zv::bench {

namespace {

/// The drawings of others: which way their work can be saved, and that it is whole then.
class WaysOfSaving : public BenchFixture {
protected:
    void SetUp() override
    {
        static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{0}));
        if (real.missing())
            GTEST_SKIP() << "the real drawings are not there";
    }
    RealDrawings real;
};

TEST_F(WaysOfSaving, EachRealDrawingTakesOneAndKeepsItsFile)
{
    std::map<std::string, int> ways;
    for (const auto& [name, values] : *real.expected.object()) {
        if (values.member("entities")->isNull())
            continue;
        const std::string old = real.bytesOf(name);
        const std::string path = folder.write("Other.dwg", old);
        history.clear();
        line.type("OPEN\r" + path + "\r");
        ASSERT_EQ(drawing().path(), path) << name << ": " << history.back();
        const SaveOutlook outlook = drawing().outlook();
        const std::size_t before = entities().size();
        const std::string copy = folder.file("Saved.dwg");
        std::filesystem::remove(copy);
        if (outlook.way == SaveWay::NewFile) {
            EXPECT_NE(history[history.size() - 2].find("itself cannot be written"), std::string::npos)
                << name;
            line.type("CIRCLE 0,0 1 QSAVE\rN\r");
            EXPECT_EQ(folder.read("Other.dwg"), old) << name;
            line.type("SAVEAS\r" + copy + "\r");
            if (!outlook.missing.empty()) {
                EXPECT_EQ(prompt(), "Save all the same? [Yes/No] <No>:") << name;
                EXPECT_FALSE(fileExists(copy)) << name;
                line.type("Y\r");
            }
            EXPECT_EQ(folder.read("Other.dwg"), old) << name;
            ++ways[outlook.missing.empty() ? "new file, whole" : "new file, asked about"];
        } else {
            line.type("CIRCLE 0,0 1 QSAVE\r");
            std::filesystem::copy_file(path, copy);
            ++ways["saved whole"];
        }
        EXPECT_TRUE(line.isIdle()) << name;
        EXPECT_FALSE(drawing().isModified()) << name << ": " << history.back();
        const std::size_t after = entities().size();
        EXPECT_TRUE(after == before + 1 || !outlook.missing.empty()) << name;
        const auto again = BenchDrawing::load(copy);
        ASSERT_TRUE(again) << name;
        EXPECT_TRUE((*again)->document().damage.empty()) << name;
        EXPECT_EQ((*again)->modelSpace().entities.size(), after) << name;
        EXPECT_NE((*again)->outlook().way, SaveWay::NewFile) << name << ": " << (*again)->outlook().reason;
        std::printf("  %-36s %s%s\n", name.c_str(),
                    outlook.way != SaveWay::NewFile ? "saved whole"
                    : outlook.missing.empty()       ? "to a new file, whole"
                                                    : "to a new file without ",
                    joined(outlook.missing).c_str());
        line.type("CLOSE\r");
    }
    for (const auto& [way, count] : ways)
        std::printf("  %s: %d\n", way.c_str(), count);
}

} // namespace

} // namespace zv::bench
