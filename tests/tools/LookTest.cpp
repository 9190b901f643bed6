#include "tools/ombrel/chart/Look.h"
#include "tools/ombrel/Messages.h"

#include <gtest/gtest.h>

#include <set>

namespace ombrel::host {
namespace {

TEST(Palettes, StandOutFromTheGroundAndFromEachOther)
{
    for (Theme const theme : { Theme::Light, Theme::Dark, Theme::Print }) {
        for (Look const& look : { LookOf(theme), PolarLookOf(theme) }) {
            EXPECT_GE(ContrastOf(look.text, look.window), 4.5);
            EXPECT_EQ(look.window, look.plottingArea) << "labels lie on both";
            for (char const* const name : { "", "distinct", "grey", "spectrum", "greyscale" }) {
                for (std::size_t const count : { 1u, 2u, 5u, 30u }) {
                    SCOPED_TRACE(testing::Message() << static_cast<int>(theme) << " " << name << " " << count);
                    Palette const palette = PaletteNamed(name, count, look);
                    std::set<std::tuple<COLORREF, int, int>> looks;
                    for (std::size_t i = 0; i < count; ++i) {
                        CurveLook const curve = palette.At(i);
                        // A mid grey leaves less room than black or white.
                        bool const isGrey = theme == Theme::Dark && look.window != LookOf(theme).window;
                        EXPECT_GE(ContrastOf(curve.colour, look.plottingArea), isGrey ? 1.05 : 1.4);
                        looks.insert({ curve.colour, curve.lineType, curve.fillPattern });
                    }
                    EXPECT_EQ(looks.size(), count);
                }
            }
        }
    }
    EXPECT_THROW(PaletteNamed("nosuch", 3, LookOf(Theme::Light)), Failure);
}

TEST(Palettes, CanBeToldApartInGrey)
{
    for (auto const& [theme, count] : { std::pair(Theme::Light, 4), std::pair(Theme::Print, 5) }) {
        Palette const palette = PaletteNamed("", 5, LookOf(theme));
        for (int i = 1; i < count; ++i) {
            for (int k = 0; k < i; ++k)
                EXPECT_GE(ContrastOf(palette.At(static_cast<std::size_t>(i)).colour,
                              palette.At(static_cast<std::size_t>(k)).colour),
                    1.25)
                    << k << ", " << i;
        }
    }
}

} // namespace
} // namespace ombrel::host
