// AC1015 files that are changed record by record: new records go to the file's end, a new object map behind
// them, and every other byte keeps its place.
#include "drawing/Amend.h"
#include "drawing/Reader.h"
#include "drawing/container/Container.h"
#include "drawing/records/ClassTable.h"
#include "drawing/records/HeaderVariables.h"
#include "drawing/records/ObjectHeader.h"
#include "drawing/records/ObjectMap.h"
#include "drawing/write/AmendFile.h"
#include "drawing/write/Bytes.h"
#include "drawing/write/EntityRecords.h"
#include "drawing/write/RawRecord.h"
#include "drawing/write/Tables.h"
#include "platform/Text.h"

#include <algorithm>
#include <deque>
#include <set>

namespace zv::dwg {

namespace {

Error notSo(const char* why)
{
    return {ErrorCode::Unsupported, why};
}

bool sameHead(const BlockRecord& a, const BlockRecord& b)
{
    return a.name == b.name && a.base.x == b.base.x && a.base.y == b.base.y && a.base.z == b.base.z &&
           a.xref == b.xref && a.xrefOverlay == b.xrefOverlay && a.xrefPath == b.xrefPath;
}

template <class Table> std::unordered_set<Handle> handlesOf(const Table& table)
{
    std::unordered_set<Handle> handles;
    for (const auto& entry : table)
        handles.insert(entry.handle);
    return handles;
}

/// A block header's record taken apart as far as its entities and inserts go.
struct BlockParts {
    std::size_t insertsAt = 0; ///< The bit where the marks of its inserts begin; a zero byte ends them.
    std::size_t inserts = 0;
    std::size_t begin = 0; ///< The indices of its BLOCK, of its first and last entity, of its ENDBLK.
    std::size_t end = 0;
    bool hasEnds = false; ///< First and last stand behind `begin`.
    bool ok = false;
};

BlockParts partsOf(const RawRecord& record)
{
    constexpr std::size_t kMarkBits = 8;
    BlockParts parts;
    const ObjectStart start = readStart(record);
    BitReader in = record.reader();
    in.seek(start.at);
    in.skip(std::size_t{static_cast<std::uint16_t>(in.bitShort())} * 8); // Name.
    in.bit();
    in.bitShort();
    for (int flag = 0; flag < 3; ++flag) // Depends, anonymous, has definitions.
        in.bit();
    const bool xref = in.bit(), overlay = in.bit();
    in.bit();
    in.bitPoint3();
    in.skip(std::size_t{static_cast<std::uint16_t>(in.bitShort())} * 8); // Path.
    parts.insertsAt = in.position();
    while (in.ok() && in.rawChar() != 0)
        ++parts.inserts;
    parts.begin = start.firstOwn() + 1;
    parts.hasEnds = !xref && !overlay;
    parts.end = parts.begin + (parts.hasEnds ? 3 : 1);
    parts.ok = in.ok() && in.position() == parts.insertsAt + (parts.inserts + 1) * kMarkBits &&
               parts.end + parts.inserts + 1 < record.handles.size() + 1;
    return parts;
}

/// Makes one file hold one document.
class Amendment {
public:
    Amendment(std::string_view file, const Document& document) : m_file(file), m_document(document) {}

