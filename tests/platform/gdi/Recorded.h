#pragma once
#include "ombrel/platform/gdi/RecordingSurface.h"

#include <sstream>
#include <string>
#include <vector>

namespace ombrel::test {

/// The recorded primitives of a kind, in order.
template <typename Kind> std::vector<Kind> OfKind(std::vector<RecordedPrimitive> const& primitives)
{
    std::vector<Kind> found;
    for (RecordedPrimitive const& p : primitives) {
        if (Kind const* const one = p.As<Kind>())
            found.push_back(*one);
    }
    return found;
}

/// Writes primitives as text, one a line, for expected recordings and failure messages.
class RecordedText {
public:
    explicit RecordedText(std::vector<RecordedPrimitive> const& primitives)
    {
        for (RecordedPrimitive const& p : primitives) {
            std::visit(*this, p.what);
            if (!(p.clip.box == Clip().box))
                *this << " clip=" << p.clip.box;
            if (p.clip.region)
                *this << " region=" << p.clip.region->Box() << (p.clip.region->IsRect() ? "" : "shaped");
            m_out << '\n';
        }
    }
    std::string Text() const { return m_out.str(); }

    void operator()(primitive::Polyline const& p) { *this << "polyline" << p.points << p.line; }
    void operator()(primitive::Stroke const& p)
    {
        *this << "stroke";
        Figures const figures { p.points, p.starts };
        for (std::size_t i = 0; i < figures.Count(); ++i) {
            auto const figure = figures.PointsOf(i);
            if (!figure.empty())
                *this << (i > 0 ? " |" : "") << std::vector<CPoint>(figure.begin(), figure.end());
        }
        *this << " pen=" << p.pen.colour << "/" << p.pen.width;
        for (std::size_t i = 0; i < p.pen.dashes.size(); ++i)
            *this << (i == 0 ? "/dashes" : ",") << p.pen.dashes[i];
        *this << (p.smooth ? " smooth" : "");
    }
    void operator()(primitive::Fill const& p)
    {
        *this << "fill";
        p.region.IsRect() ? *this << " " << p.region.Box() : *this << p.region.Outline();
        *this << " " << p.brush.foreground;
        if (p.brush.hatchStyle)
            *this << "/hatch" << *p.brush.hatchStyle << "/over" << p.brush.background;
    }
    void operator()(primitive::Text const& p)
    {
        *this << "text " << p.at << " \"" << p.text.ToUtf8() << "\" " << VectorColour { p.colour } << p.font;
        if (p.cellColour)
            *this << " cell=" << VectorColour { *p.cellColour };
    }
    void operator()(primitive::Image const& p)
    {
        *this << "image " << p.from << " to " << p.to << " operation=" << p.operation << " sum=" << p.pixelSum;
    }
    void operator()(primitive::Ellipse const& p)
    {
        *this << "ellipse " << p.box;
        if (p.line)
            *this << *p.line;
        if (p.fill)
            *this << " fill=" << VectorColour { *p.fill };
    }
    void operator()(primitive::Arc const& p)
    {
        *this << "arc " << p.box << " from " << p.start << " to " << p.end << p.line;
    }

private:
    template <typename T> RecordedText& operator<<(T const& value)
    {
        m_out << value;
        return *this;
    }
    RecordedText& operator<<(CPoint p) { return *this << p.x << "," << p.y; }
    RecordedText& operator<<(CRect const& r) { return *this << "[" << r.TopLeft() << " " << r.BottomRight() << "]"; }
    RecordedText& operator<<(std::vector<CPoint> const& points)
    {
        for (CPoint const& p : points)
            *this << " " << p;
        return *this;
    }
    RecordedText& operator<<(VectorColour const& c)
    {
        static constexpr char kDigits[] = "0123456789abcdef";
        *this << "#";
        for (BYTE const part : { GetRValue(c.colour), GetGValue(c.colour), GetBValue(c.colour) })
            *this << kDigits[part >> 4] << kDigits[part & 15];
        if (c.alpha != 255)
            *this << "*" << int { c.alpha };
        return *this;
    }
    RecordedText& operator<<(LineStyle const& line)
    {
        static constexpr char const* kNames[] = { "solid", "dash", "dot", "dashdot", "dashdotdot", "null", "inside" };
        *this << " pen=" << VectorColour { line.colour } << "/" << line.width << "/" << kNames[line.style];
        return line.gapColour ? *this << "/gaps" << VectorColour { *line.gapColour } : *this;
    }
    RecordedText& operator<<(LOGFONT const& f)
    {
        *this << " font=" << f.lfFaceName.ToUtf8() << "/" << f.lfHeight;
        if (f.lfWeight != 0)
            *this << "/w" << f.lfWeight;
        *this << (f.lfItalic ? "/italic" : "") << (f.lfUnderline ? "/underline" : "")
              << (f.lfStrikeOut ? "/strikeout" : "");
        return f.lfEscapement != 0 ? *this << "/turned" << f.lfEscapement : *this;
    }
    std::ostringstream m_out;
};

inline std::string Dump(std::vector<RecordedPrimitive> const& primitives) { return RecordedText(primitives).Text(); }

} // namespace ombrel::test
