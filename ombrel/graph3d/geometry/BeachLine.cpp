#include "ombrel/graph3d/geometry/BeachLine.h"

#include <bit>

namespace ombrel {
namespace {

constexpr std::uint32_t kNone = BeachLine::kNone;

std::uint32_t HighestBit(std::uint64_t bits) { return 63 - static_cast<std::uint32_t>(std::countl_zero(bits)); }

// The highest bit of a set up to a place; kNone without one.
std::uint32_t FindBitUpTo(std::pmr::vector<std::uint64_t> const& words, std::uint32_t place)
{
    std::uint32_t word = place / 64;
    std::uint64_t bits = words[word] & (~std::uint64_t { 0 } >> (63 - place % 64));
    while (bits == 0 && word != 0)
        bits = words[--word];
    return bits != 0 ? word * 64 + HighestBit(bits) : kNone;
}

template <typename T> std::uint32_t TakeSlot(std::pmr::vector<T>& slots, std::uint32_t& freeSlot)
{
    std::uint32_t const slot = freeSlot;
    if (slot == kNone) {
        slots.emplace_back();
        return static_cast<std::uint32_t>(slots.size() - 1);
    }
    freeSlot = slots[slot].right;
    return slot;
}

template <typename T> void FreeSlot(std::pmr::vector<T>& slots, std::uint32_t& freeSlot, std::uint32_t slot)
{
    slots[slot].right = freeSlot;
    freeSlot = slot;
}

} // namespace

BeachLine::BeachLine(DelaunaySites const& sites, std::pmr::memory_resource* memory)
    : m_sites(sites)
    , m_arcs(memory)
    , m_steps(memory)
    , m_nearArcs(sites.numCells, kNone, memory)
    , m_cells((sites.numCells + 63) / 64, 0, memory)
    , m_words((m_cells.size() + 63) / 64, 0, memory)
{
}

// --- Looking for arcs

std::uint32_t BeachLine::FindNear(std::uint32_t cell) const
{
    if (m_nearArcs[cell] != kNone)
        return m_nearArcs[cell];
    std::uint32_t word = cell / 64;
    std::uint64_t bits = m_cells[word] & (~std::uint64_t { 0 } >> (63 - cell % 64));
    if (bits == 0) {
        word = word != 0 ? FindBitUpTo(m_words, word - 1) : kNone;
        if (word == kNone)
            return m_recent;
        bits = m_cells[word];
    }
    return m_nearArcs[word * 64 + HighestBit(bits)];
}

// Whether s, on the sweep line, lies right of the point where the arc of p ends and that of q begins.
bool BeachLine::IsRightOf(FloatPoint const& s, Arc const& p, Arc const& q) const
{
    // The arc of the later site lies within the other one's, around the site itself.
    if (p.site < q.site) {
        if (s.x > q.point.x)
            return true;
    } else if (s.x < p.point.x) {
        return false;
    }
    return ArcOrder(p.point, q.point, s) > 0.0;
}

std::uint32_t BeachLine::Find(std::uint32_t site) const
{
    FloatPoint const& s = m_sites.points[site];
    auto const isLeftOfEnd = [&](std::uint32_t arc) {
        std::uint32_t const right = m_arcs[arc].right;
        return right == kNone || !IsRightOf(s, m_arcs[arc], m_arcs[right]);
    };
    auto const isRightOfStart = [&](std::uint32_t arc) {
        std::uint32_t const left = m_arcs[arc].left;
        return left == kNone || IsRightOf(s, m_arcs[left], m_arcs[arc]);
    };
    // The farthest leap that does not go too far.
    auto const leap = [&](std::uint32_t arc, std::uint32_t Step::*side, auto const& isAllowed) {
        for (std::uint32_t step = m_arcs[arc].step; step != kNone; step = m_steps[step].below) {
            std::uint32_t const next = m_steps[step].*side;
            if (next != kNone && isAllowed(m_steps[next].arc))
                return m_steps[next].arc;
        }
        return kNone;
    };
    std::uint32_t arc = FindNear(m_sites.cells[site]);
    if (!isRightOfStart(arc)) {
        do {
            std::uint32_t const next = leap(arc, &Step::left, isLeftOfEnd);
            arc = next != kNone ? next : m_arcs[arc].left;
        } while (!isRightOfStart(arc));
        return arc;
    }
    while (!isLeftOfEnd(arc)) {
        std::uint32_t const next = leap(arc, &Step::right, isRightOfStart);
        arc = next != kNone ? next : m_arcs[arc].right;
    }
    return arc;
}

// --- Changes

std::uint32_t BeachLine::InsertAfter(std::uint32_t arc, std::uint32_t site)
{
    std::uint32_t const added = TakeSlot(m_arcs, m_freeArc);
    std::uint32_t const right = arc != kNone ? m_arcs[arc].right : kNone;
    m_arcs[added] = { m_sites.points[site], site, arc, right, kNone, kNone };
    if (arc != kNone)
        m_arcs[arc].right = added;
    if (right != kNone)
        m_arcs[right].left = added;
    SetNear(m_sites.cells[site], added);
    m_recent = added;
    AddSteps(added);
    return added;
}

void BeachLine::Remove(std::uint32_t arc)
{
    Arc const removed = m_arcs[arc];
    m_arcs[removed.left].right = removed.right;
    m_arcs[removed.right].left = removed.left;
    if (m_recent == arc)
        m_recent = removed.left;
    std::uint32_t const cell = m_sites.cells[removed.site];
    if (m_nearArcs[cell] == arc) {
        auto const isInCell = [&](std::uint32_t a) { return m_sites.cells[m_arcs[a].site] == cell; };
        SetNear(cell, isInCell(removed.left) ? removed.left : isInCell(removed.right) ? removed.right : kNone);
    }
    RemoveSteps(arc);
    FreeSlot(m_arcs, m_freeArc, arc);
}

void BeachLine::SetNear(std::uint32_t cell, std::uint32_t arc)
{
    m_nearArcs[cell] = arc;
    std::uint64_t& bits = m_cells[cell / 64];
    std::uint64_t const bit = std::uint64_t { 1 } << cell % 64;
    bits = arc != kNone ? bits | bit : bits & ~bit;
    std::uint64_t& words = m_words[cell / 4096];
    std::uint64_t const word = std::uint64_t { 1 } << cell / 64 % 64;
    words = bits != 0 ? words | word : words & ~word;
}

// --- Skip list

// The step of that height of the arc, or of the next one to the left that has one.
std::uint32_t BeachLine::FindStep(std::uint32_t arc, std::uint32_t height) const
{
    if (height == 0) {
        while (arc != kNone && m_arcs[arc].step == kNone)
            arc = m_arcs[arc].left;
    } else {
        std::uint32_t lower = FindStep(arc, height - 1);
        while (lower != kNone && m_steps[m_arcs[m_steps[lower].arc].step].height < height)
            lower = m_steps[lower].left;
        arc = lower != kNone ? m_steps[lower].arc : kNone;
    }
    if (arc == kNone)
        return kNone;
    std::uint32_t step = m_arcs[arc].step;
    while (m_steps[step].height != height)
        step = m_steps[step].below;
    return step;
}

// One arc in 16 has a step, one of these in 16 a higher one, and so on.
void BeachLine::AddSteps(std::uint32_t arc)
{
    std::uint32_t chance = ++m_numInserted * 0x9E3779B9U;
    chance ^= chance >> 15U;
    for (std::uint32_t height = 0; height < m_firstSteps.size() && chance % 16 == 0; ++height, chance /= 16) {
        std::uint32_t const left = FindStep(m_arcs[arc].left, height);
        std::uint32_t const added = TakeSlot(m_steps, m_freeStep);
        std::uint32_t right = kNone;
        if (left != kNone) {
            right = m_steps[left].right;
            m_steps[left].right = added;
        } else {
            right = m_firstSteps[height];
            m_firstSteps[height] = added;
        }
        if (right != kNone)
            m_steps[right].left = added;
        m_steps[added] = { arc, left, right, m_arcs[arc].step, height };
        m_arcs[arc].step = added;
    }
}

void BeachLine::RemoveSteps(std::uint32_t arc)
{
    for (std::uint32_t step = m_arcs[arc].step; step != kNone;) {
        Step const removed = m_steps[step];
        (removed.left != kNone ? m_steps[removed.left].right : m_firstSteps[removed.height]) = removed.right;
        if (removed.right != kNone)
            m_steps[removed.right].left = removed.left;
        FreeSlot(m_steps, m_freeStep, step);
        step = removed.below;
    }
}

} // namespace ombrel
