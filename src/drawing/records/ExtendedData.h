#pragma once

#include "drawing/records/ObjectHeader.h"

#include <cstdint>
#include <vector>

namespace zv::dwg {

/// One item of an object's extended data.
struct ExtendedItem {
    int code = 0;            ///< DXF group code, 1000 to 1071.
    Text text;               ///< Codes 1000, 1001.
    Point3 point;            ///< Codes 1010 to 1013.
    double real = 0;         ///< Codes 1040 to 1042.
    std::int32_t number = 0; ///< Codes 1002 (0 opens, 1 closes), 1070, 1071.
};

/// The data that one program hung on an object.
struct ExtendedData {
    Handle application = 0;
    std::vector<ExtendedItem> items; ///< As far as they could be read.
};

/// All that is hung on the object of this record, whose header has been read.
std::vector<ExtendedData> readExtendedData(const RecordReader& record, const ObjectHeader& header);

} // namespace zv::dwg
