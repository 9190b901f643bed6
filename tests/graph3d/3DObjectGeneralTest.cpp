#include "ombrel/graph3d/3DObjectGeneral.h"
#include "ombrel/Init.h"
#include "ombrel/foundation/VException.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/model/PlotArray.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

/// Every keyword of these objects; then a shape of another kind.
constexpr char kText[] = R"(Some General object
node_variables: temp
element_variables: stress
element_type: block
element_type: tetrahedron
average_normals
colour: 10 20 30
// nodes
nodes
12
0 0 0 1
1 0 0 2
2 0 0 3
0 1 0 1
1 1 0 2
2 1 0 3
0 0 1 1
1 0 1 2
2 0 1 3
0 1 1 1
1 1 1 2
2 1 1 3
elements
2
1 2 5 4 7 8 11 10 0.5
2 3 6 5 8 9 12 11 1.5
element_colours
2
255 0 0
0 255 0
translate: 0 0 5
scale: 2 1 1
endobject
general
element_type: polygon
nodes
4
0 0 0
1 0 0
1 1 0
0 1 0
elements
1
1 2 3 4
endobject
)";

class GeneralObjects : public testing::Test {
protected:
    GeneralObjects()
        : m_curve(*static_cast<C3DObjectCurve*>(m_graph.AddPlot(it3DObjectPlot)->CreateCurve()))
    {
        OmbrelInit();
    }
    void Read(std::string const& text)
    {
        m_curve.SetFormulaString(CString(text));
        EXPECT_EQ(m_curve.Evaluate(), 1);
    }

    C3DGraph m_graph { 1 };
    C3DObjectCurve& m_curve;
};

TEST_F(GeneralObjects, EveryKeywordIsReadStoredAndLoaded)
{
    Read(kText);
    EXPECT_TRUE(m_curve.GetReadNotes().empty());
    C3DObjectCurve loaded;
    ASSERT_TRUE(Load(loaded, Stored(m_curve)));
    EXPECT_EQ(Stored(loaded), Stored(m_curve));
    for (C3DObjectCurve* const curve : { &m_curve, &loaded }) {
        ASSERT_EQ(curve->GetObjects().GetSize(), 2);
        auto* const blocks = DynamicDowncast<C3DObjectGeneral>(curve->GetObjects()[0]);
        ASSERT_TRUE(blocks);
        EXPECT_EQ(blocks->GetNodeVariables(), (CStringArray { "temp" }));
        EXPECT_EQ(blocks->GetElements()->GetElementType(), etBrick) << "tetrahedra are for meshes alone";
        EXPECT_EQ(blocks->GetElements()->GetElementData()->GetAt(0, 1), 1.5);
        EXPECT_EQ(blocks->GetElements()->GetColours()->GetAt(1), RGB(0, 255, 0));
        EXPECT_EQ(blocks->GetColour(), RGB(10, 20, 30));
        blocks->Evaluate();
        int faces = 0;
        for (BYTE const flag : *blocks->GetElements()->GetFaceFlags())
            faces += flag;
        EXPECT_EQ(faces, 10);
        CVertex min;
        CVertex max;
        blocks->GetRanges(min, max);
        EXPECT_EQ(min, CVertex(0, 0, 5));
        EXPECT_EQ(max, CVertex(4, 1, 6));
    }
}

TEST_F(GeneralObjects, BecomeMeshCurvesAndLeaveOthersAlone)
{
    Read(std::string(kText) + "sphere\nendobject\n");
    CTransformArray moved;
    moved.Add(CCoordTransform(CCoordTransform::ctTranslate, 0.0, 100.0, 0.0));
    m_curve.SetTransforms(moved);
    EXPECT_TRUE(m_curve.CheckForGeneralObjects());
    EXPECT_EQ(m_curve.GetObjects().GetSize(), 1);
    ASSERT_EQ(m_graph.GetPlotArray()->GetSize(), 3);
    auto* const blocks = DynamicDowncast<C3DMeshCurve>(m_graph.GetPlotArray()->GetAt(1)->GetComponent(0));
    auto* const polygons = DynamicDowncast<C3DMeshCurve>(m_graph.GetPlotArray()->GetAt(2)->GetComponent(0));
    ASSERT_TRUE(blocks && polygons);
    EXPECT_EQ(blocks->GetNodeSets()[0]->GetTitle(), CString("dummy"));
    EXPECT_EQ(blocks->GetPatches()[0]->GetElementCount(), 2);
    EXPECT_EQ(polygons->GetPatches()[0]->GetElementType(), etPolygon);
    EXPECT_EQ(polygons->GetPatches()[0]->GetPolygon(0)[3], 4U);
    blocks->Evaluate();
    // Where the object stood: its own placement, and then the curve's transforms.
    double lo = 0.0;
    double hi = 0.0;
    blocks->GetXRange(lo, hi);
    EXPECT_EQ(std::pair(lo, hi), std::pair(0.0, 4.0));
    blocks->GetYRange(lo, hi);
    EXPECT_EQ(std::pair(lo, hi), std::pair(100.0, 101.0));
    blocks->GetZRange(lo, hi);
    EXPECT_EQ(std::pair(lo, hi), std::pair(5.0, 6.0));
}

TEST_F(GeneralObjects, ACurveOfNothingElseGoesWithThem)
{
    Read(kText);
    EXPECT_FALSE(m_curve.CheckForGeneralObjects());
    ASSERT_EQ(m_graph.GetPlotArray()->GetSize(), 2);
    EXPECT_EQ(m_graph.GetPlotArray()->GetAt(0)->GetItemType(), it3DMeshPlot);
}

TEST_F(GeneralObjects, TheOldestDocumentsHoldOneEach)
{
    Bytes bytes = Stored(static_cast<C3DCurve&>(*std::make_unique<C3DCurve>()));
    bytes.Int(1).Text("old.tvo").Double(32874).Int(0).Int(1, 1);
    bytes.Int(2, 3, 4).Double(0, 1, 1, 0, 0, 0, 1, 1, 0, 0, 0, 7).Double(0, 1); // nodes
    bytes.Int(2).Short(0).Int(1).Short(4).Int(1, 2, 3, 4); // a polygon
    C3DObjectCurve loaded;
    ASSERT_TRUE(Load(loaded, bytes));
    ASSERT_EQ(loaded.GetObjects().GetSize(), 1);
    double lo = 0.0;
    double hi = 0.0;
    loaded.GetZRange(lo, hi);
    EXPECT_EQ(hi, 7.0);
}

TEST_F(GeneralObjects, BlocksThatAreWrongNameTheirLine)
{
    C3DObjectFile file;
    file.SetReadMode(1);
    file.SetLines("nodes\n1\n0 0 0\nelement_type: quad\nelements\n1\n1 1 1 2\n");
    C3DObjectGeneral object;
    try {
        object.Read(file);
        ADD_FAILURE();
    } catch (CVFileException* e) {
        EXPECT_EQ(e->fault.line, 7U);
        EXPECT_EQ(e->fault.found, CString("2"));
        e->Delete();
    }
}

} // namespace
} // namespace ombrel
