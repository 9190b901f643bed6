#pragma once
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/Bar3DSettings.h"
#include "ombrel/model/TableData.h"
#include "ombrel/platform/framework/Export.h"

#include <array>
#include <memory>
#include <vector>

namespace ombrel {

/// A bar at each of scattered points, from a baseline to the point; a point with a missing coordinate has none.
///
/// The curve needs a data source that is no formula. Row colours count the different x of the points (colour
/// description 2), or their different y (3), from the smallest.
/// Documents: the fields of C3DCurve; int 1; the point table; doubles width factor x, width factor y, baseline; int
/// automatic baseline.
/// Errors: Serialize throws CArchiveException*, SetTableData CInvalidArgException* (both newly allocated), Evaluate
/// std::bad_alloc.
class OMBREL_EXPORT C3DIrregBarCurve : public BarAccessors<C3DCurve> {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DIrregBarCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    ~C3DIrregBarCurve() override;
    void Serialize(CArchive& ar) override;

    /// Copies n values of each of the arrays x, y and z. Throws when one is not there or has fewer; a count below 1
    /// takes the points away.
    void SetTableData(CDoubleArray** xyz, int n);
    /// Three rows x, y and z with a column a point; owned by the curve. A change through it raises no flag.
    CTableData* GetTableData() { return &m_points; }
    int Evaluate() override;
    int GetDataSize() const override { return static_cast<int>(m_points.GetDataSize()); }
    /// The axes reach half a bar's cell beyond the outer points; unchanged without points.
    void GetXRange(double& min, double& max) const override { GetFootprintRange(0, min, max); }
    void GetYRange(double& min, double& max) const override { GetFootprintRange(1, min, max); }
    void GetZRange(double& min, double& max) const override;
    COLORREF GetLUTColour(double value) const override { return GetColourInRange(value); }
    /// Three quarters of a cell along x and y, as fractions of the data box's sides; before the width factors. Points
    /// that fill at least half of a grid have the smallest distance of its columns, and of its rows, as their cell;
    /// others a third of what n points would have on a square grid.
    void GetViewDefaultBarWidths(double& x, double& y) const;
    /// A point as evaluated, in box units.
    void GetNormalisedVertex(int i, CVertex& vertex) const;
    /// The colour of the bar of point i.
    COLORREF GetBarColour(int i) const;

    void Render() override;
    void InvalidateDeviceObjects() override;

private:
    struct Drawing;
    struct Columns;
    CVertex GetPlace(int i) const;
    void GetFootprintRange(std::size_t coordinate, double& min, double& max) const;

    CTableData m_points;
    /// By coordinate system and transforms, data units.
    CTableData m_places;
    std::array<double, 3> m_min {};
    std::array<double, 3> m_max {};
    std::array<double, 2> m_cells { 1.0, 1.0 };
    std::uint64_t m_revision = 0;
    std::unique_ptr<Columns> m_columns;
    std::unique_ptr<Drawing> m_drawing;
};

} // namespace ombrel
