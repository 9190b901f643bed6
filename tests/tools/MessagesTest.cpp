#include "tests/tools/TestFolder.h"
#include "tools/ombrel/Program.h"

#include <gtest/gtest.h>

#include <sstream>

namespace ombrel::host {
namespace {

namespace fs = std::filesystem;

/// Runs the commands of a list one after the other in a folder with the tables of the pictures. The list has under each
/// command, whose exit status comes first, what it says; a line "= t.csv x,y|1,2" writes another table.
TEST(Commands, SayWhatTheyDidAndWhatIsWrong)
{
    TestFolder const folder;
    fs::path const source = OMBREL_SOURCE_DIR "/tests/tools/pictures";
    fs::copy(source, folder.In(""));
    fs::path const before = fs::current_path();
    fs::current_path(folder.In(""));
    std::ifstream list("messages.txt");
    std::string found;
    std::string wanted;
    for (std::string line; std::getline(list, line);) {
        wanted += line + '\n';
        if (line.starts_with("= ")) {
            found += line + '\n';
            std::size_t const end = line.find(' ', 2);
            std::replace(line.begin(), line.end(), '|', '\n');
            folder.Write(line.substr(2, end - 2), line.substr(end + 1));
            continue;
        }
        if (line.starts_with("    "))
            continue;
        std::istringstream words(line.substr(2));
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        int const status = RunProgram({ std::istream_iterator<std::string>(words), {} });
        std::istringstream said(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr());
        found += std::to_string(status) + line.substr(1) + '\n';
        for (std::string one; std::getline(said, one);)
            found += "    " + one + '\n';
    }
    fs::current_path(before);
    EXPECT_EQ(found, wanted);
    if (found != wanted)
        std::ofstream(OMBREL_BINARY_DIR "/tests/messages.txt") << found;
}

} // namespace
} // namespace ombrel::host
