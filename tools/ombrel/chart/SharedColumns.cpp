#include "tools/ombrel/chart/SharedColumns.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/platform/framework/DateTime.h"
#include "tools/ombrel/Messages.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace ombrel::host {

namespace {

std::vector<double> ValuesOf(ColumnValues const& values)
{
    std::vector<double> copy;
    copy.reserve(values.Size());
    values.ForEach([&copy](double v) { copy.push_back(v); });
    return copy;
}

std::vector<double> XValuesOf(PlotSource const& source)
{
    if (source.xColumn != PlotSource::kRowNumbers && !source.HasWords())
        return ValuesOf(source.table.columns[source.xColumn].values);
    std::vector<double> rows(source.table.rows);
    std::iota(rows.begin(), rows.end(), 1.0);
    return rows;
}

std::string XText(PlotSource const& source, double x)
{
    if (std::isnan(x))
        return "a gap";
    if (!source.HasDates())
        return NumberText(x);
    bool const hasTime = x != std::floor(x);
    return COleDateTime(x).Format(hasTime ? "%Y-%m-%d %H:%M:%S" : "%Y-%m-%d").ToUtf8();
}

/// Curves that stand on each other or side by side belong to the same x values.
void RequireSameX(PlotSource const& first, std::vector<double> const& xs, PlotSource const& other)
{
    std::vector<double> const others = XValuesOf(other);
    for (std::size_t i = 0; i < std::min(xs.size(), others.size()); ++i) {
        if (others[i] != xs[i] && !(std::isnan(xs[i]) && std::isnan(others[i])))
            throw Failure(kDataFault,
                other.PlaceOf(i) + "expected the x values of " + first.name + " (" + XText(first, xs[i]) + "), found "
                    + XText(other, others[i]));
    }
    if (others.size() != xs.size())
        throw Failure(kDataFault,
            other.name + ": expected " + std::to_string(xs.size()) + " rows as in " + first.name + ", found "
                + std::to_string(others.size()));
}

/// The rows in the order of their x values, without those that have none.
std::vector<std::size_t> OrderOf(std::vector<double> const& xs)
{
    std::vector<std::size_t> order;
    order.reserve(xs.size());
    for (std::size_t i = 0; i < xs.size(); ++i) {
        if (!std::isnan(xs[i]))
            order.push_back(i);
    }
    auto const before = [&xs](std::size_t a, std::size_t b) { return xs[a] < xs[b]; };
    if (!std::is_sorted(order.begin(), order.end(), before))
        std::stable_sort(order.begin(), order.end(), before);
    return order;
}

std::vector<double> Picked(std::vector<double> const& values, std::vector<std::size_t> const& order)
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
            data.emptyColumns.push_back(column.title);
    }
}

SharedColumns TakeSharedColumns(CurveInput const& input, EqualX equalX)
{
    std::vector<std::string> const titles = CurveTitles(input.sources);
    PlotSource const& first = input.sources.front();
    std::vector<double> const xs = XValuesOf(first);
    std::vector<std::size_t> const order = OrderOf(xs);
    SharedColumns shared;
    shared.xs = Picked(xs, order);
    for (std::size_t i = 1; i < shared.xs.size() && equalX == EqualX::Refused; ++i) {
        if (shared.xs[i] == shared.xs[i - 1])
            throw Failure(kDataFault,
                first.PlaceOf(order[i]) + "expected one row for each x, since each has one bar, found "
                    + XText(first, shared.xs[i]) + " again (line " + std::to_string(first.table.LineOf(order[i - 1]))
                    + " has it); --by COL makes a curve of each group");
    }
    for (PlotSource& source : input.sources) {
        if (&source != &first)
            RequireSameX(first, xs, source);
        for (std::size_t i = 0; i < source.yColumns.size(); ++i) {
            SharedColumns::Column column;
            column.title = titles[shared.columns.size()];
            column.ys = Picked(ValuesOf(source.table.columns[source.yColumns[i]].values), order);
            if (!source.errorColumns.empty())
                column.errors = Picked(ValuesOf(source.table.columns[source.errorColumns[i]].values), order);
            shared.columns.push_back(std::move(column));
        }
    }
    return shared;
}

} // namespace ombrel::host
