#include "ombrel/colour/ColourMap.h"
#include "ombrel/layout/ColourMapFiles.h"
#include "tests/tools/TestFolder.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/ColoursCommand.h"

#include <gtest/gtest.h>

#include <optional>

namespace ombrel::host {
namespace {

namespace fs = std::filesystem;

/// Where the build puts the maps that are installed; a test program does not stand beside them.
fs::path const kMaps = OMBREL_COLOUR_MAPS;

class ColourMaps : public testing::Test {
protected:
    std::string In(std::string const& name) const { return m_folder.In(name); }
    std::string Draw(
        std::vector<std::string> const& names, std::string const& output, std::optional<PictureSize> size = {}) const
    {
        EXPECT_EQ(StatusOf(names, In(output), size), kDone);
        return m_folder.Read(output);
    }
    static ExitStatus StatusOf(
        std::vector<std::string> const& names, std::string const& output, std::optional<PictureSize> size = {})
    {
        Options options;
        options.files = names;
        options.outputs = { output };
        options.size = size;
        try {
            RunColours(options, Messages(false));
        } catch (Failure const& failure) {
            return failure.GetStatus();
        }
        return kDone;
    }

    TestFolder m_folder;
};

TEST_F(ColourMaps, AreFoundByPresetNameHoweverWrittenOrByPath)
{
    CColourMap map;
    for (char const* const name :
        { "Extended Spectrum", "extended spectrum", "EXTENDED-SPECTRUM", "extended_Spectrum" }) {
        map = CColourMap();
        EXPECT_TRUE(LoadColourMap(name, map)) << name;
        EXPECT_EQ(map.GetName(), CString("Extended Spectrum"));
    }
    EXPECT_EQ(map.Save(In("Spectrum").c_str()), 1);
    EXPECT_TRUE(LoadColourMap("Spectrum", map));
    EXPECT_EQ(map.GetName(), CString("Spectrum")) << "a name goes before a file";
    EXPECT_TRUE(LoadColourMap(In("Spectrum"), map));
    EXPECT_EQ(map.GetName(), CString("Extended Spectrum"));
    EXPECT_FALSE(LoadColourMap("Extended", map));
    EXPECT_FALSE(LoadColourMap("", map));
    EXPECT_EQ(ListColourMaps().front(), "Spectrum");
}

TEST_F(ColourMaps, ThatAreInstalledMeetThePublishedFigures)
{
    struct {
        char const* name;
        COLORREF first, last;
    } const cases[] {
        { "cividis", RGB(0, 34, 78), RGB(254, 232, 56) },
        { "coolwarm", RGB(59, 76, 192), RGB(180, 4, 38) },
        { "inferno", RGB(0, 0, 4), RGB(252, 255, 164) },
        { "magma", RGB(0, 0, 4), RGB(252, 253, 191) },
        { "plasma", RGB(13, 8, 135), RGB(240, 249, 33) },
        { "turbo", RGB(48, 18, 59), RGB(122, 4, 3) },
        { "twilight", RGB(226, 217, 226), RGB(226, 217, 226) },
        { "viridis", RGB(68, 1, 84), RGB(253, 231, 37) },
    };
    for (auto const& c : cases) {
        CColourMap map;
        ASSERT_TRUE(LoadColourMap((kMaps / (c.name + std::string(".ombrelmap"))).string(), map)) << c.name;
        EXPECT_EQ(map.GetColour(0, 0, 1), c.first) << c.name;
        EXPECT_EQ(map.GetColour(1, 0, 1), c.last) << c.name;
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(kMaps), fs::directory_iterator()), std::ssize(cases));
}

TEST_F(ColourMaps, AreDrawnAsAStripTenStepsAndTheirLightness)
{
    // Rows of 110 pixels, from four maps on of 62, under a heading of 22 and between margins of 24.
    std::string const bmp = Draw({ "Greyscale" }, "a.bmp");
    constexpr int kWidth = 1000;
    constexpr int kHeight = 158;
    ASSERT_EQ(bmp.size(), 54U + kWidth * kHeight * 3);
    EXPECT_EQ(Draw({ "Greyscale", "Spectrum", "Extended Spectrum" }, "b.bmp").size(), 54U + kWidth * 378 * 3);
    EXPECT_EQ(
        Draw({ "Greyscale", "Spectrum", "Extended Spectrum", "Greyscale" }, "b.bmp").size(), 54U + kWidth * 306 * 3);
    auto const grey = [&bmp](int x, int y) {
        return int { static_cast<unsigned char>(
            bmp[static_cast<std::size_t>(54 + 3 * ((kHeight - 1 - y) * kWidth + x))]) };
    };
    // The strip, from black to white without a gap between its frame's lines, in 46 to 101.
    int left = 0;
    while (grey(left, 60) == 255)
        ++left;
    int right = left + 1;
    while (grey(right, 60) >= grey(right - 1, 60) || right == left + 1)
        ++right;
    EXPECT_LT(grey(left + 1, 60), 3);
    EXPECT_GT(grey(right - 1, 60), 252);
    EXPECT_GT(right - left, kWidth / 2);
    // The steps below it, to 134.
    CColourMap map;
    ASSERT_TRUE(LoadColourMap("Greyscale", map));
    for (int step = 0; step < 10; ++step) {
        int const middle = left + (right - left) * (2 * step + 1) / 20;
        BYTE const expected = GetRValue(map.GetColourTable()[(2 * step * (CColourMap::kTableSize - 1) + 9) / 18]);
        EXPECT_EQ(grey(middle, 108), expected) << step;
        EXPECT_EQ(grey(middle, 130), expected) << step;
    }
    // Grey 178 in its middle looks 72.6 % as light as white: where the curve is, in 48 to 132.
    int curve = right + 1;
    while (grey(curve, 60) == 255)
        ++curve;
    curve = (curve + 975) / 2;
    int darkest = 50;
    for (int y = 50; y < 130; ++y)
        darkest = grey(curve, y) < grey(curve, darkest) ? y : darkest;
    EXPECT_NEAR(darkest, 131 - 0.726 * 83, 1.5);

    std::string const svg = Draw({ "Greyscale", "spectrum" }, "a.svg");
    EXPECT_NE(svg.find(">Greyscale<"), std::string::npos);
    EXPECT_NE(svg.find(">Spectrum<"), std::string::npos);
    for (PictureSize const size : { PictureSize { 1, 1 }, { 30, 4000 }, { 3000, 20 } })
        Draw({}, "a.png", size);
}

TEST_F(ColourMaps, AreListedInColumns)
{
    testing::internal::CaptureStdout();
    RunColours(Options(), Messages(false));
    std::string const list = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(list.starts_with("name               kind ")) << list;
    EXPECT_NE(list.find("\nExtended Spectrum  preset "), std::string::npos) << list;
    EXPECT_EQ(list.find(" \n"), std::string::npos) << list;
}

TEST_F(ColourMaps, ThatCannotBeReadAreToldApart)
{
    m_folder.Write("table.csv", "1,2,3\n");
    EXPECT_EQ(StatusOf({ "nosuch" }, In("a.png")), kUsageFault);
    EXPECT_EQ(StatusOf({ In("table.csv") }, In("a.png")), kDataFault);
    ASSERT_EQ(CColourMap().Save(In("map.png").c_str()), 1);
    EXPECT_EQ(StatusOf({ In("map.png") }, In("map.png")), kUsageFault) << "over the map itself";
    EXPECT_EQ(m_folder.List(), (std::vector<std::string> { "map.png", "table.csv" }));
}

} // namespace
} // namespace ombrel::host
