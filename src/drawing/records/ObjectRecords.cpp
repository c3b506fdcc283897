#include "drawing/records/ObjectRecords.h"

#include "drawing/records/TableLayouts.h"

#include <utility>

namespace zv::dwg {

namespace {

constexpr unsigned kFewestHandleBits = 8;

/// Gives each entry to `take`, which tells with false that it has had enough.
template <class Take> void readEntries(RecordReader& in, const Take& take)
{
    readObjectHeader(in);
    const std::int64_t stored = in.bitLong();
    if (in.version() == Version::R14)
        in.rawChar();
    if (in.version() >= Version::R2000) {
        in.bitShort(); // Cloning.
        in.rawChar();  // Whether it owns its entries.
    }
    const std::size_t count = in.handles().checkedCount(stored, kFewestHandleBits);
    for (std::size_t i = 0; i < count; ++i) {
        Text name = in.text();
        const Handle handle = in.handle();
        if (!in.ok() || !take(std::move(name), handle))
            return;
    }
}

} // namespace

Dictionary readDictionary(RecordReader& in)
{
    Dictionary dictionary;
    readEntries(in, [&](Text name, Handle handle) {
        dictionary.emplace_back(std::move(name), handle);
        return true;
    });
    return dictionary;
}

Handle dictionaryEntry(RecordReader& in, const Text& name)
{
    Handle found = 0;
    readEntries(in, [&](const Text& entry, Handle handle) {
        found = entry == name ? handle : 0;
        return entry != name;
    });
    return found;
}

MLineStyleRecord readMLineStyle(RecordReader& in)
{
    MLineStyleRecord out;
    MLineStyle& style = out.style;
    style.handle = readObjectHeader(in).handle;
    FieldsIn fields(in);
    layoutMLineStyle(fields, style, [&](MLineStyleElement& element) {
        if (in.version() >= Version::R2018)
            element.linetype = in.handle();
        else
            out.linetypePlaces.push_back(in.bitShort());
    });
    return out;
}

Layout readLayout(RecordReader& in)
{
    Layout sheet;
    sheet.handle = readObjectHeader(in).handle;
    FieldsIn fields(in);
    layout(fields, sheet);
    return sheet;
}

std::vector<std::pair<Handle, Handle>> readSortTable(RecordReader& in)
{
    readObjectHeader(in);
    in.handle(); // The block.
    std::vector<std::pair<Handle, Handle>> order(in.count(kFewestHandleBits));
    for (auto& [entity, sort] : order) {
        sort = in.handleReference().value;
        entity = in.handle();
    }
    return order;
}

Text readImageDefinition(RecordReader& in)
{
    readObjectHeader(in);
    in.bitLong(); // Version.
    in.rawPoint2();
    return in.text();
}

Color readColorObject(RecordReader& in)
{
    readObjectHeader(in);
    return in.color();
}

} // namespace zv::dwg
