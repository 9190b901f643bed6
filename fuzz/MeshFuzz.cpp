// Reads any bytes as a mesh file, or as a drawing where they begin like one, evaluates and stores what came of it: it
// loads again as the same bytes.

#include "fuzz/MemoryFile.h"
#include "ombrel/Init.h"
#include "ombrel/foundation/VException.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/platform/framework/Archive.h"

#include <filesystem>
#include <fstream>
#include <string_view>

namespace {

using namespace ombrel;
using namespace ombrel::fuzz;

std::vector<std::byte> Stored(C3DMeshCurve& curve)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    curve.Serialize(archive);
    archive.Close();
    return file.GetBytes();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static MemoryFile file;
    OmbrelInit();
    file.Fill(data, size);
    std::string_view const text(reinterpret_cast<char const*>(data), size);
    bool const isDrawing = text.substr(0, 400).find("SECTION") != text.npos;
    // The file has no name of its own, and its ending tells what it is.
    static std::filesystem::path const folder = std::filesystem::temp_directory_path() / std::to_string(getpid());
    std::filesystem::create_directories(folder);
    std::filesystem::path const path = folder / (isDrawing ? "fuzz.dxf" : "fuzz.tvm");
    if (!std::filesystem::is_symlink(path))
        std::filesystem::create_symlink(file.GetPath().ToUtf8(), path);
    C3DMeshCurve curve;
    bool const isRead = Succeeds([&] { curve.SetPathname(CString(path.string())); });
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
