#include "ombrel/graph3d/3DBarCurve.h"
#include "ombrel/graph3d/bars/BarGeometry.h"
#include "ombrel/graph3d/render/KeptBatch.h"

#include <cmath>

namespace ombrel {

constinit CRuntimeClass const C3DBarCurve::kClass = PersistentClass<C3DBarCurve, C3DRowColCurve>("C3DBarCurve");

struct C3DBarCurve::Drawing : KeptBatch<BarsKey, BarBatch> { };

C3DBarCurve::C3DBarCurve(CPlot* plot, int useGraphColour)
    : BarAccessors<GridNodeCurve>(plot, useGraphColour)
    , m_drawing(std::make_unique<Drawing>())
{
    SetTitle("Bars");
    SetItemType(it3DBarCurve);
    SetNumRows(9);
    SetNumCols(9);
    ResetModifiedFlags();
}

C3DBarCurve::~C3DBarCurve() = default;

void C3DBarCurve::Serialize(CArchive& ar)
{
    C3DRowColCurve::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    m_bars.Serialize(f);
}

double C3DBarCurve::GetCell(int coordinate) const
{
    C3DRowColCurveMesh const& nodes = GetNodes();
    int const cells = coordinate == 0 ? nodes.GetNumCols() : nodes.GetNumRows();
    double const length = nodes.GetMax(coordinate) - nodes.GetMin(coordinate);
    double cell = cells > 0 ? length / cells : 0.0;
    if (nodes.IsOverParameters())
        cell = std::fabs(coordinate == 0 ? nodes.GetXDel() : nodes.GetYDel());
    if (cell > 0.0)
        return cell;
    double const step = std::fabs(coordinate == 0 ? GetTableXStep() : GetTableYStep());
    return step > 0.0 && std::isfinite(step) ? step : 1.0;
}

void C3DBarCurve::GetFootprintRange(int coordinate, double& min, double& max) const
{
    if (!GetNodes().HasRange())
        return;
    GetNodeRange(coordinate, min, max);
    double const half = GetCell(coordinate) / 2.0;
    min -= half;
    max += half;
}

void C3DBarCurve::GetXRange(double& min, double& max) const { GetFootprintRange(0, min, max); }
void C3DBarCurve::GetYRange(double& min, double& max) const { GetFootprintRange(1, min, max); }

void C3DBarCurve::GetDefaultBarWidths(double& x, double& y) const
{
    BoxAxes axes;
    GetBoxAxes(axes);
    x = kBarShare * axes[0].GetFraction(GetCell(0));
    y = kBarShare * axes[1].GetFraction(GetCell(1));
}

COLORREF C3DBarCurve::GetBarColour(int i, int j) const { return GetBarColourAt(GetNodes().GetZ(i, j), i, j); }

void C3DBarCurve::Render()
{
    C3DGraph* const graph = Get3DGraph();
    if (!graph || !IsValid())
        return;
    BarsKey const key(*this, *graph, GetRevision(), m_bars);
    BarBatch& batch = m_drawing->Get(key, [&](BarBatch& made) {
        BarWidths widths;
        GetDefaultBarWidths(widths.x, widths.y);
        std::vector<BarBatch::Bar> bars;
        C3DRowColCurveMesh const& nodes = GetNodes();
        for (int i = 0; i <= nodes.GetNumCols(); ++i) {
            for (int j = 0; j <= nodes.GetNumRows(); ++j) {
                if (!nodes.IsMissing(i, j))
                    bars.push_back({ GetNode(i, j), GetBarColour(i, j) });
            }
        }
        made.Build(bars, key, widths);
    });
    batch.Draw(*graph);
}

void C3DBarCurve::InvalidateDeviceObjects() { m_drawing->InvalidateDeviceObjects(); }

} // namespace ombrel
