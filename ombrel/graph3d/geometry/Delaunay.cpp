#include "ombrel/graph3d/geometry/Delaunay.h"
#include "ombrel/graph3d/geometry/BeachLine.h"
#include "ombrel/graph3d/geometry/CircleQueue.h"
#include "ombrel/graph3d/geometry/DelaunayRepair.h"
#include "ombrel/graph3d/geometry/DelaunaySites.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <new>
#include <stdexcept>

namespace ombrel {
namespace {

// Counts what is taken from another resource.
class CountedMemory : public std::pmr::memory_resource {
public:
    explicit CountedMemory(std::pmr::memory_resource* from)
        : m_from(from)
    {
    }
    // As much as has been taken at a time.
    std::size_t GetMost() const { return m_most; }

private:
    void* do_allocate(std::size_t bytes, std::size_t alignment) override
    {
        void* const memory = m_from->allocate(bytes, alignment);
        m_bytes += bytes;
        m_most = std::max(m_most, m_bytes);
        return memory;
    }
    void do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) override
    {
        m_from->deallocate(memory, bytes, alignment);
        m_bytes -= bytes;
    }
    bool do_is_equal(std::pmr::memory_resource const& other) const noexcept override { return this == &other; }

    std::pmr::memory_resource* m_from;
    std::size_t m_bytes = 0;
    std::size_t m_most = 0;
};

// The y at which the circle through three points that turn left ends: its top.
double CircleTop(FloatPoint const& a, FloatPoint const& b, FloatPoint const& c, double area2)
{
    double const ax = Difference(a.x, b.x);
    double const ay = Difference(a.y, b.y);
    double const cx = Difference(c.x, b.x);
    double const cy = Difference(c.y, b.y);
    double const aa = ax * ax + ay * ay;
    double const cc = cx * cx + cy * cy;
    double const scale = 0.5 / area2;
    // The centre, from b.
    double const x = (ay * cc - cy * aa) * scale;
    double const y = (cx * aa - ax * cc) * scale;
    double const radius = std::sqrt(x * x + y * y);
    // Far below, the sum would have lost all its digits.
    return static_cast<double>(b.y) + (y >= 0.0 ? y + radius : x * x / (radius - y));
}

// The orders of the beach line and of places along it are decided without rounding; only the order in which circles end
// is not. So the triangles fit together whatever is rounded, and where a circle has ended too early or too late by the
// rounding, an edge is found not to be Delaunay when its second triangle comes.
class Sweep {
public:
    using Triangles = std::vector<std::array<int, 3>>;

    // Tells the site that it has come to.
    Sweep(DelaunaySites const& sites, std::pmr::memory_resource* memory, std::uint32_t& site)
        : m_sites(sites)
        , m_beach(sites, memory)
        , m_queue(sites.points, memory)
        , m_edges(memory)
        , m_site(site)
    {
    }
    void Run();
    Triangles& GetTriangles() { return m_triangles; }
    bool IsDelaunay() const { return m_isDelaunay; }

private:
    static constexpr std::uint32_t kNone = BeachLine::kNone;
    void AddSite(std::uint32_t site);
    void CloseArc(std::uint32_t arc);
    void FindCircle(std::uint32_t arc);
    std::uint32_t AddEdge(std::uint32_t apex);
    void CloseEdge(std::uint32_t edge, std::uint32_t from, std::uint32_t to, std::uint32_t apex);

