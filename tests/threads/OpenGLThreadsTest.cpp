#include "ombrel/drawing/DIB.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/platform/opengl/GLCanvas.h"
#include "ombrel/platform/opengl/OpenGL.h"
#include "tests/graph3d/SurfaceData.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

namespace ombrel {
namespace {

// Canvases and textures of their own, let go while others draw.
void DrawAndLetGo(int number)
{
    for (int i = 0; i < 25; ++i) {
        auto canvas = std::make_unique<GLCanvas>();
        GLObject texture;
        canvas->SetSize({ 16 + number, 16 });
        std::uint32_t pixel = 0;
        {
            GLCanvas::Scope const scope(*canvas);
            texture = GLObject(GLObject::Kind::Texture);
            gl::ClearColor(static_cast<float>(number) / 255.0F, 0.0F, static_cast<float>(i) / 255.0F, 0.0F);
            gl::Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
            canvas->ReadPixels({ 15, 15, 16, 16 }, &pixel, 1);
        }
        ASSERT_EQ(pixel, static_cast<std::uint32_t>(number << 16 | i));
    }
}

TEST(OpenGLThreads, TakeTurns)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number)
        threads.emplace_back(DrawAndLetGo, number);
    for (auto& thread : threads)
        thread.join();
}

constexpr CSize kPicture { 120, 90 };

// A surface of its own, drawn several times in a turning view; the colours of all pixels.
std::vector<COLORREF> DrawSurface(int slope)
{
    C3DGraph graph(1);
    auto& surface = *static_cast<CSurface*>(graph.AddPlot(itSurfacePlot)->CreateCurve());
    test::Fill(surface, 12, 10, [slope](int c, int r) { return slope * c + r * r; });
    surface.SetColourDescription(2);
    surface.SetColourmap("Spectrum");
    surface.SetContoursOn(1);
    surface.SetContourMode(CSurface::cmBandsAndLines);
    graph.SetAntialiasMode(slope % 2);
    CDIB target(kPicture.cx, kPicture.cy, 24);
    std::vector<COLORREF> pixels;
    for (int azimuth = 0; azimuth < 360; azimuth += 90) {
        graph.SetViewingAzimuth(azimuth + slope);
        graph.Draw(target.GetDC(), { { 0, 0 }, kPicture }, pmOffScreen);
        for (int y = 0; y < kPicture.cy; ++y) {
            for (int x = 0; x < kPicture.cx; ++x)
                pixels.push_back(target.GetDC()->GetPixel(x, y));
        }
    }
    return pixels;
}

TEST(OpenGLThreads, DrawGraphsAsOneThreadAlone)
{
    std::vector<std::vector<COLORREF>> together(2);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < together.size(); ++i)
        threads.emplace_back([&together, i] { together[i] = DrawSurface(static_cast<int>(i) + 1); });
    for (auto& thread : threads)
        thread.join();
    EXPECT_FALSE(together[0] == together[1]);
    for (std::size_t i = 0; i < together.size(); ++i)
        EXPECT_TRUE(together[i] == DrawSurface(static_cast<int>(i) + 1)) << i;
}

} // namespace
} // namespace ombrel
