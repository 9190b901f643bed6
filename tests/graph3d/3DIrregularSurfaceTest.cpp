#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/graph3d/3DIrregularSurfacePlot.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/geometry/TriangleMesh.h"
#include "tests/graph3d/ScatteredPoints.h"
#include "tests/graph3d/SurfaceData.h"
#include "tests/model/ArchiveBytes.h"
#include "tests/platform/framework/Refused.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::SetPoints;
using test::Stored;

TEST(IrregularSurface, PointsHaveTrianglesListsAndNormals)
{
    C3DIrregularSurfaceCurve curve;
    // A roof over a square, whose ridge lies along y; the first point twice, and one that is missing.
    SetPoints(curve,
        { { 0, 0, 0 }, { 2, 0, 0 }, { 0, 2, 0 }, { 2, 2, 0 }, { 1, 0, 1 }, { 1, 2, 1 }, { 0, 0, 9 }, { 1, 1, kGap } });
    ASSERT_EQ(curve.Evaluate(), 1);
    EXPECT_EQ(curve.GetNumPoints(), 8);
    ASSERT_EQ(curve.GetTriangles().size(), 4U);
    curve.BuildCommonVertexLists();
    std::size_t uses = 0;
    for (int i = 0; i < 8; ++i) {
        std::span<std::uint32_t const> const list = curve.GetCommonVertexList(i);
        EXPECT_TRUE(std::ranges::is_sorted(list));
        for (std::uint32_t const t : list)
            EXPECT_EQ(std::ranges::count(curve.GetTriangles()[t], i), 1);
        uses += list.size();
    }
    EXPECT_EQ(uses, 12U);
    // By Euler's formula: six points and four triangles.
    EXPECT_EQ(FindEdges(curve.GetTriangles()).size(), 9U);
    for (int const unused : { 6, 7 })
        EXPECT_TRUE(curve.GetCommonVertexList(unused).empty());
    // The box of a curve without a graph has ranges of −10 … 10 and sides of 1: slopes stay as they are. Triangles turn
    // right, so normals look down; the outer points' are those of one slope, the ridge's point straight down.
    curve.Normalise();
    for (auto const& [point, x, z] : std::vector<std::tuple<int, double, double>> {
             { 0, std::sqrt(0.5), -std::sqrt(0.5) }, { 3, -std::sqrt(0.5), -std::sqrt(0.5) } }) {
        CNormal const normal = curve.GetAveragedNormal(point);
        EXPECT_NEAR(normal.X(), x, 1e-6) << point;
        EXPECT_NEAR(normal.Y(), 0, 1e-6) << point;
        EXPECT_NEAR(normal.Z(), z, 1e-6) << point;
    }
    for (int const unused : { 6, 7 }) {
        EXPECT_EQ(curve.GetAveragedNormal(unused).X(), 0.0);
        EXPECT_EQ(curve.GetAveragedNormal(unused).Z(), 0.0);
    }
    CNormal const ridge = curve.GetAveragedNormal(4);
    EXPECT_NEAR(ridge.X() * ridge.X() + ridge.Z() * ridge.Z(), 1, 1e-6);
    EXPECT_LT(ridge.Z(), -0.9);
    curve.ClearTriangles();
    EXPECT_TRUE(curve.GetTriangles().empty());
    EXPECT_TRUE(curve.GetCommonVertexList(0).empty());
    EXPECT_TRUE(test::Refused([&] { return curve.GetCommonVertexList(8); }));
    EXPECT_TRUE(test::Refused([&] { return curve.GetAveragedNormal(-1); }));
}

