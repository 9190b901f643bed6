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
        for (CPlotComponent const* curve : plots->GetAt(i)->GetComponents()) {
            if (std::optional<LegendEntry> entry = curve->GetLegendEntry())
                m_entries.push_back(std::move(*entry));
        }
    }
}

void CLegend::UpdateFontHeight(CDC& dc, Frame const& frame)
{
    if (!frame)
        return;
    auto const [height, isLimited] = GetAnnotationTextHeight(dc, *frame);
    m_fontHeight = height;
    if (!isLimited || frame->textRule != AnnotationFrame::TextRule::Picture)
        return;
    m_fontHeight = ReduceForPrinter(height, *frame);
    m_lineSpacing = frame->printer ? kPrintedLineSpacing : kLineSpacing;
}

CLegend::Layout CLegend::LayOut(CDC const& dc) const
{
    CSize widest;
    for (LegendEntry const& entry : m_entries) {
        CSize const extent = dc.GetTextExtent(entry.title);
        if (extent.cx > widest.cx)
            widest = extent;
    }
    Layout layout;
    int const height = widest.cy;
    layout.sampleWidth = m_style == lsLine ? 5 * height : 3 * height / 2;
    layout.cell = CSize(ClampCoordinate(height / 3LL + layout.sampleWidth + widest.cx), height);
    layout.step = VUNearest(height * m_lineSpacing);
    long long const gaps = static_cast<long long>(m_entries.size()) - 1;
    layout.size = CSize(layout.cell.cx, ClampCoordinate(gaps * layout.step + 3LL * height / 2));
    return layout;
}

CSize CLegend::Measure(CDC* dc)
{
    if (!GetGraph())
        return CAnnotation::Measure(dc);
    UpdateGraphParameters();
    UpdateFontHeight(*dc, GetFrame(AnnotationKind::Legend, GetGraph()->GetWindowRect()));
    SavedDC const saved(*dc);
    CFont font = MakeFont();
    dc->SelectObject(&font);
    return LayOut(*dc).size;
}

void CLegend::Draw(CPort* port)
{
    if (!m_on)
        return;
    CDC& dc = *port->GetDC();
    Frame const frame = GetFrame(AnnotationKind::Legend, port->GetWindowRect());
    UpdateGraphParameters();
    if (Place(frame) != Leader::KeptRect || m_fontHeight == 0)
        UpdateFontHeight(dc, frame);
    SavedDC const saved(dc);
    CFont font = MakeFont();
    dc.SelectObject(&font);
    Layout const layout = LayOut(dc);
    SetSize(layout.size.cx, layout.size.cy);
    FillBackground(dc);
    SelectTextStyle(dc);
    DrawEntries(*port, layout);
    DrawBorder(dc);
}

namespace {

void DrawPatch(CDC& dc, CRect const& patch, LegendEntry const& entry)
{
    VectorBrush const brush = MakePatternBrush(entry.fillPattern, entry.colour);
    VectorGraphics(dc).FillRectangle(brush, patch.left, patch.top, patch.Width(), patch.Height());
    CVUtils::DrawRect(&dc, patch);
}

/// Along the middle of the sample, half its height away from its ends. A line that is wider than the sample is cut, so
/// that it leaves the neighbouring ones alone.
void DrawStretch(CDC& dc, CRect const& sample, LegendEntry const& entry)
{
    int const half = sample.Height() / 2;
    int const y = sample.top + half;
    int const width = DeviceLineWidth(dc, entry.lineWidth);
    VectorPen const pen { { entry.colour, 255 }, static_cast<double>(width), entry.dashes };
    VectorGraphics graphics(dc);
    graphics.SetSmoothing(true);
    if (width > sample.Height())
        graphics.SetClipRect(sample);
    graphics.DrawLine(pen, { sample.left + half, y }, { sample.right - half, y });
}

void DrawSymbol(CPort& port, CRect const& square, LegendEntry const& entry)
{
    CDC& dc = *port.GetDC();
    SavedDC const saved(dc);
    CPen pen(PS_SOLID, 1, entry.symbolColour);
    CBrush brush(entry.symbolFillColour);
    dc.SelectObject(&pen);
    if (entry.fillSymbol)
        dc.SelectObject(&brush);
    C2DSymbol::DrawSymbol(
        entry.symbolType, &port, square, entry.symbolColour, entry.fillSymbol, entry.symbolFillColour);
}

/// The square in the middle of a sample, a sixth of its height away from top and bottom.
CRect SquareIn(CRect const& sample)
{
    int const inset = sample.Height() / 6;
    int const side = sample.Height() - 2 * inset;
    return { CPoint(sample.left + (sample.Width() - side) / 2, sample.top + inset), CSize(side, side) };
}

} // namespace

void CLegend::DrawEntries(CPort& port, Layout const& layout) const
{
    CDC& dc = *port.GetDC();
    CRect const visible = dc.GetClipBox();
    int const height = layout.cell.cy;
    long long top = static_cast<long long>(m_rect.top) + height / 4;
    for (LegendEntry const& entry : m_entries) {
        CPoint const at(m_rect.left, ClampCoordinate(top));
        top += layout.step;
        // Glyphs may reach a little over their cell.
        if (at.y - height > visible.bottom || at.y + 2 * height < visible.top)
            continue;
        CRect const sample(at, CSize(layout.sampleWidth, height));
        if (m_style == lsLine)
            DrawStretch(dc, sample, entry);
        else if (m_style == lsSymbol)
            DrawSymbol(port, SquareIn(sample), entry);
        else
            DrawPatch(dc, SquareIn(sample), entry);
        dc.TextOut(sample.right, sample.top, entry.title);
    }
}

} // namespace ombrel
