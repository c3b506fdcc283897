#include "drawing/Describe.h"

#include "platform/Text.h"

#include <sstream>

namespace zv::dwg::test {

namespace {
/// Collects values, each behind a blank.
class Words {
public:
    Words& add(double value)
    {
        m_out << ' ' << value;
        return *this;
    }
    Words& add(const Point2& p) { return add(p.x).add(p.y); }
    Words& add(const Point3& p) { return add(p.x).add(p.y).add(p.z); }
    Words& add(const Text& text)
    {
        m_out << " '" << toUtf8(text) << '\'';
        return *this;
    }
    template <class Item> Words& all(const std::vector<Item>& items)
    {
        m_out << " [" << items.size();
        for (const Item& item : items)
            add(item);
        m_out << ']';
        return *this;
    }
    Words& add(const PolylineVertex& v)
    {
        return add(v.position).add(v.bulge).add(v.startWidth).add(v.endWidth).add(v.splineFrame);
    }
    Words& add(const HatchEdge& e)
    {
        return add(static_cast<int>(e.kind))
            .add(e.start)
            .add(e.end)
            .add(e.center)
            .add(e.radius)
            .add(e.majorAxis)
            .add(e.axisRatio)
            .add(e.startAngle)
            .add(e.endAngle)
            .add(e.counterClockwise);
    }
    Words& add(const HatchLoop& l) { return add(l.flags).all(l.edges).all(l.polyline).add(l.closed); }
    Words& add(const HatchPatternLine& l) { return add(l.angle).add(l.base).add(l.offset).all(l.dashes); }
    Words& add(const std::array<int, 4>& face) { return add(face[0]).add(face[1]).add(face[2]).add(face[3]); }

    Words& add(const TextLine& t)
    {
        add(t.text).add(t.insertion);
        if (t.horizontal != HorizontalAlign::Left || t.vertical != VerticalAlign::Baseline)
            add(t.alignment);
        return add(t.height)
            .add(t.rotation)
            .add(t.widthFactor)
            .add(t.oblique)
            .add(t.backward)
            .add(t.upsideDown)
            .add(static_cast<int>(t.horizontal))
            .add(static_cast<int>(t.vertical))
            .add(t.thickness)
            .add(t.normal);
    }

