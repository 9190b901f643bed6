#include "ombrel/Init.h"
#include "ombrel/foundation/VException.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DObjectCube.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/graph3d/3DObjectCylinder.h"
#include "ombrel/graph3d/3DObjectPlot.h"
#include "ombrel/graph3d/3DObjectSphere.h"
#include "ombrel/graph3d/objects/ObjectMesh.h"
#include "ombrel/graph3d/objects/ObjectScene.h"
#include "tests/io/DataFile.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

void ExpectNear(CVertex const& v, CVertex const& wanted, double tolerance = 1e-6)
{
    for (int k = 0; k < 3; ++k)
        EXPECT_NEAR(v[k], wanted[k], tolerance) << "component " << k;
}

/// A curve with the objects of a text.
struct TextCurve : C3DObjectCurve {
    explicit TextCurve(char const* text)
    {
        SetFormulaString(text);
        Evaluate();
    }
    template <typename T> T& Get(int i) { return dynamic_cast<T&>(*GetObjects()[i]); }
};

void Write(std::string const& path, std::string const& text) { std::ofstream(path, std::ios::binary) << text; }

/// Six times the volume inside of the faces, which surround the origin.
double SixVolumes(ObjectMesh const& mesh)
{
    double sum = 0.0;
    auto const add = [&](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
        CVertex const& u = mesh.points[a].vertex;
        CVertex const& v = mesh.points[b].vertex;
        CVertex const& w = mesh.points[c].vertex;
        sum += std::fabs(u.X() * (v.Y() * w.Z() - v.Z() * w.Y()) + u.Y() * (v.Z() * w.X() - v.X() * w.Z())
            + u.Z() * (v.X() * w.Y() - v.Y() * w.X()));
    };
    for (ObjectMesh::Face const& f : mesh.faces) {
        add(f[0], f[1], f[2]);
        add(f[0], f[2], f[3]);
    }
    return sum;
}

TEST(Objects, EveryPropertyOfTheLanguage)
{
    TextCurve curve("// kinds\r\n"
                    "Sphere\n stacks: 7\nSlices: 9\nradii: 1 2 3\nCOLOUR: 0 0 255\nwireframecolour: 1 2 3\n\n"
                    "transparency: 0.25\nWireframe\n// inside\ngradation\nEndObject\n"
                    "nothing here\n"
                    "a cylinder:\nradii: 2 3\nlength: 8\ntopendratio: 0.5\nhidetop\nstacks: 4\nslices: 5\nendobject\n"
                    "cylinder\nradius: 2\nhidebottom\ncolour: red\ntransparency: x\nendobject\n"
                    "cube of a sphere\nradius: 4\nradius: big\nendobject\n"
                    "cube\ndimensions: 1 2 3\ndimensions: 4 5\ncolour: 300 -5 7\n");
    ASSERT_EQ(curve.GetObjects().GetSize(), 5);
    auto const& sphere = curve.Get<C3DObjectSphere>(0);
    EXPECT_EQ(sphere.GetStacks(), 7);
    EXPECT_EQ(sphere.GetSlices(), 9);
    EXPECT_EQ(sphere.GetRadiusX(), 1.0);
    EXPECT_EQ(sphere.GetRadiusZ(), 3.0);
    EXPECT_EQ(sphere.GetColour(), RGB(0, 0, 255));
    EXPECT_EQ(sphere.GetWireframeColour(), RGB(1, 2, 3));
    EXPECT_EQ(sphere.GetTransparency(), 0.25);
    EXPECT_EQ(sphere.GetWireframeOn(), 1);
    EXPECT_EQ(sphere.GetGradationOn(), 1);
    auto const& frustum = curve.Get<C3DObjectCylinder>(1);
    EXPECT_EQ(frustum.GetRadiusY(), 3.0);
    EXPECT_EQ(frustum.GetHalfHeight(), 4.0);
    EXPECT_EQ(frustum.GetScaleFac(), 0.5);
    EXPECT_EQ(frustum.GetTopShown(), 0);
    EXPECT_EQ(frustum.GetBottomShown(), 1);
    EXPECT_EQ(frustum.GetStacks(), 4);
    EXPECT_EQ(frustum.GetSlices(), 5);
    auto const& cylinder = curve.Get<C3DObjectCylinder>(2);
    EXPECT_EQ(cylinder.GetRadiusX(), 2.0);
    EXPECT_EQ(cylinder.GetBottomShown(), 0);
    EXPECT_EQ(cylinder.GetColour(), 255U);
    EXPECT_EQ(cylinder.GetTransparency(), 0.0);
    // The kind that is looked for first counts; a value that is no number changes nothing.
    EXPECT_EQ(curve.Get<C3DObjectSphere>(3).GetRadiusY(), 4.0);
    auto const& cube = curve.Get<C3DObjectCube>(4);
    EXPECT_EQ(cube.GetRadiusZ(), 3.0);
    EXPECT_EQ(cube.GetColour(), RGB(255, 0, 7));
    std::vector<std::uint64_t> lines;
    for (C3DObjectFile::Note const& note : curve.GetReadNotes())
        lines.push_back(note.line);
    EXPECT_EQ(lines, (std::vector<std::uint64_t> { 14, 26, 27, 31, 35, 36 }));
    EXPECT_EQ(curve.GetFileType(), C3DObjectCurve::ftFormula);
}

