#pragma once
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/framework/DateTime.h"
#include "ombrel/platform/framework/Export.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ombrel {

/// Where an axis begins and ends, data units; min < max.
struct AxisRange {
    double min = 0.0;
    double max = 1.0;
};

/// Which ends the user has fixed, and how far the others may move outwards to the next tick: a minor one on axes of
/// numbers, a major one on those of dates.
struct RangeFreedom {
    bool minFixed = false;
    bool maxFixed = false;
    /// As a fraction of the range; an end that would have to move further stays where the data ends.
    double reach = 1.0;
};

/// Ticks of an axis of numbers, and how all of its labels are written: with a comma between thousands from 10,000 on,
/// so that years have none, and from a million on, or below a thousandth, without a power of ten that they have in
/// common.
struct NumberTicks {
    AxisRange range;
    double step = 1.0;
    /// The first tick inside the range.
    double first = 0.0;
    /// Minor ticks between two major ones.
    int minor = 0;
    /// Digits behind the point.
    int decimals = 0;
    /// Labels leave out ten to this power, a multiple of 3; the axis's title tells it.
    int power = 0;
    /// Thousands are separated.
    bool isGrouped = false;
    /// A class's own labels with fixed decimals read the same.
    bool IsPlain() const { return power == 0 && !isGrouped; }
};

/// The range with some length in any case: what has none is widened round its value.
OMBREL_EXPORT AxisRange WidenEmptyRange(AxisRange range);

/// The range with that part of its length added on both sides. What lies on one side of a stop, or on it, stays there:
/// no side of the range moves across one.
OMBREL_EXPORT AxisRange WithMargins(AxisRange range, double part, std::span<double const> stops);

/// The ticks with the smallest step of 1, 2 or 5 times a power of ten that makes at most mostSteps steps of the
/// range; step is not below smallestStep. Free ends lie on ticks, major or minor ones.
OMBREL_EXPORT NumberTicks MakeNumberTicks(
    AxisRange data, RangeFreedom freedom, int mostSteps, double smallestStep = 0.0);

/// The label of the number at a tick.
OMBREL_EXPORT std::string NumberLabel(NumberTicks const& ticks, double value);

/// Those of all ticks in the range, in order.
OMBREL_EXPORT std::vector<std::string> NumberLabels(NumberTicks const& ticks);

/// An axis's title with the power of ten that its labels leave out.
OMBREL_EXPORT std::string TitleWithPower(std::string const& title, NumberTicks const& ticks);
/// The title that TitleWithPower was given.
OMBREL_EXPORT std::string TitleWithoutPower(std::string const& title);

/// As MakeNumberTicks, with as many steps as there is room for labels along an x axis of length pixels. width gives
/// the pixels of a text.
OMBREL_EXPORT NumberTicks FitNumberTicks(AxisRange data, RangeFreedom freedom, double smallestStep, int length,
    std::function<int(std::string const&)> const& width);

/// Ends of a logarithmic axis for positive data, as decades: free ends move outwards to 1, 2 or 5 times a power of ten.
OMBREL_EXPORT AxisRange MakeLogRange(AxisRange data, RangeFreedom const& freedom);

/// The labels of ticks at these decades, in one form: numbers written out from 0.0001 to 1,000,000, else powers of ten
/// as in 2×10⁻⁷. Where two would come closer than their sizes allow, one stays empty, that of a power of ten last.
/// length is that of the axis, size a label's along it, both in pixels.
OMBREL_EXPORT std::vector<std::string> FitLogLabels(std::span<double const> ticks, AxisRange const& range, int length,
    std::function<int(std::string const&)> const& size);

/// The number of circles of a polar grid: as many as make the step between them 1, 2, 2.5 or 5 times a power of ten, if
/// 3 to 6 do, else 5.
OMBREL_EXPORT int TidyCircles(double radius);

/// Ticks of an axis of dates (days since 30 December 1899).
struct DateTicks {
    AxisRange range;
    /// A tick at or before the range's start.
    COleDateTime first;
    int step = 1;
    TimeUnit unit = TimeUnit::Year;
    /// 0 for no minor ticks.
    int minorStep = 0;
    TimeUnit minorUnit = TimeUnit::Year;
    /// strftime codes of the labels.
    std::string format;
    /// strftime codes of the day or year that a label tells, too, when it is the first in it; empty for none.
    std::string period;
    /// What all labels have in common and leave out, for the title: "2020", or "4 Mar 2020".
    std::string common;
};

/// The labels of ticks at these places, in order: "28 Dec 2020", "4 Jan 2021", "11 Jan".
OMBREL_EXPORT std::vector<std::string> DateLabels(DateTicks const& ticks, std::span<double const> places);

/// Calendar steps that fit an axis of length pixels; width gives the pixels of a text.
OMBREL_EXPORT DateTicks FitDateTicks(
    AxisRange data, RangeFreedom freedom, int length, std::function<int(std::string const&)> const& width);

} // namespace ombrel
