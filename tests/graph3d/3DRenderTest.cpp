#include "ombrel/graph3d/Polygon.h"
#include "ombrel/graph3d/Walls.h"
#include "ombrel/graph3d/render/ColourTexture.h"
#include "ombrel/graph3d/render/FaceBatch.h"
#include "ombrel/platform/framework/Error.h"
#include "ombrel/platform/gdi/PageSurface.h"
#include "ombrel/platform/opengl/OpenGL.h"
#include "tests/graph3d/DataPlot.h"
#include "tests/graph3d/Draw3D.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

namespace ombrel {
namespace {

using test::Draw3D;
using test::kSize;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

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
    return test::AddCurve<Squares>(graph, { 0.0, 0.0, 100.0 }, { 10.0, 20.0, 200.0 });
}

bool IsNearly(COLORREF colour, COLORREF expected) { return test::AreNear(colour, expected, 2); }

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
    EXPECT_PRED2(IsNearly, At(middle), RGB(100 + 5 / 2, (110 + 0) / 2, 15 / 2));
    std::swap(curve.squares[0], curve.squares[1]);
    DrawAnew();
    EXPECT_PRED2(IsNearly, At(middle), RGB(102, 55, 8));
    // What is opaque hides those behind it.
    curve.squares.push_back({ 0.0, RGB(0, 0, 200), 0.0 });
    DrawAnew();
    EXPECT_PRED2(IsNearly, At(middle), RGB(100, 0, 100));
    EXPECT_EQ(m_graph.GetTransparentPolygons().GetSize(), 0);
    // Anti-aliased, the same away from edges.
    m_graph.SetAntialiasMode(1);
    Draw();
    EXPECT_PRED2(IsNearly, At(middle), RGB(100, 0, 100));
    EXPECT_EQ(curve.rendered, 3 + 8);
    // Dragged coarsely, in one pass.
    m_graph.SetCoarseMeshMode(1);
    Draw();
    EXPECT_EQ(curve.rendered, 3 + 8 + 1);
}

/// Horizontal squares of one half of the box each, as transparent faces of a batch.
class BatchSquares : public test::DataCurve {
public:
    using DataCurve::DataCurve;
    void Render() override
    {
        DataCurve::Render();
        for (FaceBatch const& batch : batches)
            batch.AddTransparent(*Get3DGraph(), 0);
    }
    void Add(std::size_t batch, double z, COLORREF colour)
    {
        for (auto const& [x, y] : { std::pair(-0.3F, -0.3F), { 0.3F, -0.3F }, { 0.3F, 0.3F }, { -0.3F, 0.3F } })
            batches[batch].AddVertex(
                { { x, y, static_cast<float>(z) }, { 0.0F, 0.0F, 1.0F }, 0.0F, FaceVertex::Bytes(colour, 0.6) });
        auto const last = static_cast<std::uint32_t>(batches[batch].GetVertices().size());
        batches[batch].AddTriangle(last - 4, last - 3, last - 2);
        batches[batch].AddTriangle(last - 4, last - 2, last - 1);
    }
    std::array<FaceBatch, 2> batches;
};