TEST(Objects, PlacementsApplyInTheOrderTheyAreGiven)
{
    C3DObjectCube cube;
    cube.SetRadii(1.0, 2.0, 3.0);
    ExpectNear(cube.GetWorldVertex({ 1, -1, 1 }), { 1, -2, 3 }, 0.0);
    cube.Rotate(90.0, 0.0, 0.0);
    ExpectNear(cube.TransformVertex({ 0, 1, 0 }), { 0, 0, 1 });
    cube.Translate(1.0, 0.0, 0.0);
    ExpectNear(cube.TransformVertex({ 0, 1, 0 }), { 1, 0, 1 });
    cube.Scale(2.0, 3.0, 4.0);
    ExpectNear(cube.TransformVertex({ 0, 1, 0 }), { 2, 0, 4 });
    // Moved first and turned then, it is somewhere else.
    C3DObjectSphere sphere;
    sphere.Translate(0.0, 1.0, 0.0);
    sphere.Rotate(90.0, 0.0, 90.0);
    ExpectNear(sphere.GetWorldVertex({ 0, 0, 0 }), { 0, 0, 1 });
    // About x first, then y, then z.
    sphere.InitTransforms();
    sphere.Rotate(90.0, 90.0, 90.0);
    ExpectNear(sphere.TransformVertex({ 0, 1, 0 }), { 0, 1, 0 });
    ExpectNear(sphere.TransformVertex({ 1, 0, 0 }), { 0, 0, -1 });
    // A third of a turn about the diagonal takes x to y, y to z, z to x.
    sphere.InitTransforms();
    EXPECT_TRUE(sphere.IsTransformIdentity());
    sphere.RotateArbAxis(2.0, 2.0, 2.0, 120.0);
    ExpectNear(sphere.TransformVertex({ 1, 2, 3 }), { 3, 1, 2 });
    sphere.RotateArbAxis(0.0, 0.0, 0.0, 120.0);
    ExpectNear(sphere.TransformVertex({ 1, 2, 3 }), { 3, 1, 2 });
    // The curve's own come last.
    C3DObjectCurve curve;
    CTransformArray transforms;
    transforms.Add({ CCoordTransform::ctTranslate, 10.0, 20.0, 30.0 });
    curve.SetTransforms(transforms);
    sphere.SetCurve(&curve);
    ExpectNear(sphere.TransformVertex({ 1, 2, 3 }), { 13, 21, 32 });
    CNormal const n = sphere.TransformNormal({ 0, 0, 5 });
    ExpectNear({ n.X(), n.Y(), n.Z() }, { 1, 0, 0 });
}

