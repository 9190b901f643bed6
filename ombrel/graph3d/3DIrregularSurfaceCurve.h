#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/Vertex.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/ContourColours.h"
#include "ombrel/graph3d/SurfaceSettings.h"
#include "ombrel/model/TableData.h"
#include "ombrel/platform/framework/Export.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace ombrel {

class FaceBatch;
struct IrregularSurfaceDrawing;
struct IrregularSurfaceKey;

/// A surface through scattered points: triangles between neighbouring points (Delaunay, in the plane of x and y), lit,
/// in one colour or in those of a colour map, cut into contour bands, opaque or transparent, or with the triangles'
/// outlines over it.
///
/// Give it points (SetTableData) and a table as data source, and the graph does the rest. Points with a missing
/// coordinate take no part; of points that have the same x and y in single precision only the first does. Fewer than
/// three points, and points on one line, give no surface. The coordinate system may be Cartesian, polar or cylindrical
/// (angles in degrees, z the radius; in a cylindrical system y is the height); any other puts all points at the data
/// box's centre.
/// Errors: a point or triangle that is not there throws CInvalidArgException* (newly allocated), Serialize
/// CArchiveException*. When memory runs out while triangulating, a line on the standard error stream says so and
/// Evaluate throws std::bad_alloc; the curve stays without triangles.
class OMBREL_EXPORT C3DIrregularSurfaceCurve : public C3DCurve {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DIrregularSurfaceCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    ~C3DIrregularSurfaceCurve() override;
    void Serialize(CArchive& ar) override;

    // Points

    /// Copies n points from arrays of x, y and z; n below 1 leaves none. Throws CInvalidArgException* (newly allocated)
    /// and changes nothing when an array is not there or has fewer.
    void SetTableData(CDoubleArray const* const* arrays, int n);
    /// Rows x, y and z, a column a point; owned by the curve.
    CTableData* GetTableData() { return &m_points; }
    CTableData const* GetTableData() const { return &m_points; }
    int GetNumPoints() const;
    /// A point as a place in data units, before the curve's transforms.
    void GetVertex(int point, CVertex& place) const;
    /// A point as a place in the data box, after them.
    void GetNormalisedVertex(int point, CVertex& place) const;
    int GetDataSize() const override;

    int GetUseValueTable() const { return m_useValueTable; }
    /// Whether the values of the value table colour the surface, in place of z.
    void SetUseValueTable(int on) { Store(m_useValueTable, on); }
    /// A row with a value a point; points beyond its end, and those whose value is missing, have the lowest colour.
    /// Owned by the curve.
    CTableData* GetValueTable() { return &m_valueTable; }
    void SetValueTable(CTableData const& table);
    /// Six numbers that are only stored; transforms that are applied are SetTransforms'.
    std::array<double, 6> const& GetTransformParams() const { return m_transformParams; }
    void SetTransformParams(std::array<double, 6> const& params) { Store(m_transformParams, params); }

    // The data as evaluated

    int Evaluate() override;
    /// Applies coordinate system and transforms to the points.
    void TranslateRotate() override;
    void Triangulate();
    void ClearTriangles();
    /// Three points a triangle, all turning one way.
    std::span<std::array<int, 3> const> GetTriangles() const { return m_triangles; }
    /// Finds the triangles that use each point.
    void BuildCommonVertexLists();
    void ClearCommonVertexLists();
    /// Rising; empty before they are found.
    std::span<std::uint32_t const> GetCommonVertexList(int point) const;
    /// Takes over the ranges and proportions of the graph's axes.
    void UpdateGraphParameters() override { GetBoxAxes(m_axes); }
    void RefreshZVals() override { UpdateGraphParameters(); }

    // Normals, for hosts: a draw makes its own

    /// Normals that fit the points' places in the data box: of the triangles, and with normal averaging of the points.
    void Normalise();
    /// One a triangle, at right angles to it.
    void CalculateNormals();
    /// Finds the lists of triangles, and from the triangles' normals one a point.
    void AverageNormals();
    /// The average of the normals of the triangles that use a point: of length 1, or all 0 where they cancel out or
    /// there are none, or before AverageNormals.
    CNormal GetAveragedNormal(int point) const;

    // Ranges

    /// Ranges of the points' places in data units; unchanged while there are none.
    void GetXRange(double& min, double& max) const override { GetPlaceRange(0, min, max); }
    void GetYRange(double& min, double& max) const override { GetPlaceRange(1, min, max); }
    void GetZRange(double& min, double& max) const override { GetPlaceRange(2, min, max); }
    /// Of the value table.
    void GetValueRange(double& min, double& max) const;
    /// The range of what colours the surface: of the value table where it is used, else of the points' z.
    void GetUntransformedDataRange(double& min, double& max) const override;
    /// 1 when the value table is used and has values.
    int PlotSecondaryVariable() const { return m_useValueTable && m_valueTable.HasData() ? 1 : 0; }

