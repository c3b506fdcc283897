#pragma once

#include "drawing/Document.h"
#include "platform/Result.h"

#include <cstddef>
#include <span>

namespace zv::dwg {

class Container;

/// The objects that the header variables name, 0 where there is none: the tables' control objects,
/// dictionaries, and the two linetypes that stand for "as the layer" and "as the block".
struct HeaderHandles {
    Handle blockControl = 0, layerControl = 0, styleControl = 0, linetypeControl = 0,
           dimensionStyleControl = 0;
    Handle mlineStyles = 0, namedObjects = 0, layouts = 0;
    Handle paperSpace = 0, modelSpace = 0;
    Handle byLayer = 0, byBlock = 0, continuous = 0;
};

/// The bits of the section's content in which a value stands.
struct FieldPlace {
    std::size_t from = 0, to = 0;
};
/// Where the values stand that a changed drawing tells anew.
struct HeaderPlaces {
    FieldPlace linetypeScale, handleSeed, currentLayer, extents, dimScale, insertionUnits;
};

struct HeaderSection {
    HeaderVariables variables;
    HeaderHandles handles;
    HeaderPlaces places;
};

/// `maintenance` is the file's maintenance version. Errors: Damaged.
Result<HeaderSection> readHeaderVariables(std::span<const std::byte> section, Version version,
                                          int maintenance, int codePage);
/// The same of an open drawing. Errors: as Container::section too.
Result<HeaderSection> readHeaderVariables(const Container& container);

} // namespace zv::dwg
