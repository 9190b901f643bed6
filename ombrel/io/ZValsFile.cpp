#include "ombrel/io/ZValsFile.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/foundation/VException.h"
#include "ombrel/io/reading/GridText.h"
#include "ombrel/model/TableData.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ombrel {

constinit CRuntimeClass const CZValsFile::kClass = PersistentClass<CZValsFile, CObject>("CZValsFile");

namespace {

constexpr char kBadHeader[] = "Number of data items on first line of file\nshould be exactly nine";
constexpr char kTooFewColumns[] = "Number of columns found is less the number specified";
constexpr char kTooFewRows[] = "Number of rows found is less the number specified";

template <typename... Args> CString Formatted(char const* format, Args const&... args)
{
    CString text;
    text.Format(format, args...);
    return text;
}

[[noreturn]] void Refuse(char const* message, DataFileFault place, CString const& expected, CString const& found)
{
    place.expected = expected;
    place.found = found;
    throw new CVFileException(message, place);
}

bool IsComment(CString line) { return line.Trim().Left(2) == CString("//"); }

/// The points of the grid along x and y, by the value order.
int PointsX(ZValsLayout const& layout) { return layout.valueOrder != 0 ? layout.cols : layout.rows; }
int PointsY(ZValsLayout const& layout) { return layout.valueOrder == 1 ? layout.rows : layout.cols; }

/// Puts lines of the file into the table, several at once: lines that run along y are columns of the table, and one
/// value alone would cost as much time as the eight that lie beside it in memory.
class LineStore {
public:
    static constexpr int kLines = 8;

    LineStore(CTableData& table, ZValsLayout const& layout, bool fallsX, bool fallsY)
        : m_table(table)
        , m_layout(layout)
        , m_fallsX(fallsX)
        , m_fallsY(fallsY)
    {
    }
    /// Makes room in the table, all 0.
    void Begin()
    {
        m_table.Initialise(PointsY(m_layout), PointsX(m_layout), 1);
        m_cols = static_cast<std::size_t>(m_layout.cols);
        m_values.resize(static_cast<std::size_t>(std::min(kLines, m_layout.rows)) * m_cols);
    }
    void Clear() { m_table.Clear(); }
    /// Room for the next line's values.
    std::span<double> Next()
    {
        return std::span(m_values).subspan(static_cast<std::size_t>(m_waiting) * m_cols, m_cols);
    }
    /// The line is complete.
    void Keep()
    {
        if (++m_waiting == kLines)
            Flush();
    }
    void Flush()
    {
        if (m_waiting == 0)
            return;
        for (double& v : std::span(m_values).first(static_cast<std::size_t>(m_waiting) * m_cols))
            v = v == kGap ? kGap : v + m_layout.zOffset;
        if (m_layout.valueOrder == 0)
            FlushColumns();
        else
            FlushRows();
        m_done += m_waiting;
        m_waiting = 0;
    }

private:
    int X(int i) const { return m_fallsX ? PointsX(m_layout) - 1 - i : i; }
    int Y(int i) const { return m_fallsY ? PointsY(m_layout) - 1 - i : i; }
    void FlushColumns()
    {
        for (int j = 0; j < m_layout.cols; ++j) {
            double* const row = m_table.GetRow(Y(j));
            for (int k = 0; k < m_waiting; ++k)
                row[X(m_done + k)] = m_values[static_cast<std::size_t>(k) * m_cols + static_cast<std::size_t>(j)];
        }
    }
    void FlushRows()
    {
        for (int k = 0; k < m_waiting; ++k) {
            double* const row = m_table.GetRow(Y(m_done + k));
            double const* const from = m_values.data() + static_cast<std::size_t>(k) * m_cols;
            if (m_fallsX)
                std::reverse_copy(from, from + m_cols, row);
            else
                std::copy_n(from, m_cols, row);
        }
    }

    CTableData& m_table;
    ZValsLayout const& m_layout;
    bool m_fallsX;
    bool m_fallsY;
    std::size_t m_cols = 0;
    std::vector<double> m_values;
    /// Lines in m_values, lines in the table.
    int m_waiting = 0;
    int m_done = 0;
};

DataFileFault PlaceOf(CString const& path, io::TextLines const& lines)
{
    return { .path = path, .line = lines.GetLine(), .offset = lines.GetOffset() };
}

/// Whether so many lines of so many items can be there at all: each takes a byte, with a break between two lines.
bool CanHold(std::size_t bytes, ZValsLayout const& layout)
{
    auto const values = static_cast<std::uint64_t>(layout.rows) * static_cast<std::uint64_t>(layout.cols);
    return values <= bytes;
}

/// Reads the lines of data into the store and returns the number of gaps. Where a file is too short for its header, the
/// lines are looked at all the same, to tell which of them is.
std::size_t ReadLines(
    io::TextLines& lines, io::Separator separator, ZValsLayout const& layout, LineStore& store, CString const& path)
{
    store.Clear();
    if (layout.rows < 1 || layout.cols < 1) {
        char const* const message = layout.rows < 1 ? kTooFewRows : kTooFewColumns;
        Refuse(message, PlaceOf(path, lines), "at least one row and one column",
            Formatted("%d and %d", layout.rows, layout.cols));
    }
    bool const canHold = CanHold(lines.GetRemaining(), layout);
    if (canHold)
        store.Begin();
    auto const cols = static_cast<std::size_t>(layout.cols);
    std::size_t gaps = 0;
    std::vector<double> counted;
    std::string_view line;
    for (int i = 0; i < layout.rows; ++i) {
        if (!lines.Next(line)) {
            store.Flush();
            Refuse(kTooFewRows, PlaceOf(path, lines), Formatted("%d lines of data", layout.rows), Formatted("%d", i));
        }
        if (!canHold)
            counted.resize(std::min(cols, line.size()));
        io::NumbersRead const read = io::ReadNumbers(line, separator, canHold ? store.Next() : std::span(counted));
        if (read.items < cols) {
            store.Flush();
            Refuse(kTooFewColumns, PlaceOf(path, lines), Formatted("%d numbers", layout.cols),
                Formatted("%u", read.items));
        }
        if (canHold)
            store.Keep();
        gaps += read.gaps;
    }
    store.Flush();
    return gaps;
}

} // namespace

