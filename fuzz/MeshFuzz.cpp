// Reads any bytes as a mesh file, or as a drawing where they begin like one, evaluates and stores what came of it: it
// loads again as the same bytes.

#include "fuzz/MemoryFile.h"
#include "ombrel/Init.h"
#include "ombrel/foundation/VException.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/platform/framework/Archive.h"

#include <string_view>

using namespace ombrel;
using namespace ombrel::fuzz;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static MemoryFile file;
    OmbrelInit();
    file.Fill(data, size);
    std::string_view const text(reinterpret_cast<char const*>(data), size);
    bool const isDrawing = text.substr(0, 400).find("SECTION") != text.npos;
    static CString const drawing = LinkTo(file, ".dxf");
    static CString const mesh = LinkTo(file, ".tvm");
    C3DMeshCurve curve;
    bool const isRead = Succeeds([&] { curve.SetPathname(isDrawing ? drawing : mesh); });
    Require(isRead == (curve.GetLoaded() == 1));
    Require(isRead || (curve.GetNodeSets().IsEmpty() && curve.GetPatches().IsEmpty()));
    curve.SetClip(1);
    curve.SetClipRanges(-1, 1, -1, 1, -1, 1);
    Require(curve.Evaluate() == 1);
    for (CMeshPatch const* const patch : curve.GetPatches()) {
        for (DWORD const number : *patch->GetIndices())
            Require(patch->GetNodeSet() && patch->GetNodeSet()->GetNodeIndex(number) >= 0);
    }
    std::vector<std::byte> const bytes = Stored(curve);
    CArchive archive { std::span<std::byte const>(bytes) };
    C3DMeshCurve loaded;
    Require(Succeeds([&] { loaded.Serialize(archive); }));
    loaded.Evaluate();
    Require(Stored(loaded) == bytes);
    return 0;
}
