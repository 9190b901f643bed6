#include "ombrel/platform/gdi/Region.h"

#include "ombrel/platform/gdi/geometry/PolygonScan.h"

#include <algorithm>

namespace ombrel {

namespace {

/// Polygons up to this height keep all their rows once one is asked for.
constexpr int kRowsKept = 4096;

CRect Common(CRect const& a, CRect const& b)
{
    CRect common;
    common.IntersectRect(a, b);
    return common;
}

bool IsUprightRectangle(std::span<CPoint const> p)
{
    if (p.size() == 5 && p[4] == p[0])
        p = p.first(4);
    if (p.size() != 4)
        return false;
    bool const acrossFirst = p[0].y == p[1].y && p[1].x == p[2].x && p[2].y == p[3].y && p[3].x == p[0].x;
    bool const downFirst = p[0].x == p[1].x && p[1].y == p[2].y && p[2].x == p[3].x && p[3].y == p[0].y;
    return acrossFirst || downFirst;
}

} // namespace

Region Region::FromRect(CRect const& rect)
{
    Region region;
    region.m_box = ClampRect(rect);
    region.m_box.NormalizeRect();
    return region;
}

Region Region::FromPolygon(std::span<CPoint const> points, PolyFillMode mode)
{
    Region region;
    region.m_outlineMode = mode;
    if (points.empty())
        return region;
    region.m_outline.reserve(points.size());
    CRect box(kCoordinateLimit, kCoordinateLimit, -kCoordinateLimit, -kCoordinateLimit);
    for (CPoint const& point : points) {
        CPoint const p = ClampPoint(point);
        region.m_outline.push_back(p);
        box = { std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x), std::max(box.bottom, p.y) };
    }
    region.m_box = box.IsRectEmpty() ? CRect() : box;
    region.m_isRect = box.IsRectEmpty() || IsUprightRectangle(region.m_outline);
    return region;
}

Region Region::Intersection(Region const& a, Region const& b)
{
    CRect const box = Common(a.m_box, b.m_box);
    if (box.IsRectEmpty())
        return {};
    if (a.m_isRect && b.m_isRect)
        return FromRect(box);
    if (a.m_isRect && box == b.m_box)
        return b;
    if (b.m_isRect && box == a.m_box)
        return a;
    Region result;
    result.m_isRect = false;
    result.m_box = box;
    result.m_spanRows = { box.top, box.bottom };
    auto const add = [&result](int y, int left, int right) {
        if (left < right)
            result.m_spans.push_back({ y, left, right });
    };
    if (a.m_isRect || b.m_isRect) {
        for (Span const& s : (a.m_isRect ? b : a).Spans(box.top, box.bottom))
            add(s.y, std::max(s.left, box.left), std::min(s.right, box.right));
        return result;
    }
    auto const first = a.Spans(box.top, box.bottom);
    auto const second = b.Spans(box.top, box.bottom);
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < first.size() && j < second.size()) {
        Span const& s = first[i];
        Span const& t = second[j];
        if (s.y == t.y)
            add(s.y, std::max(s.left, t.left), std::min(s.right, t.right));
        bool const firstEndsFirst = s.y != t.y ? s.y < t.y : s.right < t.right;
        firstEndsFirst ? ++i : ++j;
    }
    return result;
}

std::span<Region::Span const> Region::Spans(int top, int bottom) const
{
    top = std::max(top, m_box.top);
    bottom = std::min(bottom, m_box.bottom);
    if (m_isRect || top >= bottom)
        return {};
    if (top < m_spanRows.top || bottom > m_spanRows.bottom) {
        // Only the rows asked for: a polygon may reach far beyond every bitmap.
        bool const whole = m_box.Height() <= kRowsKept;
        m_spanRows = whole ? Rows { m_box.top, m_box.bottom } : Rows { top, bottom };
        m_spans.clear();
        PolygonScan(m_outline, m_outlineMode, m_spanRows.top, m_spanRows.bottom)
            .Run([this](int y, int left, int right) {
                m_spans.push_back({ y, left, right });
            });
    }
    auto const before = [](Span const& s, int y) { return s.y < y; };
    auto const begin = std::lower_bound(m_spans.begin(), m_spans.end(), top, before);
    auto const end = std::lower_bound(begin, m_spans.end(), bottom, before);
    return { begin, end };
}

bool Region::Contains(CPoint p) const
{
    if (!m_box.PtInRect(p) || m_isRect)
        return m_box.PtInRect(p);
    auto const spans = Spans(p.y, p.y + 1);
    return std::any_of(spans.begin(), spans.end(), [p](Span const& s) { return p.x >= s.left && p.x < s.right; });
}

void Region::Offset(int dx, int dy)
{
    dx = ClampCoordinate(dx);
    dy = ClampCoordinate(dy);
    m_box = MoveRect(m_box, { dx, dy });
    for (CPoint& p : m_outline)
        p = MovePoint(p, { dx, dy });
    // An outline's spans are found again when they are asked for; other spans have nothing to come from.
    if (!m_outline.empty()) {
        m_spans.clear();
        m_spanRows = {};
    }
    for (Span& s : m_spans)
        s = { s.y + dy, s.left + dx, s.right + dx };
    m_spanRows = { m_spanRows.top + dy, m_spanRows.bottom + dy };
}

bool operator==(Region const& a, Region const& b)
{
    if (!(a.m_box == b.m_box) || a.m_isRect != b.m_isRect)
        return false;
    if (!a.m_outline.empty() && a.m_outline == b.m_outline && a.m_outlineMode == b.m_outlineMode)
        return true;
    auto const spansOfA = a.Spans(a.m_box.top, a.m_box.bottom);
    auto const spansOfB = b.Spans(b.m_box.top, b.m_box.bottom);
    return std::equal(spansOfA.begin(), spansOfA.end(), spansOfB.begin(), spansOfB.end());
}

CRect Clip::Box() const { return region ? Common(box, region->Box()) : box; }

bool Clip::Contains(CPoint p) const { return box.PtInRect(p) && (!region || region->Contains(p)); }

bool operator==(Clip const& a, Clip const& b)
{
    return a.box == b.box && (a.region == b.region || (a.region && b.region && *a.region == *b.region));
}

} // namespace ombrel
