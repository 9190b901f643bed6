#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/graph2d/2DPlot.h"
#include "ombrel/model/NamesOtherThan.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"

#include <memory>

namespace ombrel {

class CScanTestHeader;
class CSurface;

/// A gridded surface seen from above: lines along levels of its values, a shading of the bands between them, or both.
///
/// The grid, its files and its colour map are those of a surface that the curve owns; the colour map is the surface's
/// wireframe colour map. Values are those of a Cartesian grid over x and y in data units.
class OMBREL_EXPORT C2DContourCurve : public C2DCurve {
public:
    /// Lines along levels, bands of colour between them, or both.
    enum DisplayMode : int { dmLines = 0, dmShading = 1, dmShadingAndLines = 2 };
    /// Every line in the surface's own colour, or each in the colour of its level.
    enum ContourColourMode : int { ccOneColour = 0, ccLevelColours = 1 };
    /// So many levels evenly inside of the range; those of a series; the surface's arbitrary levels.
    enum LevelMode : int { lmEven = 0, lmSpaced = 1, lmArbitrary = 2 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DContourCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    ~C2DContourCurve() override;
    void Serialize(CArchive& ar) override;

    /// Holds the grid and the colour map. Owned by the curve; loading puts another in its place.
    CSurface* GetSurface() const { return m_surface.get(); }
    int GetDisplayMode() const { return m_displayMode; }
    void SetDisplayMode(int mode) { Store(m_displayMode, mode); }
    void SetDisplayMode(NamesOtherThan<DisplayMode> auto) = delete;
    int GetContourColourMode() const { return m_contourColourMode; }
    void SetContourColourMode(int mode) { Store(m_contourColourMode, mode); }
    void SetContourColourMode(NamesOtherThan<ContourColourMode> auto) = delete;
    int GetLevelMode() const { return m_levelMode; }
    void SetLevelMode(int mode) { Store(m_levelMode, mode); }
    void SetLevelMode(NamesOtherThan<LevelMode> auto) = delete;
    /// Of level mode 0; without any, shading follows the colour map without bands.
    int GetNumContours() const { return m_numContours; }
    void SetNumContours(int count) { Store(m_numContours, count); }
    /// Of level mode 1: one value of the series, and the distance between its values, which must be positive: otherwise
    /// there are no levels.
    double GetRef() const { return m_reference; }
    void SetRef(double reference) { Store(m_reference, reference); }
    double GetSpacing() const { return m_spacing; }
    void SetSpacing(double spacing) { Store(m_spacing, spacing); }
    /// Nominal width of the lines, in pixels at 96 to the inch.
    int GetLineThickness() const { return m_lineThickness; }
    void SetLineThickness(int thickness) { Store(m_lineThickness, thickness); }
    /// Null without one; owned by the curve.
    CScanTestHeader* GetScanTestHeader() const { return m_scanTestHeader.get(); }
    /// Keeps a copy of the header.
    void SetScanTestHeader(CScanTestHeader* header);

    // Passed on to the surface
    void SetDataSourceType(DataSourceType type) override;
    void SetPlot(CPlot* plot) override;
    void GetXRange(double& min, double& max) const override;
    void GetYRange(double& min, double& max) const override;
    void GetZRange(double& min, double& max) const override;
    bool HasRange() const override;
    int IsDefined() const override;
    int GetDataSize() const override;

    /// As the surface's. A reference that lies more than twice the range's width outside of it is told to the user, and
    /// the curve is invalid.
    int Evaluate() override;
    int NeedsColourKey() const override;
    bool CanHaveColourKey() const override { return true; }
    ColourKeySource GetColourKeySource() const override;
    COLORREF GetColourOfValue(double value, double low, double high) const override;
    /// The colours and values of a key: of lines their levels; of bands the lowest value, then the levels.
    void GetContourColourKeyEntries(CDWordArray& colours, CDoubleArray& values) const;
    /// 1 and the height at a point, between the nodes of the grid, when the point lies in what is drawn of it.
    int GetZVal(CRealPoint const& p, double& z) const;
    void Draw(CPort* port) override;
    /// Legends do not list contours.
    std::optional<LegendEntry> GetLegendEntry() const override { return {}; }

    /// What the last draw worked out from the settings.
    CDoubleArray const& GetLevels() const { return m_levels; }
    CDWordArray const& GetBandColours() const { return m_bandColours; }
    CDWordArray const& GetLineColours() const { return m_lineColours; }

private:
    struct Range {
        double lo = 0.0;
        double hi = 0.0;
        double mapMin = 0.0;
        double mapMax = 0.0;
    };
    Range GetRange() const;
    bool NeedsLevels() const { return m_levelMode != lmEven || m_numContours != 0; }
    bool IsContinuous() const;
    CDoubleArray MakeLevels() const;
    CDWordArray MakeBandColours(CDoubleArray const& levels) const;
    CDWordArray MakeLineColours(CDoubleArray const& levels) const;
    /// The device rectangle of the part of the grid that the axes show.
    CRect GetRangeRect() const;
    void DrawShading(CPort* port);
    void DrawContours(CPort* port);
    COLORREF MapColour(double value, Range const& range) const;

    std::unique_ptr<CSurface> m_surface;
    int m_displayMode = dmLines;
    int m_contourColourMode = ccOneColour;
    int m_levelMode = lmEven;
    int m_numContours = 6;
    int m_lineThickness = 1;
    double m_reference = 0.0;
    double m_spacing = 0.0;
    std::unique_ptr<CScanTestHeader> m_scanTestHeader;
    CDoubleArray m_levels;
    CDWordArray m_bandColours;
    CDWordArray m_lineColours;
};

/// A plot of contour curves.
class OMBREL_EXPORT C2DContourPlot : public C2DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DContourPlot(CGraph* graph = nullptr);
    void Serialize(CArchive& ar) override;
    /// A C2DContourCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
    /// The same with that title and source of data.
    CPlotComponent* AddCurve(CString const& title, CPlotComponent::DataSourceType source) override;
    /// 1 and the height of the first curve that has one at the point.
    int GetZVal(CRealPoint const& p, double& z) const;
};

} // namespace ombrel
