#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/opengl/GLCanvas.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ombrel {
namespace {

// Without matrices x and y run from −1 to 1: on 200 × 200 pixels, 100 are a unit, and the middle is (100, 100).
class UtilsOpenGL : public testing::Test {
protected:
    UtilsOpenGL()
        : m_scope((m_canvas.SetSize({ 200, 200 }), m_canvas))
    {
        Clear();
        gl::Color3ub(255, 255, 255);
    }
    void Clear()
    {
        gl::Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        gl::GetDoublev(GL_MODELVIEW_MATRIX, m_before.data());
    }
    std::uint32_t At(int x, int y)
    {
        std::uint32_t pixel = 0;
        m_canvas.ReadPixels({ x, y, x + 1, y + 1 }, &pixel, 1);
        return pixel;
    }
    /// How many pixels of a column are drawn.
    int HeightAt(int x)
    {
        std::array<std::uint32_t, 200> column {};
        m_canvas.ReadPixels({ x, 0, x + 1, 200 }, column.data(), 1);
        return static_cast<int>(std::count_if(column.begin(), column.end(), [](auto pixel) { return pixel != 0; }));
    }
    /// Whether the matrix is that of the last Clear.
    bool IsMatrixAsBefore() const
    {
        std::array<double, 16> now {};
        gl::GetDoublev(GL_MODELVIEW_MATRIX, now.data());
        return now == m_before;
    }

