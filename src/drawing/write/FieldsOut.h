#pragma once

#include "drawing/records/PackedFields.h"
#include "drawing/write/Plan.h"
#include "drawing/write/Record.h"

namespace zv::dwg {

/// Writes fields as AC1015 has them. Handles go to a stream of their own, or among the fields when it is the
/// same.
class PlainFieldsOut : public PackedFields<PlainFieldsOut> {
public:
    static constexpr bool kReads = false;

    PlainFieldsOut(BitWriter& fields, BitWriter& handles) : m_fields(fields), m_handles(handles) {}

    static constexpr Version version() { return Version::R2000; }
    static constexpr bool ok() { return true; }

    void bit(bool value) { m_fields.bit(value); }
    void bitPair(unsigned value) { m_fields.bitPair(value); }
    void rawChar(auto value) { m_fields.rawChar(static_cast<std::uint8_t>(value)); }
    void bitShort(auto value) { m_fields.bitShort(static_cast<std::int16_t>(value)); }
    void bitLong(auto value) { m_fields.bitLong(static_cast<std::int32_t>(value)); }
    void rawDouble(double value) { m_fields.rawDouble(value); }
    void bitDouble(double value) { m_fields.bitDouble(value); }
    void defaultDouble(double value, double from) { m_fields.defaultDouble(value, from); }
    void thickness(double value) { m_fields.thickness(value); }
    void extrusion(Point3 value) { m_fields.extrusion(value); }
    void rawPoint2(Point2 value) { m_fields.rawPoint2(value); }
    void bitPoint2(Point2 value) { m_fields.bitPoint2(value); }
    void bitPoint3(Point3 value) { m_fields.bitPoint3(value); }
    void rawFlat(Point3 value, double) { m_fields.rawPoint2({value.x, value.y}); }
    void text(const Text& value) { m_fields.text(encodeText(value)); }
    void color(const Color& value) { m_fields.bitShort(colorIndex(value)); }
    void entityColor(const auto& header) { color(header.color); }
    void ownColor(const Color& value)
    {
        constexpr std::int16_t kWhite = 7;
        const std::int16_t index = colorIndex(value);
        m_fields.bitShort(index > 0 && index < 256 ? index : kWhite);
    }
    void pointer(Handle value) { m_handles.handle(kHardPointer, value); }
    void owned(Handle value) { m_handles.handle(kHardOwner, value); }
    void softHandle(Handle value) { m_handles.handle(kSoftPointer, value); }

    void count(const auto& items, unsigned) { bitLong(items.size()); }
    void shortCount(const auto& items, unsigned) { bitShort(items.size()); }
    void resize(const auto&, std::int64_t, unsigned) {}
    std::int64_t checked(std::int64_t number, unsigned) { return number; }
    void eachCounted(const auto& items, unsigned, auto each)
    {
        bitLong(items.size());
        for (const auto& item : items)
            each(item);
    }

    void charCount(const auto& items) { rawChar(items.size()); }

    void fixedText(std::string_view value = {}) { m_fields.text(value); }
    void fixedColor(int index) { bitShort(index); }
    void fixedBitPoint2(Point2 value) { m_fields.bitPoint2(value); }
    void fixedBit(bool value) { m_fields.bit(value); }
    void fixedChar(int value) { rawChar(value); }
    void fixedShort(int value) { bitShort(value); }
    void fixedLong(int value) { bitLong(value); }
    void fixedDouble(double value) { m_fields.bitDouble(value); }
    void fixedPoint2(Point2 value) { m_fields.rawPoint2(value); }
    void fixedPoint3(Point3 value) { m_fields.bitPoint3(value); }
    void noHandle() { pointer(0); }
    void noOwnedHandle() { owned(0); }
    void worldCoordinates() { writeWorldCoordinates(m_fields); }

protected:
    const BitWriter& fields() const { return m_fields; }

private:
    BitWriter& m_fields;
    BitWriter& m_handles;
};

/// Writes a record; the counterpart of FieldsIn.
class FieldsOut : public PlainFieldsOut {
public:
    FieldsOut(Record& out, const Plan& plan) : PlainFieldsOut(out.fields, out.handles), m_plan(plan) {}

    /// Zero stands for ByLayer everywhere else; a layer itself cannot have that.
    void ownLinetype(Handle value)
    {
        const Handle linetype = m_plan.linetype(value);
        pointer(linetype == m_plan.byLayer ? m_plan.continuous : linetype);
    }
    void handle(Handle value, Table table) { pointer(known(value, table)); }
    void plotStyle() { pointer(m_plan.placeholder); }

private:
    /// The handle itself when it names something of that table, else the table's standard entry.
    Handle known(Handle handle, Table table) const
    {
        switch (table) {
        case Table::Layer:
            return m_plan.layer(handle);
        case Table::Linetype:
            return m_plan.linetype(handle);
        case Table::TextStyle:
            return m_plan.style(handle);
        case Table::DimensionStyle:
            return m_plan.dimensionStyle(handle);
        default:
            return handle;
        }
    }

    const Plan& m_plan;
};

} // namespace zv::dwg
