#include "ombrel/layout/PointLabels.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DTextPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/layout/Look.h"
#include "ombrel/model/LineWidth.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ombrel {

namespace {

/// Where a text stands beside its point: the alignment that the library is told, and the direction in which it is moved
/// away from the mark.
struct Side {
    C2DTextCurve::Alignment horizontal;
    C2DTextCurve::Alignment vertical;
    int dx;
    int dy;
};

constexpr std::array kSides {
    Side { C2DTextCurve::alLeft, C2DTextCurve::alCentre, 1, 0 },
    Side { C2DTextCurve::alRight, C2DTextCurve::alCentre, -1, 0 },
    Side { C2DTextCurve::alCentre, C2DTextCurve::alBottom, 0, -1 },
    Side { C2DTextCurve::alCentre, C2DTextCurve::alTop, 0, 1 },
};

/// Half of the smallest size in which marks can be told apart, in pixels at 96 to the inch.
constexpr int kSmallestMark = 3;

/// Boxes on the plotting area, found by place: all of those in the same coarse cell are looked at.
class BoxSet {
public:
    explicit BoxSet(CRect const& area)
        : m_area(area)
        , m_columns(area.Width() / kCell + 1)
        , m_cells(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(area.Height() / kCell + 1))
    {
    }
    void Add(CRect const& box)
    {
        ForCells(box, [&box](std::vector<CRect>& cell) {
            cell.push_back(box);
            return false;
        });
    }
    bool Meets(CRect const& box)
    {
        return ForCells(box, [&box](std::vector<CRect> const& cell) {
            return std::any_of(cell.begin(), cell.end(), [&box](CRect const& other) {
                return box.left < other.right && other.left < box.right && box.top < other.bottom
                    && other.top < box.bottom;
            });
        });
    }
    bool Holds(CRect const& box) const
    {
        return box.left >= m_area.left && box.right <= m_area.right && box.top >= m_area.top
            && box.bottom <= m_area.bottom;
    }

private:
    static constexpr int kCell = 32;
    template <typename Visit> bool ForCells(CRect const& box, Visit const& visit)
    {
        auto const cell
            = [](LONG at, LONG origin, LONG last) { return std::clamp<LONG>(at - origin, 0, last - 1) / kCell; };
        for (LONG row = cell(box.top, m_area.top, m_area.Height());
             row <= cell(box.bottom, m_area.top, m_area.Height()); ++row) {
            for (LONG column = cell(box.left, m_area.left, m_area.Width());
                 column <= cell(box.right, m_area.left, m_area.Width()); ++column) {
                if (visit(m_cells[static_cast<std::size_t>(row * m_columns + column)]))
                    return true;
            }
        }
        return false;
    }