    GLCanvas m_canvas;
    GLCanvas::Scope m_scope;
    std::array<double, 16> m_before {};
};

TEST_F(UtilsOpenGL, LinesRunFromOneColourToTheOther)
{
    BYTE const red[] = { 255, 0, 0 };
    BYTE const blue[] = { 0, 0, 255 };
    CVUtils::DrawLine({ -0.5, 0.005, 0.0 }, { 0.5, 0.005, 0.0 }, red, blue);
    EXPECT_EQ(HeightAt(49), 0);
    EXPECT_EQ(HeightAt(52), 1);
    EXPECT_EQ(HeightAt(151), 0);
    EXPECT_GT(At(52, 99) >> 16, 240U);
    EXPECT_LT(At(147, 99) >> 16, 15U);
    EXPECT_GT(At(147, 99) & 0xFF, 240U);
    // The other form keeps the current colour, which is blue now.
    CVUtils::DrawLine({ 0.005, -1.0, 0.0 }, { 0.005, -0.5, 0.0 });
    EXPECT_EQ(At(100, 180), 0x0000FFU);
}

TEST_F(UtilsOpenGL, MaterialIsWhatLightShows)
{
    gl::Enable(GL_LIGHTING);
    float const white[] = { 1.0F, 1.0F, 1.0F, 1.0F };
    gl::LightModelfv(GL_LIGHT_MODEL_AMBIENT, white);
    BYTE const colour[] = { 200, 100, 50 };
    CVUtils::Material(colour);
    CVUtils::DrawCuboid({ 0.0, 0.0, 0.0 }, 0.5, 0.25, 0.1);
    EXPECT_EQ(At(100, 100), 0xC86432U);
    EXPECT_EQ(HeightAt(52), 50);
    EXPECT_EQ(HeightAt(48), 0);
}

TEST_F(UtilsOpenGL, SpheresStandAtTheirCentre)
{
    CVUtils::DrawSphere({ 0.25, 0.5, 0.0 }, 0.3);
    // Five stacks along z have no ring at the widest place: the next ones stand 18 degrees from it, 2 · 30 · cos 18°.
    EXPECT_NEAR(HeightAt(125), 57, 1);
    EXPECT_EQ(HeightAt(94), 0);
    EXPECT_EQ(HeightAt(156), 0);
    EXPECT_NE(At(125, 50), 0U);
    EXPECT_TRUE(IsMatrixAsBefore());
}

TEST_F(UtilsOpenGL, ConesAndCylindersPointAlongTheirAxis)
{
    CVUtils::DrawCone({ -0.5, 0.0, 0.0 }, { 0.5, 0.0, 0.0 }, 0.4);
    EXPECT_EQ(HeightAt(48), 0);
    EXPECT_NEAR(HeightAt(51), 80, 4);
    EXPECT_NEAR(HeightAt(100), 40, 3);
    EXPECT_NEAR(HeightAt(140), 8, 3);
    EXPECT_EQ(HeightAt(152), 0);
    EXPECT_TRUE(IsMatrixAsBefore());

    Clear();
    // Downwards in y: the width shows in a row, so the column through the axis is as long as it.
    CVUtils::DrawCone({ 0.0, 0.5, 0.0 }, { 0.0, -0.5, 0.0 }, 0.4);
    EXPECT_NEAR(HeightAt(100), 100, 2);
    EXPECT_NEAR(HeightAt(120), 50, 4);
    EXPECT_NE(At(130, 53), 0U);
    EXPECT_EQ(At(130, 140), 0U);

    Clear();
    CVUtils::DrawCylinderLine({ 0.5, 0.0, 0.0 }, { -0.5, 0.0, 0.0 }, 0.1, 0.3, 0);
    EXPECT_NEAR(HeightAt(148), 20, 3);
    EXPECT_NEAR(HeightAt(100), 40, 3);
    EXPECT_NEAR(HeightAt(52), 60, 3);
    EXPECT_TRUE(IsMatrixAsBefore());

    Clear();
    CVUtils::DrawCylinderLine({ -0.5, 0.0, 0.0 }, { 0.5, 0.0, 0.0 }, 0.2, -1.0, 1);
    EXPECT_NEAR(HeightAt(52), 40, 3);
    EXPECT_NEAR(HeightAt(148), 40, 3);

    // Along z, from below and from above: seen from its end a tube is open and a capped one closed.
    for (double const z : { 0.5, -0.5 }) {
        Clear();
        CVUtils::DrawCylinderLine({ 0.0, 0.0, -z }, { 0.0, 0.0, z }, 0.2, 0.2, 0);
        EXPECT_EQ(At(100, 100), 0U);
        CVUtils::DrawCylinderLine({ 0.0, 0.0, -z }, { 0.0, 0.0, z }, 0.2, 0.2, 1);
        EXPECT_NE(At(100, 100), 0U);
        EXPECT_NE(At(117, 100), 0U);
        EXPECT_EQ(At(122, 100), 0U);
    }

    Clear();
    CVUtils::DrawCone({ 0.0, 0.0, 0.0 }, { 0.0, 0.0, 0.0 }, 0.4);
    CVUtils::DrawCylinderLine({ 0.0, 0.0, 0.0 }, { 0.0, 0.0, 0.0 }, 0.4, 0.4, 1);
    EXPECT_EQ(HeightAt(100), 0);
    EXPECT_EQ(gl::GetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(UtilsOpenGL, EachFaceOfACuboidLooksOutwards)
{
    gl::Enable(GL_DEPTH_TEST);
    gl::Enable(GL_LIGHTING);
    gl::Enable(GL_LIGHT0);
    float const none[] = { 0.0F, 0.0F, 0.0F, 1.0F };
    gl::LightModelfv(GL_LIGHT_MODEL_AMBIENT, none);
    BYTE const white[] = { 255, 255, 255 };
    CVUtils::Material(white);
    struct Turn {
        double degrees;
        double x;
        double y;
        int width;
        int height;
    };
    // What turns each face to the viewer; the light comes from there, z negative without a projection.
    Turn const turns[] = { { 0, 1, 0, 40, 80 }, { 180, 1, 0, 40, 80 }, { 90, 1, 0, 40, 120 }, { -90, 1, 0, 40, 120 },
        { 90, 0, 1, 120, 80 }, { -90, 0, 1, 120, 80 } };
    float const towardsViewer[] = { 0.0F, 0.0F, -1.0F, 0.0F };
    gl::Lightfv(GL_LIGHT0, GL_POSITION, towardsViewer);
    for (auto const& turn : turns) {
        SCOPED_TRACE(turn.degrees);
        gl::LoadIdentity();
        gl::Rotated(turn.degrees, turn.x, turn.y, 0.0);
        Clear();
        CVUtils::DrawCuboid({ 0.0, 0.0, 0.0 }, 0.2, 0.4, 0.6);
        EXPECT_EQ(HeightAt(100), turn.height);
        EXPECT_EQ(At(100, 100), 0xFFFFFFU);
        EXPECT_NE(At(100 - turn.width / 2, 100), 0U);
        EXPECT_EQ(At(99 - turn.width / 2, 100), 0U);
    }
}

} // namespace
} // namespace ombrel
