#include "ombrel/Init.h"
#include "ombrel/foundation/VException.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DMeshPlot.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

/// What an error in a file says.
struct Fault {
    std::string message;
    std::uint64_t line = 0;
    std::string found {};
};

class MeshFile : public testing::Test {
protected:
    ~MeshFile() override
    {
        for (auto const& path : m_paths)
            std::filesystem::remove(path);
    }
    CString Write(std::string const& text, std::string const& ending = ".tvm")
    {
        auto const* const info = testing::UnitTest::GetInstance()->current_test_info();
        auto const path = std::filesystem::path(testing::TempDir())
            / (std::string("MeshFile") + info->name() + std::to_string(m_paths.size()) + ending);
        std::ofstream(path, std::ios::binary) << text;
        m_paths.push_back(path);
        return CString(path.string());
    }
    /// Reads the text into a curve; empty message when that works.
    Fault Read(C3DMeshCurve& curve, std::string const& text, std::string const& ending = ".tvm")
    {
        try {
            EXPECT_EQ(curve.SetPathname(Write(text, ending)), 1);
        } catch (CVException* e) {
            Fault fault { e->GetErrorMessage().ToUtf8() };
            if (auto const* const atLine = dynamic_cast<CVFileException*>(e)) {
                fault.line = atLine->fault.line;
                fault.found = atLine->fault.found.ToUtf8();
            }
            e->Delete();
            return fault;
        }
        return {};
    }

private:
    std::vector<std::filesystem::path> m_paths;
};

/// Every keyword, some in odd case, with comments and empty lines within blocks.
constexpr char kWhole[] = R"(// A mesh
Node_Variables: Temp  Load
element_variables: Stress
an unknown line
Nodeset number one
 title:  First Set
 nodes:

3 of them
0 0 0 1.5 2e3
// between
1 0 0 nan

0 1 1e0 3 4 99 98
endobject
nodeset
title: by number
use_indices
nodes
4
100000 0 0 1 5 6
-0
)";

/// The rest, once the wrong node line of the above is cut off.
std::string WholeMesh()
{
    std::string text = kWhole;
    text.resize(text.size() - 3);
    return text + R"(70000 1 0 1 5 6
20 0 1 1 5 6
4294967295 0 0 2 5 6
EndObject
nodeset
title: from zero
0_based_indices
nodes
8
0 0 0
1 0 0
1 1 0
0 1 0
0 0 1
1 0 1
1 1 1
0 1 1
endobject
patch
element_type: TRIANGLE
use_nodeset: First Set
average_normals
elements
1
1 2 3 10
element_colours
1
10 20 30
endobject
patch
element_type: tetrahedron
use_nodeset: by number
elements
1
100000 70000 20 4294967295 -7.5
endobject
patch
element_type: block
use_nodeset: from zero
elements
1
0 1 2 3 4 5 6 7
endobject
patch
use_nodeset: from zero
element_type: quad
elements
2
0 1 2 3 1
4 5 6 7 2
element_colors
2
1 2 3
255 0 255
endobject
patch
element_type: polygon
use_nodeset: from zero
elements
2
0 1 2 3 7 8.5
0 1 2 9
endobject
endobject
nodeset after the end is not read
)";
}

