#pragma once
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A plot of surfaces on regular grids.
class OMBREL_EXPORT CSurfacePlot : public C3DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit CSurfacePlot(CGraph* graph = nullptr);
    /// A CSurface. Owned by the plot.
    CPlotComponent* CreateCurve() override;
};

} // namespace ombrel
