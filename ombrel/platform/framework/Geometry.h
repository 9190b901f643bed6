#pragma once
#include "ombrel/platform/framework/Types.h"

#include <algorithm>

namespace ombrel {

/// A point in device pixels, y down.
struct POINT {
    LONG x = 0;
    LONG y = 0;
};

/// A width and a height in device pixels.
struct SIZE {
    LONG cx = 0;
    LONG cy = 0;
};

/// Four edges in device pixels; right and bottom are the first column and row outside.
struct RECT {
    LONG left = 0;
    LONG top = 0;
    LONG right = 0;
    LONG bottom = 0;
};

/// Sums and differences of coordinates wrap around: stored documents may hold any, and overflow is undefined.
constexpr LONG AddWrapping(LONG a, LONG b) { return static_cast<LONG>(static_cast<DWORD>(a) + static_cast<DWORD>(b)); }
/// a − b, likewise.
constexpr LONG SubtractWrapping(LONG a, LONG b)
{
    return static_cast<LONG>(static_cast<DWORD>(a) - static_cast<DWORD>(b));
}

/// A width and a height that can be compared.
class CSize : public SIZE {
public:
    constexpr CSize() = default;
    constexpr CSize(SIZE s)
        : SIZE(s)
    {
    }
    constexpr CSize(int width, int height)
        : SIZE { width, height }
    {
    }
    friend constexpr bool operator==(CSize a, CSize b) { return a.cx == b.cx && a.cy == b.cy; }
};

/// A point that can be moved, added and compared; sums wrap around.
class CPoint : public POINT {
public:
    constexpr CPoint() = default;
    constexpr CPoint(POINT p)
        : POINT(p)
    {
    }
    constexpr CPoint(int px, int py)
        : POINT { px, py }
    {
    }
    constexpr void Offset(int dx, int dy)
    {
        x = AddWrapping(x, dx);
        y = AddWrapping(y, dy);
    }
    friend constexpr bool operator==(CPoint a, CPoint b) { return a.x == b.x && a.y == b.y; }
    friend constexpr CPoint operator+(CPoint a, CPoint b) { return { AddWrapping(a.x, b.x), AddWrapping(a.y, b.y) }; }
    friend constexpr CPoint operator-(CPoint a, CPoint b)
    {
        return { SubtractWrapping(a.x, b.x), SubtractWrapping(a.y, b.y) };
    }
};

/// Edges are kept as given; Width and Height may come out negative until NormalizeRect.
class CRect : public RECT {
public:
    constexpr CRect() = default;
    constexpr CRect(RECT const& r)
        : RECT(r)
    {
    }
    constexpr CRect(int l, int t, int r, int b)
        : RECT { l, t, r, b }
    {
    }
    constexpr CRect(CPoint topLeft, CSize size)
        : RECT { topLeft.x, topLeft.y, AddWrapping(topLeft.x, size.cx), AddWrapping(topLeft.y, size.cy) }
    {
    }
    constexpr int Width() const { return SubtractWrapping(right, left); }
    constexpr int Height() const { return SubtractWrapping(bottom, top); }
    constexpr CSize Size() const { return { Width(), Height() }; }
    constexpr CPoint TopLeft() const { return { left, top }; }
    constexpr CPoint BottomRight() const { return { right, bottom }; }
    constexpr CPoint CenterPoint() const { return { Middle(left, right), Middle(top, bottom) }; }
    /// True when the rectangle holds no pixel.
    constexpr bool IsRectEmpty() const { return right <= left || bottom <= top; }
    constexpr bool IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    /// Left and top edges are inside, right and bottom edges are not.
    constexpr bool PtInRect(CPoint p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }
    constexpr void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
    constexpr void SetRectEmpty() { *this = CRect(); }
    constexpr void NormalizeRect()
    {
        if (left > right)
            std::swap(left, right);
        if (top > bottom)
            std::swap(top, bottom);
    }
    constexpr void OffsetRect(int dx, int dy)
    {
        SetRect(AddWrapping(left, dx), AddWrapping(top, dy), AddWrapping(right, dx), AddWrapping(bottom, dy));
    }
    constexpr void InflateRect(int dx, int dy)
    {
        SetRect(SubtractWrapping(left, dx), SubtractWrapping(top, dy), AddWrapping(right, dx), AddWrapping(bottom, dy));
    }
    constexpr void DeflateRect(int dx, int dy) { InflateRect(SubtractWrapping(0, dx), SubtractWrapping(0, dy)); }
    /// Becomes the common part of a and b; returns false, and becomes empty, when there is none.
    constexpr bool IntersectRect(CRect const& a, CRect const& b)
    {
        CRect const common(
            std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom));
        *this = common.IsRectEmpty() ? CRect() : common;
        return !IsRectEmpty();
    }
    /// Becomes the smallest rectangle that holds a and b, of which an empty one does not count; returns false, and
    /// becomes empty, when both are.
    constexpr bool UnionRect(CRect const& a, CRect const& b)
    {
        if (a.IsRectEmpty() || b.IsRectEmpty())
            *this = !a.IsRectEmpty() ? a : !b.IsRectEmpty() ? b : CRect();
        else
            *this = CRect(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                std::max(a.bottom, b.bottom));
        return !IsRectEmpty();
    }
    friend constexpr bool operator==(CRect const& a, CRect const& b)
    {
        return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
    }

private:
    static constexpr LONG Middle(LONG a, LONG b) { return static_cast<LONG>((std::int64_t(a) + b) / 2); }
};

} // namespace ombrel
