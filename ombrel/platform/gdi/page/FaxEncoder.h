#pragma once
#include <cstdint>
#include <span>
#include <string>

namespace ombrel {

/// A picture of one bit a pixel.
struct BitPicture {
    int width = 0;
    int height = 0;
    /// Words of 64 pixels in a row; bit 0 is the leftmost pixel. Beyond the width they are 0.
    std::size_t rowWords = 0;
    std::span<std::uint64_t const> words;
};

/// The picture compressed as facsimile machines do: ITU-T T.6, where 1 is black. What PDF and PostScript call
/// CCITTFaxDecode with K −1 and BlackIs1.
std::string EncodeFax(BitPicture const& picture);

} // namespace ombrel
