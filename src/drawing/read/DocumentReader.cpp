#include "drawing/Reader.h"

#include "drawing/container/Container.h"
#include "drawing/read/BlockReader.h"
#include "drawing/records/ObjectRecords.h"
#include "drawing/records/TableRecords.h"

#include <algorithm>

namespace zv::dwg {

namespace {

bool startsWith(const Text& text, std::u16string_view start)
{
    const auto lower = [](char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; };
    return text.size() >= start.size() &&
           std::equal(start.begin(), start.end(), text.begin(),
                      [&](char16_t a, char16_t b) { return lower(a) == lower(b); });
}

/// Reads a drawing from its tables on: what nothing refers to is never touched.
class DocumentReader {
public:
    explicit DocumentReader(const Container& container) : m_container(container) {}

    Result<Document> read()
    {
        for (const auto step :
             {&DocumentReader::readSections, &DocumentReader::readTables, &DocumentReader::readBlocks}) {
            if (auto done = (this->*step)(); !done)
                return done.error();
        }
        readDictionaries();
        finish();
        return std::move(m_document);
    }

private:
    Result<void> readSections();
    void readMeasurement();
    Result<void> readTables();
    Result<void> readBlocks();
    void readDictionaries();
    void finish();

    /// The entries of a table; the control object is looked for when the header does not name it.
    Result<std::vector<Handle>> entries(Handle control, int controlType, int extra, const char* table);
    /// The entries of a dictionary; empty when there is none.
    Dictionary dictionary(Handle handle);
    template <class Entry>
    void readEntries(const std::vector<Handle>& handles, int type,
                     ObjectHeader (*readEntry)(RecordReader&, Entry&), std::vector<Entry>& to,
                     const char* what);
    void readMLineStyles(Handle styles);
    void readLayouts(Handle layouts);