TEST(Objects, CylindersReachFromPointToPoint)
{
    struct {
        CVertex from;
        CVertex to;
    } const cases[] = { { { 0, 0, 0 }, { 0, 0, 2 } }, { { 0, 0, 2 }, { 0, 0, -4 } }, { { 1, 2, 3 }, { 5, 2, 3 } },
        { { 1, 1, 1 }, { 0, -3, 2 } }, { { 0, 0, 1e9 }, { 1e-3, 0, 1e9 } }, { { 1, 2, 3 }, { 1, 2, 3 } } };
    for (auto const& c : cases) {
        C3DObjectCylinder cylinder;
        cylinder.SetRadii(0.25, 0.25);
        cylinder.Translate(7, 7, 7);
        cylinder.SetEndpoints(c.from, c.to);
        CVertex const d = c.to - c.from;
        double const length = std::hypot(d.X(), d.Y(), d.Z());
        EXPECT_DOUBLE_EQ(cylinder.GetHalfHeight(), length / 2.0);
        ExpectNear(cylinder.GetWorldVertex({ 0, 0, -1 }), c.from);
        ExpectNear(cylinder.GetWorldVertex({ 0, 0, 1 }), c.to);
        // The side stands off the axis by the radius, at a right angle.
        for (CVertex const& side : { CVertex(1, 0, 0), CVertex(0, 1, 0) }) {
            CVertex const off = cylinder.GetWorldVertex(side) - (c.from + c.to) * 0.5;
            EXPECT_NEAR(std::hypot(off.X(), off.Y(), off.Z()), 0.25, 1e-6);
            EXPECT_NEAR(off.X() * d.X() + off.Y() * d.Y() + off.Z() * d.Z(), 0.0, 1e-6 * (1.0 + length));
        }
    }
    // A direction that is nearly that of z, or its opposite, counts as such.
    C3DObjectCylinder upright;
    upright.SetEndpoints({ 0, 0, 0 }, { 0.003, 0, 1 });
    EXPECT_EQ(upright.GetTransform()[8], 0.0);
    upright.SetEndpoints({ 0, 0, 0 }, { 0.004, 0, 1 });
    EXPECT_NE(upright.GetTransform()[8], 0.0);
    // What comes after the endpoints does not count.
    TextCurve curve("cylinder\nradius: 3\nendpoints: 0 0 0 0 0 2\nradius: 1\nlength: 9\nendobject");
    ExpectNear(curve.Get<C3DObjectCylinder>(0).GetWorldVertex({ 1, 0, 1 }), { 3, 0, 2 });
    EXPECT_EQ(curve.GetReadNotes().size(), 2U);
}

