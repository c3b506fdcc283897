#pragma once

#include "drawing/preview/Preview.h"
#include "drawing/write/HeaderSection.h"
#include "drawing/write/Record.h"

#include <array>
#include <bit>
#include <string>

namespace zv::dwg {

/// The six numbered parts of an AC1015 file; ObjFreeSpace is always empty.
enum FilePart {
    kHeaderPart,
    kClassesPart,
    kObjectMapPart,
    kFreeSpacePart,
    kTemplatePart,
    kAuxiliaryPart,
    kParts
};

struct PartPlace {
    std::uint32_t offset = 0, size = 0;
};
using PartPlaces = std::array<PartPlace, kParts>;

/// The file's first 97 bytes.
std::string fileHead(const PartPlaces& places, std::uint32_t previewOffset);
inline constexpr std::uint32_t kFileHeadSize = 97;

std::string auxiliaryHeader(Handle seed, JulianTime saved);
/// The preview section as it stands at `offset`; without a picture when `preview` is null.
std::string previewSection(const Pixels* preview, std::uint32_t offset);
/// The class table, with the classes up to that of `highestType`, the highest type of any object.
std::string classesSection(int highestType);
/// The object map of objects that begin at these places.
std::string objectMap(const std::map<Handle, std::uint32_t>& places);
/// The copy of the file's head that stands behind the object map.
std::string secondHeader(const Plan& plan, const PartPlaces& places, std::uint32_t offset);
std::string templateSection(bool metric);

} // namespace zv::dwg
