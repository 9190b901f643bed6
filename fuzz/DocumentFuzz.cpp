// Loads any bytes as a graph document; what loads is evaluated, drawn small, and must store and load again.

#include "ombrel/Init.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/platform/framework/Archive.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace ombrel;

void Exercise(CGraph& graph)
{
    CDIB target(64, 48, 24);
    graph.UpdatePlots();
    graph.Draw(target.GetDC(), { 0, 0, 64, 48 }, pmOffScreen);
    CMemFile file;
    CArchive storing(&file, CArchive::store);
    storing.WriteObject(&graph);
    storing.Close();
    CArchive loading(file.GetBytes());
    if (!loading.ReadObject(CGraph::kClass))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    OmbrelInit();
    // Without OpenGL, graphs in space would be refused rather than drawn.
    C3DGraph graph(1);
    CDIB target(8, 8, 24);
    graph.Draw(target.GetDC(), { 0, 0, 8, 8 }, pmOffScreen);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    (void)Succeeds([&] {
        CArchive ar(std::as_bytes(std::span(data, size)));
        auto const graph = ar.ReadObjectOf<CGraph>();
        if (graph)
            Exercise(*graph);
    });
    return 0;
}
