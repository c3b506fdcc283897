#pragma once

#include "drawing/Document.h"
#include "platform/Result.h"

#include <array>
#include <cstddef>
#include <span>

namespace zv::dwg {

class Container;

/// The objects that the header variables name, 0 where there is none.
struct HeaderHandles {
    /// The tables' control objects.
    Handle blockControl = 0, layerControl = 0, styleControl = 0, linetypeControl = 0, viewControl = 0,
           ucsControl = 0, vportControl = 0, applicationControl = 0, dimensionStyleControl = 0,
           viewportHeaderControl = 0;
    /// Dictionaries.
    Handle groups = 0, mlineStyles = 0, namedObjects = 0, layouts = 0, plotSettings = 0, plotStyles = 0;
    Handle currentLinetype = 0, currentMLineStyle = 0;
    Handle paperSpaceBlock = 0, modelSpaceBlock = 0;
    /// Linetypes; the first two stand for "as the layer" and "as the block".
    Handle byLayer = 0, byBlock = 0, continuous = 0;
};

/// The bits of the section's content in which a value stands.
struct FieldPlace {
    std::size_t from = 0, to = 0;
};
/// The values that a changed drawing tells anew, in the order of the file.
enum class HeaderPlace { LinetypeScale, HandleSeed, CurrentLayer, Extents, DimScale, InsertionUnits };
/// Where each of them stands.
using HeaderPlaces = std::array<FieldPlace, 6>;

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
