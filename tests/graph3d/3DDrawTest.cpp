#include "ombrel/drawing/DIB.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/Polygon.h"
#include "ombrel/graph3d/Walls.h"
#include "ombrel/graph3d/view/Camera.h"
#include "ombrel/platform/framework/Error.h"
#include "ombrel/platform/gdi/PageSurface.h"
#include "ombrel/platform/opengl/OpenGL.h"
#include "tests/graph3d/DataPlot.h"

#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

constexpr CSize kSize { 240, 200 };
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// A graph of nothing but its background, whose curve a test fills in.
class Draw3D : public testing::Test {
protected:
    Draw3D()
        : m_graph(1)
        , m_target(kSize.cx, kSize.cy, 24)
    {
        m_graph.SetGraphFrameOn(0);
        m_graph.GetGrid()->SetOn(0);
        for (C3DAxis** axis = m_graph.GetAxes(); axis != m_graph.GetAxes() + 3; ++axis)
            (*axis)->SetOn(0);
        m_graph.SetBackgroundColour(RGB(10, 20, 30));
    }
    void Draw(CRect const& rect = { { 0, 0 }, kSize }) { m_graph.Draw(m_target.GetDC(), rect, pmOffScreen); }
    COLORREF At(CPoint p) const { return m_target.GetDC()->GetPixel(p.x, p.y); }
    /// Where a point of the data box lies in a picture of the whole target.
    CPoint Place(CVertex const& v) const
    {
        ViewSettings settings;
        settings.azimuth = m_graph.GetViewingAzimuth();
        settings.elevation = m_graph.GetViewingElevation();
        settings.aspectRatio = static_cast<double>(kSize.cx) / kSize.cy;
        settings.viewportSize = kSize;
        CVertex const window = *Camera(settings).Project(v);
        return { static_cast<int>(window.X()), static_cast<int>(kSize.cy - window.Y()) };
    }
    /// How many pixels of the target have the colour.
    int Count(COLORREF colour) const
    {
        int count = 0;
        for (int y = 0; y < kSize.cy; ++y) {
            for (int x = 0; x < kSize.cx; ++x)
                count += At({ x, y }) == colour;
        }
        return count;
    }

    C3DGraph m_graph;
    CDIB m_target;
};

TEST_F(Draw3D, ShowsTheThreeWallsAtTheBackInTheirOwnColour)
{
    struct Case {
        double azimuth, elevation;
        CVertex x, y, z;
    };
    Case const cases[] = {
        { 330.0, 70.0, { -0.5, 0, 0 }, { 0, 0.5, 0 }, { 0, 0, -0.5 } },
        { 60.0, 45.0, { -0.5, 0, 0 }, { 0, -0.5, 0 }, { 0, 0, -0.5 } },
        { 150.0, 110.0, { 0.5, 0, 0 }, { 0, -0.5, 0 }, { 0, 0, 0.5 } },
        { 240.0, 20.0, { 0.5, 0, 0 }, { 0, 0.5, 0 }, { 0, 0, -0.5 } },
    };
    m_graph.GetWalls()->SetOn(1);
    COLORREF const colour = RGB(215, 100, 50);
    m_graph.GetWalls()->SetColour(colour);
    for (Case const& each : cases) {
        m_graph.SetViewingAzimuth(each.azimuth);
        m_graph.SetViewingElevation(each.elevation);
        Draw();
        int const all = Count(colour);
        EXPECT_EQ(At(Place(each.x)), colour) << each.azimuth;
        EXPECT_EQ(At(Place(each.y)), colour) << each.azimuth;
        EXPECT_EQ(At(Place(each.z)), colour) << each.azimuth;
        EXPECT_EQ(At({ 1, 1 }), RGB(10, 20, 30)) << each.azimuth;
        // Each wall by its own flag.
        m_graph.GetWalls()->SetXWallOn(0);
        Draw();
        EXPECT_EQ(At(Place(each.x)), RGB(10, 20, 30)) << each.azimuth;
        EXPECT_LT(Count(colour), all);
        EXPECT_EQ(At(Place(each.z)), colour) << each.azimuth;
        m_graph.GetWalls()->SetXWallOn(1);
    }
    // Lit, the floor has another colour than in its own light.
    m_graph.GetWalls()->SetLit(1);
    Draw();
    EXPECT_NE(At(Place(cases[3].z)), colour);
}

