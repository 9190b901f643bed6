#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DSeriesPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/paths/PointSummary.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

constinit CRuntimeClass const C2DCurve::kClass = PersistentClass<C2DCurve, CPlotComponent>("C2DCurve");

C2DCurve::C2DCurve()
    : m_summary(std::make_unique<PointSummary>())
{
}

C2DCurve::C2DCurve(CPlot* plot, int useGraphColour)
    : CPlotComponent(plot, useGraphColour)
    , m_summary(std::make_unique<PointSummary>())
{
    if (CAxes const* const axes = GetAxes()) {
        m_xScaleMode = axes->GetAxis(CAxes::atX).scaleMode;
        m_yScaleMode = axes->GetAxis(CAxes::atY).scaleMode;
    }
}

C2DCurve::~C2DCurve() = default;

void C2DCurve::Serialize(CArchive& ar)
{
    CPlotComponent::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.Double(m_xMin, m_xMax).Int(m_numPts, m_scriptXValueMode, m_lineType, m_lineWidth, m_lineMode);
    f.Int(m_xScaleMode, m_yScaleMode, m_series, m_symbolType).Dword(m_symbolColour, m_symbolFillColour);
    f.Int(m_fillSymbol).Double(m_symbolScaleFac).Int(m_xValMode);
    if (version > 1)
        f.Int(m_useDefaultRanges);
    if (GetDataSourceType() > dsFormula || m_scriptXValueMode == 1) {
        f.Nested(m_points);
        if (m_points.HasData() && m_points.GetNumRows() < 2)
            ar.Fail(CArchiveException::badData, "a table of two rows, x and y");
    }
}

C2DGraph* C2DCurve::GetGraph2D() const
{
    return GetPlot() ? DynamicDowncast<C2DGraph>(GetPlot()->GetGraph()) : nullptr;
}

CAxes* C2DCurve::GetAxes() const
{
    C2DGraph const* const graph = GetGraph2D();
    return graph ? graph->GetAxes() : nullptr;
}

namespace {

C2DSeriesPlot const* SeriesPlotOf(C2DCurve const& curve)
{
    return curve.GetSeries() ? DynamicDowncast<C2DSeriesPlot>(curve.GetPlot()) : nullptr;
}

} // namespace

int C2DCurve::GetNumPts() const
{
    C2DSeriesPlot const* const series = SeriesPlotOf(*this);
    return series ? series->GetNumPts() : m_numPts;
}

double C2DCurve::GetXMin() const
{
    C2DSeriesPlot const* const series = SeriesPlotOf(*this);
    return series ? series->GetXMin() : m_xMin;
}

double C2DCurve::GetXMax() const
{
    C2DSeriesPlot const* const series = SeriesPlotOf(*this);
    return series ? series->GetXMax() : m_xMax;
}

int C2DCurve::GetScriptXValueMode() const
{
    C2DSeriesPlot const* const series = SeriesPlotOf(*this);
    return series ? series->GetXValueMode() : m_scriptXValueMode;
}

bool C2DCurve::HasRange() const { return !GetSummary().XRange().IsEmpty(); }

int C2DCurve::SetContributeToXRange(int contribute)
{
    Store(m_contributeToXRange, contribute);
    return 1;
}

void C2DCurve::TakeOverScaleModes(int x, int y)
{
    m_xScaleMode = x;
    m_yScaleMode = y;
}

void C2DCurve::SetAt(int i, CRealPoint const& p)
{
    SetXAt(i, p.x);
    SetYAt(i, p.y);
}

void C2DCurve::LogClamp(double& v) { v = v >= 1e-100 ? std::log10(v) : -100.0; }

CRealPoint C2DCurve::GetAt(int i) const
{
    CRealPoint p(m_points.GetAt(0, i), m_points.GetAt(1, i));
    if (IsXLogarithmic() && !IsGap(p.x))
        LogClamp(p.x);
    if (IsYLogarithmic() && !IsGap(p.y))
        LogClamp(p.y);
    return p;
}

CRealPoint C2DCurve::GetAt(double x) const
{
    int const n = GetNumPoints();
    if (n == 0)
        return { x, 0.0 };
    double min = 0.0;
    double max = 0.0;
    GetXRange(min, max);
    if (x < min)
        return { x, GetAt(0).y };
    if (x > max)
        return { x, GetAt(n - 1).y };
    int first = n;
    if (GetSummary().XAscends()) {
        int low = 0;
        while (low < first) {
            int const middle = low + (first - low) / 2;
            if (GetAt(middle).x < x)
                low = middle + 1;
            else
                first = middle;
        }
    } else {
        for (first = 0; first < n && !(GetAt(first).x >= x);)
            ++first;
    }
    if (first == 0)
        return { x, GetAt(0).y };
    if (first == n)
        return { x, GetAt(n - 1).y };
    CRealPoint const p0 = GetAt(first - 1);
    CRealPoint const p1 = GetAt(first);
    return { x, p0.x == p1.x ? p0.y : p0.y + (p1.y - p0.y) * (x - p0.x) / (p1.x - p0.x) };
}

namespace {

/// The later point of the first pair that brackets x; 0 when none does, n beyond the last point.
int UpperPoint(double const* xs, int n, double x)
{
    if (x > xs[n - 1])
        return n;
    for (int k = 0; k + 1 < n; ++k) {
        if (xs[k] <= x && x <= xs[k + 1])
            return k + 1;
    }
    return 0;
}

} // namespace

