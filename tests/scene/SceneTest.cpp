#include "ombrel/scene/Scene.h"
#include "ombrel/annotation/ColourKeyArray.h"
#include "ombrel/chart/CurvesCsv.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DLineCurve.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/scene/ContourMap.h"
#include "ombrel/scene/GraphPicture.h"
#include "ombrel/scene/SceneView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <thread>

namespace ombrel {
namespace {

using testing::HasSubstr;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t kRows = 3;
constexpr std::size_t kColumns = 4;
/// Row by row; 2 to 9.
std::vector<double> const kHeights { 2, 3, 4, 5, 3, 6, 9, 4, 4, 4, 5, 2 };
/// Points that form no grid: x is 0 to 4, y 0 to 3, z 1 to 7.
std::vector<double> const kX { 0, 4, 1, 3, 2, 0.5 };
std::vector<double> const kY { 0, 1, 3, 2, 0.5, 2 };
std::vector<double> const kZ { 1, 2, 7, 4, 3, 5 };
std::vector<std::string> const kWords { "a", "b", "c", "d", "e", "f" };
/// A cell of 2 x 1 x 1 with "heat" at its nodes.
constexpr char const* kMesh = "node_variables: heat\nnodeset\ntitle: a\nnodes\n8\n0 0 0 0\n2 0 0 1\n0 1 0 2\n2 1 0 3\n"
                              "0 0 1 4\n2 0 1 5\n0 1 1 6\n2 1 1 7\nendobject\npatch\nelement_type: block\n"
                              "use_nodeset: a\nelements\n1\n1 2 4 3 5 6 8 7\nendobject\n";

std::string MeshFile()
{
    std::string const path = (std::filesystem::temp_directory_path() / "ombrel_scene_test.tvm").string();
    std::ofstream(path) << kMesh;
    return path;
}

constexpr int kWidth = 160;
constexpr int kHeight = 120;

/// A small picture, or a small page.
PictureForm Form(PictureFormat format)
{
    PictureForm form;
    form.format = format;
    form.size = { kWidth, kHeight };
    form.page = { 40, 30 };
    return form;
}

/// What the drawing shows, a colour a pixel.
std::vector<std::uint32_t> Pixels(DrawnPicture& drawing, int width = kWidth, int height = kHeight)
{
    CDIB bitmap(width, height, 24);
    drawing.Draw(*bitmap.GetDC(), CRect(0, 0, width, height));
    Raster const& raster = *bitmap.GetBitmap().GetRaster();
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            pixels.push_back(raster.Row(y)[x] & 0xFFFFFFU);
    }
    return pixels;
}

/// Pixels with a hue: axes, labels and ground are grey.
int CountColoured(std::vector<std::uint32_t> const& pixels)
{
    int count = 0;
    for (std::uint32_t const p : pixels) {
        auto const [low, high] = std::minmax({ p & 0xFFU, (p >> 8) & 0xFFU, p >> 16 });
        count += high - low > 40U;
    }
    return count;
}

std::string RangesOf(Scene& scene)
{
    std::string text;
    for (int i = 0; i < 3; ++i) {
        C3DAxis const& axis = *scene.Graph().GetAxes()[i];
        text += NumberText(axis.GetMin()) + ":" + NumberText(axis.GetMax()) + " ";
    }
    return text;
}

using Build = std::function<void(Scene&)>;

TEST(Scenes, DrawEveryKindInTheBoxThatItsDataSpans)
{
    struct Case {
        char const* name;
        Build build;
        std::string ranges;
    };
    // Marks have room of 3 % of the ground and 6 % of the height round them; bars and stacks stand on 0.
    std::string const marks = "-0.12:4.12 -0.09:3.09 0.64:7.36 ";
    Case const cases[] {
        { "surface", [](Scene& s) { s.Surface(kHeights, kRows, kColumns); }, "0:3 0:2 2:9 " },
        { "placed", [](Scene& s) { s.Surface(kHeights, kRows, kColumns).XRange(10, 40).YRange(-1, 1); },
            "10:40 -1:1 2:9 " },
        { "triangles", [](Scene& s) { s.Surface(kX, kY, kZ); }, "0:4 0:3 1:7 " },
        { "net", [](Scene& s) { s.Wireframe(kHeights, kRows, kColumns); }, "0:3 0:2 2:9 " },
        { "bars", [](Scene& s) { s.Bars(kHeights, kRows, kColumns); }, "-0.5:3.5 -0.5:2.5 0:9 " },
        { "series", [](Scene& s) { s.Series(kHeights, kRows, kColumns); }, "0:3 0:2 0:9 " },
        { "series of points", [](Scene& s) { s.Series(kX, kY, kZ).Along(AlongChoice::Y).Baseline(-1); },
            "0:4 0:3 -1:7 " },
        { "points", [](Scene& s) { s.Points(kX, kY, kZ).Colours(kZ).Sizes(kX).Sticks(); }, marks },
        { "line", [](Scene& s) { s.Line(kX, kY, kZ).Width(3); }, marks },
        { "tubes", [](Scene& s) { s.Line(kX, kY, kZ).Tubes().Symbols(SymbolChoice::Cube); }, marks },
        { "texts", [](Scene& s) { s.Texts(kX, kY, kZ, kWords).Symbols(SymbolChoice::Cone); }, marks },
        { "mesh", [](Scene& s) { s.Mesh(MeshFile()).Variable("HEAT"); }, "0:2 0:1 0:1 " },
        { "two",
            [](Scene& s) {
                s.Surface(kHeights, kRows, kColumns);
                s.Line(kX, kY, kZ);
            },
            "-0.12:4.12 -0.09:3.09 0.52:9.48 " },
        { "fixed",
            [](Scene& s) {
                s.Points(kX, kY, kZ);
                s.X().Range(-10, 10);
                s.Z().Max(20);
            },
            "-10:10 -0.09:3.09 0.64:20 " },
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        Scene scene;
        c.build(scene);
        std::vector<std::uint32_t> const pixels = Pixels(scene);
        EXPECT_EQ(RangesOf(scene), c.ranges);
        EXPECT_GT(CountColoured(pixels), 20);
        // The same picture when it is drawn again, also after another size.
        Pixels(scene, 90, 200);
        EXPECT_TRUE(Pixels(scene) == pixels);
        std::string const page = scene.Encode(Form(PictureFormat::Svg));
        EXPECT_THAT(page, HasSubstr("<image"));
        // What it is, and three ranges.
        EXPECT_THAT(page, testing::ContainsRegex("<desc>3D [^<]*: x [^<]*, y [^<]*, z [^<]* to [^<]*[.]</desc>"));
    }
}

TEST(Scenes, LeaveTheTitlesOfGraphsWithCurvesOfTheirOwn)
{
    Scene scene;
    auto& line = dynamic_cast<C3DLineCurve&>(*scene.Graph().AddPlot(it3DLinePlot)->CreateCurve());
    line.SetDataSourceType(CPlotComponent::dsTable);
    CDoubleArray values;
    for (double const v : kZ)
        values.Add(v);
    line.SetPoints(&values, &values, &values);
    scene.Graph().GetAxes()[0]->SetTitle("own");
    scene.Y().Title("asked for");
    Pixels(scene);
    EXPECT_EQ(scene.Graph().GetAxes()[0]->GetTitle(), "own");
    EXPECT_EQ(scene.Graph().GetAxes()[1]->GetTitle(), "asked for");
    // What is added by the scene has titles of its data, or none.
    Scene added;
    added.Line(kX, kY, kZ);
    Pixels(added);
    EXPECT_EQ(added.Graph().GetAxes()[0]->GetTitle(), "");
}

TEST(Scenes, ShowSettingsThatChangeAfterADraw)
{
    auto const drawn = [](std::function<void(Scene&, SceneSurface&)> const& change) {
        Scene scene("Title");
        change(scene, scene.Surface(kHeights, kRows, kColumns));
        return Pixels(scene);
    };
    std::vector<std::uint32_t> const plain = drawn([](Scene&, SceneSurface&) {});
    std::function<void(Scene&, SceneSurface&)> const changes[] {
        [](Scene&, SceneSurface& s) { s.Contours(ContourChoice::Bands).Bands(3); },
        [](Scene&, SceneSurface& s) { s.Wireframe().Transparency(0.5); },
        [](Scene&, SceneSurface& s) { s.ColourMap("magma").ColourRange(0, 20); },
        [](Scene&, SceneSurface& s) { s.Coordinates(CoordinateChoice::Radial); },
        [](Scene& s, SceneSurface&) {
            s.View({ -100, 30 }).Zoom(0.7);
        },
        [](Scene& s, SceneSurface&) { s.SetTheme(Theme::Dark); },
        [](Scene& s, SceneSurface&) { s.Key(KeyChoice::Off); },
        [](Scene& s, SceneSurface&) { s.VerticalScale(1).Perspective(0); },
        [](Scene& s, SceneSurface&) {
            s.Lights({ { 90, 20 } }).Edges(EdgeChoice::Plain);
        },
        [](Scene& s, SceneSurface&) { s.Z().Title("height").Range(0, 30); },
    };
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        SCOPED_TRACE(i);
        Scene scene("Title");
        SceneSurface& surface = scene.Surface(kHeights, kRows, kColumns);
        SceneStyle const sceneBefore = scene.GetStyle();
        SurfaceStyle const before = surface.GetStyle();
        EXPECT_TRUE(Pixels(scene) == plain);
        changes[i](scene, surface);
        std::vector<std::uint32_t> const changed = Pixels(scene);
        EXPECT_FALSE(changed == plain);
        EXPECT_TRUE(changed == drawn(changes[i]));
        scene.Style(sceneBefore);
        surface.Style(before);
        scene.Z().Title("");
        EXPECT_TRUE(Pixels(scene) == plain);
    }
}

