#pragma once
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/File.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

namespace ombrel::test {

/// A file with this content, in a folder of its own, that goes with the object.
class DataFile {
public:
    DataFile(std::string const& name, std::string const& content)
    {
        static int count = 0;
        m_folder = std::filesystem::path(testing::TempDir())
            / ("data-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
        std::filesystem::create_directories(m_folder);
        m_path = m_folder / name;
        std::ofstream(m_path, std::ios::binary) << content;
    }
    ~DataFile() { std::filesystem::remove_all(m_folder); }
    DataFile(DataFile const&) = delete;
    DataFile& operator=(DataFile const&) = delete;
    CString GetPath() const { return m_path.string(); }

private:
    std::filesystem::path m_folder;
    std::filesystem::path m_path;
};

} // namespace ombrel::test
