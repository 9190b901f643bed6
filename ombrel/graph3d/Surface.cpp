#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/render/SurfaceRenderer.h"

#include <algorithm>
#include <limits>

namespace ombrel {

constinit CRuntimeClass const CSurface::kClass = PersistentClass<CSurface, C3DRowColCurve>("CSurface");

namespace {

// What some files have in place of an elevation, beside the fill value.
constexpr std::int16_t kVoidElevation = -32767;

} // namespace

CSurface::CSurface(CPlot* plot, int useGraphColour)
    : C3DRowColCurve(plot, useGraphColour)
    , m_renderer(std::make_unique<SurfaceRenderer>())
{
    auto mesh = std::make_unique<CSurfaceMesh>(this);
    m_surfaceMesh = mesh.get();
    SetMesh(std::move(mesh));
    m_textureMap.SetScaler(&SurfaceRenderer::GetImageScaler());
    SetTitle("Surface");
    SetItemType(itSurface);
    SetColourDescription(0);
    SetGradationOn(1);
    SetModified(0);
}

CSurface::~CSurface() = default;

int CSurface::SetPathname(CString const& path)
{
    CString const ending = path.Right(4);
    if (ending.CompareNoCase(".dem") == 0)
        return SetPathnameDEM(path);
    if (ending.CompareNoCase(".tvl") == 0)
        return SetPathnameTavolin(path);
    return 0;
}

int CSurface::SetPathnameDEM(CString const& path)
{
    if (m_dem.SetPathname(path) == 0)
        return 0;
    int const rows = m_dem.GetNumRows();
    int const cols = m_dem.GetNumCols();
    CTableData table;
    table.Initialise(rows, cols, 0);
    std::span<std::int16_t const> const elevations = m_dem.GetElevations();
    // The file's first row is the northernmost, the table's the lowest y.
    for (int r = 0; r < rows; ++r) {
        auto const row = elevations.subspan(static_cast<std::size_t>(rows - 1 - r) * static_cast<std::size_t>(cols));
        double* const values = table.GetRow(r);
        for (std::size_t c = 0; c < static_cast<std::size_t>(cols); ++c)
            values[c] = row[c] == CUSGSDEM::kFillValue || row[c] == kVoidElevation ? kGap : row[c];
    }
    SetTableData(std::move(table));
    SetTablePlacement({ m_dem.GetXMin(), m_dem.GetYMin(), m_dem.GetXDel(), m_dem.GetYDel() });
    SetDataSourceType(dsTable);
    m_fileType = ftDEM;
    if (GetAlignMeshes())
        AlignMeshes();
    return 1;
}

int CSurface::SetPathnameTavolin(CString const& path)
{
    m_zValsFile.SetOwner(this);
    m_zValsFile.Read(path);
    SetPlotDataModified(1);
    SetDataSourceType(dsTable);
    if (GetAlignMeshes())
        AlignMeshes();
    return 1;
}

CString CSurface::GetPathname() const
{
    return m_fileType == ftZVals ? m_zValsFile.GetPathname() : m_dem.GetPathname();
}

void CSurface::PlaceZVals(double xMin, double yMin, double xStep, double yStep)
{
    SetTablePlacement({ xMin, yMin, xStep, yStep });
}

void CSurface::SetZValsCurveType(int curveType) { SetCurveType(static_cast<CurveType>(curveType)); }

void CSurface::SetScanTestHeader(CScanTestHeader const* header)
{
    m_scanTestHeader = header ? std::make_unique<CScanTestHeader>(*header) : nullptr;
    SetModified(1);
}

void CSurface::GetValueTableParams(double& xMin, double& yMin, double& xStep, double& yStep) const
{
    xMin = m_valueTableSettings.xMin;
    yMin = m_valueTableSettings.yMin;
    xStep = m_valueTableSettings.xStep;
    yStep = m_valueTableSettings.yStep;
}

void CSurface::SetValueTableParams(double xMin, double yMin, double xStep, double yStep)
{
    ChangeData(m_valueTableSettings, ValueTableSettings { m_valueTableSettings.use, xMin, yMin, xStep, yStep });
}

void CSurface::SetValueTable(CTableData const& table) { ChangeData(m_valueTable, table); }

int CSurface::SetContourColourmap(CString const& name)
{
    SetModified(1);
    return m_contourColourmap.Load(name);
}

int CSurface::SetWireframeColourmap(CString const& name)
{
    SetModified(1);
    return m_wireframeColourmap.Load(name);
}

COLORREF CSurface::GetWireframeColour() const { return m_wireframe.colour.ToColour(); }

void CSurface::SetWireframeColour(COLORREF colour) { Change(m_wireframe.colour, Colour3(colour)); }

int CSurface::SetCoarseMeshMode(int cols, int rows)
{
    // Its values stand for places on a disk, which must not be mixed.
    if (m_scanTestHeader)
        return 0;
    bool const wereRowsCoarse = AreRowsCoarse();
    bool const wereColsCoarse = AreColsCoarse();
    int const changed = C3DRowColCurve::SetCoarseMeshMode(cols, rows);
    auto const follow = [this](bool was, bool is, std::int16_t& count, std::int16_t& saved) {
        constexpr std::int16_t kCoarseBlocks = 25;
        if (was == is || !m_wireframe.on)
            return;
        if (is) {
            saved = count;
            count = kCoarseBlocks;
        } else {
            count = saved;
        }
    };
    follow(wereRowsCoarse, AreRowsCoarse(), m_wireframe.rows, m_wireframe.savedRows);
    follow(wereColsCoarse, AreColsCoarse(), m_wireframe.cols, m_wireframe.savedCols);
    return changed;
}

void CSurface::UpdateGraphParameters()
{
    m_surfaceMesh->UpdateGraphParameters();
    // The blocks of a coarse mesh stay until the fine one is back.
    if (IsCoarse())
        return;
    auto const blocks = [](int count, int factor) {
        constexpr int kMost = std::numeric_limits<std::int16_t>::max();
        return static_cast<std::int16_t>(std::clamp(count / (factor == 0 ? 1 : factor), -kMost, kMost));
    };
    m_wireframe.rows = blocks(GetNumRows(), m_wireframe.yFac);
    m_wireframe.cols = blocks(GetNumCols(), m_wireframe.xFac);
}

void CSurface::Render()
{
    if (AnythingToDraw() && IsValid() && Get3DGraph())
        m_renderer->Render(*this, *Get3DGraph());
}

void CSurface::InvalidateDeviceObjects() { m_renderer->InvalidateDeviceObjects(); }

void CSurface::RestoreDeviceObjects() { m_renderer->SetTextureDirty(m_texture.use != 0); }

} // namespace ombrel