TEST(IrregularSurface, PlacesFollowCoordinateSystemAndTransforms)
{
    C3DIrregularSurfaceCurve curve;
    SetPoints(curve, { { 0, 1, 2 }, { 90, 1, 3 }, { 0, 5, 4 } });
    curve.SetCurveType(C3DCurve::ctCylindrical);
    CTransformArray transforms;
    transforms.Add({ CCoordTransform::ctTranslate, 0, 0, 5 });
    curve.SetTransforms(transforms);
    ASSERT_TRUE(curve.Evaluate());
    EXPECT_EQ(curve.GetTriangles().size(), 1U);
    CVertex place;
    curve.GetVertex(1, place);
    EXPECT_NEAR(place.Y(), 3, 1e-12);
    EXPECT_NEAR(place.Z(), 1, 1e-12);
    curve.GetNormalisedVertex(1, place);
    EXPECT_NEAR(place.Y(), 3 / 20.0, 1e-12);
    EXPECT_NEAR(place.Z(), 6 / 20.0, 1e-12);
    double min = 0;
    double max = 0;
    curve.GetZRange(min, max);
    EXPECT_EQ(std::pair(min, max), std::pair(6.0, 10.0)) << "heights, moved";
    curve.GetUntransformedDataRange(min, max);
    EXPECT_EQ(std::pair(min, max), std::pair(2.0, 4.0)) << "radii";
    EXPECT_EQ(curve.Get1DTextureCoord(1), 0.5);
    // Where points cannot be given, all lie at the centre.
    curve.SetCurveType(C3DCurve::ctGeographical);
    ASSERT_TRUE(curve.Evaluate());
    curve.GetVertex(1, place);
    EXPECT_EQ(place, CVertex());
    curve.GetNormalisedVertex(1, place);
    EXPECT_EQ(place, CVertex());
    EXPECT_TRUE(test::Refused([&] {
        curve.GetVertex(3, place);
        return 0;
    }));
}

TEST(IrregularSurface, WithoutPointsOrATableThereIsNothing)
{
    C3DIrregularSurfaceCurve curve;
    EXPECT_EQ(curve.GetTitle(), "Irregular Surface");
    EXPECT_EQ(curve.GetItemType(), it3DIrregularSurfaceCurve);
    EXPECT_EQ(curve.Modified(), 0);
    double min = 3;
    double max = 4;
    curve.GetXRange(min, max);
    EXPECT_EQ(std::pair(min, max), std::pair(3.0, 4.0));
    curve.SetDataSourceType(CPlotComponent::dsTable);
    EXPECT_EQ(curve.Evaluate(), 0);
    SetPoints(curve, { { 1, 2, kGap }, { kGap, 1, 1 } });
    EXPECT_EQ(curve.Evaluate(), 0);
    SetPoints(curve, { { 0, 0, 1 }, { 1, 0, 2 }, { 0, 1, 3 } });
    EXPECT_EQ(curve.Evaluate(), 1);
    curve.SetDataSourceType(CPlotComponent::dsFormula);
    EXPECT_EQ(curve.Evaluate(), 0);
    EXPECT_TRUE(curve.GetTriangles().empty());
    CDoubleArray const x { 1, 2 };
    std::array<CDoubleArray const*, 3> const arrays { &x, &x, nullptr };
    EXPECT_TRUE(test::Refused([&] {
        curve.SetTableData(arrays.data(), 2);
        return 0;
    }));
    EXPECT_EQ(curve.GetNumPoints(), 3);
}

