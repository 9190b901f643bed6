#include "ombrel/table/TableReader.h"
#include "ombrel/table/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <system_error>

namespace ombrel {

namespace {

constexpr std::size_t kLongestLine = std::size_t { 1 } << 20;
constexpr std::size_t kSampleLines = 64;
constexpr char const* kLineLimit = "a line of at most 1 MiB";
constexpr char const* kTooLong = "a longer one (is a quote left open?)";
constexpr double kGap = std::numeric_limits<double>::quiet_NaN();

bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

std::size_t CountLineBreaks(std::string_view text)
{
    std::size_t count = 0;
    for (char const *p = text.data(), *end = p + text.size(); p < end;) {
        p = FindLineEnd(p, end);
        if (p < end) {
            ++count;
            p = SkipLineBreak(p, end);
        }
    }
    return count;
}

std::string ExpectedOf(TableColumn const& column, DateFormat const* format, bool decimalComma)
{
    if (column.type != ColumnType::Date)
        return decimalComma ? "a number with a decimal comma or a gap (empty, NA, NaN)"
                            : "a number or a gap (empty, NA, NaN)";
    if (format)
        return "a date in the form " + format->GetText() + " or a gap (empty, NA, NaN)";
    if (column.dateOrder)
        return std::string("a date like ") + (column.dateOrder == DateOrder::DayFirst ? "31/12/2020" : "12/31/2020")
            + " as in the lines before or a gap (empty, NA, NaN)";
    return "a date like 2020-03-31 12:30 or a gap (empty, NA, NaN)";
}

} // namespace

TableReader::TableReader(TableOptions options)
    : m_options(std::move(options))
{
}

DateFormat const* TableReader::FormatOf(std::size_t index) const
{
    return m_options.dateFormat && index == m_dateColumn ? &*m_options.dateFormat : nullptr;
}

bool TableReader::Fail(std::size_t column, std::string expected, std::string found)
{
    m_error = TableError { m_cellLine, column, std::move(expected), std::move(found) };
    m_buffer.clear();
    return false;
}

bool TableReader::Feed(std::string_view bytes)
{
    if (m_error)
        return false;
    m_bytes += bytes.size();
    auto const nul = bytes.find('\0');
    m_hasQuotes = m_hasQuotes || bytes.find('"') != std::string_view::npos;
    m_buffer.append(bytes.substr(0, nul));
    // The mark of UTF-16 has to be seen before its zero bytes are.
    bool const isUtf16 = m_firstBytes && (m_buffer.starts_with("\xFF\xFE") || m_buffer.starts_with("\xFE\xFF"));
    if (isUtf16)
        return Fail(0, "text in UTF-8", "UTF-16 (iconv -f UTF-16 -t UTF-8 converts it)");
    if (!Process(false))
        return false;
    if (nul == std::string_view::npos)
        return true;
    m_cellLine = m_line + CountLineBreaks(m_buffer);
    return Fail(0, "text in UTF-8", "a zero byte (is it UTF-16, or not text at all?)");
}

std::variant<Table, TableError> TableReader::Finish()
{
    if (!m_error) {
        if (!m_buffer.empty() && !IsLineEnd(m_buffer.back()))
            m_buffer += '\n';
        if (Process(true) && !m_started) {
            m_cellLine = 1;
            Fail(0, "a table", "nothing but blank lines and comments");
        }
    }
    if (m_error)
        return *m_error;
    m_table.dialect = m_dialect;
    for (Column& column : m_columns) {
        if (column.KeepsTexts())
            column.texts.resize(m_table.rows);
    }
    m_table.columns.assign(std::make_move_iterator(m_columns.begin()), std::make_move_iterator(m_columns.end()));
    return std::move(m_table);
}

/// Reads as many records as the buffer holds completely.
bool TableReader::Process(bool final)
{
    if (m_firstBytes) {
        if (m_buffer.size() < 3 && !final)
            return true;
        m_firstBytes = false;
        if (m_buffer.starts_with("\xEF\xBB\xBF"))
            m_buffer.erase(0, 3);
    }
    if (!m_started) {
        std::size_t sampleEnd = 0;
        if (!PassLeadingComments(final))
            return false;
        if (m_buffer.empty() || !FindSampleEnd(final, sampleEnd))
            return !m_error;
        if (!Start(std::string_view(m_buffer).substr(0, sampleEnd)))
            return false;
    }
    // A CR at the end may be half of a line break.
    std::size_t usable = m_buffer.size();
    if (!final) {
        if (usable > 0 && m_buffer.back() == '\r')
            --usable;
        while (usable > 0 && !IsLineEnd(m_buffer[usable - 1]))
            --usable;
    }
    char const* const first = m_buffer.data();
    char const* const rest = ReadRecords(first, first + usable);
    if (!rest)
        return false;
    m_buffer.erase(0, static_cast<std::size_t>(rest - first));
    m_cellLine = m_line;
    if (m_buffer.size() > kLongestLine + 2)
        return Fail(0, kLineLimit, kTooLong);
    if (final && !m_buffer.empty())
        return Fail(0, "a closing quote", "the end of the file");
    m_hasQuotes = m_buffer.find('"') != std::string::npos;
    return true;
}

/// Removes what comes before the first record.
bool TableReader::PassLeadingComments(bool final)
{
    char const* p = m_buffer.data();
    char const* const end = p + m_buffer.size();
    while (p < end) {
        char const* const lineEnd = FindLineEnd(p, end);
        bool const whole = final || lineEnd + 1 < end || (lineEnd < end && *lineEnd == '\n');
        if (!whole || !IsCommentOrBlank(p, lineEnd))
            break;
        if (!CheckLength(p, lineEnd))
            return false;
        p = SkipLineBreak(lineEnd, end);
        ++m_line;
        m_cellLine = m_line;
    }
    if (p != m_buffer.data()) {
        m_buffer.erase(0, static_cast<std::size_t>(p - m_buffer.data()));
        m_scanned = m_scannedBreaks = 0;
    }
    return true;
}

/// The sample is a fixed number of lines, or what is there of them in the length of one longest line. False while it
/// is not complete, or on an error.
bool TableReader::FindSampleEnd(bool final, std::size_t& end)
{
    char const* const first = m_buffer.data();
    char const* const last = first + m_buffer.size();
    while (m_scannedBreaks < kSampleLines) {
        char const* const lineEnd = FindLineEnd(first + m_scanned, last);
        bool const whole = lineEnd + 1 < last || (lineEnd < last && (final || *lineEnd == '\n'));
        std::size_t const next = static_cast<std::size_t>(SkipLineBreak(lineEnd, last) - first);
        if (whole && next <= kLongestLine + 2) {
            m_scanned = next;
            ++m_scannedBreaks;
            continue;
        }
        if (!final && m_buffer.size() <= kLongestLine + 2)
            return false;
        if (m_scannedBreaks == 0)
            return Fail(0, kLineLimit, kTooLong);
        break;
    }
    end = m_scanned;
    return true;
}

bool TableReader::Start(std::string_view sample)
{
    m_cellLine = m_line;
    if (LooksLikeJson(sample))
        return Fail(0, "a table in rows and columns", "JSON (convert it to CSV)");
    TableHints const hints { m_options, m_options.dateFormat ? &*m_options.dateFormat : nullptr, m_options.dateColumn };
    TableHead const head = DetectDialect(sample, hints);
    if (head.types.empty())
        return Fail(0, "a closing quote", "none in the first lines");
    if (head.types.size() > kMostColumns)
        return Fail(0, "at most " + std::to_string(kMostColumns) + " columns", "more");
    m_dialect = head.dialect;
    m_columns.resize(head.types.size());
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        m_columns[i].type = head.types[i];
    m_headerRead = !m_dialect.hasHeader;
    if (m_headerRead)
        ChooseColumns();
    m_started = true;
    return true;
}

/// Marks the columns whose values are kept.
void TableReader::ChooseColumns()
{
    std::vector<std::string> names;
    for (Column const& column : m_columns)
        names.push_back(column.name);
    m_dateColumn = m_options.dateColumn.empty() ? 0 : FindColumn(names, m_options.dateColumn);
    if (!m_options.wanted.empty()) {
        for (Column& column : m_columns)
            column.keep = column.wanted = false;
    }
    for (std::string const& text : m_options.wanted) {
        std::size_t const index = FindColumn(names, text);
        if (index < m_columns.size())
            m_columns[index].keep = m_columns[index].wanted = true;
    }
    for (std::size_t i = 0; i < std::min(m_options.leading, m_columns.size()); ++i) {
        m_columns[i].keep = m_columns[i].wanted = true;
        m_columns[i].kept = Column::Texts::OfWords;
    }
    ChooseTexts(names);
}

void TableReader::ChooseTexts(std::vector<std::string> const& names)
{
    if (m_options.texts) {
        for (Column& column : m_columns)
            column.kept = column.wanted ? Column::Texts::OfWords : Column::Texts::None;
    }
    std::size_t const words = m_options.wordColumn.empty() ? m_columns.size() : FindColumn(names, m_options.wordColumn);
    if (words < m_columns.size())
        m_columns[words].kept = Column::Texts::OfWords;
    for (std::string const& text : m_options.asTexts) {
        std::size_t const index = FindColumn(names, text);
        if (index < m_columns.size()) {
            m_columns[index].kept = Column::Texts::All;
            m_columns[index].wanted = true;
        }
    }
}

bool TableReader::ReadHeader(char const*& p, char const* end)
{
    std::size_t const unnamed = m_dialect.hasRowNames ? 1 : 0;
    for (std::size_t index = 0;; ++index) {
        TableCell cell;
        if (ReadCell(p, end, m_dialect.separator, cell) == CellStatus::TextAfterQuote)
            return Fail(index + 1, "a separator after the closing quote", QuoteForMessage({ p, 1 }));
        std::string name = CellText(cell);
        if (!IsUtf8(name)) {
            name = Utf8FromLatin1(name);
            m_table.headerWasLatin1 = true;
        }
        m_columns[unnamed + index].name = std::move(name);
        m_cellLine += CountLineBreaks(cell.text);
        if (IsLineEnd(*p))
            break;
        ++p;
    }
    m_headerRead = true;
    ChooseColumns();
    return true;
}

bool TableReader::CheckLength(char const* first, char const* last)
{
    if (static_cast<std::size_t>(last - first) <= kLongestLine)
        return true;
    m_cellLine = m_line;
    return Fail(0, kLineLimit, kTooLong);
}

/// False when a quote is open at the end.
bool TableReader::IsWholeRecord(char const* p, char const* end) const
{
    char const* const lineEnd = FindLineEnd(p, end);
    auto const length = static_cast<std::size_t>(lineEnd - p);
    if (!std::memchr(p, '"', length))
        return true;
    for (;; ++p) {
        TableCell cell;
        CellStatus const status = ReadCell(p, end, m_dialect.separator, cell);
        if (status == CellStatus::Unclosed)
            return false;
        if (status == CellStatus::TextAfterQuote || IsLineEnd(*p))
            return true;
    }
}

/// Returns where the first incomplete record begins, or null on an error.
char const* TableReader::ReadRecords(char const* p, char const* end)
{
    while (p < end) {
        m_cellLine = m_line;
        char const* const first = p;
        if (IsCommentOrBlank(p, end)) {
            p = FindLineEnd(p, end);
        } else {
            if (m_hasQuotes && !IsWholeRecord(p, end))
                return p;
            if (!m_headerRead) {
                if (!ReadHeader(p, end))
                    return nullptr;
            } else {
                p = ReadRow(p, end);
                if (!p) {
                    // Where the pieces end must not decide which of two faults is told.
                    CheckLength(first, FindLineEnd(first, end));
                    return nullptr;
                }
            }
        }
        if (!CheckLength(first, p))
            return nullptr;
        p = SkipLineBreak(p, end);
        m_line = m_cellLine + 1;
    }
    return p;
}

char const* TableReader::ReadRow(char const* p, char const* end)
{
    std::size_t cells = 0;
    for (;; ++p) {
        p = ReadValue(p, end, cells);
        if (!p)
            return nullptr;
        ++cells;
        if (IsLineEnd(*p))
            break;
        if (cells == m_columns.size()) {
            ++p;
            if (!CheckSurplus(p, end))
                return nullptr;
            break;
        }
    }
    if (cells < m_columns.size() && !PadRow(cells))
        return nullptr;
    if (m_line != m_table.rows + m_lineOfRowZero)
        NoteLineJump();
    ++m_table.rows;
    return p;
}

/// Keeps where the row begins: not in the line after the row before.
void TableReader::NoteLineJump()
{
    m_table.lineJumps.push_back({ m_table.rows, m_line });
    m_lineOfRowZero = m_line - m_table.rows;
}

/// Plain numbers, bare or in quotes, with nothing round them; everything else takes the general road.
inline char const* TableReader::ReadValue(char const* p, char const* end, std::size_t index)
{
    Column& column = m_columns[index];
    if (column.keep && column.type == ColumnType::Number && column.kept != Column::Texts::All) {
        bool const quoted = *p == '"';
        double value = 0.0;
        char const* last = ScanCellNumber(quoted ? p + 1 : p, m_dialect.decimalMark, value);
        if (last && (!quoted || *last++ == '"') && EndsPlainCell(last) && std::abs(value) <= kLargestNumber
            && !m_options.gaps.Contains(value)) {
            column.values.Append(value);
            return last;
        }
    }
    return ReadOtherCell(p, end, index);
}

/// True where a cell ends for certain: blanks that separate may also be the ones at the end of the line.
inline bool TableReader::EndsPlainCell(char const* p) const
{
    if (m_dialect.separator != ' ')
        return *p == m_dialect.separator || IsLineEnd(*p);
    return IsLineEnd(*p) || (*p == ' ' && p[1] > ' ');
}

char const* TableReader::ReadOtherCell(char const* p, char const* end, std::size_t index)
{
    TableCell cell;
    if (ReadCell(p, end, m_dialect.separator, cell) == CellStatus::TextAfterQuote) {
        Fail(index + 1, "a separator after the closing quote", QuoteForMessage({ p, 1 }));
        return nullptr;
    }
    if (m_columns[index].wanted)
        StoreCell(cell, index);
    if (cell.quoted)
        m_cellLine += CountLineBreaks(cell.text);
    return p;
}

void TableReader::AddGap(Column& column)
{
    ++column.gaps;
    Append(column, kGap);
}

void TableReader::Append(Column& column, double value)
{
    if (!column.keep)
        return;
    column.values.Append(value);
    if (column.isDateOrderAssumed)
        column.monthFirst.Append(value);
}

/// The date in the column's order, which the first date settles that exists in one order only. Until then both readings
/// are kept from the first date on that has two; its value is then appended here.
std::optional<double> TableReader::SettleOrder(Column& column, WrittenDate const& date) const
{
    if (m_options.dateOrder)
        return date.dayFirst;
    if (column.dateOrder && !column.isDateOrderAssumed)
        return column.dateOrder == DateOrder::DayFirst ? date.dayFirst : date.monthFirst;
    if (date.dayFirst == date.monthFirst)
        return date.dayFirst;
    if (date.dayFirst && date.monthFirst) {
        if (!column.isDateOrderAssumed)
            column.values.ForEach([&column](double value) { column.monthFirst.Append(value); });
        column.dateOrder = DateOrder::DayFirst;
        column.isDateOrderAssumed = true;
        return date.dayFirst;
    }
    column.dateOrder = date.dayFirst ? DateOrder::DayFirst : DateOrder::MonthFirst;
    if (column.isDateOrderAssumed && column.dateOrder == DateOrder::MonthFirst)
        column.values = std::move(column.monthFirst);
    column.monthFirst.Clear();
    column.isDateOrderAssumed = false;
    return date.dayFirst ? date.dayFirst : date.monthFirst;
}

void TableReader::AddText(Column& column, TableCell const& cell)
{
    std::string text = CellText(cell);
    // Rows before this one had gaps.
    column.texts.resize(m_table.rows);
    column.texts.push_back(IsUtf8(text) ? std::move(text) : Utf8FromLatin1(text));
}

void TableReader::StoreCell(TableCell const& cell, std::size_t index)
{
    Column& column = m_columns[index];
    if (m_options.gaps.Contains(cell.text)) {
        AddGap(column);
        return;
    }
    if (column.type == ColumnType::Unknown)
        column.type = ClassifyCell(cell, m_dialect.decimalMark, FormatOf(index), m_options.gaps);
    if (column.KeepsTexts())
        AddText(column, cell);
    if (column.type == ColumnType::Text) {
        if (column.firstText.empty())
            column.firstText = CellText(cell);
        column.keep = false;
        column.values.Clear();
        return;
    }
    if (column.misfit)
        return;
    std::optional<double> value;
    if (column.type == ColumnType::Number) {
        value = ParseWrittenNumber(cell.text, m_dialect.decimalMark);
        if (value && m_options.gaps.Contains(*value)) {
            AddGap(column);
            return;
        }
        if (value && std::abs(*value) > kLargestNumber) {
            SetMisfit(index, "a number between -1e300 and 1e300", cell.text);
            return;
        }
    } else if (DateFormat const* const format = FormatOf(index)) {
        value = format->Parse(cell.text);
    } else if (auto const date = ParseIsoDate(cell.text)) {
        value = date->days;
        m_table.shiftedDates += date->hasOffset;
    } else if (auto const written = ParseWrittenDate(cell.text, m_options.dateOrder)) {
        value = SettleOrder(column, *written);
        if (value && column.isDateOrderAssumed && column.keep) {
            column.values.Append(*value);
            column.monthFirst.Append(*written->monthFirst);
            return;
        }
    }
    if (!value)
        SetMisfit(index, ExpectedOf(column, FormatOf(index), m_dialect.decimalMark == ','), cell.text);
    else
        Append(column, *value);
}

void TableReader::SetMisfit(std::size_t index, std::string expected, std::string_view found)
{
    Column& column = m_columns[index];
    column.misfit = TableError { m_cellLine, index + 1, std::move(expected), QuoteForMessage(found) };
    column.keep = false;
    column.values.Clear();
    column.monthFirst.Clear();
}

/// An empty cell may follow the last column; anything else has no column.
bool TableReader::CheckSurplus(char const*& p, char const* end)
{
    TableCell cell;
    CellStatus const status = ReadCell(p, end, m_dialect.separator, cell);
    if (status == CellStatus::Cell && IsLineEnd(*p) && cell.text.empty())
        return true;
    std::string expected = m_columns.size() == 1 ? "1 cell" : std::to_string(m_columns.size()) + " cells";
    expected += m_dialect.hasHeader && !m_dialect.hasRowNames ? " as in the header" : " as in the first lines";
    return Fail(m_columns.size() + 1, std::move(expected), "one more: " + QuoteForMessage(cell.text));
}

bool TableReader::PadRow(std::size_t cells)
{
    ++m_table.shortRows;
    m_padded += m_columns.size() - cells;
    // Otherwise a small file of one long line and many short ones could ask for any amount of memory.
    if (m_padded > 4 * m_bytes + kMostColumns * 16)
        return Fail(cells + 1, std::to_string(m_columns.size()) + " cells",
            std::to_string(cells) + " in this line, and too few in many lines before");
    for (std::size_t i = cells; i < m_columns.size(); ++i)
        AddGap(m_columns[i]);
    return true;
}

Table ReadTableFile(std::string const& path, TableOptions options)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw TableReadError(path + ": " + std::generic_category().message(errno));
    constexpr std::size_t kPiece = std::size_t { 1 } << 18;
    std::string piece(kPiece, '\0');
    TableReader reader(std::move(options));
    bool isRead = true;
    while (isRead && file) {
        file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        isRead = reader.Feed({ piece.data(), static_cast<std::size_t>(file.gcount()) });
    }
    if (file.bad())
        throw TableReadError(path + ": " + std::generic_category().message(errno));
    auto result = reader.Finish();
    if (auto const* const error = std::get_if<TableError>(&result))
        throw TableReadError(path + ":" + error->ToText());
    Table table = std::get<Table>(std::move(result));
    table.name = path;
    return table;
}

std::variant<Table, TableError> ReadTable(std::string_view bytes, TableOptions const& options)
{
    // In pieces, so that the buffer stays small whatever the size of the table.
    constexpr std::size_t kPiece = std::size_t { 1 } << 20;
    TableReader reader(options);
    for (std::size_t i = 0; i < bytes.size() && reader.Feed(bytes.substr(i, kPiece)); i += kPiece) { }
    return reader.Finish();
}

} // namespace ombrel
