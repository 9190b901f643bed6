#include "ombrel/graph3d/3DObjectGeneral.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/graph3d/3DObjectFile.h"
#include "ombrel/graph3d/meshes/DXFFaces.h"
#include "ombrel/graph3d/meshes/MeshRenderer.h"
#include "ombrel/graph3d/meshes/MeshText.h"
#include "ombrel/graph3d/meshes/ValueRange.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <utility>

namespace ombrel {

constinit CRuntimeClass const C3DObjectGeneral::kClass
    = PersistentClass<C3DObjectGeneral, C3DObject>("C3DObjectGeneral");

C3DObjectGeneral::C3DObjectGeneral(C3DObjectCurve* curve)
    : C3DObject(curve)
    , m_renderer(std::make_unique<MeshRenderer>())
{
    m_elements.SetNodeSet(&m_nodes);
}

C3DObjectGeneral::~C3DObjectGeneral() = default;

// --- Reading

void C3DObjectGeneral::SetProperty(C3DObjectFile& file, CString const& name, CString const& value)
{
    auto const isName = [&name](char const* wanted) { return name.CompareNoCase(wanted) == 0; };
    if (isName("node_variables")) {
        SplitNames(value, m_colouring.nodeVariables);
        m_nodes.SetVariableCount(m_colouring.nodeVariables.GetSize());
    } else if (isName("element_variables")) {
        SplitNames(value, m_colouring.elementVariables);
        m_elements.SetVariableCount(m_colouring.elementVariables.GetSize());
    } else if (isName("nodes")) {
        m_nodes.ReadVertices(file);
    } else if (isName("element_type")) {
        // These objects have no tetrahedra.
        if (value.CompareNoCase("tetrahedron") != 0)
            m_elements.SetProperty(file, name, value);
    } else if (isName("elements") || isName("average_normals")) {
        m_elements.SetProperty(file, name, value);
    } else if (isName("element_colours") || isName("element_colors")) {
        m_elements.ReadColours(file);
        m_colouring.settings.elementColoursOn = 1;
    } else {
        C3DObject::SetProperty(file, name, value);
        return;
    }
    TakeElements();
}

void C3DObjectGeneral::ReadDXF(C3DObjectFile& file)
{
    TakeFaces(ReadDXFFaces(file), m_nodes, m_elements);
    TakeElements();
}

void C3DObjectGeneral::TakeElements()
{
    m_isEvaluated = false;
    SetModified(1);
    SetReconstructFlag(1);
}

// --- What follows

NodePlaces C3DObjectGeneral::WorldPlaces() const
{
    NodePlaces places = GetNodePlaces(*m_nodes.GetPoints());
    if (IsTransformIdentity() && (!GetCurve() || GetCurve()->GetNumTransforms() == 0))
        return places;
    return TransformPlaces(places, [this](double& x, double& y, double& z) {
        CVertex const moved = TransformVertex({ x, y, z });
        x = moved.X();
        y = moved.Y();
        z = moved.Z();
    });
}

int C3DObjectGeneral::Evaluate()
{
    m_isEvaluated = true;
    ++m_revision;
    m_elements.UpdateFaceFlags();
    m_colouring.height = kNoRange;
    m_elements.FindRanges(WorldPlaces(), m_rangeMin, m_rangeMax, m_colouring.height[0], m_colouring.height[1]);
    m_hasRange = m_colouring.height[0] <= m_colouring.height[1];
    if (!m_hasRange)
        m_colouring.height = { 0.0, 0.0 };
    m_colouring.nodeRanges = MakeRangeTable(FindRowRanges(*m_nodes.GetNodeData()));
    m_colouring.elementRanges = MakeRangeTable(FindRowRanges(*m_elements.GetElementData()));
    m_colouring.FindVariable();
    return 1;
}

void C3DObjectGeneral::GetRanges(CVertex& min, CVertex& max)
{
    // Others of the curve change, too.
    if (!m_isEvaluated || GetReconstructFlag())
        Evaluate();
    if (!m_hasRange)
        return;
    min = m_rangeMin;
    max = m_rangeMax;
}

// --- Colours

int C3DObjectGeneral::SetColourmap(CString const& name)
{
    SetModified(1);
    return m_colourMap.Load(name);
}

void C3DObjectGeneral::GetLUTMinMax(double& min, double& max) const
{
    m_colouring.GetDataRange(min, max);
    if (!m_useLUTMinMax)
        return;
    min = m_lutMin;
    max = m_lutMax;
}

void C3DObjectGeneral::SetLUTMinMax(double min, double max)
{
    m_useLUTMinMax = 1;
    m_lutMin = min;
    Change(m_lutMax, max);
}

COLORREF C3DObjectGeneral::GetLUTColour(double value) const
{
    double lo = 0.0;
    double hi = 0.0;
    GetLUTMinMax(lo, hi);
    return GetColourDescription() == 0 ? CColourMap::GetGradedColour(GetColour(), value, lo, hi)
                                       : m_colourMap.GetColour(value, lo, hi);
}

bool C3DObjectGeneral::UseTextureCoords() const
{
    return m_colouring.GetSource(GetColourDescription(), GetGradationOn()) == MeshColourSource::Nodes;
}

COLORREF C3DObjectGeneral::GetDrawnColour(double value) const
{
    return m_colouring.settings.contoursOn ? m_colouring.contours.GetColour(value) : GetLUTColour(value);
}

// --- Drawing

void C3DObjectGeneral::Draw()
{
    C3DGraph* const graph
        = GetCurve() && GetCurve()->GetPlot() ? DynamicDowncast<C3DGraph>(GetCurve()->GetPlot()->GetGraph()) : nullptr;
    if (!graph)
        return;
    if (!m_isEvaluated)
        Evaluate();
    m_colouring.FindVariable();
    if (m_colouring.settings.contoursOn)
        m_colouring.contours = m_colouring.MakeContours([this](double value) { return GetLUTColour(value); });
    MeshLook look;
    look.colour = GetColour();
    look.transparency = IsTransparent() ? GetTransparency() : 0.0;
    look.hasOutlines = GetWireframeOn() != 0 && !IsTransparent();
    look.outlineColour = GetWireframeColour();
    std::array<double, 2> ends {};
    GetLUTMinMax(ends[0], ends[1]);
    MeshScene const scene { m_revision, GetCurve()->GetNormalisingAxes(), m_colouring, GetColourDescription(),
        GetGradationOn(), [this](double value) { return GetDrawnColour(value); }, m_colourMap, ends,
        [this](auto const& take) {
            take({ &m_elements, WorldPlaces() });
        } };
    m_renderer->Render(*graph, scene, std::move(look));
}

void C3DObjectGeneral::InvalidateDeviceObjects() { m_renderer->InvalidateDeviceObjects(); }

// --- Archive

void C3DObjectGeneral::Serialize(CArchive& ar)
{
    C3DObject::Serialize(ar);
    ArchiveFields f(ar);
    if (f.Version(1) != 1)
        ar.Fail(CArchiveException::badSchema, "a general object of version 1");
    f.Strings(m_colouring.nodeVariables).Strings(m_colouring.elementVariables);
    f.Nested(m_nodes, m_elements, m_colourMap);
    MeshColourSettings& s = m_colouring.settings;
    f.String(s.variable).Int(m_useLUTMinMax).Double(m_lutMin, m_lutMax);
    f.Int(s.contoursOn, s.contourLevelMode, s.numContours).Double(s.contourRef, s.contourSpacing);
    f.Int(s.elementColoursOn);
    if (ar.IsStoring())
        return;
    m_elements.SetNodeSet(&m_nodes);
    m_isEvaluated = false;
}

void C3DObjectCurveOld::Read(CArchive& ar, C3DObjectGeneral& object)
{
    ArchiveFields f(ar);
    int type = 0;
    CDWordArray indices;
    int polygons = 0;
    f.Nested(*object.m_nodes.GetPoints()).Int(type).Raw(indices).Int(polygons);
    object.m_elements.SetElementType(static_cast<MeshElementType>(type));
    object.m_elements.SetIndices(indices);
    for (int i = 0; i < polygons; ++i) {
        f.Raw(indices);
        object.m_elements.AddPolygon(indices.Values());
    }
    object.TakeElements();
}

} // namespace ombrel
