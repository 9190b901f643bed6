// Meshes at 1200 x 900: 125,000 bricks, from new data and drawn again, outlined; their outer faces alone; a mesh file
// and a drawing read.

#include "benchmarks/BenchmarkData.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "tests/graph3d/MeshData.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>

namespace ombrel::bench {
namespace {

constexpr test::BrickBlock kBlock { 50, 50, 50 };

double Value(double x, double y, double z) { return std::sin(0.12 * x) + std::cos(0.1 * y) * z / 50; }

class MeshPicture : public ScenePicture<C3DMeshCurve> {
public:
    MeshPicture()
        : ScenePicture(it3DMeshPlot)
    {
        test::AddBricks(GetCurve(), kBlock, Value);
        GetCurve().SetVariableNames({ "value" }, {});
        GetCurve().SetColourmapVar("value");
        GetCurve().SetColourDescription(1);
        GetCurve().SetColourmap("Spectrum");
        Draw();
    }
};

void Redraw(benchmark::State& state)
{
    MeshPicture picture;
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Redraw)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void NewData(benchmark::State& state)
{
    MeshPicture picture;
    for (auto _ : state) {
        picture.GetCurve().SetPlotDataModified(1);
        picture.Draw();
    }
}
BENCHMARK(NewData)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Outlined(benchmark::State& state)
{
    MeshPicture picture;
    picture.GetCurve().SetWireframeOn(1);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Outlined)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void OuterFaces(benchmark::State& state)
{
    C3DMeshCurve curve;
    test::AddBricks(curve, kBlock);
    for (auto _ : state)
        curve.UpdateFaceFlags();
}
BENCHMARK(OuterFaces)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

/// A file of the folder for passing files, gone with the object.
class TextFile {
public:
    TextFile(char const* name, std::string const& text)
        : m_path(std::filesystem::temp_directory_path() / name)
    {
        std::ofstream(m_path) << text;
        m_size = text.size();
    }
    ~TextFile() { std::filesystem::remove(m_path); }
    TextFile(TextFile const&) = delete;
    TextFile& operator=(TextFile const&) = delete;
    CString GetPath() const { return CString(m_path.string()); }
    std::size_t GetSize() const { return m_size; }

private:
    std::filesystem::path m_path;
    std::size_t m_size = 0;
};

void Read(benchmark::State& state, TextFile const& file)
{
    C3DMeshCurve curve;
    curve.SetPathname(file.GetPath());
    for (auto _ : state)
        curve.ReadData();
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * file.GetSize()));
}

void ReadMeshFile(benchmark::State& state)
{
    std::string text = "node_variables: value\nnodeset\ntitle: a\nnodes\n" + std::to_string(kBlock.NumNodes()) + "\n";
    for (int k = 0; k <= kBlock.nz; ++k) {
        for (int j = 0; j <= kBlock.ny; ++j) {
            for (int i = 0; i <= kBlock.nx; ++i) {
                for (double const v : { 0.02 * i, 0.02 * j, 0.02 * k, Value(i, j, k) })
                    text += std::to_string(v) + " ";
                text.back() = '\n';
            }
        }
    }
    text += "endobject\npatch\nelement_type: block\nuse_nodeset: a\nelements\n";
    CDWordArray const indices = kBlock.Indices();
    text += std::to_string(indices.GetSize() / 8) + "\n";
    for (int i = 0; i < indices.GetSize(); ++i)
        text += std::to_string(indices[i]) + (i % 8 == 7 ? "\n" : " ");
    Read(state, TextFile("ombrel-benchmark.tvm", text + "endobject\n"));
}
BENCHMARK(ReadMeshFile)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReadDrawing(benchmark::State& state)
{
    std::string text = "  0\nSECTION\n  2\nENTITIES\n";
    for (int f = 0; f < 100000; ++f) {
        text += "  0\n3DFACE\n  8\n0\n";
        for (int c = 0; c < 4; ++c) {
            for (int axis = 0; axis < 3; ++axis)
                text += " " + std::to_string(10 * (axis + 1) + c) + "\n" + std::to_string(f * 0.01 + c * axis) + "\n";
        }
    }
    Read(state, TextFile("ombrel-benchmark.dxf", text + "  0\nENDSEC\n  0\nEOF\n"));
}
BENCHMARK(ReadDrawing)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace ombrel::bench
