#include "ombrel/drawing/DIB.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/gdi/PageSurface.h"
#include "ombrel/platform/host/Host.h"
#include "ombrel/platform/opengl/GLCanvas.h"
#include "tests/graph3d/SurfaceData.h"

#include <gtest/gtest.h>

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

/// A surface in a graph with everything, as hosts make it.
struct Hostile {
    Hostile()
        : surface(*static_cast<CSurface*>(graph.AddPlot(itSurfacePlot)->CreateCurve()))
    {
        test::Fill(surface, 9, 7, Height);
        surface.SetColourDescription(2);
        surface.SetColourmap("Spectrum");
        surface.SetContoursOn(1);
        surface.SetContourMode(CSurface::cmBandsAndLines);
        graph.AddColourKey({ 5, 5 }, surface.GetTag());
        SetMessageBoxFunction([](CString const&, CString const&, UINT) {});
    }
    ~Hostile() { SetMessageBoxFunction({}); }
    Hostile(Hostile const&) = delete;
    Hostile& operator=(Hostile const&) = delete;

    /// Seconds count for nothing beside loops that do not end.
    void Draw(CSize size = { 160, 120 })
    {
        auto const start = std::chrono::steady_clock::now();
        CDIB target(size.cx, size.cy, 24);
        graph.Draw(target.GetDC(), { { 0, 0 }, size }, pmOffScreen);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << size.cx << " x " << size.cy;
    }
    void DrawAnew()
    {
        surface.SetPlotDataModified(1);
        Draw();
    }

    C3DGraph graph { 1 };
    CSurface& surface;
};

TEST(HostileSurfaces, AreDrawnAtOnceWhateverTheSettings)
{
    constexpr void (CSurface::*kDoubleSettings[])(double) { &CSurface::SetContourSpacing, &CSurface::SetContourRef,
        &CSurface::SetContourScaleFac, &CSurface::SetTransparency, &CSurface::SetXMin, &CSurface::SetXMax,
        &CSurface::SetYMax, &CSurface::SetTableXMin, &CSurface::SetTableXStep, &CSurface::SetTableYStep };
    constexpr void (CSurface::*kIntSettings[])(int) { &CSurface::SetContourMode, &CSurface::SetContourLevelMode,
        &CSurface::SetNumContourBands, &CSurface::SetContourColourMode, &CSurface::SetNumWireframeRows,
        &CSurface::SetWireframeXFac, &CSurface::SetWireframeYFac, &CSurface::SetWireframeMode,
        &CSurface::SetWireframeColourDescription, &CSurface::SetColourDescription, &CSurface::SetNumRows,
        &CSurface::SetNumCols, &CSurface::SetUseTextureMap, &CSurface::SetUseRadialGrid };
    constexpr void (*kStarts[])(CSurface&) { [](CSurface& s) { s.SetContourLevelMode(CSurface::clSpacing); },
        [](CSurface& s) { s.SetWireframeOn(1), s.SetCurveType(C3DCurve::ctPolar); },
        [](CSurface& s) { s.SetTransparency(0.5), s.SetContourLevelMode(CSurface::clArbitrary); },
        [](CSurface& s) {
            s.SetForceNormalAveraging(0);
            s.SetUseValueTable(1);
            s.SetValueTable(test::MakeTable(3, 3, Height));
            s.SetContourMode(CSurface::cmLines);
        } };
    for (auto const& start : kStarts) {
        SCOPED_TRACE(&start - kStarts);
        for (auto const& set : kDoubleSettings) {
            SCOPED_TRACE(&set - kDoubleSettings);
            Hostile h;
            start(h.surface);
            for (double const value : { 0.0, -1.0, kTiny, kNaN, kInfinity, kHuge, -kHuge }) {
                (h.surface.*set)(value);
                h.DrawAnew();
            }
        }
        for (auto const& set : kIntSettings) {
            SCOPED_TRACE(&set - kIntSettings);
            Hostile h;
            start(h.surface);
            for (int const value : { kMostInt, kLeastInt, 0, -3, 1, 2 }) {
                (h.surface.*set)(value);
                h.DrawAnew();
            }
        }
    }
}

