#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "tests/graph3d/Draw3D.h"
#include "tests/graph3d/MeshData.h"

#include <algorithm>
#include <string>

namespace ombrel {
namespace {

using test::AddBricks;
using test::AddElements;
using test::AddNodes;
using test::AreNear;
using test::kBackground;

/// A mesh alone, without light, seen from straight above.
class DrawMesh : public test::Draw3D {
protected:
    DrawMesh()
        : m_curve(Add<C3DMeshCurve>(it3DMeshPlot))
    {
        m_graph.SetLightingOn(0);
        m_graph.SetViewingElevation(0);
        m_curve.SetGradationOn(0);
        m_curve.SetColour(kRed);
    }
    /// A square of two triangles, and one beside it of one quad.
    void AddSquares()
    {
        AddNodes(m_curve, { { 0, 0, 0 }, { 1, 0, 0 }, { 1, 1, 1 }, { 0, 1, 1 }, { 2, 0, 0 }, { 2, 1, 1 } },
            { 0, 0, 10, 10, 0, 10 });
        AddElements(m_curve, etTriangle, { 1, 2, 3, 1, 3, 4 });
        AddElements(m_curve, etQuad, { 2, 5, 6, 3 });
        m_curve.SetVariableNames({ "temp" }, { "stress" });
    }

