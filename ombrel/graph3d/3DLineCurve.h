#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/3DLineData.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Variant.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace ombrel {

class FaceBatch;
class ShapeBatch;

/// How a curve shows its points.
struct PointSettings {
    /// 0 thin lines, otherwise tubes.
    int lineStyle = 1;
    /// 0 from every point to the next, 1 none, 2 from each point with an even index to the one after it.
    int lineMode = 0;
    /// 0 spheres, 1 cones, 2 cones that point down, 3 cubes.
    int symbolStyle = 0;
    double thicknessScaleFac = 1.0;
    double symbolScaleFac = 1.0;
    int symbolsOn = 0;
    /// 0 at every point, otherwise at the first and the last.
    int endPointSymbolMode = 0;
    COLORREF symbolColour = 0;
    /// 0 on the point, 1 below it, 2 above it.
    int symbolAlignMode = 0;
    friend bool operator==(PointSettings const& a, PointSettings const& b) = default;
};

/// A line through points in space, or symbols at them, or both.
///
/// A point that misses a coordinate (IsGap) breaks the line and has no symbol.
/// The coordinate system is the curve's type, as that of surfaces: polar points are angle about the z axis, angle from
/// it and radius; cylindrical ones angle, height and radius; geographical ones longitude, latitude and radius; all
/// angles are degrees. In every other system x, y and z are just these.
/// Lines are straight in the data box, unless intermediate points let them follow a curved coordinate system.
/// Setters of data raise all three flags, those of looks the modified one. What the numbers of looks mean, and what
/// they are at first, stands at the fields of PointSettings. Errors: Serialize throws CArchiveException*, an index
/// outside CInvalidArgException* (both newly allocated).
class OMBREL_EXPORT C3DLineCurve : public C3DCurve {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DLineCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    ~C3DLineCurve() override;
    void Serialize(CArchive& ar) override;

    // The points

    int GetNumPts() const { return m_points.GetNumPoints(); }
    /// Replaces the points by n points 0, 0, 0, unless there are n; none when n is below 1.
    void SetNumPts(int n);
    /// Takes an array of doubles whose element (i, j) becomes coordinate j of point i. Throws COleDispatchException*
    /// (newly allocated), with the points as they were, when it has not two dimensions, is empty, or has not three
    /// columns.
    void SetPoints(VARIANT const& points);
    /// As many points as the shortest of the arrays has entries, missing ones at the ends of arrays not counted.
    void SetPoints(CDoubleArray const* x, CDoubleArray const* y, CDoubleArray const* z);
    void SetXVal(int i, double x) { SetCoordinate(i, 0, x); }
    void SetYVal(int i, double y) { SetCoordinate(i, 1, y); }
    void SetZVal(int i, double z) { SetCoordinate(i, 2, z); }
    /// Owned by the curve. A change through it raises no flag.
    C3DLineData& GetPoints() { return m_points; }
    C3DLineData const& GetPoints() const { return m_points; }
    /// The points as last evaluated: in space, with the intermediate ones, transformed.
    C3DLineData const& GetTransformedPoints() const { return m_transformed; }
    /// How many points lie between two points of the data in a coordinate system that is not Cartesian: as many as
    /// asked for, or fewer where there would be more than 262,144 in all.
    int GetNumIntermediatePts() const { return m_numIntermediatePts; }
    void SetNumIntermediatePts(int n) { ChangeData(m_numIntermediatePts, n); }
    /// The range of formula curves' parameter; only stored, since nothing here computes formulas.
    double GetTMin() const { return m_tMin; }
    void SetTMin(double t) { ChangeData(m_tMin, t); }
    double GetTMax() const { return m_tMax; }
    void SetTMax(double t) { ChangeData(m_tMax, t); }
    /// The parameter of a point: evenly from the one end to the other.
    double GetTVal(int i) const;

    // Looks

