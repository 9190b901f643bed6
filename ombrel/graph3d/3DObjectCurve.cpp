#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/foundation/VException.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObjectGeneral.h"
#include "ombrel/graph3d/objects/ObjectScene.h"
#include "ombrel/model/Plot.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/framework/FileTime.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace ombrel {

constinit CRuntimeClass const C3DObjectCurve::kClass = PersistentClass<C3DObjectCurve, C3DCurve>("C3DObjectCurve");

C3DObjectCurve::C3DObjectCurve(CPlot* plot, int useGraphColour)
    : C3DCurve(plot, useGraphColour)
    , m_scene(std::make_unique<ObjectScene>())
{
    SetTitle("Object Curve");
    SetItemType(it3DObjectCurve);
    SetModified(0);
}

C3DObjectCurve::~C3DObjectCurve() = default;

void C3DObjectCurve::Serialize(CArchive& ar)
{
    C3DCurve::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(2);
    if (version != 1 && version != 2)
        ar.Fail(CArchiveException::badSchema, "an object curve of version 1 or 2");
    f.String(m_pathName).Date(m_fileTime).Int(m_loaded, m_fileType);
    if (version == 2) {
        f.Owned(m_objects);
    } else {
        auto object = std::make_unique<C3DObjectGeneral>();
        C3DObjectCurveOld::Read(ar, *object);
        m_objects.DeleteAll();
        m_objects.Add(std::move(object));
    }
    if (ar.IsStoring())
        return;
    for (C3DObject* object : m_objects)
        object->SetCurve(this);
    m_notes.clear();
    m_listChanged = true;
    // Documents hold no ranges: the next draw makes them.
    SetPlotDataModified(1);
}

// --- Reading

int C3DObjectCurve::SetPathname(CString const& path)
{
    std::optional<COleDateTime> const time = FindFileTime(path);
    bool const isSame = m_fileType != ftFormula && path.CompareNoCase(m_pathName) == 0;
    if (!time) {
        if (!isSame || !m_loaded)
            throw new CVException("File not found.");
        SetDataSourceType(dsFile);
        return 1;
    }
    if (isSame && *time == m_fileTime) {
        SetDataSourceType(dsFile);
        return 1;
    }
    CString const ending = path.Right(4);
    FileType type = ftTVO;
    if (ending.CompareNoCase(".pdb") == 0)
        type = ftPDB;
    else if (ending.CompareNoCase(".dxf") == 0)
        type = ftDXF;
    else if (ending.CompareNoCase(".tvo") != 0)
        throw new CVException("Unsupported file type");
    C3DObjectFile file;
    file.Open(path, CFile::modeRead);
    OwnedArray<C3DObject> objects;
    if (type == ftTVO)
        ReadObjects(file, objects);
    if (type == ftDXF) {
        auto drawing = std::make_unique<C3DObjectGeneral>(this);
        drawing->ReadDXF(file);
        objects.Add(std::move(drawing));
    }
    TakeObjects(std::move(objects), file);
    m_pathName = path;
    m_fileTime = *time;
    m_fileType = type;
    m_loaded = 1;
    SetDataSourceType(dsFile);
    SetPlotDataModified(1);
    return 1;
}

void C3DObjectCurve::ReadText()
{
    C3DObjectFile file;
    file.SetReadMode(1);
    file.SetLines(GetFormulaString());
    OwnedArray<C3DObject> objects;
    ReadObjects(file, objects);
    TakeObjects(std::move(objects), file);
    m_fileType = ftFormula;
}

void C3DObjectCurve::ReadObjects(C3DObjectFile& file, OwnedArray<C3DObject>& objects)
{
    std::string_view text;
    while (file.ReadContent(text)) {
        CString const line = CString(text).MakeLower();
        std::unique_ptr<C3DObject> object = C3DObject::CreateFromHeader(line, this);
        if (!object) {
            file.AddNote(CString(u'"') + line.Left(40) + CString("\" names no kind of object"));
            continue;
        }
        object->Read(file);
        objects.Add(std::move(object));
    }
}

void C3DObjectCurve::TakeObjects(OwnedArray<C3DObject> objects, C3DObjectFile const& file)
{
    m_objects = std::move(objects);
    m_notes = file.GetNotes();
    m_listChanged = true;
    if (!GetGradationOn())
        return;
    for (C3DObject* object : m_objects)
        object->SetGradationOn(1);
}

void C3DObjectCurve::AddObject(std::unique_ptr<C3DObject> object)
{
    if (!object)
        return;
    if (GetDataSourceType() == dsFormula && GetFormulaString().IsEmpty())
        SetDataSourceType(dsTable);
    object->SetCurve(this);
    m_objects.Add(std::move(object));
    m_listChanged = true;
    SetModified(1);
    SetPlotDataModified(1);
}

std::unique_ptr<C3DObject> C3DObjectCurve::DetachObject(int index)
{
    std::unique_ptr<C3DObject> object = m_objects.Detach(index);
    if (object) {
        object->SetCurve(nullptr);
        m_listChanged = true;
        SetModified(1);
        SetPlotDataModified(1);
    }
    return object;
}

