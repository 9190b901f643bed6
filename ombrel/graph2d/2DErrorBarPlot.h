#pragma once
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/graph2d/2DPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A curve that draws an upright bar with caps at each point, centred on it.
///
/// There are as many bars as points and heights both have; a bar is left out when its point or its height is missing.
/// Heights are in the units that are drawn: on a logarithmic y axis a bar reaches half its height in decades up and
/// down from the point's log10. Drawn whether or not the curve is valid.
class OMBREL_EXPORT C2DErrorBarCurve : public C2DCurve {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DErrorBarCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    void Serialize(CArchive& ar) override;

    /// Of the whole bars.
    CDoubleArray& GetHeights() { return m_heights; }
    CDoubleArray const& GetHeights() const { return m_heights; }
    /// Scales the caps; 1 at first. At 1 the cap of the tallest bar is about 1 % of the axes' area wide, and the others
    /// are in proportion to their heights. Where points lie close caps are narrower, but not below a few pixels.
    double GetScaleFac() const { return m_scaleFac; }
    void SetScaleFac(double factor) { Change(m_scaleFac, factor); }
    using C2DCurve::SetPoints;
    /// Takes the first n entries of each array; changes nothing when one of them is shorter.
    void SetPoints(CDoubleArray const* xs, CDoubleArray const* ys, CDoubleArray const* heights, int n);

    void Draw(CPort* port) override;
    void DrawBars(CPort* port);
    /// With the device context's pen; caps as wide as in the last draw.
    void DrawBar(CPort* port, CRealPoint const& p, double height);
    /// Legends do not list error bars.
    std::optional<LegendEntry> GetLegendEntry() const override { return {}; }

private:
    /// Real units of cap for a unit of height at a scale factor of 1.
    double CapFactor(CPort const& port, int bars) const;

    CDoubleArray m_heights;
    double m_scaleFac = 1.0;
    /// Worked out at each draw.
    double m_capFactor = 0.0;
};

/// A plot of error bars.
class OMBREL_EXPORT C2DErrorBarPlot : public C2DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DErrorBarPlot(CGraph* graph = nullptr);
    void Serialize(CArchive& ar) override;
    /// A C2DErrorBarCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
};

} // namespace ombrel
