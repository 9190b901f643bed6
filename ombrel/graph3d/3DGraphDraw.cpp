#include "ombrel/drawing/Port.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/Polygon.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/platform/framework/Error.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/opengl/OpenGL.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ombrel {

void C3DGraph::Draw(CDC* dc, CRect const& rect, PaintMode mode)
{
    // A context without a bitmap draws nothing.
    CDC nowhere;
    CAnnotatedGraph::Draw(dc ? dc : &nowhere, rect, mode);
}

void C3DGraph::BeginDraw(CDC& target)
{
    if (target.IsPrinting() && !m_printingSuppressed)
        m_printerDC = &target;
}

void C3DGraph::EndDraw()
{
    m_printerDC = nullptr;
    m_printScale = 1.0;
    m_printingSuppressed = 0;
}

void C3DGraph::UpdateForDraw()
{
    bool const isAutoscaled = m_autoscaleMode != 0 || HasObjectCurve() != 0;
    if (isAutoscaled)
        SetAutoScaleParams(1);
    UpdateComponentParameters();
    if (PlotComponentDataModified()) {
        UpdatePlots();
        if (isAutoscaled)
            SetAutoScaleParams(1);
        UpdateComponentParameters();
    }
    if (ZValPropertyModified())
        UpdateZVals();
}

bool C3DGraph::IsDrawnOffScreen(CDC const& target, PaintMode mode) const
{
    return mode == pmOffScreen || !target.IsPrinting();
}

CRect C3DGraph::Embedded(CRect const& rect, CSize from, CSize to) const
{
    auto const scaled = [](int length, int part, int whole) {
        return VUNearest(static_cast<double>(length) * static_cast<double>(part) / static_cast<double>(whole));
    };
    int const left = scaled(to.cx, rect.left, from.cx);
    int const top = scaled(to.cy, rect.top, from.cy);
    return { left, top, left + scaled(to.cx, rect.Width(), from.cx), top + scaled(to.cy, rect.Height(), from.cy) };
}

void C3DGraph::DrawBody(CDC& dc)
{
    if (IsOwnBitmap(dc))
        RenderOn(*m_ownPicture, m_dib);
    else
        DrawElsewhere(dc);
}

/// Renders the laid-out graph and reads it back to a bitmap of the window's size.
void C3DGraph::RenderOn(Picture3D& picture, CDIB& bitmap)
{
    picture.isDrawn = false;
    picture.bitmap = &bitmap;
    picture.graphRect = m_graphRect;
    if (&picture == m_ownPicture.get())
        picture.pixelsPerInch = bitmap.GetDotsPerInch();
    picture.canvas.SetSize(m_windowRect.Size());
    if (m_graphRect.Height() != 0)
        m_aspectRatio = static_cast<double>(m_graphRect.Width()) / m_graphRect.Height();
    CDC* const dc = std::exchange(m_dc, bitmap.GetDC());
    struct Current {
        C3DGraph& graph;
        CDC* dc;
        ~Current()
        {
            graph.m_picture->bitmap = nullptr;
            graph.m_picture->transparent.EndPicture();
            graph.m_picture = nullptr;
            graph.m_dc = dc;
            graph.ClearPolygons();
        }
    } const current { *this, dc };
    m_picture = &picture;
    GLCanvas::Scope const scope(picture.canvas);
    Render();
    picture.canvas.ReadPixels({ { 0, 0 }, m_windowRect.Size() }, *bitmap.GetBitmap().GetRaster());
    picture.isDrawn = true;
}

