#pragma once
#include "tools/ombrel/TableCells.h"
#include "tools/ombrel/TableDialect.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel::host {

/// None: the file decides what fits.
enum class Command { None, Plot, Draw, Info };

enum class OptionId {
    Output,
    Format,
    XColumn,
    YColumns,
    Kind,
    Title,
    XTitle,
    YTitle,
    XRange,
    YRange,
    Log,
    DateFormat,
    Header,
    Size,
    Page,
    Antialias,
    LineWidth,
    Symbols,
    Save,
    InPlace,
    Verbose,
    Help,
    Version,
};

/// One option: parsing, the help text, and whatever else lists options read this table.
struct OptionEntry {
    OptionId id;
    /// Without dashes; the short name is 0 for none.
    std::string_view longName;
    char shortName;
    /// What stands for the value in texts; empty for a switch.
    std::string_view argument;
    std::string_view help;
    /// Which commands take it.
    bool plot;
    bool draw;
    bool info;
    /// May be given several times.
    bool repeats = false;
};

struct CommandEntry {
    Command command;
    std::string_view name;
    std::string_view usage;
    std::string_view help;
};

std::span<OptionEntry const> AllOptions();
std::span<CommandEntry const> AllCommands();
bool TakesOption(Command command, OptionEntry const& option);

enum class PlotKind { Line, Steps, Pairs, Points, Filled };
enum class PictureFormat { Png, Bmp, Pdf, Svg, PostScript };

/// The ends of an axis as they were typed; one may be missing.
struct RangeText {
    std::string min;
    std::string max;
};

/// Pixels.
struct PictureSize {
    int width = 1000;
    int height = 640;
};

/// Millimetres.
struct PageSize {
    double width = 297.0;
    double height = 210.0;
};

struct Options {
    Command command = Command::None;
    std::vector<std::string> files;
    /// What was given, in order.
    std::vector<OptionId> given;
    std::string output;
    std::optional<PictureFormat> format;
    std::string xColumn;
    std::vector<std::string> yColumns;
    PlotKind kind = PlotKind::Line;
    std::string title;
    std::optional<std::string> xTitle;
    std::optional<std::string> yTitle;
    std::optional<std::string> xRange;
    std::optional<std::string> yRange;
    bool xLog = false;
    bool yLog = false;
    std::optional<DateFormat> dateFormat;
    HeaderChoice header = HeaderChoice::Detect;
    std::optional<PictureSize> size;
    std::optional<PageSize> page;
    bool antialias = false;
    int lineWidth = 1;
    bool symbols = false;
    std::string save;
    std::string inPlaceClass;
    bool verbose = false;
    bool help = false;
    bool version = false;

    bool IsGiven(OptionId id) const;
};

/// The options of a command line without the program's name. Throws Failure with kUsageFault.
Options ParseOptions(std::vector<std::string> const& arguments);

/// Throws Failure with kUsageFault when an option was given that the command does not take.
void CheckOptionsFor(Options const& options, Command command);

/// What --help prints: of one command, or with Command::None of all.
std::string HelpText(Command command);

/// The format of a file by its extension.
std::optional<PictureFormat> FormatOfPath(std::string_view path);

} // namespace ombrel::host