    void shape(const Unknown&) {}
    void shape(const MPolygon& polygon) { shape(polygon.area); }
    void shape(const StoredPicture& picture) { add(picture.figures.size()); }
    void shape(const Line& l) { add(l.start).add(l.end).add(l.thickness).add(l.normal); }
    void shape(const PointShape& p) { add(p.position).add(p.thickness).add(p.normal).add(p.xAxisAngle); }
    void shape(const Circle& c) { add(c.center).add(c.radius).add(c.thickness).add(c.normal); }
    void shape(const Arc& a)
    {
        add(a.center).add(a.radius).add(a.startAngle).add(a.endAngle).add(a.thickness).add(a.normal);
    }
    void shape(const Ellipse& e)
    {
        add(e.center)
            .add(e.majorAxis)
            .add(e.normal)
            .add(e.axisRatio)
            .add(e.startParameter)
            .add(e.endParameter);
    }
    void shape(const Spline& s)
    {
        add(s.degree)
            .add(s.rational)
            .add(s.closed)
            .add(s.periodic)
            .all(s.knots)
            .all(s.controlPoints)
            .all(s.weights)
            .all(s.fitPoints)
            .add(s.startTangent)
            .add(s.endTangent);
    }
    void shape(const Polyline& p)
    {
        all(p.vertices)
            .add(p.closed)
            .add(p.threeD)
            .add(p.lightweight)
            .add(p.plinegen)
            .add(p.constantWidth)
            .add(p.elevation)
            .add(p.thickness)
            .add(p.normal);
    }
    void shape(const Mesh& m)
    {
        all(m.vertices).add(m.m).add(m.n).add(m.closedM).add(m.closedN).all(m.faces);
    }
    void shape(const TextLine& t) { add(t); }
    void shape(const Attribute& a)
    {
        add(a.text).add(a.tag).add(a.prompt).add(a.invisible).add(a.constant).add(a.verify).add(a.preset);
    }
    void shape(const MText& t)
    {
        add(t.text)
            .add(t.insertion)
            .add(t.xAxis)
            .add(t.normal)
            .add(t.height)
            .add(t.width)
            .add(t.attachment)
            .add(t.direction)
            .add(t.lineSpacing)
            .add(t.lineSpacingStyle);
    }
    void shape(const Insert& i)
    {
        add(static_cast<double>(i.block))
            .add(i.position)
            .add(i.scale)
            .add(i.rotation)
            .add(i.normal)
            .add(i.columns)
            .add(i.rows)
            .add(i.columnSpacing)
            .add(i.rowSpacing)
            .add(static_cast<double>(i.attributes.size()));
    }
    void shape(const Dimension& d)
    {
        add(static_cast<double>(d.block))
            .add(d.type)
            .add(d.text)
            .add(d.definitionPoint)
            .add(d.textPosition)
            .add(d.measurement)
            .add(d.normal);
        if (d.type != 3 && d.type != 4)
            add(d.point13).add(d.point14);
        if (d.type >= 2 && d.type <= 5)
            add(d.point15);
        if (d.type == 2)
            add(d.point16);
        if (d.type == 0)
            add(d.rotation);
    }
    void shape(const Solid& s)
    {
        for (const Point3& corner : s.corners)
            add(corner);
        add(s.trace).add(s.thickness).add(s.normal);
    }
    void shape(const Face3D& f)
    {
        for (const Point3& corner : f.corners)
            add(corner);
        add(f.hiddenEdges);
    }
    void shape(const Ray& r) { add(r.start).add(r.direction).add(r.bothWays); }
    void shape(const Hatch& h)
    {
        add(h.pattern).add(h.solid).add(h.gradient).add(h.style).add(h.elevation).add(h.normal).all(h.loops);
        if (!h.solid)
            add(h.angle).add(h.scale).add(h.doubled).all(h.lines);
    }
    void shape(const Leader& l) { all(l.points).add(l.arrow).add(l.splined).add(l.normal); }
    void shape(const MultiLeader&) {}
    void shape(const MLine& m)
    {
        add(m.scale).add(m.justification).add(m.normal).add(m.closed).add(m.noStartCap).add(m.noEndCap);
        for (const MLineVertex& vertex : m.vertices) {
            add(vertex.position).add(vertex.direction).add(vertex.miter);
            for (const auto& element : vertex.elements)
                all(element);
        }
    }
    void shape(const Wipeout& w)
    {
        add(w.insertion).add(w.uVector).add(w.vVector).add(w.pixels).all(w.clip).add(w.image).add(w.frame);
    }
    void shape(const Viewport& v)
    {
        add(v.center)
            .add(v.width)
            .add(v.height)
            .add(v.viewCenter)
            .add(v.viewHeight)
            .add(v.viewTarget)
            .add(v.viewDirection)
            .add(v.twist);
    }
    void shape(const Shape& s)
    {
        add(s.position)
            .add(s.size)
            .add(s.rotation)
            .add(s.widthFactor)
            .add(s.oblique)
            .add(s.number)
            .add(s.normal);
    }
    void shape(const Tolerance& t) { add(t.text).add(t.insertion).add(t.direction).add(t.normal); }

    std::string text() const { return m_out.str(); }

private:
    std::ostringstream m_out;
};
} // namespace

std::string describe(const Geometry& geometry)
{
    Words words;
    std::visit([&](const auto& shape) { words.shape(shape); }, geometry);
    return std::to_string(geometry.index()) + words.text();
}

} // namespace zv::dwg::test
