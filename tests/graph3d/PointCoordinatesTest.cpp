#include "ombrel/graph3d/geometry/PointCoordinates.h"
#include "tests/platform/framework/Refused.h"

#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

CTableData Points(CDoubleArray const& x, CDoubleArray const& y, CDoubleArray const& z)
{
    std::array<CDoubleArray const*, 3> const arrays { &x, &y, &z };
    return MakePointTable(arrays.data(), z.GetSize());
}

TEST(PointCoordinates, PointsLieWhereTheirCoordinateSystemPutsThem)
{
    struct Case {
        C3DCurve::CurveType type;
        std::array<double, 3> point;
        std::array<double, 3> place;
    };
    for (Case const& c : { Case { C3DCurve::ctCartesian, { 1, -2, 3 }, { 1, -2, 3 } },
             Case { C3DCurve::ctPolar, { 0, 90, 2 }, { 2, 0, 0 } },
             Case { C3DCurve::ctPolar, { 90, 90, 2 }, { 0, 2, 0 } },
             Case { C3DCurve::ctPolar, { 77, 180, 2 }, { 0, 0, -2 } },
             Case { C3DCurve::ctCylindrical, { 180, 5, 2 }, { -2, 0, 5 } },
             Case { C3DCurve::ctParametric, { 1, 2, 3 }, { 0, 0, 0 } },
             Case { C3DCurve::ctGeographical, { 1, 2, 3 }, { 0, 0, 0 } },
             Case { static_cast<C3DCurve::CurveType>(9), { 1, 2, 3 }, { 0, 0, 0 } } }) {
        std::array<double, 3> const place = GetPointPlace(c.type, c.point);
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_NEAR(place[k], c.place[k], 1e-15) << "system " << c.type << ", coordinate " << k;
    }
}

TEST(PointCoordinates, PlacesAreTransformedAndMissingPointsStayMissing)
{
    C3DCurve curve;
    curve.SetCurveType(C3DCurve::ctCylindrical);
    CTransformArray transforms;
    transforms.Add({ CCoordTransform::ctTranslate, 10, 20, 30 });
    curve.SetTransforms(transforms);
    double const nan = std::numeric_limits<double>::quiet_NaN();
    CTableData const places
        = MakePointPlaces(curve, Points({ 90, nan, 0, 0 }, { 1, 1, kGap, 3 }, { 2, 2, 2, kGap / 1.5 }));
    PointRows const rows(places);
    ASSERT_EQ(rows.GetSize(), 4U);
    EXPECT_NEAR(rows.At(0)[0], 10, 1e-12);
    EXPECT_NEAR(rows.At(0)[1], 22, 1e-12);
    EXPECT_NEAR(rows.At(0)[2], 31, 1e-12);
    for (std::size_t const i : { 1U, 2U, 3U })
        EXPECT_TRUE(rows.IsMissing(i)) << i;
    PointRanges const ranges = GetPointRanges(places);
    EXPECT_EQ(ranges.count, 1U);
    EXPECT_EQ(ranges.min, ranges.max);
    EXPECT_EQ(ranges.max, rows.At(0));
}

TEST(PointCoordinates, TablesWithoutThreeRowsHaveNoPointsAndShortArraysAreRefused)
{
    EXPECT_EQ(PointRows(CTableData()).GetSize(), 0U);
    EXPECT_EQ(PointRows(CTableData(2, 5)).GetSize(), 0U);
    EXPECT_EQ(PointRows(CTableData(4, 5)).GetSize(), 5U);
    EXPECT_EQ(GetPointRanges(CTableData()).count, 0U);
    CDoubleArray const two { 1, 2 };
    CDoubleArray const one { 1 };
    std::array<CDoubleArray const*, 3> arrays { &two, &one, &two };
    EXPECT_TRUE(test::Refused([&] { return MakePointTable(arrays.data(), 2); }));
    EXPECT_EQ(MakePointTable(arrays.data(), 1).GetNumCols(), 1);
    EXPECT_FALSE(MakePointTable(arrays.data(), 0).HasData());
    arrays[2] = nullptr;
    EXPECT_TRUE(test::Refused([&] { return MakePointTable(arrays.data(), 1); }));
    EXPECT_TRUE(test::Refused([&] { return MakePointTable(nullptr, 1); }));
}

} // namespace
} // namespace ombrel
