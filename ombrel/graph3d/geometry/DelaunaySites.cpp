#include "ombrel/graph3d/geometry/DelaunaySites.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

namespace ombrel {
namespace {

constexpr std::uint32_t kMostCells = 1U << 15U;

bool IsFloat(double v) { return std::abs(v) <= std::numeric_limits<float>::max(); }

// Unsigned numbers in the order of the floats, with −0 as 0.
std::uint32_t KeyOf(float v)
{
    auto const bits = std::bit_cast<std::uint32_t>(v + 0.0F);
    return (bits & 0x80000000U) != 0 ? ~bits : bits | 0x80000000U;
}

struct Item {
    std::uint32_t key;
    std::uint32_t index;
};
using Items = std::pmr::vector<Item>;

// Sorts by key, equal ones as they were: digit by digit, the lowest first.
void SortByKey(Items& items, Items& spare)
{
    constexpr int kBits = 11;
    constexpr std::uint32_t kDigits = 1U << kBits;
    std::array<std::array<std::uint32_t, kDigits>, 3> counts {};
    for (Item const& item : items) {
        for (std::size_t pass = 0; pass < counts.size(); ++pass)
            ++counts[pass][item.key >> (pass * kBits) & (kDigits - 1)];
    }
    for (std::size_t pass = 0; pass < counts.size(); ++pass) {
        auto& first = counts[pass];
        auto const digitOf = [&](Item const& item) { return item.key >> (pass * kBits) & (kDigits - 1); };
        if (items.empty() || first[digitOf(items.front())] == items.size())
            continue;
        std::uint32_t sum = 0;
        for (std::uint32_t& count : first)
            sum += std::exchange(count, sum);
        for (Item const& item : items)
            spare[first[digitOf(item)]++] = item;
        items.swap(spare);
    }
}

} // namespace

void SortSites(std::span<double const> x, std::span<double const> y, DelaunaySites& sites)
{
    std::pmr::memory_resource* const memory = sites.points.get_allocator().resource();
    Items items(memory);
    items.reserve(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (IsFloat(x[i]) && IsFloat(y[i]))
            items.push_back({ KeyOf(static_cast<float>(x[i])), static_cast<std::uint32_t>(i) });
    }
    Items spare(items.size(), memory);
    SortByKey(items, spare);
    std::size_t const n = items.size();
    sites.numCells = std::clamp(std::bit_ceil(static_cast<std::uint32_t>(n / 4)), 1U, kMostCells);
    std::pmr::vector<std::uint16_t> cellOf(x.size(), memory);
    for (std::size_t k = 0; k < n; ++k) {
        cellOf[items[k].index] = static_cast<std::uint16_t>(k * sites.numCells / n);
        items[k].key = KeyOf(static_cast<float>(y[items[k].index]));
    }
    SortByKey(items, spare);
    sites.points.reserve(n);
    sites.indices.reserve(n);
    sites.cells.reserve(n);
    for (Item const& item : items) {
        FloatPoint const point { static_cast<float>(x[item.index]), static_cast<float>(y[item.index]) };
        if (!sites.points.empty() && sites.points.back() == point)
            continue;
        sites.points.push_back(point);
        sites.indices.push_back(item.index);
        sites.cells.push_back(cellOf[item.index]);
    }
}

} // namespace ombrel