TEST_F(Draw3D, DrawsGridLinesWhereTheirSettingsSay)
{
    C3DGrid& grid = *m_graph.GetGrid();
    COLORREF const colour = RGB(255, 0, 0);
    grid.SetOn(1);
    grid.SetColour(colour);
    grid.SetXPLaneOn(0);
    grid.SetYPLaneOn(0);
    m_graph.SetViewingElevation(0.0);
    m_graph.SetViewingAzimuth(270.0);
    auto const isLine = [&](double x, double y) {
        CPoint const p = Place({ x, y, -0.5 });
        int hits = 0;
        for (int dx = -1; dx <= 1; ++dx) {
            for (int dy = -1; dy <= 1; ++dy)
                hits += At({ p.x + dx, p.y + dy }) == colour;
        }
        return hits > 0;
    };
    // Straight down on the floor: three lines across x, and two across y.
    grid.SetNumXLines(3);
    grid.SetNumYLines(2);
    Draw();
    for (double const x : { -0.5, 0.0, 0.5 })
        EXPECT_TRUE(isLine(x, 0.25)) << x;
    EXPECT_TRUE(isLine(0.25, -0.5));
    EXPECT_FALSE(isLine(0.25, 0.0));
    EXPECT_FALSE(isLine(-0.25, 0.25));
    // Divided once more.
    grid.SetNumMinorXDivs(2);
    Draw();
    EXPECT_TRUE(isLine(-0.25, 0.25));
    // At steps of data units, from a value in the middle in both directions; the borders stay. x runs from −10 to 10.
    grid.SetXLineMode(GridLines3D::glStep);
    grid.SetNumMinorXDivs(1);
    grid.SetXLineMin(2.0);
    grid.SetXLineDel(6.0);
    Draw();
    for (double const x : { -0.5, -0.2, 0.1, 0.4, 0.5 })
        EXPECT_TRUE(isLine(x, 0.25)) << x;
    EXPECT_FALSE(isLine(0.25, 0.25));
    // Settings that would have no end.
    grid.SetXLineDel(0.0);
    Draw();
    EXPECT_TRUE(isLine(0.5, 0.25));
    EXPECT_FALSE(isLine(0.1, 0.25));
    grid.SetNumYLines(std::numeric_limits<int>::max());
    grid.SetNumMinorYDivs(std::numeric_limits<int>::max());
    Draw();
    EXPECT_TRUE(isLine(0.5, 0.25));
}

TEST_F(Draw3D, KeepsToTheGraphsRectangle)
{
    m_graph.GetWalls()->SetOn(1);
    m_graph.SetZoomFactor(3.0);
    auto const colour = static_cast<COLORREF>(m_graph.GetWalls()->GetColour());
    Draw();
    EXPECT_EQ(Count(colour), kSize.cx * kSize.cy);
    CRect const part(40, 30, 140, 90);
    m_graph.SetGraphRect(part);
    Draw();
    for (int y = 0; y < kSize.cy; ++y) {
        for (int x = 0; x < kSize.cx; ++x)
            ASSERT_EQ(At({ x, y }), part.PtInRect({ x, y }) ? colour : RGB(10, 20, 30)) << x << "," << y;
    }
    EXPECT_DOUBLE_EQ(m_graph.GetAspectRatio(), 100.0 / 60.0);
    EXPECT_EQ(m_graph.GetViewportRect(), CRect(40, 110, 140, 170));
    EXPECT_EQ(m_graph.ViewportToWindow({ 7, 110 }), CPoint(7, 90));
}