TEST(IrregularSurface, ColoursAndBandsAreThoseOfAGridWithTheSameValues)
{
    for (int const description : { 0, 1 }) {
        for (int const levelMode : { 0, 1, 2 }) {
            C3DIrregularSurfaceCurve scattered;
            CSurface grid;
            SetPoints(scattered, { { 0, 0, 0 }, { 1, 0, 10 }, { 0, 1, 30 }, { 1, 1, 60 } });
            test::Fill(grid, 2, 2, [](int c, int r) { return c == 0 ? 30.0 * r : 10.0 + 50.0 * r; });
            auto const set = [&](auto& curve) {
                curve.SetColour(RGB(200, 100, 50));
                curve.SetColourDescription(description == 0 ? 0 : 2);
                curve.SetColourmap("Spectrum");
                curve.SetContoursOn(1);
                curve.SetContourLevelMode(levelMode);
                curve.SetContourRef(5);
                curve.SetContourSpacing(10);
                curve.SetArbContourLevels({ 1, 60, 20 });
                ASSERT_TRUE(curve.Evaluate());
            };
            set(scattered);
            set(grid);
            EXPECT_EQ(scattered.Make1DTexture(), grid.Make1DTexture());
            EXPECT_TRUE(std::ranges::equal(scattered.GetContourLevels(), grid.GetContourLevels()));
            ColourKeySource const ours = scattered.GetColourKeySource();
            ColourKeySource const theirs = grid.GetColourKeySource();
            EXPECT_EQ(ours.bandColours, theirs.bandColours);
            EXPECT_EQ(ours.bandValues, theirs.bandValues);
            scattered.SetContoursOn(0);
            grid.SetContoursOn(0);
            EXPECT_EQ(scattered.Make1DTexture(), grid.Make1DTexture());
        }
    }
}

TEST(IrregularSurface, AValueTableColoursInPlaceOfZ)
{
    C3DIrregularSurfaceCurve curve;
    SetPoints(curve, { { 0, 0, 0 }, { 1, 0, 10 }, { 0, 1, 30 }, { 1, 1, 60 } });
    CTableData values(1, 3);
    for (auto const& [i, v] : { std::pair(0, 5.0), { 1, kGap }, { 2, 7.0 } })
        values.SetAt(0, i, v);
    curve.SetValueTable(values);
    ASSERT_TRUE(curve.Evaluate());
    EXPECT_EQ(curve.Get1DTextureCoord(2), 0.5);
    curve.SetUseValueTable(1);
    EXPECT_EQ(curve.PlotSecondaryVariable(), 1);
    double min = 0;
    double max = 0;
    curve.GetUntransformedDataRange(min, max);
    EXPECT_EQ(std::pair(min, max), std::pair(5.0, 7.0));
    for (auto const& [i, place] : { std::pair(0, 0.0), { 1, 0.0 }, { 2, 1.0 }, { 3, 0.0 } })
        EXPECT_EQ(curve.Get1DTextureCoord(i), place) << i;
    curve.SetLUTMinMax(0, 100);
    curve.SetUseLUTMinMax(1);
    ColourKeySource const source = curve.GetColourKeySource();
    EXPECT_EQ(source.dataHigh, 7.0);
    EXPECT_EQ(source.high, 100.0);
}

// --- Documents

Bytes CurveBytes(int version)
{
    C3DIrregularSurfaceCurve curve;
    C3DCurve base;
    base.SetDataSourceType(CPlotComponent::dsTable);
    Bytes bytes = Stored(base);
    bytes.Int(version).Double(0.25);
    bytes.Int(2, 3, 1).Double(11.5, 12.5, 13.5).Double(0, 1); // the points: 3 × 1
    bytes.Int(41).Int(2, 1, 2).Double(21.5, 22.5).Double(0, 1); // the values: 1 × 2
    bytes.Double(31, 32, 33, 34, 35, 36).Int(42, 0x332211).Double(37.5).Int(43);
    if (version >= 2)
        bytes.Int(44, 1, 45).Double(38.5, 39.5).Int(0);
    return bytes;
}

