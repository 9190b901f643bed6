#pragma once
#include "ombrel/drawing/FillPattern.h"
#include "ombrel/graph2d/2DSeriesPlot.h"
#include "ombrel/graph2d/BarSettings.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

class BarPainter;

/// The values of one curve of a bar plot whose curves share their x values; its plot draws them. The common part of
/// the clustered and the stacked curves: in archives and among the run-time classes it does not appear.
class OMBREL_EXPORT SeriesBarCurve : public C2DCurve {
public:
    SeriesBarCurve(CPlot* plot, int useGraphColour, CString const& title, ItemType type);
    void Serialize(CArchive& ar) override;
    /// With the fill pattern.
    std::optional<LegendEntry> GetLegendEntry() const override;

    /// Hatch style; 6 is solid, as is a style that does not exist.
    int GetFillPattern() const { return m_fillPattern; }
    void SetFillPattern(int pattern) { Store(m_fillPattern, pattern); }

private:
    int m_fillPattern = kSolidFillPattern;
};

/// A plot of bars whose curves share their x values. The common part of the clustered and the stacked plots: in
/// archives and among the run-time classes it does not appear.
class OMBREL_EXPORT SeriesBarPlot : public C2DSeriesPlot {
public:
    void Serialize(CArchive& ar) override;

    /// The part of the largest bar width that the bars at one x value take up.
    double GetBarWidthFactor() const { return m_bars.widthFactor; }
    void SetBarWidthFactor(double factor) { Change(m_bars.widthFactor, factor); }
    /// Of the bars' outlines; kOwnColour: that of each bar.
    COLORREF GetBorderColour() const { return m_bars.borderColour; }
    void SetBorderColour(COLORREF colour) { Change(m_bars.borderColour, colour); }
    /// Stored only: the plots themselves say where their bars start.
    double GetBaseline() const { return m_bars.baseline; }
    void SetBaseline(double y) { Change(m_bars.baseline, y); }
    int GetAutoBaseline() const { return m_bars.autoBaseline; }
    void SetAutoBaseline(int on) { Change(m_bars.autoBaseline, on); }

    /// Half the width of the bars at an x value wider on each side than the points; unchanged when there is none.
    void GetXRange(double& min, double& max) override;
    using C2DSeriesPlot::Draw;
    void Draw(CPort* port) override { DrawBars(port); }
    /// Nothing without points, or a graph with axes.
    void DrawBars(CPort* port);

protected:
    SeriesBarPlot(CGraph* graph, CString const& title, ItemType type, double widthFactor);
    /// The number of points that the bars have in common: the first curve's.
    int CountSharedPoints() const;

private:
    /// Paints the bars at the first so many points; width is that of all the bars at one of them, in real x units.
    virtual void PaintBars(BarPainter& painter, int points, double width) const = 0;

    BarSettings m_bars;
};

} // namespace ombrel
