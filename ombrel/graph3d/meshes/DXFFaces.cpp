#include "ombrel/graph3d/meshes/DXFFaces.h"
#include "ombrel/graph3d/3DObjectFile.h"
#include "ombrel/graph3d/MeshNodeSet.h"
#include "ombrel/graph3d/MeshPatch.h"
#include "ombrel/platform/framework/Number.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

namespace ombrel {
namespace {

std::string_view Trimmed(std::string_view text)
{
    auto const isBlank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// A group code and its value, trimmed.
struct Pair {
    int code = 0;
    std::string_view value;
};

std::optional<int> ParseCode(std::string_view line)
{
    line = Trimmed(line);
    std::size_t used = 0;
    auto const code = ScanInteger(line, &used);
    return used == line.size() ? code : std::nullopt;
}

class FaceReader {
public:
    explicit FaceReader(C3DObjectFile& file)
        : m_file(file)
    {
    }
    DXFFaces Read()
    {
        bool isThere = Next();
        while (isThere) {
            if (m_pair.code == 0 && m_pair.value == "3DFACE")
                isThere = ReadFace();
            else
                isThere = Next();
        }
        if (m_faces.numCorners.empty())
            m_file.Fail("The drawing has no 3DFACE", "at least one entity 3DFACE in a DXF file as text", {});
        return std::move(m_faces);
    }

private:
    /// The next pair; false at the end.
    bool Next()
    {
        std::string_view line;
        std::optional<int> code;
        while (!code) {
            if (!m_file.ReadLine(line))
                return false;
            code = ParseCode(line);
        }
        m_pair.code = *code;
        if (!m_file.ReadLine(line))
            return false;
        m_pair.value = Trimmed(line);
        return true;
    }
    /// Up to the next entity; false at the end.
    bool ReadFace()
    {
        m_isThere = {};
        m_corners = {};
        bool isThere = Next();
        for (; isThere && m_pair.code != 0; isThere = Next()) {
            int const corner = m_pair.code % 10;
            int const axis = m_pair.code / 10 - 1;
            if (axis >= 0 && axis < 3 && corner < 4)
                SetCoordinate(static_cast<std::size_t>(corner), static_cast<std::size_t>(axis));
        }
        AddFace();
        return isThere;
    }
    void SetCoordinate(std::size_t corner, std::size_t axis)
    {
        double value = 0.0;
        std::string_view const text = m_pair.value;
        char const* const end = ScanDecimal(text.data(), value);
        if (text.empty() || end != text.data() + text.size()) {
            auto const number = ParseNumber(text);
            if (!number || !std::isfinite(*number)) {
                CString found("\"");
                found += CString(text.substr(0, 40));
                found += CString("\"");
                m_file.Fail("A coordinate cannot be read", "a number", found);
            }
            value = *number;
        }
        m_corners[corner][axis] = value;
        m_isThere[corner] = true;
    }
    void AddFace()
    {
        if (!m_isThere[0] || !m_isThere[1] || !m_isThere[2])
            return;
        bool const isTriangle = !m_isThere[3] || m_corners[3] == m_corners[0] || m_corners[3] == m_corners[2];
        std::size_t const n = isTriangle ? 3 : 4;
        for (std::size_t c = 0; c < n; ++c) {
            m_faces.x.push_back(m_corners[c][0]);
            m_faces.y.push_back(m_corners[c][1]);
            m_faces.z.push_back(m_corners[c][2]);
        }
        m_faces.numCorners.push_back(static_cast<BYTE>(n));
    }

    C3DObjectFile& m_file;
    Pair m_pair;
    std::array<std::array<double, 3>, 4> m_corners {};
    std::array<bool, 4> m_isThere {};
    DXFFaces m_faces;
};

} // namespace

DXFFaces ReadDXFFaces(C3DObjectFile& file) { return FaceReader(file).Read(); }

void TakeFaces(DXFFaces&& faces, CMeshNodeSet& nodes, CMeshPatch& patch)
{
    nodes.GetPoints()->Initialise(3, static_cast<int>(faces.x.size()), 0);
    int row = 0;
    for (std::vector<double>* const axis : { &faces.x, &faces.y, &faces.z }) {
        std::copy(axis->begin(), axis->end(), nodes.GetPoints()->GetRow(row++));
        std::vector<double>().swap(*axis);
    }
    patch.SetElementType(etPolygon);
    patch.RemovePolygons();
    std::array<DWORD, 4> numbers { 1, 2, 3, 4 };
    for (BYTE const n : faces.numCorners) {
        patch.AddPolygon(std::span(numbers).first(n));
        for (DWORD& number : numbers)
            number += n;
    }
}

} // namespace ombrel