    // Colours

    /// 1 when the colour description is at least 1 or gradation is on.
    int UseColourmap() const { return GetColourDescription() >= 1 || GetGradationOn() ? 1 : 0; }
    COLORREF GetLUTColour(double value) const override { return GetColourInRange(value); }
    /// Along the 1D texture of the surface's colours, 0 … 1; 0 where all values are equal.
    double Get1DTextureCoord(int point) const;
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
    /// Whether light follows a curved surface; else each triangle is flat.
    int GetNormalAveraging() const { return m_normalAveraging; }
    void SetNormalAveraging(int on) { Store(m_normalAveraging, on); }
    int GetWireframeOn() const { return m_wireframeOn; }
    /// Draws the triangles' outlines over them; the surface is opaque then.
    void SetWireframeOn(int on) { Store(m_wireframeOn, on); }
    COLORREF GetWireframeColour() const { return m_wireframeColour; }
    void SetWireframeColour(COLORREF colour) { Store(m_wireframeColour, colour); }

    // Contour bands

    int GetContoursOn() const { return m_contours.on; }
    void SetContoursOn(int on) { Change(m_contours.on, on); }
    /// 0 by number of bands, 1 by a value and a distance, 2 as given (SetArbContourLevels).
    int GetContourLevelMode() const { return m_contours.levelMode; }
    void SetContourLevelMode(int mode) { Change(m_contours.levelMode, mode); }
    int GetNumContourBands() const { return m_contours.numBands; }
    void SetNumContourBands(int bands) { Change(m_contours.numBands, bands); }
    double GetContourRef() const { return m_contours.ref; }
    void SetContourRef(double value) { Change(m_contours.ref, value); }
    /// What is not above 0 is stored, but gives no levels, and a message when levels are made.
    double GetContourSpacing() const { return m_contours.spacing; }
    void SetContourSpacing(double spacing) { Change(m_contours.spacing, spacing); }
    /// Documents do not hold these.
    CDoubleArray const& GetArbContourLevels() const { return m_arbitraryLevels; }
    void SetArbContourLevels(CDoubleArray const& levels) { Change(m_arbitraryLevels, levels); }
    /// Levels and band colours become those of the settings; a level that cannot be made is told once.
    void BuildContourLevels();
    /// The same: colours are those of the levels.
    void BuildContourColours() { BuildContourLevels(); }
    /// As last built, as are the colours: a band more than levels.
    std::span<double const> GetContourLevels() const { return m_contourColours.GetLevels(); }
    CDWordArray const& GetContourBandColours() const { return m_contourColours.GetColours(); }
    /// The colour of the band that the value lies in; black before bands are built.
    COLORREF GetContourColour(double value) const { return m_contourColours.GetColour(value); }
    /// The band colours, and the values from which they reach, the first of these being the range's low end where a
    /// colour map is used.
    void GetContourColourKeyEntries(CDWordArray& colours, CDoubleArray& values) const;

    // Drawing: within a draw of the graph

    void Render() override;
    void InvalidateDeviceObjects() override;

private:
    struct Range {
        double min = 0.0;
        double max = 0.0;
    };
    void GetPlaceRange(std::size_t coordinate, double& min, double& max) const;
    ContourColours MakeContourColours() const;
    /// The value that colours a point; a gap where there is none.
    double GetColourValue(std::size_t point) const;
    void FillBatch(FaceBatch& batch, IrregularSurfaceKey const& key) const;

    CTableData m_points;
    CTableData m_places;
    double m_transparency = 0.0;
    // Documents hold two numbers whose meaning is not known.
    double m_furtherDouble = 1.0;
    int m_furtherInt = 0;
    int m_useValueTable = 0;
    CTableData m_valueTable;
    std::array<double, 6> m_transformParams {};
    int m_wireframeOn = 0;
    COLORREF m_wireframeColour = 0;
    int m_normalAveraging = 1;
    ContourSettings m_contours;
    CDoubleArray m_arbitraryLevels;

    ContourColours m_contourColours;

    std::array<Range, 3> m_placeRanges;
    bool m_hasPlaces = false;
    /// Goes up with each evaluation.
    std::uint64_t m_revision = 0;
    Range m_untransformedZ;
    Range m_valueRange;
    BoxAxes m_axes;
    std::vector<std::array<int, 3>> m_triangles;
    std::vector<std::array<float, 3>> m_faceNormals;
    std::vector<std::array<float, 3>> m_pointNormals;
    std::unique_ptr<IrregularSurfaceDrawing> m_drawing;
};

} // namespace ombrel
