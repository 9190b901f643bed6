#include "ombrel/chart/data/SharedColumns.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/platform/framework/DateTime.h"
#include "ombrel/table/Utf8.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

namespace {

std::string XText(CurveInput const& input, double x)
{
    if (std::isnan(x))
        return "a gap";
    if (input.settings.xKind != XKind::Dates)
        return NumberText(x);
    bool const hasTime = x != std::floor(x);
    return COleDateTime(x).Format(hasTime ? "%Y-%m-%d %H:%M:%S" : "%Y-%m-%d").ToUtf8();
}

/// Series that stand on each other or side by side belong to the same x values.
void RequireSameX(CurveInput const& input, SeriesData const& other)
{
    SeriesData const& first = *input.series.front();
    std::span<double const> const xs = first.X();
    std::span<double const> const others = other.X();
    for (std::size_t i = 0; i < std::min(xs.size(), others.size()); ++i) {
        if (others[i] != xs[i] && !(std::isnan(xs[i]) && std::isnan(others[i])))
            throw SeriesError(other.index, i,
                "expected the x values of " + QuoteForMessage(first.name) + " (" + XText(input, xs[i]) + "), found "
                    + XText(input, others[i]));
    }
    if (others.size() != xs.size())
        throw SeriesError(other.index, std::nullopt,
            "expected " + Counted(xs.size(), "point", "points") + " as in " + QuoteForMessage(first.name) + ", found "
                + std::to_string(others.size()));
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

std::vector<double> Picked(std::span<double const> values, std::vector<std::size_t> const& order)
{
    std::vector<double> picked;
    picked.reserve(order.size());
    for (std::size_t const i : order)
        picked.push_back(values[i]);
    return picked;
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
    SeriesData const& first = *input.series.front();
    std::vector<std::size_t> const order = OrderOf(first.X());
    SharedColumns shared;
    shared.xs = Picked(first.X(), order);
    for (std::size_t i = 1; i < shared.xs.size() && equalX == EqualX::Refused; ++i) {
        if (shared.xs[i] == shared.xs[i - 1])
            throw SeriesError(first.index, order[i],
                "expected one point for each x, since each has one bar, found " + XText(input, shared.xs[i]) + " again",
                order[i - 1]);
    }
    for (SeriesData const* const one : input.series) {
        if (one != &first)
            RequireSameX(input, *one);
        SharedColumns::Column column;
        column.series = one;
        column.ys = Picked(one->Y(), order);
        if (!one->errors.empty())
            column.errors = Picked(one->errors, order);
        shared.columns.push_back(std::move(column));
    }
    return shared;
}

} // namespace ombrel
