#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>
#include <utility>

namespace ombrel {

/// Puts the graph back where it lies in its own window once it was drawn elsewhere, also when an exception ends that.
class CAnnotatedGraph::OwnPlace {
public:
    explicit OwnPlace(CAnnotatedGraph& graph)
        : m_graph(graph)
        , m_window(graph.m_windowRect)
        , m_rect(graph.m_graphRect)
        , m_normalisedOrigin(graph.m_normalisedOrigin)
        , m_normalisedSize(graph.m_normalisedSize)
        , m_sized(graph.m_sized)
    {
        m_graph.ExchangeLayout();
    }
    ~OwnPlace()
    {
        m_graph.m_windowRect = m_window;
        m_graph.m_graphRect = m_rect;
        m_graph.m_normalisedOrigin = m_normalisedOrigin;
        m_graph.m_normalisedSize = m_normalisedSize;
        m_graph.m_sized = m_sized;
        m_graph.ExchangeLayout();
    }
    OwnPlace(OwnPlace const&) = delete;
    OwnPlace& operator=(OwnPlace const&) = delete;

private:
    CAnnotatedGraph& m_graph;
    CRect m_window;
    CRect m_rect;
    CRealPoint m_normalisedOrigin;
    CRealPoint m_normalisedSize;
    int m_sized;
};

/// The steps before and after a draw, the latter also when an exception ends it.
class CAnnotatedGraph::DrawSteps {
public:
    DrawSteps(CAnnotatedGraph& graph, CDC& target)
        : m_graph(graph)
    {
        m_graph.BeginDraw(target);
    }
    ~DrawSteps() { m_graph.EndDraw(); }
    DrawSteps(DrawSteps const&) = delete;
    DrawSteps& operator=(DrawSteps const&) = delete;

private:
    CAnnotatedGraph& m_graph;
};

CRect CAnnotatedGraph::Embedded(CRect const& rect, CSize from, CSize to) const
{
    auto const scaled = [](int length, int part, int whole) {
        float const ratio = static_cast<float>(part) / static_cast<float>(whole);
        return VUNearest(static_cast<float>(length) * ratio);
    };
    int const left = scaled(to.cx, rect.left, from.cx);
    return { left, scaled(to.cy, rect.top, from.cy), left + scaled(to.cx, rect.Width(), from.cx),
        scaled(to.cy, rect.bottom, from.cy) };
}

bool CAnnotatedGraph::GraphComponentModified() const
{
    auto const isModified = [this](CGraphComponent* c) { return !IsAnnotation(c) && c->Modified(); };
    return std::any_of(GetComponentArray().begin(), GetComponentArray().end(), isModified);
}

bool CAnnotatedGraph::IsComplete(CDC const& target) const
{
    return !m_bodyIsDrawn || GetModifiedFlag() || PlotComponentModified() || GraphComponentModified() || m_rectModified
        || target.IsPrinting();
}

void CAnnotatedGraph::Draw(CDC* dc, CRect const& rect, PaintMode mode)
{
    if (IsBusy() || rect.IsRectEmpty())
        return;
    DrawScope scope(*this);
    {
        DrawSteps const steps(*this, *dc);
        m_windowRect = rect;
        if (IsDrawnOffScreen(*dc, mode))
            DrawOffScreen(*dc);
        else
            DrawDirect(*dc, rect.TopLeft(), [this] { LayOutInWindow(); });
    }
    scope.Finish(dc->IsPrinting());
}

void CAnnotatedGraph::DrawEmbedded(CDC* dc, CRect const& window, CRect const& target)
{
    if (IsBusy() || window.IsRectEmpty() || target.IsRectEmpty())
        return;
    DrawScope scope(*this);
    {
        OwnPlace const own(*this);
        DrawSteps const steps(*this, *dc);
        if (m_windowRect.IsRectEmpty()) {
            // A graph that was never drawn in a window of its own is laid out as if the target were it.
            m_windowRect = target;
            if (m_sized)
                UpdateGraphRect();
            else
                m_graphRect = CRect();
        }
        DrawDirect(*dc, target.TopLeft(), [this, &target] {
            if (!m_sized) {
                m_sized = 1;
                SetInitialSize();
            }
            CRect const embedded = Embedded(m_graphRect, m_windowRect.Size(), target.Size());
            m_windowRect = target;
            SetGraphSize(embedded);
        });
    }
    scope.Finish(dc->IsPrinting());
}

void CAnnotatedGraph::LayOut(CDC* dc, CRect const& window)
{
    if (IsBusy() || window.IsRectEmpty())
        return;
    m_windowRect = window;
    // The picture that is kept may be of another layout.
    m_rectModified = 1;
    CDC* const before = std::exchange(m_dc, dc);
    UpdateComponentParameters();
    LayOutInWindow();
    m_dc = before;
}

void CAnnotatedGraph::LayOutInWindow()
{
    if (!m_sized) {
        m_sized = 1;
        SetInitialSize();
    } else {
        UpdateGraphRect();
        SetGraphSize(m_graphRect);
    }
}

void CAnnotatedGraph::DrawOffScreen(CDC& target)
{
    constexpr int kScreenDotsPerInch = 96;
    CSize const size = m_windowRect.Size();
    // Off-screen pictures for printers are those of a screen.
    int const dotsPerInch = target.IsPrinting() ? kScreenDotsPerInch : target.GetDeviceCaps(LOGPIXELSX);
    if (size != m_bitmapSize || m_dib.GetDotsPerInch() != dotsPerInch) {
        m_dib.Create(size.cx, size.cy, 24);
        m_dib.SetDotsPerInch(dotsPerInch);
        m_bitmapSize = size;
        m_bodyIsDrawn = false;
    }
    m_dc = m_dib.GetDC();
    if (IsComplete(target)) {
        SavedDC const saved(*m_dc);
        UpdateForDraw();
        LayOutInWindow();
        DrawBodyAndFrame(*m_dc);
        m_bodyIsDrawn = true;
    }
    Present(target);
}

template <typename LayOutStep> void CAnnotatedGraph::DrawDirect(CDC& dc, CPoint corner, LayOutStep layOut)
{
    m_bodyIsDrawn = false;
    m_dc = &dc;
    SavedDC const saved(dc);
    CPoint const origin = dc.GetViewportOrg();
    dc.SetViewportOrg(origin.x + corner.x, origin.y + corner.y);
    UpdateForDraw();
    layOut();
    DrawBodyAndFrame(dc);
    DrawAnnotationOn(dc);
}

void CAnnotatedGraph::DrawBodyAndFrame(CDC& dc)
{
    DrawBody(dc);
    if (GetGraphFrameOn())
        CVUtils::DrawRect(&dc, { 0, 0, m_windowRect.Width() - 1, m_windowRect.Height() - 1 });
}

bool CAnnotatedGraph::HasAnnotation() const
{
    return (m_legend && m_legend->IsOn()) || (m_captionArray && m_captionArray->GetSize() > 0)
        || (m_colourKeyArray && m_colourKeyArray->GetSize() > 0);
}

void CAnnotatedGraph::DrawAnnotationOn(CDC& dc)
{
    CPort port(&dc, CRect({ 0, 0 }, m_windowRect.Size()), m_graphRect, GetRealRect());
    DrawAnnotation(port);
}

void CAnnotatedGraph::DrawAnnotation(CPort& port)
{
    DrawCaptions(&port);
    DrawColourKeys(&port);
    DrawLegend(&port);
}

void CAnnotatedGraph::Present(CDC& target)
{
    // Without annotation the finished picture is the body: it is copied once, straight to the target.
    m_displayIsBody = true;
    if (!HasAnnotation()) {
        CopyPicture(target, m_dib);
        return;
    }
    CDIB& display = GetDisplayDIB();
    {
        SavedDC const saved(*display.GetDC());
        DrawAnnotationOn(*display.GetDC());
    }
    CopyPicture(target, display);
}

void CAnnotatedGraph::CopyPicture(CDC& target, CDIB& picture)
{
    picture.Draw(&target, m_windowRect.left, m_windowRect.top);
}

void CAnnotatedGraph::ReleaseBitmaps()
{
    m_dib.Create(1, 1, 24);
    m_displayDIB.Create(1, 1, 24);
    m_displayIsBody = false;
    m_bodyIsDrawn = false;
    m_bitmapSize = {};
}

CDIB& CAnnotatedGraph::GetDisplayDIB()
{
    if (m_displayIsBody) {
        CSize const size = m_dib.GetSize();
        if (m_displayDIB.GetSize() != size)
            m_displayDIB.Create(size.cx, size.cy, m_dib.GetBitsPerPixel());
        m_displayDIB.SetDotsPerInch(m_dib.GetDotsPerInch());
        m_dib.Draw(m_displayDIB.GetDC(), 0, 0);
        m_displayIsBody = false;
    }
    if (!m_displayDIB.GetHandle())
        m_displayDIB.Create(1, 1, 24);
    return m_displayDIB;
}

void CAnnotatedGraph::DrawToPrinter(CDC* printer)
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

void CAnnotatedGraph::DrawCaptions(CPort* port)
{
    if (m_captionArray)
        m_captionArray->Draw(port);
}

void CAnnotatedGraph::DrawColourKeys(CPort* port)
{
    if (!m_colourKeyArray)
        return;
    m_colourKeyArray->Refresh();
    for (int i = 0; i < m_colourKeyArray->GetSize(); ++i)
        m_colourKeyArray->GetAt(i)->Draw(port);
}

void CAnnotatedGraph::DrawLegend(CPort* port)
{
    if (m_legend && m_legend->IsOn())
        m_legend->Draw(port);
}

} // namespace ombrel
