#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ombrel::host {

/// A file that is read from its start to its end, or standard input for "-". Throws Failure.
class InputFile {
public:
    explicit InputFile(std::string const& path);
    ~InputFile();
    InputFile(InputFile const&) = delete;
    InputFile& operator=(InputFile const&) = delete;

    /// How messages call it.
    std::string const& GetName() const { return m_name; }
    /// Bytes of the file; 0 where that is not known.
    std::uint64_t GetSize() const { return m_size; }
    /// The first bytes, without taking them: fewer than asked for only when the file is shorter.
    std::string_view Peek(std::size_t count);
    /// The next piece, valid until the next call; empty at the end.
    std::string_view Read();
    /// All that is left.
    std::string ReadAll();

private:
    std::size_t ReadInto(char* to, std::size_t count);

    std::string m_name;
    int m_descriptor;
    std::uint64_t m_size = 0;
    std::string m_peeked;
    std::string m_buffer;
};

} // namespace ombrel::host
