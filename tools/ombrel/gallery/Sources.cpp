#include "tools/ombrel/gallery/Sources.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <vector>

namespace ombrel::host {

namespace {

/// Takes the first line off a text.
std::string_view TakeLine(std::string_view& text)
{
    std::string_view const line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

/// A function, a constant or a class of a source, with the comment above it.
struct Definition {
    std::string name;
    std::string text;
};

/// The name that the first line of a definition gives; empty when it does not give one yet.
std::string NameIn(std::string_view line)
{
    if (line.starts_with("//"))
        return {};
    if (line.starts_with("template ")) {
        std::size_t const end = line.find("> ");
        if (end == std::string_view::npos)
            return {};
        line.remove_prefix(end + 2);
    }
    bool const isClass = line.starts_with("struct ") || line.starts_with("class ");
    std::string_view head = isClass ? line.substr(line.find(' ') + 1) : line.substr(0, line.find_first_of("(={["));
    if (isClass)
        return std::string(head.substr(0, head.find(' ')));
    while (!head.empty() && !IsWord(head.back()))
        head.remove_suffix(1);
    std::size_t start = head.size();
    while (start > 0 && IsWord(head[start - 1]))
        --start;
    return std::string(head.substr(start));
}

/// The definitions of a source. A blank line outside of braces ends one, or a line that closes it.
std::vector<Definition> DefinitionsIn(std::string_view source)
{
    std::vector<Definition> all;
    Definition current;
    int depth = 0;
    while (!source.empty()) {
        std::string_view const line = TakeLine(source);
        bool const isSkipped
            = line.empty() || line[0] == '#' || line.starts_with("namespace") || line.starts_with("} // namespace");
        if (depth == 0 && isSkipped) {
            current = {};
            continue;
        }
        if (depth == 0 && current.name.empty())
            current.name = NameIn(line);
        current.text += std::string(line) + "\n";
        depth += static_cast<int>(std::count(line.begin(), line.end(), '{'));
        depth -= static_cast<int>(std::count(line.begin(), line.end(), '}'));
        if (depth == 0 && (line.ends_with(';') || line.ends_with('}')) && !line.starts_with("//")) {
            all.push_back(std::move(current));
            current = {};
        }
    }
    return all;
}

bool Names(std::string_view text, std::string_view word)
{
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        std::size_t const end = at + word.size();
        if ((at == 0 || !IsWord(text[at - 1])) && (end == text.size() || !IsWord(text[end])))
            return true;
    }
    return false;
}

/// What the text names of the definitions, and what that names, in their order.
std::string NeededFor(std::string text, std::vector<Definition> const& definitions)
{
    std::set<std::string> needed;
    for (bool isMore = true; isMore;) {
        isMore = false;
        for (Definition const& one : definitions) {
            if (one.name.empty() || needed.contains(one.name) || !Names(text, one.name))
                continue;
            needed.insert(one.name);
            text += one.text;
            isMore = true;
        }
    }
    std::string code;
    for (Definition const& one : definitions) {
        if (needed.contains(one.name))
            code += one.text + "\n";
    }
    return code;
}

/// The lines that include headers of the library or, in pointed brackets, of the language.
std::set<std::string> IncludesOf(std::string_view source, char kind)
{
    std::string const start = std::string("#include ") + kind;
    std::set<std::string> includes;
    while (!source.empty()) {
        std::string line(TakeLine(source));
        if (!line.starts_with(start) || line.find("tools/") != std::string::npos)
            continue;
        std::replace(line.begin(), line.end(), '"', '<');
        line.back() = '>';
        includes.insert(line);
    }
    return includes;
}

std::string Literal(std::string_view text)
{
    std::string literal = "\"";
    for (char const c : text) {
        if (c == '"' || c == '\\')
            literal += '\\';
        literal += c;
    }
    return literal + '"';
}

char const* NameOf(Theme theme)
{
    return theme == Theme::Light ? "Theme::Light" : theme == Theme::Dark ? "Theme::Dark" : "Theme::Print";
}

/// What the body of a picture's function calls what it works on.
char const* ObjectOf(GalleryPicture const& picture)
{
    constexpr char const* kObjects[] { "chart", "picture", "scene", "map" };
    return kObjects[picture.build.index()];
}

/// What main does before the body of the picture's function.
std::string BeforeBody(GalleryPicture const& picture, Theme theme)
{
    constexpr char const* kBeginnings[] { "Chart chart(", "GraphPicture picture(", "Scene scene(",
        "std::string_view const title(" };
    bool const isThemed = picture.build.index() == 1 && theme != Theme::Light;
    return "    " + std::string(kBeginnings[picture.build.index()]) + Literal(picture.title)
        + (isThemed ? std::string(", ") + NameOf(theme) + ");\n" : ");\n");
}

/// What it does afterwards.
std::string AfterBody(GalleryPicture const& picture, Theme theme)
{
    std::string const object = "    " + std::string(ObjectOf(picture)) + ".";
    std::string code;
    if (!picture.source.empty())
        code += object + "Footnote(" + Literal(picture.source) + ");\n";
    if (picture.build.index() != 1 && theme != Theme::Light)
        code += object + "SetTheme(" + NameOf(theme) + ");\n";
    return code + object + "Save(\"" + std::string(picture.name) + ".png\");\n";
}

/// The lines between the braces of a function, which may be a single one, without what it returns.
std::string BodyOf(std::string const& definition)
{
    std::size_t const lines = definition.find("\n{\n");
    if (lines != std::string::npos)
        return definition.substr(
            lines + 3, std::min(definition.rfind('}'), definition.find("    return map;")) - lines - 3);
    std::size_t const open = definition.find(" { ") + 3;
    return "    " + definition.substr(open, definition.rfind(" }") - open) + "\n";
}

/// A program with that body and what it needs of a source.
std::string MakeProgram(
    GalleryPicture const& picture, std::string_view source, std::string const& definition, Theme theme)
{
    std::string const body = BodyOf(definition);
    std::vector<Definition> definitions = DefinitionsIn(kGalleryData);
    for (std::string_view const text : { kGalleryHelpers, source }) {
        for (Definition& one : DefinitionsIn(text)) {
            if (one.name != picture.functionName)
                definitions.push_back(std::move(one));
        }
    }
    std::string program;
    for (std::string const& line : IncludesOf(source, '"'))
        program += line + "\n";
    std::set<std::string> standard = IncludesOf(source, '<');
    for (std::string_view const text : { kGalleryHelpers, kGalleryData })
        standard.merge(IncludesOf(text, '<'));
    program += "\n";
    for (std::string const& line : standard)
        program += line + "\n";
    program += "\nusing namespace ombrel;\n\n" + NeededFor(body, definitions) + "int main()\n{\n";
    return program + BeforeBody(picture, theme) + body + AfterBody(picture, theme) + "}\n";
}

} // namespace

bool IsWord(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

std::string ProgramOf(GalleryPicture const& picture, Theme theme)
{
    for (std::string_view const source : kGallerySources) {
        for (Definition const& one : DefinitionsIn(source)) {
            if (one.name == picture.functionName)
                return MakeProgram(picture, source, one.text, picture.theme.value_or(theme));
        }
    }
    return {};
}

} // namespace ombrel::host