TEST_F(Draw3D, PutsFacesOfAllBatchesAndPolygonsInOneOrder)
{
    Squares& polygons = AddSquares(m_graph);
    auto* const curve = &test::AddCurve<BatchSquares>(m_graph);
    m_graph.SetLightingOn(0);
    struct Layer {
        double z;
        COLORREF colour;
    };
    constexpr Layer kLayers[]
        = { { 0.3, RGB(200, 0, 0) }, { -0.2, RGB(0, 200, 0) }, { 0.1, RGB(0, 0, 200) }, { -0.4, RGB(200, 200, 0) } };
    auto const at = [&](CVertex const& v) {
        DrawAnew();
        return AtBox(v);
    };
    auto const blended = [](COLORREF below, COLORREF above) {
        auto const mixed = [](int b, int a) { return static_cast<BYTE>(b * 0.6 + a * 0.4 + 0.5); };
        return RGB(mixed(GetRValue(below), GetRValue(above)), mixed(GetGValue(below), GetGValue(above)),
            mixed(GetBValue(below), GetBValue(above)));
    };
    for (double const elevation : { 20.0, 160.0 }) {
        m_graph.SetViewingElevation(elevation);
        // The farthest first: from above by ascending height.
        COLORREF expected = test::kBackground;
        for (std::size_t const layer : elevation < 90.0 ? std::array { 3U, 1U, 2U, 0U } : std::array { 0U, 2U, 1U, 3U })
            expected = blended(expected, kLayers[layer].colour);
        for (int const antialias : { 0, 1 }) {
            m_graph.SetAntialiasMode(antialias);
            polygons.squares.clear();
            for (auto& batch : curve->batches)
                batch.Clear();
            // Bits of one batch lie on both sides of the other's.
            for (std::size_t i = 0; i < 4; ++i)
                curve->Add(i / 2, kLayers[i].z, kLayers[i].colour);
            EXPECT_PRED2(IsNearly, at({ 0.0, 0.0, 0.0 }), expected);
            curve->batches[0].Clear();
            for (std::size_t i = 0; i < 2; ++i)
                polygons.squares.push_back({ kLayers[i].z, kLayers[i].colour, 0.6 });
            EXPECT_PRED2(IsNearly, at({ 0.0, 0.0, 0.0 }), expected);
        }
    }
}

/// A wavy sheet, higher than the box at one corner, in the colours of a texture: as one batch or in parts.
class Sheet : public test::DataCurve {
public:
    using DataCurve::DataCurve;
    void Render() override
    {
        DataCurve::Render();
        colours.Bind(*Get3DGraph(),
            MakeTexels(0.0, 255.0, [](double v) { return RGB(static_cast<int>(v), 255 - static_cast<int>(v), 128); }));
        for (FaceBatch& batch : batches)
            batch.DrawFaces(*Get3DGraph(), colours.Name());
        ColourTexture::Unbind(*Get3DGraph());
    }
    void Make(std::size_t parts, COLORREF colour)
    {
        constexpr std::uint32_t kCells = 240;
        batches = std::vector<FaceBatch>(parts);
        for (std::uint32_t j = 0; j < kCells; ++j) {
            for (std::uint32_t i = 0; i < kCells; ++i) {
                FaceBatch& batch = batches[j * parts / kCells];
                std::array<std::uint32_t, 4> corners {};
                for (std::uint32_t c = 0; c < 4; ++c) {
                    FaceVertex vertex = Node(i + (c & 1U), j + (c >> 1U), kCells);
                    vertex.colour = FaceVertex::Bytes(colour);
                    corners[c] = batch.AddVertex(vertex);
                }
                batch.AddTriangle(corners[0], corners[1], corners[3]);
                batch.AddTriangle(corners[0], corners[3], corners[2]);
            }
        }
    }
    std::vector<FaceBatch> batches;
    ColourTexture colours;

private:
    static FaceVertex Node(std::uint32_t i, std::uint32_t j, std::uint32_t cells)
    {
        double const x = static_cast<double>(i) / cells - 0.5;
        double const y = static_cast<double>(j) / cells - 0.5;
        double const z = 0.3 * std::sin(9.0 * x) + y * (x + 0.8) * 0.6;
        double const dx = 2.7 * std::cos(9.0 * x) + y * 0.6;
        double const dy = (x + 0.8) * 0.6;
        double const length = std::sqrt(dx * dx + dy * dy + 1.0);
        FaceVertex vertex;
        vertex.place = FaceVertex::Floats(CVertex(x, y, z));
        vertex.normal = FaceVertex::Floats(CNormal(-dx / length, -dy / length, 1.0 / length));
        vertex.value = static_cast<float>(z + 0.5);
        return vertex;
    }
};

