#include "ombrel/Init.h"
#include "ombrel/annotation/ColourKeyArray.h"
#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/Walls.h"
#include "tests/tools/TestFolder.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/Program.h"
#include "tools/ombrel/commands/SceneOptions.h"
#include "tools/ombrel/options/Options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

namespace ombrel::host {
namespace {

using testing::HasSubstr;
using testing::Not;

/// Heights 0 to 11 in 3 rows of 4; x is 10 to 40, y 100 to 120.
constexpr char const* kMatrix = ",10,20,30,40\n100,0,1,2,3\n110,4,5,6,7\n120,8,9,10,11\n";
/// The same heights with two gaps and no coordinates.
constexpr char const* kGaps = "0,1,2,3\n4,,6,7\n8,9,,11\n";
constexpr char const* kPoints = "east / km,north / km,height / m\n1,2,5\n0,0,1\n1,0,2\n0,2,4\n0,1,2.5\n1,1,3\n";
/// 2 lines of 3 values along x, from 1, 2 in steps of 0.5 and 2.
constexpr char const* kZValues = "0 1 2 3 1 2 0.5 2 0\n1 2 3\n4 5 6\n";

class Heights : public testing::Test {
protected:
    struct Result {
        int status;
        std::string output;
        std::string errors;
    };
    Heights()
    {
        OmbrelInit();
        m_folder.Write("matrix.csv", kMatrix);
        m_folder.Write("gaps.csv", kGaps);
        m_folder.Write("points.csv", kPoints);
        m_folder.Write("values.tvl", kZValues);
    }
    /// Words with blanks between; those with a point in them that are no options are files of the test's folder.
    std::vector<std::string> Words(std::string const& line) const
    {
        std::istringstream stream(line);
        std::vector<std::string> words(std::istream_iterator<std::string>(stream), {});
        for (std::string& word : words) {
            bool const isFile = word.find_first_of("abcdefghijklmnopqrstuvwxyz") == 0 && word.find('.') != word.npos;
            word = isFile ? m_folder.In(word) : word;
        }
        return words;
    }
    Result Run(std::string const& line) const
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        int const status = RunProgram(Words(line));
        return { status, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr() };
    }
    std::string RunWell(std::string const& line) const
    {
        Result const result = Run(line);
        EXPECT_EQ(result.status, kDone) << line << ": " << result.errors;
        return result.output + result.errors;
    }
    /// The graph that make(options, heights) makes, laid out for the picture.
    template <typename Make> auto MakeWith(Make const& make, std::string const& line)
    {
        Options const options = ParseOptions(Words(line));
        HeightShape const shape = options.command == Command::Surface ? ShapeFor(options) : HeightShape::Grid;
        m_target.size = options.size.value_or(PictureSize());
        m_picture = std::make_unique<Picture>(m_target);
        InputFile file(options.files.front());
        auto drawing = make(options, ReadHeightFile(options, file, shape, Messages(false)));
        drawing.LayOut(m_picture->GetDC(), m_picture->GetRect());
        return std::move(drawing).TakeGraph();
    }
    std::unique_ptr<C3DGraph> Scene(std::string const& line)
    {
        auto const make = [](Options const& options, HeightSource&& heights) {
            ombrel::Scene scene = SceneFor(options);
            AddHeights(scene, options, std::move(heights));
            return scene;
        };
        return MakeWith(make, "surface " + line);
    }
    std::unique_ptr<C2DGraph> Map(std::string const& line) { return MakeWith(MapFor, "contour " + line); }

