#pragma once
#include "ombrel/scene/SceneStyle.h"
#include "ombrel/scene/TableHeights.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ombrel::host {

enum class OptionId : int;
struct OptionEntry;

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
