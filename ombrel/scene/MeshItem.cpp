#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/scene/MeshFile.h"
#include "ombrel/scene/SceneItems.h"
#include "ombrel/scene/parts/HeightColours.h"
#include "ombrel/scene/parts/SceneParts.h"
#include "ombrel/scene/parts/SceneTexts.h"
#include "ombrel/table/Utf8.h"

namespace ombrel {

namespace {

/// The mesh's own name for heights, and ours.
constexpr char const* kHeights = "thezvalue";
constexpr char const* kHeightsForUsers = "z";

bool HasElementColours(C3DMeshCurve const& mesh)
{
    for (int i = 0; i < mesh.GetPatches().GetSize(); ++i) {
        if (mesh.GetPatches()[i]->GetColours()->GetSize() > 0)
            return true;
    }
    return false;
}

/// The name of the variable that the mesh is coloured by, as the mesh has it; empty for one colour.
std::string VariableFor(C3DMeshCurve const& mesh, std::string const& wanted, std::string const& name)
{
    CStringArray names;
    mesh.GetVariables(names);
    if (wanted.empty())
        return names.GetSize() > 0 && !HasElementColours(mesh) ? names[0].ToUtf8() : std::string();
    std::string known;
    for (int i = 0; i < names.GetSize(); ++i) {
        if (LowerCase(names[i].ToUtf8()) == LowerCase(wanted))
            return names[i].ToUtf8();
        known += names[i].ToUtf8() + ", ";
    }
    if (LowerCase(wanted) == kHeightsForUsers)
        return kHeights;
    throw ChartError(ChartError::Cause::Setting,
        "variable " + wanted + ": " + name + " has no such values; it has " + known + "z (the heights)");
}

void SetContours(C3DMeshCurve& mesh, MeshStyle const& style)
{
    ContourStyle const& wanted = style.contours;
    ContourChoice const contours = wanted.choice.value_or(wanted.levels ? ContourChoice::Bands : ContourChoice::Off);
    mesh.SetContoursOn(contours != ContourChoice::Off);
    if (contours == ContourChoice::Off)
        return;
    AxisRange range;
    mesh.GetUntransformedDataRange(range.min, range.max);
    mesh.SetContourLevelMode(2);
    mesh.SetContourLevels(LevelArray(wanted, style.colours, range));
}

void SetClip(C3DMeshCurve& mesh, std::optional<ClipBox> const& clip)
{
    mesh.SetClip(clip ? 1 : 0);
    if (!clip)
        return;
    constexpr double kEverywhere = 1e300;
    auto const& [x, y, z] = *clip;
    mesh.SetClipRanges(x.min.value_or(-kEverywhere), x.max.value_or(kEverywhere), y.min.value_or(-kEverywhere),
        y.max.value_or(kEverywhere), z.min.value_or(-kEverywhere), z.max.value_or(kEverywhere));
}

void SetFaces(C3DMeshCurve& mesh, MeshFaces faces)
{
    mesh.SetSolidOn(faces != MeshFaces::Edges);
    mesh.SetWireframeOn(faces != MeshFaces::Solid);
    mesh.SetWireframeColour(kLineColour);
}

void SetColours(C3DMeshCurve& mesh, ColourStyle const& colours, std::string const& variable, Look const& look)
{
    SetHeightColours(mesh, colours);
    mesh.SetGradationOn(0);
    mesh.SetColour(PaletteNamed("", 1, look).At(0).colour);
    mesh.SetColourDescription(variable.empty() ? 0 : 1);
    if (variable.empty())
        mesh.SetElementColoursOn(HasElementColours(mesh));
    else
        mesh.SetColourmapVar(CString(variable));
}

} // namespace

SceneMesh::SceneMesh(SceneParts& scene, std::string const& path)
    : SceneItem(scene, path)
{
    if (!IsMeshFile(path))
        throw ChartError(ChartError::Cause::Data, path + ": expected a .tvm, .tvo or .dxf file");
    m_curves = AddMeshFile(*scene.graph, path, scene.readNotes);
    m_curve = m_curves.front();
    m_titles = { "x", "y", "z", true };
}

void SceneMesh::Prepare()
{
    for (C3DCurve* const curve : m_curves) {
        auto* const mesh = DynamicDowncast<C3DMeshCurve>(curve);
        if (!mesh)
            continue;
        std::string const variable = VariableFor(*mesh, m_style.variable, m_source);
        SetColours(*mesh, m_style.colours, variable, m_scene.look);
        SetFaces(*mesh, m_style.faces);
        SetClip(*mesh, m_style.clip);
        if (variable.empty())
            continue;
        m_curve = mesh;
        m_keyTitle = variable == kHeights ? "" : variable;
        if (m_style.variable.empty())
            m_notes.AddNote(m_source + ": coloured by " + QuoteForMessage(variable) + ", the first of its values");
    }
}

void SceneMesh::Finish()
{
    for (C3DCurve* const curve : m_curves) {
        if (auto* const mesh = DynamicDowncast<C3DMeshCurve>(curve))
            SetContours(*mesh, m_style);
    }
}

SceneMesh& SceneMesh::Variable(std::string_view name) { return Set(m_style.variable, std::string(name)); }
SceneMesh& SceneMesh::Clip(AxisEnds x, AxisEnds y, AxisEnds z) { return Set(m_style.clip, ClipBox { x, y, z }); }
SceneMesh& SceneMesh::Faces(MeshFaces faces) { return Set(m_style.faces, faces); }

} // namespace ombrel
