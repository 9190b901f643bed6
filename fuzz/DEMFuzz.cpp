// Reads any bytes as an elevation model: what comes of it has a cell for each row and column, and stores and loads.

#include "fuzz/MemoryFile.h"
#include "ombrel/io/USGSDEM.h"
#include "ombrel/platform/framework/Archive.h"
#include "ombrel/platform/host/Host.h"

#include <algorithm>
#include <cstring>

namespace {

using namespace ombrel;
using namespace ombrel::fuzz;

void RequireSound(CUSGSDEM const& dem)
{
    auto const cells = static_cast<std::size_t>(dem.GetNumRows()) * static_cast<std::size_t>(dem.GetNumCols());
    Require(dem.GetElevations().empty() || dem.GetElevations().size() == cells);
    Require(dem.GetDataSize() >= 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static MemoryFile file;
    SetOutputFunction([](CString const&) {});
    file.Fill(data, size);
    CUSGSDEM dem;
    bool const isRead = Succeeds([&] { Require(dem.SetPathname(file.GetPath()) == 1); });
    RequireSound(dem);
    Require(isRead == !dem.GetElevations().empty());
    std::vector<std::byte> const stored = Stored(dem);
    CUSGSDEM copy;
    CArchive archive { std::span<std::byte const>(stored) };
    copy.Serialize(archive);
    RequireSound(copy);
    Require(Stored(copy) == stored);

    // The same bytes as an archive.
    CUSGSDEM loaded;
    CArchive any { std::as_bytes(std::span(data, size)) };
    (void)Succeeds([&] { loaded.Serialize(any); });
    RequireSound(loaded);
    return 0;
}
