#include "ombrel/graph2d/axes/AxesTicks.h"
#include "ombrel/foundation/GArray.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ombrel {

namespace {

/// Relative to a step: positions that close are one and the same but for rounding.
constexpr double kStepSlack = 1e-9;

/// The position, or the end of the range that it lies so near to.
double MeetEnds(double v, double slack, double lo, double hi)
{
    if (std::fabs(v - hi) <= slack)
        return hi;
    return std::fabs(v - lo) <= slack ? lo : v;
}

/// Where a sequence of steps starts when none lies on the lower end of the range.
enum class FirstStep { BelowRange, InRange };

/// How far rounding may move positions of this size, as a fraction of the step.
double SlackOf(double step, double a, double b, double c)
{
    double const largest = std::max({ std::fabs(a), std::fabs(b), std::fabs(c) });
    double const rounding = 8 * std::numeric_limits<double>::epsilon() * largest / step;
    return std::min(std::max(kStepSlack, rounding), 0.01);
}

/// start ± n · step up to hi. Going back from a start above lo is arithmetic: it may be any number of steps.
std::vector<double> UniformPositions(double start, double step, double lo, double hi, FirstStep firstStep)
{
    if (!(step > 0.0) || !std::isfinite(step))
        return {};
    double const slack = SlackOf(step, start, lo, hi);
    double first = start;
    if (start > lo)
        first -= std::ceil((start - lo) / step - slack) * step;
    if (firstStep == FirstStep::InRange && first < lo - slack * step)
        first += step;
    double count = std::floor((hi - first) / step + slack) + 1.0;
    if (count > kMaxTicks) {
        double const hidden = std::max(0.0, std::ceil((lo - first) / step - slack));
        first += hidden * step;
        count -= hidden;
    }
    // Written so that what is not a number fails.
    if (!(count >= 1.0 && count <= kMaxTicks))
        return {};
    std::vector<double> positions(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < positions.size(); ++i)
        positions[i] = MeetEnds(first + static_cast<double>(i) * step, slack * step, lo, hi);
    return positions;
}

/// The distance of the major positions from each other, for telling what is zero but for rounding. A logarithmic axis
/// may have a tick mode without a step: there it is one decade.
double MajorStep(AxisSettings const& axis)
{
    double step = axis.tickDel;
    if (axis.HasDivisions())
        step = (axis.max - axis.min) / (static_cast<double>(axis.numMajorTicks) - 1.0);
    else if (!axis.HasSteps())
        step = 1.0;
    step = std::fabs(step);
    return step > 0.0 && std::isfinite(step) ? step : 1.0;
}

double WithoutRoundedZero(double v, double step) { return std::fabs(v) / step < 1e-12 ? 0.0 : v; }

bool IsPosition(double v) { return !IsGap(v); }

} // namespace

std::vector<double> StepPositionsWithin(double start, double step, double lo, double hi)
{
    std::vector<double> positions = UniformPositions(start, step, lo, hi, FirstStep::InRange);
    std::erase_if(positions, [lo](double v) { return v < lo; });
    return positions;
}

std::vector<double> StepParts(double major, double step, int parts, double lo, double hi)
{
    double const part = step / parts;
    double const slack = part * SlackOf(part, major, lo, hi);
    std::vector<double> positions;
    for (int k = 1; k < parts; ++k) {
        double const v = MeetEnds(major + k * part, slack, lo, hi);
        if (v >= lo && v <= hi)
            positions.push_back(v);
    }
    return positions;
}

std::vector<double> DivisionPositions(AxisSettings const& axis)
{
    int const n = axis.numMajorTicks;
    if (n < 2 || n > kMaxTicks)
        return {};
    double const step = (axis.tickRangeMax - axis.tickRangeMin) / (n - 1);
    if (!std::isfinite(step))
        return {};
    std::vector<double> positions(static_cast<std::size_t>(n));
    for (std::size_t i = 0; i < positions.size(); ++i)
        positions[i] = axis.tickRangeMin + static_cast<double>(i) * step;
    // Rounding must not push the last one out of the range.
    positions.back() = axis.tickRangeMax;
    return positions;
}

