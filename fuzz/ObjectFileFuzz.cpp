// Reads any bytes as an object file and as a formula's text: both give the same objects or refuse them alike, with
// no more points than a picture can hold, and a document of them comes back as it was.

#include "fuzz/MemoryFile.h"
#include "ombrel/Init.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/platform/framework/Archive.h"
#include "ombrel/platform/host/Host.h"

#include <cmath>
#include <vector>

namespace {

using namespace ombrel;
using namespace ombrel::fuzz;

/// The objects alone: what text they are from does not count.
std::vector<std::byte> StoredObjects(C3DObjectCurve const& curve)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    for (C3DObject* object : curve.GetObjects())
        archive.WriteObject(object);
    archive.Close();
    return file.GetBytes();
}

/// Few enough points, in bounds that are none or in order.
void RequireDrawable(C3DObjectCurve const& curve)
{
    std::size_t points = 0;
    for (C3DObject* object : curve.GetObjects()) {
        points += object->CountPoints(object->GetMostDrawnDivisions());
        CVertex min(0.0, 0.0, 0.0);
        CVertex max = min;
        object->GetRanges(min, max);
        for (int k = 0; k < 3; ++k)
            Require(std::isfinite(min[k]) && std::isfinite(max[k]) && min[k] <= max[k]);
    }
    constexpr std::size_t kMostPoints = 1 << 20;
    // The least that a shape can have is less than a hundred points.
    Require(points <= kMostPoints + 100 * static_cast<std::size_t>(curve.GetObjects().GetSize()));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    OmbrelInit();
    SetMessageBoxFunction([](CString const&, CString const&, UINT) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static MemoryFile file;
    file.Fill(data, size);
    static CString const link = LinkTo(file, ".tvo");
    C3DObjectCurve fromFile;
    bool const isRead = Succeeds([&] { fromFile.SetPathname(link); });

    CString const text(std::string_view(reinterpret_cast<char const*>(data), size));
    C3DObjectCurve fromText;
    fromText.SetFormulaString(text);
    Require(isRead == (fromText.Evaluate() == 1));
    if (!isRead)
        return 0;
    fromFile.Evaluate();
    Require(StoredObjects(fromFile) == StoredObjects(fromText));
    RequireDrawable(fromFile);

    std::vector<std::byte> const bytes = Stored(fromFile);
    C3DObjectCurve loaded;
    CArchive archive { std::span<std::byte const>(bytes) };
    Require(Succeeds([&] { loaded.Serialize(archive); }));
    Require(Stored(loaded) == bytes);
    return 0;
}
