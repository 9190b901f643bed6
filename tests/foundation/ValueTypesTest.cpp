#include "ombrel/foundation/CoordTransform.h"
#include "ombrel/foundation/FaceIndices.h"
#include "ombrel/foundation/FontData.h"
#include "ombrel/foundation/PathName.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/foundation/VException.h"
#include "ombrel/foundation/Vertex.h"
#include "tests/model/ArchiveBytes.h"
#include "tests/platform/framework/Refused.h"

#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

TEST(ValueTypes, HaveTheirBytesInArchives)
{
    CRealPoint point(1.5, -2.0);
    CRealRect rect(0.0, 10.0, 20.0, 5.0);
    CVertex vertex(1.0, 2.0, 3.0);
    CNormal normal(0.0, 0.0, 1.0);
    CCoordTransform transform(CCoordTransform::ctRotate, 90.0, 0.0, 45.0);
    CFontData font("Times", 700, 1, 0.85);
    using Case = std::pair<CObject*, Bytes>;
    Case const cases[] = {
        { &point, Bytes().Int(1).Double(1.5, -2.0) },
        { &rect, Bytes().Int(1).Int(1).Double(0.0, 10.0).Int(1).Double(20.0, 5.0) },
        { &vertex, Bytes().Int(1).Double(1.0, 2.0, 3.0) },
        { &normal, Bytes().Int(1).Double(0.0, 0.0, 1.0) },
        { &transform, Bytes().Int(1).Int(1).Double(90.0, 0.0, 45.0) },
        { &font, Bytes().Int(1).Text("Times").Int(700, 1).Double(0.85) },
    };
    for (auto const& [object, bytes] : cases) {
        CRuntimeClass const& runtimeClass = object->GetRuntimeClass();
        EXPECT_EQ(Stored(*object), bytes) << runtimeClass.name;
        ASSERT_TRUE(runtimeClass.create) << runtimeClass.name;
        std::unique_ptr<CObject> const copy = runtimeClass.create();
        EXPECT_TRUE(Load(*copy, bytes)) << runtimeClass.name;
        EXPECT_EQ(Stored(*copy), bytes) << runtimeClass.name;
    }
}

TEST(ValueTypes, RectanglesKeepTheirCornersInAnyOrder)
{
    CRealRect rect(1.0, 2.0, 3.0, 4.0);
    // The version in the stream does not matter.
    ASSERT_TRUE(Load(rect, Bytes().Int(7).Int(8).Double(-1.0, 9.0).Int(1).Double(6.0, -3.0)));
    EXPECT_EQ(rect, CRealRect(-1.0, 9.0, 6.0, -3.0));
    EXPECT_EQ(rect.Height(), 12.0);
    CRealRect const copy = CRealRect(CRealPoint(5.0, 1.0), CRealPoint(2.0, 3.0));
    EXPECT_EQ(copy.Width(), -3.0);
    EXPECT_EQ(copy.left, 5.0);
    EXPECT_EQ(copy.bottom, 3.0);
}

TEST(ValueTypes, VerticesCompareExactlyOrInSinglePrecisionAndScale)
{
    CVertex vertex(1, 2, 3);
    CVertex const near(1, 2, 3.0000000001);
    EXPECT_EQ(vertex, CVertex(1, 2, 3));
    EXPECT_FALSE(vertex == near);
    EXPECT_TRUE(vertex.FloatEq(near));
    EXPECT_FALSE(vertex.FloatEq(CVertex(1, 2, 3.000001)));
    EXPECT_FALSE(vertex.FloatEq(CVertex(1, std::numeric_limits<double>::quiet_NaN(), 3)));
    CVertex const doubled = vertex * 2.0 + CVertex(1, 1, 1);
    EXPECT_EQ(doubled, CVertex(3, 5, 7));
    double const factors[] = { 10.0, 0.5, -1.0 };
    vertex.Scale(factors);
    EXPECT_EQ(vertex, CVertex(10, 1, -3));
    vertex.Scale(2.0);
    EXPECT_EQ(vertex, CVertex(20, 2, -6));
}

TEST(ValueTypes, FacesAreFoundByTheirVerticesInAnyOrder)
{
    CFaceIndices face(7, 3, 9, 1);
    CFaceIndices turned(9, 7, 3, 1);
    EXPECT_FALSE(face == turned);
    face.Sort();
    turned.Sort();
    EXPECT_EQ(face, CFaceIndices(1, 3, 7, 9));
    EXPECT_EQ(face, turned);
    EXPECT_EQ(face.Sum(), 4401U);
    EXPECT_EQ(FaceIndicesHash()(face), FaceIndicesHash()(turned));
    for (int const i : { -1, 3, 4 }) {
        EXPECT_EQ(test::Refused([&] { return face[i]; }), i != 3) << i;
        EXPECT_TRUE(test::Refused([&] { return CVertex()[i]; })) << i;
    }
    // The key wraps: 300 · 0xFFFFFFFF is −300.
    CFaceIndices large(0xFFFFFFFF, 0, 0, 0);
    large.Sort();
    EXPECT_EQ(large.Sum(), static_cast<DWORD>(-300));
}

TEST(ValueTypes, RotationsAreRightHandedAboutEachAxis)
{
    using Case = std::tuple<CVertex, CVertex, CVertex>;
    Case const cases[] = {
        { { 90, 0, 0 }, CVertex(0, 1, 0), CVertex(0, 0, 1) },
        { { 0, 90, 0 }, CVertex(0, 0, 1), CVertex(1, 0, 0) },
        { { 0, 0, 90 }, CVertex(1, 0, 0), CVertex(0, 1, 0) },
        // About x, then y, then z.
        { { 90, 90, 0 }, CVertex(0, 1, 0), CVertex(1, 0, 0) },
        { { 90, 90, 90 }, CVertex(0, 1, 0), CVertex(0, 1, 0) },
        { { 0, 90, 90 }, CVertex(0, 0, 1), CVertex(0, 1, 0) },
    };
    for (auto const& [angles, from, to] : cases) {
        CVertex v = from;
        CCoordTransform(CCoordTransform::ctRotate, angles.X(), angles.Y(), angles.Z()).Transform(v[0], v[1], v[2]);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(v[i], to[i], 1e-12) << angles.X() << ' ' << angles.Y() << ' ' << angles.Z();
    }
}

