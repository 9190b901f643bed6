#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ombrel {

/// The text of a registry file: named values under keys, for a person to read and edit.
///
///     # comment
///     [Software\Ombrel\Graphs\2D]
///     Axes Colour = 255
///     @ = the key's default value
///
/// White space around names and values does not belong to them. In names and values "\\", "\n", "\r", "\t", "\=",
/// "\#", "\;", "\[", "\@" and "\uXXXX" (one UTF-16 unit) stand for what could not be written plainly. Keys and names
/// are compared without regard to case; of several values under one name the last one counts. Lines that make no
/// sense, values without a key and values after a key line that makes no sense mean nothing, but all lines are kept as
/// they are.
class OMBREL_EXPORT RegistryDocument {
public:
    /// The value of the name (empty for the default value) under the key at path; nothing when there is none.
    std::optional<CString> Find(CString const& path, CString const& name) const;
    /// Stores the value, with the key when that is missing. False, and nothing stored, when the path cannot be
    /// written as a line: it has control characters or unpaired surrogates.
    bool Set(CString const& path, CString const& name, CString const& value);
    /// The file's text.
    std::string ToText() const;
    /// How many lines mean nothing.
    int GetDamagedLines() const { return m_damagedLines; }

private:
    friend RegistryDocument ParseRegistry(std::string_view text);
    void AddLine(std::string_view line);
    bool AddKey(std::string_view line);
    bool AddValue(std::string_view line);

    struct Value {
        std::size_t line;
        CString value;
    };
    /// Without their breaks.
    std::vector<std::string> m_lines;
    /// By key and name, folded, with a zero unit between (which no key holds).
    std::unordered_map<std::u16string, Value> m_values;
    /// By folded key: the last line of its last section that is not blank.
    std::unordered_map<std::u16string, std::size_t> m_lastLine;
    /// The folded key that values belong to while lines are added.
    std::optional<std::u16string> m_key;
    int m_damagedLines = 0;
};

/// Reads the text of a registry file. Any bytes will do.
OMBREL_EXPORT RegistryDocument ParseRegistry(std::string_view text);

} // namespace ombrel
