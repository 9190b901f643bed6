#include "ombrel/graph2d/axes/GridPositions.h"
#include "ombrel/graph2d/axes/AxesTicks.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

namespace {

bool IsUsable(GridRange range)
{
    return std::isfinite(range.min) && std::isfinite(range.max) && range.min != range.max
        && std::isfinite(range.max - range.min);
}

/// How many lines lie between those of that many intervals divided in so many parts.
double MinorCount(double intervals, int parts) { return intervals * (static_cast<double>(parts) - 1.0); }

} // namespace

std::vector<double> DivisionLines(GridDirection const& direction, GridRange range, GridTickType type)
{
    int const majors = direction.majorDivisions;
    int const minors = direction.minorDivisions;
    std::vector<double> lines;
    if (!IsUsable(range) || majors < 1 || majors >= kMaxTicks)
        return lines;
    double const step = (range.max - range.min) / majors;
    if (type == ttMajor) {
        for (int i = 0; i < majors; ++i)
            lines.push_back(range.min + i * step);
        // Rounding must not push the last one out of the range.
        lines.push_back(range.max);
        return lines;
    }
    if (minors < 2 || MinorCount(majors, minors) > kMaxTicks)
        return lines;
    double const minorStep = step / minors;
    for (int i = 0; i < majors; ++i) {
        for (int j = 1; j < minors; ++j)
            lines.push_back(range.min + i * step + j * minorStep);
    }
    return lines;
}

namespace {

/// The minor lines: parts of the steps whose starts in the range are majors, and of the step before them.
std::vector<double> PartLines(GridDirection const& direction, GridRange range, std::vector<double> const& majors)
{
    double const step = direction.lineDel;
    int const parts = direction.minorDivisions;
    std::vector<double> lines;
    if (parts < 2 || MinorCount(static_cast<double>(majors.size()) + 1.0, parts) > kMaxTicks)
        return lines;
    auto const addParts = [&](double from) {
        std::vector<double> const between = StepParts(from, step, parts, range.min, range.max);
        lines.insert(lines.end(), between.begin(), between.end());
    };
    addParts(majors.empty() ? direction.lineMin + std::floor((range.min - direction.lineMin) / step) * step
                            : majors.front() - step);
    for (double const major : majors)
        addParts(major);
    return lines;
}

} // namespace

std::vector<double> StepLines(GridDirection const& direction, GridRange range, GridTickType type, ClosingLine closing)
{
    double const step = direction.lineDel;
    if (!IsUsable(range) || !std::isfinite(direction.lineMin) || !std::isfinite(step) || !(step > 0.0)
        || (range.max - range.min) / step >= kMaxTicks)
        return {};
    std::vector<double> lines = StepPositionsWithin(direction.lineMin, step, range.min, range.max);
    if (type == ttMinor)
        return PartLines(direction, range, lines);
    if (closing == ClosingLine::AtMaximum && (lines.empty() || lines.back() != range.max))
        lines.push_back(range.max);
    return lines;
}

std::vector<double> DateLines(DateSteps const& dates, GridRange range, GridTickType type)
{
    if (!IsUsable(range) || range.min > range.max || !CVUtils::IsValidDate(range.min)
        || !CVUtils::IsValidDate(range.max))
        return {};
    std::vector<double> lines = DateStepPositions(dates, range.min, range.max);
    if (type == ttMinor)
        return MinorDatePositions(dates, lines, range.min, range.max);
    std::erase_if(lines, [&range](double v) { return v < range.min; });
    return lines;
}

std::vector<double> DecadeLines(GridRange range, GridTickType type)
{
    constexpr int kLinesPerDecade = 9;
    std::vector<double> lines;
    if (!IsUsable(range) || range.min > range.max || (range.max - range.min + 1.0) * kLinesPerDecade > kMaxTicks)
        return lines;
    double const lowest = std::floor(range.min);
    double const decades = std::floor(range.max) - lowest + 1.0;
    for (int i = 0; i < decades; ++i) {
        double const decade = lowest + i;
        if (type == ttMajor) {
            if (decade >= range.min)
                lines.push_back(decade);
        } else if (decade < range.max) {
            for (int line = 2; line <= kLinesPerDecade + 1; ++line)
                lines.push_back(decade + std::log10(line));
        }
    }
    return lines;
}

} // namespace ombrel
