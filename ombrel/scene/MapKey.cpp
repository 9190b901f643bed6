#include "ombrel/scene/MapKey.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/layout/LegendPlacement.h"
#include "ombrel/scene/parts/HeightColours.h"

#include <algorithm>

namespace ombrel {

std::string InShortLines(std::string text)
{
    constexpr std::size_t kLongLine = 14;
    std::size_t start = 0;
    for (std::size_t at = text.find(' '); at != std::string::npos; at = text.find(' ', at + 1)) {
        std::size_t const word = text.compare(at, 3, " / ") == 0 ? at + 3 : at + 1;
        std::size_t const next = std::min(text.find(' ', word), text.size());
        if (next - start > kLongLine) {
            text[at] = '\n';
            start = at + 1;
        }
        at = word - 1;
    }
    return text;
}

TitledKey AddKey(CAnnotatedGraph& graph, CPlotComponent const& curve, std::string const& title, Look const& look)
{
    TitledKey key { graph.AddColourKey(CPoint(0, 0), curve.GetTag()) };
    ApplyLook(*key.colours, look);
    key.colours->SetBoundingRectOn(0);
    SetKeyLabels(*key.colours, curve);
    if (title.empty())
        return key;
    key.title = graph.AddCaption(CPoint());
    key.title->SetText(CString(InShortLines(title)));
    ApplyLook(*key.title, look);
    key.title->SetBoundingRectOn(0);
    key.title->SetTransparentBkgnd(1);
    return key;
}

bool HasKey(CAnnotatedGraph& graph, TitledKey const& key)
{
    return key.colours && graph.GetColourKeyArray()->GetColourKeyIndex(key.colours) >= 0;
}

void RemoveKey(CAnnotatedGraph& graph, TitledKey const& key)
{
    if (HasKey(graph, key))
        graph.GetColourKeyArray()->RemoveAt(graph.GetColourKeyArray()->GetColourKeyIndex(key.colours));
    CCaptionArray& captions = *graph.GetCaptionArray();
    for (int i = captions.GetSize() - 1; key.title && i >= 0; --i) {
        if (captions.GetAt(i) == key.title)
            captions.RemoveAt(i);
    }
}

MapKey::MapKey(C2DGraph& graph, CPlotComponent const& curve, std::string const& title, Look const& look)
    : m_graph(graph)
    , m_key(AddKey(graph, curve, title, look))
{
}

int MapKey::Width(CDC& dc)
{
    SetReadableFont(*m_key.colours, m_graph, dc, AnnotationKind::ColourKey);
    if (m_key.title)
        SetReadableFont(*m_key.title, m_graph, dc);
    int const title = m_key.title ? static_cast<int>(m_key.title->Measure(&dc).cx) : 0;
    return std::max(static_cast<int>(m_key.colours->Measure(&dc).cx), title) + m_graph.GetAxes()->GetFontHeight();
}

CRect MapKey::Place(CDC& dc)
{
    CRect const window = m_graph.GetWindowRect();
    CRect const axes = m_graph.GetAxesRect();
    CSize const key = m_key.colours->Measure(&dc);
    CSize title = m_key.title ? m_key.title->Measure(&dc) : CSize(0, 0);
    // The colours matter more than their name.
    bool const hasRoom = title.cy + key.cy <= window.Height();
    if (!hasRoom)
        title.cy = 0;
    auto const left = [&](CSize size) {
        return std::min<int>(axes.right + m_graph.GetAxes()->GetFontHeight(), window.right - size.cx);
    };
    int const top = std::max<int>(window.top, axes.top + (axes.Height() - key.cy - title.cy) / 2);
    // From fractions of the axes.
    if (m_key.title)
        m_key.title->Create(CRealPoint(static_cast<double>(left(title) - axes.left) / std::max<LONG>(axes.Width(), 1),
            static_cast<double>(top - axes.top) / std::max<LONG>(axes.Height(), 1)));
    // To be placed switches it on.
    if (m_key.title && !hasRoom)
        m_key.title->SetOn(0);
    m_key.colours->Create(CPoint(left(key), top + title.cy));
    return { std::min(left(key), left(title)), top, window.right, top + title.cy + key.cy };
}

void MapKey::Remove() { RemoveKey(m_graph, m_key); }

} // namespace ombrel
