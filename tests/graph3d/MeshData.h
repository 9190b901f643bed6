#pragma once
#include "ombrel/graph3d/3DMeshCurve.h"

#include <functional>
#include <memory>
#include <vector>

namespace ombrel::test {

/// A block of nx × ny × nz bricks of side 1 from the origin on, its nodes numbered from 1, x fastest.
struct BrickBlock {
    int nx;
    int ny;
    int nz;

    int NumNodes() const { return (nx + 1) * (ny + 1) * (nz + 1); }
    DWORD Node(int i, int j, int k) const { return static_cast<DWORD>((k * (ny + 1) + j) * (nx + 1) + i + 1); }
    CDWordArray Indices() const
    {
        CDWordArray indices;
        for (int k = 0; k < nz; ++k) {
            for (int j = 0; j < ny; ++j) {
                for (int i = 0; i < nx; ++i) {
                    for (int const dk : { 0, 1 }) {
                        for (auto const& [di, dj] : { std::pair(0, 0), { 1, 0 }, { 1, 1 }, { 0, 1 } })
                            indices.Add(Node(i + di, j + dj, k + dk));
                    }
                }
            }
        }
        return indices;
    }
};

/// Adds a node set of these places, and one value a node if there are any.
inline CMeshNodeSet* AddNodes(
    C3DMeshCurve& curve, std::vector<std::array<double, 3>> const& places, std::vector<double> const& values = {})
{
    auto nodes = std::make_unique<CMeshNodeSet>();
    nodes->SetTitle("nodes");
    auto const n = static_cast<int>(places.size());
    nodes->GetPoints()->Initialise(3, n, 1);
    nodes->GetNodeData()->Initialise(values.empty() ? 0 : 1, n, 1);
    nodes->SetVariableCount(values.empty() ? 0 : 1);
    for (int i = 0; i < n; ++i) {
        for (int k = 0; k < 3; ++k)
            nodes->GetPoints()->SetAt(k, i, places[static_cast<std::size_t>(i)][static_cast<std::size_t>(k)]);
        if (!values.empty())
            nodes->GetNodeData()->SetAt(0, i, values[static_cast<std::size_t>(i)]);
    }
    return curve.AddNodeSet(std::move(nodes));
}

inline CMeshPatch* AddElements(C3DMeshCurve& curve, MeshElementType type, CDWordArray const& indices)
{
    auto patch = std::make_unique<CMeshPatch>();
    patch->SetElementType(type);
    patch->SetIndices(indices);
    patch->SetNodeSet(curve.GetNodeSets()[0]);
    return curve.AddPatch(std::move(patch));
}

/// Adds the block, with valueOf(x, y, z) as the nodes' value.
inline CMeshPatch* AddBricks(C3DMeshCurve& curve, BrickBlock const& block,
    std::function<double(double x, double y, double z)> const& valueOf = {})
{
    std::vector<std::array<double, 3>> places;
    std::vector<double> values;
    for (int k = 0; k <= block.nz; ++k) {
        for (int j = 0; j <= block.ny; ++j) {
            for (int i = 0; i <= block.nx; ++i) {
                places.push_back({ 1.0 * i, 1.0 * j, 1.0 * k });
                if (valueOf)
                    values.push_back(valueOf(i, j, k));
            }
        }
    }
    AddNodes(curve, places, values);
    return AddElements(curve, etBrick, block.Indices());
}

inline int CountFaces(CMeshPatch const& patch)
{
    int count = 0;
    for (BYTE const flag : *patch.GetFaceFlags())
        count += flag != 0;
    return count;
}

} // namespace ombrel::test
