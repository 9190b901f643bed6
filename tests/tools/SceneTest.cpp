#include "ombrel/Init.h"
#include "ombrel/annotation/ColourKeyArray.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DScatterCurve.h"
#include "tests/tools/TestFolder.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/Program.h"
#include "tools/ombrel/commands/SceneOptions.h"
#include "tools/ombrel/options/OptionValues.h"
#include "tools/ombrel/options/Options.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <sstream>

namespace ombrel::host {
namespace {

/// A brick of 2 x 1 x 1 cells with the values "heat" at its nodes, and a triangle beside it.
constexpr char const* kMesh = "node_variables: heat\nnodeset\ntitle: a\nnodes\n12\n"
                              "0 0 0 0\n1 0 0 1\n2 0 0 2\n0 1 0 3\n1 1 0 4\n2 1 0 5\n"
                              "0 0 1 6\n1 0 1 7\n2 0 1 8\n0 1 1 9\n1 1 1 10\n2 1 1 11\nendobject\n"
                              "patch\nelement_type: block\nuse_nodeset: a\nelements\n2\n"
                              "1 2 5 4 7 8 11 10\n2 3 6 5 8 9 12 11\nendobject\n";

class Scenes : public testing::Test {
protected:
    Scenes()
    {
        OmbrelInit();
        m_folder.Write("loose.csv", "x,y,z,w\n0,0,1,a\n1,0,2,b\n0,1,3,c\n2,3,4,d\n2,1,2.5,e\n");
        m_folder.Write("grid.csv", "x,y,z\n0,0,5\n1,0,6\n0,1,7\n1,1,9\n");
        m_folder.Write("box.tvm", kMesh);
        m_folder.Write("ball.tvo", "sphere\nradius: 1\ncolour: 0 0 255\nendobject\n");
    }
    Options OptionsOf(std::string const& line) const
    {
        std::istringstream stream(line);
        std::vector<std::string> words(std::istream_iterator<std::string>(stream), {});
        words[1] = m_folder.In(words[1]);
        return ParseOptions(words);
    }
    /// The graph that a command makes, laid out for its picture.
    std::unique_ptr<C3DGraph> Make(std::string const& line)
    {
        Options const options = OptionsOf(line);
        m_target.size = options.size.value_or(PictureSize { 300, 200 });
        m_picture = std::make_unique<Picture>(m_target);
        Scene scene = SceneFor(options);
        if (options.command == Command::Mesh) {
            AddMesh(scene, options, options.files.front());
        } else {
            InputFile file(options.files.front());
            AddHeights(scene, options, ReadHeightFile(options, file, ShapeFor(options), Messages(false)));
        }
        scene.LayOut(m_picture->GetDC(), m_picture->GetRect());
        return std::move(scene).TakeGraph();
    }
    template <typename Curve> static Curve& First(C3DGraph const& scene)
    {
        return dynamic_cast<Curve&>(*scene.GetPlotArray()->GetAt(0)->GetComponent(0));
    }

