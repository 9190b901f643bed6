#include "ombrel/colour/bitmap/BitmapFile.h"

#include <algorithm>

namespace ombrel::bitmap {

InfoFault ReadBitmapInfo(std::vector<BYTE> const& block, BitmapInfo& info)
{
    // Later versions of the header are longer and begin with the same fields.
    constexpr std::size_t kFirstHeader = 40;
    if (block.size() < kFirstHeader)
        return InfoFault::TooShort;
    std::size_t const header = TakeNumber(block, 0, 4);
    if (header < kFirstHeader || header > block.size())
        return InfoFault::TooShort;
    auto const signedNumber = [&](std::size_t at) { return static_cast<std::int32_t>(TakeNumber(block, at, 4)); };
    info.width = signedNumber(4);
    std::int64_t const height = signedNumber(8);
    info.runsDown = height < 0;
    info.height = info.runsDown ? -height : height;
    info.bitsPerPixel = static_cast<int>(TakeNumber(block, 14, 2));
    info.isCompressed = TakeNumber(block, 16, 4) != 0;
    std::size_t const count = std::min<std::size_t>((block.size() - header) / 4, 256);
    for (std::size_t at = header, i = 0; i < count; ++i, at += 4)
        info.colours.push_back({ block[at + 2], block[at + 1], block[at], 0 });
    return info.width > 0 && info.height > 0 ? InfoFault::None : InfoFault::NoSize;
}

std::vector<BYTE> ReadAtMost(CFile& file, std::uint64_t count)
{
    std::vector<BYTE> bytes;
    while (bytes.size() < count) {
        constexpr std::size_t kFirstPiece = std::size_t { 64 } << 10;
        std::size_t const before = bytes.size();
        std::size_t const piece
            = static_cast<std::size_t>(std::min<std::uint64_t>(count - before, std::max(before, kFirstPiece)));
        bytes.resize(before + piece);
        std::size_t const read = file.Read(bytes.data() + before, piece);
        bytes.resize(before + read);
        if (read < piece)
            break;
    }
    return bytes;
}

} // namespace ombrel::bitmap
