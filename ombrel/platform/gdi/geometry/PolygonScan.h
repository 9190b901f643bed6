#pragma once
#include "ombrel/platform/gdi/Region.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace ombrel {

/// Finds the pixels of a polygon row by row, without keeping them.
///
/// Every edge is followed with whole-number arithmetic, so that a row's crossings are exact wherever the scan begins.
class PolygonScan {
public:
    /// Rows outside top ≤ y < bottom are left out. The points may form any closed shape; the last joins the first.
    PolygonScan(std::span<CPoint const> points, PolyFillMode mode, int top, int bottom);

    /// Calls emit(y, left, right) for the spans left ≤ x < right: ordered by row and column, never touching.
    template <typename Emit> void Run(Emit&& emit)
    {
        for (int y = m_firstRow; Advance(y); ++y) {
            if (m_mode == WINDING)
                EmitWinding(y, emit);
            else
                EmitAlternate(y, emit);
        }
    }

private:
    struct Edge {
        /// The first pixel at or right of the crossing with the current row.
        int crossing;
        /// How far that is beyond the crossing, in 1 / height.
        int beyond;
        int height;
        int step;
        int stepBeyond;
        int bottom;
        int winding;
        void Step()
        {
            crossing += step;
            beyond += stepBeyond;
            if (beyond >= height) {
                beyond -= height;
                --crossing;
            }
        }
    };
    struct Start {
        int row;
        std::size_t edge;
    };

    /// Makes m_active the edges that cross the row, ordered; false when no rows are left.
    bool Advance(int& y);
    template <typename Emit> void EmitAlternate(int y, Emit&& emit) const
    {
        std::size_t i = 0;
        while (i + 1 < m_active.size()) {
            int const left = m_active[i].crossing;
            int right = m_active[i + 1].crossing;
            i += 2;
            while (i + 1 < m_active.size() && m_active[i].crossing == right) {
                right = m_active[i + 1].crossing;
                i += 2;
            }
            if (left < right)
                emit(y, left, right);
        }
    }
    template <typename Emit> void EmitWinding(int y, Emit&& emit) const
    {
        std::size_t i = 0;
        while (i < m_active.size()) {
            int const left = m_active[i].crossing;
            int right = left;
            int turns = 0;
            do {
                turns += m_active[i].winding;
                right = m_active[i].crossing;
                ++i;
            } while (i < m_active.size() && (turns != 0 || m_active[i].crossing == right));
            if (left < right)
                emit(y, left, right);
        }
    }

    PolyFillMode m_mode;
    int m_firstRow = 0;
    int m_lastRow = 0;
    std::vector<Edge> m_edges;
    std::vector<Start> m_starts;
    std::size_t m_nextStart = 0;
    std::vector<Edge> m_active;
};

} // namespace ombrel
