#pragma once
#include "ombrel/chart/Picture.h"
#include "ombrel/layout/AxesLayout.h"
#include "ombrel/layout/LegendPlacement.h"
#include "ombrel/layout/Look.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/table/TableCells.h"
#include "ombrel/table/TableDialect.h"
#include "tools/ombrel/options/SurfaceOptions.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel::host {

/// None: the file decides what fits.
enum class Command { None, Plot, Surface, Contour, Mesh, Draw, Convert, Info, Gallery, Colours };

enum class OptionId : int {
    Output,
    Format,
    XColumn,
    YColumns,
    GroupColumn,
    Kind,
    ZColumn,
    Matrix,
    Coordinates,
    ColourMap,
    Levels,
    Contours,
    LineColours,
    Key,
    View,
    Zoom,
    Perspective,
    VerticalScale,
    Wireframe,
    Transparency,
    Texture,
    Lights,
    SizeColumn,
    ColourColumn,
    Sticks,
    Tubes,
    Symbol,
    SymbolSize,
    Colouring,
    Baseline,
    BarWidth,
    Along,
    Variable,
    Clip,
    Outline,
    Solid,
    NoAntialias,
    Title,
    Description,
    Footnote,
    XTitle,
    YTitle,
    ZTitle,
    XRange,
    YRange,
    ZRange,
    Log,
    Reverse,
    Equal,
    DateFormat,
    DateOrder,
    Header,
    Separator,
    Decimal,
    Missing,
    Size,
    Scale,
    Page,
    Vector,
    LineWidth,
    Opacity,
    Symbols,
    Bins,
    Percent,
    Normalised,
    ErrorColumns,
    LabelColumn,
    Polar,
    Radians,
    North,
    Grid,
    Legend,
    Caption,
    Palette,
    Theme,
    Save,
    InPlace,
    Watch,
    Verbose,
    Help,
    Version,
};

/// Sets of commands, one bit each.
using CommandSet = unsigned;
constexpr CommandSet SetOf(Command command) { return 1U << static_cast<unsigned>(command); }

/// What a value names, for completing it in a shell.
enum class ValueKind { Text, File, ColourMap, Palette };

/// One option: parsing, the help text, the man page and the completion files read this table.
struct OptionEntry {
    OptionId id;
    /// Without dashes; the short name is 0 for none.
    std::string_view longName;
    char shortName;
    /// What stands for the value in texts; empty for a switch.
    std::string_view argument;
    std::string_view help;
    /// Which commands take it.
    CommandSet commands;
    /// The words that the value is one of, in the order of the enumeration that they stand for; empty for free values.
    std::span<std::string_view const> choices {};
    ValueKind valueKind = ValueKind::Text;
    /// May be given several times.
    bool repeats = false;
    /// The value, a whole number or one of the choices, may be left out.
    bool optionalValue = false;
};

struct CommandEntry {
    Command command;
    std::string_view name;
    std::string_view usage;
    std::string_view help;
};

std::span<OptionEntry const> AllOptions();
std::span<CommandEntry const> AllCommands();
OptionEntry const& EntryOf(OptionId id);
/// "--name", or "-n" for a name of one letter, which is the short one.
std::string NameOf(OptionEntry const& option);
bool TakesOption(Command command, OptionEntry const& option);

// The enumerations' values stand in the order of the words in the option table, those of the library too.
/// The kinds of plots, and after them those of 3D scenes; texts are of both.
enum class PlotKind {
    Line,
    Steps,
    Pairs,
    Points,
    Filled,
    Bar,
    Clustered,
    Stacked,
    Area,
    Error,
    Text,
    Histogram,
    Surface,
    Bars,
    Series,
    Wireframe,
    Lines,
    Scatter,
};
struct Options {
    Command command = Command::None;
    /// Files; the folder of a gallery; the names of colour maps.
    std::vector<std::string> files;
    /// What was given, in order.
    std::vector<OptionId> given;
    /// Pictures and documents to write; empty for one picture with the input's name.
    std::vector<std::string> outputs;
    std::optional<PictureFormat> format;
    std::string xColumn;
    std::vector<std::string> yColumns;
    /// Each of its words or numbers makes a curve of its own; empty for none.
    std::string groupColumn;
    PlotKind kind = PlotKind::Line;
    std::string title;
    /// For those who cannot see the picture; empty for what the graph says of itself.
    std::string description;
    std::string footnote;
    std::optional<std::string> xTitle;
    std::optional<std::string> yTitle;
    std::optional<std::string> xRange;
    std::optional<std::string> yRange;
    bool xLog = false;
    bool yLog = false;
    bool xReversed = false;
    bool yReversed = false;
    std::optional<DateFormat> dateFormat;
    /// Whether numbers along x that count seconds or milliseconds since 1970 are dates.
    bool epochDates = true;
    TableForm table;
    std::optional<PictureSize> size;
    double scale = 1.0;
    std::optional<PageSize> page;
    /// Every mark on a page is a shape.
    bool allVector = false;
    std::optional<int> lineWidth;
    /// Of lines, marks and fills.
    double opacity = 1.0;
    bool symbols = false;
    /// Of a histogram; 0 for a number that fits the data.
    int bins = 0;
    bool percent = false;
    bool normalised = false;
    std::vector<std::string> errorColumns;
    std::string labelColumn;
    bool polar = false;
    /// Angles of polar data are radians rather than degrees.
    bool radians = false;
    /// They run clockwise from the top.
    bool north = false;
    /// A unit of x is as long as one of y.
    bool equal = false;
    GridChoice grid = GridChoice::Major;
    LegendPlace legend = LegendPlace::Auto;
    std::vector<CaptionSettings> captions;
    /// Empty for the palette that the theme prefers.
    std::string palette;
    Theme theme = Theme::Light;
    std::string save;
    std::string inPlaceClass;
    SurfaceOptions surface;
    /// Draw again whenever an input changes.
    bool watch = false;
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

} // namespace ombrel::host
