#include "ombrel/graph3d/MeshPatch.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/MeshNodeSet.h"
#include "ombrel/graph3d/meshes/MeshElements.h"
#include "ombrel/graph3d/meshes/ValueRange.h"

#include <cmath>
#include <utility>

namespace ombrel {

constinit CRuntimeClass const CMeshPatch::kClass = PersistentClass<CMeshPatch, CObject>("CMeshPatch");

CMeshPatch::CMeshPatch(C3DMeshCurve* curve)
    : m_meshCurve(curve)
{
}

CMeshPatch::~CMeshPatch() = default;

void CMeshPatch::SetNodeSet(CMeshNodeSet* nodes)
{
    m_nodeSet = nodes;
    m_nodeSetName = nodes ? nodes->GetTitle() : CString();
    Changed();
}

void CMeshPatch::SetMeshCurve(C3DMeshCurve* curve)
{
    m_meshCurve = curve;
    m_nodeSet = curve ? curve->GetNodeSetByName(m_nodeSetName) : nullptr;
    Changed();
}

// --- Elements

void CMeshPatch::Changed() { m_elements.reset(); }

void CMeshPatch::SetIndices(CDWordArray indices)
{
    m_indices = std::move(indices);
    ElementShape const* const shape = GetElementShape(m_elementType);
    m_elementCount = shape ? m_indices.GetSize() / static_cast<int>(shape->numNodes) : 0;
    Changed();
}

std::span<DWORD const> CMeshPatch::GetPolygon(int i) const
{
    std::size_t const at = CheckedIndex(i, m_polygonStarts.size() - 1);
    return { m_polygonNodes.data() + m_polygonStarts[at], m_polygonNodes.data() + m_polygonStarts[at + 1] };
}

void CMeshPatch::AddPolygon(std::span<DWORD const> nodes)
{
    m_polygonNodes.insert(m_polygonNodes.end(), nodes.begin(), nodes.end());
    m_polygonStarts.push_back(static_cast<std::uint32_t>(m_polygonNodes.size()));
    m_elementCount = GetNumPolygons();
    Changed();
}

void CMeshPatch::RemovePolygons()
{
    m_polygonNodes.clear();
    m_polygonStarts = { 0 };
    m_elementCount = 0;
    Changed();
}

MeshElements const& CMeshPatch::Elements() const
{
    std::size_t const numNodes = m_nodeSet ? static_cast<std::size_t>(m_nodeSet->GetNumNodes()) : 0;
    if (m_elements && m_elements->numNodes == numNodes)
        return *m_elements;
    m_elements = std::make_unique<MeshElements>();
    MeshElements& elements = *m_elements;
    elements.shape = GetElementShape(m_elementType);
    elements.numNodes = numNodes;
    if (!m_nodeSet || (!elements.shape && m_elementType != etPolygon))
        return elements;
    std::span<DWORD const> numbers = m_polygonNodes;
    if (elements.shape) {
        // Documents may count more elements than they hold.
        elements.count = std::min(static_cast<std::size_t>(std::max(m_elementCount, 0)),
            static_cast<std::size_t>(m_indices.GetSize()) / elements.shape->numNodes);
        numbers = { m_indices.GetData(), elements.count * elements.shape->numNodes };
    } else {
        elements.count = static_cast<std::size_t>(GetNumPolygons());
        elements.starts = m_polygonStarts;
    }
    NodePlaces const places = GetNodePlaces(*m_nodeSet->GetPoints());
    std::vector<BYTE> isFinite(places.GetSize());
    for (std::size_t i = 0; i < isFinite.size(); ++i)
        isFinite[i] = std::isfinite(places.x[i]) && std::isfinite(places.y[i]) && std::isfinite(places.z[i]);
    elements.columns.resize(numbers.size());
    auto const resolve = [&](std::size_t first, std::size_t end) {
        bool isWhole = true;
        for (std::size_t i = first; i < end; ++i) {
            int const column = m_nodeSet->GetNodeIndex(numbers[i]);
            isWhole = isWhole && column >= 0 && isFinite[static_cast<std::size_t>(column)];
            elements.columns[i] = static_cast<std::uint32_t>(column);
        }
        if (!isWhole)
            elements.columns[first] = kNoColumn;
    };
    for (std::size_t e = 0; e < elements.count; ++e) {
        if (elements.shape)
            resolve(e * elements.shape->numNodes, (e + 1) * elements.shape->numNodes);
        else
            resolve(elements.starts[e], elements.starts[e + 1]);
    }
    return elements;
}

NodePlaces CMeshPatch::WorldPlaces() const
{
    if (!m_nodeSet)
        return {};
    NodePlaces places = GetNodePlaces(*m_nodeSet->GetPoints());
    if (!m_meshCurve || m_meshCurve->GetNumTransforms() == 0)
        return places;
    return TransformPlaces(places, [this](double& x, double& y, double& z) { m_meshCurve->Transform(&x, &y, &z); });
}

// --- Ranges

void CMeshPatch::UpdateDataRanges() { m_ranges = FindRowRanges(m_elementData); }

void CMeshPatch::GetDataRange(int variable, double& min, double& max) const
{
    if (variable < 0 || static_cast<std::size_t>(variable) >= m_ranges.size())
        return;
    auto const& [low, high] = m_ranges[static_cast<std::size_t>(variable)];
    if (low > high)
        return;
    min = low;
    max = high;
}

void CMeshPatch::GetRanges(CVertex& min, CVertex& max, double& lo, double& hi) const
{
    FindRanges(WorldPlaces(), min, max, lo, hi);
}

void CMeshPatch::FindRanges(NodePlaces const& world, CVertex& min, CVertex& max, double& lo, double& hi) const
{
    MeshElements const& elements = Elements();
    std::vector<BYTE> isUsed(world.GetSize());
    for (std::size_t e = 0; e < elements.count; ++e) {
        for (std::uint32_t const column : elements.NodesOf(e))
            isUsed[column] = 1;
    }
    std::array<ValueRange, 4> ranges { kNoRange, kNoRange, kNoRange, kNoRange };
    double const* const z = m_nodeSet ? std::as_const(*m_nodeSet).GetPoints()->GetRow(2) : nullptr;
    for (std::size_t i = 0; i < isUsed.size(); ++i) {
        if (!isUsed[i])
            continue;
        Widen(ranges[0], world.x[i]);
        Widen(ranges[1], world.y[i]);
        Widen(ranges[2], world.z[i]);
        Widen(ranges[3], z[i]);
    }
    if (ranges[3][0] > ranges[3][1])
        return;
    min = { ranges[0][0], ranges[1][0], ranges[2][0] };
    max = { ranges[0][1], ranges[1][1], ranges[2][1] };
    lo = ranges[3][0];
    hi = ranges[3][1];
}

// --- Clipping and inner faces

void CMeshPatch::GetClipRanges(double& xMin, double& xMax, double& yMin, double& yMax, double& zMin, double& zMax) const
{
    xMin = m_clipRanges[0];
    xMax = m_clipRanges[1];
    yMin = m_clipRanges[2];
    yMax = m_clipRanges[3];
    zMin = m_clipRanges[4];
    zMax = m_clipRanges[5];
}

void CMeshPatch::SetClipRanges(double xMin, double xMax, double yMin, double yMax, double zMin, double zMax)
{
    m_clipRanges = { xMin, xMax, yMin, yMax, zMin, zMax };
}

std::vector<BYTE> CMeshPatch::FindClipped() const
{
    MeshElements const& elements = Elements();
    if (!m_clip || !elements.shape || !elements.shape->IsSolid())
        return {};
    NodePlaces const world = WorldPlaces();
    std::vector<BYTE> isOutside(world.GetSize());
    auto const isBeyond
        = [this](double v, std::size_t axis) { return v < m_clipRanges[2 * axis] || v > m_clipRanges[2 * axis + 1]; };
    for (std::size_t i = 0; i < isOutside.size(); ++i)
        isOutside[i] = isBeyond(world.x[i], 0) || isBeyond(world.y[i], 1) || isBeyond(world.z[i], 2);
    std::vector<BYTE> isClipped(elements.count);
    for (std::size_t e = 0; e < elements.count; ++e) {
        for (std::uint32_t const column : elements.NodesOf(e))
            isClipped[e] |= isOutside[column];
    }
    return isClipped;
}

void CMeshPatch::UpdateFaceFlags()
{
    m_faceFlags.RemoveAll();
    Changed();
    MeshElements const& elements = Elements();
    if (elements.shape && elements.shape->IsSolid())
        m_faceFlags.Values() = FindOuterFaces(elements, FindClipped());
}

} // namespace ombrel
