#include "drawing/scene/HatchLoops.h"
#include "drawing/scene/SceneParts.h"

namespace zv::dwg {

namespace {

/// The colour mixed with white above a tint of a half, with black below.
std::uint32_t tinted(std::uint32_t rgb, double tint)
{
    const double light = std::clamp(tint, 0.0, 1.0) * 2 - 1;
    std::uint32_t out = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const double value = rgb >> shift & 0xff;
        const double mixed = light > 0 ? value + (255 - value) * light : value * (1 + light);
        out |= static_cast<std::uint32_t>(mixed) << shift;
    }
    return out;
}

void addRing(Path& path, const std::vector<Point2>& corners)
{
    for (std::size_t i = 0; i < corners.size(); ++i)
        i == 0 ? path.moveTo(corners[i]) : path.lineTo(corners[i]);
    if (!corners.empty())
        path.close(corners.front());
}

} // namespace

void SceneParts::drawGradient(const Hatch& hatch, const Path& area, const Look& look)
{
    SceneColor from = resolve(hatch.gradientColor1, look.layer, look.frame, look.entity.alpha);
    SceneColor to = resolve(hatch.gradientColor2, look.layer, look.frame, look.entity.alpha);
    if (hatch.gradientOneColor)
        to.rgb = tinted(from.rgb, hatch.gradientTint);
    std::u16string_view name = hatch.gradientName;
    if (name.starts_with(u"INV")) {
        std::swap(from, to);
        name.remove_prefix(3);
    }
    GradientForm form = GradientForm::Linear;
    for (const auto& [known, shape] :
         {std::pair{u"CYLINDER", GradientForm::Cylinder}, std::pair{u"SPHERICAL", GradientForm::Sphere},
          std::pair{u"HEMISPHERICAL", GradientForm::Hemisphere}, std::pair{u"CURVED", GradientForm::Curved}})
        if (name == known)
            form = shape;
    m_ink.gradient(area, from, to, hatch.gradientAngle, form);
}

void SceneParts::draw(const Hatch& hatch, const Look& look)
{
    Matrix map = look.frame.map.of(ocsMatrix(hatch.normal));
    map = map.of(Matrix::translation({0, 0, hatch.elevation}));
    const Path area = hatchArea(hatch, m_hatchWork);
    if (area.elements.empty())
        return;
    if (hatch.gradient) {
        drawGradient(hatch, mapped(area, map), look);
        return;
    }
    if (hatch.solid || hatch.lines.empty()) {
        if (m_document.header.fillMode && hatch.solid)
            m_ink.fill(mapped(area, map), look.color);
        else
            m_ink.stroke(mapped(area, map), look.pen);
        return;
    }
    bool complete = true;
    const Path lines = hatchLines(hatch, area, complete, m_hatchWork);
    if (!complete) {
        // So dense a pattern is seen as a tone.
        SceneColor tone = look.color;
        tone.alpha = static_cast<std::uint8_t>(tone.alpha / 2);
        m_ink.fill(mapped(area, map), tone);
    } else if (!lines.elements.empty()) {
        Pen pen = look.pen;
        pen.linetype = nullptr;
        m_ink.stroke(mapped(lines, map), pen);
    }
}

void SceneParts::draw(const MPolygon& polygon, const Look& look)
{
    Look inside = look;
    inside.color = resolve(polygon.fill, look.layer, look.frame, look.entity.alpha);
    inside.pen.color = inside.color;
    const Hatch& area = polygon.area;
    // Without a pattern there is nothing inside.
    if (area.solid || area.gradient || !area.lines.empty())
        draw(area, inside);
    for (const HatchLoop& loop : area.loops) {
        Polyline line;
        line.vertices = loop.polyline;
        line.closed = loop.closed;
        line.elevation = area.elevation;
        line.normal = area.normal;
        draw(line, look);
    }
}

void SceneParts::draw(const Wipeout& wipeout, const Look& look)
{
    const auto at = [&](double x, double y) {
        // Rows of pixels run downwards from the upper edge.
        return flat(look.frame.map.point(wipeout.insertion + wipeout.uVector * (x + 0.5) +
                                         wipeout.vVector * (wipeout.pixels.y - y - 0.5)));
    };
    std::vector<Point2> corners;
    const double right = wipeout.pixels.x - 0.5, bottom = wipeout.pixels.y - 0.5;
    if (wipeout.clip.size() == 2) {
        const Point2 a = wipeout.clip[0], b = wipeout.clip[1];
        corners = {at(a.x, a.y), at(b.x, a.y), at(b.x, b.y), at(a.x, b.y)};
    } else if (wipeout.clip.size() > 2) {
        for (const Point2 p : wipeout.clip)
            corners.push_back(at(p.x, p.y));
    } else {
        corners = {at(-0.5, -0.5), at(right, -0.5), at(right, bottom), at(-0.5, bottom)};
    }
    Path path;
    addRing(path, corners);
    Path area = path;
    if (wipeout.clipIsHole && !wipeout.clip.empty())
        addRing(area, {at(-0.5, -0.5), at(right, -0.5), at(right, bottom), at(-0.5, bottom)});
    if (!wipeout.image) {
        m_ink.mask(area);
    } else if (wipeout.frame && !wipeout.file.empty()) {
        const Point2 topLeft = at(-0.5, -0.5);
        m_ink.image(area, {wipeout.file,
                           Affine::placed(topLeft, at(right, -0.5) - topLeft, at(-0.5, bottom) - topLeft),
                           nullptr});
    }
    if (wipeout.frame || wipeout.image)
        m_ink.stroke(path, {look.color, look.pen.lineweight, nullptr, 1, false});
}

} // namespace zv::dwg
