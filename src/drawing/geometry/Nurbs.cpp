#include "drawing/geometry/Nurbs.h"

namespace zv::dwg {

namespace {

constexpr int kMostDegree = 25;

bool fits(const Spline& s)
{
    const std::size_t points = s.controlPoints.size();
    if (s.degree < 1 || s.degree > kMostDegree || points < static_cast<std::size_t>(s.degree) + 1 ||
        s.knots.size() < points + static_cast<std::size_t>(s.degree) + 1)
        return false;
    for (std::size_t i = 1; i < s.knots.size(); ++i)
        if (!(s.knots[i] >= s.knots[i - 1]))
            return false;
    return std::isfinite(s.knots.front()) && std::isfinite(s.knots.back());
}

struct Weighted {
    Point3 p;
    double w = 1;
};

/// De Boor's scheme on the span that holds `t`.
Point3 evaluate(const Spline& s, std::size_t span, double t)
{
    const auto degree = static_cast<std::size_t>(s.degree);
    Weighted d[kMostDegree + 1];
    for (std::size_t j = 0; j <= degree; ++j) {
        const std::size_t i = span - degree + j;
        const double w = s.weights.size() == s.controlPoints.size() ? s.weights[i] : 1;
        d[j] = {s.controlPoints[i] * w, w};
    }
    for (std::size_t r = 1; r <= degree; ++r)
        for (std::size_t j = degree; j >= r; --j) {
            const double low = s.knots[span - degree + j], high = s.knots[span + 1 + j - r];
            const double a = high > low ? (t - low) / (high - low) : 0;
            d[j] = {d[j - 1].p * (1 - a) + d[j].p * a, d[j - 1].w * (1 - a) + d[j].w * a};
        }
    return std::abs(d[degree].w) > 1e-300 ? d[degree].p * (1 / d[degree].w) : d[degree].p;
}

/// Second derivatives of a natural or clamped cubic at parameter values `t`, for one coordinate.
std::vector<double> bend(const std::vector<double>& t, const std::vector<double>& y, const double* first,
                         const double* last)
{
    const std::size_t n = y.size();
    std::vector<double> a(n), b(n, 1), c(n), r(n);
    for (std::size_t i = 1; i + 1 < n; ++i) {
        const double h0 = t[i] - t[i - 1], h1 = t[i + 1] - t[i];
        a[i] = h0;
        b[i] = 2 * (h0 + h1);
        c[i] = h1;
        r[i] = 6 * ((y[i + 1] - y[i]) / h1 - (y[i] - y[i - 1]) / h0);
    }
    if (first) {
        const double h = t[1] - t[0];
        b[0] = 2 * h;
        c[0] = h;
        r[0] = 6 * ((y[1] - y[0]) / h - *first);
    }
    if (last) {
        const double h = t[n - 1] - t[n - 2];
        b[n - 1] = 2 * h;
        a[n - 1] = h;
        r[n - 1] = 6 * (*last - (y[n - 1] - y[n - 2]) / h);
    }
    for (std::size_t i = 1; i < n; ++i) {
        const double m = a[i] / b[i - 1];
        b[i] -= m * c[i - 1];
        r[i] -= m * r[i - 1];
    }
    std::vector<double> out(n);
    out[n - 1] = r[n - 1] / b[n - 1];
    for (std::size_t i = n - 1; i-- > 0;)
        out[i] = (r[i] - c[i] * out[i + 1]) / b[i];
    return out;
}

std::vector<Point3> distinct(const std::vector<Point3>& points)
{
    std::vector<Point3> out;
    for (const Point3& p : points)
        if (out.empty() || length(p - out.back()) > 1e-12)
            out.push_back(p);
    return out;
}

} // namespace

std::vector<Point3> splinePoints(const Spline& spline, std::size_t limit)
{
    if (!fits(spline))
        return spline.fitPoints.size() > 1 ? curveThrough(spline.fitPoints, spline.closed,
                                                          spline.startTangent, spline.endTangent, limit)
                                           : std::vector<Point3>();
    const auto degree = static_cast<std::size_t>(spline.degree);
    const std::size_t spans = spline.controlPoints.size() - degree;
    const std::size_t wanted = spline.degree == 1 ? 1 : 16;
    const std::size_t pieces = std::clamp<std::size_t>(limit / spans, 1, wanted);
    std::vector<Point3> out;
    for (std::size_t span = degree; span < spline.controlPoints.size(); ++span) {
        const double low = spline.knots[span], high = spline.knots[span + 1];
        if (!(high > low) || out.size() >= limit)
            continue;
        for (std::size_t i = out.empty() ? 0 : 1; i <= pieces; ++i)
            out.push_back(evaluate(
                spline, span, low + (high - low) * static_cast<double>(i) / static_cast<double>(pieces)));
    }
    return out;
}

std::vector<Point3> curveThrough(const std::vector<Point3>& given, bool closed, Point3 startTangent,
                                 Point3 endTangent, std::size_t limit)
{
    std::vector<Point3> points = distinct(given);
    if (closed && points.size() > 2) {
        // One turn more at each end makes the join as smooth as the rest.
        std::vector<Point3> wrapped(points.end() - 2, points.end());
        wrapped.insert(wrapped.end(), points.begin(), points.end());
        wrapped.insert(wrapped.end(), points.begin(), points.begin() + 3);
        points = distinct(wrapped);
    }
    const std::size_t n = points.size();
    if (n < 3)
        return points;
    std::vector<double> t(n);
    for (std::size_t i = 1; i < n; ++i)
        t[i] = t[i - 1] + length(points[i] - points[i - 1]);
    const bool hasStart = length(startTangent) > 0 && !closed, hasEnd = length(endTangent) > 0 && !closed;
    const Point3 first = unit(startTangent), last = unit(endTangent);
    std::vector<double> y[3], m[3];
    double Point3::*const axes[3] = {&Point3::x, &Point3::y, &Point3::z};
    for (int k = 0; k < 3; ++k) {
        for (const Point3& p : points)
            y[k].push_back(p.*axes[k]);
        m[k] = bend(t, y[k], hasStart ? &(first.*axes[k]) : nullptr, hasEnd ? &(last.*axes[k]) : nullptr);
    }
    const std::size_t from = closed && given.size() > 2 && n > 5 ? 2 : 0;
    const std::size_t to = from > 0 ? n - 3 : n - 1;
    const std::size_t pieces = std::clamp<std::size_t>(limit / n, 1, 12);
    std::vector<Point3> out{points[from]};
    for (std::size_t i = from; i < to && out.size() < limit; ++i) {
        const double h = t[i + 1] - t[i];
        for (std::size_t j = 1; j <= pieces; ++j) {
            const double b = static_cast<double>(j) / static_cast<double>(pieces), a = 1 - b;
            Point3 p;
            for (int k = 0; k < 3; ++k)
                p.*axes[k] = a * y[k][i] + b * y[k][i + 1] +
                             ((a * a * a - a) * m[k][i] + (b * b * b - b) * m[k][i + 1]) * h * h / 6;
            out.push_back(p);
        }
    }
    return out;
}

} // namespace zv::dwg
