// Reads any bytes as a bitmap file, and as an archive: a texture map has as many texels as its size says.

#include "fuzz/MemoryFile.h"
#include "ombrel/colour/TextureMap.h"
#include "ombrel/platform/framework/Archive.h"
#include "ombrel/platform/host/Host.h"

#include <cmath>

namespace {

using namespace ombrel;
using namespace ombrel::fuzz;

void RequireSound(CTextureMap const& map)
{
    CSize const size = map.GetSize();
    Require(size.cx >= 0 && size.cy >= 0 && (size.cx > 0) == (size.cy > 0));
    Require(map.GetTexels().size() == 4 * static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy));
}

} // namespace

/// The first byte chooses the part of the image; the rest is the file.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size == 0)
        return 0;
    static MemoryFile file;
    SetMessageBoxFunction([](CString const&, CString const&, UINT) {});
    file.Fill(data + 1, size - 1);
    constexpr double kFractions[] = { 0.0, 0.3, 1.0, 7.5, -1.0, 1e300, NAN, 0.999 };
    TextureMapParams params { .fileName = file.GetPath() };
    params.imageXStart = params.imageYEnd = kFractions[data[0] & 7];
    params.imageXEnd = params.imageYStart = kFractions[data[0] >> 3 & 7];
    if ((data[0] & 0x40) != 0)
        params = { .fileName = file.GetPath(), .opacity = kFractions[data[0] & 7] };
    CTextureMap map;
    map.SetParams(params);
    (void)Succeeds([&] { map.Create(); });
    RequireSound(map);
    Require(map.GetTexels().size() <= 4 * size);

    CTextureMap loaded;
    CArchive archive { std::as_bytes(std::span(data, size)) };
    (void)Succeeds([&] { loaded.Serialize(archive); });
    RequireSound(loaded);
    return 0;
}
