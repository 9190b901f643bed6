#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/BarSettings.h"
#include "ombrel/graph2d/paths/AreaBands.h"
#include "ombrel/graph2d/paths/PolygonPath.h"
#include "ombrel/model/LineWidth.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ombrel {

constinit CRuntimeClass const C2DAreaCurve::kClass = PersistentClass<C2DAreaCurve, C2DLine>("C2DAreaCurve");
constinit CRuntimeClass const C2DAreaPlot::kClass = PersistentClass<C2DAreaPlot, C2DSeriesPlot>("C2DAreaPlot");

C2DAreaCurve::C2DAreaCurve(CPlot* plot, int useGraphColour)
    : C2DLine(plot, useGraphColour)
{
    SetTitle("Area Curve");
    SetItemType(it2DAreaCurve);
    SetSeries(1);
    SetFillPattern(kSolidFillPattern);
    SetModified(0);
}

void C2DAreaCurve::Serialize(CArchive& ar)
{
    // What makes it a line is not stored.
    C2DCurve::Serialize(ar); // NOLINT(bugprone-parent-virtual-call)
    ArchiveFields f(ar);
    f.Version(1);
    int pattern = GetFillPattern();
    f.Int(pattern);
    SetFillPattern(pattern);
}

int C2DAreaCurve::Evaluate()
{
    ++m_evaluations;
    return C2DLine::Evaluate();
}

std::optional<LegendEntry> C2DAreaCurve::GetLegendEntry() const
{
    std::optional<LegendEntry> entry = C2DLine::GetLegendEntry();
    entry->fillPattern = GetFillPattern();
    entry->isFill = true;
    return entry;
}

std::uint64_t C2DAreaCurve::GetDataRevision() const { return GetPoints().GetRevision() + m_evaluations; }

struct C2DAreaPlot::KnownRange {
    std::vector<std::uint64_t> foundFor;
    Extremes totals { 0.0, -1.0 };
};

C2DAreaPlot::C2DAreaPlot(CGraph* graph)
    : C2DSeriesPlot(graph)
    , m_range(std::make_unique<KnownRange>())
{
    StoreTitle("Area Plot");
    SetItemType(it2DAreaPlot);
}

C2DAreaPlot::~C2DAreaPlot() = default;

void C2DAreaPlot::Serialize(CArchive& ar)
{
    C2DSeriesPlot::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_drawBorders).Dword(m_borderColour).Int(m_normalised).Double(m_normalTop);
}

CPlotComponent* C2DAreaPlot::CreateCurve() { return AddNew<C2DAreaCurve>(); }

namespace {

std::vector<C2DAreaCurve*> AreaCurvesOf(CPlot const& plot)
{
    std::vector<C2DAreaCurve*> curves;
    for (CPlotComponent* component : plot.GetComponents()) {
        if (auto* const curve = DynamicDowncast<C2DAreaCurve>(component))
            curves.push_back(curve);
    }
    return curves;
}

/// Of so many columns at most.
AreaStack MakeStack(std::vector<C2DAreaCurve*> const& curves, int columns)
{
    AreaStack stack;
    for (C2DAreaCurve const* curve : curves) {
        CTableData const& points = curve->GetPoints();
        bool const hasPoints = points.HasData() && points.GetNumRows() >= 2;
        auto const count = static_cast<std::size_t>(hasPoints ? points.GetNumCols() : 0);
        double const* const ys = hasPoints ? points.GetRow(1) : nullptr;
        Extremes y {};
        bool const complete = curve->GetSummary().XAscends() && curve->GetSummary().YExtremes(ys, 0, count, y);
        stack.layers.push_back({ ys, count, curve->IsYLogarithmic(), complete });
        if (count > stack.count) {
            stack.xs = points.GetRow(0);
            stack.count = count;
            stack.xLogarithmic = curve->IsXLogarithmic();
            stack.xAscends = curve->GetSummary().XAscends();
        }
    }
    stack.count = std::min(stack.count, static_cast<std::size_t>(std::max(columns, 0)));
    return stack;
}

} // namespace

Extremes const& C2DAreaPlot::GetTotals()
{
    std::vector<C2DAreaCurve*> const curves = AreaCurvesOf(*this);
    std::vector<std::uint64_t> wanted { static_cast<std::uint64_t>(GetNumActualPoints()) };
    for (C2DAreaCurve const* curve : curves) {
        // An address alone could be that of a curve that is gone.
        wanted.push_back(reinterpret_cast<std::uintptr_t>(curve));
        wanted.push_back(curve->GetTag());
        wanted.push_back(curve->GetDataRevision() * 2 + (curve->IsYLogarithmic() ? 1 : 0));
    }
    if (m_range->foundFor != wanted) {
        m_range->totals = TotalsOf(MakeStack(curves, GetNumActualPoints()));
        m_range->foundFor = std::move(wanted);
    }
    return m_range->totals;
}

