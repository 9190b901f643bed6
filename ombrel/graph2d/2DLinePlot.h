#pragma once
#include "ombrel/graph2d/2DPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A plot of line curves, each with its own x values.
class OMBREL_EXPORT C2DLinePlot : public C2DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DLinePlot(CGraph* graph = nullptr);
    void Serialize(CArchive& ar) override;
    /// A C2DLine with a title and a data source. Owned by the plot.
    CPlotComponent* AddCurve(CString const& title, CPlotComponent::DataSourceType source) override;
    /// A C2DLine. Owned by the plot.
    CPlotComponent* CreateCurve() override;
};

} // namespace ombrel