    CRect m_area;
    LONG m_columns;
    std::vector<std::vector<CRect>> m_cells;
};

/// The texts of one side, as they are collected for a curve.
struct SideTexts {
    CDoubleArray xs;
    CDoubleArray ys;
    CGStringArray texts;
};

CRect BoxAt(CPoint at, CSize size, Side const& side)
{
    LONG const left = side.horizontal == C2DTextCurve::alLeft ? at.x
        : side.horizontal == C2DTextCurve::alRight            ? at.x - size.cx
                                                              : at.x - size.cx / 2;
    LONG const top = side.vertical == C2DTextCurve::alTop ? at.y
        : side.vertical == C2DTextCurve::alBottom         ? at.y - size.cy
                                                          : at.y - size.cy / 2;
    return CRect(CPoint(left, top), size);
}

void AddTextCurves(C2DGraph& graph, std::array<SideTexts, kSides.size()> const& sides, Look const& look, bool dates)
{
    CPlot& plot = *graph.AddPlot(it2DTextPlot);
    for (std::size_t i = 0; i < kSides.size(); ++i) {
        SideTexts const& side = sides[i];
        if (side.xs.GetSize() == 0)
            continue;
        auto& curve = static_cast<C2DTextCurve&>(*plot.CreateCurve());
        curve.SetTitle("labels");
        curve.SetDataSourceType(CPlotComponent::dsTable);
        curve.SetColour(look.text);
        curve.SetHorzAlignment(kSides[i].horizontal);
        curve.SetVertAlignment(kSides[i].vertical);
        if (dates)
            curve.SetXValMode(C2DCurve::xvDates);
        curve.SetPoints(&side.xs, &side.ys, &side.texts, side.xs.GetSize());
    }
}

/// Finds places for labels in one graph.
class LabelPlacer {
public:
    LabelPlacer(C2DGraph& graph, CDC& dc)
        : m_graph(graph)
        , m_axes(*graph.GetAxes())
        , m_area(graph.GetAxesRect())
        , m_dc(dc)
        , m_saved(dc)
        , m_taken(m_area)
        , m_gap(2 * DeviceLineWidth(dc, 1))
    {
        CVUtils::ConfigureFont(&m_font, CFontData(), m_axes.GetFontHeight(), 0);
        m_dc.SelectObject(&m_font);
        // Marks have about this size in each direction.
        CRect const extent = m_axes.GetExtentRect();
        m_mark = std::max(kSmallestMark, static_cast<int>(std::max(extent.Width(), extent.Height()) / 150)) + 1;
    }
    void AddMark(CRealPoint const& p)
    {
        CPoint at;
        if (Find(p, at))
            m_taken.Add(CRect(at.x - m_mark, at.y - m_mark, at.x + m_mark, at.y + m_mark));
    }
    /// True when the label has a place, or need not have one.
    bool AddLabel(CRealPoint const& p, std::string const& text)
    {
        CPoint at;
        if (text.empty() || !Find(p, at))
            return true;
        CString const label(text);
        CSize const size = m_dc.GetTextExtent(label);
        for (std::size_t i = 0; i < kSides.size(); ++i) {
            Side const& side = kSides[i];
            CPoint const moved(at.x + side.dx * (m_mark + m_gap), at.y + side.dy * (m_mark + m_gap));
            CRect const box = BoxAt(moved, size, side);
            if (!m_taken.Holds(box) || m_taken.Meets(box))
                continue;
            m_taken.Add(box);
            CRealPoint const to = m_graph.WindowToUnits(moved);
            m_sides[i].xs.Add(Stored(to.x, m_axes.GetAxis(CAxes::atX).scaleMode));
            m_sides[i].ys.Add(Stored(to.y, m_axes.GetAxis(CAxes::atY).scaleMode));
            m_sides[i].texts.Add(label);
            return true;
        }
        return false;
    }
    std::array<SideTexts, kSides.size()> const& GetSides() const { return m_sides; }

private:
    /// The point on the device; false when it is missing or not shown.
    bool Find(CRealPoint const& p, CPoint& at) const
    {
        if (IsGap(p.x) || IsGap(p.y))
            return false;
        at = m_graph.UnitsToWindow(p);
        return m_area.PtInRect(at);
    }
    /// Back from what is drawn to what is stored.
    static double Stored(double drawn, int scaleMode) { return scaleMode ? std::pow(10.0, drawn) : drawn; }

    C2DGraph& m_graph;
    CAxes& m_axes;
    CRect m_area;
    CDC& m_dc;
    SavedDC m_saved;
    CFont m_font;
    BoxSet m_taken;
    int m_mark;
    /// Between a mark and its label.
    int m_gap;
    std::array<SideTexts, kSides.size()> m_sides;
};

} // namespace

void SettleMarks(C2DGraph& graph, CDC& dc)
{
    CRect const extent = graph.GetAxes()->GetExtentRect();
    double const half = std::floor(std::max(extent.Width(), extent.Height()) / 150.0 + 0.5);
    double const least = kSmallestMark * DeviceLineWidth(dc, 1);
    for (CPlot* plot : graph.GetPlotArray()->GetPlots()) {
        for (CPlotComponent* component : plot->GetComponents()) {
            auto* const line = DynamicDowncast<C2DLine>(component);
            if (line && line->GetSymbolType() != C2DSymbol::None && half * line->GetSymbolScaleFac() < least)
                line->SetSymbolScaleFac(least / std::max(half, 1.0));
        }
    }
}

void PlaceLabels(C2DGraph& graph, std::vector<PointLabels> const& labels, CDC& dc, Look const& look, ChartNotes& notes)
{
    if (labels.empty())
        return;
    LabelPlacer placer(graph, dc);
    for (PointLabels const& list : labels) {
        for (int i = 0; i < list.curve->GetNumPoints(); ++i)
            placer.AddMark(list.curve->GetAt(i));
    }
    std::size_t omitted = 0;
    for (PointLabels const& list : labels) {
        for (int i = 0; i < list.curve->GetNumPoints(); ++i)
            omitted += !placer.AddLabel(list.curve->GetAt(i), list.texts[static_cast<std::size_t>(i)]);
    }
    AddTextCurves(graph, placer.GetSides(), look, graph.TimeUnitsOn() != 0);
    if (omitted > 0)
        notes.AddWarning(Counted(omitted, "label is", "labels are") + " left out: there is no room beside "
            + (omitted == 1 ? "its point" : "their points"));
}

} // namespace ombrel