    Result<std::string> amend(const WriteOptions& options)
    {
        for (const auto step : {&Amendment::read, &Amendment::plan, &Amendment::tables, &Amendment::blocks,
                                &Amendment::standardEntries}) {
            if (auto done = (this->*step)(); !done)
                return done.error();
        }
        erase();
        return assemble(options);
    }

private:
    Result<void> read()
    {
        const MemorySource source(bytesOf(m_file));
        auto before = readDocument(source);
        if (!before)
            return before.error();
        m_before = std::move(*before);
        if (m_before.version != Version::R2000)
            return notSo("its file is of a version that this program does not write");
        if (!m_before.damage.empty())
            return Error{ErrorCode::Damaged, m_before.damage.front()};
        const auto container = Container::open(source);
        if (!container)
            return container.error();
        const auto header = readHeaderVariables(**container);
        if (!header)
            return header.error();
        m_header = *header;
        const auto mapBytes = (*container)->section(Section::ObjectMap);
        if (!mapBytes)
            return mapBytes.error();
        auto map = ObjectMap::read(*mapBytes);
        if (!map)
            return map.error();
        for (const ObjectPlace& place : map->places())
            m_places[place.handle] = static_cast<std::uint32_t>(place.offset);
        if (const auto classes = (*container)->section(Section::Classes)) {
            const auto table = ClassTable::read(*classes, Version::R2000, 0, m_before.codePage);
            for (const ObjectClass& each : table ? table->classes() : std::vector<ObjectClass>())
                m_wipeoutType = each.name == "WIPEOUT" ? each.number : m_wipeoutType;
        }
        return {};
    }

    /// The record as it is to be; null when the file has no such object, or one that cannot be read.
    RawRecord* record(Handle handle)
    {
        if (const auto known = m_records.find(handle); known != m_records.end())
            return &known->second;
        const auto place = m_places.find(handle);
        if (place == m_places.end())
            return nullptr;
        auto read = RawRecord::read(m_file, place->second);
        if (!read || read->handle != handle)
            return nullptr;
        return &m_records.emplace(handle, std::move(*read)).first->second;
    }
    RawRecord* changed(Handle handle)
    {
        RawRecord* const found = record(handle);
        if (found != nullptr)
            m_changed.insert(handle);
        return found;
    }

    Result<void> plan()
    {
        std::vector<Handle> taken{m_header.variables.handleSeed > 0 ? m_header.variables.handleSeed - 1 : 0};
        for (const auto& [handle, place] : m_places)
            taken.push_back(handle);
        auto planned = makePlan(m_document, taken);
        if (!planned)
            return planned.error();
        m_plan = std::move(*planned);
        if (m_before.codePage != kAnsi1252)
            escapeTexts();
        m_plan.blockControl = m_header.handles.blockControl;
        m_plan.layerControl = m_header.handles.layerControl;
        m_plan.styleControl = m_header.handles.styleControl;
        m_plan.linetypeControl = m_header.handles.linetypeControl;
        m_plan.dimensionStyleControl = m_header.handles.dimensionStyleControl;
        m_plan.mlineStyles = m_header.handles.mlineStyles;
        if (const RawRecord* const layer = record(m_plan.layerZero))
            m_plan.placeholder = layer->target(readStart(*layer).firstOwn() + 1);
        m_plan.application = applicationOfAutoCad();
        const bool complete =
            record(m_plan.blockControl) != nullptr && record(m_plan.layerControl) != nullptr &&
            record(m_plan.styleControl) != nullptr && record(m_plan.linetypeControl) != nullptr &&
            record(m_plan.dimensionStyleControl) != nullptr && m_plan.application != 0;
        return complete ? Result<void>() : notSo("its tables cannot be added to");
    }