bool C3DObjectCurve::CheckForGeneralObjects()
{
    C3DGraph* const graph = Get3DGraph();
    int const before = m_objects.GetSize();
    for (int i = 0; graph && i < m_objects.GetSize();) {
        auto const* const object = DynamicDowncast<C3DObjectGeneral>(m_objects[i]);
        if (!object) {
            ++i;
            continue;
        }
        auto* const mesh = static_cast<C3DMeshCurve*>(graph->AddPlot(it3DMeshPlot)->CreateCurve());
        mesh->CreateFromGeneralObject(object);
        mesh->SetTransforms(GetTransforms());
        DetachObject(i);
    }
    if (m_objects.GetSize() == before || !m_objects.IsEmpty())
        return true;
    CPlot* const plot = GetPlot();
    if (plot->GetNumComponents() > 1) {
        graph->RemovePlotComponent(this);
        delete this;
    } else {
        graph->RemovePlot(plot);
        delete plot;
    }
    return false;
}

// --- Evaluation

int C3DObjectCurve::Evaluate()
{
    CString error;
    if (GetDataSourceType() == dsFormula) {
        try {
            WithErrors([this] { ReadText(); });
        } catch (Error const& e) {
            error = e.what();
            m_objects.DeleteAll();
            m_listChanged = true;
        }
    }
    UpdateObjects();
    SetValid(m_hasRange ? 1 : 0);
    if (error != std::exchange(m_textError, error) && !error.IsEmpty())
        CVUtils::PlotDialogErrMsg(this, error, "");
    return error.IsEmpty() ? 1 : 0;
}

int C3DObjectCurve::IsDefined() const { return m_objects.IsEmpty() ? C3DCurve::IsDefined() : 1; }

void C3DObjectCurve::UpdateObjects() const
{
    CTransformArray const& transforms = Transforms();
    TransformKey key;
    for (int i = 0; i < transforms.GetSize(); ++i) {
        CCoordTransform const& t = *transforms[i];
        key.push_back({ static_cast<double>(t.GetType()), t.GetA(), t.GetB(), t.GetC() });
    }
    bool const isMoved = key != m_transformKey;
    bool isChanged = m_listChanged;
    for (C3DObject* object : m_objects) {
        if (isMoved)
            object->SetReconstructFlag(1);
        isChanged = isChanged || object->GetReconstructFlag();
    }
    if (!isChanged)
        return;
    m_transformKey = std::move(key);
    m_listChanged = false;
    m_sceneChanged = true;
    LimitDivisions();
    m_hasRange = false;
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    for (C3DObject* object : m_objects) {
        CVertex min(kNone, kNone, kNone);
        CVertex max = min;
        object->GetRanges(min, max);
        object->m_reconstruct = 0;
        if (!(min.X() <= max.X()))
            continue;
        for (int k = 0; k < 3; ++k) {
            m_rangeMin[k] = m_hasRange ? std::min(m_rangeMin[k], min[k]) : min[k];
            m_rangeMax[k] = m_hasRange ? std::max(m_rangeMax[k], max[k]) : max[k];
        }
        m_hasRange = true;
    }
}

// Files of a few bytes, and documents, may ask for any number of points. With more than these in all, every object gets
// fewer divisions.
void C3DObjectCurve::LimitDivisions() const
{
    constexpr std::size_t kMostPoints = 1 << 20;
    int most = C3DObject::kMostDivisions;
    auto const isTooMuch = [&] {
        std::size_t points = 0;
        for (C3DObject const* object : m_objects)
            points += object->CountPoints(most);
        return points > kMostPoints;
    };
    constexpr int kLeast = 3;
    while (most > kLeast && isTooMuch())
        most = std::max(kLeast, most * 3 / 4);
    for (C3DObject* object : m_objects) {
        if (std::exchange(object->m_mostDivisions, most) != most)
            object->SetReconstructFlag(1);
    }
}

void C3DObjectCurve::GetRange(int axis, double& min, double& max) const
{
    UpdateObjects();
    if (!m_hasRange)
        return;
    min = m_rangeMin[axis];
    max = m_rangeMax[axis];
}

std::optional<LegendEntry> C3DObjectCurve::GetLegendEntry() const
{
    std::optional<LegendEntry> entry = C3DCurve::GetLegendEntry();
    if (entry && !m_objects.IsEmpty())
        entry->colour = m_objects[0]->GetColour();
    return entry;
}

void C3DObjectCurve::SetGradationOn(int on)
{
    C3DCurve::SetGradationOn(on);
    for (C3DObject* object : m_objects)
        object->SetGradationOn(on);
}

void C3DObjectCurve::SetCoarseMode(int on)
{
    for (C3DObject* object : m_objects)
        object->SetCoarseMode(on);
}

// --- Drawing

void C3DObjectCurve::UpdateGraphParameters() { GetBoxAxes(m_axes); }

void C3DObjectCurve::RefreshZVals()
{
    UpdateGraphParameters();
    for (C3DObject* object : m_objects)
        object->RefreshZVals();
}

void C3DObjectCurve::Render()
{
    C3DGraph* const graph = Get3DGraph();
    if (!graph)
        return;
    UpdateGraphParameters();
    UpdateObjects();
    if (m_sceneChanged || m_sceneAxes != m_axes) {
        m_scene->Clear();
        for (C3DObject const* object : m_objects)
            m_scene->Add(*object, m_axes);
        m_sceneAxes = m_axes;
        m_sceneChanged = false;
    }
    m_scene->Draw(*graph);
    for (C3DObject* object : m_objects)
        object->Draw();
}

void C3DObjectCurve::InvalidateDeviceObjects()
{
    m_scene->InvalidateDeviceObjects();
    for (C3DObject* object : m_objects)
        object->InvalidateDeviceObjects();
}

} // namespace ombrel
