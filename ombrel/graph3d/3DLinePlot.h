#pragma once
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A plot of lines in space.
class OMBREL_EXPORT C3DLinePlot : public C3DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DLinePlot(CGraph* graph = nullptr);
    void Serialize(CArchive& ar) override;
    /// A C3DLineCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
};

/// A plot of symbols at points in space.
class OMBREL_EXPORT C3DScatterPlot : public C3DLinePlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DScatterPlot(CGraph* graph = nullptr);
    void Serialize(CArchive& ar) override;
    /// A C3DScatterCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
};

/// A plot of texts at points in space; in an anti-aliased picture they are written once, sharp, over the rest.
class OMBREL_EXPORT C3DTextPlot : public C3DLinePlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DTextPlot(CGraph* graph = nullptr);
    void Serialize(CArchive& ar) override;
    /// A C3DTextCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
    bool IsText() const override { return true; }
};

} // namespace ombrel
