#include "ombrel/platform/gdi/page/PageHatch.h"
#include "ombrel/platform/gdi/page/PageMarks.h"
#include "ombrel/platform/gdi/page/PagePicture.h"
#include "ombrel/platform/gdi/page/PageShape.h"
#include "ombrel/platform/gdi/page/SvgPath.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

TEST(SvgNumber, HasThreeDecimalsAtMostAndNoNeedlessZero)
{
    using Case = std::tuple<double, char const*>;
    for (auto const& [value, text] : { Case { 0, "0" }, { 12, "12" }, { -0.5, "-.5" }, { 0.0004, "0" },
             { -0.0004, "0" }, { 0.0006, ".001" }, { 1.25, "1.25" }, { 100.1, "100.1" }, { -3.0406, "-3.041" },
             { 1e300, "1000000000" }, { -1e300, "-1000000000" }, { std::numeric_limits<double>::quiet_NaN(), "0" } })
        EXPECT_EQ(SvgNumber(value), text);
}

TEST(PageShape, BoxHoldsPointsAndArcs)
{
    PageShape shape;
    EXPECT_EQ(shape.Box(), CRect());
    EXPECT_TRUE(shape.IsEmpty());
    shape.AddRect({ 4, 5, 8, 7 });
    shape.Add(std::vector<CPoint> { { 1, 9 }, { 2, 3 } }, false);
    EXPECT_EQ(shape.Box(), CRect(1, 3, 8, 9));
    EXPECT_EQ(SvgPath(shape), "m4 5h4v2h-4zm-3 4 1-6");
    shape.arcs.push_back({ 10.5, 20.0, 3.0, 2.5, 0.0, 1.0 });
    EXPECT_EQ(shape.Box(), CRect(1, 3, 14, 23));
    EXPECT_FALSE(shape.arcs[0].IsWhole());
    shape.arcs[0].sweep = -6.2831853071795862;
    EXPECT_TRUE(shape.arcs[0].IsWhole());
}

TEST(RegionShape, JoinsSpansUnderEachOtherThatEndAlike)
{
    // A notched rectangle without an outline: cut out of two polygons.
    CPoint const corners[] = { { 0, 0 }, { 9, 0 }, { 9, 6 }, { 6, 6 }, { 6, 2 }, { 3, 2 }, { 3, 6 }, { 0, 6 } };
    CPoint const around[] = { { -9, -9 }, { 99, -9 }, { 98, 99 }, { -9, 99 } };
    Region const region
        = Region::Intersection(Region::FromPolygon(corners, ALTERNATE), Region::FromPolygon(around, ALTERNATE));
    ASSERT_TRUE(region.Outline().empty());
    EXPECT_EQ(SvgPath(RegionShape(region, { 0, 0, 50, 50 })), "m0 0h9v2h-9zm0 2h3v4h-3zm6 0h3v4h-3z");
    EXPECT_TRUE(RegionShape(region, { 20, 0, 50, 50 }).IsEmpty());
    // With an outline it is that, without repeated points and the closing one.
    CPoint const triangle[] = { { 0, 0 }, { 2, 0 }, { 8, 0 }, { 4, 8 }, { 4, 8 }, { 0, 0 } };
    EXPECT_EQ(SvgPath(RegionShape(Region::FromPolygon(triangle, ALTERNATE), { 0, 0, 50, 50 })), "m0 0h8l-4 8z");
}

TEST(PageHatch, LinesAreRunsOfPixelsOrBandsOfOneTurningSense)
{
    auto const area = [](std::vector<HatchCorner> const& corners) {
        double twice = 0.0;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            HatchCorner const& a = corners[i];
            HatchCorner const& b = corners[(i + 1) % corners.size()];
            twice += a.x * b.y - a.y * b.x;
        }
        return twice / 2;
    };
    struct {
        int style, cells;
        std::size_t count;
        double area;
    } const cases[] = {
        // A horizontal line, vertical ones over two cells, a small grid: a line over a comb of two teeth, twice.
        { 0, 1, 1, 8 },
        { 1, 2, 2, 2 * 16 },
        { 48, 1, 6, 2 * (8 + 2 * 3) },
        // Bands one pixel thick along the diagonal and through the other two corners.
        { 2, 1, 3, 8 * std::sqrt(2.0) },
        { 5, 1, 6, 16 * std::sqrt(2.0) },
        // A grid of whole lines; light diagonals, as wide along the row as the pixels that they stand for.
        { 4, 2, 4, 4 * 16 },
        { 18, 1, 5, 16 },
    };
    for (auto const& c : cases) {
        auto const lines = HatchLines(c.style, c.cells);
        EXPECT_THAT(lines, SizeIs(c.count)) << c.style;
        double sum = 0.0;
        for (auto const& line : lines) {
            EXPECT_GT(area(line), 0.0) << c.style;
            sum += area(line);
        }
        EXPECT_NEAR(sum, c.area, 1e-9) << c.style;
    }
}

