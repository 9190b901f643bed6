#include "tools/ombrel/gallery/Sources.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <algorithm>
#include <vector>

namespace ombrel::host {

namespace {

/// A function that is not a member, as it stands in a source: its first line begins with its type, its last is a brace.
struct Function {
    std::string_view name;
    std::string_view text;
    std::string_view body;
};

/// The functions of a source that take a graph.
std::vector<Function> FunctionsOf(std::string_view source)
{
    constexpr std::string_view kParameters = "DGraph& graph, ";
    constexpr std::size_t kBefore = 3;
    std::vector<Function> functions;
    for (std::size_t found = source.find(kParameters); found != std::string_view::npos;
         found = source.find(kParameters, found + 1)) {
        // Where "(C2" or "(C3" begins.
        std::size_t const at = found - kBefore;
        std::size_t const line = source.rfind('\n', at) + 1;
        std::size_t const body = source.find("\n{\n", at);
        std::size_t const end = source.find("\n}\n", at);
        if (source[line] == ' ' || body > end || end == std::string_view::npos)
            continue;
        std::size_t const name = source.find_last_of(" &*", at) + 1;
        functions.push_back({ source.substr(name, at - name), source.substr(line, end + 3 - line),
            source.substr(body + 3, end + 1 - (body + 3)) });
    }
    return functions;
}

/// The body without the indentation of a function.
std::string Outdented(std::string_view code)
{
    constexpr std::size_t kIndentation = 4;
    std::string out;
    while (!code.empty()) {
        std::string_view const line = code.substr(0, code.find('\n'));
        code.remove_prefix(line.size() + (line.size() < code.size()));
        out += line.substr(std::min(kIndentation, line.size()));
        out += '\n';
    }
    return out;
}

} // namespace

std::string SourceOf(GalleryPicture const& picture)
{
    for (std::string_view const source : kGallerySources) {
        std::vector<Function> const functions = FunctionsOf(source);
        auto const own = std::find_if(
            functions.begin(), functions.end(), [&](Function const& f) { return f.name == picture.functionName; });
        if (own == functions.end())
            continue;
        std::string code;
        for (Function const& f : functions) {
            if (f.name != own->name && own->body.find(std::string(f.name) + "(graph") != std::string_view::npos)
                code += std::string(f.text) + "\n";
        }
        return code + Outdented(own->body);
    }
    return {};
}

} // namespace ombrel::host