    /// New texts go into a file of another code page as ASCII, the rest of their letters by number.
    void escapeTexts()
    {
        Document& document = m_plan.document;
        const auto escapeNames = [](auto& table, const auto& before) {
            const auto old = handlesOf(before);
            for (auto& entry : table) {
                if (!old.contains(entry.handle))
                    escapeText(entry.name);
            }
        };
        escapeNames(document.layers, m_before.layers);
        escapeNames(document.textStyles, m_before.textStyles);
        escapeNames(document.linetypes, m_before.linetypes);
        escapeNames(document.dimensionStyles, m_before.dimensionStyles);
        escapeNames(document.mlineStyles, m_before.mlineStyles);
        escapeNames(document.blocks, m_before.blocks);
        for (BlockRecord& block : document.blocks) {
            for (std::vector<Entity>* entities : {&block.entities, &block.attributes}) {
                for (Entity& entity : *entities)
                    std::visit([](auto& shape) { escapeTextsOf(shape); }, entity.geometry);
            }
        }
    }
    static void escapeText(Text& text)
    {
        Text escaped;
        for (const char c : encodeText(text, 0))
            escaped += static_cast<char16_t>(static_cast<unsigned char>(c));
        text = std::move(escaped);
    }
    template <class Shape> static void escapeTextsOf(Shape&) {}
    static void escapeTextsOf(TextLine& line) { escapeText(line.text); }
    static void escapeTextsOf(MText& text) { escapeText(text.text); }
    static void escapeTextsOf(Dimension& dimension) { escapeText(dimension.text); }
    static void escapeTextsOf(Tolerance& tolerance) { escapeText(tolerance.text); }
    static void escapeTextsOf(Attribute& attribute)
    {
        escapeText(attribute.text.text);
        escapeText(attribute.tag);
        escapeText(attribute.prompt);
    }

    Handle applicationOfAutoCad()
    {
        for (const auto& [handle, place] : m_places) {
            const auto each = RawRecord::read(m_file, place);
            if (!each || each->type != kAppid)
                continue;

            BitReader in = each->reader();
            in.seek(readStart(*each).at);
            const auto length = static_cast<std::uint16_t>(in.bitShort());
            // Some end their texts with a zero.
            const std::string name = in.bytes(length);
            if (sameText(name.c_str(), "ACAD"))
                return handle;
        }
        return 0;
    }

    /// Takes a record that was made anew.
    Result<void> take(const ObjectStream& from, Handle handle)
    {
        // A block's head is made anew under its own handle; whatever else has one stays.
        if (m_places.contains(handle) && !m_before.blockIndex.contains(handle))
            return Error{ErrorCode::Damaged, "two objects would have the handle " + std::to_string(handle)};
        auto made = RawRecord::read(from.records.at(handle), 0);
        if (!made)
            return made.error();
        if (made->type == kWipeout) {
            if (m_wipeoutType == 0)
                return notSo("a WIPEOUT cannot be added to a file that has none yet");
            made->type = m_wipeoutType;
        }
        m_records.insert_or_assign(handle, std::move(*made));
        m_changed.insert(handle);
        return {};
    }

    Result<void> tables()
    {
        for (std::size_t i = 0; i < m_plan.blocks.size(); ++i) {
            const RawRecord* const own = record(m_plan.document.blocks[i].handle);
            if (own == nullptr)
                continue;
            const BlockParts parts = partsOf(*own);
            if (!parts.ok)
                return Error{ErrorCode::Damaged, "the record of a block cannot be read"};
            m_plan.blocks[i].begin = own->target(parts.begin);
            m_plan.blocks[i].end = own->target(parts.end);
        }
        addTables(m_tables, m_plan);
        if (const auto added = addDictionaries(m_tables, m_plan, {}); !added)
            return added.error();
        const Result<void> results[] = {
            table(m_plan.layerControl, m_before.layers, m_document.layers, m_plan.document.layers),
            table(m_plan.styleControl, m_before.textStyles, m_document.textStyles,
                  m_plan.document.textStyles),
            table(m_plan.linetypeControl, m_before.linetypes, m_document.linetypes,
                  m_plan.document.linetypes),
            table(m_plan.dimensionStyleControl, m_before.dimensionStyles, m_document.dimensionStyles,
                  m_plan.document.dimensionStyles),
            table(m_plan.blockControl, m_before.blocks, m_document.blocks, m_plan.document.blocks),
            mlineStyles()};
        for (const Result<void>& result : results)
            if (!result)
                return result.error();
        return {};
    }

