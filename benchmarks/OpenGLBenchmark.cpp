// What drawing with OpenGL costs before anything of a graph is drawn, at 1200 x 900.

#include "ombrel/platform/opengl/GLCanvas.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <benchmark/benchmark.h>

namespace ombrel::bench {
namespace {

constexpr CRect kAll(0, 0, 1200, 900);

void Triangle()
{
    gl::Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    gl::Begin(GL_TRIANGLES);
    gl::Vertex2d(-1.0, -1.0);
    gl::Vertex2d(1.0, -1.0);
    gl::Vertex2d(0.0, 1.0);
    gl::End();
}

void Draw(GLCanvas& canvas, Raster& bitmap)
{
    GLCanvas::Scope const scope(canvas);
    Triangle();
    canvas.ReadPixels(kAll, bitmap);
}

// Stands first and runs once: the libraries are opened, and the driver starts.
void FirstTriangle(benchmark::State& state)
{
    Raster bitmap(1200, 900, 24);
    for (auto _ : state) {
        GLCanvas canvas;
        canvas.SetSize({ 1200, 900 });
        Draw(canvas, bitmap);
    }
}
BENCHMARK(FirstTriangle)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

void TriangleOfAnotherSize(benchmark::State& state)
{
    Raster bitmap(1200, 900, 24);
    GLCanvas canvas;
    int width = 1100;
    for (auto _ : state) {
        width = width == 1100 ? 1200 : 1100;
        canvas.SetSize({ width, 900 });
        Draw(canvas, bitmap);
    }
}
BENCHMARK(TriangleOfAnotherSize)->UseRealTime()->Unit(benchmark::kMillisecond);

void TriangleAgain(benchmark::State& state)
{
    Raster bitmap(1200, 900, 24);
    GLCanvas canvas;
    canvas.SetSize({ 1200, 900 });
    for (auto _ : state)
        Draw(canvas, bitmap);
}
BENCHMARK(TriangleAgain)->UseRealTime()->Unit(benchmark::kMillisecond);

void EmptyScope(benchmark::State& state)
{
    GLCanvas canvas;
    for (auto _ : state)
        GLCanvas::Scope const scope(canvas);
}
BENCHMARK(EmptyScope)->UseRealTime()->Unit(benchmark::kMicrosecond);

void ReadPixels(benchmark::State& state)
{
    Raster bitmap(1200, 900, 24);
    GLCanvas canvas;
    canvas.SetSize({ 1200, 900 });
    GLCanvas::Scope const scope(canvas);
    Triangle();
    for (auto _ : state)
        canvas.ReadPixels(kAll, bitmap);
}
BENCHMARK(ReadPixels)->UseRealTime()->Unit(benchmark::kMillisecond);

void WritePixels(benchmark::State& state)
{
    Raster const bitmap(1200, 900, 24);
    GLCanvas canvas;
    canvas.SetSize({ 1200, 900 });
    GLCanvas::Scope const scope(canvas);
    Triangle();
    for (auto _ : state) {
        canvas.WritePixels(kAll, bitmap);
        gl::Finish();
    }
}
BENCHMARK(WritePixels)->UseRealTime()->Unit(benchmark::kMillisecond);

// Sixteen of them are the labels of a graph.
void WriteLabels(benchmark::State& state)
{
    Raster bitmap(1200, 900, 24);
    GLCanvas canvas;
    canvas.SetSize({ 1200, 900 });
    GLCanvas::Scope const scope(canvas);
    Triangle();
    for (auto _ : state) {
        for (int i = 0; i < 16; ++i) {
            CRect const label(20 + i * 70, 800, 70 + i * 70, 820);
            canvas.ReadPixels(label, bitmap);
            canvas.WritePixels(label, bitmap);
        }
        gl::Finish();
    }
}
BENCHMARK(WriteLabels)->UseRealTime()->Unit(benchmark::kMillisecond);

void EightEmptyPasses(benchmark::State& state)
{
    Raster bitmap(1200, 900, 24);
    GLCanvas canvas;
    canvas.SetSize({ 1200, 900 });
    for (auto _ : state) {
        GLCanvas::Scope const scope(canvas);
        canvas.ClearAccumulation(kAll);
        for (int pass = 0; pass < 8; ++pass) {
            gl::Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
            canvas.Accumulate();
        }
        canvas.ReturnAccumulation();
        canvas.ReadPixels(kAll, bitmap);
    }
}
BENCHMARK(EightEmptyPasses)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ombrel::bench
