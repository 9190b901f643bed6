#include "tools/ombrel/options/Options.h"
#include "tools/ombrel/Messages.h"

#include <gtest/gtest.h>

namespace ombrel::host {
namespace {

TEST(Options, AreReadFromAnyPlaceOfTheCommandLine)
{
    Options const options = ParseOptions({ "plot", "-x", "time", "a.csv", "-y", "2,3", "--kind=steps", "-y", "last",
        "--x-range", "-5:5", "--log", "y", "--size", "800x600", "--antialias", "-vo", "out.png", "-", "--symbols",
        "--caption", "up @ noon\\nor so@0.5,-0.1", "--bins", "12", "--legend", "br", "--error", "e1,e2" });
    EXPECT_EQ(options.command, Command::Plot);
    EXPECT_EQ(options.files, (std::vector<std::string> { "a.csv", "-" }));
    EXPECT_EQ(options.xColumn, "time");
    EXPECT_EQ(options.yColumns, (std::vector<std::string> { "2", "3", "last" }));
    EXPECT_EQ(options.kind, PlotKind::Steps);
    EXPECT_EQ(options.xRange, "-5:5");
    EXPECT_FALSE(options.xLog);
    EXPECT_TRUE(options.yLog);
    EXPECT_EQ(options.size->width, 800);
    EXPECT_EQ(options.size->height, 600);
    EXPECT_TRUE(options.antialias);
    EXPECT_TRUE(options.verbose);
    EXPECT_TRUE(options.symbols);
    EXPECT_EQ(options.output, "out.png");
    ASSERT_EQ(options.captions.size(), 1U);
    EXPECT_EQ(options.captions[0].text, "up @ noon\nor so");
    EXPECT_EQ(options.captions[0].y, -0.1);
    EXPECT_EQ(options.bins, 12);
    EXPECT_EQ(options.legend, LegendPlace::BottomRight);
    EXPECT_EQ(options.errorColumns, (std::vector<std::string> { "e1", "e2" }));

    EXPECT_EQ(ParseOptions({ "a.doc", "-o", "-", "--format", "SVG" }).command, Command::None);
    EXPECT_EQ(ParseOptions({ "x", "--page", "a5" }).page->height, 148.0);
    EXPECT_EQ(ParseOptions({ "x", "--page", "120.5x80" }).page->width, 120.5);
    EXPECT_EQ(ParseOptions({ "--", "--help" }).files, (std::vector<std::string> { "--help" }));
}

TEST(Options, ThatCannotBeAreUsageFaultsThatSayWhatWasExpected)
{
    struct {
        std::vector<std::string> arguments;
        char const* text;
    } const cases[] {
        { { "plot", "--bogus" }, "--bogus" },
        { { "draw", "a.doc", "--kind", "line" }, "--kind" },
        { { "info", "a.csv", "-o", "x.png" }, "-o" },
        { { "plot", "-o" }, "-o" },
        { { "plot", "a", "--kind", "pie" }, "text or histogram" },
        { { "plot", "a", "--size", "800" }, "1000x640" },
        { { "plot", "a", "--size", "8x8" }, "16 to 32767" },
        { { "plot", "a", "--size", "30000x30000" }, "100 million" },
        { { "plot", "a", "--size", "100.5x100" }, "width and height" },
        { { "plot", "a", "--page", "B7" }, "A4" },
        { { "plot", "a", "--page", "1x100" }, "10 to 5000" },
        { { "plot", "a", "--page", "1e400x100" }, "10 to 5000" },
        { { "plot", "a", "--log", "z" }, "x, y or xy" },
        { { "plot", "a", "--line-width", "0" }, "1 to 100" },
        { { "plot", "a", "--line-width", "2px" }, "1 to 100" },
        { { "plot", "a", "--x-range", "5" }, "A:B" },
        { { "plot", "a", "--date-format", "%Q" }, "%Q" },
        { { "plot", "a", "-y", "1,,2" }, "commas" },
        { { "plot", "a", "--header", "maybe" }, "yes or no" },
        { { "plot", "a", "--format", "gif" }, "svg" },
    };
    for (auto const& c : cases) {
        try {
            ParseOptions(c.arguments);
            ADD_FAILURE() << c.arguments.back() << " was accepted";
        } catch (Failure const& failure) {
            EXPECT_EQ(failure.GetStatus(), kUsageFault);
            EXPECT_NE(std::string(failure.what()).find(c.text), std::string::npos) << failure.what();
        }
    }
}

TEST(Options, AreAllInTheHelpOfTheirCommands)
{
    for (Command const command : { Command::Plot, Command::Draw, Command::Info }) {
        std::string const help = HelpText(command);
        for (OptionEntry const& option : AllOptions()) {
            std::string const name = option.longName.size() > 1 ? "--" + std::string(option.longName)
                                                                : std::string("  -") + option.shortName + " ";
            EXPECT_EQ(help.find(name) != std::string::npos, TakesOption(command, option)) << name;
        }
        for (std::size_t first = 0; first < help.size();) {
            std::size_t const end = help.find('\n', first);
            EXPECT_LE(end - first, 100u) << help.substr(first, end - first);
            first = end + 1;
        }
    }
}

TEST(Options, LetTheExtensionDecideTheFormat)
{
    EXPECT_EQ(FormatOfPath("a/b.c/x.PNG"), PictureFormat::Png);
    EXPECT_EQ(FormatOfPath("x.ps"), PictureFormat::PostScript);
    for (char const* const path : { "x", "a.png/x", "x.", "x.gif", "" })
        EXPECT_FALSE(FormatOfPath(path)) << path;
}

} // namespace
} // namespace ombrel::host
