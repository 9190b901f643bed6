#pragma once
#include "ombrel/colour/TextureMap.h"
#include "ombrel/graph3d/3DRowColCurve.h"
#include "ombrel/graph3d/ContourColours.h"
#include "ombrel/graph3d/SurfaceMesh.h"
#include "ombrel/graph3d/SurfaceSettings.h"
#include "ombrel/io/ScanTestHeader.h"
#include "ombrel/io/USGSDEM.h"
#include "ombrel/io/ZValsFile.h"
#include "ombrel/model/NamesOtherThan.h"
#include "ombrel/platform/framework/Export.h"

#include <memory>
#include <span>
#include <vector>

namespace ombrel {

class ArchiveFields;
class SurfaceRenderer;

/// A function on a regular grid as a lit surface: in one colour or in those of a colour map, cut into contour bands,
/// with contour lines, a wireframe or an image over it, opaque or transparent.
///
/// Give it a table (SetTableData) or a file (SetPathname), and the graph does the rest. Colours, contours and wireframe
/// follow their settings at each draw; data and grid are taken over by Evaluate, which the graph calls when a flag of
/// the data is raised. A node whose value is missing leaves a hole. More about settings, and what they are at first,
/// stands at the fields of ContourSettings, WireframeSettings, ValueTableSettings and SurfaceTextureSettings. Errors:
/// those of C3DRowColCurve; readers of files tell theirs.
class OMBREL_EXPORT CSurface : public C3DRowColCurve, public ZValsOwner {
public:
    /// Bands of colour, bands with lines between them, or lines alone.
    enum ContourMode : int { cmBands = 0, cmBandsAndLines = 1, cmLines = 2 };
    /// By number of bands; by a value and a distance; as given.
    enum ContourLevelMode : int { clBands = 0, clSpacing = 1, clArbitrary = 2 };
    /// All four sides of a block, or two of them: those across x, or those across y.
    enum WireframeMode : int { wmAll = 0, wmAcrossX = 1, wmAcrossY = 2 };
    /// What the surface was read from.
    enum FileType : int { ftNone = 0, ftDEM = 1, ftZVals = 2 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit CSurface(CPlot* plot = nullptr, int useGraphColour = 0);
    ~CSurface() override;
    void Serialize(CArchive& ar) override;

    // Files

    /// Reads a file of elevations (".dem") or z values (".tvl") by the ending of its name, in any case: 1. 0 for
    /// another ending, or an elevation file that cannot be opened. With AlignMeshes on the grid becomes the file's.
    int SetPathname(CString const& path);
    int SetPathnameDEM(CString const& path);
    int SetPathnameTavolin(CString const& path);
    /// The file last read; empty without one.
    CString GetPathname() const;
    FileType GetFileType() const { return m_fileType; }
    CUSGSDEM const& GetDEM() const { return m_dem; }
    CZValsFile const& GetZValsFile() const { return m_zValsFile; }
    /// Null without one; owned by the surface.
    CScanTestHeader* GetScanTestHeader() const { return m_scanTestHeader.get(); }
    /// Keeps a copy.
    void SetScanTestHeader(CScanTestHeader const* header);

    // The data as evaluated

    int Evaluate() override;
    CSurfaceMesh* GetSurfaceMesh() { return m_surfaceMesh; }
    CSurfaceMesh const* GetSurfaceMesh() const { return m_surfaceMesh; }
    /// Ranges of the nodes in data units; unchanged while there are none.
    void GetXRange(double& min, double& max) const override;
    void GetYRange(double& min, double& max) const override;
    void GetZRange(double& min, double& max) const override;
    void GetRRange(double& min, double& max) const;
    /// The value that colours and contours a node: z, or the radius where values are radii. Transforms of the curve do
    /// not change it.
    double GetFVal(int i, int j) const;
    /// The range of what colours the surface: of the value table where it is used, else of the nodes' values.
    void GetUntransformedDataRange(double& min, double& max) const override;
    /// Whether the node is missing.
    int VertexClipped(int i, int j) const { return m_surfaceMesh->IsMissing(i, j) ? 1 : 0; }
    /// A parameter point with a value as a place in data units, by coordinate system and transforms.
    CVertex GetCartesian(double x, double y, double v) const;

