#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/marks/MarkPlanes.h"
#include "ombrel/platform/gdi/raster/RasterCanvas.h"
#include "ombrel/platform/gdi/raster/RasterSurface.h"

#include <bit>

// Marks are gathered in one bit plane for each of their colours, then the planes are painted. A mark that is drawn
// later lies over the earlier ones: so the marks are gathered from the last to the first, and a bit that is set stays.
namespace ombrel {

namespace {

/// Fewer marks are drawn one by one, and so are those with more empty plane round each.
constexpr std::size_t kFewPoints = 16;
constexpr std::size_t kWordsPerPoint = 1024;

void PaintWord(RasterCanvas const& canvas, int y, int left, std::uint64_t bits, std::uint32_t colour)
{
    canvas.ForVisible(y, left, left + kWordBits, [=](std::uint32_t* pixels, int from, int to) {
        std::uint64_t const visible
            = bits >> (from - left) << (from - left) << (left + kWordBits - to) >> (left + kWordBits - to);
        for (std::uint64_t rest = visible; rest != 0;) {
            int const first = std::countr_zero(rest);
            int const count = std::countr_one(rest >> first);
            std::uint32_t* const run = pixels + (left + first - from);
            for (int i = 0; i < count; ++i)
                run[i] = colour;
            rest = first + count < kWordBits ? rest >> (first + count) << (first + count) : 0;
        }
    });
}

template <std::size_t Colours> void DrawMarks(
    RasterCanvas const& canvas, MarkPicture const& mark, CRect const& corners, std::span<CPoint const> points)
{
    MarkBits<Colours> const bits = BitsOf<Colours>(mark);
    MarkPlanes<Colours> planes(corners, mark.box.Size());
    SeenPlaces seen(corners);
    for (std::size_t i = points.size(); i-- > 0;) {
        CPoint const corner = MovePoint(points[i], mark.box.TopLeft());
        if (corners.PtInRect(corner) && seen.Add(corner))
            planes.AddUnder(bits, corner);
    }
    PlaneWord<Colours> const* word = planes.Words().data();
    for (int y = planes.Box().top; y < planes.Box().bottom; ++y) {
        int left = planes.Box().left;
        for (std::size_t i = 0; i < planes.RowWords(); ++i, ++word, left += kWordBits)
            for (std::size_t c = 0; c < Colours; ++c)
                if ((*word)[c] != 0)
                    PaintWord(canvas, y, left, (*word)[c], mark.colours[c]);
    }
}

/// Lays the mark's pixels over those at each point.
void BlendMarks(RasterCanvas const& canvas, MarkPicture const& mark, std::span<CPoint const> points, BYTE alpha)
{
    for (CPoint const& point : points) {
        CPoint const corner = MovePoint(point, mark.box.TopLeft());
        for (int y = 0; y < mark.box.Height(); ++y) {
            std::uint32_t const* const row = mark.pixels.Row(y);
            canvas.ForVisible(corner.y + y, corner.x, corner.x + mark.box.Width(),
                [row, alpha, left = corner.x](std::uint32_t* pixels, int from, int to) {
                    for (int x = from; x < to; ++x, ++pixels) {
                        if (std::uint32_t const colour = row[x - left]; colour != MarkPicture::kUntouched)
                            *pixels = PixelBlend(colour, alpha)(*pixels);
                    }
                });
        }
    }
}

} // namespace

void RasterSurface::Repeat(
    std::span<RecordedPrimitive const> mark, std::span<CPoint const> points, BYTE alpha, Clip const& clip)
{
    RasterCanvas const canvas(m_raster.get(), clip);
    if (canvas.IsEmpty())
        return;
    bool const isOpaque = alpha == 255 || canvas.IsMono();
    auto const picture
        = isOpaque && points.size() < kFewPoints ? std::nullopt : DrawMark(mark, m_raster->BitsPerPixel());
    if (!picture)
        return Surface::Repeat(mark, points, alpha, clip);
    if (!isOpaque)
        return BlendMarks(canvas, *picture, points, alpha);
    CRect const corners = VisibleCorners(canvas.Box(), picture->box, points);
    if (corners.IsRectEmpty() || picture->colours.empty())
        return;
    if (static_cast<std::size_t>(corners.Height()) * WordsFor(corners.Width()) > points.size() * kWordsPerPoint)
        Surface::Repeat(mark, points, alpha, clip);
    else if (picture->colours.size() == 1)
        DrawMarks<1>(canvas, *picture, corners, points);
    else
        DrawMarks<2>(canvas, *picture, corners, points);
}

} // namespace ombrel