    const Container& m_container;
    Document m_document;
    std::vector<std::byte> m_objects;
    HeaderHandles m_header;
    std::vector<Handle> m_linetypeOrder;
    std::unique_ptr<RecordStore> m_store;
};

Result<void> DocumentReader::readSections()
{
    const Version version = m_container.version();
    const int codePage = m_container.codePage();
    m_document.version = version;
    m_document.codePage = codePage;
    auto mapBytes = m_container.section(Section::ObjectMap);
    if (!mapBytes)
        return mapBytes.error();
    auto map = ObjectMap::read(*mapBytes);
    if (!map)
        return map.error();
    const Handle highest = map->places().empty() ? 0 : map->places().back().handle;
    auto objects = m_container.section(Section::Objects);
    if (!objects)
        return objects.error();
    m_objects = std::move(*objects);

    ClassTable classes;
    if (auto bytes = m_container.section(Section::Classes)) {
        if (auto read = ClassTable::read(*bytes, version, m_container.maintenanceVersion(), codePage))
            classes = std::move(*read);
        else
            m_document.damage.push_back(read.error().text);
    }
    m_store = std::make_unique<RecordStore>(m_objects, std::move(*map), std::move(classes), version, codePage,
                                            m_document.damage);
    auto header = m_container.section(Section::Header);
    if (!header)
        return header.error();
    // The tables are found without the header too, so a damaged one costs its variables only.
    if (auto read = readHeaderVariables(*header, version, m_container.maintenanceVersion(), codePage)) {
        m_document.header = read->variables;
        m_header = read->handles;
        // Some files tell a seed that objects have already.
        m_document.header.handleSeed = std::max(m_document.header.handleSeed, highest + 1);
    } else {
        m_document.damage.push_back(read.error().text);
    }
    readMeasurement();
    return {};
}

void DocumentReader::readMeasurement()
{
    const auto bytes = m_container.section(Section::Template);
    if (!bytes)
        return;
    // A description, of so many letters, then the number.
    const std::size_t letterBits = m_container.version() >= Version::R2007 ? 16 : 8;
    BitReader in(*bytes);
    in.skip(in.rawShort() * letterBits);
    const int measurement = in.rawShort();
    if (in.ok())
        m_document.header.measurement = measurement;
}

Result<std::vector<Handle>> DocumentReader::entries(Handle control, int controlType, int extra,
                                                    const char* table)
{
    auto record = m_store->open(control, controlType);
    if (!record)
        record = m_store->open(m_store->findType(controlType), controlType);
    if (!record)
        return Error{ErrorCode::Damaged, std::string("the drawing has no table of ") + table};
    auto handles = readTableControl(record->in, extra);
    if (!record->in.ok())
        return Error{ErrorCode::Damaged, std::string("the table of ") + table + " is damaged"};
    return handles;
}

template <class Entry>
void DocumentReader::readEntries(const std::vector<Handle>& handles, int type,
                                 ObjectHeader (*readEntry)(RecordReader&, Entry&), std::vector<Entry>& to,
                                 const char* what)
{
    for (const Handle handle : handles) {
        auto record = m_store->open(handle, type);
        if (!record)
            continue;
        Entry entry;
        readEntry(record->in, entry);
        if (record->in.ok())
            to.push_back(std::move(entry));
        else
            m_store->report(what, handle);
    }
}

Result<void> DocumentReader::readTables()
{
    using namespace objectType;
    auto linetypes = entries(m_header.linetypeControl, kLinetypeControl, 2, "linetypes");
    if (!linetypes)
        return linetypes.error();
    auto layers = entries(m_header.layerControl, kLayerControl, 0, "layers");
    if (!layers)
        return layers.error();
    auto styles = entries(m_header.styleControl, kStyleControl, 0, "text styles");
    if (!styles)
        return styles.error();
    m_linetypeOrder = *linetypes;
    readEntries(*linetypes, kLinetype, readLinetype, m_document.linetypes, "linetype");
    readEntries(*layers, kLayer, readLayer, m_document.layers, "layer");
    readEntries(*styles, kStyle, readTextStyle, m_document.textStyles, "text style");
    // Dimensions are drawn by their blocks, so that a drawing can be shown without their styles.
    if (auto handles = entries(m_header.dimensionStyleControl, kDimensionStyleControl, 0, "dimension styles"))
        readEntries(*handles, kDimensionStyle, readDimensionStyle, m_document.dimensionStyles,
                    "dimension style");
    else
        m_document.damage.push_back(handles.error().text);
    for (std::size_t i = 0; i < m_document.linetypes.size(); ++i) {
        const Linetype& linetype = m_document.linetypes[i];
        m_document.linetypeIndex.emplace(linetype.handle, i);
        if (startsWith(linetype.name, u"bylayer"))
            m_header.byLayer = linetype.handle;
        else if (startsWith(linetype.name, u"byblock"))
            m_header.byBlock = linetype.handle;
        else if (startsWith(linetype.name, u"continuous") && linetype.dashes.empty())
            m_header.continuous = linetype.handle;
    }
    for (std::size_t i = 0; i < m_document.layers.size(); ++i)
        m_document.layerIndex.emplace(m_document.layers[i].handle, i);
    for (std::size_t i = 0; i < m_document.textStyles.size(); ++i)
        m_document.textStyleIndex.emplace(m_document.textStyles[i].handle, i);
    return {};
}

Result<void> DocumentReader::readBlocks()
{
    auto handles = entries(m_header.blockControl, objectType::kBlockControl, 2, "blocks");
    if (!handles)
        return handles.error();
    Handle model = handles->size() >= 2 ? (*handles)[handles->size() - 2] : 0;
    if (!m_store->open(model, objectType::kBlockHeader)) {
        // A table that leaves the model space out: the header names it too.
        model = m_header.modelSpaceBlock;
        handles->push_back(model);
    }
    BlockReader reader(*m_store, m_document, m_header);
    for (const Handle handle : *handles) {
        auto record = m_store->open(handle, objectType::kBlockHeader);
        if (!record || m_document.blockIndex.contains(handle))
            continue;
        BlockHeader header = readBlockHeader(record->in);
        if (!record->in.ok()) {
            m_store->report("block", handle);
            continue;
        }
        header.block.layout =
            startsWith(header.block.name, u"*model_space") || startsWith(header.block.name, u"*paper_space");
        m_document.blockIndex.emplace(handle, m_document.blocks.size());
        m_document.blocks.push_back(header.block);
        reader.add(std::move(header));
    }
    const auto found = m_document.blockIndex.find(model);
    if (found == m_document.blockIndex.end())
        return Error{ErrorCode::Damaged, "the drawing has no model space"};
    m_document.modelSpace = found->second;
    m_document.blocks[found->second].layout = true;
    reader.readEntities();
    return {};
}

Dictionary DocumentReader::dictionary(Handle handle)
{
    auto record = m_store->open(handle, objectType::kDictionary);
    if (!record)
        return {};
    Dictionary entries = readDictionary(record->in);
    return record->in.ok() ? entries : Dictionary{};
}

void DocumentReader::readMLineStyles(Handle styles)
{
    for (const auto& [name, handle] : dictionary(styles)) {
        auto record = m_store->open(handle, objectType::kMLineStyle);
        if (!record)
            continue;
        MLineStyleRecord read = readMLineStyle(record->in);
        if (!record->in.ok()) {
            m_store->report("multiline style", handle);
            continue;
        }
        auto& elements = read.style.elements;
        for (std::size_t i = 0; i < read.linetypePlaces.size(); ++i) {
            const auto place = static_cast<std::size_t>(read.linetypePlaces[i]);
            if (read.linetypePlaces[i] == kPlaceByBlock)
                elements[i].linetype = m_header.byBlock;
            else if (read.linetypePlaces[i] >= 0 && place < m_linetypeOrder.size())
                elements[i].linetype = m_linetypeOrder[place];
        }
        for (MLineStyleElement& element : elements) {
            if (element.linetype == m_header.byLayer)
                element.linetype = 0;
        }
        m_document.mlineStyles.push_back(std::move(read.style));
    }
}

void DocumentReader::readLayouts(Handle layouts)
{
    const Handle model = m_document.blocks[m_document.modelSpace].handle;
    for (const auto& [name, handle] : dictionary(layouts)) {
        auto record = m_store->openClassed(handle, objectType::kLayout, "LAYOUT");
        if (!record)
            continue;
        Layout layout = readLayout(record->in);
        if (!record->in.ok()) {
            m_store->report("layout", handle);
            continue;
        }
        layout.model = layout.block == model;
        if (const auto block = m_document.blockIndex.find(layout.block); block != m_document.blockIndex.end())
            m_document.blocks[block->second].layout = true;
        m_document.layouts.push_back(std::move(layout));
    }
}

void DocumentReader::readDictionaries()
{
    Handle styles = m_header.mlineStyles, layouts = m_header.layouts;
    for (const auto& [name, handle] : dictionary(m_header.namedObjects)) {
        if (name == u"ACAD_MLINESTYLE")
            styles = handle;
        else if (name == u"ACAD_LAYOUT")
            layouts = handle;
    }
    readMLineStyles(styles);
    readLayouts(layouts);
}

void DocumentReader::finish()
{
    for (const BlockRecord& block : m_document.blocks) {
        for (const Entity& entity : block.entities) {
            if (std::holds_alternative<Unknown>(entity.geometry))
                ++m_document.skipped[entity.kind];
        }
    }
}

} // namespace

Result<Document> readDocument(const ByteSource& source)
{
    auto container = Container::open(source);
    if (!container)
        return container.error();
    auto document = DocumentReader(**container).read();
    if (document)
        document->damage.insert(document->damage.end(), (*container)->damage().begin(),
                                (*container)->damage().end());
    return document;
}

} // namespace zv::dwg
