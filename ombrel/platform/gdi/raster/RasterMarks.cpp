#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/Primitive.h"
#include "ombrel/platform/gdi/raster/RasterCanvas.h"
#include "ombrel/platform/gdi/raster/RasterSurface.h"

#include <algorithm>
#include <array>
#include <bit>
#include <optional>

// Marks are gathered in one bit plane for each of their colours, then the planes are painted. A mark that is drawn
// later lies over the earlier ones: so the marks are gathered from the last to the first, and a bit that is set stays.
namespace ombrel {

namespace {

constexpr int kWordBits = 64;
/// Marks of this many colours are gathered: those of a pen and of a brush.
constexpr std::size_t kMostColours = 2;
/// Fewer marks are drawn one by one, and so are those with more empty plane round each.
constexpr std::size_t kFewPoints = 16;
constexpr std::size_t kWordsPerPoint = 1024;
constexpr int kLargestSide = 512;

/// The bits of one word of a row, one for each colour. Bit 0 is the leftmost pixel.
template <std::size_t Colours> using Word = std::array<std::uint64_t, Colours>;

std::size_t WordsFor(int pixels) { return static_cast<std::size_t>((pixels + kWordBits - 1) / kWordBits); }

/// A mark's pixels.
struct MarkPicture {
    /// Round (0, 0).
    CRect box;
    /// Rows top-down; kUntouched where the mark has no pixel.
    Raster pixels;
    /// The different pixel values.
    std::vector<std::uint32_t> colours;
    /// Nothing that is drawn has it: drawing clears the top byte.
    static constexpr std::uint32_t kUntouched = 0xFF000000;
};

/// Nothing for a mark that must be drawn point by point.
std::optional<MarkPicture> DrawMark(std::span<RecordedPrimitive const> mark, int bitsPerPixel)
{
    CRect const box = ReachOf(mark);
    bool const isSmall = !box.IsRectEmpty() && box.Width() <= kLargestSide && box.Height() <= kLargestSide;
    if (!isSmall || !std::all_of(mark.begin(), mark.end(), IsPlain))
        return {};
    auto const raster = std::make_shared<Raster>(box.Width(), box.Height(), bitsPerPixel);
    for (int y = 0; y < box.Height(); ++y)
        std::fill_n(raster->Row(y), box.Width(), MarkPicture::kUntouched);
    RasterSurface surface(raster);
    for (RecordedPrimitive const& primitive : mark)
        Replay(primitive, CPoint() - box.TopLeft(), surface, {});
    std::vector<std::uint32_t> colours;
    for (int y = 0; y < box.Height(); ++y) {
        std::uint32_t const* const row = raster->Row(y);
        for (int x = 0; x < box.Width(); ++x)
            if (row[x] != MarkPicture::kUntouched && std::find(colours.begin(), colours.end(), row[x]) == colours.end())
                colours.push_back(row[x]);
        if (colours.size() > kMostColours)
            return {};
    }
    return MarkPicture { box, std::move(*raster), std::move(colours) };
}

/// One bit for each pixel of a box and each colour.
template <std::size_t Colours> class MarkPlanes {
public:
    /// The corners are those of the marks' boxes.
    MarkPlanes(CRect const& corners, MarkPicture const& mark)
        : m_corners(corners)
        , m_width(mark.box.Width())
        , m_markWords(WordsFor(m_width))
        , m_rowWords(WordsFor(corners.Width() + m_width))
        , m_seenWords(WordsFor(corners.Width()))
        , m_seen(m_seenWords * static_cast<std::size_t>(corners.Height()))
    {
        auto const height = static_cast<std::size_t>(mark.box.Height());
        m_mark.resize(m_markWords * height);
        m_planes.resize(m_rowWords * (static_cast<std::size_t>(corners.Height()) + height));
        for (std::size_t y = 0; y < height; ++y) {
            std::uint32_t const* const row = mark.pixels.Row(static_cast<int>(y));
            for (std::size_t x = 0; x < static_cast<std::size_t>(m_width); ++x)
                for (std::size_t c = 0; c < Colours; ++c)
                    if (row[x] == mark.colours[c])
                        m_mark[y * m_markWords + x / kWordBits][c] |= std::uint64_t { 1 } << x % kWordBits;
        }
    }

    /// Puts a mark under those that are there already.
    void AddUnder(CPoint corner)
    {
        auto const x = static_cast<std::size_t>(corner.x - m_corners.left);
        auto const y = static_cast<std::size_t>(corner.y - m_corners.top);
        std::uint64_t& seen = m_seen[y * m_seenWords + x / kWordBits];
        std::uint64_t const bit = std::uint64_t { 1 } << x % kWordBits;
        if ((seen & bit) != 0)
            return;
        seen |= bit;
        unsigned const shift = x % kWordBits;
        std::size_t const reached = WordsFor(static_cast<int>(shift) + m_width);
        Word<Colours>* to = m_planes.data() + y * m_rowWords + x / kWordBits;
        if (reached == 1) {
            for (Word<Colours> const& bits : m_mark) {
                AddUnder(*to, Shifted(bits, {}, shift));
                to += m_rowWords;
            }
            return;
        }
        for (Word<Colours> const* from = m_mark.data(); from != m_mark.data() + m_mark.size(); to += m_rowWords) {
            Word<Colours> before {};
            for (std::size_t i = 0; i < m_markWords; ++i, ++from) {
                AddUnder(to[i], Shifted(*from, before, shift));
                before = *from;
            }
            if (reached > m_markWords)
                AddUnder(to[m_markWords], Shifted({}, before, shift));
        }
    }

    void Paint(RasterCanvas const& canvas, std::vector<std::uint32_t> const& colours) const
    {
        Word<Colours> const* word = m_planes.data();
        int const bottom = m_corners.top + static_cast<int>(m_planes.size() / m_rowWords);
        for (int y = m_corners.top; y < bottom; ++y) {
            int left = m_corners.left;
            for (std::size_t i = 0; i < m_rowWords; ++i, ++word, left += kWordBits)
                for (std::size_t c = 0; c < Colours; ++c)
                    if ((*word)[c] != 0)
                        PaintWord(canvas, y, left, (*word)[c], colours[c]);
        }
    }

private:
    static Word<Colours> Shifted(Word<Colours> const& bits, Word<Colours> const& before, unsigned shift)
    {
        Word<Colours> shifted;
        for (std::size_t c = 0; c < Colours; ++c)
            shifted[c] = bits[c] << shift | before[c] >> 1 >> (kWordBits - 1 - shift);
        return shifted;
    }
    static void AddUnder(Word<Colours>& above, Word<Colours> const& bits)
    {
        std::uint64_t covered = 0;
        for (std::uint64_t const plane : above)
            covered |= plane;
        for (std::size_t c = 0; c < Colours; ++c)
            above[c] |= bits[c] & ~covered;
    }
    static void PaintWord(RasterCanvas const& canvas, int y, int left, std::uint64_t bits, std::uint32_t colour)
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

    CRect m_corners;
    int m_width;
    std::size_t m_markWords;
    std::size_t m_rowWords;
    std::size_t m_seenWords;
    /// The corners that have a mark already.
    std::vector<std::uint64_t> m_seen;
    std::vector<Word<Colours>> m_mark;
    std::vector<Word<Colours>> m_planes;
};

/// The points at which the box of a mark reaches into the canvas: a box around them, moved to the marks' corners.
CRect VisibleCorners(RasterCanvas const& canvas, CRect const& markBox, std::span<CPoint const> points)
{
    CRect const& box = canvas.Box();
    CRect const visible(
        box.left - markBox.right + 1, box.top - markBox.bottom + 1, box.right - markBox.left, box.bottom - markBox.top);
    CRect around(visible.right, visible.bottom, visible.left, visible.top);
    for (CPoint const& p : points)
        if (visible.PtInRect(p))
            around = { std::min(around.left, p.x), std::min(around.top, p.y), std::max(around.right, p.x + 1),
                std::max(around.bottom, p.y + 1) };
    around.OffsetRect(markBox.left, markBox.top);
    return around;
}

template <std::size_t Colours> void DrawMarks(
    RasterCanvas const& canvas, MarkPicture const& mark, CRect const& corners, std::span<CPoint const> points)
{
    MarkPlanes<Colours> planes(corners, mark);
    for (std::size_t i = points.size(); i-- > 0;) {
        CPoint const corner = MovePoint(points[i], mark.box.TopLeft());
        if (corners.PtInRect(corner))
            planes.AddUnder(corner);
    }
    planes.Paint(canvas, mark.colours);
}

} // namespace

void RasterSurface::Repeat(std::span<RecordedPrimitive const> mark, std::span<CPoint const> points, Clip const& clip)
{
    RasterCanvas const canvas(m_raster.get(), clip);
    if (canvas.IsEmpty())
        return;
    auto const picture = points.size() < kFewPoints ? std::nullopt : DrawMark(mark, m_raster->BitsPerPixel());
    if (!picture)
        return Surface::Repeat(mark, points, clip);
    CRect const corners = VisibleCorners(canvas, picture->box, points);
    if (corners.IsRectEmpty() || picture->colours.empty())
        return;
    if (static_cast<std::size_t>(corners.Height()) * WordsFor(corners.Width()) > points.size() * kWordsPerPoint)
        Surface::Repeat(mark, points, clip);
    else if (picture->colours.size() == 1)
        DrawMarks<1>(canvas, *picture, corners, points);
    else
        DrawMarks<2>(canvas, *picture, corners, points);
}

} // namespace ombrel
