#include "ombrel/graph3d/3DBarCurve.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/graph3d/3DLineArrayCurve.h"
#include "ombrel/graph3d/3DScatterCurve.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/gdi/PageSurface.h"
#include "ombrel/platform/host/Host.h"
#include "ombrel/platform/opengl/GLCanvas.h"
#include "tests/graph3d/Draw3D.h"
#include "tests/graph3d/SurfaceData.h"

#include <chrono>
#include <limits>

namespace ombrel {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kHuge = std::numeric_limits<double>::max();
constexpr double kTiny = 1e-300;
constexpr int kMostInt = std::numeric_limits<int>::max();
constexpr int kLeastInt = std::numeric_limits<int>::min();

double Height(int c, int r) { return 3.0 * c - r * r; }

double (*const kHeights[])(int, int) { [](int, int) { return kGap; }, [](int, int) { return 7.0; },
    [](int c, int r) { return (c + r) % 2 ? kHuge / 2 : -kHuge; }, [](int c, int r) { return c == r ? -kInfinity : c; },
    [](int c, int r) { return (c + r) * 5e-324; } };

/// A curve in a graph with everything, as hosts make it.
template <typename Curve> struct Hostile {
    explicit Hostile(ItemType type)
        : curve(*static_cast<Curve*>(graph.AddPlot(type)->CreateCurve()))
    {
        curve.SetDataSourceType(CPlotComponent::dsTable);
        curve.SetColourmap("Spectrum");
        if constexpr (std::is_base_of_v<C3DRowColCurve, Curve>)
            test::Fill(curve, 9, 7, Height);
        graph.AddColourKey({ 5, 5 }, curve.GetTag());
        SetMessageBoxFunction([](CString const&, CString const&, UINT) {});
    }
    ~Hostile() { SetMessageBoxFunction({}); }
    Hostile(Hostile const&) = delete;
    Hostile& operator=(Hostile const&) = delete;

    /// Seconds count for nothing beside loops that do not end.
    COLORREF Draw(CSize size = { 160, 120 })
    {
        auto const start = std::chrono::steady_clock::now();
        CDIB target(size.cx, size.cy, 24);
        curve.SetPlotDataModified(1);
        graph.Draw(target.GetDC(), { { 0, 0 }, size }, pmOffScreen);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)) << size.cx << " x " << size.cy;
        return target.GetDC()->GetPixel(size.cx / 2, size.cy / 2);
    }

    C3DGraph graph { 1 };
    Curve& curve;
};

/// Settings of a curve that take any number, each tried from every start.
template <typename Curve> struct Settings {
    ItemType type;
    std::vector<void (Curve::*)(double)> doubles;
    std::vector<void (Curve::*)(int)> ints;
    std::vector<void (*)(Curve&)> starts { [](Curve&) {} };

    void Try() const
    {
        for (std::size_t i = 0; i < starts.size(); ++i) {
            auto const tryAll = [&](auto const& setters, auto const&... values) {
                for (std::size_t k = 0; k < setters.size(); ++k) {
                    SCOPED_TRACE(testing::Message() << "start " << i << ", setter " << k);
                    Hostile<Curve> h(type);
                    starts[i](h.curve);
                    (((h.curve.*setters[k])(values), h.Draw()), ...);
                }
            };
            tryAll(doubles, 0.0, -1.0, kTiny, kNaN, kInfinity, kHuge, -kHuge);
            tryAll(ints, kMostInt, kLeastInt, 0, -3, 1, 2);
        }
    }
};

TEST(HostileSettings, AreDrawnAtOnce)
{
    using S = CSurface;
    Settings<S> {
        itSurfacePlot,
        { &S::SetContourSpacing, &S::SetContourRef, &S::SetContourScaleFac, &S::SetTransparency, &S::SetXMin,
            &S::SetXMax, &S::SetYMax, &S::SetTableXMin, &S::SetTableXStep, &S::SetTableYStep },
        { &S::SetContourMode, &S::SetContourLevelMode, &S::SetNumContourBands, &S::SetContourColourMode,
            &S::SetNumWireframeRows, &S::SetWireframeXFac, &S::SetWireframeYFac, &S::SetWireframeMode,
            &S::SetWireframeColourDescription, &S::SetColourDescription, &S::SetNumRows, &S::SetNumCols,
            &S::SetUseTextureMap, &S::SetUseRadialGrid },
        { [](S& s) { s.SetContoursOn(1), s.SetContourLevelMode(S::clSpacing); },
            [](S& s) { s.SetWireframeOn(1), s.SetCurveType(C3DCurve::ctPolar); },
            [](S& s) { s.SetTransparency(0.5), s.SetContoursOn(1), s.SetContourLevelMode(S::clArbitrary); },
            [](S& s) {
                s.SetForceNormalAveraging(0);
                s.SetUseValueTable(1);
                s.SetValueTable(test::MakeTable(3, 3, Height));
                s.SetContoursOn(1);
                s.SetContourMode(S::cmLines);
            } }
    }.Try();
    using Bars = C3DBarCurve;
    Settings<Bars> {
        it3DBarPlot,
        { &Bars::SetBarWidthScaleFacX, &Bars::SetBarWidthScaleFacY, &Bars::SetBaseline, &Bars::SetXMin, &Bars::SetYMax,
            &Bars::SetTableXStep, &Bars::SetTableYMin },
        { &Bars::SetNumRows, &Bars::SetNumCols, &Bars::SetColourDescription },
        { [](Bars& bars) { bars.SetAutoBaseline(0); } }
    }.Try();
    using Series = C3DLineArrayCurve;
    Settings<Series> {
        it3DLineArrayPlot, { &Series::SetThicknessScaleFac, &Series::SetBaseline, &Series::SetXMin, &Series::SetYMax },
        { &Series::SetLineColourDescription, &Series::SetStackColourDescription, &Series::SetLineStyle,
            &Series::SetNumCols, &Series::SetDrawStacks },
        { [](Series& series) { series.SetAutoBaseline(0); } }
    }.Try();
}