TEST(PageMarks, LeaveOutWhatWouldNotShow)
{
    LineStyle const line { PS_SOLID, 1, 0, {} };
    RecordedPrimitive const ellipse { primitive::Ellipse { { 0, 0, 9, 9 }, line, {} }, {} };
    auto const arc = [&](int right, COLORREF colour) {
        LineStyle const style { PS_SOLID, 1, colour, {} };
        return RecordedPrimitive { primitive::Arc { { 0, 0, right, 9 }, { 0, 0 }, { 9, 9 }, style }, {} };
    };
    std::vector const mark { arc(9, 0), ellipse, arc(9, 0), arc(9, 0), arc(8, 0), arc(9, 0), ellipse, arc(9, 2) };
    EXPECT_EQ(WithoutRedrawn(mark), (std::vector { arc(9, 0), ellipse, arc(8, 0), arc(9, 0), ellipse, arc(9, 2) }));
    std::vector<CPoint> const points { { 1, 1 }, { 2, 1 }, { 1, 1 }, { 1, 2 }, { 2, 1 }, { 3, 3 } };
    EXPECT_THAT(LastOfEach(points), ElementsAre(CPoint(1, 1), CPoint(1, 2), CPoint(2, 1), CPoint(3, 3)));
}

TEST(PagePicture, ShowsThePartThatTheSourceHas)
{
    Raster source(4, 2, 24);
    for (int x = 0; x < 4; ++x) {
        source.Row(0)[x] = 0xAB000010U + static_cast<unsigned>(x);
        source.Row(1)[x] = 0x20U + static_cast<unsigned>(x);
    }
    using Case = std::tuple<CRect, CRect, CRect, std::uint32_t>;
    Case const cases[] = {
        { { 0, 0, 4, 2 }, { 10, 20, 50, 60 }, { 10, 20, 50, 60 }, 0x10 },
        { { 1, 1, 3, 2 }, { 0, 0, 2, 1 }, { 0, 0, 2, 1 }, 0x21 },
        // Two columns to the left and one row below do not exist.
        { { -2, 1, 2, 3 }, { 100, 0, 140, 80 }, { 120, 0, 140, 40 }, 0x20 },
        { { 2, -1, 6, 1 }, { 0, 0, 40, 20 }, { 0, 10, 20, 20 }, 0x12 },
        { { 4, 2, 0, 0 }, { 9, 8, 1, 4 }, { 1, 4, 9, 8 }, 0x10 },
    };
    for (auto const& [from, to, shown, first] : cases) {
        auto const picture = MakePicture({ &source, from, to, SRCCOPY, 0, 0xFFFFFF, 0xFFFFFF });
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->to, shown);
        EXPECT_EQ(picture->pixels.Row(0)[0], first);
        EXPECT_FALSE(picture->transparent);
    }
    EXPECT_FALSE(MakePicture({ &source, { 4, 0, 9, 2 }, { 0, 0, 9, 9 }, SRCCOPY, 0, 0, 0 }));
    EXPECT_FALSE(MakePicture({ &source, { 0, 0, 4, 2 }, { 5, 0, 5, 9 }, SRCCOPY, 0, 0, 0 }));
}

TEST(PagePicture, LeavesOutTheColourThatChangesNothing)
{
    Raster mask(2, 1, 1);
    mask.Row(0)[1] = 0xFFFFFF;
    using Case = std::tuple<DWORD, std::optional<COLORREF>, std::uint32_t, std::uint32_t>;
    for (auto const& [operation, transparent, zero, one] : { Case { SRCCOPY, {}, 0x030201, 0x060504 },
             { NOTSRCCOPY, {}, 0xFCFDFE, 0xF9FAFB }, { SRCAND, 0xFFFFFF, 0x030201, 0x060504 },
             { SRCPAINT, 0, 0x030201, 0x060504 }, { SRCINVERT, 0, 0x030201, 0x060504 } }) {
        auto const picture
            = MakePicture({ &mask, { 0, 0, 2, 1 }, { 0, 0, 2, 1 }, operation, RGB(3, 2, 1), RGB(6, 5, 4), 0 });
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->pixels.Row(0)[0], zero);
        EXPECT_EQ(picture->pixels.Row(0)[1], one);
        EXPECT_EQ(picture->transparent, transparent);
    }
}

} // namespace
} // namespace ombrel