    PointSettings const& GetPointSettings() const { return m_look; }
    int GetLineStyle() const { return m_look.lineStyle; }
    void SetLineStyle(int style) { Change(m_look.lineStyle, style); }
    int GetLineMode() const { return m_look.lineMode; }
    void SetLineMode(int mode) { Change(m_look.lineMode, mode); }
    int GetSymbolStyle() const { return m_look.symbolStyle; }
    void SetSymbolStyle(int style) { Change(m_look.symbolStyle, style); }
    double GetThicknessScaleFac() const { return m_look.thicknessScaleFac; }
    void SetThicknessScaleFac(double factor) { Change(m_look.thicknessScaleFac, factor); }
    double GetSymbolScaleFac() const { return m_look.symbolScaleFac; }
    void SetSymbolScaleFac(double factor) { Change(m_look.symbolScaleFac, factor); }
    int GetSymbols() const { return m_look.symbolsOn; }
    void SetSymbols(int on) { Change(m_look.symbolsOn, on); }
    int GetEndPointSymbolMode() const { return m_look.endPointSymbolMode; }
    void SetEndPointSymbolMode(int mode) { Change(m_look.endPointSymbolMode, mode); }
    COLORREF GetSymbolColour() const { return m_look.symbolColour; }
    void SetSymbolColour(COLORREF colour) { Change(m_look.symbolColour, colour); }
    int GetSymbolAlignMode() const { return m_look.symbolAlignMode; }
    void SetSymbolAlignMode(int mode) { Change(m_look.symbolAlignMode, mode); }

    /// Takes the points into space; 0 for a formula curve, and without a point.
    int Evaluate() override;
    void GetXRange(double& min, double& max) const override { m_transformed.GetXRange(min, max); }
    void GetYRange(double& min, double& max) const override { m_transformed.GetYRange(min, max); }
    void GetZRange(double& min, double& max) const override { m_transformed.GetZRange(min, max); }
    int GetDataSize() const override;
    void RefreshZVals() override { Normalise(); }
    void Render() override;
    void InvalidateDeviceObjects() override;

protected:
    /// What the curve draws, all but the widths of lines.
    struct Geometry {
        ShapeBatch& shapes;
        FaceBatch& lines;
    };
    template <typename T, typename V> void ChangeData(T& setting, V const& value)
    {
        Change(setting, value);
        SetPlotDataModified(1);
    }
    /// Replaces the points by n points 0, 0, 0, for the caller to fill; raises all three flags.
    void Initialise(int n);
    /// Takes the points into the data box.
    void Normalise();
    /// The radius of tubes and solid sticks: 0.01 of the longest side of the data box.
    void SetDefaults();
    /// What geometry depends on beside points, settings, colour and axes, told by a number that changes with it.
    virtual std::uint64_t GetGeometryRevision() { return 0; }
    virtual void BuildGeometry(Geometry const& geometry);
    /// The width in pixels of the curve's thin lines.
    virtual double GetThinLineWidth() const;
    /// Adds a symbol for a point of the data box; factor multiplies its size.
    void DrawSymbol(ShapeBatch& shapes, CVertex const& place, double factor, COLORREF colour) const;
    /// Adds lines between points of the data box, broken where one is missing.
    static void AddThinLine(FaceBatch& lines, std::span<CVertex const> points, COLORREF colour);
    /// Half the height of a symbol, in box units.
    double GetSymbolSize() const { return m_symbolSize * m_look.symbolScaleFac; }
    double GetLineThickness() const { return m_lineThickness; }
    /// By how much a point of the data is moved before it is taken into the data box, in data units.
    virtual CVertex GetOffset() const { return {}; }
    /// How many points of the data were taken into the data box.
    int GetNumNormalisedPoints() const;
    /// One of those, in box units; a missing point's coordinates are no numbers.
    CVertex const& GetNormalisedPoint(int i) const;
    BoxAxes const& GetNormalisedAxes() const { return m_axes; }
    PointSettings& Look() { return m_look; }

private:
    struct Drawing;
    void SetCoordinate(int i, int coordinate, double value);
    int GetUsedIntermediatePts() const;
    void BuildLines(Geometry const& geometry);

    C3DLineData m_points;
    C3DLineData m_transformed;
    std::vector<CVertex> m_normalised;
    double m_tMin = 0.0;
    double m_tMax = 10.0;
    int m_numIntermediatePts = 0;
    /// As evaluated.
    int m_intermediatePts = 0;
    PointSettings m_look;
    double m_lineThickness = 0.0075;
    double m_symbolSize = 0.015;
    /// Goes up with every evaluation.
    std::uint64_t m_revision = 0;
    BoxAxes m_axes;
    std::unique_ptr<Drawing> m_drawing;
};

} // namespace ombrel
