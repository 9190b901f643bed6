#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/bars/BarGeometry.h"
#include "ombrel/graph3d/bars/PointCells.h"
#include "ombrel/graph3d/geometry/PointCoordinates.h"
#include "ombrel/graph3d/render/KeptBatch.h"

#include <utility>

namespace ombrel {

constinit CRuntimeClass const C3DIrregBarCurve::kClass
    = PersistentClass<C3DIrregBarCurve, C3DCurve>("C3DIrregBarCurve");

struct C3DIrregBarCurve::Drawing : KeptBatch<BarsKey, BarBatch> { };

struct C3DIrregBarCurve::Columns {
    PointColumns x;
    PointColumns y;
};

C3DIrregBarCurve::C3DIrregBarCurve(CPlot* plot, int useGraphColour)
    : BarAccessors<C3DCurve>(plot, useGraphColour)
    , m_columns(std::make_unique<Columns>())
    , m_drawing(std::make_unique<Drawing>())
{
    SetTitle("Irregular Bars");
    SetItemType(it3DIrregBarCurve);
    ResetModifiedFlags();
}

C3DIrregBarCurve::~C3DIrregBarCurve() = default;

void C3DIrregBarCurve::Serialize(CArchive& ar)
{
    C3DCurve::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Nested(m_points);
    m_bars.Serialize(f);
    if (!ar.IsStoring())
        SetPlotDataModified(1);
}

void C3DIrregBarCurve::SetTableData(CDoubleArray** xyz, int n)
{
    Change(m_points, MakePointTable(xyz, n));
    SetPlotDataModified(1);
}

int C3DIrregBarCurve::Evaluate()
{
    ++m_revision;
    m_places = GetDataSourceType() == dsFormula ? CTableData() : MakePointPlaces(*this, m_points);
    PointRanges const ranges = GetPointRanges(m_places);
    m_min = ranges.min;
    m_max = ranges.max;
    PointRows const rows(m_places);
    *m_columns = { PointColumns(rows.GetRow(0)), PointColumns(rows.GetRow(1)) };
    bool const isGrid = IsPointGrid(m_columns->x, m_columns->y, ranges.count);
    m_cells = { m_columns->x.GetCell(isGrid, ranges.count), m_columns->y.GetCell(isGrid, ranges.count) };
    SetValid(ranges.count != 0);
    return IsValid();
}

void C3DIrregBarCurve::GetFootprintRange(std::size_t coordinate, double& min, double& max) const
{
    if (m_columns->x.GetPlaces().empty())
        return;
    min = m_min[coordinate] - m_cells[coordinate] / 2.0;
    max = m_max[coordinate] + m_cells[coordinate] / 2.0;
}

void C3DIrregBarCurve::GetZRange(double& min, double& max) const
{
    if (m_columns->x.GetPlaces().empty())
        return;
    min = m_min[2];
    max = m_max[2];
}

void C3DIrregBarCurve::GetViewDefaultBarWidths(double& x, double& y) const
{
    BoxAxes axes;
    GetBoxAxes(axes);
    x = kBarShare * axes[0].GetFraction(m_cells[0]);
    y = kBarShare * axes[1].GetFraction(m_cells[1]);
}

CVertex C3DIrregBarCurve::GetPlace(int i) const
{
    return { m_places.GetAt(0, i), m_places.GetAt(1, i), m_places.GetAt(2, i) };
}

void C3DIrregBarCurve::GetNormalisedVertex(int i, CVertex& vertex) const
{
    BoxAxes axes;
    GetBoxAxes(axes);
    vertex = GetBoxPlace(axes, GetPlace(i));
}

COLORREF C3DIrregBarCurve::GetBarColour(int i) const
{
    CVertex const place = GetPlace(i);
    return GetBarColourAt(place.Z(), m_columns->x.Find(place.X()), m_columns->y.Find(place.Y()));
}

void C3DIrregBarCurve::Render()
{
    C3DGraph* const graph = Get3DGraph();
    if (!graph || !IsValid())
        return;
    BarsKey const key(*this, *graph, m_revision, m_bars);
    BarBatch& batch = m_drawing->Get(key, [&](BarBatch& made) {
        BarWidths widths;
        GetViewDefaultBarWidths(widths.x, widths.y);
        std::vector<BarBatch::Bar> bars;
        PointRows const places(m_places);
        for (std::size_t i = 0; i < places.GetSize(); ++i) {
            auto const index = static_cast<int>(i);
            if (!places.IsMissing(i))
                bars.push_back({ GetPlace(index), GetBarColour(index) });
        }
        made.Build(bars, key, widths);
    });
    batch.Draw(*graph);
}

void C3DIrregBarCurve::InvalidateDeviceObjects() { m_drawing->InvalidateDeviceObjects(); }

} // namespace ombrel
