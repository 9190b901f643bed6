#include "ombrel/table/EpochTimes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace ombrel {

namespace {

/// Names of columns of times hold one of these.
bool SpeaksOfTime(std::string name)
{
    std::transform(name.begin(), name.end(), name.begin(),
        [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    for (char const* const word : { "time", "date", "stamp", "epoch", "unix" }) {
        if (name.find(word) != std::string::npos)
            return true;
    }
    return false;
}

} // namespace

std::optional<EpochUnit> FindEpoch(TableColumn const& column)
{
    bool const isNamed = SpeaksOfTime(column.name);
    double const first = isNamed ? 1e9 : 1.1e9;
    constexpr double kLast = 2.5e9;
    if (column.type != ColumnType::Number)
        return std::nullopt;
    double min = std::numeric_limits<double>::infinity();
    double max = -min;
    double last = std::numeric_limits<double>::quiet_NaN();
    bool rises = false;
    bool falls = false;
    column.values.ForEach([&](double value) {
        if (std::isnan(value))
            return;
        min = std::min(min, value);
        max = std::max(max, value);
        rises = rises || value > last;
        falls = falls || value < last;
        last = value;
    });
    if (!(rises || falls) || (rises && falls && !isNamed))
        return std::nullopt;
    if (min >= first && max < kLast)
        return EpochUnit::Seconds;
    if (min >= first * 1000.0 && max < kLast * 1000.0)
        return EpochUnit::Milliseconds;
    return std::nullopt;
}

void MakeDates(TableColumn& column, EpochUnit unit)
{
    constexpr double kDaysTo1970 = 25569.0;
    double const perDay = unit == EpochUnit::Seconds ? 86400.0 : 86400000.0;
    column.values.Transform([perDay](double value) { return kDaysTo1970 + value / perDay; });
    column.type = ColumnType::Date;
}

} // namespace ombrel
