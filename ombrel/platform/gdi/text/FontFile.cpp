#include "ombrel/platform/gdi/text/FontFile.h"

#include <memory>
#include <string_view>
#include <unistd.h>

namespace ombrel::text {

namespace {

std::string LowerAscii(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

/// The file of a Liberation font in the places where distributions install them; empty when it is in none.
std::string PackagedFile(std::string_view family, bool bold, bool italic)
{
    static constexpr std::string_view kPrefix = "Liberation ";
    if (family.substr(0, kPrefix.size()) != kPrefix)
        return {};
    std::string const kind(family.substr(kPrefix.size()));
    if (kind != "Sans" && kind != "Mono" && kind != "Serif")
        return {};
    std::string const name = "/Liberation" + kind
        + (bold ? (italic ? "-BoldItalic" : "-Bold") : (italic ? "-Italic" : "-Regular")) + ".ttf";
    std::string const directories[] = { "/usr/share/fonts/truetype/liberation", "/usr/share/fonts/truetype/liberation2",
        "/usr/share/fonts/liberation-" + LowerAscii(kind), "/usr/share/fonts/liberation-" + LowerAscii(kind) + "-fonts",
        "/usr/share/fonts/liberation", "/usr/share/fonts/liberation-fonts", "/usr/share/fonts/TTF" };
    for (auto const& directory : directories)
        if (access((directory + name).c_str(), R_OK) == 0)
            return directory + name;
    return {};
}

/// What Fontconfig has nearest to the family.
FontFile MatchFile(std::string const& family, bool bold, bool italic)
{
    struct PatternDeleter {
        void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    };
    std::unique_ptr<FcPattern, PatternDeleter> const pattern(FcPatternCreate());
    if (!pattern)
        return {};
    auto const* name = reinterpret_cast<FcChar8 const*>(family.c_str());
    FcPatternAddString(pattern.get(), FC_FAMILY, name);
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<FcChar8 const*>("Liberation Sans"));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    std::unique_ptr<FcPattern, PatternDeleter> const match(FcFontMatch(nullptr, pattern.get(), &result));
    return match ? FileOfPattern(match.get()) : FontFile();
}

} // namespace

std::string FamilyFor(CString const& faceName)
{
    struct Substitute {
        std::string_view name;
        std::string_view family;
    };
    static constexpr Substitute kSubstitutes[] = {
        { "", "Liberation Sans" },
        { "arial", "Liberation Sans" },
        { "helvetica", "Liberation Sans" },
        { "liberation sans", "Liberation Sans" },
        { "system", "Liberation Sans" },
        { "courier new", "Liberation Mono" },
        { "courier", "Liberation Mono" },
        { "liberation mono", "Liberation Mono" },
        { "times new roman", "Liberation Serif" },
        { "times", "Liberation Serif" },
        { "liberation serif", "Liberation Serif" },
    };
    std::string name = faceName.ToUtf8();
    std::string const lower = LowerAscii(name);
    for (auto const& substitute : kSubstitutes)
        if (substitute.name == lower)
            return std::string(substitute.family);
    return name;
}

FontFile FindFontFile(std::string const& family, bool bold, bool italic)
{
    std::string packaged = PackagedFile(family, bold, italic);
    return packaged.empty() ? MatchFile(family, bold, italic) : FontFile { std::move(packaged), 0, false, false };
}

FontFile FileOfPattern(FcPattern* pattern)
{
    FcChar8* path = nullptr;
    if (FcPatternGetString(pattern, FC_FILE, 0, &path) != FcResultMatch)
        return {};
    FontFile file { reinterpret_cast<char const*>(path), 0, false, false };
    FcPatternGetInteger(pattern, FC_INDEX, 0, &file.index);
    FcBool embolden = FcFalse;
    FcMatrix* matrix = nullptr;
    file.embolden = FcPatternGetBool(pattern, FC_EMBOLDEN, 0, &embolden) == FcResultMatch && embolden;
    file.slant = FcPatternGetMatrix(pattern, FC_MATRIX, 0, &matrix) == FcResultMatch && matrix->xy > 0.01;
    return file;
}

} // namespace ombrel::text