void ExpectWhole(C3DMeshCurve const& curve)
{
    EXPECT_EQ(curve.GetNodeVariables(), (CStringArray { "temp", "load" }));
    EXPECT_EQ(curve.GetElementVariables(), (CStringArray { "stress" }));
    ASSERT_EQ(curve.GetNodeSets().GetSize(), 3);
    ASSERT_EQ(curve.GetPatches().GetSize(), 5);
    CMeshNodeSet const& first = *curve.GetNodeSets()[0];
    EXPECT_EQ(first.GetTitle(), CString("first set"));
    EXPECT_EQ(first.GetNodeData()->GetAt(1, 0), 2000.0);
    EXPECT_EQ(first.GetNodeData()->GetAt(0, 1), kGap) << "what is no number";
    EXPECT_EQ(first.GetNodeData()->GetAt(1, 1), 0.0) << "what is missing";
    EXPECT_EQ(first.GetVertex(3).Z(), 1.0);
    EXPECT_EQ(first.GetNodeData()->GetAt(1, 2), 4.0);
    CMeshNodeSet const& numbered = *curve.GetNodeSets()[1];
    EXPECT_EQ(numbered.GetNodeIndex(4294967295U), 3);
    EXPECT_EQ(numbered.GetNodeIndex(4464), -1) << "70000 in 16 bits";
    EXPECT_EQ(numbered.GetVertex(70000).X(), 1.0);
    EXPECT_EQ(curve.GetNodeSets()[2]->GetVertex(6).Y(), 1.0);
    constexpr std::array<int, 5> kTypes { etTriangle, etTetrahedron, etBrick, etQuad, etPolygon };
    constexpr std::array<int, 5> kSets { 0, 1, 2, 2, 2 };
    constexpr std::array<int, 5> kCounts { 1, 1, 1, 2, 2 };
    constexpr std::array<double, 5> kStress { 10.0, -7.5, 0.0, 1.0, 8.5 };
    for (int i = 0; i < 5; ++i) {
        auto const at = static_cast<std::size_t>(i);
        CMeshPatch const& patch = *curve.GetPatches()[i];
        EXPECT_EQ(patch.GetElementType(), kTypes[at]) << i;
        EXPECT_EQ(patch.GetNodeSet(), curve.GetNodeSets()[kSets[at]]) << i;
        EXPECT_EQ(patch.GetElementCount(), kCounts[at]) << i;
        EXPECT_EQ(patch.GetElementData()->GetAt(0, 0), kStress[at]) << i;
        EXPECT_EQ(patch.GetAverageNormals(), i == 0 ? 1 : 0) << i;
    }
    EXPECT_EQ(*curve.GetPatches()[0]->GetColours(), (CDWordArray { RGB(10, 20, 30) }));
    EXPECT_EQ(*curve.GetPatches()[3]->GetColours(), (CDWordArray { RGB(1, 2, 3), RGB(255, 0, 255) }));
    CMeshPatch const& polygons = *curve.GetPatches()[4];
    ASSERT_EQ(polygons.GetNumPolygons(), 2);
    EXPECT_EQ(polygons.GetPolygon(0).size(), 5U);
    EXPECT_EQ(polygons.GetPolygon(1)[2], 2U);
}

TEST_F(MeshFile, EveryKeywordIsReadStoredAndLoaded)
{
    OmbrelInit();
    C3DMeshCurve curve;
    ASSERT_EQ(Read(curve, WholeMesh()).message, "");
    ExpectWhole(curve);
    EXPECT_EQ(curve.GetFileType(), C3DMeshCurve::ftMesh);
    curve.SetClip(1);
    curve.SetClipRanges(-1, 2, -3, 4, -5, 6);
    curve.SetElementColoursOn(1);
    curve.Evaluate();
    Bytes const stored = Stored(curve);
    C3DMeshCurve loaded;
    ASSERT_TRUE(Load(loaded, stored));
    ExpectWhole(loaded);
    EXPECT_EQ(loaded.GetPathname(), curve.GetPathname());
    EXPECT_EQ(loaded.GetClip(), 1);
    EXPECT_EQ(loaded.GetPatches()[4]->GetClipBox(), (MeshClipRanges { -1, 2, -3, 4, -5, 6 }));
    loaded.Evaluate();
    EXPECT_EQ(Stored(loaded), stored);
    double lo = 0;
    double hi = 0;
    loaded.GetZRange(lo, hi);
    EXPECT_EQ(std::pair(lo, hi), std::pair(0.0, 2.0));
    C3DMeshCurve params;
    params.ReadMeshParams(curve.GetPathname());
    EXPECT_EQ(params.GetNodeVariables().GetSize(), 2);
    EXPECT_TRUE(params.GetNodeSets().IsEmpty());
}

