#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/MeshColouring.h"
#include "ombrel/graph3d/MeshNodeSet.h"
#include "ombrel/graph3d/MeshPatch.h"
#include "ombrel/platform/framework/DateTime.h"
#include "ombrel/platform/framework/Export.h"

#include <cstdint>
#include <memory>

namespace ombrel {

class C3DObjectFile;
class C3DObjectGeneral;
class MeshRenderer;

/// The results of a computation by finite elements: node sets, and patches of elements between their nodes; lit solid,
/// outlined, or both; in one colour, or in those of a variable of nodes or elements.
///
/// Give it a file (SetPathname), or node sets and patches (AddNodeSet, AddPatch), and the graph does the rest. Colours,
/// contours, outlines and the clip box follow their settings at each draw; data are taken over by Evaluate, which the
/// graph calls when a flag of the data is raised.
/// Errors: SetPathname tells those of files; Serialize throws CArchiveException* (newly allocated).
class OMBREL_EXPORT C3DMeshCurve : public C3DCurve {
public:
    /// What the curve was read from.
    enum FileType : int { ftNone = 0, ftMesh = 1, ftDXF = 2 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DMeshCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    ~C3DMeshCurve() override;
    void Serialize(CArchive& ar) override;

    // Files

    /// Reads a mesh file (".tvm") or the 3DFACEs of a drawing (".dxf") by the ending of its name, in any case: 1. A
    /// file that has not changed since it was read is not read again; one that was read and is gone leaves the mesh as
    /// it is. Throws (newly allocated) CVException* "File not found." and "Unsupported file type", CVFileException*
    /// with the line for a file that is not what it should be, CFileException* for one that cannot be read. After an
    /// error in the file the curve is empty.
    int SetPathname(CString const& path);
    CString GetPathname() const { return m_pathName; }
    FileType GetFileType() const { return m_fileType; }
    int GetLoaded() const { return m_loaded; }
    /// Reads the file of the path name, whatever has changed.
    void ReadData();
    /// Empties the curve and reads the names of variables alone.
    void ReadMeshParams(CString const& path);
    /// Becomes the object's nodes, where its placement shows them, and its elements, without their values, in its
    /// colours.
    void CreateFromGeneralObject(C3DObjectGeneral const* object);

    // The mesh

    /// Deletes all node sets and patches, and the names of variables.
    void Clear();
    /// Both are owned by the curve then.
    CMeshNodeSet* AddNodeSet(std::unique_ptr<CMeshNodeSet> nodes);
    CMeshPatch* AddPatch(std::unique_ptr<CMeshPatch> patch);
    OwnedArray<CMeshNodeSet> const& GetNodeSets() const { return m_nodeSets; }
    OwnedArray<CMeshPatch> const& GetPatches() const { return m_patches; }
    /// The first of that title; null without one.
    CMeshNodeSet* GetNodeSetByName(CString const& name) const;
    CStringArray const& GetNodeVariables() const { return m_colouring.nodeVariables; }
    CStringArray const& GetElementVariables() const { return m_colouring.elementVariables; }
    void SetVariableNames(CStringArray const& ofNodes, CStringArray const& ofElements);
    /// Those of nodes, then those of elements.
    void GetVariables(CStringArray& names) const;
    int IsDefined() const override { return !m_patches.IsEmpty() || C3DCurve::IsDefined() ? 1 : 0; }
    int Evaluate() override;
    /// Of the elements in world coordinates, and of z without the curve's transforms; as evaluated, unchanged when
    /// there is nothing.
    void GetRanges(CVertex& min, CVertex& max, double& lo, double& hi) const;
    void GetXRange(double& min, double& max) const override { GetRange(0, min, max); }
    void GetYRange(double& min, double& max) const override { GetRange(1, min, max); }
    void GetZRange(double& min, double& max) const override { GetRange(2, min, max); }
    void UpdateGraphParameters() override { GetBoxAxes(m_axes); }
    void RefreshZVals() override { UpdateGraphParameters(); }
    /// A place in world coordinates as one in the data box.
    CVertex GetNormalisedVertex(CVertex const& world) const { return GetBoxPlace(m_axes, world); }

    // Clipping: bricks and tetrahedra with a corner outside of the box are left out

    int GetClip() const;
    void SetClip(int on);
    /// Of the first patch; ±1e300 without one.
    void GetClipRanges(double& xMin, double& xMax, double& yMin, double& yMax, double& zMin, double& zMax) const;
    void SetClipRanges(double xMin, double xMax, double yMin, double yMax, double zMin, double zMax);
    /// Of every patch.
    void UpdateFaceFlags();

    // Colours

