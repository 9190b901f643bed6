#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/axes/AxesTicks.h"

#include "ombrel/drawing/Port.h"
#include "ombrel/model/Graph.h"
#include "ombrel/model/LineWidth.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <optional>

namespace ombrel {
namespace {

/// -1 along an axis that runs backwards.
double Direction(AxisSettings const& axis) { return axis.RunsBackwards() ? -1.0 : 1.0; }

} // namespace

/// One walk over the results: finds the extents, and draws when asked to.
class CAxes::Pass {
public:
    enum class Output { None, Device };
    Pass(CAxes& axes, CPort& port, AxesResults const& results, Output output);
    void WalkLines();
    void WalkX();
    void WalkY();
    void WalkTitles();

private:
    static constexpr double kMinorTickLength = 0.66;

    /// What labels are written with.
    struct Style {
        bool major;
        bool turned;
        friend bool operator==(Style, Style) = default;
    };
    void PlaceX(Tick const& tick);
    void PlaceY(Tick const& tick);
    void PlaceXTitle();
    void PlaceYTitle();
    void DrawTick(AxisSettings const& axis, Tick const& tick, CRealPoint const& from, CRealPoint const& to);
    void DrawLabel(AxisSettings const& axis, Tick const& tick, CPoint at, Style style);
    void UseStyle(Style style);
    void UseTitleFont(int vertical);
    double LengthOf(AxisSettings const& axis, Tick const& tick, double unit) const;
    CPoint Device(CRealPoint const& p) const { return m_port.UnitsToWindow(p); }

