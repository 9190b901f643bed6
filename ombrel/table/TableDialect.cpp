#include "ombrel/table/TableDialect.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>

namespace ombrel {

namespace {

struct Record {
    std::vector<TableCell> cells;
    /// Text follows a closing quote: it is not cut where its cells end.
    bool isBroken = false;
};

constexpr std::array<char, 6> kSeparators { ',', ';', '\t', '|', ' ', 0 };

/// The sample cut into records by one separator; a record that the sample does not hold completely is left out.
std::vector<Record> CutSample(std::string_view sample, char separator)
{
    std::vector<Record> records;
    char const* p = sample.data();
    char const* const end = p + sample.size();
    while (p < end) {
        char const* const lineEnd = FindLineEnd(p, end);
        if (IsCommentOrBlank(p, lineEnd)) {
            p = SkipLineBreak(lineEnd, end);
            continue;
        }
        Record record;
        while (record.cells.size() <= kMostColumns) {
            TableCell cell;
            CellStatus const status = ReadCell(p, end, separator, cell);
            if (status == CellStatus::Unclosed)
                return records;
            // Where no separator does better, reading the records will report what follows the closing quote.
            if (status == CellStatus::TextAfterQuote) {
                record.isBroken = true;
                p = FindLineEnd(p, end);
            }
            record.cells.push_back(cell);
            if (*p == '\n' || *p == '\r')
                break;
            ++p;
        }
        records.push_back(std::move(record));
        p = SkipLineBreak(FindLineEnd(p, end), end);
    }
    return records;
}

/// How well a separator explains the sample.
struct Fit {
    char separator = 0;
    char decimalMark = '.';
    std::size_t columns = 0;
    double score = -1.0;
};

/// The decimal comma, when numbers with one outnumber those with a point. Without a separator a comma is none either:
/// it is what separates in lines that a quote left open keeps from being cut.
char FindDecimalMark(std::vector<Record> const& records, char separator, TableHints const& hints)
{
    if (hints.decimalMark)
        return *hints.decimalMark;
    if (separator == ',' || separator == 0)
        return '.';
    std::size_t commas = 0;
    std::size_t points = 0;
    for (Record const& record : records) {
        for (TableCell const& cell : record.cells) {
            std::size_t const comma = cell.text.rfind(',');
            std::size_t const point = cell.text.rfind('.');
            if (comma == std::string_view::npos && point == std::string_view::npos)
                continue;
            // Where there are both, the last one is the mark.
            bool const isComma = comma != std::string_view::npos && (point == std::string_view::npos || comma > point);
            if (isComma && ParseWrittenNumber(cell.text, ','))
                ++commas;
            else if (ParseWrittenNumber(cell.text, '.'))
                ++points;
        }
    }
    return commas > points ? ',' : '.';
}

/// The most frequent number of cells, the larger on a tie, and how many records have it. Broken ones have none.
std::pair<std::size_t, std::size_t> UsualWidth(std::vector<Record> const& records)
{
    std::map<std::size_t, std::size_t> counts;
    for (Record const& record : records) {
        if (!record.isBroken)
            ++counts[record.cells.size()];
    }
    std::pair<std::size_t, std::size_t> best { 0, 0 };
    for (auto const& [width, count] : counts) {
        if (count >= best.second)
            best = { width, count };
    }
    return best;
}

Fit Judge(std::vector<Record> const& records, char separator, TableHints const& hints)
{
    Fit fit { separator, FindDecimalMark(records, separator, hints), 0, -1.0 };
    auto const [width, count] = UsualWidth(records);
    if (records.empty() || (separator != 0 && width < 2))
        return fit;
    fit.columns = width;
    std::size_t cells = 0;
    std::size_t values = 0;
    // The first record may be a header, which says nothing about the values.
    for (std::size_t i = records.size() > 1 ? 1 : 0; i < records.size(); ++i) {
        for (TableCell const& cell : records[i].cells) {
            ++cells;
            values += ClassifyCell(cell, fit.decimalMark, nullptr, hints.gaps) != ColumnType::Text
                || (hints.dateFormat && hints.dateFormat->Parse(cell.text));
        }
    }
    double const consistency = static_cast<double>(count) / static_cast<double>(records.size());
    double const share = static_cast<double>(values) / static_cast<double>(std::max<std::size_t>(cells, 1));
    fit.score = consistency * (share + 0.1);
    return fit;
}

/// The kind that most cells of the column have; a number or a date on a tie, so that a stray text is reported.
ColumnType UsualType(std::array<std::size_t, 4> const& counts)
{
    auto const count = [&counts](ColumnType type) { return counts[static_cast<std::size_t>(type)]; };
    ColumnType best = ColumnType::Unknown;
    std::size_t most = 0;
    for (ColumnType const type : { ColumnType::Number, ColumnType::Date, ColumnType::Text }) {
        if (count(type) > most) {
            best = type;
            most = count(type);
        }
    }
    return best;
}

/// The column that --date-format speaks of; kMostColumns for none.
std::size_t FindDateColumn(Record const& first, TableHints const& hints, bool hasRowNames)
{
    if (!hints.dateFormat)
        return kMostColumns;
    if (hints.dateColumn.empty())
        return 0;
    std::vector<std::string> names(hasRowNames ? 1 : 0);
    for (TableCell const& cell : first.cells)
        names.push_back(CellText(cell));
    std::size_t const index = FindColumn(names, hints.dateColumn);
    return index < names.size() ? index : kMostColumns;
}

bool FirstRecordIsHeader(Record const& first, char decimalMark, TableHints const& hints)
{
    if (hints.header != HeaderChoice::Detect)
        return hints.header == HeaderChoice::Present;
    std::size_t const dateColumn = FindDateColumn(first, hints, false);
    for (std::size_t i = 0; i < first.cells.size(); ++i) {
        auto const* const format = i == dateColumn ? hints.dateFormat : nullptr;
        if (ClassifyCell(first.cells[i], decimalMark, format, hints.gaps) == ColumnType::Text)
            return true;
    }
    return false;
}

/// Whether every row has one cell more than the header, and not for a separator at its end.
bool RowsAreNamed(std::vector<Record> const& records, char separator)
{
    std::size_t const names = records.front().cells.size();
    bool lastIsUsed = false;
    for (std::size_t i = 1; i < records.size(); ++i) {
        auto const& cells = records[i].cells;
        if (cells.size() != names + 1)
            return false;
        // A bare number before a comma may as well be the whole part of one with a decimal comma.
        if (separator == ',' && !cells.front().quoted && ParseCellNumber(cells.front().text, '.'))
            return false;
        lastIsUsed = lastIsUsed || cells.back().quoted || !cells.back().text.empty();
    }
    return lastIsUsed;
}

} // namespace

char const* SkipLineBreak(char const* p, char const* end)
{
    if (p < end && *p == '\r')
        return p + 1 < end && p[1] == '\n' ? p + 2 : p + 1;
    return p < end ? p + 1 : p;
}

char const* FindLineEnd(char const* p, char const* end)
{
    while (p < end && *p != '\n' && *p != '\r')
        ++p;
    return p;
}

bool IsCommentOrBlank(char const* p, char const* end)
{
    while (p < end && (*p == ' ' || *p == '\t'))
        ++p;
    return p == end || *p == '\n' || *p == '\r' || *p == '#' || (*p == '/' && p + 1 < end && p[1] == '/');
}

CellStatus ReadCell(char const*& p, char const* end, char separator, TableCell& cell)
{
    auto const isBlank = [separator](char c) { return c == ' ' || (c == '\t' && separator != '\t'); };
    auto const endsCell = [separator](char c) {
        return c == '\n' || c == '\r' || (c == separator && separator != 0) || (c == '\t' && separator == ' ');
    };
    while (isBlank(*p))
        ++p;
    cell.quoted = *p == '"';
    char const* const first = cell.quoted ? p + 1 : p;
    if (cell.quoted) {
        for (++p;; p += 2) {
            while (p < end && *p != '"')
                ++p;
            if (p == end)
                return CellStatus::Unclosed;
            if (p + 1 == end || p[1] != '"')
                break;
        }
        cell.text = { first, p };
        ++p;
    } else {
        while (!endsCell(*p))
            ++p;
        char const* last = p;
        while (last > first && isBlank(last[-1]))
            --last;
        cell.text = { first, last };
    }
    char const* next = p;
    while (isBlank(*next))
        ++next;
    bool const endsRecord = *next == '\n' || *next == '\r';
    // Blanks that separate stay for the next cell to skip; those at the end of a line separate nothing.
    if (separator != ' ' || endsRecord)
        p = next;
    return endsCell(*p) ? CellStatus::Cell : CellStatus::TextAfterQuote;
}

std::string CellText(TableCell const& cell)
{
    std::string text(cell.text);
    if (!cell.quoted)
        return text;
    std::string single;
    for (std::size_t i = 0; i < text.size(); ++i) {
        single += text[i];
        if (text[i] == '"')
            ++i;
    }
    return single;
}

ColumnType ClassifyCell(TableCell const& cell, char decimalMark, DateFormat const* dateFormat, GapWords const& gaps)
{
    if (gaps.Contains(cell.text))
        return ColumnType::Unknown;
    if (dateFormat)
        return dateFormat->Parse(cell.text) ? ColumnType::Date : ColumnType::Text;
    if (auto const value = ParseWrittenNumber(cell.text, decimalMark))
        return gaps.Contains(*value) ? ColumnType::Unknown : ColumnType::Number;
    return ParseIsoDate(cell.text) || ParseWrittenDate(cell.text) ? ColumnType::Date : ColumnType::Text;
}

bool LooksLikeJson(std::string_view text)
{
    auto const next = [&text] {
        std::size_t const first = text.find_first_not_of(" \t\r\n");
        char const c = first == std::string_view::npos ? '\0' : text[first];
        text.remove_prefix(std::min(first, text.size() - 1) + 1);
        return c;
    };
    if (text.empty())
        return false;
    char const open = next();
    char const inside = text.empty() ? '\0' : next();
    return (open == '{' && (inside == '"' || inside == '}')) || (open == '[' && (inside == '{' || inside == '['));
}

std::size_t FindColumn(std::vector<std::string> const& names, std::string_view text)
{
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!names[i].empty() && names[i] == text)
            return i;
    }
    std::size_t number = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
    bool const whole = result.ec == std::errc() && result.ptr == text.data() + text.size();
    return whole && number >= 1 && number <= names.size() ? number - 1 : names.size();
}

