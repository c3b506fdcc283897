#pragma once

#include "drawing/records/HeaderLayout.h"
#include "drawing/write/BitWriter.h"
#include "drawing/write/Plan.h"

#include <string>

namespace zv::dwg {

/// A moment as drawings keep it.
struct JulianTime {
    std::uint32_t day = 0;          ///< Julian day.
    std::uint32_t milliseconds = 0; ///< Into that day.

    static JulianTime now();
    double days() const { return day + milliseconds / 86400000.0; }
};

/// The header variables as AC1015 packs them, and the bits in which the values stand that a changed drawing
/// tells anew.
struct WrittenHeader {
    BitWriter content;
    HeaderPlaces places;
};
/// Handles are written as they are told; `style` as for layoutHeader.
WrittenHeader writeHeader(const HeaderVariables& variables, const HeaderHandles& handles,
                          const DimensionStyle& style, const HeaderOrigin& origin);

/// The header variables of an AC1015 file, with sentinels, length and check code.
std::string headerSection(const Plan& plan, const Properties& properties, JulianTime saved);

/// The bytes between two sentinels, with their length before and their check code behind.
std::string sentinelSection(const std::string& begin, const std::string& content, const std::string& end);

} // namespace zv::dwg
