#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/meshes/MeshRenderer.h"
#include "ombrel/graph3d/meshes/ValueRange.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <utility>

namespace ombrel {

constinit CRuntimeClass const C3DMeshCurve::kClass = PersistentClass<C3DMeshCurve, C3DCurve>("C3DMeshCurve");

C3DMeshCurve::C3DMeshCurve(CPlot* plot, int useGraphColour)
    : C3DCurve(plot, useGraphColour)
    , m_renderer(std::make_unique<MeshRenderer>())
{
    SetTitle("Mesh Curve");
    SetItemType(it3DMeshCurve);
    SetColourDescription(0);
    SetColour(RGB(255, 0, 0));
    SetGradationOn(1);
    SetModified(0);
}

C3DMeshCurve::~C3DMeshCurve() = default;

// --- The mesh

void C3DMeshCurve::Clear()
{
    m_patches.DeleteAll();
    m_nodeSets.DeleteAll();
    m_colouring.nodeVariables.RemoveAll();
    m_colouring.elementVariables.RemoveAll();
    DataChanged();
}

void C3DMeshCurve::DataChanged()
{
    m_faceFlagsDirty = 1;
    ++m_revision;
    SetModified(1);
    SetPlotDataModified(1);
}

CMeshNodeSet* C3DMeshCurve::AddNodeSet(std::unique_ptr<CMeshNodeSet> nodes)
{
    nodes->SetMeshCurve(this);
    DataChanged();
    return m_nodeSets[m_nodeSets.Add(std::move(nodes))];
}

CMeshPatch* C3DMeshCurve::AddPatch(std::unique_ptr<CMeshPatch> patch)
{
    patch->SetMeshCurve(this);
    DataChanged();
    return m_patches[m_patches.Add(std::move(patch))];
}

CMeshNodeSet* C3DMeshCurve::GetNodeSetByName(CString const& name) const
{
    for (CMeshNodeSet* const nodes : m_nodeSets) {
        if (nodes->GetTitle() == name)
            return nodes;
    }
    return nullptr;
}

void C3DMeshCurve::SetVariableNames(CStringArray const& ofNodes, CStringArray const& ofElements)
{
    m_colouring.nodeVariables = ofNodes;
    m_colouring.elementVariables = ofElements;
    DataChanged();
}

void C3DMeshCurve::GetVariables(CStringArray& names) const
{
    names = m_colouring.nodeVariables;
    names.Append(m_colouring.elementVariables);
}

int C3DMeshCurve::Evaluate()
{
    SetValid(1);
    ++m_revision;
    // What changed the data may have changed which faces lie between elements.
    if (PlotDataModified() || m_faceFlagsDirty) {
        UpdateFaceFlags();
    } else {
        for (CMeshPatch* const patch : m_patches)
            patch->Changed();
    }
    CVertex min;
    CVertex max;
    m_colouring.height = kNoRange;
    GetRanges(min, max, m_colouring.height[0], m_colouring.height[1]);
    m_hasRanges = m_colouring.height[0] <= m_colouring.height[1];
    if (!m_hasRanges)
        m_colouring.height = { 0.0, 0.0 };
    m_rangeMin = min;
    m_rangeMax = max;
    UpdateDataRanges();
    BuildContours();
    SetModified(0);
    SetPlotDataModified(0);
    SetZValPropertyModified(1);
    return IsValid();
}

void C3DMeshCurve::UpdateDataRanges()
{
    auto const unite = [](CStringArray const& names, auto const& parts, CTableData& ranges) {
        std::vector<ValueRange> all(static_cast<std::size_t>(names.GetSize()), kNoRange);
        for (auto* const part : parts) {
            part->UpdateDataRanges();
            for (std::size_t v = 0; v < all.size(); ++v) {
                ValueRange range = kNoRange;
                part->GetDataRange(static_cast<int>(v), range[0], range[1]);
                Unite(all[v], range);
            }
        }
        ranges = MakeRangeTable(all);
    };
    unite(m_colouring.nodeVariables, m_nodeSets, m_colouring.nodeRanges);
    unite(m_colouring.elementVariables, m_patches, m_colouring.elementRanges);
}

void C3DMeshCurve::GetRanges(CVertex& min, CVertex& max, double& lo, double& hi) const
{
    std::array<ValueRange, 4> all { kNoRange, kNoRange, kNoRange, kNoRange };
    for (CMeshPatch const* const patch : m_patches) {
        CVertex low;
        CVertex high;
        ValueRange height = kNoRange;
        patch->GetRanges(low, high, height[0], height[1]);
        if (height[0] > height[1])
            continue;
        for (int k = 0; k < 3; ++k)
            Unite(all[static_cast<std::size_t>(k)], { low[k], high[k] });
        Unite(all[3], height);
    }
    if (all[3][0] > all[3][1])
        return;
    min = { all[0][0], all[1][0], all[2][0] };
    max = { all[0][1], all[1][1], all[2][1] };
    lo = all[3][0];
    hi = all[3][1];
}

void C3DMeshCurve::GetRange(int axis, double& min, double& max) const
{
    if (!m_hasRanges)
        return;
    min = m_rangeMin[axis];
    max = m_rangeMax[axis];
}

// --- Clipping

int C3DMeshCurve::GetClip() const { return m_patches.IsEmpty() ? 0 : m_patches[0]->GetClip(); }

void C3DMeshCurve::SetClip(int on)
{
    for (CMeshPatch* const patch : m_patches)
        patch->SetClip(on);
    Change(m_faceFlagsDirty, 1);
}

void C3DMeshCurve::GetClipRanges(
    double& xMin, double& xMax, double& yMin, double& yMax, double& zMin, double& zMax) const
{
    static CMeshPatch const kAll;
    (m_patches.IsEmpty() ? &kAll : m_patches[0])->GetClipRanges(xMin, xMax, yMin, yMax, zMin, zMax);
}

void C3DMeshCurve::SetClipRanges(double xMin, double xMax, double yMin, double yMax, double zMin, double zMax)
{
    MeshClipRanges const ranges { xMin, xMax, yMin, yMax, zMin, zMax };
    if (!m_patches.IsEmpty() && m_patches[0]->GetClipBox() != ranges)
        m_faceFlagsDirty = 1;
    for (CMeshPatch* const patch : m_patches)
        patch->SetClipRanges(xMin, xMax, yMin, yMax, zMin, zMax);
    SetModified(1);
}

void C3DMeshCurve::UpdateFaceFlags()
{
    for (CMeshPatch* const patch : m_patches)
        patch->UpdateFaceFlags();
    m_faceFlagsDirty = 0;
    ++m_revision;
}

// --- Colours

bool C3DMeshCurve::UseTextureCoords() const
{
    return m_colouring.GetSource(GetColourDescription(), GetGradationOn()) == MeshColourSource::Nodes;
}

double C3DMeshCurve::Get1DTextureCoord(CMeshNodeSet const& nodes, DWORD number) const
{
    int const column = nodes.GetNodeIndex(number);
    int const variable = m_colouring.GetVariableRow(MeshColourSource::Nodes);
    CTableData const& table = variable >= 0 ? *nodes.GetNodeData() : *nodes.GetPoints();
    int const row = variable >= 0 ? variable : 2;
    if (column < 0 || row >= table.GetNumRows() || column >= table.GetNumCols() || IsGap(table.GetAt(row, column)))
        return 0.0;
    double lo = m_colouring.height[0];
    double hi = m_colouring.height[1];
    if (variable >= 0)
        GetUntransformedDataRange(lo, hi);
    return GetTexelPlace(table.GetAt(row, column), lo, hi);
}

COLORREF C3DMeshCurve::GetDrawnColour(double value) const
{
    return m_colouring.settings.contoursOn ? GetContourColour(value) : GetLUTColour(value);
}

void C3DMeshCurve::BuildContours()
{
    m_colouring.FindVariable();
    if (m_colouring.settings.contoursOn)
        m_colouring.contours.Replace(
            m_colouring.MakeContours([this](double value) { return GetLUTColour(value); }), this);
}

void C3DMeshCurve::GetContourColourKeyEntries(CDWordArray& colours, CDoubleArray& values) const
{
    // Those that the settings ask for now, whether they have been drawn or not.
    MeshColouring colouring = m_colouring;
    colouring.FindVariable();
    double lo = 0.0;
    double hi = 0.0;
    colouring.GetDataRange(lo, hi);
    colouring.MakeContours([this](double value) { return GetLUTColour(value); }).GetKeyEntries(lo, colours, values);
}

ColourKeySource C3DMeshCurve::GetColourKeySource() const
{
    ColourKeySource source = C3DCurve::GetColourKeySource();
    if (GetContoursOn()) {
        source.style = ColourKeySource::Style::Bands;
        GetContourColourKeyEntries(source.bandColours, source.bandValues);
    }
    return source;
}

// --- Drawing

void C3DMeshCurve::Render()
{
    C3DGraph* const graph = Get3DGraph();
    if (m_patches.IsEmpty() || !graph)
        return;
    BuildContours();
    if (m_faceFlagsDirty)
        UpdateFaceFlags();
    MeshColourSettings const& settings = m_colouring.settings;
    MeshLook look;
    look.colour = static_cast<COLORREF>(GetColour());
    look.hasOutlines = settings.wireframeOn != 0;
    look.isSolid = settings.solidOn != 0 || !look.hasOutlines;
    look.outlineColour = settings.wireframeColour;
    double lo = 0.0;
    double hi = 0.0;
    std::array<double, 2> ends {};
    GetUntransformedDataAndLUTRanges(lo, hi, ends[0], ends[1]);
    MeshScene const scene { m_revision, m_axes, m_colouring, GetColourDescription(), GetGradationOn(),
        [this](double value) { return GetDrawnColour(value); }, *GetColourmap(), ends,
        [this](auto const& take) {
            for (CMeshPatch const* const patch : m_patches)
                take({ patch, patch->WorldPlaces() });
        } };
    m_renderer->Render(*graph, scene, std::move(look));
}

void C3DMeshCurve::InvalidateDeviceObjects() { m_renderer->InvalidateDeviceObjects(); }

// --- Archive

void C3DMeshCurve::Serialize(CArchive& ar)
{
    C3DCurve::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(3);
    f.Owned(m_nodeSets).Owned(m_patches).Strings(m_colouring.nodeVariables).Strings(m_colouring.elementVariables);
    f.String(m_pathName).Date(m_fileTime).Int(m_loaded, m_fileType);
    MeshColourSettings& s = m_colouring.settings;
    f.Int(s.elementColoursOn).String(s.variable).Int(s.contoursOn, s.contourLevelMode, s.numContours);
    f.Double(s.contourRef, s.contourSpacing).Int(s.wireframeOn).Dword(s.wireframeColour);
    if (version >= 2)
        f.Int(m_faceFlagsDirty);
    if (version >= 3)
        f.Int(s.solidOn);
    if (ar.IsStoring())
        return;
    for (CMeshNodeSet* const nodes : m_nodeSets)
        nodes->SetMeshCurve(this);
    for (CMeshPatch* const patch : m_patches)
        patch->SetMeshCurve(this);
    // Documents hold no ranges: the next draw finds them.
    ++m_revision;
    SetPlotDataModified(1);
}

} // namespace ombrel
