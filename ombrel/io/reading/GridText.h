#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace ombrel::io {

/// The lines of a text, one after the other, as CStdioFile gives them: CR LF and LF end a line, a byte order mark at
/// the start is skipped.
class TextLines {
public:
    explicit TextLines(std::string_view text);
    /// The next line without its break; false when there is none.
    bool Next(std::string_view& line);
    /// Of the line that Next gave last, or would have given, counted from 1.
    std::uint64_t GetLine() const { return m_line; }
    /// Where that line starts in the text.
    std::size_t GetOffset() const { return m_offset; }
    /// Bytes behind that line.
    std::size_t GetRemaining() const { return m_rest.size(); }

private:
    std::string_view m_rest;
    std::uint64_t m_line = 0;
    std::size_t m_offset = 0;
    std::size_t m_next = 0;
};

enum class Separator { WhiteSpace, Comma };

struct NumbersRead {
    /// Items found, of those that were asked for.
    std::size_t items = 0;
    /// Those that are no number.
    std::size_t gaps = 0;
};

/// The numbers that the first items of a line stand for, kGap where an item is no number. Items are those of
/// CVUtils::SplitCSVString and SplitSpaceDelimitedString, numbers those of CVUtils::StringToFloat. Behind the line must
/// stand a character that is no part of a number: a line break or a zero will do.
NumbersRead ReadNumbers(std::string_view line, Separator separator, std::span<double> into);

} // namespace ombrel::io
