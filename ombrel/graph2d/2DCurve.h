#pragma once
#include "ombrel/drawing/2DSymbol.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/model/NamesOtherThan.h"
#include "ombrel/model/PlotComponent.h"
#include "ombrel/model/TableData.h"
#include "ombrel/platform/framework/Export.h"

#include <memory>

namespace ombrel {

class C2DGraph;
class CAxes;
class PointSummary;

/// A table of 2 rows, x and y, with a column a point.
class C2DCurveTableData : public CTableData {
public:
    /// All 0.
    explicit C2DCurveTableData(int points)
        : CTableData(2, points)
    {
    }
    using CTableData::operator=;
    /// Point i; throws as CTableData does.
    CRealPoint operator[](int i) const { return { GetAt(0, i), GetAt(1, i) }; }
};

/// The base of every 2D curve: points, and the line and symbol settings that the legend reads too.
///
/// Points are stored in data units. A value that is the gap marker, infinite or not a number is missing: it breaks the
/// line and takes no part in ranges. On a logarithmic axis GetAt and everything drawn use log10 values.
class OMBREL_EXPORT C2DCurve : public CPlotComponent {
public:
    /// What x values are: numbers, or days since 30 December 1899, which axes of dates show.
    enum XValMode : int { xvNumbers = 0, xvDates = 1 };
    /// What a formula says; nothing here computes one.
    enum LineModeType : int { lmScript = 0, lmParametric = 1, lmPolar = 2 };
    /// Dash patterns beside the solid line.
    static constexpr int kLineTypes = 5;

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    C2DCurve();
    /// Takes the scale modes over from the axes of the plot's graph.
    C2DCurve(CPlot* plot, int useGraphColour);
    ~C2DCurve() override;
    void Serialize(CArchive& ar) override;

    /// Dash style: 0 solid, 1 … 5 the dash patterns; any other value draws solid.
    int GetLineType() const { return m_lineType; }
    void SetLineType(int type) { Change(m_lineType, type); }
    /// Nominal width in pixels at 96 to the inch; 1 at first.
    int GetLineWidth() const { return m_lineWidth; }
    void SetLineWidth(int width) { Change(m_lineWidth, width); }
    /// Number of points and x interval of a formula curve; 200 over 0 … 10 at first.
    int GetNumPts() const;
    void SetNumPts(int points) { Change(m_numPts, points); }
    double GetXMin() const;
    void SetXMin(double x) { Change(m_xMin, x); }
    double GetXMax() const;
    void SetXMax(double x) { Change(m_xMax, x); }
    /// 1 when the x values of a formula curve are data, and stored.
    int GetScriptXValueMode() const;
    void SetScriptXValueMode(int mode) { Change(m_scriptXValueMode, mode); }
    /// Non-zero: number of points, x interval and x value mode are those of the series plot that the curve is in.
    int GetSeries() const { return m_series; }
    void SetSeries(int series) { Change(m_series, series); }
    /// The mark at each point; none at first.
    C2DSymbol::SymbolType GetSymbolType() const { return m_symbolType; }
    void SetSymbolType(C2DSymbol::SymbolType type) { Change(m_symbolType, type); }
    /// Of the outline of marks.
    COLORREF GetSymbolColour() const { return m_symbolColour; }
    void SetSymbolColour(COLORREF colour) { Change(m_symbolColour, colour); }
    /// Of their inside, with GetFillSymbol non-zero.
    COLORREF GetSymbolFillColour() const { return m_symbolFillColour; }
    void SetSymbolFillColour(COLORREF colour) { Change(m_symbolFillColour, colour); }
    /// Non-zero: marks are filled.
    int GetFillSymbol() const { return m_fillSymbol; }
    void SetFillSymbol(int fill) { Change(m_fillSymbol, fill); }
    /// How large marks are: at 1 they reach a 150th of the longer side of the axes to each side, 2 pixels at least.
    double GetSymbolScaleFac() const { return m_symbolScaleFac; }
    void SetSymbolScaleFac(double factor) { Change(m_symbolScaleFac, factor); }
    /// Only stored.
    int GetLineMode() const { return m_lineMode; }
    void SetLineMode(int mode) { m_lineMode = mode; }
    void SetLineMode(NamesOtherThan<LineModeType> auto) = delete;
    /// 1 for a logarithmic x axis, 0 for a linear one. The axes set it whenever theirs is set.
    int GetXScaleMode() const { return m_xScaleMode; }
    void SetXScaleMode(int mode) { Store(m_xScaleMode, mode); }
    int GetYScaleMode() const { return m_yScaleMode; }
    void SetYScaleMode(int mode) { Store(m_yScaleMode, mode); }
    /// The axes are asked separately (SetXTimeUnitsOn) to write dates.
    XValMode GetXValMode() const { return m_xValMode; }
    void SetXValMode(XValMode mode) { Store(m_xValMode, mode); }
    /// Only stored.
    int GetUseDefaultRanges() const { return m_useDefaultRanges; }
    void SetUseDefaultRanges(int use) { m_useDefaultRanges = use; }
    /// 0: the x range of axes that follow the data leaves the curve out. Returns 1.
    int SetContributeToXRange(int contribute);
    int GetContributeToXRange() const { return m_contributeToXRange; }

