#include "ombrel/graph3d/ContourLevels.h"

#include <algorithm>
#include <cmath>

namespace ombrel {
namespace {

bool IsRange(double lo, double hi) { return std::isfinite(lo) && std::isfinite(hi) && lo < hi; }

ContourLevels TooMany()
{
    CString text;
    text.Format("More than %d contour levels were asked for.", kMostContourLevels);
    return { {}, text };
}

} // namespace

ContourLevels MakeEvenLevels(double lo, double hi, int parts)
{
    if (parts > kMostContourLevels + 1)
        return TooMany();
    ContourLevels levels;
    if (!IsRange(lo, hi))
        return levels;
    double const width = hi - lo;
    double const step = std::isfinite(width) ? width / parts : hi / parts - lo / parts;
    for (int k = 1; k < parts; ++k)
        levels.values.push_back(lo + k * step);
    return levels;
}

ContourLevels MakeSpacedLevels(double lo, double hi, double reference, double spacing)
{
    if (!(spacing > 0.0) || !std::isfinite(spacing))
        return { {}, "The contour spacing must be greater than zero." };
    if (!std::isfinite(reference))
        return { {}, "The contour reference value must be a number." };
    ContourLevels levels;
    if (!IsRange(lo, hi))
        return levels;
    double const first = std::ceil((lo - reference) / spacing);
    double const last = std::ceil((hi - reference) / spacing);
    if (!(last - first <= kMostContourLevels))
        return TooMany();
    // Division and multiplication round: one more on either side is looked at.
    for (double k = first - 1.0; k <= last + 1.0; ++k) {
        double const level = reference + k * spacing;
        if (level >= lo && level < hi) {
            if (!levels.values.empty() && !(levels.values.back() < level))
                return { {}, "The contour spacing is too small beside the reference value." };
            levels.values.push_back(level);
        }
        if (k + 1.0 == k)
            return { {}, "The contour spacing is too small beside the reference value." };
    }
    return levels;
}

ContourLevels MakeArbitraryLevels(std::span<double const> levels)
{
    if (levels.size() > static_cast<std::size_t>(kMostContourLevels))
        return TooMany();
    if (!std::ranges::all_of(levels, [](double level) { return std::isfinite(level); }))
        return { {}, "Contour levels must be numbers." };
    return { { levels.begin(), levels.end() }, {} };
}

void DropEndLevels(std::vector<double>& levels, double lo, double hi)
{
    auto const equals = [](double level, double end) { return static_cast<float>(level) == static_cast<float>(end); };
    std::erase_if(levels, [&](double level) { return equals(level, lo) || equals(level, hi); });
}

ContourLevels MakeLevels(LevelSettings const& settings, double lo, double hi)
{
    ContourLevels levels;
    switch (settings.mode) {
    case LevelSettings::kSpacing:
        levels = MakeSpacedLevels(lo, hi, settings.ref, settings.spacing);
        break;
    case LevelSettings::kArbitrary:
        levels = MakeArbitraryLevels(settings.arbitrary);
        break;
    default:
        levels = MakeEvenLevels(lo, hi, settings.numBands);
        break;
    }
    DropEndLevels(levels.values, lo, hi);
    return levels;
}

ContourBands::ContourBands(std::span<double const> levels)
    : m_levels(levels.begin(), levels.end())
    , m_ascending(std::ranges::is_sorted(levels))
{
}

int ContourBands::Find(double value) const
{
    auto const last = static_cast<int>(m_levels.size());
    if (m_levels.empty() || value <= m_levels.front())
        return 0;
    if (!(value <= m_levels.back()))
        return last;
    if (m_ascending)
        return static_cast<int>(std::ranges::lower_bound(m_levels, value) - m_levels.begin());
    for (std::size_t k = 0; k + 1 < m_levels.size(); ++k) {
        if (m_levels[k] < value && value <= m_levels[k + 1])
            return static_cast<int>(k) + 1;
    }
    return last;
}

} // namespace ombrel