void C2DAreaPlot::GetYRange(double& min, double& max)
{
    Extremes const totals = GetTotals();
    if (totals.IsEmpty())
        return;
    min = totals.min;
    max = totals.max;
    if (!m_normalised)
        return;
    if (totals.max > 0.0) {
        min = totals.min / totals.max * m_normalTop;
        max = m_normalTop;
    } else {
        min = totals.min < 0.0 ? -m_normalTop : 0.0;
        max = totals.min < 0.0 ? 0.0 : m_normalTop;
    }
}

void C2DAreaPlot::Draw(CPort* port) { DrawCurves(port); }

int C2DAreaPlot::ClippingRequired(int axis)
{
    auto const* const graph = DynamicDowncast<C2DGraph>(GetGraph());
    if (!graph || !graph->GetAxes())
        return 0;
    bool const isX = axis == CAxes::atX;
    CRealRect const shown = graph->GetAxes()->GetRealExtentRect();
    auto const [low, high] = isX ? std::minmax(shown.left, shown.right) : std::minmax(shown.bottom, shown.top);
    // Without a range nothing is known to lie inside.
    double min = std::numeric_limits<double>::quiet_NaN();
    double max = min;
    if (isX)
        GetXRange(min, max);
    else
        GetYRange(min, max);
    return min >= low && max <= high ? 0 : 1;
}

namespace {

using Copies = std::vector<std::unique_ptr<C2DCurveTableData>>;

/// Of a stack's columns, with a copy for each layer.
Copies MakeCopies(AreaStack const& stack, std::vector<std::size_t> const& columns)
{
    Copies copies;
    std::vector<double> xs(columns.size());
    std::transform(columns.begin(), columns.end(), xs.begin(), [&stack](std::size_t i) { return stack.X(i); });
    for (std::size_t layer = 0; layer < stack.layers.size(); ++layer) {
        auto copy = std::make_unique<C2DCurveTableData>(static_cast<int>(columns.size()));
        std::copy(xs.begin(), xs.end(), copy->GetRow(0));
        double* y = copy->GetRow(1);
        for (std::size_t const i : columns) {
            double buffer = 0.0;
            *y++ = *stack.Load(layer, i, i + 1, &buffer);
        }
        copies.push_back(std::move(copy));
    }
    return copies;
}

} // namespace

void C2DAreaPlot::Normalise()
{
    std::vector<double*> rows;
    int columns = 0;
    for (auto const& copy : m_copies) {
        rows.push_back(copy->GetRow(1));
        columns = copy->GetNumCols();
    }
    NormaliseColumns(rows, static_cast<std::size_t>(columns));
}

void C2DAreaPlot::CreateClippedData(CPort* port)
{
    for (auto& copy : m_copies) {
        C2DCurveTableData* curve = copy.release();
        CreateClippedCurve(curve, port);
        copy.reset(curve);
    }
}

namespace {

CRect ClipRectOf(C2DGraph const& graph)
{
    CRect clip = graph.GetClipRect();
    clip.NormalizeRect();
    return clip;
}

std::span<double const> RowOf(C2DCurveTableData const& copy, int row)
{
    return { copy.GetRow(row), static_cast<std::size_t>(copy.GetNumCols()) };
}

} // namespace

void C2DAreaPlot::CreateClippedCurve(C2DCurveTableData*& curve, CPort* port)
{
    auto const* const graph = DynamicDowncast<C2DGraph>(GetGraph());
    if (!graph)
        return;
    CRect const clip = ClipRectOf(*graph);
    RealPath const path = ClipToStrip(RowOf(*curve, 0), RowOf(*curve, 1), *port, { clip.left, clip.right });
    auto clipped = std::make_unique<C2DCurveTableData>(static_cast<int>(path.xs.size()));
    std::copy(path.xs.begin(), path.xs.end(), clipped->GetRow(0));
    std::copy(path.ys.begin(), path.ys.end(), clipped->GetRow(1));
    delete std::exchange(curve, clipped.release());
}

int C2DAreaPlot::DoYClip(POINT const* in, POINT*& out, int n)
{
    auto const* const graph = DynamicDowncast<C2DGraph>(GetGraph());
    std::vector<CPoint> points(in, in + std::max(n, 0));
    if (graph)
        points = ClipToRows(points, ClipRectOf(*graph));
    out = new POINT[points.size()];
    std::copy(points.begin(), points.end(), out);
    return static_cast<int>(points.size());
}

