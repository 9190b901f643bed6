#include "ombrel/chart/data/SharedColumns.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/table/Utf8.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace ombrel {

namespace {

std::string XText(CurveInput const& input, double x)
{
    if (input.settings.xKind == XKind::Words)
        return QuoteForMessage(input.words[static_cast<std::size_t>(x) - 1]);
    return input.settings.xKind == XKind::Dates ? DateText(x) : NumberText(x);
}

/// The rows in the order of their x values, without those that have none.
std::vector<std::size_t> OrderOf(std::span<double const> xs)
{
    std::vector<std::size_t> order;
    order.reserve(xs.size());
    for (std::size_t i = 0; i < xs.size(); ++i) {
        if (!std::isnan(xs[i]))
            order.push_back(i);
    }
    auto const before = [xs](std::size_t a, std::size_t b) { return xs[a] < xs[b]; };
    if (!std::is_sorted(order.begin(), order.end(), before))
        std::stable_sort(order.begin(), order.end(), before);
    return order;
}

/// A series' values in the order of its x values.
struct SortedSeries {
    explicit SortedSeries(SeriesData const& from)
        : series(from)
        , order(OrderOf(from.X()))
        , xs(Picked(from.X()))
    {
    }
    std::vector<double> Picked(std::span<double const> values) const
    {
        std::vector<double> picked;
        picked.reserve(order.size());
        for (std::size_t const i : order)
            picked.push_back(values[i]);
        return picked;
    }
    /// Those that belong to x values of a longer list, NaN for the others.
    std::vector<double> PlacedAt(std::vector<double> const& places, std::span<double const> values) const
    {
        if (places.size() == order.size())
            return Picked(values);
        std::vector<double> placed(places.size(), std::numeric_limits<double>::quiet_NaN());
        std::size_t place = 0;
        for (std::size_t i = 0; i < order.size(); ++i, ++place) {
            while (places[place] < xs[i])
                ++place;
            placed[place] = values[order[i]];
        }
        return placed;
    }

    SeriesData const& series;
    std::vector<std::size_t> order;
    std::vector<double> xs;
};

void RefuseRepeats(CurveInput const& input, SortedSeries const& sorted)
{
    auto const repeat = std::adjacent_find(sorted.xs.begin(), sorted.xs.end());
    if (repeat == sorted.xs.end())
        return;
    auto const at = static_cast<std::size_t>(repeat - sorted.xs.begin());
    throw SeriesError(sorted.series.index, sorted.order[at + 1],
        "expected one point for each x, since each has one bar, found " + XText(input, *repeat) + " again",
        sorted.order[at]);
}

} // namespace

double SharedColumns::Spacing() const
{
    double spacing = xs.size() > 1 ? xs[1] - xs[0] : 1.0;
    for (std::size_t i = 1; i < xs.size(); ++i)
        spacing = std::min(spacing, xs[i] - xs[i - 1]);
    return spacing;
}

bool SharedColumns::HasWholeNumbers() const
{
    return std::all_of(xs.begin(), xs.end(), [](double x) { return x == std::floor(x); });
}

void MarkGaps(CurveInput const& input, SharedColumns& shared, bool logarithmic, CurveData& data)
{
    for (SharedColumns::Column& column : shared.columns) {
        MarkGaps(column.ys, logarithmic, data.notPositive);
        bool hasValue = false;
        for (std::size_t i = 0; i < shared.xs.size() && !hasValue; ++i)
            hasValue = !IsGap(column.ys[i]) && shared.xs[i] >= input.shown.min && shared.xs[i] <= input.shown.max;
        if (!hasValue)
            data.empty.push_back(column.series->name);
    }
}

SharedColumns ShareColumns(CurveInput const& input, EqualX equalX)
{
    SharedColumns shared;
    std::vector<SortedSeries> sorted;
    for (SeriesData const* const one : input.series) {
        sorted.emplace_back(*one);
        if (equalX == EqualX::Refused)
            RefuseRepeats(input, sorted.back());
        std::vector<double> both;
        std::set_union(shared.xs.begin(), shared.xs.end(), sorted.back().xs.begin(), sorted.back().xs.end(),
            std::back_inserter(both));
        shared.xs = std::move(both);
    }
    for (SortedSeries const& one : sorted) {
        SharedColumns::Column column;
        column.series = &one.series;
        column.ys = one.PlacedAt(shared.xs, one.series.Y());
        if (!one.series.errors.empty())
            column.errors = one.PlacedAt(shared.xs, one.series.errors);
        shared.columns.push_back(std::move(column));
    }
    return shared;
}

} // namespace ombrel
