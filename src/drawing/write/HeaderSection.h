#pragma once

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

/// The header variables of an AC1015 file, with sentinels, length and check code.
std::string headerSection(const Plan& plan, const Properties& properties, JulianTime saved);

/// The bytes between two sentinels, with their length before and their check code behind.
std::string sentinelSection(const std::string& begin, const std::string& content, const std::string& end);

} // namespace zv::dwg