    /// Brings new entries into a table and takes those out that are gone.
    template <class Table>
    Result<void> table(Handle control, const Table& before, const Table& document, const Table& after)
    {
        const auto old = handlesOf(before), now = handlesOf(document);
        for (const auto& entry : after) {
            if (old.contains(entry.handle))
                continue;
            if (!now.contains(entry.handle)) {
                m_standard.emplace_back(control, entry.handle);
                continue;
            }
            if (auto taken = take(m_tables, entry.handle); !taken)
                return taken;
            addEntry(*changed(control), entry.handle);
        }
        for (const auto& entry : before) {
            if (!now.contains(entry.handle))
                m_erased.push_back(entry.handle);
        }
        return {};
    }

    /// An entry that every new drawing has, and this one lacks, comes in when something new refers to it.
    Result<void> standardEntries()
    {
        for (const auto& [control, entry] : m_standard) {
            const auto refers = [&, wanted = entry](Handle each) {
                const std::vector<HandleReference>& handles = m_records.at(each).handles;
                return std::any_of(handles.begin(), handles.end(),
                                   [&](const HandleReference& to) { return to.value == wanted; });
            };
            if (std::none_of(m_changed.begin(), m_changed.end(), refers))
                continue;
            if (auto taken = take(m_tables, entry); !taken)
                return taken;
            addEntry(*changed(control), entry);
        }
        return {};
    }

    /// The number of entries is the first field, the entries stand behind the extension dictionary.
    static void addEntry(RawRecord& control, Handle entry)
    {
        const ObjectStart start = readStart(control);
        const std::size_t behind = start.firstOwn() + changeCount(control, start.at, 1);
        const std::size_t at = std::min(behind, control.handles.size());
        control.handles.insert(control.handles.begin() + static_cast<std::ptrdiff_t>(at),
                               {std::uint8_t{kSoftOwner}, entry});
    }
    /// Gives the number before the change.
    static std::size_t changeCount(RawRecord& record, std::size_t at, int by)
    {
        BitReader in = record.reader();
        in.seek(at);
        const std::int32_t count = in.bitLong();
        BitWriter changed;
        changed.bitLong(count + by);
        record.splice(at, in.position(), changed);
        return static_cast<std::size_t>(count);
    }

    /// These are entries of a dictionary: names among the fields, objects among the handles.
    Result<void> mlineStyles()
    {
        const auto old = handlesOf(m_before.mlineStyles);
        for (const MLineStyle& style : m_document.mlineStyles) {
            if (old.contains(style.handle))
                continue;
            RawRecord* const dictionary = changed(m_plan.mlineStyles);
            if (dictionary == nullptr)
                return notSo("it has no multiline styles");
            if (auto taken = take(m_tables, style.handle); !taken)
                return taken;
            changeCount(*dictionary, readStart(*dictionary).at, 1);
            BitWriter name;
            name.text(encodeText(style.name));
            dictionary->splice(dictionary->fields.size(), dictionary->fields.size(), name);
            dictionary->handles.push_back({std::uint8_t{kSoftOwner}, style.handle});
        }
        return {};
    }

    Result<void> blocks()
    {
        for (std::size_t i = 0; i < m_plan.document.blocks.size(); ++i) {
            const auto found = m_before.blockIndex.find(m_plan.document.blocks[i].handle);
            const BlockRecord* const before =
                found == m_before.blockIndex.end() ? nullptr : &m_before.blocks[found->second];
            if (auto done = before != nullptr ? block(i, *before) : newBlock(i); !done)
                return done;
        }
        for (const BlockRecord& before : m_before.blocks) {
            if (!m_document.blockIndex.contains(before.handle))
                eraseContent(before);
        }
        return {};
    }

    Result<void> newBlock(std::size_t index)
    {
        ObjectStream content;
        if (auto added = addBlockContent(content, m_plan, index); !added)
            return added;
        return takeAll(content, {});
    }
    Result<void> takeAll(const ObjectStream& content, const std::set<Handle>& but)
    {
        for (const auto& [handle, bytes] : content.records) {
            if (but.contains(handle))
                continue;
            if (auto taken = take(content, handle); !taken)
                return taken;
        }
        return {};
    }

