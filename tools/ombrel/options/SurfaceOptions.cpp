#include "tools/ombrel/options/SurfaceOptions.h"
#include "tools/ombrel/options/OptionValues.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>

namespace ombrel::host {

namespace {

/// More levels could not be told apart, and each is a walk over the grid.
constexpr int kMostBands = 1000;

/// Numbers with commas between; empty when something else stands there.
std::vector<double> ParseNumbers(std::string_view text)
{
    std::vector<double> numbers;
    for (;;) {
        std::size_t const comma = std::min(text.find(','), text.size());
        auto const number = ParseCellNumber(text.substr(0, comma), '.');
        if (!number || std::abs(*number) > kLargestNumber)
            return {};
        numbers.push_back(*number);
        if (comma == text.size())
            return numbers;
        text.remove_prefix(comma + 1);
    }
}

LevelChoice ParseLevels(OptionEntry const& option, std::string const& value)
{
    constexpr char const* kExpected
        = "a number of bands of 1 to 1000, levels such as 10,20,50 that ascend, or REFERENCE:STEP";
    LevelChoice levels;
    std::size_t const colon = value.find(':');
    if (colon != std::string::npos) {
        levels.reference = ParseCellNumber(value.substr(0, colon), '.');
        auto const spacing = ParseCellNumber(value.substr(colon + 1), '.');
        if (!levels.reference || std::abs(*levels.reference) > kLargestNumber || !spacing || !(*spacing > 0.0))
            FailValue(option, value, kExpected);
        levels.spacing = *spacing;
        return levels;
    }
    int bands = 0;
    auto const result = std::from_chars(value.data(), value.data() + value.size(), bands);
    if (result.ec == std::errc() && result.ptr == value.data() + value.size()) {
        if (bands < 1 || bands > kMostBands)
            FailValue(option, value, kExpected);
        levels.bands = bands;
        return levels;
    }
    levels.values = ParseNumbers(value);
    bool const ascend
        = std::adjacent_find(levels.values.begin(), levels.values.end(), std::greater_equal<>()) == levels.values.end();
    if (levels.values.empty() || !ascend || levels.values.size() >= static_cast<std::size_t>(kMostBands))
        FailValue(option, value, kExpected);
    return levels;
}

Direction MakeDirection(double azimuth, double polar)
{
    double const turned = std::fmod(azimuth, 360.0);
    return { turned < 0.0 ? turned + 360.0 : turned, polar };
}

/// Pairs of an azimuth and an angle from the zenith.
std::vector<Direction> ParseDirections(
    OptionEntry const& option, std::string const& value, std::size_t most, char const* expected)
{
    constexpr double kMostPolar = 180.0;
    std::vector<double> const numbers = ParseNumbers(value);
    std::vector<Direction> directions;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2) {
        if (numbers[i + 1] < 0.0 || numbers[i + 1] > kMostPolar)
            FailValue(option, value, expected);
        directions.push_back(MakeDirection(numbers[i], numbers[i + 1]));
    }
    if (numbers.size() % 2 != 0 || directions.empty() || directions.size() > most)
        FailValue(option, value, expected);
    return directions;
}

/// A range each of x, y and z, of which those at the end may be left out.
ClipBox ParseClip(OptionEntry const& option, std::string const& value)
{
    constexpr char const* kExpected = "X0:X1,Y0:Y1,Z0:Z1, where an end may be left out, such as 0:,,:5";
    ClipBox box;
    std::string_view rest = value;
    for (AxisEnds& ends : box) {
        std::size_t const comma = std::min(rest.find(','), rest.size());
        std::string_view const range = rest.substr(0, comma);
        if (!range.empty() && range != ":") {
            auto const read = ParseRange(range, false, nullptr);
            if (!read)
                FailValue(option, value, kExpected);
            ends = *read;
        }
        rest.remove_prefix(std::min(comma + 1, rest.size()));
    }
    if (value.empty() || !rest.empty() || std::count(value.begin(), value.end(), ',') > 2)
        FailValue(option, value, kExpected);
    return box;
}

/// One width for both ways, or two.
std::pair<double, double> ParseBarWidth(OptionEntry const& option, std::string const& value)
{
    constexpr double kMost = 10.0;
    std::vector<double> const widths = ParseNumbers(value);
    auto const isWidth = [](double width) { return width > 0.0 && width <= kMost; };
    if (widths.empty() || widths.size() > 2 || !std::all_of(widths.begin(), widths.end(), isWidth))
        FailValue(option, value, "a width or two (along x and y), such as 1 or 0.5,1, above 0 and up to 10");
    return { widths.front(), widths.back() };
}

/// Stores the value of an option of bars, series, lines, points and meshes.
bool ApplyMarkOption(SurfaceOptions& options, OptionEntry const& option, std::string const& value)
{
    switch (option.id) {
    case OptionId::SizeColumn:
        options.sizeColumn = value;
        break;
    case OptionId::ColourColumn:
        options.colourColumn = value;
        break;
    case OptionId::Sticks:
        options.sticks = true;
        break;
    case OptionId::Tubes:
        options.tubes = true;
        break;
    case OptionId::Symbol:
        options.symbol = static_cast<SymbolChoice>(ParseWord(option, value));
        break;
    case OptionId::SymbolSize:
        options.symbolSize = ParseNumber(option, value, 0.01, 100.0, "a number of 0.01 to 100");
        break;
    case OptionId::Colouring:
        options.colouring = static_cast<ColouringChoice>(ParseWord(option, value));
        break;
    case OptionId::Baseline:
        options.baseline = ParseNumber(option, value, -kLargestNumber, kLargestNumber, "a number");
        break;
    case OptionId::BarWidth:
        options.barWidth = ParseBarWidth(option, value);
        break;
    case OptionId::Variable:
        options.variable = value;
        break;
    case OptionId::Clip:
        options.clip = ParseClip(option, value);
        break;
    case OptionId::Outline:
        options.outline = true;
        break;
    case OptionId::Solid: {
        enum class OnOff { On, Off };
        options.solid = static_cast<OnOff>(ParseWord(option, value)) == OnOff::On;
        break;
    }
    case OptionId::Along:
        options.along = static_cast<AlongChoice>(ParseWord(option, value));
        break;
    default:
        return false;
    }
    return true;
}

} // namespace

