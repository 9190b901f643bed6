#pragma once
#include "ombrel/graph3d/geometry/ExactPredicates.h"

#include <cstdint>
#include <limits>
#include <memory_resource>
#include <span>
#include <vector>

namespace ombrel {

/// The circle events of a sweep, the lowest first: an arc of the beach line vanishes when the sweep has reached the top
/// of the circle through its site and those of its neighbours.
///
/// Most events are taken back before the sweep comes to them, so all but those of the next few sites only wait in
/// lists, one for each block of sites.
class CircleQueue {
public:
    static constexpr std::uint32_t kNone = ~0U;

    /// The sites in the order of the sweep, at least one.
    CircleQueue(std::span<FloatPoint const> sites, std::pmr::memory_resource* memory);
    /// Takes up the events before the block of a site; sites are told in order.
    void Advance(std::uint32_t site);
    /// Arcs have numbers from 0 on, as few as possible, and one event each at most.
    void Insert(std::uint32_t arc, double top);
    void Remove(std::uint32_t arc);
    /// Removes and returns the arc of the lowest event that is not above y; kNone without one.
    std::uint32_t PopUpTo(double y);

private:
    static constexpr std::uint32_t kBlockBits = 6;
    static constexpr double kNever = std::numeric_limits<double>::infinity();
    /// In the heap, where events that are taken back stay until they come up.
    static constexpr std::uint32_t kInHeap = kNone - 1;
    struct Node {
        double top = kNever;
        std::uint32_t list = kNone;
        std::uint32_t next = kNone;
        std::uint32_t previous = kNone;
    };
    struct Entry {
        double top;
        std::uint32_t arc;
        /// Heaps of the standard library have their greatest entry first.
        friend bool operator<(Entry const& a, Entry const& b) { return a.top > b.top; }
    };
    std::uint32_t FindBlock(double top) const;

    std::pmr::vector<double> m_starts;
    std::pmr::vector<std::uint32_t> m_lists;
    std::pmr::vector<Node> m_nodes;
    std::pmr::vector<Entry> m_heap;
    std::uint32_t m_block = 0;
    std::uint32_t m_lastBlock;
    double m_blocksPerUnit = 0.0;
};

} // namespace ombrel