    int GetUseRadialGrid() const { return m_useRadialGrid; }
    /// Cartesian grids: x is the radius, y the angle in degrees.
    void SetUseRadialGrid(int on) { ChangeData(m_useRadialGrid, on); }
    /// Whether ranges are those of the nodes whose boundary flag is set.
    int GetUseBoundary() const { return m_useBoundary; }
    void SetUseBoundary(int on) { ChangeData(m_useBoundary, on); }
    int SetCoarseMeshMode(int cols, int rows) override;
    void UpdateGraphParameters() override;
    void RefreshZVals() override { UpdateGraphParameters(); }
    /// Applies the curve's transforms to the nodes.
    void TranslateRotate() override;

    // A second variable that colours and contours in place of the values

    int GetUseValueTable() const { return m_valueTableSettings.use; }
    void SetUseValueTable(int on) { ChangeData(m_valueTableSettings.use, on); }
    void GetValueTableParams(double& xMin, double& yMin, double& xStep, double& yStep) const;
    void SetValueTableParams(double xMin, double yMin, double xStep, double yStep);
    /// Owned by the surface.
    CTableData* GetValueTable() { return &m_valueTable; }
    void SetValueTable(CTableData const& table);
    /// 1 when the value table is used and has values.
    int PlotSecondaryVariable() const { return m_valueTableSettings.use && m_valueTable.HasData() ? 1 : 0; }

    // Colours

    /// 1 when the colour description is at least 1 or gradation is on.
    int UseColourmap() const { return GetColourDescription() >= 1 || GetGradationOn() ? 1 : 0; }
    COLORREF GetLUTColour(double value) const override { return GetColourInRange(value); }
    COLORREF GetContourLineLUTColour(double value) const;
    /// Along the 1D texture of the surface's colours, 0 … 1; 0 where all values are equal.
    double Get1DTextureCoord(int i, int j) const;
    /// The 1024 colours of that texture, three bytes each.
    std::vector<BYTE> Make1DTexture() const;
    int NeedsColourKey() const override { return GetColourDescription() > 0 ? 1 : 0; }
    ColourKeySource GetColourKeySource() const override;
    COLORREF GetColourOfValue(double value, double low, double high) const override
    {
        return GetShadeOrMapColour(value, low, high);
    }
    /// 0 opaque … 1 invisible.
    double GetTransparency() const { return m_transparency; }
    void SetTransparency(double transparency) { Change(m_transparency, transparency); }
    /// Whether light follows the curved surface; else each triangle is flat.
    int GetForceNormalAveraging() const { return m_forceNormalAveraging; }
    void SetForceNormalAveraging(int on) { Change(m_forceNormalAveraging, on); }

    // Contours