    CAxes& m_axes;
    CPort& m_port;
    CDC& m_dc;
    AxesResults const& m_results;
    CRect& m_extent;
    bool m_draws;
    /// Lengths in real units of a major tick of factor 1: on the y axis (along x, rightwards), and on the x axis (along
    /// y, upwards). Along an axis that runs backwards they are negative.
    double m_lengthAlongX;
    double m_lengthAlongY;
    /// Where the titles begin: the lowest row of the x labels, the leftmost column of the y labels.
    int m_xLabelsLow;
    int m_yLabelsLeft;
    CFont m_font;
    std::optional<Style> m_style;
};

CAxes::Pass::Pass(CAxes& axes, CPort& port, AxesResults const& results, Output output)
    : m_axes(axes)
    , m_port(port)
    , m_dc(*port.GetDC())
    , m_results(results)
    , m_extent(axes.m_extent)
    , m_draws(output == Output::Device)
    , m_lengthAlongX(Direction(axes.m_x) * port.WindowToUnitsLength(results.tickLength))
    , m_lengthAlongY(Direction(axes.m_y) * port.WindowToUnitsHeight(results.tickLength))
{
    m_extent = CRect(
        Device(axes.m_xAxisStart).x, Device(axes.m_yAxisEnd).y, Device(axes.m_xAxisEnd).x, Device(axes.m_yAxisStart).y);
    m_xLabelsLow = m_extent.bottom;
    m_yLabelsLeft = m_extent.left;
    if (m_draws) {
        m_dc.SetBkMode(TRANSPARENT);
        m_dc.SetTextAlign(TA_LEFT | TA_TOP);
    }
}

void CAxes::Pass::WalkLines()
{
    if (!m_draws)
        return;
    if (m_axes.m_x.on) {
        m_port.MoveTo(m_axes.m_xAxisStart);
        m_port.LineTo(m_axes.m_xAxisEnd);
    }
    if (m_axes.m_y.on) {
        m_port.MoveTo(m_axes.m_yAxisStart);
        m_port.LineTo(m_axes.m_yAxisEnd);
    }
}

void CAxes::Pass::WalkX()
{
    for (Tick const& tick : m_results.x)
        PlaceX(tick);
}

void CAxes::Pass::WalkY()
{
    AxisSettings const& axis = m_axes.m_y;
    auto const isArbitrary = [](Tick const& tick) { return tick.kind == Tick::Kind::Arbitrary; };
    auto const arbitrary = std::find_if(m_results.y.begin(), m_results.y.end(), isArbitrary);
    std::for_each(m_results.y.begin(), arbitrary, [this](Tick const& tick) { PlaceY(tick); });
    // Arbitrary labels start over: the title stands beside them.
    if ((axis.on || axis.labelsOn) && axis.scaleMode == 0 && axis.HasArbitrary()) {
        CRealPoint const& crossing = m_axes.m_intersect;
        m_yLabelsLeft = Device({ crossing.x - m_lengthAlongX * axis.majorTickScaleFac, crossing.y }).x;
    }
    std::for_each(arbitrary, m_results.y.end(), [this](Tick const& tick) { PlaceY(tick); });
}

double CAxes::Pass::LengthOf(AxisSettings const& axis, Tick const& tick, double unit) const
{
    return tick.IsMajor() ? unit * axis.majorTickScaleFac : unit * kMinorTickLength * axis.minorTickScaleFac;
}

void CAxes::Pass::PlaceX(Tick const& tick)
{
    AxisSettings const& axis = m_axes.m_x;
    bool const below = axis.labelPlacement == lpBelow;
    double const length = LengthOf(axis, tick, m_lengthAlongY);
    CRealPoint const foot(tick.value, m_axes.m_intersect.y);
    CRealPoint const tip(tick.value, below ? foot.y - length : foot.y + length);
    DrawTick(axis, tick, foot, tip);
    if (tick.kind == Tick::Kind::DecadeLine)
        return;
    CPoint const end = Device(tip);
    int const cx = tick.extent.cx;
    int const cy = tick.extent.cy;
    bool const turned = !m_axes.LabelStyle(tick.IsMajor()).horizontal;
    int const height = turned ? cx : cy;
    m_extent.left = std::min(m_extent.left, end.x - cx / 2);
    m_extent.right = std::max(m_extent.right, end.x + cx / 2);
    if (tick.IsMajor() || axis.minorLabelsOn) {
        if (below) {
            m_xLabelsLow = std::max(m_xLabelsLow, end.y + 1 + height);
            m_extent.bottom = std::max(m_extent.bottom, end.y + 1 + height);
        } else {
            m_extent.top = std::min(m_extent.top, end.y - height - 1);
        }
    }
    CPoint at(end.x - cx / 2, below ? end.y + 1 : end.y - cy - 1);
    // Turned text runs upwards from its point.
    if (turned)
        at = CPoint(end.x - cy / 2, below ? end.y + 1 + cx : end.y + 1);
    DrawLabel(axis, tick, at, { tick.IsMajor(), turned });
}

void CAxes::Pass::PlaceY(Tick const& tick)
{
    AxisSettings const& axis = m_axes.m_y;
    bool const atLeft = axis.labelPlacement == lpLeft;
    double const length = LengthOf(axis, tick, m_lengthAlongX);
    CRealPoint const foot(m_axes.m_intersect.x, tick.value);
    CRealPoint const tip(atLeft ? foot.x - length : foot.x + length, tick.value);
    DrawTick(axis, tick, foot, tip);
    if (tick.kind == Tick::Kind::DecadeLine)
        return;
    CPoint const end = Device(tip);
    int const cx = tick.extent.cx;
    int const cy = tick.extent.cy;
    // Minor labels between fixed steps take no space of their own.
    if (tick.IsMajor() || !axis.HasSteps()) {
        m_extent.bottom = std::max(m_extent.bottom, end.y + cy / 2);
        m_extent.top = std::min(m_extent.top, end.y - cy / 2);
        if (tick.IsMajor() || axis.minorLabelsOn) {
            if (atLeft) {
                m_yLabelsLeft = std::min(m_yLabelsLeft, end.x - cx);
                m_extent.left = std::min(m_extent.left, end.x - cx);
            } else {
                m_extent.right = std::max(m_extent.right, end.x + cx);
            }
        }
    }
    DrawLabel(axis, tick, CPoint(atLeft ? end.x - cx : end.x, end.y - cy / 2), { tick.IsMajor(), false });
}

void CAxes::Pass::DrawTick(AxisSettings const& axis, Tick const& tick, CRealPoint const& from, CRealPoint const& to)
{
    if (!m_draws || (!axis.on && tick.kind != Tick::Kind::DecadeLine))
        return;
    m_port.MoveTo(from);
    m_port.LineTo(to);
}

void CAxes::Pass::DrawLabel(AxisSettings const& axis, Tick const& tick, CPoint at, Style style)
{
    if (!m_draws || tick.text.IsEmpty() || (!tick.IsMajor() && !axis.minorLabelsOn))
        return;
    UseStyle(style);
    m_dc.TextOut(at.x, at.y, tick.text);
}

void CAxes::Pass::UseStyle(Style style)
{
    if (m_style == style)
        return;
    m_style = style;
    AxisLabelStyle const& labels = m_axes.LabelStyle(style.major);
    int const height = style.major ? m_results.fontHeight : m_results.minorFontHeight;
    CVUtils::ConfigureFont(&m_font, labels.font, height, style.turned);
    m_dc.SelectObject(&m_font);
    m_dc.SetTextColor(labels.colour);
}

void CAxes::Pass::WalkTitles()
{
    if (m_draws)
        m_dc.SetTextColor(m_axes.m_texts.titlesColour);
    if (m_axes.m_x.on && !m_axes.m_x.title.IsEmpty())
        PlaceXTitle();
    if (m_axes.m_y.on && !m_axes.m_y.title.IsEmpty())
        PlaceYTitle();
}

namespace {

/// The longer of the two parts that the crossing point divides an axis into; the upper one when they are equal.
std::pair<double, double> LongerPart(AxisSettings const& axis, double crossing)
{
    if (Direction(axis) * (crossing - axis.min) > Direction(axis) * (axis.max - crossing))
        return { axis.min, crossing };
    return { crossing, axis.max };
}

} // namespace

void CAxes::Pass::PlaceXTitle()
{
    auto const [from, to] = LongerPart(m_axes.m_x, m_axes.m_intersect.x);
    double const width = Direction(m_axes.m_x) * m_port.WindowToUnitsLength(m_results.xTitle.cx);
    m_extent.bottom = std::max(m_extent.bottom, m_xLabelsLow + m_results.xTitle.cy);
    if (!m_draws)
        return;
    UseTitleFont(0);
    m_port.TextOutW(
        m_axes.m_x.title, { from + ((to - from) - width) / 2, m_port.WindowToUnits(POINT { 0, m_xLabelsLow }).y });
}

void CAxes::Pass::PlaceYTitle()
{
    auto const [from, to] = LongerPart(m_axes.m_y, m_axes.m_intersect.y);
    double const height = Direction(m_axes.m_y) * m_port.WindowToUnitsHeight(m_results.yTitle.cx);
    int const gap = VUNearest(m_axes.m_y.TitleGap() * m_results.fontHeight);
    int const column = m_yLabelsLeft - gap - m_results.yTitle.cy;
    m_extent.left = std::min(m_extent.left, column);
    if (!m_draws)
        return;
    UseTitleFont(1);
    m_port.TextOutW(
        m_axes.m_y.title, { m_port.WindowToUnits(POINT { column, 0 }).x, from + ((to - from) - height) / 2 });
}

void CAxes::Pass::UseTitleFont(int vertical)
{
    CVUtils::ConfigureFont(&m_font, m_axes.m_texts.titlesFont, m_results.fontHeight, vertical);
    m_dc.SelectObject(&m_font);
}

void CAxes::Draw(CPort* port)
{
    if (!port || !port->GetDC() || !GetGraph())
        return;
    bool const draws = GetDrawMode() != dmMeasure;
    if (draws && IsPolarGridOn()) {
        m_fontHeight = MakeSizes(*port).fontHeight;
        return;
    }
    std::unique_ptr<AxesResults> results = std::move(m_results);
    if (!results)
        results = std::make_unique<AxesResults>(MakeResults(*port));
    m_fontHeight = results->fontHeight;
    DrawResults(*port, *results, draws);
    if (m_inLayout)
        m_results = std::move(results);
}

CPen CAxes::AxesPen(CDC const& dc) const
{
    return { PS_SOLID, DeviceLineWidth(dc, 1.0, ThicknessKind::Axes), static_cast<COLORREF>(GetColour()) };
}

void CAxes::DrawResults(CPort& port, AxesResults const& results, bool draws)
{
    if (!draws) {
        Pass pass(*this, port, results, Pass::Output::None);
        pass.WalkX();
        pass.WalkY();
        pass.WalkTitles();
        return;
    }
    CDC& dc = *port.GetDC();
    SavedDC const saved(dc);
    CPen pen = AxesPen(dc);
    dc.SelectObject(&pen);
    Pass pass(*this, port, results, Pass::Output::Device);
    pass.WalkLines();
    pass.WalkX();
    pass.WalkY();
    pass.WalkTitles();
}

int CAxes::CheckDateRange(CPort* port)
{
    if (HasDateRange(m_x))
        return 1;
    if (!port || !port->GetDC() || !GetGraph())
        return 0;
    AxisSettings axis = m_x;
    axis.timeUnitsOn = 1;
    AxesResults results = MakeSizes(*port);
    results.x = MakeLabelledTicks(axis, &m_dates, m_intersect.x);
    MeasureTexts(*port->GetDC(), results);
    CRect const extent = m_extent;
    if (GetDrawMode() != dmMeasure) {
        SavedDC const saved(*port->GetDC());
        CPen pen = AxesPen(*port->GetDC());
        port->GetDC()->SelectObject(&pen);
        Pass(*this, *port, results, Pass::Output::Device).WalkX();
    }
    m_extent = extent;
    return 0;
}

} // namespace ombrel
