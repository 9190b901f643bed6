#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DLineArrayCurve.h"
#include "ombrel/graph3d/3DLineArrayPlot.h"
#include "ombrel/graph3d/3DWireframeCurve.h"
#include "ombrel/graph3d/bars/StackGeometry.h"
#include "tests/graph3d/SurfaceData.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <cmath>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

constexpr BoxAxes kAxes { { { 0, 4, 1.0 }, { 0, 4, 1.0 }, { -4, 4, 1.0 } } };

/// What a stack along x covers, in data units, and where along x it reaches.
struct Cover {
    double area = 0.0;
    double below = 0.0;
    float left = 1.0F;
    float right = -1.0F;
};

Cover Measure(FaceBatch const& batch, double base)
{
    Cover cover;
    auto const corners = batch.GetTriangles();
    for (std::size_t t = 0; t < corners.size(); t += 3) {
        std::array<std::array<double, 2>, 3> v {};
        for (std::size_t c = 0; c < 3; ++c) {
            auto const& place = batch.GetVertices()[corners[t + c]].place;
            v[c] = { (static_cast<double>(place[0]) + 0.5) * 4, static_cast<double>(place[2]) * 8 };
            cover.left = std::min(cover.left, place[0]);
            cover.right = std::max(cover.right, place[0]);
        }
        double const area
            = std::fabs((v[1][0] - v[0][0]) * (v[2][1] - v[0][1]) - (v[2][0] - v[0][0]) * (v[1][1] - v[0][1])) / 2.0;
        cover.area += area;
        if ((v[0][1] + v[1][1] + v[2][1]) / 3 < base)
            cover.below += area;
    }
    return cover;
}

TEST(StackBuilder, StripsFillWhatLiesBetweenLineAndBaseline)
{
    struct Case {
        double base;
        std::vector<CVertex> points;
        std::size_t triangles;
        double area;
        double below;
    };
    for (Case const& c : {
             Case { 0, { { 0, 2, 1 }, { 1, 2, 3 } }, 2, 2.0, 0.0 },
             // Crosses at a quarter of the way.
             { 0, { { 0, 2, -1 }, { 1, 2, 3 } }, 2, 0.125 + 1.125, 0.125 },
             { 1, { { 0, 2, 3 }, { 2, 2, -1 } }, 2, 1.0 + 1.0, 1.0 },
             // An end on the baseline is no crossing.
             { 0, { { 0, 2, 0 }, { 1, 2, 2 } }, 2, 1.0 + 0.001, 0.0 },
             { 1, { { 0, 2, -1 }, { 1, 2, 1 } }, 2, 1.0 + 0.001, 1.0 + 0.001 },
             { 1, { { 0, 2, 1 }, { 1, 2, 1 } }, 2, 0.0, 0.0 },
             // A missing point takes both of its strips along.
             { 0, { { 0, 2, 1 }, { 1, 2, 1 }, { 2, 2, kGap }, { 3, 2, 1 }, { 4, 2, 1 } }, 4, 2.0, 0.0 },
             { 0, { { 0, 2, 1 } }, 0, 0.0, 0.0 },
         }) {
        FaceBatch batch;
        StackBuilder(batch, kAxes, c.base, { -1, 3 }).AddStack(c.points, 0);
        EXPECT_EQ(batch.GetTriangles().size(), 3 * c.triangles);
        Cover const cover = Measure(batch, c.base);
        EXPECT_NEAR(cover.area, c.area, 2e-6);
        EXPECT_NEAR(cover.below, c.below, 2e-6);
        for (FaceVertex const& vertex : batch.GetVertices()) {
            double const z = static_cast<double>(vertex.place[2]) * 8;
            EXPECT_NEAR(static_cast<double>(vertex.value), (z + 1) / 4, 0.001) << "the texture follows z";
            EXPECT_EQ(vertex.place[1], 0.0F);
        }
    }
}

