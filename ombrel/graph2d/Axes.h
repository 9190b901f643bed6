#pragma once
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/graph2d/AxesAccessors.h"
#include "ombrel/model/AxesScaleModes.h"
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
/// Setters raise the modified flag, but for the range operations and SetIntersect.
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT CAxes : public AxesAccessors, public AxesScaleModes {
public:
    /// Which of the two axes an operation is for.
    enum AxisType : int { atX = 0, atY = 1 };

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
    /// Ends what BeginLayout began.
    void EndLayout();

    // Settings

    /// Those of the x axis for any other type.
    AxisSettings const& GetAxis(AxisType type) const { return type == atY ? m_y : m_x; }
    /// Does nothing for any other type. Every 2D curve of the graph learns the scale modes.
    void SetAxis(AxisType type, AxisSettings const& axis);
    DateTickSettings const& GetDateTicks() const { return m_dates; }
    void SetDateTicks(DateTickSettings const& dates) { Change(m_dates, dates); }
    AxesTextSettings const& GetTexts() const { return m_texts; }
    void SetTexts(AxesTextSettings const& texts) { Change(m_texts, texts); }

    // Some of them by name: those that do more than store

    /// 0 linear, any other value logarithmic. Every 2D curve of the graph learns the modes.
    int GetXAxisScaleMode() const override { return m_x.scaleMode; }
    void SetXAxisScaleMode(int mode) { SetScaleMode(atX, mode); }
    int GetYAxisScaleMode() const override { return m_y.scaleMode; }
    void SetYAxisScaleMode(int mode) { SetScaleMode(atY, mode); }
    int XAxisOn() const { return m_x.on; }
    int YAxisOn() const { return m_y.on; }
    /// Switches the labels too.
    void SetXAxisOn(int on) { SwitchAxis(atX, on); }
    void SetYAxisOn(int on) { SwitchAxis(atY, on); }

    // The crossing point

    /// 0: the axes cross at (XAxisMin, YAxisMin); else at Intersect while that lies inside the ranges.
    int GetIntersectMode() const { return m_intersectMode; }
    void SetIntersectMode(int value) { Change(m_intersectMode, value); }
    CRealPoint GetIntersect() const { return m_intersect; }
    /// Where the axes cross by themselves: at the lower ends of both.
    CRealPoint GetAutoIntersect() const { return { m_x.min, m_y.min }; }
    CRealPoint GetXAxisStart() const { return m_xAxisStart; }
    void SetXAxisStart(CRealPoint const& value) { Change(m_xAxisStart, value); }
    CRealPoint GetXAxisEnd() const { return m_xAxisEnd; }
    void SetXAxisEnd(CRealPoint const& value) { Change(m_xAxisEnd, value); }
    CRealPoint GetYAxisStart() const { return m_yAxisStart; }
    void SetYAxisStart(CRealPoint const& value) { Change(m_yAxisStart, value); }
    CRealPoint GetYAxisEnd() const { return m_yAxisEnd; }
    void SetYAxisEnd(CRealPoint const& value) { Change(m_yAxisEnd, value); }
    void SetIntersect(CRealPoint const& p) { Store(m_intersect, p); }

    // Range operations

    /// Does nothing for any other type.
    void SetRange(AxisType type, double min, double max);
    void SetXAxisRange(double min, double max) { SetRange(atX, min, max); }
    void SetYAxisRange(double min, double max) { SetRange(atY, min, max); }
    void GetXAxisRange(double& min, double& max) const;
    void GetYAxisRange(double& min, double& max) const;
    /// Maximum minus minimum; 0 for any other type.
    double GetRange(AxisType type) const;
    /// Both ranges and the crossing point at once, in data units.
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
    int IsWithinTickRange(AxisType type, double v) const { return GetAxis(type).IsWithinTickRange(v) ? 1 : 0; }
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
    AxisSettings& Axis(AxisType type) { return type == atY ? m_y : m_x; }
    AxisLabelStyle const& LabelStyle(bool major) const { return major ? m_texts.labels : m_texts.minorLabels; }
    void SetScaleMode(AxisType type, int mode);
    void SwitchAxis(AxisType type, int on);
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

    int m_intersectMode = 0;
    CRealPoint m_intersect;
    CRealPoint m_xAxisStart;
    CRealPoint m_xAxisEnd;
    CRealPoint m_yAxisStart;
    CRealPoint m_yAxisEnd;

    int m_fontHeight = 0;
    CRect m_extent;
    /// What measuring passes have in common, kept from BeginLayout to EndLayout.
    std::unique_ptr<AxesResults> m_results;
    bool m_inLayout = false;
};

} // namespace ombrel
