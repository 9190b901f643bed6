#pragma once
#include "ombrel/platform/framework/Geometry.h"

#include <algorithm>

namespace ombrel {

// How far coordinates reach to both sides of 0, from the widest limit to the narrowest, in device pixels.

/// Everything that is drawn: coordinates beyond this are drawn as if they lay at it. Products of two of them still fit
/// in 64 bits. A clip without a box of its own reaches as far.
inline constexpr int kCoordinateLimit = 1 << 29;
/// What pages write into documents: readers of their formats compute in single precision or in 24 bits and a fraction.
inline constexpr int kDocumentLimit = 1 << 20;
/// Ellipses of longer sides are not followed pixel by pixel, since their figures would not fit in 64 bits.
inline constexpr int kLargestEllipse = 1 << 15;
/// Sides of bitmaps: what the headers of their files, and programs that read them, expect.
inline constexpr int kLongestBitmapSide = 32767;
/// What real coordinates are mapped to. A device that graphs are drawn on is no wider nor higher: what lay beyond would
/// stay empty. Pages are made so.
inline constexpr int kMappedLimit = 32000;

/// Moves what lies beyond kCoordinateLimit to it.
inline int ClampCoordinate(long long c)
{
    return static_cast<int>(std::clamp<long long>(c, -kCoordinateLimit, kCoordinateLimit));
}
/// Both coordinates of a point, likewise.
inline CPoint ClampPoint(CPoint p) { return { ClampCoordinate(p.x), ClampCoordinate(p.y) }; }
/// The four edges of a rectangle, likewise.
inline CRect ClampRect(CRect const& r)
{
    return { ClampCoordinate(r.left), ClampCoordinate(r.top), ClampCoordinate(r.right), ClampCoordinate(r.bottom) };
}
/// The point moved; the sum stays within the limit.
inline CPoint MovePoint(CPoint p, CPoint by)
{
    return { ClampCoordinate(static_cast<long long>(p.x) + by.x), ClampCoordinate(static_cast<long long>(p.y) + by.y) };
}
/// The rectangle moved; its edges stay within the limit.
inline CRect MoveRect(CRect const& r, CPoint by)
{
    CPoint const a = MovePoint({ r.left, r.top }, by);
    CPoint const b = MovePoint({ r.right, r.bottom }, by);
    return { a.x, a.y, b.x, b.y };
}

/// a / b rounded down; b > 0.
inline long long FloorDivide(long long a, long long b) { return a / b - (a % b < 0 ? 1 : 0); }
/// What FloorDivide leaves: 0 … b − 1.
inline long long FloorRemainder(long long a, long long b)
{
    long long const r = a % b;
    return r < 0 ? r + b : r;
}

/// Rounds up; values out of range, and not-a-number, go to the limits.
inline int CeilToInt(double value)
{
    if (!(value > -kCoordinateLimit))
        return -kCoordinateLimit;
    if (value >= kCoordinateLimit)
        return kCoordinateLimit;
    int const whole = static_cast<int>(value);
    return whole + (static_cast<double>(whole) < value ? 1 : 0);
}

} // namespace ombrel
