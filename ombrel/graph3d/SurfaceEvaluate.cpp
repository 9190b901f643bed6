#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/geometry/GridCoordinates.h"
#include "ombrel/graph3d/render/SurfaceRenderer.h"

#include <utility>

namespace ombrel {

int CSurface::Evaluate()
{
    SetValid(GetDataSourceType() == dsFormula ? 0 : EvaluateTableCurve());
    return IsValid();
}

int CSurface::EvaluateTableCurve()
{
    // The finder looks at the nodes that are about to change.
    m_contourFinder.reset();
    ++m_revision;
    if (GetCurveType() == ctParametric || !FillMesh({ GetCurveType(), m_useRadialGrid != 0 })) {
        m_surfaceMesh->Clear();
        m_surfaceMesh->ComputeRanges();
        return 0;
    }
    return EvaluateCurve();
}

int CSurface::EvaluateCurve()
{
    CSurfaceMesh& mesh = *m_surfaceMesh;
    mesh.UpdateGraphParameters();
    mesh.ComputeRanges();
    m_untransformedZ = { mesh.GetZMin(), mesh.GetZMax() };
    m_untransformedR = { mesh.GetRMin(), mesh.GetRMax() };
    if (!mesh.HasRange())
        return 0;
    BuildUntransformedFVals();
    InterpolateValues();
    BuildContours();
    mesh.UpdateWireframeColours();
    if (GetNumTransforms() != 0) {
        TranslateRotate();
        mesh.ComputeRanges();
    }
    m_renderer->SetTextureDirty(m_texture.use != 0);
    return mesh.HasRange() ? 1 : 0;
}

void CSurface::TranslateRotate()
{
    m_surfaceMesh->ChangeNodes([this](double& x, double& y, double& z) { Transform(&x, &y, &z); });
}

void CSurface::BuildUntransformedFVals()
{
    m_functionValues.clear();
    CSurfaceMesh const& mesh = *m_surfaceMesh;
    // Without transforms, a Cartesian surface's values are the nodes' z.
    if (!HasRadius() && GetNumTransforms() == 0)
        return;
    m_functionValues = mesh.GetZVals();
    if (!HasRadius())
        return;
    for (int j = 0; j <= mesh.GetNumRows(); ++j) {
        for (int i = 0; i <= mesh.GetNumCols(); ++i) {
            double& value = m_functionValues[mesh.GetIndex(i, j)];
            if (!IsGridGap(value))
                value = mesh.GetRadius(mesh.GetX(i, j), mesh.GetY(i, j), value);
        }
    }
}

void CSurface::InterpolateValues()
{
    std::vector<double> values;
    if (PlotSecondaryVariable()) {
        CSurfaceMesh const& mesh = *m_surfaceMesh;
        ValueTableSettings const& place = m_valueTableSettings;
        int const rows = m_valueTable.GetNumRows() - 1;
        int const cols = m_valueTable.GetNumCols() - 1;
        values.reserve(mesh.GetZVals().size());
        for (int j = 0; j <= mesh.GetNumRows(); ++j) {
            double const y = (mesh.GetMeshY(j) - place.yMin) / place.yStep;
            for (int i = 0; i <= mesh.GetNumCols(); ++i) {
                double const x = (mesh.GetMeshX(i) - place.xMin) / place.xStep;
                values.push_back(CMesh::InterpolateOn(std::as_const(m_valueTable).GetRow(0), rows, cols, x, y));
            }
        }
    }
    m_surfaceMesh->SetValues(std::move(values));
}

std::vector<double> const& CSurface::ColourValues() const
{
    if (!m_surfaceMesh->GetValues().empty())
        return m_surfaceMesh->GetValues();
    return m_functionValues.empty() ? m_surfaceMesh->GetZVals() : m_functionValues;
}

double CSurface::GetFVal(int i, int j) const
{
    std::size_t const n = m_surfaceMesh->GetIndex(i, j);
    return m_functionValues.empty() ? m_surfaceMesh->GetZVals()[n] : m_functionValues[n];
}

void CSurface::GetXRange(double& min, double& max) const
{
    if (!m_surfaceMesh->HasRange())
        return;
    min = m_surfaceMesh->GetxMin();
    max = m_surfaceMesh->GetxMax();
}

void CSurface::GetYRange(double& min, double& max) const
{
    if (!m_surfaceMesh->HasRange())
        return;
    min = m_surfaceMesh->GetyMin();
    max = m_surfaceMesh->GetyMax();
}

void CSurface::GetZRange(double& min, double& max) const
{
    if (!m_surfaceMesh->HasRange())
        return;
    min = m_surfaceMesh->GetZMin();
    max = m_surfaceMesh->GetZMax();
}

void CSurface::GetRRange(double& min, double& max) const
{
    if (!m_surfaceMesh->HasRange())
        return;
    min = m_surfaceMesh->GetRMin();
    max = m_surfaceMesh->GetRMax();
}

void CSurface::GetUntransformedDataRange(double& min, double& max) const
{
    if (!m_surfaceMesh->GetValues().empty()) {
        min = m_surfaceMesh->GetValMin();
        max = m_surfaceMesh->GetValMax();
        return;
    }
    Range const& range = HasRadius() ? m_untransformedR : m_untransformedZ;
    min = range.min;
    max = range.max;
}

CVertex CSurface::GetCartesian(double x, double y, double v) const
{
    auto [px, py, pz] = GridCoordinates(GetCurveType(), m_useRadialGrid != 0).At(x, y, v);
    Transform(&px, &py, &pz);
    return { px, py, pz };
}

} // namespace ombrel
