#pragma once
#include "ombrel/colour/ColourMap.h"
#include "ombrel/graph3d/BoxAxis.h"
#include "ombrel/model/PlotComponent.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

class C3DGraph;

/// The base of the 3D curves: the coordinate system that their points are given in, and the colour map that turns
/// their values into colours.
///
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT C3DCurve : public CPlotComponent {
public:
    /// The coordinate system of the curve's points. A document may hold any number; those not named count as
    /// Cartesian.
    enum CurveType : int {
        ctCartesian = 0,
        ctParametric = 1,
        ctPolar = 2,
        ctCylindrical = 3,
        ctGeographical = 4,
    };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading: without a plot.
    C3DCurve() = default;
    /// With useGraphColour non-zero the curve takes the graph's next free colour.
    C3DCurve(CPlot* plot, int useGraphColour)
        : CPlotComponent(plot, useGraphColour)
    {
    }
    void Serialize(CArchive& ar) override;

    /// Loads the named colour map into the curve's own: a preset, or a file; CColourMap::Load's answer.
    virtual int SetColourmap(CString const& name);
    /// Leave both unchanged here.
    virtual void GetXRange(double& /*min*/, double& /*max*/) const { }
    virtual void GetYRange(double& /*min*/, double& /*max*/) const { }
    /// Takes the points into the data box again, after a change of the axes' ranges or scale factors.
    virtual void RefreshZVals() { }
    virtual void TranslateRotate() { }
    /// The colour of a value in the curve's range; 0 here.
    virtual COLORREF GetLUTColour(double /*value*/) const { return 0; }
    /// The range of the values that colours follow, whatever the curve's transforms: here that of z. Unchanged where
    /// there is none.
    virtual void GetUntransformedDataRange(double& min, double& max) const { GetZRange(min, max); }
    /// With the values that the first and the last colour stand for: the curve's own if it uses them, else the data's.
    void GetUntransformedDataAndLUTRanges(double& dataMin, double& dataMax, double& lutMin, double& lutMax) const;
    /// A bar over these ranges.
    ColourKeySource GetColourKeySource() const override;
    /// Whether colours blend into each other between points.
    virtual int GetGradationOn() const { return m_gradationOn; }
    virtual void SetGradationOn(int on) { Change(m_gradationOn, on); }
    /// Draws the curve coarsely, and so fast, while the view is dragged; does nothing here.
    virtual void SetCoarseMode(int /*on*/) { }
    void GetZRange(double& /*min*/, double& /*max*/) const override { }
    /// A formula curve is defined when its formula, or with full scripts its script, is not empty; others always.
    int IsDefined() const override;
    /// Listed with a patch of its colour, unless the curve is coloured by value: a colour key explains it then.
    std::optional<LegendEntry> GetLegendEntry() const override;
    /// Whether a graph with this curve always keeps the proportions of its axes' ranges: solid objects would be
    /// distorted otherwise.
    virtual bool NeedsProportions() const { return false; }

    CurveType GetCurveType() const { return m_curveType; }
    /// Raises all three flags of the curve.
    void SetCurveType(CurveType type);
    int GetUseDefaultRanges() const { return m_useDefaultRanges; }
    void SetUseDefaultRanges(int on) { Change(m_useDefaultRanges, on); }
    /// Owned by the curve.
    CColourMap* GetColourmap() { return &m_colourMap; }
    CColourMap const* GetColourmap() const { return &m_colourMap; }
    /// Takes a point through every transform of the curve, in order.
    void Transform(double* x, double* y, double* z) const;
    /// What the graph's axes make of coordinates; unchanged without a graph.
    void GetBoxAxes(BoxAxes& axes) const;

protected:
    /// What GetLUTColour gives where it gives colours: that of a value between the ends of the colours' range.
    COLORREF GetColourInRange(double value) const;
    /// With colour description 0 a shade of the curve's colour, else the colour map's colour.
    COLORREF GetShadeOrMapColour(double value, double low, double high) const;
    /// The graph that the curve's plot belongs to; null without one, or in a graph of another kind.
    C3DGraph* Get3DGraph() const;
    /// Whether the curve came from a document of the first layout, which had neither a colour map nor ranges.
    bool IsLegacy() const { return m_legacy; }

private:
    CurveType m_curveType = ctCartesian;
    int m_gradationOn = 0;
    int m_useDefaultRanges = 1;
    CColourMap m_colourMap;
    bool m_legacy = false;
};

} // namespace ombrel