    int GetContoursOn() const { return m_contours.on; }
    void SetContoursOn(int on) { Change(m_contours.on, on); }
    ContourMode GetContourMode() const { return static_cast<ContourMode>(m_contours.mode); }
    void SetContourMode(int mode) { Change(m_contours.mode, mode); }
    void SetContourMode(NamesOtherThan<ContourMode> auto) = delete;
    int GetContourLevelMode() const { return m_contours.levelMode; }
    void SetContourLevelMode(int mode) { Change(m_contours.levelMode, mode); }
    void SetContourLevelMode(NamesOtherThan<ContourLevelMode> auto) = delete;
    int GetNumContourBands() const { return m_contours.numBands; }
    void SetNumContourBands(int bands) { Change(m_contours.numBands, bands); }
    double GetContourRef() const { return m_contours.ref; }
    void SetContourRef(double value) { Change(m_contours.ref, value); }
    /// What is not above 0 is stored, but gives no levels, and a message when levels are made.
    double GetContourSpacing() const { return m_contours.spacing; }
    void SetContourSpacing(double spacing) { Change(m_contours.spacing, spacing); }
    COLORREF GetContourColour() const { return m_contours.colour; }
    void SetContourColour(COLORREF colour) { Store(m_contours.colour, colour); }
    int GetContourColourMode() const { return m_contours.colourMode; }
    void SetContourColourMode(int mode) { Change(m_contours.colourMode, mode); }
    double GetContourScaleFac() const { return m_contours.scaleFac; }
    void SetContourScaleFac(double factor) { Change(m_contours.scaleFac, factor); }
    CDoubleArray const& GetArbContourLevels() const { return m_arbitraryLevels; }
    void SetArbContourLevels(CDoubleArray const& levels) { Change(m_arbitraryLevels, levels); }
    /// Colours of bands, and of lines that have one each. Owned by the surface.
    CColourMap* GetContourColourmap() { return &m_contourColourmap; }
    /// CColourMap::Load's answer.
    int SetContourColourmap(CString const& name);
    /// 1 when contours are on and their mode has lines.
    int NeedContourLines() const { return m_contours.on && m_contours.mode >= 1 && m_contours.mode <= 2 ? 1 : 0; }
    /// The levels that the settings ask for, or why there are none.
    ContourLevels MakeContourLevels() const;
    /// Levels, band and line colours become those of the settings; a level that cannot be made is told once.
    void BuildContours();
    /// As last built, as are the colours: a band more than levels, and a line colour a level.
    std::span<double const> GetContourLevels() const { return m_contourColours.GetLevels(); }
    CDWordArray const& GetContourBandColours() const { return m_contourColours.GetColours(); }
    CDWordArray const& GetContourLineColours() const { return m_lineColours; }
    /// The colour of the band that the value lies in; black before bands are built.
    COLORREF GetContourColour(double value) const { return m_contourColours.GetColour(value); }
    /// The band colours, and the values from which they reach, the first of these being the range's low end where a
    /// colour map is used.
    void GetContourColourKeyEntries(CDWordArray& colours, CDoubleArray& values) const;
    /// The lines of a level over the parameters.
    void FindContourSegments(double level, std::vector<ContourSegment>& segments) const;
    /// A point of a contour line as a place in data units.
    CVertex GetContourPoint(ContourSegment const& segment, std::array<double, 2> const& point, double level) const;
    /// Which corners of a cell lie above the level (GetContourCase).
    static int cell(double z0, double z1, double z2, double z3, double level);
    /// The segments of a case, 0 … 2 (GetContourSegments).
    static int lines(int contourCase, ContourCell const& cell, double level, std::span<ContourSegment, 2> segments);

    // Wireframe

    int GetWireframeOn() const { return m_wireframe.on; }
    void SetWireframeOn(int on) { Change(m_wireframe.on, on); }
    /// As GetWireframeOn.
    int WireframeOn() const { return m_wireframe.on; }
    int GetWireframeEmissionOn() const { return m_wireframe.emissionOn; }
    void SetWireframeEmissionOn(int on) { Change(m_wireframe.emissionOn, on); }
    int GetWireframeColourDescription() const { return m_wireframe.colourDescription; }
    void SetWireframeColourDescription(int description) { Change(m_wireframe.colourDescription, description); }
    COLORREF GetWireframeColour() const;
    void SetWireframeColour(COLORREF colour);
    WireframeMode GetWireframeMode() const { return static_cast<WireframeMode>(m_wireframe.mode); }
    void SetWireframeMode(int mode) { Change(m_wireframe.mode, mode); }
    void SetWireframeMode(NamesOtherThan<WireframeMode> auto) = delete;
    int GetNumWireframeRows() const { return m_wireframe.rows; }
    void SetNumWireframeRows(int rows) { Change(m_wireframe.rows, rows); }
    int GetNumWireframeCols() const { return m_wireframe.cols; }
    void SetNumWireframeCols(int cols) { Change(m_wireframe.cols, cols); }
    /// 0 is stored, but counts as 1.
    int GetWireframeXFac() const { return m_wireframe.xFac; }
    void SetWireframeXFac(int cells) { Store(m_wireframe.xFac, cells); }
    int GetWireframeYFac() const { return m_wireframe.yFac; }
    void SetWireframeYFac(int cells) { Store(m_wireframe.yFac, cells); }
    CString GetWireframeLUTName() const { return m_wireframeLUTName; }
    void SetWireframeLUTName(CString const& name) { Change(m_wireframeLUTName, name); }
    CString GetWireframeLUTString() const { return m_wireframeLUTString; }
    void SetWireframeLUTString(CString const& text) { Change(m_wireframeLUTString, text); }
    CColourMap* GetWireframeColourmap() { return &m_wireframeColourmap; }
    CColourMap const* GetWireframeColourmap() const { return &m_wireframeColourmap; }
    int SetWireframeColourmap(CString const& name);
    /// Whether nodes have wireframe colours of their own.
    bool HasWireframeColours() const { return m_wireframe.on && m_wireframe.colourDescription == 1; }
    /// A node's colour by its value in the wireframe's colour map.
    COLORREF GetWireframeLUTColour(int i, int j) const;

