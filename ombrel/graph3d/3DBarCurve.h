#pragma once
#include "ombrel/graph3d/Bar3DSettings.h"
#include "ombrel/graph3d/GridNodeCurve.h"
#include "ombrel/platform/framework/Export.h"

#include <memory>

namespace ombrel {

/// A bar at each node of a grid, from a baseline to the node's value; a missing value has none.
///
/// The axes reach half a cell beyond the outer nodes, so that bars stay whole.
/// Errors: those of C3DRowColCurve.
class OMBREL_EXPORT C3DBarCurve : public BarAccessors<GridNodeCurve> {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DBarCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    ~C3DBarCurve() override;
    void Serialize(CArchive& ar) override;

    void GetXRange(double& min, double& max) const override;
    void GetYRange(double& min, double& max) const override;
    /// Three quarters of a cell along x and y, as fractions of the data box's sides; before the width factors.
    void GetDefaultBarWidths(double& x, double& y) const;
    /// The colour of the bar in column i and row j.
    COLORREF GetBarColour(int i, int j) const;

    void Render() override;
    void InvalidateDeviceObjects() override;

protected:
    GridLimits GetGridLimits() const override { return { 0, 1 << 18 }; }

private:
    struct Drawing;
    /// The distance of columns (0) or of rows (1), in data units. A single one has a cell as long as the table's step.
    double GetCell(int coordinate) const;
    void GetFootprintRange(int coordinate, double& min, double& max) const;

    std::unique_ptr<Drawing> m_drawing;
};

} // namespace ombrel
