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

int CCaption::GetLongestLine(CDC* dc)
{
    int longest = -1;
    int width = -1;
    for (int i = 0; i < m_lines.GetSize(); ++i) {
        int const extent = dc->GetTextExtent(m_lines[i]).cx;
        if (extent > width) {
            width = extent;
            longest = i;
        }
    }
    return longest;
}

void CCaption::SetTextRect()
{
    if (!m_dc)
        return;
    long long const count = MakeLines();
    SavedDC const saved(*m_dc);
    CFont font = MakeFont();
    m_dc->SelectObject(&font);
    int const longest = GetLongestLine(m_dc);
    CSize const extent = longest < 0 ? CSize() : m_dc->GetTextExtent(m_lines[longest]);
    m_block.lineHeight = extent.cy;
    m_block.size = CSize(extent.cx, ClampCoordinate(count * extent.cy));
    m_block.margin = m_block.size.cy / 6;
}

void CCaption::SetSizeOfText()
{
    SetSize(m_block.size.cx + 2LL * m_block.margin, m_block.size.cy + 2LL * m_block.margin);
}

void CCaption::SetInitialSize(CDC* dc)
{
    UpdateFontHeight(dc);
    SetTextRect();
    SetSizeOfText();
    UpdateNormalisedPos();
}

CSize CCaption::Measure(CDC* dc)
{
    if (!GetGraph())
        return CAnnotation::Measure(dc);
    AskForFrame(AnnotationKind::Caption, GetGraph()->GetWindowRect());
    ContextScope const scope(*this, dc);
    UpdateFontHeight(dc);
    SetTextRect();
    return { m_block.size.cx + 2 * m_block.margin, m_block.size.cy + 2 * m_block.margin };
}

void CCaption::Draw(CPort* port)
{
    if (!m_on || m_text.IsEmpty())
        return;
    CDC& dc = *port->GetDC();
    ContextScope const scope(*this, &dc);
    AskForFrame(AnnotationKind::Caption, port->GetWindowRect());
    if (!m_positioned && m_normalisedPosition.x > kFarthestPosition)
        UpdateRect();
    Leader const leader = Place();
    if (leader == Leader::FirstRect) {
        SetInitialSize(&dc);
    } else {
        // A caption that was moved keeps its font until the graph's size is looked at again.
        if (leader == Leader::Fractions || m_fontHeight == 0)
            UpdateFontHeight(&dc);
        SetTextRect();
    }
    SetSizeOfText();
    SavedDC const saved(dc);
    CFont font = MakeFont();
    dc.SelectObject(&font);
    if (!m_transparentBackground)
        FillBackground(dc);
    SelectTextStyle(dc);
    DrawLines(dc);
    DrawBorder(dc);
}

void CCaption::DrawLines(CDC& dc) const
{
    CRect const visible = dc.GetClipBox();
    int const lineHeight = m_block.lineHeight;
    long long top = static_cast<long long>(m_rect.top) + m_block.margin;
    for (CString const& line : m_lines) {
        int const y = ClampCoordinate(top);
        top += lineHeight;
        // Glyphs may reach a little over their line.
        if (y - lineHeight <= visible.bottom && y + 2 * lineHeight >= visible.top)
            dc.TextOut(m_rect.left + m_block.margin, y, line);
    }
}

} // namespace ombrel
