#include "tools/ombrel/commands/ColoursCommand.h"
#include "ombrel/colour/ColourMap.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/layout/ColourMapFiles.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>

namespace ombrel::host {

namespace {

struct Entry {
    std::string name;
    ColourMapKind kind = ColourMapKind::File;
    std::string authors;
    CColourMap map;
};

Entry LoadEntry(std::string const& name)
{
    Entry entry { name, KindOfColourMap(name), AuthorsOfColourMap(name), {} };
    if (LoadColourMap(name, entry.map)) {
        if (entry.kind != ColourMapKind::File)
            entry.name = entry.map.GetName().ToUtf8();
        return entry;
    }
    std::error_code error;
    if (entry.kind == ColourMapKind::File && !std::filesystem::exists(name, error))
        throw Failure(kUsageFault, name + ": no colour map of that name (ombrel colours lists them), and no file");
    throw Failure(kDataFault, name + ": not a colour map file, or a damaged one");
}

/// Those named, or without names all that there are.
std::vector<Entry> LoadEntries(std::vector<std::string> const& names, Messages const& messages)
{
    std::vector<Entry> entries;
    entries.reserve(names.size());
    for (std::string const& name : names)
        entries.push_back(LoadEntry(name));
    if (!names.empty())
        return entries;
    for (std::string const& name : ListColourMaps()) {
        try {
            entries.push_back(LoadEntry(name));
        } catch (Failure const& failure) {
            // One bad file among those installed does not hide the others.
            messages.Warning(failure.what());
        }
    }
    return entries;
}

// --- the list --------------------------------------------------------------------------------------------------------

std::string KindText(ColourMapKind kind)
{
    switch (kind) {
    case ColourMapKind::Preset:
        return "preset";
    case ColourMapKind::Installed:
        return "installed";
    case ColourMapKind::File:
        break;
    }
    return "file";
}

/// Of the channel that has most.
std::string ControlPoints(CColourMap const& map)
{
    int most = 0;
    for (int c = 0; c < CColourMap::kChannels; ++c)
        most = std::max(most, map.GetChannel(c).positions.GetSize());
    return std::to_string(most);
}

std::string FormatList(std::vector<Entry> const& entries)
{
    std::vector<std::array<std::string, 4>> rows { { "name", "kind", "points", "by" } };
    for (Entry const& entry : entries)
        rows.push_back({ entry.name, KindText(entry.kind), ControlPoints(entry.map), entry.authors });
    std::array<int, 4> widths {};
    auto const length = [](std::string const& text) { return CString(text).GetLength(); };
    for (auto const& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], length(row[i]));
    }
    std::string text;
    for (auto const& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i)
            line += row[i] + std::string(static_cast<std::size_t>(widths[i] - length(row[i]) + 2), ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

// --- the chart -------------------------------------------------------------------------------------------------------

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
    auto const linear = [](BYTE channel) {
        double const v = channel / 255.0;
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    double const luminance
        = 0.2126 * linear(GetRValue(colour)) + 0.7152 * linear(GetGValue(colour)) + 0.0722 * linear(GetBValue(colour));
    return luminance > 216.0 / 24389.0 ? 116.0 * std::cbrt(luminance) - 16.0 : luminance * 24389.0 / 27.0;
}

/// The entry of the table for place i of n, from end to end.
COLORREF ColourAt(CColourMap const& map, int i, int n)
{
    constexpr int kLast = CColourMap::kTableSize - 1;
    return map.GetColourTable()[n > 1 ? (2 * i * kLast + n - 1) / (2 * (n - 1)) : 0];
}

class Chart {
public:
    Chart(CDC& dc, CRect const& paper, std::vector<Entry> const& entries);
    void Draw();

private:
    int Pixels(double size) const { return std::max(1, static_cast<int>(std::lround(size * m_unit))); }
    void SetFont(CFont& font, int height, int weight);
    int NamesWidth();
    void DrawText(CRect const& place, std::string const& text, COLORREF colour);
    void DrawName(CRect const& place, Entry const& entry);
    void DrawStrip(CRect const& place, CColourMap const& map);
    void DrawSteps(CRect const& place, CColourMap const& map);
    void DrawProfile(CRect const& place, CColourMap const& map);
    void DrawFrame(CRect const& place);

    CDC& m_dc;
    CRect m_paper;
    std::vector<Entry> const& m_entries;
    /// Device pixels of one pixel at 96 to the inch.
    double m_unit;
    int m_rowHeight = 0;
    CFont m_nameFont;
    CFont m_smallFont;
};

Chart::Chart(CDC& dc, CRect const& paper, std::vector<Entry> const& entries)
    : m_dc(dc)
    , m_paper(paper)
    , m_entries(entries)
    , m_unit(dc.GetDeviceCaps(LOGPIXELSX) / 96.0)
{
}

void Chart::SetFont(CFont& font, int height, int weight)
{
    CFontData data;
    data.weight = weight;
    CVUtils::ConfigureFont(&font, data, std::max(height, 1), 0);
}

int Chart::NamesWidth()
{
    int width = 0;
    for (Entry const& entry : m_entries) {
        m_dc.SelectObject(&m_nameFont);
        width = std::max<int>(width, m_dc.GetTextExtent(CString(entry.name)).cx);
        m_dc.SelectObject(&m_smallFont);
        width = std::max<int>(width, m_dc.GetTextExtent(CString(entry.authors)).cx);
    }
    return std::min(width, m_paper.Width() * 3 / 10);
}

void Chart::Draw()
{
    m_dc.FillSolidRect(m_paper, kPaper);
    SavedDC const saved(m_dc);
    m_dc.SetBkMode(TRANSPARENT);
    int const margin = std::min({ Pixels(kMargin), m_paper.Width() / 12, m_paper.Height() / 6 });
    CRect inner = m_paper;
    inner.DeflateRect(margin, margin);
    int const heading = std::min(Pixels(kHeading), inner.Height() / 5);
    int const count = std::max(1, static_cast<int>(m_entries.size()));
    // The last row ends without the space that parts it from the next.
    m_rowHeight = std::min((inner.Height() - heading) * 5 / (5 * count - 1), Pixels(RowHeight(m_entries.size())));
    SetFont(m_nameFont, std::min(Pixels(17), m_rowHeight * 3 / 10), CFontData::kBoldWeight);
    SetFont(m_smallFont, std::min(Pixels(14), m_rowHeight / 4), CFontData::kNormalWeight);

    int const gap = margin * 2 / 3;
    int const left = inner.left + NamesWidth() + gap;
    int const profile = inner.right - (inner.right - left) / 5;
    m_dc.SelectObject(&m_smallFont);
    DrawText({ profile, inner.top, inner.right, inner.top + heading }, "lightness", kFaintInk);
    DrawText({ left, inner.top, profile - gap, inner.top + heading }, "continuous, and in ten steps", kFaintInk);
    int top = inner.top + heading;
    for (Entry const& entry : m_entries) {
        int const bottom = top + m_rowHeight * 4 / 5;
        int const middle = top + (bottom - top) * 63 / 100;
        DrawName({ inner.left, top, left - gap, bottom }, entry);
        DrawStrip({ left, top, profile - gap, middle }, entry.map);
        DrawSteps({ left, middle + std::max(1, m_rowHeight / 24), profile - gap, bottom }, entry.map);
        DrawProfile({ profile, top, inner.right, bottom }, entry.map);
        top += m_rowHeight;
    }
}

/// One line in the selected font, at the left and in the middle of its place; shortened when it is too long.
void Chart::DrawText(CRect const& place, std::string const& text, COLORREF colour)
{
    CString shown(text);
    for (int length = shown.GetLength() - 1; m_dc.GetTextExtent(shown).cx > place.Width() && length > 0; --length)
        shown = CString(text).Left(length) + CString("…");
    m_dc.SetTextColor(colour);
    m_dc.TextOut(place.left, place.top + (place.Height() - m_dc.GetTextExtent(shown).cy) / 2, shown);
}

void Chart::DrawName(CRect const& place, Entry const& entry)
{
    m_dc.SelectObject(&m_nameFont);
    int const nameHeight = m_dc.GetTextMetrics().tmHeight;
    m_dc.SelectObject(&m_smallFont);
    int const smallHeight = entry.authors.empty() ? 0 : m_dc.GetTextMetrics().tmHeight;
    int const top = place.top + (place.Height() - nameHeight - smallHeight) / 2;
    if (!entry.authors.empty())
        DrawText(
            { place.left, top + nameHeight, place.right, top + nameHeight + smallHeight }, entry.authors, kFaintInk);
    m_dc.SelectObject(&m_nameFont);
    DrawText({ place.left, top, place.right, top + nameHeight }, entry.name, kInk);
}

void Chart::DrawStrip(CRect const& place, CColourMap const& map)
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

void Chart::DrawSteps(CRect const& place, CColourMap const& map)
{
    int const gap = std::min(Pixels(2), place.Width() / (4 * kSteps));
    for (int i = 0; i < kSteps; ++i) {
        auto const edge = [&](int k) { return place.left + (place.Width() + gap) * k / kSteps; };
        CRect const step(edge(i), place.top, edge(i + 1) - gap, place.bottom);
        m_dc.FillSolidRect(step, ColourAt(map, i, kSteps));
        DrawFrame(step);
    }
}

void Chart::DrawProfile(CRect const& place, CColourMap const& map)
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
void Chart::DrawFrame(CRect const& place)
{
    CPen pen(PS_SOLID, Pixels(0.5), kFrame);
    m_dc.SelectObject(&pen);
    CVUtils::FrameRect(&m_dc, place);
}

/// As high as the chart, unless the user chose a size.
void FitHeight(Target& target, std::size_t count)
{
    std::size_t const rows = std::min<std::size_t>(count, 400);
    target.size.height = 2 * kMargin + kHeading + static_cast<int>(rows) * RowHeight(count) - RowHeight(count) / 5;
}

} // namespace

void RunColours(Options const& options, Messages const& messages)
{
    bool const toPicture
        = !options.files.empty() || !options.outputs.empty() || options.format || options.size || options.page;
    std::vector<Entry> const entries = LoadEntries(options.files, messages);
    if (!toPicture) {
        WriteToStandardOutput(FormatList(entries));
        return;
    }
    Outputs outputs(options, options.files.size() == 1 ? options.files.front() : "colours");
    for (Target& target : outputs.GetPictures()) {
        if (!options.size)
            FitHeight(target, entries.size());
    }
    outputs.SetTitle(entries.size() == 1 ? entries.front().name : "Colour maps");
    auto const draw = [&entries](Picture& picture, bool) {
        Chart(picture.GetDC(), picture.GetRect(), entries).Draw();
        return nullptr;
    };
    outputs.Write(draw, messages);
}

} // namespace ombrel::host
