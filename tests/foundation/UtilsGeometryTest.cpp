#include "ombrel/foundation/Utils.h"

#include <cmath>
#include <gtest/gtest.h>

namespace ombrel {
namespace {

constexpr int kFar = 2147483647;

TEST(UtilsGeometry, SegmentsIntersectInWholePixels)
{
    struct Case {
        CPoint a1, a2, b1, b2;
        int result;
        CPoint p;
    };
    Case const cases[] = {
        { { 0, 0 }, { 10, 10 }, { 0, 10 }, { 10, 0 }, 1, { 5, 5 } },
        { { 0, 0 }, { 10, 0 }, { 0, 5 }, { 10, 5 }, 2, {} },
        { { 0, 0 }, { 10, 0 }, { 5, 0 }, { 20, 0 }, 2, {} },
        { { 0, 0 }, { 1, 1 }, { 5, 0 }, { 6, -1 }, 0, {} },
        { { 0, 0 }, { 3, 1 }, { 1, -5 }, { 1, 5 }, 1, { 1, 0 } },
        { { 0, 0 }, { 3, 2 }, { 1, -5 }, { 1, 5 }, 1, { 1, 1 } },
        { { 0, 0 }, { -3, -2 }, { -1, -5 }, { -1, 5 }, 1, { -1, -1 } },
        { { 0, 0 }, { 10, 0 }, { 10, 0 }, { 10, 9 }, 1, { 10, 0 } },
        { { -kFar, -kFar }, { kFar, kFar }, { -kFar, kFar }, { kFar, -kFar }, 1, { 0, 0 } },
    };
    for (Case const& c : cases) {
        CPoint p;
        EXPECT_EQ(CVUtils::LinesIntersect(c.a1, c.a2, c.b1, c.b2, p), c.result) << c.a2.x << ' ' << c.a2.y;
        if (c.result == 1) {
            EXPECT_EQ(p.x, c.p.x);
            EXPECT_EQ(p.y, c.p.y);
        }
    }
}

TEST(UtilsGeometry, SegmentsCrossARectanglesEdgesInOrder)
{
    CRect const rect(10, 20, 110, 70);
    struct Case {
        CPoint from, to;
        int count;
        CPoint i1, i2;
    };
    Case const cases[] = {
        { { 0, 45 }, { 120, 45 }, 2, { 110, 45 }, { 10, 45 } },
        { { 60, 0 }, { 60, 100 }, 2, { 60, 20 }, { 60, 70 } },
        { { 60, 40 }, { 60, 100 }, 1, { 60, 70 }, {} },
        { { 60, 40 }, { 70, 50 }, 0, {}, {} },
        { { 0, 0 }, { 5, 100 }, 0, {}, {} },
        // Along an edge: that one is parallel, its neighbours are crossed at the corners.
        { { 0, 20 }, { 120, 20 }, 2, { 110, 20 }, { 10, 20 } },
    };
    for (Case const& c : cases) {
        CPoint i1;
        CPoint i2;
        EXPECT_EQ(CVUtils::LineRectIntersect(rect, c.from, c.to, i1, i2), c.count) << c.from.x << ' ' << c.from.y;
        EXPECT_EQ(i1, c.i1) << c.from.x << ' ' << c.from.y;
        EXPECT_EQ(i2, c.i2) << c.from.x << ' ' << c.from.y;
    }
}

TEST(UtilsGeometry, NormalsHaveUnitLengthAndFollowTheOrderOfTheCorners)
{
    CNormal n;
    CVUtils::NormalVector({ 3, 0, 0 }, { 0, 0, 0 }, { 0, 5, 0 }, n);
    EXPECT_EQ(n.Z(), -1.0);
    CVUtils::NormalVector({ 0, 5, 0 }, { 0, 0, 0 }, { 3, 0, 0 }, n);
    EXPECT_EQ(n.Z(), 1.0);
    CVUtils::NormalVector({ 1, 2, 3 }, { -4, 5, 6 }, { 7, -8, 10 }, n);
    EXPECT_NEAR(n.X() * n.X() + n.Y() * n.Y() + n.Z() * n.Z(), 1.0, 1e-15);
    CVUtils::NormalVector({ 1, 1, 1 }, { 2, 2, 2 }, { 3, 3, 3 }, n);
    EXPECT_EQ(n.X(), 0.0);
    CVUtils::NormalVector({ std::nan(""), 1, 1 }, { 2, 2, 2 }, { 3, 3, 4 }, n);
    EXPECT_EQ(n.X(), 0.0);
}

TEST(UtilsGeometry, BilinearInterpolationMeetsTheCorners)
{
    double const corners[][3] = { { 0, 0, 1 }, { 1, 0, 2 }, { 1, 1, 4 }, { 0, 1, 8 } };
    for (auto const& [x, y, z] : corners)
        EXPECT_EQ(CVUtils::InterpolateBilinear(1, 2, 4, 8, x, y), z);
    EXPECT_EQ(CVUtils::InterpolateBilinear(1, 2, 4, 8, 0.5, 0.5), 3.75);
}

TEST(UtilsGeometry, NormalisedPositionsTurnBack)
{
    CRect const device(7, 9, 207, 109);
    EXPECT_EQ(CVUtils::GetNormalisedPoint({ 50, 25 }, device), CRealPoint(0.25, 0.25));
    EXPECT_EQ(CVUtils::GetUnnormalisedPoint({ 0.25, 0.25 }, device), CPoint(50, 25));
    CRect const rect(20, 10, 120, 60);
    CRealRect const normalised = CVUtils::GetNormalisedRect(rect, device);
    EXPECT_EQ(normalised, CRealRect(0.1, 0.9, 0.6, 0.4));
    EXPECT_EQ(CVUtils::GetUnnormalisedRect(normalised, device), rect);
    // Nothing to be a fraction of: any result will do, as long as there is one.
    CRealRect const empty = CVUtils::GetNormalisedRect(rect, CRect());
    CVUtils::GetUnnormalisedRect(empty, device);
    EXPECT_FALSE(CVUtils::CheckSize(CRect(1, 2, 1, 5)));
    EXPECT_TRUE(CVUtils::CheckSize(CRect(5, 5, 1, 1)));
}

} // namespace
} // namespace ombrel
