// Parses any bytes as a registry file; what was read is written and must read the same.

#include "ombrel/platform/registry/RegistryDocument.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace ombrel;
    RegistryDocument document = ParseRegistry({ reinterpret_cast<char const*>(data), size });
    CString const value(std::string_view(reinterpret_cast<char const*>(data), size / 2));
    if (!document.Set("Software\\Fuzz", "Name", value))
        std::abort();
    RegistryDocument const again = ParseRegistry(document.ToText());
    if (again.Find("software\\fuzz", "NAME") != value || again.GetDamagedLines() != document.GetDamagedLines())
        std::abort();
    return 0;
}