    static constexpr COLORREF kRed = RGB(200, 40, 20);
    C3DMeshCurve& m_curve;
};

TEST_F(DrawMesh, OneColourFillsElements)
{
    AddSquares();
    Draw();
    for (auto const& [x, y] : { std::pair(0.5, 0.3), { 0.3, 0.8 }, { 1.5, 0.5 }, { 1.9, 0.9 } })
        EXPECT_TRUE(AreNear(AtData(x, y, y), kRed)) << x << ", " << y;
    EXPECT_EQ(At({ 2, 2 }), kBackground);
}

TEST_F(DrawMesh, NodeVariablesColourSmoothlyAndBandsAreCutAtTheirLevels)
{
    AddSquares();
    m_curve.SetColourDescription(1);
    m_curve.SetColourmap("Spectrum");
    for (char const* const variable : { "temp", "thezvalue" }) {
        m_curve.SetColourmapVar(variable);
        m_curve.SetContoursOn(0);
        double const scale = variable[1] == 'e' ? 10.0 : 1.0;
        Draw();
        for (double const y : { 0.1, 0.5, 0.9 }) {
            for (double const x : { 0.3, 1.5 }) {
                // The middle of a pixel lies up to a half of it beside the place.
                bool found = false;
                for (double value = y - 0.02; value < y + 0.02; value += 0.001)
                    found = found || AreNear(AtData(x, y, y), m_curve.GetLUTColour(scale * value));
                EXPECT_TRUE(found) << variable << ": " << x << ", " << y;
            }
        }
        m_curve.SetContoursOn(1);
        m_curve.SetNumContours(5);
        Draw();
        CDWordArray colours;
        CDoubleArray values;
        m_curve.GetContourColourKeyEntries(colours, values);
        for (int band = 0; band < 5; ++band) {
            EXPECT_TRUE(AreNear(AtData(1.5, 0.2 * band + 0.05, 0.2 * band + 0.05), colours[band])) << band;
            EXPECT_TRUE(AreNear(AtData(1.5, 0.2 * band + 0.15, 0.2 * band + 0.15), colours[band])) << band;
        }
    }
}

TEST_F(DrawMesh, ElementVariablesAndElementColoursAreFlat)
{
    AddSquares();
    CMeshPatch& triangles = *m_curve.GetPatches()[0];
    CMeshPatch& quads = *m_curve.GetPatches()[1];
    triangles.GetElementData()->Initialise(1, 2, 1);
    triangles.GetElementData()->SetAt(0, 1, 4.0);
    quads.GetElementData()->Initialise(1, 1, 1);
    quads.GetElementData()->SetAt(0, 0, 8.0);
    m_curve.SetPlotDataModified(1);
    m_curve.SetColourDescription(1);
    m_curve.SetColourmap("Spectrum");
    m_curve.SetColourmapVar("stress");
    for (int const averaged : { 0, 1 }) {
        triangles.SetAverageNormals(averaged);
        m_curve.SetPlotDataModified(1);
        Draw();
        EXPECT_TRUE(AreNear(AtData(0.7, 0.3, 0.3), m_curve.GetLUTColour(0.0)));
        EXPECT_TRUE(AreNear(AtData(0.3, 0.7, 0.7), m_curve.GetLUTColour(4.0)));
        EXPECT_TRUE(AreNear(AtData(1.5, 0.5, 0.5), m_curve.GetLUTColour(8.0)));
    }
    // Another colour map is followed, though nothing of the data has changed.
    COLORREF const before = AtData(1.5, 0.5, 0.5);
    m_curve.SetColourmap("Greyscale");
    Draw();
    EXPECT_TRUE(AreNear(AtData(1.5, 0.5, 0.5), m_curve.GetLUTColour(8.0)));
    EXPECT_FALSE(AreNear(AtData(1.5, 0.5, 0.5), before));
    triangles.SetColours({ RGB(0, 200, 0), RGB(0, 0, 200) });
    m_curve.SetPlotDataModified(1);
    m_curve.SetElementColoursOn(1);
    Draw();
    EXPECT_TRUE(AreNear(AtData(0.7, 0.3, 0.3), RGB(0, 200, 0)));
    EXPECT_TRUE(AreNear(AtData(0.3, 0.7, 0.7), RGB(0, 0, 200)));
    EXPECT_TRUE(AreNear(AtData(1.5, 0.5, 0.5), kRed)) << "a patch without colours of its own";
}

TEST_F(DrawMesh, OutlinesStandOnTheirElements)
{
    AddSquares();
    constexpr COLORREF kBlue = RGB(0, 0, 255);
    m_curve.SetWireframeColour(kBlue);
    Draw();
    int const filled = Count(kRed);
    EXPECT_EQ(Count(kBlue), 0);
    m_curve.SetWireframeOn(1);
    Draw();
    int const outlines = Count(kBlue);
    EXPECT_GT(outlines, 100);
    EXPECT_GT(Count(kRed), filled / 2);
    EXPECT_TRUE(AreNear(AtData(1.5, 0.5, 0.5), kRed));
    m_curve.SetSolidOn(0);
    Draw();
    EXPECT_EQ(Count(kRed), 0);
    EXPECT_NEAR(Count(kBlue), outlines, 0.25 * outlines);
    EXPECT_TRUE(AreNear(AtData(1.5, 0.5, 0.5), kBackground));
}

TEST_F(DrawMesh, ClippingOpensTheBlockWithoutAnEvaluationByTheHost)
{
    AddBricks(m_curve, { 2, 1, 2 }, {});
    Draw();
    EXPECT_TRUE(AreNear(AtData(0.5, 0.5, 2), kRed));
    EXPECT_TRUE(AreNear(AtData(1.5, 0.5, 2), kRed));
    m_curve.SetClip(1);
    m_curve.SetClipRanges(0, 1, 0, 1, 0, 2);
    Draw();
    EXPECT_TRUE(AreNear(AtData(0.5, 0.5, 2), kRed));
    EXPECT_TRUE(AreNear(AtData(1.7, 0.5, 2), kBackground));
    m_curve.SetClip(0);
    Draw();
    EXPECT_TRUE(AreNear(AtData(1.7, 0.5, 2), kRed));
}

TEST_F(DrawMesh, PolygonsAreFilledWhateverTheirShape)
{
    // An L, wound either way and begun at any corner, and with a node twice.
    std::vector<std::array<double, 3>> const places { { 0, 0, 0 }, { 2, 0, 0 }, { 2, 1, 0 }, { 1, 1, 0 }, { 1, 2, 0 },
        { 0, 2, 0 }, { 0, 0, 1 } };
    AddNodes(m_curve, places);
    auto patch = std::make_unique<CMeshPatch>();
    patch->SetElementType(etPolygon);
    patch->SetNodeSet(m_curve.GetNodeSets()[0]);
    CMeshPatch& polygons = *m_curve.AddPatch(std::move(patch));
    std::vector<DWORD> corners { 1, 2, 3, 4, 5, 6 };
    for (int turn = 0; turn < 12; ++turn) {
        std::rotate(corners.begin(), corners.begin() + 1, corners.end());
        if (turn == 6)
            std::reverse(corners.begin(), corners.end());
        std::vector<DWORD> polygon = corners;
        polygon.push_back(turn % 2 ? polygon.back() : polygon.front());
        polygons.RemovePolygons();
        polygons.AddPolygon(polygon);
        m_curve.SetPlotDataModified(1);
        Draw();
        for (auto const& [x, y] : { std::pair(0.5, 0.5), { 1.7, 0.5 }, { 0.5, 1.7 } })
            EXPECT_TRUE(AreNear(AtData(x, y, 0), kRed)) << turn << ": " << x << ", " << y;
        EXPECT_TRUE(AreNear(AtData(1.6, 1.6, 0), kBackground)) << turn;
    }
}

TEST_F(DrawMesh, MeshesOfManyBatchesAreWhole)
{
    // A sheet of more corners than a batch takes, once flat and once with quads that are not, and with shared corners.
    constexpr int kSide = 220;
    std::vector<std::array<double, 3>> places;
    CDWordArray indices;
    for (int j = 0; j <= kSide; ++j) {
        for (int i = 0; i <= kSide; ++i)
            places.push_back({ 1.0 * i, 1.0 * j, (i + j) % 2 ? 0.1 : 0.0 });
    }
    auto const node = [](int i, int j) { return static_cast<DWORD>(j * (kSide + 1) + i + 1); };
    for (int j = 0; j < kSide; ++j) {
        for (int i = 0; i < kSide; ++i) {
            for (DWORD const n : { node(i, j), node(i + 1, j), node(i + 1, j + 1), node(i, j + 1) })
                indices.Add(n);
        }
    }
    AddNodes(m_curve, places);
    CMeshPatch& patch = *AddElements(m_curve, etQuad, indices);
    for (int const averaged : { 0, 1 }) {
        patch.SetAverageNormals(averaged);
        m_curve.SetPlotDataModified(1);
        // The second draw is of what the driver has.
        for (int draw = 0; draw < 2; ++draw) {
            m_graph.SetModifiedFlag(1);
            Draw();
            for (double at = 0.5; at < kSide; at += 11.0)
                EXPECT_TRUE(AreNear(AtData(at, kSide - at, 0), kRed)) << averaged << ": " << at;
        }
    }
}

/// An object of nodes and elements in a graph of its own kind, from above.
class DrawGeneralObject : public test::Draw3D {
protected:
    DrawGeneralObject()
        : m_curve(Add<C3DObjectCurve>(it3DObjectPlot))
    {
        m_graph.SetLightingOn(0);
        m_graph.SetViewingElevation(0);
    }
    void Draw(std::string const& properties)
    {
        m_curve.SetFormulaString(CString("general\nelement_type: block\nnodes\n8\n0 0 0\n1 0 0\n1 1 0\n0 1 0\n"
                                         "0 0 1\n1 0 1\n1 1 1\n0 1 1\nelements\n1\n1 2 3 4 5 6 7 8\n"
            + properties + "endobject\n"));
        Draw3D::Draw();
    }
    COLORREF Middle() { return AtData(0.55, 0.4, 1.0); }

