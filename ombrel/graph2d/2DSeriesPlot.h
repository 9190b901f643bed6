#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/graph2d/2DPlot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// The base of plots whose curves share their x values: spread evenly (the mesh), or given by a table.
///
/// UpdatePlots gives every curve the plot's x values and as many points as there are of these; a host's own stay only
/// with SetXValueMode(1).
class OMBREL_EXPORT C2DSeriesPlot : public C2DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    C2DSeriesPlot() = default;
    explicit C2DSeriesPlot(CGraph* graph)
        : C2DPlot(graph)
    {
    }
    void Serialize(CArchive& ar) override;
    bool IsDrawnAsWhole() const override { return true; }
    void PrepareCurve(CPlotComponent& curve) override;
    void TakeOverPoints(CPlotComponent& first) override;

    /// 0, at first: x values are spread evenly over x min … x max, in place of those that curves were given. Else they
    /// come from the points table; while it is empty, UpdatePlots takes it from the first curve. Later changes of that
    /// curve's x values or number of points do nothing before SetPoints gave the plot the new ones, or an empty table.
    int GetXValueMode() const { return m_xValueMode; }
    void SetXValueMode(int mode) { Change(m_xValueMode, mode); }
    /// Number of evenly spread x values, and so of each curve's points; 20 at first; limited to 0 … 65535.
    int GetNumPts() const { return m_numPts; }
    void SetNumPts(int points);
    double GetXMin() const { return m_xMin; }
    void SetXMin(double x) { Change(m_xMin, x); }
    double GetXMax() const { return m_xMax; }
    void SetXMax(double x) { Change(m_xMax, x); }
    /// The table of x values in row 0; row 1 is the y of the first curve.
    CTableData const& GetPoints() const { return m_points; }
    void SetPoints(CTableData const& points);
    /// Takes the first n values as x and zeros as y; changes nothing when there are fewer.
    void SetPoints(CDoubleArray const* xs, int n);
    /// What the x values of the curves are; setting it marks nothing as modified.
    C2DCurve::XValMode GetXValMode() const { return m_xValMode; }
    void SetXValMode(C2DCurve::XValMode mode) { m_xValMode = mode; }

    int GetNumActualPoints() const { return m_xValueMode ? m_points.GetNumCols() : m_numPts; }
    /// Point i of the table, log10 of coordinates on logarithmic axes.
    CRealPoint GetAt(int i) const;
    /// v becomes log10(v); values below 1e-10 become −10.
    static void LogClamp(double& v);
    /// Makes the table 2 × number of points, its x values spread evenly.
    void SetXValuesFromMesh(CTableData& table) const;
    /// Gives the curve the shared x description and x values; its y values stay as far as there are any.
    void UpdateCurve(C2DCurve* curve);
    void UpdateCurves();

private:
    int m_xValueMode = 0;
    WORD m_numPts = 20;
    double m_xMin = 0.0;
    double m_xMax = 10.0;
    CTableData m_points;
    int m_xLog = 0;
    int m_yLog = 0;
    C2DCurve::XValMode m_xValMode = C2DCurve::xvNumbers;
};

} // namespace ombrel
