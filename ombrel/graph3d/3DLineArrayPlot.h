#pragma once
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A plot of series over a grid.
class OMBREL_EXPORT C3DLineArrayPlot : public C3DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DLineArrayPlot(CGraph* graph = nullptr);
    /// A C3DLineArrayCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
    void Serialize(CArchive& ar) override;
};

/// A plot of series of scattered points.
class OMBREL_EXPORT C3DIrregLineArrayPlot : public C3DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DIrregLineArrayPlot(CGraph* graph = nullptr);
    /// A C3DIrregLineArrayCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
    void Serialize(CArchive& ar) override;
};

} // namespace ombrel
