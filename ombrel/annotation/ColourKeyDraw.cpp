#include "ombrel/annotation/ColourKey.h"
#include "ombrel/annotation/keys/ColourKeyLook.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

namespace {

/// A key is never lower than so many cells.
constexpr int kFewestCells = 6;

/// Of labels so many pixels apart, every second, fifth, tenth, … is shown where they would touch: which one.
int LabelStride(int textHeight, double pitch, int labels)
{
    // Rows are rounded.
    double const least = textHeight + 1.0;
    if (pitch >= least || labels < 2)
        return 1;
    double const stride = CVUtils::NiceNum(std::ceil(least / std::max(pitch, 1e-9)), 0);
    return static_cast<int>(std::min(stride, static_cast<double>(labels)));
}

} // namespace

CStringArray const& CColourKey::ShownLabels() const { return IsArbitrary() ? m_arbitraryLabels : m_look->labels; }

CSize CColourKey::GetMaxTextSize()
{
    CSize widest;
    if (!m_dc)
        return widest;
    SavedDC const saved(*m_dc);
    CFont font = MakeFont();
    m_dc->SelectObject(&font);
    for (CString const& label : ShownLabels()) {
        CSize const extent = m_dc->GetTextExtent(label);
        if (extent.cx > widest.cx)
            widest = extent;
    }
    return widest;
}

void CColourKey::UpdateCellParameters()
{
    bool const isPrinted = GetFrame() && GetFrame()->printer;
    m_look->cells = MakeKeyCells(GetMaxTextSize(), m_style == ksDiscrete ? KeyKind::Swatches : KeyKind::Bar, isPrinted);
}

void CColourKey::UpdateNormalisedFontHeight()
{
    if (m_rect.Height() > 0)
        m_normalisedFontHeight = static_cast<double>(m_fontHeight) / m_rect.Height();
}

long long CColourKey::NaturalHeight() const
{
    KeyCells const& cells = m_look->cells;
    int const count = IsArbitrary() ? m_arbitraryLabels.GetSize() : std::max(m_look->labels.GetSize(), kFewestCells);
    return static_cast<long long>(count) * cells.cell.cy
        - (m_style == ksDiscrete ? 0 : VUNearest(cells.swatch.cy / 2.0));
}

void CColourKey::UpdateRectBottom() { m_rect.bottom = ClampCoordinate(m_rect.top + NaturalHeight()); }

void CColourKey::Enclose()
{
    CPoint const corner = ClampPoint(m_rect.TopLeft());
    m_rect = CRect(corner.x, corner.y, ClampCoordinate(corner.x + m_look->cells.cell.cx), corner.y);
    UpdateRectBottom();
    // The frame is drawn on the right and bottom edges themselves.
    CRect const& picture = m_look->window;
    if (picture.IsRectEmpty())
        return;
    CSize const room(std::max(picture.Width() - 1, 1), std::max(picture.Height() - 1, 1));
    CSize const size(m_rect.Width(), std::min(m_rect.Height(), room.cy));
    m_rect = CRect(CPoint(std::max(std::min(m_rect.left, picture.left + room.cx - size.cx), picture.left),
                       std::max(std::min(m_rect.top, picture.top + room.cy - size.cy), picture.top)),
        size);
}

CSize CColourKey::Measure(CDC* dc)
{
    if (!GetGraph())
        return CAnnotation::Measure(dc);
    ContextScope const scope(*this, dc);
    m_look->window = CRect({}, GetGraph()->GetWindowRect().Size());
    AskForFrame(AnnotationKind::ColourKey, m_look->window);
    UpdateGraphParameters();
    UpdateFontHeight(dc);
    UpdateCellParameters();
    CRect const before = m_rect;
    Enclose();
    CSize const size = m_rect.Size();
    m_rect = before;
    return size;
}

void CColourKey::Draw(CPort* port)
{
    if (!m_on)
        return;
    CDC& dc = *port->GetDC();
    ContextScope const scope(*this, &dc);
    m_look->window = port->GetWindowRect();
    AskForFrame(AnnotationKind::ColourKey, m_look->window);
    UpdateGraphParameters();
    Leader const leader = Place();
    // A key that was moved, or is kept in its place, keeps its font until the graph's size is looked at again.
    if (leader == Leader::FirstRect || leader == Leader::Fractions || m_fontHeight == 0)
        UpdateFontHeight(&dc);
    UpdateCellParameters();
    Enclose();
    if (leader == Leader::FirstRect || leader == Leader::MovedRect)
        UpdateNormalisedFontHeight();
    SavedDC const saved(dc);
    FillBackground(dc);
    SelectTextStyle(dc);
    {
        SavedDC const inside(dc);
        CFont font = MakeFont();
        dc.SelectObject(&font);
        if (!dc.IsPrinting())
            dc.IntersectClipRect(m_rect);
        m_style == ksDiscrete ? DrawDiscreteColourKey() : DrawContinuousColourKey();
    }
    DrawBorder(dc);
}

COLORREF CColourKey::SwatchColour(int entry) const
{
    CDWordArray const& colours = IsArbitrary() ? m_arbitraryColours : m_look->swatchColours;
    return entry < colours.GetSize() ? colours[entry] : kBlack;
}

