#pragma once

#include "drawing/fonts/Font.h"
#include "drawing/scene/Ink.h"
#include "drawing/scene/SceneBuilder.h"

#include <map>
#include <optional>
#include <unordered_map>

namespace zv::dwg {

/// What an insert hands down to the things inside its block.
struct Frame {
    Matrix map; ///< From the block's own coordinates to the scene's.
    const Layer* layer = nullptr;
    SceneColor color{0xffffff, true, 255};
    int lineweight = 25;
    const Linetype* linetype = nullptr;
    double dashScale = 1;
    int depth = 0;
    bool dimension = false; ///< Inside the block of a dimension, whose points are dots in every point mode.
    const BlockRecord* block = nullptr;
    const Frame* outer = nullptr;

    /// Whether this is inside the block, at any depth.
    bool inside(const BlockRecord& other) const { return block == &other || (outer && outer->inside(other)); }
};

/// Fonts by text style, found once each.
class StyleFonts final : public DashFigures {
public:
    StyleFonts(const Document& document, FontProvider& provider, Scene& scene);
    const TextStyle* style(Handle handle) const;
    Font& font(const TextStyle* style);
    Font& font(const FontRequest& request);
    static FontRequest request(const TextStyle& style);
    void add(const LinetypeDash& dash, Point2 at, Point2 unit, std::vector<GlyphPlace>& out) override;

private:
    const Document& m_document;
    FontProvider& m_provider;
    Scene& m_scene;
    std::map<FontRequest, std::shared_ptr<Font>> m_fonts;
    std::unordered_map<const TextStyle*, Font*> m_byStyle;
};

/// Walks the entities of a drawing. Each kind of entity is drawn by an overload of draw(), which stand in
/// several files by subject.
class SceneParts {
public:
    SceneParts(const Document& document, FontProvider& fonts, const SceneOptions& options, Scene& scene);
    void build();

private:
    /// What holds for one entity: where it is and how it looks.
    struct Look {
        const Frame& frame;
        const Entity& entity;
        const Layer* layer = nullptr;
        SceneColor color;
        Pen pen;
        const BlockRecord* owner = nullptr;
    };

    void drawBlock(const BlockRecord& block, const Frame& frame);
    void drawEntity(const Entity& entity, const BlockRecord& block, const Frame& frame);
    /// No value when the entity's layer hides it. All that is given must outlive the look.
    std::optional<Look> lookOf(const Entity& entity, const BlockRecord& block, const Frame& frame) const;
    SceneColor resolve(const Color& color, const Layer* layer, const Frame& frame, std::uint8_t alpha) const;
    Pen penOf(const Entity& entity, const Layer* layer, SceneColor color, const Frame& frame) const;
    const Layer* layerOf(Handle handle) const;
    /// Null for a style that the drawing does not have.
    const DimensionStyle* dimensionStyle(Handle handle) const;
    const MLineStyle* mlineStyle(Handle handle) const;
    const Linetype* linetypeOf(const Entity& entity, const Layer* layer, const Frame& frame) const;

    // Lines and curves
    void draw(const Unknown&, const Look&) {}
    void draw(const Line&, const Look&);
    void draw(const PointShape&, const Look&);
    void draw(const Circle&, const Look&);
    void draw(const Arc&, const Look&);
    void draw(const Ellipse&, const Look&);
    void draw(const Spline&, const Look&);
    void draw(const Polyline&, const Look&);
    void draw(const Mesh&, const Look&);
    void draw(const Solid&, const Look&);
    void draw(const Face3D&, const Look&);
    void draw(const Ray&, const Look&);
    void circleArc(Point3 center, double radius, double start, double sweep, Point3 normal, double thickness,
                   const Look& look);
    void widePolyline(const Polyline& line, const Matrix& map, const Look& look);
    void pointMark(Point2 at, double size, double angle, SceneColor color);
    void strokePoints(const std::vector<Point3>& points, const Matrix& map, bool closed, const Look& look);
    void drawDeferred();

    // Text
    void draw(const TextLine&, const Look&);
    void draw(const Attribute&, const Look&);
    void draw(const MText&, const Look&);
    void draw(const Shape&, const Look&);
    void draw(const Tolerance&, const Look&);
    void drawMText(const MText& text, const Matrix& map, const Look& look);

    // Blocks and what is drawn by them
    void draw(const Insert&, const Look&);
    void draw(const Dimension&, const Look&);
    void drawAttributes(const Insert& insert, const Look& look);
    void measuredLine(const Dimension& dimension, const Look& look);

    // Areas
    void draw(const Hatch&, const Look&);
    void draw(const MPolygon&, const Look&);
    void draw(const Wipeout&, const Look&);
    void drawGradient(const Hatch& hatch, const Path& area, const Look& look);

    // Composed lines
    void draw(const Leader&, const Look&);
    void draw(const MultiLeader&, const Look&);
    void draw(const MLine&, const Look&);
    void draw(const Viewport&, const Look&);
    void draw(const StoredPicture&, const Look&);
    void draw(const Outline&, const Look&);
    void arrow(Point3 tip, Point3 tail, double size, const Matrix& map, const Look& look);

    struct DeferredRay {
        Point2 start, direction;
        bool bothWays;
        Pen pen;
    };
    struct DeferredPoint {
        Point2 at;
        double angle;
        SceneColor color;
    };

    const Document& m_document;
    const SceneOptions& m_options;
    Scene& m_scene;
    std::unordered_map<Handle, const DimensionStyle*> m_dimensionStyles;
    std::unordered_map<Handle, const MLineStyle*> m_mlineStyles;
    StyleFonts m_fonts;
    Ink m_ink;
    std::vector<DeferredRay> m_rays;
    std::vector<DeferredPoint> m_points;
    const std::vector<Handle>* m_frozen = nullptr; ///< Layers hidden in the view that is being drawn.
    std::size_t m_left;                            ///< Work that may still be done.
    std::size_t m_hatchWork = 40'000'000;          ///< Crossings of hatch lines that may still be looked for.
};

/// The outline of a path of the entity's plane in the scene.
Path mapped(const Path& path, const Matrix& map);

} // namespace zv::dwg
