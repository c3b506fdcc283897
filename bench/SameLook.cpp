#include "DocumentEdit.h"

#include "drawing/fonts/FontFolder.h"
#include "drawing/scene/SceneBuilder.h"
#include "platform/Files.h"
#include "platform/System.h"

#include <algorithm>
#include <cmath>

namespace zv::bench {

using namespace zv::dwg;

namespace {

bool near(double a, double b)
{
    constexpr double kTolerance = 1e-6;
    return std::abs(a - b) <= kTolerance * std::max({1.0, std::abs(a), std::abs(b)});
}

bool sameScenes(const Scene& a, const Scene& b)
{
    const auto sameBox = [](const Box& x, const Box& y) {
        return near(x.min.x, y.min.x) && near(x.min.y, y.min.y) && near(x.max.x, y.max.x) &&
               near(x.max.y, y.max.y);
    };
    return a.glyphs.size() == b.glyphs.size() && a.path.elements.size() == b.path.elements.size() &&
           std::equal(a.items.begin(), a.items.end(), b.items.begin(), b.items.end(),
                      [&](const SceneItem& x, const SceneItem& y) {
                          return x.kind == y.kind && x.count == y.count && sameBox(x.bounds, y.bounds);
                      });
}

/// What is asked for when the block is placed.
std::vector<Text> definitionsOf(const BlockRecord& block)
{
    std::vector<Text> definitions;
    for (const Entity& entity : block.entities) {
        if (const auto* definition = std::get_if<Attribute>(&entity.geometry)) {
            definitions.push_back(definition->tag);
            definitions.push_back(definition->text.text);
        }
    }
    return definitions;
}

} // namespace

bool looksAs(const Document& document, Handle block, const Document& other)
{
    const BlockRecord* const own = document.block(block);
    const BlockRecord& space = other.blocks[other.modelSpace];
    if (own == nullptr || own->entities.size() != space.entities.size() ||
        definitionsOf(*own) != definitionsOf(space))
        return false;
    const Point3 base = other.header.insertionBase;
    if (!near(own->base.x, base.x) || !near(own->base.y, base.y))
        return false;
    FontFolder fonts(joinPath(installationFolder(), "fonts"));
    return sameScenes(buildScene(document, fonts, {block, false}), buildScene(other, fonts));
}

} // namespace zv::bench
