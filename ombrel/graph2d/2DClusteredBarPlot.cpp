#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/paths/BarPainter.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <vector>

namespace ombrel {

constinit CRuntimeClass const C2DClusteredBarCurve::kClass
    = PersistentClass<C2DClusteredBarCurve, C2DCurve>("C2DClusteredBarCurve");
constinit CRuntimeClass const C2DClusteredBarPlot::kClass
    = PersistentClass<C2DClusteredBarPlot, C2DSeriesPlot>("C2DClusteredBarPlot");

C2DClusteredBarPlot::C2DClusteredBarPlot(CGraph* graph)
    : C2DSeriesPlot(graph)
{
    StoreTitle("Clustered Bar Plot");
    SetItemType(it2DClusteredBarPlot);
}

void C2DClusteredBarPlot::Serialize(CArchive& ar)
{
    C2DSeriesPlot::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    m_bars.Serialize(f);
}

void C2DClusteredBarPlot::GetXRange(double& min, double& max) { WidenedXRangeOfSeries(*this, m_bars, min, max); }

void C2DClusteredBarPlot::Draw(CPort* port) { DrawBars(port); }

void C2DClusteredBarPlot::DrawBars(CPort* port)
{
    auto const* const graph = DynamicDowncast<C2DGraph>(GetGraph());
    int const n = CountSharedPoints(*this);
    if (!graph || !graph->GetAxes() || n == 0)
        return;
    struct Cluster {
        C2DCurve const* curve;
        VectorBrush brush;
        /// From the middle of the cluster.
        double offset;
    };
    m_bars.maxWidth = MaxBarWidthOfSeries(*this);
    int const curves = GetNumComponents();
    double const width = m_bars.Width() / curves;
    std::vector<Cluster> bars;
    for (int k = 0; k < curves; ++k) {
        auto const* const curve = DynamicDowncast<C2DClusteredBarCurve>(GetComponents()[k]);
        if (curve && curve->IsValid())
            bars.push_back(
                { curve, MakePatternBrush(curve->GetFillPattern(), static_cast<COLORREF>(curve->GetColour())),
                    (k - (curves - 1) * 0.5) * width });
    }
    auto const& first = static_cast<C2DCurve const&>(*GetComponents()[0]);
    BarPainter painter(*port, *graph, m_bars.borderColour);
    for (int i = 0; i < n; ++i) {
        double const x = first.GetAt(i).x;
        for (Cluster const& bar : bars) {
            if (i < bar.curve->GetNumPoints() && !IsGap(x))
                painter.Paint(x + bar.offset, width, bar.curve->GetAt(i).y, 0.0, bar.brush);
        }
    }
}

CPlotComponent* C2DClusteredBarPlot::CreateCurve()
{
    auto* const curve = new C2DClusteredBarCurve(this, 1);
    AddComponent(curve);
    return curve;
}

} // namespace ombrel
