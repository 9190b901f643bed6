#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/colour/ColourMap.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/paths/ContourPainter.h"
#include "ombrel/graph2d/paths/ContourShading.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/io/ScanTestHeader.h"
#include "ombrel/model/LineWidth.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <utility>

namespace ombrel {

constinit CRuntimeClass const C2DContourCurve::kClass = PersistentClass<C2DContourCurve, C2DCurve>("C2DContourCurve");
constinit CRuntimeClass const C2DContourPlot::kClass = PersistentClass<C2DContourPlot, C2DPlot>("C2DContourPlot");

C2DContourCurve::C2DContourCurve(CPlot* plot, int useGraphColour)
    : C2DCurve(plot, useGraphColour)
    , m_surface(std::make_unique<CSurface>(plot, 0))
{
    SetTitle("Contour Curve");
    SetItemType(it2DContourCurve);
}

C2DContourCurve::~C2DContourCurve() = default;

void C2DContourCurve::Serialize(CArchive& ar)
{
    C2DCurve::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(3);
    f.Int(m_displayMode, m_contourColourMode, m_levelMode, m_numContours).Double(m_reference, m_spacing);
    if (ar.IsLoading())
        m_surface = std::make_unique<CSurface>(GetPlot(), 0);
    f.Nested(*m_surface);
    if (version >= 2)
        f.Int(m_lineThickness);
    if (version < 3)
        return;
    int hasHeader = m_scanTestHeader ? 1 : 0;
    f.Int(hasHeader);
    if (!hasHeader)
        return;
    if (ar.IsLoading())
        m_scanTestHeader = std::make_unique<CScanTestHeader>();
    f.Nested(*m_scanTestHeader);
}

void C2DContourCurve::SetScanTestHeader(CScanTestHeader* header)
{
    auto copy = std::make_unique<CScanTestHeader>();
    *copy = *header;
    m_scanTestHeader = std::move(copy);
}

void C2DContourCurve::SetDataSourceType(DataSourceType type)
{
    C2DCurve::SetDataSourceType(type);
    m_surface->SetDataSourceType(type);
}

void C2DContourCurve::SetPlot(CPlot* plot)
{
    C2DCurve::SetPlot(plot);
    m_surface->SetPlot(plot);
}

void C2DContourCurve::GetXRange(double& min, double& max) const { m_surface->GetXRange(min, max); }
void C2DContourCurve::GetYRange(double& min, double& max) const { m_surface->GetYRange(min, max); }
void C2DContourCurve::GetZRange(double& min, double& max) const { m_surface->GetZRange(min, max); }
bool C2DContourCurve::HasRange() const
{
    return m_surface->GetSurfaceMesh() && m_surface->GetSurfaceMesh()->HasRange();
}
int C2DContourCurve::IsDefined() const { return m_surface->IsDefined(); }
int C2DContourCurve::GetDataSize() const { return m_surface->GetDataSize(); }

int C2DContourCurve::Evaluate()
{
    SetValid(m_surface->Evaluate());
    if (IsValid() && m_levelMode == lmSpaced) {
        double min = 0.0;
        double max = 0.0;
        m_surface->GetZRange(min, max);
        double const distance = std::max({ min - m_reference, m_reference - max, 0.0 });
        if (distance > 2.0 * (max - min)) {
            CVUtils::PlotDialogErrMsg(
                this, "Contour reference value lies too far outside z value range.\nThis curve will not be drawn", "");
            SetValid(0);
        }
    }
    return IsValid();
}

int C2DContourCurve::NeedsColourKey() const
{
    return m_displayMode >= dmShading || (m_displayMode == dmLines && m_contourColourMode == ccLevelColours);
}

bool C2DContourCurve::IsContinuous() const
{
    if (m_displayMode <= dmLines)
        return false;
    return m_levelMode == lmArbitrary ? m_surface->GetArbContourLevels().GetSize() == 0 : !NeedsLevels();
}

C2DContourCurve::Range C2DContourCurve::GetRange() const
{
    Range range;
    m_surface->GetUntransformedDataAndLUTRanges(range.lo, range.hi, range.mapMin, range.mapMax);
    return range;
}

ColourKeySource C2DContourCurve::GetColourKeySource() const
{
    ColourKeySource source;
    Range const range = GetRange();
    source.style = IsContinuous() ? ColourKeySource::Style::Range : ColourKeySource::Style::Bands;
    source.dataLow = range.lo;
    source.dataHigh = range.hi;
    source.low = range.mapMin;
    source.high = range.mapMax;
    GetContourColourKeyEntries(source.bandColours, source.bandValues);
    return source;
}

COLORREF C2DContourCurve::GetColourOfValue(double value, double low, double high) const
{
    return std::as_const(*m_surface).GetWireframeColourmap()->GetColour(value, low, high);
}

void C2DContourCurve::GetContourColourKeyEntries(CDWordArray& colours, CDoubleArray& values) const
{
    CDoubleArray const levels = MakeLevels();
    values.RemoveAll();
    if (m_displayMode == dmLines) {
        colours = MakeLineColours(levels);
    } else {
        colours = MakeBandColours(levels);
        values.Add(GetRange().lo);
    }
    for (int i = 0; i < levels.GetSize(); ++i)
        values.Add(levels[i]);
}

CDoubleArray C2DContourCurve::MakeLevels() const
{
    Range const range = GetRange();
    ContourLevels levels;
    switch (m_levelMode) {
    case lmArbitrary: {
        CDoubleArray const& given = m_surface->GetArbContourLevels();
        levels = MakeArbitraryLevels({ given.GetData(), static_cast<std::size_t>(given.GetSize()) });
        break;
    }
    case lmSpaced:
        levels = MakeSpacedLevels(range.lo, range.hi, m_reference, m_spacing);
        break;
    default:
        levels = MakeEvenLevels(range.lo, range.hi, std::min(m_numContours, kMostContourLevels + 1) + 1);
        break;
    }
    CDoubleArray values;
    for (double const level : levels.values)
        values.Add(level);
    return values;
}

CDWordArray C2DContourCurve::MakeBandColours(CDoubleArray const& levels) const
{
    Range const range = GetRange();
    CDWordArray colours;
    int const n = levels.GetSize();
    for (int k = 0; k <= n; ++k)
        colours.Add(MapColour(n > 0 ? range.lo + k * (range.hi - range.lo) / n : range.lo, range));
    return colours;
}

CDWordArray C2DContourCurve::MakeLineColours(CDoubleArray const& levels) const
{
    Range const range = GetRange();
    CDWordArray colours;
    int const n = levels.GetSize();
    double const step = n < 2 ? 0.0 : (range.hi - range.lo) / (n - 1);
    for (int k = 0; k < n; ++k)
        colours.Add(MapColour(range.lo + k * step, range));
    return colours;
}

COLORREF C2DContourCurve::MapColour(double value, Range const& range) const
{
    return std::as_const(*m_surface).GetWireframeColourmap()->GetColour(value, range.mapMin, range.mapMax);
}

CRect C2DContourCurve::GetRangeRect() const
{
    C2DGraph const* const graph = GetGraph2D();
    CAxes const* const axes = GetAxes();
    if (!graph || !axes)
        return {};
    double xMin = 0.0;
    double xMax = 0.0;
    double yMin = 0.0;
    double yMax = 0.0;
    GetXRange(xMin, xMax);
    GetYRange(yMin, yMax);
    AxisSettings const& x = axes->GetAxis(CAxes::atX);
    AxisSettings const& y = axes->GetAxis(CAxes::atY);
    CPoint const topLeft = graph->UnitsToWindow({ std::max(xMin, x.min), std::min(yMax, y.max) });
    CPoint const bottomRight = graph->UnitsToWindow({ std::min(xMax, x.max), std::max(yMin, y.min) });
    CRect const clip = graph->GetClipRect();
    return { std::max(topLeft.x, clip.left), std::max(topLeft.y, clip.top), std::min(bottomRight.x, clip.right),
        std::min(bottomRight.y, clip.bottom) };
}

int C2DContourCurve::GetZVal(CRealPoint const& p, double& z) const
{
    C2DGraph const* const graph = GetGraph2D();
    CMesh const* const mesh = m_surface->GetMesh();
    if (!graph || !mesh || !GetRangeRect().PtInRect(graph->UnitsToWindow(p)))
        return 0;
    double const height = mesh->Interpolate(p.x, p.y);
    if (IsGridGap(height))
        return 0;
    z = height;
    return 1;
}

void C2DContourCurve::Draw(CPort* port)
{
    if (!IsValid())
        return;
    m_levels = NeedsLevels() ? MakeLevels() : CDoubleArray();
    m_bandColours.RemoveAll();
    m_lineColours.RemoveAll();
    if (m_displayMode >= dmShading) {
        if (NeedsLevels())
            m_bandColours = MakeBandColours(m_levels);
        DrawShading(port);
    }
    if (m_displayMode != dmShading && NeedsLevels()) {
        if (m_contourColourMode == ccLevelColours)
            m_lineColours = MakeLineColours(m_levels);
        DrawContours(port);
    }
}

void C2DContourCurve::DrawShading(CPort* port)
{
    CMesh const* const mesh = m_surface->GetMesh();
    if (!mesh)
        return;
    CRect const range = GetRangeRect();
    CRect area(range.left + 1, range.top, range.right + 1, range.bottom);
    CRect clip;
    if (port->GetClipRect(clip))
        area.IntersectRect(area, clip);
    Range const colours = GetRange();
    HeightColours heights { ContourBands({ m_levels.GetData(), static_cast<std::size_t>(m_levels.GetSize()) }), {},
        m_surface->GetWireframeColourmap(), colours.mapMin, colours.mapMax };
    if (m_levels.GetSize() > 0)
        heights.colours = { m_bandColours.GetData(), static_cast<std::size_t>(m_bandColours.GetSize()) };
    ShadeHeights(*port, area, *mesh, heights);
}

void C2DContourCurve::DrawContours(CPort* port)
{
    CMesh const* const mesh = m_surface->GetMesh();
    if (!mesh)
        return;
    CRect clip;
    bool const clipped = port->GetClipRect(clip) != 0;
    if (clipped) {
        CRect const inside(clip.left + 1, clip.top, clip.right, clip.bottom);
        port->SetClipRect(&inside);
    }
    ContourFinder const finder({ mesh->GetZVals(), mesh->GetNumCols(), mesh->GetNumRows(), mesh->GetXMin(),
        mesh->GetYMin(), mesh->GetXDel(), mesh->GetYDel(), {} });
    CDC& dc = *port->GetDC();
    ContourPainter painter(*port, finder, DeviceLineWidth(dc, m_lineThickness, ThicknessKind::Curve));
    for (int k = 0; k < m_levels.GetSize(); ++k) {
        bool const hasOwn = m_contourColourMode == ccLevelColours && k < m_lineColours.GetSize();
        painter.DrawLevel(m_levels[k], hasOwn ? m_lineColours[k] : static_cast<COLORREF>(m_surface->GetColour()));
    }
    if (clipped)
        port->SetClipRect(&clip);
}

C2DContourPlot::C2DContourPlot(CGraph* graph)
    : C2DPlot(graph)
{
    StoreTitle("Contour Plot");
    SetItemType(it2DContourPlot);
}

void C2DContourPlot::Serialize(CArchive& ar)
{
    C2DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

CPlotComponent* C2DContourPlot::CreateCurve() { return AddNew<C2DContourCurve>(); }

CPlotComponent* C2DContourPlot::AddCurve(CString const& title, CPlotComponent::DataSourceType source)
{
    CPlotComponent* const curve = CreateCurve();
    curve->SetTitle(title);
    curve->SetDataSourceType(source);
    return curve;
}

int C2DContourPlot::GetZVal(CRealPoint const& p, double& z) const
{
    for (CPlotComponent const* const component : GetComponents()) {
        auto const* const curve = DynamicDowncast<C2DContourCurve>(component);
        if (curve && curve->GetZVal(p, z))
            return 1;
    }
    return 0;
}

} // namespace ombrel
