#include "ombrel/platform/gdi/raster/RasterSurface.h"

#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/geometry/PolygonScan.h"
#include "ombrel/platform/gdi/raster/HatchPainter.h"
#include "ombrel/platform/gdi/raster/PolygonMask.h"
#include "ombrel/platform/gdi/text/TextEngine.h"

#include <cmath>

namespace ombrel {

namespace {

/// Calls span(y, left, right) for the parts of a region that lie in the canvas's box.
template <typename EachSpan> void ForSpans(Region const& region, RasterCanvas const& canvas, EachSpan&& each)
{
    CRect box;
    if (!box.IntersectRect(region.Box(), canvas.Box()))
        return;
    if (region.IsRect()) {
        for (int y = box.top; y < box.bottom; ++y)
            each(y, box.left, box.right);
    } else if (!region.Outline().empty()) {
        // A shape that is filled once need not keep its spans.
        PolygonScan(region.Outline(), region.OutlineMode(), box.top, box.bottom).Run(each);
    } else {
        for (Region::Span const& s : region.Spans(box.top, box.bottom))
            each(s.y, s.left, s.right);
    }
}

} // namespace

RasterSurface::RasterSurface(std::shared_ptr<Raster> raster)
    : m_raster(std::move(raster))
{
}

std::unique_ptr<Surface> MakeRasterSurface(std::shared_ptr<Raster> raster)
{
    return std::make_unique<RasterSurface>(std::move(raster));
}

DeviceCapabilities const& RasterSurface::Capabilities() const
{
    DeviceCapabilities const& screen = Surface::Capabilities();
    if (!m_raster || m_raster->DotsPerInch() == screen.logPixelsX)
        return screen;
    double const scale = static_cast<double>(m_raster->DotsPerInch()) / screen.logPixelsX;
    m_capabilities = screen;
    m_capabilities.logPixelsX = m_capabilities.logPixelsY = m_raster->DotsPerInch();
    m_capabilities.horzRes = static_cast<int>(std::lround(screen.horzRes * scale));
    m_capabilities.vertRes = static_cast<int>(std::lround(screen.vertRes * scale));
    return m_capabilities;
}

bool RasterSurface::FillCrowded(Region const& region, RasterCanvas const& canvas, Ink const& ink)
{
    CRect box;
    if (region.OutlineMode() != ALTERNATE || region.IsRect() || !box.IntersectRect(region.Box(), canvas.Box())
        || !IsCrowdedPolygon(region.Outline(), box))
        return false;
    CoverPolygon(m_mask, region.Outline(), box);
    m_mask.Flush(canvas, ink);
    return true;
}

void RasterSurface::Text(TextRun const& run, Clip const& clip)
{
    RasterCanvas const canvas(m_raster.get(), clip);
    if (canvas.IsEmpty() || !run.font || run.text.IsEmpty())
        return;
    CPoint const at = ClampPoint(run.at);
    if (run.cellColour) {
        CSize const size = MeasureText(*run.font, run.text);
        CRect const cell = text::IsVertical(*run.font) ? CRect(at.x, at.y - size.cx, at.x + size.cy, at.y)
                                                       : CRect(at.x, at.y, at.x + size.cx, at.y + size.cy);
        canvas.FillBox(cell, canvas.Pixel(*run.cellColour));
    }
    auto const mask = text::RenderText(*run.font, run.text, MoveRect(canvas.Box(), CPoint() - at));
    Ink const ink = canvas.InkOf({ run.colour, 255 });
    CPoint const corner = MovePoint(at, mask->offset);
    int const first = std::max(0, canvas.Box().top - corner.y);
    int const last = std::min(mask->height, canvas.Box().bottom - corner.y);
    for (int row = first; row < last; ++row)
        canvas.PaintCoverage(corner.y + row, corner.x, mask->width,
            mask->coverage.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(mask->width), ink);
}

void RasterSurface::Fill(Region const& region, VectorBrush const& brush, Clip const& clip)
{
    RasterCanvas const canvas(m_raster.get(), clip);
    if (canvas.IsEmpty())
        return;
    if (brush.hatchStyle) {
        HatchPainter const painter(brush, canvas.IsMono());
        ForSpans(region, canvas, [&](int y, int left, int right) {
            canvas.ForVisible(
                y, left, right, [&](std::uint32_t* p, int from, int to) { painter.Paint(p, y, from, to); });
        });
        return;
    }
    Ink ink = canvas.InkOf(brush.foreground);
    if (ink.mono)
        ink.alpha = ink.alpha >= 128 ? 255 : 0;
    if (ink.alpha == 0)
        return;
    if (ink.alpha == 255 && region.IsRect()) {
        canvas.FillBox(region.Box(), ink.pixel);
        return;
    }
    if (FillCrowded(region, canvas, ink))
        return;
    if (ink.alpha == 255) {
        ForSpans(region, canvas, [&](int y, int left, int right) { canvas.FillSpan(y, left, right, ink.pixel); });
        return;
    }
    PixelBlend const blend(ink.pixel, ink.alpha);
    ForSpans(region, canvas, [&](int y, int left, int right) {
        canvas.ForVisible(y, left, right,
            [&blend](std::uint32_t* p, int from, int to) { std::transform(p, p + (to - from), p, blend); });
    });
}

} // namespace ombrel