TEST(StackBuilder, LinesAndOutlinesEndWhereAPointIsMissing)
{
    std::vector<CVertex> const points { { 0, 2, 1 }, { 1, 2, 2 }, { 2, 2, 3 }, { 3, 2, kGap }, { 4, 2, -1 } };
    FaceBatch lines;
    StackBuilder(lines, kAxes, 0, { 0, 4 }).AddLine(points, RGB(1, 2, 3));
    EXPECT_EQ(lines.GetLines().size(), 2U * 2);
    FaceBatch outline;
    StackBuilder(outline, kAxes, 0, { 0, 4 }).AddOutline(points, RGB(1, 2, 3));
    // Two sides and the baseline's stretch; and where a single point is.
    ASSERT_EQ(outline.GetLines().size(), 2U * 4);
    std::vector<std::array<float, 3>> ends;
    for (std::uint32_t const v : outline.GetLines())
        ends.push_back(outline.GetVertices()[v].place);
    using P = std::array<float, 3>;
    EXPECT_EQ(ends,
        (std::vector<P> { { -0.5F, 0, 0.125F }, { -0.5F, 0, 0 }, { 0, 0, 0.375F }, { 0, 0, 0 }, { -0.5F, 0, 0 },
            { 0, 0, 0 }, { 0.5F, 0, -0.125F }, { 0.5F, 0, 0 } }));
}

TEST(Series, LinesHaveAnXOrAYOfTheirOwn)
{
    C3DGraph graph(1);
    auto& series = *static_cast<C3DLineArrayCurve*>(graph.AddPlot(it3DLineArrayPlot)->CreateCurve());
    test::Fill(series, 3, 5, [](int c, int r) { return 10 * r + c; });
    ASSERT_EQ(series.Evaluate(), 1);
    graph.UpdateComponentParameters();
    std::vector<CVertex> points;
    EXPECT_EQ(series.GetNumSubcurves(), 5);
    series.GetSubcurve(4, points);
    EXPECT_EQ(points, (std::vector<CVertex> { { 4, 0, 4 }, { 4, 1, 14 }, { 4, 2, 24 } }));
    series.SetRowMode(1);
    EXPECT_EQ(series.GetNumSubcurves(), 3);
    series.GetSubcurve(2, points);
    EXPECT_EQ(points[1], CVertex(1, 2, 21));
    EXPECT_EQ(points.size(), 5U);

    // Those on the sides of the box are whole, those beyond are left out.
    EXPECT_FALSE(series.SubcurveClipped(0) || series.SubcurveClipped(2));
    C3DAxis& y = *graph.GetAxes()[1];
    y.SetRangeMode(2);
    y.SetRange(0.5, 2.0);
    EXPECT_TRUE(series.SubcurveClipped(0));
    EXPECT_FALSE(series.SubcurveClipped(1) || series.SubcurveClipped(2));
    series.SetRowMode(0);
    EXPECT_FALSE(series.SubcurveClipped(0) || series.SubcurveClipped(4));
    series.SetCurveType(C3DCurve::ctPolar);
    EXPECT_FALSE(series.SubcurveClipped(0));
}

TEST(Series, LegendAndKeyShowWhatIsDrawn)
{
    C3DLineArrayCurve series;
    series.SetStackColour(RGB(1, 2, 3));
    series.SetLineColour(RGB(4, 5, 6));
    EXPECT_EQ(series.GetLegendEntry()->colour, RGB(1, 2, 3));
    series.SetLineColourDescription(2);
    EXPECT_TRUE(series.GetLegendEntry());
    EXPECT_EQ(series.NeedsColourKey(), 0);
    series.SetDrawStacks(0);
    EXPECT_FALSE(series.GetLegendEntry());
    series.SetLineColourDescription(0);
    EXPECT_EQ(series.GetLegendEntry()->colour, RGB(4, 5, 6));
    series.SetStackColourDescription(1);
    EXPECT_EQ(series.NeedsColourKey(), 0);
    series.SetDrawStacks(1);
    EXPECT_EQ(series.NeedsColourKey(), 1);
    EXPECT_FALSE(series.GetLegendEntry());
}

TEST(Series, DocumentsKeepThemAndOldOnesHaveLinesOnly)
{
    C3DLineArrayCurve curve;
    EXPECT_EQ(curve.GetTitle(), CString("Series"));
    EXPECT_EQ(curve.GetItemType(), 26);
    EXPECT_EQ(curve.GetStackColour(), 255U);
    C3DRowColCurve base;
    base.SetColourDescription(3);
    Bytes const bytes = Stored(base).Int(2, 1, 7).Double(1.5).Int(0x332211, 0x665544, 0, 0, 1).Double(2.5).Int(1, 2);
    ASSERT_TRUE(Load(curve, bytes));
    EXPECT_EQ(Stored(curve), bytes);
    EXPECT_EQ(curve.GetLineColour(), 0x332211U);
    EXPECT_EQ(curve.GetAutoBaseline(), 0);
    EXPECT_EQ(curve.GetDrawLines(), 0);
    EXPECT_EQ(curve.GetDrawStacks(), 1);
    EXPECT_EQ(curve.GetBaseline(), 2.5);
    EXPECT_EQ(curve.GetStackColourDescription(), 2);
    for (int const description : { 0, 3 }) {
        for (int const style : { 0, 1 }) {
            base.SetColourDescription(description);
            C3DLineArrayCurve old;
            ASSERT_TRUE(Load(old, Stored(base).Int(1, 1, style).Double(1.5)));
            EXPECT_EQ(old.GetThicknessScaleFac(), style == 1 ? 2.0 : 1.5);
            EXPECT_EQ(old.GetLineColourDescription(), description == 0 ? 0 : 2);
            EXPECT_EQ(old.GetDrawLines(), 1);
            EXPECT_EQ(old.GetDrawStacks(), 0);
        }
    }
}

