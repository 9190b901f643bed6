#include "ombrel/graph3d/bars/PointCells.h"
#include "ombrel/graph3d/ContourLines.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

PointColumns::PointColumns(std::span<double const> places)
{
    std::vector<double> all;
    std::ranges::copy_if(places, std::back_inserter(all), [](double place) { return !IsGridGap(place); });
    if (all.empty())
        return;
    std::ranges::sort(all);
    constexpr double kSame = 1e-9;
    m_slack = kSame * (all.back() - all.front());
    for (double const place : all) {
        if (m_places.empty() || place - m_places.back() > m_slack)
            m_places.push_back(place);
    }
}

int PointColumns::Find(double place) const
{
    auto const after = std::ranges::upper_bound(m_places, place);
    return after == m_places.begin() ? 0 : static_cast<int>(after - m_places.begin()) - 1;
}

double PointColumns::GetCell(bool isGrid, std::size_t n) const
{
    if (m_places.size() < 2)
        return 1.0;
    double const extent = m_places.back() - m_places.front();
    if (!isGrid) {
        // Where nothing keeps points apart, bars as wide as in a grid would hide each other.
        constexpr double kShare = 1.0 / 3.0;
        return kShare * extent / std::sqrt(static_cast<double>(n));
    }
    double cell = extent;
    for (std::size_t k = 1; k < m_places.size(); ++k)
        cell = std::min(cell, m_places[k] - m_places[k - 1]);
    return cell;
}

bool IsPointGrid(PointColumns const& columns, PointColumns const& rows, std::size_t n)
{
    return static_cast<double>(columns.GetPlaces().size()) * static_cast<double>(rows.GetPlaces().size())
        <= 2.0 * static_cast<double>(n);
}

} // namespace ombrel
