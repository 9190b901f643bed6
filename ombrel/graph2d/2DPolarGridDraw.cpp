#include "ombrel/graph2d/2DPolarGrid.h"

#include "ombrel/drawing/Port.h"
#include "ombrel/foundation/TidyNumbers.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/axes/AxesTicks.h"
#include "ombrel/graph2d/axes/GridPen.h"
#include "ombrel/graph2d/axes/LabelFont.h"
#include "ombrel/graph2d/paths/LinePath.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace ombrel {

namespace {

/// The interface's standard dashes.
constexpr double kDashes[] = { 3.0, 1.0 };

/// A path of more points is drawn before more are added to it.
constexpr std::size_t kManyPoints = 1 << 20;

constexpr int kTidyDigits = 5;

CString GeneralText(double value)
{
    constexpr int kDigits = 6;
    CString text = CVUtils::FormatDouble(kGeneralFormat, value, kDigits);
    text.Trim();
    return text;
}

/// Where a scale of that many divisions has its minor positions: in divisions, ascending.
std::vector<double> MinorSteps(int divisions, int parts)
{
    std::vector<double> steps;
    if (divisions < 1 || parts < 2 || static_cast<double>(divisions) * (parts - 1.0) > kMaxTicks)
        return steps;
    for (int i = 0; i < divisions; ++i) {
        for (int j = 1; j < parts; ++j)
            steps.push_back(i + static_cast<double>(j) / parts);
    }
    return steps;
}

bool CanDraw(int divisions) { return divisions >= 1 && divisions < kMaxTicks; }

/// Moves the label at the end of a diameter away from the circle. index counts the major angles, the opposite ends
/// going on after the first ends; angle is in radians from 0 to a full turn.
CPoint AnglePlace(CPoint end, CSize size, double angle, long long index, long long divisions)
{
    int const w = size.cx;
    int const h = size.cy;
    int const half = VUNearest(h / 2.0);
    if (index == 0)
        return { end.x + VUNearest(h / 4.0), end.y - half };
    if (4 * index == divisions)
        return { end.x - VUNearest(w / 2.0), end.y - h };
    if (2 * index == divisions)
        return { end.x - (VUNearest(h / 4.0) + w), end.y - half };
    if (4 * index == 3 * divisions)
        return { end.x - VUNearest(w / 2.0), end.y + VUNearest(h / 4.0) };
    switch (static_cast<int>(angle / (std::numbers::pi / 2))) {
    case 0:
        return { end.x, end.y - h };
    case 1:
        return { end.x - w, end.y - h };
    case 2:
        return { end.x - w, end.y };
    default:
        return end;
    }
}

} // namespace

/// Finds the extents, and draws when asked to. Radii and angles are counted in major divisions.
class C2DPolarGrid::Pass {
public:
    Pass(C2DPolarGrid& grid, CPort& port, CRealRect const& range, int tickPixels)
        : m_grid(grid)
        , m_port(port)
        , m_dc(*port.GetDC())
        , m_range(range)
        , m_centre(range.left / 2 + range.right / 2, range.bottom / 2 + range.top / 2)
        , m_radius(range.right / 2 - range.left / 2)
        , m_tick(port.WindowToUnitsLength(tickPixels))
    {
        CPoint const topLeft = Device({ range.left, range.top });
        CPoint const bottomRight = Device({ range.right, range.bottom });
        m_grid.m_extent = CRect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y);
    }
    void DrawLines();
    void DrawAngleLabels();
    void PlaceRadiusLabels(Labels const& labels);
    /// What tick i of the scale stands for.
    double TickHeight(int i) const { return m_centre.y + i * (m_range.top - m_centre.y) / m_grid.m_majorRadii; }

private:
    CPoint Device(CRealPoint const& p) const { return m_port.UnitsToWindow(p); }
    CRealPoint OnCircle(double angle) const
    {
        return { m_centre.x + m_radius * std::cos(angle), m_centre.y + m_radius * std::sin(angle) };
    }
    /// Of an angle in degrees, counterclockwise from the right.
    CString AngleText(double degrees) const;
    double Angle(double division) const { return division * 2 * std::numbers::pi / m_grid.m_majorAngles; }
    void AddCircle(double division);
    void AddDiameter(double division);
    void AddLine(CPoint from, CPoint to);
    /// Strokes what was added.
    void Stroke();
    void Widen(CPoint at, CSize size);

    C2DPolarGrid& m_grid;
    CPort& m_port;
    CDC& m_dc;
    /// Of the axes.
    CRealRect m_range;
    CRealPoint m_centre;
    double m_radius;
    /// Length of a tick of the scale, in real units.
    double m_tick;
    VectorPen m_pen;
    LinePath m_path;
    CRect m_lastCircle;
};

void C2DPolarGrid::Pass::DrawLines()
{
    C2DPolarGrid const& grid = m_grid;
    m_path.Clear();
    m_pen = GridPen(m_dc, grid.m_minor, kDashes);
    for (double const step : MinorSteps(grid.m_majorRadii, grid.m_minorRadii))
        AddCircle(step);
    for (double const step : MinorSteps(grid.m_majorAngles / 2, grid.m_minorAngles))
        AddDiameter(step);
    Stroke();

    m_pen = GridPen(m_dc, grid.m_major, kDashes);
    for (int i = 0; CanDraw(grid.m_majorRadii) && i <= grid.m_majorRadii; ++i)
        AddCircle(i);
    for (int i = 0; CanDraw(grid.m_majorAngles) && i < grid.m_majorAngles / 2; ++i)
        AddDiameter(i);
    Stroke();

    if (!CanDraw(grid.m_majorRadii))
        return;
    m_pen.dashes = {};
    double const left = m_range.left;
    AddLine(Device({ left, m_centre.y }), Device({ left, m_range.top }));
    for (int i = 1; i <= grid.m_majorRadii; ++i)
        AddLine(Device({ left - m_tick, TickHeight(i) }), Device({ left, TickHeight(i) }));
    Stroke();
}

