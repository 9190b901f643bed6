#include "tools/ombrel/options/PlotChecks.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <initializer_list>

namespace ombrel::host {

namespace {

using enum PlotKind;

[[noreturn]] void FailUsage(std::string const& text) { throw Failure(kUsageFault, text); }

std::string NameOf(OptionId id) { return NameOf(EntryOf(id)); }

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
void CheckKind(Options const& options, PlotKind kind, OptionId id, std::initializer_list<PlotKind> kinds)
{
    if (options.IsGiven(id) && !IsOneOf(kind, kinds))
        FailUsage(NameOf(id) + " is for --kind " + ListKinds(kinds) + ", not for " + NameOf(kind));
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
    if (options.north && !options.polar)
        FailUsage("--north is for --polar");
    if (!options.polar)
        return;
    if (!IsOneOf(options.kind, { Line, Points, Filled }))
        FailUsage("--polar is for --kind " + ListKinds({ Line, Points, Filled }) + ", not for " + NameOf(options.kind));
    for (OptionId const id : { OptionId::XTitle, OptionId::YTitle, OptionId::XRange, OptionId::YRange, OptionId::Log,
             OptionId::Reverse, OptionId::Equal, OptionId::DateFormat, OptionId::DateOrder, OptionId::ErrorColumns }) {
        if (options.IsGiven(id))
            FailUsage(NameOf(id) + " does nothing with --polar, which has no axes of x and y");
    }
}

} // namespace

void CheckPlotOptions(Options const& options)
{
    if (IsSceneKind(options.kind))
        FailUsage("--kind " + NameOf(options.kind) + " is for ombrel surface");
    auto const check
        = [&](OptionId id, std::initializer_list<PlotKind> kinds) { CheckKind(options, options.kind, id, kinds); };
    check(OptionId::Bins, { Histogram });
    check(OptionId::Percent, { Stacked });
    check(OptionId::Normalised, { Area });
    check(OptionId::ErrorColumns, { Line, Steps, Pairs, Points, Bar, Clustered, Error });
    check(OptionId::LabelColumn, { Text });
    check(OptionId::LineWidth, { Line, Steps, Pairs, Filled });
    check(OptionId::NoAntialias, { Line, Steps, Pairs, Filled });
    for (OptionId const id : { OptionId::Symbols, OptionId::SymbolSize })
        check(id, { Line, Steps, Pairs, Points, Filled, Error, Text });
    if (options.kind == Error && options.errorColumns.empty())
        FailUsage("--kind error needs --error, the columns of the errors");
    if (options.kind == Text && options.labelColumn.empty())
        FailUsage("--kind text needs --label, the column of the texts");
    if (options.equal && (options.xLog || options.yLog))
        FailUsage("--equal: scales of logarithmic axes cannot be equal");
    if (options.kind == Histogram) {
        for (OptionId const id : { OptionId::XColumn, OptionId::DateFormat, OptionId::DateOrder }) {
            if (options.IsGiven(id))
                FailUsage(NameOf(id) + " does nothing with --kind histogram, which counts the values of -y");
        }
    }
    CheckLogarithm(options);
    CheckPolar(options);
}

PlotKind SceneKindOf(Options const& options) { return options.IsGiven(OptionId::Kind) ? options.kind : Surface; }

bool IsSceneKind(PlotKind kind) { return IsOneOf(kind, { Surface, Bars, Series, Wireframe, Lines, Scatter }); }

void CheckSceneOptions(Options const& options)
{
    PlotKind const kind = SceneKindOf(options);
    if (!IsSceneKind(kind) && kind != Text)
        FailUsage("--kind " + NameOf(kind) + " is for ombrel plot");
    auto const check = [&](OptionId id, std::initializer_list<PlotKind> kinds) { CheckKind(options, kind, id, kinds); };
    check(OptionId::Matrix, { Surface, Bars, Series, Wireframe });
    for (OptionId const id : { OptionId::Levels, OptionId::Contours, OptionId::LineColours, OptionId::Wireframe,
             OptionId::Texture, OptionId::Transparency })
        check(id, { Surface });
    check(OptionId::Coordinates, { Surface, Wireframe, Lines, Scatter, Text });
    for (OptionId const id : { OptionId::SizeColumn, OptionId::ColourColumn, OptionId::Sticks })
        check(id, { Scatter });
    for (OptionId const id : { OptionId::Symbol, OptionId::SymbolSize })
        check(id, { Lines, Scatter, Text });
    check(OptionId::Symbols, { Lines, Text });
    for (OptionId const id : { OptionId::Tubes, OptionId::LineWidth })
        check(id, { Lines });
    check(OptionId::LabelColumn, { Text });
    check(OptionId::Colouring, { Bars, Series, Wireframe, Scatter });
    check(OptionId::Baseline, { Bars, Series, Scatter });
    check(OptionId::BarWidth, { Bars });
    check(OptionId::Along, { Series });
    if (kind == Text && options.labelColumn.empty())
        FailUsage("--kind text needs --label, the column of the texts");
    if (options.IsGiven(OptionId::Baseline) && kind == Scatter && !options.surface.sticks)
        FailUsage("--baseline is for scattered points with --sticks");
    if (options.IsGiven(OptionId::ColourColumn) && options.IsGiven(OptionId::Colouring))
        FailUsage("--colours does nothing with --colour-by");
    ColouringChoice const colouring = options.surface.colouring;
    if (!IsOneOf(kind, { Bars, Series })
        && (colouring == ColouringChoice::Columns || colouring == ColouringChoice::Rows))
        FailUsage("--colours: columns and rows are for --kind bars and series, not for " + NameOf(kind));
}

void CheckMeshOptions(Options const& options)
{
    SurfaceOptions const& mesh = options.surface;
    if (mesh.contours == ContourChoice::Lines || mesh.contours == ContourChoice::Both)
        FailUsage("--contours: meshes have bands, and no lines between them");
    if (mesh.wireframe.value_or(0) > 0)
        FailUsage("--wireframe: a mesh has the outlines of all its elements, not every Nth");
    if (mesh.outline && mesh.solid && options.IsGiven(OptionId::Solid))
        FailUsage("--outline draws outlines alone, and --solid on fills them");
}

} // namespace ombrel::host
