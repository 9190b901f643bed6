#pragma once
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel::host {

/// A folder of a test's own, which goes with it.
class TestFolder {
public:
    TestFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "ombrel-XXXXXX").string();
        m_path = mkdtemp(pattern.data());
    }
    TestFolder(TestFolder const&) = delete;
    TestFolder& operator=(TestFolder const&) = delete;
    ~TestFolder() { std::filesystem::remove_all(m_path); }

    std::string In(std::string const& name) const { return (m_path / name).string(); }
    void Write(std::string const& name, std::string_view bytes) const
    {
        std::ofstream(In(name), std::ios::binary) << bytes;
    }
    std::string Read(std::string const& name) const
    {
        std::ifstream stream(In(name), std::ios::binary);
        return { std::istreambuf_iterator<char>(stream), {} };
    }
    /// The names of the files, sorted.
    std::vector<std::string> List(std::string const& folder = "") const
    {
        std::vector<std::string> names;
        for (auto const& entry : std::filesystem::directory_iterator(m_path / folder))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path m_path;
};

} // namespace ombrel::host