    CString GetColourmapVar() const { return m_colouring.settings.variable; }
    /// A node or element variable, or "thezvalue" for the height.
    void SetColourmapVar(CString const& name) { Change(m_colouring.settings.variable, name); }
    int GetElementColoursOn() const { return m_colouring.settings.elementColoursOn; }
    /// Whether elements have the colours of their patch's element colour section.
    void SetElementColoursOn(int on) { Change(m_colouring.settings.elementColoursOn, on); }
    /// Whether elements are coloured through a texture, by their nodes.
    bool UseTextureCoords() const;
    /// Of a node of the set along that texture, 0 … 1; 0 where all values are equal.
    double Get1DTextureCoord(CMeshNodeSet const& nodes, DWORD number) const;
    COLORREF GetLUTColour(double value) const override { return GetColourInRange(value); }
    int NeedsColourKey() const override { return GetColourDescription() == 1 ? 1 : 0; }
    ColourKeySource GetColourKeySource() const override;
    COLORREF GetColourOfValue(double value, double low, double high) const override
    {
        return GetShadeOrMapColour(value, low, high);
    }
    /// The range of what colours the mesh; unchanged when the variable is not there.
    void GetUntransformedDataRange(double& lo, double& hi) const override { m_colouring.GetDataRange(lo, hi); }

    // Contours

    int GetContoursOn() const { return m_colouring.settings.contoursOn; }
    void SetContoursOn(int on) { Change(m_colouring.settings.contoursOn, on); }
    /// 0 by number, 1 by reference and spacing, 2 arbitrary levels.
    int GetContourLevelMode() const { return m_colouring.settings.contourLevelMode; }
    void SetContourLevelMode(int mode) { Change(m_colouring.settings.contourLevelMode, mode); }
    int GetNumContours() const { return m_colouring.settings.numContours; }
    void SetNumContours(int bands) { Change(m_colouring.settings.numContours, bands); }
    double GetContourRef() const { return m_colouring.settings.contourRef; }
    void SetContourRef(double value) { Change(m_colouring.settings.contourRef, value); }
    double GetContourSpacing() const { return m_colouring.settings.contourSpacing; }
    void SetContourSpacing(double spacing) { Change(m_colouring.settings.contourSpacing, spacing); }
    void GetContourLevels(CDoubleArray& levels) const { levels = m_colouring.settings.arbitraryLevels; }
    void SetContourLevels(CDoubleArray const& levels) { Change(m_colouring.settings.arbitraryLevels, levels); }
    /// Variable, levels and band colours become those of the settings; levels that cannot be made are told once.
    void BuildContours();
    /// As last built.
    std::span<double const> GetWorkingContourLevels() const { return m_colouring.contours.GetLevels(); }
    COLORREF GetContourColour(double value) const { return m_colouring.contours.GetColour(value); }
    /// The band colours, and the values that they begin at.
    void GetContourColourKeyEntries(CDWordArray& colours, CDoubleArray& values) const;

    // Outlines

    int GetWireframeOn() const { return m_colouring.settings.wireframeOn; }
    void SetWireframeOn(int on) { Change(m_colouring.settings.wireframeOn, on); }
    COLORREF GetWireframeColour() const { return m_colouring.settings.wireframeColour; }
    void SetWireframeColour(COLORREF colour) { Change(m_colouring.settings.wireframeColour, colour); }
    /// Whether elements are filled; with a wireframe, under its outlines. Without either they are filled plainly.
    int GetSolidOn() const { return m_colouring.settings.solidOn; }
    void SetSolidOn(int on) { Change(m_colouring.settings.solidOn, on); }

    // Drawing: within a draw of the graph

    using C3DCurve::Draw;
    void Draw() { Render(); }
    void Render() override;
    void InvalidateDeviceObjects() override;

private:
    void GetRange(int axis, double& min, double& max) const;
    void UpdateDataRanges();
    COLORREF GetDrawnColour(double value) const;
    void ReadMesh(C3DObjectFile& file);
    void ReadDXF(C3DObjectFile& file);
    /// The mesh has changed.
    void DataChanged();

    OwnedArray<CMeshNodeSet> m_nodeSets;
    OwnedArray<CMeshPatch> m_patches;
    MeshColouring m_colouring;
    int m_loaded = 0;
    CString m_pathName;
    COleDateTime m_fileTime { 1990, 1, 1, 0, 0, 0 };
    FileType m_fileType = ftNone;
    int m_faceFlagsDirty = 0;

    bool m_hasRanges = false;
    CVertex m_rangeMin;
    CVertex m_rangeMax;
    BoxAxes m_axes { BoxAxis { -10.0, 10.0, 1.0 }, BoxAxis { -10.0, 10.0, 1.0 }, BoxAxis { -100.0, 100.0, 1.0 } };
    /// Goes up with each change of the data or the clip box.
    std::uint64_t m_revision = 0;
    std::unique_ptr<MeshRenderer> m_renderer;
};

} // namespace ombrel