std::vector<double> StepPositions(AxisSettings const& axis)
{
    return UniformPositions(axis.tickMin, axis.tickDel, axis.tickRangeMin, axis.tickRangeMax, FirstStep::InRange);
}

namespace {

bool IsCalendarUnit(TimeUnit unit) { return unit == TimeUnit::Year || unit == TimeUnit::Month; }

/// Days of n units that always are of the same length; 0 for others.
double DaysOf(int n, TimeUnit unit)
{
    switch (unit) {
    case TimeUnit::Week:
        return 7.0 * n;
    case TimeUnit::Day:
        return n;
    case TimeUnit::Hour:
        return n / 24.0;
    case TimeUnit::Minute:
        return n / 1440.0;
    case TimeUnit::Second:
        return n / 86400.0;
    default:
        return 0.0;
    }
}

/// Days since the zero date: unlike the value of a date before it, always growing. Not a number unless valid.
double DaysSinceZero(COleDateTime const& date) { return (date - COleDateTime()).GetTotalDays(); }

double ValueOfDays(double days) { return (COleDateTime() + COleDateTimeSpan(days)).GetValue(); }

/// Valid only when the value is one of a date, whatever the status that was stored with it.
COleDateTime Checked(COleDateTime const& date) { return date.IsValid() ? COleDateTime(date.GetValue()) : date; }

std::vector<double> DateValues(double start, double step, double lo, double hi)
{
    std::vector<double> positions = UniformPositions(start, step, lo, hi, FirstStep::BelowRange);
    std::transform(positions.begin(), positions.end(), positions.begin(), ValueOfDays);
    return positions;
}

/// Months and years differ in length, so these go one by one; the calendar ends, so the loops do.
std::vector<double> CalendarValues(COleDateTime t, int n, TimeUnit unit, double lo, COleDateTime const& last)
{
    COleDateTime const first(lo);
    while (t > first)
        CVUtils::IncrementTime(-n, unit, t);
    std::vector<double> positions;
    for (; t <= last; CVUtils::IncrementTime(n, unit, t))
        positions.push_back(t.GetValue());
    if (positions.size() > kMaxTicks)
        positions.erase(positions.begin(), std::lower_bound(positions.begin(), positions.end(), lo));
    if (positions.size() > kMaxTicks)
        return {};
    return positions;
}

} // namespace

std::vector<double> DateStepPositions(DateSteps const& dates, double lo, double hi)
{
    COleDateTime const start = Checked(dates.tickMin);
    COleDateTime const last(hi);
    if (dates.del <= 0 || !start.IsValid() || !last.IsValid())
        return {};
    if (IsCalendarUnit(dates.delUnit))
        return CalendarValues(start, dates.del, dates.delUnit, lo, last);
    COleDateTime const first(lo);
    // Below every date there is nothing to go back to.
    double const days = DaysSinceZero(start);
    return DateValues(
        days, DaysOf(dates.del, dates.delUnit), first.IsValid() ? DaysSinceZero(first) : days, DaysSinceZero(last));
}

namespace {

/// The dates after one and before the other major date that lie at lo or later and before hi.
std::vector<double> DatesBetween(DateSteps const& dates, double from, double to, double lo, double hi)
{
    double const first = std::max(from, lo);
    double const last = std::min(to, hi);
    COleDateTime const start(from);
    COleDateTime const end(last);
    std::vector<double> minors;
    double slack = 0.0;
    if (IsCalendarUnit(dates.delUnitMinor)) {
        minors = CalendarValues(start, dates.delMinor, dates.delUnitMinor, from, end);
    } else {
        double const step = DaysOf(dates.delMinor, dates.delUnitMinor);
        minors = DateValues(DaysSinceZero(start), step, DaysSinceZero(COleDateTime(first)), DaysSinceZero(end));
        slack = step * SlackOf(step, from, first, last);
    }
    std::erase_if(minors, [&](double v) { return !(v > from + slack && v < last - slack && v >= first); });
    return minors;
}

} // namespace

