#include "tools/ombrel/options/Options.h"

#include <array>

namespace ombrel::host {

namespace {

constexpr CommandSet kPlot = SetOf(Command::Plot);
constexpr CommandSet kDraw = SetOf(Command::Draw);
constexpr CommandSet kInfo = SetOf(Command::Info);
constexpr CommandSet kGallery = SetOf(Command::Gallery);
constexpr CommandSet kColours = SetOf(Command::Colours);
constexpr CommandSet kAll = kPlot | kDraw | kInfo | kGallery | kColours;
constexpr CommandSet kPictures = kPlot | kDraw | kColours;

using std::string_view;
constexpr string_view kFormats[] { "png", "bmp", "pdf", "svg", "ps" };
constexpr string_view kKinds[] { "line", "steps", "pairs", "points", "filled", "bar", "clustered", "stacked", "area",
    "error", "text", "histogram" };
constexpr string_view kLogAxes[] { "x", "y", "xy" };
constexpr string_view kYesNo[] { "yes", "no" };
constexpr string_view kGrids[] { "off", "major", "both" };
constexpr string_view kLegends[] { "auto", "off", "tl", "tr", "bl", "br" };
constexpr string_view kThemes[] { "light", "dark", "print" };

constexpr std::array kOptions {
    // option, long, short, argument, help, commands, choices, kind of value
    OptionEntry { OptionId::Output, "output", 'o', "OUT",
        "Write the picture to OUT: .png .bmp .pdf .svg or .ps. Without it, FILE's name with .png in the current "
        "folder; "
        "- is standard output and needs --format.",
        kPictures, {}, ValueKind::File },
    OptionEntry { OptionId::Format, "format", 0, "FORMAT", "png, bmp, pdf, svg or ps, whatever the extension of OUT.",
        kPictures, kFormats },
    OptionEntry { OptionId::XColumn, "x", 'x', "COL",
        "Column of the x values: its name or its number from 1; 0 counts the rows. Without it, the first column, or "
        "the rows when there is only one.",
        kPlot },
    OptionEntry { OptionId::YColumns, "y", 'y', "COL[,COL...]",
        "Columns of the y values, by name or number. Without it, all other columns of numbers.", kPlot, {},
        ValueKind::Text, true },
    OptionEntry { OptionId::GroupColumn, "by", 0, "COL",
        "Make a curve of each group: of the rows that have the same word or number in this column.", kPlot },
    OptionEntry { OptionId::Kind, "kind", 0, "KIND",
        "line, steps, pairs (points 1-2, 3-4 and so on joined), points, filled (down to zero), bar, clustered or "
        "stacked "
        "(bars), area (stacked), error (bars of --error), text (of --label) or histogram.",
        kPlot, kKinds },
    OptionEntry { OptionId::Bins, "bins", 0, "N|auto", "Number of bars of a histogram; auto fits the data.", kPlot },
    OptionEntry { OptionId::Percent, "percent", 0, "", "Stacked bars show shares in percent.", kPlot },
    OptionEntry { OptionId::Normalised, "normalised", 0, "", "Stacked areas show shares of 1.", kPlot },
    OptionEntry { OptionId::ErrorColumns, "error", 0, "COL[,COL...]",
        "Columns of the errors, one for each y: bars reach from y - error to y + error.", kPlot, {}, ValueKind::Text,
        true },
    OptionEntry {
        OptionId::LabelColumn, "label", 0, "COL", "Column of the texts that are written at the points.", kPlot },
    OptionEntry { OptionId::Polar, "polar", 0, "",
        "x is an angle in degrees, counter-clockwise from the right, and y the distance from the centre.", kPlot },
    OptionEntry { OptionId::Radians, "radians", 0, "", "Angles are in radians.", kPlot },
    OptionEntry { OptionId::Title, "title", 0, "TEXT", "Title over the graph.", kPlot },
    OptionEntry {
        OptionId::XTitle, "x-title", 0, "TEXT", "Title of the x axis. Without it, the column's name.", kPlot },
    OptionEntry {
        OptionId::YTitle, "y-title", 0, "TEXT", "Title of the y axis. Without it, the columns' names.", kPlot },
    OptionEntry { OptionId::XRange, "x-range", 0, "A:B",
        "Ends of the x axis, numbers or dates; an empty one is taken from the data.", kPlot },
    OptionEntry {
        OptionId::YRange, "y-range", 0, "A:B", "Ends of the y axis; an empty one is taken from the data.", kPlot },
    OptionEntry { OptionId::Log, "log", 0, "x|y|xy", "Logarithmic axes.", kPlot, kLogAxes },
    OptionEntry { OptionId::Grid, "grid", 0, "off|major|both", "Grid lines; major without it.", kPlot, kGrids },
    OptionEntry { OptionId::Legend, "legend", 0, "WHERE",
        "auto (where there is room, when there are several curves), off, or a corner: tl, tr, bl or br.", kPlot,
        kLegends },
    OptionEntry { OptionId::Caption, "caption", 0, "TEXT@X,Y",
        "A text with its top-left corner at fractions of the plotting area, 0,0 its top left; \\n starts a line.",
        kPlot, {}, ValueKind::Text, true },
    OptionEntry { OptionId::Palette, "palette", 0, "NAME",
        "Colours of the curves: distinct, grey, or colours from a colour map (ombrel colours lists them).", kPlot },
    OptionEntry { OptionId::Theme, "theme", 0, "light|dark|print", "Colours of the graph; light without it.",
        kPlot | kGallery, kThemes },
    OptionEntry { OptionId::DateFormat, "date-format", 0, "FORMAT",
        "The x values are dates in this form, such as %d.%m.%Y (%Y %y %m %b %B %d %j %H %M %S). Without it, ISO dates "
        "are found by themselves.",
        kPlot | kInfo },
    OptionEntry { OptionId::Header, "header", 0, "yes|no",
        "The first row names the columns, or not. Without it, it does when one of its cells is a text.", kPlot | kInfo,
        kYesNo },
    OptionEntry { OptionId::Size, "size", 0, "WxH", "Size of a picture in pixels; 1000x640 without it.", kPictures },
    OptionEntry { OptionId::Page, "page", 0, "PAGE",
        "Size of a page (.pdf .svg .ps): A5, A4, A3 or Letter, which lie on their long side, or WxH in millimetres; A4 "
        "without it.",
        kPictures },
    OptionEntry { OptionId::Antialias, "antialias", 0, "", "Smooth lines.", kPlot },
    OptionEntry { OptionId::LineWidth, "line-width", 0, "N",
        "Width of the lines in pixels at 96 to the inch; 1 without it.", kPlot },
    OptionEntry { OptionId::Symbols, "symbols", 0, "", "Mark the points, each curve with a symbol of its own.", kPlot },
    OptionEntry {
        OptionId::Save, "save", 0, "DOC", "Store the graph as a document.", kPlot | kDraw, {}, ValueKind::File },
    OptionEntry { OptionId::InPlace, "in-place", 0, "CLASS",
        "The document holds the contents of a graph of CLASS (C2DGraph) and not a reference to one.", kDraw | kInfo },
    OptionEntry {
        OptionId::Verbose, "verbose", 'v', "", "Tell what was assumed about the input, on standard error.", kAll },
    OptionEntry { OptionId::Help, "help", 'h', "", "Print this text.", kAll },
    OptionEntry { OptionId::Version, "version", 0, "", "Print the version.", kAll },
};

constexpr std::array kCommands {
    CommandEntry { Command::Plot, "plot", "ombrel plot [options] FILE...",
        "Draw columns of text tables (CSV, TSV, blanks; - is standard input)." },
    CommandEntry { Command::Draw, "draw", "ombrel draw DOCUMENT [options]", "Draw a stored graph document." },
    CommandEntry { Command::Info, "info", "ombrel info FILE...",
        "Print what is in a file: the object tree of a document; columns, types and gaps of a table." },
    CommandEntry { Command::Gallery, "gallery", "ombrel gallery DIRECTORY",
        "Draw a picture of every kind of plot, and a page to leaf through them." },
    CommandEntry { Command::Colours, "colours", "ombrel colours [NAME...] [-o OUT]", "List or draw colour maps." },
};

} // namespace

std::span<OptionEntry const> AllOptions() { return kOptions; }

std::span<CommandEntry const> AllCommands() { return kCommands; }

bool TakesOption(Command command, OptionEntry const& option)
{
    return command == Command::None || (option.commands & SetOf(command)) != 0;
}

} // namespace ombrel::host