TEST_F(Draw3D, LeavesTheBoxToTheDataAndPutsTextOutsideInEveryView)
{
    for (int i = 0; i < 3; ++i) {
        C3DAxis& axis = *m_graph.GetAxes()[i];
        axis.SetOn(1);
        axis.SetColour(RGB(10, 20, 30));
        axis.SetLabelsColour(RGB(255, 0, 0));
        axis.SetTitleColour(RGB(0, 255, 0));
        axis.SetTitle("A rather long title");
        axis.SetLabelPrecision(12);
        axis.SetRange(-10.000123, 10.000456);
    }
    m_graph.GetWalls()->SetOn(1);
    COLORREF const wall = RGB(100, 100, 100);
    m_graph.GetWalls()->SetColour(wall);
    for (double azimuth = 10.0; azimuth < 360.0; azimuth += 35.0) {
        for (double const elevation : { 20.0, 70.0, 90.0, 110.0 }) {
            m_graph.SetViewingAzimuth(azimuth);
            m_graph.SetViewingElevation(elevation);
            for (int i = 0; i < 3; ++i)
                m_graph.GetAxes()[i]->SetOn(0);
            Draw();
            std::vector<CPoint> walls;
            for (int y = 0; y < kSize.cy; ++y) {
                for (int x = 0; x < kSize.cx; ++x) {
                    if (At({ x, y }) == wall)
                        walls.push_back({ x, y });
                }
            }
            ASSERT_GT(walls.size(), 1000U);
            for (int i = 0; i < 3; ++i)
                m_graph.GetAxes()[i]->SetOn(1);
            Draw();
            int covered = 0;
            for (CPoint const p : walls) {
                COLORREF const colour = At(p);
                // A touch of text is one that has more red, or green, than the others.
                covered += colour != wall && (GetRValue(colour) > 110 || GetGValue(colour) > 110);
            }
            EXPECT_EQ(covered, 0) << azimuth << " " << elevation;
        }
    }
}

TEST_F(Draw3D, LabelsTicksWithNumbersTextsOrBoth)
{
    C3DAxis& axis = *m_graph.GetAxes()[0];
    axis.SetOn(1);
    axis.SetTickMode(C3DAxis::tmDivisionsArbitrary);
    axis.SetNumTicks(3);
    axis.SetNumMinorDivs(2);
    axis.SetArbTickPosns({ 5.0, -2.5 });
    axis.SetLabels({ "a", "b", "c" });
    struct Case {
        int mode;
        CStringArray texts;
    };
    Case const cases[] = {
        { C3DAxis::lmNumbers, { "-10", "-2.5", "0", "5", "10" } },
        // Labels that run out leave the other ticks without one.
        { C3DAxis::lmTexts, { "a", "b", "c", "", "" } },
        { C3DAxis::lmNumbersAndTexts, { "-10", "a", "0", "b", "10" } },
    };
    for (Case const& each : cases) {
        axis.SetLabelMode(each.mode);
        Draw();
        EXPECT_EQ(axis.GetLabelTexts(), each.texts) << each.mode;
    }
    EXPECT_EQ(axis.GetNotchKinds(), (CDWordArray { 0, 1, 0, 1, 0 }));
    EXPECT_EQ(axis.GetNotchValues(), (CDoubleArray { -10.0, -2.5, 0.0, 5.0, 10.0 }));
    // In the first view of a graph the x axis runs along y = −1/2 on the floor.
    ASSERT_EQ(axis.GetNotchPositions().GetSize(), 5);
    EXPECT_EQ(*axis.GetNotchPositions()[1], CVertex(-0.125, -0.5, -0.5));
    ASSERT_EQ(axis.GetMinorNotchPositions().GetSize(), 4);
    EXPECT_EQ(*axis.GetMinorNotchPositions()[3], CVertex(0.25, -0.5, -0.5));
    // Labels lie outside of the axis and below it: by a tick and half the text's height, at least.
    for (int i = 0; i < 5; ++i) {
        CVertex const offset = *axis.GetLabelPositions()[i] - *axis.GetNotchPositions()[i];
        EXPECT_EQ(offset.X(), 0.0);
        EXPECT_LT(offset.Y(), -0.03);
        EXPECT_LT(offset.Z(), -0.02);
    }
}

/// A curve of horizontal squares, opaque or to be drawn as transparent polygons.
class Squares : public test::DataCurve {
public:
    using DataCurve::DataCurve;
    struct Square {
        double z;
        COLORREF colour;
        double transparency;
    };
    void Render() override
    {
        DataCurve::Render();
        for (Square const& square : squares) {
            double const h = 0.3;
            CVertex const corners[4]
                = { { -h, -h, square.z }, { h, -h, square.z }, { h, h, square.z }, { -h, h, square.z } };
            if (square.transparency > 0.0) {
                auto polygon = std::make_unique<CPolygon>();
                for (CVertex const& corner : corners)
                    polygon->AddVertex(corner, 1, square.colour, square.transparency);
                Get3DGraph()->AddTransparentPolygon(std::move(polygon));
                continue;
            }
            gl::Color3ub(GetRValue(square.colour), GetGValue(square.colour), GetBValue(square.colour));
            gl::Begin(GL_QUADS);
            gl::Normal3d(0.0, 0.0, 1.0);
            for (CVertex const& corner : corners)
                gl::Vertex3dv(corner.GetData());
            gl::End();
        }
    }
    std::vector<Square> squares;
};

