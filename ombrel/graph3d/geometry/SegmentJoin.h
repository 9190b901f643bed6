#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ombrel {

struct ContourPolylines;

/// Joins segments whose ends have the same key. At most two ends have a key in common.
class SegmentJoin {
public:
    void Add(
        std::size_t fromKey, std::array<double, 2> const& from, std::size_t toKey, std::array<double, 2> const& to);
    /// Appends the lines: those with two loose ends first, then the closed ones, each in the order of its first
    /// segment.
    void Join(ContourPolylines& lines) const;

private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;
    struct Slot {
        std::size_t key = 0;
        std::uint32_t end = kNone;
    };
    struct End {
        std::array<double, 2> point;
        /// The end with the same key.
        std::uint32_t partner;
    };

    void AddEnd(std::size_t key, std::array<double, 2> const& point);
    Slot& FindSlot(std::size_t key);
    void Grow();
    void Follow(std::uint32_t end, std::vector<bool>& used, ContourPolylines& lines) const;

    /// Ends 2k and 2k + 1 belong to segment k.
    std::vector<End> m_ends;
    /// An open-addressing table of keys; its size is a power of two.
    std::vector<Slot> m_slots;
};

} // namespace ombrel
