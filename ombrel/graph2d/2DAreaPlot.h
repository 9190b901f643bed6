#pragma once
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DSeriesPlot.h"
#include "ombrel/platform/framework/Export.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ombrel {

struct Extremes;

/// One band of an area plot: filled with its fill pattern (solid at first) in its colour.
class OMBREL_EXPORT C2DAreaCurve : public C2DLine {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DAreaCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    /// The curve's own fields and the fill pattern; those of lines are not stored.
    void Serialize(CArchive& ar) override;
    int Evaluate() override;
    /// With the fill pattern.
    std::optional<LegendEntry> GetLegendEntry() const override;
    /// Goes up whenever the points may have changed.
    std::uint64_t GetDataRevision() const;

private:
    std::uint64_t m_evaluations = 0;
};

/// A plot that stacks its curves as filled bands over shared x values: the first lies between 0 and its values, each
/// next one between the running total before it and that with it.
///
/// Missing values (gaps, infinities, what is not a number, and what a shorter curve lacks) count as 0; a column whose
/// x is missing is left out. Every C2DAreaCurve is drawn, valid or not; other curves are ignored. On a logarithmic axis
/// the log10 values are added up.
class OMBREL_EXPORT C2DAreaPlot : public C2DSeriesPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DAreaPlot(CGraph* graph = nullptr);
    ~C2DAreaPlot() override;
    void Serialize(CArchive& ar) override;
    /// Bands add up values, which their logarithms do not.
    bool CanHaveLogScale() const override { return false; }

    /// 1 at first: each band has an outline.
    int GetDrawBorders() const { return m_drawBorders; }
    void SetDrawBorders(int on) { Store(m_drawBorders, on); }
    /// Of the bands' outlines; kOwnColour: that of each band.
    COLORREF GetBorderColour() const { return m_borderColour; }
    void SetBorderColour(COLORREF colour) { Change(m_borderColour, colour); }
    /// Non-zero: every column is scaled so that it spans 1.
    int GetNormalised() const { return m_normalised; }
    void SetNormalised(int on) { Change(m_normalised, on); }

    /// The smallest and largest running total, 0 among them; unchanged without columns. Normalised, the largest becomes
    /// the archived top (1) and the smallest keeps its ratio to it; without anything above 0 the range is −top … 0
    /// (0 … top when all is 0).
    void GetYRange(double& min, double& max) override;
    using C2DSeriesPlot::Draw;
    void Draw(CPort* port) override;
    /// A C2DAreaCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;

    /// Fills all bands, then draws their outlines.
    void DrawCurves(CPort* port);

    // Steps of one draw, on copies of the points that are made for it and released after it.

    /// Whether the data reaches outside the range of an axis (a CAxes::AxisType).
    int ClippingRequired(int axis);
    /// Scales every column of the copies to span 1.
    void Normalise();
    /// Clips every copy to the strip between the left and right edges of the axes' area.
    void CreateClippedData(CPort* port);
    /// Replaces a copy by a clipped one.
    void CreateClippedCurve(C2DCurveTableData*& curve, CPort* port);
    /// Limits a polygon's device points to the top and bottom of the axes' area, with a point where an edge enters or
    /// leaves it; an edge that crosses both gets them in the order in which it meets them. Returns the number of points
    /// put into out, a new array that the caller deletes.
    int DoYClip(POINT const* in, POINT*& out, int n);

private:
    /// The range of the totals, and what it was found for.
    struct KnownRange;
    Extremes const& GetTotals();

    int m_drawBorders = 1;
    COLORREF m_borderColour = 0;
    int m_normalised = 0;
    double m_normalTop = 1.0;
    std::vector<std::unique_ptr<C2DCurveTableData>> m_copies;
    std::unique_ptr<KnownRange> m_range;
};

} // namespace ombrel