/// Straight onto another context: through a picture of its own, so that the graph's own one stays what it is.
void C3DGraph::DrawElsewhere(CDC& dc)
{
    Picture3D picture;
    CRect const window = m_windowRect;
    CRect const graph = m_graphRect;
    CSize size = window.Size();
    if (dc.IsPrinting()) {
        // A page has more pixels than a picture needs, and the picture its own: it is drawn a whole number smaller.
        constexpr double kLeastPixelsPerInch = 300.0;
        // Of a poster it must be fewer: what drivers have, and memory for.
        constexpr double kLongestSide = 16384.0;
        constexpr double kMostPixels = 150e6;
        double const resolution = std::max(dc.GetDeviceCaps(LOGPIXELSX), 1);
        double const width = size.cx;
        double const height = size.cy;
        double const factor = std::max({ resolution / kLeastPixelsPerInch, 1.0, std::max(width, height) / kLongestSide,
            std::sqrt(width * height / kMostPixels) });
        size = { std::max(VUNearest(size.cx / factor), 1), std::max(VUNearest(size.cy / factor), 1) };
        picture.pixelsPerInch = resolution / factor;
    }
    CDIB bitmap(size.cx, size.cy, 24);
    struct Place {
        C3DGraph& graph;
        CRect window;
        CRect rect;
        ~Place()
        {
            graph.m_windowRect = window;
            graph.m_graphRect = rect;
        }
    };
    {
        Place const place { *this, window, graph };
        m_graphRect = C3DGraph::Embedded(graph, window.Size(), size);
        m_windowRect = CRect({ 0, 0 }, size);
        RenderOn(picture, bitmap);
    }
    if (size == window.Size()) {
        bitmap.Draw(&dc, 0, 0);
        return;
    }
    SavedDC const saved(dc);
    dc.SetStretchBltMode(COLORONCOLOR);
    bitmap.Draw(&dc, 0, 0, window.Width(), window.Height());
}

void C3DGraph::DrawAnnotation(CPort& port)
{
    DrawColourKeys(&port);
    DrawLegend(&port);
    DrawCaptions(&port);
}

void C3DGraph::CopyPicture(CDC& target, CDIB& picture)
{
    if (target.IsPrinting())
        DrawToPrinter(&target);
    else
        CAnnotatedGraph::CopyPicture(target, picture);
}

void C3DGraph::DrawToPrinter(CDC* printer)
{
    CAnnotatedGraph::DrawToPrinter(printer);
    ReleaseBitmaps();
    m_ownPicture->canvas.SetSize({ 1, 1 });
    m_ownPicture->isDrawn = false;
}

int C3DGraph::InitializeOpenGL(int width, int height, CDC* reference)
{
    if (width < 1 || height < 1 || width > CDIB::kMaxSide || height > CDIB::kMaxSide)
        return 0;
    ReleaseBitmaps();
    m_dib.Create(width, height, 24, reference);
    m_ownPicture->isDrawn = false;
    InvalidateDeviceObjects();
    try {
        m_ownPicture->canvas.SetSize({ width, height });
        GLCanvas::Scope const scope(m_ownPicture->canvas);
        RestoreDeviceObjects();
    } catch (Error const&) {
        return 0;
    }
    return 1;
}

void C3DGraph::InvalidateDeviceObjects()
{
    for (CGraphComponent* component : GetComponentArray())
        component->InvalidateDeviceObjects();
}

void C3DGraph::RestoreDeviceObjects()
{
    for (CGraphComponent* component : GetComponentArray())
        component->RestoreDeviceObjects();
}

int C3DGraph::Resize(int width, int height)
{
    if (!m_picture)
        return 1;
    CRect const viewport = m_graphRect.IsRectEmpty() ? CRect(0, 0, width, height) : GetViewportRect();
    gl::Viewport(viewport.left, viewport.top, viewport.Width(), viewport.Height());
    return 1;
}

double C3DGraph::GetLineWidth(int kind) const
{
    double width = m_picture ? std::max(m_picture->pixelsPerInch / 96.0, 1.0) : 1.0;
    if (m_printerDC)
        width *= CPreferences::GetThicknessScaleFac3D(kind) / m_printScale;
    return width;
}

int C3DGraph::GetTextHeight() const
{
    if (!m_picture || !m_dc)
        return 1;
    CRect const& rect = m_picture->graphRect;
    double height = VUNearest(std::min(rect.Width(), rect.Height()) / 30.0);
    constexpr double kMostMillimetres = 4.0;
    bool const isPage = m_picture != m_ownPicture.get() && m_printerDC;
    if (isPage) {
        height = std::min(height, m_picture->pixelsPerInch / 25.4 * kMostMillimetres);
    } else {
        CDC* const reference = m_printerDC ? m_printerDC : m_dc;
        if (CVUtils::PixelsToMM(reference, { 0, static_cast<int>(height) }).cy > kMostMillimetres)
            height = CVUtils::MMToPixels(reference, { 0, 4 }).cy / m_printScale;
    }
    // A printed picture is looked at from nearer.
    if (m_printerDC)
        height *= 0.75;
    return std::max(VUNearest(height), 1);
}

} // namespace ombrel
