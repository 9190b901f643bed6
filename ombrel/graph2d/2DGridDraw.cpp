#include "ombrel/graph2d/2DGrid.h"

#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/axes/AxesTicks.h"
#include "ombrel/graph2d/axes/GridPen.h"
#include "ombrel/graph2d/axes/GridPositions.h"
#include "ombrel/graph2d/paths/LinePath.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

namespace ombrel {

namespace {

/// The line type with the finest dots.
constexpr int kDottedLine = 5;

GridRange RangeOf(AxisSettings const& axis) { return { axis.min, axis.max }; }

/// What steps are counted in.
GridRange StepRangeOf(AxisSettings const& axis)
{
    return axis.RunsBackwards() ? GridRange { axis.max, axis.min } : RangeOf(axis);
}

} // namespace

/// The lines of a pass share a pen, so they reach the device as one path.
class C2DGrid::Pass {
public:
    Pass(C2DGrid const& grid, CPort const& port, C2DGraph const& graph, TickType type)
        : m_grid(grid)
        , m_port(port)
        , m_axes(*graph.GetAxes())
        , m_hasDates(graph.TimeUnitsOn() != 0)
        , m_type(type)
    {
        m_path.Clear();
    }
    void AddAll();
    void AddDivisions(int axis);
    void AddSteps(int axis);
    void AddDates();
    void AddDecades(int axis);
    void Stroke() const;

private:
    AxisSettings const& Axis(int axis) const { return m_axes.GetAxis(static_cast<CAxes::AxisType>(axis)); }
    void AddSpaced(int axis);
    void Add(int axis, std::vector<double> const& positions);
    GridLine const& Line() const { return m_type == ttMajor ? m_grid.m_major : m_grid.m_minor; }

