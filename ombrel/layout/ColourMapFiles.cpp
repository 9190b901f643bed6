#include "ombrel/layout/ColourMapFiles.h"
#include "ombrel/colour/ColourMap.h"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <optional>
#include <string_view>

namespace ombrel {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kExtension = ".ombrelmap";
constexpr std::string_view kPresets[] = { "Spectrum", "Extended Spectrum", "Greyscale" };

struct Origin {
    std::string_view name;
    std::string_view authors;
};

constexpr Origin kOrigins[] = {
    { "cividis", "J. Nuñez, C. Anderton, R. Renslow" },
    { "coolwarm", "K. Moreland" },
    { "inferno", "S. van der Walt, N. Smith" },
    { "magma", "S. van der Walt, N. Smith" },
    { "plasma", "S. van der Walt, N. Smith" },
    { "turbo", "A. Mikhailov" },
    { "twilight", "B. Bechtold" },
    { "viridis", "S. van der Walt, N. Smith, E. Firing" },
};

/// Installed files lie in the tree of the library or the program, wherever that is put; so they do where it is built.
fs::path InstalledFolder()
{
    // Libraries lie up to three folders deep in their tree: lib/ARCHITECTURE/libombrel.so.
    constexpr int kDeepest = 3;
    std::error_code error;
    Dl_info self {};
    fs::path const library = dladdr(reinterpret_cast<void const*>(&kPresets), &self) != 0 ? self.dli_fname : "";
    for (fs::path const& file : { fs::absolute(library, error), fs::read_symlink("/proc/self/exe", error) }) {
        fs::path tree = file.parent_path();
        for (int i = 0; i < kDeepest; ++i, tree = tree.parent_path()) {
            fs::path maps = tree / "share" / "ombrel" / "colour-maps";
            if (fs::is_directory(maps, error))
                return maps;
        }
    }
    return {};
}

bool IsSameName(std::string_view a, std::string_view b)
{
    auto const plain = [](char c) {
        if (c == '-' || c == '_')
            return ' ';
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(), [&plain](char x, char y) { return plain(x) == plain(y); });
}

std::vector<std::string> InstalledNames()
{
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator i(InstalledFolder(), error), end; !error && i != end; i.increment(error)) {
        if (i->path().extension() == kExtension)
            names.push_back(i->path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// The name as the preset or the file spells it.
std::optional<std::string> Find(std::string_view name, auto const& among)
{
    auto const found = std::find_if(
        std::begin(among), std::end(among), [name](std::string_view each) { return IsSameName(each, name); });
    if (found == std::end(among))
        return std::nullopt;
    return std::string(*found);
}

} // namespace

std::vector<std::string> ListColourMaps()
{
    std::vector<std::string> names(std::begin(kPresets), std::end(kPresets));
    std::vector<std::string> const installed = InstalledNames();
    names.insert(names.end(), installed.begin(), installed.end());
    return names;
}

bool LoadColourMap(std::string const& name, CColourMap& map)
{
    std::string path = name;
    if (auto const preset = Find(name, kPresets))
        path = *preset;
    else if (auto const installed = Find(name, InstalledNames()))
        path = (InstalledFolder() / (*installed + std::string(kExtension))).string();
    CString const wide(path);
    // The library's file names are Unicode; another file must not be read in place of this one.
    return wide.ToUtf8() == path && map.Load(wide) != 0;
}

ColourMapKind KindOfColourMap(std::string const& name)
{
    if (Find(name, kPresets))
        return ColourMapKind::Preset;
    return Find(name, InstalledNames()) ? ColourMapKind::Installed : ColourMapKind::File;
}

std::string AuthorsOfColourMap(std::string const& name)
{
    for (Origin const& origin : kOrigins) {
        if (IsSameName(origin.name, name) && KindOfColourMap(name) == ColourMapKind::Installed)
            return std::string(origin.authors);
    }
    return {};
}

} // namespace ombrel