TEST(Scenes, ShowNewDataAsANewSceneWould)
{
    // The same values elsewhere, so that axes stay; then others, which need another view.
    std::vector<double> const turned(kHeights.rbegin(), kHeights.rend());
    std::vector<double> higher = turned;
    higher[5] = 400;
    higher[0] = kNone;
    std::vector<double> const z { 7, 5, 1, 3, 4, 2 };
    std::vector<double> const far { 7000, 5, 1, 3, 4, 2 };
    struct Kind {
        std::function<SceneItem*(Scene&, std::vector<double> const&)> add;
        std::function<void(SceneItem*, std::vector<double> const&)> update;
        std::vector<double> const* data[3];
    };
    auto const heights
        = [](SceneItem* item, std::vector<double> const& data) { dynamic_cast<HeightItem&>(*item).Update(data); };
    Kind const kinds[] {
        { [](Scene& s, auto const& d) { return &s.Surface(d, kRows, kColumns).Bands(4); }, heights,
            { &kHeights, &turned, &higher } },
        { [](Scene& s, auto const& d) { return &s.Bars(d, kRows, kColumns); }, heights,
            { &kHeights, &turned, &higher } },
        { [](Scene& s, auto const& d) { return &s.Surface(kX, kY, d); }, heights, { &kZ, &z, &far } },
        { [](Scene& s, auto const& d) { return &s.Series(kX, kY, d); }, heights, { &kZ, &z, &far } },
        { [](Scene& s, auto const& d) { return &s.Points(kX, kY, d); },
            [](SceneItem* item, auto const& d) { dynamic_cast<ScenePoints&>(*item).Update(kX, kY, d); },
            { &kZ, &z, &far } },
    };
    for (std::size_t i = 0; i < std::size(kinds); ++i) {
        SCOPED_TRACE(i);
        Kind const& kind = kinds[i];
        auto const fresh = [&kind](std::vector<double> const& data) {
            Scene scene;
            kind.add(scene, data);
            return Pixels(scene);
        };
        Scene scene;
        SceneItem* const item = kind.add(scene, *kind.data[0]);
        std::vector<std::uint32_t> const first = Pixels(scene);
        kind.update(item, *kind.data[1]);
        EXPECT_TRUE(Pixels(scene) == fresh(*kind.data[1]));
        EXPECT_FALSE(Pixels(scene) == first);
        double const zoom = scene.Graph().GetZoomFactor();
        kind.update(item, *kind.data[2]);
        Pixels(scene);
        EXPECT_EQ(scene.Graph().GetZoomFactor(), zoom) << "the view stays";
        EXPECT_GE(scene.Graph().GetAxes()[2]->GetMax(), 400) << "the axes follow";
        scene.Refit();
        EXPECT_TRUE(Pixels(scene) == fresh(*kind.data[2]));
        kind.update(item, *kind.data[0]);
        scene.Refit();
        EXPECT_TRUE(Pixels(scene) == first);
    }
}