namespace {

using Polygons = std::vector<std::vector<CPoint>>;

/// The device corners of each copy's band, limited to the rows of clip when there is one.
Polygons MakePolygons(
    Copies const& copies, PortMapping const& map, std::span<BandReach const> reaches, CRect const* clip)
{
    std::vector<std::span<double const>> rows;
    for (auto const& copy : copies)
        rows.push_back(RowOf(*copy, 1));
    Polygons polygons = MakeBands(RowOf(*copies.front(), 0), rows, map, reaches);
    for (auto& polygon : polygons) {
        if (clip)
            polygon = ClipToRows(polygon, *clip);
    }
    return polygons;
}

/// Solid bands reach under the next solid one. Under a hatch the colour would shine through between the hatch's cells,
/// and so it would under a translucent band.
std::vector<BandReach> PageReaches(std::vector<C2DAreaCurve*> const& curves)
{
    std::vector<BandReach> reaches(curves.size(), BandReach::Own);
    auto const isSolid = [&](std::size_t i) {
        return curves[i]->GetFillPattern() == kSolidFillPattern
            && AlphaOf(static_cast<COLORREF>(curves[i]->GetColour())) == 255;
    };
    for (std::size_t i = 0; i + 1 < curves.size(); ++i) {
        if (isSolid(i) && isSolid(i + 1))
            reaches[i] = BandReach::UnderNext;
    }
    return reaches;
}

void FillBands(CDC& dc, CRect const& clip, std::vector<C2DAreaCurve*> const& curves, Polygons const& polygons)
{
    SavedDC const saved(dc);
    VectorGraphics graphics(dc);
    graphics.SetClipRect(clip);
    for (std::size_t band = 0; band < polygons.size(); ++band) {
        PolygonPath path;
        for (CPoint const& p : polygons[band])
            path.Add(p);
        C2DAreaCurve const& curve = *curves[band];
        graphics.FillPolygon(
            MakePatternBrush(curve.GetFillPattern(), static_cast<COLORREF>(curve.GetColour())), path.Points());
    }
}

/// Lets the context draw inside the rectangle only, within what limits it already.
void LimitDrawing(CDC& dc, CRect const& rect)
{
    // What is no rectangle lets nothing more out than an outline's half width.
    if (auto const& region = dc.GetClip().region; !region || region->IsRect())
        dc.IntersectClipRect(rect);
}

void DrawOutlines(
    CDC& dc, CRect const& clip, std::vector<C2DAreaCurve*> const& curves, COLORREF colour, Polygons const& polygons)
{
    SavedDC const saved(dc);
    int const width = DeviceLineWidth(dc, 1, ThicknessKind::Border);
    if (width > 1)
        LimitDrawing(dc, clip);
    bool const ownColours = colour == kOwnColour;
    for (std::size_t i = 0; i < polygons.size(); ++i) {
        // Where points share pixels, the peaks of each band stand before the bands above it.
        std::size_t const band = ownColours ? polygons.size() - 1 - i : i;
        CPen pen(PS_SOLID, width, ownColours ? static_cast<COLORREF>(curves[band]->GetColour()) : colour);
        dc.SelectObject(&pen);
        dc.Polyline(polygons[band]);
    }
}

} // namespace

void C2DAreaPlot::DrawCurves(CPort* port)
{
    auto const* const graph = DynamicDowncast<C2DGraph>(GetGraph());
    std::vector<C2DAreaCurve*> const curves = AreaCurvesOf(*this);
    AreaStack const stack = MakeStack(curves, GetNumActualPoints());
    if (!graph || !graph->GetAxes() || stack.count == 0)
        return;
    CRect const clip = ClipRectOf(*graph);
    PortMapping const map = port->GetMapping();
    bool const clipX = ClippingRequired(CAxes::atX) != 0;
    // The range of normalised data is only an estimate.
    bool const clipY = m_normalised || ClippingRequired(CAxes::atY);
    PixelStrip const strip
        = clipX ? PixelStrip { clip.left, clip.right } : PixelStrip { -map.kDeviceLimit, map.kDeviceLimit };
    m_copies = MakeCopies(stack, VisibleColumns(stack, map, strip, m_normalised ? Normalising::Yes : Normalising::No));
    if (m_normalised)
        Normalise();
    if (clipX)
        CreateClippedData(port);
    // As lines, bands reach up to the last pixels inside.
    CRect const limits(clip.left, clip.top, clip.right + 1, clip.bottom + 1);
    CDC& dc = *port->GetDC();
    auto const outlines = MakePolygons(m_copies, map, {}, clipY ? &clip : nullptr);
    if (dc.IsPrinting())
        FillBands(dc, limits, curves, MakePolygons(m_copies, map, PageReaches(curves), clipY ? &clip : nullptr));
    else
        FillBands(dc, limits, curves, outlines);
    if (m_drawBorders)
        DrawOutlines(dc, limits, curves, m_borderColour, outlines);
    m_copies.clear();
}

} // namespace ombrel
