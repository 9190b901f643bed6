#include "ombrel/Init.h"
#include "ombrel/graph3d/3DObjectCube.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/graph3d/3DObjectSphere.h"
#include "tests/graph3d/Draw3D.h"
#include "tests/model/ArchiveBytes.h"

#include <limits>
#include <vector>

namespace ombrel {
namespace {

/// Objects in a cube of −2 … 2, unlit: every face has its own colour to the bit.
class ObjectDraw : public test::Draw3D {
protected:
    ObjectDraw()
    {
        m_graph.SetLightingOn(0);
        m_curve = &Add<C3DObjectCurve>(it3DObjectPlot);
        for (C3DAxis** axis = m_graph.GetAxes(); axis != m_graph.GetAxes() + 3; ++axis) {
            (*axis)->SetRangeMode(C3DAxis::rmFixed);
            (*axis)->SetRange(-2.0, 2.0);
        }
    }
    void Read(char const* text)
    {
        m_curve->SetFormulaString(text);
        Draw();
    }
    COLORREF AtWorld(CVertex const& v) const { return AtBox(v * 0.25); }

    C3DObjectCurve* m_curve;
};

TEST_F(ObjectDraw, ShapesCoverWhatTheyShould)
{
    constexpr COLORREF kBlue = RGB(0, 0, 255);
    for (double const azimuth : { 45.0, 135.0, 225.0, 315.0 }) {
        for (double const elevation : { 20.0, 110.0 }) {
            m_graph.SetViewingAzimuth(azimuth);
            m_graph.SetViewingElevation(elevation);
            Read("sphere\nradius: 1\ncolour: 0 0 255\nendobject");
            int const sphere = Count(kBlue);
            EXPECT_EQ(AtWorld({ 0, 0, 0 }), kBlue);
            Read("cube\ndimensions: 1 1 1\ncolour: 0 0 255\nendobject");
            int const cube = Count(kBlue);
            // A box covers 4/π of the sphere in it when seen from a side, and 4√3/π from a corner.
            EXPECT_GT(cube, sphere * 1.25);
            EXPECT_LT(cube, sphere * 2.25);
            Read("cube\ndimensions: 1 1 1\ncolour: 0 0 255\nendobject\nsphere\nradius: 0.99\nendobject");
            EXPECT_EQ(Count(kBlue), cube);
            EXPECT_EQ(Count(RGB(255, 0, 0)), 0);
        }
    }
}

TEST_F(ObjectDraw, SettingsAndTransformsShowAtOnce)
{
    Read("sphere\nradius: 0.5\ntranslate: 1 0 0\nendobject");
    auto& sphere = dynamic_cast<C3DObjectSphere&>(*m_curve->GetObjects()[0]);
    EXPECT_EQ(AtWorld({ 1, 0, 0 }), RGB(255, 0, 0));
    sphere.SetColour(RGB(1, 2, 3));
    Draw();
    EXPECT_EQ(AtWorld({ 1, 0, 0 }), RGB(1, 2, 3));
    sphere.Translate(-2, 0, 0);
    Draw();
    EXPECT_EQ(AtWorld({ 1, 0, 0 }), RGB(10, 20, 30));
    EXPECT_EQ(AtWorld({ -1, 0, 0 }), RGB(1, 2, 3));
    CTransformArray transforms;
    transforms.Add({ CCoordTransform::ctTranslate, 1.0, 1.0, 0.0 });
    m_curve->SetTransforms(transforms);
    Draw();
    EXPECT_EQ(AtWorld({ 0, 1, 0 }), RGB(1, 2, 3));
    m_graph.GetAxes()[1]->SetMax(6.0);
    Draw();
    EXPECT_NE(AtWorld({ 0, 1, 0 }), RGB(1, 2, 3));
    // Fewer faces while the view is dragged, and all of them afterwards.
    auto const fine = Pixels();
    m_curve->SetCoarseMode(1);
    m_curve->SetModified(1);
    Draw();
    EXPECT_NE(Pixels(), fine);
    m_curve->SetCoarseMode(0);
    m_curve->SetModified(1);
    Draw();
    EXPECT_EQ(Pixels(), fine);
}

TEST_F(ObjectDraw, TransparentObjectsLetThoseInsideShine)
{
    Read("cube\ndimensions: 1 1 1\ncolour: 0 0 255\ntransparency: 0.5\nendobject\n"
         "sphere\nradius: 0.5\ncolour: 0 255 0\nendobject");
    COLORREF const centre = AtWorld({ 0, 0, 0 });
    // One face before the opaque sphere.
    EXPECT_EQ(GetRValue(centre), 0);
    EXPECT_NEAR(GetGValue(centre), 127, 2);
    EXPECT_NEAR(GetBValue(centre), 128, 2);
    // Two before the background.
    COLORREF const side = AtWorld({ 0, 0, 0.85 });
    EXPECT_NEAR(GetRValue(side), 10 / 4.0, 2);
    EXPECT_NEAR(GetBValue(side), 191 + 30 / 4.0, 3);
    m_curve->GetObjects()[0]->SetTransparency(1e-60);
    Draw();
    EXPECT_EQ(AtWorld({ 0, 0, 0 }), RGB(0, 0, 255));
}

TEST_F(ObjectDraw, WiresLieOnTheFacesAndNowhereElse)
{
    Read("cube\ndimensions: 1 1 1\ncolour: 0 0 255\nendobject");
    int const faces = Count(RGB(0, 0, 255));
    Read("cube\ndimensions: 1 1 1\ncolour: 0 0 255\nwireframe\nwireframecolour: 255 255 0\nendobject");
    int const wires = Count(RGB(255, 255, 0));
    EXPECT_GT(wires, faces / 20);
    EXPECT_NEAR(wires + Count(RGB(0, 0, 255)), faces, 0.05 * faces);
    // The far edges are hidden.
    auto& cube = dynamic_cast<C3DObjectCube&>(*m_curve->GetObjects()[0]);
    cube.SetNumDivisions(1);
    Draw();
    EXPECT_EQ(AtWorld({ 0, 0, 0 }), RGB(0, 0, 255));
    int const edges = Count(RGB(255, 255, 0));
    cube.SetTransparency(1.0);
    Draw();
    // Nine of twelve edges, all of their pixels; the three behind are shorter in perspective.
    double const all = Count(RGB(255, 255, 0));
    EXPECT_GT(edges, 0.6 * all);
    EXPECT_LT(edges, 0.8 * all);
}

TEST_F(ObjectDraw, WhatIsNoShapeLeavesTheOthersAlone)
{
    Read("sphere\nradius: 1\ncolour: 0 0 255\nendobject");
    auto const alone = Pixels();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    for (double const size : { 0.0, nan, std::numeric_limits<double>::infinity(), 1e308 }) {
        Read("sphere\nradius: 1\ncolour: 0 0 255\nendobject\ncube\nwireframe\nendobject\n"
             "cylinder\ntransparency: 0.5\nwireframe\nendobject\nsphere\nendobject");
        for (int i = 1; i < 4; ++i) {
            C3DObject& object = *m_curve->GetObjects()[i];
            object.Scale(size, size, 1.0);
            object.Translate(0.0, 0.0, size == 0.0 ? 0.0 : size);
            object.SetTransparency(size);
        }
        Draw();
        EXPECT_EQ(Pixels(), alone) << size;
    }
}

TEST_F(ObjectDraw, ProportionsAreKeptAndDocumentsLookTheSame)
{
    OmbrelInit();
    for (C3DAxis** axis = m_graph.GetAxes(); axis != m_graph.GetAxes() + 3; ++axis)
        (*axis)->SetRangeMode(C3DAxis::rmExact);
    m_graph.SetAutoscaleMode(0);
    m_graph.SetAntialiasMode(1);
    m_graph.SetLightingOn(1);
    Read("sphere\nradii: 3 2 1\ncolour: 200 100 50\ngradation\nendobject\n"
         "cylinder\nradius: 0.5\nendpoints: -3 -2 -1 3 2 1\nendobject");
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    m_graph.GetAxes()[0]->GetScaleFacs(x, y, z);
    EXPECT_NEAR(y / x, 2.0 / 3.0, 0.15);
    EXPECT_NEAR(z / x, 1.0 / 3.0, 0.15);
    auto const pixels = Pixels();
    C3DGraph loaded;
    ASSERT_TRUE(test::Load(loaded, test::Stored(m_graph)));
    // Which documents do not tell.
    loaded.SetAntialiasMode(1);
    loaded.Draw(m_target.GetDC(), { { 0, 0 }, test::kSize }, pmOffScreen);
    EXPECT_EQ(Pixels(), pixels);
}

} // namespace
} // namespace ombrel
