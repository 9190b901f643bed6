#pragma once
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/framework/Types.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ombrel::bitmap {

/// What an information block says of the pixels behind it.
struct BitmapInfo {
    /// Positive.
    std::int64_t width = 0;
    std::int64_t height = 0;
    int bitsPerPixel = 0;
    bool isCompressed = false;
    /// The first row in the file is the highest.
    bool runsDown = false;
    /// Red, green, blue and 0 of each entry that is there.
    std::vector<std::array<BYTE, 4>> colours;
    /// Bytes of a row with what fills it up to a multiple of four.
    std::int64_t GetStride() const { return (bitsPerPixel * width + 31) / 32 * 4; }
};

enum class InfoFault { None, TooShort, NoSize };

/// Reads an information block with the colour table behind it: all bytes between file header and pixels.
InfoFault ReadBitmapInfo(std::vector<BYTE> const& block, BitmapInfo& info);

/// The next bytes of the file, fewer only at its end. Memory grows with what is there, not with what is asked for.
std::vector<BYTE> ReadAtMost(CFile& file, std::uint64_t count);

/// A little-endian number; the bytes must be there.
inline std::uint32_t TakeNumber(std::vector<BYTE> const& from, std::size_t at, std::size_t bytes)
{
    std::uint32_t value = 0;
    for (std::size_t i = bytes; i-- > 0;)
        value = value << 8 | from[at + i];
    return value;
}

} // namespace ombrel::bitmap
