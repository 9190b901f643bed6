#include "tools/ombrel/chart/Occupancy.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ombrel::host {
namespace {

constexpr int kGap = 10;
CSize const kBox(100, 60);

TEST(LegendPlaces, AreTheFirstThatCoverNothing)
{
    CRect const area(100, 50, 700, 450);
    CPoint const topRight(590, 60);
    CPoint const topLeft(110, 60);
    CPoint const bottomRight(590, 380);
    CPoint const bottomLeft(110, 380);
    struct {
        char const* what;
        void (*draw)(Occupancy&);
        std::optional<CPoint> place;
    } const cases[] {
        { "nothing", [](Occupancy&) {}, topRight },
        { "a rising line", [](Occupancy& o) { o.AddSegment(100, 450, 700, 50); }, topLeft },
        { "a falling line", [](Occupancy& o) { o.AddSegment(100, 50, 700, 450); }, topRight },
        { "points in both upper corners",
            [](Occupancy& o) {
                o.AddPoint(650, 100);
                o.AddPoint(150, 100);
            },
            bottomRight },
        { "bars from the bottom",
            [](Occupancy& o) {
                for (int x = 100; x < 700; x += 50)
                    o.AddRect(x, 450, x + 30, x < 400 ? 200 : 55);
            },
            topLeft },
        { "a line that only passes through with its ends outside",
            [](Occupancy& o) {
                o.AddSegment(-1e6, 90, 1e6, 90);
                o.AddSegment(650, -1e9, 650, 1e9);
            },
            bottomLeft },
        { "everything", [](Occupancy& o) { o.AddRect(o.GetArea()); }, std::nullopt },
        { "what is no number, or outside",
            [](Occupancy& o) {
                o.AddPoint(std::nan(""), 100);
                o.AddSegment(0, 100, std::numeric_limits<double>::infinity(), 100);
                o.AddRect(800, 60, 900, 100);
                o.AddPoint(99, 60);
            },
            topRight },
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.what);
        Occupancy occupancy(area);
        c.draw(occupancy);
        auto const place = FindFreePlace(occupancy, kBox, kGap);
        ASSERT_EQ(place.has_value(), c.place.has_value());
        if (place) {
            EXPECT_EQ(place->x, c.place->x);
            EXPECT_EQ(place->y, c.place->y);
        }
    }
    EXPECT_FALSE(FindFreePlace(Occupancy(area), CSize(500, 20), kGap)) << "would fill the area";
    EXPECT_FALSE(FindFreePlace(Occupancy(CRect(5, 5, 5, 5)), kBox, kGap));
}

TEST(LegendPlaces, KeepClearOfEveryPointOfALine)
{
    // Whatever the slope, no point of the line lies in a rectangle that counts as free.
    CRect const area(0, 0, 640, 400);
    for (int i = 0; i < 200; ++i) {
        double const x0 = i * 37 % 900 - 100;
        double const y0 = i * 61 % 600 - 100;
        double const x1 = i * 53 % 900 - 100;
        double const y1 = i * 29 % 600 - 100;
        Occupancy occupancy(area);
        occupancy.AddSegment(x0, y0, x1, y1);
        for (int t = 0; t <= 1000; ++t) {
            double const x = x0 + (x1 - x0) * t / 1000.0;
            double const y = y0 + (y1 - y0) * t / 1000.0;
            auto const left = static_cast<int>(std::floor(x));
            auto const top = static_cast<int>(std::floor(y));
            CRect const dot(left - 4, top - 4, left + 5, top + 5);
            bool const isInside = area.PtInRect(CPoint(left, top));
            ASSERT_FALSE(isInside && occupancy.IsFree(dot)) << x << ", " << y << " in line " << i;
        }
    }
}

} // namespace
} // namespace ombrel::host
