#include "ombrel/graph3d/ContourColours.h"
#include "ombrel/foundation/Utils.h"

#include <utility>

namespace ombrel {

ContourColours::ContourColours(LevelSettings const& settings, double lo, double hi, ColourOf const& colourOf)
{
    ContourLevels levels = MakeLevels(settings, lo, hi);
    m_bands = ContourBands(levels.values);
    m_error = std::move(levels.error);
    auto const n = static_cast<int>(levels.values.size());
    for (int k = 0; k <= n; ++k)
        m_colours.Add(colourOf(n > 0 ? lo + k * (hi - lo) / n : lo));
}

void ContourColours::Replace(ContourColours&& other, CPlotComponent* curve)
{
    CString const told = std::move(m_error);
    *this = std::move(other);
    if (m_error != told && !m_error.IsEmpty())
        CVUtils::PlotDialogErrMsg(curve, m_error, "");
}

COLORREF ContourColours::GetColour(double value) const
{
    int const band = m_bands.Find(value);
    return band < m_colours.GetSize() ? m_colours.GetAt(band) : 0;
}

void ContourColours::GetKeyEntries(std::optional<double> lowEnd, CDWordArray& colours, CDoubleArray& values) const
{
    colours = m_colours;
    values.RemoveAll();
    if (lowEnd)
        values.Add(*lowEnd);
    for (double const level : GetLevels())
        values.Add(level);
}

} // namespace ombrel