TEST_F(MeshFile, ErrorsNameLineAndNumberAndLeaveNothing)
{
    std::string const nodes = "nodeset\ntitle: a\nnodes\n3\n0 0 0\n1 0 0\n0 1 0\nendobject\n";
    std::string const patch = nodes + "patch\nuse_nodeset: a\nelement_type: triangle\nelements\n";
    std::string const numbered = "nodeset\ntitle: a\nuse_indices\nnodes\n";
    struct Case {
        std::string text;
        std::string message;
        std::uint64_t line;
        std::string found;
    };
    for (Case const& c : {
             Case { kWhole, "A node number is missing or cannot be used", 22, "\"-0\"" },
             Case { numbered + "2\n5 0 0 0\n5 1 1 1\nendobject\n", "A node number occurs twice", 7, "5" },
             Case { numbered + "1\n4294967296 0 0 0\n", "A node number is missing or cannot be used", 6, "" },
             Case { "nodeset\nnodes\n2\n0 0 0\n0 x 0\n", "A coordinate cannot be read", 5, "\"x\"" },
             Case { "nodeset\nnodes\n1\n0 inf 0\n", "A coordinate cannot be read", 4, "\"inf\"" },
             Case { "nodeset\nnodes\n3\n0 0 0\n0 1 0\n\n// \n", "The file ends too early", 7, "2" },
             Case { "nodeset\nnodes\n", "The file ends too early", 2, "" },
             Case { "nodeset\nnodes\nmany\n", "A count is missing or cannot be used", 3, "\"many\"" },
             Case { "nodeset\nnodes\n-4\n", "A count is missing or cannot be used", 3, "\"-4\"" },
             Case { "nodeset\nnodes\n2000000000\n0 0 0\n", "The file is too short for a count in it", 3, "2000000000" },
             Case { "nodeset\nnodes\n99999999999999\n0 0\n", "The file is too short for a count in it", 3, "" },
             Case { nodes + "patch\nuse_nodeset: b\nendobject\n", "Patch does not reference a nodeset", 11, "b" },
             Case { patch + "1\n1 2 4\n", "An element has an unknown node", 14, "4" },
             Case { patch + "1\n1 0 3\n", "An element has an unknown node", 14, "0" },
             Case { patch + "1\n1 2\n", "A node number is missing or cannot be used", 14, "the end of the line" },
             Case { patch + "1\n1 2 3.5\n", "A node number is missing or cannot be used", 14, "\"3.5\"" },
             Case { patch + "1\nendobject\n", "A node number is missing or cannot be used", 14, "\"endobject\"" },
             Case { patch + "1000\n1 2 3\n", "The file is too short for a count in it", 13, "1000" },
             Case { nodes + "patch\nelements\n1\n1 2 9\nuse_nodeset: a\nendobject\n", "An element has an unknown node",
                 14, "9" },
             // Without a name, the node set without a title.
             Case { "nodeset\nnodes\n1\n0 0 0\nendobject\npatch\nelements\n1\n1 1 2\nendobject\n",
                 "An element has an unknown node", 10, "2" },
             Case { patch + "1\n1 2 3\nelement_colours\n2\n1 2 3\n1 2 3\nendobject\n",
                 "There must be a colour for each element", 19, "2" },
             Case { patch + "1\n1 2 3\nelement_colours\n1\n1 2 256\n", "An element colour cannot be used", 17, "256" },
             Case { "element_variables: v\n" + nodes
                     + "patch\nuse_nodeset: a\nelement_type: polygon\nelements\n1\n5\nendobject\n",
                 "A polygon has no nodes", 15, "1 fields" },
         }) {
        C3DMeshCurve curve;
        Fault const fault = Read(curve, c.text);
        EXPECT_EQ(fault.message, c.message) << c.text;
        EXPECT_EQ(fault.line, c.line) << c.text;
        if (!c.found.empty()) {
            EXPECT_EQ(fault.found, c.found) << c.text;
        }
        EXPECT_TRUE(curve.GetNodeSets().IsEmpty() && curve.GetPatches().IsEmpty()) << c.text;
        EXPECT_EQ(curve.GetLoaded(), 0);
    }
}

TEST_F(MeshFile, EmptyBlocksAndFilesAreEmptyMeshes)
{
    for (std::string const text : { "", "endobject",
             "nodeset\ntitle: a\nnodes\n0\nendobject\npatch\nuse_nodeset: a\n"
             "elements\n0\nelement_colours\n0\nendobject\n",
             "nodeset\ntitle: a\nendobject\npatch\nuse_nodeset: a" }) {
        C3DMeshCurve curve;
        EXPECT_EQ(Read(curve, text).message, "") << text;
        EXPECT_EQ(curve.Evaluate(), 1);
    }
}

TEST_F(MeshFile, AFileIsReadAgainOnlyWhenItHasChanged)
{
    C3DMeshCurve curve;
    CString const path = Write("node_variables: a\n");
    curve.SetPathname(path);
    curve.SetVariableNames({ "kept" }, {});
    curve.SetPathname(path);
    EXPECT_EQ(curve.GetNodeVariables(), (CStringArray { "kept" }));
    std::filesystem::last_write_time(
        path.ToUtf8(), std::filesystem::last_write_time(path.ToUtf8()) + std::chrono::milliseconds(20));
    curve.SetPathname(path);
    EXPECT_EQ(curve.GetNodeVariables(), (CStringArray { "a" }));
    std::filesystem::remove(path.ToUtf8());
    EXPECT_EQ(curve.SetPathname(path), 1) << "the mesh is kept when its file is gone";
    for (auto const& [name, message] : { std::pair(std::string("/no/such/file.tvm"), "File not found."),
             { Write("", ".txt").ToUtf8(), "Unsupported file type" } }) {
        try {
            curve.SetPathname(CString(name));
            ADD_FAILURE() << name;
        } catch (CVException* e) {
            EXPECT_EQ(e->GetErrorMessage(), CString(message));
            e->Delete();
        }
    }
}

