#include "tools/ombrel/gallery/Page.h"
#include "tools/ombrel/Version.h"
#include "tools/ombrel/gallery/Drawing.h"
#include "tools/ombrel/gallery/Sources.h"

#include <algorithm>
#include <cctype>

namespace ombrel::host {

namespace {

std::string Escaped(std::string_view text)
{
    std::string out;
    for (char const c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

/// "Error bars" as an anchor: "error-bars".
std::string AnchorOf(std::string_view section)
{
    std::string anchor(section);
    for (char& c : anchor)
        c = c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return anchor;
}

/// Whether a word of C++ is one of the language's own.
bool IsKeyword(std::string_view word)
{
    constexpr std::string_view kKeywords[] { "auto", "char", "const", "constexpr", "double", "else", "for", "if",
        "include", "inline", "int", "return", "static_cast", "struct", "template", "typename", "using", "void" };
    return std::find(std::begin(kKeywords), std::end(kKeywords), word) != std::end(kKeywords);
}

/// Where the piece of code at that place ends: a comment, a text in quotes, a word, or one character.
std::size_t EndOfPiece(std::string_view code, std::size_t at)
{
    if (code.substr(at, 2) == "//")
        return std::min(code.find('\n', at), code.size());
    if (code[at] == '"') {
        std::size_t end = at + 1;
        while (end < code.size() && code[end] != '"')
            end += code[end] == '\\' ? 2 : 1;
        return std::min(end + 1, code.size());
    }
    std::size_t end = at;
    while (end < code.size() && IsWord(code[end]))
        ++end;
    return std::max(end, at + 1);
}

std::string Highlighted(std::string_view code)
{
    std::string out;
    for (std::size_t at = 0; at < code.size();) {
        std::size_t const end = EndOfPiece(code, at);
        std::string_view const piece = code.substr(at, end - at);
        char const* const tag = piece.starts_with("//") ? "i"
            : piece.starts_with('"')                    ? "em"
            : IsKeyword(piece)                          ? "b"
                                                        : nullptr;
        std::string const text = Escaped(piece);
        out += tag ? std::string("<") + tag + ">" + text + "</" + tag + ">" : text;
        at = end;
    }
    return out;
}

/// A bitmap, and that for dense screens.
std::string SourceSet(std::string const& file) { return file + ", " + DenseName(file) + " 2x"; }

std::string Image(std::string const& file, PictureSize size, std::string const& alternative)
{
    return "<img src=\"" + file + "\" srcset=\"" + SourceSet(file) + "\" width=\"" + std::to_string(size.width)
        + "\" height=\"" + std::to_string(size.height) + "\" alt=\"" + alternative + "\" loading=\"lazy\">";
}

std::string FileLinks(GalleryPicture const& picture)
{
    return "<p class=\"files\"><a href=\"" + LargeName(picture) + "\">PNG</a> <a href=\"" + SvgName(picture)
        + "\">SVG</a> <a href=\"" + PdfName(picture) + "\">PDF</a> <a href=\"" + ProgramName(picture) + "\">C++</a>";
}

std::string TextFor(GalleryPicture const& picture)
{
    return "<figcaption><h3>" + Escaped(picture.title) + "</h3>\n<p>" + Escaped(picture.caption) + "</p>\n";
}

/// What a reader who cannot see the picture is told.
std::string AlternativeFor(GalleryPicture const& picture)
{
    return Escaped(picture.section) + ": " + Escaped(picture.title) + ". " + Escaped(picture.caption);
}

std::string Card(GalleryPicture const& picture)
{
    std::string const name(picture.name);
    return "<figure class=\"card\" id=\"card-" + name + "\"><a href=\"#" + name + "\">"
        + Image(SmallName(picture), kSmallPicture, AlternativeFor(picture)) + "</a>\n" + TextFor(picture)
        + FileLinks(picture) + " <a href=\"#" + name + "\">code</a></p></figcaption></figure>\n";
}

/// The large picture, with links to its neighbours.
std::string Sheet(GalleryPicture const* before, GalleryPicture const& picture, GalleryPicture const* after, Theme theme)
{
    auto const link = [](GalleryPicture const* to, char const* style, std::string const& text) {
        if (!to)
            return std::string("<span></span>");
        return std::string("<a class=\"") + style + "\" href=\"#" + std::string(to->name) + "\">" + text + "</a>";
    };
    std::string const name(picture.name);
    std::string sheet = "<article class=\"sheet\" id=\"" + name + "\" aria-label=\"" + Escaped(picture.title) + "\">\n";
    sheet += "<div class=\"turn\">" + link(before, "before", "← before") + " <a class=\"close\" href=\"#card-" + name
        + "\">all pictures</a> " + link(after, "after", "next →") + "</div>\n";
    // Narrow windows show the small picture rather than the large one with its labels scaled down.
    sheet += "<figure><picture><source media=\"(max-width: 600px)\" srcset=\"" + SourceSet(SmallName(picture)) + "\">"
        + Image(LargeName(picture), kLargePicture, AlternativeFor(picture)) + "</picture>\n" + TextFor(picture)
        + FileLinks(picture) + "</p></figcaption></figure>\n";
    sheet += "<pre tabindex=\"0\"><code>" + Highlighted(ProgramOf(picture, theme)) + "</code></pre>\n</article>\n";
    return sheet;
}

std::string Head()
{
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<meta name=\"color-scheme\" content=\"light dark\">\n"
           "<meta name=\"generator\" content=\"ombrel "
        + std::string(kVersion) + "\">\n<title>Ombrel: gallery</title>\n<style>\n" + std::string(kGalleryStyle)
        + "</style>\n</head>\n";
}

std::string Introduction(std::size_t pictures)
{
    return "<header>\n<h1>Ombrel: gallery</h1>\n<p>" + std::to_string(pictures)
        + " pictures of every kind of plot and every setting that changes how one looks. Each is drawn by the "
          "program beside it, which compiles as it stands, once for each size, so that the small ones are laid out "
          "anew and not scaled.</p>\n</header>\n";
}

std::string Navigation(std::span<GalleryPicture const> pictures)
{
    std::string text = "<nav aria-label=\"Sections\"><ul>\n";
    std::string_view section;
    for (GalleryPicture const& picture : pictures) {
        if (picture.section == section)
            continue;
        section = picture.section;
        text += "<li><a href=\"#" + AnchorOf(section) + "\">" + Escaped(section) + "</a></li>\n";
    }
    return text + "</ul></nav>\n";
}

std::string Sections(std::span<GalleryPicture const> pictures)
{
    std::string text = "<main>\n";
    std::string_view section;
    for (GalleryPicture const& picture : pictures) {
        if (picture.section != section) {
            if (!section.empty())
                text += "</div></section>\n";
            section = picture.section;
            text += "<section id=\"" + AnchorOf(section) + "\"><h2>" + Escaped(section)
                + "</h2>\n<div class=\"cards\">\n";
        }
        text += Card(picture);
    }
    return text + (section.empty() ? "" : "</div></section>\n") + "</main>\n";
}

std::string Footer()
{
    return "<footer>\n<p><a href=\"" + std::string(kOverviewName)
        + "\">Fifteen of them on one sheet</a>. Drawn by ombrel " + std::string(kVersion) + ".</p>\n</footer>\n";
}

} // namespace

std::string LargeName(GalleryPicture const& picture) { return std::string(picture.name) + ".png"; }
std::string SmallName(GalleryPicture const& picture) { return std::string(picture.name) + "-small.png"; }
std::string DenseName(std::string const& name) { return name.substr(0, name.rfind('.')) + "-dense.png"; }
std::string SvgName(GalleryPicture const& picture) { return std::string(picture.name) + ".svg"; }
std::string PdfName(GalleryPicture const& picture) { return std::string(picture.name) + ".pdf"; }

std::string ProgramName(GalleryPicture const& picture) { return std::string(picture.name) + ".cpp"; }

std::string MakeGalleryPage(std::span<GalleryPicture const> pictures, Theme theme)
{
    std::string page = Head() + "<body>\n" + Introduction(pictures.size()) + Navigation(pictures) + Sections(pictures);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        GalleryPicture const* const before = i > 0 ? &pictures[i - 1] : nullptr;
        GalleryPicture const* const after = i + 1 < pictures.size() ? &pictures[i + 1] : nullptr;
        page += Sheet(before, pictures[i], after, theme);
    }
    return page + Footer() + "<script>\n" + std::string(kGalleryScript) + "</script>\n</body>\n</html>\n";
}

} // namespace ombrel::host
