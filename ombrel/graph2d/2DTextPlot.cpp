#include "ombrel/graph2d/2DTextPlot.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/axes/LabelFont.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const C2DTextCurve::kClass = PersistentClass<C2DTextCurve, C2DCurve>("C2DTextCurve");
constinit CRuntimeClass const C2DTextPlot::kClass = PersistentClass<C2DTextPlot, C2DPlot>("C2DTextPlot");

C2DTextCurve::C2DTextCurve(CPlot* plot, int useGraphColour)
    : C2DCurve(plot, useGraphColour)
{
    SetTitle("Text Curve");
    SetItemType(it2DTextCurve);
    SetColour(0);
}

void C2DTextCurve::Serialize(CArchive& ar)
{
    C2DCurve::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Strings(m_text).Int(m_vertAlignment, m_horzAlignment).Double(m_textScaleFac).Nested(m_font).Int(m_rotate);
}

void C2DTextCurve::SetPoints(CDoubleArray const* xs, CDoubleArray const* ys, CGStringArray const* strings, int n)
{
    if (!xs || !ys || !strings || n < 0 || n > xs->GetSize() || n > ys->GetSize() || n > strings->GetSize())
        return;
    C2DCurve::SetPoints(xs, ys, n);
    m_text.RemoveAll();
    for (int i = 0; i < n; ++i)
        m_text.Add(strings->GetAt(i));
}

void C2DTextCurve::SetDefaults(CPort* port)
{
    C2DGraph const* const graph = GetGraph2D();
    m_fontHeight = LabelFontHeight(*port->GetDC(), graph ? graph->GetGraphRect() : port->GetMapRect());
}

void C2DTextCurve::Draw(CPort* port)
{
    SetDefaults(port);
    DrawStrings(port);
}

void C2DTextCurve::DrawStrings(CPort* port)
{
    CDC& dc = *port->GetDC();
    SavedDC const saved(dc);
    CFont font;
    CVUtils::ConfigureFont(&font, m_font, m_fontHeight, m_rotate);
    dc.SelectObject(&font);
    dc.SetTextColor(static_cast<COLORREF>(GetColour()));
    dc.SetBkMode(TRANSPARENT);
    CRect clip;
    bool const clipped = port->GetClipRect(clip) != 0;
    for (int i = 0, n = std::min(GetNumPoints(), m_text.GetSize()); i < n; ++i) {
        CRealPoint const p = std::as_const(*this).GetAt(i);
        if (IsGap(p.x) || IsGap(p.y))
            continue;
        // A point on the edge keeps its whole text, as it keeps its symbol.
        CPoint const at = port->UnitsToWindow(p);
        if (clipped && (at.x < clip.left || at.x > clip.right || at.y < clip.top || at.y > clip.bottom))
            continue;
        DrawString(port, p, m_text[i]);
    }
}

void C2DTextCurve::DrawString(CPort* port, CRealPoint const& p, CString const& text)
{
    CDC& dc = *port->GetDC();
    CPoint const at = GetTextPosParams(port->UnitsToWindow(p), dc.GetTextExtent(text));
    dc.TextOut(at.x, at.y, text);
}

CPoint C2DTextCurve::GetTextPosParams(CPoint at, CSize extent) const
{
    // Halves of whole numbers, rounded down.
    int const halfWidth = static_cast<int>(extent.cx / 2.0 + 0.1);
    int const halfHeight = static_cast<int>(extent.cy / 2.0 + 0.1);
    bool const turned = m_rotate != 0;
    if (m_vertAlignment == alBottom && !turned)
        at.y -= extent.cy;
    else if (m_vertAlignment == alTop && turned)
        at.y += extent.cx;
    else if (m_vertAlignment == alCentre)
        at.y += turned ? halfWidth : -halfHeight;
    if (m_horzAlignment == alRight)
        at.x -= turned ? extent.cy : extent.cx;
    else if (m_horzAlignment == alCentre)
        at.x -= turned ? halfHeight : halfWidth;
    return at;
}

C2DTextPlot::C2DTextPlot(CGraph* graph)
    : C2DPlot(graph)
{
    StoreTitle("Text Plot");
    SetItemType(it2DTextPlot);
}

void C2DTextPlot::Serialize(CArchive& ar)
{
    C2DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

CPlotComponent* C2DTextPlot::CreateCurve() { return AddNew<C2DTextCurve>(); }

} // namespace ombrel
