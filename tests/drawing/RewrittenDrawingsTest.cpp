#include "Describe.h"
#include "drawing/Reader.h"
#include "drawing/Writer.h"
#include "drawing/entities/EntityRecord.h"
#include "drawing/write/Plan.h"
#include "support/RealDrawings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace zv::dwg {
namespace {

using test::describe;

Color asIndex(const Color& color)
{
    if (color.kind != Color::Kind::True)
        return color;
    return {Color::Kind::Index, static_cast<std::uint8_t>(colorIndex(color)), 0};
}

// What AC1015 makes of each shape; the others stay as they are.
void becomeAc1015(auto&) {}

void becomeAc1015(Spline& spline)
{
    if (spline.controlPoints.empty()) // Only later versions tell it of one through points.
        spline.closed = false;
}

void becomeAc1015(MText& text)
{
    text.backgroundFill = text.backgroundWindowColor = false;
    text.backgroundScale = MText().backgroundScale;
    text.backgroundColor = Color();
    text.boxHeight = text.columnWidth = text.columnGap = 0;
    text.columns = 0;
    text.columnHeights.clear();
}

void becomeAc1015(Attribute& attribute)
{
    attribute.lines.clear();
}

void becomeAc1015(Hatch& hatch)
{
    constexpr std::uint32_t kDerived = 4;
    for (HatchLoop& loop : hatch.loops) {
        loop.flags &= ~kDerived;
        for (HatchEdge& edge : loop.edges) {
            edge.spline.fitPoints.clear();
            edge.spline.startTangent = edge.spline.endTangent = {};
        }
    }
    if (hatch.gradient) {
        hatch.pattern = u"SOLID";
        hatch.solid = true;
    }
    hatch.gradient = hatch.gradientOneColor = false;
    hatch.gradientName.clear();
    hatch.gradientColor1 = hatch.gradientColor2 = Color();
    hatch.gradientAngle = hatch.gradientShift = hatch.gradientTint = 0;
}

void becomeAc1015(Wipeout& wipeout)
{
    wipeout.clipIsHole = false;
}

void becomeAc1015(Viewport& view)
{
    view.frozenLayers.clear();
}

bool isWritten(const Document& document, const Entity& entity)
{
    const Geometry& shape = entity.geometry;
    if (const auto* insert = std::get_if<Insert>(&shape))
        return document.block(insert->block) != nullptr;
    if (const auto* dimension = std::get_if<Dimension>(&shape))
        return recordType(shape) != 0 && document.block(dimension->block) != nullptr;
    if (const auto* wipeout = std::get_if<Wipeout>(&shape))
        return !wipeout->image;
    return !std::holds_alternative<Unknown>(shape) && !std::holds_alternative<MultiLeader>(shape) &&
           !std::holds_alternative<MPolygon>(shape) && !std::holds_alternative<StoredPicture>(shape);
}

/// The drawing without the entities that AC1015 does not know.
Document writable(Document document)
{
    for (BlockRecord& block : document.blocks)
        std::erase_if(block.entities, [&](const Entity& entity) { return !isWritten(document, entity); });
    return document;
}

void becomeAc1015(Entity& entity, const Entity& back)
{
    // The colour of what was a gradient has a test of its own.
    const auto* hatch = std::get_if<Hatch>(&entity.geometry);
    entity.color = hatch != nullptr && hatch->gradient ? back.color : asIndex(entity.color);
    entity.alpha = 255;
    // What is drawn as one of these is one of these.
    if (entity.kind == "ACAD_TABLE")
        entity.kind = "INSERT";
    else if (entity.kind == "HELIX")
        entity.kind = "SPLINE";
    else if (std::holds_alternative<Dimension>(entity.geometry))
        entity.kind = "DIMENSION";
    std::visit([](auto& shape) { becomeAc1015(shape); }, entity.geometry);
}

void becomeAc1015(std::vector<Entity>& entities, const std::vector<Entity>& back)
{
    for (std::size_t i = 0; i < entities.size(); ++i)
        becomeAc1015(entities[i], i < back.size() ? back[i] : Entity());
}

/// The drawing as it comes back from a file of AC1015. `back` is what came, for what that file chooses.
Document asAc1015(Document document, const Document& back)
{
    for (BlockRecord& block : document.blocks) {
        block.units = 0;
        if (const BlockRecord* const other = back.block(block.handle)) {
            becomeAc1015(block.entities, other->entities);
            becomeAc1015(block.attributes, other->attributes);
        }
    }
    for (DimensionStyle& style : document.dimensionStyles) {
        for (const TextStyle& text : back.textStyles) {
            if (style.textStyle == 0 && text.name == u"Standard")
                style.textStyle = text.handle;
        }
    }
    for (Layer& layer : document.layers) {
        layer.alpha = 255;
        layer.color = asIndex(layer.color);
    }
    for (Layout& layout : document.layouts) {
        if (layout.paperWidth <= 0) {
            layout.paperWidth = 215.9;
            layout.paperHeight = 279.4;
        }
    }
    document.header.handleSeed = back.header.handleSeed;
    return document;
}

/// Every entry, with all its values; `back` may have more, which every drawing of AC1015 has.
template <class Entry>
void expectEntries(const std::string& name, const std::vector<Entry>& entries, const std::vector<Entry>& back)
{
    std::multiset<std::string> found;
    for (const Entry& entry : back)
        found.insert(describe(entry));
    for (const Entry& entry : entries)
        EXPECT_TRUE(found.contains(describe(entry))) << name << ":" << describe(entry);
}

void expectEntities(const std::string& name, const std::vector<Entity>& entities,
                    const std::vector<Entity>& back)
{
    ASSERT_EQ(back.size(), entities.size()) << name;
    for (std::size_t i = 0; i < entities.size(); ++i)
        EXPECT_EQ(describe(back[i]), describe(entities[i])) << name;
}

void expectBlocks(const std::string& name, const std::vector<BlockRecord>& blocks, const Document& back)
{
    for (const BlockRecord& block : blocks) {
        const BlockRecord* const other = back.block(block.handle);
        ASSERT_NE(other, nullptr) << name << ": " << block.handle;
        const auto head = [](BlockRecord record) {
            record.entities.clear();
            record.attributes.clear();
            return describe(record);
        };
        EXPECT_EQ(head(*other), head(block)) << name;
        expectEntities(name, block.entities, other->entities);
        expectEntities(name, block.attributes, other->attributes);
    }
}

TEST(RewrittenDrawings, HaveEveryValueThatAc1015Holds)
{
    const RealDrawings drawings;
    if (drawings.missing())
        GTEST_SKIP() << "no drawings in " << drawings.folder;
    std::size_t compared = 0;
    for (const auto& [name, values] : *drawings.expected.object()) {
        const std::string bytes = drawings.bytesOf(name);
        auto read = readDocument(MemorySource(std::as_bytes(std::span(bytes))));
        if (!read)
            continue;
        const Document document = writable(std::move(*read));
        const auto written = writeDocument(document, {});
        ASSERT_TRUE(written) << name << ": " << written.error().text;
        const auto back = readDocument(MemorySource(std::as_bytes(std::span(*written))));
        ASSERT_TRUE(back) << name << ": " << back.error().text;
        EXPECT_TRUE(back->damage.empty()) << name << ": " << back->damage.front();
        const Document wanted = asAc1015(document, *back);
        EXPECT_EQ(describe(back->header), describe(wanted.header)) << name;
        expectEntries(name, wanted.layers, back->layers);
        expectEntries(name, wanted.linetypes, back->linetypes);
        expectEntries(name, wanted.textStyles, back->textStyles);
        expectEntries(name, wanted.dimensionStyles, back->dimensionStyles);
        expectEntries(name, wanted.mlineStyles, back->mlineStyles);
        expectEntries(name, wanted.layouts, back->layouts);
        expectBlocks(name, wanted.blocks, *back);
        ++compared;
    }
    EXPECT_GT(compared, 50u);
}

} // namespace
} // namespace zv::dwg
