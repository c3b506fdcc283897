#pragma once

#include <QBrush>
#include <QByteArray>
#include <QIcon>
#include <QPainterPath>
#include <QPen>
#include <QRectF>

#include <vector>

class QPainter;

namespace zv {

/// A picture of outlines and areas, read from an SVG file. Of that format it knows what the program's own
/// pictures are made of: groups, rectangles with round corners, circles, paths of the absolute commands M, L,
/// H, V, C, Q and Z, and on each of them a plain fill, and a stroke with its width, caps and joins. It stands
/// in for Qt's reader of the whole format, so that the program runs where only Qt's base is at hand.
class VectorPicture {
public:
    /// Empty when the text is no such picture or holds anything else that could be seen.
    explicit VectorPicture(const QByteArray& svg);

    bool isEmpty() const { return m_shapes.empty(); }
    /// What the picture shows, in its own units.
    QRectF box() const { return m_box; }
    /// Paints it so that its box fills `place`.
    void paint(QPainter& painter, const QRectF& place) const;

private:
    struct Shape {
        QPainterPath path;
        QBrush fill;
        QPen stroke;
    };
    QRectF m_box;
    std::vector<Shape> m_shapes;
};

/// A square picture in the sizes that a window's icon is asked for; a null icon when the file cannot be read.
QIcon vectorIcon(const QString& file);

} // namespace zv