TEST(HostileSurfaces, AreDrawnAtOnceWhateverTheData)
{
    double (*const heights[])(int, int) { [](int, int) { return kGap; }, [](int, int) { return 7.0; },
        [](int c, int r) { return (c + r) % 2 ? kHuge / 2 : -kHuge; },
        [](int c, int r) { return c == r ? -kInfinity : c; }, [](int c, int r) { return (c + r) * 5e-324; } };
    Hostile h;
    h.surface.SetUseBoundary(1);
    for (auto const& height : heights) {
        for (int type = C3DCurve::ctCartesian - 1; type < 9; ++type) {
            SCOPED_TRACE(testing::Message() << &height - heights << ' ' << type);
            h.surface.SetCurveType(static_cast<C3DCurve::CurveType>(type));
            for (CSize const size : { CSize(1, 1), CSize(5, 1), CSize(2, 2), CSize(12, 9) }) {
                test::Fill(h.surface, size.cy, size.cx, height);
                h.DrawAnew();
                // A boundary stays behind when a grid of another size follows.
                if (h.surface.GetSurfaceMesh()->HasNodes())
                    h.surface.GetSurfaceMesh()->SetBoundaryFlag(0, 0, 0);
                h.surface.SetCoarseMeshMode(3, 2);
                h.graph.SetCoarseMeshMode(1);
                h.DrawAnew();
                h.surface.SetCoarseMeshMode(0, 0);
                h.graph.SetCoarseMeshMode(0);
            }
        }
    }
    h.surface.SetTableData(CTableData());
    h.DrawAnew();
    // The same grid again is whole.
    h.surface.SetCurveType(C3DCurve::ctCartesian);
    test::Fill(h.surface, 9, 7, Height);
    h.DrawAnew();
    EXPECT_EQ(h.surface.IsValid(), 1);
    EXPECT_EQ(h.surface.GetSurfaceMesh()->GetBoundaryFlag(0, 0), 1);
}

TEST(HostileSurfaces, TakeOverNothingOfFilesThatAreNotThere)
{
    Hostile h;
    EXPECT_EQ(h.surface.SetPathname("/nowhere/heights.dem"), 0);
    EXPECT_FALSE(Succeeds([&] { h.surface.SetPathname("/nowhere/heights.tvl"); }));
    h.surface.SetUseTextureMap(1);
    EXPECT_FALSE(Succeeds([&] { h.surface.SetTextureMapParams(CTextureMap()); }));
    EXPECT_EQ(h.surface.SetPathname("/nowhere/heights"), 0);
    h.DrawAnew();
    EXPECT_EQ(h.surface.GetNumTableCols(), 7);
    EXPECT_EQ(h.surface.IsValid(), 1);
}

COLORREF Middle(Hostile& h)
{
    CDIB target(160, 120, 24);
    h.graph.SetModifiedFlag(1);
    h.graph.Draw(target.GetDC(), { 0, 0, 160, 120 }, pmOffScreen);
    return target.GetDC()->GetPixel(80, 60);
}

TEST(HostileSurfaces, LookTheSameAfterEveryKindOfInterruption)
{
    for (int const image : { 0, 1 }) {
        Hostile h;
        std::vector<BYTE> const texels(64, 200);
        h.surface.GetTextureMap()->SetTexels({ 4, 4 }, texels);
        h.surface.SetUseTextureMap(image);
        COLORREF const colour = Middle(h);
        EXPECT_NE(colour, h.graph.GetBackgroundColour());
        {
            GLCanvas canvas;
            GLCanvas::Scope const scope(canvas);
            GLContext::Process().Lose();
        }
        EXPECT_EQ(Middle(h), colour);
        for (CSize const size : { CSize(1, 1), CSize(16000, 1), CSize(1, 3000), CSize(2, 2) })
            h.Draw(size);
        EXPECT_EQ(Middle(h), colour);
        // Embedded in another picture, and on a page.
        CDIB other(300, 300, 24);
        h.graph.Draw(other.GetDC(), { 100, 150, 260, 270 }, pmDirect);
        PageSetup setup;
        setup.format = PageFormat::Svg;
        CDC printer(MakePageSurface(setup));
        h.graph.Draw(&printer, { 0, 0, 600, 400 }, pmDirect);
        h.graph.Draw(&printer, { 0, 0, 600, 400 }, pmOffScreen);
        EXPECT_EQ(Middle(h), colour);
    }
}

TEST(HostileAxes, HaveNoMoreTicksAndLinesThanCanBeTold)
{
    Hostile h;
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
