#include "DocumentEdit.h"

#include "drawing/Fields.h"

#include <algorithm>
#include <unordered_set>

namespace zv::bench {

using namespace zv::dwg;

namespace {

/// Brings what a record leads to over into another drawing, where objects have the handles that `handles`
/// tells.
struct HandleAdoption : FieldsPassedOver {
    const std::unordered_map<Handle, Handle>& handles;

    void handle(Handle& handle, Table table) const
    {
        if (table == Table::Itself)
            return;
        const auto found = handles.find(handle);
        handle = found == handles.end() ? 0 : found->second;
    }
    void part(auto& record) const { visit(*this, record); }
    void placed(auto& record) const { visit(*this, record); }
};

/// Takes tables and blocks of one document over into another; what was taken is known by its old handle.
class Import {
public:
    Import(Document& into, const Document& from) : m_into(into), m_from(from) {}

    void tables()
    {
        takeTable(m_into.textStyles, m_from.textStyles);
        takeTable(m_into.linetypes, m_from.linetypes);
        takeTable(m_into.layers, m_from.layers);
        takeTable(m_into.dimensionStyles, m_from.dimensionStyles);
        takeTable(m_into.mlineStyles, m_from.mlineStyles);
        // What a new entry leads to may stand in a table that was taken over after its own.
        adoptNew(m_into.linetypes);
        adoptNew(m_into.layers);
        adoptNew(m_into.dimensionStyles);
        adoptNew(m_into.mlineStyles);
    }

    /// Blocks are all known by their new handles before the first one's content is taken over.
    void blocks()
    {
        std::vector<std::pair<const BlockRecord*, Handle>> taken;
        for (std::size_t index = 0; index < m_from.blocks.size(); ++index) {
            const BlockRecord& block = m_from.blocks[index];
            if (block.layout || index == m_from.modelSpace)
                continue;
            const BlockRecord* const there = block.anonymous ? nullptr : findBlock(m_into, block.name);
            if (there != nullptr) {
                m_handles[block.handle] = there->handle;
                continue;
            }
            taken.emplace_back(&block, addBlock(block));
        }
        for (const auto& [block, handle] : taken)
            takeContent(*block, handle);
    }

    Handle modelSpace(std::u16string_view name)
    {
        const BlockRecord& space = m_from.blocks[m_from.modelSpace];
        const BlockRecord* const there = findBlock(m_into, name);
        Handle handle = 0;
        if (there != nullptr) {
            handle = there->handle;
        } else {
            BlockRecord record;
            record.name = name;
            record.handle = handle = giveHandle(m_into);
            m_into.blocks.push_back(std::move(record));
        }
        takeContent(space, handle);
        BlockRecord& block = record(handle);
        block.base = m_from.header.insertionBase;
        block.units = m_from.header.insertionUnits;
        block.xref = block.xrefOverlay = false;
        block.xrefPath.clear();
        return handle;
    }

private:
    template <class Entry> void takeTable(std::vector<Entry>& into, const std::vector<Entry>& from)
    {
        for (const Entry& entry : from) {
            const auto there = std::find_if(into.begin(), into.end(), [&](const Entry& candidate) {
                return sameName(candidate.name, entry.name);
            });
            if (there != into.end()) {
                m_handles[entry.handle] = there->handle;
                continue;
            }
            into.push_back(entry);
            into.back().handle = m_handles[entry.handle] = giveHandle(m_into);
            m_new.insert(into.back().handle);
        }
    }

    template <class Entry> void adoptNew(std::vector<Entry>& table)
    {
        for (Entry& entry : table)
            if (m_new.count(entry.handle) != 0)
                adoptHandles(entry);
    }

    Handle addBlock(const BlockRecord& block)
    {
        BlockRecord record = block;
        record.entities.clear();
        record.attributes.clear();
        record.handle = m_handles[block.handle] = giveHandle(m_into);
        if (record.anonymous)
            record.name = freeAnonymousName(block.name);
        m_into.blocks.push_back(std::move(record));
        return m_into.blocks.back().handle;
    }

    /// "*D5" and its like are numbered, so another drawing has the same names.
    Text freeAnonymousName(const Text& name)
    {
        if (findBlock(m_into, name) == nullptr)
            return name;
        const Text stem = name.substr(0, 2);
        for (std::size_t number = m_into.blocks.size();; ++number) {
            Text candidate = stem;
            for (const char digit : std::to_string(number))
                candidate += static_cast<char16_t>(digit);
            if (findBlock(m_into, candidate) == nullptr)
                return candidate;
        }
    }

    BlockRecord& record(Handle handle)
    {
        return *std::find_if(m_into.blocks.begin(), m_into.blocks.end(),
                             [handle](const BlockRecord& block) { return block.handle == handle; });
    }

    void takeContent(const BlockRecord& from, Handle handle)
    {
        std::vector<Entity> entities = from.entities;
        std::vector<Entity> attributes = from.attributes;
        for (std::vector<Entity>* list : {&entities, &attributes}) {
            // A viewport shows a layout's model and has no meaning inside a block.
            std::erase_if(*list,
                          [](const Entity& e) { return std::holds_alternative<Viewport>(e.geometry); });
            for (Entity& entity : *list)
                adopt(entity);
        }
        BlockRecord& block = record(handle);
        block.entities = std::move(entities);
        block.attributes = std::move(attributes);
    }

    void adopt(Entity& entity)
    {
        entity.handle = giveHandle(m_into);
        adoptHandles(entity);
    }
    void adoptHandles(auto& record) const { visit(HandleAdoption{{}, m_handles}, record); }

    Document& m_into;
    const Document& m_from;
    std::unordered_map<Handle, Handle> m_handles;
    std::unordered_set<Handle> m_new;
};

/// Whether a block stands inside itself, however deep.
class CircleSearch {
public:
    explicit CircleSearch(const Document& document) : m_document(document) {}

    bool holdsItself(Handle handle)
    {
        if (m_done.count(handle) > 0)
            return false;
        if (!m_open.insert(handle).second)
            return true;
        if (const BlockRecord* block = m_document.block(handle)) {
            for (const Entity& entity : block->entities) {
                const auto* const insert = std::get_if<Insert>(&entity.geometry);
                if (insert != nullptr && holdsItself(insert->block))
                    return true;
            }
        }
        m_open.erase(handle);
        m_done.insert(handle);
        return false;
    }

private:
    const Document& m_document;
    std::unordered_set<Handle> m_open, m_done;
};

} // namespace

Result<Handle> importAsBlock(Document& into, const Document& from, std::u16string_view name)
{
    Import import(into, from);
    import.tables();
    import.blocks();
    const Handle block = import.modelSpace(name);
    reindex(into);
    if (CircleSearch(into).holdsItself(block))
        return Error{ErrorCode::Failed, "The block would hold itself"};
    return block;
}

} // namespace zv::bench
