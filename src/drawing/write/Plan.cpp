#include "drawing/write/Plan.h"

#include "drawing/ColorTable.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <map>

namespace zv::dwg {

Handle Plan::give(Handle wanted)
{
    if (wanted != 0 && m_used.insert(wanted).second) {
        m_next = std::max(m_next, wanted + 1);
        return wanted;
    }
    while (!m_used.insert(m_next).second)
        ++m_next;
    return m_next++;
}

const MLineStyle* Plan::mlineStyle(Handle handle) const
{
    const auto found = std::find_if(document.mlineStyles.begin(), document.mlineStyles.end(),
                                    [&](const MLineStyle& style) { return style.handle == handle; });
    return found == document.mlineStyles.end() ? nullptr : &*found;
}

namespace {
bool sameName(const Text& a, std::u16string_view b)
{
    const auto folded = [](char16_t c) { return c >= 'A' && c <= 'Z' ? char16_t(c + 32) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char16_t x, char16_t y) { return folded(x) == folded(y); });
}

template <class Entry> Entry* named(std::vector<Entry>& entries, std::u16string_view name)
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const Entry& entry) { return sameName(entry.name, name); });
    return found == entries.end() ? nullptr : &*found;
}

/// The entry of that name, added when there is none.
template <class Entry> Entry& required(std::vector<Entry>& entries, std::u16string_view name)
{
    if (Entry* found = named(entries, name))
        return *found;
    entries.emplace_back();
    entries.back().name = Text(name);
    return entries.back();
}
} // namespace

/// Completes a document and gives out handles.
class Planner {
public:
    Planner(const Document& document, const std::vector<Handle>& taken) : m_taken(taken)
    {
        m_plan.document = document;
    }

    Result<Plan> plan()
    {
        Document& document = m_plan.document;
        // The handles that the document has come first, so that they are kept.
        keepAll(document.layers);
        keepAll(document.linetypes);
        keepAll(document.textStyles);
        keepAll(document.dimensionStyles);
        keepAll(document.mlineStyles);
        keepAll(document.blocks);
        keepAll(document.layouts);
        for (BlockRecord& block : document.blocks) {
            keepAll(block.entities);
            keepAll(block.attributes);
        }
        for (const Handle handle : m_taken) {
            m_plan.m_used.insert(handle);
            m_plan.m_next = std::max(m_plan.m_next, handle + 1);
        }
        giveControls();
        completeTables();
        completeSpaces();
        giveRest();
        if (const auto checked = checkInserts(); !checked)
            return checked.error();
        return std::move(m_plan);
    }

private:
    /// Clears handles that another object has taken already.
    template <class Entry> void keepAll(std::vector<Entry>& entries)
    {
        for (Entry& entry : entries) {
            if (entry.handle != 0 && !m_plan.m_used.insert(entry.handle).second)
                entry.handle = 0;
            m_plan.m_next = std::max(m_plan.m_next, entry.handle + 1);
        }
    }
    template <class Entry> void giveAll(std::vector<Entry>& entries)
    {
        for (Entry& entry : entries)
            if (entry.handle == 0)
                entry.handle = m_plan.give();
    }

    // Numbers below 0x30 are the ones that AutoCAD gives to these objects in every new drawing.
    void giveControls()
    {
        Plan& p = m_plan;
        p.blockControl = p.give(0x01);
        p.layerControl = p.give(0x02);
        p.styleControl = p.give(0x03);
        p.linetypeControl = p.give(0x05);
        p.viewControl = p.give(0x06);
        p.ucsControl = p.give(0x07);
        p.vportControl = p.give(0x08);
        p.applicationControl = p.give(0x09);
        p.dimensionStyleControl = p.give(0x0A);
        p.viewportHeaderControl = p.give(0x0B);
        p.namedObjects = p.give(0x0C);
        p.groups = p.give(0x0D);
        p.plotStyles = p.give(0x0E);
        p.placeholder = p.give(0x0F);
        p.application = p.give(0x12);
        p.mlineStyles = p.give(0x17);
        p.plotSettings = p.give(0x19);
        p.layouts = p.give(0x1A);
        p.activeVport = p.give(0x29);
    }

    template <class Entry>
    Handle complete(std::vector<Entry>& entries, std::u16string_view name, Handle wanted)
    {
        Entry& entry = required(entries, name);
        if (entry.handle == 0)
            entry.handle = m_plan.give(wanted);
        return entry.handle;
    }

    void completeTables()
    {
        Document& document = m_plan.document;
        m_plan.byBlock = complete(document.linetypes, u"ByBlock", 0x14);
        m_plan.byLayer = complete(document.linetypes, u"ByLayer", 0x15);
        m_plan.currentLinetype = m_plan.byLayer;
        m_plan.continuous = complete(document.linetypes, u"Continuous", 0x16);
        m_plan.layerZero = complete(document.layers, u"0", 0x10);
        const bool bare = named(document.textStyles, u"Standard") == nullptr;
        m_plan.standardStyle = complete(document.textStyles, u"Standard", 0x11);
        if (bare)
            document.textStyles.back().font = u"txt";
        m_plan.standardDimensionStyle = complete(document.dimensionStyles, u"Standard", 0x27);
        const bool noMLineStyle = named(document.mlineStyles, u"Standard") == nullptr;
        m_plan.currentMLineStyle = complete(document.mlineStyles, u"Standard", 0x18);
        if (noMLineStyle)
            document.mlineStyles.back().elements = {{0.5, {}, 0}, {-0.5, {}, 0}};
        giveAll(document.layers);
        giveAll(document.linetypes);
        giveAll(document.textStyles);
        giveAll(document.dimensionStyles);
        giveAll(document.mlineStyles);
    }

