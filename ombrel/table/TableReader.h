#pragma once
#include "ombrel/table/Table.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace ombrel {

/// How a table is written, as far as that is known, and what is wanted of it.
struct TableOptions : TableForm {
    /// Form of the dates in dateColumn; without it, dates are read as they are usually written.
    std::optional<DateFormat> dateFormat {};
    /// Name of that column, or its number from 1; empty for the first, whatever its name.
    std::string dateColumn {};
    /// Columns whose values are kept, by name or number from 1; empty keeps all.
    std::vector<std::string> wanted {};
    /// Columns that hold texts keep their cells; else only those named below do.
    bool texts = true;
    /// So many of the first columns are kept besides, with their cells where they hold texts.
    std::size_t leading = 0;
    /// Columns whose cells are kept as texts, too, whatever they hold, by name or number from 1.
    std::vector<std::string> asTexts {};
    /// A column whose cells are kept when it holds texts, by name or number from 1; empty for none.
    std::string wordColumn {};
};

/// Reads a text table handed over in pieces of any size; the pieces do not influence the result.
///
/// Separator, decimal mark, header and column types come from the first lines. Blank lines and lines that begin with
/// # or // are skipped. Memory stays proportional to the bytes fed: a line is limited to 1 MiB, columns to 16384, and
/// missing cells to a multiple of what is there.
class OMBREL_EXPORT TableReader {
public:
    explicit TableReader(TableOptions options);
    /// False after an error; what follows is not looked at.
    bool Feed(std::string_view bytes);
    /// The table, or the first error. The reader is used up.
    std::variant<Table, TableError> Finish();

private:
    struct Column : TableColumn {
        /// The caller asked for it.
        bool wanted = true;
        /// Its values are collected: it is wanted, holds no text and had no misfit.
        bool keep = true;
        /// Which of its cells are collected as texts, too.
        enum class Texts { None, OfWords, All } kept = Texts::None;
        /// The values if months came first, while dates so far may be read both ways and differ.
        ColumnValues monthFirst;
        bool KeepsTexts() const { return kept == Texts::All || (kept == Texts::OfWords && type == ColumnType::Text); }
    };
    bool Process(bool final);
    bool PassLeadingComments(bool final);
    bool FindSampleEnd(bool final, std::size_t& end);
    bool Start(std::string_view sample);
    bool ReadHeader(char const*& p, char const* end);
    void ChooseColumns();
    void ChooseTexts(std::vector<std::string> const& names);
    char const* ReadRecords(char const* p, char const* end);
    bool IsWholeRecord(char const* p, char const* end) const;
    char const* ReadRow(char const* p, char const* end);
    char const* ReadValue(char const* p, char const* end, std::size_t index);
    bool EndsPlainCell(char const* p) const;
    char const* ReadOtherCell(char const* p, char const* end, std::size_t index);
    void StoreCell(TableCell const& cell, std::size_t index);
    bool CheckSurplus(char const*& p, char const* end);
    bool PadRow(std::size_t cells);
    void AddGap(Column& column);
    static void Append(Column& column, double value);
    std::optional<double> SettleOrder(Column& column, WrittenDate const& date) const;
    void AddText(Column& column, TableCell const& cell);
    void NoteLineJump();
    void SetMisfit(std::size_t index, std::string expected, std::string_view found);
    bool CheckLength(char const* first, char const* last);
    bool Fail(std::size_t column, std::string expected, std::string found);
    DateFormat const* FormatOf(std::size_t index) const;

    TableOptions m_options;
    /// What is not read yet: an incomplete record, at the start the sample.
    std::string m_buffer;
    /// How far the buffer was searched for the end of the sample, and the line breaks found.
    std::size_t m_scanned = 0;
    std::size_t m_scannedBreaks = 0;
    std::uint64_t m_bytes = 0;
    std::uint64_t m_padded = 0;
    /// Line of the record that is being read, and of the cell in it.
    std::size_t m_line = 1;
    std::size_t m_cellLine = 1;
    /// Where the first row would begin if all rows were one line each; no line has the number 0.
    std::size_t m_lineOfRowZero = 0;
    std::size_t m_dateColumn = kMostColumns;
    bool m_firstBytes = true;
    bool m_started = false;
    bool m_headerRead = false;
    bool m_hasQuotes = false;
    TableDialect m_dialect;
    std::vector<Column> m_columns;
    Table m_table;
    std::optional<TableError> m_error;
};

/// The table in a file. Throws TableReadError.
OMBREL_EXPORT Table ReadTableFile(std::string const& path, TableOptions options = {});

/// The whole table at once.
OMBREL_EXPORT std::variant<Table, TableError> ReadTable(std::string_view bytes, TableOptions const& options);

} // namespace ombrel