void CColourKey::DrawDiscreteColourKey()
{
    if (!m_dc)
        return;
    KeyCells const& cells = m_look->cells;
    CStringArray const& labels = ShownLabels();
    int const count = labels.GetSize();
    long long const spare = m_rect.Height() - static_cast<long long>(count) * cells.cell.cy;
    if (spare < 0)
        return DrawCrowdedSwatches();
    int const pitch = cells.cell.cy + (count > 1 ? static_cast<int>(spare) / (count - 1) : 0);
    for (int i = 0; i < count; ++i) {
        // The highest band stands at the top.
        int const entry = IsArbitrary() ? i : count - 1 - i;
        CPoint const at(m_rect.left, m_rect.top + i * pitch);
        CRect const swatch(MovePoint(at, cells.swatchOffset), cells.swatch);
        CBrush const brush(SwatchColour(entry));
        m_dc->FillRect(swatch, &brush);
        CVUtils::DrawRect(m_dc, swatch);
        m_dc->TextOut(at.x + cells.textOffset.cx, at.y + cells.textOffset.cy, labels[entry]);
    }
}

void CColourKey::DrawCrowdedSwatches()
{
    KeyCells const& cells = m_look->cells;
    CStringArray const& labels = ShownLabels();
    int const count = labels.GetSize();
    // At both ends there is room for half a label.
    int const left = m_rect.left + cells.swatchOffset.x;
    CRect const column(left, m_rect.top + cells.cell.cy / 2, left + cells.swatch.cx, m_rect.bottom - cells.cell.cy / 2);
    if (column.Height() < 1)
        return;
    auto const topOf = [&](int i) { return column.top + static_cast<int>(1LL * i * column.Height() / count); };
    double const pitch = static_cast<double>(column.Height()) / count;
    int const stride = LabelStride(cells.text.cy, pitch, count);
    for (int i = 0; i < count; ++i) {
        int const entry = IsArbitrary() ? i : count - 1 - i;
        CBrush const brush(SwatchColour(entry));
        CRect const band(column.left, topOf(i), column.right, topOf(i + 1));
        if (band.Height() > 0)
            m_dc->FillRect(band, &brush);
        if (entry % stride == 0)
            m_dc->TextOut(
                m_rect.left + cells.textOffset.cx, (band.top + band.bottom - cells.text.cy) / 2, labels[entry]);
    }
    CVUtils::DrawRect(m_dc, column);
}

void CColourKey::DrawBar(CRect const& bar)
{
    CPlotComponent const* const curve = GetCurve();
    KeyRange const& range = m_look->range;
    CRect visible;
    if (!curve || !range.IsFinite() || !visible.IntersectRect(bar, m_dc->GetClipBox()))
        return;
    auto const colourOf = [&](int row) {
        double const part = static_cast<double>(bar.bottom - row) / bar.Height();
        return curve->GetColourOfValue(range.ValueAt(part), range.low, range.high);
    };
    auto const drawRows = [&](CDC& dc) {
        COLORREF colour = colourOf(visible.top);
        for (int first = visible.top, row = first + 1; row <= visible.bottom; ++row) {
            COLORREF const next = row < visible.bottom ? colourOf(row) : colour;
            if (row < visible.bottom && next == colour)
                continue;
            CBrush const brush(colour);
            dc.FillRect(CRect(visible.left, first, visible.right, row), &brush);
            colour = next;
            first = row;
        }
    };
    if (!m_dc->IsPrinting())
        return drawRows(*m_dc);
    // On a page, one picture: between rectangles, programs that show pages leave seams.
    CDIB picture(visible.Width(), visible.Height(), 24);
    picture.GetDC()->SetViewportOrg(-visible.left, -visible.top);
    drawRows(*picture.GetDC());
    picture.GetDC()->SetViewportOrg(0, 0);
    picture.Draw(m_dc, visible.left, visible.top);
}

void CColourKey::DrawContinuousColourKey()
{
    if (!m_dc)
        return;
    Look const& look = *m_look;
    int const count = look.labels.GetSize();
    KeyBar const bar = MakeKeyBar(m_rect, look.cells, std::max(count, kFewestCells));
    int const height = bar.rect.Height();
    if (height < 1)
        return;
    DrawBar(bar.rect);
    bool const isFlat = look.range.low == look.range.high;
    double const pitch = count > 1
        ? std::abs(look.range.PartBelow(look.values[1]) - look.range.PartBelow(look.values[0])) * height
        : height;
    int const textHeight = look.cells.text.cy;
    int const stride = LabelStride(textHeight, pitch, count);
    for (int i = 0; i < count; i += stride) {
        int row = isFlat ? bar.rect.CenterPoint().y
                         : bar.RowOf(look.range.PartBelow(look.values[static_cast<std::size_t>(i)]));
        // The ends of the range lie on the ends of the bar to the pixel.
        if (look.isEven && !isFlat && i == 0)
            row = bar.BottomRow();
        else if (look.isEven && !isFlat && i == count - 1)
            row = bar.rect.top;
        m_dc->TextOut(bar.textLeft, row - VUNearest(textHeight / 2.0), look.labels[i]);
        m_dc->MoveTo(bar.rect.right, row);
        m_dc->LineTo(bar.tickEnd, row);
    }
}

} // namespace ombrel
