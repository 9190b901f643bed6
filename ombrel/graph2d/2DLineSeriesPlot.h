#pragma once
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DSeriesPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A line curve that shares its x values with the others of its series plot.
class OMBREL_EXPORT C2DLineSeriesLine : public C2DLine {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DLineSeriesLine(CPlot* plot = nullptr, int useGraphColour = 0);
    void Serialize(CArchive& ar) override;
};

/// A line curve for hosts that want a class of their own for series lines; it adds nothing, and archives store it as
/// the C2DLine that it is.
class C2DSeriesLine : public C2DLine {
public:
    C2DSeriesLine() = default;
    ~C2DSeriesLine() override = default;
};

/// A plot of line curves that share their x values.
class OMBREL_EXPORT C2DLineSeriesPlot : public C2DSeriesPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DLineSeriesPlot(CGraph* graph = nullptr);
    void Serialize(CArchive& ar) override;
    /// A C2DLineSeriesLine. Owned by the plot.
    CPlotComponent* CreateCurve() override;
};

} // namespace ombrel