    void eraseContent(const BlockRecord& before)
    {
        const RawRecord* const own = record(before.handle);
        const BlockParts parts = own != nullptr ? partsOf(*own) : BlockParts();
        if (!parts.ok)
            return;
        m_erased.push_back(own->target(parts.begin));
        m_erased.push_back(own->target(parts.end));
        for (const Entity& entity : before.entities)
            m_erased.push_back(entity.handle);
    }

    Result<void> block(std::size_t index, const BlockRecord& before)
    {
        const BlockRecord after = m_plan.document.blocks[index];
        const auto old = handlesOf(before.entities), now = handlesOf(after.entities);
        const auto isIn = [](const std::unordered_set<Handle>& handles) {
            return [&handles](const Entity& entity) { return handles.contains(entity.handle); };
        };
        const bool grows = !std::all_of(after.entities.begin(), after.entities.end(), isIn(old));
        const bool shrinks = !std::all_of(before.entities.begin(), before.entities.end(), isIn(now));
        const bool headChanged = !sameHead(before, after);
        if (after.xref && before.xref)
            return inserts(index, before.handle);
        if (grows || shrinks || headChanged) {
            const auto chained = chain(before.handle);
            if (!chained)
                return chained.error();
            if (auto done = content(index, *chained, old, now, headChanged); !done)
                return done;
        }
        return inserts(index, before.handle);
    }

    /// The entities of a block in the order of the file.
    Result<std::vector<Handle>> chain(Handle block)
    {
        const Error broken{ErrorCode::Damaged, "the chain of a block's entities is broken"};
        const RawRecord* const own = record(block);
        const BlockParts parts = own != nullptr ? partsOf(*own) : BlockParts();
        if (!parts.ok)
            return broken;
        std::vector<Handle> chain;
        if (!parts.hasEnds)
            return chain;
        const Handle last = own->target(parts.begin + 2);
        for (Handle at = own->target(parts.begin + 1); at != 0;) {
            const RawRecord* const entity = record(at);
            const EntityLinks links = entity != nullptr ? readLinks(*entity) : EntityLinks();
            if (!links.ok || chain.size() > m_places.size())
                return broken;
            chain.push_back(at);
            if (at == last)
                return chain;
            at = links.next(*entity);
        }
        return chain.empty() ? Result<std::vector<Handle>>(chain) : broken;
    }

    /// Brings a block's new entities into its chain and takes those out that are gone.
    Result<void> content(std::size_t index, std::vector<Handle> order, const std::unordered_set<Handle>& old,
                         const std::unordered_set<Handle>& now, bool headChanged)
    {
        const BlockRecord& after = m_plan.document.blocks[index];
        ObjectStream made;
        if (auto added = addBlockContent(made, m_plan, index, old); !added)
            return added;
        if (auto taken = takeAll(made, {m_plan.blocks[index].begin, m_plan.blocks[index].end}); !taken)
            return taken;
        for (const Handle handle : order) {
            if (old.contains(handle) && !now.contains(handle))
                m_erased.push_back(handle);
        }
        std::erase_if(order, [&](Handle handle) { return old.contains(handle) && !now.contains(handle); });
        for (const Entity& entity : after.entities) {
            if (!after.xref && !old.contains(entity.handle))
                order.push_back(entity.handle);
        }
        for (std::size_t i = 0; i < order.size(); ++i) {
            const Handle previous = i > 0 ? order[i - 1] : 0;
            const Handle next = i + 1 < order.size() ? order[i + 1] : 0;
            link(order[i], previous, next);
        }
        if (headChanged) {
            if (auto taken = take(m_tables, after.handle); !taken)
                return taken;
        }
        RawRecord& head = *changed(after.handle);
        const BlockParts parts = partsOf(head);
        if (parts.ok && parts.hasEnds) {
            head.point(parts.begin + 1, order.empty() ? 0 : order.front());
            head.point(parts.begin + 2, order.empty() ? 0 : order.back());
        }
        return {};
    }