std::vector<double> MinorDatePositions(DateSteps const& dates, std::vector<double> const& majors, double lo, double hi)
{
    std::vector<double> minors;
    if (dates.delMinor <= 0)
        return minors;
    for (double const major : majors) {
        COleDateTime next(major);
        CVUtils::IncrementTime(dates.del, dates.delUnit, next);
        if (!next.IsValid() || next.GetValue() < lo)
            continue;
        std::vector<double> const between = DatesBetween(dates, major, next.GetValue(), lo, hi);
        minors.insert(minors.end(), between.begin(), between.end());
        if (minors.size() > kMaxTicks)
            return {};
    }
    return minors;
}

namespace {

/// Within a decade, or little more: the values at tidy steps.
LogTicks MakeValueTicks(double lo, double hi)
{
    LogTicks ticks;
    double const from = std::pow(10.0, lo);
    double const to = std::pow(10.0, hi);
    if (!(to - from > 0.0) || !std::isfinite(to - from))
        return ticks;
    constexpr double kSteps = 5.0;
    constexpr int kParts = 5;
    double const step = CVUtils::NiceNum((to - from) / kSteps, 1);
    auto const decadesOf = [&](double value) { return MeetEnds(std::log10(value), kStepSlack, lo, hi); };
    for (double const v : UniformPositions(0.0, step, from, to, FirstStep::BelowRange)) {
        if (v > 0.0 && decadesOf(v) >= lo)
            ticks.majors.push_back(decadesOf(v));
        for (double const part : StepParts(v, step, kParts, from, to)) {
            if (part > 0.0)
                ticks.minors.push_back(decadesOf(part));
        }
    }
    return ticks;
}

} // namespace

LogTicks MakeLogTicks(AxisSettings const& axis)
{
    constexpr double kFactorOfFive = 0.7;
    constexpr double kTwoDecades = 2.0;
    constexpr double kMostWithMinors = 15.0;
    double const lo = axis.RunsBackwards() ? axis.max : axis.min;
    double const hi = axis.RunsBackwards() ? axis.min : axis.max;
    double const length = hi - lo;
    // Written so that what is not a number fails; powers of ten beyond these are no numbers either.
    if (!(length > 0.0 && lo >= -320.0 && hi <= 320.0))
        return {};
    if (length < kFactorOfFive)
        return MakeValueTicks(lo, hi);
    LogTicks ticks;
    double const step = axis.HasSteps() && axis.tickDel >= 1.0 ? std::round(axis.tickDel) : 1.0;
    auto const add = [&](std::vector<double>& to, double v) {
        double const place = MeetEnds(v, kStepSlack, lo, hi);
        if (place >= lo && place <= hi)
            to.push_back(place);
    };
    for (double decade = std::floor(lo); decade <= hi; decade += 1.0) {
        bool const isStep = std::remainder(decade, step) == 0.0;
        add(isStep ? ticks.majors : ticks.minors, decade);
        for (int line = 2; line <= 9 && step == 1.0 && length <= kMostWithMinors; ++line) {
            bool const isLabelled = length < kTwoDecades && (line == 2 || line == 5);
            add(isLabelled ? ticks.majors : ticks.minors, decade + std::log10(line));
        }
    }
    return ticks;
}

std::vector<double> TickPositions(AxisSettings const& axis, DateTickSettings const* dates)
{
    if (axis.KeepsLogLimits())
        return MakeLogTicks(axis).majors;
    std::vector<double> positions;
    if (axis.HasDivisions())
        positions = DivisionPositions(axis);
    else if (axis.HasSteps() && dates && axis.timeUnitsOn)
        positions = DateStepPositions(*dates, axis.tickRangeMin, axis.tickRangeMax);
    else if (axis.HasSteps())
        positions = StepPositions(axis);
    if (axis.HasArbitrary()) {
        std::copy_if(axis.arbitraryTicks.begin(), axis.arbitraryTicks.end(), std::back_inserter(positions), IsPosition);
        std::sort(positions.begin(), positions.end());
    }
    return positions;
}

