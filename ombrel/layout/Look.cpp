#include "ombrel/layout/Look.h"
#include "ombrel/colour/ColourMap.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/ColourMapFiles.h"
#include "ombrel/table/Utf8.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace ombrel {

namespace {

/// Distinct for colour-blind readers too, and dark enough on white; the first four are also apart in grey print: blue,
/// vermilion, sky blue, charcoal, green, purple, orange.
constexpr COLORREF kOnLight[] { RGB(0, 95, 170), RGB(213, 94, 0), RGB(86, 180, 233), RGB(45, 45, 55), RGB(0, 158, 115),
    RGB(204, 121, 167), RGB(230, 159, 0) };
/// The same hues, light enough on a dark ground.
constexpr COLORREF kOnDark[] { RGB(86, 180, 233), RGB(255, 159, 64), RGB(64, 210, 160), RGB(230, 150, 195),
    RGB(240, 228, 66), RGB(255, 110, 90), RGB(235, 235, 235) };
/// Each clearly lighter than the one before, so that a copier keeps them apart: navy, red, green, orange, light blue.
constexpr COLORREF kOnPaper[] { RGB(8, 48, 107), RGB(192, 40, 40), RGB(40, 150, 90), RGB(240, 160, 30),
    RGB(175, 215, 240) };

/// Dash styles in the order of their difference: solid, short, dash and dot, long, dash and two dots, dots.
constexpr int kDashes[] { 0, 2, 3, 1, 4, 5 };

constexpr std::array<C2DSymbol::SymbolType, 7> kSymbols { C2DSymbol::Circle, C2DSymbol::Square, C2DSymbol::Diamond,
    C2DSymbol::Triangle, C2DSymbol::InvertedTriangle, C2DSymbol::Cross, C2DSymbol::Plus };

COLORREF Mix(COLORREF a, COLORREF b, double share)
{
    auto const mix = [share](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * share)); };
    return RGB(mix(GetRValue(a), GetRValue(b)), mix(GetGValue(a), GetGValue(b)), mix(GetBValue(a), GetBValue(b)));
}

/// Where colours fade into the ground.
constexpr double kLeastContrast = 2.0;

std::vector<COLORREF> FromGrey(std::size_t count, Look const& look)
{
    // From the text's colour on, as far towards the ground as can still be seen.
    std::vector<COLORREF> colours;
    std::size_t const shades = std::clamp<std::size_t>(count, 2, 6);
    for (std::size_t i = 0; i < shades; ++i)
        colours.push_back(Mix(look.text, look.window, 0.75 * static_cast<double>(i) / static_cast<double>(shades - 1)));
    return colours;
}

std::vector<COLORREF> FromColourMap(CColourMap const& map, std::size_t count, Look const& look)
{
    CDWordArray const& table = map.GetColourTable();
    std::vector<COLORREF> usable;
    for (int i = 0; i < table.GetSize(); ++i) {
        if (ContrastOf(table[i], look.window) >= kLeastContrast)
            usable.push_back(table[i]);
    }
    if (usable.empty())
        return { look.text };
    std::vector<COLORREF> colours;
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t const at = count == 1 ? usable.size() / 2 : i * (usable.size() - 1) / (count - 1);
        colours.push_back(usable[at]);
    }
    return colours;
}

std::span<COLORREF const> DistinctColours(Look const& look)
{
    switch (look.theme) {
    case Theme::Light:
        break;
    case Theme::Dark:
        return kOnDark;
    case Theme::Print:
        return kOnPaper;
    }
    return kOnLight;
}

/// A shade for areas on that ground.
COLORREF Tint(COLORREF colour, COLORREF ground) { return Mix(colour, ground, 0.6); }

/// Shades of one colour: itself, lighter ones towards the ground and darker ones towards the text.
COLORREF Shade(COLORREF colour, std::size_t which, COLORREF ground, COLORREF text)
{
    constexpr struct {
        double share;
        bool darker;
        /// Of a colour like the text, which cannot be darker.
        double instead;
    } kShades[] { { 0.0, false, 0.0 }, { 0.5, false, 0.5 }, { 0.4, true, 0.3 }, { 0.7, false, 0.7 },
        { 0.65, true, 0.4 } };
    auto const& shade = kShades[which % std::size(kShades)];
    bool const darker = shade.darker && ContrastOf(colour, text) >= kLeastContrast;
    return Mix(colour, darker ? text : ground, shade.darker && !darker ? shade.instead : shade.share);
}

} // namespace

