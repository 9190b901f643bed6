#include "ombrel/platform/gdi/page/FaxEncoder.h"

#include <array>
#include <bit>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace ombrel {

namespace {

/// The code of a run's last 0 … 63 pixels, white and black.
constexpr std::string_view kEnds[2][64] = {
    { "00110101", "000111", "0111", "1000", "1011", "1100", "1110", "1111", "10011", "10100", "00111", "01000",
        "001000", "000011", "110100", "110101", "101010", "101011", "0100111", "0001100", "0001000", "0010111",
        "0000011", "0000100", "0101000", "0101011", "0010011", "0100100", "0011000", "00000010", "00000011", "00011010",
        "00011011", "00010010", "00010011", "00010100", "00010101", "00010110", "00010111", "00101000", "00101001",
        "00101010", "00101011", "00101100", "00101101", "00000100", "00000101", "00001010", "00001011", "01010010",
        "01010011", "01010100", "01010101", "00100100", "00100101", "01011000", "01011001", "01011010", "01011011",
        "01001010", "01001011", "00110010", "00110011", "00110100" },
    { "0000110111", "010", "11", "10", "011", "0011", "0010", "00011", "000101", "000100", "0000100", "0000101",
        "0000111", "00000100", "00000111", "000011000", "0000010111", "0000011000", "0000001000", "00001100111",
        "00001101000", "00001101100", "00000110111", "00000101000", "00000010111", "00000011000", "000011001010",
        "000011001011", "000011001100", "000011001101", "000001101000", "000001101001", "000001101010", "000001101011",
        "000011010010", "000011010011", "000011010100", "000011010101", "000011010110", "000011010111", "000001101100",
        "000001101101", "000011011010", "000011011011", "000001010100", "000001010101", "000001010110", "000001010111",
        "000001100100", "000001100101", "000001010010", "000001010011", "000000100100", "000000110111", "000000111000",
        "000000100111", "000000101000", "000001011000", "000001011001", "000000101011", "000000101100", "000001011010",
        "000001100110", "000001100111" },
};

/// The code of 64, 128, … 2560 pixels before them; from 1792 on both colours have the same.
constexpr std::string_view kLongEnds[]
    = { "00000001000", "00000001100", "00000001101", "000000010010", "000000010011", "000000010100", "000000010101",
          "000000010110", "000000010111", "000000011100", "000000011101", "000000011110", "000000011111" };
constexpr std::string_view kSixtyFours[2][27] = {
    { "11011", "10010", "010111", "0110111", "00110110", "00110111", "01100100", "01100101", "01101000", "01100111",
        "011001100", "011001101", "011010010", "011010011", "011010100", "011010101", "011010110", "011010111",
        "011011000", "011011001", "011011010", "011011011", "010011000", "010011001", "010011010", "011000",
        "010011011" },
    { "0000001111", "000011001000", "000011001001", "000001011011", "000000110011", "000000110100", "000000110101",
        "0000001101100", "0000001101101", "0000001001010", "0000001001011", "0000001001100", "0000001001101",
        "0000001110010", "0000001110011", "0000001110100", "0000001110101", "0000001110110", "0000001110111",
        "0000001010010", "0000001010011", "0000001010100", "0000001010101", "0000001011010", "0000001011011",
        "0000001100100", "0000001100101" },
};

constexpr std::string_view kPass = "0001";
constexpr std::string_view kHorizontal = "001";
/// Of an edge that lies −3 … 3 pixels to the right of the one above.
constexpr int kFarthest = 3;
constexpr std::string_view kVertical[] = { "0000010", "000010", "010", "1", "011", "000011", "0000011" };
constexpr std::string_view kEndOfBlock = "000000000001000000000001";

class BitWriter {
public:
    void Write(std::string_view code)
    {
        for (char const digit : code) {
            m_byte = m_byte << 1 | (digit == '1' ? 1U : 0U);
            if (++m_count == 8)
                Flush();
        }
    }
    void WriteRun(int length, std::size_t black)
    {
        static constexpr int kLongest = 2560;
        static constexpr int kShared = 1792;
        for (; length > kLongest; length -= kLongest)
            Write(kLongEnds[std::size(kLongEnds) - 1]);
        if (length >= kShared)
            Write(kLongEnds[static_cast<std::size_t>((length - kShared) / 64)]);
        else if (length >= 64)
            Write(kSixtyFours[black][static_cast<std::size_t>(length / 64 - 1)]);
        Write(kEnds[black][static_cast<std::size_t>(length % 64)]);
    }
    std::string Take()
    {
        m_byte <<= 8 - m_count;
        if (m_count != 0)
            Flush();
        return std::move(m_bytes);
    }

private:
    void Flush()
    {
        m_bytes += static_cast<char>(m_byte);
        m_byte = 0;
        m_count = 0;
    }
    std::string m_bytes;
    unsigned m_byte = 0;
    int m_count = 0;
};

/// Where a row changes its colour, from white on the left; then the width as often as looking ahead needs.
void FindEdges(std::span<std::uint64_t const> row, int width, std::vector<int>& edges)
{
    static constexpr int kWordBits = 64;
    edges.clear();
    std::uint64_t before = 0;
    int left = 0;
    for (std::uint64_t const word : row) {
        for (std::uint64_t changes = word ^ (word << 1 | before); changes != 0; changes &= changes - 1) {
            int const x = left + std::countr_zero(changes);
            if (x < width)
                edges.push_back(x);
        }
        before = word >> (kWordBits - 1);
        left += kWordBits;
    }
    edges.insert(edges.end(), 4, width);
}

/// Writes a row's edges by those of the row above.
void WriteRow(BitWriter& writer, std::vector<int> const& above, std::vector<int> const& edges, int width)
{
    int at = -1;
    std::size_t black = 0;
    std::size_t next = 0;
    std::size_t over = 0;
    while (at < width) {
        // The first edge above beyond this place at which the same change takes place.
        over -= over > 0 ? 1 : 0;
        if (over % 2 != black)
            ++over;
        while (above[over] <= at && above[over] < width)
            over += 2;
        if (above[over + 1] < edges[next]) {
            writer.Write(kPass);
            at = above[over + 1];
            continue;
        }
        int const step = edges[next] - above[over];
        if (std::abs(step) <= kFarthest) {
            writer.Write(kVertical[static_cast<std::size_t>(step + kFarthest)]);
            at = edges[next++];
            black = 1 - black;
            continue;
        }
        writer.Write(kHorizontal);
        writer.WriteRun(edges[next] - (at < 0 ? 0 : at), black);
        writer.WriteRun(edges[next + 1] - edges[next], 1 - black);
        at = edges[next + 1];
        next += 2;
    }
}

} // namespace

std::string EncodeFax(BitPicture const& picture)
{
    BitWriter writer;
    std::vector<int> above(4, picture.width);
    std::vector<int> edges;
    for (std::size_t y = 0; y < static_cast<std::size_t>(picture.height); ++y) {
        FindEdges(picture.words.subspan(y * picture.rowWords, picture.rowWords), picture.width, edges);
        WriteRow(writer, above, edges, picture.width);
        above.swap(edges);
    }
    writer.Write(kEndOfBlock);
    return writer.Take();
}

} // namespace ombrel