bool HasDateRange(AxisSettings const& axis) { return CVUtils::IsValidDate(axis.min) && CVUtils::IsValidDate(axis.max); }

namespace {

/// Collects the ticks of one axis.
class TickMaker {
public:
    TickMaker(AxisSettings const& axis, DateTickSettings const* dates, double crossing)
        : m_axis(axis)
        , m_dates(dates)
        , m_crossing(crossing)
        , m_majorStep(MajorStep(axis))
    {
        if (axis.labelMode == AxisSettings::lmStrings)
            m_positions = TickPositions(axis, dates);
    }
    void MakeDivisions();
    void MakeSteps();
    void MakeDateSteps();
    void MakeDecades();
    void MakeStoredDecades();
    void MakeArbitrary();
    void MakeInvalidDates();
    TickList TakeTicks() { return std::move(m_ticks); }

private:
    void AddRegular(double v, int index);
    void AddArbitrary(double v, int index, Tick::Kind kind);
    void AddMajor(double v, int index, Tick::Kind kind, double searched);
    void AddMinor(double v, double step, Tick::Kind kind = Tick::Kind::Minor);
    bool HasTooManyMinors(std::size_t intervals) const
    {
        return static_cast<double>(intervals) * m_axis.numMinorTicks > kMaxTicks;
    }
    int FindPosition(double v) const;

