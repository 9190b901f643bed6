#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <regex>
#include <set>

namespace ombrel::structure {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace fs = std::filesystem;
fs::path const kRoot = OMBREL_SOURCE_DIR;

/// One source file: its path from the root of the tree, with '/', and its lines.
struct SourceFile {
    std::string path;
    std::vector<std::string> lines;
    bool IsHeader() const { return path.ends_with(".h"); }
};

using SourceFiles = std::vector<SourceFile>;
/// One line per fault, "path:line: what is wrong"; empty when all is well.
using Faults = std::vector<std::string>;

SourceFiles ReadSources(std::vector<std::string> const& folders)
{
    SourceFiles files;
    for (auto const& folder : folders) {
        for (auto const& entry : fs::recursive_directory_iterator(kRoot / folder)) {
            auto const extension = entry.path().extension();
            if (!entry.is_regular_file() || (extension != ".h" && extension != ".cpp"))
                continue;
            auto& file = files.emplace_back(SourceFile { entry.path().lexically_relative(kRoot).generic_string(), {} });
            std::ifstream stream(entry.path());
            for (std::string line; std::getline(stream, line);)
                file.lines.push_back(line);
        }
    }
    std::ranges::sort(files, {}, &SourceFile::path);
    return files;
}

SourceFiles const kLibrary = ReadSources({ "ombrel" });
SourceFiles const kUsers = ReadSources({ "tools", "colour-maps", "examples", "benchmarks", "fuzz", "tests" });

SourceFiles AllFiles()
{
    SourceFiles files = kLibrary;
    std::ranges::copy(kUsers, std::back_inserter(files));
    return files;
}

void ExpectNone(Faults const& faults) { EXPECT_THAT(faults, IsEmpty()) << testing::PrintToString(faults); }

std::string ReadText(fs::path const& path)
{
    std::ifstream stream(path);
    return { std::istreambuf_iterator<char>(stream), {} };
}

std::string Place(SourceFile const& file, size_t line) { return file.path + ":" + std::to_string(line) + ": "; }

/// An include line: the name between the delimiters, and where it stands (line from 1).
struct Include {
    std::string name;
    bool isQuoted;
    size_t line;
};

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

/// A folder of the library and the folders that it uses directly; what these use in turn may be included as well.
struct FolderRule {
    std::string name;
    std::vector<std::string> uses;
};

/// Lowest first.
FolderRule const kFolders[] {
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
    { "table", { "platform/framework" } },
    { "layout", { "graph2d", "table" } },
    // What programs call before they load or store with the classes above.
    { "", { "graph2d" } },
    { "chart", { "", "layout" } },
    { "scene", { "chart" } },
    // One header of all that charts need.
    { "chart.h", { "chart", "scene" } },
};

/// The subfolders, rooms, that a folder's room may include; a room that is not listed may include them all.
std::map<std::string, std::set<std::string>> const kRooms {
    { "platform/gdi/geometry", {} },
    { "platform/gdi/text", { "geometry" } },
    { "platform/gdi/marks", {} },
    { "platform/gdi/raster", { "geometry", "text", "marks" } },
    { "platform/gdi/page", { "geometry", "text", "marks" } },
};

/// Everything that a folder may include, itself among it.
std::set<std::string> const& ReachOf(std::string const& folder)
{
    static auto const reach = [] {
        std::map<std::string, std::set<std::string>> all;
        for (auto const& rule : kFolders) {
            all[rule.name].insert(rule.name);
            for (auto const& used : rule.uses)
                all[rule.name].insert(all[used].begin(), all[used].end());
        }
        return all;
    }();
    return reach.at(folder);
}

/// Where a path such as "ombrel/platform/gdi/text/Font.h" lies: folder "platform/gdi", room "text".
struct Location {
    /// Empty at the top of the tree, nothing when it is in none of the folders.
    std::optional<std::string> folder;
    /// Empty for the folder's own files; what lies in a room only the folder itself includes.
    std::string room;
    /// Higher folders include the headers of platform/opengl in sources and rooms only.
    bool IsInstalled() const { return room.empty() && folder != "platform/opengl"; }
};

Location Locate(std::string const& path)
{
    fs::path const parent = fs::path(path).parent_path();
    if (path == "ombrel/chart.h")
        return { "chart.h", "" };
    if (parent == "ombrel")
        return { "", "" };
    for (auto const& [name, uses] : kFolders) {
        if (!name.empty() && path.starts_with("ombrel/" + name + "/")) {
            auto const room = parent.lexically_relative("ombrel/" + name).generic_string();
            return { name, room == "." ? "" : room };
        }
    }
    return {};
}

/// The faults that check(file, its location, include) finds, as texts that are empty when all is well.
template <typename Check> Faults CheckIncludes(SourceFiles const& files, Check const& check)
{
    Faults faults;
    for (auto const& file : files) {
        Location const location = Locate(file.path);
        for (auto const& include : FindIncludes(file)) {
            std::string const fault = check(file, location, include);
            if (!fault.empty())
                faults.push_back(Place(file, include.line) + include.name + fault);
        }
    }
    return faults;
}

/// Includes between the library's folders against their order.
Faults CheckDirection(SourceFiles const& files)
{
    return CheckIncludes(files, [](SourceFile const&, Location const& at, Include const& include) -> std::string {
        if (!at.folder)
            return " is included from none of the library's folders";
        if (!include.isQuoted)
            return "";
        auto const [folder, room] = Locate(include.name);
        if (!folder)
            return " is in none of the library's folders";
        if (!ReachOf(*at.folder).contains(*folder))
            return " must not be included by " + *at.folder;
        if (folder != at.folder)
            return room.empty() ? "" : " belongs to " + *folder + " alone";
        auto const rule = kRooms.find(*folder + "/" + at.room);
        bool const allowed = room.empty() || room == at.room || rule == kRooms.end() || rule->second.contains(room);
        return allowed ? "" : " must not be included by " + at.room;
    });
}

/// Installed headers that include something which an installed tree does not have.
Faults CheckInstalledHeaders(SourceFiles const& files)
{
    static std::regex const standard("[a-z_]+");
    std::set<std::string> installed;
    for (auto const& file : files) {
        if (Locate(file.path).IsInstalled() && file.IsHeader())
            installed.insert(file.path);
    }
    return CheckIncludes(files, [&](SourceFile const& file, Location const&, Include const& include) {
        if (!installed.contains(file.path))
            return "";
        if (include.isQuoted)
            return installed.contains(include.name) ? "" : " is not installed";
        return std::regex_match(include.name, standard) ? "" : " is no header of the C++ standard library";
    });
}

/// Includes of headers that are not installed by files outside the library. The tests of a folder look into its rooms,
/// and all that measures the library into a folder that is not installed.
Faults CheckPublicOnly(SourceFiles const& files)
{
    return CheckIncludes(files, [](SourceFile const& file, Location const&, Include const& include) {
        Location const used = Locate(include.name);
        bool const isAllowed = used.IsInstalled() || file.path.starts_with("tests/" + *used.folder + "/")
            || (used.room.empty() && (file.path.starts_with("tests/") || file.path.starts_with("benchmarks/")));
        return isAllowed ? "" : " is not a public header";
    });
}

/// Headers without #pragma once, and sources whose own header is not their first include.
Faults CheckHeaderHabits(SourceFiles const& files)
{
    Faults faults;
    for (auto const& file : files) {
        auto const own = file.path.substr(0, file.path.rfind('.')) + ".h";
        auto const includes = FindIncludes(file);
        if (file.IsHeader() && std::ranges::find(file.lines, "#pragma once") == file.lines.end())
            faults.push_back(Place(file, 1) + "no #pragma once");
        else if (!file.IsHeader() && std::ranges::find(files, own, &SourceFile::path) != files.end()
            && (includes.empty() || includes.front().name != own))
            faults.push_back(Place(file, 1) + own + " is not included first");
    }
    return faults;
}

// The checks themselves, on a made-up tree: a check that finds nothing anywhere would be worth nothing.

TEST(StructureCheck, FindsFaultsAndNothingElse)
{
    struct {
        Faults (*check)(SourceFiles const&);
        char const* path;
        char const* line;
        bool isFine;
    } const cases[] {
        { CheckDirection, "ombrel/graph2d/Axes.h", R"(#include "ombrel/platform/framework/Types.h")", true },
        { CheckDirection, "ombrel/model/Axes.h", R"(#include "ombrel/graph2d/Axes.h")", false },
        { CheckDirection, "ombrel/drawing/Port.h", R"(  # include  "ombrel/prefs/Preferences.h" // why)", false },
        { CheckDirection, "ombrel/drawing/Port.h", R"(// #include "ombrel/prefs/Preferences.h")", true },
        { CheckDirection, "ombrel/platform/gdi/DC.h", R"(#include "ombrel/platform/registry/Registry.h")", false },
        { CheckDirection, "ombrel/model/Plot.h", R"(#include "Plot.h")", false },
        { CheckDirection, "ombrel/elsewhere/A.h", R"(#include <vector>)", false },
        { CheckDirection, "ombrel/Init.cpp", R"(#include "ombrel/graph2d/2DGraph.h")", true },
        { CheckDirection, "ombrel/graph2d/2DGraph.cpp", R"(#include "ombrel/Init.h")", false },
        { CheckDirection, "ombrel/platform/gdi/page/A.cpp", R"(#include "ombrel/platform/gdi/text/Font.h")", true },
        { CheckDirection, "ombrel/platform/gdi/page/A.cpp", R"(#include "ombrel/platform/gdi/raster/B.h")", false },
        { CheckDirection, "ombrel/graph2d/2DLine.cpp", R"(#include "ombrel/platform/gdi/text/Font.h")", false },
        { CheckInstalledHeaders, "ombrel/model/Plot.h", R"(#include "ombrel/model/parts/Part.h")", false },
        { CheckInstalledHeaders, "ombrel/model/Plot.h", R"(#include "ombrel/model/Gone.h")", false },
        { CheckInstalledHeaders, "ombrel/model/Plot.h", R"(#include "ombrel/platform/opengl/OpenGL.h")", false },
        { CheckInstalledHeaders, "ombrel/model/Plot.h", R"(#include <vector>)", true },
        { CheckInstalledHeaders, "ombrel/model/Plot.h", R"(#include <cairo.h>)", false },
        { CheckInstalledHeaders, "ombrel/model/parts/Plot.h", R"(#include <cairo.h>)", true },
        { CheckPublicOnly, "tools/ombrel/Main.cpp", R"(#include "ombrel/model/parts/Part.h")", false },
        { CheckPublicOnly, "tests/model/PartTest.cpp", R"(#include "ombrel/model/parts/Part.h")", true },
        { CheckPublicOnly, "tools/ombrel/Main.cpp", R"(#include "ombrel/platform/opengl/OpenGL.h")", false },
        { CheckPublicOnly, "tests/graph3d/DrawTest.cpp", R"(#include "ombrel/platform/opengl/OpenGL.h")", true },
        { CheckHeaderHabits, "ombrel/model/Plot.h", "// no guard", false },
        { CheckHeaderHabits, "ombrel/model/Graph.cpp", "#include <vector>", false },
        { CheckHeaderHabits, "ombrel/model/Graph.cpp", R"(#include "ombrel/model/Graph.h")", true },
    };
    for (auto const& c : cases) {
        auto const faults = c.check(
            { { "ombrel/model/Graph.h", { "#pragma once" } }, { "ombrel/platform/opengl/OpenGL.h", { "#pragma once" } },
                { "ombrel/model/parts/Part.h", { "#pragma once" } }, { c.path, { c.line } } });
        EXPECT_EQ(faults.size(), c.isFine ? 0U : 1U) << c.path << " " << c.line;
        EXPECT_TRUE(c.isFine || faults[0].starts_with(c.path + std::string(":1: ")));
    }
}

// The tree.

TEST(Structure, IncludesGoDownwardsAndToWhatIsMeantForThem)
{
    ASSERT_THAT(kLibrary, Not(IsEmpty()));
    ExpectNone(CheckDirection(kLibrary));
    ExpectNone(CheckInstalledHeaders(kLibrary));
    ExpectNone(CheckPublicOnly(kUsers));
    ExpectNone(CheckHeaderHabits(AllFiles()));
}

TEST(Structure, EverySourceIsNamedInTheListOfItsFolder)
{
    Faults faults;
    for (auto const& file : AllFiles()) {
        if (file.IsHeader())
            continue;
        fs::path const path(file.path);
        auto list = path.parent_path();
        while (!list.empty() && !fs::exists(kRoot / list / "CMakeLists.txt"))
            list = list.parent_path();
        auto const text = ReadText(kRoot / list / "CMakeLists.txt");
        // A source is listed by its name from that folder, or by its bare stem where programs are made in a loop.
        if (text.find(path.lexically_relative(list).generic_string()) == std::string::npos
            && text.find(path.stem().string()) == std::string::npos)
            faults.push_back(file.path + ": not built, " + list.generic_string() + "/CMakeLists.txt does not name it");
    }
    ExpectNone(faults);
}

TEST(Structure, FilesKeepToOneSubject)
{
    for (auto const& file : AllFiles()) {
        size_t const limit = file.IsHeader() ? 300 : 600;
        if (file.lines.size() > limit)
            std::cout << "warning: " << Place(file, file.lines.size()) << "is there a second subject in this file?\n";
        EXPECT_LE(file.lines.size(), limit + limit / 2) << file.path;
    }
}

TEST(Structure, TheExampleOfTheReadmeIsTheOneThatIsCompiled)
{
    auto const readme = ReadText(kRoot / "README.md");
    auto const start = readme.find("```cpp\n");
    ASSERT_NE(start, std::string::npos) << "README.md shows no C++";
    auto const first = start + std::string("```cpp\n").size();
    auto const shown = readme.substr(first, readme.find("```", first) - first);
    EXPECT_THAT(shown, HasSubstr("#include"));
    EXPECT_THAT(ReadText(kRoot / "examples/host/main.cpp"), HasSubstr(shown));
}

} // namespace
} // namespace ombrel::structure
