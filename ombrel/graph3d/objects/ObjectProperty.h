#pragma once
#include "ombrel/graph3d/3DObjectFile.h"

#include <array>
#include <cstddef>

namespace ombrel {

/// A property of an object that is being read: its name in any case, and the numbers of its value.
struct ObjectProperty {
    C3DObjectFile& file;
    CString const& name;
    CString const& value;

    bool Is(char const* wanted) const { return name.CompareNoCase(wanted) == 0; }
    /// Whether the value begins with as many numbers as are asked for; a note says when it does not, and nothing
    /// changes then.
    template <std::size_t N> bool Read(std::array<double, N>& into) const
    {
        std::array<double, N> numbers {};
        return Take(ScanNumbers(value.ToUtf8(), numbers), numbers, into);
    }
    template <std::size_t N> bool Read(std::array<int, N>& into) const
    {
        std::array<int, N> numbers {};
        return Take(ScanIntegers(value.ToUtf8(), numbers), numbers, into);
    }
    bool Read(double& into) const
    {
        std::array<double, 1> number {};
        bool const isRead = Read(number);
        into = isRead ? number[0] : into;
        return isRead;
    }
    /// A whole number of divisions. One that is less than least or more than an object can have is a fault of the line.
    bool ReadDivisions(int least, int most, int& into) const;
    /// "name" and the text.
    void Note(CString const& text) const { file.AddNote(CString(u'"') + name + CString("\" ") + text); }

private:
    template <typename Numbers> bool Take(std::size_t count, Numbers const& numbers, Numbers& into) const
    {
        if (count < numbers.size()) {
            CString text;
            text.Format("needs %u numbers", numbers.size());
            Note(numbers.size() == 1 ? CString("needs a number") : text);
            return false;
        }
        into = numbers;
        return true;
    }
};

} // namespace ombrel