Squares& AddSquares(C3DGraph& graph)
{
    auto* const plot = new test::DataPlot(&graph);
    auto* const curve = new Squares(plot, 1);
    plot->curve = curve;
    curve->min = { 0.0, 0.0, 100.0 };
    curve->max = { 10.0, 20.0, 200.0 };
    curve->SetValid(1);
    graph.GetPlotArray()->Add(plot);
    plot->AddComponent(curve);
    return *curve;
}

void ExpectNear(COLORREF colour, COLORREF expected)
{
    EXPECT_NEAR(GetRValue(colour), GetRValue(expected), 2);
    EXPECT_NEAR(GetGValue(colour), GetGValue(expected), 2);
    EXPECT_NEAR(GetBValue(colour), GetBValue(expected), 2);
}

TEST_F(Draw3D, DrawsTransparentPolygonsFromTheFarthestToTheNearest)
{
    Squares& curve = AddSquares(m_graph);
    m_graph.SetLightingOn(0);
    m_graph.SetViewingElevation(0.0);
    COLORREF const red = RGB(200, 0, 0);
    COLORREF const green = RGB(0, 200, 0);
    curve.squares = { { 0.2, red, 0.5 }, { -0.2, green, 0.5 } };
    Draw();
    CPoint const middle(kSize.cx / 2, kSize.cy / 2);
    // Half of green over the background, then half of red over that, whichever comes first.
    ExpectNear(At(middle), RGB(100 + 5 / 2, (110 + 0) / 2, 15 / 2));
    std::swap(curve.squares[0], curve.squares[1]);
    m_graph.SetModifiedFlag(1);
    Draw();
    ExpectNear(At(middle), RGB(102, 55, 8));
    // What is opaque hides those behind it.
    curve.squares.push_back({ 0.0, RGB(0, 0, 200), 0.0 });
    m_graph.SetModifiedFlag(1);
    Draw();
    ExpectNear(At(middle), RGB(100, 0, 100));
    EXPECT_EQ(m_graph.GetTransparentPolygons().GetSize(), 0);
    // Anti-aliased, the same away from edges.
    m_graph.SetAntialiasMode(1);
    Draw();
    ExpectNear(At(middle), RGB(100, 0, 100));
    EXPECT_EQ(curve.rendered, 3 + 8);
    // Dragged coarsely, in one pass.
    m_graph.SetCoarseMeshMode(1);
    Draw();
    EXPECT_EQ(curve.rendered, 3 + 8 + 1);
}

TEST_F(Draw3D, CutsOffWhatLiesOutsideOfTheBox)
{
    Squares& curve = AddSquares(m_graph);
    m_graph.SetLightingOn(0);
    m_graph.SetViewingElevation(0.0);
    CPoint const middle(kSize.cx / 2, kSize.cy / 2);
    for (auto const& [z, isSeen] : { std::pair(0.501, true), std::pair(0.51, false), std::pair(-0.6, false) }) {
        curve.squares = { { z, RGB(0, 0, 200), 0.0 } };
        m_graph.SetModifiedFlag(1);
        Draw();
        EXPECT_EQ(At(middle) == RGB(0, 0, 200), isSeen) << z;
    }
}

TEST_F(Draw3D, TellsTheDataUnitsUnderAPixel)
{
    Squares& curve = AddSquares(m_graph);
    curve.squares = { { 0.1, RGB(0, 0, 200), 0.0 } };
    double x = 1.5;
    double y = 2.5;
    double z = 3.5;
    EXPECT_EQ(m_graph.WindowToUnits(0, 0, x, y, z), 0) << "before the first draw";
    Draw();
    for (CVertex const& point : { CVertex(0.0, 0.0, 0.1), CVertex(0.2, -0.15, 0.1), CVertex(-0.25, 0.25, 0.1) }) {
        CPoint const p = Place(point);
        ASSERT_EQ(m_graph.WindowToUnits(p.x, p.y, x, y, z), 1);
        // Two pixels, at about 100 to the side of the box, on a square that is seen three times as wide as deep.
        EXPECT_NEAR(x, (point.X() + 0.5) * 10.0, 0.5);
        EXPECT_NEAR(y, (point.Y() + 0.5) * 20.0, 1.0);
        EXPECT_NEAR(z, 160.0, 0.5);
    }
    x = 1.5;
    for (CPoint const p :
        { CPoint(2, 2), CPoint(-1, 50), CPoint(kSize.cx, 50), CPoint(50, 0), CPoint(50, kSize.cy + 1) })
        EXPECT_EQ(m_graph.WindowToUnits(p.x, p.y, x, y, z), 0) << p.x << "," << p.y;
    EXPECT_EQ(x, 1.5);
}