    DelaunaySites const& m_sites;
    BeachLine m_beach;
    CircleQueue m_queue;
    // The corner across from each edge of the triangle that it has already, or kNone. Those with both are free.
    std::pmr::vector<std::uint32_t> m_edges;
    std::uint32_t m_freeEdge = kNone;
    Triangles m_triangles;
    bool m_isDelaunay = true;
    std::uint32_t& m_site;
};

void Sweep::Run()
{
    auto const n = static_cast<std::uint32_t>(m_sites.points.size());
    m_triangles.reserve(2 * std::size_t { n });
    // The sites of the lowest row stand side by side.
    std::uint32_t arc = m_beach.InsertAfter(kNone, 0);
    for (m_site = 1; m_site < n && m_sites.points[m_site].y == m_sites.points[0].y; ++m_site) {
        m_beach[arc].edge = AddEdge(kNone);
        arc = m_beach.InsertAfter(arc, m_site);
    }
    for (; m_site < n; ++m_site) {
        m_queue.Advance(m_site);
        auto const y = static_cast<double>(m_sites.points[m_site].y);
        for (arc = m_queue.PopUpTo(y); arc != kNone; arc = m_queue.PopUpTo(y))
            CloseArc(arc);
        AddSite(m_site);
    }
    constexpr double kEnd = std::numeric_limits<double>::infinity();
    for (arc = m_queue.PopUpTo(kEnd); arc != kNone; arc = m_queue.PopUpTo(kEnd))
        CloseArc(arc);
}

// Divides the arc below the site by one of the site's own.
void Sweep::AddSite(std::uint32_t site)
{
    std::uint32_t const left = m_beach.Find(site);
    m_queue.Remove(left);
    std::uint32_t const middle = m_beach.InsertAfter(left, site);
    std::uint32_t const right = m_beach.InsertAfter(middle, m_beach[left].site);
    m_beach[right].edge = m_beach[left].edge;
    m_beach[left].edge = m_beach[middle].edge = AddEdge(kNone);
    FindCircle(left);
    FindCircle(right);
}

void Sweep::CloseArc(std::uint32_t arc)
{
    BeachLine::Arc const closed = m_beach[arc];
    std::uint32_t const left = m_beach[closed.left].site;
    std::uint32_t const right = m_beach[closed.right].site;
    m_triangles.push_back({ static_cast<int>(left), static_cast<int>(right), static_cast<int>(closed.site) });
    CloseEdge(m_beach[closed.left].edge, left, closed.site, right);
    CloseEdge(closed.edge, closed.site, right, left);
    m_beach[closed.left].edge = AddEdge(closed.site);
    m_beach.Remove(arc);
    m_queue.Remove(closed.left);
    m_queue.Remove(closed.right);
    FindCircle(closed.left);
    FindCircle(closed.right);
}

void Sweep::FindCircle(std::uint32_t arc)
{
    BeachLine::Arc const& middle = m_beach[arc];
    if (middle.left == kNone || middle.right == kNone)
        return;
    BeachLine::Arc const& left = m_beach[middle.left];
    BeachLine::Arc const& right = m_beach[middle.right];
    if (left.site == right.site)
        return;
    double const area2 = Orientation(left.point, middle.point, right.point);
    if (area2 > 0.0)
        m_queue.Insert(arc, CircleTop(left.point, middle.point, right.point, area2));
}

std::uint32_t Sweep::AddEdge(std::uint32_t apex)
{
    if (m_freeEdge == kNone) {
        m_edges.push_back(apex);
        return static_cast<std::uint32_t>(m_edges.size() - 1);
    }
    std::uint32_t const edge = m_freeEdge;
    m_freeEdge = m_edges[edge];
    m_edges[edge] = apex;
    return edge;
}

// The edge gets another triangle, which turns left.
void Sweep::CloseEdge(std::uint32_t edge, std::uint32_t from, std::uint32_t to, std::uint32_t apex)
{
    std::uint32_t const opposite = m_edges[edge];
    if (opposite == kNone) {
        m_edges[edge] = apex;
        return;
    }
    auto const& points = m_sites.points;
    m_isDelaunay = m_isDelaunay && InCircle(points[from], points[to], points[apex], points[opposite]) <= 0.0;
    m_edges[edge] = m_freeEdge;
    m_freeEdge = edge;
}

} // namespace

std::vector<std::array<int, 3>> TriangulateDelaunay(
    std::span<double const> x, std::span<double const> y, std::pmr::memory_resource* memory)
{
    if (x.size() != y.size() || x.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw std::invalid_argument("Points to triangulate need as many y as x, and no more than an int can count.");
    CountedMemory counted(memory);
    std::uint32_t site = 0;
    try {
        DelaunaySites sites(&counted);
        SortSites(x, y, sites);
        if (sites.points.size() < 3)
            return {};
        Sweep sweep(sites, &counted, site);
        sweep.Run();
        if (!sweep.IsDelaunay())
            RepairDelaunay(sites.points, sweep.GetTriangles(), &counted);
        for (std::array<int, 3>& triangle : sweep.GetTriangles()) {
            for (int& corner : triangle)
                corner = static_cast<int>(sites.indices[static_cast<std::size_t>(corner)]);
        }
        return std::move(sweep.GetTriangles());
    } catch (std::bad_alloc const&) {
        (void)std::fprintf(
            stderr, "Insufficient memory processing site %u (%zu bytes in use)\n", site, counted.GetMost());
        throw;
    }
}

} // namespace ombrel