TEST(HostileData, AreDrawnAtOnceAsSurfaces)
{
    Hostile<CSurface> h(itSurfacePlot);
    h.curve.SetUseBoundary(1);
    h.curve.SetContoursOn(1);
    h.curve.SetContourMode(CSurface::cmBandsAndLines);
    for (auto const& height : kHeights) {
        for (int type = -1; type < 9; ++type) {
            SCOPED_TRACE(testing::Message() << &height - kHeights << ' ' << type);
            h.curve.SetCurveType(static_cast<C3DCurve::CurveType>(type));
            for (CSize const size : { CSize(1, 1), CSize(5, 1), CSize(2, 2), CSize(12, 9) }) {
                test::Fill(h.curve, size.cy, size.cx, height);
                h.Draw();
                // A boundary stays behind when a grid of another size follows.
                if (h.curve.GetSurfaceMesh()->HasNodes())
                    h.curve.GetSurfaceMesh()->SetBoundaryFlag(0, 0, 0);
                h.curve.SetCoarseMeshMode(3, 2);
                h.graph.SetCoarseMeshMode(1);
                h.Draw();
                h.curve.SetCoarseMeshMode(0, 0);
                h.graph.SetCoarseMeshMode(0);
            }
        }
    }
    h.curve.SetTableData(CTableData());
    h.Draw();
    // The same grid again is whole.
    h.curve.SetCurveType(C3DCurve::ctCartesian);
    test::Fill(h.curve, 9, 7, Height);
    h.Draw();
    EXPECT_EQ(h.curve.IsValid(), 1);
    EXPECT_EQ(h.curve.GetSurfaceMesh()->GetBoundaryFlag(0, 0), 1);
}

TEST(HostileData, AreDrawnAtOnceAsBarsAndSeries)
{
    for (auto const& height : kHeights) {
        for (CSize const size : { CSize(1, 1), CSize(5, 1), CSize(1, 4), CSize(12, 9) }) {
            Hostile<C3DBarCurve> bars(it3DBarPlot);
            test::Fill(bars.curve, size.cy, size.cx, height);
            bars.curve.SetColourDescription(1);
            for (int type = 5; type >= -1; --type) {
                bars.curve.SetCurveType(static_cast<C3DCurve::CurveType>(type));
                bars.curve.SetCoarseMeshMode(type == 0 ? 2 : 0, 2);
                bars.Draw();
            }
            Hostile<C3DLineArrayCurve> series(it3DLineArrayPlot);
            test::Fill(series.curve, size.cy, size.cx, height);
            series.curve.SetStackColourDescription(1);
            for (int const mode : { 0, 1 }) {
                series.curve.SetRowMode(mode);
                series.Draw();
            }
        }
    }
}

