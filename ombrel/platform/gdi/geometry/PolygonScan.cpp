#include "ombrel/platform/gdi/geometry/PolygonScan.h"

#include "ombrel/platform/gdi/Coordinates.h"

namespace ombrel {

PolygonScan::PolygonScan(std::span<CPoint const> points, PolyFillMode mode, int top, int bottom)
    : m_mode(mode)
    , m_lastRow(bottom)
{
    for (std::size_t i = 0; i < points.size(); ++i) {
        CPoint a = ClampPoint(points[i]);
        CPoint b = ClampPoint(points[i + 1 < points.size() ? i + 1 : 0]);
        if (a.y == b.y || std::max(a.y, b.y) <= top || std::min(a.y, b.y) >= bottom)
            continue;
        int const winding = a.y < b.y ? 1 : -1;
        if (a.y > b.y)
            std::swap(a, b);
        int const row = std::max(a.y, top);
        long long const height = static_cast<long long>(b.y) - a.y;
        long long const width = static_cast<long long>(b.x) - a.x;
        long long const offset = (static_cast<long long>(row) - a.y) * width;
        // Rounded up: what is rounded down with the sign turned.
        Edge edge {};
        edge.crossing = static_cast<int>(a.x - FloorDivide(-offset, height));
        edge.beyond = static_cast<int>(FloorRemainder(-offset, height));
        edge.height = static_cast<int>(height);
        edge.step = static_cast<int>(-FloorDivide(-width, height));
        edge.stepBeyond = static_cast<int>(FloorRemainder(-width, height));
        edge.bottom = std::min(b.y, bottom);
        edge.winding = winding;
        m_starts.push_back({ row, m_edges.size() });
        m_edges.push_back(edge);
    }
    std::sort(m_starts.begin(), m_starts.end(),
        [](Start const& a, Start const& b) { return a.row != b.row ? a.row < b.row : a.edge < b.edge; });
    m_firstRow = m_starts.empty() ? bottom : m_starts.front().row;
}

bool PolygonScan::Advance(int& y)
{
    std::size_t kept = 0;
    for (Edge const& edge : m_active) {
        if (edge.bottom <= y)
            continue;
        m_active[kept] = edge;
        m_active[kept++].Step();
    }
    m_active.resize(kept);
    if (m_active.empty()) {
        if (m_nextStart == m_starts.size())
            return false;
        y = m_starts[m_nextStart].row;
    }
    std::size_t const old = m_active.size();
    while (m_nextStart < m_starts.size() && m_starts[m_nextStart].row <= y)
        m_active.push_back(m_edges[m_starts[m_nextStart++].edge]);
    if (m_active.size() - old > 16)
        std::sort(
            m_active.begin(), m_active.end(), [](Edge const& a, Edge const& b) { return a.crossing < b.crossing; });
    // From one row to the next few edges change places, so that inserting costs next to nothing.
    for (std::size_t i = 1; i < m_active.size(); ++i) {
        if (m_active[i - 1].crossing <= m_active[i].crossing)
            continue;
        Edge const edge = m_active[i];
        std::size_t j = i;
        for (; j > 0 && m_active[j - 1].crossing > edge.crossing; --j)
            m_active[j] = m_active[j - 1];
        m_active[j] = edge;
    }
    return y < m_lastRow;
}

} // namespace ombrel
