#include "ombrel/graph2d/2DLine.h"
#include "ombrel/drawing/Opacity.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/paths/LinePath.h"
#include "ombrel/graph2d/paths/PointSummary.h"
#include "ombrel/model/LineWidth.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ombrel {

constinit CRuntimeClass const C2DLine::kClass = PersistentClass<C2DLine, C2DCurve>("C2DLine");

namespace {

constexpr std::array<int, 20> kPatternIDs { 2, 3, 5, 4, 0, 1, 6, 18, 19, 25, 24, 32, 33, 47, 36, 38, 39, 46, 52, 50 };

constexpr double kDash1[] = { 8, 2 };
constexpr double kDash2[] = { 2, 2 };
constexpr double kDash3[] = { 8, 2, 2, 2 };
constexpr double kDash4[] = { 8, 2, 2, 2, 2, 2 };
constexpr double kDash5[] = { 1, 1 };
constexpr std::array<double const*, C2DCurve::kLineTypes> kDashPatterns { kDash1, kDash2, kDash3, kDash4, kDash5 };
constexpr std::array<int, C2DCurve::kLineTypes> kDashCounts { 2, 2, 4, 6, 2 };

} // namespace

C2DLine::C2DLine(CPlot* plot, int useGraphColour)
    : C2DCurve(plot, useGraphColour)
    , m_drawPoints(std::make_unique<LinePath>())
{
    SetTitle("Line Curve");
    SetModified(0);
    SetItemType(it2DLine);
}

C2DLine::~C2DLine() = default;

void C2DLine::Serialize(CArchive& ar)
{
    C2DCurve::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.Int(m_connectionMode, m_stepMode).Double(m_baseline).Int(m_fillPattern, m_autoBaseline).Dword(m_fillColour);
    f.Int(m_fillOn, m_shadeMode, m_baselineShadeMode, m_useFillRange).Double(m_fillMin, m_fillMax);
    f.Int(m_fillBoundaryOn).Dword(m_borderColour);
    if (version > 1)
        f.Int(m_antialiasingOn);
}

std::optional<LegendEntry> C2DLine::GetLegendEntry() const
{
    std::optional<LegendEntry> entry = C2DCurve::GetLegendEntry();
    entry->hasLine = m_connectionMode != cmNone;
    return entry;
}

std::span<int const> C2DLine::GetPatternIDs() { return kPatternIDs; }

std::span<double const* const> C2DLine::GetDashPatts() { return kDashPatterns; }

std::span<int const> C2DLine::GetDashCounts() { return kDashCounts; }

std::span<double const> C2DLine::GetDashes(int lineType)
{
    if (lineType < 1 || lineType > kLineTypes)
        return {};
    auto const i = static_cast<std::size_t>(lineType - 1);
    return { kDashPatterns[i], static_cast<std::size_t>(kDashCounts[i]) };
}

void C2DLine::GetFillRange(double& min, double& max) const
{
    min = m_fillMin;
    max = m_fillMax;
}

void C2DLine::SetFillRange(double min, double max)
{
    m_fillMin = min;
    Change(m_fillMax, max);
}

void C2DLine::CreateDrawPts()
{
    m_drawPoints->Clear();
    // More than a screen's columns need is left to the path's own growth.
    constexpr int kMost = 1 << 14;
    int const perPoint = m_connectionMode == cmStraight ? 1 : 2;
    if (GetNumPoints() >= 2)
        m_drawPoints->points.reserve(static_cast<std::size_t>(std::min(GetNumPoints(), kMost) * perPoint));
}

void C2DLine::Draw(CPort* port)
{
    if (!IsValid() || GetNumPoints() < 1)
        return;
    CreateDrawPts();
    if (m_fillOn)
        DrawShading(*port);
    if (m_connectionMode < cmNone)
        DrawLines(port);
    if (GetSymbolType() != C2DSymbol::None)
        DrawSymbols(*port);
}

