#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/model/LineWidth.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace ombrel {

constinit CRuntimeClass const C2DErrorBarCurve::kClass
    = PersistentClass<C2DErrorBarCurve, C2DCurve>("C2DErrorBarCurve");
constinit CRuntimeClass const C2DErrorBarPlot::kClass = PersistentClass<C2DErrorBarPlot, C2DPlot>("C2DErrorBarPlot");

C2DErrorBarCurve::C2DErrorBarCurve(CPlot* plot, int useGraphColour)
    : C2DCurve(plot, useGraphColour)
{
    SetItemType(it2DErrorBarCurve);
}

void C2DErrorBarCurve::Serialize(CArchive& ar)
{
    C2DCurve::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Nested(m_heights).Double(m_scaleFac);
}

void C2DErrorBarCurve::SetPoints(CDoubleArray const* xs, CDoubleArray const* ys, CDoubleArray const* heights, int n)
{
    if (!xs || !ys || !heights || n < 0 || n > xs->GetSize() || n > ys->GetSize() || n > heights->GetSize())
        return;
    C2DCurve::SetPoints(xs, ys, n);
    // The heights may come from this very curve.
    CDoubleArray first;
    first.SetSize(n);
    std::copy_n(heights->GetData(), n, first.GetData());
    m_heights = first;
}

void C2DErrorBarCurve::Draw(CPort* port) { DrawBars(port); }

namespace {

/// The smallest distance between points of different x; infinite when there is none.
double SmallestDistance(std::vector<double>& xs)
{
    if (!std::is_sorted(xs.begin(), xs.end()))
        std::sort(xs.begin(), xs.end());
    double smallest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < xs.size(); ++i) {
        double const distance = xs[i] - xs[i - 1];
        if (distance > 0.0)
            smallest = std::min(smallest, distance);
    }
    return smallest;
}

} // namespace

double C2DErrorBarCurve::CapFactor(CPort const& port, int bars) const
{
    constexpr double kShareOfArea = 0.01;
    // Below, a cap looks like a thick spot of its bar.
    constexpr int kReadablePixels = 5;
    constexpr double kShareOfDistance = 0.8;
    double tallest = 0.0;
    double shortest = std::numeric_limits<double>::infinity();
    std::vector<double> xs;
    for (int i = 0; i < bars; ++i) {
        CRealPoint const p = GetAt(i);
        if (IsGap(p.x) || IsGap(p.y) || IsGap(m_heights[i]))
            continue;
        double const height = std::abs(m_heights[i]);
        tallest = std::max(tallest, height);
        if (height > 0.0)
            shortest = std::min(shortest, height);
        xs.push_back(p.x);
    }
    C2DGraph const* const graph = GetGraph2D();
    int const area = graph ? graph->GetAxesRect().Width() : port.GetMapRect().Width();
    int const readable = DeviceLineWidth(*port.GetDC(), kReadablePixels, ThicknessKind::Axes);
    double const scale = IsGap(m_scaleFac) ? 0.0 : std::abs(m_scaleFac);
    double const pixel = 1.0 / std::abs(port.GetXScale());
    double const wanted = std::max<double>(kShareOfArea * area, readable) * pixel * scale;
    // Neighbours make caps narrower as long as those of the shortest bar can still be seen.
    double const narrowest = readable * pixel * (tallest / shortest);
    double const width = std::min(wanted, std::max(kShareOfDistance * SmallestDistance(xs), narrowest));
    // The scale factor is applied to each bar.
    double const factor = width / tallest / scale;
    return IsGap(factor) ? 0.0 : factor;
}

void C2DErrorBarCurve::DrawBars(CPort* port)
{
    int const bars = std::min(GetNumPoints(), m_heights.GetSize());
    if (bars == 0)
        return;
    m_capFactor = CapFactor(*port, bars);
    CDC& dc = *port->GetDC();
    SavedDC const saved(dc);
    CPen pen(PS_SOLID, DeviceLineWidth(dc, 1, ThicknessKind::Axes), static_cast<COLORREF>(GetColour()));
    dc.SelectObject(&pen);
    for (int i = 0; i < bars; ++i) {
        CRealPoint const p = std::as_const(*this).GetAt(i);
        if (!IsGap(p.x) && !IsGap(p.y) && !IsGap(m_heights[i]))
            DrawBar(port, p, m_heights[i]);
    }
}

void C2DErrorBarCurve::DrawBar(CPort* port, CRealPoint const& p, double height)
{
    double const half = height / 2;
    double const halfCap = height * (IsGap(m_scaleFac) ? 0.0 : m_scaleFac) * m_capFactor / 2;
    port->MoveTo({ p.x, p.y - half });
    port->LineTo({ p.x, p.y + half });
    for (double const y : { p.y - half, p.y + half }) {
        port->MoveTo({ p.x - halfCap, y });
        port->LineTo({ p.x + halfCap, y });
    }
}

C2DErrorBarPlot::C2DErrorBarPlot(CGraph* graph)
    : C2DPlot(graph)
{
    StoreTitle("Error Bar Plot");
    SetItemType(it2DErrorBarPlot);
}

void C2DErrorBarPlot::Serialize(CArchive& ar)
{
    C2DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

CPlotComponent* C2DErrorBarPlot::CreateCurve() { return AddNew<C2DErrorBarCurve>(); }

} // namespace ombrel
