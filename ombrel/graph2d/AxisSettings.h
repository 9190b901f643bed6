#pragma once
#include "ombrel/foundation/FontData.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/DateTime.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// The settings of one axis. Ranges and positions are data units; on a logarithmic axis they are decades (log10).
///
/// Enumerations are stored as ints, and a document may hold any value: every value beyond those named acts as the
/// comment at its setting says, or as the first one named.
struct OMBREL_EXPORT AxisSettings {
    /// Which ticks a linear axis has; a logarithmic axis has its decades whatever the mode, unless it keeps stored
    /// limits: then step ticks stand that many whole decades apart.
    enum TickMode : int {
        tmNone = 0,
        tmDivisions = 1,
        tmStep = 2,
        tmArbitrary = 3,
        tmDivisionsArbitrary = 4,
        tmStepArbitrary = 5,
    };
    /// On which side of the axis line ticks and labels stand.
    enum LabelPlacement : int { lpLeft = 0, lpRight = 1, lpAbove = 2, lpBelow = 3 };
    /// Where a label's text comes from: the value; the strings, by the tick's position among all ticks; or the
    /// value on regular ticks and the strings on arbitrary ones, by the entry's index.
    enum LabelMode : int { lmValues = 0, lmStrings = 1, lmArbitraryStrings = 2 };
    /// From the data, widened to whole multiples of a tidy step; from the data, exact; as stored. A logarithmic axis
    /// has the whole decades of its data in all these modes; rmStored gives it its stored limits, too, and acts as
    /// rmFixed on a linear one.
    enum RangeMode : int { rmTidy = 0, rmExact = 1, rmFixed = 2, rmStored = 3 };
    /// Follows the axis range, or stays as stored (any other value).
    enum TickRangeMode : int { trAxis = 0, trFixed = 1 };
    using FormatType = NumberFormat;

    bool HasStoredLimits() const { return rangeMode == rmFixed || rangeMode == rmStored; }
    bool KeepsLogLimits() const { return scaleMode != 0 && rangeMode == rmStored; }
    bool HasDivisions() const { return tickMode == tmDivisions || tickMode == tmDivisionsArbitrary; }
    bool HasSteps() const { return tickMode == tmStep || tickMode == tmStepArbitrary; }
    bool HasArbitrary() const { return tickMode >= tmArbitrary && tickMode <= tmStepArbitrary; }
    double TitleGap() const { return scaleFac > 1.0 && scaleFac < 2.0 ? scaleFac - 1.0 : 0.0; }
    /// Whether larger values stand farther left or lower. The ticks of such an axis, and the lines of its grid, stand
    /// in a tick range of their own, which ascends: a reversed one has no steps.
    bool RunsBackwards() const { return min > max && tickRangeMode != trAxis && tickRangeMin <= tickRangeMax; }
    bool IsWithinTickRange(double v) const { return v >= tickRangeMin && v <= tickRangeMax; }

    /// At the left or lower end of the axis, and at the other one; stored limits may have the larger one first.
    double min = 0.0;
    double max = 10.0;
    int rangeMode = rmTidy;
    /// 0 linear, any other value logarithmic.
    int scaleMode = 0;
    /// Of the y axis, from 1 to below 2: by how much it is above 1 is the gap between its title and its labels, as a
    /// part of the labels' height. Any other value, and that of the x axis, is only stored.
    double scaleFac = 1.0;
    /// The axis line, its tick marks and its title.
    int on = 1;
    CString title;

    TickMode tickMode = tmDivisions;
    /// Equal divisions: how many major ticks over the tick range, the ends included; none below 2.
    int numMajorTicks = 6;
    /// Minor ticks between two major ones.
    int numMinorTicks = 3;
    /// Fixed step: one tick, and the distance between ticks; a step that is not positive gives no ticks.
    double tickMin = 0.0;
    double tickDel = 2.0;
    CPlainDoubleArray arbitraryTicks;
    /// Ticks outside the tick range are left out, arbitrary ones excepted.
    int tickRangeMode = trAxis;
    double tickRangeMin = 0.0;
    double tickRangeMax = 10.0;
    /// Factors of the usual tick lengths.
    double majorTickScaleFac = 1.0;
    double minorTickScaleFac = 1.0;

    int labelsOn = 1;
    int minorLabelsOn = 0;
    /// Whether the tick at which the axes cross is there.
    int intersectLabelOn = 1;
    int labelMode = lmValues;
    CStringArray labels;
    /// x: lpBelow, or above for any other value; y: lpLeft, or to the right for any other value.
    LabelPlacement labelPlacement = lpLeft;
    FormatType formatType = kGeneralFormat;
    FormatType minorFormatType = kGeneralFormat;
    int labelPrecision = 4;
    int minorLabelPrecision = 4;
    /// x values are OLE dates; on the y axis only stored.
    int timeUnitsOn = 0;
};

/// Steps along an axis of dates.
struct DateSteps {
    /// One tick.
    COleDateTime tickMin;
    /// The distance between ticks; without ticks when not positive.
    int del = 1;
    TimeUnit delUnit = TimeUnit::Year;
    /// The distance from a major tick to its first minor one, and on to the next; none when not positive.
    int delMinor = 0;
    TimeUnit delUnitMinor = TimeUnit::Year;
};

/// How an axis of dates places its step ticks and writes its labels.
struct DateTickSettings : DateSteps {
    /// strftime codes; a label is the date and the time with a blank between.
    CString dateFormat = "%d/%m/%y";
    CString timeFormat = "%H:%M:%S";
    CString minorDateFormat = "%d/%m/%y";
    CString minorTimeFormat = "%H:%M:%S";
    /// Not 0: tickMin becomes the axis minimum whenever ranges are updated.
    int alignRefDate = 1;
};

/// How the labels of both axes look.
struct AxisLabelStyle {
    CFontData font;
    COLORREF colour = 0;
    /// 0 turns the labels of the x axis by 90 degrees.
    int horizontal = 1;
};

/// How all texts of the axes look.
struct AxesTextSettings {
    AxisLabelStyle labels;
    AxisLabelStyle minorLabels;
    CFontData titlesFont;
    COLORREF titlesColour = 0;
};

} // namespace ombrel
