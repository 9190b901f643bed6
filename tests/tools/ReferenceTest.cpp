#include "tools/ombrel/options/Reference.h"
#include "tools/ombrel/options/Options.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>

namespace ombrel::host {
namespace {

TEST(Reference, NamesEveryOptionAndCommandInEveryText)
{
    for (std::string const& text : { ManPage(), BashCompletion(), ZshCompletion(), FishCompletion() }) {
        for (OptionEntry const& option : AllOptions()) {
            std::string name(option.longName);
            // The man macros take a plain dash for a hyphen.
            if (text.starts_with(".TH")) {
                for (std::size_t i = name.find('-'); i != std::string::npos; i = name.find('-', i + 2))
                    name.insert(i, "\\");
            }
            EXPECT_NE(text.find(name), std::string::npos) << option.longName << " is missing in " << text.substr(0, 60);
        }
        for (CommandEntry const& command : AllCommands())
            EXPECT_NE(text.find(command.name), std::string::npos);
    }
}

TEST(Reference, OfTheReadmeIsUpToDate)
{
    std::ifstream file(OMBREL_SOURCE_DIR "/README.md");
    std::string const readme((std::istreambuf_iterator<char>(file)), {});
    EXPECT_NE(readme.find(ReadmeReference()), std::string::npos) << "the build target readme brings it up to date";
}

std::string OutputOfBash(std::string const& script)
{
    std::string const path = testing::TempDir() + "ombrel-completion.bash";
    std::ofstream(path) << BashCompletion() << "cd /\n" << script;
    std::string output;
    std::array<char, 256> part;
    std::FILE* const pipe = popen(("bash " + path).c_str(), "r");
    while (std::size_t const n = std::fread(part.data(), 1, part.size(), pipe))
        output.append(part.data(), n);
    pclose(pipe);
    return output;
}

TEST(Reference, CompletesInBash)
{
    auto const complete = [](std::string const& words, int index) {
        return OutputOfBash("COMP_WORDS=(" + words + ") COMP_CWORD=" + std::to_string(index)
            + "; _ombrel; echo -n \"${COMPREPLY[*]}\"");
    };
    EXPECT_EQ(complete("ombrel plot --kind st", 3), "steps stacked");
    EXPECT_EQ(complete("ombrel plot --norm", 2), "--normalised");
    EXPECT_EQ(complete("ombrel info --out", 2), "");
    EXPECT_EQ(complete("ombrel gal", 1), "gallery");
    // Those that are installed, asked for when they are needed.
    auto const completeColours = [&](std::string const& words) {
        return OutputOfBash("ombrel() { printf 'name  kind\\nviridis            installed\\nVery Dark  preset\\n'; }\n"
                            "COMP_WORDS=(ombrel plot "
            + words + ") COMP_CWORD=3; _ombrel; echo -n \"${COMPREPLY[*]}\"");
    };
    EXPECT_EQ(completeColours("--palette vi"), "viridis");
    EXPECT_EQ(completeColours("--palette d"), "distinct");
    EXPECT_EQ(completeColours("--palette ''"), "distinct grey viridis Very\\ Dark");
    EXPECT_EQ(completeColours("--colour-map V"), "Very\\ Dark");
}

} // namespace
} // namespace ombrel::host