TEST(Objects, MeshesAreClosedAndTheirNormalsStandOnThem)
{
    C3DObjectSphere sphere;
    sphere.SetRadii(1, 2, 3);
    sphere.SetSlices(400);
    sphere.SetStacks(200);
    C3DObjectCylinder cylinder;
    cylinder.SetRadii(2, 1);
    cylinder.SetHalfHeight(1.5);
    cylinder.SetSlices(400);
    C3DObjectCylinder frustum;
    frustum.SetRadii(1, 1);
    frustum.SetSlices(400);
    frustum.SetScaleFac(0.5);
    frustum.SetEndpoints({ 0, 0, -3 }, { 0, 0, 3 });
    C3DObjectCylinder cone = frustum;
    cone.SetScaleFac(0.0);
    C3DObjectCube cube;
    cube.SetRadii(1, 2, 3);
    double const pi = std::numbers::pi;
    struct {
        C3DObject const& object;
        double volume;
        std::size_t faces;
        CVertex size;
    } const cases[] = {
        { sphere, 4.0 / 3.0 * pi * 6.0, 400 * 200, { 1, 2, 3 } },
        { cylinder, pi * 2.0 * 3.0, 400 * 10 + 2 * 400, { 2, 1, 1.5 } },
        { frustum, pi * 6.0 / 3.0 * 1.75, 400 * 10 + 2 * 400, { 1, 1, 3 } },
        { cone, pi * 6.0 / 3.0, 400 * 10 + 400, { 1, 1, 3 } },
        { cube, 48.0, 600, { 1, 2, 3 } },
    };
    for (auto const& c : cases) {
        ObjectMesh mesh;
        c.object.MakeMesh(mesh, C3DObject::kMostDivisions);
        EXPECT_EQ(mesh.faces.size(), c.faces);
        EXPECT_LE(mesh.points.size(), c.object.CountPoints(C3DObject::kMostDivisions));
        EXPECT_NEAR(SixVolumes(mesh) / 6.0, c.volume, 2e-3 * c.volume);
        auto object = const_cast<C3DObject*>(&c.object);
        CVertex min;
        CVertex max;
        object->GetRanges(min, max);
        ExpectNear(max, c.size, 1e-6);
        ExpectNear(min, c.size * -1.0, 1e-6);
        // At right angles to the sides of the faces, outwards, of length 1.
        for (ObjectMesh::Face const& face : mesh.faces) {
            for (std::size_t k = 0; k < 4; ++k) {
                CNormal const& n = mesh.points[face[k]].normal;
                CVertex const& p = mesh.points[face[k]].vertex;
                CVertex const side = mesh.points[face[(k + 1) % 4]].vertex - p;
                double const length = std::hypot(side.X(), side.Y(), side.Z());
                ASSERT_NEAR(n.X() * n.X() + n.Y() * n.Y() + n.Z() * n.Z(), 1.0, 1e-9);
                ASSERT_NEAR(n.X() * side.X() + n.Y() * side.Y() + n.Z() * side.Z(), 0.0, 0.05 * length);
                ASSERT_GT(n.X() * p.X() + n.Y() * p.Y() + n.Z() * p.Z(), 0.0);
            }
        }
    }
    // Ends that are hidden are not there.
    frustum.SetTopShown(0);
    ObjectMesh open;
    frustum.MakeMesh(open, 10);
    EXPECT_EQ(open.faces.size(), 10U * 10 + 10);
}

TEST(Objects, FacesTurnToTheLeftSeenFromWhereTheirNormalsPoint)
{
    C3DObjectSphere sphere;
    C3DObjectCylinder cylinder;
    cylinder.SetScaleFac(0.5);
    C3DObjectCube cube;
    C3DObjectSphere mirrored;
    mirrored.Scale(1, -1, 1);
    ObjectScene scene;
    BoxAxes const axes { { { -2, 2, 1 }, { -2, 2, 1 }, { -2, 2, 1 } } };
    int faces = 0;
    for (C3DObject* object : std::initializer_list<C3DObject*> { &sphere, &cylinder, &cube, &mirrored }) {
        scene.Clear();
        scene.Add(*object, axes);
        auto const vertices = scene.GetOpaque().GetVertices();
        auto const corners = scene.GetOpaque().GetTriangles();
        for (std::size_t c = 0; c < corners.size(); c += 3) {
            auto const side = [&](std::size_t k, std::size_t axis) {
                return vertices[corners[c + k]].place[axis] - vertices[corners[c]].place[axis];
            };
            float along = 0.0F;
            for (std::size_t k = 0; k < 3; ++k) {
                float const cross
                    = side(1, (k + 1) % 3) * side(2, (k + 2) % 3) - side(1, (k + 2) % 3) * side(2, (k + 1) % 3);
                along += cross * vertices[corners[c]].normal[k];
            }
            ASSERT_GE(along, 0.0F);
            faces += along > 0.0F ? 1 : 0;
        }
    }
    EXPECT_EQ(faces, 2 * (18 * 40 + 40) + 10 * 40 + 40 + 1200);
}