    C2DGrid const& m_grid;
    CPort const& m_port;
    CAxes const& m_axes;
    bool m_hasDates;
    TickType m_type;
    LinePath m_path;
};

void C2DGrid::Pass::AddAll()
{
    for (int const axis : { CAxes::atX, CAxes::atY }) {
        if (Axis(axis).scaleMode != 0)
            AddDecades(axis);
    }
    AddSpaced(CAxes::atX);
    AddSpaced(CAxes::atY);
}

void C2DGrid::Pass::AddDecades(int axis)
{
    AxisSettings const& settings = Axis(axis);
    if (!settings.KeepsLogLimits()) {
        Add(axis, DecadeLines(RangeOf(settings), m_type));
        return;
    }
    LogTicks const ticks = MakeLogTicks(settings);
    Add(axis, m_type == ttMajor ? ticks.majors : ticks.minors);
}

void C2DGrid::Pass::AddSpaced(int axis)
{
    // Its ticks have lines already, and steps of decades are none of values.
    if (Axis(axis).KeepsLogLimits())
        return;
    int const mode = m_grid.Direction(axis).lineMode;
    if (mode == lmDivisions)
        AddDivisions(axis);
    else if (mode == lmStep && axis == CAxes::atX && m_hasDates)
        AddDates();
    else if (mode == lmStep)
        AddSteps(axis);
}

void C2DGrid::Pass::AddDivisions(int axis)
{
    GridDirection const& direction = m_grid.Direction(axis);
    if (direction.linesOn && Axis(axis).scaleMode == 0)
        Add(axis, DivisionLines(direction, RangeOf(Axis(axis)), m_type));
}

void C2DGrid::Pass::AddSteps(int axis)
{
    GridDirection const& direction = m_grid.Direction(axis);
    // A broken line at the right edge would look like a misplaced step.
    bool const closes = (axis == CAxes::atY || m_grid.m_major.IsSolid()) && !Axis(axis).RunsBackwards();
    ClosingLine const closing = closes ? ClosingLine::AtMaximum : ClosingLine::None;
    if (direction.linesOn)
        Add(axis, StepLines(direction, StepRangeOf(Axis(axis)), m_type, closing));
}

void C2DGrid::Pass::AddDates()
{
    if (m_grid.m_x.linesOn)
        Add(CAxes::atX, DateLines(m_grid.m_dates, StepRangeOf(Axis(CAxes::atX)), m_type));
}

void C2DGrid::Pass::Add(int axis, std::vector<double> const& positions)
{
    PortMapping const& map = m_port.GetMapping();
    AxisSettings const& x = Axis(CAxes::atX);
    AxisSettings const& y = Axis(CAxes::atY);
    CPoint const bottomLeft(map.X(x.min), map.Y(y.min));
    CPoint const topRight(map.X(x.max), map.Y(y.max));
    bool first = true;
    CPoint before;
    for (double const position : positions) {
        CPoint from = bottomLeft;
        CPoint to = topRight;
        if (axis == CAxes::atY)
            from.y = to.y = map.Y(position);
        else
            from.x = to.x = map.X(position);
        // Lines that fall onto one another are one.
        if (!first && from == before)
            continue;
        first = false;
        before = from;
        m_path.Break();
        m_path.Add(from);
        m_path.Add(to);
    }
}

void C2DGrid::Pass::Stroke() const
{
    CDC& dc = *m_port.GetDC();
    VectorGraphics(dc).DrawPath(GridPen(dc, Line(), C2DLine::GetDashes(kDottedLine)), m_path.Get());
}

C2DGraph const* C2DGrid::DrawnGraph(CPort const* port) const
{
    auto const* const graph = DynamicDowncast<C2DGraph>(GetGraph());
    return port && port->GetDC() && graph && graph->GetAxes() ? graph : nullptr;
}

template <typename Add> void C2DGrid::DrawLines(CPort* port, TickType type, Add const& add) const
{
    C2DGraph const* const graph = DrawnGraph(port);
    if (!graph)
        return;
    Pass pass(*this, *port, *graph, type);
    add(pass);
    pass.Stroke();
}

void C2DGrid::Draw(CPort* port)
{
    UpdateGraphParameters();
    if (m_on) {
        for (TickType const type : { ttMinor, ttMajor })
            DrawLines(port, type, [](Pass& pass) { pass.AddAll(); });
    }
    if (m_x.freeLinesOn)
        DrawArbXLines(port);
    if (m_y.freeLinesOn)
        DrawArbYLines(port);
}

void C2DGrid::DrawDivs(CPort* port, int axis, TickType type)
{
    DrawLines(port, type, [axis](Pass& pass) { pass.AddDivisions(axis); });
}

void C2DGrid::DrawDel(CPort* port, int axis, TickType type)
{
    DrawLines(port, type, [axis](Pass& pass) { pass.AddSteps(axis); });
}

void C2DGrid::DrawDate(CPort* port, TickType type)
{
    DrawLines(port, type, [](Pass& pass) { pass.AddDates(); });
}

void C2DGrid::DrawLogX(CPort* port, TickType type)
{
    DrawLines(port, type, [](Pass& pass) { pass.AddDecades(CAxes::atX); });
}

void C2DGrid::DrawLogY(CPort* port, TickType type)
{
    DrawLines(port, type, [](Pass& pass) { pass.AddDecades(CAxes::atY); });
}

void C2DGrid::DrawArbXLines(CPort* port) { DrawFreeLines(port, CAxes::atX); }

void C2DGrid::DrawArbYLines(CPort* port) { DrawFreeLines(port, CAxes::atY); }

void C2DGrid::DrawFreeLines(CPort* port, CAxes::AxisType axis) const
{
    C2DGraph const* const graph = DrawnGraph(port);
    if (!graph)
        return;
    CDC& dc = *port->GetDC();
    SavedDC const saved(dc);
    CPen pen(m_free.style, 1, m_free.colour);
    dc.SelectObject(&pen);
    dc.SetBkMode(TRANSPARENT);
    bool const upright = axis == CAxes::atX;
    AxisSettings const& across = graph->GetAxes()->GetAxis(upright ? CAxes::atY : CAxes::atX);
    CDoubleArray const& positions = Direction(axis).freePositions;
    for (int i = 0; i < positions.GetSize(); ++i) {
        double const position = positions[i];
        if (IsGap(position))
            continue;
        port->MoveTo(upright ? CRealPoint(position, across.min) : CRealPoint(across.min, position));
        port->LineTo(upright ? CRealPoint(position, across.max) : CRealPoint(across.max, position));
    }
}

} // namespace ombrel
