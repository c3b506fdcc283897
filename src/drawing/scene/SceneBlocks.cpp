#include "drawing/scene/SceneParts.h"
#include "platform/Text.h"

namespace zv::dwg {

void SceneParts::draw(const Insert& insert, const Look& look)
{
    const BlockRecord* block = m_document.block(insert.block);
    if (!block || block->layout || look.frame.inside(*block)) {
        drawAttributes(insert, look);
        return;
    }
    const Matrix placed = look.frame.map.of(ocsMatrix(insert.normal))
                              .of(Matrix::translation(insert.position))
                              .of(Matrix::rotationZ(std::isfinite(insert.rotation) ? insert.rotation : 0));
    const Matrix inner = Matrix::scaling(insert.scale).of(Matrix::translation(block->base * -1.0));
    Frame frame;
    frame.layer = look.layer;
    frame.color = look.color;
    frame.lineweight = look.pen.lineweight;
    frame.linetype = look.pen.linetype;
    frame.depth = look.frame.depth + 1;
    frame.dimension = look.frame.dimension;
    frame.block = block;
    frame.outer = &look.frame;
    const double size = std::max(std::abs(insert.scale.x), std::abs(insert.scale.y));
    frame.dashScale = look.frame.dashScale * (size > 0 && std::isfinite(size) ? size : 1);
    const int columns = std::max(insert.columns, 1), rows = std::max(insert.rows, 1);
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            if (m_left == 0 || m_ink.full()) {
                m_scene.complete = false;
                return;
            }
            --m_left;
            frame.map =
                placed.of(Matrix::translation({column * insert.columnSpacing, row * insert.rowSpacing, 0}))
                    .of(inner);
            drawBlock(*block, frame);
        }
    drawAttributes(insert, look);
}

void SceneParts::drawAttributes(const Insert& insert, const Look& look)
{
    for (const std::uint32_t index : insert.attributes) {
        if (m_left == 0)
            return;
        if (index < look.owner->attributes.size())
            drawEntity(look.owner->attributes[index], *look.owner, look.frame);
    }
}

void SceneParts::draw(const Dimension& dimension, const Look& look)
{
    const BlockRecord* block = m_document.block(dimension.block);
    if (!block || block->layout || block->entities.empty() || look.frame.inside(*block)) {
        measuredLine(dimension, look);
        return;
    }
    Frame frame = look.frame;
    frame.layer = look.layer;
    frame.color = look.color;
    frame.lineweight = look.pen.lineweight;
    frame.linetype = look.pen.linetype;
    frame.depth = look.frame.depth + 1;
    frame.dimension = true;
    frame.block = block;
    frame.outer = &look.frame;
    frame.map = look.frame.map.of(Matrix::translation(dimension.insertion));
    drawBlock(*block, frame);
}

/// A dimension whose block is missing is drawn plainly: its lines and its text.
void SceneParts::measuredLine(const Dimension& dimension, const Look& look)
{
    const Matrix ocs = ocsMatrix(dimension.normal);
    std::vector<Point3> ends{dimension.point13, dimension.point14};
    double measured = dimension.measurement;
    Path path;
    const auto line = [&](Point3 a, Point3 b) {
        path.moveTo(flat(look.frame.map.point(a)));
        path.lineTo(flat(look.frame.map.point(b)));
    };
    if (dimension.type == 0 || dimension.type == 1) {
        Point3 along = unit(ocs.vector({std::cos(dimension.rotation), std::sin(dimension.rotation), 0}));
        if (dimension.type == 1)
            along = unit(dimension.point14 - dimension.point13, along);
        std::vector<Point3> feet;
        for (const Point3& end : ends) {
            feet.push_back(dimension.definitionPoint + along * dot(end - dimension.definitionPoint, along));
            line(end, feet.back());
        }
        line(feet[0], feet[1]);
        if (measured == 0)
            measured = length(feet[1] - feet[0]);
    } else if (dimension.type == 3 || dimension.type == 4) {
        line(dimension.definitionPoint, dimension.point15);
        if (measured == 0)
            measured = length(dimension.definitionPoint - dimension.point15);
    } else {
        return;
    }
    m_ink.stroke(path, look.pen);
    MText text;
    text.height = 0.18;
    text.style = m_document.header.currentTextStyle;
    if (const DimensionStyle* style = dimensionStyle(dimension.style)) {
        text.height = style->textHeight * (style->scale > 0 ? style->scale : 1);
        text.style = style->textStyle;
    }
    text.text = dimension.text.empty() || dimension.text == u"<>"
                    ? fromUtf8(numberText(std::round(measured * 1e4) / 1e4))
                    : dimension.text;
    text.attachment = 5;
    text.insertion = ocs.point(dimension.textPosition);
    text.normal = dimension.normal;
    drawMText(text, look.frame.map, look);
}

} // namespace zv::dwg
