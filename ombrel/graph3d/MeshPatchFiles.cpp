#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObjectFile.h"
#include "ombrel/graph3d/MeshNodeSet.h"
#include "ombrel/graph3d/MeshPatch.h"
#include "ombrel/graph3d/meshes/MeshElements.h"
#include "ombrel/graph3d/meshes/MeshText.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>

namespace ombrel {

// --- Files

void CMeshPatch::Read(C3DObjectFile& file)
{
    CString name;
    CString value;
    while (file.ReadProperty(name, value))
        SetProperty(file, name, value);
    // One that names none has the node set without a title.
    if (m_meshCurve && !m_nodeSet)
        m_nodeSet = m_meshCurve->GetNodeSetByName(m_nodeSetName);
    if (m_meshCurve && !m_nodeSet)
        file.Fail("Patch does not reference a nodeset", "the title of a node set before it", m_nodeSetName);
    CheckElements(file);
}

void CMeshPatch::SetProperty(C3DObjectFile& file, CString const& name, CString const& value)
{
    constexpr char const* kTypes[] = { "triangle", "quad", "polygon", "block", "tetrahedron" };
    auto const isName = [&name](char const* wanted) { return name.CompareNoCase(wanted) == 0; };
    if (isName("element_type")) {
        for (int type = 0; type < 5; ++type) {
            if (value.CompareNoCase(kTypes[type]) == 0)
                m_elementType = static_cast<MeshElementType>(type);
        }
    } else if (isName("use_nodeset")) {
        m_nodeSetName = value;
        m_nodeSet = m_meshCurve ? m_meshCurve->GetNodeSetByName(value) : nullptr;
    } else if (isName("average_normals")) {
        m_averageNormals = 1;
    } else if (isName("elements")) {
        ReadElements(file);
    } else if (isName("element_colours") || isName("element_colors")) {
        ReadColours(file);
    }
}

void CMeshPatch::RefuseNode(C3DObjectFile const& file, DWORD number)
{
    CString found;
    found.Format("%u", number);
    file.Fail("An element has an unknown node", "the number of a node of its node set", found);
}

void CMeshPatch::ReadElements(C3DObjectFile& file)
{
    int const variables = std::max(m_variableCount, 0);
    int const count = ReadMeshCount(file, "elements", static_cast<std::size_t>(variables));
    RemovePolygons();
    m_indices.RemoveAll();
    m_checkedSet = m_nodeSet;
    m_elementData.Initialise(variables, count, 1);
    m_elementCount = count;
    ElementShape const* const shape = GetElementShape(m_elementType);
    if (!shape) {
        ReadPolygons(file, count);
        return;
    }
    auto const numNodes = static_cast<int>(shape->numNodes);
    m_indices.SetSize(count * numNodes);
    DWORD* numbers = m_indices.GetData();
    std::vector<double*> values;
    values.reserve(static_cast<std::size_t>(m_elementData.GetNumRows()));
    for (int v = 0; v < m_elementData.GetNumRows(); ++v)
        values.push_back(m_elementData.GetRow(v));
    for (int e = 0; e < count; ++e) {
        MeshFields fields(ReadMeshLine(file, "elements", e, count));
        for (int k = 0; k < numNodes; ++k, ++numbers) {
            *numbers = fields.TakeNumber(file);
            if (m_nodeSet && m_nodeSet->GetNodeIndex(*numbers) < 0)
                RefuseNode(file, *numbers);
        }
        for (double* const value : values)
            fields.TakeValue(value[e]);
    }
}

void CMeshPatch::ReadPolygons(C3DObjectFile& file, int count)
{
    auto const variables = static_cast<std::size_t>(m_elementData.GetNumRows());
    m_polygonStarts.reserve(static_cast<std::size_t>(count) + 1);
    for (int e = 0; e < count; ++e) {
        MeshFields fields(ReadMeshLine(file, "elements", e, count));
        std::size_t const numFields = fields.Count();
        if (numFields < variables + 1) {
            CString expected;
            expected.Format("node numbers and %u values", variables);
            CString found;
            found.Format("%u fields", numFields);
            file.Fail("A polygon has no nodes", expected, found);
        }
        for (std::size_t k = variables; k < numFields; ++k) {
            DWORD const number = fields.TakeNumber(file);
            if (m_nodeSet && m_nodeSet->GetNodeIndex(number) < 0)
                RefuseNode(file, number);
            m_polygonNodes.push_back(number);
        }
        m_polygonStarts.push_back(static_cast<std::uint32_t>(m_polygonNodes.size()));
        for (std::size_t v = 0; v < variables; ++v)
            fields.TakeValue(m_elementData.GetRow(static_cast<int>(v))[e]);
    }
}

void CMeshPatch::ReadColours(C3DObjectFile& file)
{
    int const count = ReadMeshCount(file, "colours", 0);
    m_colours.RemoveAll();
    m_colours.SetSize(count);
    for (DWORD& colour : m_colours) {
        std::array<DWORD, 3> channels {};
        MeshFields fields(ReadMeshLine(file, "colours", static_cast<int>(&colour - m_colours.GetData()), count));
        for (DWORD& channel : channels) {
            channel = fields.TakeNumber(file);
            if (channel > 255) {
                CString found;
                found.Format("%u", channel);
                file.Fail("An element colour cannot be used", "red, green and blue from 0 to 255", found);
            }
        }
        colour = channels[0] | channels[1] << 8 | channels[2] << 16;
    }
}

void CMeshPatch::CheckElements(C3DObjectFile const& file) const
{
    if (!m_colours.IsEmpty() && m_colours.GetSize() != m_elementCount) {
        CString expected;
        expected.Format("%d", m_elementCount);
        CString found;
        found.Format("%d", m_colours.GetSize());
        file.Fail("There must be a colour for each element", expected, found);
    }
    if (!m_nodeSet || m_nodeSet == m_checkedSet)
        return;
    auto const check = [&](DWORD number) {
        if (m_nodeSet->GetNodeIndex(number) < 0)
            RefuseNode(file, number);
    };
    std::for_each(m_indices.begin(), m_indices.end(), check);
    std::for_each(m_polygonNodes.begin(), m_polygonNodes.end(), check);
}

// --- Archive

void CMeshPatch::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.Int(m_elementType, m_elementCount, m_variableCount, m_averageNormals).String(m_nodeSetName);
    f.Nested(m_elementData).Raw(m_indices).Raw(m_faceFlags);
    SerializePolygons(f);
    SerializeElementLists(f);
    SerializeColours(f);
    if (version >= 2) {
        for (double& limit : m_clipRanges)
            f.Double(limit);
        f.Int(m_clip);
    }
    if (!ar.IsStoring())
        Changed();
}