    TestFolder m_folder;
    Target m_target;
    std::unique_ptr<Picture> m_picture;
};

TEST_F(Scenes, OfEveryKindAreTheSameInADocument)
{
    for (std::string const line : { "surface loose.csv", "surface loose.csv --kind bars",
             "surface grid.csv --kind bars", "surface loose.csv --kind series",
             "surface grid.csv --kind series --colours rows", "surface grid.csv --kind wireframe",
             "surface loose.csv --kind lines --tubes", "surface loose.csv --kind scatter --sticks --colour-by x",
             "surface loose.csv --kind text --label w", "mesh box.tvm --clip :1,,", "mesh ball.tvo" }) {
        SCOPED_TRACE(line);
        std::istringstream stream(
            line + " --size 160x120 -o " + m_folder.In("a.png") + " --save " + m_folder.In("a.doc"));
        std::vector<std::string> words(std::istream_iterator<std::string>(stream), {});
        words[1] = m_folder.In(words[1]);
        ASSERT_EQ(RunProgram(words), kDone);
        ASSERT_EQ(RunProgram({ "draw", m_folder.In("a.doc"), "--size", "160x120", "-o", m_folder.In("b.png") }), kDone);
        EXPECT_TRUE(m_folder.Read("a.png") == m_folder.Read("b.png"));
    }
}

TEST_F(Scenes, FarFromTheOriginHaveTheSameTrianglesAndTrueAxes)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> place(0.0, 100.0);
    std::ostringstream near;
    std::ostringstream far;
    near << "x,y,z\n";
    far.precision(17);
    far << "x,y,z\n";
    for (int i = 0; i < 200; ++i) {
        // Quarters are exact at any offset here.
        double const x = std::floor(4.0 * place(random)) / 4.0;
        double const y = std::floor(4.0 * place(random)) / 4.0;
        near << x << ',' << y << ',' << i << '\n';
        far << 1e7 + x << ',' << -3e9 + y << ',' << i << '\n';
    }
    m_folder.Write("near.csv", near.str());
    m_folder.Write("far.csv", far.str());
    auto const nearScene = Make("surface near.csv");
    auto const farScene = Make("surface far.csv");
    auto const a = First<C3DIrregularSurfaceCurve>(*nearScene).GetTriangles();
    auto const b = First<C3DIrregularSurfaceCurve>(*farScene).GetTriangles();
    ASSERT_GT(a.size(), 300U);
    EXPECT_TRUE(std::equal(a.begin(), a.end(), b.begin(), b.end()));
    for (int axis = 0; axis < 2; ++axis) {
        double const offset = axis == 0 ? 1e7 : -3e9;
        EXPECT_EQ(farScene->GetAxes()[axis]->GetMin(), nearScene->GetAxes()[axis]->GetMin() + offset);
        EXPECT_EQ(farScene->GetAxes()[axis]->GetMax(), nearScene->GetAxes()[axis]->GetMax() + offset);
    }
}

TEST_F(Scenes, AxesHaveRoomForWhatIsDrawnRoundThePoints)
{
    // Bars stand on 0, or on what they are told to.
    auto const zMin = [this](std::string const& line) { return Make(line)->GetAxes()[2]->GetMin(); };
    EXPECT_EQ(zMin("surface grid.csv --kind bars"), 0.0);
    EXPECT_EQ(zMin("surface loose.csv --kind series --baseline -2"), -2.0);
    EXPECT_EQ(zMin("surface grid.csv --kind wireframe"), 5.0);
    m_folder.Write("high.csv", "x,y,z\n0,0,1000\n1,0,1001\n0,1,1002\n1,1,1003\n");
    EXPECT_EQ(zMin("surface high.csv --kind bars"), 1000.0);
    // Symbols are whole, and given ends stay.
    auto const scatter = Make("surface loose.csv --kind scatter --x-range -5: --z-range 0:9");
    C3DAxis const* const* const axes = scatter->GetAxes();
    EXPECT_EQ(axes[0]->GetMin(), -5.0);
    EXPECT_GT(axes[0]->GetMax(), 2.0);
    EXPECT_LT(axes[1]->GetMin(), 0.0);
    EXPECT_EQ(axes[2]->GetMin(), 0.0);
    EXPECT_EQ(axes[2]->GetMax(), 9.0);
}

TEST_F(Scenes, PointsTakeTheirColumns)
{
    auto const scene = Make("surface loose.csv --kind scatter --size-by z --colour-by z --symbol cone --key auto");
    auto const& scatter = First<C3DScatterCurve>(*scene);
    EXPECT_EQ(scatter.GetColourVar(), 0);
    EXPECT_EQ(scatter.GetSizeVar(), 1);
    // The largest is 4.
    EXPECT_DOUBLE_EQ(scatter.GetSymbolVarScaleFac(1), 0.5);
    EXPECT_EQ(scatter.GetSymbolStyle(), 1);
    EXPECT_EQ(scene->GetColourKeyArray()->GetSize(), 1);
    EXPECT_EQ(scene->GetCaptionArray()->GetSize(), 1) << "what the colours mean";
    // Lines of series: the points of one y together, along x.
    m_folder.Write("lines.csv", "x,y,z\n3,1,9\n1,2,8\n1,1,7\n2,1,6\n4,2,5\n");
    auto const series = Make("surface lines.csv --kind series");
    auto& curve = First<C3DIrregLineArrayCurve>(*series);
    ASSERT_EQ(curve.GetStackCounts(), (std::vector<int> { 3, 2 }));
    double const z[] { 7, 6, 9, 8, 5 };
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(curve.GetPoints()[i].Z(), z[i]);
}

TEST_F(Scenes, OfMeshesShowWhatWasAskedFor)
{
    auto const plain = Make("mesh box.tvm");
    auto const& mesh = First<C3DMeshCurve>(*plain);
    EXPECT_EQ(mesh.GetColourmapVar(), "heat");
    EXPECT_EQ(mesh.GetWireframeOn(), 0);
    // x has twice the length of y and z, in units and in the box.
    double sx = 0.0;
    double sy = 0.0;
    double sz = 0.0;
    plain->GetAxes()[0]->GetScaleFacs(sx, sy, sz);
    EXPECT_DOUBLE_EQ(sx, 2.0 * sy);
    EXPECT_DOUBLE_EQ(sx, 2.0 * sz);
    auto const facesOf = [](C3DGraph const& scene) {
        CByteArray const& flags = *First<C3DMeshCurve>(scene).GetPatches()[0]->GetFaceFlags();
        int faces = 0;
        for (int i = 0; i < flags.GetSize(); ++i)
            faces += flags[i] != 0;
        return faces;
    };
    EXPECT_EQ(facesOf(*plain), 10);
    EXPECT_EQ(facesOf(*Make("mesh box.tvm --clip :1")), 6);
    auto const bands = Make("mesh box.tvm --variable Z --levels 0.25,0.5 --outline");
    auto const& cut = First<C3DMeshCurve>(*bands);
    EXPECT_EQ(cut.GetColourmapVar(), "thezvalue");
    CDoubleArray levels;
    cut.GetContourLevels(levels);
    EXPECT_EQ(levels.GetSize(), 2);
    EXPECT_TRUE(cut.GetWireframeOn() && !cut.GetSolidOn());
}

TEST(SceneOptions, AreReadAsTheyWereMeantOrRefused)
{
    auto const clip = [](std::string const& value) -> std::string {
        try {
            std::string text;
            Options const options = ParseOptions({ "mesh", "--clip", value });
            for (AxisEnds const& ends : *options.surface.clip)
                text += (ends.min ? ShortNumber(*ends.min) : "") + ":" + (ends.max ? ShortNumber(*ends.max) : "") + " ";
            return text;
        } catch (Failure const&) {
            return "refused";
        }
    };
    EXPECT_EQ(clip("0:1,2:3,-5:4"), "0:1 2:3 -5:4 ");
    EXPECT_EQ(clip(":7,0:"), ":7 0: : ");
    EXPECT_EQ(clip(",,:5"), ": : :5 ");
    for (char const* const wrong : { "", "1", "1:0", "0:1,2", "0:1,0:1,0:1,0:1", "0:1,0:1,0:1,", "a:b" })
        EXPECT_EQ(clip(wrong), "refused") << wrong;
    EXPECT_EQ(ParseOptions({ "surface", "--bar-width", "0.5" }).surface.barWidth, std::pair(0.5, 0.5));
    EXPECT_EQ(ParseOptions({ "surface", "--bar-width", "0.5,2" }).surface.barWidth, std::pair(0.5, 2.0));
    for (char const* const wrong : { "0", "1,2,3", "-1", "11", "" })
        EXPECT_THROW(ParseOptions({ "surface", "--bar-width", wrong }), Failure) << wrong;
}

} // namespace
} // namespace ombrel::host
