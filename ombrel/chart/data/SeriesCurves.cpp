#include "ombrel/chart/data/SeriesCurves.h"
#include "ombrel/drawing/Opacity.h"
#include "ombrel/foundation/GArray.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

void CurveData::Add(AxisRange& range, double value)
{
    if (range.min > range.max)
        range = { value, value };
    else
        range = { std::min(range.min, value), std::max(range.max, value) };
}

void CurveData::Add(CurveData const& other)
{
    if (other.x.min <= other.x.max) {
        AddX(other.x.min);
        AddX(other.x.max);
    }
    if (other.y.min <= other.y.max) {
        AddY(other.y.min);
        AddY(other.y.max);
    }
    notPositive += other.notPositive;
    spacing = std::max(spacing, other.spacing);
    wholeNumbers = wholeNumbers && other.wholeNumbers;
    labels.insert(labels.end(), other.labels.begin(), other.labels.end());
    empty.insert(empty.end(), other.empty.begin(), other.empty.end());
}

CurveLook CurveInput::LookOf(SeriesData const& one) const
{
    CurveLook own = palette.At(one.index);
    own.colour = one.colour.value_or(own.colour);
    own.fill = one.colour.value_or(own.fill);
    own.tint = one.colour ? TintOf(*one.colour, look) : own.tint;
    for (COLORREF* const colour : { &own.colour, &own.fill, &own.tint })
        *colour = WithOpacity(*colour, one.opacity);
    own.lineType = one.lineType.value_or(own.lineType);
    own.symbol = one.symbol.value_or(own.symbol);
    return own;
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

} // namespace ombrel
