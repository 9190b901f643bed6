#include "tests/structure/SourceTree.h"

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iostream>
#include <sstream>

namespace ombrel::structure {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::filesystem::path const kRoot = OMBREL_SOURCE_DIR;

std::vector<SourceFile> const& Library()
{
    static auto const files = ReadSources(kRoot, { "ombrel" });
    return files;
}

std::vector<SourceFile> const& Users()
{
    static auto const files = ReadSources(kRoot, { "tools", "colour-maps", "examples", "benchmarks", "fuzz", "tests" });
    return files;
}

std::string Join(std::vector<std::string> const& faults)
{
    std::string text;
    for (auto const& fault : faults)
        text += "\n  " + fault;
    return text;
}

std::string ReadText(std::filesystem::path const& path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

// The checks themselves, on made-up trees: a check that finds nothing anywhere would be worth nothing.

TEST(StructureCheck, ReadsIncludesWithTheirDelimitersAndLines)
{
    SourceFile const file { "ombrel/model/Plot.cpp",
        { "#include \"ombrel/model/Plot.h\"", "// #include <no>", "  #  include  <vector> // why",
            "int include = 0;" } };
    auto const includes = FindIncludes(file);
    ASSERT_EQ(includes.size(), 2U);
    EXPECT_EQ(includes[0].name, "ombrel/model/Plot.h");
    EXPECT_TRUE(includes[0].isQuoted);
    EXPECT_EQ(includes[1].name, "vector");
    EXPECT_FALSE(includes[1].isQuoted);
    EXPECT_EQ(includes[1].line, 3U);
}

TEST(StructureCheck, AllowsIncludesDownwardsAndFindsTheOthers)
{
    struct Case {
        char const* path;
        char const* included;
        bool allowed;
    };
    Case const cases[] = {
        { "ombrel/graph2d/Axes.h", "ombrel/platform/framework/Types.h", true },
        { "ombrel/graph2d/Axes.h", "ombrel/graph2d/AxisSettings.h", true },
        { "ombrel/model/Graph.h", "ombrel/prefs/Preferences.h", true },
        { "ombrel/model/Graph.h", "ombrel/graph2d/Axes.h", false },
        { "ombrel/prefs/Preferences.h", "ombrel/drawing/Port.h", false },
        { "ombrel/drawing/Port.h", "ombrel/prefs/Preferences.h", false },
        { "ombrel/io/ZValues.h", "ombrel/colour/ColourMap.h", false },
        { "ombrel/platform/gdi/DC.h", "ombrel/platform/registry/Registry.h", false },
        { "ombrel/platform/host/Host.h", "ombrel/platform/gdi/DC.h", false },
        { "ombrel/model/Graph.h", "Graph.h", false },
        { "ombrel/model/Graph.h", "tools/ombrel/options/Options.h", false },
        { "ombrel/Init.cpp", "ombrel/graph2d/2DGraph.h", true },
        { "ombrel/graph2d/2DGraph.cpp", "ombrel/Init.h", false },
        { "ombrel/platform/gdi/DC.cpp", "ombrel/platform/gdi/text/Font.h", true },
        { "ombrel/platform/gdi/page/CairoPage.cpp", "ombrel/platform/gdi/raster/CoverageMask.h", false },
        { "ombrel/platform/gdi/raster/CoverageMask.cpp", "ombrel/platform/gdi/page/SvgPath.h", false },
        { "ombrel/graph2d/2DLine.cpp", "ombrel/platform/gdi/text/Font.h", false },
    };
    for (auto const& each : cases) {
        auto const faults = CheckDirection({ { each.path, { std::string("#include \"") + each.included + "\"" } } });
        EXPECT_EQ(faults.empty(), each.allowed) << each.path << " includes " << each.included;
    }
    EXPECT_THAT(CheckDirection({ { "ombrel/elsewhere/A.h", {} } }), ElementsAre(HasSubstr("no folder")));
}

TEST(StructureCheck, FindsWhatAnInstalledHeaderCannotReach)
{
    std::vector<SourceFile> const files {
        { "ombrel/model/Graph.h",
            { "#include \"ombrel/model/parts/Graph.h\"", "#include <cairo.h>", "#include <vector>",
                "#include <unistd.h>", "#include \"ombrel/model/Gone.h\"",
                "#include \"ombrel/platform/opengl/OpenGL.h\"" } },
        { "ombrel/platform/opengl/OpenGL.h", { "#include <GL/gl.h>" } },
        { "ombrel/model/parts/Graph.h", { "#include <cairo.h>" } },
        { "ombrel/model/Graph.cpp", { "#include <cairo.h>" } },
    };
    EXPECT_THAT(CheckInstalledHeaders(files),
        ElementsAre(HasSubstr("Graph.h:1: "), HasSubstr("Graph.h:2: "), HasSubstr("Graph.h:4: "),
            HasSubstr("Graph.h:5: "), HasSubstr("Graph.h:6: ")));
    EXPECT_THAT(CheckPublicOnly({ { "tools/ombrel/Main.cpp", { "#include \"ombrel/model/parts/Graph.h\"" } } }),
        ElementsAre(HasSubstr("Main.cpp:1: ")));
    EXPECT_THAT(
        CheckPublicOnly({ { "tests/model/GraphTest.cpp", { "#include \"ombrel/model/parts/Graph.h\"" } } }), IsEmpty());
    char const opengl[] = "#include \"ombrel/platform/opengl/OpenGL.h\"";
    EXPECT_THAT(CheckPublicOnly({ { "tools/ombrel/Main.cpp", { opengl } } }), ElementsAre(HasSubstr("Main.cpp:1: ")));
    EXPECT_THAT(CheckPublicOnly({ { "tests/graph3d/DrawTest.cpp", { opengl } } }), IsEmpty());
}

TEST(StructureCheck, FindsAnUnguardedHeaderAndAnOwnHeaderThatIsNotFirst)
{
    std::vector<SourceFile> const files {
        { "ombrel/model/Graph.h", { "// no guard" } },
        { "ombrel/model/Graph.cpp", { "#include <vector>", "#include \"ombrel/model/Graph.h\"" } },
        { "ombrel/model/Plot.h", { "#pragma once" } },
        { "ombrel/model/Plot.cpp", { "#include \"ombrel/model/Plot.h\"" } },
        { "ombrel/model/PlotDraw.cpp", { "#include <vector>" } },
    };
    EXPECT_THAT(CheckHeaderHabits(files), ElementsAre(HasSubstr("Graph.h:1: "), HasSubstr("Graph.cpp:1: ")));
}

// The tree.

TEST(Structure, FoldersIncludeOnlyWhatLiesBelowThem)
{
    ASSERT_THAT(Library(), testing::Not(IsEmpty()));
    auto const faults = CheckDirection(Library());
    EXPECT_THAT(faults, IsEmpty()) << Join(faults);
}

TEST(Structure, InstalledHeadersNeedNothingButTheStandardLibraryAndEachOther)
{
    auto const faults = CheckInstalledHeaders(Library());
    EXPECT_THAT(faults, IsEmpty()) << Join(faults);
}

TEST(Structure, ProgramsUsePublicHeadersOnly)
{
    auto const faults = CheckPublicOnly(Users());
    EXPECT_THAT(faults, IsEmpty()) << Join(faults);
}

TEST(Structure, HeadersAreGuardedAndSourcesIncludeTheirOwnFirst)
{
    auto faults = CheckHeaderHabits(Library());
    std::ranges::copy(CheckHeaderHabits(Users()), std::back_inserter(faults));
    EXPECT_THAT(faults, IsEmpty()) << Join(faults);
}

TEST(Structure, EverySourceIsNamedInTheListOfItsFolder)
{
    std::vector<std::string> faults;
    auto files = Library();
    std::ranges::copy(Users(), std::back_inserter(files));
    for (auto const& file : files) {
        if (!file.path.ends_with(".cpp"))
            continue;
        std::filesystem::path const path(file.path);
        auto list = path.parent_path();
        while (!list.empty() && !std::filesystem::exists(kRoot / list / "CMakeLists.txt"))
            list = list.parent_path();
        auto const text = ReadText(kRoot / list / "CMakeLists.txt");
        // A source is listed by its name from that folder, or by its bare stem where programs are made in a loop.
        if (text.find(path.lexically_relative(list).generic_string()) == std::string::npos
            && text.find(path.stem().string()) == std::string::npos)
            faults.push_back(
                file.path + ": not built, " + (list / "CMakeLists.txt").generic_string() + " does not name it");
    }
    EXPECT_THAT(faults, IsEmpty()) << Join(faults);
}

TEST(Structure, FilesKeepToOneSubject)
{
    auto files = Library();
    std::ranges::copy(Users(), std::back_inserter(files));
    for (auto const& warning : CheckLength(files, 1.0))
        std::cout << "warning: " << warning << "\n";
    auto const faults = CheckLength(files, 1.5);
    EXPECT_THAT(faults, IsEmpty()) << Join(faults);
}

TEST(Structure, TheExampleOfTheReadmeIsTheOneThatIsCompiled)
{
    auto const readme = ReadText(kRoot / "README.md");
    std::string const fence = "```cpp\n";
    auto const start = readme.find(fence);
    ASSERT_NE(start, std::string::npos) << "README.md shows no C++";
    auto const end = readme.find("```", start + fence.size());
    ASSERT_NE(end, std::string::npos);
    auto const shown = readme.substr(start + fence.size(), end - start - fence.size());
    EXPECT_THAT(shown, HasSubstr("#include"));
    EXPECT_THAT(ReadText(kRoot / "examples/host/main.cpp"), HasSubstr(shown));
}

} // namespace
} // namespace ombrel::structure
