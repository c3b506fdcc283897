#pragma once

#include "drawing/Document.h"

#include <functional>
#include <string>
#include <vector>

namespace zv::samples {

using dwg::Point2;

enum class Units { Inches, Millimetres };

/// A shape's outline: corners with the bulge of the side that follows.
struct Corner {
    double x = 0, y = 0, bulge = 0;
};
using Outline = std::vector<Corner>;

Outline rectangle(double x, double y, double width, double height);
Outline ring(double x, double y, double radius);

/// Fills of cut materials.
enum class Fill { Solid, Steel, Concrete, Earth, Gravel, Insulation, Wood, Glass, Brick, Grass };

enum class Align { Left, Centre, Right };

/// Draws one drawing in real units. Lengths are drawing units, angles degrees counter-clockwise. Sizes of
/// texts and arrows are those of the printed sheet, so that they follow the drawing's scale.
class Draft {
public:
    /// `scale` is how many units of the drawing one of the sheet stands for: 48 is a quarter inch to the
    /// foot.
    Draft(Units units, double scale);

    /// The layer for what follows; it is made at its first use. `color` is an AutoCAD colour index.
    Draft& on(const std::string& layer, int color = 7, const std::string& linetype = {}, int lineweight = -3);

    void line(double x1, double y1, double x2, double y2);
    void lines(const std::vector<Point2>& points, bool closed = false);
    void outline(const Outline& outline, bool closed = true, double width = 0);
    void rect(double x, double y, double width, double height) { outline(rectangle(x, y, width, height)); }
    void circle(double x, double y, double radius);
    void arc(double x, double y, double radius, double from, double to);
    void ellipse(double x, double y, double halfWidth, double halfHeight, double from = 0, double to = 360);
    void spline(const std::vector<Point2>& points);
    void disc(double x, double y, double radius);
    void fill(Fill fill, const std::vector<Outline>& loops, double factor = 1);
    void solid(const std::vector<Point2>& corners);
    void mask(double x, double y, double width, double height);

    /// Height in sheet units; 0 is the note height, 3/32 inch or 2.5 mm.
    void text(double x, double y, const std::string& words, Align align = Align::Left, double height = 0,
              double angle = 0);
    /// Text centred on the point both ways, its height in drawing units.
    void letters(double x, double y, double height, const std::string& words);
    /// Several lines in one object, wrapped to `width`.
    void note(double x, double y, double width, const std::string& words);
    /// An arrow to the first point, and words at the end of its line.
    void leader(const std::vector<Point2>& points, const std::string& words);

    /// Dimensions: along x or y between two points, the line at `at`; from point to point at a distance.
    void dimX(double x1, double y1, double x2, double y2, double at, const std::string& words = {});
    void dimY(double x1, double y1, double x2, double y2, double at, const std::string& words = {});
    void dimRadius(double x, double y, double radius, double angle);
    void dimDiameter(double x, double y, double radius, double angle);

    /// A block, drawn by `draw` around its own origin; drawn once under each name.
    void block(const std::string& name, const std::function<void()>& draw);
    void insert(const std::string& name, double x, double y, double angle = 0, double scaleX = 1,
                double scaleY = 1);
    /// The insert that follows gets these values of attributes, each at a place of the block.
    void attribute(const std::string& tag, const std::string& value, double x, double y, double height);

    double paper(double length) const { return length * m_scale; }
    double noteHeight() const;
    Units units() const { return m_units; }
    double scale() const { return m_scale; }

    /// The drawing, with its extents told.
    dwg::Document document() const;

private:
    struct Box {
        double x1 = 1e20, y1 = 1e20, x2 = -1e20, y2 = -1e20;
    };

    void add(dwg::Geometry geometry);
    void see(double x, double y);
    void seeInsert(Box box, const dwg::Insert& insert);
    dwg::Handle give() { return m_next++; }
    dwg::Handle linetype(const std::string& name);
    std::string lengthText(double length) const;
    void dimension(dwg::Dimension dimension, const std::function<void()>& draw);
    void arrow(Point2 tip, Point2 from);

    Units m_units;
    double m_scale;
    dwg::Document m_document;
    dwg::Handle m_next = 0x30;
    dwg::Handle m_layer = 0;
    std::vector<std::size_t> m_blocks{0}; ///< The block being drawn is the last one.
    std::vector<Box> m_boxes;             ///< Beside the document's blocks.
    std::vector<dwg::Entity> m_pendingAttributes;
    int m_dimensions = 0;
};

} // namespace zv::samples
