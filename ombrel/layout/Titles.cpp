#include "ombrel/layout/Titles.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/layout/LegendPlacement.h"

#include <algorithm>

namespace ombrel {

namespace {

/// The caption that shows the graph's title; those of a user are general ones.
constexpr CCaption::TitleType kGraphTitle = CCaption::ctNone;
constexpr auto kFootnote = static_cast<CCaption::TitleType>(2);
constexpr char const* kEllipsis = "…";

CCaption& AddCaption(CAnnotatedGraph& graph, CString const& text, CCaption::TitleType type, Look const& look)
{
    auto* const caption = new CCaption(&graph, text, type);
    caption->SetTag(graph.GetNewTag());
    graph.GetCaptionArray()->Add(caption);
    ApplyLook(*caption, look);
    caption->SetBoundingRectOn(0);
    return *caption;
}

/// About nine tenths of a text, never half of a surrogate pair.
CString Shortened(CString const& text)
{
    int length = text.GetLength() * 9 / 10 - 1;
    char16_t const last = text.GetAt(length - 1);
    if (last >= 0xD800 && last <= 0xDBFF)
        --length;
    return text.Left(length);
}

/// Puts the caption's corner at a device point.
void MoveTo(CCaption& caption, C2DGraph const& graph, CPoint at)
{
    CRect const axes = graph.GetAxesRect();
    caption.Create(CRealPoint((at.x - axes.left) / static_cast<double>(std::max<LONG>(axes.Width(), 1)),
        (at.y - axes.top) / static_cast<double>(std::max<LONG>(axes.Height(), 1))));
}

/// Makes the text of the caption fit into the room, between its usual height and half of that.
bool FitHeight(CCaption& caption, CDC& dc, int weight, double usualFactor, CSize room)
{
    constexpr int kSteps = 10;
    for (int i = 0; i <= kSteps; ++i) {
        caption.SetFont(CFontData("Arial", weight, 0, usualFactor * (1.0 - 0.5 * i / kSteps)));
        CSize const size = caption.Measure(&dc);
        if (size.cx <= room.cx && size.cy <= room.cy)
            return true;
    }
    return false;
}

/// Likewise of a line, which is shortened where it would have to be smaller; false when that does not help.
bool FitLine(CCaption& caption, CDC& dc, CString title, int weight, double usualFactor, CSize room)
{
    caption.SetText(title);
    bool fits = FitHeight(caption, dc, weight, usualFactor, room);
    while (!fits && title.GetLength() > 8) {
        title = Shortened(title) + CString(kEllipsis);
        caption.SetText(title);
        fits = FitHeight(caption, dc, weight, usualFactor, room);
    }
    return fits;
}

} // namespace

std::string OneLine(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return text;
}

void AddTitle(CAnnotatedGraph& graph, std::string const& title, Look const& look)
{
    if (title.empty())
        return;
    graph.SetTitle(CString(title));
    AddCaption(graph, CString(title), kGraphTitle, look).SetTransparentBkgnd(1);
}

CCaption* FindTitle(CAnnotatedGraph& graph)
{
    CCaptionArray const* const captions = graph.GetCaptionArray();
    for (int i = 0; captions && i < captions->GetSize(); ++i) {
        CCaption* const caption = captions->GetAt(i);
        CString const text = caption->GetText();
        CString const title = graph.GetTitle();
        // It may have been shortened.
        int const shown = text.GetLength() - (text.Right(1) == CString(kEllipsis) ? 1 : 0);
        if (caption->GetTitleType() == kGraphTitle && shown > 0 && title.Left(shown) == text.Left(shown))
            return caption;
    }
    return nullptr;
}

void PlaceTitle(C2DGraph& graph, CDC& dc, CRect const& key)
{
    CCaption* const caption = FindTitle(graph);
    if (!caption || !graph.GetAxes())
        return;
    CRect const window = graph.GetWindowRect();
    CRect const axes = graph.GetAxesRect();
    bool const isPolar = graph.GetPolarGrid() && graph.GetPolarGrid()->IsOn();
    LONG const top = isPolar ? graph.GetGraphRect().top : std::min(axes.top, graph.GetAxes()->GetExtentRect().top);
    LONG const right = !key.IsRectEmpty() && key.top < top ? key.left : window.right;
    // Letters do not touch the window's sides.
    CSize const room(right - window.left - graph.GetAxes()->GetFontHeight(), top - window.top);
    constexpr double kLargerThanLabels = 1.25;
    SetReadableFont(*caption, graph, dc);
    bool const fits = FitLine(*caption, dc, graph.GetTitle(), CFontData::kBoldWeight,
        caption->GetFont().sizeFactor * kLargerThanLabels, room);
    CSize const size = caption->Measure(&dc);
    auto const centred = static_cast<int>(axes.left + (axes.Width() - size.cx) / 2);
    int const x = std::clamp(centred, static_cast<int>(window.left), std::max<int>(window.left, right - size.cx));
    // In the middle of the room, but not far from the window's top.
    auto const above = std::min(static_cast<int>((room.cy - size.cy) / 2), graph.GetAxes()->GetFontHeight());
    MoveTo(*caption, graph, CPoint(x, static_cast<int>(window.top) + above));
    // A title that fits in no way is kept as the graph's own.
    caption->SetOn(fits);
}

void PlaceTitleIn(CAnnotatedGraph& graph, CRect const& room, CDC& dc)
{
    CCaption* const caption = FindTitle(graph);
    if (!caption)
        return;
    constexpr double kUsualFactor = 1.5;
    bool const fits = FitLine(*caption, dc, graph.GetTitle(), CFontData::kBoldWeight, kUsualFactor, room.Size());
    CSize const size = caption->Measure(&dc);
    static_cast<CAnnotation&>(*caption).Create(CPoint(
        std::max<int>(room.left, room.left + (room.Width() - size.cx) / 2), room.top + (room.Height() - size.cy) / 2));
    caption->SetOn(fits);
}

void SetFootnote(CAnnotatedGraph& graph, std::string const& text, Look const& look)
{
    CCaptionArray& captions = *graph.GetCaptionArray();
    for (int i = captions.GetSize() - 1; i >= 0; --i) {
        if (captions.GetAt(i)->GetTitleType() == kFootnote)
            captions.RemoveAt(i);
    }
    if (!text.empty())
        AddCaption(graph, CString(OneLine(text)), kFootnote, look).SetTransparentBkgnd(1);
}

CCaption* FindFootnote(CAnnotatedGraph& graph)
{
    CCaptionArray const* const captions = graph.GetCaptionArray();
    for (int i = 0; captions && i < captions->GetSize(); ++i) {
        if (captions->GetAt(i)->GetTitleType() == kFootnote)
            return captions->GetAt(i);
    }
    return nullptr;
}

void PlaceFootnote(C2DGraph& graph, std::string const& text, CDC& dc)
{
    CCaption* const caption = FindFootnote(graph);
    if (!caption || !graph.GetAxes())
        return;
    constexpr double kSmallerThanLabels = 0.85;
    CRect const window = graph.GetWindowRect();
    int const margin = graph.GetAxes()->GetFontHeight();
    SetReadableFont(*caption, graph, dc);
    double const factor = caption->GetFont().sizeFactor * kSmallerThanLabels;
    bool const fits = FitLine(*caption, dc, CString(OneLine(text)), CFontData::kNormalWeight, factor,
        CSize(window.Width() - margin, 2 * margin));
    MoveTo(*caption, graph, CPoint(window.left + margin / 2, window.bottom - margin / 2 - caption->Measure(&dc).cy));
    caption->SetOn(fits);
}

void PlaceFootnoteIn(CAnnotatedGraph& graph, std::string const& text, CRect const& room, double textFactor, CDC& dc)
{
    CCaption* const caption = FindFootnote(graph);
    if (!caption)
        return;
    constexpr double kUsualFactor = 0.8;
    bool const fits = FitLine(
        *caption, dc, CString(OneLine(text)), CFontData::kNormalWeight, kUsualFactor * textFactor, room.Size());
    CSize const size = caption->Measure(&dc);
    static_cast<CAnnotation&>(*caption).Create(CPoint(room.left, room.top + (room.Height() - size.cy) / 2));
    caption->SetOn(fits);
}

void AddCaptions(C2DGraph& graph, std::vector<CaptionSettings> const& settings, Look const& look)
{
    for (CaptionSettings const& one : settings)
        AddCaption(graph, CString(one.text), CCaption::ctGeneral, look);
}

void PlaceCaptions(C2DGraph& graph, std::vector<CaptionSettings> const& settings, CDC& dc)
{
    CRect const window = graph.GetWindowRect();
    CRect const axes = graph.GetAxesRect();
    CCaptionArray const& captions = *graph.GetCaptionArray();
    std::size_t next = 0;
    for (int i = 0; i < captions.GetSize() && next < settings.size(); ++i) {
        CCaption& caption = *captions.GetAt(i);
        if (caption.GetTitleType() != CCaption::ctGeneral)
            continue;
        CaptionSettings const& one = settings[next++];
        SetReadableFont(caption, graph, dc);
        CSize const size = caption.Measure(&dc);
        auto const inside = [](double wanted, LONG first, LONG last) {
            return static_cast<int>(std::max<double>(first, std::min<double>(wanted, last)));
        };
        MoveTo(caption, graph,
            CPoint(inside(axes.left + one.x * axes.Width(), window.left, window.right - size.cx),
                inside(axes.top + one.y * axes.Height(), window.top, window.bottom - size.cy)));
    }
}

void KeepBoxesInside(CAnnotatedGraph& graph)
{
    CRect const window = graph.GetWindowRect();
    auto const keep = [&window](CAnnotation& box) {
        CRect const rect = box.GetRect();
        CPoint const at(std::max(window.left, std::min(rect.left, window.right - rect.Width())),
            std::max(window.top, std::min(rect.top, window.bottom - rect.Height())));
        if (box.IsOn() && at != rect.TopLeft())
            box.SetRect(CRect(at, rect.Size()));
    };
    if (graph.GetLegend())
        keep(*graph.GetLegend());
    CCaptionArray const* const captions = graph.GetCaptionArray();
    for (int i = 0; captions && i < captions->GetSize(); ++i)
        keep(*captions->GetAt(i));
}

} // namespace ombrel
