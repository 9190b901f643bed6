#pragma once
#include "tools/ombrel/options/Options.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel::host {

/// Tells what was expected of the option's value and what was found.
[[noreturn]] void FailValue(OptionEntry const& option, std::string_view value, std::string const& expected);

// Values of options as they were typed. What cannot be read throws Failure with kUsageFault, which names the option,
// what was expected and what was found.

/// Which of the option's words it is.
std::size_t ParseWord(OptionEntry const& option, std::string_view value);
/// A whole number of 1 to 10000, or 0 for "auto".
int ParseBins(OptionEntry const& option, std::string const& value);
/// TEXT@X,Y, where TEXT may itself hold an @ and stands for a line break as \n.
CaptionSettings ParseCaption(OptionEntry const& option, std::string const& value);
/// Of least to most, which is what was expected.
double ParseNumber(
    OptionEntry const& option, std::string const& value, double least, double most, char const* expected);
/// WxH in pixels.
PictureSize ParseSize(OptionEntry const& option, std::string const& value);
/// A5, A4, A3, Letter, or WxH in millimetres.
PageSize ParsePage(OptionEntry const& option, std::string const& value);
int ParseLineWidth(OptionEntry const& option, std::string const& value);
/// "tab", "blanks", "none", or one character that no cell of numbers has: 0 for none.
char ParseSeparator(OptionEntry const& option, std::string const& value);
DateFormat ParseDateFormat(OptionEntry const& option, std::string const& value);
/// Appends names or numbers that have commas between.
void AddColumns(std::vector<std::string>& columns, OptionEntry const& option, std::string const& value);

/// A:B with A below B, each a number, or each a date: in the form given (null for none), an ISO date, a year, or as
/// people write it, in the order given where that settles it. Nothing when it is not that.
std::optional<AxisEnds> ParseRange(
    std::string_view text, bool dates, DateFormat const* format, std::optional<DateOrder> order = std::nullopt);

/// With A to Z as small letters.
std::string LowerCase(std::string_view text);

} // namespace ombrel::host
