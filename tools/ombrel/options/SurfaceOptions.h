#pragma once

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ombrel::host {

enum class OptionId : int;
struct OptionEntry;

/// Detect: whatever the table looks like. Plain: all cells are heights. Headed: the first row holds the x and the first
/// column the y coordinates.
enum class MatrixChoice { Detect, Plain, Headed };
/// What is drawn of the levels: lines along them, bands of one colour between them, or both.
enum class ContourChoice { Off, Lines, Bands, Both };
enum class KeyChoice { Auto, Off };
/// What the columns and rows of a grid are; the order is that of C3DCurve::CurveType, which has no radial grids.
enum class CoordinateChoice { Cartesian, Polar, Cylindrical, Geographical, Radial };

/// How bars, series and points are coloured: by the colour map, all alike, or each column or row of a grid in a colour
/// of its own.
enum class ColouringChoice { Value, Plain, Columns, Rows };
/// The order is that of C3DLineCurve's symbol styles.
enum class SymbolChoice { Sphere, Cone, InvertedCone, Cube };
/// What the lines of a series run along.
enum class AlongChoice { X, Y };

/// Where levels lie: so many bands between the ends of the range, or the values, or steps from a reference.
struct LevelChoice {
    std::optional<int> bands;
    std::vector<double> values;
    std::optional<double> reference;
    double spacing = 0.0;
};

/// The ends of an axis; what is missing is taken from the data.
struct AxisEnds {
    std::optional<double> min;
    std::optional<double> max;
};
using ClipBox = std::array<AxisEnds, 3>;

/// Degrees: counter-clockwise from the x axis, and from the zenith down.
struct Direction {
    double azimuth = 0.0;
    double polar = 0.0;
};

/// How a grid is read, and how its heights are shown.
struct SurfaceOptions {
    MatrixChoice matrix = MatrixChoice::Detect;
    std::string zColumn;
    std::optional<std::string> zTitle;
    std::string colourMap;
    std::optional<std::pair<double, double>> zRange;
    std::optional<LevelChoice> levels;
    std::optional<ContourChoice> contours;
    bool lineColours = false;
    KeyChoice key = KeyChoice::Auto;

    std::optional<Direction> view;
    double zoom = 1.0;
    std::optional<double> perspective;
    /// Height of the box against its longer side on the ground.
    std::optional<double> verticalScale;
    /// Cells between lines; 0 for a number that fits, nothing without lines.
    std::optional<int> wireframe;
    double transparency = 0.0;
    std::string texture;
    /// One or two; empty for the usual one unless lights is off.
    std::vector<Direction> lights;
    bool lit = true;
    CoordinateChoice coordinates = CoordinateChoice::Cartesian;
    bool plainEdges = false;

    /// Columns whose values points are as large as, and coloured by; empty for none.
    std::string sizeColumn;
    std::string colourColumn;
    bool sticks = false;
    bool tubes = false;
    std::optional<SymbolChoice> symbol;
    double symbolSize = 1.0;
    ColouringChoice colouring = ColouringChoice::Value;
    std::optional<double> baseline;
    /// Of the room that a bar has, along x and along y; the usual part without it.
    std::optional<std::pair<double, double>> barWidth;
    AlongChoice along = AlongChoice::X;

    /// Of a mesh, by name; empty for the first.
    std::string variable;
    /// The ends of x, y and z, in which elements must lie; a missing end is everywhere.
    std::optional<ClipBox> clip;
    bool outline = false;
    bool solid = true;
};

/// Stores the value of an option of surfaces and contours; false when it is none of them. Throws Failure with
/// kUsageFault.
bool ApplySurfaceOption(SurfaceOptions& options, OptionEntry const& option, std::string const& value);

} // namespace ombrel::host