    void link(Handle handle, Handle previous, Handle next)
    {
        const RawRecord& entity = *record(handle);
        const EntityLinks links = readLinks(entity);
        const Handle before = links.neighbours ? handle - 1 : entity.target(links.first);
        if (before != previous || links.next(entity) != next)
            setLinks(*changed(handle), previous, next);
    }

    /// A block's record names its inserts; those of the file are kept, new ones are added.
    Result<void> inserts(std::size_t index, Handle block)
    {
        std::vector<Handle> added;
        for (const Handle insert : m_plan.blocks[index].inserts) {
            if (!m_places.contains(insert))
                added.push_back(insert);
        }
        if (added.empty())
            return {};
        RawRecord& head = *changed(block);
        const BlockParts parts = partsOf(head);
        if (!parts.ok)
            return Error{ErrorCode::Damaged, "the record of a block cannot be read"};
        const auto at = head.handles.begin() + static_cast<std::ptrdiff_t>(parts.end + 1 + parts.inserts);
        // A head that was made anew has them all.
        if (std::any_of(head.handles.begin(), head.handles.end(),
                        [&](const HandleReference& each) { return each.value == added.front(); }))
            return {};
        BitWriter marks;
        for (const Handle insert : added) {
            static_cast<void>(insert);
            marks.rawChar(1);
        }
        std::vector<HandleReference> references;
        references.reserve(added.size());
        for (const Handle insert : added)
            references.push_back({std::uint8_t{kSoftPointer}, insert});
        head.handles.insert(at, references.begin(), references.end());
        head.splice(parts.insertsAt, parts.insertsAt, marks);
        return {};
    }

    /// Takes objects away, with all that belongs to them, and every reference to them.
    void erase()
    {
        if (m_erased.empty())
            return;
        std::unordered_map<Handle, std::vector<Handle>> owned;
        for (const auto& [handle, place] : m_places) {
            const RawRecord* const each = record(handle);
            if (each == nullptr || each->handles.empty())
                continue;
            owned[ownerOf(*each)].push_back(handle);
        }
        std::deque<Handle> open(m_erased.begin(), m_erased.end());
        std::set<Handle> gone;
        for (; !open.empty(); open.pop_front()) {
            if (open.front() == 0 || !gone.insert(open.front()).second)
                continue;
            const auto parts = owned.find(open.front());
            if (parts != owned.end())
                open.insert(open.end(), parts->second.begin(), parts->second.end());
        }
        for (const Handle handle : gone) {
            m_places.erase(handle);
            m_records.erase(handle);
            m_changed.erase(handle);
        }
        for (auto& [handle, each] : m_records)
            dropReferences(each, gone);
    }

    static bool isEntity(int type)
    {
        return type < kDictionary || type == kMText || type == kLeader || type == kTolerance ||
               type == kMLine || type == kOleFrame || type == kOle2Frame || type == kLightPolyline ||
               type == kHatch || type == kProxyEntity;
    }
    Handle ownerOf(const RawRecord& each) const
    {
        if (!isEntity(each.type))
            return each.type >= kFirstClass ? 0 : each.target(0);
        const EntityLinks links = readLinks(each);
        return links.ok ? links.owner(each) : 0;
    }