/// What goes wrong.
std::string ErrorOf(std::function<void()> const& work)
{
    try {
        work();
    } catch (ChartError const& error) {
        return (error.GetCause() == ChartError::Cause::Setting ? "setting " : "data ") + std::string(error.what());
    }
    return "none";
}

/// The columns between the first and the last with a hue, as a part of the picture's width.
std::array<double, 2> ColouredColumns(CAnnotatedGraph& graph, CSize size)
{
    CDIB bitmap(size.cx, size.cy, 24);
    graph.Draw(bitmap.GetDC(), CRect({ 0, 0 }, size), pmDirect);
    std::array<double, 2> columns { 1.0, 0.0 };
    for (int x = 0; x < size.cx; ++x) {
        std::vector<std::uint32_t> column;
        for (int y = 0; y < size.cy; ++y)
            column.push_back(bitmap.GetBitmap().GetRaster()->Row(y)[x] & 0xFFFFFFU);
        if (CountColoured(column) > 0)
            columns
                = { std::min(columns[0], x / static_cast<double>(size.cx)), (x + 1) / static_cast<double>(size.cx) };
    }
    return columns;
}

TEST(Scenes, AreSeenWholeInNarrowerPicturesThanTheyWereMadeFor)
{
    Scene scene;
    scene.Surface(kHeights, kRows, kColumns).XRange(0, 10).YRange(0, 4);
    scene.View({ 300, 75 }).Key(KeyChoice::Off);
    CDIB bitmap(400, 300, 24);
    scene.Draw(*bitmap.GetDC(), CRect(0, 0, 400, 300));
    C3DGraph& graph = scene.Graph();
    double const own = graph.GetZoomFactor();
    std::array<double, 2> const wide = ColouredColumns(graph, { 400, 300 });
    for (CSize const size : { CSize(400, 300), CSize(400, 200), CSize(40, 30) })
        EXPECT_EQ(ZoomToKeepWidth(graph, size), own) << size.cx;
    for (double const perspective : { graph.GetPerspective(), 0.0, 0.8 }) {
        for (CSize const size : { CSize(300, 300), CSize(200, 300), CSize(100, 300) }) {
            SCOPED_TRACE(testing::Message() << size.cx << " at " << perspective);
            graph.SetPerspective(perspective);
            graph.SetZoomFactor(own);
            double const uncorrected = ColouredColumns(graph, size)[0];
            EXPECT_TRUE(size.cx == 300 || uncorrected < 0.04) << uncorrected;
            graph.SetZoomFactor(ZoomToKeepWidth(graph, size));
            std::array<double, 2> const narrow = ColouredColumns(graph, size);
            // At the steps that the shapes are tried in, and a label's width.
            EXPECT_GT(narrow[0], 0.02);
            EXPECT_LT(narrow[1], 0.98);
            EXPECT_GT(narrow[1] - narrow[0], 0.6 * (wide[1] - wide[0]));
        }
    }
    // A close-up stays one.
    graph.SetZoomFactor(20.0 * own);
    EXPECT_EQ(ZoomToKeepWidth(graph, { 200, 300 }), 20.0 * own);
}