TEST(ValueTypes, TransformsApplyInOrderAndCopiesAreTheirOwn)
{
    CTransformArray transforms;
    transforms.Add(CCoordTransform(CCoordTransform::ctTranslate, 1, 0, 0));
    transforms.Add(CCoordTransform(CCoordTransform::ctScale, 2, 2, 2));
    transforms.Add(CCoordTransform(static_cast<CCoordTransform::Type>(9), 5, 5, 5));
    CTransformArray copy;
    copy = transforms;
    copy = *&copy;
    transforms.Clear();
    CVertex v(0, 1, 0);
    copy.Transform(v[0], v[1], v[2]);
    EXPECT_EQ(v, CVertex(2, 2, 0));
    EXPECT_EQ(transforms.GetSize(), 0);
}

TEST(ValueTypes, TransformArraysAreStoredAsObjectsOfTheirClass)
{
    RegisterClass(CCoordTransform::kClass);
    RegisterClass(CRealPoint::kClass);
    CTransformArray transforms;
    transforms.Add(CCoordTransform(CCoordTransform::ctTranslate, 1, 2, 3));
    transforms.Add(CCoordTransform(CCoordTransform::ctScale, 4, 5, 6));
    Bytes const bytes = Bytes().Int(1).Short(2).NewClass("CCoordTransform").Int(1, 0).Double(1.0, 2.0, 3.0);
    Bytes const rest = Bytes().Short(0x8001).Int(1, 2).Double(4.0, 5.0, 6.0);
    Bytes const all = Bytes(bytes).Add(rest);
    EXPECT_EQ(Stored(transforms), all);
    CTransformArray loaded;
    ASSERT_TRUE(Load(loaded, all));
    EXPECT_EQ(Stored(loaded), all);
    // Another class, a null entry, and a count that the bytes do not bear out.
    EXPECT_FALSE(Load(loaded, Bytes().Int(1).Short(1).NewClass("CRealPoint").Int(1).Double(1.0, 2.0)));
    EXPECT_FALSE(Load(loaded, Bytes().Int(1).Short(1).Short(0)));
    EXPECT_FALSE(Load(loaded, bytes));
}

TEST(ValueTypes, FontsDescribeThemselves)
{
    EXPECT_EQ(CFontData().BuildString(), "Arial");
    EXPECT_EQ(CFontData("Arial", 700, 1, 1.0).BuildString(), "Arial Bold Italic");
    EXPECT_EQ(CFontData("Arial", 600, 0, 1.0).BuildString(), "Arial");
    EXPECT_EQ(CFontData("", 400, 7, 1.0).BuildString(), " Italic");
}

TEST(ValueTypes, PathsSplitAtBothSeparators)
{
    std::string const longName(300, 'n');
    struct {
        std::string path, drive, directoryPath, fileName, extension, directory;
    } const cases[] = {
        { "C:\\dir\\sub\\file.txt", "C:", "C:\\dir\\sub\\", "file", ".txt", "dirsub" },
        { "/home/user/data.v2.dem", "", "/home/user/", "data.v2", ".dem", "/home/user/" },
        { "\\data\\", "", "\\data\\", "", "", "data" },
        { ".hidden", "", "", "", ".hidden", "" },
        { "dir.d/file", "", "dir.d/", "file", "", "dir.d/" },
        { "", "", "", "", "", "" },
        { longName, "", "", longName.substr(0, 255), "", "" },
    };
    for (auto const& c : cases) {
        CPathName const path { CString(c.path) };
        EXPECT_EQ(path, CString(c.path));
        EXPECT_EQ(path.GetDrive(), CString(c.drive)) << c.path;
        EXPECT_EQ(path.GetDirectoryPath(), CString(c.directoryPath)) << c.path;
        EXPECT_EQ(path.GetFileName(), CString(c.fileName)) << c.path;
        EXPECT_EQ(path.GetExtension(), CString(c.extension)) << c.path;
        EXPECT_EQ(path.GetDirectory(), CString(c.directory)) << c.path;
        EXPECT_EQ(path.GetFilePath(), path.GetDirectoryPath() + path.GetFileName());
    }
}

TEST(VException, TellsWhereADataFileIsAtFault)
{
    using Case = std::pair<DataFileFault, char const*>;
    Case const cases[] = {
        { { "a.tvl", 7, 120, "3 numbers", "2" }, "a.tvl, line 7: No more than that; expected 3 numbers, found 2." },
        { { "a.dem", 0, 1024, "a profile", {} }, "a.dem, byte 1024: No more than that; expected a profile." },
    };
    for (Case const& c : cases) {
        DataFileFault const& fault = c.first;
        try {
            WithErrors([&] { throw new CVFileException("No more\nthan that\n", fault); });
            FAIL();
        } catch (Error const& error) {
            EXPECT_STREQ(error.what(), c.second);
            EXPECT_EQ(error.GetKind(), Error::Kind::Data);
            EXPECT_EQ(error.GetPath(), fault.path.ToUtf8());
            EXPECT_EQ(error.GetOffset(), fault.offset);
            EXPECT_EQ(error.GetLine().value_or(0), fault.line);
        }
    }
}

} // namespace
} // namespace ombrel
