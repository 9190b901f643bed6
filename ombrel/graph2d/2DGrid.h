#pragma once
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/GridSettings.h"
#include "ombrel/model/GraphComponent.h"
#include "ombrel/model/NamesOtherThan.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

class C2DGraph;

/// The rectangular grid of a 2D graph: major and minor lines across the data rectangle, and free lines anywhere.
///
/// "X" settings belong to vertical lines, at x positions; "Y" settings to horizontal ones. Positions are data units.
/// More about them stands at the fields of GridLine and GridDirection. While synchronised the grid takes its spacing
/// over from the axes, so that its lines meet the ticks. Lifetime: owned by its graph. Errors: only Serialize throws
/// (CArchiveException*, newly allocated).
class OMBREL_EXPORT C2DGrid : public CGraphComponent {
public:
    using LineMode = GridDirection::LineMode;
    using enum GridDirection::LineMode;
    using TickType = GridTickType;
    using enum GridTickType;

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading.
    C2DGrid() = default;
    /// Off, synchronised, in the user's preferred colours.
    explicit C2DGrid(CGraph* graph);
    void Serialize(CArchive& ar) override;
    /// Follows the axes of the graph while synchronised.
    void UpdateGraphParameters() override;
    /// Takes spacing and line modes over from the axes, synchronised or not. Raises no flag.
    void FollowAxes(CAxes const& axes);

    // Drawing: lines go across the axis ranges. Without a graph and its axes nothing is drawn. The device context's
    // state is as before afterwards.

    /// The grid when it is on, minor lines first, and the free lines. A synchronised grid follows the axes first, so
    /// that lines meet the ticks of the same draw.
    void Draw(CPort* port) override;
    using CGraphComponent::Draw;
    // Parts of a pass, in its pen; axis is one of CAxes::AxisType.
    /// Equal divisions of a linear axis.
    void DrawDivs(CPort* port, int axis, TickType type);
    /// Lines of the fixed step.
    void DrawDel(CPort* port, int axis, TickType type);
    /// Vertical lines at calendar steps.
    void DrawDate(CPort* port, TickType type);
    /// Lines of decades, whether or not lines of that direction are on.
    void DrawLogX(CPort* port, TickType type);
    void DrawLogY(CPort* port, TickType type);
    /// Free lines, anywhere: also outside the axis range. Entries that are no numbers are left out.
    void DrawArbXLines(CPort* port);
    void DrawArbYLines(CPort* port);

    /// Whether the grid is drawn; free lines are drawn all the same.
    int IsOn() const { return m_on; }
    void SetOn(int on) { Change(m_on, on); }
    /// Whether the grid follows the axes. Setting it raises no flag.
    int GetSynch() const { return m_synch; }
    void SetSynch(int synch) { Store(m_synch, synch); }
    int GetHorzLinesOn() const { return m_y.linesOn; }
    void SetHorzLinesOn(int on) { Change(m_y.linesOn, on); }
    int GetVertLinesOn() const { return m_x.linesOn; }
    void SetVertLinesOn(int on) { Change(m_x.linesOn, on); }

    COLORREF GetMajorColour() const { return m_major.colour; }
    void SetMajorColour(COLORREF colour) { Change(m_major.colour, colour); }
    COLORREF GetMinorColour() const { return m_minor.colour; }
    void SetMinorColour(COLORREF colour) { Change(m_minor.colour, colour); }
    /// 0 dotted, 1 solid.
    int GetMajorLineStyle() const { return m_major.style; }
    void SetMajorLineStyle(int style) { Change(m_major.style, style); }
    int GetMinorLineStyle() const { return m_minor.style; }
    void SetMinorLineStyle(int style) { Change(m_minor.style, style); }