    AxisSettings const& m_axis;
    DateTickSettings const* m_dates;
    double m_crossing;
    double m_majorStep;
    /// Only filled when labels go by position.
    std::vector<double> m_positions;
    TickList m_ticks;
};

void TickMaker::AddRegular(double v, int index)
{
    if (!m_axis.IsWithinTickRange(v))
        return;
    double const value = WithoutRoundedZero(v, m_majorStep);
    bool const atCrossing = value == 0.0 && m_crossing == 0.0;
    if (!atCrossing || m_axis.intersectLabelOn)
        AddMajor(value, index, Tick::Kind::Regular, v);
}

void TickMaker::AddArbitrary(double v, int index, Tick::Kind kind)
{
    bool const atCrossing = v != 0.0 && std::fabs((v - m_crossing) / v) < 1e-6;
    if (IsPosition(v) && (!atCrossing || m_axis.intersectLabelOn))
        AddMajor(v, index, kind, v);
}

void TickMaker::AddMajor(double v, int index, Tick::Kind kind, double searched)
{
    Tick tick;
    tick.value = v;
    tick.kind = kind;
    tick.index = index;
    tick.position = FindPosition(searched);
    m_ticks.push_back(std::move(tick));
}

void TickMaker::AddMinor(double v, double step, Tick::Kind kind)
{
    if (!m_axis.IsWithinTickRange(v))
        return;
    Tick tick;
    tick.value = WithoutRoundedZero(v, step);
    tick.kind = kind;
    m_ticks.push_back(std::move(tick));
}

/// The nearest position, if it is the same to single precision.
int TickMaker::FindPosition(double v) const
{
    auto nearest = std::lower_bound(m_positions.begin(), m_positions.end(), v);
    if (nearest != m_positions.begin() && (nearest == m_positions.end() || v - nearest[-1] <= *nearest - v))
        --nearest;
    if (nearest == m_positions.end() || !CVUtils::FloatEq(*nearest, v))
        return -1;
    nearest = std::lower_bound(m_positions.begin(), nearest, *nearest);
    return static_cast<int>(nearest - m_positions.begin());
}

void TickMaker::MakeDivisions()
{
    std::vector<double> const majors = DivisionPositions(m_axis);
    double const minorsPerMajor = static_cast<double>(m_axis.numMinorTicks) + 1.0;
    double const step = (m_axis.tickRangeMax - m_axis.tickRangeMin) / (m_axis.numMajorTicks - 1.0) / minorsPerMajor;
    bool const hasMinors = m_axis.on && !HasTooManyMinors(majors.size());
    for (std::size_t i = 0; i < majors.size(); ++i) {
        AddRegular(majors[i], static_cast<int>(i));
        if (!hasMinors || i + 1 == majors.size())
            continue;
        for (int j = 1; j <= m_axis.numMinorTicks; ++j) {
            double const v = majors[i] + j * step;
            if (!(std::fabs(v - m_crossing) <= 1e-6))
                AddMinor(v, step);
        }
    }
}

void TickMaker::MakeSteps()
{
    std::vector<double> const majors = StepPositions(m_axis);
    for (std::size_t i = 0; i < majors.size(); ++i)
        AddRegular(majors[i], static_cast<int>(i));
    if (majors.size() < 2 || m_axis.numMinorTicks < 1 || HasTooManyMinors(majors.size()))
        return;
    int const parts = m_axis.numMinorTicks + 1;
    for (std::size_t i = 1; i < majors.size(); ++i) {
        for (double const v : StepParts(majors[i - 1], m_axis.tickDel, parts, m_axis.tickRangeMin, m_axis.tickRangeMax))
            AddMinor(v, m_axis.tickDel / parts);
    }
}

void TickMaker::MakeDateSteps()
{
    double const lo = m_axis.tickRangeMin;
    double const hi = m_axis.tickRangeMax;
    std::vector<double> const majors = DateStepPositions(*m_dates, lo, hi);
    for (std::size_t i = 0; i < majors.size(); ++i)
        AddRegular(majors[i], static_cast<int>(i));
    for (double const v : MinorDatePositions(*m_dates, majors, lo, hi))
        AddMinor(v, 1.0, Tick::Kind::MinorDate);
}

void TickMaker::MakeDecades()
{
    constexpr int kLinesPerDecade = 9;
    double const lowest = std::floor(m_axis.min);
    double const decades = std::floor(m_axis.max) - lowest + 1.0;
    if (!(decades >= 1.0 && decades * (kLinesPerDecade + 1) <= kMaxTicks))
        return;
    for (int i = 0; i < decades; ++i) {
        double const decade = lowest + i;
        if (decade >= m_axis.min)
            AddRegular(decade, 0);
        if (decade >= m_axis.max)
            break;
        for (int line = 2; line <= kLinesPerDecade + 1; ++line) {
            Tick tick;
            tick.value = decade + std::log10(line);
            tick.kind = Tick::Kind::DecadeLine;
            m_ticks.push_back(std::move(tick));
        }
    }
}

void TickMaker::MakeStoredDecades()
{
    LogTicks const ticks = MakeLogTicks(m_axis);
    for (std::size_t i = 0; i < ticks.majors.size(); ++i)
        AddRegular(ticks.majors[i], static_cast<int>(i));
    for (double const v : ticks.minors)
        AddMinor(v, 1.0, Tick::Kind::DecadeLine);
}

void TickMaker::MakeArbitrary()
{
    if (m_axis.arbitraryTicks.GetSize() > kMaxTicks)
        return;
    for (int i = 0; i < m_axis.arbitraryTicks.GetSize(); ++i)
        AddArbitrary(m_axis.arbitraryTicks[i], i, Tick::Kind::Arbitrary);
}

void TickMaker::MakeInvalidDates() { AddArbitrary(m_axis.min * 0.5 + m_axis.max * 0.5, 0, Tick::Kind::InvalidDates); }

} // namespace

TickList MakeTicks(AxisSettings const& axis, DateTickSettings const* dates, double crossing)
{
    if (!axis.on && !axis.labelsOn)
        return {};
    TickMaker maker(axis, dates, crossing);
    bool const hasDates = dates && axis.timeUnitsOn;
    if (hasDates && !HasDateRange(axis)) {
        maker.MakeInvalidDates();
    } else if (axis.KeepsLogLimits()) {
        maker.MakeStoredDecades();
    } else if (axis.scaleMode != 0) {
        maker.MakeDecades();
    } else {
        if (axis.HasDivisions())
            maker.MakeDivisions();
        else if (axis.HasSteps() && hasDates)
            maker.MakeDateSteps();
        else if (axis.HasSteps())
            maker.MakeSteps();
        if (axis.HasArbitrary())
            maker.MakeArbitrary();
    }
    return maker.TakeTicks();
}

} // namespace ombrel
