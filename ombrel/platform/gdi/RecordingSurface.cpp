#include "ombrel/platform/gdi/RecordingSurface.h"

#include <algorithm>

namespace ombrel {

namespace {

/// FNV-1a over the pixels that are copied and the colours that they may become.
std::uint64_t PixelSum(ImageCopy const& copy)
{
    std::uint64_t sum = 0xCBF29CE484222325;
    auto const add = [&sum](std::uint32_t value) { sum = (sum ^ value) * 0x100000001B3; };
    add(copy.zeroColour);
    add(copy.oneColour);
    add(copy.maskColour);
    if (!copy.source)
        return sum;
    add(static_cast<std::uint32_t>(copy.source->BitsPerPixel()));
    CRect part;
    part.IntersectRect(copy.from, copy.source->Bounds());
    for (int y = part.top; y < part.bottom; ++y)
        std::for_each(copy.source->Row(y) + part.left, copy.source->Row(y) + part.right, add);
    return sum;
}

template <typename T> std::vector<T> Copy(std::span<T const> values) { return { values.begin(), values.end() }; }

} // namespace

RecordingSurface::RecordingSurface(CSize size, DeviceCapabilities const& capabilities, bool printing)
    : m_capabilities(capabilities)
    , m_bounds({}, size)
    , m_printing(printing)
{
}

void RecordingSurface::Polyline(std::span<CPoint const> points, LineStyle const& line, Clip const& clip)
{
    m_primitives.push_back({ primitive::Polyline { Copy(points), line }, clip });
}

void RecordingSurface::Stroke(Figures const& figures, VectorPen const& pen, bool smooth, Clip const& clip)
{
    m_primitives.push_back({ primitive::Stroke { Copy(figures.points), Copy(figures.starts),
                                 { pen.colour, pen.width, Copy(pen.dashes) }, smooth },
        clip });
}

void RecordingSurface::Fill(Region const& region, VectorBrush const& brush, Clip const& clip)
{
    m_primitives.push_back({ primitive::Fill { region, brush }, clip });
}

void RecordingSurface::Text(TextRun const& run, Clip const& clip)
{
    m_primitives.push_back(
        { primitive::Text { run.text, run.at, run.font ? *run.font : LOGFONT(), run.colour, run.cellColour }, clip });
}

void RecordingSurface::Image(ImageCopy const& copy, Clip const& clip)
{
    m_primitives.push_back({ primitive::Image { copy.from, copy.to, copy.operation, PixelSum(copy) }, clip });
}

void RecordingSurface::Ellipse(CRect const& box, LineStyle const* outline, COLORREF const* fill, Clip const& clip)
{
    primitive::Ellipse ellipse { box, {}, {} };
    if (outline)
        ellipse.line = *outline;
    if (fill)
        ellipse.fill = *fill;
    m_primitives.push_back({ ellipse, clip });
}

void RecordingSurface::Arc(CRect const& box, CPoint start, CPoint end, LineStyle const& line, Clip const& clip)
{
    m_primitives.push_back({ primitive::Arc { box, start, end, line }, clip });
}

} // namespace ombrel