    C3DObjectCurve& m_curve;
};

TEST_F(DrawGeneralObject, ColoursOutlinesAndTransparencyAreThoseOfItsProperties)
{
    Draw("colour: 200 40 20\n");
    EXPECT_TRUE(AreNear(Middle(), RGB(200, 40, 20)));
    Draw("colour: 200 40 20\nwireframe\nwireframecolour: 0 0 255\n");
    EXPECT_TRUE(AreNear(Middle(), RGB(200, 40, 20)));
    EXPECT_GT(Count(RGB(0, 0, 255)), 50);
    Draw("element_colours\n1\n0 200 0\n");
    EXPECT_TRUE(AreNear(Middle(), RGB(0, 200, 0)));
    // Both the upper and the lower face are half of what is seen.
    Draw("colour: 200 40 20\ntransparency: 0.5\n");
    EXPECT_TRUE(AreNear(Middle(), RGB(10 + 190 * 3 / 4, 20 + 20 * 3 / 4, 30 - 10 * 3 / 4)));
    Draw("colour: 200 40 20\ngradation\n");
    EXPECT_FALSE(AreNear(Middle(), RGB(200, 40, 20))) << "lighter at the top";
}

TEST_F(DrawMesh, TablesThatShrinkDoNoHarm)
{
    AddBricks(m_curve, { 3, 3, 3 }, [](double x, double, double) { return x; });
    m_curve.SetColourDescription(1);
    m_curve.SetVariableNames({ "temp" }, {});
    m_curve.SetColourmapVar("temp");
    Draw();
    // Without a word to the curve.
    m_curve.GetNodeSets()[0]->GetPoints()->Initialise(3, 8, 1);
    m_curve.GetNodeSets()[0]->GetNodeData()->Clear();
    m_curve.SetWireframeOn(1);
    Draw();
    m_curve.SetSolidOn(0);
    Draw();
    m_curve.GetNodeSets()[0]->GetPoints()->Initialise(2, 5, 1);
    m_curve.SetPlotDataModified(1);
    Draw();
    EXPECT_EQ(Count(kRed), 0);
}

} // namespace
} // namespace ombrel
