// Writes what is made from the option table: MakeReference DIRECTORY [README] puts the manual page and the completion
// files into the directory and brings the README's list of options up to date.
#include "tools/ombrel/options/Reference.h"

#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace {

void Write(std::string const& path, std::string const& text)
{
    std::ofstream file(path, std::ios::binary);
    if (!(file << text << std::flush))
        throw std::runtime_error(path + ": cannot be written");
}

std::string Read(std::string const& path)
{
    std::ifstream const file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    if (!file)
        throw std::runtime_error(path + ": cannot be read");
    return text.str();
}

void UpdateReadme(std::string const& path)
{
    std::string_view const begin = "<!-- options -->\n";
    std::string_view const end = "<!-- /options -->\n";
    std::string readme = Read(path);
    std::size_t const from = readme.find(begin);
    std::size_t const to = readme.find(end);
    if (from == std::string::npos || to == std::string::npos || to < from)
        throw std::runtime_error(path + ": has no place for the options");
    std::string const reference = "\n" + ombrel::host::ReadmeReference() + "\n";
    readme.replace(from + begin.size(), to - from - begin.size(), reference);
    Write(path, readme);
}

} // namespace

int main(int count, char** arguments)
try {
    if (count < 2)
        throw std::runtime_error("expected a DIRECTORY");
    std::string const folder = std::string(arguments[1]) + "/";
    Write(folder + "ombrel.1", ombrel::host::ManPage());
    Write(folder + "ombrel.bash", ombrel::host::BashCompletion());
    Write(folder + "ombrel.zsh", ombrel::host::ZshCompletion());
    Write(folder + "ombrel.fish", ombrel::host::FishCompletion());
    if (count > 2)
        UpdateReadme(arguments[2]);
    return 0;
} catch (std::exception const& error) {
    std::cerr << "MakeReference: error: " << error.what() << '\n';
    return 1;
}
