#pragma once
#include "ombrel/graph2d/SeriesBarPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// The values of one of the bars that stand side by side.
class OMBREL_EXPORT C2DClusteredBarCurve : public SeriesBarCurve {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DClusteredBarCurve(CPlot* plot = nullptr, int useGraphColour = 0)
        : SeriesBarCurve(plot, useGraphColour, "Clustered Bar Curve", it2DClusteredBarCurve)
    {
    }
};

/// A plot of bars in clusters: at each of the shared x values the curves' bars stand side by side, in the order of the
/// curves, between their value and 0 (the value 1 on a logarithmic axis). A gap leaves its place empty. A cluster takes
/// up 0.6 of the largest bar width at first.
class OMBREL_EXPORT C2DClusteredBarPlot : public SeriesBarPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DClusteredBarPlot(CGraph* graph = nullptr)
        : SeriesBarPlot(graph, "Clustered Bar Plot", it2DClusteredBarPlot, 0.6)
    {
    }
    /// A C2DClusteredBarCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;

private:
    void PaintBars(BarPainter& painter, int points, double width) const override;
};

} // namespace ombrel
