#include "ombrel/annotation/CaptionArray.h"
#include "ombrel/annotation/ColourKeyArray.h"
#include "ombrel/annotation/Legend.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ombrel {

bool C2DGraph::GraphComponentModified() const
{
    auto const isModified = [this](CGraphComponent* c) { return !IsAnnotation(c) && c->Modified(); };
    return std::any_of(GetComponentArray().begin(), GetComponentArray().end(), isModified);
}

bool C2DGraph::IsComplete(CDC const& dc) const
{
    return GetModifiedFlag() || PlotComponentModified() || GraphComponentModified() || m_rectModified
        || dc.IsPrinting();
}

void C2DGraph::ResizeBitmaps(CRect const& rect)
{
    m_dib.Create(rect.Width(), rect.Height(), 24);
    m_bitmapSize = rect.Size();
    m_bodyIsDrawn = false;
}

void C2DGraph::Draw(CDC* dc, CRect const& rect, PaintMode mode)
{
    if (IsBusy() || rect.IsRectEmpty())
        return;
    DrawScope scope(*this);
    m_windowRect = rect;
    // The graph rectangle counts from the window's corner, so the window lies at the origin while it is drawn.
    CRect const local({ 0, 0 }, rect.Size());
    bool const offScreen = mode == pmOffScreen;
    if (offScreen && rect.Size() != m_bitmapSize)
        ResizeBitmaps(rect);
    m_dc = offScreen ? m_dib.GetDC() : dc;
    {
        SavedDC const saved(*m_dc);
        if (!offScreen) {
            CPoint const origin = dc->GetViewportOrg();
            dc->SetViewportOrg(origin.x + rect.left, origin.y + rect.top);
        }
        if (!offScreen || !m_bodyIsDrawn || IsComplete(*dc)) {
            UpdateComponentParameters();
            LayOut(*m_dc);
            DrawBody(*m_dc, local, local);
            m_bodyIsDrawn = offScreen;
            m_displayIsBody = offScreen;
        }
        if (!offScreen)
            DrawAnnotation(*m_dc);
    }
    if (offScreen)
        Present(*dc, rect.TopLeft());
    scope.Finish(dc->IsPrinting());
}

void C2DGraph::LayOut(CDC& dc)
{
    if (!m_sized) {
        m_sized = 1;
        SetInitialSize(&dc);
    } else {
        UpdateGraphRect();
        SetGraphSize(m_graphRect);
    }
}

void C2DGraph::LayOut(CDC* dc, CRect const& window)
{
    if (IsBusy() || window.IsRectEmpty())
        return;
    m_windowRect = window;
    // The picture that is kept may be of another layout.
    m_rectModified = 1;
    CDC* const before = std::exchange(m_dc, dc);
    UpdateComponentParameters();
    LayOut(*dc);
    m_dc = before;
}

void C2DGraph::DrawBody(CDC& dc, CRect const& background, CRect const& frame)
{
    CPort port(&dc, CRect({ 0, 0 }, background.Size()), m_graphRect, m_unitsRect);
    dc.FillSolidRect(
        { background.left, background.top, background.right + 1, background.bottom + 1 }, m_windowBackground);
    DrawGraphBackground(port);
    DrawComponents(port);
    if (GetGraphFrameOn())
        CVUtils::DrawRect(&dc, { frame.left, frame.top, frame.right - 1, frame.bottom - 1 });
}

bool C2DGraph::HasAnnotation() const
{
    return (GetLegend() && GetLegend()->IsOn()) || (GetCaptionArray() && GetCaptionArray()->GetSize() > 0)
        || (GetColourKeyArray() && GetColourKeyArray()->GetSize() > 0);
}

void C2DGraph::DrawAnnotation(CDC& dc)
{
    CPort port(&dc, CRect({ 0, 0 }, m_windowRect.Size()), m_graphRect, m_unitsRect);
    DrawCaptions(&port);
    DrawColourKeys(&port);
    DrawLegend(&port);
}

void C2DGraph::Present(CDC& target, CPoint at)
{
    // Without annotation the finished picture is the body: it is copied once, straight to the target.
    m_displayIsBody = true;
    if (!HasAnnotation()) {
        m_dib.Draw(&target, at.x, at.y);
        return;
    }
    CDIB& display = GetDisplayDIB();
    {
        SavedDC const saved(*display.GetDC());
        DrawAnnotation(*display.GetDC());
    }
    display.Draw(&target, at.x, at.y);
}

void C2DGraph::DrawEmbedded(CDC* dc, CRect const& window, CRect const& target)
{
    if (IsBusy() || window.IsRectEmpty() || target.IsRectEmpty())
        return;
    DrawScope scope(*this);
    Placement const own { m_windowRect, m_graphRect, m_normalisedOrigin, m_normalisedSize, m_sized };
    if (m_windowRect.IsRectEmpty()) {
        // A graph that was never drawn in a window of its own is laid out as if the target were it.
        m_windowRect = CRect({ 0, 0 }, target.Size());
        if (m_sized)
            UpdateGraphRect();
        else
            m_graphRect = CRect();
    }
    m_dc = dc;
    {
        SavedDC const saved(*dc);
        UpdateComponentParameters();
        if (!m_sized) {
            m_sized = 1;
            SetInitialSize(dc);
        }
        CRect const embedded = EmbeddedRect(m_graphRect, m_windowRect, target);
        SetGraphAndWindowRect(embedded, window);
        SetGraphSize(embedded);
        DrawBody(*dc, window, target);
        DrawAnnotation(*dc);
    }
    m_windowRect = own.window;
    m_graphRect = own.graph;
    m_normalisedOrigin = own.normalisedOrigin;
    m_normalisedSize = own.normalisedSize;
    m_sized = own.sized;
    m_bodyIsDrawn = false;
    scope.Finish(dc->IsPrinting());
}