void CMeshPatch::SerializePolygons(ArchiveFields& f)
{
    int count = GetNumPolygons();
    f.Int(count);
    CArchive& ar = f.GetArchive();
    if (ar.IsStoring()) {
        for (int i = 0; i < count; ++i) {
            std::span<DWORD const> const polygon = GetPolygon(i);
            ar.WriteCount(polygon.size());
            ar.Write(polygon.data(), polygon.size_bytes());
        }
        return;
    }
    m_polygonNodes.clear();
    m_polygonStarts = { 0 };
    ar.RequireRemaining(static_cast<std::uint64_t>(std::max(count, 0)), sizeof(WORD), "the polygons of a mesh");
    for (int i = 0; i < count; ++i) {
        std::size_t const size = ar.ReadCount(sizeof(DWORD));
        m_polygonNodes.resize(m_polygonNodes.size() + size);
        ar.Read(m_polygonNodes.data() + m_polygonStarts.back(), size * sizeof(DWORD));
        m_polygonStarts.push_back(static_cast<std::uint32_t>(m_polygonNodes.size()));
    }
}

// For each node the elements that use it, which follow from the elements and are made of them when stored. They are
// there when normals are averaged.
void CMeshPatch::SerializeElementLists(ArchiveFields& f) const
{
    CArchive& ar = f.GetArchive();
    if (ar.IsStoring()) {
        bool const hasLists = m_averageNormals != 0 && m_nodeSet;
        std::vector<std::vector<DWORD>> lists(hasLists ? static_cast<std::size_t>(m_nodeSet->GetNumNodes()) : 0);
        if (hasLists) {
            MeshElements const& elements = Elements();
            for (std::size_t e = 0; e < elements.count; ++e) {
                for (std::uint32_t const column : elements.NodesOf(e))
                    lists[column].push_back(static_cast<DWORD>(e));
            }
        }
        int count = static_cast<int>(lists.size());
        f.Int(count);
        for (std::vector<DWORD> const& list : lists) {
            ar.WriteCount(list.size());
            ar.Write(list.data(), list.size() * sizeof(DWORD));
        }
        return;
    }
    int count = 0;
    f.Int(count);
    for (int i = 0; i < count; ++i) {
        for (std::size_t n = ar.ReadCount(sizeof(DWORD)); n != 0; --n) {
            DWORD element = 0;
            f.Dword(element);
        }
    }
}

void CMeshPatch::SerializeColours(ArchiveFields& f)
{
    CArchive& ar = f.GetArchive();
    int hasColours = m_colours.IsEmpty() ? 0 : 1;
    f.Int(hasColours);
    if (hasColours != 1) {
        m_colours.RemoveAll();
        return;
    }
    auto const count = static_cast<std::size_t>(std::max(m_elementCount, 0));
    if (!ar.IsStoring())
        ar.RequireRemaining(count, sizeof(DWORD), "the colours of elements");
    // One an element, whatever a host has set.
    CDWordArray colours = m_colours;
    colours.SetSize(static_cast<int>(count));
    if (ar.IsStoring())
        ar.Write(colours.GetData(), count * sizeof(DWORD));
    else
        ar.Read(colours.GetData(), count * sizeof(DWORD));
    if (!ar.IsStoring())
        m_colours = colours;
}

} // namespace ombrel