TEST_F(Draw3D, LightsManyTrianglesByAProgramLikeFewByFixedFunctions)
{
    auto* const sheet = &test::AddCurve<Sheet>(m_graph);
    struct View {
        double elevation;
        int lighting;
        int secondLight;
        double attenuation;
        double zoom;
        COLORREF colour = RGB(255, 255, 255);
    };
    View const views[] = { { 60.0, 1, 0, 1.0, 1.0 }, { 130.0, 1, 0, 1.0, 1.0 }, { 100.0, 1, 1, 2.5, 4.0 },
        { 40.0, 0, 0, 1.0, 1.0 }, { 60.0, 1, 1, 0.0, 1.0 }, { 60.0, 1, 0, 1.0, 1.0, RGB(255, 255, 100) } };
    for (View const& view : views) {
        m_graph.SetViewingElevation(view.elevation);
        m_graph.SetLightingOn(view.lighting);
        m_graph.SetLight2On(view.secondLight);
        m_graph.SetAttenuation(view.attenuation);
        m_graph.SetZoomFactor(view.zoom);
        std::array<std::vector<COLORREF>, 2> pictures;
        for (std::size_t const road : { 0U, 1U }) {
            sheet->Make(road == 0 ? 1 : 2, view.colour);
            DrawAnew();
            pictures[road] = Pixels();
        }
        int others = 0;
        int drawn = 0;
        for (std::size_t p = 0; p < pictures[0].size(); ++p) {
            others += !test::AreNear(pictures[0][p], pictures[1][p], 1);
            drawn += pictures[0][p] != test::kBackground;
        }
        EXPECT_EQ(others, 0) << view.elevation;
        EXPECT_GT(drawn, 5000) << view.elevation;
    }
}

