#pragma once

#include "drawing/Document.h"
#include "drawing/preview/Preview.h"
#include "platform/Result.h"

#include <optional>
#include <string>

namespace zv::dwg {

/// What goes into a written file beside the document itself.
struct WriteOptions {
    std::optional<Properties> properties;
    /// Embedded picture, stored as a bitmap of 24 bits.
    std::optional<Pixels> preview;
};

/// The document as the bytes of an AC1015 file. Handles that are 0 are given out. Entities of kind Unknown
/// cannot be written. Errors: Unsupported, names the first thing that cannot be written.
Result<std::string> writeDocument(const Document& document, const WriteOptions& options);

/// The file with its properties replaced and every other part of its content as it was; AC1015 and later.
/// Errors: as Container::open; Unsupported, says why.
Result<std::string> replaceProperties(std::string_view file, const Properties& properties);

} // namespace zv::dwg
