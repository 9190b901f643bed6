#include "tests/structure/SourceTree.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <set>

namespace ombrel::structure {

namespace {

// What each folder uses directly, lowest first; what these use in turn may be included as well.
struct FolderRule {
    char const* name;
    std::vector<std::string> uses;
};

std::vector<FolderRule> const& Rules()
{
    static std::vector<FolderRule> const rules {
        { "platform/framework", {} },
        { "platform/registry", { "platform/framework" } },
        { "platform/host", { "platform/framework" } },
        { "platform/gdi", { "platform/framework" } },
        { "platform/opengl", { "platform/gdi" } },
        { "foundation", { "platform/registry", "platform/host", "platform/gdi", "platform/opengl" } },
        { "prefs", { "foundation" } },
        { "drawing", { "foundation" } },
        { "model", { "drawing", "prefs" } },
        { "colour", { "model" } },
        { "annotation", { "colour" } },
        { "io", { "model" } },
        { "graph3d", { "annotation", "io" } },
        { "graph2d", { "annotation", "io", "graph3d" } },
        // The top of the tree: what programs call first.
        { "", { "graph2d" } },
    };
    return rules;
}

// Which rooms of its folder a room may include; a room that is not listed may include them all.
struct RoomRule {
    char const* folder;
    char const* room;
    std::set<std::string> uses;
};

std::vector<RoomRule> const& RoomRules()
{
    static std::vector<RoomRule> const rules {
        { "platform/gdi", "geometry", {} },
        { "platform/gdi", "text", { "geometry" } },
        { "platform/gdi", "raster", { "geometry", "text" } },
        { "platform/gdi", "page", { "geometry", "text" } },
    };
    return rules;
}

bool MayUseRoom(std::string const& folder, std::string const& room, std::string const& used)
{
    if (used.empty() || room == used)
        return true;
    for (auto const& rule : RoomRules()) {
        if (rule.folder == folder && rule.room == room)
            return rule.uses.contains(used);
    }
    return true;
}

// Each folder with everything that it may include, itself among it.
std::map<std::string, std::set<std::string>> const& Reach()
{
    static std::map<std::string, std::set<std::string>> const reach = [] {
        std::map<std::string, std::set<std::string>> all;
        for (auto const& rule : Rules()) {
            auto& own = all[rule.name];
            own.insert(rule.name);
            for (auto const& used : rule.uses)
                own.insert(all[used].begin(), all[used].end());
        }
        return all;
    }();
    return reach;
}

bool IsHeader(std::string const& path) { return path.ends_with(".h"); }

bool IsInstalled(std::string const& path) { return !IsInternal(path) && !IsPrivate(FindFolder(path).value_or("")); }

std::string Place(SourceFile const& file, size_t line) { return file.path + ":" + std::to_string(line) + ": "; }

} // namespace

std::vector<SourceFile> ReadSources(std::filesystem::path const& root, std::vector<std::string> const& folders)
{
    std::vector<SourceFile> files;
    for (auto const& folder : folders) {
        if (!std::filesystem::exists(root / folder))
            continue;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
            auto const extension = entry.path().extension();
            if (!entry.is_regular_file() || (extension != ".h" && extension != ".cpp"))
                continue;
            SourceFile file { entry.path().lexically_relative(root).generic_string(), {} };
            std::ifstream stream(entry.path());
            for (std::string line; std::getline(stream, line);)
                file.lines.push_back(line);
            files.push_back(std::move(file));
        }
    }
    std::ranges::sort(files, {}, &SourceFile::path);
    return files;
}

std::vector<Include> FindIncludes(SourceFile const& file)
{
    static std::regex const pattern(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"].*)");
    std::vector<Include> includes;
    for (size_t i = 0; i < file.lines.size(); ++i) {
        std::smatch match;
        if (file.lines[i].find("include") != std::string::npos && std::regex_match(file.lines[i], match, pattern))
            includes.push_back({ match[2], match[1] == "\"", i + 1 });
    }
    return includes;
}

std::optional<std::string> FindFolder(std::string const& path)
{
    if (path.starts_with("ombrel/") && path.find('/', sizeof "ombrel/" - 1) == std::string::npos)
        return "";
    for (auto const& rule : Rules()) {
        if (*rule.name && path.starts_with("ombrel/" + std::string(rule.name) + "/"))
            return rule.name;
    }
    return {};
}

std::string FindRoom(std::string const& path)
{
    auto const folder = FindFolder(path);
    if (!folder || folder->empty())
        return {};
    auto const rest = path.substr(sizeof "ombrel/" + folder->size());
    auto const slash = rest.rfind('/');
    return slash == std::string::npos ? std::string() : rest.substr(0, slash);
}

