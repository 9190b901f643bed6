#pragma once
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/String.h"
#include "ombrel/platform/framework/Types.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace ombrel {

class C3DObjectFile;

/// The fields of a line of a mesh file, one after the other; white space lies between them. Behind the line must stand
/// a character that is no part of a number, as in a file's text.
class MeshFields {
public:
    explicit MeshFields(std::string_view line)
        : m_next(line.data())
        , m_end(line.data() + line.size())
    {
        SkipBlanks();
    }
    bool IsAtEnd() const { return m_next == m_end; }
    std::size_t Count() const;
    /// The next field as a node number. Throws the file's CVFileException* when there is none, or it is no whole
    /// number of 32 bits.
    DWORD TakeNumber(C3DObjectFile const& file);
    /// As a coordinate, which must be a finite number; what the value was when there is no field left.
    void TakeCoordinate(C3DObjectFile const& file, double& value);
    /// As a value: kGap for a field that is no number. What the value was when there is no field left.
    void TakeValue(double& value);

private:
    void SkipBlanks()
    {
        while (m_next != m_end && IsBlank(*m_next))
            ++m_next;
    }
    static bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
    std::string_view GetField() const;
    bool TakeDouble(double& value);

    char const* m_next;
    char const* m_end;
};

/// Reads the line with the count of a block and checks that as many lines can follow, and that valuesEach values for
/// each take no more memory than a file of this size may ask for.
int ReadMeshCount(C3DObjectFile& file, char const* what, std::size_t valuesEach);
/// The next line of the block. Throws when the file ends before.
std::string_view ReadMeshLine(C3DObjectFile& file, char const* what, int index, int count);
/// Names at white space.
void SplitNames(CString const& text, CStringArray& names);

} // namespace ombrel
