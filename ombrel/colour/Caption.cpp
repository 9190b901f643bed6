#include "ombrel/colour/Caption.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <string_view>

namespace ombrel {

constinit CRuntimeClass const CCaption::kClass = PersistentClass<CCaption, CGraphComponent>("CCaption");

namespace {

/// Far outside every graph: says that the caption has no fractions yet.
constexpr double kNoPosition = -100.0;
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
    SetModified(1);
}

int CCaption::MakeLines()
{
    m_lines = SplitCaptionLines(m_text);
    return m_lines.GetSize();
}

} // namespace ombrel
