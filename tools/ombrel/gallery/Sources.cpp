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

/// The headers that sources include, of the library or of the language.
std::set<std::string> IncludesOf(std::string_view source, char kind)
{
    std::string const start = std::string("#include ") + kind;
    std::set<std::string> includes;
    while (!source.empty()) {
        std::string_view const line = TakeLine(source);
        if (line.starts_with(start) && line.find("tools/") == std::string_view::npos)
            includes.insert(std::string(line));
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

/// What the body of the picture's function calls what it works on, and its class.
struct Object {
    char const* className;
    char const* name;
};

Object ObjectOf(GalleryPicture const& picture)
{
    constexpr Object kObjects[] { { "Chart", "chart" }, { "GraphPicture", "picture" }, { "Scene", "scene" },
        { "Scene", "scene" } };
    return kObjects[picture.build.index()];
}

/// What makes the object that the body of the picture's function works on.
std::string Beginning(GalleryPicture const& picture, std::string_view body, Theme theme)
{
    std::size_t const kind = picture.build.index();
    std::string const object = ObjectOf(picture).name;
    bool const isGraph = kind == 1;
    std::string code = "    " + std::string(ObjectOf(picture).className) + " " + object + "(" + Literal(picture.title);
    code += isGraph && theme != Theme::Light ? std::string(", ") + NameOf(theme) + ");\n" : ");\n";
    if (!picture.source.empty())
        code += "    " + object + ".Footnote(" + Literal(picture.source) + ");\n";
    if (!isGraph && theme != Theme::Light)
        code += "    " + object + ".SetTheme(" + NameOf(theme) + ");\n";
    if (picture.axes == AxesChoice::AsBuilt)
        code += "    " + object + ".KeepAxes();\n";
    if (isGraph)
        code += "    C2DGraph& graph = picture.Graph();\n";
    if (kind == 3)
        code += "    C3DGraph& graph = scene.Graph();\n";
    if (Names(body, "look") && isGraph)
        code += "    PictureLook const& look = picture.GetLook();\n";
    if (Names(body, "look") && kind == 3)
        code += theme == Theme::Light ? "    PictureLook const look;\n"
                                      : std::string("    PictureLook const look(") + NameOf(theme) + ");\n";
    return code;
}

/// The lines between the braces of a function, which may be a single one.
std::string BodyOf(std::string const& definition)
{
    std::size_t const lines = definition.find("\n{\n");
    if (lines != std::string::npos)
        return definition.substr(lines + 3, definition.rfind('}') - lines - 3);
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
    std::string const needed = NeededFor(body, definitions);
    std::string program = "#include <ombrel/chart.h>\n";
    // Charts and scenes need no class besides.
    if (picture.build.index() % 2 == 1) {
        std::set<std::string> own = IncludesOf(source, '"');
        for (std::string const& line : IncludesOf(kGalleryHelpers, '"')) {
            std::size_t const name = line.rfind('/') + 1;
            if (Names(needed, "C" + line.substr(name, line.rfind('.') - name)))
                own.insert(line);
        }
        for (std::string line : own) {
            std::replace(line.begin(), line.end(), '"', '<');
            line.back() = '>';
            program += line + "\n";
        }
    }
    std::set<std::string> standard = IncludesOf(source, '<');
    for (std::string_view const text : { kGalleryHelpers, kGalleryData })
        standard.merge(IncludesOf(text, '<'));
    program += "\n";
    for (std::string const& line : standard)
        program += line + "\n";
    program += "\nusing namespace ombrel;\n\n" + needed + "int main()\n{\n";
    program += Beginning(picture, body, theme) + body;
    program += "    " + std::string(ObjectOf(picture).name) + ".Save(\"" + std::string(picture.name) + ".png\");\n}\n";
    return program;
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
