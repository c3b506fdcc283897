#pragma once

#include "drawing/fonts/FontFolder.h"
#include "drawing/scene/SceneBuilder.h"

#include <gtest/gtest.h>

namespace zv::dwg {

/// Makes small drawings in memory.
class SceneMaker {
public:
    SceneMaker()
    {
        document.blocks.emplace_back();
        document.blocks[0].name = u"*Model_Space";
        document.blocks[0].layout = true;
        index(document.blocks[0], 0, document.blockIndex);
        layer(u"0", 7);
    }

    Handle layer(const Text& name, int color)
    {
        document.layers.emplace_back();
        Layer& made = document.layers.back();
        made.name = name;
        made.color = {Color::Kind::Index, static_cast<std::uint8_t>(color), 0};
        return index(made, document.layers.size() - 1, document.layerIndex);
    }
    Handle linetype(const Text& name, const std::vector<double>& dashes)
    {
        document.linetypes.emplace_back();
        Linetype& made = document.linetypes.back();
        made.name = name;
        for (const double length : dashes) {
            made.dashes.emplace_back();
            made.dashes.back().length = length;
        }
        return index(made, document.linetypes.size() - 1, document.linetypeIndex);
    }
    Handle style(const Text& font)
    {
        document.textStyles.emplace_back();
        document.textStyles.back().font = font;
        return index(document.textStyles.back(), document.textStyles.size() - 1, document.textStyleIndex);
    }
    Handle block(const Text& name)
    {
        document.blocks.emplace_back();
        document.blocks.back().name = name;
        return index(document.blocks.back(), document.blocks.size() - 1, document.blockIndex);
    }
    /// Adds to model space, or to the block.
    template <class Shape> Entity& add(const Shape& shape, Handle block = 0)
    {
        BlockRecord& owner = document.blocks[block ? document.blockIndex[block] : 0];
        owner.entities.emplace_back();
        Entity& entity = owner.entities.back();
        entity.layer = document.layers[0].handle;
        entity.geometry = shape;
        return entity;
    }
    Scene scene(const SceneOptions& options = {})
    {
        FontFolder fonts{std::string()};
        return buildScene(document, fonts, options);
    }

    Document document;

private:
    template <class Record>
    Handle index(Record& record, std::size_t at, std::unordered_map<Handle, std::size_t>& table)
    {
        record.handle = ++m_handle;
        table[record.handle] = at;
        return record.handle;
    }
    Handle m_handle = 0x10;
};

/// How long all strokes of an item are together.
inline double strokeLength(const Scene& scene, const SceneItem& item)
{
    double sum = 0;
    std::vector<Point2> scratch;
    flatten(scene.elements(item), scene.path.arcs, {}, 1e-4, scratch,
            [&](std::span<const Point2> points, bool closed) {
                for (std::size_t i = 1; i < points.size(); ++i)
                    sum += length(points[i] - points[i - 1]);
                if (closed && !points.empty())
                    sum += length(points.back() - points.front());
            });
    return sum;
}

inline Box box(double x1, double y1, double x2, double y2)
{
    Box out;
    out.add(Point2{x1, y1});
    out.add(Point2{x2, y2});
    return out;
}

inline void expectBox(const Box& found, const Box& wanted, double tolerance = 1e-6)
{
    EXPECT_NEAR(found.min.x, wanted.min.x, tolerance);
    EXPECT_NEAR(found.min.y, wanted.min.y, tolerance);
    EXPECT_NEAR(found.max.x, wanted.max.x, tolerance);
    EXPECT_NEAR(found.max.y, wanted.max.y, tolerance);
}

} // namespace zv::dwg
