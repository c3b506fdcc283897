#include "DocumentChange.h"

#include "DocumentEdit.h"

namespace zv::bench {

using namespace zv::dwg;

namespace {

BlockRecord headOf(const BlockRecord& block)
{
    BlockRecord head;
    head.handle = block.handle;
    head.name = block.name;
    head.base = block.base;
    head.layout = block.layout;
    head.anonymous = block.anonymous;
    head.xref = block.xref;
    head.xrefOverlay = block.xrefOverlay;
    head.xrefPath = block.xrefPath;
    head.description = block.description;
    head.units = block.units;
    return head;
}

} // namespace

DocumentChange::DocumentChange(const Document& before, const Document& after)
    : m_headerBefore(before.header), m_headerAfter(after.header), m_modelBefore(before.modelSpace),
      m_modelAfter(after.modelSpace), m_layers(before.layers, after.layers),
      m_linetypes(before.linetypes, after.linetypes), m_textStyles(before.textStyles, after.textStyles),
      m_dimensionStyles(before.dimensionStyles, after.dimensionStyles),
      m_mlineStyles(before.mlineStyles, after.mlineStyles), m_blocks(before.blocks, after.blocks)
{
    for (std::size_t index = 0; index < m_blocks.common; ++index) {
        const BlockRecord &old = before.blocks[index], &now = after.blocks[index];
        BlockChange change{
            index, headOf(old), headOf(now), {old.entities, now.entities}, {old.attributes, now.attributes}};
        // A head changes only together with the content.
        if (!change.entities.empty() || !change.attributes.empty())
            m_contents.push_back(std::move(change));
    }
}

void DocumentChange::apply(Document& document, bool back) const
{
    document.header = back ? m_headerBefore : m_headerAfter;
    document.modelSpace = back ? m_modelBefore : m_modelAfter;
    m_layers.apply(document.layers, back);
    m_linetypes.apply(document.linetypes, back);
    m_textStyles.apply(document.textStyles, back);
    m_dimensionStyles.apply(document.dimensionStyles, back);
    m_mlineStyles.apply(document.mlineStyles, back);
    m_blocks.apply(document.blocks, back);
    for (const BlockChange& change : m_contents) {
        BlockRecord& block = document.blocks[change.block];
        std::vector<Entity> entities = std::move(block.entities), attributes = std::move(block.attributes);
        block = back ? change.headBefore : change.headAfter;
        block.entities = std::move(entities);
        block.attributes = std::move(attributes);
        change.entities.apply(block.entities, back);
        change.attributes.apply(block.attributes, back);
    }
    reindex(document);
}

} // namespace zv::bench
