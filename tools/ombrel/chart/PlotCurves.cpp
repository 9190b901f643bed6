#include "tools/ombrel/chart/PlotCurves.h"
#include "ombrel/foundation/GArray.h"
#include "tools/ombrel/Messages.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>

namespace ombrel::host {

void CurveData::Add(AxisRange& range, double value)
{
    if (range.min > range.max)
        range = { value, value };
    else
        range = { std::min(range.min, value), std::max(range.max, value) };
}

void MarkGaps(std::span<double> values, bool logarithmic, std::size_t& notPositive)
{
    for (double& value : values) {
        bool const unfit = logarithmic && value <= 0.0;
        notPositive += unfit;
        if (unfit || std::isnan(value))
            value = kGap;
    }
}

void SortByX(std::span<double> xs, std::span<double> ys)
{
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        if (!IsGap(xs[i]))
            order.push_back(i);
    }
    auto const before = [xs](std::size_t a, std::size_t b) { return xs[a] < xs[b]; };
    if (std::is_sorted(order.begin(), order.end(), before))
        return;
    std::stable_sort(order.begin(), order.end(), before);
    for (std::span<double> const values : { xs, ys }) {
        std::vector<double> sorted(values.size(), kGap);
        std::transform(order.begin(), order.end(), sorted.begin(), [values](std::size_t i) { return values[i]; });
        std::copy(sorted.begin(), sorted.end(), values.begin());
    }
}

std::vector<std::size_t> LonePoints(std::span<double const> xs, std::span<double const> ys, bool pairs)
{
    std::vector<std::size_t> lone;
    auto const isThere = [&](std::size_t i) { return i < xs.size() && !IsGap(xs[i]) && !IsGap(ys[i]); };
    for (std::size_t i = 0; i < xs.size(); ++i) {
        bool const before = isThere(i - 1);
        bool const after = isThere(i + 1);
        if (isThere(i) && !(pairs ? (i % 2 ? before : after) : before || after))
            lone.push_back(i);
    }
    return lone;
}

std::vector<std::string> CurveTitles(std::vector<PlotSource> const& sources)
{
    std::vector<std::string> titles;
    std::vector<std::string> files;
    for (PlotSource const& source : sources) {
        for (std::size_t const column : source.yColumns) {
            std::string const& name = source.table.columns[column].name;
            std::string title = name.empty() ? "column " + std::to_string(column + 1) : name;
            if (source.group) {
                std::string const group = source.group->empty() ? "(none)" : *source.group;
                if (source.yColumns.size() > 1)
                    title.insert(0, group + ", ");
                else
                    title = group;
            }
            titles.push_back(std::move(title));
            files.push_back(std::filesystem::path(source.name).stem().string());
        }
    }
    std::vector<std::string> const names = titles;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        if (sources.size() > 1 && std::count(names.begin(), names.end(), names[i]) > 1)
            titles[i] = files[i] + ": " + names[i];
    }
    return titles;
}

CurveData AddCurves(CurveInput const& input)
{
    for (PlotSource const& source : input.sources) {
        if (source.table.rows > static_cast<std::size_t>(std::numeric_limits<int>::max()))
            throw Failure(kDataFault, source.name + ": has more than 2147483647 rows");
    }
    switch (input.options.kind) {
    case PlotKind::Bar:
    case PlotKind::Clustered:
    case PlotKind::Stacked:
        return AddBars(input);
    case PlotKind::Area:
        return AddBands(input);
    case PlotKind::Histogram:
        return AddHistogram(input);
    default:
        // Kinds in space are drawn otherwise.
        return AddLines(input);
    }
}

} // namespace ombrel::host