void C2DPolarGrid::Pass::AddCircle(double division)
{
    double const r = division * (m_radius / m_grid.m_majorRadii);
    CPoint const topLeft = Device({ m_centre.x - r, m_centre.y + r });
    CPoint const bottomRight = Device({ m_centre.x + r, m_centre.y - r });
    CRect const box(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y);
    // Circles that fall onto one another are one.
    if (box == m_lastCircle)
        return;
    if (m_path.points.size() > kManyPoints)
        Stroke();
    m_lastCircle = box;
    m_path.Break();
    for (CPoint const& p : VectorGraphics(m_dc).EllipsePoints(m_pen, box))
        m_path.Add(p);
}

void C2DPolarGrid::Pass::AddDiameter(double division)
{
    double const angle = Angle(division);
    CRealPoint const end = OnCircle(angle);
    AddLine(Device({ 2 * m_centre.x - end.x, 2 * m_centre.y - end.y }), Device(end));
}

void C2DPolarGrid::Pass::AddLine(CPoint from, CPoint to)
{
    m_path.Break();
    m_path.Add(from);
    m_path.Add(to);
}

void C2DPolarGrid::Pass::Stroke()
{
    VectorGraphics(m_dc).DrawPath(m_pen, m_path.Get());
    m_path.Clear();
    m_lastCircle = CRect();
}

void C2DPolarGrid::Pass::Widen(CPoint at, CSize size)
{
    CRect& extent = m_grid.m_extent;
    extent = CRect(std::min(extent.left, at.x), std::min(extent.top, at.y), std::max(extent.right, at.x + size.cx),
        std::max(extent.bottom, at.y + size.cy));
}

CString C2DPolarGrid::Pass::AngleText(double degrees) const
{
    if (m_grid.m_angleLabels == alPlain)
        return GeneralText(degrees);
    double const shown = m_grid.m_angleLabels == alDegrees ? degrees : std::fmod(450.0 - degrees, 360.0);
    return GeneralText(shown) + CString("°");
}

void C2DPolarGrid::Pass::DrawAngleLabels()
{
    int const divisions = m_grid.m_majorAngles;
    if (!CanDraw(divisions))
        return;
    for (int i = 0; i < 2 * (divisions / 2); ++i) {
        // First the ends on the way round to half a turn, each with the opposite end of its diameter.
        bool const opposite = i % 2 != 0;
        int const diameter = i / 2;
        double const angle = Angle(diameter) + (opposite ? std::numbers::pi : 0.0);
        CString const text = AngleText(angle * 180 / std::numbers::pi);
        CSize const size = m_dc.GetTextExtent(text);
        CPoint const at = AnglePlace(
            Device(OnCircle(angle)), size, angle, opposite ? diameter + divisions / 2 : diameter, divisions);
        m_dc.TextOut(at.x, at.y, text);
        Widen(at, size);
    }
}

void C2DPolarGrid::Pass::PlaceRadiusLabels(Labels const& labels)
{
    for (int i = 1; Label const& label : labels) {
        CPoint at = Device({ m_range.left - m_tick, TickHeight(i++) });
        at.x -= VUNearest(1.25 * label.size.cx);
        at.y -= VUNearest(label.size.cy / 2.0);
        if (m_grid.GetDrawMode() != dmMeasure)
            m_dc.TextOut(at.x, at.y, label.text);
        Widen(at, label.size);
    }
}

void C2DPolarGrid::BeginLayout()
{
    m_labels.reset();
    m_inLayout = true;
}

void C2DPolarGrid::EndLayout()
{
    m_labels.reset();
    m_inLayout = false;
}

C2DPolarGrid::Labels C2DPolarGrid::MakeLabels(CDC& dc, Pass const& pass) const
{
    std::vector<double> heights;
    for (int i = 1; CanDraw(m_majorRadii) && i <= m_majorRadii; ++i)
        heights.push_back(pass.TickHeight(i));
    std::vector<std::string> const tidy
        = m_angleLabels == alPlain ? std::vector<std::string>() : TidyNumbers(heights, kTidyDigits);
    Labels labels;
    for (std::size_t i = 0; i < heights.size(); ++i) {
        CString const text = tidy.empty() ? GeneralText(heights[i]) : CString(tidy[i]);
        labels.push_back({ text, dc.GetTextExtent(text) });
    }
    return labels;
}

void C2DPolarGrid::Draw(CPort* port)
{
    auto const* const graph = DynamicDowncast<C2DGraph>(GetGraph());
    if (!m_on || !port || !port->GetDC() || !graph || !graph->GetAxes())
        return;
    CRect const rect = graph->GetGraphRect();
    CDC& dc = *port->GetDC();
    SavedDC const saved(dc);
    CFont font;
    CVUtils::ConfigureFont(&font, m_labelFont, LabelFontHeight(dc, rect), 0);
    dc.SelectObject(&font);
    dc.SetTextColor(RGB(0, 0, 0));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextAlign(TA_LEFT | TA_TOP);
    Pass pass(*this, *port, graph->GetAxes()->GetRealExtentRect(), ShorterSide(rect) / 80);
    std::optional<Labels> labels = std::exchange(m_labels, {});
    if (!labels)
        labels = MakeLabels(dc, pass);
    if (GetDrawMode() != dmMeasure) {
        pass.DrawLines();
        pass.DrawAngleLabels();
    }
    pass.PlaceRadiusLabels(*labels);
    if (m_inLayout)
        m_labels = std::move(labels);
}

} // namespace ombrel
