#include "ombrel/annotation/Legend.h"
#include "ombrel/drawing/FillPattern.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/model/Graph.h"
#include "ombrel/model/LineWidth.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const CLegend::kClass = PersistentClass<CLegend, CGraphComponent>("CLegend");

void CLegend::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_created, m_on, m_positioned);
    SerializeRect(f);
    f.Dword(m_textColour, m_backgroundColour, m_borderColour).Int(m_boundingRectOn, m_style).Nested(m_font);
    f.Double(m_fontScaleFactor).Nested(m_normalisedPosition).Double(m_lineSpacing);
}

void CLegend::Delete()
{
    Reset();
    m_lineSpacing = kLineSpacing;
    m_textColour = kBlack;
    m_backgroundColour = kWhite;
    m_borderColour = kBlack;
    m_boundingRectOn = 1;
    m_style = lsFill;
    m_fontScaleFactor = 1.0;
    SetModified(1);
}

void CLegend::UpdateGraphParameters()
{
    m_entries.clear();
    CPlotArray const* const plots = GetGraph() ? GetGraph()->GetPlotArray() : nullptr;
    for (int i = 0; plots && i < plots->GetSize(); ++i) {
        for (CPlotComponent* const curve : plots->GetAt(i)->GetComponents()) {
            std::optional<LegendEntry> entry = curve->GetLegendEntry();
            if (!entry)
                continue;
            entry->fillPattern = IsFillPatternCurve(curve) ? GetFillPattern(curve) : LegendEntry::kNoPattern;
            m_entries.push_back(std::move(*entry));
        }
    }
    if (m_style == lsStack)
        std::reverse(m_entries.begin(), m_entries.end());
}

int CLegend::IsFillPatternCurve(CPlotComponent* curve) { return GetFillPattern(curve) != LegendEntry::kNoPattern; }

int CLegend::GetFillPattern(CPlotComponent* curve)
{
    std::optional<LegendEntry> const entry = curve ? curve->GetLegendEntry() : std::nullopt;
    return entry ? entry->fillPattern : LegendEntry::kNoPattern;
}

void CLegend::UpdateFontHeight3D(CDC* dc)
{
    Frame const& frame = GetFrame();
    if (!frame)
        return;
    auto const [height, isLimited] = GetAnnotationTextHeight(*dc, *frame);
    m_fontHeight = height;
    if (!isLimited)
        return;
    m_fontHeight = ReduceForPrinter(height, *frame);
    m_lineSpacing = frame->printer ? kPrintedLineSpacing : kLineSpacing;
}

CSize CLegend::GetMaxTextSize(CDC* dc)
{
    CSize widest;
    for (LegendEntry const& entry : m_entries) {
        CSize const extent = dc->GetTextExtent(entry.title);
        if (extent.cx > widest.cx)
            widest = extent;
    }
    return widest;
}

CSize CLegend::GetCellSize(CDC* dc)
{
    CSize const widest = GetMaxTextSize(dc);
    return { ClampCoordinate(widest.cy / 3LL + SampleWidth(widest.cy) + widest.cx), widest.cy };
}

int CLegend::Step(int height) const { return VUNearest(height * m_lineSpacing); }

CSize CLegend::SizeOf(CSize cell) const
{
    long long const gaps = static_cast<long long>(m_entries.size()) - 1;
    return { cell.cx, ClampCoordinate(gaps * Step(cell.cy) + 3LL * cell.cy / 2) };
}

CSize CLegend::GetDefaultSize(CDC* dc, int)
{
    UpdateGraphParameters();
    SavedDC const saved(*dc);
    CFont font = MakeFont();
    dc->SelectObject(&font);
    return SizeOf(GetCellSize(dc));
}

CSize CLegend::Measure(CDC* dc)
{
    if (!GetGraph())
        return CAnnotation::Measure(dc);
    AskForFrame(AnnotationKind::Legend, GetGraph()->GetWindowRect());
    UpdateFontHeight(dc);
    return GetDefaultSize(dc, 0);
}

void CLegend::Draw(CPort* port)
{
    if (!m_on)
        return;
    CDC& dc = *port->GetDC();
    AskForFrame(AnnotationKind::Legend, port->GetWindowRect());
    UpdateGraphParameters();
    if (Place() != Leader::KeptRect || m_fontHeight == 0)
        UpdateFontHeight(&dc);
    SavedDC const saved(dc);
    CFont font = MakeFont();
    dc.SelectObject(&font);
    CSize const cell = GetCellSize(&dc);
    CSize const size = SizeOf(cell);
    SetSize(size.cx, size.cy);
    FillBackground(dc);
    SelectTextStyle(dc);
    DrawEntries(*port, cell);
    DrawBorder(dc);
}

