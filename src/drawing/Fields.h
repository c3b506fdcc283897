#pragma once

#include "drawing/Document.h"

#include <type_traits>

/// The fields of every record of a drawing, once. `visit(fields, record)` tells `fields` each member of the
/// record with its kind; moving, taking over into another drawing, showing and comparing walk it, and so do
/// the reader and the writer for every record that a file holds in just these fields and this order. Each
/// visit takes its record apart by name, so a member that is added to a record does not compile until its
/// visit has it.
///
/// The kinds of field:
///   point, direction, vector    a place; an axis, which turns; an axis that turns and scales: in the world
///   inPlane, directionInPlane, vectorInPlane    the same in the plane of the entity (OCS)
///   extrusion, normal           that plane, as files pack it in one bit or in none
///   elevation                   how high above that plane's origin
///   length, thickness           a length; one that files pack in one bit
///   angle, turn, bearing        in the plane: 0 to a full turn; with its turns; from the world's x axis
///   mirroredTurn                the same as turn, clockwise
///   scale                       factors along the plane's axes
///   handle(value, Table)        another object of the drawing
///   text, number, value         words; a number that neither moves nor scales; all that is left
///   list(items, each)           any number of the same
///   part(record)                a record inside the record, with a plane of its own
///   placed(record)              a record in coordinates of its own, which a placement brings to the entity's
namespace zv::dwg {

/// What a handle leads to.
enum class Table { Itself, Layer, Linetype, TextStyle, DimensionStyle, MLineStyle, Block, Entity };

/// A record that is changed, or one that is only looked at.
template <class Type, class RecordType>
concept Of = std::is_same_v<std::remove_const_t<Type>, RecordType>;

/// Passes over every field; a walk that looks for some kinds only derives from it, and says what it does with
/// part and placed.
struct FieldsPassedOver {
    void point(auto&) const {}
    void direction(auto&) const {}
    void vector(auto&) const {}
    void inPlane(auto&) const {}
    void directionInPlane(auto&) const {}
    void vectorInPlane(auto&) const {}
    void extrusion(auto&) const {}
    void normal(auto&) const {}
    void elevation(auto&) const {}
    void length(auto&) const {}
    void thickness(auto&) const {}
    void angle(auto&) const {}
    void turn(auto&) const {}
    void mirroredTurn(auto&) const {}
    void bearing(auto&) const {}
    void scale(auto&) const {}
    void handle(auto&, Table) const {}
    void text(auto&) const {}
    void number(auto&) const {}
    void value(auto&) const {}
    void list(auto& items, auto each) const
    {
        for (auto& item : items)
            each(item);
    }
};

// ---- shapes

void visit(auto&&, Of<Unknown> auto&) {}

void visit(auto&& fields, Of<Line> auto& line)
{
    auto& [start, end, thickness, normal] = line;
    fields.point(start);
    fields.point(end);
    fields.thickness(thickness);
    fields.extrusion(normal);
}

void visit(auto&& fields, Of<PointShape> auto& shape)
{
    auto& [position, thickness, normal, xAxisAngle] = shape;
    fields.point(position);
    fields.thickness(thickness);
    fields.extrusion(normal);
    fields.bearing(xAxisAngle);
}

void visit(auto&& fields, Of<Circle> auto& circle)
{
    auto& [center, radius, thickness, normal] = circle;
    fields.inPlane(center);
    fields.length(radius);
    fields.thickness(thickness);
    fields.extrusion(normal);
}

void visit(auto&& fields, Of<Arc> auto& arc)
{
    auto& [center, radius, startAngle, endAngle, thickness, normal] = arc;
    fields.inPlane(center);
    fields.length(radius);
    fields.thickness(thickness);
    fields.extrusion(normal);
    fields.angle(startAngle);
    fields.angle(endAngle);
}

void visit(auto&& fields, Of<Ellipse> auto& ellipse)
{
    auto& [center, majorAxis, normal, axisRatio, startParameter, endParameter] = ellipse;
    fields.point(center);
    fields.vector(majorAxis);
    fields.normal(normal);
    fields.number(axisRatio);
    fields.number(startParameter);
    fields.number(endParameter);
}

void visit(auto&& fields, Of<Spline> auto& spline)
{
    auto& [degree, rational, closed, periodic, knots, controlPoints, weights, fitPoints, startTangent,
           endTangent] = spline;
    const auto point = [&](auto& item) { fields.point(item); };
    const auto number = [&](auto& item) { fields.number(item); };
    fields.value(degree);
    fields.value(rational);
    fields.value(closed);
    fields.value(periodic);
    fields.list(knots, number);
    fields.list(controlPoints, point);
    fields.list(weights, number);
    fields.list(fitPoints, point);
    fields.direction(startTangent);
    fields.direction(endTangent);
}

/// A vertex; in the world when `threeD`, else in the plane.
void visitVertex(auto&& fields, Of<PolylineVertex> auto& vertex, bool threeD)
{
    auto& [position, bulge, startWidth, endWidth, splineFrame] = vertex;
    if (threeD)
        fields.point(position);
    else
        fields.inPlane(position);
    fields.number(bulge);
    fields.length(startWidth);
    fields.length(endWidth);
    fields.value(splineFrame);
}

void visit(auto&& fields, Of<Polyline> auto& line)
{
    auto& [vertices, closed, threeD, lightweight, plinegen, constantWidth, elevation, thickness, normal] =
        line;
    fields.value(threeD);
    fields.value(lightweight);
    // A name of a binding cannot be used further in.
    const bool inSpace = threeD;
    fields.list(vertices, [&](auto& vertex) { visitVertex(fields, vertex, inSpace); });
    fields.value(closed);
    fields.value(plinegen);
    fields.length(constantWidth);
    fields.elevation(elevation);
    fields.thickness(thickness);
    fields.extrusion(normal);
}

void visit(auto&& fields, Of<Mesh> auto& mesh)
{
    auto& [vertices, m, n, closedM, closedN, faces] = mesh;
    fields.list(vertices, [&](auto& vertex) { fields.point(vertex); });
    fields.value(m);
    fields.value(n);
    fields.value(closedM);
    fields.value(closedN);
    fields.list(faces, [&](auto& face) {
        for (auto& corner : face)
            fields.value(corner);
    });
}

void visit(auto&& fields, Of<TextLine> auto& line)
{
    auto& [text, insertion, alignment, height, rotation, widthFactor, oblique, backward, upsideDown,
           horizontal, vertical, style, thickness, normal] = line;
    fields.inPlane(insertion);
    fields.inPlane(alignment);
    fields.extrusion(normal);
    fields.thickness(thickness);
    fields.number(oblique);
    fields.turn(rotation);
    fields.length(height);
    fields.number(widthFactor);
    fields.text(text);
    fields.value(backward);
    fields.value(upsideDown);
    fields.value(horizontal);
    fields.value(vertical);
    fields.handle(style, Table::TextStyle);
}

void visit(auto&& fields, Of<MText> auto& shape)
{
    auto& [text, insertion, xAxis, normal, height, width, attachment, direction, lineSpacing,
           lineSpacingStyle, backgroundFill, backgroundScale, backgroundColor, backgroundWindowColor,
           boxHeight, columns, columnWidth, columnGap, columnHeights, style] = shape;
    fields.point(insertion);
    fields.normal(normal);
    fields.direction(xAxis);
    fields.length(width);
    fields.length(boxHeight);
    fields.length(height);
    fields.value(attachment);
    fields.value(direction);
    fields.text(text);
    fields.handle(style, Table::TextStyle);
    fields.value(lineSpacingStyle);
    fields.number(lineSpacing);
    fields.value(backgroundFill);
    fields.value(backgroundWindowColor);
    fields.number(backgroundScale);
    fields.value(backgroundColor);
    fields.value(columns);
    fields.length(columnWidth);
    fields.length(columnGap);
    fields.list(columnHeights, [&](auto& columnHeight) { fields.length(columnHeight); });
}

void visit(auto&& fields, Of<Attribute> auto& attribute)
{
    auto& [text, tag, prompt, invisible, constant, verify, preset, lines] = attribute;
    fields.part(text);
    fields.list(lines, [&](auto& line) { fields.part(line); });
    fields.text(tag);
    fields.value(invisible);
    fields.value(constant);
    fields.value(verify);
    fields.value(preset);
    fields.text(prompt);
}

void visit(auto&& fields, Of<Insert> auto& insert)
{
    auto& [block, position, scale, rotation, normal, columns, rows, columnSpacing, rowSpacing, attributes] =
        insert;
    fields.inPlane(position);
    fields.scale(scale);
    fields.turn(rotation);
    fields.normal(normal);
    fields.value(columns);
    fields.value(rows);
    fields.length(columnSpacing);
    fields.length(rowSpacing);
    fields.handle(block, Table::Block);
    fields.list(attributes, [&](auto& index) { fields.value(index); });
}

void visit(auto&& fields, Of<Dimension> auto& dimension)
{
    auto& [block, insertion, type, text, definitionPoint, textPosition, point13, point14, point15, point16,
           rotation, measurement, style, normal] = dimension;
    fields.value(type);
    fields.normal(normal);
    fields.inPlane(textPosition);
    fields.text(text);
    fields.length(measurement);
    fields.inPlane(insertion);
    fields.point(definitionPoint);
    fields.point(point13);
    fields.point(point14);
    fields.point(point15);
    fields.point(point16);
    fields.turn(rotation);
    fields.handle(style, Table::DimensionStyle);
    fields.handle(block, Table::Block);
}

void visit(auto&& fields, Of<Solid> auto& solid)
{
    auto& [corners, trace, thickness, normal] = solid;
    fields.value(trace);
    fields.thickness(thickness);
    for (auto& corner : corners)
        fields.inPlane(corner);
    fields.extrusion(normal);
}

void visit(auto&& fields, Of<Face3D> auto& face)
{
    auto& [corners, hiddenEdges] = face;
    for (auto& corner : corners)
        fields.point(corner);
    fields.value(hiddenEdges);
}

void visit(auto&& fields, Of<Ray> auto& ray)
{
    auto& [start, direction, bothWays] = ray;
    fields.point(start);
    fields.direction(direction);
    fields.value(bothWays);
}

void visit(auto&& fields, Of<HatchEdge> auto& edge)
{
    auto& [kind, start, end, center, radius, majorAxis, axisRatio, startAngle, endAngle, counterClockwise,
           spline] = edge;
    auto& [degree, rational, closed, periodic, knots, controlPoints, weights, fitPoints, startTangent,
           endTangent] = spline;
    fields.value(kind);
    fields.value(counterClockwise);
    fields.inPlane(start);
    fields.inPlane(end);
    fields.inPlane(center);
    fields.length(radius);
    fields.vectorInPlane(majorAxis);
    fields.number(axisRatio);
    for (auto* angle : {&startAngle, &endAngle}) {
        // An ellipse's are told from its major axis.
        if (kind != HatchEdge::Kind::Arc)
            fields.number(*angle);
        else if (counterClockwise)
            fields.turn(*angle);
        else
            fields.mirroredTurn(*angle);
    }
    const auto inPlane = [&](auto& item) { fields.inPlane(item); };
    const auto number = [&](auto& item) { fields.number(item); };
    fields.value(degree);
    fields.value(rational);
    fields.value(closed);
    fields.value(periodic);
    fields.list(knots, number);
    fields.list(controlPoints, inPlane);
    fields.list(weights, number);
    fields.list(fitPoints, inPlane);
    fields.directionInPlane(startTangent);
    fields.directionInPlane(endTangent);
}

void visit(auto&& fields, Of<HatchLoop> auto& loop)
{
    auto& [flags, edges, polyline, closed] = loop;
    fields.value(flags);
    fields.list(edges, [&](auto& edge) { visit(fields, edge); });
    fields.list(polyline, [&](auto& vertex) { visitVertex(fields, vertex, false); });
    fields.value(closed);
}

void visit(auto&& fields, Of<HatchPatternLine> auto& line)
{
    auto& [angle, base, offset, dashes] = line;
    fields.turn(angle);
    fields.inPlane(base);
    fields.vectorInPlane(offset);
    fields.list(dashes, [&](auto& dash) { fields.length(dash); });
}

void visit(auto&& fields, Of<Hatch> auto& hatch)
{
    auto& [pattern, solid, gradient, gradientName, gradientColor1, gradientColor2, gradientOneColor,
           gradientAngle, gradientShift, gradientTint, style, angle, scale, doubled, elevation, normal, loops,
           lines] = hatch;
    fields.value(gradient);
    fields.number(gradientAngle);
    fields.number(gradientShift);
    fields.value(gradientOneColor);
    fields.number(gradientTint);
    fields.value(gradientColor1);
    fields.value(gradientColor2);
    fields.text(gradientName);
    fields.elevation(elevation);
    fields.normal(normal);
    fields.text(pattern);
    fields.value(solid);
    fields.list(loops, [&](auto& loop) { visit(fields, loop); });
    fields.value(style);
    fields.bearing(angle);
    fields.length(scale);
    fields.value(doubled);
    fields.list(lines, [&](auto& line) { visit(fields, line); });
}

void visit(auto&& fields, Of<MPolygon> auto& polygon)
{
    auto& [area, fill] = polygon;
    fields.part(area);
    fields.value(fill);
}

void visit(auto&& fields, Of<Leader> auto& leader)
{
    auto& [points, arrow, splined, style, normal] = leader;
    fields.value(splined);
    fields.list(points, [&](auto& point) { fields.point(point); });
    fields.normal(normal);
    fields.value(arrow);
    fields.handle(style, Table::DimensionStyle);
}

void visit(auto&& fields, Of<MultiLeader> auto& leader)
{
    auto& [lines, landings, arrowSize, hasText, textColor, text, block] = leader;
    const auto point = [&](auto& item) { fields.point(item); };
    fields.list(lines, [&](auto& line) { fields.list(line, point); });
    fields.list(landings, [&](auto& landing) {
        for (auto& end : landing)
            fields.point(end);
    });
    fields.length(arrowSize);
    fields.value(hasText);
    fields.value(textColor);
    fields.part(text);
    fields.part(block);
}

void visit(auto&& fields, Of<MLineVertex> auto& vertex)
{
    auto& [position, direction, miter, elements] = vertex;
    fields.point(position);
    fields.direction(direction);
    fields.direction(miter);
    fields.list(elements, [&](auto& element) {
        fields.list(element, [&](auto& distance) { fields.length(distance); });
    });
}

void visit(auto&& fields, Of<MLine> auto& line)
{
    auto& [style, scale, justification, normal, closed, noStartCap, noEndCap, vertices] = line;
    fields.length(scale);
    fields.value(justification);
    fields.normal(normal);
    fields.value(closed);
    fields.value(noStartCap);
    fields.value(noEndCap);
    fields.list(vertices, [&](auto& vertex) { visit(fields, vertex); });
    fields.handle(style, Table::MLineStyle);
}

void visit(auto&& fields, Of<Wipeout> auto& wipeout)
{
    auto& [insertion, uVector, vVector, pixels, clip, clipIsHole, image, frame, file] = wipeout;
    fields.point(insertion);
    fields.vector(uVector);
    fields.vector(vVector);
    fields.value(pixels);
    fields.list(clip, [&](auto& corner) { fields.value(corner); });
    fields.value(clipIsHole);
    fields.value(image);
    fields.value(frame);
    fields.text(file);
}

void visit(auto&& fields, Of<Viewport> auto& view)
{
    auto& [center, width, height, viewCenter, viewHeight, viewTarget, viewDirection, twist, flags, id, on,
           frozenLayers] = view;
    fields.point(center);
    fields.length(width);
    fields.length(height);
    // What it shows stands elsewhere, and stays.
    fields.value(viewTarget);
    fields.value(viewDirection);
    fields.number(twist);
    fields.number(viewHeight);
    fields.value(viewCenter);
    fields.value(flags);
    fields.value(id);
    fields.value(on);
    fields.list(frozenLayers, [&](auto& layer) { fields.handle(layer, Table::Layer); });
}

void visit(auto&& fields, Of<Shape> auto& shape)
{
    auto& [position, size, rotation, widthFactor, oblique, number, style, normal] = shape;
    fields.inPlane(position);
    fields.length(size);
    fields.turn(rotation);
    fields.number(widthFactor);
    fields.number(oblique);
    fields.value(number);
    fields.normal(normal);
    fields.handle(style, Table::TextStyle);
}

void visit(auto&& fields, Of<Tolerance> auto& tolerance)
{
    auto& [text, insertion, direction, normal, height, style] = tolerance;
    fields.length(height);
    fields.point(insertion);
    fields.direction(direction);
    fields.normal(normal);
    fields.text(text);
    fields.handle(style, Table::DimensionStyle);
}

void visit(auto&& fields, Of<Outline> auto& outline)
{
    auto& [rings, closed, filled] = outline;
    fields.list(rings, [&](auto& ring) { fields.list(ring, [&](auto& point) { fields.point(point); }); });
    fields.value(closed);
    fields.value(filled);
}

void visit(auto&& fields, Of<Placement> auto& place)
{
    auto& [x, y, z, origin] = place;
    fields.vector(x);
    fields.vector(y);
    fields.vector(z);
    fields.point(origin);
}

void visit(auto&& fields, Of<PictureFigure> auto& figure)
{
    auto& [shape, place, layer, color, linetype, linetypeScale, lineweight] = figure;
    std::visit([&](auto& inside) { fields.placed(inside); }, shape);
    visit(fields, place);
    fields.handle(layer, Table::Layer);
    fields.value(color);
    fields.handle(linetype, Table::Linetype);
    fields.number(linetypeScale);
    fields.value(lineweight);
}

void visit(auto&& fields, Of<StoredPicture> auto& picture)
{
    auto& [figures] = picture;
    fields.list(figures, [&](auto& figure) { visit(fields, figure); });
}

void visit(auto&& fields, Of<Entity> auto& entity)
{
    auto& [handle, kind, layer, color, linetype, linetypeScale, lineweight, invisible, alpha, geometry] =
        entity;
    fields.handle(handle, Table::Itself);
    fields.value(kind);
    fields.handle(layer, Table::Layer);
    fields.value(color);
    fields.handle(linetype, Table::Linetype);
    fields.number(linetypeScale);
    fields.value(lineweight);
    fields.value(invisible);
    fields.value(alpha);
    std::visit([&](auto& shape) { fields.part(shape); }, geometry);
}

// ---- tables

void visit(auto&& fields, Of<Layer> auto& layer)
{
    auto& [handle, name, color, linetype, lineweight, off, frozen, locked, plotted, alpha, xref] = layer;
    fields.handle(handle, Table::Itself);
    fields.text(name);
    fields.value(xref);
    fields.value(frozen);
    fields.value(off);
    fields.value(locked);
    fields.value(plotted);
    fields.value(lineweight);
    fields.value(color);
    fields.handle(linetype, Table::Linetype);
    fields.value(alpha);
}

void visit(auto&& fields, Of<LinetypeDash> auto& dash)
{
    auto& [length, text, shape, style, scale, rotation, offset, absoluteRotation] = dash;
    fields.number(length);
    fields.value(shape);
    fields.value(offset);
    fields.number(scale);
    fields.number(rotation);
    fields.value(absoluteRotation);
    fields.text(text);
    fields.handle(style, Table::TextStyle);
}

void visit(auto&& fields, Of<Linetype> auto& linetype)
{
    auto& [handle, name, description, patternLength, dashes] = linetype;
    fields.handle(handle, Table::Itself);
    fields.text(name);
    fields.text(description);
    fields.number(patternLength);
    fields.list(dashes, [&](auto& dash) { visit(fields, dash); });
}

void visit(auto&& fields, Of<TextStyle> auto& style)
{
    auto& [handle, name, font, bigFont, typeface, bold, italic, shapeFile, vertical, backward, upsideDown,
           height, widthFactor, oblique] = style;
    fields.handle(handle, Table::Itself);
    fields.text(name);
    fields.value(shapeFile);
    fields.value(vertical);
    fields.number(height);
    fields.number(widthFactor);
    fields.number(oblique);
    fields.value(backward);
    fields.value(upsideDown);
    fields.text(font);
    fields.text(bigFont);
    fields.text(typeface);
    fields.value(bold);
    fields.value(italic);
}

void visit(auto&& fields, Of<DimensionStyle> auto& style)
{
    auto& [handle, name, scale, arrowSize, textHeight, textStyle] = style;
    fields.handle(handle, Table::Itself);
    fields.text(name);
    fields.number(scale);
    fields.number(arrowSize);
    fields.number(textHeight);
    fields.handle(textStyle, Table::TextStyle);
}

void visit(auto&& fields, Of<MLineStyleElement> auto& element)
{
    auto& [offset, color, linetype] = element;
    fields.number(offset);
    fields.value(color);
    fields.handle(linetype, Table::Linetype);
}

void visit(auto&& fields, Of<MLineStyle> auto& style)
{
    auto& [handle, name, flags, fill, startAngle, endAngle, elements] = style;
    fields.handle(handle, Table::Itself);
    fields.text(name);
    fields.value(flags);
    fields.value(fill);
    fields.number(startAngle);
    fields.number(endAngle);
    fields.list(elements, [&](auto& element) { visit(fields, element); });
}

void visit(auto&& fields, Of<BlockRecord> auto& block)
{
    auto& [handle, name, base, layout, anonymous, xref, xrefOverlay, xrefPath, description, units, entities,
           attributes] = block;
    const auto entity = [&](auto& item) { visit(fields, item); };
    fields.handle(handle, Table::Itself);
    fields.text(name);
    fields.value(anonymous);
    fields.value(layout);
    fields.value(xref);
    fields.value(xrefOverlay);
    fields.value(base);
    fields.text(xrefPath);
    fields.text(description);
    fields.value(units);
    fields.list(entities, entity);
    fields.list(attributes, entity);
}

void visit(auto&& fields, Of<Layout> auto& layout)
{
    auto& [handle, name, block, tabOrder, model, paperWidth, paperHeight, limitsMin, limitsMax, extentsMin,
           extentsMax] = layout;
    fields.handle(handle, Table::Itself);
    fields.number(paperWidth);
    fields.number(paperHeight);
    fields.text(name);
    fields.value(tabOrder);
    fields.value(model);
    fields.value(limitsMin);
    fields.value(limitsMax);
    fields.value(extentsMin);
    fields.value(extentsMax);
    fields.handle(block, Table::Block);
}

// ---- the drawing's own

void visit(auto&& fields, Of<HeaderVariables> auto& header)
{
    auto& [insertionBase, extentsMin, extentsMax, limitsMin, limitsMax, linetypeScale,
           currentEntityLinetypeScale, pointSize, pointMode, textSize, dimScale, insertionUnits, measurement,
           fillMode, mirrorText, quickText, lineweightDisplay, paperSpaceLinetypeScaling, modelTab,
           currentLayer, currentTextStyle, currentDimensionStyle, handleSeed] = header;
    for (auto* flag :
         {&fillMode, &mirrorText, &quickText, &lineweightDisplay, &paperSpaceLinetypeScaling, &modelTab})
        fields.value(*flag);
    for (auto* number : {&pointMode, &insertionUnits, &measurement})
        fields.value(*number);
    for (auto* number : {&linetypeScale, &currentEntityLinetypeScale, &pointSize, &textSize, &dimScale})
        fields.number(*number);
    for (auto* corner : {&insertionBase, &extentsMin, &extentsMax})
        fields.value(*corner);
    fields.value(limitsMin);
    fields.value(limitsMax);
    fields.handle(currentLayer, Table::Layer);
    fields.handle(currentTextStyle, Table::TextStyle);
    fields.handle(currentDimensionStyle, Table::DimensionStyle);
    fields.handle(handleSeed, Table::Itself);
}

void visit(auto&& fields, Of<Properties> auto& properties)
{
    auto& [title, subject, author, comments, keywords, lastSavedBy, revision, hyperlinkBase, custom] =
        properties;
    for (auto* text :
         {&title, &subject, &author, &keywords, &comments, &lastSavedBy, &revision, &hyperlinkBase})
        fields.text(*text);
    fields.list(custom, [&](auto& property) {
        fields.text(property.first);
        fields.text(property.second);
    });
}

} // namespace zv::dwg
