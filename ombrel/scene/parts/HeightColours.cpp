#include "ombrel/scene/parts/HeightColours.h"
#include "ombrel/annotation/ColourKey.h"
#include "ombrel/colour/ColourMap.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/ColourMapFiles.h"
#include "ombrel/model/PlotComponent.h"
#include "ombrel/table/Utf8.h"

#include <cmath>
#include <limits>

namespace ombrel {

namespace {

constexpr char const* kUsualMap = "viridis";
constexpr int kUsualBands = 10;
constexpr double kMostLevels = 1000.0;

/// The multiples of the step that lie inside of the range.
std::vector<double> MultiplesInside(AxisRange range, double reference, double step)
{
    // What is hardly inside makes a band that nobody sees.
    constexpr double kNearEnd = 1e-6;
    double const slack = kNearEnd * step;
    std::vector<double> values;
    double const first = std::ceil((range.min + slack - reference) / step);
    for (int k = 0; reference + (first + k) * step < range.max - slack; ++k) {
        double const value = reference + (first + k) * step;
        values.push_back(std::abs(value) < slack ? 0.0 : value);
    }
    return values;
}

/// The ends of so many bands: at multiples of a tidy step which makes just as many of them, such that those at both
/// ends of the range are not much narrower than the others; without such a step, bands of one width.
std::vector<double> EndsOfBands(AxisRange range, int bands)
{
    // The tidiest first.
    constexpr double kTidy[] { 1.0, 2.0, 5.0, 2.5, 4.0, 3.0, 6.0, 8.0, 1.5, 1.2, 7.5, 7.0, 9.0 };
    constexpr double kPriceOfUntidiness = 0.06;
    double const width = range.max - range.min;
    double const decade = std::pow(10.0, std::floor(std::log10(width / bands)));
    std::vector<double> best;
    double bestPrice = std::numeric_limits<double>::infinity();
    for (double const scale : { decade, decade * 10.0 }) {
        double untidiness = 0.0;
        for (double const tidy : kTidy) {
            double const step = tidy * scale;
            untidiness += kPriceOfUntidiness;
            if (step > 2.0 * width || step * (bands + 2) < width)
                continue;
            std::vector<double> const values = MultiplesInside(range, 0.0, step);
            if (values.size() + 1 != static_cast<std::size_t>(bands))
                continue;
            double const ends = values.front() - range.min + range.max - values.back();
            double const price = untidiness + std::abs(2.0 - ends / step);
            if (price < bestPrice) {
                bestPrice = price;
                best = values;
            }
        }
    }
    if (!best.empty())
        return best;
    for (int k = 1; k < bands; ++k)
        best.push_back(range.min + k * width / bands);
    return best;
}

} // namespace

std::vector<double> LevelsOf(std::optional<LevelChoice> const& wanted, AxisRange range)
{
    LevelChoice const choice = wanted.value_or(LevelChoice());
    if (!choice.values.empty())
        return choice.values;
    std::vector<double> values;
    if (!(range.max > range.min)) {
        values = {};
    } else if (choice.bands) {
        if (*choice.bands > 1)
            values = EndsOfBands(range, *choice.bands);
    } else if (choice.reference) {
        if ((range.max - range.min) / choice.spacing > kMostLevels)
            throw ChartError(ChartError::Cause::Setting, "levels: so small a step makes more than 1000 levels");
        values = MultiplesInside(range, *choice.reference, choice.spacing);
    } else {
        values = MultiplesInside(range, 0.0, MakeNumberTicks(range, { true, true }, kUsualBands).step);
    }
    // One band still has a level: where it ends.
    if (values.empty())
        values.push_back(range.max);
    return values;
}

CDoubleArray LevelArray(ContourStyle const& contours, ColourStyle const& colours, AxisRange range)
{
    CDoubleArray levels;
    for (double const level : LevelsOf(contours.levels, colours.range.value_or(range)))
        levels.Add(level);
    return levels;
}

void SetColourRange(CPlotComponent& curve, ColourStyle const& colours)
{
    curve.SetUseLUTMinMax(colours.range ? 1 : 0);
    if (colours.range)
        curve.SetLUTMinMax(colours.range->min, colours.range->max);
}

void SetKeyLabels(CColourKey& key, CPlotComponent const& curve)
{
    constexpr int kMostSteps = 6;
    ColourKeySource const source = curve.GetColourKeySource();
    NumberTicks const ticks = MakeNumberTicks(WidenEmptyRange({ source.low, source.high }), { true, true }, kMostSteps);
    key.SetLabelMode(CColourKey::lmSteppedTidy);
    key.SetMinAndDel(ticks.first, ticks.step);
}

void LoadHeightMap(std::string const& name, CColourMap& map)
{
    if (!LoadColourMap(name.empty() ? kUsualMap : name, map))
        throw ChartError(ChartError::Cause::Setting,
            "colour-map: there is no colour map " + QuoteForMessage(name.empty() ? kUsualMap : name)
                + " (ombrel colours lists them)");
}

void SetHeightColours(C3DCurve& curve, ColourStyle const& colours)
{
    LoadHeightMap(colours.map, *curve.GetColourmap());
    SetColourRange(curve, colours);
}

} // namespace ombrel
