#include "tools/ombrel/options/Options.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/table/Utf8.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace ombrel::host {

namespace {

[[noreturn]] void FailUsage(std::string const& text) { throw Failure(kUsageFault, text); }

[[noreturn]] void FailValue(OptionEntry const& option, std::string const& value, std::string const& expected)
{
    FailUsage("--" + std::string(option.longName) + ": expected " + expected + ", found " + QuoteForMessage(value));
}

std::string Lower(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    return lower;
}

OptionEntry const& EntryOf(OptionId id)
{
    auto const options = AllOptions();
    return *std::find_if(options.begin(), options.end(), [id](OptionEntry const& o) { return o.id == id; });
}

std::optional<PictureFormat> FormatNamed(std::string_view name)
{
    auto const& names = EntryOf(OptionId::Format).choices;
    auto const found = std::find(names.begin(), names.end(), Lower(name));
    if (found == names.end())
        return std::nullopt;
    return static_cast<PictureFormat>(found - names.begin());
}

/// "a, b or c".
std::string ListChoices(std::span<std::string_view const> choices)
{
    std::string text;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        text += i == 0 ? "" : i + 1 < choices.size() ? ", " : " or ";
        text += choices[i];
    }
    return text;
}

/// The enumeration value that the word stands for.
template <typename Enum> Enum ParseChoice(OptionEntry const& option, std::string const& value)
{
    auto const found = std::find(option.choices.begin(), option.choices.end(), value);
    if (found == option.choices.end())
        FailValue(option, value, ListChoices(option.choices));
    return static_cast<Enum>(found - option.choices.begin());
}

int ParseBins(OptionEntry const& option, std::string const& value)
{
    constexpr double kMost = 10000;
    if (value == "auto")
        return 0;
    auto const bins = ParseCellNumber(value, '.');
    if (!bins || *bins < 1 || *bins > kMost || *bins != std::floor(*bins))
        FailValue(option, value, "auto, or a whole number of 1 to 10000");
    return static_cast<int>(*bins);
}

/// TEXT@X,Y, where TEXT may itself hold an @.
CaptionSettings ParseCaption(OptionEntry const& option, std::string const& value)
{
    std::size_t const at = value.rfind('@');
    std::size_t const comma = value.rfind(',');
    if (at != std::string::npos && at > 0 && comma != std::string::npos && comma > at) {
        auto const x = ParseCellNumber(value.substr(at + 1, comma - at - 1), '.');
        auto const y = ParseCellNumber(value.substr(comma + 1), '.');
        auto const fits = [](double fraction) { return fraction >= -1.0 && fraction <= 2.0; };
        if (x && y && fits(*x) && fits(*y)) {
            std::string text = value.substr(0, at);
            for (std::size_t cut = text.find("\\n"); cut != std::string::npos; cut = text.find("\\n", cut))
                text.replace(cut, 2, "\n");
            return { text, *x, *y };
        }
    }
    FailValue(option, value, "TEXT@X,Y with fractions such as 0.5,0.1");
}

/// The two numbers of WxH.
std::optional<std::pair<double, double>> ParseSides(std::string_view value)
{
    auto const cross = value.find_first_of("xX");
    if (cross == std::string_view::npos)
        return std::nullopt;
    auto const width = ParseCellNumber(value.substr(0, cross), '.');
    auto const height = ParseCellNumber(value.substr(cross + 1), '.');
    if (!width || !height)
        return std::nullopt;
    return std::pair { *width, *height };
}

PictureSize ParseSize(OptionEntry const& option, std::string const& value)
{
    // Larger ones would need more than 400 MB, and no one could look at them.
    constexpr double kSmallest = 16;
    constexpr double kLargest = 32767;
    constexpr double kMostPixels = 1e8;
    auto const sides = ParseSides(value);
    auto const fits = [](double side) { return side >= kSmallest && side <= kLargest && side == std::floor(side); };
    if (!sides || !fits(sides->first) || !fits(sides->second) || sides->first * sides->second > kMostPixels)
        FailValue(option, value, "a width and height such as 1000x640, of 16 to 32767 and together 100 million pixels");
    return { static_cast<int>(sides->first), static_cast<int>(sides->second) };
}

PageSize ParsePage(OptionEntry const& option, std::string const& value)
{
    struct PageName {
        std::string_view name;
        PageSize size;
    };
    constexpr std::array<PageName, 4> kPages { { { "a5", { 210.0, 148.0 } }, { "a4", { 297.0, 210.0 } },
        { "a3", { 420.0, 297.0 } }, { "letter", { 279.4, 215.9 } } } };
    for (PageName const& p : kPages) {
        if (Lower(value) == p.name)
            return p.size;
    }
    auto const sides = ParseSides(value);
    auto const fits = [](double side) { return side >= 10.0 && side <= 5000.0; };
    if (!sides || !fits(sides->first) || !fits(sides->second))
        FailValue(option, value, "A5, A4, A3, Letter, or a width and height of 10 to 5000 mm such as 160x100");
    return { sides->first, sides->second };
}