namespace {

void DrawPatch(CDC& dc, CRect const& patch, LegendEntry const& entry)
{
    VectorBrush const brush = MakePatternBrush(entry.fillPattern, entry.colour);
    VectorGraphics(dc).FillRectangle(brush, patch.left, patch.top, patch.Width(), patch.Height());
    CVUtils::DrawRect(&dc, patch);
}

/// The square in the middle of a sample, as large as one that stands alone.
CRect SquareIn(CRect const& sample, int height)
{
    int const side = height - 2 * (height / 6);
    CPoint const middle = sample.CenterPoint();
    return { CPoint(middle.x - side / 2, middle.y - side / 2), CSize(side, side) };
}

} // namespace

void CLegend::DrawLine(CPort* port, CPoint from, CPoint to, int index)
{
    LegendEntry const& entry = m_entries[CheckedIndex(index, m_entries.size())];
    CDC& dc = *port->GetDC();
    int const width = DeviceLineWidth(dc, entry.lineWidth);
    VectorPen const pen { InkOf(entry.colour), static_cast<double>(width), entry.dashes };
    VectorGraphics graphics(dc);
    graphics.SetSmoothing(true);
    // A line that is wider than the sample is cut, so that it leaves the neighbouring ones alone.
    int const height = m_cellHeight;
    if (width > height)
        graphics.SetClipRect(
            { from.x - height / 2, from.y - height / 2, to.x + height / 2, from.y - height / 2 + height });
    graphics.DrawLine(pen, from, to);
}

void CLegend::DrawSymbol(CPort* port, CRect square, int index)
{
    LegendEntry const& entry = m_entries[CheckedIndex(index, m_entries.size())];
    CDC& dc = *port->GetDC();
    SavedDC const saved(dc);
    CPen pen(PS_SOLID, 1, entry.symbolColour);
    CBrush brush(entry.symbolFillColour);
    dc.SelectObject(&pen);
    if (entry.fillSymbol)
        dc.SelectObject(&brush);
    auto const draw = [&entry](CPort& on, CRect const& rect) {
        C2DSymbol::DrawSymbol(
            entry.symbolType, &on, rect, entry.symbolColour, entry.fillSymbol, entry.symbolFillColour);
    };
    BYTE const alpha = AlphaOf(entry.symbolColour);
    if (alpha == 255)
        return draw(*port, square);
    CPoint const corner = square.TopLeft();
    auto const drawOnce = [&](CDC& once) {
        CPort on(&once, port->GetWindowRect(), port->GetMapRect(), port->GetRealRect());
        draw(on, CRect(CPoint(), square.Size()));
    };
    dc.Repeat(drawOnce, { &corner, 1 }, alpha);
}

void CLegend::GetLegendCellRects(CRect cell, CRect& sample, CRect& text, CDC*)
{
    int const height = cell.Height();
    int const width = SampleWidth(height);
    text = CRect(cell.left + width, cell.top, cell.right, cell.bottom);
    if (HasLines()) {
        int const half = height / 2;
        sample = CRect(cell.left + half, cell.top + half, cell.left + width - half, cell.top + half);
        return;
    }
    // A sixth of the height away from top and bottom.
    int const inset = height / 6;
    int const side = height - 2 * inset;
    sample = CRect(CPoint(cell.left + (width - side) / 2, cell.top + inset), CSize(side, side));
}

void CLegend::DrawSample(CPort& port, CRect const& sample, CRect const& cell, int index)
{
    LegendEntry const& entry = m_entries[static_cast<std::size_t>(index)];
    CRect const square = SquareIn(sample, cell.Height());
    if (entry.isFill) {
        DrawPatch(*port.GetDC(), square, entry);
        return;
    }
    // As wide as the room for a patch.
    int const beside = HasLines() ? 0 : (sample.left - cell.left) / 2;
    int const y = sample.CenterPoint().y;
    if (entry.hasLine)
        DrawLine(&port, CPoint(sample.left - beside, y), CPoint(sample.right + beside, y), index);
    DrawSymbol(&port, square, index);
}

void CLegend::DrawEntries(CPort& port, CSize cell)
{
    CDC& dc = *port.GetDC();
    CRect const visible = dc.GetClipBox();
    m_cellHeight = cell.cy;
    long long top = static_cast<long long>(m_rect.top) + cell.cy / 4;
    for (int i = 0, n = static_cast<int>(m_entries.size()); i < n; ++i) {
        CPoint const at(m_rect.left, ClampCoordinate(top));
        top += Step(cell.cy);
        // Glyphs may reach a little over their cell.
        if (at.y - cell.cy > visible.bottom || at.y + 2 * cell.cy < visible.top)
            continue;
        LegendEntry const& entry = m_entries[static_cast<std::size_t>(i)];
        CRect sample;
        CRect text;
        GetLegendCellRects(CRect(at, cell), sample, text, &dc);
        if (m_style == lsLineAndSymbol || m_style == lsStack)
            DrawSample(port, sample, CRect(at, cell), i);
        else if (m_style == lsLine)
            DrawLine(&port, sample.TopLeft(), sample.BottomRight(), i);
        else if (m_style == lsSymbol)
            DrawSymbol(&port, sample, i);
        else
            DrawPatch(dc, sample, entry);
        dc.TextOut(text.left, text.top, entry.title);
    }
}

} // namespace ombrel
