#pragma once
#include <array>
#include <cstdint>

namespace ombrel {

/// Patterns repeat after as many columns and rows.
inline constexpr int kHatchSide = 8;

/// The rows of a hatch style (0 … 52) from the top; the highest bit is column 0.
std::array<std::uint8_t, kHatchSide> const& HatchPattern(int style);

/// How much of the background the foreground covers at a pixel of the pattern, 0 … 255.
std::uint32_t ForegroundWeight(int style, int x, int y);

} // namespace ombrel
