#pragma once
#include "ombrel/graph2d/SeriesBarPlot.h"
#include "ombrel/model/NamesOtherThan.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// The values of one of the pieces that are stacked.
class OMBREL_EXPORT C2DStackedBarCurve : public SeriesBarCurve {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DStackedBarCurve(CPlot* plot = nullptr, int useGraphColour = 0)
        : SeriesBarCurve(plot, useGraphColour, "Stacked Bar Curve", it2DStackedBarCurve)
    {
    }
};

/// A plot of stacked bars: at each of the shared x values the curves' values lie on top of each other, negative ones
/// below 0 and the others above it, plainly, as percentages of the stack, or scaled to a total. Gaps, curves that are
/// not valid and curves with fewer points take no part. A stack takes up 0.5 of the largest bar width at first.
class OMBREL_EXPORT C2DStackedBarPlot : public SeriesBarPlot {
public:
    /// Values as they are, or shares of their stack in percent.
    enum PlotStyle : int { psPlain = 0, psPercent = 1 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DStackedBarPlot(CGraph* graph = nullptr)
        : SeriesBarPlot(graph, "Stacked Bar Plot", it2DStackedBarPlot, 0.5)
    {
    }
    void Serialize(CArchive& ar) override;
    /// Stacks add up values, which their logarithms do not.
    bool CanHaveLogScale() const override { return false; }

    /// A PlotStyle; any other value draws plain stacks.
    int GetPlotStyle() const { return m_plotStyle; }
    void SetPlotStyle(int style) { Store(m_plotStyle, style); }
    void SetPlotStyle(NamesOtherThan<PlotStyle> auto) = delete;
    /// Non-zero: the x range ends at the outermost points, which cuts their bars in half.
    int GetNoRangeMargin() const { return m_noRangeMargin; }
    void SetNoRangeMargin(int on) { Change(m_noRangeMargin, on); }
    /// Non-zero: each stack is as high, from its lower end to its upper one, as the stack total.
    int GetScaleStacksOn() const { return m_scaleStacksOn; }
    void SetScaleStacksOn(int on) { Change(m_scaleStacksOn, on); }
    double GetStackTotal() const { return m_stackTotal; }
    void SetStackTotal(double total) { Change(m_stackTotal, total); }

    /// Half a stack wider on each side than the points, unless that is switched off.
    void GetXRange(double& min, double& max) override;
    /// From the lowest end of a stack to the highest, percentages in that style; unscaled. Unchanged without a curve to
    /// draw.
    void GetYRange(double& min, double& max) override;
    /// The stack at point i from its lower end on: the base, and of each piece the height, colour and fill pattern. The
    /// arrays have room for one entry a curve; returns how many were filled.
    int GetStackedBars(int i, double& base, double* heights, COLORREF* colours, int* patterns) const;
    /// A C2DStackedBarCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;

private:
    struct Scaling;
    void PaintBars(BarPainter& painter, int points, double width) const override;

    int m_noRangeMargin = 0;
    int m_scaleStacksOn = 0;
    double m_stackTotal = 1.0;
    int m_plotStyle = psPlain;
};

} // namespace ombrel
