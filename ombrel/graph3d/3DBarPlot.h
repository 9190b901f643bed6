#pragma once
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A plot of bars over a grid.
class OMBREL_EXPORT C3DBarPlot : public C3DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DBarPlot(CGraph* graph = nullptr);
    /// A C3DBarCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
    void Serialize(CArchive& ar) override;
};

/// A plot of bars at scattered points.
class OMBREL_EXPORT C3DIrregBarPlot : public C3DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DIrregBarPlot(CGraph* graph = nullptr);
    /// A C3DIrregBarCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
    void Serialize(CArchive& ar) override;
};

} // namespace ombrel
