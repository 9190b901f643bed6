#pragma once
#include "ombrel/graph2d/2DSeriesPlot.h"
#include "ombrel/graph2d/BarSettings.h"
#include "ombrel/graph2d/SeriesBarPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// The values of one of the bars that stand side by side.
class OMBREL_EXPORT C2DClusteredBarCurve : public SeriesBarCurve {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    C2DClusteredBarCurve()
        : C2DClusteredBarCurve(nullptr, 0)
    {
    }
    C2DClusteredBarCurve(CPlot* plot, int useGraphColour)
        : SeriesBarCurve(plot, useGraphColour, "Clustered Bar Curve", it2DClusteredBarCurve)
    {
    }
};

/// A plot of bars in clusters: at each of the shared x values the curves' bars stand side by side, in the order of the
/// curves, between their value and 0 (the value 1 on a logarithmic axis). A gap leaves its place empty.
class OMBREL_EXPORT C2DClusteredBarPlot : public C2DSeriesPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    C2DClusteredBarPlot()
        : C2DClusteredBarPlot(nullptr)
    {
    }
    explicit C2DClusteredBarPlot(CGraph* graph);
    void Serialize(CArchive& ar) override;

    /// The part of the largest bar width that a cluster takes up; 0.6 at first.
    double GetBarWidthFactor() const { return m_bars.widthFactor; }
    void SetBarWidthFactor(double factor) { Change(m_bars.widthFactor, factor); }
    /// Of the bars' outlines; kOwnColour: that of each bar.
    COLORREF GetBorderColour() const { return m_bars.borderColour; }
    void SetBorderColour(COLORREF colour) { Change(m_bars.borderColour, colour); }
    /// Stored only: the bars start at 0.
    double GetBaseline() const { return m_bars.baseline; }
    void SetBaseline(double y) { Change(m_bars.baseline, y); }
    int GetAutoBaseline() const { return m_bars.autoBaseline; }
    void SetAutoBaseline(int on) { Change(m_bars.autoBaseline, on); }

    /// Half a cluster wider on each side than the points.
    void GetXRange(double& min, double& max) override;
    using C2DSeriesPlot::Draw;
    void Draw(CPort* port) override;
    void DrawBars(CPort* port);
    /// A C2DClusteredBarCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;

private:
    BarSettings m_bars { .widthFactor = 0.6 };
};

} // namespace ombrel
