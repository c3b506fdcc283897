#include "drawing/read/BlockReader.h"

#include "drawing/entities/StoredPicture.h"
#include "drawing/records/ObjectRecords.h"

#include <algorithm>

namespace zv::dwg {

namespace {

constexpr std::size_t kNoBlock = static_cast<std::size_t>(-1);

} // namespace

BlockReader::BlockReader(RecordStore& store, Document& document, const HeaderHandles& header)
    : m_store(store), m_document(document), m_header(header)
{
}

void BlockReader::add(BlockHeader header)
{
    // The record of an unnamed block has the first letters of its name only, the BLOCK entity all of it.
    BlockRecord& block = m_document.blocks[m_blocks.size()];
    if (!block.name.empty() && block.name[0] == u'*') {
        if (auto record = m_store.open(header.begin, objectType::kBlock)) {
            Text name = readBlockBegin(record->in);
            if (record->in.ok() && name.size() > block.name.size() && name[0] == u'*')
                block.name = std::move(name);
        }
    }
    m_blocks.push_back(std::move(header));
}

void BlockReader::readEntities()
{
    std::vector<std::size_t> broken;
    for (std::size_t i = 0; i < m_blocks.size(); ++i) {
        BlockRecord& block = m_document.blocks[i];
        if (m_store.version() >= Version::R2004)
            readOwned(block, m_blocks[i].owned);
        else if (!readChain(block, m_blocks[i].first, m_blocks[i].last))
            broken.push_back(i);
    }
    if (!broken.empty())
        readStray(broken);
    for (std::size_t i = 0; i < m_blocks.size(); ++i) {
        BlockRecord& block = m_document.blocks[i];
        numberViewports(block);
        sortEntities(block, m_blocks[i].header.extensionDictionary);
    }
}

void BlockReader::readOwned(BlockRecord& block, const std::vector<Handle>& owned)
{
    for (const Handle handle : owned) {
        if (m_store.take(handle))
            readEntity(block, handle);
    }
}

bool BlockReader::readChain(BlockRecord& block, Handle first, Handle last)
{
    for (Handle at = first; at != 0;) {
        if (!m_store.take(at))
            return false;
        const auto header = readEntity(block, at);
        if (!header)
            return false;
        if (at == last)
            return true;
        at = header->next;
    }
    return first == 0 && last == 0;
}

std::size_t BlockReader::ownerOf(const EntityHeader& header) const
{
    if (header.inModelSpace)
        return m_document.modelSpace;
    const auto found =
        m_document.blockIndex.find(header.inPaperSpace ? m_header.paperSpaceBlock : header.owner);
    return found == m_document.blockIndex.end() ? kNoBlock : found->second;
}

void BlockReader::readStray(const std::vector<std::size_t>& broken)
{
    std::vector<bool> isBroken(m_blocks.size() + 1, false);
    for (const std::size_t block : broken)
        isBroken[block] = true;
    const auto& places = m_store.map().places();
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Handle handle = places[i].handle;
        if (m_store.taken(i))
            continue;
        auto record = m_store.open(handle);
        if (!record || (record->type < objectType::kFirstClass && entityKind(record->type) == nullptr))
            continue;
        const EntityHeader header = readEntityHeader(record->in);
        if (!record->in.ok() || header.handle != handle)
            continue;
        const std::size_t owner = ownerOf(header);
        if (owner >= isBroken.size() || !isBroken[owner] || !m_store.take(handle))
            continue;
        readEntity(m_document.blocks[owner], handle);
    }
}

