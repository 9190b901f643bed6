#pragma once
#include "ombrel/drawing/FillPattern.h"
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/model/NamesOtherThan.h"
#include "ombrel/platform/framework/Export.h"

#include <span>

namespace ombrel {

class CDC;
struct LinePath;

/// A curve drawn as a line, with the area under it shaded and its points marked when asked for.
class OMBREL_EXPORT C2DLine : public C2DCurve {
public:
    /// How points are joined: one with the next, by steps, the first with the second and the third with the fourth and
    /// so on, or not at all.
    enum ConnectionMode : int { cmStraight = 0, cmStepped = 1, cmPairs = 2, cmNone = 3 };
    /// Where a stepped line goes up or down: halfway between two points, at the second one, or at the first.
    enum StepModeType : int { smMiddle = 0, smHorizontalFirst = 1, smVerticalFirst = 2 };
    /// What is shaded: between the line and its baseline, or the polygon of all points.
    enum ShadeMode : int { shBaseline = 0, shClosed = 1 };
    /// On which sides of the baseline.
    enum BaselineShadeMode : int { bsBoth = 0, bsAbove = 1, bsBelow = 2 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DLine(CPlot* plot = nullptr, int useGraphColour = 0);
    ~C2DLine() override;
    void Serialize(CArchive& ar) override;
    /// Shading, then the line, then the symbols; nothing unless the curve is valid.
    void Draw(CPort* port) override;
    int UsesInternalAutomationObject() const override { return 1; }

    /// The line alone, without shading and symbols.
    virtual void DrawLines(CPort* port);
    /// Steps that a host's own class may fill; nothing here calls them.
    virtual void DrawThickDashedLines(CPort*) { }
    virtual void DrawPathOutline(COLORREF const&, CDC&) { }

    std::optional<LegendEntry> GetLegendEntry() const override;
    int GetPointConnectionMode() const { return m_connectionMode; }
    void SetPointConnectionMode(int mode) { Change(m_connectionMode, mode); }
    void SetPointConnectionMode(NamesOtherThan<ConnectionMode> auto) = delete;
    /// Where a stepped line steps; any other value draws straight from the first point to the last.
    int GetStepMode() const { return m_stepMode; }
    void SetStepMode(int mode) { Change(m_stepMode, mode); }
    void SetStepMode(NamesOtherThan<StepModeType> auto) = delete;
    /// Data units (decades on a logarithmic axis).
    double GetBaseline() const { return m_baseline; }
    void SetBaseline(double y) { Change(m_baseline, y); }
    /// Non-zero: the baseline is where the axes cross.
    int GetAutoBaseline() const { return m_autoBaseline; }
    void SetAutoBaseline(int on) { Change(m_autoBaseline, on); }
    /// Hatch style of the shading; 6 is solid, as is a style that does not exist.
    int GetFillPattern() const { return m_fillPattern; }
    void SetFillPattern(int pattern) { Store(m_fillPattern, pattern); }
    /// Non-zero: the line has its shading.
    int GetFillOn() const { return m_fillOn; }
    void SetFillOn(int on) { Store(m_fillOn, on); }
    /// Non-zero: only the fill range is shaded.
    int GetUseFillRange() const { return m_useFillRange; }
    void SetUseFillRange(int on) { Change(m_useFillRange, on); }
    /// The shaded x interval, in the units that are drawn.
    void GetFillRange(double& min, double& max) const;
    void SetFillRange(double min, double max);
    /// Non-zero: the shading has an outline in the border colour.
    int GetFillBoundaryOn() const { return m_fillBoundaryOn; }
    void SetFillBoundaryOn(int on) { Store(m_fillBoundaryOn, on); }
    COLORREF GetFillColour() const { return m_fillColour; }
    void SetFillColour(COLORREF colour) { Change(m_fillColour, colour); }
    COLORREF GetBorderColour() const { return m_borderColour; }
    void SetBorderColour(COLORREF colour) { Change(m_borderColour, colour); }
    ShadeMode GetShadeMode() const { return m_shadeMode; }
    void SetShadeMode(ShadeMode mode) { Store(m_shadeMode, mode); }
    BaselineShadeMode GetBaselineShadeMode() const { return m_baselineShadeMode; }
    void SetBaselineShadeMode(BaselineShadeMode mode) { Store(m_baselineShadeMode, mode); }
    /// Non-zero: the line is smooth.
    int GetAntialiasingOn() const { return m_antialiasingOn; }
    void SetAntialiasingOn(int on) { Change(m_antialiasingOn, on); }

    /// Makes the buffer of device points ready; it is kept from draw to draw.
    void CreateDrawPts();
    /// The 20 fill patterns on offer, in the order they are offered.
    static std::span<int const> GetPatternIDs();
    /// The dash patterns of line types 1 … 5 and their lengths, in multiples of the pen width.
    static std::span<double const* const> GetDashPatts();
    static std::span<int const> GetDashCounts();
    /// The pattern of a line type; empty for solid ones.
    static std::span<double const> GetDashes(int lineType);

private:
    void DrawShading(CPort& port);
    void DrawClosedShading(CPort& port);
    void DrawBaselineShading(CPort& port, CAxes& axes);
    void DrawShadingEnds(CPort& port, CRealPoint const& lowEnd, CRealPoint const& highEnd, double baseline);
    void DrawSymbols(CPort& port);

    int m_connectionMode = cmStraight;
    int m_stepMode = smMiddle;
    double m_baseline = 0.0;
    int m_autoBaseline = 1;
    int m_fillPattern = 3;
    int m_fillOn = 0;
    int m_useFillRange = 0;
    double m_fillMin = 0.0;
    double m_fillMax = 0.0;
    int m_fillBoundaryOn = 0;
    COLORREF m_fillColour = 0;
    COLORREF m_borderColour = 0;
    ShadeMode m_shadeMode = shBaseline;
    BaselineShadeMode m_baselineShadeMode = bsBoth;
    int m_antialiasingOn = 0;
    std::unique_ptr<LinePath> m_drawPoints;
};

} // namespace ombrel
