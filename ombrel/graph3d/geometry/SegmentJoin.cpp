#include "ombrel/graph3d/geometry/SegmentJoin.h"
#include "ombrel/graph3d/ContourLines.h"

#include <algorithm>

namespace ombrel {

void SegmentJoin::Add(
    std::size_t fromKey, std::array<double, 2> const& from, std::size_t toKey, std::array<double, 2> const& to)
{
    AddEnd(fromKey, from);
    AddEnd(toKey, to);
}

void SegmentJoin::AddEnd(std::size_t key, std::array<double, 2> const& point)
{
    // There are never more keys than ends.
    if (2 * m_ends.size() >= m_slots.size())
        Grow();
    auto const end = static_cast<std::uint32_t>(m_ends.size());
    m_ends.push_back({ point, kNone });
    Slot& slot = FindSlot(key);
    if (slot.end == kNone) {
        slot = { key, end };
        return;
    }
    m_ends[end].partner = slot.end;
    m_ends[slot.end].partner = end;
}

SegmentJoin::Slot& SegmentJoin::FindSlot(std::size_t key)
{
    std::size_t const mask = m_slots.size() - 1;
    // Multiplied by an odd number near the golden ratio of the range, neighbours' keys spread.
    std::size_t at = (key * 0x9E3779B97F4A7C15U >> 20) & mask;
    while (m_slots[at].end != kNone && m_slots[at].key != key)
        at = (at + 1) & mask;
    return m_slots[at];
}

void SegmentJoin::Grow()
{
    std::vector<Slot> slots(std::max<std::size_t>(4 * m_slots.size(), 1024));
    slots.swap(m_slots);
    for (Slot const& slot : slots) {
        if (slot.end != kNone)
            FindSlot(slot.key) = slot;
    }
}

void SegmentJoin::Join(ContourPolylines& lines) const
{
    std::vector<bool> used(m_ends.size() / 2, false);
    auto const count = static_cast<std::uint32_t>(m_ends.size());
    for (std::uint32_t end = 0; end < count; ++end) {
        if (m_ends[end].partner == kNone && !used[end / 2])
            Follow(end, used, lines);
    }
    for (std::uint32_t end = 0; end < count; end += 2) {
        if (!used[end / 2])
            Follow(end, used, lines);
    }
}

void SegmentJoin::Follow(std::uint32_t end, std::vector<bool>& used, ContourPolylines& lines) const
{
    lines.points.push_back(m_ends[end].point);
    while (end != kNone && !used[end / 2]) {
        used[end / 2] = true;
        std::uint32_t const far = end ^ 1;
        lines.points.push_back(m_ends[far].point);
        end = m_ends[far].partner;
    }
    lines.starts.push_back(lines.points.size());
}

} // namespace ombrel
