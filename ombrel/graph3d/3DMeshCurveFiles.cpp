#include "ombrel/foundation/VException.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObjectFile.h"
#include "ombrel/graph3d/3DObjectGeneral.h"
#include "ombrel/graph3d/meshes/DXFFaces.h"
#include "ombrel/graph3d/meshes/MeshText.h"
#include "ombrel/graph3d/objects/Placement.h"
#include "ombrel/platform/framework/FileTime.h"

namespace ombrel {
namespace {

/// The node set of files that have no names for it.
constexpr char kOnlyNodeSet[] = "dummy";

/// Takes over names of variables; false for other properties.
bool SetNames(MeshColouring& colouring, CString const& name, CString const& value)
{
    bool const ofNodes = name.CompareNoCase("node_variables") == 0;
    if (!ofNodes && name.CompareNoCase("element_variables") != 0)
        return false;
    SplitNames(value, ofNodes ? colouring.nodeVariables : colouring.elementVariables);
    return true;
}

bool IsHeader(CString const& name, char const* section) { return name.Find(CString(section)) >= 0; }

} // namespace

int C3DMeshCurve::SetPathname(CString const& path)
{
    auto const time = FindFileTime(path);
    if (path.CompareNoCase(m_pathName) == 0) {
        if (!time && m_loaded)
            return 1;
        if (time && m_loaded && *time == m_fileTime)
            return 1;
    }
    if (!time)
        throw new CVException("File not found.");
    m_loaded = 0;
    m_pathName = path;
    ReadData();
    m_loaded = 1;
    m_fileTime = *time;
    return 1;
}

void C3DMeshCurve::ReadData()
{
    CString const ending = m_pathName.Right(4);
    bool const isMesh = ending.CompareNoCase(".tvm") == 0;
    if (!isMesh && ending.CompareNoCase(".dxf") != 0)
        throw new CVException("Unsupported file type");
    m_fileType = isMesh ? ftMesh : ftDXF;
    Clear();
    C3DObjectFile file;
    file.Open(m_pathName, CFile::modeRead);
    // An error leaves nothing half read.
    struct Emptied {
        C3DMeshCurve* curve;
        ~Emptied()
        {
            if (curve)
                curve->Clear();
        }
    } emptied { this };
    if (isMesh)
        ReadMesh(file);
    else
        ReadDXF(file);
    emptied.curve = nullptr;
    DataChanged();
}

void C3DMeshCurve::ReadMesh(C3DObjectFile& file)
{
    CString name;
    CString value;
    while (file.ReadProperty(name, value)) {
        if (IsHeader(name, "nodeset")) {
            auto nodes = std::make_unique<CMeshNodeSet>(this);
            nodes->SetVariableCount(m_colouring.nodeVariables.GetSize());
            nodes->Read(file);
            m_nodeSets.Add(std::move(nodes));
        } else if (IsHeader(name, "patch")) {
            auto patch = std::make_unique<CMeshPatch>(this);
            patch->SetVariableCount(m_colouring.elementVariables.GetSize());
            patch->Read(file);
            m_patches.Add(std::move(patch));
        } else {
            SetNames(m_colouring, name, value);
        }
    }
}

void C3DMeshCurve::ReadMeshParams(CString const& path)
{
    Clear();
    C3DObjectFile file;
    file.Open(path, CFile::modeRead);
    CString name;
    CString value;
    while (file.ReadProperty(name, value) && !IsHeader(name, "nodeset") && !IsHeader(name, "patch"))
        SetNames(m_colouring, name, value);
}

void C3DMeshCurve::ReadDXF(C3DObjectFile& file)
{
    auto nodes = std::make_unique<CMeshNodeSet>();
    nodes->SetTitle(kOnlyNodeSet);
    auto patch = std::make_unique<CMeshPatch>();
    patch->SetNodeSet(nodes.get());
    TakeFaces(ReadDXFFaces(file), *nodes, *patch);
    AddNodeSet(std::move(nodes));
    AddPatch(std::move(patch));
}

void C3DMeshCurve::CreateFromGeneralObject(C3DObjectGeneral const* object)
{
    Clear();
    auto nodes = std::make_unique<CMeshNodeSet>();
    nodes->SetTitle(kOnlyNodeSet);
    CTableData& points = *nodes->GetPoints();
    points = *object->GetNodes()->GetPoints();
    for (int i = 0; i < nodes->GetNumNodes() && !object->IsTransformIdentity(); ++i) {
        CVertex const v
            = Placed(object->GetTransform(), { points.GetAt(0, i), points.GetAt(1, i), points.GetAt(2, i) });
        for (int k = 0; k < 3; ++k)
            points.SetAt(k, i, v[k]);
    }
    CMeshPatch const& from = *object->GetElements();
    auto patch = std::make_unique<CMeshPatch>();
    patch->SetElementType(from.GetElementType());
    patch->SetIndices(*from.GetIndices());
    for (int i = 0; i < from.GetNumPolygons(); ++i)
        patch->AddPolygon(from.GetPolygon(i));
    patch->SetAverageNormals(from.GetAverageNormals());
    patch->SetColours(*from.GetColours());
    patch->SetNodeSet(nodes.get());
    AddNodeSet(std::move(nodes));
    AddPatch(std::move(patch));
    SetColour(object->GetColour());
    SetGradationOn(object->GetGradationOn());
    SetWireframeOn(object->GetWireframeOn());
    SetWireframeColour(object->GetWireframeColour());
    SetElementColoursOn(from.GetColours()->IsEmpty() ? 0 : 1);
}

} // namespace ombrel