TEST(HostileData, AreDrawnAtOnceAsPoints)
{
    CDoubleArray values { 0, 1, kNaN, kInfinity, -kInfinity, kHuge, -kHuge, kHuge / 3, 5e-324, 0, 1, 1 };
    std::array<CDoubleArray*, 3> arrays { &values, &values, &values };
    Hostile<C3DIrregBarCurve> bars(it3DIrregBarPlot);
    Hostile<C3DIrregLineArrayCurve> series(it3DIrregLineArrayPlot);
    Hostile<C3DIrregularSurfaceCurve> surface(it3DIrregularSurfacePlot);
    Hostile<C3DLineCurve> line(it3DLinePlot);
    Hostile<C3DScatterCurve> scatter(it3DScatterPlot);
    line.curve.SetSymbols(1);
    scatter.curve.SetSticksOn(1);
    auto const drawAll = [&] { bars.Draw(), series.Draw(), surface.Draw(), line.Draw(), scatter.Draw(); };
    for (int n = 0; n <= values.GetSize(); ++n) {
        CDoubleArray some;
        for (int i = 0; i < n; ++i)
            some.Add(values[i]);
        std::array<CDoubleArray const*, 3> const points { &some, &values, &some };
        bars.curve.SetTableData(arrays.data(), n);
        surface.curve.SetTableData(points.data(), n);
        series.curve.SetPoints(some, values, some);
        for (C3DLineCurve* const curve : { &line.curve, static_cast<C3DLineCurve*>(&scatter.curve) }) {
            curve->SetNumPts(n);
            for (int i = 0; i < n; ++i)
                curve->GetPoints()[i] = { values[i], values[n - 1 - i], values[i] };
        }
        drawAll();
    }
    for (int k = -1; k < 6; ++k) {
        double const v = values[k + 2];
        auto const type = static_cast<C3DCurve::CurveType>(k);
        bars.curve.SetCurveType(type);
        series.curve.SetCurveType(type);
        surface.curve.SetCurveType(type);
        surface.curve.SetWireframeOn(k == 3);
        surface.curve.SetTransparency(v);
        for (C3DLineCurve* const curve : { &line.curve, static_cast<C3DLineCurve*>(&scatter.curve) }) {
            curve->SetCurveType(type);
            curve->SetThicknessScaleFac(v);
            curve->SetSymbolScaleFac(v);
            curve->SetLineMode(k);
            curve->SetLineStyle(k);
            curve->SetSymbolStyle(k);
            curve->SetSymbolAlignMode(k);
            curve->SetNumIntermediatePts(k == 5 ? kMostInt : k);
        }
        scatter.curve.SetStickLook(k);
        scatter.curve.SetStickScaleFac(v);
        scatter.curve.SetAutoBaseline(k);
        scatter.curve.SetBaseline(v);
        scatter.curve.SetVar1Use(static_cast<C3DScatterCurve::VariableUseType>(k));
        drawAll();
    }
}

TEST(HostileSurfaces, TakeOverNothingOfFilesThatAreNotThere)
{
    Hostile<CSurface> h(itSurfacePlot);
    EXPECT_EQ(h.curve.SetPathname("/nowhere/heights.dem"), 0);
    EXPECT_FALSE(Succeeds([&] { h.curve.SetPathname("/nowhere/heights.tvl"); }));
    h.curve.SetUseTextureMap(1);
    EXPECT_FALSE(Succeeds([&] { h.curve.SetTextureMapParams(CTextureMap()); }));
    EXPECT_EQ(h.curve.SetPathname("/nowhere/heights"), 0);
    h.Draw();
    EXPECT_EQ(h.curve.GetNumTableCols(), 7);
    EXPECT_EQ(h.curve.IsValid(), 1);
}

TEST(HostileSurfaces, LookTheSameAfterEveryKindOfInterruption)
{
    for (int const image : { 0, 1 }) {
        Hostile<CSurface> h(itSurfacePlot);
        std::vector<BYTE> const texels(64, 200);
        h.curve.GetTextureMap()->SetTexels({ 4, 4 }, texels);
        h.curve.SetUseTextureMap(image);
        COLORREF const colour = h.Draw();
        EXPECT_NE(colour, h.graph.GetBackgroundColour());
        {
            GLCanvas canvas;
            GLCanvas::Scope const scope(canvas);
            GLContext::Process().Lose();
        }
        EXPECT_EQ(h.Draw(), colour);
        for (CSize const size : { CSize(1, 1), CSize(16000, 1), CSize(1, 3000), CSize(2, 2) })
            h.Draw(size);
        EXPECT_EQ(h.Draw(), colour);
        // Embedded in another picture, and on a page.
        CDIB other(300, 300, 24);
        h.graph.Draw(other.GetDC(), { 100, 150, 260, 270 }, pmDirect);
        PageSetup setup;
        setup.format = PageFormat::Svg;
        CDC printer(MakePageSurface(setup));
        h.graph.Draw(&printer, { 0, 0, 600, 400 }, pmDirect);
        h.graph.Draw(&printer, { 0, 0, 600, 400 }, pmOffScreen);
        EXPECT_EQ(h.Draw(), colour);
    }
}

TEST(HostileAxes, HaveNoMoreTicksAndLinesThanCanBeTold)
{
    Hostile<CSurface> h(itSurfacePlot);
    C3DAxis& axis = *h.graph.GetAxes()[2];
    C3DGrid& grid = *h.graph.GetGrid();
    grid.SetOn(1);
    for (int const mode : { 0, 1, 2, 3, 4, 5, kLeastInt }) {
        for (double const value : { 0.0, kTiny, -1.0, kNaN, kInfinity, kHuge }) {
            for (int const count : { kMostInt, kLeastInt, 0 }) {
                axis.SetTickMode(static_cast<C3DAxis::TickMode>(mode));
                axis.SetTickDel(value);
                axis.SetTickMin(-value);
                axis.SetNumTicks(count);
                axis.SetNumMinorDivs(count);
                axis.SetLabelPrecision(count);
                CFontData font = *axis.GetLabelsFont();
                font.sizeFactor = value;
                axis.SetLabelsFont(font);
                grid.SetNumZLines(count);
                grid.SetNumMinorZDivs(count);
                grid.SetZLineMode(mode);
                grid.SetZLineDel(value);
                SCOPED_TRACE(testing::Message() << mode << ' ' << value << ' ' << count);
                h.Draw({ 60, 50 });
            }
        }
    }
}

} // namespace
} // namespace ombrel