TEST_F(Draw3D, LandsInItsRectangleAndEmbeddedInTheTarget)
{
    m_graph.GetWalls()->SetOn(1);
    for (int i = 0; i < 3; ++i)
        m_graph.GetAxes()[i]->SetOn(1);
    m_graph.AddCaption(0.1, 0.1);
    m_graph.SetGraphFrameOn(1);
    auto const picture = [this](CPoint corner, CSize size, auto draw) {
        m_target.GetDC()->FillSolidRect({ { 0, 0 }, kSize }, RGB(255, 0, 255));
        draw();
        std::vector<COLORREF> pixels;
        for (int y = 0; y < size.cy; ++y) {
            for (int x = 0; x < size.cx; ++x)
                pixels.push_back(At({ corner.x + x, corner.y + y }));
        }
        EXPECT_EQ(At({ corner.x + size.cx, corner.y + size.cy }), RGB(255, 0, 255));
        return pixels;
    };
    CSize const size(150, 120);
    auto const first = picture({ 0, 0 }, size, [&] { Draw({ { 0, 0 }, size }); });
    EXPECT_EQ(first, picture({ 60, 50 }, size, [&] { Draw({ { 60, 50 }, size }); })) << "away from the origin";
    m_graph.SetModifiedFlag(1);
    EXPECT_EQ(first, picture({ 60, 50 }, size, [&] { Draw({ { 60, 50 }, size }); })) << "afresh";
    CRect const window = m_graph.GetWindowRect();
    CRect const rect = m_graph.GetGraphRect();
    auto const embedded = picture({ 30, 40 }, size, [&] {
        m_graph.DrawEmbedded(m_target.GetDC(), { { 30, 40 }, size }, { { 30, 40 }, size });
    });
    EXPECT_EQ(first, embedded);
    EXPECT_EQ(m_graph.GetWindowRect(), window);
    EXPECT_EQ(m_graph.GetGraphRect(), rect);
    // What lies under a pixel is still that of the graph's own window.
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    EXPECT_EQ(m_graph.WindowToUnits(size.cx / 2, size.cy / 2, x, y, z), 1);
}

TEST_F(Draw3D, MakesTheFirstPictureOfNewDataInItsProportions)
{
    Squares& curve = AddSquares(m_graph);
    curve.SetPlotDataModified(1);
    m_graph.SetAutoscaleMode(1);
    curve.max = { 10.0, 20.0, 140.0 };
    Draw();
    double sx = 0.0;
    double sy = 0.0;
    double sz = 0.0;
    m_graph.GetAxes()[0]->GetScaleFacs(sx, sy, sz);
    EXPECT_EQ(sx, 0.25);
    EXPECT_EQ(sy, 0.5);
    EXPECT_EQ(sz, 1.0);
    EXPECT_EQ(curve.refreshed, 1);
    EXPECT_EQ(curve.rendered, 1);
    // Seen along y the box is as wide as x and as high as z.
    m_graph.SetViewingAzimuth(270.0);
    m_graph.SetViewingElevation(90.0);
    EXPECT_DOUBLE_EQ(m_graph.GetGraphAspectRatio(), 12.0 / 50.0);
    // A new view alone refreshes nothing, and an unchanged graph draws nothing.
    Draw();
    EXPECT_EQ(curve.refreshed, 1);
    EXPECT_EQ(curve.rendered, 2);
    Draw();
    EXPECT_EQ(curve.rendered, 2);
}

/// Of the one that stands in the text of a page as PNG in base 64: from the first 24 bytes, 32 letters.
CSize PictureSize(std::string const& svg)
{
    std::string_view const start = "data:image/png;base64,";
    std::size_t const at = svg.find(start);
    if (at == std::string::npos)
        return {};
    std::string_view const letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    for (std::size_t i = at + start.size(); bytes.size() < 24; i += 4) {
        unsigned bits = 0;
        for (std::size_t k = 0; k < 4; ++k)
            bits = bits << 6 | static_cast<unsigned>(letters.find(svg[i + k]));
        for (int shift = 16; shift >= 0; shift -= 8)
            bytes.push_back(static_cast<char>(bits >> shift & 255));
    }
    auto const number = [&bytes](std::size_t i) {
        return static_cast<int>(static_cast<unsigned char>(bytes[i]) << 8 | static_cast<unsigned char>(bytes[i + 1]));
    };
    return { number(18), number(22) };
}

