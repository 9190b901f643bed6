#include "ombrel/platform/opengl/GLCanvas.h"

#include "ombrel/platform/framework/Error.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace ombrel {
namespace {

using testing::HasSubstr;

constexpr std::uint32_t kRed = 0xFF0000;
constexpr std::uint32_t kGreen = 0x00FF00;
constexpr std::uint32_t kBlue = 0x0000FF;

void Clear(int r, int g, int b)
{
    gl::ClearColor(
        static_cast<float>(r) / 255.0F, static_cast<float>(g) / 255.0F, static_cast<float>(b) / 255.0F, 1.0F);
    gl::Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

/// A rectangle in the coordinates of OpenGL without matrices: x and y from −1 to 1, y up; z −1 in front, 1 at the back.
void Rectangle(std::uint32_t colour, double left, double bottom, double right, double top, double z = 0.0)
{
    gl::Color3ub(static_cast<GLubyte>(colour >> 16), static_cast<GLubyte>(colour >> 8), static_cast<GLubyte>(colour));
    gl::Begin(GL_QUADS);
    gl::Vertex3d(left, bottom, z);
    gl::Vertex3d(right, bottom, z);
    gl::Vertex3d(right, top, z);
    gl::Vertex3d(left, top, z);
    gl::End();
}

Raster Picture(GLCanvas& canvas)
{
    CSize const size = canvas.GetSize();
    Raster picture(size.cx, size.cy, 24);
    canvas.ReadPixels(picture.Bounds(), picture);
    return picture;
}

std::uint32_t At(GLCanvas& canvas, int x, int y)
{
    std::uint32_t pixel = 0xDEADBEEF;
    canvas.ReadPixels({ x, y, x + 1, y + 1 }, &pixel, 1);
    return pixel;
}

TEST(GLCanvas, GivesBackTheColourThatItWasClearedTo)
{
    GLCanvas canvas;
    canvas.SetSize({ 3, 2 });
    GLCanvas::Scope const scope(canvas);
    for (int v = 0; v < 256; ++v) {
        Clear(v, 255 - v, v / 2);
        EXPECT_EQ(At(canvas, 2, 1), static_cast<std::uint32_t>(v << 16 | (255 - v) << 8 | v / 2));
    }
}

TEST(GLCanvas, DrawsAtThePlacesOfTheBitmap)
{
    GLCanvas canvas;
    canvas.SetSize({ 40, 20 });
    GLCanvas::Scope const scope(canvas);
    Clear(255, 255, 255);
    gl::Color3ub(255, 0, 0);
    // The lower left half of the picture.
    gl::Begin(GL_TRIANGLES);
    gl::Vertex2d(-1.0, -1.0);
    gl::Vertex2d(1.0, -1.0);
    gl::Vertex2d(-1.0, 1.0);
    gl::End();
    auto const picture = Picture(canvas);
    EXPECT_EQ(picture.Row(19)[0], kRed);
    EXPECT_EQ(picture.Row(19)[37], kRed);
    EXPECT_EQ(picture.Row(1)[0], kRed);
    EXPECT_EQ(picture.Row(0)[39], 0xFFFFFFU);
    EXPECT_EQ(picture.Row(17)[39], 0xFFFFFFU);
    // The row's middle is 8.5 down: the edge crosses it at x = 17.
    EXPECT_EQ(picture.Row(8)[16], kRed);
    EXPECT_EQ(picture.Row(8)[17], 0xFFFFFFU);
}

TEST(GLCanvas, CoversWhatWasWrittenAndIsNotHeldUpByIt)
{
    GLCanvas canvas;
    canvas.SetSize({ 8, 4 });
    GLCanvas::Scope const scope(canvas);
    gl::Enable(GL_DEPTH_TEST);
    Clear(0, 0, 0);
    // Depth 0.25 of 0 … 1 on the left half.
    Rectangle(kRed, -1.0, -1.0, 0.0, 1.0, -0.5);

    // Settings that would hold up geometry: all pixels must arrive, and the settings must still be there.
    gl::Enable(GL_SCISSOR_TEST);
    gl::Scissor(0, 0, 1, 1);
    gl::ColorMask(GL_FALSE, GL_TRUE, GL_TRUE, GL_TRUE);
    gl::PixelStorei(GL_UNPACK_ROW_LENGTH, 77);
    gl::PixelStorei(GL_PACK_SKIP_ROWS, 5);
    Raster text(8, 4, 24);
    for (int y = 0; y < 4; ++y)
        std::fill_n(text.Row(y), 8, static_cast<std::uint32_t>(0x010203 * (y + 1)));
    canvas.WritePixels({ 2, 1, 6, 20 }, text);
    EXPECT_TRUE(gl::IsEnabled(GL_SCISSOR_TEST));
    GLint length = 0;
    gl::GetIntegerv(GL_UNPACK_ROW_LENGTH, &length);
    EXPECT_EQ(length, 77);
    EXPECT_EQ(gl::GetError(), static_cast<GLenum>(GL_NO_ERROR));
    EXPECT_EQ(At(canvas, 2, 0), kRed);
    EXPECT_EQ(At(canvas, 1, 1), kRed);
    EXPECT_EQ(At(canvas, 2, 1), 0x020406U);
    EXPECT_EQ(At(canvas, 5, 3), 0x04080CU);
    EXPECT_EQ(At(canvas, 6, 1), 0U);

    gl::Disable(GL_SCISSOR_TEST);
    gl::ColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    // Behind the rectangle and before the background: the pixels have no depth of their own.
    Rectangle(kBlue, -1.0, -1.0, 1.0, 1.0, 0.0);
    EXPECT_EQ(At(canvas, 3, 2), 0x030609U);
    EXPECT_EQ(At(canvas, 5, 2), kBlue);
    Rectangle(kGreen, -1.0, -1.0, 1.0, 1.0, -0.75);
    EXPECT_EQ(At(canvas, 3, 2), kGreen);
}

TEST(GLCanvas, ReadsPartsAndLeavesOutWhatLiesOutside)
{
    GLCanvas canvas;
    canvas.SetSize({ 5, 3 });
    GLCanvas::Scope const scope(canvas);
    std::vector<std::uint32_t> numbers(15);
    for (std::uint32_t i = 0; i < 15; ++i)
        numbers[i] = i + 1;
    canvas.WritePixels({ 0, 0, 5, 3 }, numbers.data(), 5);

    // From the bottom up, into the middle of something wider.
    std::vector<std::uint32_t> target(7 * 4, 99);
    canvas.ReadPixels({ 3, 1, 9, 4 }, target.data() + 2 * 7 + 1, -7);
    std::vector<std::uint32_t> expected(7 * 4, 99);
    expected[2 * 7 + 1] = 9;
    expected[2 * 7 + 2] = 10;
    expected[1 * 7 + 1] = 14;
    expected[1 * 7 + 2] = 15;
    EXPECT_EQ(target, expected);

    Raster small(2, 2, 24);
    canvas.ReadPixels({ 1, 1, 5, 3 }, small);
    EXPECT_EQ(small.Row(1)[1], 7U);
    EXPECT_EQ(small.Row(0)[1], 0U);
    canvas.ReadPixels({ -9, -9, 0, 0 }, small);
    canvas.WritePixels({ 5, 0, 9, 9 }, small);
}

TEST(GLCanvas, TakesTheMeanOfPicturesAndKeepsDepth)
{
    GLCanvas canvas;
    canvas.SetSize({ 300, 2 });
    CRect const all(0, 0, 300, 2);
    GLCanvas::Scope const scope(canvas);
    std::vector<std::uint32_t> colours(600);
    for (std::uint32_t i = 0; i < 600; ++i)
        colours[i] = i % 256 * 0x010100 + (255 - i % 256);
    gl::Enable(GL_DEPTH_TEST);
    Clear(0, 0, 0);
    Rectangle(kRed, -1.0, -1.0, 1.0, 1.0, -0.5);
    canvas.ClearAccumulation(all);
    for (int pass = 0; pass < GLCanvas::kMostAccumulated; ++pass) {
        canvas.WritePixels(all, colours.data(), 300);
        canvas.Accumulate();
    }
    Clear(9, 9, 9);
    Rectangle(kRed, -1.0, -1.0, 1.0, 1.0, -0.5);
    canvas.ReturnAccumulation();
    std::vector<std::uint32_t> returned(600);
    canvas.ReadPixels(all, returned.data(), 300);
    EXPECT_EQ(returned, colours);
    Rectangle(kBlue, -1.0, -1.0, 1.0, 1.0, 0.0);
    EXPECT_EQ(At(canvas, 7, 0), colours[7]);

    // In a rectangle alone, also where it leaves the picture: 3 of 8 passes at 255 and at 1 are 95.625 and 0.375.
    for (CRect const& rect : { CRect(298, 1, 300, 2), CRect(290, 1, 900, 70) }) {
        canvas.ClearAccumulation(rect);
        for (int pass = 0; pass < 8; ++pass) {
            Clear(pass < 3 ? 255 : 0, pass < 3 ? 1 : 0, 8);
            canvas.Accumulate();
        }
        canvas.ReturnAccumulation();
        EXPECT_EQ(At(canvas, 299, 1), 0x600008U);
        EXPECT_EQ(At(canvas, rect.left, 1), 0x600008U);
        EXPECT_EQ(At(canvas, rect.left - 1, 1), 0x000008U);
        EXPECT_EQ(At(canvas, 299, 0), 0x000008U);
    }

    // Of nothing there is no mean.
    for (CRect const& rect : { all, CRect(), CRect(400, 0, 500, 2) }) {
        canvas.ClearAccumulation(rect);
        if (rect != all)
            canvas.Accumulate();
        canvas.ReturnAccumulation();
        EXPECT_EQ(At(canvas, 0, 0), 0x000008U);
    }
}

TEST(GLCanvas, TakesAnotherSizeAndRefusesWhatTheDriverDoesNotHave)
{
    GLCanvas canvas;
    for (CSize const size : { CSize(1, 1), CSize(200, 100), CSize(100, 200), CSize(0, -3) }) {
        canvas.SetSize(size);
        GLCanvas::Scope const scope(canvas);
        GLint viewport[4] = {};
        gl::GetIntegerv(GL_VIEWPORT, viewport);
        EXPECT_THAT(viewport, testing::ElementsAre(0, 0, std::max(size.cx, 1), std::max(size.cy, 1)));
        Clear(1, 2, 3);
        EXPECT_EQ(At(canvas, std::max(size.cx, 1) - 1, std::max(size.cy, 1) - 1), 0x010203U);
    }
    canvas.SetSize({ 1 << 24, 3 });
    try {
        GLCanvas::Scope const scope(canvas);
        ADD_FAILURE() << "16 million pixels a row";
    } catch (Error const& error) {
        EXPECT_EQ(error.GetKind(), Error::Kind::Resource);
        EXPECT_THAT(error.what(), HasSubstr("16777216 × 3"));
    }
    // The refused one harms nobody.
    canvas.SetSize({ 2, 2 });
    GLCanvas::Scope const scope(canvas);
    Clear(4, 5, 6);
    EXPECT_EQ(At(canvas, 1, 1), 0x040506U);
}

TEST(GLCanvas, PutsEverythingBackAfterAScopeWithinAnother)
{
    GLCanvas outer;
    GLCanvas inner;
    outer.SetSize({ 10, 10 });
    inner.SetSize({ 4, 4 });
    GLCanvas::Scope const scope(outer);
    Clear(255, 0, 0);
    gl::Viewport(1, 2, 3, 4);
    gl::MatrixMode(GL_PROJECTION);
    gl::Translated(0.5, 0.0, 0.0);
    gl::Enable(GL_CLIP_PLANE3);
    {
        GLCanvas::Scope const within(inner);
        Clear(0, 0, 255);
        EXPECT_EQ(At(inner, 3, 3), kBlue);
        gl::PushMatrix();
        gl::LoadIdentity();
        gl::PushAttrib(GL_ENABLE_BIT);
        gl::Disable(GL_CLIP_PLANE3);
        gl::Enable(static_cast<GLenum>(-1));
    }
    EXPECT_EQ(gl::GetError(), static_cast<GLenum>(GL_NO_ERROR));
    EXPECT_EQ(At(outer, 3, 3), kRed);
    GLint viewport[4] = {};
    gl::GetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_THAT(viewport, testing::ElementsAre(1, 2, 3, 4));
    GLint depth = 0;
    gl::GetIntegerv(GL_PROJECTION_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 1);
    double matrix[16] = {};
    gl::GetDoublev(GL_PROJECTION_MATRIX, matrix);
    EXPECT_EQ(matrix[12], 0.5);
    EXPECT_TRUE(gl::IsEnabled(GL_CLIP_PLANE3));
}

TEST(GLCanvas, StartsEachScopeAsANewContext)
{
    GLCanvas canvas;
    try {
        GLCanvas::Scope const scope(canvas);
        gl::Enable(GL_LIGHTING);
        gl::MatrixMode(GL_MODELVIEW);
        gl::PushMatrix();
        gl::Scaled(2.0, 2.0, 2.0);
        throw std::runtime_error("in the middle of a draw");
    } catch (std::runtime_error const&) {
    }
    GLCanvas::Scope const scope(canvas);
    EXPECT_FALSE(gl::IsEnabled(GL_LIGHTING));
    GLint depth = 0;
    gl::GetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 1);
    double matrix[16] = {};
    gl::GetDoublev(GL_MODELVIEW_MATRIX, matrix);
    EXPECT_EQ(matrix[0], 1.0);
}

TEST(GLCanvas, IsMadeAgainWhenTheDriverLosesTheContext)
{
    GLCanvas canvas;
    GLObject texture;
    {
        GLCanvas::Scope const scope(canvas);
        texture = GLObject(GLObject::Kind::Texture);
        EXPECT_TRUE(texture.IsAlive());
        GLContext::Process().Lose();
    }
    GLCanvas::Scope const scope(canvas);
    EXPECT_FALSE(texture.IsAlive());
    Clear(1, 2, 3);
    EXPECT_EQ(At(canvas, 0, 0), 0x010203U);
}

TEST(GLCanvas, IsDrawnOnAndDestroyedInAnyThread)
{
    auto const draw = [](std::uint32_t colour) {
        for (int i = 0; i < 20; ++i) {
            auto canvas = std::make_unique<GLCanvas>();
            canvas->SetSize({ 16, 16 });
            {
                GLCanvas::Scope const scope(*canvas);
                Clear(255, 255, 255);
                Rectangle(colour, -1.0, -1.0, 1.0, 1.0);
                std::this_thread::yield();
                ASSERT_EQ(At(*canvas, 8, 8), colour);
            }
            std::thread([&] { canvas.reset(); }).join();
        }
    };
    std::thread other(draw, kBlue);
    draw(kGreen);
    other.join();

    // What goes while another thread draws waits for it; nobody waits for what goes.
    auto canvas = std::make_unique<GLCanvas>();
    GLCanvas drawn;
    GLuint name = 0;
    {
        GLCanvas::Scope const scope(drawn);
        GLObject texture(GLObject::Kind::Texture);
        gl::BindTexture(GL_TEXTURE_2D, texture.Name());
        gl::BindTexture(GL_TEXTURE_2D, 0);
        name = texture.Name();
        std::thread([&] { GLObject const taken(std::move(texture)); }).join();
        EXPECT_TRUE(gl::IsTexture(name));
    }
    GLCanvas::Scope const scope(drawn);
    EXPECT_FALSE(gl::IsTexture(name));
}

} // namespace
} // namespace ombrel