    /// Major divisions of the axis range, and minor divisions of each; 5 and 4 at first.
    int GetNumMajorXDivs() const { return m_x.majorDivisions; }
    void SetNumMajorXDivs(int n) { Change(m_x.majorDivisions, n); }
    int GetNumMajorYDivs() const { return m_y.majorDivisions; }
    void SetNumMajorYDivs(int n) { Change(m_y.majorDivisions, n); }
    int GetNumMinorXDivs() const { return m_x.minorDivisions; }
    void SetNumMinorXDivs(int n) { Change(m_x.minorDivisions, n); }
    int GetNumMinorYDivs() const { return m_y.minorDivisions; }
    void SetNumMinorYDivs(int n) { Change(m_y.minorDivisions, n); }
    /// One of LineMode.
    int GetXLineMode() const { return m_x.lineMode; }
    void SetXLineMode(int mode) { Change(m_x.lineMode, mode); }
    void SetXLineMode(NamesOtherThan<LineMode> auto) = delete;
    int GetYLineMode() const { return m_y.lineMode; }
    void SetYLineMode(int mode) { Change(m_y.lineMode, mode); }
    void SetYLineMode(NamesOtherThan<LineMode> auto) = delete;
    /// A position that a line of the fixed step lies on, and the step.
    double GetXLineMin() const { return m_x.lineMin; }
    void SetXLineMin(double min) { Change(m_x.lineMin, min); }
    double GetYLineMin() const { return m_y.lineMin; }
    void SetYLineMin(double min) { Change(m_y.lineMin, min); }
    double GetXLineDel() const { return m_x.lineDel; }
    void SetXLineDel(double del) { Change(m_x.lineDel, del); }
    double GetYLineDel() const { return m_y.lineDel; }
    void SetYLineDel(double del) { Change(m_y.lineDel, del); }

    /// Free lines: whether they are drawn, where, and (stored only) whether they keep to the ticks.
    int GetArbXLinesOn() const { return m_x.freeLinesOn; }
    void SetArbXLinesOn(int on) { Change(m_x.freeLinesOn, on); }
    int GetArbYLinesOn() const { return m_y.freeLinesOn; }
    void SetArbYLinesOn(int on) { Change(m_y.freeLinesOn, on); }
    int GetAlignArbXLinesWithTicks() const { return m_x.alignFreeLines; }
    void SetAlignArbXLinesWithTicks(int align) { Change(m_x.alignFreeLines, align); }
    int GetAlignArbYLinesWithTicks() const { return m_y.alignFreeLines; }
    void SetAlignArbYLinesWithTicks(int align) { Change(m_y.alignFreeLines, align); }
    void GetArbXLinePosns(CDoubleArray& positions) const { positions.Copy(m_x.freePositions); }
    void SetArbXLinePosns(CDoubleArray const& positions) { SetFreePositions(m_x, positions); }
    void GetArbYLinePosns(CDoubleArray& positions) const { positions.Copy(m_y.freePositions); }
    void SetArbYLinePosns(CDoubleArray const& positions) { SetFreePositions(m_y, positions); }
    /// A GDI pen style. Style, colour and positions of free lines are not archived.
    int GetArbLineStyle() const { return m_free.style; }
    void SetArbLineStyle(int penStyle) { Change(m_free.style, penStyle); }
    COLORREF GetArbLineColour() const { return m_free.colour; }
    void SetArbLineColour(COLORREF colour) { Change(m_free.colour, colour); }

    /// Lines on a date axis: a date that a major line lies on, and the steps in calendar units.
    COleDateTime GetXMinTime() const { return m_dates.tickMin; }
    void SetXMinTime(COleDateTime const& date) { Change(m_dates.tickMin, date); }
    int GetXDelTime() const { return m_dates.del; }
    void SetXDelTime(int count) { Change(m_dates.del, count); }
    CAxes::TimeUnit GetXDelTimeUnit() const { return m_dates.delUnit; }
    void SetXDelTimeUnit(CAxes::TimeUnit unit) { Change(m_dates.delUnit, unit); }
    int GetXDelTimeMinor() const { return m_dates.delMinor; }
    void SetXDelTimeMinor(int count) { Change(m_dates.delMinor, count); }
    CAxes::TimeUnit GetXDelTimeUnitMinor() const { return m_dates.delUnitMinor; }
    void SetXDelTimeUnitMinor(CAxes::TimeUnit unit) { Change(m_dates.delUnitMinor, unit); }

private:
    /// The lines of one pass, on their way to the device.
    class Pass;
    template <typename Add> void DrawLines(CPort* port, TickType type, Add const& add) const;
    void DrawFreeLines(CPort* port, CAxes::AxisType axis) const;
    C2DGraph const* DrawnGraph(CPort const* port) const;
    GridDirection const& Direction(int axis) const { return axis == CAxes::atY ? m_y : m_x; }
    static void FollowTickMode(GridDirection& direction, AxisSettings const& axis);
    static void FollowSpacing(GridDirection& direction, AxisSettings const& axis);
    void SetFreePositions(GridDirection& direction, CDoubleArray const& positions);

    int m_on = 0;
    int m_synch = 1;
    GridDirection m_x;
    GridDirection m_y;
    GridLine m_major;
    GridLine m_minor;
    GridLine m_free;
    DateSteps m_dates { { 2000, 1, 1, 0, 0, 0 }, 1, TimeUnit::Year, 1, TimeUnit::Month };
};

} // namespace ombrel