std::optional<EntityHeader> BlockReader::readEntity(BlockRecord& block, Handle handle)
{
    auto record = m_store.open(handle);
    if (!record)
        return {};
    const EntityKind* kind = entityKind(record->type);
    std::string name;
    if (record->type >= objectType::kFirstClass) {
        const ObjectClass* objectClass = m_store.objectClass(record->type);
        if (objectClass != nullptr && !objectClass->entity)
            return {};
        name = objectClass != nullptr ? objectClass->name : "UNKNOWN";
        kind = entityKind(name);
    } else if (kind != nullptr) {
        name = kind->name;
    } else {
        return {};
    }
    EntityRecord entity;
    entity.header = readEntityHeader(record->in);
    if (!record->in.ok()) {
        m_store.report(name, handle);
        return {};
    }
    if (kind != nullptr && kind->read != nullptr)
        kind->read(record->in, entity);
    if (!record->in.ok()) {
        // What it is stays known, so that it is counted.
        m_store.report(name, handle);
        entity.geometry = Unknown{};
    }
    EntityHeader header = entity.header;
    if (auto* line = std::get_if<Polyline>(&entity.geometry); line != nullptr && !line->lightweight)
        readVertices(entity.chain, *line);
    else if (auto* mesh = std::get_if<Mesh>(&entity.geometry))
        readVertices(entity, *mesh);
    else if (auto* insert = std::get_if<Insert>(&entity.geometry))
        readAttributes(entity.chain, *insert, block);
    else if (auto* image = std::get_if<Wipeout>(&entity.geometry))
        readImageFile(entity.imageDefinition, *image);
    block.entities.push_back(makeEntity(std::move(entity), std::move(name)));
    if (std::holds_alternative<Unknown>(block.entities.back().geometry) && header.pictureSize != 0)
        readPicture(*record, header, block.entities.back());
    return header;
}

void BlockReader::readImageFile(Handle definition, Wipeout& image)
{
    auto record = m_store.openClassed(definition, 0, "IMAGEDEF");
    if (!record)
        return;
    Text file = readImageDefinition(record->in);
    if (record->in.ok())
        image.file = std::move(file);
}

void BlockReader::readPicture(OpenRecord& record, const EntityHeader& header, Entity& entity)
{
    const std::string bytes = record.in.restarted(header.pictureAt).bytes(header.pictureSize);
    bool complete = false;
    StoredPicture picture = readStoredPicture(std::as_bytes(std::span(bytes)), m_document, entity, complete);
    if (!complete)
        m_store.report("picture of " + entity.kind, entity.handle);
    if (!picture.figures.empty())
        entity.geometry = std::move(picture);
}

Color BlockReader::colorOf(const EntityHeader& header)
{
    if (header.colorObject == 0)
        return header.color;
    const auto known = m_colors.find(header.colorObject);
    if (known != m_colors.end())
        return known->second;
    Color color = header.color;
    if (auto record = m_store.openClassed(header.colorObject, 0, "DBCOLOR")) {
        const Color stored = readColorObject(record->in);
        if (record->in.ok())
            color = stored;
    }
    m_colors.emplace(header.colorObject, color);
    return color;
}

Entity BlockReader::makeEntity(EntityRecord&& record, std::string kind)
{
    const EntityHeader& header = record.header;
    Entity entity;
    entity.handle = header.handle;
    entity.kind = std::move(kind);
    entity.layer = header.layer;
    entity.color = colorOf(header);
    switch (header.linetypeKind) {
    case EntityHeader::LinetypeKind::ByLayer:
        break;
    case EntityHeader::LinetypeKind::ByBlock:
        entity.linetype = m_header.byBlock;
        break;
    case EntityHeader::LinetypeKind::Continuous:
        entity.linetype = m_header.continuous;
        break;
    case EntityHeader::LinetypeKind::Own:
        entity.linetype = header.linetype == m_header.byLayer ? 0 : header.linetype;
        break;
    }
    entity.linetypeScale = header.linetypeScale;
    entity.lineweight = header.lineweight;
    entity.invisible = header.invisible;
    entity.alpha = header.alpha;
    if (!header.ownAlpha) {
        const auto layer = m_document.layerIndex.find(header.layer);
        if (layer != m_document.layerIndex.end())
            entity.alpha = m_document.layers[layer->second].alpha;
    }
    entity.geometry = std::move(record.geometry);
    if (auto* picture = std::get_if<StoredPicture>(&entity.geometry)) {
        for (PictureFigure& figure : picture->figures)
            takeLook(figure, entity);
    }
    return entity;
}