    /// Row 0 x, row 1 y.
    CTableData& GetPoints() { return m_points; }
    CTableData const& GetPoints() const { return m_points; }
    /// As many as the table of points has columns.
    int GetNumPoints() const { return m_points.GetNumCols(); }
    /// Makes the table 2 × points, all 0.
    void Initialise(int points) { m_points.Initialise(2, points, 1); }
    /// Leaves no points; their memory is released.
    void ClearData() { m_points.Clear(); }
    /// Stored values of point i, in data units. An index that is not 0 … GetNumPoints() − 1 throws
    /// CInvalidArgException*: Initialise makes the points.
    void SetXAt(int i, double x) { m_points.SetAt(0, i, x); }
    /// Its y, likewise.
    void SetYAt(int i, double y) { m_points.SetAt(1, i, y); }
    /// Both values, likewise.
    void SetAt(int i, CRealPoint const& p);

    /// Point i as it is drawn: log10 of coordinates on logarithmic axes. Throws as SetXAt does.
    CRealPoint GetAt(int i) const;
    /// The point at x on the curve as it is drawn, between two points on their straight line and beyond the ends at the
    /// end points' height; x ascending. (x, 0) without points.
    CRealPoint GetAt(double x) const;
    /// The stored y at x likewise; 0 without points.
    double GetYVal(double x) const;
    /// The slope at x of the quadratic through the three stored points round the nearest one; at least three points of
    /// distinct, ascending x, else 0.
    double GetDerivative(double x) const;
    /// v becomes log10(v); values below 1e-100 become −100.
    static void LogClamp(double& v);

    /// Copies rows of a table, or with both rows −1 the whole of it.
    void SetPoints(CTableData const& table, int xRow, int yRow);
    /// Takes n values of either array or both; a null array leaves its row 0, and too short a one changes nothing.
    void SetPoints(CDoubleArray const* xs, CDoubleArray const* ys, int n);
    void SetPoints(CDoubleArray const* xs, CByteArray const* ys, int n);
    /// Takes a 2 × n table over without copying it.
    void SetPoints(CTableData&& table);
    /// Takes x from row 0 of the table, or y from its row 1, for as many points as both have.
    void SetXPoints(CTableData const& table);
    void SetYPoints(CTableData const& table);
    /// Spreads NumPts x values evenly over the x interval.
    void SetXValuesFromMesh();

    /// Ranges of the points as they are drawn; (0, 0) without points.
    virtual void GetXRange(double& min, double& max) const;
    virtual void GetYRange(double& min, double& max) const;
    void GetZRange(double& min, double& max) const override { GetYRange(min, max); }
    /// Whether the ranges are those of data: a curve of gaps alone has none of its own.
    virtual bool HasRange() const;
    int IsDefined() const override;
    /// A table curve becomes valid; a formula curve, which nothing here computes, invalid.
    int Evaluate() override;
    int GetDataSize() const override { return static_cast<int>(m_points.GetDataSize()); }
    int GetXValueKind() const override { return m_xValMode; }
    /// Title, colour, line and symbol, without a fill pattern.
    std::optional<LegendEntry> GetLegendEntry() const override;
    void TakeOverScaleModes(int x, int y) override;

    /// Whether x, and y, are drawn by their logarithms.
    bool IsXLogarithmic() const { return m_xScaleMode == 1; }
    bool IsYLogarithmic() const { return m_yScaleMode == 1; }
    /// What the library's drawing code wants to know of the points; up to date with them.
    PointSummary const& GetSummary() const;

protected:
    /// The graph that the curve is in, and its axes; null when there is none.
    C2DGraph* GetGraph2D() const;
    CAxes* GetAxes() const;

private:
    template <typename Array> void SetPointsFrom(CDoubleArray const* xs, Array const* ys, int n);

    int m_numPts = 200;
    double m_xMin = 0.0;
    double m_xMax = 10.0;
    int m_scriptXValueMode = 0;
    int m_lineType = 0;
    int m_lineWidth = 1;
    CTableData m_points;
    int m_lineMode = lmScript;
    int m_series = 0;
    C2DSymbol::SymbolType m_symbolType = C2DSymbol::None;
    COLORREF m_symbolColour = 0;
    COLORREF m_symbolFillColour = 0;
    int m_fillSymbol = 0;
    double m_symbolScaleFac = 1.0;
    XValMode m_xValMode = xvNumbers;
    int m_xScaleMode = 0;
    int m_yScaleMode = 0;
    int m_contributeToXRange = 1;
    int m_useDefaultRanges = 1;
    std::unique_ptr<PointSummary> m_summary;
};

} // namespace ombrel
