#include "ombrel/platform/gdi/geometry/EllipsePixels.h"

#include "ombrel/platform/gdi/Coordinates.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ombrel {

namespace {

/// A quarter of the outline, from the leftmost pixels down to the lowest, relative to the box's corner.
std::vector<CPoint> LowerLeftQuarter(long long a, long long b)
{
    // Positive outside the ellipse through the centres of the outermost pixels.
    auto const outside = [a, b](long long x, long long y) {
        long long const across = b * (2 * x - a);
        long long const down = a * (2 * y - b);
        return across * across + down * down - a * b * (a * b);
    };
    std::vector<CPoint> quarter;
    long long x = 0;
    long long y = (b + 1) / 2;
    while (x <= a - x) {
        quarter.push_back({ static_cast<int>(x), static_cast<int>(y) });
        long long const diagonal = outside(x + 1, y + 1);
        bool const stepAcross = outside(x, y + 1) + diagonal >= 0;
        bool const stepDown = outside(x + 1, y) + diagonal <= 0;
        x += stepAcross ? 1 : 0;
        y += stepDown ? 1 : 0;
        if (!stepAcross && !stepDown)
            break;
    }
    return quarter;
}

void AddOnce(std::vector<CPoint>& outline, CPoint p)
{
    if (outline.empty() || !(outline.back() == p))
        outline.push_back(p);
}

/// Every pixel of a box of at most two columns or rows, counter-clockwise from the left top.
std::vector<CPoint> ThinBox(int a, int b)
{
    std::vector<CPoint> outline;
    for (int y = 0; y <= b; ++y)
        outline.push_back({ 0, y });
    for (int x = 1; x <= a; ++x)
        outline.push_back({ x, b });
    if (a > 0) {
        for (int y = b - 1; y >= 0; --y)
            outline.push_back({ a, y });
    }
    if (b > 0) {
        for (int x = a - 1; x > 0; --x)
            outline.push_back({ x, 0 });
    }
    return outline;
}

/// A direction seen from the centre of a box, in half pixels.
struct Direction {
    long long x;
    long long y;
};

/// The half turn a direction lies in, counted counter-clockwise from (including) straight left.
int HalfTurn(Direction d) { return d.y > 0 || (d.y == 0 && d.x < 0) ? 0 : 1; }

/// Counter-clockwise on the screen from a to b: positive when b lies ahead within half a turn.
long long Turn(Direction a, Direction b) { return a.y * b.x - a.x * b.y; }

/// Whether b comes after a going counter-clockwise from straight left; no direction comes after itself.
bool ComesAfter(Direction b, Direction a)
{
    if (HalfTurn(a) != HalfTurn(b))
        return HalfTurn(a) < HalfTurn(b);
    return Turn(a, b) > 0;
}

/// A quarter of an ellipse round (width / 2, height / 2): whole points from its rightmost to its lowest one.
///
/// A straight line between two neighbours leaves the ellipse by about a tenth of a pixel. Points are those near equal
/// angles that lie closest to the ellipse, since rounding any other would shake the curve more than it bends.
std::vector<CPoint> LowerRightCurve(int width, int height)
{
    constexpr double kRightAngle = std::numbers::pi / 2;
    constexpr double kFlatness = 0.1;
    constexpr double kMostSteps = 8192.0;
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

} // namespace

std::vector<CPoint> EllipseOutline(CRect const& box)
{
    int const a = box.Width() - 1;
    int const b = box.Height() - 1;
    std::vector<CPoint> outline;
    if (a < 0 || b < 0 || (a == 0 && b == 0))
        return outline;
    if (a <= 1 || b <= 1) {
        outline = ThinBox(a, b);
    } else {
        std::vector<CPoint> const quarter = LowerLeftQuarter(a, b);
        outline.reserve(4 * quarter.size());
        for (CPoint const& p : quarter)
            AddOnce(outline, p);
        for (std::size_t i = quarter.size(); i-- > 0;)
            AddOnce(outline, { a - quarter[i].x, quarter[i].y });
        for (CPoint const& p : quarter)
            AddOnce(outline, { a - p.x, b - p.y });
        for (std::size_t i = quarter.size(); i-- > 0;)
            AddOnce(outline, { quarter[i].x, b - quarter[i].y });
        while (outline.size() > 1 && outline.back() == outline.front())
            outline.pop_back();
    }
    for (CPoint& p : outline)
        p.Offset(box.left, box.top);
    return outline;
}

std::vector<EllipseRow> EllipseRows(CRect const& box, std::span<CPoint const> outline)
{
    std::vector<EllipseRow> rows(static_cast<std::size_t>(std::max(0, box.Height())), { box.right, box.left - 1 });
    for (CPoint const& p : outline) {
        EllipseRow& row = rows[static_cast<std::size_t>(p.y - box.top)];
        row = { std::min(row.left, p.x), std::max(row.right, p.x) };
    }
    return rows;
}

std::vector<CPoint> ArcPixels(CRect const& box, CPoint start, CPoint end)
{
    std::vector<CPoint> outline = EllipseOutline(box);
    if (outline.empty())
        return outline;
    // Corners of the box and centres of its pixels, both seen from the centre.
    auto const radial = [&box](CPoint p) {
        return Direction { 2LL * p.x - box.left - box.right, 2LL * p.y - box.top - box.bottom };
    };
    auto const pixel = [&box](CPoint p) {
        return Direction { 2LL * p.x + 1 - box.left - box.right, 2LL * p.y + 1 - box.top - box.bottom };
    };
    // The first pixel past the radial; one exactly on it counts as past in the upper half.
    auto const firstPast = [&](Direction d) {
        std::size_t best = 0;
        bool found = false;
        for (std::size_t i = 0; i < outline.size() && !found; ++i) {
            Direction const p = pixel(outline[i]);
            bool const isOn = HalfTurn(p) == HalfTurn(d) && Turn(d, p) == 0;
            if (isOn ? d.y < 0 : ComesAfter(p, d)) {
                best = i;
                found = true;
            }
        }
        return best;
    };
    std::size_t const begin = firstPast(radial(start));
    std::size_t const count = outline.size();
    std::size_t const length = (firstPast(radial(end)) + count - begin) % count;
    std::rotate(outline.begin(), outline.begin() + static_cast<std::ptrdiff_t>(begin), outline.end());
    outline.resize(length == 0 ? count - 1 : length - 1);
    return outline;
}

std::vector<CPoint> FlattenedEllipse(CRect const& box)
{
    if (box.Width() < 1 || box.Height() < 1)
        return { { box.right, box.bottom }, { box.left, box.top }, { box.right, box.bottom } };
    std::vector<CPoint> const quarter = LowerRightCurve(box.Width(), box.Height());
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

std::vector<CPoint> FlattenedArc(CRect const& box, CPoint start, CPoint end)
{
    constexpr double kWholeTurn = 2.0 * std::numbers::pi;
    std::vector<CPoint> curve = FlattenedEllipse(box);
    curve.pop_back();
    if (box.Width() < 1 || box.Height() < 1)
        return curve;
    double const a = box.Width() / 2.0;
    double const b = box.Height() / 2.0;
    // Angles of the circle that the ellipse is stretched from, counter-clockwise on the screen.
    auto const angle = [&](CPoint p) { return std::atan2((box.top + b - p.y) / b, (p.x - box.left - a) / a); };
    auto const at = [&](double t) {
        return CPoint(static_cast<int>(std::lround(box.left + a + a * std::cos(t))),
            static_cast<int>(std::lround(box.top + b - b * std::sin(t))));
    };
    double const first = angle(start);
    double const last = angle(end);
    auto const turn = [first](double t) { return t < first ? t - first + kWholeTurn : t - first; };
    double const sweep = turn(last) > 0.0 ? turn(last) : kWholeTurn;
    std::erase_if(curve, [&](CPoint p) { return turn(angle(p)) >= sweep; });
    std::sort(curve.begin(), curve.end(), [&](CPoint p, CPoint q) { return turn(angle(p)) < turn(angle(q)); });
    curve.insert(curve.begin(), at(first));
    curve.push_back(at(last));
    return curve;
}

} // namespace ombrel
