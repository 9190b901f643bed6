#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/table/TableCells.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel {

/// How a table is written.
struct TableDialect {
    /// A comma, semicolon, tab or bar; ' ' for runs of blanks and tabs; 0 when the table has one column. Any other that
    /// was asked for.
    char separator = 0;
    /// '.' or ','.
    char decimalMark = '.';
    bool hasHeader = false;
    /// The header has no name for the first column, but for all others: what stands there names the rows.
    bool hasRowNames = false;
};

/// What a column holds; Unknown where only gaps were seen.
enum class ColumnType { Unknown, Number, Date, Text };

/// What the first lines of a table tell.
struct TableHead {
    TableDialect dialect;
    /// One type a column; Unknown when there were only gaps.
    std::vector<ColumnType> types;
};

/// Whether the first row names the columns: as it looks, or as is said.
enum class HeaderChoice { Detect, Present, Absent };

/// What is said of how a table is written; the rest is found out.
struct TableForm {
    HeaderChoice header = HeaderChoice::Detect;
    /// As in TableDialect.
    std::optional<char> separator {};
    std::optional<char> decimalMark {};
    GapWords gaps {};
    /// Of dates in numbers such as 01/02/2020; without it, the column's other dates tell.
    std::optional<DateOrder> dateOrder {};
};

/// What is known of a table before its first lines are looked at.
struct TableHints : TableForm {
    /// Form of the dates in dateColumn; null for dates as they are usually written.
    DateFormat const* dateFormat = nullptr;
    /// Name of the column, or its number from 1; empty for the first, whatever its name.
    std::string dateColumn {};
};

/// One cell of a record, as it stands between the separators.
struct TableCell {
    /// Without surrounding blanks and quotes; doubled quotes are still doubled.
    std::string_view text;
    bool quoted = false;
};

/// How a cell ends.
enum class CellStatus {
    Cell,
    /// A quote is open where the text ends.
    Unclosed,
    /// Something other than blanks follows the closing quote.
    TextAfterQuote,
};

/// Reads the cell at p and moves p to the separator or line break that ends it; a blank or tab that separates counts
/// as one character, since the cell after it skips the others. The text up to end must end with a line break. Quoted
/// cells may hold line breaks.
OMBREL_EXPORT CellStatus ReadCell(char const*& p, char const* end, char separator, TableCell& cell);

/// The cell's text with doubled quotes made single.
OMBREL_EXPORT std::string CellText(TableCell const& cell);

/// More columns than this are an error: each costs memory whatever it holds.
inline constexpr std::size_t kMostColumns = 16384;

/// Passes the line break at p: LF, CR or CR LF.
OMBREL_EXPORT char const* SkipLineBreak(char const* p, char const* end);
/// The first CR or LF at or after p, or end.
OMBREL_EXPORT char const* FindLineEnd(char const* p, char const* end);
/// True for a line that is blank or begins with # or //.
OMBREL_EXPORT bool IsCommentOrBlank(char const* p, char const* end);

/// The type of one cell; dateFormat is null for dates as they are usually written.
OMBREL_EXPORT ColumnType ClassifyCell(
    TableCell const& cell, char decimalMark, DateFormat const* dateFormat, GapWords const& gaps = {});

/// Whether the text is JSON, which is no table, by its first characters.
OMBREL_EXPORT bool LooksLikeJson(std::string_view text);

/// The column named so (exactly), else the one with that number from 1, else names.size().
OMBREL_EXPORT std::size_t FindColumn(std::vector<std::string> const& names, std::string_view text);

/// Finds out how the table that starts with these lines is written. The sample must begin with a record and end with
/// a line break.
OMBREL_EXPORT TableHead DetectDialect(std::string_view sample, TableHints const& hints);

} // namespace ombrel
