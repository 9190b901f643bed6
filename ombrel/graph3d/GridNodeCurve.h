#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/graph3d/3DRowColCurve.h"
#include "ombrel/graph3d/3DRowColCurveMesh.h"
#include "ombrel/platform/framework/Export.h"

#include <cstdint>

namespace ombrel {

/// The base of the curves that draw a grid's nodes themselves, as bars, lines or a net, rather than the cells between
/// them: such a grid may be a single row or column.
///
/// Errors: those of C3DRowColCurve.
class OMBREL_EXPORT GridNodeCurve : public C3DRowColCurve {
public:
    explicit GridNodeCurve(CPlot* plot = nullptr, int useGraphColour = 0);

    /// The nodes as last evaluated; owned by the curve.
    C3DRowColCurveMesh const& GetNodes() const { return *m_nodes; }
    int Evaluate() override;
    /// Applies the curve's transforms to the nodes.
    void TranslateRotate() override;
    /// Ranges of the nodes in data units; unchanged while there are none.
    void GetXRange(double& min, double& max) const override { GetNodeRange(0, min, max); }
    void GetYRange(double& min, double& max) const override { GetNodeRange(1, min, max); }
    void GetZRange(double& min, double& max) const override { GetNodeRange(2, min, max); }

    // The parameters and values of all nodes at once, as arrays of doubles

    /// The x of the columns: at least one value, ascending or descending in equal steps. Grid and table become as many
    /// columns, which stand there. Anything else throws COleDispatchException* (newly allocated) and changes nothing.
    void SetXValsH(VARIANT const& values);
    /// The same with the y of the rows.
    void SetYValsH(VARIANT const& values);
    /// As SetTableData, and the grid takes its numbers of rows and columns from the array; its ends stay. The curve's
    /// data source becomes a table.
    void SetZValsH(VARIANT const& values);
    /// Empty when the grid has more columns than would be drawn.
    VARIANT GetXValsH() const;
    VARIANT GetYValsH() const;
    /// The nodes' z as last evaluated, element (row, column); kGap where it is missing.
    VARIANT GetZValsH() const;

protected:
    GridLimits GetGridLimits() const override { return { 0, 1 << 20 }; }
    /// Goes up with each evaluation.
    std::uint64_t GetRevision() const { return m_revision; }
    CVertex GetNode(int i, int j) const { return { m_nodes->GetX(i, j), m_nodes->GetY(i, j), m_nodes->GetZ(i, j) }; }
    void GetNodeRange(int coordinate, double& min, double& max) const;

private:
    C3DRowColCurveMesh* m_nodes;
    std::uint64_t m_revision = 0;
};

} // namespace ombrel
