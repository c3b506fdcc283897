#pragma once

#include "drawing/records/ObjectHeader.h"

#include <utility>
#include <vector>

namespace zv::dwg {

/// Records that are neither entities nor entries of a table. Each reads from behind the object type; whether
/// all went well tells `in.ok()`.

/// Names and objects, in file order.
using Dictionary = std::vector<std::pair<Text, Handle>>;
Dictionary readDictionary(RecordReader& in);
/// The first object that a dictionary has under a name, read no further than to that; 0 when it has none.
Handle dictionaryEntry(RecordReader& in, const Text& name);

/// An element of a multiline style tells its linetype before R2018 as a place in the table of linetypes.
struct MLineStyleRecord {
    MLineStyle style;
    std::vector<int> linetypePlaces; ///< One for each element, or empty.
};
inline constexpr int kPlaceByLayer = 0x7FFF, kPlaceByBlock = 0x7FFE;
MLineStyleRecord readMLineStyle(RecordReader& in);

Layout readLayout(RecordReader& in);

/// The order in which a block's entities are drawn: entity, and the handle that stands for its own in
/// sorting.
std::vector<std::pair<Handle, Handle>> readSortTable(RecordReader& in);

/// The path of an image's picture, as it is stored.
Text readImageDefinition(RecordReader& in);

/// A named colour.
Color readColorObject(RecordReader& in);

} // namespace zv::dwg
