#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/paths/BarPainter.h"

#include <vector>

namespace ombrel {

constinit CRuntimeClass const C2DClusteredBarCurve::kClass
    = PersistentClass<C2DClusteredBarCurve, C2DCurve>("C2DClusteredBarCurve");
constinit CRuntimeClass const C2DClusteredBarPlot::kClass
    = PersistentClass<C2DClusteredBarPlot, C2DSeriesPlot>("C2DClusteredBarPlot");

void C2DClusteredBarPlot::PaintBars(BarPainter& painter, int points, double width) const
{
    struct Cluster {
        C2DCurve const* curve;
        VectorBrush brush;
        /// From the middle of the cluster.
        double offset;
    };
    int const curves = GetNumComponents();
    double const barWidth = width / curves;
    std::vector<Cluster> bars;
    for (int k = 0; k < curves; ++k) {
        auto const* const curve = DynamicDowncast<C2DClusteredBarCurve>(GetComponents()[k]);
        if (curve && curve->IsValid())
            bars.push_back(
                { curve, MakePatternBrush(curve->GetFillPattern(), static_cast<COLORREF>(curve->GetColour())),
                    (k - (curves - 1) * 0.5) * barWidth });
    }
    auto const& first = static_cast<C2DCurve const&>(*GetComponents()[0]);
    for (int i = 0; i < points; ++i) {
        double const x = first.GetAt(i).x;
        for (Cluster const& bar : bars) {
            if (i < bar.curve->GetNumPoints() && !IsGap(x))
                painter.Paint(x + bar.offset, barWidth, bar.curve->GetAt(i).y, 0.0, bar.brush);
        }
    }
}

CPlotComponent* C2DClusteredBarPlot::CreateCurve() { return AddNew<C2DClusteredBarCurve>(); }

} // namespace ombrel
