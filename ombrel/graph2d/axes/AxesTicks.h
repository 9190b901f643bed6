#pragma once
#include "ombrel/graph2d/AxisSettings.h"
#include "ombrel/platform/framework/Geometry.h"

#include <vector>

namespace ombrel {

/// The most positions that one pass over an axis makes: divisions, steps, dates, decade lines, arbitrary entries, or
/// the minor ticks between them. A pass that would make more makes none, since settings may come from anywhere.
inline constexpr int kMaxTicks = 10000;

/// One tick of an axis, with the label that belongs to it.
struct Tick {
    enum class Kind {
        /// Major ticks: of divisions, steps and decades; and at the arbitrary positions.
        Regular,
        Arbitrary,
        Minor,
        /// A minor tick between date steps: its label is the date without the time.
        MinorDate,
        /// A minor line of a logarithmic axis: without label, and without influence on extents.
        DecadeLine,
        /// Stands in place of all ticks in the middle of an axis whose limits are no dates.
        InvalidDates,
    };
    bool IsMajor() const { return kind != Kind::Minor && kind != Kind::MinorDate && kind != Kind::DecadeLine; }

    double value = 0.0;
    Kind kind = Kind::Regular;
    /// Regular: counted along the axis; Arbitrary: the entry's index. Not used by others.
    int index = 0;
    /// Where the value stands among all tick positions of the axis, or −1; found for labels by position only.
    int position = -1;
    CString text;
    /// Of the unrotated text, in pixels.
    CSize extent;
};
using TickList = std::vector<Tick>;

/// What all measuring passes of one layout, and the drawing pass, have in common: nothing here depends on how the
/// port maps data to pixels.
struct AxesResults {
    /// Pixels.
    int fontHeight = 0;
    int minorFontHeight = 0;
    /// The length in pixels of a major tick of factor 1.
    int tickLength = 0;
    TickList x;
    TickList y;
    CSize xTitle;
    CSize yTitle;
};

// The functions below take the date settings of the axis; null for an axis that cannot have dates. They are used when
// the axis's time units are on.

/// The positions of equal divisions of the tick range, both ends included; empty below two ticks.
std::vector<double> DivisionPositions(AxisSettings const& axis);

/// The positions tickMin ± n · tickDel from the first in the tick range to its upper end, ascending.
///
/// When tickMin lies below the tick range, positions start one step after it, below the range too; if there are too
/// many of those, at the lower end of the range. Positions within rounding of an end are that end.
std::vector<double> StepPositions(AxisSettings const& axis);

/// The positions start ± n · step from lo to hi, ascending; those within rounding of an end are that end.
std::vector<double> StepPositionsWithin(double start, double step, double lo, double hi);

/// The positions that divide the step after this major one into so many parts (at least 1), as far as they lie from lo
/// to hi; those within rounding of an end are that end.
std::vector<double> StepParts(double major, double step, int parts, double lo, double hi);

/// The dates (as OLE dates) tickMin ± n · del from the last not after lo (tickMin itself when it lies before lo) up to
/// hi. Dates stop at the first that does not exist, as the month after 31 January; also on the way back to lo.
std::vector<double> DateStepPositions(DateSteps const& dates, double lo, double hi);

/// The dates between each of these major ones and the next, at lo or later and before hi, counted from the major one.
std::vector<double> MinorDatePositions(DateSteps const& dates, std::vector<double> const& majors, double lo, double hi);

/// Decades, ascending.
struct LogTicks {
    /// With labels.
    std::vector<double> majors;
    std::vector<double> minors;
};

/// The ticks of a logarithmic axis that keeps its stored limits, none outside of these. Whole decades, at multiples of
/// as many as a step is long; below two decades 2 and 5 times these, too; below a factor of five the values at tidy
/// steps. Minor ones: the other multiples of a decade up to 15 decades, or the decades between steps.
LogTicks MakeLogTicks(AxisSettings const& axis);

/// The positions that the tick mode gives: divisions, or steps (of dates); and, sorted in, the arbitrary ones. Those of
/// a logarithmic axis with stored limits are its major ticks.
/// Entries that are gap markers, infinite or not a number are no positions.
std::vector<double> TickPositions(AxisSettings const& axis, DateTickSettings const* dates);

/// The ticks of an axis in drawing order, without texts; empty when neither axis line nor labels are on.
///
/// crossing: where the other axis crosses this one; a major tick there is left out unless intersectLabelOn. Values
/// that are zero but for rounding are exactly 0.
TickList MakeTicks(AxisSettings const& axis, DateTickSettings const* dates, double crossing);

/// The ticks with their texts, trimmed; extents are not measured.
TickList MakeLabelledTicks(AxisSettings const& axis, DateTickSettings const* dates, double crossing);

/// Whether both limits of the axis are dates.
bool HasDateRange(AxisSettings const& axis);

} // namespace ombrel
