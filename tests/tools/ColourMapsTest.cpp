#include "tools/ombrel/chart/ColourMaps.h"
#include "ombrel/colour/ColourMap.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/ColoursCommand.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

namespace ombrel::host {
namespace {

namespace fs = std::filesystem;

/// Where the build puts the maps that are installed; a test program does not stand beside them.
fs::path const kMaps = OMBREL_COLOUR_MAPS;

class ColourMaps : public testing::Test {
protected:
    ColourMaps()
        : m_folder(fs::temp_directory_path() / ("colours-" + std::to_string(getpid())))
    {
        fs::create_directory(m_folder);
    }
    ~ColourMaps() override { fs::remove_all(m_folder); }

    std::string In(std::string const& name) const { return (m_folder / name).string(); }
    std::string Draw(
        std::vector<std::string> const& names, std::string const& output, std::optional<PictureSize> size) const
    {
        Options options;
        options.files = names;
        options.output = In(output);
        options.size = size;
        RunColours(options, Messages(false));
        std::ifstream stream(options.output, std::ios::binary);
        return { std::istreambuf_iterator<char>(stream), {} };
    }
    static ExitStatus StatusOf(std::vector<std::string> const& names, std::string const& output)
    {
        Options options;
        options.files = names;
        options.output = output;
        try {
            RunColours(options, Messages(false));
        } catch (Failure const& failure) {
            return failure.GetStatus();
        }
        return kDone;
    }

private:
    fs::path m_folder;
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
        EXPECT_EQ(map.GetName(), CString(c.name));
        EXPECT_EQ(map.GetColour(0, 0, 1), c.first) << c.name;
        EXPECT_EQ(map.GetColour(1, 0, 1), c.last) << c.name;
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(kMaps), fs::directory_iterator()), std::ssize(cases));
}

TEST_F(ColourMaps, AreDrawnAsAStripWithoutGapsAndNamesAsText)
{
    constexpr int kWidth = 400;
    constexpr int kHeight = 120;
    std::string const bmp = Draw({ "Greyscale" }, "a.bmp", PictureSize { kWidth, kHeight });
    ASSERT_EQ(bmp.size(), 54U + kWidth * kHeight * 3);
    // The widest run of pixels that never get darker, in any row: the strip, from black to white.
    int widest = 0;
    for (int y = 0; y < kHeight; ++y) {
        int run = 0;
        int previous = 256;
        for (int x = 0; x < kWidth; ++x) {
            auto const value = static_cast<unsigned char>(bmp[static_cast<std::size_t>(54 + 3 * (y * kWidth + x))]);
            run = value < 250 && value >= previous ? run + 1 : 0;
            previous = value;
            widest = std::max(widest, run);
        }
    }
    EXPECT_GT(widest, kWidth / 3);
    std::string const svg = Draw({ "Greyscale", "spectrum" }, "a.svg", {});
    EXPECT_NE(svg.find(">Greyscale<"), std::string::npos);
    EXPECT_NE(svg.find(">Spectrum<"), std::string::npos);
    for (PictureSize const size : { PictureSize { 1, 1 }, { 30, 4000 }, { 3000, 20 } })
        Draw({}, "a.png", size);
}

TEST_F(ColourMaps, ThatCannotBeReadAreToldApart)
{
    std::ofstream(In("table.csv")) << "1,2,3\n";
    EXPECT_EQ(StatusOf({ "nosuch" }, In("a.png")), kUsageFault);
    EXPECT_EQ(StatusOf({ In("table.csv") }, In("a.png")), kDataFault);
    CColourMap map;
    ASSERT_EQ(map.Save(In("map.png").c_str()), 1);
    EXPECT_EQ(StatusOf({ In("map.png") }, In("map.png")), kUsageFault) << "over the map itself";
    EXPECT_FALSE(fs::exists(In("a.png")));
}

} // namespace
} // namespace ombrel::host