void C2DLine::DrawLines(CPort* port)
{
    CDC& dc = *port->GetDC();
    PointMapping const map { port->GetMapping(), IsXLogarithmic(), IsYLogarithmic() };
    CTableData const& table = std::as_const(*this).GetPoints();
    if (table.GetNumRows() < 2)
        return;
    StoredPoints const points { table.GetRow(0), table.GetRow(1), static_cast<std::size_t>(table.GetNumCols()),
        &GetSummary() };
    int const width = DeviceLineWidth(dc, GetLineWidth(), ThicknessKind::Curve);
    VectorPen pen { InkOf(static_cast<COLORREF>(GetColour())), static_cast<double>(width), GetDashes(GetLineType()) };
    CRect clip(
        -PortMapping::kDeviceLimit, -PortMapping::kDeviceLimit, PortMapping::kDeviceLimit, PortMapping::kDeviceLimit);
    CRect portClip;
    if (port->GetClipRect(portClip))
        clip = { portClip.left, portClip.top, portClip.right + 1, portClip.bottom + 1 };

    SavedDC const saved(dc);
    VectorGraphics graphics(dc);
    graphics.SetSmoothing(m_antialiasingOn != 0);
    graphics.SetClipRect(clip);
    LinePath solid;
    solid.Clear();
    m_drawPoints->Clear();
    switch (m_connectionMode) {
    case cmStepped:
        AddSteppedLines(*m_drawPoints, points, map, m_stepMode);
        break;
    case cmPairs:
        AddPointPairs(*m_drawPoints, points, map);
        break;
    default:
        if (pen.dashes.empty()) {
            // Columns that half of the pen covers lie side by side unseen.
            constexpr int kHidesColumns = 4;
            Merging const merging { dc.IsPrinting() && width >= kHidesColumns, std::max(width / 2, 1) };
            // A wide pen reaches into columns beside its points.
            AddStraightLines(*m_drawPoints, points, map, clip.left - width, clip.right + width, merging);
        } else {
            double patternLength = 0.0;
            for (double const length : pen.dashes)
                patternLength += length * width;
            AddDashedLines(*m_drawPoints, solid, points, map, static_cast<int>(2 * patternLength));
        }
    }
    graphics.DrawPath(pen, m_drawPoints->Get());
    pen.dashes = {};
    graphics.DrawPath(pen, solid.Get());
}

void C2DLine::DrawSymbols(CPort& port)
{
    CAxes* const axes = GetAxes();
    if (!axes)
        return;
    CDC& dc = *port.GetDC();
    CRect const extent = axes->GetExtentRect();
    int const length = std::max(extent.Width(), extent.Height());
    double const unit = std::trunc(length / 150.0 + 0.5);
    int half = std::max(2, VUNearest(std::min(unit * GetSymbolScaleFac(), 10000.0)));
    if (GetSymbolType() == C2DSymbol::Pixel)
        half = 0;

    SavedDC const saved(dc);
    CPen pen(PS_SOLID, DeviceLineWidth(dc, 1, ThicknessKind::Symbol), GetSymbolColour());
    dc.SelectObject(&pen);
    CBrush brush(GetSymbolFillColour());
    if (GetFillSymbol())
        dc.SelectObject(&brush);
    CRect clip;
    bool const clipped = port.GetClipRect(clip) != 0;
    PointMapping const map { port.GetMapping(), IsXLogarithmic(), IsYLogarithmic() };
    CTableData const& table = std::as_const(*this).GetPoints();
    double const* const xs = table.GetRow(0);
    double const* const ys = table.GetRow(1);
    // Enough at a time for what symbols have in common to pay. Pages make one image of very many.
    int const most = dc.IsPrinting() ? 1 << 25 : 1 << 20;
    std::vector<CPoint> centres;
    centres.reserve(static_cast<std::size_t>(std::min(GetNumPoints(), most)));
    for (int i = 0, n = GetNumPoints(); i < n;) {
        centres.clear();
        for (int const end = std::min(n - i, most) + i; i < end; ++i) {
            if (IsGap(xs[i]) || IsGap(ys[i]))
                continue;
            CPoint const p(map.X(xs[i]), map.Y(ys[i]));
            // A point on the edge keeps its whole symbol; one outside has none.
            if (!clipped || (p.x >= clip.left && p.x <= clip.right && p.y >= clip.top && p.y <= clip.bottom))
                centres.push_back(p);
        }
        C2DSymbol::DrawSymbols(
            GetSymbolType(), &port, centres, half, GetSymbolColour(), GetFillSymbol(), GetSymbolFillColour());
    }
}

} // namespace ombrel
