#include "DocumentEdit.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv::bench {

using namespace zv::dwg;

namespace {

/// Millimetres to one unit of INSUNITS; 0 for a unit that has no length.
double millimetres(int units)
{
    constexpr double kLengths[] = {0,       25.4,   304.8,          1609344,   1,        10,   1000, 1e6,
                                   25.4e-6, 0.0254, 914.4,          1e-7,      1e-6,     1e-3, 100,  1e4,
                                   1e5,     1e12,   1.495978707e14, 9.4607e18, 3.0857e19};
    return units > 0 && units <= 20 ? kLengths[units] : 0;
}

template <class Table> std::unordered_map<Handle, std::size_t> indexOf(const Table& table)
{
    std::unordered_map<Handle, std::size_t> index;
    for (std::size_t at = 0; at < table.size(); ++at)
        index[table[at].handle] = at;
    return index;
}

template <class Table> Handle highestOf(const Table& table)
{
    Handle highest = 0;
    for (const auto& entry : table)
        highest = std::max(highest, entry.handle);
    return highest;
}

template <class Table> auto findNamed(Table& table, std::u16string_view name) -> decltype(&table[0])
{
    for (auto& entry : table) {
        if (sameName(entry.name, name))
            return &entry;
    }
    return nullptr;
}

} // namespace

bool sameName(std::u16string_view a, std::u16string_view b)
{
    return a == b || sameText(toUtf8(a), toUtf8(b));
}

double unitFactor(int from, int to)
{
    const double own = millimetres(from);
    const double other = millimetres(to);
    return own > 0 && other > 0 ? own / other : 1;
}

Handle giveHandle(Document& document)
{
    return document.header.handleSeed++;
}

void reindex(Document& document)
{
    document.blockIndex = indexOf(document.blocks);
    document.layerIndex = indexOf(document.layers);
    document.linetypeIndex = indexOf(document.linetypes);
    document.textStyleIndex = indexOf(document.textStyles);
    Handle highest =
        std::max({highestOf(document.blocks), highestOf(document.layers), highestOf(document.linetypes),
                  highestOf(document.textStyles), highestOf(document.dimensionStyles),
                  highestOf(document.mlineStyles), highestOf(document.layouts)});
    for (const BlockRecord& block : document.blocks)
        highest = std::max({highest, highestOf(block.entities), highestOf(block.attributes)});
    document.header.handleSeed = std::max(document.header.handleSeed, highest + 1);
}

const Layer* findLayer(const Document& document, std::u16string_view name)
{
    return findNamed(document.layers, name);
}

BlockRecord* findBlock(Document& document, std::u16string_view name)
{
    return findNamed(document.blocks, name);
}

std::string layerName(const Document& document, Handle layer)
{
    const auto found = document.layerIndex.find(layer);
    return found == document.layerIndex.end() ? "0" : narrow(document.layers[found->second].name);
}

void removeBlock(Document& document, Handle block)
{
    const auto found = document.blockIndex.find(block);
    if (found == document.blockIndex.end())
        return;
    const std::size_t index = found->second;
    document.blocks.erase(document.blocks.begin() + static_cast<std::ptrdiff_t>(index));
    if (document.modelSpace > index)
        --document.modelSpace;
    reindex(document);
}

Entity newEntity(Document& document, std::string kind, Geometry geometry, Handle layer)
{
    Entity entity;
    entity.handle = giveHandle(document);
    entity.kind = std::move(kind);
    entity.layer = layer;
    entity.geometry = std::move(geometry);
    return entity;
}

} // namespace zv::bench
