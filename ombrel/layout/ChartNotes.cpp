#include "ombrel/layout/ChartNotes.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/framework/DateTime.h"
#include "ombrel/platform/framework/Number.h"

#include <cmath>

namespace ombrel {

std::string Counted(std::size_t count, std::string const& singular, std::string const& plural)
{
    return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

std::string NumberText(double value) { return CVUtils::FormatDouble(kGeneralFormat, value, 15).ToUtf8(); }

std::string ShortNumber(double value) { return FormatNumber(value, 'g', 10); }

std::string DateText(double days)
{
    bool const hasTime = days != std::floor(days);
    return COleDateTime(days).Format(hasTime ? "%Y-%m-%d %H:%M:%S" : "%Y-%m-%d").ToUtf8();
}

} // namespace ombrel
