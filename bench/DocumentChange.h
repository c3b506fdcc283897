#pragma once

#include "drawing/Document.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace zv::bench {

/// A list before and after a change: both begin with the same entries, and only the rest is kept.
template <class Entry> struct TailChange {
    std::size_t common = 0;
    std::vector<Entry> before, after;

    TailChange(const std::vector<Entry>& old, const std::vector<Entry>& now)
    {
        while (common < old.size() && common < now.size() && old[common].handle == now[common].handle)
            ++common;
        before.assign(old.begin() + std::ptrdiff_t(common), old.end());
        after.assign(now.begin() + std::ptrdiff_t(common), now.end());
    }
    bool empty() const { return before.empty() && after.empty(); }
    void apply(std::vector<Entry>& list, bool back) const
    {
        const std::vector<Entry>& tail = back ? before : after;
        list.resize(common);
        list.insert(list.end(), tail.begin(), tail.end());
    }
};

/// What one command did to a drawing, so that it can be taken back and done again. An entity that keeps its
/// handle is taken to be the same one, as entities come and go here and are never altered.
class DocumentChange {
public:
    DocumentChange(const dwg::Document& before, const dwg::Document& after);
    void undo(dwg::Document& document) const { apply(document, true); }
    void redo(dwg::Document& document) const { apply(document, false); }

private:
    struct BlockChange {
        std::size_t block;
        dwg::BlockRecord headBefore, headAfter; ///< Without content.
        TailChange<dwg::Entity> entities, attributes;
    };
    void apply(dwg::Document& document, bool back) const;

    dwg::HeaderVariables m_headerBefore, m_headerAfter;
    std::size_t m_modelBefore, m_modelAfter;
    TailChange<dwg::Layer> m_layers;
    TailChange<dwg::Linetype> m_linetypes;
    TailChange<dwg::TextStyle> m_textStyles;
    TailChange<dwg::DimensionStyle> m_dimensionStyles;
    TailChange<dwg::MLineStyle> m_mlineStyles;
    TailChange<dwg::BlockRecord> m_blocks; ///< Blocks that came or went, whole.
    std::vector<BlockChange> m_contents;   ///< Of the blocks that both have.
};

} // namespace zv::bench