TEST(Scenes, SayWhatIsWrong)
{
    std::vector<double> const gaps(12, kNone);
    Scene scene;
    SceneSurface& surface = scene.Surface(kHeights, kRows, kColumns);
    std::pair<std::function<void()>, char const*> const cases[] {
        { [] {
             Scene empty;
             Pixels(empty);
         },
            "data there is nothing to draw: the scene is empty" },
        { [&] { scene.Surface(kHeights, 5, 3); }, "data heights: expected 5 rows of 3, found 12 values" },
        { [&] { scene.Bars(kHeights, 12, 1); }, "data heights: expected at least 2 rows and 2 columns, found 12 x 1" },
        { [&] { scene.Points(kX, kY, kHeights); }, "data points: expected as many x as y and z, found 6, 6 and 12" },
        { [] { Scene().Points(kX, kY, kZ).Sizes(kHeights); },
            "data points: expected as many sizes as points (6), found 12" },
        { [&] { scene.Wireframe(kX, kY, kZ); },
            "data points: expected heights on a grid, found points that form none" },
        { [&] { surface.Update(kX); }, "data heights: expected 3 rows of 4 heights as before, found 6" },
        { [&] { surface.Update(MakePoints(kX, kY, kZ)); },
            "data points: expected a grid, found points; a new one of "
            "the other kind has to be added" },
        { [&] { surface.Transparency(1.5); }, "setting transparency: expected a number of 0 to 1, found 1.5" },
        { [&] { surface.XRange(2, 2); },
            "setting x-range: expected two numbers, the smaller one first, found 2 and 2" },
        { [&] {
             surface.Levels(std::vector<double> { 3, 2 });
         },
            "setting levels: expected 1 to 999 numbers that ascend, found 2 numbers that do not" },
        { [&] { surface.Bands(0); }, "setting levels: expected 1 to 1000 bands, found 0" },
        { [&] {
             scene.View({ 0, 200 });
         },
            "setting view: expected a number of 0 to 180, found 200" },
        { [] {
             Scene s;
             s.Points(kX, kY, kZ);
             s.X().Min(50);
             Pixels(s);
         },
            "setting x-range: all data lies beyond the end at 50" },
        { [&] { scene.Save("a.gif"); },
            "setting path: expected a name that ends in .png, .bmp, .pdf, .svg, .ps or .ombrel, found \"a.gif\"" },
        { [&] { scene.Mesh("a.csv"); }, "data a.csv: expected a .tvm, .tvo or .dxf file" },
        { [&] {
             surface.ColourMap("nosuch");
             Pixels(scene);
         },
            "setting colour-map: there is no colour map \"nosuch\" (ombrel colours lists them)" },
        { [&] {
             Scene s;
             s.Surface(gaps, kRows, kColumns);
             Pixels(s);
         },
            "data heights: there is nothing to draw: all heights are gaps" },
        { [&] {
             Scene s;
             s.Points(kX, kY, std::vector<double>(6, kNone));
             Pixels(s);
         },
            "data points: there is nothing to draw: every point has a gap" },
        { [&] {
             Scene s;
             s.Surface(kX, kX, kZ);
             Pixels(s);
         },
            "data points: expected at least 3 points that do not lie "
            "on one line, which a surface needs, found none" },
        { [&] {
             Scene s;
             s.Mesh(MeshFile()).Variable("cold");
             Pixels(s);
         },
            nullptr },
    };
    for (auto const& [work, text] : cases) {
        std::string const error = ErrorOf(work);
        if (text)
            EXPECT_EQ(error, text);
        else
            EXPECT_THAT(error, HasSubstr("has no such values; it has heat, z (the heights)"));
    }
    EXPECT_THROW(scene.Mesh("absent.tvm"), Error);
    EXPECT_THROW(scene.Surface(HeightFile { "absent.tvl" }), Error);
    // What was refused changed nothing; a scene goes on once its settings are good again.
    surface.ColourMap("");
    Scene fresh;
    fresh.Surface(kHeights, kRows, kColumns);
    EXPECT_TRUE(Pixels(scene) == Pixels(fresh));
    // Points with gaps are left out, and that is told once.
    Scene noted;
    std::vector<double> z = kZ;
    z[1] = kNone;
    noted.Points(kX, kY, z);
    Pixels(noted);
    noted.Refit();
    Pixels(noted);
    ASSERT_EQ(noted.Notes().All().size(), 1U);
    EXPECT_EQ(noted.Notes().All().front().text, "points: 1 point has a gap and is left out");
}