TEST(Objects, CountsThatMakeNoShapeAreRefusedWithTheirLine)
{
    test::DataFile const data("counts.tvo", "");
    std::string const path = data.GetPath().ToUtf8();
    for (char const* line :
        { "slices: 2", "slices: -5", "stacks: 0", "stacks: 1", "slices: 1001", "slices: 99999999999999999999" }) {
        Write(path, "cube\nendobject\n\nsphere\n" + std::string(line) + "\nendobject\n");
        C3DObjectCurve curve;
        curve.AddObject(std::make_unique<C3DObjectCube>());
        try {
            WithErrors([&] { curve.SetPathname(path); });
            FAIL() << line;
        } catch (Error const& e) {
            EXPECT_EQ(e.GetLine(), std::optional<std::uint64_t>(5)) << e.what();
            EXPECT_EQ(e.GetPath(), path);
        }
        EXPECT_EQ(curve.GetObjects().GetSize(), 1);
        EXPECT_TRUE(curve.GetPathname().IsEmpty());
    }
    Write(path, "cylinder\nstacks: 1\nslices: 1000\n");
    C3DObjectCurve curve;
    EXPECT_EQ(curve.SetPathname(path), 1);
}

TEST(Objects, AbsurdShapesOfDocumentsAreDrawnWithFewerFaces)
{
    C3DObjectCurve curve;
    for (int i = 0; i < 200; ++i) {
        auto sphere = std::make_unique<C3DObjectSphere>();
        sphere->SetSlices(i % 2 ? 2000000000 : -7);
        sphere->SetStacks(2000000000);
        curve.AddObject(std::move(sphere));
    }
    double const bad = std::numeric_limits<double>::quiet_NaN();
    auto cube = std::make_unique<C3DObjectCube>();
    cube->SetNumDivisions(0);
    cube->SetRadii(bad, 1e308, 1);
    cube->Scale(1e308, 1e308, bad);
    curve.AddObject(std::move(cube));
    EXPECT_EQ(curve.Evaluate(), 1);
    double min = 9.0;
    double max = 9.0;
    curve.GetZRange(min, max);
    EXPECT_NEAR(max, 0.5, 1e-9);
    std::size_t points = 0;
    ObjectScene scene;
    for (C3DObject const* object : curve.GetObjects()) {
        points += object->CountPoints(object->GetMostDrawnDivisions());
        scene.Add(*object, curve.GetNormalisingAxes());
    }
    EXPECT_LE(points, std::size_t(1) << 20);
    EXPECT_GT(points, std::size_t(1) << 18);
    EXPECT_EQ(scene.GetOpaque().GetVertices().size(), points);
    for (FaceVertex const& vertex : scene.GetOpaque().GetVertices())
        ASSERT_TRUE(std::isfinite(vertex.place[0] + vertex.place[1] + vertex.place[2]));
}

TEST(Objects, RangesFollowObjectsAndTransforms)
{
    TextCurve curve("sphere\nradius: 2\ntranslate: 1 0 0\nendobject\ncube\ndimensions: 1 1 5\nendobject");
    EXPECT_TRUE(curve.IsValid());
    double min = 0.0;
    double max = 0.0;
    curve.GetXRange(min, max);
    EXPECT_NEAR(min, -1.0, 1e-6);
    EXPECT_NEAR(max, 3.0, 1e-6);
    curve.Get<C3DObjectCube>(1).SetRadii(4, 1, 7);
    curve.GetXRange(min, max);
    EXPECT_NEAR(min, -4.0, 1e-6);
    curve.GetZRange(min, max);
    EXPECT_NEAR(max, 7.0, 1e-6);
    CTransformArray transforms;
    transforms.Add({ CCoordTransform::ctScale, 1.0, 1.0, 10.0 });
    curve.SetTransforms(transforms);
    curve.GetZRange(min, max);
    EXPECT_NEAR(max, 70.0, 1e-6);
    ExpectNear(curve.GetNormalisedVertex({ 5, -10, 50 }), { 0.25, -0.5, 0.25 });
    // Another text, and one that is at fault
    curve.SetFormulaString("cylinder\nendobject");
    EXPECT_EQ(curve.Evaluate(), 1);
    EXPECT_EQ(curve.GetObjects().GetSize(), 1);
    curve.SetFormulaString("sphere\nslices: 0");
    EXPECT_EQ(curve.Evaluate(), 0);
    EXPECT_TRUE(curve.GetObjects().IsEmpty());
    EXPECT_FALSE(curve.IsValid());
    min = 8.0;
    curve.GetYRange(min, max);
    EXPECT_EQ(min, 8.0);
}

