#pragma once

#include "drawing/scene/Ink.h"

namespace zv::dwg {

/// Cuts lines into the dashes of a linetype.
class Dashes {
public:
    /// `scale` is drawing units to one of the linetype's. With `throughVertices` a run is one length, else
    /// each of its straight pieces starts and ends with a dash of its own.
    Dashes(const Linetype& linetype, double scale, bool throughVertices);

    /// False when the line is to be drawn whole: the pattern says nothing, is longer than the line, or would
    /// come to too many dashes.
    bool cut(const Path& line, std::vector<GlyphPlace>& figures, DashFigures& source);
    const Path& path() const { return m_out; }

private:
    /// A run of straight pieces with the distance of each point from its start.
    struct Run {
        std::vector<Point2> points;
        std::vector<double> along;
        double size() const { return along.empty() ? 0 : along.back(); }
    };

    std::vector<Run> runsOf(const Path& line) const;
    void addRun(std::vector<Run>& runs, std::vector<Point2>& points) const;
    void cutRun(const Run& run, std::vector<GlyphPlace>& figures, DashFigures& source);
    void draw(const Run& run, double from, double to);
    /// The place at a distance, and the direction of the line there.
    std::pair<Point2, Point2> placeAt(const Run& run, double along) const;

    const Linetype& m_linetype;
    double m_scale;
    bool m_through;
    double m_pattern = 0; ///< Length of the pattern in drawing units.
    Path m_out;
};

} // namespace zv::dwg