bool ApplySurfaceOption(SurfaceOptions& options, OptionEntry const& option, std::string const& value)
{
    switch (option.id) {
    case OptionId::Matrix:
        // Detect has no word of its own.
        options.matrix = static_cast<MatrixChoice>(ParseWord(option, value) + 1);
        break;
    case OptionId::ZColumn:
        options.zColumn = value;
        break;
    case OptionId::ZTitle:
        options.zTitle = value;
        break;
    case OptionId::ColourMap:
        options.colourMap = value;
        break;
    case OptionId::ZRange: {
        auto const ends = ParseRange(value, false, nullptr);
        if (!ends || !ends->min || !ends->max)
            FailValue(option, value, "A:B with numbers A below B");
        options.zRange = { *ends->min, *ends->max };
        break;
    }
    case OptionId::Levels:
        options.levels = ParseLevels(option, value);
        break;
    case OptionId::Contours:
        options.contours = static_cast<ContourChoice>(ParseWord(option, value));
        break;
    case OptionId::LineColours:
        options.lineColours = true;
        break;
    case OptionId::Key:
        options.key = static_cast<KeyChoice>(ParseWord(option, value));
        break;
    case OptionId::View:
        options.view = ParseDirections(option, value, 1,
            "AZIMUTH,POLAR in degrees, such as 330,70: from the zenith, 0 looks down and 90 from the side")
                           .front();
        break;
    case OptionId::Zoom:
        options.zoom = ParseNumber(option, value, 0.1, 10.0, "a number of 0.1 to 10");
        break;
    case OptionId::Perspective:
        options.perspective = ParseNumber(option, value, 0.0, 1.0, "a number of 0 to 1");
        break;
    case OptionId::VerticalScale:
        options.verticalScale = ParseNumber(option, value, 0.01, 100.0, "a number of 0.01 to 100");
        break;
    case OptionId::Wireframe:
        options.wireframe = value.empty()
            ? 0
            : static_cast<int>(ParseNumber(option, value, 1, 10000, "a whole number of 1 to 10000"));
        break;
    case OptionId::Transparency:
        options.transparency = ParseNumber(option, value, 0.0, 1.0, "a number of 0 to 1");
        break;
    case OptionId::Texture:
        options.texture = value;
        break;
    case OptionId::Lights:
        options.lit = value != "off";
        options.lights.clear();
        if (options.lit)
            options.lights = ParseDirections(
                option, value, 2, "off, or AZIMUTH,POLAR of one or two lights in degrees, such as 315,45,90,60");
        break;
    case OptionId::Coordinates:
        options.coordinates = static_cast<CoordinateChoice>(ParseWord(option, value));
        break;
    case OptionId::NoAntialias:
        options.plainEdges = true;
        break;
    default:
        return ApplyMarkOption(options, option, value);
    }
    return true;
}

} // namespace ombrel::host
