#include "ombrel/platform/gdi/Region.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace ombrel {
namespace {

std::string Rows(Region const& region, int width, int height)
{
    std::string rows;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            rows += region.Contains({ x, y }) ? 'o' : '.';
        rows += '\n';
    }
    return rows;
}

Region Polygon(std::vector<CPoint> const& points, PolyFillMode mode = ALTERNATE)
{
    return Region::FromPolygon(points, mode);
}

TEST(Region, PolygonTakesInItsLeftAndTopEdgesOnly)
{
    struct {
        std::vector<CPoint> points;
        PolyFillMode mode;
        std::string rows;
    } const cases[] = {
        { { { 1, 1 }, { 4, 1 }, { 4, 3 }, { 1, 3 } }, ALTERNATE, ".....\n.ooo.\n.ooo.\n.....\n" },
        { { { 0, 0 }, { 4, 8 }, { 8, 0 } }, ALTERNATE,
            "oooooooo\n.ooooooo\n.oooooo.\n..ooooo.\n..oooo..\n...ooo..\n...oo...\n....o...\n........\n" },
        { { { 3, 0 }, { 6, 3 }, { 3, 6 }, { 0, 3 } }, ALTERNATE,
            "......\n..oo..\n.oooo.\noooooo\n.oooo.\n..oo..\n......\n" },
        // A rectangle within another, both the same way round: a hole only when alternating.
        { { { 0, 0 }, { 5, 0 }, { 5, 4 }, { 0, 4 }, { 0, 0 }, { 1, 1 }, { 4, 1 }, { 4, 3 }, { 1, 3 }, { 1, 1 } },
            ALTERNATE, "ooooo\no...o\no...o\nooooo\n" },
        { { { 0, 0 }, { 5, 0 }, { 5, 4 }, { 0, 4 }, { 0, 0 }, { 1, 1 }, { 4, 1 }, { 4, 3 }, { 1, 3 }, { 1, 1 } },
            WINDING, "ooooo\nooooo\nooooo\nooooo\n" },
        { { { 2, 2 }, { 2, 2 } }, ALTERNATE, "...\n...\n...\n" },
    };
    for (auto const& c : cases) {
        int const width = static_cast<int>(c.rows.find('\n'));
        int const height = static_cast<int>(c.rows.size()) / (width + 1);
        EXPECT_EQ(Rows(Polygon(c.points, c.mode), width, height), c.rows);
    }
}

TEST(Region, SpansOfPartOfTheRowsAreThoseOfAllRows)
{
    std::mt19937 random(7);
    for (int round = 0; round < 40; ++round) {
        std::vector<CPoint> points;
        for (int i = 0; i < 9; ++i)
            points.push_back({ static_cast<int>(random() % 60), static_cast<int>(random() % 60) });
        PolyFillMode const mode = round % 2 ? ALTERNATE : WINDING;
        // Made so tall that only the rows asked for are found.
        std::vector<CPoint> tall = points;
        tall.insert(tall.end(), { { 70, 9000 }, { 71, -9000 }, { 70, 9000 }, points.back() });
        Region const whole = Polygon(points, mode);
        Region const part = Polygon(tall, mode);
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 60; ++x)
                ASSERT_EQ(whole.Contains({ x, y }), part.Contains({ x, y })) << x << ',' << y << " round " << round;
        }
    }
}

TEST(Region, SpansAreOrderedAndNeverTouch)
{
    std::vector<CPoint> star;
    for (int i = 0; i < 11; ++i)
        star.push_back({ (i * 37) % 101, (i * 53) % 89 });
    for (PolyFillMode const mode : { ALTERNATE, WINDING }) {
        Region const region = Polygon(star, mode);
        auto const spans = region.Spans(-100, 200);
        ASSERT_FALSE(spans.empty());
        for (std::size_t i = 0; i < spans.size(); ++i) {
            EXPECT_LT(spans[i].left, spans[i].right);
            EXPECT_TRUE(region.Box().PtInRect({ spans[i].left, spans[i].y }));
            if (i == 0)
                continue;
            bool const isSameRow = spans[i].y == spans[i - 1].y;
            EXPECT_TRUE(isSameRow ? spans[i - 1].right < spans[i].left : spans[i - 1].y < spans[i].y) << i;
        }
    }
}

