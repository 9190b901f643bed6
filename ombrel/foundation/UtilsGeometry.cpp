#include "ombrel/foundation/Bilinear.h"
#include "ombrel/foundation/Utils.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

double CVUtils::InterpolateBilinear(double z0, double z1, double z2, double z3, double fx, double fy)
{
    return Bilinear(z0, z1, z2, z3, fx, fy);
}

namespace {

/// Wide enough for products of three coordinates of any size.
__extension__ typedef __int128 Wide;

/// The line a·x + b·y + c = 0.
struct Line {
    Wide a;
    Wide b;
    Wide c;
    Line(CPoint p, CPoint q)
        : a(static_cast<Wide>(q.y) - p.y)
        , b(static_cast<Wide>(p.x) - q.x)
        , c(static_cast<Wide>(q.x) * p.y - static_cast<Wide>(p.x) * q.y)
    {
    }
    Wide At(CPoint p) const { return a * p.x + b * p.y + c; }
    /// Whether both points lie on the same side, neither on the line.
    bool KeepsApart(CPoint p, CPoint q) const
    {
        Wide const atP = At(p);
        Wide const atQ = At(q);
        return atP != 0 && atQ != 0 && (atP < 0) == (atQ < 0);
    }
};

/// The quotient to the nearest whole number.
int NearestQuotient(Wide numerator, Wide denominator)
{
    Wide const half = (denominator < 0 ? -denominator : denominator) / 2;
    Wide const quotient = (numerator < 0 ? numerator - half : numerator + half) / denominator;
    return static_cast<int>(
        std::clamp<Wide>(quotient, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

} // namespace

int CVUtils::LinesIntersect(CPoint a1, CPoint a2, CPoint b1, CPoint b2, CPoint& p)
{
    Line const lineA(a1, a2);
    Line const lineB(b1, b2);
    Wide const denominator = lineA.a * lineB.b - lineB.a * lineA.b;
    if (denominator == 0)
        return 2;
    if (lineA.KeepsApart(b1, b2) || lineB.KeepsApart(a1, a2))
        return 0;
    p.x = NearestQuotient(lineA.b * lineB.c - lineB.b * lineA.c, denominator);
    p.y = NearestQuotient(lineB.a * lineA.c - lineA.a * lineB.c, denominator);
    return 1;
}

int CVUtils::LineRectIntersect(CRect const& r, CPoint p1, CPoint p2, CPoint& i1, CPoint& i2)
{
    CPoint const corners[] = { { r.left, r.top }, { r.right, r.top }, { r.right, r.bottom }, { r.left, r.bottom } };
    // Each edge from left to right or from top to bottom.
    CPoint const* const edges[][2] = { { &corners[0], &corners[1] }, { &corners[1], &corners[2] },
        { &corners[3], &corners[2] }, { &corners[0], &corners[3] } };
    int count = 0;
    for (auto const& [from, to] : edges) {
        CPoint crossing;
        if (LinesIntersect(p1, p2, *from, *to, crossing) != 1)
            continue;
        if (count == 1) {
            i2 = crossing;
            return 2;
        }
        i1 = crossing;
        count = 1;
    }
    return count;
}

void CVUtils::NormalVector(CVertex const& p1, CVertex const& p2, CVertex const& p3, CNormal& n)
{
    CVertex const a = p3 - p2;
    CVertex const b = p1 - p2;
    double const x = a.Y() * b.Z() - b.Y() * a.Z();
    double const y = a.Z() * b.X() - b.Z() * a.X();
    double const z = a.X() * b.Y() - b.X() * a.Y();
    double const squared = x * x + y * y + z * z;
    double const length = std::sqrt(squared);
    n = squared > 0.0 ? CNormal(x / length, y / length, z / length) : CNormal();
}

CRealPoint CVUtils::GetNormalisedPoint(CPoint p, CRect const& device)
{
    return { static_cast<double>(p.x) / device.Width(), static_cast<double>(p.y) / device.Height() };
}

CPoint CVUtils::GetUnnormalisedPoint(CRealPoint const& p, CRect const& device)
{
    return { VUNearest(device.Width() * p.x), VUNearest(device.Height() * p.y) };
}

CRealRect CVUtils::GetNormalisedRect(CRect const& rect, CRect const& device)
{
    double const width = device.Width();
    double const height = device.Height();
    double const left = rect.left / width;
    double const top = (height - rect.top) / height;
    return { left, top, left + rect.Width() / width, top - rect.Height() / height };
}

CRect CVUtils::GetUnnormalisedRect(CRealRect const& rect, CRect const& device)
{
    double const width = device.Width();
    double const height = device.Height();
    return { VUNearest(width * rect.left), VUNearest(height - height * rect.top), VUNearest(width * rect.right),
        VUNearest(height - height * rect.bottom) };
}

} // namespace ombrel