int ParseLineWidth(OptionEntry const& option, std::string const& value)
{
    int width = 0;
    auto const result = std::from_chars(value.data(), value.data() + value.size(), width);
    if (result.ec != std::errc() || result.ptr != value.data() + value.size() || width < 1 || width > 100)
        FailValue(option, value, "a whole number of 1 to 100");
    return width;
}

void ParseLog(Options& options, OptionEntry const& option, std::string const& value)
{
    enum class LogAxes { X, Y, Both };
    auto const axes = ParseChoice<LogAxes>(option, value);
    options.xLog = axes != LogAxes::Y;
    options.yLog = axes != LogAxes::X;
}

DateFormat ParseDateFormat(OptionEntry const& option, std::string const& value)
{
    auto format = DateFormat::Compile(value);
    if (auto const* const why = std::get_if<std::string>(&format))
        FailUsage("--" + std::string(option.longName) + " " + QuoteForMessage(value) + ": " + *why);
    return std::get<DateFormat>(std::move(format));
}

void AddColumns(std::vector<std::string>& columns, OptionEntry const& option, std::string const& value)
{
    for (std::size_t first = 0;;) {
        std::size_t const comma = value.find(',', first);
        std::string const column = value.substr(first, comma == std::string::npos ? comma : comma - first);
        if (column.empty())
            FailValue(option, value, "names or numbers of columns with commas between");
        columns.push_back(column);
        if (comma == std::string::npos)
            return;
        first = comma + 1;
    }
}

/// Where a switch is kept; null for other options.
bool* SwitchOf(Options& options, OptionId id)
{
    switch (id) {
    case OptionId::Antialias:
        return &options.antialias;
    case OptionId::Symbols:
        return &options.symbols;
    case OptionId::Percent:
        return &options.percent;
    case OptionId::Normalised:
        return &options.normalised;
    case OptionId::Polar:
        return &options.polar;
    case OptionId::Radians:
        return &options.radians;
    case OptionId::Verbose:
        return &options.verbose;
    case OptionId::Help:
        return &options.help;
    case OptionId::Version:
        return &options.version;
    default:
        return nullptr;
    }
}

/// Where a text that may be anything is kept; null for other options.
std::string* TextOf(Options& options, OptionId id)
{
    switch (id) {
    case OptionId::Output:
        return &options.output;
    case OptionId::XColumn:
        return &options.xColumn;
    case OptionId::LabelColumn:
        return &options.labelColumn;
    case OptionId::GroupColumn:
        return &options.groupColumn;
    case OptionId::Palette:
        return &options.palette;
    case OptionId::Title:
        return &options.title;
    case OptionId::XTitle:
        return &options.xTitle.emplace();
    case OptionId::YTitle:
        return &options.yTitle.emplace();
    case OptionId::Save:
        return &options.save;
    case OptionId::InPlace:
        return &options.inPlaceClass;
    default:
        return nullptr;
    }
}

void Apply(Options& options, OptionEntry const& option, std::string const& value)
{
    options.given.push_back(option.id);
    if (bool* const isOn = SwitchOf(options, option.id)) {
        *isOn = true;
        return;
    }
    if (std::string* const text = TextOf(options, option.id)) {
        *text = value;
        return;
    }
    switch (option.id) {
    case OptionId::Format:
        options.format = ParseChoice<PictureFormat>(option, Lower(value));
        break;
    case OptionId::YColumns:
        AddColumns(options.yColumns, option, value);
        break;
    case OptionId::ErrorColumns:
        AddColumns(options.errorColumns, option, value);
        break;
    case OptionId::Kind:
        options.kind = ParseChoice<PlotKind>(option, value);
        break;
    case OptionId::Bins:
        options.bins = ParseBins(option, value);
        break;
    case OptionId::Grid:
        options.grid = ParseChoice<GridChoice>(option, value);
        break;
    case OptionId::Legend:
        options.legend = ParseChoice<LegendPlace>(option, value);
        break;
    case OptionId::Theme:
        options.theme = ParseChoice<Theme>(option, value);
        break;
    case OptionId::Caption:
        options.captions.push_back(ParseCaption(option, value));
        break;
    case OptionId::XRange:
    case OptionId::YRange:
        if (value.find(':') == std::string::npos)
            FailValue(option, value, "A:B");
        (option.id == OptionId::XRange ? options.xRange : options.yRange) = value;
        break;
    case OptionId::Log:
        ParseLog(options, option, value);
        break;
    case OptionId::DateFormat:
        options.dateFormat = ParseDateFormat(option, value);
        break;
    case OptionId::Header: {
        enum class YesNo { Yes, No };
        options.header = ParseChoice<YesNo>(option, value) == YesNo::Yes ? HeaderChoice::Present : HeaderChoice::Absent;
        break;
    }
    case OptionId::Size:
        options.size = ParseSize(option, value);
        break;
    case OptionId::Page:
        options.page = ParsePage(option, value);
        break;
    case OptionId::LineWidth:
        options.lineWidth = ParseLineWidth(option, value);
        break;
    default:
        break;
    }
}