bool IsInternal(std::string const& path) { return !FindRoom(path).empty(); }

bool IsPrivate(std::string const& folder) { return folder == "platform/opengl"; }

std::vector<std::string> CheckDirection(std::vector<SourceFile> const& files)
{
    std::vector<std::string> faults;
    for (auto const& file : files) {
        if (!file.path.starts_with("ombrel/"))
            continue;
        auto const folder = FindFolder(file.path);
        if (!folder) {
            faults.push_back(Place(file, 1) + "lies in no folder of the library's order");
            continue;
        }
        for (auto const& include : FindIncludes(file)) {
            if (!include.isQuoted)
                continue;
            auto const used = FindFolder(include.name);
            if (!used)
                faults.push_back(
                    Place(file, include.line) + "\"" + include.name + "\" is not written from the root of the tree");
            else if (!Reach().at(*folder).contains(*used))
                faults.push_back(
                    Place(file, include.line) + *folder + " must not include " + *used + " (" + include.name + ")");
            else if (used != folder && IsInternal(include.name))
                faults.push_back(Place(file, include.line) + include.name + " belongs to " + *used + " alone");
            else if (used == folder && !MayUseRoom(*folder, FindRoom(file.path), FindRoom(include.name)))
                faults.push_back(Place(file, include.line) + FindRoom(file.path) + " must not include "
                    + FindRoom(include.name) + " (" + include.name + ")");
        }
    }
    return faults;
}

std::vector<std::string> CheckInstalledHeaders(std::vector<SourceFile> const& files)
{
    static std::regex const standard("[a-z_]+");
    std::set<std::string> known;
    for (auto const& file : files)
        known.insert(file.path);

    std::vector<std::string> faults;
    for (auto const& file : files) {
        if (!file.path.starts_with("ombrel/") || !IsHeader(file.path) || !IsInstalled(file.path))
            continue;
        for (auto const& include : FindIncludes(file)) {
            if (!include.isQuoted && !std::regex_match(include.name, standard))
                faults.push_back(
                    Place(file, include.line) + "<" + include.name + "> is no header of the C++ standard library");
            else if (include.isQuoted && !IsInstalled(include.name))
                faults.push_back(Place(file, include.line) + include.name + " is not installed");
            else if (include.isQuoted && !known.contains(include.name))
                faults.push_back(Place(file, include.line) + include.name + " does not exist");
        }
    }
    return faults;
}

std::vector<std::string> CheckPublicOnly(std::vector<SourceFile> const& files)
{
    std::vector<std::string> faults;
    for (auto const& file : files) {
        if (file.path.starts_with("ombrel/"))
            continue;
        for (auto const& include : FindIncludes(file)) {
            if (!include.name.starts_with("ombrel/") || IsInstalled(include.name))
                continue;
            auto const folder = FindFolder(include.name).value_or("");
            // A folder's tests look into its rooms, nobody else; into a private folder, all that measures the library.
            bool const isAllowed = IsInternal(include.name)
                ? file.path.starts_with("tests/" + folder + "/")
                : file.path.starts_with("tests/") || file.path.starts_with("benchmarks/");
            if (!isAllowed)
                faults.push_back(Place(file, include.line) + include.name + " is not a public header");
        }
    }
    return faults;
}

std::vector<std::string> CheckHeaderHabits(std::vector<SourceFile> const& files)
{
    std::set<std::string> known;
    for (auto const& file : files)
        known.insert(file.path);

    std::vector<std::string> faults;
    for (auto const& file : files) {
        if (IsHeader(file.path)) {
            if (std::ranges::find(file.lines, "#pragma once") == file.lines.end())
                faults.push_back(Place(file, 1) + "no #pragma once");
            continue;
        }
        auto const own = file.path.substr(0, file.path.size() - 4) + ".h";
        auto const includes = FindIncludes(file);
        if (known.contains(own) && (includes.empty() || includes.front().name != own))
            faults.push_back(
                Place(file, includes.empty() ? 1 : includes.front().line) + own + " is not included first");
    }
    return faults;
}

std::vector<std::string> CheckLength(std::vector<SourceFile> const& files, double tolerance)
{
    std::vector<std::string> faults;
    for (auto const& file : files) {
        double const limit = IsHeader(file.path) ? 300 : 600;
        if (static_cast<double>(file.lines.size()) > limit * tolerance)
            faults.push_back(Place(file, file.lines.size()) + "is there a second subject in this file?");
    }
    return faults;
}

} // namespace ombrel::structure