    TestFolder m_folder;
    Target m_target;
    std::unique_ptr<Picture> m_picture;
};

TEST_F(Heights, CommandsDrawEveryKindOfFileTheSameEveryTime)
{
    for (std::string const command : { "surface", "contour" }) {
        for (std::string const file : { "matrix.csv", "gaps.csv", "points.csv", "values.tvl" }) {
            SCOPED_TRACE(command + " " + file);
            EXPECT_EQ(RunWell(command + " " + file + " --size 200x150 -o a.png --save a.doc"), "");
            EXPECT_EQ(RunWell(command + " " + file + " --size 200x150 -o b.png"), "");
            // What a document holds is the picture that was drawn.
            EXPECT_EQ(RunWell("draw a.doc --size 200x150 -o c.png"), "");
            std::string const picture = m_folder.Read("a.png");
            EXPECT_TRUE(picture.starts_with("\x89PNG\r\n"));
            EXPECT_TRUE(m_folder.Read("b.png") == picture);
            EXPECT_TRUE(m_folder.Read("c.png") == picture);
        }
        RunWell(command + " points.csv -o p.svg --page 150x100 --title Hill");
        EXPECT_THAT(m_folder.Read("p.svg"), HasSubstr(">Hill<"));
        // A scene's axes are in its image.
        std::string const text = command == "surface" ? "<image" : ">east / km<";
        EXPECT_THAT(m_folder.Read("p.svg"), HasSubstr(text));
    }
    RunWell("values.tvl --size 200x150 -o d.png");
    RunWell("surface values.tvl --size 200x150 -o e.png");
    EXPECT_TRUE(m_folder.Read("d.png") == m_folder.Read("e.png"));
}

TEST_F(Heights, SurfacesGetTitlesRangesAndAKeyInsideOfThePicture)
{
    auto const scene = Scene("points.csv --levels 1,2,3 --size 700x400");
    C3DAxis const* const* const axes = scene->GetAxes();
    EXPECT_EQ(axes[0]->GetTitle(), "east / km");
    EXPECT_EQ(axes[1]->GetTitle(), "north / km");
    EXPECT_EQ(axes[2]->GetTitle(), "height / m");
    EXPECT_EQ(axes[2]->GetMin(), 1.0);
    EXPECT_EQ(axes[2]->GetMax(), 5.0);
    // x has half of the length of y, and both are of one kind.
    double sx = 0.0;
    double sy = 0.0;
    double sz = 0.0;
    axes[0]->GetScaleFacs(sx, sy, sz);
    EXPECT_DOUBLE_EQ(sx, 0.5);
    EXPECT_DOUBLE_EQ(sy, 1.0);
    EXPECT_DOUBLE_EQ(sz, 0.5);
    for (PictureSize const size : { PictureSize { 700, 400 }, { 300, 900 }, { 1600, 300 } }) {
        std::string const picture = std::to_string(size.width) + "x" + std::to_string(size.height);
        auto const drawn = Scene("points.csv --size " + picture);
        m_picture->Draw(*drawn);
        ASSERT_EQ(drawn->GetColourKeyArray()->GetSize(), 1);
        CRect const key = drawn->GetColourKeyArray()->GetAt(0)->GetRect();
        EXPECT_TRUE(key.left > 0 && key.top >= 0 && key.right <= size.width && key.bottom <= size.height) << picture;
        // Beside the scene, not in a far corner.
        EXPECT_GT(key.left, size.width / 2) << picture;
    }
    EXPECT_EQ(Scene("points.csv --key off")->GetColourKeyArray()->GetSize(), 0);
    auto const far = Scene("matrix.csv --view 45,30 --perspective 1 --vertical-scale 2");
    EXPECT_EQ(far->GetViewingAzimuth(), 45.0);
    EXPECT_EQ(far->GetViewingElevation(), 30.0);
    EXPECT_LT(far->GetPerspective(), 17.0 / 18.0);
    far->GetAxes()[0]->GetScaleFacs(sx, sy, sz);
    EXPECT_DOUBLE_EQ(sz, 2.0 * std::max(sx, sy));
}

/// Settings of a scene in words: the view, lights with their places, the ticks and lines of each axis, the surface.
std::string Described(C3DGraph& scene)
{
    std::ostringstream text;
    text << scene.GetViewingAzimuth() << ' ' << scene.GetViewingElevation() << ' ' << scene.GetPerspective();
    double azimuth = 0.0;
    double polar = 0.0;
    scene.GetLight1Pos(azimuth, polar);
    text << (scene.GetAntialiasMode() ? " smooth" : "") << (scene.GetLightingOn() ? " lit " : " unlit ") << azimuth
         << ',' << polar;
    scene.GetLight2Pos(azimuth, polar);
    if (scene.GetLight2On())
        text << " and " << azimuth << ',' << polar;
    text << " at " << scene.GetLightDistance() << ": " << scene.GetAmbientLight() << '+' << scene.GetAttenuation();
    C3DGrid const& grid = *scene.GetGrid();
    std::pair<double, double> const lines[] { { grid.GetXLineMin(), grid.GetXLineDel() },
        { grid.GetYLineMin(), grid.GetYLineDel() }, { grid.GetZLineMin(), grid.GetZLineDel() } };
    for (int i = 0; i < 3; ++i) {
        C3DAxis const& axis = *scene.GetAxes()[i];
        text << "; " << axis.GetMin() << ".." << axis.GetMax()
             << (axis.GetTickMode() == C3DAxis::tmStep ? " by " : " divided ") << axis.GetTickMin() + 0.0 << '+'
             << axis.GetTickDel() << '/' << axis.GetNumMinorDivs() << " grid " << lines[i].first + 0.0 << '+'
             << lines[i].second;
    }
    auto const& surface = static_cast<CSurface const&>(*scene.GetPlotArray()->GetAt(0)->GetComponent(0));
    text << "; type " << surface.GetCurveType() << surface.GetUseRadialGrid() << " through "
         << surface.GetTransparency();
    if (surface.GetWireframeOn())
        text << " wires " << surface.GetWireframeXFac() << ',' << surface.GetWireframeYFac();
    if (surface.GetContoursOn())
        text << " contours " << surface.GetContourMode() << surface.GetContourColourMode() << " of "
             << surface.GetArbContourLevels().GetSize();
    return text.str();
}

TEST_F(Heights, ScenesAreSeenLitAndDividedAsIsUsualOrAsked)
{
    std::string const light = " at 6: 0.3+1.55";
    std::string const axes = "; 10..40 by 10+5/5 grid 10+5; 100..120 by 100+5/5 grid 100+5; 0..11 by 0+5/5 grid 0+5";
    std::string const plain = "; type 00 through 0";
    std::pair<char const*, std::string> const cases[] {
        { "", "330 62 0.35 smooth lit 265,40" + light + axes + plain },
        { "--view 45,120 --perspective 1 --no-antialias", "45 120 0.85 lit 340,140" + light + axes + plain },
        { "--view 10,90 --lights 10,20", "10 90 0.35 smooth lit 10,20" + light + axes + plain },
        { "--lights 10,20,30,40", "330 62 0.35 smooth lit 10,20 and 30,40 at 6: 0.3+2.2" + axes + plain },
        { "--lights off", "330 62 0.35 smooth unlit 265,40" + light + axes + plain },
        { "--wireframe --transparency 0.5",
            "330 62 0.35 smooth lit 265,40" + light + axes + "; type 00 through 0.5 wires 1,1" },
        { "--wireframe 9 --contours lines --line-colours",
            "330 62 0.35 smooth lit 265,40" + light + axes + plain + " wires 3,2 contours 21 of 10" },
        { "--levels 4", "330 62 0.35 smooth lit 265,40" + light + axes + plain + " contours 10 of 3" },
        // Radii 10 to 40 at 100 to 120 degrees.
        { "--contours bands --coordinates radial",
            "330 62 0.35 smooth lit 265,40" + light
                + "; -20..-1.73648 by -20+5/5 grid -20+5; 8.66025..39.3923 by 10+10/5 grid 10+10; 0..11 by 0+5/5 grid "
                  "0+5; type 01 through 0 contours 00 of 10" },
        // 10 sin 120° cos 30° and 11 sin 120° sin 40°.
        { "--z-range -5:20 --coordinates polar",
            "330 62 0.35 smooth lit 265,40" + light
                + "; 0..7.5 by 0+2/4 grid 0+2; 0..6.12337 by 0+2/4 grid 0+2; -5..20 by -5+5/5 grid -5+5; type 20 "
                  "through 0" },
    };
    for (auto const& [options, described] : cases)
        EXPECT_EQ(Described(*Scene(std::string("matrix.csv --size 200x150 ") + options)), described) << options;
    auto const dark = Scene("matrix.csv --theme dark --title Hill --size 200x150");
    EXPECT_EQ(dark->GetBackgroundColour(), RGB(27, 30, 36));
    EXPECT_EQ(dark->GetAxes()[2]->GetLabelsColour(), RGB(232, 234, 238));
    EXPECT_EQ(dark->GetAxes()[0]->GetTitleColour(), RGB(232, 234, 238));
    EXPECT_EQ(dark->GetGrid()->GetColour(), RGB(66, 72, 82));
    EXPECT_FALSE(dark->GetWalls()->IsOn());
    EXPECT_EQ(dark->GetCaptionArray()->GetSize(), 1);
}

TEST_F(Heights, MapsGetAKeyThatSaysWhatItsColoursMean)
{
    auto const map = Map("points.csv --size 600x400");
    m_picture->Draw(*map);
    ASSERT_EQ(map->GetColourKeyArray()->GetSize(), 1);
    ASSERT_EQ(map->GetCaptionArray()->GetSize(), 1);
    CRect const key = map->GetColourKeyArray()->GetAt(0)->GetRect();
    CCaption& title = *map->GetCaptionArray()->GetAt(0);
    EXPECT_EQ(title.GetText(), "height / m");
    EXPECT_GT(key.left, map->GetAxesRect().right);
    EXPECT_LE(key.right, 600);
    EXPECT_LE(title.GetRect().bottom, key.top);
    auto const& curve = static_cast<C2DContourCurve const&>(*map->GetPlotArray()->GetAt(0)->GetComponent(0));
    EXPECT_EQ(curve.GetDisplayMode(), C2DContourCurve::dmShadingAndLines);
    // Between 1 and 5: from 1.5 to 4.5.
    EXPECT_EQ(curve.GetLevels().GetSize(), 7);
    // Long names are broken into lines, and a flat grid is one colour.
    auto const named = Map("gaps.csv --z-title precipitation-of-a-year");
    EXPECT_EQ(named->GetCaptionArray()->GetSize(), 1);
    m_folder.Write("flat.csv", "5,5,5\n5,5,5\n5,5,5\n");
    EXPECT_EQ(RunWell("contour flat.csv -o flat.png"), "");
    EXPECT_EQ(Map("points.csv --key off")->GetCaptionArray()->GetSize(), 0);
}

TEST_F(Heights, ModelsWithAnotherResolutionAreScaledAndSaidToBe)
{
    std::ifstream stream(OMBREL_SOURCE_DIR "/examples/jacksboro.dem", std::ios::binary);
    std::string dem { std::istreambuf_iterator<char>(stream), {} };
    ASSERT_GT(dem.size(), 1024U);
    auto const heights = [this](std::string const& bytes) {
        m_folder.Write("m.dem", bytes);
        auto const scene = Scene("m.dem");
        return std::pair(scene->GetAxes()[2]->GetMin(), scene->GetAxes()[2]->GetMax());
    };
    EXPECT_EQ(heights(dem), std::pair(305.0, 995.0));
    EXPECT_THAT(RunWell("surface m.dem --size 90x60 -o m.png -v"), Not(HasSubstr("resolution")));
    dem.replace(840, 12, "0.500000E+00");
    EXPECT_EQ(heights(dem), std::pair(152.5, 497.5));
    EXPECT_THAT(RunWell("surface m.dem --size 90x60 -o m.png -v"), HasSubstr("multiplied by the resolution of 0.5"));
}

TEST_F(Heights, InfoDescribesGridsAndTheGraphsThatShowThem)
{
    EXPECT_EQ(RunWell("info values.tvl"),
        m_folder.In("values.tvl")
            + ": z values, 2 rows and 3 columns\n        x 1 to 2, y 2 to 4, z 1 to 6\n        spacing 0.5 and 2\n");
    std::string const dem = RunWell("info " OMBREL_SOURCE_DIR "/examples/jacksboro.dem");
    for (char const* const part : { "elevation model, 200 rows and 150 columns\n",
             "x 0 to 447, y 0 to 597, z 305 to 995", "spacing 3 and 3, east / arcsec, north / arcsec, elevation / m" })
        EXPECT_THAT(dem, HasSubstr(part));
    RunWell("surface gaps.csv -o a.png --save a.doc --view 30,60 --x-title length");
    std::string const scene = RunWell("info a.doc");
    for (char const* const part :
        { "\nC3DGraph tag", "  view: azimuth 30, polar angle 60, zoom ", "x 1 to 4, title \"length\"",
            "z 0 to 11, title", "3 rows and 4 columns, 2 missing\n        x 1 to 4, y 1 to 3, z 0 to 11\n" })
        EXPECT_THAT(scene, HasSubstr(part));
    RunWell("contour matrix.csv -o a.png --save a.doc --levels 2,4,8");
    std::string const map = RunWell("info a.doc");
    for (char const* const part : { "\nC2DGraph tag",
             "3 rows and 4 columns\n        x 10 to 40, y 100 to 120, z 0 to 11\n        3 levels, 2 to 8\n" })
        EXPECT_THAT(map, HasSubstr(part));
}

} // namespace
} // namespace ombrel::host
