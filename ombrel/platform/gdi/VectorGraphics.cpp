#include "ombrel/platform/gdi/VectorGraphics.h"

#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/geometry/EllipsePixels.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ombrel {

namespace {

/// The points moved by the viewport origin; without one, the points themselves.
class MovedPoints {
public:
    MovedPoints(std::span<CPoint const> points, CPoint origin)
        : m_points(points)
    {
        if (origin == CPoint())
            return;
        m_moved.assign(points.begin(), points.end());
        for (CPoint& p : m_moved)
            p = MovePoint(p, origin);
        m_points = m_moved;
    }
    MovedPoints(MovedPoints const&) = delete;
    MovedPoints& operator=(MovedPoints const&) = delete;
    std::span<CPoint const> Points() const { return m_points; }

private:
    std::span<CPoint const> m_points;
    std::vector<CPoint> m_moved;
};

/// Outline pixels as a curve, clockwise from the middle of the right edge and back.
std::vector<CPoint> PixelCurve(std::vector<CPoint> outline, CRect const& box)
{
    if (outline.empty())
        return outline;
    std::reverse(outline.begin(), outline.end());
    auto const fromStart = [&box](CPoint p) {
        return std::abs(2LL * p.y - box.top - box.bottom) + 2LL * (static_cast<long long>(box.right) - p.x);
    };
    auto const start = std::min_element(
        outline.begin(), outline.end(), [&](CPoint a, CPoint b) { return fromStart(a) < fromStart(b); });
    std::rotate(outline.begin(), start, outline.end());
    outline.push_back(outline.front());
    return outline;
}

/// A quarter of an ellipse round (width / 2, height / 2): whole points from its rightmost to its lowest one.
///
/// A straight line between two neighbours leaves the ellipse by about a tenth of a pixel. Points are those near equal
/// angles that lie closest to the ellipse, since rounding any other would shake the curve more than it bends.
std::vector<CPoint> LowerRightQuarter(int width, int height)
{
    constexpr double kRightAngle = std::numbers::pi / 2;
    constexpr double kFlatness = 0.1;
    constexpr double kMostSteps = 1024.0;
    constexpr double kMostCandidates = 8.0;
    double const a = width / 2.0;
    double const b = height / 2.0;
    double const chord = 2.0 * std::acos(1.0 - std::min(kFlatness / std::max(a, b), 1.0));
    int const steps = static_cast<int>(std::clamp(std::ceil(kRightAngle / chord), 2.0, kMostSteps));
    std::vector<CPoint> quarter;
    quarter.push_back({ width, static_cast<int>(std::lround(b)) });
    for (int k = 1; k < steps; ++k) {
        double const angle = kRightAngle * k / steps;
        double const across = a * std::sin(angle);
        double const down = b * std::cos(angle);
        // Candidates are a pixel apart along the axis that the ellipse runs along here, a quarter of a step at most.
        bool const alongX = across > down;
        double const centre = alongX ? a : b;
        double const otherCentre = alongX ? b : a;
        long const middle = std::lround(centre + (alongX ? a * std::cos(angle) : b * std::sin(angle)));
        long const reach = std::lround(std::min(kMostCandidates, std::max(across, down) * kRightAngle / steps / 4));
        CPoint best;
        double least = 1.0;
        for (long along = middle - reach; along <= middle + reach; ++along) {
            double const cosine = std::clamp((static_cast<double>(along) - centre) / centre, -1.0, 1.0);
            double const other = otherCentre + otherCentre * std::sqrt(1.0 - cosine * cosine);
            long const nearest = std::lround(other);
            double const error = std::fabs(static_cast<double>(nearest) - other);
            if (error < least) {
                least = error;
                best = alongX ? CPoint(static_cast<int>(along), static_cast<int>(nearest))
                              : CPoint(static_cast<int>(nearest), static_cast<int>(along));
            }
        }
        quarter.push_back(best);
    }
    quarter.push_back({ static_cast<int>(std::lround(a)), height });
    return quarter;
}

/// The whole ellipse in the box, clockwise from its rightmost point and back.
std::vector<CPoint> FlattenedEllipse(CRect const& box)
{
    std::vector<CPoint> const quarter = LowerRightQuarter(box.Width(), box.Height());
    std::vector<CPoint> curve;
    curve.reserve(4 * quarter.size() + 1);
    auto const addQuarter = [&](bool mirrorX, bool mirrorY) {
        for (std::size_t i = 0; i < quarter.size(); ++i) {
            // The direction turns round with each mirroring.
            CPoint const p = mirrorX == mirrorY ? quarter[i] : quarter[quarter.size() - 1 - i];
            CPoint const at(mirrorX ? box.right - p.x : box.left + p.x, mirrorY ? box.bottom - p.y : box.top + p.y);
            if (curve.empty() || !(curve.back() == at))
                curve.push_back(at);
        }
    };
    addQuarter(false, false);
    addQuarter(true, false);
    addQuarter(true, true);
    addQuarter(false, true);
    if (!(curve.back() == curve.front()))
        curve.push_back(curve.front());
    return curve;
}

} // namespace

