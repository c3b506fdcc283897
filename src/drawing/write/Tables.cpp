#include "drawing/write/Tables.h"

#include "drawing/records/DimensionStyleLayout.h"
#include "drawing/write/FieldsOut.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv::dwg {

namespace {
Record startedEntry(int type, Handle handle, Handle control)
{
    Record record(type, handle);
    record.beginObject(control);
    return record;
}

/// The same of an entry whose other fields are told behind it.
Record entryRecord(int type, const Plan& plan, Handle handle, Handle control, const Text& name)
{
    Record record = startedEntry(type, handle, control);
    FieldsOut fields(record, plan);
    layoutEntryName(fields, name, false);
    return record;
}

/// A control object. `last` are entries that stand behind the counted ones.
void addControl(ObjectStream& objects, int type, Handle handle, const std::vector<Handle>& entries,
                const std::vector<Handle>& last = {})
{
    Record record(type, handle);
    record.beginObject(0);
    record.fields.bitLong(static_cast<std::int32_t>(entries.size()));
    if (type == kDimensionStyleControl)
        record.fields.rawChar(0);
    for (const Handle entry : entries)
        record.handles.handle(kSoftOwner, entry);
    for (const Handle entry : last)
        record.handles.handle(kHardOwner, entry);
    objects.add(record);
}

template <class Entry> std::vector<Handle> handlesOf(const std::vector<Entry>& entries)
{
    std::vector<Handle> handles;
    handles.reserve(entries.size());
    for (const Entry& entry : entries)
        handles.push_back(entry.handle);
    return handles;
}

void addLayer(ObjectStream& objects, const Plan& plan, const Layer& layer)
{
    Record record = startedEntry(kLayer, layer.handle, plan.layerControl);
    FieldsOut fields(record, plan);
    layout(fields, layer);
    objects.add(record);
}

void addStyle(ObjectStream& objects, const Plan& plan, const TextStyle& style)
{
    Record record = startedEntry(kStyle, style.handle, plan.styleControl);
    if (!style.typeface.empty()) {
        const std::string name = encodeText(style.typeface).substr(0, 255);
        std::string data{'\0', static_cast<char>(name.size()), '\0', '\x1E'};
        data += name;
        data.push_back(71);
        putLong(data, 0x22u | (style.bold ? 0x2000000u : 0) | (style.italic ? 0x1000000u : 0));
        record.extendedData(plan.application, data);
    }
    FieldsOut fields(record, plan);
    layout(fields, style);
    fields.noHandle(); // The external reference.
    objects.add(record);
}

/// The texts of a linetype's dashes, ended by zeros, in an area of fixed size.
class StringArea {
public:
    /// Where the text stands; 0 when it has no room.
    std::int16_t put(const Text& text)
    {
        const std::string bytes = encodeText(text);
        if (m_bytes.size() + bytes.size() + 1 > kDashTextArea)
            return 0;
        const auto at = static_cast<std::int16_t>(m_bytes.size());
        m_bytes += bytes + '\0';
        return at;
    }
    std::string whole() const { return m_bytes + std::string(kDashTextArea - m_bytes.size(), '\0'); }

private:
    std::string m_bytes;
};

void addLinetype(ObjectStream& objects, const Plan& plan, Linetype entry)
{
    Record record = startedEntry(kLinetype, entry.handle, plan.linetypeControl);
    FieldsOut fields(record, plan);
    entry.dashes.resize(std::min(entry.dashes.size(), kMostDashes));
    layoutLinetypeHead(fields, entry);
    StringArea strings;
    fields.noHandle(); // The external reference.
    for (const LinetypeDash& dash : entry.dashes) {
        const bool isText = !dash.text.empty(), isShape = !isText && dash.shape != 0;
        layoutDash(fields, dash, isText ? strings.put(dash.text) : static_cast<std::int16_t>(dash.shape),
                   (dash.absoluteRotation ? kDashAbsolute : 0) | (isText ? kDashText : 0) |
                       (isShape ? kDashShape : 0));
        record.handles.handle(kHardPointer, isText || isShape ? plan.style(dash.style) : 0);
    }
    record.fields.rawBytes(strings.whole());
    objects.add(record);
}

void addActiveVport(ObjectStream& objects, const Plan& plan)
{
    const HeaderVariables& header = plan.document.header;
    Record record = entryRecord(kVport, plan, plan.activeVport, plan.vportControl, u"*Active");
    const bool known =
        header.extentsMin.x <= header.extentsMax.x && header.extentsMin.y <= header.extentsMax.y;
    const Point2 low = known ? Point2{header.extentsMin.x, header.extentsMin.y} : header.limitsMin;
    const Point2 high = known ? Point2{header.extentsMax.x, header.extentsMax.y} : header.limitsMax;
    constexpr double kAspect = 1.6;
    double height = std::max(high.y - low.y, (high.x - low.x) / kAspect) * 1.05;
    if (!(height > 0))
        height = 9;
    BitWriter& fields = record.fields;
    fields.bitDouble(height);
    fields.bitDouble(height * kAspect);
    fields.rawPoint2({(low.x + high.x) / 2, (low.y + high.y) / 2});
    fields.bitPoint3({0, 0, 0});
    fields.bitPoint3({0, 0, 1});
    fields.bitDouble(0);
    fields.bitDouble(50); // Lens.
    fields.bitDouble(0);
    fields.bitDouble(0);
    fields.bits(1, 4);
    fields.rawChar(0);
    fields.rawPoint2({0, 0});
    fields.rawPoint2({1, 1});
    fields.bit(false);
    fields.bitShort(1000);
    fields.bit(true);
    fields.bitPair(3);
    fields.bit(false);
    fields.rawPoint2({0.5, 0.5});
    fields.bit(false);
    fields.bit(false);
    fields.bitShort(0);
    fields.bitDouble(0);
    fields.rawPoint2({0, 0});
    fields.rawPoint2({0.5, 0.5});
    fields.bit(false);
    fields.bit(true);
    writeWorldCoordinates(fields);
    for (int i = 0; i < 3; ++i)
        record.handles.handle(kHardPointer, 0);
    objects.add(record);
}

void addDimensionStyle(ObjectStream& objects, const Plan& plan, const DimensionStyle& style)
{
    Record record = startedEntry(kDimensionStyle, style.handle, plan.dimensionStyleControl);
    FieldsOut fields(record, plan);
    layout(fields, style, plan.document.header.measurement != 0);
    objects.add(record);
}

/// An anonymous block's header tells its kind only, "*D"; its BLOCK has the number too.
Text headerName(const BlockRecord& block)
{
    if (block.anonymous && block.name.size() > 2)
        return block.name.substr(0, 2);
    if (block.layout)
        return block.name.substr(0, block.name.find_last_not_of(u"0123456789") + 1);
    return block.name;
}

void addBlockHeader(ObjectStream& objects, const Plan& plan, std::size_t index)
{
    const BlockRecord& block = plan.document.blocks[index];
    const BlockPlan& blockPlan = plan.blocks[index];
    Record record = startedEntry(kBlockHeader, block.handle, plan.blockControl);
    const bool hasDefinitions =
        std::any_of(block.entities.begin(), block.entities.end(),
                    [](const Entity& entity) { return std::holds_alternative<Attribute>(entity.geometry); });
    FieldsOut fields(record, plan);
    const Text name = headerName(block);
    const auto inserts = [&](FieldsOut& out) {
        for (std::size_t i = 0; i < blockPlan.inserts.size(); ++i)
            out.fixedChar(1);
        out.fixedChar(0);
    };
    layoutBlockHeader(
        fields, block, name, hasDefinitions && !block.layout, [](FieldsOut&) {}, inserts,
        [](FieldsOut& out) { out.fixedLong(0); });
    BitWriter& handles = record.handles;
    handles.handle(kHardPointer, 0);
    handles.handle(kHardOwner, blockPlan.begin);
    if (!block.xref) {
        handles.handle(kSoftPointer, block.entities.empty() ? 0 : block.entities.front().handle);
        handles.handle(kSoftPointer, block.entities.empty() ? 0 : block.entities.back().handle);
    }
    handles.handle(kHardOwner, blockPlan.end);
    for (const Handle insert : blockPlan.inserts)
        handles.handle(kSoftPointer, insert);
    handles.handle(kHardPointer, blockPlan.layout);
    objects.add(record);
}

void addBlocks(ObjectStream& objects, const Plan& plan)
{
    const std::vector<BlockRecord>& blocks = plan.document.blocks;
    std::vector<Handle> counted;
    for (std::size_t i = 0; i < blocks.size(); ++i)
        if (i != plan.document.modelSpace && i != plan.paperSpace)
            counted.push_back(blocks[i].handle);
    addControl(objects, kBlockControl, plan.blockControl, counted,
               {blocks[plan.document.modelSpace].handle, blocks[plan.paperSpace].handle});
    for (std::size_t i = 0; i < blocks.size(); ++i)
        addBlockHeader(objects, plan, i);
}
} // namespace