    void completeSpaces()
    {
        Document& document = m_plan.document;
        space(u"*Model_Space", 0x1F);
        space(u"*Paper_Space", 0x1B);
        giveAll(document.blocks);
        const auto isPaper = [](const BlockRecord& block) { return sameName(block.name, u"*Paper_Space"); };
        for (std::size_t i = 0; i < document.blocks.size(); ++i) {
            if (sameName(document.blocks[i].name, u"*Model_Space"))
                document.modelSpace = i;
            else if (isPaper(document.blocks[i]))
                m_plan.paperSpace = i;
        }
        for (const BlockRecord& block : document.blocks)
            if (block.layout)
                layoutFor(block);
        giveAll(document.layouts);
    }

    void space(std::u16string_view name, Handle wanted)
    {
        BlockRecord& block = required(m_plan.document.blocks, name);
        block.layout = true;
        if (block.handle == 0)
            block.handle = m_plan.give(wanted);
    }

    void layoutFor(const BlockRecord& block)
    {
        std::vector<Layout>& layouts = m_plan.document.layouts;
        if (std::any_of(layouts.begin(), layouts.end(),
                        [&](const Layout& layout) { return layout.block == block.handle; }))
            return;
        Layout layout;
        layout.block = block.handle;
        layout.model = sameName(block.name, u"*Model_Space");
        int order = 0;
        for (const Layout& other : layouts)
            order = std::max(order, other.tabOrder);
        layout.tabOrder = layout.model ? 0 : order + 1;
        layout.name = u"Model";
        for (int number = 1; !layout.model && (number == 1 || named(layouts, layout.name)); ++number)
            layout.name = u"Layout" + wide(std::to_string(number));
        layout.limitsMax = {12, 9};
        layouts.push_back(layout);
    }

    void giveRest()
    {
        Document& document = m_plan.document;
        for (BlockRecord& block : document.blocks) {
            giveAll(block.entities);
            giveAll(block.attributes);
        }
        // By their handles, so that the same blocks in another order make the same file.
        std::map<Handle, std::size_t> order;
        for (std::size_t i = 0; i < document.blocks.size(); ++i)
            order[document.blocks[i].handle] = i;
        m_plan.blocks.resize(document.blocks.size());
        for (const auto& [handle, i] : order) {
            BlockPlan& plan = m_plan.blocks[i];
            plan.begin = m_plan.give();
            plan.end = m_plan.give();
            plan.entityMode = i == document.modelSpace ? 2 : i == m_plan.paperSpace ? 1 : 0;
            for (const Layout& layout : document.layouts)
                if (layout.block == handle)
                    plan.layout = layout.handle;
            m_plan.m_blocks.emplace(handle, i);
        }
        m_plan.modelSpaceBlock = document.blocks[document.modelSpace].handle;
        m_plan.paperSpaceBlock = document.blocks[m_plan.paperSpace].handle;
        m_plan.properties = m_plan.give();
        remember(document.layers, m_plan.m_layers);
        remember(document.textStyles, m_plan.m_styles);
        remember(document.linetypes, m_plan.m_linetypes);
        remember(document.dimensionStyles, m_plan.m_dimensionStyles);
    }

    template <class Entry>
    static void remember(const std::vector<Entry>& entries, std::unordered_set<Handle>& set)
    {
        for (const Entry& entry : entries)
            set.insert(entry.handle);
    }

    Result<void> checkInserts()
    {
        for (const BlockRecord& block : m_plan.document.blocks) {
            for (const Entity& entity : block.entities) {
                const Insert* insert = std::get_if<Insert>(&entity.geometry);
                if (insert == nullptr)
                    continue;
                BlockPlan* target = m_plan.blockOf(insert->block);
                if (target == nullptr)
                    return Error{ErrorCode::Unsupported,
                                 "an INSERT of a block that the drawing does not have"};
                for (const std::uint32_t index : insert->attributes)
                    if (index >= block.attributes.size())
                        return Error{ErrorCode::Unsupported, "an INSERT with an attribute that is not there"};
                target->inserts.push_back(entity.handle);
            }
        }
        return {};
    }

    const std::vector<Handle>& m_taken;
    Plan m_plan;
};

Result<Plan> makePlan(const Document& document, const std::vector<Handle>& taken)
{
    return Planner(document, taken).plan();
}

std::int16_t colorIndex(const Color& color)
{
    switch (color.kind) {
    case Color::Kind::ByLayer:
        return 256;
    case Color::Kind::ByBlock:
        return 0;
    case Color::Kind::Index:
        return color.index;
    case Color::Kind::True:
        break;
    }
    const auto channel = [](std::uint32_t rgb, unsigned shift) {
        return static_cast<int>(rgb >> shift & 0xFF);
    };
    int best = 7, bestDistance = 3 * 256 * 256;
    for (int index = 1; index <= 255; ++index) {
        const std::uint32_t rgb = indexedColor(static_cast<std::uint8_t>(index));
        int distance = 0;
        for (const unsigned shift : {0u, 8u, 16u}) {
            const int away = channel(rgb, shift) - channel(color.rgb, shift);
            distance += away * away;
        }
        if (distance < bestDistance) {
            best = index;
            bestDistance = distance;
        }
    }
    return static_cast<std::int16_t>(best);
}

std::optional<std::uint32_t> trueColor(const Color& color)
{
    if (color.kind == Color::Kind::True)
        return color.rgb & 0xFFFFFF;
    if (color.kind != Color::Kind::Index || color.index == 0)
        return {};
    return indexedColor(color.index);
}

} // namespace zv::dwg