TableHead DetectDialect(std::string_view sample, TableHints const& hints)
{
    Fit best;
    std::vector<Record> records;
    auto const consider = [&](char separator) {
        std::vector<Record> candidate = CutSample(sample, separator);
        Fit const fit = Judge(candidate, separator, hints);
        if (hints.separator || fit.score > best.score + 1e-9) {
            best = fit;
            records = std::move(candidate);
        }
    };
    if (hints.separator)
        consider(*hints.separator);
    for (char const separator : kSeparators) {
        if (!hints.separator && !(separator == ',' && hints.decimalMark == ','))
            consider(separator);
    }
    TableHead head;
    head.dialect.separator = best.separator;
    head.dialect.decimalMark = best.decimalMark;
    if (records.empty())
        return head;
    head.dialect.hasHeader = FirstRecordIsHeader(records.front(), best.decimalMark, hints);
    head.dialect.hasRowNames = head.dialect.hasHeader && RowsAreNamed(records, best.separator);
    std::size_t const dateColumn = FindDateColumn(records.front(), hints, head.dialect.hasRowNames);

    std::size_t columns = records.front().cells.size() + head.dialect.hasRowNames;
    if (!head.dialect.hasHeader) {
        for (Record const& record : records)
            columns = std::max(columns, record.cells.size());
    }
    std::vector<std::array<std::size_t, 4>> counts(columns, { 0, 0, 0, 0 });
    for (std::size_t i = head.dialect.hasHeader ? 1 : 0; i < records.size(); ++i) {
        auto const& cells = records[i].cells;
        for (std::size_t j = 0; j < std::min(columns, cells.size()); ++j) {
            auto const type
                = ClassifyCell(cells[j], best.decimalMark, j == dateColumn ? hints.dateFormat : nullptr, hints.gaps);
            ++counts[j][static_cast<std::size_t>(type)];
        }
    }
    for (auto const& count : counts)
        head.types.push_back(UsualType(count));
    if (dateColumn < columns)
        head.types[dateColumn] = ColumnType::Date;
    return head;
}

} // namespace ombrel
