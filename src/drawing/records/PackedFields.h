#pragma once

#include "drawing/Fields.h"
#include "drawing/records/RecordReader.h"

#include <initializer_list>
#include <string_view>

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

    void fixedBits(std::initializer_list<bool> values)
    {
        for (const bool value : values)
            own().fixedBit(value);
    }
    void fixedChars(std::initializer_list<int> values)
    {
        for (const int value : values)
            own().fixedChar(value);
    }
    void fixedShorts(std::initializer_list<int> values)
    {
        for (const int value : values)
            own().fixedShort(value);
    }
    void fixedLongs(std::initializer_list<int> values)
    {
        for (const int value : values)
            own().fixedLong(value);
    }
    void fixedDoubles(std::initializer_list<double> values)
    {
        for (const double value : values)
            own().fixedDouble(value);
    }
    /// So many empty ones.
    void fixedTexts(int count)
    {
        for (int i = 0; i < count; ++i)
            own().fixedText();
    }
    /// A place of the header; what is no header passes over it.
    void marked(auto, auto each) { each(); }

private:
    Fields& own() { return static_cast<Fields&>(*this); }
};

/// Of a text, the two flags that say how it runs, as records of texts and of their styles pack them.
inline constexpr unsigned kBackward = 2, kUpsideDown = 4;

/// Reads a record. What a layout calls fixed is passed over.
class FieldsIn : public PackedFields<FieldsIn> {
public:
    static constexpr bool kReads = true;

    explicit FieldsIn(RecordReader& in) : m_in(in) {}

    Version version() const { return m_in.version(); }
    bool ok() const { return m_in.ok(); }
    RecordReader& reader() { return m_in; }

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
    void color(Color& value) { value = m_in.color(); }
    /// That of an entity, which may stand in an object of its own, with its transparency.
    void entityColor(auto& header)
    {
        bool named = false;
        header.color = m_in.entityColor(header.alpha, header.ownAlpha, named);
        if (named)
            header.colorObject = m_in.handle();
    }
    /// A colour and a linetype that are not told to be those of the layer: the layer's own.
    void ownColor(Color& value) { value = m_in.color(); }
    void ownLinetype(Handle& value) { value = m_in.handle(); }
    void handle(Handle& value, Table) { value = m_in.handle(); }
    void softHandle(Handle& value) { value = m_in.handle(); }

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

    void charCount(auto& items) { items.resize(m_in.rawChar()); }

    void fixedBit(bool) { m_in.bit(); }
    void fixedText(std::string_view = {}) { m_in.text(); }
    void fixedColor(int) { m_in.color(); }
    void fixedBitPoint2(Point2) { m_in.bitPoint2(); }
    void fixedChar(int) { m_in.rawChar(); }
    void fixedShort(int) { m_in.bitShort(); }
    void fixedLong(int) { m_in.bitLong(); }
    void fixedDouble(double) { m_in.bitDouble(); }
    void fixedPoint2(Point2) { m_in.rawPoint2(); }
    void fixedPoint3(Point3) { m_in.bitPoint3(); }
    /// A handle to something that the writer never has; that of the plot style.
    void noHandle() { m_in.handle(); }
    void plotStyle() { m_in.handle(); }

private:
    template <class Value> static void set(Value& value, auto number) { value = static_cast<Value>(number); }

    RecordReader& m_in;
};

/// The fields of a record in the order of the file. Those of which files hold just the fields that visit()
/// names are read and written by it; the others have a layout of their own.
void layout(auto& fields, auto& shape)
{
    visit(fields, shape);
}

} // namespace zv::dwg
