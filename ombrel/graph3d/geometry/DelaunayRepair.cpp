#include "ombrel/graph3d/geometry/DelaunayRepair.h"

#include <cstdint>

namespace ombrel {
namespace {

// Side k of triangle t, from its corner k to the next one, is number 3 t + k.
class Flipper {
public:
    using Triangles = std::vector<std::array<int, 3>>;

    Flipper(std::span<FloatPoint const> points, Triangles& triangles, std::pmr::memory_resource* memory)
        : m_points(points)
        , m_triangles(triangles)
        , m_twins(3 * triangles.size(), kNone, memory)
        , m_pending(memory)
    {
        Join(memory);
    }

    void Run()
    {
        for (std::uint32_t side = 0; side < m_twins.size(); ++side) {
            m_pending.push_back(side);
            while (!m_pending.empty()) {
                std::uint32_t const next = m_pending.back();
                m_pending.pop_back();
                if (IsWrong(next))
                    Flip(next);
            }
        }
    }

private:
    static constexpr std::uint32_t kNone = ~0U;
    static std::uint32_t Next(std::uint32_t side) { return side % 3 == 2 ? side - 2 : side + 1; }
    static std::uint32_t Previous(std::uint32_t side) { return side % 3 == 0 ? side + 2 : side - 1; }
    int& Start(std::uint32_t side) { return m_triangles[side / 3][side % 3]; }
    FloatPoint const& PointOf(std::uint32_t side) { return m_points[static_cast<std::size_t>(Start(side))]; }

    // Finds the side of another triangle that runs back along each.
    void Join(std::pmr::memory_resource* memory)
    {
        auto const numSides = static_cast<std::uint32_t>(m_twins.size());
        std::pmr::vector<std::uint32_t> first(m_points.size() + 1, 0, memory);
        for (std::uint32_t side = 0; side < numSides; ++side)
            ++first[static_cast<std::size_t>(Start(side)) + 1];
        for (std::size_t i = 1; i < first.size(); ++i)
            first[i] += first[i - 1];
        std::pmr::vector<std::uint32_t> last(first, memory);
        std::pmr::vector<std::uint32_t> sides(numSides, kNone, memory);
        for (std::uint32_t side = 0; side < numSides; ++side)
            sides[last[static_cast<std::size_t>(Start(side))]++] = side;
        for (std::uint32_t side = 0; side < numSides; ++side) {
            auto const end = static_cast<std::size_t>(Start(Next(side)));
            for (std::uint32_t k = first[end]; k < last[end]; ++k) {
                if (Start(Next(sides[k])) == Start(side))
                    m_twins[side] = sides[k];
            }
        }
    }

    bool IsWrong(std::uint32_t side)
    {
        std::uint32_t const twin = m_twins[side];
        return twin != kNone
            && InCircle(PointOf(Next(side)), PointOf(side), PointOf(Previous(side)), PointOf(Previous(twin))) > 0.0;
    }

    // The triangles a b c and b a d become a d c and d b c.
    void Flip(std::uint32_t ab)
    {
        std::uint32_t const bc = Next(ab);
        std::uint32_t const ca = Previous(ab);
        std::uint32_t const ba = m_twins[ab];
        std::uint32_t const ad = Next(ba);
        std::uint32_t const db = Previous(ba);
        int const c = Start(ca);
        int const d = Start(db);
        std::uint32_t const outerBC = m_twins[bc];
        std::uint32_t const outerAD = m_twins[ad];
        // Side ab becomes ad, bc becomes dc; ba becomes bc, ad becomes cd.
        Start(bc) = d;
        Start(ad) = c;
        Link(ab, outerAD);
        Link(ba, outerBC);
        Link(bc, ad);
        for (std::uint32_t const side : { ab, ba, ca, db })
            m_pending.push_back(side);
    }

    void Link(std::uint32_t side, std::uint32_t twin)
    {
        m_twins[side] = twin;
        if (twin != kNone)
            m_twins[twin] = side;
    }

    std::span<FloatPoint const> m_points;
    Triangles& m_triangles;
    std::pmr::vector<std::uint32_t> m_twins;
    std::pmr::vector<std::uint32_t> m_pending;
};

} // namespace

void RepairDelaunay(
    std::span<FloatPoint const> points, std::vector<std::array<int, 3>>& triangles, std::pmr::memory_resource* memory)
{
    Flipper(points, triangles, memory).Run();
}

} // namespace ombrel
