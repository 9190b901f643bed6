#include "tools/ombrel/options/PlotChecks.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <initializer_list>

namespace ombrel::host {

namespace {

using enum PlotKind;

[[noreturn]] void FailUsage(std::string const& text) { throw Failure(kUsageFault, text); }

std::string NameOf(OptionId id)
{
    std::string_view const name = EntryOf(id).longName;
    return (name.size() > 1 ? "--" : "-") + std::string(name);
}

std::string NameOf(PlotKind kind)
{
    return std::string(EntryOf(OptionId::Kind).choices[static_cast<std::size_t>(kind)]);
}

std::string ListKinds(std::initializer_list<PlotKind> kinds)
{
    std::string text;
    for (PlotKind const* kind = kinds.begin(); kind != kinds.end(); ++kind)
        text += (kind == kinds.begin() ? "" : kind + 1 == kinds.end() ? " and " : ", ") + NameOf(*kind);
    return text;
}

bool IsOneOf(PlotKind kind, std::initializer_list<PlotKind> kinds)
{
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

/// An option that some kinds only look at.
void CheckKind(Options const& options, OptionId id, std::initializer_list<PlotKind> kinds)
{
    if (options.IsGiven(id) && !IsOneOf(options.kind, kinds))
        FailUsage(NameOf(id) + " is for --kind " + ListKinds(kinds) + ", not for " + NameOf(options.kind));
}

void CheckLogarithm(Options const& options)
{
    if (!options.xLog && !options.yLog)
        return;
    if (IsOneOf(options.kind, { Stacked, Area }))
        FailUsage("--log: " + NameOf(options.kind) + " values add up, and logarithms do not");
    if (options.kind == Histogram && options.xLog)
        FailUsage("--log x: the bins of a histogram are equally wide");
    if (options.xLog && IsOneOf(options.kind, { Bar, Clustered }))
        FailUsage("--log x: bars are equally wide");
}

void CheckPolar(Options const& options)
{
    if (options.radians && !options.polar)
        FailUsage("--radians is for --polar");
    if (!options.polar)
        return;
    if (!IsOneOf(options.kind, { Line, Points, Filled }))
        FailUsage("--polar is for --kind " + ListKinds({ Line, Points, Filled }) + ", not for " + NameOf(options.kind));
    for (OptionId const id : { OptionId::XTitle, OptionId::YTitle, OptionId::XRange, OptionId::YRange, OptionId::Log,
             OptionId::DateFormat, OptionId::ErrorColumns }) {
        if (options.IsGiven(id))
            FailUsage(NameOf(id) + " does nothing with --polar, which has no axes of x and y");
    }
}

} // namespace

void CheckPlotOptions(Options const& options)
{
    CheckKind(options, OptionId::Bins, { Histogram });
    CheckKind(options, OptionId::Percent, { Stacked });
    CheckKind(options, OptionId::Normalised, { Area });
    CheckKind(options, OptionId::ErrorColumns, { Line, Steps, Pairs, Points, Bar, Clustered, Error });
    CheckKind(options, OptionId::LabelColumn, { Text });
    CheckKind(options, OptionId::LineWidth, { Line, Steps, Pairs, Filled });
    CheckKind(options, OptionId::Antialias, { Line, Steps, Pairs, Filled });
    CheckKind(options, OptionId::Symbols, { Line, Steps, Pairs, Points, Filled, Error, Text });
    if (options.kind == Error && options.errorColumns.empty())
        FailUsage("--kind error needs --error, the columns of the errors");
    if (options.kind == Text && options.labelColumn.empty())
        FailUsage("--kind text needs --label, the column of the texts");
    if (options.kind == Histogram) {
        for (OptionId const id : { OptionId::XColumn, OptionId::DateFormat }) {
            if (options.IsGiven(id))
                FailUsage(NameOf(id) + " does nothing with --kind histogram, which counts the values of -y");
        }
    }
    CheckLogarithm(options);
    CheckPolar(options);
}

} // namespace ombrel::host
