#pragma once

#include "drawing/Document.h"
#include "drawing/records/HeaderVariables.h"
#include "platform/Result.h"

#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace zv::dwg {

/// What a block of the file needs beside its content.
struct BlockPlan {
    Handle begin = 0, end = 0;   ///< Its BLOCK and ENDBLK.
    Handle layout = 0;           ///< Of model space and the paper spaces.
    unsigned entityMode = 0;     ///< 2 model space, 1 the paper space in front, 0 any other block.
    std::vector<Handle> inserts; ///< All inserts of it.
};

/// A document made complete: what every AC1015 file holds is added, every object has a handle of its own.
struct Plan : HeaderHandles {
    Document document;
    std::vector<BlockPlan> blocks; ///< Beside Document::blocks.

    Handle placeholder = 0, properties = 0, application = 0, activeVport = 0;
    Handle layerZero = 0, standardStyle = 0, standardDimensionStyle = 0;
    std::size_t paperSpace = 0; ///< Index into Document::blocks of the paper space in front.

    /// A handle that nothing has yet; `wanted` when that is free.
    Handle give(Handle wanted = 0);
    Handle seed() const { return m_next; }

    /// The handle that is written for one of the document: itself when it names something of that table,
    /// else the table's standard entry.
    Handle layer(Handle handle) const { return m_layers.count(handle) ? handle : layerZero; }
    Handle style(Handle handle) const { return m_styles.count(handle) ? handle : standardStyle; }
    Handle linetype(Handle handle) const { return m_linetypes.count(handle) ? handle : byLayer; }
    Handle dimensionStyle(Handle handle) const
    {
        return m_dimensionStyles.count(handle) ? handle : standardDimensionStyle;
    }
    bool hasBlock(Handle handle) const { return m_blocks.count(handle) != 0; }
    /// The style, or null.
    const MLineStyle* mlineStyle(Handle handle) const;
    BlockPlan* blockOf(Handle handle)
    {
        const auto found = m_blocks.find(handle);
        return found == m_blocks.end() ? nullptr : &blocks[found->second];
    }

private:
    friend class Planner;
    Handle m_next = 0x30;
    std::unordered_set<Handle> m_used, m_layers, m_styles, m_linetypes, m_dimensionStyles;
    std::unordered_map<Handle, std::size_t> m_blocks;
};

/// No object that is added gets a handle that is `taken`. Errors: Unsupported, names the first thing that an
/// AC1015 file of ours cannot hold.
Result<Plan> makePlan(const Document& document, const std::vector<Handle>& taken = {});

/// The colour as an AutoCAD colour index, 0 ByBlock and 256 ByLayer; a true colour becomes its nearest index.
std::int16_t colorIndex(const Color& color);
/// The colour as red, green and blue, 0xRRGGBB; none of ByLayer and ByBlock.
std::optional<std::uint32_t> trueColor(const Color& color);

} // namespace zv::dwg
