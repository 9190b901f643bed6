#pragma once
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/3DObject.h"
#include "ombrel/graph3d/3DObjectFile.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/DateTime.h"
#include "ombrel/platform/framework/Export.h"

#include <array>
#include <memory>
#include <vector>

namespace ombrel {

class ObjectScene;

/// Solid shapes in the data box of a 3D graph, which keeps the proportions of its axes' ranges for them.
///
/// They come from a file (SetPathname), from the curve's formula text in the same language, or from the host
/// (AddObject). The language: a header line that names the kind of object, lines "name: value" and a line "endobject";
/// empty lines and those that begin with "//" say nothing, and capital letters count as small ones.
/// Errors: those of SetPathname; Serialize throws CArchiveException*.
class OMBREL_EXPORT C3DObjectCurve : public C3DCurve {
public:
    /// What the objects were read from.
    enum FileType : int { ftFormula = 0, ftTVO = 1, ftDXF = 2, ftPDB = 3 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DObjectCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    ~C3DObjectCurve() override;
    void Serialize(CArchive& ar) override;

    // Objects

    /// Reads a file by the ending of its name, in any case: ".tvo"; ".dxf", whose 3DFACEs become one general object; or
    /// ".pdb", of which nothing is read. Returns 1. The
    /// same file again is read only when it has changed; when it is gone, the objects stay.
    /// Throws CVException* "File not found." or "Unsupported file type", CFileException*, and CVFileException* with the
    /// line for what is wrong in the file (newly allocated); the curve keeps its objects then.
    int SetPathname(CString const& path);
    CString GetPathname() const { return m_pathName; }
    /// When the file was changed last, in universal time.
    COleDateTime GetFileTime() const { return m_fileTime; }
    FileType GetFileType() const { return m_fileType; }
    int GetLoaded() const { return m_loaded; }
    /// What was read over in the text that the objects are from, line by line.
    std::vector<C3DObjectFile::Note> const& GetReadNotes() const { return m_notes; }
    OwnedArray<C3DObject> const& GetObjects() const { return m_objects; }
    /// Takes the object over. A curve without a formula is no formula curve any longer then.
    void AddObject(std::unique_ptr<C3DObject> object);
    /// Takes the object out; null outside the list.
    std::unique_ptr<C3DObject> DetachObject(int index);
    /// Moves each general object into a mesh curve of a plot of its own in the same graph, where it can be clipped and
    /// coloured. When nothing is left the curve is deleted, and its plot with it if it was the only one; false then.
    bool CheckForGeneralObjects();

    // The curve

    /// Reads a formula curve's text and brings ranges up to date: 1, or 0 when the text is at fault, which a message
    /// tells once; there are no objects then.
    int Evaluate() override;
    int IsDefined() const override;
    /// World-space bounds of all objects; unchanged while there are none.
    void GetXRange(double& min, double& max) const override { GetRange(0, min, max); }
    void GetYRange(double& min, double& max) const override { GetRange(1, min, max); }
    void GetZRange(double& min, double& max) const override { GetRange(2, min, max); }
    bool NeedsProportions() const override { return true; }
    /// With the colour of the first object.
    std::optional<LegendEntry> GetLegendEntry() const override;
    /// Of all objects, those that are read later too.
    void SetGradationOn(int on) override;
    void SetCoarseMode(int on) override;
    /// Takes over the axes' ranges and scale factors.
    void UpdateGraphParameters() override;
    void RefreshZVals() override;
    /// A point in world coordinates as one in the data box.
    CVertex GetNormalisedVertex(CVertex const& v) const { return GetBoxPlace(m_axes, v); }
    /// The axes as they were when they were taken over last.
    BoxAxes const& GetNormalisingAxes() const { return m_axes; }

    // Drawing: within a draw of the graph

    void Render() override;
    void InvalidateDeviceObjects() override;

protected:
    /// Drawing follows them. Evaluated, the curve would read its text again, and lose what hosts did to the objects.
    void TransformsChanged() override { }

private:
    using TransformKey = std::vector<std::array<double, 4>>;
    void ReadObjects(C3DObjectFile& file, OwnedArray<C3DObject>& objects);
    void ReadText();
    void TakeObjects(OwnedArray<C3DObject> objects, C3DObjectFile const& file);
    void UpdateObjects() const;
    void LimitDivisions() const;
    void GetRange(int axis, double& min, double& max) const;

    int m_loaded = 0;
    CString m_pathName;
    COleDateTime m_fileTime { 1990, 1, 1, 0, 0, 0 };
    FileType m_fileType = ftFormula;
    BoxAxes m_axes { { { -10.0, 10.0, 1.0 }, { -10.0, 10.0, 1.0 }, { -100.0, 100.0, 1.0 } } };
    OwnedArray<C3DObject> m_objects;
    std::vector<C3DObjectFile::Note> m_notes;
    /// The message that the user has been given.
    CString m_textError;
    // What follows from objects and transforms
    mutable CVertex m_rangeMin;
    mutable CVertex m_rangeMax;
    mutable bool m_hasRange = false;
    mutable TransformKey m_transformKey;
    mutable bool m_listChanged = true;
    /// The faces do not belong to objects and axes as they are.
    mutable bool m_sceneChanged = true;
    BoxAxes m_sceneAxes;
    std::unique_ptr<ObjectScene> m_scene;
};

} // namespace ombrel
