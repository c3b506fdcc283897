#pragma once

#include "drawing/entities/EntityRecord.h"
#include "drawing/records/HeaderVariables.h"
#include "drawing/records/RecordStore.h"
#include "drawing/records/TableRecords.h"

#include <unordered_map>

namespace zv::dwg {

/// Fills the blocks of a drawing with their entities. Each object goes into one block at most, however often
/// a damaged drawing names it.
class BlockReader {
public:
    BlockReader(RecordStore& store, Document& document, const HeaderHandles& header);

    /// The next block of `document`, whose record this is; its full name is set.
    void add(BlockHeader header);
    /// Reads the entities of all blocks. Document::modelSpace is set.
    void readEntities();

private:
    void readOwned(BlockRecord& block, const std::vector<Handle>& owned);
    /// R13 to R2000. False when the chain is broken before its end.
    bool readChain(BlockRecord& block, Handle first, Handle last);
    /// Finds the entities of blocks whose chains are broken among all objects.
    void readStray(const std::vector<std::size_t>& broken);
    std::size_t ownerOf(const EntityHeader& header) const;

    /// Reads one entity into `block`; its header, or no value when it is none or cannot be read.
    std::optional<EntityHeader> readEntity(BlockRecord& block, Handle handle);
    Entity makeEntity(EntityRecord&& record, std::string kind);
    void readImageFile(Handle definition, Wipeout& image);
    /// An entity that is known by its picture only gets that.
    void readPicture(OpenRecord& record, const EntityHeader& header, Entity& entity);
    Color colorOf(const EntityHeader& header);

    std::vector<Handle> ownedHandles(const OwnedChain& chain);
    void readVertices(const OwnedChain& chain, Polyline& line);
    void readVertices(const EntityRecord& record, Mesh& mesh);
    void readAttributes(const OwnedChain& chain, Insert& insert, BlockRecord& block);

    void numberViewports(BlockRecord& block);
    /// Brings the entities into the order in which they are drawn.
    void sortEntities(BlockRecord& block, Handle extensionDictionary);

    RecordStore& m_store;
    Document& m_document;
    const HeaderHandles& m_header;
    std::vector<BlockHeader> m_blocks;
    std::unordered_map<Handle, Color> m_colors;
};

} // namespace zv::dwg
