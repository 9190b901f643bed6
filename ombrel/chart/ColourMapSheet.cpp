#include "ombrel/chart/ColourMapSheet.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/layout/Look.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ombrel {

namespace {

constexpr COLORREF kPaper = RGB(255, 255, 255);
constexpr COLORREF kInk = RGB(30, 30, 30);
constexpr COLORREF kFaintInk = RGB(110, 110, 110);
constexpr COLORREF kFrame = RGB(170, 170, 170);
constexpr int kSteps = 10;

// Sizes in pixels at 96 to the inch.
constexpr int kMargin = 24;
constexpr int kHeading = 22;
constexpr int kLargeRow = 110;
constexpr int kRow = 62;
/// More maps than that get lower rows.
constexpr std::size_t kMostLargeRows = 3;

int RowHeight(std::size_t count) { return count > kMostLargeRows ? kRow : kLargeRow; }

/// Lightness 0 … 100 as it is seen (CIE 1976), under daylight.
double LightnessOf(COLORREF colour)
{
    double const luminance = LuminanceOf(colour);
    return luminance > 216.0 / 24389.0 ? 116.0 * std::cbrt(luminance) - 16.0 : luminance * 24389.0 / 27.0;
}

/// The row of the table for place i of n, from end to end.
COLORREF ColourAt(CColourMap const& map, int i, int n)
{
    constexpr int kLast = CColourMap::kTableSize - 1;
    return map.GetColourTable()[n > 1 ? (2 * i * kLast + n - 1) / (2 * (n - 1)) : 0];
}

class Sheet {
public:
    Sheet(CDC& dc, CRect const& paper, std::span<ColourMapRow const> rows);
    void Draw();

private:
    int Pixels(double size) const { return std::max(1, static_cast<int>(std::lround(size * m_unit))); }
    void SetFont(CFont& font, int height, int weight);
    int NamesWidth();
    void DrawText(CRect const& place, std::string const& text, COLORREF colour);
    void DrawName(CRect const& place, ColourMapRow const& row);
    void DrawStrip(CRect const& place, CColourMap const& map);
    void DrawSteps(CRect const& place, CColourMap const& map);
    void DrawProfile(CRect const& place, CColourMap const& map);
    void DrawFrame(CRect const& place);

