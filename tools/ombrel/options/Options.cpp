#include "tools/ombrel/options/Options.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/options/OptionValues.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <tuple>
#include <utility>

namespace ombrel::host {

namespace {

[[noreturn]] void FailUsage(std::string const& text) { throw Failure(kUsageFault, text); }

/// The enumeration value that the word stands for.
template <typename Enum> Enum ParseChoice(OptionEntry const& option, std::string const& value)
{
    return static_cast<Enum>(ParseWord(option, value));
}

/// The axes x, y or xy.
std::pair<bool, bool> ParseAxes(OptionEntry const& option, std::string const& value)
{
    enum class Axes { X, Y, Both };
    auto const axes = ParseChoice<Axes>(option, value);
    return { axes != Axes::Y, axes != Axes::X };
}

/// Where a switch is kept; null for other options.
bool* SwitchOf(Options& options, OptionId id)
{
    switch (id) {
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
    case OptionId::North:
        return &options.north;
    case OptionId::Equal:
        return &options.equal;
    case OptionId::Watch:
        return &options.watch;
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
        return &options.outputs.emplace_back();
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
    case OptionId::Description:
        return &options.description;
    case OptionId::Footnote:
        return &options.footnote;
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
    if (ApplySurfaceOption(options.surface, option, value))
        return;
    switch (option.id) {
    case OptionId::Format:
        options.format = ParseChoice<PictureFormat>(option, LowerCase(value));
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
            FailUsage("--" + std::string(option.longName) + ": expected A:B, found " + QuoteForMessage(value));
        (option.id == OptionId::XRange ? options.xRange : options.yRange) = value;
        break;
    case OptionId::Log:
        std::tie(options.xLog, options.yLog) = ParseAxes(option, value.empty() ? "y" : value);
        break;
    case OptionId::Reverse: {
        auto const [x, y] = ParseAxes(option, value);
        options.xReversed |= x;
        options.yReversed |= y;
        break;
    }
    case OptionId::DateFormat:
        options.epochDates = value != "none";
        if (options.epochDates)
            options.dateFormat = ParseDateFormat(option, value);
        break;
    case OptionId::DateOrder:
        options.table.dateOrder = ParseChoice<DateOrder>(option, value);
        break;
    case OptionId::Header: {
        enum class YesNo { Yes, No };
        options.table.header
            = ParseChoice<YesNo>(option, value) == YesNo::Yes ? HeaderChoice::Present : HeaderChoice::Absent;
        break;
    }
    case OptionId::Separator:
        options.table.separator = ParseSeparator(option, value);
        break;
    case OptionId::Decimal:
        options.table.decimalMark = ParseWord(option, value) == 0 ? '.' : ',';
        break;
    case OptionId::Missing:
        options.table.gaps = GapWords(value);
        break;
    case OptionId::Size:
        options.size = ParseSize(option, value);
        break;
    case OptionId::Scale:
        options.scale = ParseNumber(option, value, 0.25, 16.0, "a number of 0.25 to 16");
        break;
    case OptionId::Page:
        options.page = ParsePage(option, value);
        break;
    case OptionId::Vector:
        options.allVector = ParseWord(option, value) == 1;
        break;
    case OptionId::Opacity:
        options.opacity = ParseNumber(option, value, 0.01, 1.0, "a number of 0.01 to 1");
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

/// Stands for a value that was left out.
constexpr char const* kLeftOut = "left out";

/// Whether a word can be the value of an option that may do without: no file's name, nor another option.
bool IsOptionalValue(OptionEntry const& option, std::string_view word)
{
    if (option.choices.empty())
        return !word.empty() && word.find_first_not_of("0123456789") == std::string::npos;
    std::size_t longest = 0;
    for (std::string_view const choice : option.choices)
        longest = std::max(longest, choice.size());
    return !word.empty() && word.size() <= longest && word.front() != '-';
}

/// The arguments as the parser takes them: options whose value may be left out get a word in its place, so that a file
/// that follows is not taken for it, and two dashes before a single letter are as good as one.
std::vector<std::string> ForParser(std::vector<std::string> const& arguments)
{
    std::vector<std::string> words;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        words.push_back(arguments[i]);
        if (arguments[i].size() == 3 && arguments[i].starts_with("--"))
            words.back().erase(0, 1);
        auto const options = AllOptions();
        auto const found = std::find_if(options.begin(), options.end(), [&](OptionEntry const& option) {
            return option.optionalValue && arguments[i] == "--" + std::string(option.longName);
        });
        bool const isLast = i + 1 == arguments.size();
        if (found != options.end() && (isLast || !IsOptionalValue(*found, arguments[i + 1])))
            words.emplace_back(kLeftOut);
    }
    return words;
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

OptionEntry const& EntryOf(OptionId id)
{
    auto const options = AllOptions();
    return *std::find_if(options.begin(), options.end(), [id](OptionEntry const& o) { return o.id == id; });
}

std::string NameOf(OptionEntry const& option)
{
    return (option.longName.size() > 1 ? "--" : "-") + std::string(option.longName);
}

bool Options::IsGiven(OptionId id) const { return std::find(given.begin(), given.end(), id) != given.end(); }

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
        if (option.optionalValue) {
            auto const take = [&options, &option](std::vector<std::string> const& values) {
                Apply(options, option, values.front() == kLeftOut ? "" : values.front());
            };
            app.add_option_function<std::vector<std::string>>(names, take)
                ->expected(1)
                ->allow_extra_args(false)
                ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
        } else if (option.argument.empty()) {
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
        std::vector<std::string> words = ForParser(std::vector<std::string>(first, arguments.end()));
        // The parser takes its arguments from the back.
        std::reverse(words.begin(), words.end());
        app.parse(std::move(words));
    } catch (CLI::ParseError const& error) {
        FailUsage(std::string(error.what()) + " (ombrel --help lists the options)");
    }
    if (options.table.separator == ',' && options.table.decimalMark == ',')
        FailUsage("--separator , and --decimal comma: a comma is either the one or the other");
    return options;
}

void CheckOptionsFor(Options const& options, Command command)
{
    for (OptionEntry const& option : AllOptions()) {
        if (!TakesOption(command, option) && options.IsGiven(option.id)) {
            FailUsage(NameOf(option)
                + (command == Command::Draw           ? " is for tables, and the file is a graph document"
                        : command == Command::Surface ? " is not for files of heights"
                        : command == Command::Mesh    ? " is not for meshes and objects"
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
