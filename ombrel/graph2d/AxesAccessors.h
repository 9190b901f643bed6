#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/AxisSettings.h"
#include "ombrel/model/GraphComponent.h"
#include "ombrel/model/NamesOtherThan.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// Each setting of the axes of a 2D graph by a name of its own; CAxes::GetAxis and SetAxis read and set all settings of
/// one axis at once. What a setting means, and its value at first, stands at the field of AxisSettings,
/// DateTickSettings or AxesTextSettings that has its name without the axis.
///
/// Setters raise the modified flag, but for those under "only stored".
class OMBREL_EXPORT AxesAccessors : public CGraphComponent {
public:
    using TickMode = AxisSettings::TickMode;
    using LabelPlacement = AxisSettings::LabelPlacement;
    using FormatType = AxisSettings::FormatType;
    using TimeUnit = ombrel::TimeUnit;
    using enum AxisSettings::TickMode;
    using enum AxisSettings::LabelPlacement;
    using enum AxisSettings::LabelMode;
    using enum AxisSettings::RangeMode;
    using enum AxisSettings::TickRangeMode;

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
    void SetXAxisRangeMode(NamesOtherThan<AxisSettings::RangeMode> auto) = delete;
    int GetYAxisRangeMode() const { return m_y.rangeMode; }
    void SetYAxisRangeMode(int value) { Change(m_y.rangeMode, value); }
    void SetYAxisRangeMode(NamesOtherThan<AxisSettings::RangeMode> auto) = delete;
    double GetXAxisScaleFac() const { return m_x.scaleFac; }
    void SetXAxisScaleFac(double value) { Change(m_x.scaleFac, value); }
    double GetYAxisScaleFac() const { return m_y.scaleFac; }
    void SetYAxisScaleFac(double value) { Change(m_y.scaleFac, value); }
    int GetXTimeUnitsOn() const { return m_x.timeUnitsOn; }
    void SetXTimeUnitsOn(int value) { Change(m_x.timeUnitsOn, value); }
    int GetYTimeUnitsOn() const { return m_y.timeUnitsOn; }
    void SetYTimeUnitsOn(int value) { Change(m_y.timeUnitsOn, value); }

    // Titles

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
    void SetXTickRangeMode(NamesOtherThan<AxisSettings::TickRangeMode> auto) = delete;
    int GetYTickRangeMode() const { return m_y.tickRangeMode; }
    void SetYTickRangeMode(int value) { Change(m_y.tickRangeMode, value); }
    void SetYTickRangeMode(NamesOtherThan<AxisSettings::TickRangeMode> auto) = delete;
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

    COLORREF GetLabelsColour() const { return m_texts.labels.colour; }
    void SetLabelsColour(COLORREF value) { Change(m_texts.labels.colour, value); }
    COLORREF GetMinorLabelsColour() const { return m_texts.minorLabels.colour; }
    void SetMinorLabelsColour(COLORREF value) { Change(m_texts.minorLabels.colour, value); }
    COLORREF GetTitlesColour() const { return m_texts.titlesColour; }
    void SetTitlesColour(COLORREF value) { Change(m_texts.titlesColour, value); }
    /// Kept for documents; nothing is drawn in it.
    COLORREF GetTextColour() const { return m_textColour; }
    void SetTextColour(COLORREF value) { Change(m_textColour, value); }
    DWORD GetReservedColour() const { return m_reservedColour; }
    void SetReservedColour(DWORD value) { Change(m_reservedColour, value); }
    CFontData* GetTitlesFont() { return &m_texts.titlesFont; }
    void SetTitlesFont(CFontData const& font) { Change(m_texts.titlesFont, font); }
    CFontData* GetLabelsFont() { return &m_texts.labels.font; }
    void SetLabelsFont(CFontData const& font) { Change(m_texts.labels.font, font); }
    CFontData* GetMinorLabelsFont() { return &m_texts.minorLabels.font; }
    void SetMinorLabelsFont(CFontData const& font) { Change(m_texts.minorLabels.font, font); }