TEST(Objects, ColoursRiseFromTheLowestToTheHighestPoint)
{
    C3DObjectSphere sphere;
    sphere.SetColour(RGB(200, 0, 0));
    CVertex min;
    CVertex max;
    sphere.GetRanges(min, max);
    EXPECT_EQ(sphere.GetVertexColour(0.5), RGB(200, 0, 0));
    sphere.SetGradationOn(1);
    EXPECT_EQ(sphere.GetVertexColour(-0.5), CColourMap::GetGradedColour(RGB(200, 0, 0), 0.0, 0.0, 1.0));
    EXPECT_EQ(sphere.GetVertexColour(0.5), CColourMap::GetGradedColour(RGB(200, 0, 0), 1.0, 0.0, 1.0));
    EXPECT_NE(sphere.GetVertexColour(0.0), sphere.GetVertexColour(0.25));
    EXPECT_EQ(sphere.GetVertexColour(5.0), sphere.GetVertexColour(0.5));
    // That of a curve is its objects', present and future.
    TextCurve curve("cube\ncolour: 1 2 3\nendobject");
    EXPECT_EQ(curve.GetLegendEntry()->colour, RGB(1, 2, 3));
    curve.SetGradationOn(1);
    EXPECT_EQ(curve.GetObjects()[0]->GetGradationOn(), 1);
    curve.Evaluate();
    EXPECT_EQ(curve.GetObjects()[0]->GetGradationOn(), 1);
    sphere.SetGradationOn(0);
    sphere.SetColourDescription(2);
    EXPECT_NE(sphere.GetVertexColour(0.5), RGB(200, 0, 0));
}