double LuminanceOf(COLORREF colour)
{
    auto const linear = [](int channel) {
        double const v = channel / 255.0;
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(GetRValue(colour)) + 0.7152 * linear(GetGValue(colour)) + 0.0722 * linear(GetBValue(colour));
}

double ContrastOf(COLORREF a, COLORREF b)
{
    double const first = LuminanceOf(a) + 0.05;
    double const second = LuminanceOf(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

Look LookOf(Theme theme)
{
    Look look;
    look.theme = theme;
    switch (theme) {
    case Theme::Light:
        break;
    case Theme::Dark:
        look.window = look.plottingArea = look.barBorder = RGB(27, 30, 36);
        look.axes = RGB(170, 176, 186);
        look.text = RGB(232, 234, 238);
        look.majorGrid = RGB(66, 72, 82);
        look.minorGrid = RGB(44, 48, 56);
        look.frame = RGB(110, 116, 126);
        break;
    case Theme::Print:
        look.axes = look.frame = look.barBorder = RGB(0, 0, 0);
        look.majorGrid = RGB(190, 190, 190);
        look.minorGrid = RGB(225, 225, 225);
        break;
    }
    return look;
}

Look PolarLookOf(Theme theme)
{
    Look look = LookOf(theme);
    if (theme == Theme::Dark) {
        look.window = look.plottingArea = look.barBorder = RGB(110, 118, 129);
        look.text = RGB(255, 255, 255);
        look.majorGrid = RGB(150, 157, 167);
        look.minorGrid = RGB(125, 132, 143);
        look.frame = RGB(200, 205, 212);
    }
    return look;
}

void ApplyLook(CAnnotation& box, Look const& look)
{
    box.SetTextColour(look.text);
    box.SetBkgndColour(look.plottingArea);
    box.SetBorderColour(look.frame);
}

void ApplyLook(C2DGraph& graph, Look const& look)
{
    graph.SetWindowBkndColour(look.window);
    graph.SetBkndColour(look.plottingArea);
    CAxes& axes = *graph.GetAxes();
    axes.SetColour(look.axes);
    AxesTextSettings texts = axes.GetTexts();
    texts.labels.colour = texts.minorLabels.colour = texts.titlesColour = look.text;
    axes.SetTexts(texts);
    C2DGrid& grid = *graph.GetGrid();
    grid.SetMajorColour(look.majorGrid);
    grid.SetMinorColour(look.minorGrid);
    grid.SetMajorLineStyle(1);
    grid.SetMinorLineStyle(1);
    C2DPolarGrid& polar = *graph.GetPolarGrid();
    polar.SetMajorColour(look.majorGrid);
    polar.SetMinorColour(look.minorGrid);
    polar.SetMajorLineStyle(1);
    polar.SetMinorLineStyle(1);
    ApplyLook(*graph.GetLegend(), look);
    CCaptionArray const& captions = *graph.GetCaptionArray();
    for (int i = 0; i < captions.GetSize(); ++i)
        ApplyLook(*captions.GetAt(i), look);
}

Palette::Palette(std::vector<COLORREF> colours, Look const& look)
    : m_colours(std::move(colours))
    , m_ground(look.plottingArea)
    , m_text(look.text)
    , m_dashed(look.theme == Theme::Print)
{
}

CurveLook Palette::At(std::size_t index) const
{
    CurveLook look;
    std::size_t const round = index / m_colours.size();
    look.colour = m_colours[index % m_colours.size()];
    look.tint = Tint(look.colour, m_ground);
    std::size_t const inRound = index % m_colours.size();
    look.fill = Shade(look.colour, round, m_ground, m_text);
    look.lineType = kDashes[(round + (m_dashed ? inRound : 0)) % std::size(kDashes)];
    look.symbol = kSymbols[(inRound + round) % kSymbols.size()];
    return look;
}

COLORREF TintOf(COLORREF colour, Look const& look) { return Tint(colour, look.plottingArea); }

Palette PaletteNamed(std::string const& name, std::size_t count, Look const& look)
{
    if (name.empty() || name == "distinct") {
        auto const colours = DistinctColours(look);
        return Palette({ colours.begin(), colours.end() }, look);
    }
    if (name == "grey")
        return Palette(FromGrey(count, look), look);
    CColourMap map;
    if (!LoadColourMap(name, map))
        throw ChartError(ChartError::Cause::Setting,
            "palette: expected distinct, grey or a colour map (ombrel colours lists them), found "
                + QuoteForMessage(name));
    return Palette(FromColourMap(map, std::max<std::size_t>(count, 1), look), look);
}

} // namespace ombrel
