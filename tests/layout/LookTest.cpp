#include "ombrel/layout/Look.h"
#include "ombrel/layout/ChartError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace ombrel {
namespace {

TEST(Palettes, GiveEachCurveALookOfItsOwn)
{
    struct {
        Theme theme;
        char const* name;
        std::size_t count, index;
        CurveLook look;
    } const cases[] {
        // Colour, tint, dashes, fill and symbol.
        { Theme::Light, "", 9, 0, { RGB(0, 95, 170), RGB(153, 191, 221), 0, RGB(0, 95, 170), C2DSymbol::Circle } },
        { Theme::Light, "", 9, 6, { RGB(230, 159, 0), RGB(245, 217, 153), 0, RGB(230, 159, 0), C2DSymbol::Plus } },
        { Theme::Light, "", 9, 7, { RGB(0, 95, 170), RGB(153, 191, 221), 2, RGB(128, 175, 213), C2DSymbol::Square } },
        { Theme::Light, "", 99, 57,
            { RGB(213, 94, 0), RGB(238, 191, 153), 3, RGB(242, 207, 179), C2DSymbol::Diamond } },
        { Theme::Dark, "distinct", 2, 0,
            { RGB(86, 180, 233), RGB(51, 90, 115), 0, RGB(86, 180, 233), C2DSymbol::Circle } },
        { Theme::Print, "", 3, 1, { RGB(192, 40, 40), RGB(230, 169, 169), 2, RGB(192, 40, 40), C2DSymbol::Square } },
        { Theme::Print, "", 6, 5, { RGB(8, 48, 107), RGB(156, 172, 196), 2, RGB(132, 152, 181), C2DSymbol::Square } },
        { Theme::Light, "grey", 3, 1, { RGB(96, 96, 96), RGB(191, 191, 191), 0, RGB(96, 96, 96), C2DSymbol::Square } },
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(c.theme) << c.name << " " << c.index);
        CurveLook const look = PaletteNamed(c.name, c.count, LookOf(c.theme)).At(c.index);
        EXPECT_THAT(look, testing::FieldsAre(c.look.colour, c.look.tint, c.look.lineType, c.look.fill, c.look.symbol));
    }
    EXPECT_THROW(PaletteNamed("nosuch", 3, LookOf(Theme::Light)), ChartError);
    EXPECT_NEAR(ContrastOf(RGB(255, 255, 255), RGB(0, 0, 0)), 21.0, 1e-9);
    EXPECT_EQ(ContrastOf(RGB(9, 9, 9), RGB(9, 9, 9)), 1.0);
    // By the formula for relative luminance: (0.7152 + 0.05) / (0.2126 + 0.05).
    EXPECT_NEAR(ContrastOf(RGB(255, 0, 0), RGB(0, 255, 0)), 0.7652 / 0.2626, 1e-9);
    // The ends of a colour map, as far as they stand out, and its middle for a single curve.
    Palette const ends = PaletteNamed("greyscale", 2, LookOf(Theme::Light));
    EXPECT_EQ(ends.At(0).colour, RGB(0, 0, 0));
    EXPECT_NEAR(ContrastOf(ends.At(1).colour, RGB(255, 255, 255)), 2.0, 0.05);
    EXPECT_EQ(PaletteNamed("greyscale", 1, LookOf(Theme::Light)).NumColours(), 1u);
}

TEST(Palettes, KeepManyCurvesApart)
{
    for (Theme const theme : { Theme::Light, Theme::Dark, Theme::Print }) {
        Palette const palette = PaletteNamed("", 30, LookOf(theme));
        std::set<std::pair<COLORREF, int>> lines;
        std::set<std::pair<COLORREF, int>> points;
        std::set<COLORREF> fills;
        for (std::size_t i = 0; i < 30; ++i) {
            CurveLook const look = palette.At(i);
            lines.emplace(look.colour, look.lineType);
            points.emplace(look.colour, look.symbol);
            fills.insert(look.fill);
            EXPECT_GE(ContrastOf(look.fill, LookOf(theme).plottingArea), 1.05) << i;
        }
        EXPECT_EQ(lines.size(), 30u);
        EXPECT_EQ(points.size(), 30u);
        EXPECT_EQ(fills.size(), std::min<std::size_t>(30, 5 * palette.NumColours()));
    }
}

} // namespace
} // namespace ombrel