VectorGraphics::VectorGraphics(CDC& dc)
    : m_dc(dc)
    , m_clip(dc.m_state.clip)
{
}

void VectorGraphics::SetClipRect(CRect const& rect)
{
    CRect const moved = MoveRect(rect, m_dc.m_state.origin);
    m_clip.box = moved.IsRectEmpty() ? CRect() : moved;
}

void VectorGraphics::DrawLine(VectorPen const& pen, CPoint from, CPoint to)
{
    CPoint const ends[] { from, to };
    DrawPath(pen, { ends, {} });
}

void VectorGraphics::DrawCurve(VectorPen const& pen, std::span<CPoint const> points) { DrawPath(pen, { points, {} }); }

void VectorGraphics::DrawPath(VectorPen const& pen, Figures const& figures)
{
    if (figures.points.size() < 2 || pen.colour.alpha == 0)
        return;
    MovedPoints const moved(figures.points, m_dc.m_state.origin);
    m_dc.m_surface->Stroke({ moved.Points(), figures.starts }, pen, m_smooth, m_clip);
}

std::vector<CPoint> VectorGraphics::EllipsePoints(VectorPen const& pen, CRect const& box) const
{
    CRect const limited = ClampRect(box);
    if (limited.IsRectEmpty())
        return {};
    // Larger ones have too many pixels to list, and look as round.
    constexpr int kLargestPixelCurve = 8192;
    bool const byPixel = pen.width <= 1.0 && !m_smooth && !m_dc.IsPrinting()
        && std::max(limited.Width(), limited.Height()) <= kLargestPixelCurve;
    if (!byPixel)
        return FlattenedEllipse(limited);
    return PixelCurve(EllipseOutline({ limited.left, limited.top, limited.right + 1, limited.bottom + 1 }), limited);
}

void VectorGraphics::FillRegion(VectorBrush const& brush, Region const& region)
{
    if (region.IsEmpty())
        return;
    CPoint const origin = m_dc.m_state.origin;
    if (origin == CPoint()) {
        m_dc.m_surface->Fill(region, brush, m_clip);
        return;
    }
    Region moved = region;
    moved.Offset(origin.x, origin.y);
    m_dc.m_surface->Fill(moved, brush, m_clip);
}

void VectorGraphics::FillPolygon(VectorBrush const& brush, std::span<CPoint const> points)
{
    FillRegion(brush, Region::FromPolygon(points, ALTERNATE));
}

void VectorGraphics::FillRectangle(VectorBrush const& brush, double x, double y, double w, double h)
{
    if (!(w > 0.0 && h > 0.0))
        return;
    CRect const rect(CeilToInt(x), CeilToInt(y), CeilToInt(x + w), CeilToInt(y + h));
    if (!rect.IsRectEmpty())
        FillRegion(brush, Region::FromRect(rect));
}

} // namespace ombrel
