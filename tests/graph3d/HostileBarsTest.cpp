#include "ombrel/drawing/DIB.h"
#include "ombrel/graph3d/3DBarCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DLineArrayCurve.h"
#include "tests/graph3d/SurfaceData.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>

namespace ombrel {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kHuge = std::numeric_limits<double>::max();
constexpr int kMostInt = std::numeric_limits<int>::max();
constexpr int kLeastInt = std::numeric_limits<int>::min();
constexpr double kDoubles[] = { 0.0, -1.0, 1e-300, kNaN, kInfinity, kHuge, -kHuge };
constexpr int kInts[] = { kMostInt, kLeastInt, 0, -3, 1, 2 };

/// A curve in a graph with everything, as hosts make it.
template <typename Curve> struct Hostile {
    explicit Hostile(ItemType type)
        : curve(*static_cast<Curve*>(graph.AddPlot(type)->CreateCurve()))
    {
        curve.SetDataSourceType(CPlotComponent::dsTable);
        curve.SetColourmap("Spectrum");
        graph.AddColourKey({ 5, 5 }, curve.GetTag());
    }
    /// Seconds count for nothing beside loops that do not end.
    void Draw()
    {
        auto const start = std::chrono::steady_clock::now();
        CDIB target(160, 120, 24);
        curve.SetPlotDataModified(1);
        graph.Draw(target.GetDC(), { 0, 0, 160, 120 }, pmOffScreen);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    }
    template <typename V, std::size_t N> void Try(void (Curve::*set)(V), V const (&values)[N])
    {
        for (V const value : values) {
            (curve.*set)(value);
            Draw();
        }
    }
    C3DGraph graph { 1 };
    Curve& curve;
};

double Height(int c, int r) { return 3.0 * c - r * r; }

double (*const kHeights[])(int, int) { [](int, int) { return kGap; }, [](int, int) { return 7.0; },
    [](int c, int r) { return (c + r) % 2 ? kHuge / 2 : -kHuge; }, [](int c, int r) { return c == r ? -kInfinity : c; },
    [](int c, int r) { return (c + r) * 5e-324; } };

TEST(HostileBars, AreDrawnAtOnceWhateverTheSettingsAndData)
{
    using Bars = C3DBarCurve;
    constexpr void (Bars::*kDoubleSettings[])(double) { &Bars::SetBarWidthScaleFacX, &Bars::SetBarWidthScaleFacY,
        &Bars::SetBaseline, &Bars::SetXMin, &Bars::SetYMax, &Bars::SetTableXStep, &Bars::SetTableYMin };
    constexpr void (Bars::*kIntSettings[])(int) { &Bars::SetNumRows, &Bars::SetNumCols, &Bars::SetColourDescription };
    for (auto const& set : kDoubleSettings) {
        Hostile<Bars> h(it3DBarPlot);
        h.curve.SetAutoBaseline(0);
        test::Fill(h.curve, 4, 5, Height);
        h.Try(set, kDoubles);
    }
    for (auto const& set : kIntSettings) {
        Hostile<Bars> h(it3DBarPlot);
        test::Fill(h.curve, 4, 5, Height);
        h.Try(set, kInts);
    }
    for (auto const& height : kHeights) {
        for (CSize const size : { CSize(1, 1), CSize(5, 1), CSize(1, 4), CSize(12, 9) }) {
            Hostile<Bars> h(it3DBarPlot);
            test::Fill(h.curve, size.cy, size.cx, height);
            h.curve.SetColourDescription(1);
            for (int type = -1; type < 6; ++type) {
                h.curve.SetCurveType(static_cast<C3DCurve::CurveType>(type));
                h.Draw();
            }
            h.curve.SetCurveType(C3DCurve::ctCartesian);
            h.curve.SetCoarseMeshMode(2, 2);
            h.Draw();
        }
    }
}

TEST(HostileSeries, AreDrawnAtOnceWhateverTheSettingsAndData)
{
    using Series = C3DLineArrayCurve;
    constexpr void (Series::*kDoubleSettings[])(
        double) { &Series::SetThicknessScaleFac, &Series::SetBaseline, &Series::SetXMin, &Series::SetYMax };
    constexpr void (Series::*kIntSettings[])(int) { &Series::SetLineColourDescription,
        &Series::SetStackColourDescription, &Series::SetLineStyle, &Series::SetNumCols, &Series::SetDrawStacks };
    for (auto const& set : kDoubleSettings) {
        Hostile<Series> h(it3DLineArrayPlot);
        h.curve.SetAutoBaseline(0);
        test::Fill(h.curve, 4, 5, Height);
        h.Try(set, kDoubles);
    }
    for (auto const& set : kIntSettings) {
        Hostile<Series> h(it3DLineArrayPlot);
        test::Fill(h.curve, 4, 5, Height);
        h.Try(set, kInts);
    }
    for (auto const& height : kHeights) {
        Hostile<Series> h(it3DLineArrayPlot);
        h.curve.SetStackColourDescription(1);
        for (int const mode : { 0, 1 }) {
            for (CSize const size : { CSize(1, 1), CSize(5, 1), CSize(1, 4), CSize(12, 9) }) {
                h.curve.SetRowMode(mode);
                test::Fill(h.curve, size.cy, size.cx, height);
                h.Draw();
            }
        }
    }
}

TEST(HostilePoints, AreDrawnAtOnceAsBarsAndSeries)
{
    CDoubleArray values { 0, 1, kNaN, kInfinity, -kInfinity, kHuge, -kHuge, kHuge / 3, 5e-324, 0, 1, 1 };
    std::array<CDoubleArray*, 3> arrays { &values, &values, &values };
    Hostile<C3DIrregBarCurve> bars(it3DIrregBarPlot);
    Hostile<C3DIrregLineArrayCurve> series(it3DIrregLineArrayPlot);
    for (int n = 0; n <= values.GetSize(); ++n) {
        CDoubleArray some;
        for (int i = 0; i < n; ++i)
            some.Add(values[i]);
        bars.curve.SetTableData(arrays.data(), n);
        bars.Draw();
        series.curve.SetPoints(some, values, some);
        series.Draw();
    }
    for (int type = -1; type < 6; ++type) {
        bars.curve.SetCurveType(static_cast<C3DCurve::CurveType>(type));
        bars.Draw();
        series.curve.SetCurveType(static_cast<C3DCurve::CurveType>(type));
        series.Draw();
    }
}

} // namespace
} // namespace ombrel
