#include "ombrel/annotation/Caption.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/DC.h"

#include <string_view>

namespace ombrel {

constinit CRuntimeClass const CCaption::kClass = PersistentClass<CCaption, CGraphComponent>("CCaption");

namespace {

/// Far outside every graph: says that the caption has no fractions yet.
constexpr double kNoPosition = -100.0;
constexpr double kFarthestPosition = -99.0;
constexpr std::size_t kLongestLine = 255;

/// How many units of a line that is too long go into its first part.
std::size_t LengthOfFirstPart(std::u16string_view line)
{
    std::size_t const blank = line.substr(0, kLongestLine).rfind(u' ');
    if (blank != std::u16string_view::npos)
        return blank + 1;
    bool const endsInsidePair = line[kLongestLine - 1] >= 0xD800 && line[kLongestLine - 1] <= 0xDBFF;
    return endsInsidePair ? kLongestLine - 1 : kLongestLine;
}

void AddLine(CStringArray& lines, std::u16string_view line)
{
    while (line.size() > kLongestLine) {
        std::size_t const length = LengthOfFirstPart(line);
        lines.Add(line.substr(0, length));
        line.remove_prefix(length);
    }
    lines.Add(line);
}

} // namespace

CStringArray SplitCaptionLines(CString const& text)
{
    CString copy = text;
    copy.Remove(u'\r');
    std::u16string_view rest = copy.View();
    CStringArray lines;
    for (std::size_t feed = rest.find(u'\n'); feed != std::u16string_view::npos; feed = rest.find(u'\n')) {
        AddLine(lines, rest.substr(0, feed));
        rest.remove_prefix(feed + 1);
    }
    AddLine(lines, rest);
    while (!lines.IsEmpty() && lines[lines.GetUpperBound()].IsEmpty())
        lines.RemoveAt(lines.GetUpperBound());
    return lines;
}

CCaption::CCaption() { m_normalisedPosition.Set(kNoPosition, kNoPosition); }

CCaption::CCaption(CGraph* graph, CString const& text, TitleType type)
    : CAnnotation(graph)
    , m_text(text)
    , m_titleType(type)
{
    m_normalisedPosition.Set(kNoPosition, kNoPosition);
}

void CCaption::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.Int(m_created, m_on, m_positioned);
    SerializeRect(f);
    f.String(m_text).Nested(m_font).Double(m_fontScaleFactor);
    f.Dword(m_textColour, m_backgroundColour, m_borderColour).Int(m_boundingRectOn, m_titleType).Strings(m_lines);
    f.Nested(m_normalisedPosition);
    if (version >= 2)
        f.Int(m_transparentBackground);
}

void CCaption::Create(CRealPoint const& normalisedPosition)
{
    m_on = 1;
    m_positioned = 0;
    m_created = 1;
    m_normalisedPosition = normalisedPosition;
}

void CCaption::SetRect(CRect const& rect)
{
    CAnnotation::SetRect(rect);
    // The first draw would prefer fractions, which are older now.
    if (!m_positioned)
        m_normalisedPosition.Set(kNoPosition, kNoPosition);
    SetModified(1);
}

int CCaption::MakeLines()
{
    m_lines = SplitCaptionLines(m_text);
    return m_lines.GetSize();
}

void CCaption::UpdateFontHeight(CDC& dc, Frame const& frame)
{
    if (frame)
        m_fontHeight = ReduceForPrinter(GetAnnotationTextHeight(dc, *frame).pixels, *frame);
}

CCaption::TextBlock CCaption::MeasureLines(CDC const& dc)
{
    long long const count = MakeLines();
    CSize longest;
    for (CString const& line : m_lines) {
        CSize const extent = dc.GetTextExtent(line);
        if (extent.cx > longest.cx)
            longest = extent;
    }
    TextBlock block;
    block.lineHeight = longest.cy;
    block.size = CSize(longest.cx, ClampCoordinate(count * longest.cy));
    block.margin = block.size.cy / 6;
    return block;
}

CSize CCaption::Measure(CDC* dc)
{
    if (!GetGraph())
        return CAnnotation::Measure(dc);
    UpdateFontHeight(*dc, GetFrame(AnnotationKind::Caption, GetGraph()->GetWindowRect()));
    SavedDC const saved(*dc);
    CFont font = MakeFont();
    dc->SelectObject(&font);
    TextBlock const text = MeasureLines(*dc);
    return { text.size.cx + 2 * text.margin, text.size.cy + 2 * text.margin };
}

void CCaption::Draw(CPort* port)
{
    if (!m_on || m_text.IsEmpty())
        return;
    CDC& dc = *port->GetDC();
    Frame const frame = GetFrame(AnnotationKind::Caption, port->GetWindowRect());
    if (!m_positioned && m_normalisedPosition.x > kFarthestPosition)
        UpdateRect(frame);
    Leader const leader = Place(frame);
    // A caption that was moved keeps its size until the graph's is looked at again.
    if (leader == Leader::FirstRect || leader == Leader::Fractions || m_fontHeight == 0)
        UpdateFontHeight(dc, frame);
    SavedDC const saved(dc);
    CFont font = MakeFont();
    dc.SelectObject(&font);
    TextBlock const text = MeasureLines(dc);
    SetSize(text.size.cx + 2LL * text.margin, text.size.cy + 2LL * text.margin);
    if (!m_transparentBackground)
        FillBackground(dc);
    SelectTextStyle(dc);
    CRect const visible = dc.GetClipBox();
    long long top = static_cast<long long>(m_rect.top) + text.margin;
    for (CString const& line : m_lines) {
        int const y = ClampCoordinate(top);
        top += text.lineHeight;
        // Glyphs may reach a little over their line.
        if (y - text.lineHeight <= visible.bottom && y + 2 * text.lineHeight >= visible.top)
            dc.TextOut(m_rect.left + text.margin, y, line);
    }
    DrawBorder(dc);
}

} // namespace ombrel