TEST(Scenes, OfSeveralThreadsAreWhatTheyAreAlone)
{
    auto const draw = [](int seed) {
        std::vector<double> heights = kHeights;
        heights[static_cast<std::size_t>(seed)] += seed;
        std::string bytes;
        for (int i = 0; i < 3; ++i) {
            Scene scene("Thread");
            scene.Surface(heights, kRows, kColumns).Contours(ContourChoice::Both);
            scene.Points(kX, kY, kZ);
            bytes += scene.Encode(Form(PictureFormat::Png));
        }
        return bytes;
    };
    std::string const alone[] { draw(3), draw(8) };
    std::string together[2];
    {
        std::jthread const one([&] { together[0] = draw(3); });
        std::jthread const two([&] { together[1] = draw(8); });
    }
    EXPECT_TRUE(together[0] == alone[0]);
    EXPECT_TRUE(together[1] == alone[1]);
    EXPECT_FALSE(alone[0] == alone[1]);
}

TEST(GraphPictures, AreDrawnAnywhereAndAtAnySizeAsInAPictureOfTheirOwn)
{
    auto const addMap = [](C2DGraph& graph) {
        auto& curve = static_cast<C2DContourCurve&>(
            *graph.AddPlot(it2DContourPlot)->AddCurve("height / m", CPlotComponent::dsTable));
        CTableData heights(4, 4);
        for (int i = 0; i < 16; ++i)
            heights.SetAt(i / 4, i % 4, i * i % 7);
        curve.GetSurface()->SetTableData(std::move(heights));
        curve.GetSurface()->SetTablePlacement({ 0, 0, 1, 1 });
        curve.GetSurface()->AlignMeshes();
    };
    auto const addLine = [](C2DGraph& graph) {
        auto& line = static_cast<C2DLine&>(*graph.AddPlot(it2DLinePlot)->AddCurve("line", CPlotComponent::dsTable));
        line.Initialise(2);
        line.SetAt(0, { 0, 1 });
        line.SetAt(1, { 3, 5 });
        graph.GetLegend()->Create(CPoint());
    };
    // Labels of dates are texts, and the y title gets a power of ten: neither may be taken for the program's.
    auto const addDates = [](C2DGraph& graph) {
        graph.GetAxes()->SetXTimeUnitsOn(1);
        graph.GetAxes()->SetYAxisTitle("people");
        auto& line = static_cast<C2DLine&>(*graph.AddPlot(it2DLinePlot)->AddCurve("line", CPlotComponent::dsTable));
        line.SetXValMode(C2DCurve::xvDates);
        line.Initialise(31);
        for (int i = 0; i < 31; ++i)
            line.SetAt(i, { 41821.0 + i, i % 7 * 2e7 });
    };
    for (auto const& build : { std::function<void(C2DGraph&)>(addMap), std::function<void(C2DGraph&)>(addLine),
             std::function<void(C2DGraph&)>(addDates) }) {
        auto const make = [&build] {
            auto picture = std::make_unique<GraphPicture>("Title");
            picture->Footnote("Source");
            build(picture->Graph());
            return picture;
        };
        std::vector<std::uint32_t> const alone = Pixels(*make());
        auto const picture = make();
        Pixels(*picture, 2 * kWidth, kHeight);
        CDIB bitmap(kWidth + 50, kHeight + 40, 24);
        picture->Draw(*bitmap.GetDC(), CRect(CPoint(50, 40), CSize(kWidth, kHeight)));
        Raster const& raster = *bitmap.GetBitmap().GetRaster();
        int differing = 0;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x)
                differing += (raster.Row(y + 40)[x + 50] & 0xFFFFFFU)
                    != alone[static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x)];
        }
        EXPECT_EQ(differing, 0);
        EXPECT_EQ(raster.Row(20)[20] & 0xFFFFFFU, 0U) << "outside of the rectangle";
        // What the program changes meanwhile counts.
        auto const fresh = make();
        for (GraphPicture* const changed : { picture.get(), fresh.get() }) {
            CAxes& axes = *changed->Graph().GetAxes();
            AxisSettings y = axes.GetAxis(CAxes::atY);
            y.title = "inhabitants";
            y.min = -1e7;
            y.max = 3e7;
            y.rangeMode = CAxes::rmFixed;
            axes.SetAxis(CAxes::atY, y);
            changed->Touch();
        }
        EXPECT_TRUE(Pixels(*picture) == Pixels(*fresh));
    }
}

