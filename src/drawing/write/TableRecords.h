#pragma once

#include "drawing/Writer.h"
#include "drawing/write/HeaderSection.h"
#include "drawing/write/Plan.h"
#include "drawing/write/Record.h"

namespace zv::dwg {

/// Adds the control objects and the entries of all tables.
void addTables(ObjectStream& objects, const Plan& plan);
/// Adds the named-object dictionary and what hangs on it; the properties' record when there are any.
void addDictionaries(ObjectStream& objects, const Plan& plan, const std::optional<Properties>& properties);

/// The variables of dimensions, which stand in the header and in each dimension style in the same order but
/// not with the same neighbours. The handles that both have go to `handles`.
struct DimensionVariables {
    double scale = 1, arrowSize = 0.18, textHeight = 0.18;
    bool metric = false;
    Handle textStyle = 0;

    void writeNumbers(BitWriter& fields) const;
    void writeHandles(BitWriter& handles) const;
};
DimensionVariables dimensionVariables(const Plan& plan, const DimensionStyle& style);

/// The data of the properties' record: one text or number after another, each behind its group code.
std::string propertiesRecordData(const Properties& properties, JulianTime saved);
/// AutoCAD 2000 knows as many.
inline constexpr std::size_t kMostCustomProperties = 10;

} // namespace zv::dwg
