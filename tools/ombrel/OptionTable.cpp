#include "tools/ombrel/Options.h"

#include <array>

namespace ombrel::host {

namespace {

constexpr bool kYes = true;
constexpr bool kNo = false;

constexpr std::array kOptions {
    // option, long, short, argument, help, plot, draw, info
    OptionEntry { OptionId::Output, "output", 'o', "OUT",
        "Write the picture to OUT: .png .bmp .pdf .svg or .ps. Without it, FILE's name with .png in the current "
        "folder; "
        "- is standard output and needs --format.",
        kYes, kYes, kNo },
    OptionEntry { OptionId::Format, "format", 0, "FORMAT", "png, bmp, pdf, svg or ps, whatever the extension of OUT.",
        kYes, kYes, kNo },
    OptionEntry { OptionId::XColumn, "x", 'x', "COL",
        "Column of the x values: its name or its number from 1; 0 counts the rows. Without it, the first column, or "
        "the rows when there is only one.",
        kYes, kNo, kNo },
    OptionEntry { OptionId::YColumns, "y", 'y', "COL[,COL...]",
        "Columns of the y values, by name or number. Without it, all other columns of numbers.", kYes, kNo, kNo, kYes },
    OptionEntry { OptionId::Kind, "kind", 0, "KIND",
        "line, steps, pairs (the points 1-2, 3-4, ... joined), points or filled (down to zero).", kYes, kNo, kNo },
    OptionEntry { OptionId::Title, "title", 0, "TEXT", "Title over the graph.", kYes, kNo, kNo },
    OptionEntry {
        OptionId::XTitle, "x-title", 0, "TEXT", "Title of the x axis. Without it, the column's name.", kYes, kNo, kNo },
    OptionEntry { OptionId::YTitle, "y-title", 0, "TEXT", "Title of the y axis. Without it, the columns' names.", kYes,
        kNo, kNo },
    OptionEntry { OptionId::XRange, "x-range", 0, "A:B",
        "Ends of the x axis, numbers or dates; an empty one is taken from the data.", kYes, kNo, kNo },
    OptionEntry { OptionId::YRange, "y-range", 0, "A:B", "Ends of the y axis; an empty one is taken from the data.",
        kYes, kNo, kNo },
    OptionEntry { OptionId::Log, "log", 0, "x|y|xy", "Logarithmic axes.", kYes, kNo, kNo },
    OptionEntry { OptionId::DateFormat, "date-format", 0, "FORMAT",
        "The x values are dates in this form, such as %d.%m.%Y (%Y %y %m %b %B %d %j %H %M %S). Without it, ISO dates "
        "are found by themselves.",
        kYes, kNo, kYes },
    OptionEntry { OptionId::Header, "header", 0, "yes|no",
        "The first row names the columns, or not. Without it, it does when one of its cells is a text.", kYes, kNo,
        kYes },
    OptionEntry {
        OptionId::Size, "size", 0, "WxH", "Size of a picture in pixels; 1000x640 without it.", kYes, kYes, kNo },
    OptionEntry { OptionId::Page, "page", 0, "PAGE",
        "Size of a page (.pdf .svg .ps): A5, A4, A3 or Letter, which lie on their long side, or WxH in millimetres; A4 "
        "without it.",
        kYes, kYes, kNo },
    OptionEntry { OptionId::Antialias, "antialias", 0, "", "Smooth lines.", kYes, kNo, kNo },
    OptionEntry { OptionId::LineWidth, "line-width", 0, "N",
        "Width of the lines in pixels at 96 to the inch; 1 without it.", kYes, kNo, kNo },
    OptionEntry {
        OptionId::Symbols, "symbols", 0, "", "Mark the points, each curve with a symbol of its own.", kYes, kNo, kNo },
    OptionEntry { OptionId::Save, "save", 0, "DOC", "Store the graph as a document.", kYes, kYes, kNo },
    OptionEntry { OptionId::InPlace, "in-place", 0, "CLASS",
        "The document holds the contents of a graph of CLASS (C2DGraph) and not a reference to one.", kNo, kYes, kYes },
    OptionEntry { OptionId::Verbose, "verbose", 'v', "", "Tell what was assumed about the input, on standard error.",
        kYes, kYes, kYes },
    OptionEntry { OptionId::Help, "help", 'h', "", "Print this text.", kYes, kYes, kYes },
    OptionEntry { OptionId::Version, "version", 0, "", "Print the version.", kYes, kYes, kYes },
};

constexpr std::array kCommands {
    CommandEntry { Command::Plot, "plot", "ombrel plot [options] FILE...",
        "Draw columns of text tables (CSV, TSV, blanks; - is standard input)." },
    CommandEntry { Command::Draw, "draw", "ombrel draw DOCUMENT [options]", "Draw a stored graph document." },
    CommandEntry { Command::Info, "info", "ombrel info FILE...",
        "Print what is in a file: the object tree of a document; columns, types and gaps of a table." },
};

} // namespace

std::span<OptionEntry const> AllOptions() { return kOptions; }

std::span<CommandEntry const> AllCommands() { return kCommands; }

bool TakesOption(Command command, OptionEntry const& option)
{
    switch (command) {
    case Command::Plot:
        return option.plot;
    case Command::Draw:
        return option.draw;
    case Command::Info:
        return option.info;
    case Command::None:
        break;
    }
    return true;
}

} // namespace ombrel::host
