#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/graph3d/ContourLines.h"
#include "ombrel/graph3d/geometry/Delaunay.h"
#include "ombrel/graph3d/geometry/PointCoordinates.h"
#include "ombrel/graph3d/render/IrregularSurfaceDrawing.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ombrel {

constinit CRuntimeClass const C3DIrregularSurfaceCurve::kClass
    = PersistentClass<C3DIrregularSurfaceCurve, C3DCurve>("C3DIrregularSurfaceCurve");

C3DIrregularSurfaceCurve::C3DIrregularSurfaceCurve(CPlot* plot, int useGraphColour)
    : C3DCurve(plot, useGraphColour)
    , m_drawing(std::make_unique<IrregularSurfaceDrawing>())
{
    SetTitle("Irregular Surface");
    SetItemType(it3DIrregularSurfaceCurve);
    SetColourDescription(0);
    SetGradationOn(1);
    ResetModifiedFlags();
}

C3DIrregularSurfaceCurve::~C3DIrregularSurfaceCurve() = default;

void C3DIrregularSurfaceCurve::Serialize(CArchive& ar)
{
    C3DCurve::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.Double(m_transparency).Nested(m_points).Int(m_useValueTable).Nested(m_valueTable);
    for (double& param : m_transformParams)
        f.Double(param);
    f.Int(m_wireframeOn).Dword(m_wireframeColour).Double(m_furtherDouble).Int(m_furtherInt);
    if (version >= 2) {
        f.Int(m_contours.on, m_contours.levelMode, m_contours.numBands).Double(m_contours.ref, m_contours.spacing);
        f.Int(m_normalAveraging);
    }
    // Documents hold no triangles: the next draw makes them.
    if (!ar.IsStoring())
        SetPlotDataModified(1);
}

// --- Points

void C3DIrregularSurfaceCurve::SetTableData(CDoubleArray const* const* arrays, int n)
{
    m_points = MakePointTable(arrays, n);
    SetModified(1);
    SetPlotDataModified(1);
}

void C3DIrregularSurfaceCurve::SetValueTable(CTableData const& table)
{
    m_valueTable = table;
    SetModified(1);
    SetPlotDataModified(1);
}

int C3DIrregularSurfaceCurve::GetNumPoints() const { return static_cast<int>(PointRows(m_points).GetSize()); }

int C3DIrregularSurfaceCurve::GetDataSize() const
{
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(m_points.GetDataSize() + m_valueTable.GetDataSize(), kMost));
}

void C3DIrregularSurfaceCurve::GetVertex(int point, CVertex& place) const
{
    PointRows const points(m_points);
    auto const [x, y, z] = GetPointPlace(GetCurveType(), points.At(CheckedIndex(point, points.GetSize())));
    place = CVertex(x, y, z);
}

void C3DIrregularSurfaceCurve::GetNormalisedVertex(int point, CVertex& place) const
{
    PointRows const places(m_places);
    auto const [x, y, z] = places.At(CheckedIndex(point, places.GetSize()));
    place = TakesPoints(GetCurveType()) ? GetBoxPlace(m_axes, CVertex(x, y, z)) : CVertex();
}

// --- Evaluation

int C3DIrregularSurfaceCurve::Evaluate()
{
    SetValid(0);
    ClearTriangles();
    UpdateGraphParameters();
    TranslateRotate();
    PointRanges const points = GetPointRanges(m_points);
    m_untransformedZ = { points.min[2], points.max[2] };
    m_valueRange = {};
    bool isFirst = true;
    for (int i = 0; i < m_valueTable.GetNumCols() && m_valueTable.HasData(); ++i) {
        double const value = std::as_const(m_valueTable).GetRow(0)[i];
        if (IsGridGap(value))
            continue;
        m_valueRange.min = isFirst ? value : std::min(m_valueRange.min, value);
        m_valueRange.max = isFirst ? value : std::max(m_valueRange.max, value);
        isFirst = false;
    }
    if (GetDataSourceType() == dsFormula || !m_hasPlaces)
        return 0;
    Triangulate();
    SetValid(1);
    BuildContourLevels();
    return 1;
}

