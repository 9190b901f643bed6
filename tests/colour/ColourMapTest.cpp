#include "ombrel/colour/ColourMap.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/gdi/Palette.h"
#include "tests/model/ArchiveBytes.h"
#include "tests/platform/framework/Refused.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <tuple>

namespace ombrel {
namespace {

using test::Bytes;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

/// The protected steps.
struct OpenMap : CColourMap {
    using CColourMap::GetColours;
    using CColourMap::GetYVal;
};

void ExpectSound(CColourMap const& map)
{
    auto const ascending = [](CDoubleArray const& a) {
        return std::ranges::is_sorted(a.GetArray())
            && std::ranges::none_of(a.GetArray(), [](double v) { return v != v; });
    };
    for (int c = 0; c < CColourMap::kChannels; ++c) {
        EXPECT_EQ(map.GetChannel(c).positions.GetSize(), map.GetChannel(c).values.GetSize());
        EXPECT_TRUE(ascending(map.GetChannel(c).positions));
    }
    EXPECT_EQ(map.GetColourTable().GetSize(), 1000);
    EXPECT_EQ(map.GetScale().values.GetSize(), map.GetScale().indices.GetSize());
    EXPECT_TRUE(ascending(map.GetScale().values));
    for (DWORD const i : map.GetScale().indices)
        EXPECT_LT(i, 1000U);
}

/// version; red channel's positions and number of values; entries of the table; scale.
struct Layout {
    int version = 2;
    std::vector<double> positions { 0.5, 2 };
    int values = 2;
    int table = 1000;
    int firstColour = 0;
    std::vector<double> scale { 7 };
    std::vector<int> indices { 321 };
};

Bytes MapBytes(Layout const& layout)
{
    Bytes bytes;
    bytes.Int(layout.version).Text("Mine").Double(-1, 3).Int(1);
    bytes.Int(1, 2).Double(3, 4).Int(5, 6, 7).Double(8, 9).Int(10);
    bytes.Short(static_cast<int>(layout.positions.size()));
    for (double const x : layout.positions)
        bytes.Double(x);
    bytes.Short(layout.values);
    for (int i = 0; i < layout.values; ++i)
        bytes.Add(Bytes::Of(std::vector(1, std::byte { 9 })));
    for (int c = 0; c < 2; ++c)
        bytes.Short(1).Double(4).Short(1).Add(Bytes::Of(std::vector(1, std::byte { 5 })));
    bytes.Short(layout.table);
    for (int i = 0; i < layout.table; ++i)
        bytes.Int(i == 0 ? layout.firstColour : i);
    bytes.Short(static_cast<int>(layout.scale.size()));
    for (double const v : layout.scale)
        bytes.Double(v);
    bytes.Short(static_cast<int>(layout.indices.size()));
    for (int const i : layout.indices)
        bytes.Int(i);
    if (layout.version >= 2)
        bytes.Short(2).Double(1, 2);
    return bytes;
}

/// A map whose table entry i is the colour i, as no control points could make it.
CColourMap NumberedMap(ColourScale const& scale = {})
{
    CColourMap map;
    EXPECT_TRUE(test::Load(map, MapBytes({ .scale = {}, .indices = {} })));
    EXPECT_EQ(map.SetScale(scale), 1);
    return map;
}

TEST(ColourMap, LooksUpTheNearestEntryAndNeverOneOutsideTheTable)
{
    CColourMap const map = NumberedMap();
    struct Case {
        double value, min, max;
        COLORREF index;
    };
    for (Case const& c : { Case { 0.0, 0.0, 1.0, 0 }, { 1.0, 0.0, 1.0, 999 }, { 0.5, 0.0, 1.0, 500 },
             { 0.4999, 0.0, 1.0, 499 }, { -3.0, 0.0, 1.0, 0 }, { 7.0, 0.0, 1.0, 999 }, { -1e308, -1.0, 1e-300, 0 },
             // A range that runs downwards runs the table backwards.
             { 5.0, 5.0, 1.0, 0 }, { 1.0, 5.0, 1.0, 999 }, { 4.0, 5.0, 1.0, 250 }, { 9.0, 5.0, 1.0, 0 },
             // What equals an end in single precision is that end.
             { 1.0 + 1e-9, 1.0, 1.0 + 4e-9, 0 }, { 1e9 - 1, 0.0, 1e9, 999 },
             // A range of no width.
             { 2.0, 2.0, 2.0, 0 }, { 1.0, 2.0, 2.0, 0 }, { 3.0, 2.0, 2.0, 999 }, { kNotANumber, 0.0, 1.0, 0 },
             { kInfinity, 0.0, 1.0, 999 }, { -kInfinity, 0.0, 1.0, 0 }, { 0.5, kNotANumber, 1.0, 0 },
             { 0.5, 0.0, kNotANumber, 0 }, { 0.0, -kInfinity, kInfinity, 0 } })
        EXPECT_EQ(map.GetColour(c.value, c.min, c.max), c.index) << c.value << " in " << c.min << ", " << c.max;

    // Many at once are looked up like one.
    std::vector<double> values(1500);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<double>(i) / 1000.0 - 0.2;
    values[700] = kNotANumber;
    for (auto const& [min, max] : { std::pair(0.0, 1.0), std::pair(1.0, 0.25), std::pair(0.5, 0.5) }) {
        std::vector<COLORREF> colours(values.size());
        map.GetColours(values, min, max, colours);
        for (std::size_t i = 0; i < values.size(); ++i)
            ASSERT_EQ(colours[i], map.GetColour(values[i], min, max)) << values[i];
    }
}

TEST(ColourMap, ScaleIsReadBetweenItsNeighboursAndOutsideTowardsTheRange)
{
    struct Case {
        ColourScale scale;
        std::vector<std::pair<double, COLORREF>> found;
    };
    // Of equal values the first is found; looked up in -2 … 8.
    for (Case const& c : {
             Case { { { 3 }, {}, { 500 } },
                 { { 3, 500 }, { -2, 0 }, { 0.5, 250 }, { 8, 999 }, { 5.5, 750 }, { 9, 999 } } },
             Case { { { 0, 2, 4 }, {}, { 100, 300, 200 } },
                 { { -2, 0 }, { -1, 50 }, { 0, 100 }, { 1, 200 }, { 2, 300 }, { 3, 251 }, { 4, 201 }, { 6, 600 },
                     { -3, 0 } } },
             Case { { { 0, 2, 2, 4 }, {}, { 100, 300, 700, 900 } },
                 { { 1.99, 299 }, { 2, 300 }, { 2.01, 701 }, { 4, 900 } } },
         }) {
        CColourMap const map = NumberedMap(c.scale);
        for (auto const& [value, index] : c.found)
            EXPECT_EQ(map.GetColour(value, -2, 8), index) << value << " of " << c.scale.values.GetSize();
    }
    ColourScale const scale { { 1, 2 }, {}, { 300, 600 } };
    CColourMap map = NumberedMap(scale);
    EXPECT_EQ(map.GetColour(0.0, 1.0, 2.0), 0U) << "no width between the least and the first value";
    EXPECT_EQ(map.GetColour(kNotANumber, 0.0, 3.0), 0U);
    EXPECT_EQ(map.GetColour(kInfinity, 0.0, 3.0), 999U);
    for (ColourScale const& bad : { ColourScale { { 2, 1 }, {}, { 1, 2 } }, { { 1, 2 }, {}, { 1 } },
             { { kNotANumber }, {}, { 1 } }, { { 1, 2 }, {}, { 1, 1000 } } })
        EXPECT_EQ(map.SetScale(bad), 0);
    EXPECT_EQ(map.GetScale().values, scale.values);
}

TEST(ColourMap, TableRunsStraightBetweenControlPoints)
{
    OpenMap map;
    struct Case {
        CDoubleArray positions;
        CByteArray values;
        std::vector<int> table;
    };
    // Entries lie one apart; of equal positions the first is met.
    for (Case const& c : { Case { { 0, 4 }, { 10, 20 }, { 10, 13, 15, 18, 20 } },
             Case { { 0, 1, 4 }, { 200, 0, 7 }, { 200, 0, 2, 5, 7 } },
             Case { { 0, 2, 2, 4 }, { 10, 20, 100, 200 }, { 10, 15, 20, 150, 200 } },
             Case { { 0, 2, 4 }, { 239, 250, 255 }, { 239, 245, 250, 253, 255 } } }) {
        CByteArray out;
        map.GetColours(5, c.positions, c.values, out);
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(out[i], c.table[static_cast<std::size_t>(i)]) << c.values[0] << " at " << i;
            EXPECT_EQ(map.GetYVal(i, c.positions, c.values), c.table[static_cast<std::size_t>(i)]);
        }
    }
    map.SetColourMode(CColourMap::cmHSL, 0);
    EXPECT_EQ(map.GetYVal(1, { 0, 2 }, { 239, 250 }), 239) << "hues and the like end there";
    EXPECT_EQ(map.GetYVal(-1, { 0, 2 }, { 239, 250 }), 0);
    CDWordArray colours { 1, 2, 3 };
    map.CreateSpectrum();
    map.GetColours(1, colours);
    EXPECT_EQ(colours, CDWordArray { map.GetColourTable()[0] });
    map.GetColours(-5, colours);
    EXPECT_TRUE(colours.IsEmpty());
    std::vector<COLORREF> room(2);
    EXPECT_TRUE(test::Refused([&] { map.GetColours(std::vector<double>(3), 0.0, 1.0, room); }));
    for (int const channel : { -1, 3 })
        EXPECT_TRUE(test::Refused([&] { return map.GetChannel(channel).values; }));
}

TEST(ColourMap, PresetsRunBetweenTheirColours)
{
    CColourMap map;
    EXPECT_EQ(map.IsDefault(), 1);
    EXPECT_EQ(map.GetColour(0.3, 0, 1), 0U);
    EXPECT_EQ(map.Load("Spectrum"), 1);
    EXPECT_EQ(map.IsDefault(), 0);
    CDWordArray const spectrum = map.GetColourTable();
    EXPECT_EQ(map.GetColour(0, 0, 1), RGB(20, 1, 252));
    EXPECT_EQ(map.GetColour(1, 0, 1), RGB(252, 1, 1));
    EXPECT_EQ(map.Load("Extended Spectrum"), 1);
    EXPECT_EQ(map.GetColourTable()[999], spectrum[999]);
    EXPECT_GT(GetRValue(map.GetColour(0, 0, 1)), 200) << "magenta";
    EXPECT_EQ(map.Load("Greyscale"), 1);
    EXPECT_EQ(map.GetPathName(), CString("Greyscale"));
    EXPECT_EQ(map.GetChannel(2).values[5], 122); // 238 · √(5/19)
    EXPECT_EQ(map.GetColour(1, 0, 1), RGB(253, 253, 253));
    EXPECT_EQ(map.Load("greyscale"), 0);

    map.SetRange(3, 4);
    map.CreateGraded(RGB(200, 225, 224)); // lightness 200
    double min = 0.0;
    double max = 0.0;
    map.GetRange(min, max);
    EXPECT_EQ(min, 3.0);
    EXPECT_EQ(map.GetChannel(2).values, (CByteArray { 200, 239 }));
    EXPECT_EQ(map.GetColourMode(), CColourMap::cmHSL);

    PALETTEENTRY const entries[] { { 1, 2, 3, 9 }, { 0, 255, 7, 9 }, { 30, 20, 10, 9 } };
    CPalette const palette(entries);
    map.CreateColourmap(&palette);
    EXPECT_EQ(map.GetName(), CString("Colormap"));
    EXPECT_EQ(map.GetColour(2, 0, 2), RGB(30, 20, 10));
    map.GetRange(min, max);
    EXPECT_EQ(max, 2.0);
    CPalette const none;
    map.CreateColourmap(&none);
    EXPECT_EQ(map.GetColour(1, 0, 2), 0U);
}

TEST(ColourMap, GradedColourRisesByItsPlaceInTheRange)
{
    COLORREF const base = RGB(0, 0, 128);
    auto const lightness = [](COLORREF c) {
        BYTE h, s, l;
        CVUtils::RGBToHSL(GetRValue(c), GetGValue(c), GetBValue(c), h, s, l);
        return static_cast<int>(l);
    };
    EXPECT_EQ(CColourMap::GetGradedColour(base, 3, 2, 2), base);
    EXPECT_EQ(CColourMap::GetGradedColour(base, 3, 4, 2), base);
    EXPECT_EQ(CColourMap::GetGradedColour(base, 2, 2, 4), base);
    EXPECT_EQ(lightness(CColourMap::GetGradedColour(base, 3, 2, 4)), lightness(base) + 37);
    EXPECT_EQ(lightness(CColourMap::GetGradedColour(base, 4, 2, 4)), lightness(base) + 75);
    EXPECT_EQ(CColourMap::GetGradedColour(0xFFFFFF, 1, 0, 1), RGB(254, 254, 254));
}

TEST(ColourMap, ChangeOfModeKeepsColoursOrResets)
{
    PALETTEENTRY const entries[] { { 255, 0, 0, 0 }, { 0, 128, 0, 0 }, { 255, 255, 255, 0 } };
    CPalette const palette(entries);
    CColourMap map;
    map.CreateColourmap(&palette);
    CDWordArray const table = map.GetColourTable();
    map.SetColourMode(CColourMap::cmHSL, 1);
    EXPECT_EQ(map.GetChannel(0).values, (CByteArray { 0, 80, 0 }));
    EXPECT_EQ(map.GetChannel(2).values, (CByteArray { 120, 60, 240 }));
    EXPECT_EQ(map.GetColourTable(), table) << "the table waits for Update";
    map.SetColourMode(CColourMap::cmRGB, 1);
    map.Update();
    EXPECT_EQ(map.GetColour(1, 0, 2), table[500]);
    EXPECT_EQ(map.GetColour(2, 0, 2), table[999]);
    map.SetColourMode(CColourMap::cmRGB, 0);
    EXPECT_EQ(map.GetChannel(0).positions.GetSize(), 3) << "no change, no reset";
    ASSERT_EQ(map.SetChannel(1, { 0, 1, 3 }, { 1, 2, 3 }), 1);
    map.SetRange(9, 5);
    map.SetColourMode(CColourMap::cmHSL, 1);
    EXPECT_EQ(map.GetChannel(1).positions, (CDoubleArray { 5, 9 }));
    EXPECT_EQ(map.GetChannel(1).values, (CByteArray { 0, 0 }));
    ExpectSound(map);
    EXPECT_EQ(map.SetChannel(0, { 1, 0 }, { 1, 2 }), 0);
    EXPECT_EQ(map.SetChannel(0, { 0, 1 }, { 1 }), 0);
    EXPECT_EQ(map.SetChannel(3, { 0, 1 }, { 1, 2 }), 0);
}

TEST(ColourMap, StoresItsFieldsInOrder)
{
    CColourMap map;
    ASSERT_TRUE(test::Load(map, MapBytes({})));
    EXPECT_EQ(test::Stored(map), MapBytes({}));
    auto const& [v1, v2, v3, v4, v5, v6, v7, v8, v9, v10] = map.settings;
    EXPECT_EQ(std::tuple(v1, v2, v3, v4, v5, v6, v7, v8, v9, v10), std::tuple(1, 2, 3.0, 4.0, 5, 6, 7, 8.0, 9.0, 10));
    EXPECT_EQ(map.GetChannel(0).values, (CByteArray { 9, 9 }));
    EXPECT_EQ(map.GetColour(7, 0, 1), 321U);
    ASSERT_TRUE(test::Load(map, MapBytes({ .firstColour = 0x7F123456 })));
    EXPECT_EQ(map.GetColourTable()[0], 0x123456U) << "colours have 24 bits";
    ASSERT_TRUE(test::Load(map, MapBytes({ .version = 1, .scale = { 2, 1 } })));
    EXPECT_EQ(map.GetScale().values.GetSize() + map.GetScale().indices.GetSize(), 0);
    ASSERT_TRUE(test::Load(map, MapBytes({ .indices = { 1000000 } })));
    ExpectSound(map);
}

TEST(ColourMap, DamageIsRefusedAndLeavesASoundMap)
{
    for (Layout const& bad : { Layout { .positions = { 2, 1 } }, { .positions = { kNotANumber, 1 } },
             { .positions = { 1, kNotANumber } }, { .values = 3 }, { .table = 999 }, { .table = 1001 }, { .table = 0 },
             { .scale = { 1, 2 } }, { .scale = { 2, 1 }, .indices = { 1, 2 } }, { .scale = { kNotANumber } } }) {
        CColourMap map;
        EXPECT_FALSE(test::Load(map, MapBytes(bad)));
        ExpectSound(map);
    }
    std::vector<std::byte> const whole = MapBytes({}).Get();
    for (std::size_t i = 0; i<whole.size(); i += i> 250 && i < 4200 ? 97 : 1) {
        CColourMap map;
        EXPECT_FALSE(test::Load(map, Bytes::Of(std::span(whole).first(i)))) << i;
        ExpectSound(map);
    }
}

TEST(ColourMap, FilesKeepAMapAndItsName)
{
    std::filesystem::path const folder = std::filesystem::temp_directory_path() / ("maps-" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    CString const path((folder / "map").string());
    CColourMap map;
    map.CreateSpectrum();
    map.SetName("  Île  ");
    // Whoever has the old file open keeps it: a new one takes its place.
    std::ofstream(folder / "map") << "old";
    std::filesystem::create_hard_link(folder / "map", folder / "held");
    EXPECT_EQ(map.Save(path), 1);
    EXPECT_EQ(std::filesystem::file_size(folder / "held"), 3u);
    EXPECT_EQ(map.GetPathName(), path);
    CString name;
    EXPECT_EQ(CColourMap::GetNameFromFile(path, name), 1);
    EXPECT_EQ(name, CString("Île"));
    CColourMap loaded = NumberedMap({ { 1 }, {}, { 2 } });
    EXPECT_EQ(loaded.Load(path), 1);
    EXPECT_EQ(test::Stored(loaded), test::Stored(map));
    EXPECT_EQ(loaded.GetPathName(), path);

    Bytes const before = test::Stored(loaded);
    EXPECT_EQ(loaded.Load(path + CString("-missing")), 0);
    EXPECT_EQ(loaded.Load(CString(folder.string())), 0);
    EXPECT_EQ(test::Stored(loaded), before);
    EXPECT_EQ(loaded.Save(path + CString("/within")), 0);
    std::filesystem::resize_file(folder / "map", 80);
    EXPECT_EQ(loaded.Load(path), 0);
    EXPECT_EQ(loaded.GetPathName(), path);
    ExpectSound(loaded);
    std::filesystem::resize_file(folder / "map", 10);
    EXPECT_EQ(CColourMap::GetNameFromFile(path, name), 0);
    // A table that was stored is computed anew.
    std::ofstream(folder / "map", std::ios::binary)
        .write(reinterpret_cast<char const*>(MapBytes({}).Get().data()),
            static_cast<std::streamsize>(MapBytes({}).Get().size()));
    EXPECT_EQ(loaded.Load(path), 1);
    EXPECT_NE(loaded.GetColourTable()[999], 999U);
    std::filesystem::remove_all(folder);
}

TEST(SpectrumTables, RunFromBlueToRedSmoothlyOrInBands)
{
    std::vector<double> channels[3];
    double* lut[3];
    for (int c = 0; c < 3; ++c)
        channels[c].resize(1000);
    std::ranges::transform(channels, lut, [](auto& channel) { return channel.data(); });
    auto const hueAt = [&lut](int i) {
        double h, s, l;
        CVUtils::RGBToHSL(lut[0][i], lut[1][i], lut[2][i], &h, &s, &l);
        return h;
    };
    CVUtils::MakeSpectrumLUT(lut);
    EXPECT_NEAR(hueAt(0), 0.6875, 1e-12);
    EXPECT_NEAR(hueAt(400), 0.4125, 1e-12);
    EXPECT_NEAR(hueAt(999), 0.0006875, 1e-12);

    struct Case {
        int steps, useFirstWidth;
        double firstWidth;
        std::vector<int> ends;
    };
    // The band of entry 586 in the last case: 414 / (0.828 · 500) is less than 1, and 1 + that is rounded to 2.
    for (Case const& c : { Case { 4, 0, 0.9, { 250, 500, 750, 1000 } }, { 2, 1, 0.9, { 900, 1000 } },
             { 3, 1, 0.0, { 0, 500, 1000 } }, { 3, 1, 1.0, { 1000, 1000, 1000 } }, { 2, 1, kNotANumber, { 0, 1000 } },
             { 1, 0, 0.0, { 500, 1000 } }, { 3, 1, 0.172, { 172, 587, 1000 } } }) {
        CVUtils::MakeSharpSpectrumLUT(lut, c.steps, c.useFirstWidth, c.firstWidth);
        auto const last = static_cast<int>(c.ends.size()) - 1;
        for (int k = 0, i = 0; k <= last; ++k) {
            for (; i < c.ends[static_cast<std::size_t>(k)]; ++i)
                ASSERT_NEAR(hueAt(i), (last - k) * 0.6875 / last, 1e-12) << c.steps << " bands, entry " << i;
        }
    }
    CVUtils::MakeSharpSpectrumLUT(lut, std::numeric_limits<int>::max(), 1, 0.3335);
    EXPECT_NEAR(hueAt(0), 0.6875, 1e-12);
}

} // namespace
} // namespace ombrel
