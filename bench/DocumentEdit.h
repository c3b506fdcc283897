#pragma once

#include "drawing/Document.h"
#include "platform/ByteSource.h"
#include "platform/Result.h"

#include <string>
#include <string_view>

namespace zv::bench {

/// A handle that nothing in the document has yet, given out.
dwg::Handle giveHandle(dwg::Document& document);
/// Makes the indices by handle fit the tables again, and the handle seed stand above every handle.
void reindex(dwg::Document& document);

/// Tables by name, without regard to case; null when there is no such entry.
const dwg::Layer* findLayer(const dwg::Document& document, std::u16string_view name);
dwg::BlockRecord* findBlock(dwg::Document& document, std::u16string_view name);
/// The name in the program's own text; "0" for a handle of no layer.
std::string layerName(const dwg::Document& document, dwg::Handle layer);
bool sameName(std::u16string_view a, std::u16string_view b);

/// An entity of the document's own, on the layer, with a handle.
dwg::Entity newEntity(dwg::Document& document, std::string kind, dwg::Geometry geometry, dwg::Handle layer);

/// How much larger a length in the units `from` (as INSUNITS numbers them) is in the units `to`; 1 when
/// either has none.
double unitFactor(int from, int to);

/// Takes another drawing's model space over as a block of this name, with the layers, linetypes, styles and
/// nested blocks that it needs; entries whose names are there already are used as they are. A block of the
/// name gets the new content in place of its own. Gives the block's handle. Errors: Failed, the block would
/// hold itself; then `into` is spoilt.
Result<dwg::Handle> importAsBlock(dwg::Document& into, const dwg::Document& from, std::u16string_view name);

/// Takes a block away that no insert needs any more.
void removeBlock(dwg::Document& document, dwg::Handle block);

/// Whether a block of one drawing looks as the model space of another, with the same values to ask for.
bool looksAs(const dwg::Document& document, dwg::Handle block, const dwg::Document& other);

} // namespace zv::bench