TEST(Scenes, HaveTheTitleOfTheUprightAxisBesideItsLabels)
{
    std::vector<double> heights;
    for (double const height : kHeights)
        heights.push_back(3000.0 * height);
    for (double const azimuth : { 330.0, 100.0 }) {
        Scene scene;
        scene.Surface(heights, kRows, kColumns);
        scene.View({ azimuth, 62 });
        constexpr CSize kSize(300, 200);
        Pixels(scene, kSize.cx, kSize.cy);
        C3DAxis& axis = *scene.Graph().GetAxes()[2];
        axis.SetTitle("z");
        axis.SetLabelsColour(RGB(0, 0, 255));
        axis.SetTitleColour(RGB(255, 0, 0));
        CDIB bitmap(kSize.cx, kSize.cy, 24);
        scene.Graph().Draw(bitmap.GetDC(), CRect(CPoint(), kSize), pmDirect);
        // The columns of full red and of full blue.
        CRect title(kSize.cx, 0, 0, 0);
        CRect labels = title;
        for (int y = 0; y < kSize.cy; ++y) {
            for (int x = 0; x < kSize.cx; ++x) {
                COLORREF const colour = bitmap.GetDC()->GetPixel(x, y);
                bool const isTitle = GetRValue(colour) > 200 && GetGValue(colour) < 60 && GetBValue(colour) < 60;
                bool const isLabel = GetBValue(colour) > 200 && GetGValue(colour) < 60 && GetRValue(colour) < 60;
                for (CRect* const rect : { isTitle ? &title : nullptr, isLabel ? &labels : nullptr }) {
                    if (rect)
                        *rect = CRect(std::min<LONG>(rect->left, x), 0, std::max<LONG>(rect->right, x + 1), 0);
                }
            }
        }
        ASSERT_LT(title.left, title.right);
        ASSERT_LT(labels.left, labels.right);
        EXPECT_TRUE(title.left >= labels.right || title.right <= labels.left) << azimuth;
    }
}

