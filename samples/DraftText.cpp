// Words, leaders and dimensions of a draft.
#include "Draft.h"

#include "platform/Text.h"

#include <cmath>
#include <numbers>

namespace zv::samples {

using namespace zv::dwg;

namespace {
constexpr double kDegree = std::numbers::pi / 180;
/// About how wide a letter is for its height.
constexpr double kLetterWidth = 0.85;

/// Feet, inches and sixteenths, as drafters write them.
std::string feetText(double inches)
{
    const long sixteenths = std::lround(inches * 16);
    const long feet = sixteenths / 192;
    long rest = sixteenths % 192;
    const long whole = rest / 16;
    rest %= 16;
    std::string text = feet > 0 ? std::to_string(feet) + "'-" : std::string();
    if (whole > 0 || feet > 0 || rest == 0)
        text += std::to_string(whole);
    if (rest > 0) {
        long denominator = 16;
        while (rest % 2 == 0) {
            rest /= 2;
            denominator /= 2;
        }
        text += (whole > 0 || feet > 0 ? " " : "") + std::to_string(rest) + "/" + std::to_string(denominator);
    }
    return text + "\"";
}
} // namespace

void Draft::text(double x, double y, const std::string& words, Align align, double height, double angle)
{
    TextLine line;
    line.text = wide(words);
    line.height = height > 0 ? height * m_scale : noteHeight();
    line.rotation = angle * kDegree;
    line.insertion = line.alignment = {x, y, 0};
    const double width = static_cast<double>(line.text.size()) * line.height * kLetterWidth;
    const double before = align == Align::Left ? 0 : align == Align::Centre ? width / 2 : width;
    // Where the letters begin stands beside the point that they are fitted to.
    line.insertion.x -= before * std::cos(line.rotation);
    line.insertion.y -= before * std::sin(line.rotation);
    line.horizontal = align == Align::Left     ? HorizontalAlign::Left
                      : align == Align::Centre ? HorizontalAlign::Center
                                               : HorizontalAlign::Right;
    line.style = 0x11;
    see(line.insertion.x, line.insertion.y);
    see(line.insertion.x + width * std::cos(line.rotation) - line.height * std::sin(line.rotation),
        line.insertion.y + width * std::sin(line.rotation) + line.height * std::cos(line.rotation));
    add(line);
}

void Draft::letters(double x, double y, double height, const std::string& words)
{
    TextLine line;
    line.text = wide(words);
    line.height = height;
    line.insertion = line.alignment = {x, y, 0};
    line.insertion.x -= static_cast<double>(line.text.size()) * height * kLetterWidth / 2;
    line.insertion.y -= height / 2;
    line.horizontal = HorizontalAlign::Center;
    line.vertical = VerticalAlign::Middle;
    line.style = 0x11;
    add(line);
}

void Draft::note(double x, double y, double width, const std::string& words)
{
    MText shape;
    shape.text = wide(words);
    shape.insertion = {x, y, 0};
    shape.width = width;
    shape.height = noteHeight();
    shape.style = 0x11;
    see(x, y);
    std::size_t rows = 1;
    for (std::size_t at = words.find("\\P"); at != std::string::npos; at = words.find("\\P", at + 2))
        ++rows;
    see(x + width, y - static_cast<double>(rows) * noteHeight() * 1.67);
    add(shape);
}

void Draft::arrow(Point2 tip, Point2 from)
{
    const double length = std::hypot(from.x - tip.x, from.y - tip.y);
    if (length == 0)
        return;
    const double size = noteHeight();
    const double dx = (from.x - tip.x) / length * size, dy = (from.y - tip.y) / length * size;
    solid({tip, {tip.x + dx - dy / 6, tip.y + dy + dx / 6}, {tip.x + dx + dy / 6, tip.y + dy - dx / 6}});
}

void Draft::leader(const std::vector<Point2>& points, const std::string& words)
{
    Leader shape;
    for (const Point2& point : points) {
        shape.points.push_back({point.x, point.y, 0});
        see(point.x, point.y);
    }
    shape.style = 0x27;
    add(shape);
    const Point2 last = points.back();
    const bool toLeft = last.x < points[points.size() - 2].x;
    const double gap = noteHeight() / 2;
    text(last.x + (toLeft ? -gap : gap), last.y - noteHeight() / 2, words,
         toLeft ? Align::Right : Align::Left);
}

std::string Draft::lengthText(double length) const
{
    return m_units == Units::Inches ? feetText(length) : numberText(std::round(length * 10) / 10);
}

void Draft::dimension(Dimension shape, const std::function<void()>& draw)
{
    const std::string name = "*D" + std::to_string(++m_dimensions);
    block(name, draw);
    // What the dimension draws stands in the drawing's own place.
    const Box box = m_boxes.back();
    shape.block = m_document.blocks.back().handle;
    shape.style = 0x27;
    see(box.x1, box.y1);
    see(box.x2, box.y2);
    add(shape);
}

void Draft::dimX(double x1, double y1, double x2, double y2, double at, const std::string& words)
{
    Dimension shape;
    shape.point13 = {x1, y1, 0};
    shape.point14 = {x2, y2, 0};
    shape.definitionPoint = {x2, at, 0};
    shape.textPosition = {(x1 + x2) / 2, at + noteHeight(), 0};
    shape.measurement = std::abs(x2 - x1);
    shape.text = wide(words);
    const std::string shown = words.empty() ? lengthText(shape.measurement) : words;
    const double gap = noteHeight() / 2;
    dimension(shape, [&] {
        const double side1 = at > y1 ? 1 : -1, side2 = at > y2 ? 1 : -1;
        line(x1, y1 + side1 * gap, x1, at + side1 * gap);
        line(x2, y2 + side2 * gap, x2, at + side2 * gap);
        // Arrows go outside where there is no room for them.
        const bool tight = shape.measurement < noteHeight() * 4;
        const double left = std::min(x1, x2), right = std::max(x1, x2), tail = noteHeight() * 2;
        line(tight ? left - tail : left, at, tight ? right + tail : right, at);
        arrow({left, at}, {tight ? left - tail : right, at});
        arrow({right, at}, {tight ? right + tail : left, at});
        text((x1 + x2) / 2, at + gap, shown, Align::Centre);
    });
}

void Draft::dimY(double x1, double y1, double x2, double y2, double at, const std::string& words)
{
    Dimension shape;
    shape.rotation = std::numbers::pi / 2;
    shape.point13 = {x1, y1, 0};
    shape.point14 = {x2, y2, 0};
    shape.definitionPoint = {at, y2, 0};
    shape.textPosition = {at - noteHeight(), (y1 + y2) / 2, 0};
    shape.measurement = std::abs(y2 - y1);
    shape.text = wide(words);
    const std::string shown = words.empty() ? lengthText(shape.measurement) : words;
    const double gap = noteHeight() / 2;
    dimension(shape, [&] {
        const double side1 = at > x1 ? 1 : -1, side2 = at > x2 ? 1 : -1;
        line(x1 + side1 * gap, y1, at + side1 * gap, y1);
        line(x2 + side2 * gap, y2, at + side2 * gap, y2);
        const bool tight = shape.measurement < noteHeight() * 4;
        const double low = std::min(y1, y2), high = std::max(y1, y2), tail = noteHeight() * 2;
        line(at, tight ? low - tail : low, at, tight ? high + tail : high);
        arrow({at, low}, {at, tight ? low - tail : high});
        arrow({at, high}, {at, tight ? high + tail : low});
        text(at - gap, (y1 + y2) / 2, shown, Align::Centre, 0, 90);
    });
}

void Draft::dimRadius(double x, double y, double radius, double angle)
{
    const double cosine = std::cos(angle * kDegree), sine = std::sin(angle * kDegree);
    Dimension shape;
    shape.type = 4;
    shape.definitionPoint = {x, y, 0};
    shape.point15 = {x + radius * cosine, y + radius * sine, 0};
    const double reach = radius + noteHeight() * 4;
    shape.textPosition = {x + reach * cosine, y + reach * sine, 0};
    shape.measurement = radius;
    dimension(shape, [&] {
        line(x, y, x + reach * cosine, y + reach * sine);
        arrow({shape.point15.x, shape.point15.y}, {x + reach * cosine, y + reach * sine});
        text(x + (reach + noteHeight()) * cosine, y + (reach + noteHeight()) * sine - noteHeight() / 2,
             "R" + lengthText(radius), cosine < 0 ? Align::Right : Align::Left);
    });
}

void Draft::dimDiameter(double x, double y, double radius, double angle)
{
    const double cosine = std::cos(angle * kDegree), sine = std::sin(angle * kDegree);
    Dimension shape;
    shape.type = 3;
    shape.definitionPoint = {x - radius * cosine, y - radius * sine, 0};
    shape.point15 = {x + radius * cosine, y + radius * sine, 0};
    const double reach = radius + noteHeight() * 3;
    shape.textPosition = {x + reach * cosine, y + reach * sine, 0};
    shape.measurement = radius * 2;
    dimension(shape, [&] {
        line(x - radius * cosine, y - radius * sine, x + reach * cosine, y + reach * sine);
        arrow({shape.point15.x, shape.point15.y}, {x, y});
        arrow({shape.definitionPoint.x, shape.definitionPoint.y}, {x, y});
        text(x + (reach + noteHeight()) * cosine, y + (reach + noteHeight()) * sine - noteHeight() / 2,
             "%%c" + lengthText(radius * 2), cosine < 0 ? Align::Right : Align::Left);
    });
}

} // namespace zv::samples