    // An image over the surface

    int GetUseTextureMap() const { return m_texture.use; }
    void SetUseTextureMap(int on) { Change(m_texture.use, on); }
    int GetClampTextureMap() const { return m_texture.clamp; }
    void SetClampTextureMap(int on) { Change(m_texture.clamp, on); }
    int GetUseMeshRangesForTextureMap() const { return m_texture.useMeshRanges; }
    void SetUseMeshRangesForTextureMap(int on) { Store(m_texture.useMeshRanges, on); }
    int GetPinTexture() const { return m_texture.pin; }
    void SetPinTexture(int on) { Change(m_texture.pin, on); }
    CTextureMap* GetTextureMap() { return &m_textureMap; }
    CTextureMap const* GetTextureMap() const { return &m_textureMap; }
    /// Takes over file, part of the image, place and opacity; where the surface uses the image, CTextureMap::Create's
    /// answer and errors, else 1.
    int SetTextureMapParams(CTextureMap const& params);
    /// The place of a node on the image, each coordinate 0 … 1; returns 0 when it lies beyond it.
    int GetTextureCoord(int i, int j, double& s, double& t) const;
    /// 1 when all four corners of cell (i, j) lie on the image.
    int GetTextureFlag(int i, int j) const;

    // Drawing: within a draw of the graph

    void Render() override;
    /// Whether there is data, or a text that stands for it.
    int AnythingToDraw() const { return IsDefined(); }
    void InvalidateDeviceObjects() override;
    void RestoreDeviceObjects() override;

protected:
    int EvaluateTableCurve() override;
    /// Brings up to date what follows from the nodes.
    int EvaluateCurve();

    void PlaceZVals(double xMin, double yMin, double xStep, double yStep) override;
    void SetZValsCurveType(int curveType) override;
    void SetZValsRadialGrid(int on) override { SetUseRadialGrid(on); }
    CTableData& GetZValsTable() override { return *GetTableDataPtr(); }
    void SetZValsRead() override { m_fileType = ftZVals; }

private:
    friend class SurfaceRenderer;
    struct Range {
        double min = 0.0;
        double max = 0.0;
    };
    void InterpolateValues();
    void BuildUntransformedFVals();
    /// What colours the nodes, in the mesh's order.
    std::vector<double> const& ColourValues() const;
    ContourColours MakeContourColours() const;
    void MakeContourFinder() const;
    void SerializeFiles(ArchiveFields& fields);
    void ConvertLoaded();

    CSurfaceMesh* m_surfaceMesh;
    CUSGSDEM m_dem;
    CZValsFile m_zValsFile;
    FileType m_fileType = ftDEM;
    std::unique_ptr<CScanTestHeader> m_scanTestHeader;
    int m_furtherInt = 0;
    int m_useRadialGrid = 0;
    int m_useBoundary = 0;
    int m_forceNormalAveraging = 1;
    double m_transparency = 0.0;
    WireframeSettings m_wireframe;
    CString m_wireframeLUTString;
    CString m_wireframeLUTName;
    CColourMap m_wireframeColourmap;
    ValueTableSettings m_valueTableSettings;
    CTableData m_valueTable;
    SurfaceTextureSettings m_texture;
    CTextureMap m_textureMap;
    ContourSettings m_contours;
    CDoubleArray m_arbitraryLevels;
    CColourMap m_contourColourmap;

    ContourColours m_contourColours;
    CDWordArray m_lineColours;

    Range m_untransformedZ;
    Range m_untransformedR;
    /// Empty where the nodes' z are the values.
    std::vector<double> m_functionValues;
    mutable std::unique_ptr<ContourFinder> m_contourFinder;
    mutable std::vector<std::uint8_t> m_missing;
    /// Goes up with each evaluation.
    std::uint64_t m_revision = 0;
    std::unique_ptr<SurfaceRenderer> m_renderer;
};

} // namespace ombrel
