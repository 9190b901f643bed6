#include "ombrel/scene/parts/SceneTexts.h"

#include <filesystem>

namespace ombrel {

std::string LowerCase(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    return lower;
}

std::string ExtensionOf(std::string const& path) { return LowerCase(std::filesystem::path(path).extension().string()); }

} // namespace ombrel
