// Loads any bytes as a colour map file: what comes of it is sound and gives colours; what loads stores and loads again.

#include "fuzz/MemoryFile.h"
#include "ombrel/colour/ColourMap.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace {

using namespace ombrel;
using namespace ombrel::fuzz;

bool IsAscending(CDoubleArray const& values)
{
    for (int i = 0; i < values.GetSize(); ++i) {
        if (std::isnan(values[i]) || (i > 0 && values[i] < values[i - 1]))
            return false;
    }
    return true;
}

void RequireSound(CColourMap const& map)
{
    for (int c = 0; c < CColourMap::kChannels; ++c) {
        Require(map.GetChannel(c).positions.GetSize() == map.GetChannel(c).values.GetSize());
        Require(IsAscending(map.GetChannel(c).positions));
    }
    ColourScale const& scale = map.GetScale();
    Require(map.GetColourTable().GetSize() == CColourMap::kTableSize);
    Require(scale.values.GetSize() == scale.indices.GetSize() && IsAscending(scale.values));
    Require(
        std::all_of(scale.indices.begin(), scale.indices.end(), [](DWORD i) { return i < CColourMap::kTableSize; }));
}

void LookUp(CColourMap const& map)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    double min = 0.0;
    double max = 0.0;
    map.GetRange(min, max);
    CDWordArray const& table = map.GetColourTable();
    for (double const value : { min, max, (min + max) / 2, min - 1, kInfinity, -kInfinity, std::nan(""), 1e308 })
        Require(std::find(table.begin(), table.end(), map.GetColour(value, min, max)) != table.end());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static MemoryFile file;
    file.Fill(data, size);
    CString const& path = file.GetPath();

    CString name;
    int const isNamed = CColourMap::GetNameFromFile(path, name);
    CColourMap map;
    int const isLoaded = map.Load(path);
    RequireSound(map);
    LookUp(map);
    if (!isLoaded)
        return 0;
    Require((isNamed != 0) == !CString(map.GetName()).Trim().IsEmpty());
    Require(map.Save(path) == 1);
    CColourMap again;
    Require(again.Load(path) == 1 && again.GetColourTable() == map.GetColourTable());
    again.SetColourMode(map.GetColourMode() == CColourMap::cmHSL ? CColourMap::cmRGB : CColourMap::cmHSL, 1);
    again.Update();
    again.Reset(-1);
    RequireSound(again);
    return 0;
}
