#pragma once

#include "drawing/Fields.h"
#include "drawing/entities/EntityRecord.h"

namespace zv::dwg {

/// How records pack the kinds of field. `Fields` reads or writes what BitReader and BitWriter name; with
/// these kinds beside it walks whatever visit() tells in the order of the file.
template <class Fields> class PackedFields {
public:
    void point(auto& p) { own().bitPoint3(p); }
    void inPlane(auto& p) { own().bitPoint3(p); }
    void direction(auto& v) { own().bitPoint3(v); }
    void vector(auto& v) { own().bitPoint3(v); }
    void normal(auto& v) { own().bitPoint3(v); }
    void elevation(auto& number) { own().bitDouble(number); }
    void length(auto& number) { own().bitDouble(number); }
    void angle(auto& number) { own().bitDouble(number); }
    void turn(auto& number) { own().bitDouble(number); }
    void bearing(auto& number) { own().bitDouble(number); }
    void number(auto& number) { own().bitDouble(number); }

    /// Of a text, the two flags that say how it runs, as records of texts and of their styles pack them.
    static constexpr unsigned kBackward = 2, kUpsideDown = 4;

private:
    Fields& own() { return static_cast<Fields&>(*this); }
};

/// Reads a record into an entity. What a layout calls fixed is passed over.
class FieldsIn : public PackedFields<FieldsIn> {
public:
    static constexpr bool kReads = true;

    FieldsIn(RecordReader& in, EntityRecord& out) : m_in(in), m_out(out) {}

    Version version() const { return m_in.version(); }
    bool ok() const { return m_in.ok(); }
    RecordReader& reader() { return m_in; }
    EntityRecord& record() { return m_out; }

    void bit(bool& value) { value = m_in.bit(); }
    void bitPair(auto& value) { set(value, m_in.bitPair()); }
    void rawChar(auto& value) { set(value, m_in.rawChar()); }
    void bitShort(auto& value) { set(value, m_in.bitShort()); }
    void bitLong(auto& value) { set(value, m_in.bitLong()); }
    void rawDouble(double& value) { value = m_in.rawDouble(); }
    void bitDouble(double& value) { value = m_in.bitDouble(); }
    void defaultDouble(double& value, double from) { value = m_in.defaultDouble(from); }
    void thickness(double& value) { value = m_in.thickness(); }
    void extrusion(Point3& value) { value = m_in.extrusion(); }
    void rawPoint2(Point2& value) { value = m_in.rawPoint2(); }
    void bitPoint2(Point2& value) { value = m_in.bitPoint2(); }
    void bitPoint3(Point3& value) { value = m_in.bitPoint3(); }
    /// A point whose z stands elsewhere.
    void rawFlat(Point3& value, double z)
    {
        const Point2 flat = m_in.rawPoint2();
        value = {flat.x, flat.y, z};
    }
    void text(Text& value) { value = m_in.text(); }
    void handle(Handle& value, Table) { value = m_in.handle(); }

    /// The number of items that follow at once, each of at least `minBits` bits.
    void count(auto& items, unsigned minBits) { items.resize(m_in.count(minBits)); }
    void shortCount(auto& items, unsigned minBits)
    {
        items.resize(m_in.checkedCount(m_in.bitShort(), minBits));
    }
    /// The same for a number that stands earlier in the record.
    void resize(auto& items, std::int64_t number, unsigned minBits)
    {
        items.resize(m_in.checkedCount(number, minBits));
    }

    void eachCounted(auto& items, unsigned minBits, auto each)
    {
        const std::uint32_t count = m_in.count(minBits);
        for (std::uint32_t i = 0; i < count && m_in.ok(); ++i)
            each(items.emplace_back());
    }
    std::int64_t checked(std::int64_t number, unsigned minBits) { return m_in.checkedCount(number, minBits); }

    void fixedBit(bool) { m_in.bit(); }
    void fixedChar(int) { m_in.rawChar(); }
    void fixedShort(int) { m_in.bitShort(); }
    void fixedLong(int) { m_in.bitLong(); }
    void fixedDouble(double) { m_in.bitDouble(); }
    void fixedPoint2(Point2) { m_in.rawPoint2(); }
    void fixedPoint3(Point3) { m_in.bitPoint3(); }
    /// A handle to something that the writer never has.
    void noHandle() { m_in.handle(); }

private:
    template <class Value> static void set(Value& value, auto number) { value = static_cast<Value>(number); }

    RecordReader& m_in;
    EntityRecord& m_out;
};

/// The fields of a shape in the order of its record. Those of which files hold just the fields that visit()
/// names are read and written by it; the others have a layout of their own.
void layout(auto& fields, auto& shape)
{
    visit(fields, shape);
}

/// Reads the fields of one shape.
template <class ShapeType> void readShape(RecordReader& in, EntityRecord& out)
{
    FieldsIn fields(in, out);
    layout(fields, out.geometry.emplace<ShapeType>());
}

} // namespace zv::dwg
