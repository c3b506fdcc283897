#include "support/RealDrawings.h"
#include "drawing/Reader.h"
#include "drawing/container/Container.h"
#include "drawing/records/ObjectType.h"
#include "drawing/records/RecordStore.h"
#include "drawing/records/TableRecords.h"
#include "platform/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace zv::dwg {
namespace {

class RealDrawingsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (m_drawings.missing())
            GTEST_SKIP() << "no drawings in " << m_drawings.folder;
    }

    /// Calls `check` with each drawing that can be read, its name and its expected values.
    template <class Check> void forEach(Check check) const
    {
        for (const auto& [name, values] : *m_drawings.expected.object()) {
            if (values.member("entities")->isNull())
                continue;
            const std::string bytes = m_drawings.bytesOf(name);
            const MemorySource source(std::as_bytes(std::span(bytes)));
            auto document = readDocument(source);
            if (document)
                check(name, values, *document);
            else
                ADD_FAILURE() << name << ": " << document.error().text;
        }
    }

    RealDrawings m_drawings;
};

TEST_F(RealDrawingsTest, HaveTheirEntitiesInModelSpace)
{
    forEach([](const std::string& name, const Json& values, const Document& document) {
        std::map<std::string, int> counts, wanted;
        for (const Entity& entity : document.blocks[document.modelSpace].entities)
            ++counts[entity.kind];
        for (const auto& [kind, count] : *values.member("entities")->object())
            wanted[kind] = static_cast<int>(*count.whole());
        EXPECT_EQ(counts, wanted) << name;
    });
}

TEST_F(RealDrawingsTest, HaveTheirBlocksAndLayers)
{
    forEach([](const std::string& name, const Json& values, const Document& document) {
        const auto blocks = std::count_if(document.blocks.begin(), document.blocks.end(),
                                          [](const BlockRecord& block) { return !block.layout; });
        EXPECT_EQ(blocks, *values.member("blocks")->whole()) << name;
        std::vector<std::string> layers, wanted;
        for (const Layer& layer : document.layers)
            layers.push_back(toUtf8(layer.name));
        for (const Json& layer : *values.member("layers")->array())
            wanted.push_back(*layer.text());
        std::sort(layers.begin(), layers.end());
        std::sort(wanted.begin(), wanted.end());
        EXPECT_EQ(layers, wanted) << name;
    });
}

TEST_F(RealDrawingsTest, HaveTheirExtents)
{
    forEach([](const std::string& name, const Json& values, const Document& document) {
        const Point3 low = document.header.extentsMin, high = document.header.extentsMax;
        const bool empty = low.x > high.x || low.y > high.y;
        const Json& wanted = *values.member("extents");
        ASSERT_EQ(empty, wanted.isNull()) << name;
        if (empty)
            return;
        const double found[] = {low.x, low.y, high.x, high.y};
        for (std::size_t i = 0; i < 4; ++i) {
            double value = 0;
            ASSERT_TRUE((*wanted.array())[i].asDouble(value)) << name;
            EXPECT_NEAR(found[i], value, 1e-9 * std::max(1.0, std::abs(value))) << name;
        }
    });
}

TEST_F(RealDrawingsTest, AreReadWithoutDamage)
{
    forEach([](const std::string& name, const Json&, const Document& document) {
        for (const std::string& damage : document.damage)
            ADD_FAILURE() << name << ": " << damage;
    });
}

TEST_F(RealDrawingsTest, HaveDimensionStylesThatEndWithTheirLastField)
{
    for (const auto& [name, values] : *m_drawings.expected.object()) {
        const std::string bytes = m_drawings.bytesOf(name);
        const MemorySource source(std::as_bytes(std::span(bytes)));
        const auto container = Container::open(source);
        if (!container)
            continue;
        const auto map = ObjectMap::read((*container)->section(Section::ObjectMap).valueOr({}));
        const auto objects = (*container)->section(Section::Objects);
        ASSERT_TRUE(map && objects) << name;
        std::vector<std::string> damage;
        RecordStore store(*objects, *map, ClassTable(), (*container)->version(), (*container)->codePage(),
                          damage);
        for (const ObjectPlace& place : map->places()) {
            auto record = store.open(place.handle, objectType::kDimensionStyle);
            if (!record)
                continue;
            DimensionStyle style;
            readDimensionStyle(record->in, style);
            EXPECT_TRUE(record->in.ok()) << name << ", " << place.handle;
            EXPECT_EQ(record->in.left(), 0u) << name << ", " << place.handle;
        }
    }
}

TEST_F(RealDrawingsTest, OlderThanR13AreRefused)
{
    for (const auto& [name, values] : *m_drawings.expected.object()) {
        if (!values.member("entities")->isNull())
            continue;
        const std::string bytes = m_drawings.bytesOf(name);
        const MemorySource source(std::as_bytes(std::span(bytes)));
        const auto document = readDocument(source);
        ASSERT_FALSE(document) << name;
        EXPECT_EQ(document.error().code, ErrorCode::Unsupported) << name;
    }
}

} // namespace
} // namespace zv::dwg