void C3DIrregularSurfaceCurve::TranslateRotate()
{
    m_places = MakePointPlaces(*this, m_points);
    PointRanges const ranges = GetPointRanges(m_places);
    m_hasPlaces = ranges.count != 0;
    for (std::size_t k = 0; k < m_placeRanges.size(); ++k)
        m_placeRanges[k] = { ranges.min[k], ranges.max[k] };
}

void C3DIrregularSurfaceCurve::Triangulate()
{
    ClearTriangles();
    PointRows const points(m_points);
    PointRows const places(m_places);
    std::span<double const> x = points.GetRow(0);
    std::span<double const> const y = points.GetRow(1);
    // Points are left out by their x.
    std::vector<double> remaining;
    for (std::size_t i = 0; i < std::min(points.GetSize(), places.GetSize()); ++i) {
        if (!places.IsMissing(i))
            continue;
        if (remaining.empty())
            remaining.assign(x.begin(), x.end());
        remaining[i] = kGap;
    }
    if (!remaining.empty())
        x = remaining;
    m_triangles = TriangulateDelaunay(x, y);
}

void C3DIrregularSurfaceCurve::ClearTriangles()
{
    ++m_revision;
    m_triangles = {};
    m_faceNormals = {};
    m_pointNormals = {};
    ClearCommonVertexLists();
}

void C3DIrregularSurfaceCurve::GetPlaceRange(std::size_t coordinate, double& min, double& max) const
{
    if (!m_hasPlaces)
        return;
    min = m_placeRanges[coordinate].min;
    max = m_placeRanges[coordinate].max;
}

void C3DIrregularSurfaceCurve::GetValueRange(double& min, double& max) const
{
    min = m_valueRange.min;
    max = m_valueRange.max;
}

void C3DIrregularSurfaceCurve::GetUntransformedDataRange(double& min, double& max) const
{
    Range const& range = PlotSecondaryVariable() ? m_valueRange : m_untransformedZ;
    min = range.min;
    max = range.max;
}

// --- Normals

void C3DIrregularSurfaceCurve::BuildCommonVertexLists()
{
    m_drawing->lists = TriangleLists(static_cast<std::size_t>(GetNumPoints()), m_triangles);
}

void C3DIrregularSurfaceCurve::ClearCommonVertexLists() { m_drawing->lists = {}; }

std::span<std::uint32_t const> C3DIrregularSurfaceCurve::GetCommonVertexList(int point) const
{
    return m_drawing->lists.Of(CheckedIndex(point, static_cast<std::size_t>(GetNumPoints())));
}

void C3DIrregularSurfaceCurve::Normalise()
{
    CalculateNormals();
    if (m_normalAveraging)
        AverageNormals();
}

void C3DIrregularSurfaceCurve::CalculateNormals()
{
    std::vector<std::array<double, 3>> places(static_cast<std::size_t>(GetNumPoints()));
    CVertex place;
    for (std::size_t i = 0; i < places.size(); ++i) {
        GetNormalisedVertex(static_cast<int>(i), place);
        places[i] = { place.X(), place.Y(), place.Z() };
    }
    m_faceNormals = MakeFaceNormals(m_triangles, places);
}

void C3DIrregularSurfaceCurve::AverageNormals()
{
    if (m_faceNormals.size() != m_triangles.size())
        CalculateNormals();
    BuildCommonVertexLists();
    m_pointNormals = AverageFaceNormals(m_triangles, m_faceNormals, static_cast<std::size_t>(GetNumPoints()));
}

CNormal C3DIrregularSurfaceCurve::GetAveragedNormal(int point) const
{
    std::size_t const i = CheckedIndex(point, static_cast<std::size_t>(GetNumPoints()));
    if (i >= m_pointNormals.size())
        return {};
    auto const& [x, y, z] = m_pointNormals[i];
    return { static_cast<double>(x), static_cast<double>(y), static_cast<double>(z) };
}

} // namespace ombrel
