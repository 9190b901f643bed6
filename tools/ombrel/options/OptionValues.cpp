#include "tools/ombrel/options/OptionValues.h"
#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace ombrel::host {

namespace {

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

/// As people write it, where that is one date.
std::optional<double> ParseSettledDate(std::string_view text, std::optional<DateOrder> order)
{
    std::optional<WrittenDate> const date = ParseWrittenDate(text, order);
    if (!date || (date->dayFirst && date->monthFirst && *date->dayFirst != *date->monthFirst))
        return std::nullopt;
    return date->dayFirst ? date->dayFirst : date->monthFirst;
}

/// One end of a range; a year alone is a date where dates are wanted.
std::optional<double> ParseEnd(
    std::string_view text, bool dates, DateFormat const* format, std::optional<DateOrder> order)
{
    if (!dates)
        return ParseCellNumber(text, '.');
    if (format) {
        if (auto const date = format->Parse(text))
            return date;
    }
    if (auto const date = ParseIsoDate(text))
        return date->days;
    auto const year = text.size() == 4 ? ParseCellNumber(text, '.') : std::nullopt;
    if (year && *year >= 100.0 && *year <= 9999.0)
        return MakeDate(static_cast<int>(*year), 1, 1, 0.0);
    return ParseSettledDate(text, order);
}

} // namespace

void FailValue(OptionEntry const& option, std::string_view value, std::string const& expected)
{
    throw Failure(kUsageFault,
        "--" + std::string(option.longName) + ": expected " + expected + ", found " + QuoteForMessage(value));
}

std::string LowerCase(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    return lower;
}

std::size_t ParseWord(OptionEntry const& option, std::string_view value)
{
    auto const found = std::find(option.choices.begin(), option.choices.end(), value);
    if (found == option.choices.end())
        FailValue(option, value, ListChoices(option.choices));
    return static_cast<std::size_t>(found - option.choices.begin());
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

double ParseNumber(OptionEntry const& option, std::string const& value, double least, double most, char const* expected)
{
    auto const number = ParseCellNumber(value, '.');
    if (!number || *number < least || *number > most)
        FailValue(option, value, expected);
    return *number;
}

PictureSize ParseSize(OptionEntry const& option, std::string const& value)
{
    // More pixels would need more than 400 MB, and no one could look at them; what lay beyond the sides would stay
    // empty.
    constexpr double kSmallest = 16;
    constexpr double kLargest = kMappedLimit;
    constexpr double kMostPixels = 1e8;
    auto const sides = ParseSides(value);
    auto const fits = [](double side) { return side >= kSmallest && side <= kLargest && side == std::floor(side); };
    if (!sides || !fits(sides->first) || !fits(sides->second) || sides->first * sides->second > kMostPixels)
        FailValue(option, value, "a width and height such as 1000x640, of 16 to 32000 and together 100 million pixels");
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
        if (LowerCase(value) == p.name)
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

char ParseSeparator(OptionEntry const& option, std::string const& value)
{
    std::string const word = LowerCase(value);
    if (word == "tab" || word == "\\t")
        return '\t';
    if (word == "blanks" || word == "none")
        return word == "none" ? '\0' : ' ';
    // What numbers, dates and quoted cells are written with separates nothing.
    constexpr std::string_view kSeparators = ",;|:/~^&!@%*_=\t ";
    if (word.size() != 1 || kSeparators.find(word[0]) == std::string_view::npos)
        FailValue(option, value, "tab, blanks, none, or one character such as , ; | or :");
    return word[0];
}

DateFormat ParseDateFormat(OptionEntry const& option, std::string const& value)
{
    auto format = DateFormat::Compile(value);
    if (auto const* const why = std::get_if<std::string>(&format))
        throw Failure(kUsageFault, "--" + std::string(option.longName) + " " + QuoteForMessage(value) + ": " + *why);
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

std::optional<AxisEnds> ParseRange(
    std::string_view text, bool dates, DateFormat const* format, std::optional<DateOrder> order)
{
    // The ends may themselves hold colons, as times do.
    for (std::size_t colon = text.find(':'); colon != std::string_view::npos; colon = text.find(':', colon + 1)) {
        std::string_view const first = text.substr(0, colon);
        std::string_view const second = text.substr(colon + 1);
        AxisEnds const ends { ParseEnd(first, dates, format, order), ParseEnd(second, dates, format, order) };
        if ((!ends.min && !first.empty()) || (!ends.max && !second.empty()))
            continue;
        bool const inOrder = !ends.min || !ends.max || *ends.min < *ends.max;
        bool const inReach
            = std::abs(ends.min.value_or(0.0)) <= kLargestNumber && std::abs(ends.max.value_or(0.0)) <= kLargestNumber;
        return inOrder && inReach ? std::optional(ends) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace ombrel::host