double C2DCurve::GetYVal(double x) const
{
    int const n = GetNumPoints();
    if (n == 0)
        return 0.0;
    CTableData const& points = m_points;
    double const* const xs = points.GetRow(0);
    double const* const ys = points.GetRow(1);
    int const upper = UpperPoint(xs, n, x);
    if (upper == 0)
        return ys[0];
    if (upper == n)
        return ys[n - 1];
    double const x0 = xs[upper - 1];
    double const x1 = xs[upper];
    double const y0 = ys[upper - 1];
    return x0 == x1 ? y0 : y0 + (ys[upper] - y0) * (x - x0) / (x1 - x0);
}

double C2DCurve::GetDerivative(double x) const
{
    int const n = GetNumPoints();
    if (n < 3)
        return 0.0;
    CTableData const& points = m_points;
    double const* const xs = points.GetRow(0);
    double const* const ys = points.GetRow(1);
    int nearest = UpperPoint(xs, n, x);
    if (nearest == n)
        nearest = n - 1;
    else if (nearest > 0 && x - xs[nearest - 1] < xs[nearest] - x)
        --nearest;
    int const first = std::clamp(nearest - 1, 0, n - 3);
    double const x0 = xs[first];
    double const x1 = xs[first + 1];
    double const x2 = xs[first + 2];
    double const a0 = ys[first] / ((x0 - x2) * (x0 - x1));
    double const a1 = ys[first + 1] / ((x1 - x2) * (x1 - x0));
    double const a2 = ys[first + 2] / ((x2 - x1) * (x2 - x0));
    return 2 * x * (a0 + a1 + a2) - ((x0 + x1) * a2 + (x0 + x2) * a1 + (x1 + x2) * a0);
}

void C2DCurve::SetPoints(CTableData const& table, int xRow, int yRow)
{
    SetModified(1);
    if (xRow == -1 && yRow == -1) {
        m_points = table;
        return;
    }
    int const rows = table.GetNumRows();
    if (xRow < 0 || yRow < 0 || xRow >= rows || yRow >= rows)
        return;
    int const n = table.GetNumCols();
    CTableData points;
    points.Initialise(2, n, 0);
    std::copy_n(table.GetRow(xRow), n, points.GetRow(0));
    std::copy_n(table.GetRow(yRow), n, points.GetRow(1));
    m_points = std::move(points);
}

void C2DCurve::SetPoints(CTableData&& table)
{
    if (table.GetNumRows() != 2)
        return;
    m_points = std::move(table);
    SetModified(1);
}

template <typename Array> void C2DCurve::SetPointsFrom(CDoubleArray const* xs, Array const* ys, int n)
{
    if ((!xs && !ys) || n < 0 || (xs && n > xs->GetSize()) || (ys && n > ys->GetSize()))
        return;
    Initialise(n);
    for (int i = 0; i < n; ++i) {
        if (xs)
            SetXAt(i, xs->GetAt(i));
        if (ys)
            SetYAt(i, ys->GetAt(i));
    }
    SetModified(1);
}

void C2DCurve::SetPoints(CDoubleArray const* xs, CDoubleArray const* ys, int n) { SetPointsFrom(xs, ys, n); }

void C2DCurve::SetPoints(CDoubleArray const* xs, CByteArray const* ys, int n) { SetPointsFrom(xs, ys, n); }

void C2DCurve::SetXPoints(CTableData const& table)
{
    for (int i = 0, n = std::min(table.GetNumCols(), GetNumPoints()); i < n; ++i)
        SetXAt(i, table.GetAt(0, i));
}

void C2DCurve::SetYPoints(CTableData const& table)
{
    if (table.GetNumRows() < 2)
        return;
    for (int i = 0, n = std::min(table.GetNumCols(), GetNumPoints()); i < n; ++i)
        SetYAt(i, table.GetAt(1, i));
}

void C2DCurve::SetXValuesFromMesh()
{
    int const n = GetNumPts();
    double const step = n > 1 ? (GetXMax() - GetXMin()) / (n - 1) : 0.0;
    for (int i = 0; i < std::min(n, GetNumPoints()); ++i)
        SetXAt(i, GetXMin() + i * step);
}

PointSummary const& C2DCurve::GetSummary() const
{
    m_summary->Update(m_points);
    return *m_summary;
}

namespace {

void RangeAsDrawn(Extremes range, bool logarithmic, double& min, double& max)
{
    if (range.IsEmpty())
        range = { 0.0, 0.0 };
    else if (logarithmic) {
        C2DCurve::LogClamp(range.min);
        C2DCurve::LogClamp(range.max);
    }
    min = range.min;
    max = range.max;
}

} // namespace

void C2DCurve::GetXRange(double& min, double& max) const
{
    RangeAsDrawn(GetSummary().XRange(), IsXLogarithmic(), min, max);
}

void C2DCurve::GetYRange(double& min, double& max) const
{
    RangeAsDrawn(GetSummary().YRange(), IsYLogarithmic(), min, max);
}

int C2DCurve::IsDefined() const
{
    switch (GetDataSourceType()) {
    case dsFormula:
        return CPlotComponent::IsDefined();
    case dsTable:
        return m_points.GetNumRows() >= 1 && m_points.GetNumCols() >= 1;
    default:
        return 0;
    }
}

int C2DCurve::Evaluate()
{
    CPlotComponent::Evaluate();
    m_summary->Forget();
    SetValid(GetDataSourceType() == dsTable);
    SetModified(1);
    return IsValid();
}

std::optional<LegendEntry> C2DCurve::GetLegendEntry() const
{
    LegendEntry entry;
    entry.title = GetTitle();
    entry.colour = static_cast<COLORREF>(GetColour());
    entry.dashes = C2DLine::GetDashes(m_lineType);
    entry.lineWidth = m_lineWidth;
    entry.symbolType = m_symbolType;
    entry.symbolColour = m_symbolColour;
    entry.fillSymbol = m_fillSymbol;
    entry.symbolFillColour = m_symbolFillColour;
    return entry;
}

} // namespace ombrel
