#include "SaveOutlook.h"

#include "DocumentEdit.h"
#include "FileInventory.h"

#include "drawing/Amend.h"
#include "drawing/Writer.h"

#include <algorithm>
#include <map>
#include <span>
#include <unordered_set>

namespace zv::bench {

using namespace zv::dwg;

namespace {

/// What keeps an entity from being written; empty when nothing does.
std::string obstacle(const Document& document, const Entity& entity)
{
    constexpr std::string_view kKinds[] = {
        "LINE",   "POINT",  "CIRCLE", "ARC",       "ELLIPSE",   "SPLINE",  "LWPOLYLINE", "POLYLINE", "TEXT",
        "MTEXT",  "ATTDEF", "INSERT", "SOLID",     "TRACE",     "3DFACE",  "RAY",        "XLINE",    "HATCH",
        "LEADER", "SHAPE",  "MLINE",  "DIMENSION", "TOLERANCE", "WIPEOUT", "VIEWPORT"};
    if (std::find(std::begin(kKinds), std::end(kKinds), entity.kind) == std::end(kKinds) ||
        std::holds_alternative<Unknown>(entity.geometry) ||
        std::holds_alternative<StoredPicture>(entity.geometry))
        return entity.kind;
    if (const auto* dimension = std::get_if<Dimension>(&entity.geometry);
        dimension != nullptr && document.block(dimension->block) == nullptr)
        return "DIMENSION without a picture";
    if (const auto* insert = std::get_if<Insert>(&entity.geometry);
        insert != nullptr && document.block(insert->block) == nullptr)
        return "INSERT of a missing block";
    if (const auto* line = std::get_if<MLine>(&entity.geometry)) {
        const bool styled = std::any_of(document.mlineStyles.begin(), document.mlineStyles.end(),
                                        [&](const MLineStyle& style) { return style.handle == line->style; });
        return styled ? "" : "MLINE without a style";
    }
    return {};
}

std::unordered_set<Handle> handlesOf(const Document* document)
{
    std::unordered_set<Handle> handles;
    for (const BlockRecord& block : document != nullptr ? document->blocks : std::vector<BlockRecord>()) {
        for (const Entity& entity : block.entities)
            handles.insert(entity.handle);
    }
    return handles;
}

std::vector<std::string> counted(const std::map<std::string, std::size_t>& counts)
{
    std::vector<std::string> words;
    for (const auto& [what, count] : counts)
        words.push_back(std::to_string(count) + " " + what);
    return words;
}

/// Dimension styles keep their scale, sizes and text style here, and layouts their size of paper; the rest of
/// those that somebody has set up would be lost.
void countSettings(const Document& document, std::map<std::string, std::size_t>& counts)
{
    std::unordered_set<Handle> used;
    for (const BlockRecord& block : document.blocks) {
        for (const Entity& entity : block.entities) {
            if (const auto* dimension = std::get_if<Dimension>(&entity.geometry))
                used.insert(dimension->style);
            else if (const auto* leader = std::get_if<Leader>(&entity.geometry))
                used.insert(leader->style);
            else if (const auto* tolerance = std::get_if<Tolerance>(&entity.geometry))
                used.insert(tolerance->style);
        }
    }
    constexpr std::u16string_view kOfNewDrawings[] = {u"Standard", u"Annotative", u"ISO-25"};
    for (const DimensionStyle& style : document.dimensionStyles) {
        const bool isOwn = std::none_of(std::begin(kOfNewDrawings), std::end(kOfNewDrawings),
                                        [&](std::u16string_view name) { return sameName(name, style.name); });
        counts["dimension style with more settings"] += isOwn || used.contains(style.handle) ? 1 : 0;
    }
    for (const Layout& layout : document.layouts) {
        const BlockRecord* const paper = document.block(layout.block);
        counts["page setup of a layout"] += !layout.model && paper != nullptr && paper->entities.size() > 1;
    }
}

/// What an AC1015 file of ours would show otherwise than the drawing does.
std::map<std::string, std::size_t> changedLooks(const Document& document)
{
    std::map<std::string, std::size_t> counts;
    const auto note = [&counts](bool is, const char* what) { counts[what] += is ? 1 : 0; };
    const auto isTrue = [](const Color& color) { return color.kind == Color::Kind::True; };
    for (const Layer& layer : document.layers) {
        note(isTrue(layer.color), "true colour (the nearest index is taken)");
        note(layer.alpha != 255, "transparency");
    }
    for (const BlockRecord& block : document.blocks) {
        for (const Entity& entity : block.entities) {
            note(isTrue(entity.color), "true colour (the nearest index is taken)");
            note(entity.alpha != 255, "transparency");
            if (const auto* hatch = std::get_if<Hatch>(&entity.geometry))
                note(hatch->gradient, "gradient (one colour is taken)");
            if (const auto* text = std::get_if<MText>(&entity.geometry)) {
                note(text->backgroundFill, "ground of a text");
                note(text->columns > 0, "text in columns");
            }
        }
        for (const Entity& entity : block.attributes) {
            const auto* const attribute = std::get_if<Attribute>(&entity.geometry);
            note(attribute != nullptr && !attribute->lines.empty(), "attribute in several lines");
        }
    }
    countSettings(document, counts);
    std::erase_if(counts, [](const auto& each) { return each.second == 0; });
    return counts;
}

std::string releaseOf(Version version)
{
    constexpr const char* kReleases[] = {"R13", "R14", "2000", "2004", "2007", "2010", "2013", "2018"};
    return kReleases[static_cast<std::size_t>(version)];
}

} // namespace

std::vector<std::string> unsavable(const Document& document, const Document* kept)
{
    const std::unordered_set<Handle> known = handlesOf(kept);
    std::map<std::string, std::size_t> counts;
    for (const BlockRecord& block : document.blocks) {
        for (const Entity& entity : block.xref ? std::vector<Entity>() : block.entities) {
            const std::string what = known.contains(entity.handle) ? "" : obstacle(document, entity);
            if (!what.empty())
                ++counts[what];
        }
    }
    return counted(counts);
}

Document savable(const Document& document, const Document* kept)
{
    const std::unordered_set<Handle> known = handlesOf(kept);
    Document rest = document;
    for (BlockRecord& block : rest.blocks)
        std::erase_if(block.entities, [&](const Entity& entity) {
            return !known.contains(entity.handle) && !obstacle(document, entity).empty();
        });
    rest.skipped.clear();
    return rest;
}

SaveOutlook saveOutlook(const std::string& file, const Document& document,
                        const std::optional<Properties>& properties)
{
    SaveOutlook outlook;
    const MemorySource source(std::as_bytes(std::span(file)));
    if (document.version == Version::R2000 && document.damage.empty()) {
        WriteOptions options;
        options.properties = properties;
        const Result<std::string> written = writeDocument(document, options);
        if (written && sameRecords(file, *written))
            return outlook;
        outlook.way = SaveWay::Amended;
        const Result<std::string> amended = amendDocument(file, document, {});
        if (amended)
            return outlook;
        outlook.reason = amended.error().text;
    }
    outlook.way = SaveWay::NewFile;
    if (!document.damage.empty()) {
        outlook.reason = "it is damaged: " + document.damage.front();
        outlook.missing.push_back(std::to_string(document.damage.size()) + " damaged part" +
                                  (document.damage.size() > 1 ? "s" : ""));
    } else if (document.version != Version::R2000) {
        outlook.reason = "it is a drawing of AutoCAD " + releaseOf(document.version) +
                         ", and this program writes those of 2000";
    }
    for (const auto& list :
         {unsavable(document), counted(changedLooks(document)), counted(untakenObjects(source))})
        outlook.missing.insert(outlook.missing.end(), list.begin(), list.end());
    if (properties && properties->custom.size() > kMostCustomProperties)
        outlook.missing.push_back(std::to_string(properties->custom.size() - kMostCustomProperties) +
                                  " custom property beyond ten");
    if (const auto written = writeDocument(savable(document), {}); !written)
        outlook.missing.push_back(written.error().text);
    return outlook;
}

std::string joined(const std::vector<std::string>& items)
{
    constexpr std::size_t kMost = 8;
    std::string text;
    for (std::size_t at = 0; at < std::min(items.size(), kMost); ++at)
        text += (text.empty() ? "" : ", ") + items[at];
    if (items.size() > kMost)
        text += " and " + std::to_string(items.size() - kMost) + " more kinds";
    return text;
}

} // namespace zv::bench
