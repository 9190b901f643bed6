// Reads any bytes as a z-values file, and once more item by item: both fill the same table or refuse the file alike.

#include "fuzz/MemoryFile.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/foundation/VException.h"
#include "ombrel/io/ZValsFile.h"
#include "ombrel/model/TableData.h"

#include <cmath>

namespace {

using namespace ombrel;
using namespace ombrel::fuzz;

struct Owner : ZValsOwner {
    void PlaceZVals(double, double, double dx, double dy) override { Require(dx >= 0.0 && dy >= 0.0); }
    void SetZValsCurveType(int) override { }
    void SetZValsRadialGrid(int on) override { Require(on == 0 || on == 1); }
    CTableData& GetZValsTable() override { return table; }
    void SetZValsRead() override { isRead = true; }

    CTableData table;
    bool isRead = false;
};

/// Compares the table with the items of the file's lines.
void RequireSameValues(
    CStdioFile& file, bool commas, ZValsLayout const& layout, CTableData const& table, bool fallsX, bool fallsY)
{
    Require(table.GetNumRows() == (layout.valueOrder == 0 ? layout.cols : layout.rows));
    Require(table.GetNumCols() == (layout.valueOrder == 0 ? layout.rows : layout.cols));
    CString line;
    CStringArray items;
    for (int i = 0; i < layout.rows; ++i) {
        Require(file.ReadString(line));
        if (commas)
            CVUtils::SplitCSVString(line, items);
        else
            CVUtils::SplitSpaceDelimitedString(line, items);
        Require(items.GetSize() >= layout.cols);
        for (int j = 0; j < layout.cols; ++j) {
            int x = layout.valueOrder == 0 ? i : j;
            int y = layout.valueOrder == 0 ? j : i;
            x = fallsX ? table.GetNumCols() - 1 - x : x;
            y = fallsY ? table.GetNumRows() - 1 - y : y;
            double const found = table.GetAt(y, x);
            double value = 0.0;
            bool const isNumber = CVUtils::StringToFloat(items[j], value) && std::isfinite(value);
            // Zeros of unusual spelling are numbers to the reader alone.
            if (isNumber)
                Require(found == value + layout.zOffset || value == kGap);
            else
                Require(found == kGap || found == layout.zOffset);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static MemoryFile file;
    file.Fill(data, size);
    Owner owner;
    CZValsFile reader;
    reader.SetOwner(&owner);
    bool const isRead = Succeeds([&] { reader.Read(file.GetPath()); });
    Require(isRead == owner.isRead && isRead == (reader.GetReadOK() == 1));
    Require(owner.table.GetDataSize() <= 8 * size);
    if (!isRead)
        return 0;

    CStdioFile lines(file.GetPath(), CFile::modeRead);
    CString header;
    do {
        Require(lines.ReadString(header));
    } while (CString(header).Trim().Left(2) == CString("//"));
    bool const commas = header.Find(u',') >= 0;
    CStringArray items;
    if (commas)
        CVUtils::SplitCSVString(header, items);
    else
        CVUtils::SplitSpaceDelimitedString(header, items);
    double dx = 0.0;
    double dy = 0.0;
    Require(items.GetSize() == 9 && CVUtils::StringToFloat(items[6], dx) && CVUtils::StringToFloat(items[7], dy));
    RequireSameValues(lines, commas, reader.GetLayout(), owner.table, dx < 0.0, dy < 0.0);
    return 0;
}