    // Only stored: whoever changes these asks for a redraw himself

    int GetXAxisLabelMode() const { return m_x.labelMode; }
    void SetXAxisLabelMode(int value) { Store(m_x.labelMode, value); }
    void SetXAxisLabelMode(NamesOtherThan<AxisSettings::LabelMode> auto) = delete;
    int GetYAxisLabelMode() const { return m_y.labelMode; }
    void SetYAxisLabelMode(int value) { Store(m_y.labelMode, value); }
    void SetYAxisLabelMode(NamesOtherThan<AxisSettings::LabelMode> auto) = delete;
    int GetXLabelPrecision() const { return m_x.labelPrecision; }
    void SetXLabelPrecision(int value) { Store(m_x.labelPrecision, value); }
    int GetYLabelPrecision() const { return m_y.labelPrecision; }
    void SetYLabelPrecision(int value) { Store(m_y.labelPrecision, value); }
    int GetXMinorLabelPrecision() const { return m_x.minorLabelPrecision; }
    void SetXMinorLabelPrecision(int value) { Store(m_x.minorLabelPrecision, value); }
    int GetYMinorLabelPrecision() const { return m_y.minorLabelPrecision; }
    void SetYMinorLabelPrecision(int value) { Store(m_y.minorLabelPrecision, value); }
    /// 0 turns the labels of the x axis by 90 degrees.
    int GetLabelsHorizontal() const { return m_texts.labels.horizontal; }
    void SetLabelsHorizontal(int value) { Store(m_texts.labels.horizontal, value); }
    int GetMinorLabelsHorizontal() const { return m_texts.minorLabels.horizontal; }
    void SetMinorLabelsHorizontal(int value) { Store(m_texts.minorLabels.horizontal, value); }
    CString GetXLabelDateFormat() const { return m_dates.dateFormat; }
    void SetXLabelDateFormat(CString const& value) { Store(m_dates.dateFormat, value); }
    CString GetXMinorLabelDateFormat() const { return m_dates.minorDateFormat; }
    void SetXMinorLabelDateFormat(CString const& value) { Store(m_dates.minorDateFormat, value); }
    CString GetXLabelTimeFormat() const { return m_dates.timeFormat; }
    void SetXLabelTimeFormat(CString const& value) { Store(m_dates.timeFormat, value); }
    CString GetXMinorLabelTimeFormat() const { return m_dates.minorTimeFormat; }
    void SetXMinorLabelTimeFormat(CString const& value) { Store(m_dates.minorTimeFormat, value); }
    void GetXLabels(CStringArray& labels) const { labels = m_x.labels; }
    void SetXLabels(CStringArray const& labels) { Store(m_x.labels, labels); }
    void GetYLabels(CStringArray& labels) const { labels = m_y.labels; }
    void SetYLabels(CStringArray const& labels) { Store(m_y.labels, labels); }
    void GetXArbTickPosns(CDoubleArray& positions) const { positions.GetArray() = m_x.arbitraryTicks; }
    void SetXArbTickPosns(CDoubleArray const& positions) { Store(m_x.arbitraryTicks, positions.GetArray()); }
    void GetYArbTickPosns(CDoubleArray& positions) const { positions.GetArray() = m_y.arbitraryTicks; }
    void SetYArbTickPosns(CDoubleArray const& positions) { Store(m_y.arbitraryTicks, positions.GetArray()); }

protected:
    AxesAccessors() { m_x.labelPlacement = lpBelow; }
    explicit AxesAccessors(CGraph* graph)
        : CGraphComponent(graph)
    {
        m_x.labelPlacement = lpBelow;
    }

    AxisSettings m_x;
    AxisSettings m_y;
    DateTickSettings m_dates;
    AxesTextSettings m_texts;
    /// Kept for documents only.
    DWORD m_reservedColour = 0;
    COLORREF m_textColour = 0;
};

} // namespace ombrel
