#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/meshes/MeshElements.h"
#include "tests/graph3d/MeshData.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>

namespace ombrel {
namespace {

using test::AddBricks;
using test::AddElements;
using test::AddNodes;
using test::BrickBlock;
using test::CountFaces;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Mesh, FacesBetweenBricksAreDropped)
{
    struct Case {
        BrickBlock block;
        int faces;
    };
    for (Case const& c : { Case { { 1, 1, 1 }, 6 }, { { 2, 1, 1 }, 10 }, { { 2, 2, 2 }, 24 }, { { 5, 4, 3 }, 94 },
             { { 30, 20, 10 }, 2200 } }) {
        C3DMeshCurve curve;
        CMeshPatch const& patch = *AddBricks(curve, c.block);
        EXPECT_EQ(curve.Evaluate(), 1);
        EXPECT_EQ(CountFaces(patch), c.faces) << c.block.nx;
    }
}

TEST(Mesh, ClippingOneOfTwoBricksShowsAllFacesOfTheOther)
{
    C3DMeshCurve curve;
    CMeshPatch const& patch = *AddBricks(curve, { 2, 1, 1 });
    curve.SetClipRanges(0, 1.5, -10, 10, -10, 10);
    curve.Evaluate();
    EXPECT_EQ(CountFaces(patch), 10) << "the box is set, but clipping is off";
    curve.SetClip(1);
    curve.Evaluate();
    EXPECT_EQ(CountFaces(patch), 6);
    EXPECT_EQ(patch.GetFaceFlags()->GetAt(0), 1) << "the first brick is the one that stays";
    // A corner on the box is within it.
    curve.SetClipRanges(1, 2, 0, 1, 0, 1);
    curve.Evaluate();
    EXPECT_EQ(CountFaces(patch), 6);
    EXPECT_EQ(patch.GetFaceFlags()->GetAt(0), 0);
    curve.SetClipRanges(0.1, 1.9, -10, 10, -10, 10);
    curve.Evaluate();
    EXPECT_EQ(CountFaces(patch), 0);
    // The clip box is one of world coordinates: a transform moves elements out of it.
    CTransformArray moved;
    moved.Add(CCoordTransform(CCoordTransform::ctTranslate, 100.0, 0.0, 0.0));
    curve.SetTransforms(moved);
    curve.SetClipRanges(100, 101, -10, 10, -10, 10);
    curve.Evaluate();
    EXPECT_EQ(CountFaces(patch), 6);
}

TEST(Mesh, NodeNumbersOfAnySizeTellFacesApart)
{
    // Two bricks without a common node, whose numbers agree in their lower 16 bits and in sums.
    for (DWORD const offset : { 65536U, 0x80000000U, 1U << 20 }) {
        C3DMeshCurve curve;
        std::vector<std::array<double, 3>> places;
        std::vector<DWORD> numbers;
        CDWordArray indices;
        for (DWORD b = 0; b < 2; ++b) {
            for (DWORD i = 0; i < 8; ++i) {
                places.push_back({ 1.0 * (i == 1 || i == 2 || i == 5 || i == 6) + 3.0 * b,
                    1.0 * (i == 2 || i == 3 || i == 6 || i == 7), 1.0 * (i > 3) });
                numbers.push_back(1 + i + b * offset);
                indices.Add(numbers.back());
            }
        }
        CMeshNodeSet& nodes = *AddNodes(curve, places);
        ASSERT_TRUE(nodes.SetNodeNumbers(numbers));
        CMeshPatch const& patch = *AddElements(curve, etBrick, indices);
        curve.Evaluate();
        EXPECT_EQ(CountFaces(patch), 12) << offset;
        EXPECT_EQ(nodes.GetNodeIndex(8 + offset), 15);
        EXPECT_EQ(nodes.GetNodeIndex(9), -1);
        EXPECT_EQ(nodes.GetVertex(8).Z(), 1.0);
        // A number given twice is refused, and the ones before stay.
        EXPECT_FALSE(nodes.SetNodeNumbers(std::vector<DWORD> { 5, 6, 5 }));
        EXPECT_EQ(nodes.GetNodeIndex(1 + offset), 8);
    }
}

TEST(Mesh, NodesAreFoundByTheirNumbers)
{
    CMeshNodeSet nodes;
    nodes.GetPoints()->Initialise(3, 3, 1);
    EXPECT_EQ(nodes.GetNodeIndex(0), -1);
    EXPECT_EQ(nodes.GetNodeIndex(1), 0);
    EXPECT_EQ(nodes.GetNodeIndex(3), 2);
    EXPECT_EQ(nodes.GetNodeIndex(4), -1);
    nodes.SetZeroBased(1);
    EXPECT_EQ(nodes.GetNodeIndex(0), 0);
    EXPECT_EQ(nodes.GetNodeIndex(3), -1);
    // Numbers in steps of powers of two do not fall onto each other.
    constexpr DWORD kStep = 1U << 14;
    std::vector<DWORD> numbers;
    for (DWORD i = 0; i < 200000; ++i)
        numbers.push_back(i * kStep + i / 262144);
    nodes.GetPoints()->Initialise(3, 200000, 1);
    ASSERT_TRUE(nodes.SetNodeNumbers(numbers));
    for (DWORD i = 0; i < 200000; i += 1234)
        EXPECT_EQ(nodes.GetNodeIndex(i * kStep), static_cast<int>(i));
}

/// Five tetrahedra to a cube, mirrored from cube to cube so that their faces meet.
CDWordArray Tetrahedra(BrickBlock const& block)
{
    CDWordArray const bricks = block.Indices();
    CDWordArray indices;
    constexpr std::array<std::array<int, 4>, 5> kEven { { { 0, 1, 2, 5 }, { 0, 2, 3, 7 }, { 0, 5, 7, 4 },
        { 2, 7, 5, 6 }, { 0, 2, 7, 5 } } };
    constexpr std::array<std::array<int, 4>, 5> kOdd { { { 1, 2, 3, 6 }, { 1, 3, 0, 4 }, { 1, 6, 4, 5 }, { 3, 4, 6, 7 },
        { 1, 3, 4, 6 } } };
    for (int b = 0; b < bricks.GetSize() / 8; ++b) {
        int const i = b % block.nx;
        int const j = b / block.nx % block.ny;
        int const k = b / block.nx / block.ny;
        for (auto const& tetrahedron : (i + j + k) % 2 ? kOdd : kEven) {
            for (int const corner : tetrahedron)
                indices.Add(bricks[8 * b + corner]);
        }
    }
    return indices;
}

TEST(Mesh, OuterFacesOfASolidCloseAroundItsVolume)
{
    BrickBlock const block { 4, 3, 5 };
    for (MeshElementType const type : { etBrick, etTetrahedron }) {
        C3DMeshCurve curve;
        CMeshPatch* patch = AddBricks(curve, block);
        if (type == etTetrahedron)
            patch = AddElements(curve, etTetrahedron, Tetrahedra(block));
        curve.Evaluate();
        ElementShape const& shape = *GetElementShape(type);
        EXPECT_EQ(CountFaces(*patch), 2 * (12 + 15 + 20) * (type == etBrick ? 1 : 2));
        // Each edge of the outer faces has two of them; the area is that of the box.
        std::map<std::set<DWORD>, int> edges;
        double area = 0.0;
        CMeshNodeSet const& nodes = *patch->GetNodeSet();
        for (int face = 0; face < patch->GetFaceFlags()->GetSize(); ++face) {
            if (patch->GetFaceFlags()->GetAt(face) == 0)
                continue;
            auto const& corners = shape.faces[static_cast<std::size_t>(face) % shape.numFaces];
            std::vector<DWORD> numbers;
            for (std::size_t c = 0; c < shape.cornersOfFace; ++c)
                numbers.push_back(patch->GetIndices()->GetAt(
                    face / static_cast<int>(shape.numFaces) * static_cast<int>(shape.numNodes) + corners[c]));
            for (std::size_t c = 0; c < numbers.size(); ++c)
                ++edges[{ numbers[c], numbers[(c + 1) % numbers.size()] }];
            CVertex const a = nodes.GetVertex(numbers[1]) - nodes.GetVertex(numbers[0]);
            CVertex const b = nodes.GetVertex(numbers[2]) - nodes.GetVertex(numbers[0]);
            CVertex const cross(
                a.Y() * b.Z() - a.Z() * b.Y(), a.Z() * b.X() - a.X() * b.Z(), a.X() * b.Y() - a.Y() * b.X());
            area += std::sqrt(cross.X() * cross.X() + cross.Y() * cross.Y() + cross.Z() * cross.Z())
                / (type == etBrick ? 1 : 2);
        }
        EXPECT_NEAR(area, 2.0 * (12 + 15 + 20), 1e-9);
        for (auto const& [edge, count] : edges)
            ASSERT_EQ(count, 2) << *edge.begin();
    }
}

TEST(Mesh, OuterFacesAgreeWithASlowCountOfRandomElements)
{
    std::mt19937 random(7);
    for (int round = 0; round < 20; ++round) {
        MeshElements elements;
        elements.shape = round % 2 ? &kTetrahedronShape : &kBrickShape;
        elements.count = 60;
        // So few nodes that most faces meet many others, and a node has more of them than are compared pair by pair.
        elements.numNodes = 9;
        for (std::size_t i = 0; i < elements.count * elements.shape->numNodes; ++i)
            elements.columns.push_back(static_cast<std::uint32_t>(random() % elements.numNodes));
        std::vector<BYTE> leftOut(elements.count);
        leftOut[5] = 1;
        std::map<std::multiset<std::uint32_t>, int> counts;
        auto const forFaces = [&](auto const& use) {
            for (std::size_t e = 0; e < elements.count; ++e) {
                for (std::size_t f = 0; f < elements.shape->numFaces; ++f) {
                    std::multiset<std::uint32_t> corners;
                    for (std::size_t c = 0; c < elements.shape->cornersOfFace; ++c)
                        corners.insert(elements.columns[e * elements.shape->numNodes + elements.shape->faces[f][c]]);
                    use(e, e * elements.shape->numFaces + f, corners);
                }
            }
        };
        forFaces([&](std::size_t e, std::size_t, auto const& corners) { counts[corners] += e != 5; });
        std::vector<BYTE> const flags = FindOuterFaces(elements, leftOut);
        forFaces([&](std::size_t e, std::size_t face, auto const& corners) {
            ASSERT_EQ(flags[face], e != 5 && counts[corners] == 1) << round << ": " << face;
        });
    }
}

TEST(Mesh, EdgesAreThereOnce)
{
    C3DMeshCurve curve;
    MeshElements two;
    two.shape = &kBrickShape;
    two.count = 2;
    two.numNodes = 12;
    for (DWORD const number : BrickBlock { 2, 1, 1 }.Indices())
        two.columns.push_back(number - 1);
    auto const countEdges = [&two](std::vector<BYTE> const& isLeftOut) {
        std::set<std::pair<std::uint32_t, std::uint32_t>> edges;
        ForEachEdge(two, isLeftOut, [&](std::uint32_t a, std::uint32_t b) {
            EXPECT_LT(a, b);
            EXPECT_TRUE(edges.emplace(a, b).second);
        });
        return edges.size();
    };
    EXPECT_EQ(countEdges({}), 20U);
    EXPECT_EQ(countEdges({ 1, 0 }), 12U);
    // A bar of so many bricks that their nodes are gone through in several goes.
    BrickBlock const bar { 80000, 1, 1 };
    two.count = 80000;
    two.numNodes = static_cast<std::size_t>(bar.NumNodes());
    two.columns.clear();
    for (DWORD const number : bar.Indices())
        two.columns.push_back(number - 1);
    EXPECT_EQ(countEdges({}), 8U * 80000U + 4U);
}

TEST(Mesh, RangesAreThoseOfNodesThatElementsUse)
{
    C3DMeshCurve curve;
    AddNodes(
        curve, { { 0, 0, 5 }, { 4, 0, 6 }, { 0, -2, 9 }, { 1000, 1000, 1000 }, { kNaN, 0, 0 } }, { 1, 2, kGap, 7, -3 });
    // The second triangle has a node without a place, the third one that does not exist: neither is drawn.
    AddElements(curve, etTriangle, { 1, 2, 3, 1, 2, 5, 1, 2, 77 });
    curve.SetVariableNames({ "Temp" }, {});
    CTransformArray moved;
    moved.Add(CCoordTransform(CCoordTransform::ctScale, 1.0, 1.0, 10.0));
    curve.SetTransforms(moved);
    curve.Evaluate();
    double lo = 0;
    double hi = 0;
    curve.GetXRange(lo, hi);
    EXPECT_EQ(std::pair(lo, hi), std::pair(0.0, 4.0));
    curve.GetYRange(lo, hi);
    EXPECT_EQ(std::pair(lo, hi), std::pair(-2.0, 0.0));
    curve.GetZRange(lo, hi);
    EXPECT_EQ(std::pair(lo, hi), std::pair(50.0, 90.0));
    curve.GetUntransformedDataRange(lo, hi);
    EXPECT_EQ(std::pair(lo, hi), std::pair(5.0, 9.0)) << "the height is the one before transforms";
    curve.SetColourmapVar("temp");
    curve.BuildContours();
    curve.GetUntransformedDataRange(lo, hi);
    EXPECT_EQ(std::pair(lo, hi), std::pair(-3.0, 7.0)) << "variables have the range of all nodes, but for gaps";
    CMeshNodeSet const& nodes = *curve.GetNodeSets()[0];
    EXPECT_EQ(curve.Get1DTextureCoord(nodes, 2), 0.5);
    EXPECT_EQ(curve.Get1DTextureCoord(nodes, 3), 0.0) << "a gap";
    curve.SetColourmapVar("nothing of this name");
    curve.BuildContours();
    EXPECT_EQ(curve.Get1DTextureCoord(nodes, 2), 0.25) << "by height";
    lo = 11;
    curve.GetUntransformedDataRange(lo, hi);
    EXPECT_EQ(lo, 11);
    // Nothing to draw leaves ranges alone.
    C3DMeshCurve empty;
    empty.Evaluate();
    empty.GetXRange(lo, hi);
    EXPECT_EQ(lo, 11);
}

TEST(Mesh, ContoursAndKeysFollowTheVariable)
{
    C3DMeshCurve curve;
    AddBricks(curve, { 6, 1, 1 }, [](double x, double, double) { return 10 * x; });
    curve.SetVariableNames({ "temp" }, { "stress" });
    curve.SetColourmapVar("TEMP");
    curve.SetContoursOn(1);
    EXPECT_EQ(curve.NeedsColourKey(), 0);
    curve.SetColourDescription(1);
    EXPECT_EQ(curve.NeedsColourKey(), 1);
    curve.Evaluate();
    EXPECT_TRUE(curve.UseTextureCoords());
    CDWordArray colours;
    CDoubleArray values;
    curve.GetContourColourKeyEntries(colours, values);
    EXPECT_EQ(values, (CDoubleArray { 0, 10, 20, 30, 40, 50 }));
    ASSERT_EQ(colours.GetSize(), 6);
    for (int k = 0; k < 6; ++k)
        EXPECT_EQ(colours[k], curve.GetLUTColour(60.0 * k / 5)) << k;
    EXPECT_EQ(curve.GetContourColour(10.0), colours[0]) << "a value on a level is below it";
    EXPECT_EQ(curve.GetContourColour(10.1), colours[1]);
    curve.SetContourLevelMode(1);
    curve.SetContourRef(95);
    curve.SetContourSpacing(20);
    curve.BuildContours();
    curve.GetContourColourKeyEntries(colours, values);
    EXPECT_EQ(values, (CDoubleArray { 0, 15, 35, 55 }));
    curve.SetContourLevelMode(2);
    curve.SetContourLevels({ 0, 7, 60 });
    // A key is measured before the first draw.
    curve.GetContourColourKeyEntries(colours, values);
    EXPECT_EQ(values, (CDoubleArray { 0, 7 })) << "levels at the ends are left out";
    curve.SetColourmapVar("stress");
    curve.BuildContours();
    EXPECT_FALSE(curve.UseTextureCoords());
}

} // namespace
} // namespace ombrel
