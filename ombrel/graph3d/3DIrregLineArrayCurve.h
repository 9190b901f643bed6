#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph3d/3DLineData.h"
#include "ombrel/graph3d/SeriesCurve.h"

#include <array>

namespace ombrel {

/// Scattered points as series: in the order in which they are given, those with the same x, or in the other row mode
/// the same y, are one line.
///
/// The curve needs a data source that is no formula.
/// Documents: the fields of C3DCurve; the points; then the same as C3DLineArrayCurve after its grid.
/// Errors: Serialize throws CArchiveException* (newly allocated), Evaluate std::bad_alloc.
class OMBREL_EXPORT C3DIrregLineArrayCurve : public SeriesCurve<C3DCurve> {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DIrregLineArrayCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    void Serialize(CArchive& ar) override;

    /// Copies as many points as the shortest of the arrays has; spare room at their ends does not count.
    void SetPoints(CDoubleArray const& x, CDoubleArray const& y, CDoubleArray const& z);
    /// Owned by the curve. A change through it raises no flag.
    C3DLineData& GetPoints() { return m_points; }
    /// Takes the points into space, cuts them into lines, and ranges them.
    int Evaluate() override;
    /// Counts the points of the lines, which end wherever the next point has another x (or y).
    void BuildStackCounts();
    /// How many points each line has, as last built.
    std::vector<int> const& GetStackCounts() const { return m_counts; }
    int GetDataSize() const override { return m_points.GetNumPoints() * static_cast<int>(3 * sizeof(double)); }
    /// Ranges of the points as evaluated, in data units; unchanged without any.
    void GetXRange(double& min, double& max) const override { GetRange(0, min, max); }
    void GetYRange(double& min, double& max) const override { GetRange(1, min, max); }
    void GetZRange(double& min, double& max) const override { GetRange(2, min, max); }
    COLORREF GetLUTColour(double value) const override { return GetColourInRange(value); }
    /// A point as evaluated, in box units.
    void GetNormalisedVertex(int i, CVertex& vertex) const;

    void SetRowMode(int mode) override;
    int GetNumSubcurves() const override { return static_cast<int>(m_counts.size()); }
    void GetSubcurve(int k, std::vector<CVertex>& points) const override;

protected:
    std::uint64_t GetDataRevision() const override { return m_revision; }

private:
    void GetRange(std::size_t coordinate, double& min, double& max) const;

    C3DLineData m_points;
    /// By coordinate system and transforms, data units; gaps where a point is missing.
    std::vector<CVertex> m_places;
    std::array<double, 3> m_min {};
    std::array<double, 3> m_max {};
    bool m_hasRange = false;
    std::vector<int> m_counts;
    /// Where in the points the lines begin.
    std::vector<std::size_t> m_starts;
    std::uint64_t m_revision = 0;
};

} // namespace ombrel