TEST(Region, IntersectionHoldsThePixelsOfBoth)
{
    Region const triangle = Polygon({ { 0, 0 }, { 12, 24 }, { 24, 0 } });
    Region const diamond = Polygon({ { 12, -2 }, { 22, 9 }, { 12, 20 }, { 2, 9 } });
    Region const rect = Region::FromRect({ 18, 15, 5, 3 });
    Region const others[] = { diamond, rect, Region::FromRect({ 40, 0, 50, 9 }), Region(), triangle };
    for (Region const& other : others) {
        Region const both = Region::Intersection(triangle, other);
        Region const turned = Region::Intersection(other, triangle);
        for (int y = -3; y < 26; ++y) {
            for (int x = -3; x < 26; ++x) {
                bool const expected = triangle.Contains({ x, y }) && other.Contains({ x, y });
                ASSERT_EQ(both.Contains({ x, y }), expected);
                ASSERT_EQ(turned.Contains({ x, y }), expected);
            }
        }
    }
}

TEST(Region, UprightPolygonIsARectangle)
{
    Region const region = Polygon({ { 5, 2 }, { 5, 8 }, { 1, 8 }, { 1, 2 }, { 5, 2 } });
    EXPECT_TRUE(region.IsRect());
    EXPECT_EQ(region.Box(), CRect(1, 2, 5, 8));
}

TEST(Region, OffsetMovesPixelsAndOutline)
{
    Region region = Polygon({ { 0, 0 }, { 4, 8 }, { 8, 0 } });
    Region const cut = Region::Intersection(region, Region::FromRect({ 1, 0, 9, 3 }));
    Region movedCut = cut;
    region.Spans(0, 8);
    region.Offset(10, -5);
    movedCut.Offset(10, -5);
    EXPECT_EQ(region.Outline().front(), CPoint(10, -5));
    Region const original = Polygon({ { 0, 0 }, { 4, 8 }, { 8, 0 } });
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 8; ++x) {
            ASSERT_EQ(region.Contains({ x + 10, y - 5 }), original.Contains({ x, y }));
            ASSERT_EQ(movedCut.Contains({ x + 10, y - 5 }), cut.Contains({ x, y }));
        }
    }
}

TEST(Region, ExtremeCoordinatesAreLimited)
{
    int const low = std::numeric_limits<int>::min();
    int const high = std::numeric_limits<int>::max();
    Region region = Polygon({ { low, low }, { high, low }, { 0, high } });
    EXPECT_TRUE(region.Contains({ 0, 0 }));
    EXPECT_EQ(region.Spans(10, 12).size(), 2U);
    region.Offset(high, low);
    Region rect = Region::FromRect({ low, low, high, high });
    rect.Offset(high, high);
    EXPECT_FALSE(rect.IsEmpty());
}

TEST(Clip, BoxAndRegionBothApply)
{
    Clip clip;
    EXPECT_TRUE(clip.Contains({ 30000, -30000 }));
    clip.box = { 0, 0, 6, 6 };
    clip.region = std::make_shared<Region>(Polygon({ { 3, 0 }, { 9, 6 }, { 3, 12 }, { -3, 6 } }));
    EXPECT_EQ(clip.Box(), CRect(0, 0, 6, 6));
    EXPECT_TRUE(clip.Contains({ 3, 3 }));
    EXPECT_FALSE(clip.Contains({ 0, 0 }));
    EXPECT_FALSE(clip.Contains({ 3, 7 }));
}

} // namespace
} // namespace ombrel