std::vector<Handle> BlockReader::ownedHandles(const OwnedChain& chain)
{
    std::vector<Handle> handles;
    if (m_store.version() >= Version::R2004) {
        for (const Handle handle : chain.owned) {
            if (m_store.take(handle))
                handles.push_back(handle);
        }
        return handles;
    }
    for (Handle at = chain.first; at != 0 && m_store.take(at);) {
        handles.push_back(at);
        auto record = m_store.open(at);
        if (at == chain.last || !record)
            break;
        const EntityHeader header = readEntityHeader(record->in);
        if (!record->in.ok())
            break;
        at = header.next;
    }
    return handles;
}

void BlockReader::readVertices(const OwnedChain& chain, Polyline& line)
{
    const int type = line.threeD ? objectType::kVertex3D : objectType::kVertex2D;
    for (const Handle handle : ownedHandles(chain)) {
        auto record = m_store.open(handle, type);
        if (!record)
            continue;
        const VertexRecord vertex = readVertex(record->in, type);
        if (!record->in.ok()) {
            m_store.report("vertex", handle);
            continue;
        }
        line.vertices.push_back(vertex.vertex);
        if (!line.threeD)
            line.vertices.back().position.z = line.elevation;
    }
}

void BlockReader::readVertices(const EntityRecord& entity, Mesh& mesh)
{
    for (const Handle handle : ownedHandles(entity.chain)) {
        auto record = m_store.open(handle);
        if (!record)
            continue;
        const int type = record->type;
        if (type != objectType::kVertexMesh && type != objectType::kVertexPolyface &&
            type != objectType::kPolyfaceFace)
            continue;
        const VertexRecord vertex = readVertex(record->in, type);
        if (!record->in.ok())
            m_store.report("vertex", handle);
        else if (type == objectType::kPolyfaceFace)
            mesh.faces.push_back(vertex.face);
        else if (!entity.smoothed || !vertex.vertex.splineFrame)
            mesh.vertices.push_back(vertex.vertex.position);
    }
}

void BlockReader::readAttributes(const OwnedChain& chain, Insert& insert, BlockRecord& block)
{
    for (const Handle handle : ownedHandles(chain)) {
        auto record = m_store.open(handle, objectType::kAttrib);
        if (!record)
            continue;
        EntityRecord attribute;
        attribute.header = readEntityHeader(record->in);
        readAttrib(record->in, attribute);
        if (!record->in.ok()) {
            m_store.report("ATTRIB", handle);
            continue;
        }
        insert.attributes.push_back(static_cast<std::uint32_t>(block.attributes.size()));
        block.attributes.push_back(makeEntity(std::move(attribute), "ATTRIB"));
    }
}

void BlockReader::numberViewports(BlockRecord& block)
{
    int id = 0;
    for (Entity& entity : block.entities) {
        if (auto* view = std::get_if<Viewport>(&entity.geometry))
            view->id = ++id;
    }
}

void BlockReader::sortEntities(BlockRecord& block, Handle extensionDictionary)
{
    auto record = m_store.open(extensionDictionary, objectType::kDictionary);
    if (!record)
        return;
    const Handle table = dictionaryEntry(record->in, u"ACAD_SORTENTS");
    auto sortRecord = m_store.openClassed(table, 0, "SORTENTSTABLE");
    if (!sortRecord)
        return;
    const auto order = readSortTable(sortRecord->in);
    if (!sortRecord->in.ok() || order.empty())
        return;
    const std::unordered_map<Handle, Handle> sortHandles(order.begin(), order.end());
    const auto key = [&sortHandles](const Entity& entity) {
        const auto found = sortHandles.find(entity.handle);
        return found == sortHandles.end() ? entity.handle : found->second;
    };
    std::stable_sort(block.entities.begin(), block.entities.end(),
                     [&key](const Entity& a, const Entity& b) { return key(a) < key(b); });
}

} // namespace zv::dwg