std::string Corner(int corner, double x, double y, double z)
{
    std::string text;
    for (auto const& [code, v] : { std::pair(10, x), { 20, y }, { 30, z } })
        text += "  " + std::to_string(code + corner) + "\r\n" + std::to_string(v) + "\r\n";
    return text;
}

TEST_F(MeshFile, DrawingsAreReadForTheirFacesWhateverElseTheyHold)
{
    std::string const before
        = "999\r\na comment\r\n  0\r\nSECTION\r\n  2\r\nCLASSES\r\n  1\r\n3DFACE\r\n  0\r\nLINE\r\n"
          "  8\r\n3DFACE\r\n 10\r\n5\r\nstray\r\n\r\n1001\r\n\r\n";
    std::string const face = "  0\r\n3DFACE\r\n  8\r\nlayer\r\n 62\r\n     7\r\n";
    std::string const triangle = face + Corner(0, 0, 0, 0) + Corner(1, 1, 0, 0) + Corner(2, 0, 1, 5);
    std::string const text = before + triangle + Corner(3, 0, 0, 0) // the fourth is the first
        + "  0\r\nPOLYLINE\r\n 10\r\nnot read\r\n" + triangle + Corner(3, 0, 1, 5) // the third
        + triangle // missing
        + triangle + "210\r\n0\r\n" + Corner(3, 1, 1, 0) // a quad
        + face + Corner(0, 0, 0, 0) + Corner(1, 1, 1, 1) // no face
        + "  0\r\nENDSEC\r\n  0\r\nEOF\r\n";
    for (bool const isUnix : { false, true }) {
        std::string drawing = text;
        if (isUnix)
            std::erase(drawing, '\r');
        C3DMeshCurve curve;
        ASSERT_EQ(Read(curve, drawing, ".DXF").message, "");
        EXPECT_EQ(curve.GetFileType(), C3DMeshCurve::ftDXF);
        ASSERT_EQ(curve.GetPatches().GetSize(), 1);
        CMeshPatch const& patch = *curve.GetPatches()[0];
        EXPECT_EQ(patch.GetElementType(), etPolygon);
        ASSERT_EQ(patch.GetNumPolygons(), 4);
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(patch.GetPolygon(i).size(), i == 3 ? 4U : 3U) << i;
        EXPECT_EQ(patch.GetPolygon(1)[0], 4U) << "corners are not merged";
        EXPECT_EQ(curve.GetNodeSets()[0]->GetNumNodes(), 13);
        EXPECT_EQ(curve.GetNodeSets()[0]->GetTitle(), CString("dummy"));
        EXPECT_EQ(curve.GetNodeSets()[0]->GetVertex(6).Z(), 5.0);
    }
    C3DMeshCurve curve;
    EXPECT_EQ(Read(curve, before + "  0\r\nEOF\r\n", ".dxf").message, "The drawing has no 3DFACE");
    Fault const fault = Read(curve, face + " 10\r\n1.5x\r\n", ".dxf");
    EXPECT_EQ(fault.message, "A coordinate cannot be read");
    EXPECT_EQ(fault.line, 8U);
    // Cut off anywhere, it is read as far as it goes, or refused.
    for (std::size_t size = 0; size < text.size(); size += 7)
        Read(curve, text.substr(0, size), ".dxf");
}

// --- Archives

