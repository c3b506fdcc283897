#pragma once

#include "drawing/records/ObjectHeader.h"

#include <vector>

namespace zv::dwg {

/// The fields of the tables' records. Each reads a record from behind its object type and gives the record's
/// own header back; whether all went well tells `in.ok()`.

/// The handles of a table's entries, in file order; those that the table of linetypes or blocks tells apart
/// come last: ByLayer and ByBlock, model space and paper space.
std::vector<Handle> readTableControl(RecordReader& in, int extraHandles);

/// A block's record, and where its entities are.
struct BlockHeader {
    ObjectHeader header;
    BlockRecord block;          ///< Without entities.
    Handle first = 0, last = 0; ///< The ends of their chain, R13 to R2000.
    std::vector<Handle> owned;  ///< All of them, R2004 and later.
    Handle begin = 0;           ///< The BLOCK entity.
};
BlockHeader readBlockHeader(RecordReader& in);

ObjectHeader readLayer(RecordReader& in, Layer& layer);
ObjectHeader readLinetype(RecordReader& in, Linetype& linetype);
ObjectHeader readTextStyle(RecordReader& in, TextStyle& style);
ObjectHeader readDimensionStyle(RecordReader& in, DimensionStyle& style);

} // namespace zv::dwg
