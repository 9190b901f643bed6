#include "ombrel/platform/opengl/GLCanvas.h"
#include "ombrel/platform/opengl/OpenGL.h"

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

} // namespace
} // namespace ombrel
