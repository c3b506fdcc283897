#include "drawing/tool/Info.h"

#include "drawing/Reader.h"
#include "drawing/container/FileStart.h"
#include "drawing/preview/Preview.h"
#include "drawing/properties/PropertiesReader.h"
#include "platform/Text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <new>

namespace zv::dwg {

namespace {

Json whole(std::uint64_t number)
{
    return Json(static_cast<std::int64_t>(number));
}

Json previewJson(const PreviewImage& image)
{
    static constexpr const char* kKinds[] = {"none", "bmp", "wmf", "png"};
    const bool sized = image.kind != PreviewKind::Wmf;
    const auto size = [&](int value) { return sized ? whole(static_cast<std::uint64_t>(value)) : Json(); };
    return Json::Object{{"kind", kKinds[static_cast<int>(image.kind)]},
                        {"width", size(image.width)},
                        {"height", size(image.height)},
                        {"bits", size(image.bits)}};
}

/// A preview that cannot be read is none: the drawing can be shown all the same.
void addPreviews(const ByteSource& source, Json::Object& object)
{
    const auto previews = readPreviews(source);
    if (!previews || previews->empty()) {
        object.emplace_back("preview", previewJson({}));
        return;
    }
    object.emplace_back("preview", previewJson(previews->front()));
    Json::Array others;
    for (std::size_t i = 1; i < previews->size(); ++i)
        others.push_back(previewJson((*previews)[i]));
    if (!others.empty())
        object.emplace_back("previewOthers", std::move(others));
}

Json propertiesJson(const Properties& p)
{
    Json::Array custom;
    for (const auto& [name, value] : p.custom)
        custom.push_back(Json::Array{toUtf8(name), toUtf8(value)});
    return Json::Object{{"title", toUtf8(p.title)},       {"subject", toUtf8(p.subject)},
                        {"author", toUtf8(p.author)},     {"keywords", toUtf8(p.keywords)},
                        {"comments", toUtf8(p.comments)}, {"lastSavedBy", toUtf8(p.lastSavedBy)},
                        {"revision", toUtf8(p.revision)}, {"hyperlinkBase", toUtf8(p.hyperlinkBase)},
                        {"custom", std::move(custom)}};
}

Json entityCounts(const Document& document)
{
    std::map<std::string, std::int64_t> counts;
    if (document.modelSpace < document.blocks.size()) {
        for (const Entity& entity : document.blocks[document.modelSpace].entities)
            ++counts[entity.kind];
    }
    Json::Object object;
    for (const auto& [kind, count] : counts)
        object.emplace_back(kind, count);
    return object;
}

Json layerNames(const Document& document)
{
    std::vector<std::string> names;
    for (const Layer& layer : document.layers)
        names.push_back(toUtf8(layer.name));
    std::sort(names.begin(), names.end());
    return Json::Array(names.begin(), names.end());
}

/// With 14 decimals: what is smaller comes of measuring, not of drawing.
Json figure(double value)
{
    constexpr double kDecimals = 1e14;
    return std::abs(value) < 1 ? std::round(value * kDecimals) / kDecimals + 0.0 : value;
}

Json extentsJson(const HeaderVariables& header)
{
    const Point3 low = header.extentsMin, high = header.extentsMax;
    if (low.x > high.x || low.y > high.y)
        return {};
    return Json::Array{figure(low.x), figure(low.y), figure(high.x), figure(high.y)};
}

std::string shown(const Json& value)
{
    return value.text() != nullptr ? *value.text() : writeJson(value);
}

void addProperties(const Json& properties, std::string& words)
{
    if (properties.isNull()) {
        words += "  properties: none stored\n";
        return;
    }
    for (const auto& [name, value] : *properties.object()) {
        if (value.text() != nullptr && !value.text()->empty())
            words += "  " + name + ": " + *value.text() + "\n";
    }
    for (const Json& pair : *properties.member("custom")->array())
        words += "  " + shown((*pair.array())[0]) + " = " + shown((*pair.array())[1]) + "\n";
}

Result<Json> describe(const std::string& path)
{
    const auto source = openByteSource(path);
    if (!source)
        return source.error();
    const auto start = FileStart::read(**source);
    if (!start)
        return start.error();
    const auto document = readDocument(**source);
    if (!document)
        return document.error();
    Json::Object object;
    object.emplace_back("file", shownPath(path));
    object.emplace_back("version", FileStart(*start).versionText());
    object.emplace_back("size", whole((*source)->size()));
    addPreviews(**source, object);
    const auto properties = readProperties(**source);
    object.emplace_back("properties", properties && *properties ? propertiesJson(**properties) : Json());
    object.emplace_back("entities", entityCounts(*document));
    std::size_t blocks = 0;
    for (const BlockRecord& block : document->blocks)
        blocks += block.layout ? 0 : 1;
    object.emplace_back("blocks", whole(blocks));
    object.emplace_back("layers", layerNames(*document));
    object.emplace_back("extents", extentsJson(document->header));
    return Json(std::move(object));
}

} // namespace

std::string shownPath(const std::string& path)
{
    return toUtf8(fromUtf8(path)) == path ? path : toUtf8(wide(path));
}

Result<Json> describeDrawing(const std::string& path)
{
    try {
        return describe(path);
    } catch (const std::bad_alloc&) {
        return Error{ErrorCode::TooLarge, "too large for this computer's memory"};
    }
}

std::string describedInWords(const Json& description)
{
    const Json& preview = *description.member("preview");
    std::string words = shown(*description.member("file")) + "\n";
    words +=
        "  " + shown(*description.member("version")) + ", " + shown(*description.member("size")) + " bytes\n";
    words += "  preview: " + shown(*preview.member("kind"));
    if (preview.member("width")->whole() != nullptr && *preview.member("width")->whole() != 0)
        words += ", " + shown(*preview.member("width")) + " x " + shown(*preview.member("height")) +
                 " pixels, " + shown(*preview.member("bits")) + " bits";
    words += "\n";
    addProperties(*description.member("properties"), words);
    words += "  model space:";
    for (const auto& [kind, count] : *description.member("entities")->object())
        words += " " + kind + " " + shown(count);
    words += "\n  blocks: " + shown(*description.member("blocks")) + "\n  layers:";
    for (const Json& layer : *description.member("layers")->array())
        words += " \"" + shown(layer) + "\"";
    const Json& extents = *description.member("extents");
    words += "\n  extents: " + (extents.isNull() ? std::string("empty") : writeJson(extents)) + "\n";
    return words;
}

} // namespace zv::dwg
