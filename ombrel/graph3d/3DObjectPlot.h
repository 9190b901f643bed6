#pragma once
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A plot of solid shapes.
class OMBREL_EXPORT C3DObjectPlot : public C3DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DObjectPlot(CGraph* graph = nullptr);
    void Serialize(CArchive& ar) override;
    /// A C3DObjectCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
};

} // namespace ombrel