TEST_F(Draw3D, CutsOffWhatLiesOutsideOfTheBox)
{
    Squares& curve = AddSquares(m_graph);
    m_graph.SetLightingOn(0);
    m_graph.SetViewingElevation(0.0);
    CPoint const middle(kSize.cx / 2, kSize.cy / 2);
    for (auto const& [z, isSeen] : { std::pair(0.501, true), std::pair(0.51, false), std::pair(-0.6, false) }) {
        curve.squares = { { z, RGB(0, 0, 200), 0.0 } };
        DrawAnew();
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
    auto const print = [this](PaintMode mode, CSize size = { 1200, 900 }) {
        PageSetup setup;
        setup.format = PageFormat::Svg;
        std::shared_ptr<PageSurface> const page = MakePageSurface(setup);
        m_graph.SetPrintScale(4.0);
        CDC printer(page);
        m_graph.Draw(&printer, { { 0, 0 }, size }, mode);
        EXPECT_EQ(m_graph.GetPrinterDC(), nullptr);
        EXPECT_EQ(m_graph.GetPrintScale(), 1.0);
        EXPECT_EQ(m_graph.GetModifiedFlag(), 1);
        return page->Finish();
    };
    std::string const direct = print(pmDirect);
    EXPECT_NE(direct.find("<image"), std::string::npos);
    // 2 × 1.5 inches of a page of 600 to the inch: an image of 300.
    EXPECT_EQ(PictureSize(direct), CSize(600, 450));
    // Of what is very long, or high, one whose longest side is 16384.
    EXPECT_EQ(PictureSize(print(pmDirect, { 40000, 400 })), CSize(16384, 164));
    EXPECT_EQ(PictureSize(print(pmDirect, { 400, 40000 })), CSize(164, 16384));
    EXPECT_NE(direct.find("Caption Text"), std::string::npos);
    std::string const stretched = print(pmOffScreen);
    EXPECT_NE(stretched.find("<image"), std::string::npos);
    EXPECT_EQ(stretched.find("Caption Text"), std::string::npos);
    // The memory of the printed picture is given back, and the next draw on a screen is a complete one.
    EXPECT_EQ(m_graph.GetDisplayDIB().GetSize(), CSize(1, 1));
    Draw();
    EXPECT_GT(Count(static_cast<COLORREF>(m_graph.GetWalls()->GetColour())), 1000);
}

/// A curve that notes what it is drawn with.
class Notes : public test::DataCurve {
public:
    using DataCurve::DataCurve;
    void Render() override
    {
        DataCurve::Render();
        C3DGraph& graph = *Get3DGraph();
        for (int kind = 0; kind < 3; ++kind)
            lineWidths[static_cast<std::size_t>(kind)] = graph.GetLineWidth(kind);
        textHeight = graph.GetTextHeight();
        gl::GetDoublev(GL_MODELVIEW_MATRIX, before.data());
        graph.SetView();
        gl::GetDoublev(GL_MODELVIEW_MATRIX, facing.data());
        graph.UnsetView();
        gl::GetDoublev(GL_MODELVIEW_MATRIX, after.data());
        graph.EnableLighting(1);
        isLit = gl::IsEnabled(GL_LIGHTING) != 0;
        for (std::size_t i = 0; i < 2; ++i)
            isLightOn[i] = gl::IsEnabled(static_cast<GLenum>(GL_LIGHT0 + i)) != 0;
    }

    std::array<double, 3> lineWidths {};
    int textHeight = 0;
    std::array<double, 16> before {};
    std::array<double, 16> facing {};
    std::array<double, 16> after {};
    bool isLit = false;
    std::array<bool, 2> isLightOn {};
};

TEST_F(Draw3D, FitsLinesAndTextsToWhatTheyAreShownOn)
{
    Notes& notes = test::AddCurve<Notes>(m_graph, {}, { 1.0, 1.0, 1.0 });
    Draw();
    EXPECT_EQ(notes.lineWidths, (std::array<double, 3> { 1.0, 1.0, 1.0 }));
    // 1/30 of the shorter side.
    EXPECT_EQ(notes.textHeight, 7);
    // An image of 600 × 450 pixels, 300 to the inch; contour lines are printed half as wide, and texts 3/4 as high.
    std::shared_ptr<PageSurface> const page = MakePageSurface(PageSetup());
    CDC printer(page);
    m_graph.Draw(&printer, { 0, 0, 1200, 900 }, pmDirect);
    EXPECT_EQ(notes.lineWidths, (std::array<double, 3> { 3.125, 3.125, 1.5625 }));
    EXPECT_EQ(notes.textHeight, 11);
    // A picture that is stretched to four times its size on a printer.
    m_graph.SetPrintScale(4.0);
    m_graph.Draw(&printer, { 0, 0, 1200, 900 }, pmOffScreen);
    EXPECT_EQ(notes.lineWidths, (std::array<double, 3> { 0.25, 0.25, 0.125 }));
    EXPECT_EQ(notes.textHeight, 23);
    // As on a screen.
    m_graph.SetPrintScale(4.0);
    m_graph.SetPrintingSuppressed(1);
    m_graph.Draw(&printer, { { 0, 0 }, kSize }, pmOffScreen);
    EXPECT_EQ(notes.lineWidths, (std::array<double, 3> { 1.0, 1.0, 1.0 }));
    EXPECT_EQ(notes.textHeight, 7);
    EXPECT_EQ(m_graph.GetPrintingSuppressed(), 0);
    // Outside of a draw nothing happens.
    m_graph.EnableClip(1);
    m_graph.SetState(0.0, 0.0);
    EXPECT_EQ(m_graph.SetView(), 1);
    EXPECT_EQ(m_graph.Resize(10, 10), 1);
}

TEST_F(Draw3D, TurnsWhatFacesTheViewerAndLightsWithTheLightsThatAreOn)
{
    Notes& notes = test::AddCurve<Notes>(m_graph, {}, { 1.0, 1.0, 1.0 });
    m_graph.SetLight1On(0);
    m_graph.SetLight2On(1);
    m_graph.SetViewingAzimuth(123.0 + 360.0);
    m_graph.SetViewingElevation(34.0);
    m_graph.SetXPos(0.25);
    Draw();
    // Only moved: what is drawn so shows its front.
    std::array<double, 16> const moved { 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0.25, 0, -6, 1 };
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_NEAR(notes.facing[i], moved[i], 1e-6) << i;
        EXPECT_NEAR(notes.after[i], notes.before[i], 1e-6) << i;
    }
    EXPECT_TRUE(notes.isLit);
    EXPECT_EQ(notes.isLightOn, (std::array<bool, 2> { false, true }));
    m_graph.SetLightingOn(0);
    Draw();
    EXPECT_FALSE(notes.isLit);
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
