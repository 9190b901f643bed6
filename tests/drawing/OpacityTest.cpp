#include "ombrel/drawing/Opacity.h"
#include "ombrel/drawing/FillPattern.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

TEST(Opacity, StaysInTheTopByteOfAColour)
{
    COLORREF const colour = RGB(1, 2, 3);
    EXPECT_EQ(WithOpacity(colour, 1.0), colour);
    EXPECT_EQ(WithOpacity(WithOpacity(colour, 0.5), 1.0), colour);
    for (int const alpha : { 1, 51, 128, 252 })
        EXPECT_EQ(AlphaOf(WithOpacity(colour, alpha / 255.0)), alpha);
    EXPECT_EQ(AlphaOf(WithOpacity(colour, -1.0)), 1) << "never wholly transparent";
    // Entries of palettes, and no colour.
    for (COLORREF const opaque : { colour, 0x01000000 | colour, 0x02000000 | colour, COLORREF { 0xFFFFFFFF } })
        EXPECT_EQ(AlphaOf(opaque), 255);
}

TEST(Opacity, OfAPatternHoldsForItsBackgroundToo)
{
    VectorBrush const hatch = MakePatternBrush(3, WithOpacity(RGB(1, 2, 3), 0.2));
    EXPECT_EQ(hatch.foreground, (VectorColour { RGB(1, 2, 3), 51 }));
    EXPECT_EQ(hatch.background, (VectorColour { 0xFFFFFF, 51 }));
    EXPECT_EQ(MakePatternBrush(kSolidFillPattern, RGB(1, 2, 3)), VectorBrush::Solid(RGB(1, 2, 3)));
}

} // namespace
} // namespace ombrel
