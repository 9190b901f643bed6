#include "ombrel/graph3d/3DTextCurve.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

constinit CRuntimeClass const C3DTextCurve::kClass = PersistentClass<C3DTextCurve, C3DLineCurve>("C3DTextCurve");

C3DTextCurve::C3DTextCurve(CPlot* plot, int useGraphColour)
    : C3DLineCurve(plot, useGraphColour)
{
    SetTitle("Text Curve");
    SetItemType(it3DTextCurve);
    SetColour(0);
    SetModified(0);
}

void C3DTextCurve::Serialize(CArchive& ar)
{
    C3DLineCurve::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Strings(m_text).Int(m_vertAlignment, m_horzAlignment).Double(m_textScaleFac).Nested(m_font).Int(m_rotate);
    f.Double(m_deltas[0], m_deltas[1], m_deltas[2]).Int(m_obscure);
}

void C3DTextCurve::SetPoints(
    CDoubleArray const* x, CDoubleArray const* y, CDoubleArray const* z, CGStringArray const* texts, int n)
{
    if (!x || !y || !z)
        return;
    Initialise(std::min({ n, x->GetSize(), y->GetSize(), z->GetSize() }));
    m_text.RemoveAll();
    for (int i = 0; i < GetNumPts(); ++i) {
        GetPoints()[i] = { (*x)[i], (*y)[i], (*z)[i] };
        m_text.Add(texts && i < texts->GetSize() ? (*texts)[i] : CString());
    }
}

void C3DTextCurve::GetDeltas(double& dx, double& dy, double& dz) const { m_deltas.GetComponents(dx, dy, dz); }

void C3DTextCurve::GetTextPosParams(CSize extent, CPoint& point, CRect& rect) const
{
    // A text of an odd size stands a little nearer to its upper left.
    auto const half = [](LONG length) { return static_cast<LONG>(length / 2.0 + 0.1); };
    if (m_vertAlignment == alBottom && !m_rotate)
        point.y -= extent.cy;
    else if (m_vertAlignment == alTop && m_rotate)
        point.y += extent.cx;
    else if (m_vertAlignment == alCentre)
        point.y += m_rotate ? half(extent.cx) : -half(extent.cy);
    LONG const width = m_rotate ? extent.cy : extent.cx;
    if (m_horzAlignment == alRight)
        point.x -= width;
    else if (m_horzAlignment == alCentre)
        point.x -= half(width);
    rect = m_rotate ? CRect(point.x, point.y - extent.cx, point.x + extent.cy, point.y)
                    : CRect(point.x, point.y, point.x + extent.cx, point.y + extent.cy);
}

void C3DTextCurve::SetDefaultFontHeight(C3DGraph const& graph)
{
    m_fontHeight = graph.GetTextHeight();
    double const zoom = graph.GetZoomFactor();
    m_drawnFont = m_font;
    m_drawnFont.sizeFactor *= zoom > 0.0 && std::isfinite(zoom) ? zoom : 1.0;
    // Of a letter as high as the picture nothing can be read.
    double const highest = static_cast<double>(graph.GetWindowRect().Height()) / m_fontHeight;
    m_drawnFont.sizeFactor = m_drawnFont.sizeFactor > 0.0 ? std::min(m_drawnFont.sizeFactor, highest) : 0.0;
}

void C3DTextCurve::Render()
{
    C3DGraph* const graph = Get3DGraph();
    Picture3D* const picture = graph ? graph->GetPicture() : nullptr;
    if (!picture || !IsValid())
        return;
    SetDefaultFontHeight(*graph);
    if (VUNearest(m_fontHeight * m_drawnFont.sizeFactor) < 1)
        return;
    Normalise();
    std::array<double, 3> const box = graph->GetClipBox();
    int const windowHeight = graph->GetWindowRect().Height();
    CVertex const delta = GetBoxPlace(GetNormalisedAxes(), m_deltas) - GetBoxPlace(GetNormalisedAxes(), {});

    CDC& dc = *picture->bitmap->GetDC();
    CFont font;
    CVUtils::ConfigureFont(&font, m_drawnFont, m_fontHeight, 0);
    SavedDC const saved(dc);
    dc.SelectObject(&font);
    int const count = std::min(GetNumNormalisedPoints(), m_text.GetSize());
    for (int i = 0; i < count; ++i) {
        CVertex const& place = GetNormalisedPoint(i);
        CVertex const point = place - delta;
        bool const isInBox
            = std::fabs(point.X()) <= box[0] && std::fabs(point.Y()) <= box[1] && std::fabs(point.Z()) <= box[2];
        std::optional<CVertex> const window = isInBox ? picture->camera.Project(place) : std::nullopt;
        if (!window || m_text[i].IsEmpty())
            continue;
        // Sums of what is farther out would be no numbers.
        constexpr double kFarthest = 1e6;
        if (!(std::fabs(window->X()) < kFarthest && std::fabs(window->Y()) < kFarthest))
            continue;
        PlacedText text;
        CPoint const pixel(VUNearest(window->X()), VUNearest(window->Y()));
        if (m_obscure)
            text.anchor = TextAnchor { pixel, window->Z() };
        text.text = m_text[i];
        text.origin = { pixel.x, windowHeight - pixel.y };
        GetTextPosParams(dc.GetTextExtent(text.text), text.origin, text.bounds);
        text.font = &m_drawnFont;
        text.fontHeight = m_fontHeight;
        text.isUpwards = m_rotate != 0;
        text.colour = static_cast<COLORREF>(GetColour());
        picture->texts.push_back(text);
    }
}

} // namespace ombrel
