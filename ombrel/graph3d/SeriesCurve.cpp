#include "ombrel/graph3d/SeriesCurve.h"
#include "ombrel/graph3d/bars/SeriesDrawing.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

template <typename Base> SeriesCurve<Base>::SeriesCurve(CPlot* plot, int useGraphColour)
    : Base(plot, useGraphColour)
    , m_drawing(std::make_unique<SeriesDrawing>())
{
}

template <typename Base> SeriesCurve<Base>::~SeriesCurve() = default;

template <typename Base> double SeriesCurve<Base>::GetBaselineAuto() const
{
    BoxAxes axes;
    this->GetBoxAxes(axes);
    return Baseline::GetAutomatic(axes[2]);
}

template <typename Base> double SeriesCurve<Base>::GetWorldBaseline() const
{
    BoxAxes axes;
    this->GetBoxAxes(axes);
    return m_series.baseline.Get(axes[2]);
}

template <typename Base> double SeriesCurve<Base>::GetViewBaseline() const
{
    BoxAxes axes;
    this->GetBoxAxes(axes);
    return axes[2].GetViewVal(GetWorldBaseline());
}

template <typename Base> bool SeriesCurve<Base>::HasFixedPlaces() const
{
    return this->GetCurveType() == C3DCurve::ctCartesian && this->GetNumTransforms() == 0;
}

template <typename Base> bool SeriesCurve<Base>::IsClipped(std::vector<CVertex> const& points) const
{
    auto const first = std::ranges::find_if(points, [](CVertex const& p) { return !IsGridGap(p.Z()); });
    if (!HasFixedPlaces() || first == points.end())
        return false;
    BoxAxes axes;
    this->GetBoxAxes(axes);
    std::size_t const k = m_series.rowMode == 0 ? 0 : 1;
    double const place = axes[k].GetViewVal(first->GetData()[k]);
    // Ends of ranges are often computed in another way than the points.
    constexpr double kTolerance = 1e-9;
    return !(std::fabs(place) <= (0.5 + kTolerance) * axes[k].scale);
}

template <typename Base> int SeriesCurve<Base>::SubcurveClipped(int k) const
{
    std::vector<CVertex> points;
    GetSubcurve(k, points);
    return IsClipped(points) ? 1 : 0;
}

template <typename Base> std::optional<LegendEntry> SeriesCurve<Base>::GetLegendEntry() const
{
    bool const hasStacks = m_series.drawStacks != 0;
    int const description = hasStacks ? m_series.stackColourDescription : m_series.lineColourDescription;
    if (description == SeriesSettings::cbValue || description == SeriesSettings::cbRow)
        return {};
    LegendEntry entry;
    entry.title = this->GetTitle();
    entry.colour = hasStacks ? m_series.stackColour : m_series.lineColour;
    return entry;
}

template <typename Base> void SeriesCurve<Base>::Render()
{
    C3DGraph* const graph = this->Get3DGraph();
    if (!graph || !this->IsValid())
        return;
    auto const forEachLine = [this](std::function<void(int, std::span<CVertex const>)> const& take) {
        std::vector<CVertex> points;
        int const count = GetNumSubcurves();
        for (int k = 0; k < count; ++k) {
            GetSubcurve(k, points);
            if (!IsClipped(points))
                take(k, points);
        }
    };
    m_drawing->Render(*graph, { *this, m_series, GetDataRevision(), HasFixedPlaces(), forEachLine });
}

template <typename Base> void SeriesCurve<Base>::InvalidateDeviceObjects() { m_drawing->InvalidateDeviceObjects(); }

template class SeriesCurve<C3DCurve>;
template class SeriesCurve<GridNodeCurve>;

} // namespace ombrel
