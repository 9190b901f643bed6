#pragma once
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A plot of results of computations by finite elements.
class OMBREL_EXPORT C3DMeshPlot : public C3DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DMeshPlot(CGraph* graph = nullptr);
    void Serialize(CArchive& ar) override;
    /// A C3DMeshCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
};

} // namespace ombrel
