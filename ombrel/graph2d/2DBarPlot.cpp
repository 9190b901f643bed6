#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/paths/BarPainter.h"
#include "ombrel/graph2d/paths/PointSummary.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const C2DBarCurve::kClass = PersistentClass<C2DBarCurve, C2DCurve>("C2DBarCurve");
constinit CRuntimeClass const C2DBarPlot::kClass = PersistentClass<C2DBarPlot, C2DPlot>("C2DBarPlot");

C2DBarCurve::C2DBarCurve(CPlot* plot, int useGraphColour)
    : C2DCurve(plot, useGraphColour)
{
    SetTitle("Bar Curve");
    SetNumPts(20);
    SetModified(0);
    SetItemType(it2DBarCurve);
}

void C2DBarCurve::Serialize(CArchive& ar)
{
    C2DCurve::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    m_bars.Serialize(f);
    f.Int(m_fillPattern);
}

double C2DBarCurve::GetBarWidth() { return ComputeMaxBarWidth() * m_bars.widthFactor; }

double C2DBarCurve::ComputeMaxBarWidth() { return m_bars.maxWidth = MaxBarWidth(); }

double C2DBarCurve::MaxBarWidth() const
{
    if (GetDataSourceType() == dsFormula && GetScriptXValueMode() == 0) {
        double min = 0.0;
        double max = 0.0;
        C2DCurve::GetXRange(min, max);
        return MaxBarWidthOfMesh(min, max, GetNumPts());
    }
    CTableData const& points = GetPoints();
    if (!points.HasData())
        return kLoneBarWidth;
    return MaxBarWidthOfPoints({ points.GetRow(0), static_cast<std::size_t>(points.GetNumCols()) });
}

double C2DBarCurve::BaselineOf(CAxes const& axes) const
{
    return m_bars.autoBaseline ? axes.GetIntersect().y : m_bars.baseline;
}

void C2DBarCurve::GetXRange(double& min, double& max) const
{
    C2DCurve::GetXRange(min, max);
    if (GetSummary().XRange().IsEmpty())
        return;
    BarSettings bars = m_bars;
    bars.maxWidth = MaxBarWidth();
    bars.WidenXRange(min, max);
}

void C2DBarCurve::GetYRange(double& min, double& max) const
{
    C2DCurve::GetYRange(min, max);
    if (m_bars.autoBaseline) {
        if (min != 0.0)
            min = std::max(min - 0.01 * (max - min), -kMostReal);
    } else if (!IsGap(m_bars.baseline)) {
        min = std::min(min, m_bars.baseline);
        max = std::max(max, m_bars.baseline);
    }
}

std::optional<LegendEntry> C2DBarCurve::GetLegendEntry() const
{
    auto entry = C2DCurve::GetLegendEntry();
    entry->fillPattern = m_fillPattern;
    entry->isFill = true;
    return entry;
}

void C2DBarCurve::Draw(CPort* port)
{
    if (IsValid())
        DrawBars(port);
}

void C2DBarCurve::DrawBars(CPort* port)
{
    CAxes const* const axes = GetAxes();
    if (!axes || GetNumPoints() < 1)
        return;
    ComputeMaxBarWidth();
    double const width = m_bars.Width();
    double const baseline = BaselineOf(*axes);
    VectorBrush const brush = MakePatternBrush(m_fillPattern, static_cast<COLORREF>(GetColour()));
    BarPainter painter(*port, *GetGraph2D(), m_bars.borderColour);
    for (int i = 0, n = GetNumPoints(); i < n; ++i) {
        CRealPoint const p = C2DCurve::GetAt(i);
        painter.Paint(p.x, width, p.y, baseline, brush);
    }
}

void C2DBarCurve::DrawBar(CPort* port, CRealPoint const& top, CRealPoint const& base, COLORREF colour)
{
    if (GetAxes())
        BarPainter(*port, *GetGraph2D(), m_bars.borderColour)
            .Paint(top.x, m_bars.Width(), top.y, base.y, MakePatternBrush(m_fillPattern, colour));
}

int C2DBarCurve::GetActualRect(CRect& rect) const
{
    C2DGraph const* const graph = GetGraph2D();
    return graph && BarPainter::ClipToAxes(rect, graph->GetAxesRect());
}

C2DBarPlot::C2DBarPlot(CGraph* graph)
    : C2DPlot(graph)
{
    StoreTitle("Bar Plot");
    SetItemType(it2DBarPlot);
}

void C2DBarPlot::Serialize(CArchive& ar)
{
    C2DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

CPlotComponent* C2DBarPlot::CreateCurve() { return AddNew<C2DBarCurve>(); }

} // namespace ombrel
