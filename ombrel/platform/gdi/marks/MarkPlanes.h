#pragma once
#include "ombrel/platform/gdi/marks/MarkPicture.h"

#include <array>
#include <cstdint>
#include <vector>

namespace ombrel {

inline constexpr int kWordBits = 64;

/// The bits of one word of a row, one for each colour. Bit 0 is the leftmost pixel.
template <std::size_t Colours> using PlaneWord = std::array<std::uint64_t, Colours>;

inline std::size_t WordsFor(int pixels) { return static_cast<std::size_t>((pixels + kWordBits - 1) / kWordBits); }

/// A mark in bits, one for each pixel of its box and each colour.
template <std::size_t Colours> class MarkBits {
public:
    using Word = PlaneWord<Colours>;
    explicit MarkBits(CSize size)
        : m_width(size.cx)
        , m_words(WordsFor(size.cx))
        , m_bits(m_words * static_cast<std::size_t>(size.cy))
    {
    }
    void Set(int x, int y, std::size_t colour)
    {
        auto const column = static_cast<std::size_t>(x);
        m_bits[static_cast<std::size_t>(y) * m_words + column / kWordBits][colour] |= std::uint64_t { 1 }
            << column % kWordBits;
    }
    int Width() const { return m_width; }

    /// Calls visit(word of the plane, bits of the mark) for the words that the mark's box lies on: "to" is the one with
    /// its upper left pixel, which is bit "shift" of it.
    template <typename Visit> void Lay(Word* to, std::size_t rowWords, unsigned shift, Visit&& visit) const
    {
        std::size_t const reached = WordsFor(static_cast<int>(shift) + m_width);
        if (reached == 1) {
            for (Word const& bits : m_bits) {
                visit(*to, Shifted(bits, {}, shift));
                to += rowWords;
            }
            return;
        }
        for (Word const* from = m_bits.data(); from != m_bits.data() + m_bits.size(); to += rowWords) {
            Word before {};
            for (std::size_t i = 0; i < m_words; ++i, ++from) {
                visit(to[i], Shifted(*from, before, shift));
                before = *from;
            }
            if (reached > m_words)
                visit(to[m_words], Shifted({}, before, shift));
        }
    }

private:
    static Word Shifted(Word const& bits, Word const& before, unsigned shift)
    {
        Word shifted;
        for (std::size_t c = 0; c < Colours; ++c)
            shifted[c] = bits[c] << shift | before[c] >> 1 >> (kWordBits - 1 - shift);
        return shifted;
    }

    int m_width;
    std::size_t m_words;
    std::vector<Word> m_bits;
};

/// One bit for each pixel and each colour, of an area in which marks have the upper left corners of their boxes.
template <std::size_t Colours> class MarkPlanes {
public:
    using Word = PlaneWord<Colours>;
    MarkPlanes(CRect const& corners, CSize markSize)
        : m_box(corners.left, corners.top, corners.right + markSize.cx, corners.bottom + markSize.cy)
        , m_rowWords(WordsFor(m_box.Width()))
        , m_words(m_rowWords * static_cast<std::size_t>(m_box.Height()))
        , m_markSize(markSize)
        , m_full(BlockAt(0, m_box.Height()) + m_rowWords)
    {
    }
    CRect const& Box() const { return m_box; }
    std::size_t RowWords() const { return m_rowWords; }
    /// All rows, one after the other.
    std::vector<Word> const& Words() const { return m_words; }

    template <typename Visit> void Lay(MarkBits<Colours> const& mark, CPoint corner, Visit&& visit)
    {
        auto const x = static_cast<std::size_t>(corner.x - m_box.left);
        auto const y = static_cast<std::size_t>(corner.y - m_box.top);
        mark.Lay(
            m_words.data() + y * m_rowWords + x / kWordBits, m_rowWords, x % kWordBits, std::forward<Visit>(visit));
    }
    /// Puts a mark under those that are there already.
    void AddUnder(MarkBits<Colours> const& mark, CPoint corner)
    {
        Lay(mark, corner, [](Word& above, Word const& bits) {
            std::uint64_t const open = ~Covered(above);
            for (std::size_t c = 0; c < Colours; ++c)
                above[c] |= bits[c] & open;
        });
    }
    /// The same, quicker where marks are large and hide many others.
    void AddUnderMany(MarkBits<Colours> const& mark, CPoint corner)
    {
        CRect const box(corner - m_box.TopLeft(), m_markSize);
        if (IsFull(box))
            return;
        std::uint64_t added = 0;
        Lay(mark, corner, [&added](Word& above, Word const& bits) {
            std::uint64_t const open = ~Covered(above);
            for (std::size_t c = 0; c < Colours; ++c) {
                above[c] |= bits[c] & open;
                added |= bits[c] & open;
            }
        });
        if (added == 0)
            LookAtBlock(box.CenterPoint());
    }

private:
    static std::uint64_t Covered(Word const& word)
    {
        std::uint64_t covered = 0;
        for (std::uint64_t const plane : word)
            covered |= plane;
        return covered;
    }
    std::size_t BlockAt(int x, int y) const
    {
        return static_cast<std::size_t>(y / kWordBits) * m_rowWords + static_cast<std::size_t>(x / kWordBits);
    }
    /// Whether all blocks that the box lies on are known to be full.
    bool IsFull(CRect const& box) const
    {
        for (int y = box.top / kWordBits; y <= (box.bottom - 1) / kWordBits; ++y)
            for (int x = box.left / kWordBits; x <= (box.right - 1) / kWordBits; ++x)
                if (!m_full[BlockAt(x * kWordBits, y * kWordBits)])
                    return false;
        return true;
    }
    /// Finds out whether the block with this pixel is full.
    void LookAtBlock(CPoint at)
    {
        std::size_t const block = BlockAt(at.x, at.y);
        int const top = at.y / kWordBits * kWordBits;
        if (m_full[block] || top + kWordBits > m_box.Height())
            return;
        Word const* word = m_words.data() + static_cast<std::size_t>(top) * m_rowWords + at.x / kWordBits;
        int rows = 0;
        for (; rows < kWordBits && ~Covered(*word) == 0; ++rows)
            word += m_rowWords;
        m_full[block] = rows == kWordBits;
    }

    CRect m_box;
    std::size_t m_rowWords;
    std::vector<Word> m_words;
    CSize m_markSize;
    /// Whether a block of as many rows as a word has pixels is covered: marks under such ones need not be looked at.
    std::vector<std::uint8_t> m_full;
};

/// The mark's bits, one plane for each of its colours.
template <std::size_t Colours> MarkBits<Colours> BitsOf(MarkPicture const& mark)
{
    MarkBits<Colours> bits(mark.box.Size());
    for (int y = 0; y < mark.box.Height(); ++y)
        for (int x = 0; x < mark.box.Width(); ++x)
            for (std::size_t c = 0; c < Colours; ++c)
                if (mark.pixels.Row(y)[x] == mark.colours[c])
                    bits.Set(x, y, c);
    return bits;
}

/// The points at which the box of a mark reaches into the visible part: a box around them, moved to the marks' corners.
CRect VisibleCorners(CRect const& visible, CRect const& markBox, std::span<CPoint const> points);

/// Places that were come by.
class SeenPlaces {
public:
    explicit SeenPlaces(CRect const& box)
        : m_box(box)
        , m_rowWords(WordsFor(box.Width()))
        , m_words(m_rowWords * static_cast<std::size_t>(box.Height()))
    {
    }
    /// Whether the place, which lies in the box, comes for the first time.
    bool Add(CPoint place)
    {
        auto const x = static_cast<std::size_t>(place.x - m_box.left);
        auto const y = static_cast<std::size_t>(place.y - m_box.top);
        std::uint64_t& word = m_words[y * m_rowWords + x / kWordBits];
        std::uint64_t const bit = std::uint64_t { 1 } << x % kWordBits;
        bool const isNew = (word & bit) == 0;
        word |= bit;
        return isNew;
    }

private:
    CRect m_box;
    std::size_t m_rowWords;
    std::vector<std::uint64_t> m_words;
};

} // namespace ombrel
