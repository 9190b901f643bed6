#pragma once
#include "ombrel/graph3d/geometry/DelaunaySites.h"

#include <array>
#include <cstdint>
#include <memory_resource>
#include <vector>

namespace ombrel {

/// The beach line of a sweep upwards: from left to right the parabolas that are nearest to the sweep line, each with a
/// site as its focus, and between neighbours the edge of the triangulation that joins their sites.
///
/// An arc is looked for from one whose site has nearly the same x. That is next to it as a rule; where it is not, a
/// skip list keeps the way short.
class BeachLine {
public:
    static constexpr std::uint32_t kNone = ~0U;
    struct Arc {
        FloatPoint point;
        std::uint32_t site = kNone;
        /// Its neighbours, kNone at the ends.
        std::uint32_t left = kNone;
        std::uint32_t right = kNone;
        /// To the right neighbour.
        std::uint32_t edge = kNone;
        /// Its highest step of the skip list; kNone for most.
        std::uint32_t step = kNone;
    };

    BeachLine(DelaunaySites const& sites, std::pmr::memory_resource* memory);
    Arc const& operator[](std::uint32_t arc) const { return m_arcs[arc]; }
    Arc& operator[](std::uint32_t arc) { return m_arcs[arc]; }
    /// The arc below a site that the sweep line has reached.
    std::uint32_t Find(std::uint32_t site) const;
    /// A new arc right of another; the first one, of kNone.
    std::uint32_t InsertAfter(std::uint32_t arc, std::uint32_t site);
    void Remove(std::uint32_t arc);

private:
    /// A leap to the next arcs that have steps of the same height; the lowest are 0.
    struct Step {
        std::uint32_t arc = kNone;
        std::uint32_t left = kNone;
        std::uint32_t right = kNone;
        std::uint32_t below = kNone;
        std::uint32_t height = 0;
    };
    std::uint32_t FindNear(std::uint32_t cell) const;
    bool IsRightOf(FloatPoint const& s, Arc const& p, Arc const& q) const;
    void AddSteps(std::uint32_t arc);
    void RemoveSteps(std::uint32_t arc);
    std::uint32_t FindStep(std::uint32_t arc, std::uint32_t height) const;
    void SetNear(std::uint32_t cell, std::uint32_t arc);

    DelaunaySites const& m_sites;
    std::pmr::vector<Arc> m_arcs;
    std::uint32_t m_freeArc = kNone;
    std::pmr::vector<Step> m_steps;
    std::uint32_t m_freeStep = kNone;
    /// The leftmost step of each height.
    std::array<std::uint32_t, 5> m_firstSteps { kNone, kNone, kNone, kNone, kNone };
    std::uint32_t m_numInserted = 0;
    /// An arc of a site of that cell; and which cells have one, a bit each, and which of these words are not 0.
    std::pmr::vector<std::uint32_t> m_nearArcs;
    std::pmr::vector<std::uint64_t> m_cells;
    std::pmr::vector<std::uint64_t> m_words;
    /// The arc that was last inserted or is left of one removed since.
    std::uint32_t m_recent = kNone;
};

} // namespace ombrel
