#include "ombrel/layout/ChartNotes.h"
#include "ombrel/foundation/Utils.h"

namespace ombrel {

std::string Counted(std::size_t count, std::string const& singular, std::string const& plural)
{
    return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

std::string NumberText(double value) { return CVUtils::FormatDouble(kGeneralFormat, value, 15).ToUtf8(); }

} // namespace ombrel
