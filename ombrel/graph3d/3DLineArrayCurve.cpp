#include "ombrel/graph3d/3DLineArrayCurve.h"

namespace ombrel {

constinit CRuntimeClass const C3DLineArrayCurve::kClass
    = PersistentClass<C3DLineArrayCurve, C3DRowColCurve>("C3DLineArrayCurve");

C3DLineArrayCurve::C3DLineArrayCurve(CPlot* plot, int useGraphColour)
    : SeriesCurve<GridNodeCurve>(plot, useGraphColour)
{
    SetTitle("Series");
    SetItemType(it3DLineArrayCurve);
    SetNumRows(9);
    SetNumCols(9);
    ResetModifiedFlags();
}

void C3DLineArrayCurve::Serialize(CArchive& ar)
{
    C3DRowColCurve::Serialize(ar);
    ArchiveFields f(ar);
    m_series.Serialize(f, GetColourDescription());
}

int C3DLineArrayCurve::GetNumSubcurves() const
{
    C3DRowColCurveMesh const& nodes = GetNodes();
    if (!nodes.HasNodes())
        return 0;
    return 1 + (GetRowMode() == 0 ? nodes.GetNumCols() : nodes.GetNumRows());
}

void C3DLineArrayCurve::GetSubcurve(int k, std::vector<CVertex>& points) const
{
    C3DRowColCurveMesh const& nodes = GetNodes();
    points.clear();
    if (GetRowMode() == 0) {
        for (int j = 0; j <= nodes.GetNumRows(); ++j)
            points.push_back(GetNode(k, j));
    } else {
        for (int i = 0; i <= nodes.GetNumCols(); ++i)
            points.push_back(GetNode(i, k));
    }
}

} // namespace ombrel