TEST(MeshArchive, EveryFieldIsInItsPlace)
{
    Bytes const points = Bytes().Int(2, 3, 2).Double(0, 1, 2, 3, 4, 5).Double(0, 1);
    Bytes const noTable = Bytes().Int(2, 0, 0).Double(0, 1);
    Bytes const nodes = Bytes()
                            .Int(2)
                            .Text("set")
                            .Int(1)
                            .Add(points)
                            .Add(noTable)
                            .Int(1)
                            .Short(2) // numbered nodes: number, column
                            .Int(70000, 1, 5, 0)
                            .Int(1);
    CMeshNodeSet set;
    ASSERT_TRUE(Load(set, nodes));
    EXPECT_EQ(Stored(set), nodes);
    EXPECT_EQ(set.GetNodeIndex(70000), 1);
    EXPECT_EQ(set.GetVariableCount(), 1);
    Bytes patch = Bytes().Int(2, 2, 1, 3, 0).Text("set").Add(noTable);
    patch.Short(2).Int(8, 9).Short(1).Byte(1); // indices, face flags
    patch.Int(1).Short(3).Int(70000, 5, 70000); // polygons
    patch.Int(0).Int(1, 0x112233); // lists of elements, colours
    patch.Double(1, 2, 3, 4, 5, 6).Int(1);
    CMeshPatch elements;
    ASSERT_TRUE(Load(elements, patch));
    EXPECT_EQ(Stored(elements), patch);
    EXPECT_EQ(elements.GetPolygon(0)[1], 5U);
    EXPECT_EQ(elements.GetColours()->GetAt(0), 0x112233U);
    EXPECT_EQ(elements.GetClipBox()[3], 4.0);

    OmbrelInit();
    C3DMeshCurve curve;
    C3DCurve base;
    base.SetTitle("Mesh Curve");
    for (int const version : { 1, 2, 3 }) {
        Bytes bytes = Stored(base).Int(version).Short(1).NewClass("CMeshNodeSet").Add(nodes);
        bytes.Short(1).NewClass("CMeshPatch").Add(patch);
        bytes.Short(1).Text("temp").Short(0).Text("file").Double(32874).Int(0);
        bytes = Bytes(bytes).Int(1, 2, 1).Text("temp").Int(1, 2, 7).Double(8.5, 9.5).Int(1, 0x445566);
        if (version >= 2)
            bytes.Int(1);
        if (version >= 3)
            bytes.Int(0);
        C3DMeshCurve loaded;
        ASSERT_TRUE(Load(loaded, bytes)) << version;
        EXPECT_EQ(loaded.GetPatches()[0]->GetNodeSet(), loaded.GetNodeSets()[0]) << version;
        EXPECT_EQ(loaded.GetSolidOn(), version < 3 ? 1 : 0) << version;
        EXPECT_EQ(loaded.GetElementColoursOn(), 1);
        EXPECT_EQ(loaded.GetContourLevelMode(), 2);
        EXPECT_EQ(loaded.GetContourSpacing(), 9.5);
        EXPECT_EQ(loaded.GetWireframeColour(), 0x445566U);
        EXPECT_EQ(loaded.GetFileType(), C3DMeshCurve::ftDXF);
        if (version == 3) {
            EXPECT_EQ(Stored(loaded), bytes);
        }
        // Cut off anywhere, it is refused.
        for (std::size_t size = 0; size < bytes.Get().size(); size += 3)
            EXPECT_FALSE(Load(loaded, Bytes::Of(std::span(bytes.Get()).first(size)))) << size;
    }
}

TEST(MeshArchive, HostileFieldsDoNoHarm)
{
    Bytes const noTable = Bytes().Int(2, 0, 0).Double(0, 1);
    auto const patch = [&](int type, int count, int polygons, int lists, int hasColours) {
        return Bytes()
            .Int(2, type, count, 3, 1)
            .Text("")
            .Add(noTable)
            .Short(2)
            .Int(8, 9)
            .Short(0)
            .Int(polygons, lists)
            .Int(hasColours)
            .Double(0, 0, 0, 0, 0, 0)
            .Int(0);
    };
    CMeshPatch elements;
    EXPECT_TRUE(Load(elements, patch(77, 2000000000, 0, 0, 0)));
    elements.UpdateFaceFlags();
    CVertex min;
    CVertex max;
    double lo = 1;
    double hi = 2;
    elements.GetRanges(min, max, lo, hi);
    EXPECT_EQ(lo, 1);
    EXPECT_TRUE(Load(elements, patch(3, 2000000000, 0, 0, 0)));
    elements.UpdateFaceFlags();
    EXPECT_FALSE(Load(elements, patch(2, 1, 2000000000, 0, 0)));
    EXPECT_FALSE(Load(elements, patch(2, 1, 0, 2000000000, 0)));
    EXPECT_FALSE(Load(elements, patch(2, 2000000000, 0, 0, 1)));
    EXPECT_TRUE(Load(elements, patch(-1, -5, -3, -4, 1)));
}

} // namespace
} // namespace ombrel
