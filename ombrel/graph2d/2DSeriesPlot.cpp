#include "ombrel/graph2d/2DSeriesPlot.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

constinit CRuntimeClass const C2DSeriesPlot::kClass = PersistentClass<C2DSeriesPlot, C2DPlot>("C2DSeriesPlot");

void C2DSeriesPlot::Serialize(CArchive& ar)
{
    C2DPlot::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_xValueMode).Short(m_numPts).Double(m_xMin, m_xMax).Int(m_xLog, m_yLog, m_xValMode).Nested(m_points);
    if (m_points.HasData() && m_points.GetNumRows() < 2)
        ar.Fail(CArchiveException::badData, "a table of two rows, x and y");
}

void C2DSeriesPlot::PrepareCurve(CPlotComponent& curve)
{
    if (auto* const curve2D = DynamicDowncast<C2DCurve>(&curve))
        UpdateCurve(curve2D);
}

void C2DSeriesPlot::TakeOverPoints(CPlotComponent& first)
{
    if (auto const* const curve2D = DynamicDowncast<C2DCurve>(&first))
        SetPoints(curve2D->GetPoints());
}

void C2DSeriesPlot::SetNumPts(int points) { Change(m_numPts, std::clamp(points, 0, 0xFFFF)); }

void C2DSeriesPlot::SetPoints(CTableData const& points)
{
    if (points.HasData() && points.GetNumRows() < 2)
        return;
    m_points = points;
    SetModified(1);
}

void C2DSeriesPlot::SetPoints(CDoubleArray const* xs, int n)
{
    if (!xs || n > xs->GetSize())
        return;
    m_points.Initialise(2, n, 1);
    if (n > 0)
        std::copy_n(xs->GetData(), n, m_points.GetRow(0));
    SetModified(1);
}

CRealPoint C2DSeriesPlot::GetAt(int i) const
{
    CRealPoint p(m_points.GetAt(0, i), m_points.GetAt(1, i));
    if (m_xLog == 1)
        LogClamp(p.x);
    if (m_yLog == 1)
        LogClamp(p.y);
    return p;
}

void C2DSeriesPlot::LogClamp(double& v) { v = v >= 1e-10 ? std::log10(v) : -10.0; }

void C2DSeriesPlot::SetXValuesFromMesh(CTableData& table) const
{
    table.Initialise(2, m_numPts, 1);
    if (!table.HasData())
        return;
    double* const xs = table.GetRow(0);
    for (int i = 0; i < m_numPts; ++i)
        xs[i] = m_numPts > 1 ? i * (m_xMax - m_xMin) / (m_numPts - 1) + m_xMin : m_xMin;
}

void C2DSeriesPlot::UpdateCurve(C2DCurve* curve)
{
    curve->SetXMin(m_xMin);
    curve->SetXMax(m_xMax);
    curve->SetNumPts(m_numPts);
    curve->SetScriptXValueMode(m_xValueMode);
    curve->SetXValMode(m_xValMode);
    CTableData table;
    if (m_xValueMode) {
        table.Initialise(2, m_points.GetNumCols(), 1);
        if (table.HasData())
            std::copy_n(std::as_const(m_points).GetRow(0), table.GetNumCols(), table.GetRow(0));
    } else {
        SetXValuesFromMesh(m_points);
        SetXValuesFromMesh(table);
    }
    CTableData const& own = curve->GetPoints();
    if (table.HasData() && own.GetNumRows() > 1)
        std::copy_n(own.GetRow(1), std::min(own.GetNumCols(), table.GetNumCols()), table.GetRow(1));
    curve->SetPoints(std::move(table));
}

void C2DSeriesPlot::UpdateCurves()
{
    for (CPlotComponent* component : GetComponents())
        PrepareCurve(*component);
}

} // namespace ombrel