TEST_F(Draw3D, PrintsOffScreenInThePrintRectangleAndDirectlyAsAnImageUnderText)
{
    m_graph.GetWalls()->SetOn(1);
    m_graph.AddCaption(0.1, 0.1);
    auto const print = [this](PaintMode mode) {
        PageSetup setup;
        setup.format = PageFormat::Svg;
        std::shared_ptr<PageSurface> const page = MakePageSurface(setup);
        m_graph.SetPrintScale(4.0);
        CDC printer(page);
        m_graph.Draw(&printer, { 0, 0, 1200, 900 }, mode);
        EXPECT_EQ(m_graph.GetPrinterDC(), nullptr);
        EXPECT_EQ(m_graph.GetPrintScale(), 1.0);
        EXPECT_EQ(m_graph.GetModifiedFlag(), 1);
        return page->Finish();
    };
    std::string const direct = print(pmDirect);
    EXPECT_NE(direct.find("<image"), std::string::npos);
    // 2 × 1.5 inches of a page of 600 to the inch: an image of 300.
    EXPECT_EQ(PictureSize(direct), CSize(600, 450));
    EXPECT_NE(direct.find("Caption Text"), std::string::npos);
    std::string const stretched = print(pmOffScreen);
    EXPECT_NE(stretched.find("<image"), std::string::npos);
    EXPECT_EQ(stretched.find("Caption Text"), std::string::npos);
    // The memory of the printed picture is given back, and the next draw on a screen is a complete one.
    EXPECT_EQ(m_graph.GetDisplayDIB().GetSize(), CSize(1, 1));
    Draw();
    EXPECT_GT(Count(static_cast<COLORREF>(m_graph.GetWalls()->GetColour())), 1000);
}

TEST_F(Draw3D, DrawsSomethingWhateverTheSettings)
{
    for (int i = 0; i < 3; ++i)
        m_graph.GetAxes()[i]->SetOn(1);
    m_graph.GetGrid()->SetOn(1);
    m_graph.GetWalls()->SetOn(1);
    double const values[] = { 0.0, -1.0, 1.0, kNaN, 1e300, -1e300, std::numeric_limits<double>::infinity(), 1e-300 };
    for (double const value : values) {
        m_graph.SetPerspective(value);
        m_graph.SetZoomFactor(value);
        m_graph.SetXPos(value);
        m_graph.SetViewingAzimuth(value);
        m_graph.SetViewingElevation(value);
        m_graph.SetLightDistance(value);
        m_graph.SetLight1Pos(value, value);
        m_graph.SetAttenuation(value);
        C3DAxis& axis = *m_graph.GetAxes()[0];
        axis.SetRangeMode(C3DAxis::rmFixed);
        axis.SetRange(value, -value);
        axis.SetScaleFacs(value, 1.0, value);
        axis.SetXYNotchScaleFacs(value, value);
        axis.SetTickMode(C3DAxis::tmStepArbitrary);
        axis.SetArbTickPosns({ value, 1.0 });
        m_graph.GetGrid()->SetXLineDel(value);
        m_graph.GetGrid()->SetXLineMode(GridLines3D::glStep);
        Draw();
        Draw({ 0, 0, 1, 1 });
        Draw({ 5, 5, 6, 300 });
        m_graph.SetAutoscaleMode(m_graph.GetAutoscaleMode() ? 0 : 1);
        double x = 0.0;
        m_graph.WindowToUnits(0, 1, x, x, x);
        EXPECT_GE(m_graph.GetGraphAspectRatio(), 0.0);
    }
    Draw({ 0, 0, 0, 50 });
    // A picture that no driver has room for tells so, and the next one is drawn.
    EXPECT_THROW(Draw({ 0, 0, CDIB::kMaxSide, 1 }), Error);
    m_graph.Draw(nullptr, { 0, 0, 50, 40 }, pmOffScreen);
    EXPECT_EQ(m_graph.GetDisplayDIB().GetSize(), CSize(50, 40));
}

} // namespace
} // namespace ombrel
