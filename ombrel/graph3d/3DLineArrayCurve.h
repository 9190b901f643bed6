#pragma once
#include "ombrel/graph3d/SeriesCurve.h"

namespace ombrel {

/// The rows or columns of a grid as lines, each over a stack that reaches to the baseline. Line k has the x of column
/// k, or where the row mode is not 0 the y of row k.
///
/// Errors: those of C3DRowColCurve.
class OMBREL_EXPORT C3DLineArrayCurve : public SeriesCurve<GridNodeCurve> {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DLineArrayCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    void Serialize(CArchive& ar) override;

    int GetNumSubcurves() const override;
    void GetSubcurve(int k, std::vector<CVertex>& points) const override;

protected:
    std::uint64_t GetDataRevision() const override { return GetRevision(); }
};

} // namespace ombrel
