#include "drawing/write/Tables.h"

#include "drawing/properties/PropertyTexts.h"
#include "drawing/records/ObjectRecords.h"
#include "drawing/records/TableLayouts.h"
#include "drawing/write/FieldsOut.h"

#include "platform/Text.h"

#include <algorithm>
#include <bit>

namespace zv::dwg {

namespace {
using Entries = std::vector<std::pair<Text, Handle>>;

Record dictionaryRecord(int type, Handle handle, Handle owner, Entries entries)
{
    Record record(type, handle);
    record.beginObject(owner, owner == 0 ? std::vector<Handle>() : std::vector{owner});
    record.fields.bitLong(static_cast<std::int32_t>(entries.size()));
    record.fields.bitShort(1);
    record.fields.rawChar(0);
    std::sort(entries.begin(), entries.end());
    for (const auto& [name, entry] : entries) {
        record.fields.text(encodeText(name));
        record.handles.handle(kSoftOwner, entry);
    }
    return record;
}

/// Elements of a multiline style tell their linetype as its place in the table, as addTables writes it.
int linetypePlace(const Plan& plan, Handle linetype)
{
    if (linetype == 0 || linetype == plan.byLayer)
        return kPlaceByLayer;
    if (linetype == plan.byBlock)
        return kPlaceByBlock;
    const std::vector<Handle> order = linetypeOrder(plan);
    const auto found = std::find(order.begin(), order.end(), linetype);
    return found == order.end() ? kPlaceByLayer : static_cast<int>(found - order.begin());
}

void addMLineStyle(ObjectStream& objects, const Plan& plan, const MLineStyle& style)
{
    Record record(kMLineStyle, style.handle);
    record.beginObject(plan.mlineStyles, {plan.mlineStyles});
    FieldsOut fields(record, plan);
    layoutMLineStyle(fields, style, [&](const MLineStyleElement& element) {
        fields.bitShort(linetypePlace(plan, element.linetype));
    });
    objects.add(record);
}

void addLayout(ObjectStream& objects, const Plan& plan, const Layout& sheet)
{
    Record record(kLayoutClass, sheet.handle);
    record.beginObject(plan.layouts, {plan.layouts});
    FieldsOut fields(record, plan);
    layout(fields, sheet);
    fields.softHandle(sheet.model ? plan.activeVport : 0);
    fields.noHandle();
    fields.noHandle();
    objects.add(record);
}

constexpr std::size_t kLongestText = 0xFFFF;

/// False when the text is longer than its length can tell.
bool putText(std::string& data, std::uint16_t code, const Text& text)
{
    const std::string bytes = encodeText(text);
    if (bytes.size() > kLongestText)
        return false;
    putShort(data, code);
    putShort(data, static_cast<std::uint16_t>(bytes.size()));
    data.push_back(30);
    data += bytes;
    return true;
}

void putReal(std::string& data, std::uint16_t code, double value)
{
    const auto word = std::bit_cast<std::uint64_t>(value);
    putShort(data, code);
    putLong(data, static_cast<std::uint32_t>(word));
    putLong(data, static_cast<std::uint32_t>(word >> 32));
}
} // namespace

Result<Record> propertiesRecord(Handle handle, Handle dictionary, const Properties& properties)
{
    if (properties.custom.size() > kMostCustomProperties)
        return Error{ErrorCode::Unsupported, "more than ten custom properties"};
    // One text or number after another, each behind its group code.
    std::string data;
    bool whole = putText(data, kMarkCode, u"DWGPROPS COOKIE");
    const auto put = [&](std::uint16_t code, const Text& text) { whole &= putText(data, code, text); };
    eachRecordText(properties, put);
    for (std::size_t i = 0; i < kMostCustomProperties; ++i) {
        Text pair = u"=";
        if (i < properties.custom.size())
            pair = properties.custom[i].first + u"=" + properties.custom[i].second;
        put(static_cast<std::uint16_t>(kFirstCustomCode + i), pair);
    }
    const double saved = JulianTime::now().days();
    putReal(data, 40, 0); // Time of work.
    putReal(data, 41, saved);
    putReal(data, 42, saved);
    put(kMarkCode, properties.hyperlinkBase);
    putShort(data, 90);
    putLong(data, 0);
    if (!whole)
        return Error{ErrorCode::Unsupported, kPropertyTooLong};
    Record record(kXrecord, handle);
    record.beginObject(dictionary, {dictionary});
    record.fields.bitLong(static_cast<std::int32_t>(data.size()));
    record.fields.rawBytes(data);
    record.fields.bitShort(1);
    return record;
}

Result<void> addDictionaries(ObjectStream& objects, const Plan& plan,
                             const std::optional<Properties>& properties)
{
    const Document& document = plan.document;
    Entries named{{u"ACAD_GROUP", plan.groups},
                  {u"ACAD_LAYOUT", plan.layouts},
                  {u"ACAD_MLINESTYLE", plan.mlineStyles},
                  {u"ACAD_PLOTSETTINGS", plan.plotSettings},
                  {u"ACAD_PLOTSTYLENAME", plan.plotStyles}};
    if (properties)
        named.emplace_back(u"DWGPROPS", plan.properties);
    objects.add(dictionaryRecord(kDictionary, plan.namedObjects, 0, named));
    objects.add(dictionaryRecord(kDictionary, plan.groups, plan.namedObjects, {}));
    objects.add(dictionaryRecord(kDictionary, plan.plotSettings, plan.namedObjects, {}));

    Record plotStyles = dictionaryRecord(kDictionaryWithDefault, plan.plotStyles, plan.namedObjects,
                                         {{u"Normal", plan.placeholder}});
    plotStyles.handles.handle(kHardPointer, plan.placeholder);
    objects.add(plotStyles);
    Record placeholder(kPlaceholder, plan.placeholder);
    placeholder.beginObject(plan.plotStyles, {plan.plotStyles});
    objects.add(placeholder);

    Entries styles, layouts;
    for (const MLineStyle& style : document.mlineStyles)
        styles.emplace_back(style.name, style.handle);
    for (const Layout& layout : document.layouts)
        layouts.emplace_back(layout.name, layout.handle);
    objects.add(dictionaryRecord(kDictionary, plan.mlineStyles, plan.namedObjects, styles));
    for (const MLineStyle& style : document.mlineStyles)
        addMLineStyle(objects, plan, style);
    objects.add(dictionaryRecord(kDictionary, plan.layouts, plan.namedObjects, layouts));
    for (const Layout& layout : document.layouts)
        addLayout(objects, plan, layout);

    if (!properties)
        return {};
    const auto record = propertiesRecord(plan.properties, plan.namedObjects, *properties);
    if (!record)
        return record.error();
    objects.add(*record);
    return {};
}

} // namespace zv::dwg