int CZValsFile::ParseHeader(CString const& line, DataFileFault const& place)
{
    bool const commas = line.Find(u',') >= 0;
    CStringArray items;
    if (commas)
        CVUtils::SplitCSVString(line, items);
    else
        CVUtils::SplitSpaceDelimitedString(line, items);
    if (items.GetSize() != 9) {
        Refuse(kBadHeader, place, "nine items (grid type, value order, rows, columns, x, y, dx, dy, z offset)",
            Formatted("%d", items.GetSize()));
    }
    double reals[5] = {};
    for (int i = 0; i < 5; ++i) {
        CString const& item = items[4 + i];
        if (!CVUtils::StringToFloat(item, reals[i]) || !std::isfinite(reals[i]))
            Refuse(kBadHeader, place, Formatted("a number as item %d", 5 + i), Formatted("\"%s\"", item.Left(40)));
    }
    m_layout = { .rows = _wtoi(items[2]),
        .cols = _wtoi(items[3]),
        .gridType = _wtoi(items[0]),
        .valueOrder = _wtoi(items[1]),
        .zOffset = reals[4] };
    m_fileX = reals[0];
    m_fileY = reals[1];
    m_fileDx = reals[2];
    m_fileDy = reals[3];
    Update();
    return commas ? 1 : 0;
}

void CZValsFile::Update()
{
    m_layout.spacingX = std::abs(m_fileDx);
    m_layout.spacingY = std::abs(m_fileDy);
    m_layout.originX = m_fileX - (m_fileDx < 0.0 ? (PointsX(m_layout) - 1.0) * m_layout.spacingX : 0.0);
    m_layout.originY = m_fileY - (m_fileDy < 0.0 ? (PointsY(m_layout) - 1.0) * m_layout.spacingY : 0.0);
}

int CZValsFile::ReadHeader(CStdioFile& file)
{
    DataFileFault place { .path = file.GetFilePath() };
    CString line;
    bool found = false;
    do {
        ++place.line;
        place.offset = file.GetPosition();
        found = file.ReadString(line);
    } while (found && IsComment(line));
    return ParseHeader(found ? line : CString(), place);
}

int CZValsFile::ReadHeader(CString const& path)
{
    CStdioFile file(path, CFile::modeRead);
    return ReadHeader(file);
}

void CZValsFile::Read(CString const& path)
{
    if (!m_owner)
        throw new CInvalidArgException("A z-values file is read into an owner (SetOwner), and there is none.");
    m_readOK = 0;
    m_gaps = 0;
    std::vector<std::byte> bytes = ReadWholeFile(path);
    // Numbers end at a character that is none, the last one in the file too.
    bytes.push_back(std::byte { '\n' });
    io::TextLines lines({ reinterpret_cast<char const*>(bytes.data()), bytes.size() - 1 });
    std::string_view line;
    while (lines.Next(line) && IsComment(line))
        line = {};
    io::Separator const separator
        = ParseHeader(line, PlaceOf(path, lines)) ? io::Separator::Comma : io::Separator::WhiteSpace;
    if (m_layout.valueOrder != 0 && m_layout.valueOrder != 1)
        Refuse(kBadHeader, PlaceOf(path, lines), "0 or 1 as item 2, the value order",
            Formatted("%d", m_layout.valueOrder));
    m_owner->PlaceZVals(m_layout.originX, m_layout.originY, m_layout.spacingX, m_layout.spacingY);
    bool const isPlain = m_layout.gridType == 0 || m_layout.gridType == 1;
    m_owner->SetZValsCurveType(isPlain ? 0 : m_layout.gridType);
    if (isPlain)
        m_owner->SetZValsRadialGrid(m_layout.gridType);

    LineStore store(m_owner->GetZValsTable(), m_layout, m_fileDx < 0.0, m_fileDy < 0.0);
    m_gaps = ReadLines(lines, separator, m_layout, store, path);
    m_readOK = 1;
    m_owner->SetZValsRead();
    m_pathName = path;
}

void CZValsFile::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    f.Version(1);
    ZValsLayout& l = m_layout;
    f.Int(m_readOK, l.rows, l.cols).Double(l.originX, l.originY, l.spacingX, l.spacingY).String(m_pathName);
    f.Int(l.valueOrder, l.gridType).Double(l.zOffset);
}

} // namespace ombrel