TEST(Scenes, HaveTextsThatCanBeReadInEverySize)
{
    Scene scene("Hills");
    scene.Surface(kHeights, kRows, kColumns);
    struct {
        CSize size;
        double least;
        double most;
    } const cases[] { { CSize(160, 120), 5, 9 }, { CSize(300, 200), 9, 13 }, { CSize(500, 350), 11, 14 },
        { CSize(1000, 640), 14, 16 }, { CSize(400, 1200), 12, 16 } };
    for (auto const& c : cases) {
        Pixels(scene, c.size.cx, c.size.cy);
        C3DAxis const& axis = *scene.Graph().GetAxes()[2];
        // The height of texts is a thirtieth of the smaller side, up to four millimetres.
        double const height = std::min(std::min(c.size.cx, c.size.cy) / 30.0, 15.0) * axis.GetLabelsFont()->sizeFactor;
        EXPECT_GE(height, c.least) << c.size.cx;
        EXPECT_LE(height, c.most) << c.size.cx;
        CColourKey const& key = *scene.Graph().GetColourKeyArray()->GetAt(0);
        EXPECT_NEAR(key.GetFont().sizeFactor, axis.GetLabelsFont()->sizeFactor, 0.2);
    }
}

TEST(ContourMaps, ThatAreSmallHaveTheirTitleBesideTheKey)
{
    ContourMap map(kHeights, kRows, kColumns, "A flow round a cylinder is fastest at its sides");
    map.Bands(15);
    for (CSize const size : { CSize(160, 140), CSize(200, 180), CSize(900, 600) }) {
        Pixels(map, size.cx, size.cy);
        CCaption const* const title = FindTitle(map.Graph());
        CColourKey const* const key = map.Graph().GetColourKeyArray()->GetAt(0);
        ASSERT_TRUE(title && key);
        CRect both;
        EXPECT_TRUE(title->IsOn());
        EXPECT_FALSE(both.IntersectRect(title->GetRect(), key->GetRect())) << size.cx << " x " << size.cy;
    }
}

