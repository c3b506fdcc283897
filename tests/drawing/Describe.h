#pragma once

#include "drawing/Fields.h"
#include "platform/Text.h"

#include <charconv>
#include <string>

namespace zv::dwg::test {

/// Collects the values of a record as words, every number with all its digits.
class Words {
public:
    void point(const Point3& p) { add(p); }
    void inPlane(const auto& p) { add(p); }
    void direction(const Point3& p) { add(p); }
    void directionInPlane(const Point3& p) { add(p); }
    void vector(const Point3& p) { add(p); }
    void vectorInPlane(const Point2& p) { add(p); }
    void extrusion(const Point3& p) { add(p); }
    void normal(const Point3& p) { add(p); }
    void scale(const Point3& p) { add(p); }
    void elevation(double number) { add(number); }
    void length(double number) { add(number); }
    void thickness(double number) { add(number); }
    void angle(double number) { add(number); }
    void turn(double number) { add(number); }
    void mirroredTurn(double number) { add(number); }
    void bearing(double number) { add(number); }
    void number(double number) { add(number); }
    void value(const auto& value) { add(value); }
    void text(const Text& text) { m_words += " '" + toUtf8(text) + "'"; }
    void handle(Handle handle, Table) { m_words += " #" + std::to_string(handle); }
    void list(const auto& items, auto each)
    {
        m_words += " [" + std::to_string(items.size());
        for (const auto& item : items)
            each(item);
        m_words += " ]";
    }
    void part(const auto& record) { visit(*this, record); }
    void placed(const auto& record) { visit(*this, record); }

    const std::string& words() const { return m_words; }

private:
    void add(double number)
    {
        char digits[32];
        m_words += ' ';
        m_words.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
    }
    void add(const Point2& p)
    {
        add(p.x);
        add(p.y);
    }
    void add(const Point3& p)
    {
        add(Point2{p.x, p.y});
        add(p.z);
    }
    void add(const Color& color)
    {
        add(color.kind);
        add(color.index);
        add(color.rgb);
    }
    void add(const std::string& word) { m_words += ' ' + word; }
    template <class Number>
    requires std::is_integral_v<Number> || std::is_enum_v<Number>
    void add(Number number) { m_words += ' ' + std::to_string(static_cast<std::int64_t>(number)); }

    std::string m_words;
};

/// All values of a record, for comparing what was written with what is read.
template <class Record> std::string describe(const Record& record)
{
    Words words;
    visit(words, record);
    return words.words();
}

/// The same of whatever shape it is, with its place among the kinds.
inline std::string describe(const Geometry& geometry)
{
    return std::to_string(geometry.index()) +
           std::visit([](const auto& shape) { return describe(shape); }, geometry);
}

} // namespace zv::dwg::test