TEST(IrregularSurfaceArchive, EveryFieldIsInItsPlace)
{
    Bytes const bytes = CurveBytes(2);
    C3DIrregularSurfaceCurve curve;
    ASSERT_TRUE(Load(curve, bytes));
    EXPECT_EQ(Stored(curve), bytes);
    EXPECT_EQ(curve.GetTransparency(), 0.25);
    EXPECT_EQ(curve.GetTableData()->GetAt(2, 0), 13.5);
    EXPECT_EQ(curve.GetUseValueTable(), 41);
    EXPECT_EQ(curve.GetValueTable()->GetAt(0, 1), 22.5);
    EXPECT_EQ(curve.GetTransformParams(), (std::array<double, 6> { 31, 32, 33, 34, 35, 36 }));
    EXPECT_EQ(curve.GetWireframeOn(), 42);
    EXPECT_EQ(curve.GetWireframeColour(), RGB(0x11, 0x22, 0x33));
    EXPECT_EQ(curve.GetContoursOn(), 44);
    EXPECT_EQ(curve.GetContourLevelMode(), 1);
    EXPECT_EQ(curve.GetNumContourBands(), 45);
    EXPECT_EQ(curve.GetContourRef(), 38.5);
    EXPECT_EQ(curve.GetContourSpacing(), 39.5);
    EXPECT_EQ(curve.GetNormalAveraging(), 0);
    EXPECT_EQ(curve.PlotDataModified(), 1) << "triangles have to be made";
    for (std::size_t length = 0; length < bytes.Get().size(); ++length) {
        C3DIrregularSurfaceCurve cut;
        EXPECT_FALSE(Load(cut, Bytes::Of(std::span(bytes.Get()).first(length)))) << length;
    }
    C3DIrregularSurfaceCurve old;
    ASSERT_TRUE(Load(old, CurveBytes(1)));
    EXPECT_EQ(old.GetWireframeOn(), 42);
    EXPECT_EQ(old.GetContoursOn(), 0);
    EXPECT_EQ(old.GetNumContourBands(), 6);
    EXPECT_EQ(old.GetNormalAveraging(), 1);
}

TEST(IrregularSurfaceArchive, ThePlotEndsWithANumberOfItsOwn)
{
    C3DIrregularSurfacePlot plot;
    EXPECT_EQ(plot.GetItemType(), it3DIrregularSurfacePlot);
    C3DPlot base;
    base.SetTitle(plot.GetTitle());
    Bytes expected = Stored(plot);
    std::vector<std::byte> const& bytes = expected.Get();
    ASSERT_GT(bytes.size(), 4U);
    EXPECT_EQ(Bytes::Of(std::span(bytes).last(4)), Bytes().Int(1));
    EXPECT_EQ(bytes.size(), Stored(base).Get().size() + 4);
}

TEST(TrianglesInDrawingOrder, StayWholeAndNearEachOther)
{
    C3DIrregularSurfaceCurve curve;
    std::vector<std::array<double, 3>> points;
    std::mt19937 random(2);
    for (int i = 0; i < 20000; ++i)
        points.push_back({ static_cast<double>(random()), static_cast<double>(random()), 0 });
    SetPoints(curve, points);
    ASSERT_TRUE(curve.Evaluate());
    std::span<std::array<int, 3> const> const triangles = curve.GetTriangles();
    std::vector<std::uint32_t> const order
        = OrderForDrawing(triangles, { std::as_const(*curve.GetTableData()).GetRow(0), points.size() });
    std::vector<std::uint32_t> sorted = order;
    std::ranges::sort(sorted);
    ASSERT_EQ(sorted.size(), triangles.size());
    for (std::uint32_t t = 0; t < sorted.size(); ++t)
        ASSERT_EQ(sorted[t], t);
    // How many corners are not among the 128 points that were used last.
    auto const misses = [&](auto const& triangleOf) {
        std::vector<std::size_t> lastUse(points.size(), 0);
        std::size_t count = 0;
        for (std::size_t k = 0; k < triangles.size(); ++k) {
            for (int const point : triangles[triangleOf(k)]) {
                std::size_t& last = lastUse[static_cast<std::size_t>(point)];
                count += last == 0 || k + 1 - last > 128;
                last = k + 1;
            }
        }
        return static_cast<double>(count) / static_cast<double>(points.size());
    };
    EXPECT_GT(misses([](std::size_t k) { return k; }), 1.8);
    EXPECT_LT(misses([&](std::size_t k) { return order[k]; }), 1.3);
}

} // namespace
} // namespace ombrel