TEST(ContourMaps, ShowSettingsAndDataThatChange)
{
    auto const pixels = [](std::vector<double> const& heights, std::function<void(ContourMap&)> const& change) {
        ContourMap map(heights, kRows, kColumns, "Map");
        change(map);
        return Pixels(map);
    };
    auto const nothing = [](ContourMap&) {};
    std::vector<double> const turned(kHeights.rbegin(), kHeights.rend());
    std::vector<std::uint32_t> const plain = pixels(kHeights, nothing);
    EXPECT_GT(CountColoured(plain), kWidth * kHeight / 4);
    auto const change = [](ContourMap& map) {
        map.XRange(10, 40).Name("height / m").LevelsEach(2).SetTheme(Theme::Dark).XTitle("east");
    };
    ContourMap map(kHeights, kRows, kColumns, "Map");
    EXPECT_TRUE(Pixels(map) == plain);
    Pixels(map, 300, 100);
    EXPECT_TRUE(Pixels(map) == plain);
    map.Update(turned);
    EXPECT_TRUE(Pixels(map) == pixels(turned, nothing));
    change(map);
    EXPECT_TRUE(Pixels(map) == pixels(turned, change));
    EXPECT_EQ(map.Graph().GetColourKeyArray()->GetSize(), 1);
    std::string const page = map.Encode(Form(PictureFormat::Svg));
    EXPECT_THAT(page, HasSubstr(">east<"));
    EXPECT_THAT(page, HasSubstr("<desc>Contour map “Map”: east from 10 to 40, y from"));
    EXPECT_THAT(page, HasSubstr(", height / m from "));
    // The table that the map was made from, a row for each height.
    std::string const csv = CurvesAsCsv(map.Graph());
    EXPECT_THAT(csv, testing::StartsWith("east,y,height / m\n10,0,"));
    EXPECT_EQ(static_cast<std::size_t>(std::count(csv.begin(), csv.end(), '\n')), kRows * kColumns + 1);
    map.Description("Mine");
    EXPECT_THAT(map.Encode(Form(PictureFormat::Svg)), HasSubstr("<desc>Mine</desc>"));
    // Points on a grid in any order are the grid.
    std::vector<double> const x { 3, 0, 1, 2, 0, 1, 2, 3 };
    std::vector<double> const y { 0, 1, 0, 0, 0, 1, 1, 1 };
    std::vector<double> z;
    for (std::size_t i = 0; i < x.size(); ++i)
        z.push_back(kHeights[static_cast<std::size_t>(x[i] + 4 * y[i])]);
    ContourMap ofPoints(MakePoints(x, y, z), "Map");
    ContourMap ofGrid(std::span<double const>(kHeights).first(8), 2, 4, "Map");
    EXPECT_TRUE(Pixels(ofPoints) == Pixels(ofGrid));
    EXPECT_THAT(ErrorOf([] { ContourMap const none(MakePoints(kX, kY, kZ)); }), HasSubstr("points that form none"));
    EXPECT_THAT(ErrorOf([&] { map.Update(kX); }), HasSubstr("expected 3 rows of 4 heights as before, found 6"));
}

} // namespace
} // namespace ombrel
