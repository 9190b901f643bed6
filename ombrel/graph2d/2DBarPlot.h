#pragma once
#include "ombrel/drawing/FillPattern.h"
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/graph2d/2DPlot.h"
#include "ombrel/graph2d/BarSettings.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A curve drawn as bars, one at each point, between the point and a baseline. A point with a gap has no bar.
class OMBREL_EXPORT C2DBarCurve : public C2DCurve {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DBarCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    void Serialize(CArchive& ar) override;

    /// The part of the largest bar width that a bar takes up; 0.5 at first.
    double GetBarWidthFactor() const { return m_bars.widthFactor; }
    void SetBarWidthFactor(double factor) { Change(m_bars.widthFactor, factor); }
    /// Where bars start without the automatic baseline. Real y units, decades on a logarithmic axis.
    double GetBaseline() const { return m_bars.baseline; }
    void SetBaseline(double y) { Change(m_bars.baseline, y); }
    /// Non-zero: bars start where the axes cross.
    int GetAutoBaseline() const { return m_bars.autoBaseline; }
    void SetAutoBaseline(int on) { Change(m_bars.autoBaseline, on); }
    /// Of the bars' outlines; kOwnColour: that of the curve.
    COLORREF GetBorderColour() const { return m_bars.borderColour; }
    void SetBorderColour(COLORREF colour) { Change(m_bars.borderColour, colour); }
    /// Hatch style; 6 is solid, as is a style that does not exist.
    int GetFillPattern() const { return m_fillPattern; }
    void SetFillPattern(int pattern) { Store(m_fillPattern, pattern); }

    /// Width of the bars in real x units.
    double GetBarWidth();
    /// The smallest distance between consecutive stored x values (evenly spread ones of a formula curve in single
    /// precision), and 1 for a single point. Kept, and returned.
    double ComputeMaxBarWidth();

    /// Half a bar wider on each side than the points.
    void GetXRange(double& min, double& max) const override;
    /// Includes a baseline that is set; with the automatic one there is 1 % of room below a minimum other than 0.
    void GetYRange(double& min, double& max) const override;
    /// With the fill pattern.
    std::optional<LegendEntry> GetLegendEntry() const override;
    /// The bars, when the curve is valid.
    void Draw(CPort* port) override;

    /// At least one point is needed, and a graph with axes.
    void DrawBars(CPort* port);
    /// One bar between two points of the same x, real units, of the width last computed. Nothing without a graph.
    void DrawBar(CPort* port, CRealPoint const& top, CRealPoint const& base, COLORREF colour);
    /// Clips a device rectangle to the axes. When nothing is left the rectangle stays as it was, and the answer is
    /// whether its top-left corner lies inside the axes (bars thinner than a pixel), else 1. 0 without a graph.
    int GetActualRect(CRect& rect) const;

private:
    double MaxBarWidth() const;
    /// The y that bars start at.
    double BaselineOf(CAxes const& axes) const;

    BarSettings m_bars;
    int m_fillPattern = kSolidFillPattern;
};

/// A plot of bar curves, each with its own x values.
class OMBREL_EXPORT C2DBarPlot : public C2DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DBarPlot(CGraph* graph = nullptr);
    void Serialize(CArchive& ar) override;
    /// A C2DBarCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
};

} // namespace ombrel