    CDC& m_dc;
    CRect m_paper;
    std::span<ColourMapRow const> m_rows;
    /// Device pixels of one pixel at 96 to the inch.
    double m_unit;
    int m_rowHeight = 0;
    CFont m_nameFont;
    CFont m_smallFont;
};

Sheet::Sheet(CDC& dc, CRect const& paper, std::span<ColourMapRow const> rows)
    : m_dc(dc)
    , m_paper(paper)
    , m_rows(rows)
    , m_unit(dc.GetDeviceCaps(LOGPIXELSX) / 96.0)
{
}

void Sheet::SetFont(CFont& font, int height, int weight)
{
    CFontData data;
    data.weight = weight;
    CVUtils::ConfigureFont(&font, data, std::max(height, 1), 0);
}

int Sheet::NamesWidth()
{
    int width = 0;
    for (ColourMapRow const& row : m_rows) {
        m_dc.SelectObject(&m_nameFont);
        width = std::max<int>(width, m_dc.GetTextExtent(CString(row.name)).cx);
        m_dc.SelectObject(&m_smallFont);
        width = std::max<int>(width, m_dc.GetTextExtent(CString(row.authors)).cx);
    }
    return std::min(width, m_paper.Width() * 3 / 10);
}

void Sheet::Draw()
{
    m_dc.FillSolidRect(m_paper, kPaper);
    SavedDC const saved(m_dc);
    m_dc.SetBkMode(TRANSPARENT);
    int const margin = std::min({ Pixels(kMargin), m_paper.Width() / 12, m_paper.Height() / 6 });
    CRect inner = m_paper;
    inner.DeflateRect(margin, margin);
    int const heading = std::min(Pixels(kHeading), inner.Height() / 5);
    int const count = std::max(1, static_cast<int>(m_rows.size()));
    // The last row ends without the space that parts it from the next.
    m_rowHeight = std::min((inner.Height() - heading) * 5 / (5 * count - 1), Pixels(RowHeight(m_rows.size())));
    SetFont(m_nameFont, std::min(Pixels(17), m_rowHeight * 3 / 10), CFontData::kBoldWeight);
    SetFont(m_smallFont, std::min(Pixels(14), m_rowHeight / 4), CFontData::kNormalWeight);

    int const gap = margin * 2 / 3;
    int const left = inner.left + NamesWidth() + gap;
    int const profile = inner.right - (inner.right - left) / 5;
    m_dc.SelectObject(&m_smallFont);
    DrawText({ profile, inner.top, inner.right, inner.top + heading }, "lightness", kFaintInk);
    DrawText({ left, inner.top, profile - gap, inner.top + heading }, "continuous, and in ten steps", kFaintInk);
    int top = inner.top + heading;
    for (ColourMapRow const& row : m_rows) {
        int const bottom = top + m_rowHeight * 4 / 5;
        int const middle = top + (bottom - top) * 63 / 100;
        DrawName({ inner.left, top, left - gap, bottom }, row);
        DrawStrip({ left, top, profile - gap, middle }, row.map);
        DrawSteps({ left, middle + std::max(1, m_rowHeight / 24), profile - gap, bottom }, row.map);
        DrawProfile({ profile, top, inner.right, bottom }, row.map);
        top += m_rowHeight;
    }
}

/// One line in the selected font, at the left and in the middle of its place; shortened when it is too long.
void Sheet::DrawText(CRect const& place, std::string const& text, COLORREF colour)
{
    CString shown(text);
    for (int length = shown.GetLength() - 1; m_dc.GetTextExtent(shown).cx > place.Width() && length > 0; --length)
        shown = CString(text).Left(length) + CString("…");
    m_dc.SetTextColor(colour);
    m_dc.TextOut(place.left, place.top + (place.Height() - m_dc.GetTextExtent(shown).cy) / 2, shown);
}

void Sheet::DrawName(CRect const& place, ColourMapRow const& row)
{
    m_dc.SelectObject(&m_nameFont);
    int const nameHeight = m_dc.GetTextMetrics().tmHeight;
    m_dc.SelectObject(&m_smallFont);
    int const smallHeight = row.authors.empty() ? 0 : m_dc.GetTextMetrics().tmHeight;
    int const top = place.top + (place.Height() - nameHeight - smallHeight) / 2;
    if (!row.authors.empty())
        DrawText({ place.left, top + nameHeight, place.right, top + nameHeight + smallHeight }, row.authors, kFaintInk);
    m_dc.SelectObject(&m_nameFont);
    DrawText({ place.left, top, place.right, top + nameHeight }, row.name, kInk);
}

void Sheet::DrawStrip(CRect const& place, CColourMap const& map)
{
    int const width = place.Width();
    int const bands = std::min(width, CColourMap::kTableSize);
    int start = 0;
    for (int i = 1; i <= bands; ++i) {
        COLORREF const colour = ColourAt(map, i - 1, bands);
        // Neighbours of one colour are one rectangle.
        if (i < bands && ColourAt(map, i, bands) == colour)
            continue;
        int const end = static_cast<int>(static_cast<long long>(i) * width / bands);
        m_dc.FillSolidRect({ place.left + start, place.top, place.left + end, place.bottom }, colour);
        start = end;
    }
    DrawFrame(place);
}

void Sheet::DrawSteps(CRect const& place, CColourMap const& map)
{
    int const gap = std::min(Pixels(2), place.Width() / (4 * kSteps));
    for (int i = 0; i < kSteps; ++i) {
        auto const edge = [&](int k) { return place.left + (place.Width() + gap) * k / kSteps; };
        CRect const step(edge(i), place.top, edge(i + 1) - gap, place.bottom);
        m_dc.FillSolidRect(step, ColourAt(map, i, kSteps));
        DrawFrame(step);
    }
}

void Sheet::DrawProfile(CRect const& place, CColourMap const& map)
{
    DrawFrame(place);
    int const inset = Pixels(2);
    CRect inner = place;
    inner.DeflateRect(inset, inset);
    // Points stand on whole pixels: with too many of them the line would show it.
    int const count = std::clamp(inner.Width() / 6, 24, 60);
    std::vector<CPoint> points;
    for (int i = 0; i < count; ++i) {
        double const lightness = LightnessOf(ColourAt(map, i, count)) / 100.0;
        points.emplace_back(inner.left + static_cast<int>(std::lround(i * (inner.Width() - 1.0) / (count - 1))),
            inner.bottom - 1 - static_cast<int>(std::lround(lightness * (inner.Height() - 1.0))));
    }
    VectorGraphics graphics(m_dc);
    graphics.SetSmoothing(true);
    graphics.DrawCurve({ { kInk, 255 }, static_cast<double>(Pixels(1.5)), {} }, points);
}

/// Keeps colours as light as the paper apart from it.
void Sheet::DrawFrame(CRect const& place)
{
    CPen pen(PS_SOLID, Pixels(0.5), kFrame);
    m_dc.SelectObject(&pen);
    CVUtils::FrameRect(&m_dc, place);
}

} // namespace

void DrawColourMapSheet(CDC& dc, CRect const& paper, std::span<ColourMapRow const> rows)
{
    Sheet(dc, paper, rows).Draw();
}

int ColourMapSheetHeight(std::size_t rows)
{
    int const height = RowHeight(rows);
    return 2 * kMargin + kHeading + static_cast<int>(rows) * height - height / 5;
}

} // namespace ombrel