std::vector<Handle> linetypeOrder(const Plan& plan)
{
    std::vector<Handle> linetypes = handlesOf(plan.document.linetypes);
    std::erase_if(linetypes, [&](Handle handle) { return handle == plan.byBlock || handle == plan.byLayer; });
    return linetypes;
}

void addTables(ObjectStream& objects, const Plan& plan)
{
    const Document& document = plan.document;
    addBlocks(objects, plan);
    addControl(objects, kLayerControl, plan.layerControl, handlesOf(document.layers));
    for (const Layer& layer : document.layers)
        addLayer(objects, plan, layer);
    addControl(objects, kStyleControl, plan.styleControl, handlesOf(document.textStyles));
    for (const TextStyle& style : document.textStyles)
        addStyle(objects, plan, style);
    addControl(objects, kLinetypeControl, plan.linetypeControl, linetypeOrder(plan),
               {plan.byBlock, plan.byLayer});
    for (const Linetype& linetype : document.linetypes)
        addLinetype(objects, plan, linetype);
    addControl(objects, kViewControl, plan.viewControl, {});
    addControl(objects, kUcsControl, plan.ucsControl, {});
    addControl(objects, kVportControl, plan.vportControl, {plan.activeVport});
    addActiveVport(objects, plan);
    addControl(objects, kAppidControl, plan.applicationControl, {plan.application});
    Record application = entryRecord(kAppid, plan, plan.application, plan.applicationControl, u"ACAD");
    application.fields.rawChar(0);
    application.handles.handle(kHardPointer, 0);
    objects.add(application);
    addControl(objects, kDimensionStyleControl, plan.dimensionStyleControl,
               handlesOf(document.dimensionStyles));
    for (const DimensionStyle& style : document.dimensionStyles)
        addDimensionStyle(objects, plan, style);
    addControl(objects, kViewportHeaderControl, plan.viewportHeaderControl, {});
}

} // namespace zv::dwg
