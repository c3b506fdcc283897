#include "drawing/Writer.h"

#include "drawing/write/EntityRecords.h"
#include "drawing/write/FileParts.h"
#include "drawing/write/Tables.h"

namespace zv::dwg {

namespace {
Result<void> check(const WriteOptions& options)
{
    if (options.preview) {
        const Pixels& pixels = *options.preview;
        if (pixels.width <= 0 || pixels.height <= 0 || pixels.width > 4096 || pixels.height > 4096 ||
            pixels.bgra.size() !=
                static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height) * 4)
            return Error{ErrorCode::Unsupported, "a preview without pixels, or of more than 4096 x 4096"};
    }
    return {};
}

std::string assembled(const Plan& plan, const ObjectStream& objects, const WriteOptions& options)
{
    const JulianTime saved = JulianTime::now();
    PartPlaces places;
    std::string body;
    const auto at = [&] { return static_cast<std::uint32_t>(kFileHeadSize + body.size()); };
    const auto add = [&](FilePart part, const std::string& bytes) {
        places[part] = {at(), static_cast<std::uint32_t>(bytes.size())};
        body += bytes;
    };
    add(kAuxiliaryPart, auxiliaryHeader(plan.seed(), saved));
    const std::uint32_t previewOffset = at();
    body += previewSection(options.preview ? &*options.preview : nullptr, previewOffset);
    add(kHeaderPart, headerSection(plan, options.properties.value_or(Properties{}), saved));
    add(kClassesPart, classesSection(objects.highestType));
    std::map<Handle, std::uint32_t> objectPlaces;
    for (const auto& [handle, bytes] : objects.records) {
        objectPlaces[handle] = at();
        body += bytes;
    }
    add(kObjectMapPart, objectMap(objectPlaces));
    // The template stands behind the second header, which tells its place all the same.
    const std::uint32_t secondOffset = at();
    const std::string tail = templateSection(plan.document.header.measurement != 0);
    places[kTemplatePart].size = static_cast<std::uint32_t>(tail.size());
    for (int i = 0; i < 2; ++i) // Its own length may change with the place that it tells.
        places[kTemplatePart].offset =
            secondOffset + static_cast<std::uint32_t>(secondHeader(plan, places, secondOffset).size());
    body += secondHeader(plan, places, secondOffset) + tail;
    return fileHead(places, previewOffset) + body;
}
} // namespace

Result<std::string> writeDocument(const Document& document, const WriteOptions& options)
{
    if (const auto checked = check(options); !checked)
        return checked.error();
    auto planned = makePlan(document);
    if (!planned)
        return planned.error();
    Plan& plan = *planned;
    ObjectStream objects;
    addTables(objects, plan);
    for (std::size_t i = 0; i < plan.blocks.size(); ++i)
        if (const auto added = addBlockContent(objects, plan, i); !added)
            return added.error();
    if (const auto added = addDictionaries(objects, plan, options.properties); !added)
        return added.error();
    std::size_t size = 0;
    for (const auto& [handle, bytes] : objects.records)
        size += bytes.size();
    // Places in the file are numbers of 32 bits, and the object map's differences are signed.
    if (size > 0x7F000000)
        return Error{ErrorCode::TooLarge, "the drawing is larger than the format holds"};
    return assembled(plan, objects, options);
}

} // namespace zv::dwg