CDoubleArray Values(std::initializer_list<double> values) { return CDoubleArray(values); }

TEST(PointSeries, ALineEndsWhereTheNextPointHasAnotherKey)
{
    C3DIrregLineArrayCurve series;
    EXPECT_EQ(series.GetItemType(), 54);
    series.SetPoints(Values({ 1, 1, 2, 2, 3 }), Values({ 7, 8, 8, 8, 7 }), Values({ 1, 2, kGap, 4, 5 }));
    series.BuildStackCounts();
    EXPECT_EQ(series.GetStackCounts(), (std::vector<int> { 2, 2, 1 }));
    EXPECT_EQ(series.Evaluate(), 0) << "a formula";
    series.SetDataSourceType(CPlotComponent::dsTable);
    ASSERT_EQ(series.Evaluate(), 1);
    EXPECT_EQ(series.GetNumSubcurves(), 3);
    std::vector<CVertex> points;
    series.GetSubcurve(1, points);
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[0].Z(), kGap);
    EXPECT_EQ(points[1], CVertex(2, 8, 4));
    double min = 0.0;
    double max = 0.0;
    series.GetZRange(min, max);
    EXPECT_EQ(max, 5);
    series.SetRowMode(1);
    ASSERT_EQ(series.Evaluate(), 1);
    EXPECT_EQ(series.GetStackCounts(), (std::vector<int> { 1, 3, 1 }));
    // A key that comes again begins another line.
    series.SetPoints(Values({ 1, 2, 1 }), Values({ 0, 0, 0 }), Values({ 1, 2, 3, 4 }));
    series.SetRowMode(0);
    ASSERT_EQ(series.Evaluate(), 1);
    EXPECT_EQ(series.GetStackCounts(), (std::vector<int> { 1, 1, 1 }));
    series.SetPoints({}, {}, {});
    EXPECT_EQ(series.Evaluate(), 0);
    EXPECT_EQ(series.GetNumSubcurves(), 0);
}

TEST(PointSeries, DocumentsKeepThem)
{
    C3DIrregLineArrayCurve curve;
    C3DLineData points;
    points.Initialise(2);
    points[1] = { 1, 2, 3 };
    C3DCurve base;
    Bytes const bytes = Stored(base)
                            .Add(Stored(points))
                            .Int(2, 1, 7)
                            .Double(1.5)
                            .Int(0x332211, 0x665544, 0, 0, 1)
                            .Double(2.5)
                            .Int(1, 2);
    ASSERT_TRUE(Load(curve, bytes));
    EXPECT_EQ(Stored(curve), bytes);
    EXPECT_EQ(curve.GetPoints()[1].Z(), 3);
    EXPECT_EQ(curve.GetStackColour(), 0x665544U);
}

TEST(WireNets, DocumentsKeepThem)
{
    C3DWireframeCurve curve;
    EXPECT_EQ(curve.GetTitle(), CString("Wire Frame Curve"));
    EXPECT_EQ(curve.GetItemType(), 40);
    EXPECT_EQ(curve.GetNumCols(), 20);
    C3DRowColCurve base;
    Bytes const bytes = Stored(base).Int(2, 3, 4, 5);
    ASSERT_TRUE(Load(curve, bytes));
    EXPECT_EQ(Stored(curve), bytes);
    EXPECT_EQ(curve.GetNumIntermediateRowPts(), 3);
    EXPECT_EQ(curve.GetNumIntermediateColPts(), 4);
    C3DWireframeCurve old;
    EXPECT_TRUE(Load(old, Stored(base).Int(1, 3, 4)));
    EXPECT_EQ(old.GetNumIntermediateColPts(), 4);
}

} // namespace
} // namespace ombrel
