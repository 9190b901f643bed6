#pragma once
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A plot of surfaces through scattered points.
class OMBREL_EXPORT C3DIrregularSurfacePlot : public C3DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DIrregularSurfacePlot(CGraph* graph = nullptr);
    /// A C3DIrregularSurfaceCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
    void Serialize(CArchive& ar) override;
};

} // namespace ombrel
