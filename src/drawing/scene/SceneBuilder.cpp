#include "drawing/scene/SceneBuilder.h"

#include "drawing/ColorTable.h"
#include "drawing/scene/SceneParts.h"

namespace zv::dwg {

namespace {

/// Entities that one scene may come to, long ones counting more, repeated blocks each time.
constexpr std::size_t kMostWork = 3'000'000;
constexpr int kDeepestBlock = 24;
constexpr int kDefaultLineweight = 25;

template <class T>
const T* find(Handle handle, const std::unordered_map<Handle, std::size_t>& index, const std::vector<T>& all)
{
    const auto found = index.find(handle);
    return found == index.end() || found->second >= all.size() ? nullptr : &all[found->second];
}

bool sameName(const Text& name, std::u16string_view wanted)
{
    return name.size() == wanted.size() &&
           std::equal(name.begin(), name.end(), wanted.begin(), [](char16_t a, char16_t b) {
               return (a >= u'A' && a <= u'Z' ? a - u'A' + u'a' : a) == b;
           });
}

} // namespace

namespace {

/// How much longer than a line an entity takes to draw.
struct Cost {
    std::size_t operator()(const Spline& s) const
    {
        return s.controlPoints.size() * 4 + s.knots.size() + s.fitPoints.size() * 12;
    }
    std::size_t operator()(const Polyline& p) const { return p.vertices.size(); }
    std::size_t operator()(const Mesh& m) const { return m.vertices.size() + m.faces.size() * 4; }
    std::size_t operator()(const TextLine& t) const { return t.text.size(); }
    std::size_t operator()(const Attribute& a) const { return a.text.text.size() + a.tag.size(); }
    std::size_t operator()(const MText& t) const { return t.text.size() * 2; }
    std::size_t operator()(const Tolerance& t) const { return t.text.size() * 2; }
    std::size_t operator()(const Leader& l) const { return l.points.size() * 12; }
    std::size_t operator()(const MLine& l) const
    {
        return l.vertices.size() * (l.vertices.empty() ? 0 : l.vertices.front().elements.size() + 1);
    }
    std::size_t operator()(const MultiLeader& l) const
    {
        std::size_t points = l.text.text.size();
        for (const auto& line : l.lines)
            points += line.size();
        return points;
    }
    std::size_t operator()(const Outline& o) const
    {
        std::size_t points = o.rings.size();
        for (const auto& ring : o.rings)
            points += ring.size();
        return points;
    }
    std::size_t operator()(const StoredPicture& p) const
    {
        std::size_t sum = 0;
        for (const PictureFigure& figure : p.figures)
            sum += 1 + std::visit(*this, figure.shape);
        return sum;
    }
    std::size_t operator()(const Wipeout& w) const { return w.clip.size(); }
    std::size_t operator()(const Hatch& h) const
    {
        std::size_t edges = 0;
        for (const HatchLoop& loop : h.loops) {
            edges += (loop.edges.size() + loop.polyline.size()) * (8 + h.lines.size());
            for (const HatchEdge& edge : loop.edges)
                edges += edge.spline.controlPoints.size() * 16 + edge.spline.knots.size();
        }
        return edges;
    }
    std::size_t operator()(const MPolygon& p) const { return (*this)(p.area); }
    template <class Other> std::size_t operator()(const Other&) const { return 0; }
};

} // namespace

Path mapped(const Path& path, const Matrix& map)
{
    Path out = path;
    for (PathElement& e : out.elements)
        e.to = flat(map.point(lift(e.to)));
    for (PathArc& arc : out.arcs) {
        arc.center = flat(map.point(lift(arc.center)));
        arc.u = flat(map.vector(lift(arc.u)));
        arc.v = flat(map.vector(lift(arc.v)));
    }
    return out;
}

Scene buildScene(const Document& document, FontProvider& fonts, const SceneOptions& options)
{
    Scene scene;
    SceneParts(document, fonts, options, scene).build();
    return scene;
}

SceneParts::SceneParts(const Document& document, FontProvider& fonts, const SceneOptions& options,
                       Scene& scene)
    : m_document(document), m_options(options), m_scene(scene), m_fonts(document, fonts, scene),
      m_ink(scene, m_fonts), m_left(kMostWork)
{
    for (const DimensionStyle& style : document.dimensionStyles)
        m_dimensionStyles[style.handle] = &style;
    for (const MLineStyle& style : document.mlineStyles)
        m_mlineStyles[style.handle] = &style;
}

void SceneParts::build()
{
    const BlockRecord* space = m_options.block != 0 ? m_document.block(m_options.block) : nullptr;
    if (!space && m_document.modelSpace < m_document.blocks.size())
        space = &m_document.blocks[m_document.modelSpace];
    if (!space)
        return;
    Frame frame;
    frame.dashScale = m_document.header.linetypeScale > 0 ? m_document.header.linetypeScale : 1;
    drawBlock(*space, frame);
    drawDeferred();
}

void SceneParts::drawBlock(const BlockRecord& block, const Frame& frame)
{
    if (frame.depth > kDeepestBlock) {
        m_scene.complete = false;
        return;
    }
    for (const Entity& entity : block.entities) {
        if (m_left == 0 || m_ink.full()) {
            m_scene.complete = false;
            return;
        }
        drawEntity(entity, block, frame);
    }
}

void SceneParts::drawEntity(const Entity& entity, const BlockRecord& block, const Frame& frame)
{
    const std::size_t cost = 1 + std::visit(Cost(), entity.geometry);
    if (cost > m_left) {
        m_left = 0;
        m_scene.complete = false;
        return;
    }
    m_left -= cost;
    if (entity.invisible)
        return;
    if (const auto look = lookOf(entity, block, frame))
        std::visit([&](const auto& geometry) { draw(geometry, *look); }, entity.geometry);
}

std::optional<SceneParts::Look> SceneParts::lookOf(const Entity& entity, const BlockRecord& block,
                                                   const Frame& frame) const
{
    const Layer* layer = layerOf(entity.layer);
    // What stands on layer 0 of a block takes the layer of the insert.
    if (frame.layer && (!layer || layer->name == u"0"))
        layer = frame.layer;
    // What is inside an insert or a view has layers of its own.
    const bool container =
        std::holds_alternative<Insert>(entity.geometry) || std::holds_alternative<Viewport>(entity.geometry);
    if (layer && (layer->frozen || (layer->off && !container)))
        return {};
    if (layer && m_frozen && std::find(m_frozen->begin(), m_frozen->end(), layer->handle) != m_frozen->end())
        return {};
    if (layer && m_options.plotted && !layer->plotted)
        return {};
    const SceneColor color = resolve(entity.color, layer, frame, entity.alpha);
    return Look{frame, entity, layer, color, penOf(entity, layer, color, frame), &block};
}

const Layer* SceneParts::layerOf(Handle handle) const
{
    return find(handle, m_document.layerIndex, m_document.layers);
}

const DimensionStyle* SceneParts::dimensionStyle(Handle handle) const
{
    const auto found = m_dimensionStyles.find(handle);
    return found == m_dimensionStyles.end() ? nullptr : found->second;
}

const MLineStyle* SceneParts::mlineStyle(Handle handle) const
{
    const auto found = m_mlineStyles.find(handle);
    return found == m_mlineStyles.end() ? nullptr : found->second;
}

SceneColor SceneParts::resolve(const Color& color, const Layer* layer, const Frame& frame,
                               std::uint8_t alpha) const
{
    SceneColor out;
    const Color* own = &color;
    if (own->kind == Color::Kind::ByLayer && layer)
        own = &layer->color;
    switch (own->kind) {
    case Color::Kind::ByBlock:
        out = frame.color;
        break;
    case Color::Kind::Index:
        out.rgb = indexedColor(own->index);
        out.foreground = own->index == 7 || own->index == 0;
        break;
    case Color::Kind::True:
        out.rgb = own->rgb & 0xffffff;
        break;
    case Color::Kind::ByLayer:
        out.foreground = true;
        break;
    }
    if (alpha != 255)
        out.alpha = alpha;
    return out;
}

const Linetype* SceneParts::linetypeOf(const Entity& entity, const Layer* layer, const Frame& frame) const
{
    Handle handle = entity.linetype;
    if (handle == 0)
        handle = layer ? layer->linetype : 0;
    const Linetype* linetype = find(handle, m_document.linetypeIndex, m_document.linetypes);
    if (linetype && sameName(linetype->name, u"bylayer"))
        linetype = layer ? find(layer->linetype, m_document.linetypeIndex, m_document.linetypes) : nullptr;
    else if (linetype && sameName(linetype->name, u"byblock"))
        linetype = frame.linetype;
    return linetype && linetype->dashes.size() > 1 ? linetype : nullptr;
}

Pen SceneParts::penOf(const Entity& entity, const Layer* layer, SceneColor color, const Frame& frame) const
{
    Pen pen;
    pen.color = color;
    pen.lineweight = entity.lineweight;
    if (pen.lineweight == kLineweightByLayer)
        pen.lineweight = layer ? layer->lineweight : kLineweightDefault;
    else if (pen.lineweight == kLineweightByBlock)
        pen.lineweight = frame.lineweight;
    if (pen.lineweight < 0)
        pen.lineweight = kDefaultLineweight;
    pen.lineweight = std::min(pen.lineweight, 211);
    pen.linetype = linetypeOf(entity, layer, frame);
    pen.dashScale = frame.dashScale * (entity.linetypeScale > 0 ? entity.linetypeScale : 1);
    return pen;
}

StyleFonts::StyleFonts(const Document& document, FontProvider& provider, Scene& scene)
    : m_document(document), m_provider(provider), m_scene(scene)
{
}

const TextStyle* StyleFonts::style(Handle handle) const
{
    return find(handle, m_document.textStyleIndex, m_document.textStyles);
}

FontRequest StyleFonts::request(const TextStyle& style)
{
    return {style.font,   style.bigFont,  style.typeface, style.bold,
            style.italic, style.vertical, style.shapeFile};
}

Font& StyleFonts::font(const TextStyle* style)
{
    const auto known = m_byStyle.find(style);
    if (known != m_byStyle.end())
        return *known->second;
    Font& found = font(style ? request(*style) : FontRequest{});
    m_byStyle.emplace(style, &found);
    return found;
}

Font& StyleFonts::font(const FontRequest& request)
{
    std::shared_ptr<Font>& font = m_fonts[request];
    if (!font) {
        font = m_provider.find(request);
        m_scene.fonts.push_back(font);
    }
    return *font;
}

void StyleFonts::add(const LinetypeDash& dash, Point2 at, Point2 unit, std::vector<GlyphPlace>& out)
{
    const double size = dash.scale > 0 ? dash.scale : 1;
    Point2 along = unit;
    if (dash.absoluteRotation)
        along = {length(unit), 0};
    const Point2 across{-unit.y, unit.x};
    const Point2 origin = at + unit * dash.offset.x + across * dash.offset.y;
    const double c = std::cos(dash.rotation), s = std::sin(dash.rotation);
    const Point2 x = Point2{along.x * c - along.y * s, along.x * s + along.y * c} * size;
    Affine map = Affine::placed(origin, x, {-x.y, x.x});
    const TextStyle* textStyle = style(dash.style);
    Font& figures = font(textStyle);
    const auto place = [&](const Glyph* glyph) {
        if (!glyph)
            return;
        out.push_back({glyph, map});
        map = map.of({1, 0, 0, 1, glyph->advance, 0});
    };
    if (dash.text.empty())
        place(figures.glyph(dash.shape));
    for (const char16_t c16 : dash.text)
        place(figures.glyph(c16));
}

} // namespace zv::dwg
