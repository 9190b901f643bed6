#pragma once
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/table/ColumnTexts.h"
#include "ombrel/table/TableReader.h"

#include <string>
#include <vector>

namespace ombrel::host {

class InputFile;
class Messages;

/// Reads a table from a file, with progress on a terminal, and tells under -v what was assumed about it.
/// Throws Failure with kDataFault, naming file, line and column.
Table ReadTableFile(InputFile& file, TableOptions const& options, Messages const& messages);

/// The separator as a person writes it: "," or "tab".
std::string SeparatorLabel(char separator);

/// "1 row", "2 rows": of a number from a document, which may be below 0.
std::string CountedInt(int count, std::string const& singular, std::string const& plural);

} // namespace ombrel::host
