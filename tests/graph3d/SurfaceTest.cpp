#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/SurfacePlot.h"
#include "ombrel/platform/framework/Exception.h"
#include "tests/graph3d/SurfaceData.h"

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>

namespace ombrel {
namespace {

using test::Fill;
using testing::DoubleNear;
using testing::ElementsAre;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::array<double, 3> Node(CSurface const& surface, int i, int j)
{
    CSurfaceMesh const& mesh = *surface.GetSurfaceMesh();
    return { mesh.GetX(i, j), mesh.GetY(i, j), mesh.GetZ(i, j) };
}

auto Near(double x, double y, double z)
{
    return ElementsAre(DoubleNear(x, 1e-12), DoubleNear(y, 1e-12), DoubleNear(z, 1e-12));
}

VARIANT Array(std::vector<std::size_t> const& bounds, std::vector<double> const& values)
{
    VARIANT variant;
    variant.vt = VT_ARRAY | VT_R8;
    variant.parray = std::make_shared<SAFEARRAY>(SAFEARRAY { bounds, values });
    return variant;
}

CString MessageOf(CSurface& surface, VARIANT const& values)
{
    try {
        surface.SetTableData(values);
    } catch (COleDispatchException* e) {
        CString const message = e->GetErrorMessage();
        e->Delete();
        return message;
    }
    return "nothing was thrown";
}

TEST(SurfaceTable, TheFirstDimensionOfAnArrayIsTheRow)
{
    CSurface surface;
    // Two rows of three values, the leftmost dimension fastest.
    surface.SetTableData(Array({ 2, 3 }, { 1, 4, 2, 5, 3, 6 }));
    CTableData table;
    surface.GetTableData(table);
    ASSERT_EQ(table.GetNumRows(), 2);
    ASSERT_EQ(table.GetNumCols(), 3);
    for (int k = 0; k < 6; ++k)
        EXPECT_EQ(table.GetAt(k / 3, k % 3), k + 1);
    EXPECT_TRUE(surface.Modified() && surface.PlotDataModified() && surface.ZValPropertyModified());
}

TEST(SurfaceTable, ArraysThatAreNoTablesAreRefusedWithTheTableAsItWas)
{
    CSurface surface;
    surface.SetTableData(Array({ 1, 2 }, { 7, 8 }));
    for (auto const& bounds : std::vector<std::vector<std::size_t>> { {}, { 4 }, { 1, 2, 2 } })
        EXPECT_EQ(MessageOf(surface, Array(bounds, { 1, 2, 3, 4 })), "ZVals array needs to be two dimensional");
    EXPECT_EQ(MessageOf(surface, VARIANT {}), "ZVals array needs to be two dimensional");
    for (auto const& bounds :
        std::vector<std::vector<std::size_t>> { { 0, 2 }, { 2, 0 }, { 3, 2 }, { 1ULL << 33, 1ULL << 33 } })
        EXPECT_EQ(MessageOf(surface, Array(bounds, { 1, 2, 3, 4 })), "Problem with ZVals array bounds");
    EXPECT_EQ(surface.GetNumTableCols(), 2);
    EXPECT_EQ(surface.GetTableDataPtr()->GetAt(0, 1), 8);
}

TEST(SurfaceEvaluation, EachCoordinateSystemPlacesItsNodes)
{
    double const r3 = std::sqrt(3.0);
    struct Case {
        C3DCurve::CurveType type;
        int radial;
        std::array<double, 3> lowest; // at (30, 60)
        std::array<double, 3> highest; // at (90, 180)
    };
    Case const cases[] = {
        { C3DCurve::ctCartesian, 0, { 30, 60, 2 }, { 90, 180, 4 } },
        { C3DCurve::ctCartesian, 1, { 15, 15 * r3, 2 }, { -90, 0, 4 } },
        // cos 30 sin 60 = 3/4, sin 30 sin 60 = √3/4, cos 60 = 1/2
        { C3DCurve::ctPolar, 0, { 1.5, r3 / 2, 1 }, { 0, 0, -4 } },
        { C3DCurve::ctCylindrical, 0, { r3, 1, 60 }, { 0, 4, 180 } },
        // 30° east, 60° north: (cos 210 sin 150, sin 210 sin 150, cos 150) = (−√3/4, −1/4, −√3/2)
        { C3DCurve::ctGeographical, 0, { -r3 / 2, -0.5, -r3 }, { 0, 4, 0 } },
    };
    for (Case const& c : cases) {
        CSurface surface;
        surface.SetTablePlacement({ 30, 60, 60, 120 });
        surface.SetCurveType(c.type);
        surface.SetUseRadialGrid(c.radial);
        Fill(surface, 2, 2, [](int col, int row) { return 2.0 + col + row; });
        ASSERT_EQ(surface.Evaluate(), 1) << c.type;
        EXPECT_THAT(Node(surface, 0, 0), Near(c.lowest[0], c.lowest[1], c.lowest[2])) << c.type << c.radial;
        EXPECT_THAT(Node(surface, 1, 1), Near(c.highest[0], c.highest[1], c.highest[2])) << c.type << c.radial;
        bool const hasRadius = c.type != C3DCurve::ctCartesian;
        EXPECT_DOUBLE_EQ(surface.GetFVal(0, 0), hasRadius ? 2.0 : c.lowest[2]);
        double min = 0;
        double max = 0;
        surface.GetUntransformedDataRange(min, max);
        EXPECT_DOUBLE_EQ(min, 2);
        EXPECT_DOUBLE_EQ(max, 4);
    }
}

TEST(SurfaceEvaluation, TheSouthPoleLiesOnThePositiveZAxis)
{
    CSurface surface;
    surface.SetTablePlacement({ 0, -90, 10, 10 });
    surface.SetCurveType(C3DCurve::ctGeographical);
    Fill(surface, 2, 2, [](int, int) { return 5.0; });
    ASSERT_EQ(surface.Evaluate(), 1);
    EXPECT_THAT(Node(surface, 1, 0), Near(0, 0, 5));
}

TEST(SurfaceEvaluation, ParametersWithoutFormulasAndTablesWithoutCellsGiveNoSurface)
{
    CSurface surface;
    EXPECT_EQ(surface.Evaluate(), 0);
    Fill(surface, 3, 3, [](int, int) { return 1.0; });
    surface.SetCurveType(C3DCurve::ctParametric);
    EXPECT_EQ(surface.Evaluate(), 0);
    surface.SetCurveType(C3DCurve::ctCartesian);
    EXPECT_EQ(surface.Evaluate(), 1);
    surface.SetTableData(CTableData(1, 5));
    EXPECT_EQ(surface.Evaluate(), 0);
    surface.SetTableData(CTableData(2, 2));
    for (int const rows : { 0, -3, 2000000000 }) {
        surface.SetNumRows(rows);
        EXPECT_EQ(surface.Evaluate(), 0) << rows;
        EXPECT_FALSE(surface.GetMesh()->HasNodes());
    }
    Fill(surface, 3, 3, [](int, int) { return kGap; });
    EXPECT_EQ(surface.Evaluate(), 0);
    double min = 17;
    double max = 18;
    surface.GetZRange(min, max);
    EXPECT_EQ(min, 17);
}

TEST(SurfaceEvaluation, GridsOfTheirOwnInterpolateAndMissWhatTheTableDoesNotReach)
{
    CSurface surface;
    surface.SetTablePlacement({ 1, 10, 2, 10 });
    Fill(surface, 3, 3, [](int c, int r) { return c + 10.0 * r; });
    EXPECT_EQ(surface.DataMeshEqualsCurveMesh(), 1);
    surface.SetGrid({ 2, 4, 0, 4, 10, 20 });
    EXPECT_EQ(surface.DataMeshEqualsCurveMesh(), 0);
    ASSERT_EQ(surface.Evaluate(), 1);
    EXPECT_TRUE(surface.VertexClipped(0, 0));
    EXPECT_EQ(Node(surface, 1, 0), (std::array { 1.0, 10.0, 0.0 }));
    EXPECT_EQ(Node(surface, 2, 1), (std::array { 2.0, 15.0, 5.5 }));
    EXPECT_EQ(Node(surface, 4, 2), (std::array { 4.0, 20.0, 11.5 }));
}

TEST(SurfaceEvaluation, AMissingValueMissesInEverySystemAndTakesPartInNoRange)
{
    for (auto const type : { C3DCurve::ctCartesian, C3DCurve::ctPolar, C3DCurve::ctGeographical }) {
        for (double const gap : { kGap, kNaN, 9e307, -std::numeric_limits<double>::infinity() }) {
            CSurface surface;
            surface.SetCurveType(type);
            Fill(surface, 3, 3, [gap](int c, int r) { return c == 1 && r == 2 ? gap : 4.0 + c; });
            ASSERT_EQ(surface.Evaluate(), 1);
            for (int i = 0; i <= 2; ++i) {
                for (int j = 0; j <= 2; ++j)
                    EXPECT_EQ(surface.VertexClipped(i, j), i == 1 && j == 2 ? 1 : 0);
            }
            double min = 0;
            double max = 0;
            surface.GetUntransformedDataRange(min, max);
            EXPECT_DOUBLE_EQ(min, 4);
            EXPECT_DOUBLE_EQ(max, 6);
        }
    }
    // Beside a gap, nodes of a finer grid that lie on the table's own values stay.
    CSurface surface;
    Fill(surface, 2, 3, [](int c, int) { return c == 2 ? kNaN : c + 1.0; });
    surface.SetGrid({ 1, 4, 0, 2, 0, 1 });
    ASSERT_EQ(surface.Evaluate(), 1);
    EXPECT_EQ(Node(surface, 2, 0)[2], 2);
    EXPECT_TRUE(surface.VertexClipped(3, 0));
}

TEST(SurfaceEvaluation, TransformsMoveNodesButNotWhatColoursThem)
{
    CSurface surface;
    Fill(surface, 2, 2, [](int c, int) { return c + 1.0; });
    CTransformArray transforms;
    transforms.Add(CCoordTransform(CCoordTransform::ctScale, 1, 1, 10));
    transforms.Add(CCoordTransform(CCoordTransform::ctTranslate, 5, 0, 0));
    surface.SetTransforms(transforms);
    ASSERT_EQ(surface.Evaluate(), 1);
    EXPECT_EQ(Node(surface, 1, 1), (std::array { 6.0, 1.0, 20.0 }));
    EXPECT_EQ(surface.GetFVal(1, 1), 2);
    EXPECT_EQ(surface.Get1DTextureCoord(0, 0), 0);
    EXPECT_EQ(surface.Get1DTextureCoord(1, 0), 1);
    double min = 0;
    double max = 0;
    surface.GetZRange(min, max);
    EXPECT_EQ(max, 20);
    surface.GetUntransformedDataRange(min, max);
    EXPECT_EQ(max, 2);
    EXPECT_EQ(surface.GetCartesian(1, 0, 2), CVertex(6, 0, 20));
}

TEST(SurfaceEvaluation, AValueTableColoursInPlaceOfTheHeights)
{
    CSurface surface;
    Fill(surface, 3, 3, [](int c, int r) { return c + r; });
    surface.SetValueTable(test::MakeTable(2, 2, [](int c, int) { return 100.0 + 20 * c; }));
    surface.SetValueTableParams(0, 0, 2, 2);
    surface.SetUseValueTable(1);
    ASSERT_EQ(surface.Evaluate(), 1);
    EXPECT_EQ(surface.GetSurfaceMesh()->GetValue(1, 2), 110);
    EXPECT_EQ(surface.Get1DTextureCoord(1, 2), 0.5);
    double min = 0;
    double max = 0;
    surface.GetUntransformedDataRange(min, max);
    EXPECT_EQ(min, 100);
    EXPECT_EQ(max, 120);
    // A line of 105 runs at x = 0.5; its height there is that of the surface: y + 0.5.
    std::vector<ContourSegment> segments;
    surface.FindContourSegments(105, segments);
    ASSERT_EQ(segments.size(), 2U);
    CVertex const end = surface.GetContourPoint(segments[1], segments[1].to, 105);
    EXPECT_THAT((std::array { end.X(), end.Y(), end.Z() }), Near(0.5, 2, 2.5));
    surface.SetUseValueTable(0);
    ASSERT_EQ(surface.Evaluate(), 1);
    surface.GetUntransformedDataRange(min, max);
    EXPECT_EQ(max, 4);
}

// --- Colours and levels

TEST(SurfaceContours, BandsAndLinesTakeTheirColoursEvenly)
{
    CSurface surface;
    surface.SetColourmap("Greyscale");
    surface.SetColourDescription(2);
    Fill(surface, 2, 2, [](int c, int) { return 60.0 * c; });
    surface.SetContoursOn(1);
    surface.SetContourMode(CSurface::cmBandsAndLines);
    ASSERT_EQ(surface.Evaluate(), 1);
    auto const levels = surface.GetContourLevels();
    EXPECT_THAT(std::vector(levels.begin(), levels.end()), ElementsAre(10, 20, 30, 40, 50));
    CColourMap const& map = *surface.GetColourmap();
    ASSERT_EQ(surface.GetContourBandColours().GetSize(), 6);
    for (int k = 0; k < 6; ++k)
        EXPECT_EQ(surface.GetContourBandColours().GetAt(k), map.GetColour(12.0 * k, 0, 60));
    ASSERT_EQ(surface.GetContourLineColours().GetSize(), 5);
    for (int k = 0; k < 5; ++k)
        EXPECT_EQ(surface.GetContourLineColours().GetAt(k), map.GetColour(15.0 * k, 0, 60));
    // A value on a level takes the lower band.
    EXPECT_EQ(surface.GetContourColour(10), map.GetColour(0, 0, 60));
    EXPECT_EQ(surface.GetContourColour(10.001), map.GetColour(12, 0, 60));
    EXPECT_EQ(surface.GetContourColour(51), map.GetColour(60, 0, 60));

    // The texture has these colours, too: texel k stands for 60 k / 1023.
    std::vector<BYTE> const texture = surface.Make1DTexture();
    ASSERT_EQ(texture.size(), 3072U);
    EXPECT_EQ(texture[3 * 170], map.GetColour(0, 0, 60) & 0xFF);
    EXPECT_EQ(texture[3 * 171], map.GetColour(12, 0, 60) & 0xFF);
    surface.SetContourMode(CSurface::cmLines);
    EXPECT_EQ(surface.Make1DTexture()[3 * 171], map.GetColour(60.0 * 171 / 1023, 0, 60) & 0xFF);

    ColourKeySource const key = surface.GetColourKeySource();
    EXPECT_EQ(key.style, ColourKeySource::Style::Bands);
    EXPECT_EQ(key.bandColours, surface.GetContourBandColours());
    EXPECT_EQ(key.bandValues, (CDoubleArray { 0, 10, 20, 30, 40, 50 }));
}

TEST(SurfaceContours, WithoutGradationAKeyHasNoLowEnd)
{
    CSurface surface;
    surface.SetGradationOn(0);
    Fill(surface, 2, 2, [](int c, int) { return 60.0 * c; });
    surface.SetContoursOn(1);
    surface.SetContourLevelMode(CSurface::clArbitrary);
    surface.SetArbContourLevels({ 30, 0, 60, 20 });
    ASSERT_EQ(surface.Evaluate(), 1);
    CDWordArray colours;
    CDoubleArray values;
    surface.GetContourColourKeyEntries(colours, values);
    EXPECT_EQ(colours.GetSize(), 3);
    // The ends of the range are no levels.
    EXPECT_EQ(values, (CDoubleArray { 30, 20 }));
    surface.SetContoursOn(0);
    EXPECT_EQ(surface.GetColourKeySource().style, ColourKeySource::Style::Range);
    surface.SetUseLUTMinMax(1);
    surface.SetLUTMinMax(-10, 200);
    EXPECT_EQ(surface.GetColourKeySource().low, -10);
    EXPECT_EQ(surface.GetColourKeySource().high, 200);
    EXPECT_EQ(surface.GetColourKeySource().dataHigh, 60);
}

TEST(SurfaceContours, HostileSettingsGiveOneBandAndNoLine)
{
    CSurface surface;
    Fill(surface, 2, 2, [](int c, int) { return 60.0 * c; });
    surface.SetContoursOn(1);
    surface.SetContourMode(CSurface::cmBandsAndLines);
    struct Case {
        int mode;
        double ref;
        double spacing;
        int bands;
    };
    for (Case const& c :
        { Case { 1, 0, 0, 6 }, { 1, 0, -5, 6 }, { 1, 0, kNaN, 6 }, { 1, kNaN, 5, 6 }, { 1, 0, 1e-9, 6 }, { 0, 0, 0, 0 },
            { 0, 0, 0, -4 }, { 0, 0, 0, 2147483647 }, { 2, 0, 0, 6 }, { 99, 0, 0, 1 } }) {
        surface.SetContourLevelMode(c.mode);
        surface.SetContourRef(c.ref);
        surface.SetContourSpacing(c.spacing);
        surface.SetNumContourBands(c.bands);
        ASSERT_EQ(surface.Evaluate(), 1);
        EXPECT_TRUE(surface.GetContourLevels().empty());
        EXPECT_EQ(surface.GetContourBandColours().GetSize(), 1);
        EXPECT_EQ(surface.GetContourColour(33), surface.GetLUTColour(0));
    }
    surface.SetContourLevelMode(1);
    surface.SetContourRef(5);
    surface.SetContourSpacing(10);
    ASSERT_EQ(surface.Evaluate(), 1);
    EXPECT_EQ(surface.GetContourLevels().size(), 6U);
}

TEST(SurfaceContours, AFlatSurfaceHasOneColour)
{
    CSurface surface;
    surface.SetContoursOn(1);
    Fill(surface, 2, 2, [](int, int) { return 3.0; });
    ASSERT_EQ(surface.Evaluate(), 1);
    EXPECT_EQ(surface.Get1DTextureCoord(1, 1), 0);
    EXPECT_TRUE(surface.GetContourLevels().empty());
    EXPECT_EQ(surface.Make1DTexture().size(), 3072U);
}

TEST(SurfaceContours, ColoursWithoutAMapAreThoseOfTheCurveLightened)
{
    CSurface surface;
    surface.SetColour(0x0000A0);
    Fill(surface, 2, 2, [](int c, int) { return c; });
    ASSERT_EQ(surface.Evaluate(), 1);
    EXPECT_EQ(surface.GetLUTColour(0), CColourMap::GetGradedColour(0x0000A0, 0, 0, 1));
    EXPECT_EQ(surface.GetLUTColour(1), CColourMap::GetGradedColour(0x0000A0, 1, 0, 1));
    EXPECT_NE(surface.GetLUTColour(1), surface.GetLUTColour(0));
    EXPECT_FALSE(surface.NeedsColourKey());
    surface.SetColourDescription(2);
    EXPECT_TRUE(surface.NeedsColourKey() && surface.CanHaveColourKey());
}

// --- Normals

TEST(SurfaceNormals, FacesAndNodesAreWorkedOutInTheBox)
{
    // A roof: heights 0, 1, 0 along x in a box of the ranges 0 … 2, 0 … 1 and 0 … 1.
    CSurface surface;
    Fill(surface, 2, 3, [](int c, int) { return c == 1 ? 1.0 : 0.0; });
    ASSERT_EQ(surface.Evaluate(), 1);
    CSurfaceMesh& mesh = *surface.GetSurfaceMesh();
    mesh.SetBoxAxes({ BoxAxis { 0, 2, 1 }, { 0, 1, 1 }, { 0, 1, 1 } });
    EXPECT_EQ(mesh.GetNormalisedVertex(1, 0), CVertex(0, -0.5, 0.5));
    // Up by 1 over half a box length.
    double const s = 1 / std::sqrt(5.0);
    for (int const triangle : { 0, 1 }) {
        CNormal const left = mesh.GetFaceNormal(0, 0, triangle);
        EXPECT_THAT((std::array { left.X(), left.Y(), left.Z() }), Near(-2 * s, 0, s));
        CNormal const right = mesh.GetFaceNormal(1, 0, triangle);
        EXPECT_THAT((std::array { right.X(), right.Y(), right.Z() }), Near(2 * s, 0, s));
    }
    // At (1, 0) two triangles of the right cell meet one of the left: −2 + 4 and 3 parts of the length √13.
    CNormal const ridge = mesh.GetNormal(1, 0);
    EXPECT_THAT((std::array { ridge.X(), ridge.Y(), ridge.Z() }), Near(2 / std::sqrt(13.0), 0, 3 / std::sqrt(13.0)));
    CNormal const corner = mesh.GetNormal(0, 1);
    EXPECT_THAT((std::array { corner.X(), corner.Y(), corner.Z() }), Near(-2 * s, 0, s));
}

TEST(SurfaceNormals, ACellWithAMissingCornerGivesNone)
{
    CSurface surface;
    Fill(surface, 2, 3, [](int c, int) { return c == 2 ? kNaN : c; });
    ASSERT_EQ(surface.Evaluate(), 1);
    CSurfaceMesh const& mesh = *surface.GetSurfaceMesh();
    EXPECT_EQ(mesh.GetFaceNormal(1, 0, 0).Z(), 0);
    EXPECT_EQ(mesh.GetNormal(2, 0).Z(), 0);
    EXPECT_EQ(mesh.GetNormal(1, 0).X(), mesh.GetFaceNormal(0, 0, 0).X());
}

// --- Coarse meshes, plots, files

TEST(SurfaceCoarseMesh, CountsAreReplacedAndComeBack)
{
    CSurface surface;
    surface.SetNumRows(100);
    surface.SetNumCols(30);
    surface.SetWireframeOn(1);
    surface.SetNumWireframeRows(40);
    EXPECT_EQ(surface.SetCoarseMeshMode(50, 20), 1);
    EXPECT_EQ(surface.GetNumRows(), 20);
    EXPECT_EQ(surface.GetSavedNumRows(), 100);
    EXPECT_EQ(surface.GetNumCols(), 30);
    EXPECT_EQ(surface.GetNumWireframeRows(), 25);
    // Nothing is coarser than asked for, and a second time keeps the first counts.
    EXPECT_EQ(surface.SetCoarseMeshMode(50, 20), 0);
    EXPECT_EQ(surface.SetCoarseMeshMode(50, 10), 1);
    EXPECT_EQ(surface.SetCoarseMeshMode(0, 0), 1);
    EXPECT_EQ(surface.GetNumRows(), 100);
    EXPECT_EQ(surface.GetNumWireframeRows(), 40);
    EXPECT_EQ(surface.SetCoarseMeshMode(0, 0), 0);
    CScanTestHeader const header;
    surface.SetScanTestHeader(&header);
    EXPECT_EQ(surface.SetCoarseMeshMode(5, 5), 0);
    EXPECT_EQ(surface.GetNumRows(), 100);
}

TEST(SurfaceWireframe, BlocksFollowTheFactorsAndSurviveAnyOfThem)
{
    CSurface surface;
    surface.SetNumRows(100);
    surface.SetNumCols(30);
    surface.SetWireframeXFac(7);
    surface.UpdateGraphParameters();
    EXPECT_EQ(surface.GetNumWireframeRows(), 25);
    EXPECT_EQ(surface.GetNumWireframeCols(), 4);
    surface.SetWireframeXFac(0);
    surface.SetWireframeYFac(-1);
    surface.UpdateGraphParameters();
    EXPECT_EQ(surface.GetNumWireframeCols(), 30);
    EXPECT_EQ(surface.GetNumWireframeRows(), -100);
}

TEST(SurfacePlot, RangesAreThoseOfTheCurvesThatHaveNodes)
{
    CSurfacePlot plot;
    double min = 1;
    double max = 2;
    plot.GetZRange(min, max);
    EXPECT_EQ(max, 2);
    for (double const height : { 5.0, -3.0, kNaN }) {
        auto* const surface = static_cast<CSurface*>(plot.CreateCurve());
        Fill(*surface, 2, 2, [height](int c, int) { return height + c; });
        surface->Evaluate();
    }
    plot.CreateCurve();
    plot.GetZRange(min, max);
    EXPECT_EQ(min, -3);
    EXPECT_EQ(max, 6);
    plot.GetXRange(min, max);
    EXPECT_EQ(min, 0);
    EXPECT_EQ(max, 1);
}

TEST(SurfaceFiles, ZValuesGiveTableGridAndCoordinates)
{
    auto const path = std::filesystem::path(testing::TempDir()) / "surface.TVL";
    std::ofstream(path) << "1 1 2 3 10 5 1 0.5 0\n1 2 3\n4 5 6\n";
    CSurface surface;
    EXPECT_EQ(surface.SetPathname("surface.txt"), 0);
    ASSERT_EQ(surface.SetPathname(CString(path.string().c_str())), 1);
    EXPECT_EQ(surface.GetFileType(), CSurface::ftZVals);
    EXPECT_EQ(surface.GetUseRadialGrid(), 1);
    EXPECT_EQ(surface.GetNumRows(), 1);
    EXPECT_EQ(surface.GetNumCols(), 2);
    EXPECT_EQ(surface.GetXMax(), 12);
    EXPECT_EQ(surface.GetYMin(), 5);
    ASSERT_EQ(surface.Evaluate(), 1);
    EXPECT_EQ(Node(surface, 2, 1)[2], 6);
    EXPECT_EQ(surface.GetPathname(), CString(path.string().c_str()));
}

} // namespace
} // namespace ombrel
