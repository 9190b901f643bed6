#include "ombrel/graph3d/view/LabelSpace.h"
#include "ombrel/foundation/Utils.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ombrel {

namespace {

double Cross(PicturePoint o, PicturePoint a, PicturePoint b)
{
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

/// The convex outline of points: the chains below and above them (A. M. Andrew, 1979).
std::vector<PicturePoint> Outline(std::span<PicturePoint const> corners)
{
    std::vector<PicturePoint> points(corners.begin(), corners.end());
    std::sort(points.begin(), points.end(),
        [](PicturePoint a, PicturePoint b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
    std::vector<PicturePoint> outline;
    auto const addChain = [&outline](auto first, auto last) {
        std::size_t const start = outline.size();
        for (; first != last; ++first) {
            while (outline.size() >= start + 2 && Cross(outline[outline.size() - 2], outline.back(), *first) <= 0.0)
                outline.pop_back();
            outline.push_back(*first);
        }
        outline.pop_back();
    };
    if (points.size() < 2)
        return points;
    addChain(points.begin(), points.end());
    addChain(points.rbegin(), points.rend());
    return outline;
}

bool Overlap(CRect const& a, CRect const& b)
{
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

} // namespace

LabelSpace::LabelSpace(CRect const& picture, std::span<PicturePoint const> boxCorners)
    : m_picture(picture)
    , m_outline(Outline(boxCorners))
{
    for (PicturePoint const corner : m_outline) {
        m_centre.x += corner.x / static_cast<double>(m_outline.size());
        m_centre.y += corner.y / static_cast<double>(m_outline.size());
    }
}

bool LabelSpace::IsInPicture(CRect const& rect) const
{
    return rect.left >= m_picture.left && rect.right <= m_picture.right && rect.top >= m_picture.top
        && rect.bottom <= m_picture.bottom;
}

bool LabelSpace::MeetsBox(CRect const& rect) const
{
    if (m_outline.size() < 3)
        return false;
    PicturePoint const corners[4] = { { double(rect.left), double(rect.top) }, { double(rect.right), double(rect.top) },
        { double(rect.right), double(rect.bottom) }, { double(rect.left), double(rect.bottom) } };
    // Two convex shapes are apart when a line along one of their edges parts them.
    auto const [minX, maxX] = std::minmax_element(
        m_outline.begin(), m_outline.end(), [](PicturePoint a, PicturePoint b) { return a.x < b.x; });
    auto const [minY, maxY] = std::minmax_element(
        m_outline.begin(), m_outline.end(), [](PicturePoint a, PicturePoint b) { return a.y < b.y; });
    if (rect.left >= maxX->x || rect.right <= minX->x || rect.top >= maxY->y || rect.bottom <= minY->y)
        return false;
    for (std::size_t i = 0; i < m_outline.size(); ++i) {
        PicturePoint const a = m_outline[i];
        PicturePoint const b = m_outline[(i + 1) % m_outline.size()];
        if (std::all_of(std::begin(corners), std::end(corners),
                [a, b](PicturePoint corner) { return Cross(a, b, corner) <= 0.0; }))
            return false;
    }
    return true;
}

bool LabelSpace::MeetsTaken(CRect const& rect) const
{
    return std::any_of(m_taken.begin(), m_taken.end(), [&rect](CRect const& other) { return Overlap(rect, other); });
}

PicturePoint LabelSpace::Outwards(PicturePoint from, PicturePoint to) const
{
    PicturePoint const middle { (from.x + to.x) / 2.0, (from.y + to.y) / 2.0 };
    PicturePoint const away { middle.x - m_centre.x, middle.y - m_centre.y };
    PicturePoint across { -(to.y - from.y), to.x - from.x };
    // A line that is seen from its end has no side: then straight away from the centre.
    if (std::hypot(across.x, across.y) < 1.0)
        across = away;
    double const length = std::hypot(across.x, across.y);
    if (!(length > 0.0) || !std::isfinite(length))
        return { 0.0, 1.0 };
    double const side = across.x * away.x + across.y * away.y < 0.0 ? -1.0 : 1.0;
    return { side * across.x / length, side * across.y / length };
}

std::optional<CPoint> LabelSpace::WayOut(CRect const& rect, PicturePoint direction, Clear clear, int limit) const
{
    for (int step = 0; step <= limit; ++step) {
        CPoint const way(VUNearest(direction.x * step), VUNearest(direction.y * step));
        CRect const moved(rect.left + way.x, rect.top + way.y, rect.right + way.x, rect.bottom + way.y);
        if (!MeetsBox(moved) && (clear == Clear::OfBox || !MeetsTaken(moved)))
            return way;
    }
    return {};
}

} // namespace ombrel
