#pragma once
#include "ombrel/foundation/FontData.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/graph2d/AxisSettings.h"
#include "ombrel/model/GraphComponent.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

#include <memory>

namespace ombrel {

class C2DGraph;
class CDC;
class CPen;
struct AxesResults;

/// The two axes of a 2D graph: own the data range, place ticks, labels and titles.
///
/// Units: ranges and ticks are data units, y up; on a logarithmic axis they are decades (log10). Extents are device
/// pixels, y down. Lifetime: owned by the graph; the graph is not owned.
/// Order of a draw: UpdateGraphParameters (after data or settings changed), Draw in measuring mode, Draw in drawing
/// mode; both passes give the same extents.
/// Setters raise the modified flag, but for those under "only stored" and the range operations.
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT CAxes : public CGraphComponent {
public:
    enum AxisType : int { atX = 0, atY = 1 };
    using TickMode = AxisSettings::TickMode;
    using LabelPlacement = AxisSettings::LabelPlacement;
    using FormatType = AxisSettings::FormatType;
    using TimeUnit = ombrel::TimeUnit;
    using enum AxisSettings::TickMode;
    using enum AxisSettings::LabelPlacement;
    using enum AxisSettings::LabelMode;
    using enum AxisSettings::RangeMode;
    using enum AxisSettings::TickRangeMode;

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading: without a graph.
    CAxes();
    /// Colours come from the user's preferences.
    explicit CAxes(CGraph* graph);
    ~CAxes() override;
    void Serialize(CArchive& ar) override;
    /// Measures, or draws (see GetDrawMode); does nothing without a graph. Nothing is drawn while the graph's polar
    /// grid is on. The device context's state is as before afterwards.
    void Draw(CPort* port) override;
    using CGraphComponent::Draw;
    /// Follows the data: ranges, tick ranges, the crossing point and the axes' end points.
    void UpdateGraphParameters() override;

    /// Between these, tick positions, label texts and their sizes are computed once and kept, so that measuring is
    /// arithmetic only: no setting, range or graph rectangle, nor the device, may change in between. The mapping of
    /// the port may.
    void BeginLayout();
    void EndLayout();

    // Ranges and scales

    double GetXAxisMin() const { return m_x.min; }
    void SetXAxisMin(double value) { Change(m_x.min, value); }
    double GetYAxisMin() const { return m_y.min; }
    void SetYAxisMin(double value) { Change(m_y.min, value); }
    double GetXAxisMax() const { return m_x.max; }
    void SetXAxisMax(double value) { Change(m_x.max, value); }
    double GetYAxisMax() const { return m_y.max; }
    void SetYAxisMax(double value) { Change(m_y.max, value); }
    int GetXAxisRangeMode() const { return m_x.rangeMode; }
    void SetXAxisRangeMode(int value) { Change(m_x.rangeMode, value); }
    int GetYAxisRangeMode() const { return m_y.rangeMode; }
    void SetYAxisRangeMode(int value) { Change(m_y.rangeMode, value); }
    /// 0 linear, any other value logarithmic. Every 2D curve of the graph learns the modes.
    int GetXAxisScaleMode() const { return m_x.scaleMode; }
    void SetXAxisScaleMode(int mode) { SetScaleMode(m_x, mode); }
    int GetYAxisScaleMode() const { return m_y.scaleMode; }
    void SetYAxisScaleMode(int mode) { SetScaleMode(m_y, mode); }
    double GetXAxisScaleFac() const { return m_x.scaleFac; }
    void SetXAxisScaleFac(double value) { Change(m_x.scaleFac, value); }
    double GetYAxisScaleFac() const { return m_y.scaleFac; }
    void SetYAxisScaleFac(double value) { Change(m_y.scaleFac, value); }
    int GetXTimeUnitsOn() const { return m_x.timeUnitsOn; }
    void SetXTimeUnitsOn(int value) { Change(m_x.timeUnitsOn, value); }
    int GetYTimeUnitsOn() const { return m_y.timeUnitsOn; }
    void SetYTimeUnitsOn(int value) { Change(m_y.timeUnitsOn, value); }

    // Axis lines, the crossing point and titles

    int XAxisOn() const { return m_x.on; }
    int YAxisOn() const { return m_y.on; }
    /// Switches the labels too.
    void SetXAxisOn(int on) { SwitchAxis(m_x, on); }
    void SetYAxisOn(int on) { SwitchAxis(m_y, on); }
    /// 0: the axes cross at (XAxisMin, YAxisMin); else at Intersect while that lies inside the ranges.
    int GetIntersectMode() const { return m_intersectMode; }
    void SetIntersectMode(int value) { Change(m_intersectMode, value); }
    CRealPoint GetIntersect() const { return m_intersect; }
    CRealPoint GetAutoIntersect() const { return { m_x.min, m_y.min }; }
    CRealPoint GetXAxisStart() const { return m_xAxisStart; }
    void SetXAxisStart(CRealPoint const& value) { Change(m_xAxisStart, value); }
    CRealPoint GetXAxisEnd() const { return m_xAxisEnd; }
    void SetXAxisEnd(CRealPoint const& value) { Change(m_xAxisEnd, value); }
    CRealPoint GetYAxisStart() const { return m_yAxisStart; }
    void SetYAxisStart(CRealPoint const& value) { Change(m_yAxisStart, value); }
    CRealPoint GetYAxisEnd() const { return m_yAxisEnd; }
    void SetYAxisEnd(CRealPoint const& value) { Change(m_yAxisEnd, value); }
    CString GetXAxisTitle() const { return m_x.title; }
    void SetXAxisTitle(CString const& value) { Change(m_x.title, value); }
    CString GetYAxisTitle() const { return m_y.title; }
    void SetYAxisTitle(CString const& value) { Change(m_y.title, value); }

    // Ticks

    TickMode GetXTickMode() const { return m_x.tickMode; }
    void SetXTickMode(TickMode value) { Change(m_x.tickMode, value); }
    TickMode GetYTickMode() const { return m_y.tickMode; }
    void SetYTickMode(TickMode value) { Change(m_y.tickMode, value); }
    int GetNumXMajorTicks() const { return m_x.numMajorTicks; }
    void SetNumXMajorTicks(int value) { Change(m_x.numMajorTicks, value); }
    int GetNumYMajorTicks() const { return m_y.numMajorTicks; }
    void SetNumYMajorTicks(int value) { Change(m_y.numMajorTicks, value); }
    int GetNumXMinorTicks() const { return m_x.numMinorTicks; }
    void SetNumXMinorTicks(int value) { Change(m_x.numMinorTicks, value); }
    int GetNumYMinorTicks() const { return m_y.numMinorTicks; }
    void SetNumYMinorTicks(int value) { Change(m_y.numMinorTicks, value); }
    double GetXTickMin() const { return m_x.tickMin; }
    void SetXTickMin(double value) { Change(m_x.tickMin, value); }
    double GetYTickMin() const { return m_y.tickMin; }
    void SetYTickMin(double value) { Change(m_y.tickMin, value); }
    double GetXTickDel() const { return m_x.tickDel; }
    void SetXTickDel(double value) { Change(m_x.tickDel, value); }
    double GetYTickDel() const { return m_y.tickDel; }
    void SetYTickDel(double value) { Change(m_y.tickDel, value); }
    int GetXTickRangeMode() const { return m_x.tickRangeMode; }
    void SetXTickRangeMode(int value) { Change(m_x.tickRangeMode, value); }
    int GetYTickRangeMode() const { return m_y.tickRangeMode; }
    void SetYTickRangeMode(int value) { Change(m_y.tickRangeMode, value); }
    double GetXTickRangeMin() const { return m_x.tickRangeMin; }
    void SetXTickRangeMin(double value) { Change(m_x.tickRangeMin, value); }
    double GetYTickRangeMin() const { return m_y.tickRangeMin; }
    void SetYTickRangeMin(double value) { Change(m_y.tickRangeMin, value); }
    double GetXTickRangeMax() const { return m_x.tickRangeMax; }
    void SetXTickRangeMax(double value) { Change(m_x.tickRangeMax, value); }
    double GetYTickRangeMax() const { return m_y.tickRangeMax; }
    void SetYTickRangeMax(double value) { Change(m_y.tickRangeMax, value); }
    double GetXMajorTickScaleFac() const { return m_x.majorTickScaleFac; }
    void SetXMajorTickScaleFac(double value) { Change(m_x.majorTickScaleFac, value); }
    double GetYMajorTickScaleFac() const { return m_y.majorTickScaleFac; }
    void SetYMajorTickScaleFac(double value) { Change(m_y.majorTickScaleFac, value); }
    double GetXMinorTickScaleFac() const { return m_x.minorTickScaleFac; }
    void SetXMinorTickScaleFac(double value) { Change(m_x.minorTickScaleFac, value); }
    double GetYMinorTickScaleFac() const { return m_y.minorTickScaleFac; }
    void SetYMinorTickScaleFac(double value) { Change(m_y.minorTickScaleFac, value); }

    // Ticks of dates

    COleDateTime GetXTickMinTime() const { return m_dates.tickMin; }
    void SetXTickMinTime(COleDateTime value) { Change(m_dates.tickMin, value); }
    int GetXDelTime() const { return m_dates.del; }
    void SetXDelTime(int value) { Change(m_dates.del, value); }
    TimeUnit GetXDelTimeUnit() const { return m_dates.delUnit; }
    void SetXDelTimeUnit(TimeUnit value) { Change(m_dates.delUnit, value); }
    int GetXDelTimeMinor() const { return m_dates.delMinor; }
    void SetXDelTimeMinor(int value) { Change(m_dates.delMinor, value); }
    TimeUnit GetXDelTimeUnitMinor() const { return m_dates.delUnitMinor; }
    void SetXDelTimeUnitMinor(TimeUnit value) { Change(m_dates.delUnitMinor, value); }
    int GetAlignRefDate() const { return m_dates.alignRefDate; }
    void SetAlignRefDate(int value) { Change(m_dates.alignRefDate, value); }

    // Labels

    int GetXLabelsOn() const { return m_x.labelsOn; }
    void SetXLabelsOn(int value) { Change(m_x.labelsOn, value); }
    int GetYLabelsOn() const { return m_y.labelsOn; }
    void SetYLabelsOn(int value) { Change(m_y.labelsOn, value); }
    int GetXMinorLabelsOn() const { return m_x.minorLabelsOn; }
    void SetXMinorLabelsOn(int value) { Change(m_x.minorLabelsOn, value); }
    int GetYMinorLabelsOn() const { return m_y.minorLabelsOn; }
    void SetYMinorLabelsOn(int value) { Change(m_y.minorLabelsOn, value); }
    int GetXIntersectLabelOn() const { return m_x.intersectLabelOn; }
    void SetXIntersectLabelOn(int value) { Change(m_x.intersectLabelOn, value); }
    int GetYIntersectLabelOn() const { return m_y.intersectLabelOn; }
    void SetYIntersectLabelOn(int value) { Change(m_y.intersectLabelOn, value); }
    LabelPlacement GetXLabelPlacement() const { return m_x.labelPlacement; }
    void SetXLabelPlacement(LabelPlacement value) { Change(m_x.labelPlacement, value); }
    LabelPlacement GetYLabelPlacement() const { return m_y.labelPlacement; }
    void SetYLabelPlacement(LabelPlacement value) { Change(m_y.labelPlacement, value); }
    FormatType GetXFormatType() const { return m_x.formatType; }
    void SetXFormatType(FormatType value) { Change(m_x.formatType, value); }
    FormatType GetYFormatType() const { return m_y.formatType; }
    void SetYFormatType(FormatType value) { Change(m_y.formatType, value); }
    FormatType GetXMinorFormatType() const { return m_x.minorFormatType; }
    void SetXMinorFormatType(FormatType value) { Change(m_x.minorFormatType, value); }
    FormatType GetYMinorFormatType() const { return m_y.minorFormatType; }
    void SetYMinorFormatType(FormatType value) { Change(m_y.minorFormatType, value); }

    // Colours and fonts

    COLORREF GetLabelsColour() const { return m_labelsColour; }
    void SetLabelsColour(COLORREF value) { Change(m_labelsColour, value); }
    COLORREF GetMinorLabelsColour() const { return m_minorLabelsColour; }
    void SetMinorLabelsColour(COLORREF value) { Change(m_minorLabelsColour, value); }
    COLORREF GetTitlesColour() const { return m_titlesColour; }
    void SetTitlesColour(COLORREF value) { Change(m_titlesColour, value); }
    /// Kept for documents; nothing is drawn in it.
    COLORREF GetTextColour() const { return m_textColour; }
    void SetTextColour(COLORREF value) { Change(m_textColour, value); }
    DWORD GetReservedColour() const { return m_reservedColour; }
    void SetReservedColour(DWORD value) { Change(m_reservedColour, value); }
    CFontData* GetTitlesFont() { return &m_titlesFont; }
    void SetTitlesFont(CFontData const& font) { Change(m_titlesFont, font); }
    CFontData* GetLabelsFont() { return &m_labelsFont; }
    void SetLabelsFont(CFontData const& font) { Change(m_labelsFont, font); }
    CFontData* GetMinorLabelsFont() { return &m_minorLabelsFont; }
    void SetMinorLabelsFont(CFontData const& font) { Change(m_minorLabelsFont, font); }

    // Only stored: whoever changes these asks for a redraw himself

    int GetXAxisLabelMode() const { return m_x.labelMode; }
    void SetXAxisLabelMode(int value) { m_x.labelMode = value; }
    int GetYAxisLabelMode() const { return m_y.labelMode; }
    void SetYAxisLabelMode(int value) { m_y.labelMode = value; }
    int GetXLabelPrecision() const { return m_x.labelPrecision; }
    void SetXLabelPrecision(int value) { m_x.labelPrecision = value; }
    int GetYLabelPrecision() const { return m_y.labelPrecision; }
    void SetYLabelPrecision(int value) { m_y.labelPrecision = value; }
    int GetXMinorLabelPrecision() const { return m_x.minorLabelPrecision; }
    void SetXMinorLabelPrecision(int value) { m_x.minorLabelPrecision = value; }
    int GetYMinorLabelPrecision() const { return m_y.minorLabelPrecision; }
    void SetYMinorLabelPrecision(int value) { m_y.minorLabelPrecision = value; }
    /// 0 turns the labels of the x axis by 90 degrees.
    int GetLabelsHorizontal() const { return m_labelsHorizontal; }
    void SetLabelsHorizontal(int value) { m_labelsHorizontal = value; }
    int GetMinorLabelsHorizontal() const { return m_minorLabelsHorizontal; }
    void SetMinorLabelsHorizontal(int value) { m_minorLabelsHorizontal = value; }
    CString GetXLabelDateFormat() const { return m_dates.dateFormat; }
    void SetXLabelDateFormat(CString const& value) { m_dates.dateFormat = value; }
    CString GetXMinorLabelDateFormat() const { return m_dates.minorDateFormat; }
    void SetXMinorLabelDateFormat(CString const& value) { m_dates.minorDateFormat = value; }
    CString GetXLabelTimeFormat() const { return m_dates.timeFormat; }
    void SetXLabelTimeFormat(CString const& value) { m_dates.timeFormat = value; }
    CString GetXMinorLabelTimeFormat() const { return m_dates.minorTimeFormat; }
    void SetXMinorLabelTimeFormat(CString const& value) { m_dates.minorTimeFormat = value; }
    void SetIntersect(CRealPoint const& p) { m_intersect = p; }
    void GetXLabels(CStringArray& labels) const { labels = m_x.labels; }
    void SetXLabels(CStringArray const& labels) { m_x.labels = labels; }
    void GetYLabels(CStringArray& labels) const { labels = m_y.labels; }
    void SetYLabels(CStringArray const& labels) { m_y.labels = labels; }
    void GetXArbTickPosns(CDoubleArray& positions) const { positions.GetArray() = m_x.arbitraryTicks; }
    void SetXArbTickPosns(CDoubleArray const& positions) { m_x.arbitraryTicks = positions.GetArray(); }
    void GetYArbTickPosns(CDoubleArray& positions) const { positions.GetArray() = m_y.arbitraryTicks; }
    void SetYArbTickPosns(CDoubleArray const& positions) { m_y.arbitraryTicks = positions.GetArray(); }

    // Range operations

    /// Does nothing for any other type.
    void SetRange(AxisType type, double min, double max);
    void SetXAxisRange(double min, double max) { SetRange(atX, min, max); }
    void SetYAxisRange(double min, double max) { SetRange(atY, min, max); }
    void GetXAxisRange(double& min, double& max) const;
    void GetYAxisRange(double& min, double& max) const;
    /// Maximum minus minimum; 0 for any other type.
    double GetRange(AxisType type) const;
    void Set(double xmin, double xmax, double ymin, double ymax, CRealPoint const& intersect);
    void Get(double& xmin, double& xmax, double& ymin, double& ymax, CRealPoint& intersect) const;
    /// The range that the axis would scale itself to in that range mode.
    ///
    /// A range without length is widened by 1 to both sides, and where that is too little to tell the ends apart, by
    /// a millionth of its value. The stored limits stand in for data whose range is not finite; a range that is
    /// reversed or too long for a double is not made tidy.
    void GetRange(AxisType type, int rangeMode, double& min, double& max) const;
    /// The decades that hold the data, or without a defined curve the stored limits; at least one decade, upwards.
    void GetLogRange(AxisType type, double& min, double& max) const;
    void SetTickRange(AxisType type, double min, double max);
    /// As stored; the mode means nothing.
    void GetTickRange(AxisType type, int, double& min, double& max) const;
    void GetTickMinDel(AxisType type, double& min, double& del) const;
    int IsWithinTickRange(AxisType type, double v) const { return Axis(type).IsWithinTickRange(v) ? 1 : 0; }
    /// 1 when a fixed range leaves the point out, else 0.
    int IsClipped(CRealPoint const& p) const;
    /// The tick values in the present tick mode, ascending.
    void GetXNotchPositions(CDoubleArray& positions) const;
    void GetYNotchPositions(CDoubleArray& positions) const;
    /// 1 when both limits of the x axis are dates; else 0, and "Invalid Date Range" stands in the middle of the axis.
    int CheckDateRange(CPort* port);
    /// Moves the date by n units, n of either sign; a day that does not exist makes it invalid.
    static void IncrementTime(int n, TimeUnit unit, COleDateTime& t) { CVUtils::IncrementTime(n, unit, t); }

    // What the last Draw found, in device pixels

    /// Everything that the axes take up, labels and titles included.
    CRect GetExtentRect() const { return m_extent; }
    int GetMinXExtent() const { return m_extent.left; }
    int GetMinYExtent() const { return m_extent.bottom; }
    int GetFontHeight() const { return m_fontHeight; }
    /// The data rectangle, in data units.
    CRealRect GetRealExtentRect() const { return { m_x.min, m_y.max, m_x.max, m_y.min }; }

private:
    C2DGraph* Graph2D() const;
    bool IsPolarGridOn() const;
    AxisSettings const& Axis(AxisType type) const { return type == atY ? m_y : m_x; }
    AxisSettings& Axis(AxisType type) { return type == atY ? m_y : m_x; }
    void SetScaleMode(AxisSettings& axis, int mode);
    void SwitchAxis(AxisSettings& axis, int on);
    bool GetDataRange(AxisType type, double& min, double& max) const;
    void UpdateRange(AxisType type);
    void UpdatePolarRanges();

    /// One walk over results: finds the extents, and draws when asked to.
    class Pass;
    /// Font heights and tick lengths alone.
    AxesResults MakeSizes(CPort& port) const;
    AxesResults MakeResults(CPort& port) const;
    void MeasureTexts(CDC& dc, AxesResults& results) const;
    void DrawResults(CPort& port, AxesResults const& results, bool draws);
    CPen AxesPen(CDC const& dc) const;

    AxisSettings m_x;
    AxisSettings m_y;
    DateTickSettings m_dates;
    int m_labelsHorizontal = 1;
    int m_minorLabelsHorizontal = 1;
    int m_intersectMode = 0;
    CRealPoint m_intersect;
    CRealPoint m_xAxisStart;
    CRealPoint m_xAxisEnd;
    CRealPoint m_yAxisStart;
    CRealPoint m_yAxisEnd;
    DWORD m_reservedColour = 0;
    COLORREF m_labelsColour = 0;
    COLORREF m_minorLabelsColour = 0;
    COLORREF m_titlesColour = 0;
    COLORREF m_textColour = 0;
    CFontData m_titlesFont;
    CFontData m_labelsFont;
    CFontData m_minorLabelsFont;

    int m_fontHeight = 0;
    CRect m_extent;
    /// What measuring passes have in common, kept from BeginLayout to EndLayout.
    std::unique_ptr<AxesResults> m_results;
    bool m_inLayout = false;
};

} // namespace ombrel