CRect C2DGraph::EmbeddedRect(CRect const& graph, CRect const& window, CRect const& target)
{
    auto const scaled = [](int length, int part, int whole) {
        float const ratio = static_cast<float>(part) / static_cast<float>(whole);
        return VUNearest(static_cast<float>(length) * ratio);
    };
    int const left = scaled(target.Width(), graph.left - window.left, window.Width()) + target.left;
    int const top = scaled(target.Height(), graph.top - window.top, window.Height()) + target.top;
    int const right = left + scaled(target.Width(), graph.Width(), window.Width());
    int const bottom = scaled(target.Height(), graph.bottom - window.top, window.Height()) + target.top;
    return { left, top, right, bottom };
}

void C2DGraph::DrawToPrinter(CDC* printer)
{
    CRect place = CPreferences::GetPrintPosRectDefault();
    CPreferences::GetPrintPosRect(place);
    double const pixelsPerMmX = static_cast<double>(printer->GetDeviceCaps(HORZRES)) / printer->GetDeviceCaps(HORZSIZE);
    double const pixelsPerMmY = static_cast<double>(printer->GetDeviceCaps(VERTRES)) / printer->GetDeviceCaps(VERTSIZE);
    int const x = static_cast<int>(place.left * pixelsPerMmX);
    int const y = static_cast<int>(place.top * pixelsPerMmY);
    int const width = static_cast<int>(place.Width() * pixelsPerMmX + 0.5);
    int const height = static_cast<int>(place.Height() * pixelsPerMmY + 0.5);
    CDIB& picture = GetDisplayDIB();
    CSize const size = picture.GetSize();
    SavedDC const saved(*printer);
    printer->SetStretchBltMode(COLORONCOLOR);
    printer->StretchBlt(x, y, width, height, picture.GetDC(), 0, 0, size.cx, size.cy, SRCCOPY);
}

void C2DGraph::DrawGraphBackground(CPort& port)
{
    if (!m_axes || m_graphBackground == m_windowBackground)
        return;
    CRealRect const range = m_axes->GetRealExtentRect();
    CPoint const topLeft = port.UnitsToWindow(range.TopLeft());
    CPoint const bottomRight = port.UnitsToWindow(range.BottomRight());
    port.GetDC()->FillSolidRect({ topLeft.x, topLeft.y, bottomRight.x, bottomRight.y }, m_graphBackground);
}

void C2DGraph::DrawComponents(CPort& port)
{
    if (m_drawOrder.IsEmpty()) {
        DrawComponentsDefaultOrder(port);
        return;
    }
    RemoveInvalidDrawOrderTags();
    AppendNewDrawOrderTags();
    DrawComponentsUserOrder(port);
}

void C2DGraph::DrawComponentsDefaultOrder(CPort& port)
{
    for (CGraphComponent* component : GetComponentArray()) {
        if (!IsAnnotation(component))
            component->Draw(&port);
    }
}

namespace {

/// Draws the plots, and the curves of plots that are not drawn as a whole, that carry the tag.
void DrawPlotsWithTag(CPlotArray const& plots, DWORD tag, CPort& port, CRect const* clip)
{
    port.SetClipRect(clip);
    for (CPlot* plot : plots.GetPlots()) {
        if (plot->GetTag() == tag)
            plot->Draw(&port);
        if (plot->IsDrawnAsWhole())
            continue;
        for (CPlotComponent* curve : plot->GetComponents()) {
            if (curve->GetTag() == tag)
                curve->Draw(&port);
        }
    }
    port.SetClipRect(nullptr);
}

} // namespace

void C2DGraph::DrawComponentsUserOrder(CPort& port)
{
    CRect const clip = GetClipRect();
    CPlotArray const* const plots = GetPlotArray();
    for (DWORD const tag : m_drawOrder) {
        for (CGraphComponent* component : GetComponentArray()) {
            if (component != plots && component->GetTag() == tag)
                component->Draw(&port);
        }
        if (plots)
            DrawPlotsWithTag(*plots, tag, port, &clip);
    }
    CDWordArray defaultTags;
    GetDefaultDrawOrderTags(defaultTags);
    for (DWORD const tag : defaultTags) {
        if (plots && std::find(m_drawOrder.begin(), m_drawOrder.end(), tag) == m_drawOrder.end())
            DrawPlotsWithTag(*plots, tag, port, nullptr);
    }
}

void C2DGraph::DrawLegend(CPort* port)
{
    if (GetLegend() && GetLegend()->IsOn())
        GetLegend()->Draw(port);
}

void C2DGraph::DrawCaptions(CPort* port)
{
    if (GetCaptionArray())
        GetCaptionArray()->Draw(port);
}

void C2DGraph::DrawColourKeys(CPort* port)
{
    if (!GetColourKeyArray())
        return;
    GetColourKeyArray()->Refresh();
    for (int i = 0; i < GetColourKeyArray()->GetSize(); ++i)
        GetColourKeyArray()->GetAt(i)->Draw(port);
}

} // namespace ombrel
