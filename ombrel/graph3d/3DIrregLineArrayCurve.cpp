#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/geometry/PointCoordinates.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const C3DIrregLineArrayCurve::kClass
    = PersistentClass<C3DIrregLineArrayCurve, C3DCurve>("C3DIrregLineArrayCurve");

C3DIrregLineArrayCurve::C3DIrregLineArrayCurve(CPlot* plot, int useGraphColour)
    : SeriesCurve<C3DCurve>(plot, useGraphColour)
{
    SetTitle("Irregular Series");
    SetItemType(it3DIrregLineArrayCurve);
    ResetModifiedFlags();
}

void C3DIrregLineArrayCurve::Serialize(CArchive& ar)
{
    C3DCurve::Serialize(ar);
    ArchiveFields f(ar);
    f.Nested(m_points);
    m_series.Serialize(f, GetColourDescription());
    if (!ar.IsStoring())
        SetPlotDataModified(1);
}

void C3DIrregLineArrayCurve::SetPoints(CDoubleArray const& x, CDoubleArray const& y, CDoubleArray const& z)
{
    m_points.Initialise(std::min({ x.GetValidSizeReverse(), y.GetValidSizeReverse(), z.GetValidSizeReverse() }));
    for (int i = 0; i < m_points.GetNumPoints(); ++i)
        m_points[i] = { x[i], y[i], z[i] };
    SetModified(1);
    SetPlotDataModified(1);
}

void C3DIrregLineArrayCurve::SetRowMode(int mode)
{
    SeriesCurve<C3DCurve>::SetRowMode(mode);
    SetPlotDataModified(1);
}

int C3DIrregLineArrayCurve::Evaluate()
{
    ++m_revision;
    m_places.clear();
    m_hasRange = false;
    if (GetDataSourceType() != dsFormula) {
        m_places.reserve(m_points.GetPoints().size());
        for (CVertex const& point : m_points.GetPoints()) {
            std::array<double, 3> place { kGap, kGap, kGap };
            if (!C3DLineData::IsMissing(point)) {
                place = GetPointPlace(GetCurveType(), { point.X(), point.Y(), point.Z() });
                Transform(&place[0], &place[1], &place[2]);
            }
            m_places.emplace_back(place[0], place[1], place[2]);
            if (std::ranges::any_of(place, IsGridGap))
                continue;
            for (std::size_t k = 0; k < place.size(); ++k) {
                m_min[k] = m_hasRange ? std::min(m_min[k], place[k]) : place[k];
                m_max[k] = m_hasRange ? std::max(m_max[k], place[k]) : place[k];
            }
            m_hasRange = true;
        }
    }
    BuildStackCounts();
    SetValid(m_hasRange);
    return IsValid();
}

void C3DIrregLineArrayCurve::BuildStackCounts()
{
    m_counts.clear();
    m_starts.clear();
    auto const points = m_points.GetPoints();
    std::size_t const key = GetRowMode() == 0 ? 0 : 1;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i == 0 || points[i].GetData()[key] != points[i - 1].GetData()[key]) {
            m_counts.push_back(0);
            m_starts.push_back(i);
        }
        ++m_counts.back();
    }
}

void C3DIrregLineArrayCurve::GetSubcurve(int k, std::vector<CVertex>& points) const
{
    std::size_t const line = CheckedIndex(k, m_counts.size());
    points.clear();
    // Nothing of points that have not been evaluated.
    if (m_places.size() != m_points.GetPoints().size())
        return;
    auto const first = m_places.begin() + static_cast<std::ptrdiff_t>(m_starts[line]);
    points.assign(first, first + m_counts[line]);
}

void C3DIrregLineArrayCurve::GetNormalisedVertex(int i, CVertex& vertex) const
{
    BoxAxes axes;
    GetBoxAxes(axes);
    vertex = GetBoxPlace(axes, m_places[CheckedIndex(i, m_places.size())]);
}

void C3DIrregLineArrayCurve::GetRange(std::size_t coordinate, double& min, double& max) const
{
    if (!m_hasRange)
        return;
    min = m_min[coordinate];
    max = m_max[coordinate];
}

} // namespace ombrel
