#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/raster/RasterSurface.h"

#include <cstdlib>
#include <cstring>
#include <vector>

namespace ombrel {

namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;

/// One axis of a copy: the source coordinates lie in [begin, begin + sourceSize), the destination's likewise.
struct CopyAxis {
    int sourceBegin;
    int sourceSize;
    int begin;
    int size;
    bool mirrored;

    static CopyAxis Make(int from, int fromEnd, int to, int toEnd)
    {
        CopyAxis axis;
        axis.mirrored = (fromEnd < from) != (toEnd < to);
        axis.sourceBegin = std::min(from, fromEnd);
        axis.sourceSize = std::abs(fromEnd - from);
        axis.begin = std::min(to, toEnd);
        axis.size = std::abs(toEnd - to);
        return axis;
    }
    bool IsPlain() const { return size == sourceSize && !mirrored; }
    /// The source coordinate that a destination coordinate takes: when enlarging the nearest by pixel centres. Of
    /// pixels that fall together when shrinking, columns keep a later one than rows.
    int Source(int destination, bool columns) const
    {
        long long const s = sourceSize;
        long long const d = size;
        long long i = static_cast<long long>(destination) - begin;
        if (mirrored)
            i = d - 1 - i;
        long long taken = 0;
        if (d >= s)
            taken = ((2 * i + 1) * s + 2 * d - 1) / (2 * d) - 1;
        else if (columns)
            taken = (2 * (i + 1) * s - d) / (2 * d);
        else
            taken = (2 * i * s + d) / (2 * d);
        return sourceBegin + static_cast<int>(std::clamp<long long>(taken, 0, s - 1));
    }
};

/// Calls with the operation on source and destination that belongs to a truth table of both.
template <typename With> void WithOperation(unsigned table, With&& with)
{
    using Pixel = std::uint32_t;
    switch (table) {
    case 0xC:
        with([](Pixel s, Pixel) { return s; });
        break;
    case 0x8:
        with([](Pixel s, Pixel d) { return s & d; });
        break;
    case 0xE:
        with([](Pixel s, Pixel d) { return s | d; });
        break;
    case 0x6:
        with([](Pixel s, Pixel d) { return s ^ d; });
        break;
    case 0x3:
        with([](Pixel s, Pixel) { return ~s & kWhite; });
        break;
    default: {
        auto const all = [table](unsigned bit) { return table & bit ? kWhite : 0; };
        with([neither = all(1), second = all(2), first = all(4), both = all(8)](Pixel s, Pixel d) {
            return (~s & ~d & neither) | (~s & d & second) | (s & ~d & first) | (s & d & both);
        });
    }
    }
}

enum class Conversion { None, ToMono, FromMono };

/// One copy: fetches a row of source pixels, converts them and combines them with the destination's.
class ImageCopier {
public:
    ImageCopier(ImageCopy const& copy, bool monoDestination)
        : m_copy(copy)
        , m_across(CopyAxis::Make(copy.from.left, copy.from.right, copy.to.left, copy.to.right))
        , m_down(CopyAxis::Make(copy.from.top, copy.from.bottom, copy.to.top, copy.to.bottom))
        , m_table(copy.operation >> 16 & 0xF)
    {
        bool const monoSource = copy.source->BitsPerPixel() == 1;
        if (monoSource != monoDestination)
            m_conversion = monoSource ? Conversion::FromMono : Conversion::ToMono;
    }
    void Run(RasterCanvas const& canvas)
    {
        CRect const& clip = canvas.Box();
        int const left = std::max(m_across.begin, clip.left);
        int const right = std::min(m_across.begin + m_across.size, clip.right);
        int const top = std::max(m_down.begin, clip.top);
        int const bottom = std::min(m_down.begin + m_down.size, clip.bottom);
        if (left >= right || top >= bottom)
            return;
        MapColumns(left, right);
        m_row.resize(static_cast<std::size_t>(right - left));
        bool const plainRows = m_across.IsPlain() && m_conversion == Conversion::None && m_copy.operation == SRCCOPY;
        for (int y = top; y < bottom; ++y) {
            int const sourceRow = m_down.Source(y, false);
            if (sourceRow < 0 || sourceRow >= m_copy.source->Height() || m_first >= m_last)
                continue;
            std::uint32_t const* const source = m_copy.source->Row(sourceRow);
            canvas.ForVisible(y, m_first, m_last, [&](std::uint32_t* p, int from, int to) {
                auto const count = static_cast<std::size_t>(to - from);
                int const* const columns = m_columns.data() + (from - left);
                if (plainRows)
                    std::memmove(p, source + columns[0], count * sizeof *p);
                else
                    CopyRow(p, source, columns, count);
            });
        }
    }

private:
    /// Which source column each destination column takes, and the destination columns that have one.
    void MapColumns(int left, int right)
    {
        m_columns.resize(static_cast<std::size_t>(right - left));
        m_first = right;
        m_last = left;
        for (int x = left; x < right; ++x) {
            int const column = m_across.Source(x, true);
            m_columns[static_cast<std::size_t>(x - left)] = column;
            if (column >= 0 && column < m_copy.source->Width()) {
                m_first = std::min(m_first, x);
                m_last = x + 1;
            }
        }
    }
    void CopyRow(std::uint32_t* p, std::uint32_t const* source, int const* columns, std::size_t count)
    {
        if (m_across.IsPlain()) {
            std::copy_n(source + columns[0], count, m_row.begin());
        } else {
            for (std::size_t i = 0; i < count; ++i)
                m_row[i] = source[columns[i]];
        }
        if (m_conversion == Conversion::ToMono)
            Choose(count, Raster::FromColour(m_copy.maskColour), kWhite, 0);
        else if (m_conversion == Conversion::FromMono)
            Choose(count, 0, Raster::FromColour(m_copy.zeroColour), Raster::FromColour(m_copy.oneColour));
        WithOperation(m_table, [&](auto operation) {
            for (std::size_t i = 0; i < count; ++i)
                p[i] = operation(m_row[i] & kWhite, p[i]);
        });
    }
    /// Replaces the pixels of the row by one of two values.
    void Choose(std::size_t count, std::uint32_t wanted, std::uint32_t equal, std::uint32_t different)
    {
        for (std::size_t i = 0; i < count; ++i)
            m_row[i] = (m_row[i] & kWhite) == wanted ? equal : different;
    }

    ImageCopy const& m_copy;
    CopyAxis m_across;
    CopyAxis m_down;
    unsigned m_table;
    Conversion m_conversion = Conversion::None;
    std::vector<int> m_columns;
    int m_first = 0;
    int m_last = 0;
    std::vector<std::uint32_t> m_row;
};

} // namespace

void RasterSurface::Image(ImageCopy const& copy, Clip const& clip)
{
    RasterCanvas const canvas(m_raster.get(), clip);
    if (canvas.IsEmpty() || !copy.source)
        return;
    ImageCopy bounded = copy;
    bounded.from = ClampRect(copy.from);
    bounded.to = ClampRect(copy.to);
    if (bounded.from.Width() == 0 || bounded.from.Height() == 0)
        return;
    // A bitmap copied within itself is read before it is written.
    std::optional<Raster> before;
    if (copy.source == m_raster.get()) {
        before.emplace(*copy.source);
        bounded.source = &*before;
    }
    ImageCopier(bounded, canvas.IsMono()).Run(canvas);
}

} // namespace ombrel
