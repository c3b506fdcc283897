#include "BenchFixture.h"

#include "drawing/Reader.h"

#include <random>

namespace zv::bench {

namespace {

/// A drawing as the bytes of a file of it; handles are told anew, so that only the content counts.
std::vector<std::string> contentOf(const BenchDrawing& drawing)
{
    std::vector<std::string> content;
    const dwg::Document& document = drawing.document();
    for (const dwg::Entity& entity : document.blocks[document.modelSpace].entities) {
        std::string words = entity.kind + " " + layerName(document, entity.layer);
        const auto number = [&words](double value) { words += " " + numberText(value); };
        if (const auto* circle = std::get_if<dwg::Circle>(&entity.geometry)) {
            for (const double value : {circle->center.x, circle->center.y, circle->radius})
                number(value);
        } else if (const auto* segment = std::get_if<dwg::Line>(&entity.geometry)) {
            for (const double value : {segment->start.x, segment->start.y, segment->end.x, segment->end.y})
                number(value);
        } else if (const auto* insert = std::get_if<dwg::Insert>(&entity.geometry)) {
            const dwg::BlockRecord* const block = document.block(insert->block);
            words += " " + (block != nullptr ? narrow(block->name) : "none") +
                     (block != nullptr && block->xref ? " by reference" : "");
            for (const double value :
                 {insert->position.x, insert->position.y, insert->scale.x, insert->scale.y, insert->rotation})
                number(value);
        }
        content.push_back(std::move(words));
    }
    for (const char* variable : {"DIMSCALE", "LTSCALE"})
        content.push_back(drawing.document().header.dimScale >= 0 ? variable : "");
    return content;
}

class RandomSession : public BenchFixture {
protected:
    RandomSession() : m_random(20'000)
    {
        static_cast<void>(workshop.variables().set("FILEDIA", std::int64_t{0}));
        for (const char* name : {"A.dwg", "B.dwg", "C.dwg"})
            m_parts.push_back(makeBolt(name));
    }
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    std::string point() { return std::to_string(below(100)) + "," + std::to_string(below(100)) + " "; }

    std::string command()
    {
        const std::string part = m_parts[std::size_t(below(3))];
        switch (below(12)) {
        case 0:
        case 1:
            return "CIRCLE " + point() + std::to_string(1 + below(9)) + " ";
        case 2:
            return "LINE " + point() + point() + point() + "U " + point() + "\r";
        case 3:
        case 4:
            return "-INSERT\r" + part + "\r" + point() + "2 3 " + std::to_string(below(360)) + " ";
        case 5:
            return "-INSERT\r*" + part + "\r" + point() + "2 45 ";
        case 6:
            return "-INSERT\rNew" + std::to_string(below(3)) + "=" + part + "\r" + point() + "1 1 0 ";
        case 7:
            return "-XREF A " + m_parts[0].substr(0, m_parts[0].size() - 5) + "C.dwg\r" + point() + "1 1 0 ";
        case 8:
            return "ERASE L  ";
        case 9:
            return "DIMSCALE " + std::to_string(1 + below(96)) + " ";
        case 10:
            return "UNDO " + std::to_string(1 + below(3)) + " ";
        default:
            return "REDO ";
        }
    }

    std::mt19937 m_random;
    std::vector<std::string> m_parts;
};

TEST_F(RandomSession, WorkIsTheSameAfterSaveAndReopen)
{
    const std::string path = folder.file("Plan.dwg");
    ASSERT_TRUE(drawing().save(path));
    for (int number = 1; number <= 1000; ++number) {
        const std::string typed = command();
        line.type(typed);
        ASSERT_TRUE(line.isIdle()) << number << ": " << typed << " waits at " << prompt();
        if (number % 100 != 0)
            continue;
        const auto before = contentOf(drawing());
        const double scale = drawing().variables().real("DIMSCALE");
        line.type("QSAVE\r");
        ASSERT_FALSE(drawing().isModified()) << history.back();
        line.type("CLOSE\rOPEN\r" + path + "\r");
        ASSERT_EQ(drawing().path(), path) << history.back();
        EXPECT_EQ(contentOf(drawing()), before) << "after " << number;
        EXPECT_EQ(drawing().variables().real("DIMSCALE"), scale);
    }
    EXPECT_GT(entities().size(), 50U);
}

TEST_F(RandomSession, UndoneToTheOpeningItIsAsItWasOpened)
{
    line.type("CIRCLE 1,1 1 ");
    const std::string path = folder.file("Plan.dwg");
    ASSERT_TRUE(drawing().save(path));
    line.type("CLOSE\rOPEN\r" + path + "\r");
    const auto before = contentOf(drawing());
    for (int number = 0; number < 300; ++number)
        line.type(command());
    line.type("UNDO 1000000 ");
    EXPECT_EQ(contentOf(drawing()), before);
    EXPECT_FALSE(drawing().isModified());
    EXPECT_EQ(drawing().document().blocks.size(), 2U);
}

} // namespace

} // namespace zv::bench
