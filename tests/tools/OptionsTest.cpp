#include "tools/ombrel/options/Options.h"
#include "ombrel/platform/framework/Number.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/options/OptionValues.h"

#include <gtest/gtest.h>

namespace ombrel::host {
namespace {

using namespace std::literals;
using Words = std::vector<std::string>;

/// What a command line is refused for, when it is a usage fault.
template <typename Action> std::string FaultOf(Action const& action)
{
    try {
        action();
    } catch (Failure const& failure) {
        EXPECT_EQ(failure.GetStatus(), kUsageFault);
        return failure.what();
    }
    return "none";
}

TEST(Options, AreReadFromAnyPlaceOfTheCommandLine)
{
    Options const options = ParseOptions({ "plot", "-x", "time", "a.csv", "-y", "2,3", "--kind=steps", "-y", "last",
        "--x-range", "-5:5", "--log", "y", "-vo", "out.png", "-", "--legend", "br", "--error", "e1,e2", "--x-title", "",
        "--save", "a.doc", "--kind", "points", "--caption", "a@0,0", "--caption", "b@0,1", "--", "--help" });
    EXPECT_EQ(options.command, Command::Plot);
    EXPECT_EQ(options.files, (Words { "a.csv", "-", "--help" }));
    EXPECT_EQ(options.xColumn, "time");
    EXPECT_EQ(options.yColumns, (Words { "2", "3", "last" }));
    EXPECT_EQ(options.errorColumns, (Words { "e1", "e2" }));
    EXPECT_EQ(options.kind, PlotKind::Points) << "the last one counts";
    EXPECT_EQ(options.xRange, "-5:5");
    EXPECT_EQ(options.xTitle, "");
    EXPECT_FALSE(options.yTitle);
    EXPECT_TRUE(options.yLog && !options.xLog && options.verbose && !options.surface.plainEdges);
    ASSERT_EQ(options.captions.size(), 2U);
    EXPECT_EQ(options.captions[1].y, 1.0);
    EXPECT_EQ(options.outputs, std::vector<std::string> { "out.png" });
    EXPECT_EQ(options.save, "a.doc");
    EXPECT_EQ(options.legend, LegendPlace::BottomRight);
    EXPECT_TRUE(options.IsGiven(OptionId::Log));
    EXPECT_FALSE(options.IsGiven(OptionId::Palette));
    EXPECT_EQ(ParseOptions({ "a.doc", "-o", "-", "--format", "SVG" }).format, PictureFormat::Svg);
    EXPECT_EQ(ParseOptions({ "a.doc" }).command, Command::None);
    EXPECT_EQ(ParseOptions({ "a", "--header", "no" }).table.header, HeaderChoice::Absent);
}

TEST(Options, ThatDoNothingAreRefused)
{
    std::pair<Words, char const*> const parsed[] {
        { { "plot", "--bogus" }, "The following argument was not expected: --bogus (ombrel --help lists the options)" },
        { { "draw", "a.doc", "--kind", "line" },
            "The following argument was not expected: --kind (ombrel --help lists the options)" },
        { { "plot", "-o" }, "--output: 1 required TEXT missing (ombrel --help lists the options)" },
        { { "a", "--x-range", "5" }, "--x-range: expected A:B, found \"5\"" },
        { { "a", "--date-format", "%Q" },
            "--date-format \"%Q\": %Q is not known; the codes are %Y %y %m %b %B %d %j %H %M %S %F %T" },
    };
    for (auto const& [words, fault] : parsed)
        EXPECT_EQ(FaultOf([&words = words] { ParseOptions(words); }), fault);
    struct {
        Words words;
        Command command;
        char const* fault;
    } const checked[] {
        { { "a.doc", "--kind", "line" }, Command::Draw, "--kind is for tables, and the file is a graph document" },
        { { "a.doc", "-y", "2" }, Command::Draw, "-y is for tables, and the file is a graph document" },
        { { "a", "--in-place", "C" }, Command::Plot, "--in-place is for graph documents, and the file is a table" },
        { { "a", "-o", "x", "--size", "99x99" }, Command::Draw, "none" },
    };
    for (auto const& c : checked)
        EXPECT_EQ(FaultOf([&] { CheckOptionsFor(ParseOptions(c.words), c.command); }), c.fault);
}

/// What a value is read as, or what was expected instead.
template <typename Parse> std::string Read(OptionId id, std::string const& value, Parse const& parse)
{
    std::string text;
    std::string const fault = FaultOf([&] { text = parse(EntryOf(id), value); });
    if (fault == "none")
        return text;
    std::string const start = "--" + std::string(EntryOf(id).longName) + ": expected ";
    EXPECT_TRUE(fault.starts_with(start)) << fault;
    EXPECT_TRUE(fault.ends_with(", found \"" + value + "\"")) << fault;
    return "not " + fault.substr(start.size(), 3);
}

std::string Sides(double width, double height) { return std::to_string(width) + "x" + std::to_string(height); }

TEST(OptionValues, AreReadAsTheyWereMeantOrRefused)
{
    struct {
        OptionId id;
        std::string (*parse)(OptionEntry const&, std::string const&);
        std::vector<std::pair<char const*, std::string>> values;
    } const cases[] {
        { OptionId::Kind, [](auto const& o, auto const& v) { return std::to_string(ParseWord(o, v)); },
            { { "line", "0" }, { "histogram", "11" }, { "pie", "not lin" }, { "Line", "not lin" },
                { "", "not lin" } } },
        { OptionId::Bins, [](auto const& o, auto const& v) { return std::to_string(ParseBins(o, v)); },
            { { "auto", "0" }, { "1", "1" }, { "10000", "10000" }, { "10001", "not aut" }, { "0", "not aut" },
                { "2.5", "not aut" }, { "", "not aut" } } },
        { OptionId::LineWidth, [](auto const& o, auto const& v) { return std::to_string(ParseLineWidth(o, v)); },
            { { "1", "1" }, { "100", "100" }, { "0", "not a w" }, { "101", "not a w" }, { "2px", "not a w" },
                { "1.5", "not a w" }, { "", "not a w" } } },
        { OptionId::Size,
            [](auto const& o, auto const& v) {
                PictureSize const size = ParseSize(o, v);
                return Sides(size.width, size.height);
            },
            { { "800x600", Sides(800, 600) }, { "16X32000", Sides(16, 32000) }, { "10000x10000", Sides(1e4, 1e4) },
                { "800", "not a w" }, { "15x100", "not a w" }, { "100x15", "not a w" }, { "32001x16", "not a w" },
                { "10000x10001", "not a w" }, { "99.5x100", "not a w" }, { "100x99.5", "not a w" },
                { "x100", "not a w" }, { "100x", "not a w" }, { "1x2x3", "not a w" } } },
        { OptionId::Page,
            [](auto const& o, auto const& v) {
                PageSize const size = ParsePage(o, v);
                return Sides(size.width, size.height);
            },
            { { "a5", Sides(210, 148) }, { "A4", Sides(297, 210) }, { "a3", Sides(420, 297) },
                { "LETTER", Sides(279.4, 215.9) }, { "120.5x80", Sides(120.5, 80) }, { "10x5000", Sides(10, 5000) },
                { "9.9x100", "not A5," }, { "100x9.9", "not A5," }, { "5000.1x100", "not A5," },
                { "100x1e400", "not A5," }, { "B7", "not A5," } } },
        { OptionId::Caption,
            [](auto const& o, auto const& v) {
                CaptionSettings const caption = ParseCaption(o, v);
                return caption.text + " " + Sides(caption.x, caption.y);
            },
            { { "up @ noon\\nor,\\nso@0.5,-0.1", "up @ noon\nor,\nso " + Sides(0.5, -0.1) },
                { "a@-1,2", "a " + Sides(-1, 2) }, { "@0,0", "not TEX" }, { "a", "not TEX" }, { "a@0.5", "not TEX" },
                { "a,b@1", "not TEX" }, { "a@0,b", "not TEX" }, { "a@b,0", "not TEX" }, { "a@2.1,0", "not TEX" },
                { "a@0,-1.1", "not TEX" } } },
        { OptionId::YColumns,
            [](auto const& o, auto const& v) {
                Words columns { "first" };
                AddColumns(columns, o, v);
                return columns[1] + "+" + columns.back();
            },
            { { "a", "a+a" }, { "a,b c,3", "a+3" }, { "a,,b", "not nam" }, { ",a", "not nam" }, { "a,", "not nam" },
                { "", "not nam" } } },
    };
    for (auto const& c : cases) {
        for (auto const& [value, expected] : c.values)
            EXPECT_EQ(Read(c.id, value, c.parse), expected) << EntryOf(c.id).longName << " " << value;
    }
    EXPECT_EQ(FaultOf([] { ParseWord(EntryOf(OptionId::Log), "z"); }), "--log: expected x, y or xy, found \"z\"");
    for (char const* const path : { "x", "a.png/x", "x.", "x.gif", "" })
        EXPECT_FALSE(FormatOfPath(path)) << path;
    EXPECT_EQ(FormatOfPath("a/b.c/x.PNG"), PictureFormat::Png);
    EXPECT_EQ(FormatOfPath("x.ps"), PictureFormat::PostScript);
}

TEST(OptionValues, OfRangesAreTwoEndsInOrder)
{
    auto const german = std::get<DateFormat>(DateFormat::Compile("%d.%m.%Y %H:%M"));
    constexpr std::nullopt_t kOpen = std::nullopt;
    struct {
        char const* text;
        bool dates, german;
        std::optional<AxisEnds> ends;
    } const cases[] {
        { "-1.5:2e3", false, false, AxisEnds { -1.5, 2000.0 } },
        { "3:", false, false, AxisEnds { 3.0, kOpen } },
        { ":3", false, false, AxisEnds { kOpen, 3.0 } },
        { ":", false, false, AxisEnds {} },
        { "2:1", false, false, {} },
        { "1:2:3", false, false, {} },
        { "-1e300:1e300", false, false, AxisEnds { -1e300, 1e300 } },
        { "2020:2021", false, false, AxisEnds { 2020.0, 2021.0 } },
        { "2020:2021-03", true, false, AxisEnds { 43831.0, 44256.0 } },
        { "0100:1000", true, false, AxisEnds { -657434.0, -328716.0 } },
        { "1e99:2020", true, false, {} },
        { "2020-01-01T06:00:2020-01-01T18:00", true, false, AxisEnds { 43831.25, 43831.75 } },
        { "01.01.2020 12:00:2.1.2020 0:00", true, true, AxisEnds { 43831.5, 43832.0 } },
        { "1.1.2020:31 Jan 2020 6:00 pm", true, false, AxisEnds { 43831.0, 43861.75 } },
        { "12/31/2020:", true, false, AxisEnds { 44196.0, kOpen } },
        // Two dates, and none.
        { "1/2/2020:", true, false, {} },
        { "32.1.2020:", true, false, {} },
    };
    for (auto const& c : cases) {
        auto const ends = ParseRange(c.text, c.dates, c.german ? &german : nullptr);
        ASSERT_EQ(ends.has_value(), c.ends.has_value()) << c.text;
        EXPECT_TRUE(!ends || (ends->min == c.ends->min && ends->max == c.ends->max)) << c.text;
    }
    EXPECT_EQ(ParseRange("1/2/2020:", true, nullptr, DateOrder::DayFirst)->min, 43862.0);
    EXPECT_EQ(ParseRange("1/2/2020:", true, nullptr, DateOrder::MonthFirst)->min, 43832.0);
}

/// The numbers of levels or directions in few words, or what the option was refused with, cut short.
std::string ReadSurface(std::vector<std::string> words)
{
    words.insert(words.begin(), "surface");
    std::string text;
    std::string const fault = FaultOf([&] {
        SurfaceOptions const options = ParseOptions(words).surface;
        auto const add = [&text](double value) { text += (text.empty() ? "" : " ") + FormatNumber(value, 'g', 6); };
        if (LevelChoice const levels = options.levels.value_or(LevelChoice()); options.levels) {
            text = levels.bands ? "bands " + std::to_string(*levels.bands) : levels.reference ? "series" : "levels";
            if (levels.reference) {
                add(*levels.reference);
                add(levels.spacing);
            }
            for (double const value : levels.values)
                add(value);
        }
        for (Direction const& d : options.lights) {
            add(d.azimuth);
            add(d.polar);
        }
        if (options.view) {
            add(options.view->azimuth);
            add(options.view->polar);
        }
        if (options.wireframe)
            add(*options.wireframe);
        if (!options.lit)
            text += "unlit";
    });
    return fault == "none" ? text : "not " + fault.substr(fault.find("expected ") + 9, 8);
}

TEST(SurfaceOptions, AreReadAsTheyWereMeantOrRefused)
{
    std::pair<std::vector<std::string>, char const*> const cases[] {
        { { "--levels", "8" }, "bands 8" },
        { { "--levels", "1000" }, "bands 1000" },
        { { "--levels", "0" }, "not a number" },
        { { "--levels", "1001" }, "not a number" },
        { { "--levels", "-1,2.5,1e3" }, "levels -1 2.5 1000" },
        { { "--levels", "1,1" }, "not a number" },
        { { "--levels", "1,x" }, "not a number" },
        { { "--levels", "5:0.5" }, "series 5 0.5" },
        { { "--levels", "5:0" }, "not a number" },
        { { "--levels", ":2" }, "not a number" },
        { { "--view", "-30,70" }, "330 70" },
        { { "--view", "725,180" }, "5 180" },
        { { "--view", "10,181" }, "not AZIMUTH," },
        { { "--view", "10" }, "not AZIMUTH," },
        { { "--view", "1,2,3,4" }, "not AZIMUTH," },
        { { "--lights", "1,2,3,4" }, "1 2 3 4" },
        { { "--lights", "1,2,3,4,5,6" }, "not off, or " },
        { { "--lights", "off" }, "unlit" },
        { { "--wireframe" }, "0" },
        { { "--wireframe", "a.csv" }, "0" },
        { { "--wireframe", "3", "a.csv" }, "3" },
        { { "--z-range", "2:1" }, "not A:B with" },
        { { "--perspective", "1.01" }, "not a number" },
        { { "--transparency", "-0.1" }, "not a number" },
    };
    for (auto const& [words, expected] : cases)
        EXPECT_EQ(ReadSurface(words), expected) << words.back();
    EXPECT_EQ(ParseOptions({ "surface", "--wireframe", "a.csv" }).files, (Words { "a.csv" }));
    for (char const* const value : { "", "y", "x", "xy" }) {
        Words words { "plot", "--log", "a.csv" };
        if (*value)
            words.insert(words.begin() + 2, value);
        Options const options = ParseOptions(words);
        EXPECT_EQ(options.files, (Words { "a.csv" }));
        EXPECT_EQ(options.xLog, value[0] == 'x');
        EXPECT_EQ(options.yLog, std::string(value) != "x");
    }
    EXPECT_TRUE(ParseOptions({ "plot", "a.csv", "--log" }).yLog);
    EXPECT_EQ(ParseOptions({ "plot", "--log", "-" }).files, (Words { "-" }));
    EXPECT_EQ(ParseOptions({ "contour", "--z", "b", "a" }).surface.zColumn, "b");
    EXPECT_EQ(ParseOptions({ "contour", "--matrix", "headed", "a" }).surface.matrix, MatrixChoice::Headed);
    EXPECT_EQ(
        ParseOptions({ "surface", "--coordinates", "radial", "a" }).surface.coordinates, CoordinateChoice::Radial);
}

TEST(Options, AreAllInTheHelpOfTheirCommands)
{
    for (Command const command : { Command::Plot, Command::Surface, Command::Contour, Command::Draw, Command::Info }) {
        std::string const help = HelpText(command);
        for (OptionEntry const& option : AllOptions()) {
            std::string const name = option.longName.size() > 1 ? "--" + std::string(option.longName)
                                                                : std::string("  -") + option.shortName;
            // Some names begin with others.
            bool const isThere
                = help.find(name + " ") != std::string::npos || help.find(name + "\n") != std::string::npos;
            EXPECT_EQ(isThere, TakesOption(command, option)) << name;
        }
        for (std::size_t first = 0; first < help.size();) {
            std::size_t const end = help.find('\n', first);
            EXPECT_LE(end - first, 100u) << help.substr(first, end - first);
            first = end + 1;
        }
    }
    EXPECT_TRUE(HelpText(Command::Info)
                    .starts_with("Usage:\n"
                                 "  ombrel info FILE...                 Print what is in a file: the object tree of a "
                                 "document;\n"
                                 "                                      columns, types and gaps of a table.\n"
                                 "\nOptions:\n"
                                 "      --date-format FORMAT  The x values"))
        << HelpText(Command::Info);
    EXPECT_NE(HelpText(Command::Plot).find("\n      --grid off|major|both\n                            Grid lines;"),
        std::string::npos);
}

} // namespace
} // namespace ombrel::host