TEST(Objects, FilesAreReadAgainOnlyWhenTheyHaveChanged)
{
    namespace fs = std::filesystem;
    test::DataFile const data("shapes.TVO", "");
    std::string const path = data.GetPath().ToUtf8();
    fs::remove(path);
    C3DObjectCurve curve;
    auto const messageOf = [&](CString const& name) {
        try {
            curve.SetPathname(name);
        } catch (CVException* e) {
            CString text = e->message;
            e->Delete();
            return text;
        }
        return CString("read");
    };
    EXPECT_EQ(messageOf(path), CString("File not found."));
    EXPECT_EQ(messageOf(""), CString("File not found."));
    Write(path, "Sphere\nRadius: 2\nColour: 0 0 255\nEndObject\n");
    EXPECT_EQ(messageOf(path), CString("read"));
    ASSERT_EQ(curve.GetObjects().GetSize(), 1);
    auto const& sphere = dynamic_cast<C3DObjectSphere&>(*curve.GetObjects()[0]);
    EXPECT_EQ(sphere.GetRadiusX(), 2.0);
    EXPECT_EQ(sphere.GetSlices(), 20);
    EXPECT_EQ(sphere.GetColour(), RGB(0, 0, 255));
    EXPECT_EQ(curve.GetFileType(), C3DObjectCurve::ftTVO);
    EXPECT_EQ(curve.GetDataSourceType(), CPlotComponent::dsFile);

    // Other bytes with the time of before are not looked at.
    auto const time = fs::last_write_time(path);
    Write(path, "cube\nendobject\ncube\nendobject\n");
    fs::last_write_time(path, time);
    // Nor is one that is gone, under a name that only differs in its capitals.
    EXPECT_EQ(messageOf(CString(path).MakeUpper()), CString("read"));
    EXPECT_EQ(messageOf(path), CString("read"));
    EXPECT_EQ(curve.GetObjects().GetSize(), 1);
    fs::last_write_time(path, time + std::chrono::milliseconds(20));
    EXPECT_EQ(messageOf(path), CString("read"));
    EXPECT_EQ(curve.GetObjects().GetSize(), 2);
    curve.Evaluate();
    EXPECT_EQ(curve.GetObjects().GetSize(), 2);
    fs::remove(path);
    EXPECT_EQ(messageOf(path), CString("read"));
    EXPECT_EQ(curve.GetObjects().GetSize(), 2);

    // A text takes the file's place, and the file that of the text.
    Write(path, "sphere\nendobject\n");
    EXPECT_EQ(messageOf(path), CString("read"));
    auto const kept = fs::last_write_time(path);
    curve.SetDataSourceType(CPlotComponent::dsFormula);
    curve.SetFormulaString("cube\ncube\nendobject\ncube\n");
    curve.Evaluate();
    EXPECT_EQ(curve.GetFileType(), C3DObjectCurve::ftFormula);
    EXPECT_EQ(messageOf(path), CString("read"));
    EXPECT_EQ(fs::last_write_time(path), kept);
    ASSERT_EQ(curve.GetObjects().GetSize(), 1);
    EXPECT_TRUE(dynamic_cast<C3DObjectSphere*>(curve.GetObjects()[0]));
    test::DataFile const other("shapes.txt", "cube\n");
    EXPECT_EQ(messageOf(other.GetPath()), CString("Unsupported file type"));
    EXPECT_EQ(curve.GetObjects().GetSize(), 1);
    test::DataFile const molecule("shapes.pdb", "cube\n");
    EXPECT_EQ(messageOf(molecule.GetPath()), CString("read"));
    EXPECT_TRUE(curve.GetObjects().IsEmpty());
}

TEST(ObjectArchive, EveryFieldIsInItsPlace)
{
    auto const common = [] {
        Bytes bytes;
        bytes.Int(1).Short(3).Int(0x112233, 0x445566, 7).Double(0.25).Int(8, 9);
        for (int i = 1; i <= 16; ++i)
            bytes.Double(i);
        return bytes;
    };
    C3DObjectSphere sphere;
    C3DObjectCylinder cylinder;
    C3DObjectCube cube;
    struct {
        C3DObject& object;
        Bytes bytes;
    } const cases[] = {
        { sphere, common().Int(1).Double(1.5, 2.5, 3.5).Int(11, 12) },
        { cylinder, common().Int(1).Double(1.5, 2.5, 3.5, 4.5).Int(11, 12, 0, 13) },
        { cube, common().Int(1).Double(1.5, 2.5, 3.5).Int(11) },
    };
    for (auto const& c : cases) {
        ASSERT_TRUE(Load(c.object, c.bytes));
        EXPECT_EQ(Stored(c.object), c.bytes);
        EXPECT_EQ(c.object.GetColourDescription(), 3);
        EXPECT_EQ(c.object.GetColour(), 0x112233U);
        EXPECT_EQ(c.object.GetWireframeColour(), 0x445566U);
        EXPECT_EQ(c.object.GetWireframeOn(), 7);
        EXPECT_EQ(c.object.GetTransparency(), 0.25);
        EXPECT_EQ(c.object.GetGradationOn(), 8);
        EXPECT_EQ(c.object.TransformVertex({ 1, 0, 0 }), CVertex(14, 16, 18));
    }
    EXPECT_EQ(sphere.GetRadiusZ(), 3.5);
    EXPECT_EQ(sphere.GetStacks(), 12);
    EXPECT_EQ(cylinder.GetHalfHeight(), 3.5);
    EXPECT_EQ(cylinder.GetScaleFac(), 4.5);
    EXPECT_EQ(cylinder.GetTopShown(), 0);
    EXPECT_EQ(cylinder.GetBottomShown(), 13);
    EXPECT_EQ(cube.GetNumDivisions(), 11);
}