std::string NamesForParser(OptionEntry const& option)
{
    std::string names;
    if (option.shortName)
        names = std::string("-") + option.shortName;
    // A long name of one letter is what the short one says already.
    if (option.longName.size() > 1)
        names += (names.empty() ? "--" : ",--") + std::string(option.longName);
    return names;
}

/// Appends the text in lines of at most width columns, the first of which has got so far already.
void AppendWrapped(std::string& to, std::string_view text, std::size_t indent, std::size_t width)
{
    std::size_t column = indent;
    while (!text.empty()) {
        std::size_t const blank = std::min(text.find(' '), text.size());
        std::string_view const word = text.substr(0, blank);
        if (column > indent && column + 1 + word.size() > width) {
            to += '\n';
            to.append(indent, ' ');
            column = indent;
        } else if (column > indent) {
            to += ' ';
            ++column;
        }
        to += word;
        column += word.size();
        text.remove_prefix(std::min(blank + 1, text.size()));
    }
    to += '\n';
}

} // namespace

bool Options::IsGiven(OptionId id) const { return std::find(given.begin(), given.end(), id) != given.end(); }

std::optional<PictureFormat> FormatOfPath(std::string_view path)
{
    auto const point = path.find_last_of("./");
    if (point == std::string_view::npos || path[point] != '.')
        return std::nullopt;
    return FormatNamed(path.substr(point + 1));
}

Options ParseOptions(std::vector<std::string> const& arguments)
{
    Options options;
    auto first = arguments.begin();
    if (first != arguments.end()) {
        for (CommandEntry const& command : AllCommands()) {
            if (*first == command.name)
                options.command = command.command;
        }
        if (options.command != Command::None)
            ++first;
    }
    CLI::App app;
    app.set_help_flag();
    app.allow_windows_style_options(false);
    for (OptionEntry const& option : AllOptions()) {
        if (!TakesOption(options.command, option))
            continue;
        std::string const names = NamesForParser(option);
        if (option.argument.empty()) {
            app.add_flag_function(names, [&](std::int64_t) { Apply(options, option, ""); });
        } else {
            auto const take = [&options, &option](std::vector<std::string> const& values) {
                for (std::string const& value : values)
                    Apply(options, option, value);
            };
            auto* const added = app.add_option_function<std::vector<std::string>>(names, take);
            added->expected(1)->allow_extra_args(false);
            added->multi_option_policy(
                option.repeats ? CLI::MultiOptionPolicy::TakeAll : CLI::MultiOptionPolicy::TakeLast);
        }
    }
    app.add_option("FILE", options.files);
    try {
        // The parser takes its arguments from the back.
        app.parse(
            std::vector<std::string>(std::make_reverse_iterator(arguments.end()), std::make_reverse_iterator(first)));
    } catch (CLI::ParseError const& error) {
        FailUsage(std::string(error.what()) + " (ombrel --help lists the options)");
    }
    return options;
}

void CheckOptionsFor(Options const& options, Command command)
{
    for (OptionEntry const& option : AllOptions()) {
        if (!TakesOption(command, option) && options.IsGiven(option.id)) {
            std::string const name = option.longName.size() > 1 ? "--" : "-";
            FailUsage(name + std::string(option.longName)
                + (command == Command::Draw ? " is for tables, and the file is a graph document"
                                            : " is for graph documents, and the file is a table"));
        }
    }
}

std::string HelpText(Command command)
{
    constexpr std::size_t kIndent = 28;
    constexpr std::size_t kWidth = 100;
    std::string text = "Usage:\n";
    for (CommandEntry const& c : AllCommands()) {
        if (command != Command::None && c.command != command)
            continue;
        text += "  " + std::string(c.usage);
        text.append(c.usage.size() + 4 < 38 ? 38 - c.usage.size() - 2 : 2, ' ');
        AppendWrapped(text, c.help, 38, kWidth);
    }
    if (command == Command::None)
        text += "  ombrel FILE... [options]            What fits the file: plot or draw.\n";
    text += "\nOptions:\n";
    for (OptionEntry const& option : AllOptions()) {
        if (!TakesOption(command, option))
            continue;
        std::string line = "  ";
        line += option.shortName ? std::string("-") + option.shortName : std::string("  ");
        if (option.longName.size() > 1)
            line += (option.shortName ? ", --" : "  --") + std::string(option.longName);
        if (!option.argument.empty())
            line += " " + std::string(option.argument);
        if (line.size() + 2 > kIndent) {
            line += '\n';
            line.append(kIndent, ' ');
        } else {
            line.append(kIndent - line.size(), ' ');
        }
        text += line;
        AppendWrapped(text, option.help, kIndent, kWidth);
    }
    text += "\nExit status: 0 done, 1 the data or a file was at fault, 2 the command line was.\n";
    return text;
}

} // namespace ombrel::host
