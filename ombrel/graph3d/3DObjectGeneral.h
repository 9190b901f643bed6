#pragma once
#include "ombrel/colour/ColourMap.h"
#include "ombrel/graph3d/3DObject.h"
#include "ombrel/graph3d/MeshColouring.h"
#include "ombrel/graph3d/MeshNodeSet.h"
#include "ombrel/graph3d/MeshPatch.h"
#include "ombrel/platform/framework/Export.h"

#include <cstdint>
#include <memory>

namespace ombrel {

class C3DObjectGeneral;
class MeshRenderer;
struct NodePlaces;

/// Documents of object curves of version 1, each one general object. Behind the version they hold, as is settled here:
/// path name (string), file time (date), loaded and file type (ints), and then what Read takes.
class OMBREL_EXPORT C3DObjectCurveOld {
public:
    /// The table of nodes; element type (int); node numbers element by element (array of DWORDs); the number of
    /// polygons (int), and each one's node numbers (array of DWORDs). Throws CArchiveException* (newly allocated).
    static void Read(CArchive& ar, C3DObjectGeneral& object);
};

/// A shape of nodes and elements between them: triangles, quads, polygons or blocks of eight nodes, whose faces between
/// two blocks are not drawn. Node numbers count from 1.
///
/// The archive form, version 1, is settled here: the part of C3DObject; version (int, 1); the names of node and of
/// element variables; nodes and elements as mesh curves store a node set and a patch, in place; the colour map; the
/// variable that colours (string); whether the ends of its colours are given (int), and these (doubles); contours on,
/// their level mode and number (ints), reference and spacing (doubles); element colours on (int).
/// Errors: those of C3DObject; reading throws CVFileException* with the line.
class OMBREL_EXPORT C3DObjectGeneral : public C3DObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DObjectGeneral(C3DObjectCurve* curve = nullptr);
    ~C3DObjectGeneral() override;
    void Serialize(CArchive& ar) override;

    /// "element_type", "node_variables", "element_variables", "nodes", "elements", "average_normals" and
    /// "element_colours" besides those of all objects.
    void SetProperty(C3DObjectFile& file, CString const& name, CString const& value) override;
    /// Becomes the 3DFACEs of a drawing, as polygons. Throws CVFileException* (newly allocated) when there are none.
    void ReadDXF(C3DObjectFile& file);

    /// Owned by the object.
    CMeshNodeSet* GetNodes() { return &m_nodes; }
    CMeshNodeSet const* GetNodes() const { return &m_nodes; }
    CMeshPatch* GetElements() { return &m_elements; }
    CMeshPatch const* GetElements() const { return &m_elements; }
    CStringArray const& GetNodeVariables() const { return m_colouring.nodeVariables; }
    CStringArray const& GetElementVariables() const { return m_colouring.elementVariables; }

    /// Brings up to date what follows from nodes, elements and settings: 1.
    int Evaluate();
    void Construct() override { Evaluate(); }
    void GetRanges(CVertex& min, CVertex& max) override;
    void Draw() override;
    void InvalidateDeviceObjects() override;

    // Colours

    CColourMap* GetColourmap() { return &m_colourMap; }
    CColourMap const* GetColourmap() const { return &m_colourMap; }
    /// CColourMap::Load's answer.
    int SetColourmap(CString const& name);
    CString GetColourmapVar() const { return m_colouring.settings.variable; }
    /// A node or element variable, or "thezvalue" for the height.
    void SetColourmapVar(CString const& name) { Change(m_colouring.settings.variable, name); }
    /// The values that the first and the last colour stand for, once set; else those of the data.
    void GetLUTMinMax(double& min, double& max) const;
    void SetLUTMinMax(double min, double max);
    COLORREF GetLUTColour(double value) const;
    bool UseTextureCoords() const;
    int GetContoursOn() const { return m_colouring.settings.contoursOn; }
    void SetContoursOn(int on) { Change(m_colouring.settings.contoursOn, on); }
    int GetContourLevelMode() const { return m_colouring.settings.contourLevelMode; }
    void SetContourLevelMode(int mode) { Change(m_colouring.settings.contourLevelMode, mode); }
    int GetNumContours() const { return m_colouring.settings.numContours; }
    void SetNumContours(int bands) { Change(m_colouring.settings.numContours, bands); }
    double GetContourRef() const { return m_colouring.settings.contourRef; }
    void SetContourRef(double value) { Change(m_colouring.settings.contourRef, value); }
    double GetContourSpacing() const { return m_colouring.settings.contourSpacing; }
    void SetContourSpacing(double spacing) { Change(m_colouring.settings.contourSpacing, spacing); }

private:
    friend class C3DObjectCurveOld;
    NodePlaces WorldPlaces() const;
    COLORREF GetDrawnColour(double value) const;
    void TakeElements();

    CMeshNodeSet m_nodes;
    CMeshPatch m_elements;
    MeshColouring m_colouring;
    CColourMap m_colourMap;
    int m_useLUTMinMax = 0;
    double m_lutMin = 0.0;
    double m_lutMax = 0.0;
    bool m_isEvaluated = false;
    bool m_hasRange = false;
    CVertex m_rangeMin;
    CVertex m_rangeMax;
    std::uint64_t m_revision = 0;
    std::unique_ptr<MeshRenderer> m_renderer;
};

} // namespace ombrel