TEST(ObjectArchive, CylindersBetweenPointsComeBackWhereTheyWere)
{
    C3DObjectCylinder cylinder;
    cylinder.SetRadii(0.25, 0.5);
    cylinder.SetEndpoints({ 1, 2, 3 }, { -4, 0, 9 });
    cylinder.Rotate(10, 20, 30);
    cylinder.SetRadii(8, 8);
    C3DObjectCylinder loaded;
    loaded.SetEndpoints({ 0, 0, 0 }, { 1, 1, 1 });
    ASSERT_TRUE(Load(loaded, Stored(cylinder)));
    for (CVertex const& v : { CVertex(1, 0, 0), CVertex(0, 1, 1), CVertex(0.5, -0.5, -1) })
        ExpectNear(loaded.GetWorldVertex(v), cylinder.GetWorldVertex(v), 1e-12);
    EXPECT_EQ(loaded.GetRadiusY(), 0.5);
    EXPECT_EQ(Stored(loaded), Stored(cylinder));
}

TEST(ObjectArchive, CurvesKeepTheirObjectsAndWhereTheyCameFrom)
{
    OmbrelInit();
    C3DObjectCurve empty;
    C3DCurve base;
    base.SetTitle("Object Curve");
    // Version, path, 1 January 1990 and its status, loaded, file type, no objects.
    std::size_t const own = Stored(empty).Get().size() - Stored(base).Get().size();
    EXPECT_EQ(own, 4U + 4 + 12 + 8 + 2);
    C3DGraph graph(1);
    auto* const plot = graph.AddPlot(it3DObjectPlot);
    ASSERT_TRUE(plot);
    EXPECT_EQ(plot->GetItemType(), 43);
    EXPECT_EQ(plot->GetTitle(), CString("Object Plot"));
    auto* const curve = dynamic_cast<C3DObjectCurve*>(plot->CreateCurve());
    ASSERT_TRUE(curve);
    EXPECT_EQ(curve->GetItemType(), 44);
    EXPECT_EQ(graph.HasObjectCurve(), 1);
    test::DataFile const data("kept.tvo", "sphere\nradius: 3\nendobject\ncube\ncolour: 1 2 3\nendobject\ncylinder\n");
    std::string const path = data.GetPath().ToUtf8();
    curve->SetPathname(path);
    C3DObjectPlot loaded;
    ASSERT_TRUE(Load(loaded, Stored(*plot)));
    EXPECT_EQ(Stored(loaded), Stored(*plot));
    auto* const copy = dynamic_cast<C3DObjectCurve*>(loaded.GetComponent(0));
    ASSERT_TRUE(copy);
    ASSERT_EQ(copy->GetObjects().GetSize(), 3);
    EXPECT_EQ(copy->GetObjects()[1]->GetColour(), RGB(1, 2, 3));
    EXPECT_EQ(copy->GetObjects()[2]->GetCurve(), copy);
    EXPECT_EQ(copy->GetPathname(), CString(path));
    copy->Evaluate();
    double min = 0.0;
    double max = 0.0;
    copy->GetYRange(min, max);
    EXPECT_NEAR(max, 3.0, 1e-6);
    // The file is the same one; another is read.
    EXPECT_EQ(copy->SetPathname(path), 1);
    std::filesystem::remove(path);
    EXPECT_EQ(copy->SetPathname(path), 1);
    EXPECT_EQ(copy->GetObjects().GetSize(), 3);
    Bytes const bytes = Stored(*curve);
    for (std::size_t length = 0; length < bytes.Get().size(); length += 5) {
        C3DObjectCurve cut;
        EXPECT_FALSE(Load(cut, Bytes::Of(std::span(bytes.Get()).first(length)))) << length;
    }
}

} // namespace
} // namespace ombrel