    void dropReferences(RawRecord& each, const std::set<Handle>& gone)
    {
        const auto isGone = [&](const HandleReference& reference) {
            const Handle target = reference.from(each.handle);
            return target != 0 && gone.contains(target);
        };
        if (std::none_of(each.handles.begin(), each.handles.end(), isGone))
            return;
        m_changed.insert(each.handle);
        if (each.type == kBlockHeader)
            dropInserts(each, isGone);
        else if (isControl(each.type))
            dropEntries(each, isGone);
        for (std::size_t i = 0; i < each.handles.size(); ++i) {
            if (isGone(each.handles[i]))
                each.point(i, 0);
        }
    }
    static bool isControl(int type)
    {
        return type == kBlockControl || type == kLayerControl || type == kStyleControl ||
               type == kLinetypeControl || type == kDimensionStyleControl;
    }
    template <class IsGone> static void dropInserts(RawRecord& head, IsGone isGone)
    {
        const BlockParts parts = partsOf(head);
        if (!parts.ok)
            return;
        const auto first = head.handles.begin() + static_cast<std::ptrdiff_t>(parts.end + 1);
        const auto last = first + static_cast<std::ptrdiff_t>(parts.inserts);
        const auto left = std::remove_if(first, last, isGone);
        const auto count = static_cast<std::size_t>(last - left);
        head.handles.erase(left, last);
        head.splice(parts.insertsAt, parts.insertsAt + count * 8, BitWriter());
    }
    template <class IsGone> static void dropEntries(RawRecord& control, IsGone isGone)
    {
        const ObjectStart start = readStart(control);
        if (start.firstOwn() > control.handles.size())
            return;
        const auto first = control.handles.begin() + static_cast<std::ptrdiff_t>(start.firstOwn());
        const auto left = std::remove_if(first, control.handles.end(), isGone);
        const auto count = static_cast<int>(control.handles.end() - left);
        control.handles.erase(left, control.handles.end());
        changeCount(control, start.at, -count);
    }

    /// Of a record with its frame; a place outside of the file counts as empty.
    std::size_t storedSize(std::size_t place) const
    {
        if (place >= m_file.size())
            return 0;
        const std::string_view rest = m_file.substr(place);
        const auto frame = readFrame(bytesOf(rest), Version::R2000);
        return frame ? std::min(frame->whole(), rest.size()) : rest.size();
    }

    Result<std::string> assemble(const WriteOptions& options)
    {
        std::size_t end = 0;
        for (const auto& [handle, place] : m_places) {
            if (!m_changed.contains(handle))
                end = std::max(end, place + storedSize(place));
        }
        AmendedFile out(m_file, end);
        // What may stand for long comes first, so that the next saving can cut off what is behind the
        // records.
        if (options.preview)
            out.replacePreview(*options.preview);
        const Handle seed = std::max(m_plan.seed(), m_header.variables.handleSeed);
        if (const auto done = out.replaceHeader(m_header.places, m_document.header, seed); !done)
            return done.error();
        std::map<Handle, std::uint32_t> places = m_places;
        for (const Handle handle : m_changed)
            places[handle] = out.append(m_records.at(handle).framed());
        if (const auto done = out.replaceObjectMap(places); !done)
            return done.error();
        out.replaceSecondHeader(seed);
        for (const auto& [handle, place] : m_places) {
            const std::size_t size = m_changed.contains(handle) ? 0 : storedSize(place);
            if (size != 0 && out.finished().compare(place, size, m_file.substr(place, size)) != 0)
                return Error{ErrorCode::Damaged, "parts of it overlap"};
        }
        if (!options.properties)
            return out.finished();
        return replaceProperties(out.finished(), *options.properties);
    }

    std::string_view m_file;
    const Document& m_document;
    Document m_before;
    HeaderSection m_header;
    std::map<Handle, std::uint32_t> m_places;
    int m_wipeoutType = 0;
    Plan m_plan;
    ObjectStream m_tables;
    std::map<Handle, RawRecord> m_records; ///< As they are to be.
    std::set<Handle> m_changed;            ///< Those of them that the file does not hold so.
    std::vector<Handle> m_erased;
    std::vector<std::pair<Handle, Handle>> m_standard; ///< Control and entry.
};

} // namespace

Result<std::string> amendDocument(std::string_view file, const Document& document,
                                  const WriteOptions& options)
{
    return Amendment(file, document).amend(options);
}

} // namespace zv::dwg
