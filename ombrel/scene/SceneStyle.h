#pragma once
#include "ombrel/layout/AxisTicks.h"
#include "ombrel/layout/Look.h"

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ombrel {

// How scenes and maps and what is in them are shown: plain values, which the classes take one by one or together.

/// What is drawn of the levels: lines along them, bands of one colour between them, or both.
enum class ContourChoice { Off, Lines, Bands, Both };
/// Auto: where colours say something that no axis does.
enum class KeyChoice { Auto, Off };
/// What x, y and z are: lengths, or angles in degrees and radii. Polar: angle, height and radius; Cylindrical and
/// Geographical likewise; Radial: a grid of angles and radii with heights over them, for surfaces alone. The order is
/// that of C3DCurve::CurveType, which has no radial grids.
enum class CoordinateChoice { Cartesian, Polar, Cylindrical, Geographical, Radial };
/// How bars, series and points are coloured: by the colour map, all alike, or each column or row of a grid in a colour
/// of its own.
enum class ColouringChoice { Value, Plain, Columns, Rows };
/// The order is that of C3DLineCurve's symbol styles.
enum class SymbolChoice { Sphere, Cone, InvertedCone, Cube };
/// What the lines of a series run along.
enum class AlongChoice { X, Y };
/// Solid faces, those with the edges of all elements over them, or the edges alone.
enum class MeshFaces { Solid, SolidAndEdges, Edges };
/// Plain edges are drawn in an eighth of the time.
enum class EdgeChoice { Smooth, Plain };

/// Where levels lie: so many bands between the ends of the range, or the values, or steps from a reference. About ten
/// at tidy values when all are left out.
struct LevelChoice {
    /// 1 to 1000.
    std::optional<int> bands;
    /// Ascending.
    std::vector<double> values;
    std::optional<double> reference;
    /// Above 0.
    double spacing = 0.0;
};

/// The ends of an axis; what is missing is taken from the data.
struct AxisEnds {
    std::optional<double> min;
    std::optional<double> max;
};
/// Of x, y and z.
using ClipBox = std::array<AxisEnds, 3>;

/// Degrees: counter-clockwise from the x axis, and from the zenith down: 0 looks down, 90 from the side.
struct Direction {
    double azimuth = 0.0;
    double polar = 0.0;
};

/// The colours of values.
struct ColourStyle {
    /// The name of a map or the path of its file; empty for viridis.
    std::string map;
    /// The values of the map's ends; those of the data without it.
    std::optional<AxisRange> range;
};

/// Which levels are shown, and how.
struct ContourStyle {
    std::optional<LevelChoice> levels;
    /// Without a choice, what shows the levels where there are some.
    std::optional<ContourChoice> choice;
    /// Each line in its level's colour.
    bool lineColours = false;
};

/// How a surface is shown.
struct SurfaceStyle {
    ColourStyle colours;
    ContourStyle contours;
    /// Cells between lines; 0 for a number that fits, nothing without lines.
    std::optional<int> wireframe;
    /// 0 to 1.
    double transparency = 0.0;
    /// The path of an image (.png, .bmp) to be laid over a grid; empty for colours.
    std::string texture;
    CoordinateChoice coordinates = CoordinateChoice::Cartesian;
};

/// How the bars of a grid or of points are shown.
struct BarStyle {
    ColourStyle colours;
    ColouringChoice colouring = ColouringChoice::Value;
    /// Where bars stand; 0 without it.
    std::optional<double> baseline;
    /// Parts of the room that a bar has along x and along y, above 0; the usual one without it.
    std::optional<std::pair<double, double>> width;
};

/// How lines one behind the other are shown.
struct SeriesStyle {
    ColourStyle colours;
    ColouringChoice colouring = ColouringChoice::Value;
    std::optional<double> baseline;
    AlongChoice along = AlongChoice::X;
};

/// How a net of lines is shown.
struct NetStyle {
    ColourStyle colours;
    ColouringChoice colouring = ColouringChoice::Value;
    CoordinateChoice coordinates = CoordinateChoice::Cartesian;
};

/// What stands at a point.
struct SymbolStyle {
    SymbolChoice shape = SymbolChoice::Sphere;
    /// Of the usual size, which is smaller where there are many.
    double size = 1.0;
};

/// How a line through points in space is shown.
struct LineStyle3D {
    /// Pixels.
    double width = 1.0;
    bool tubes = false;
    /// At the points, where that is wanted.
    bool marks = false;
    SymbolStyle symbols;
    CoordinateChoice coordinates = CoordinateChoice::Cartesian;
};

/// How points in space are shown.
struct PointStyle {
    ColourStyle colours;
    /// Value: by height, where the points have no values of their own to be coloured by.
    ColouringChoice colouring = ColouringChoice::Value;
    SymbolStyle symbols;
    bool sticks = false;
    /// Where sticks stand; 0 without it.
    std::optional<double> baseline;
    CoordinateChoice coordinates = CoordinateChoice::Cartesian;
};

/// How texts at points in space are shown.
struct TextStyle {
    bool marks = false;
    SymbolStyle symbols;
    CoordinateChoice coordinates = CoordinateChoice::Cartesian;
};

/// How a mesh is shown.
struct MeshStyle {
    ColourStyle colours;
    ContourStyle contours;
    /// Of the mesh, by name; "z" for heights, empty for the first that it has.
    std::string variable;
    /// In which elements must lie; a missing end is everywhere.
    std::optional<ClipBox> clip;
    MeshFaces faces = MeshFaces::Solid;
};

/// How an axis of a scene is shown.
struct AxisStyle {
    /// Without it, what the data is called.
    std::optional<std::string> title;
    AxisEnds ends;
};

/// How the whole scene is shown.
struct SceneStyle {
    Theme theme = Theme::Light;
    /// A small line below everything.
    std::string footnote;
    KeyChoice key = KeyChoice::Auto;
    EdgeChoice edges = EdgeChoice::Smooth;
    /// Where the viewer stands; in front at the left and well above without it.
    std::optional<Direction> view;
    /// Of the size that fits the picture.
    double zoom = 1.0;
    /// 0 for parallel lines to 1; a little without it.
    std::optional<double> perspective;
    /// Height of the box against its longer side on the ground; of meshes, against the scale of x and y.
    std::optional<double> verticalScale;
    bool lit = true;
    /// One or two; empty for the usual one beside the viewer.
    std::vector<Direction> lights;
    AxisStyle x;
    AxisStyle y;
    AxisStyle z;
};

/// How a map of heights is shown.
struct MapStyle {
    Theme theme = Theme::Light;
    /// A small line below everything.
    std::string footnote;
    KeyChoice key = KeyChoice::Auto;
    ColourStyle colours;
    ContourStyle contours;
    std::optional<std::string> xTitle;
    std::optional<std::string> yTitle;
    /// What the heights are, over the key.
    std::optional<std::string> zTitle;
};

} // namespace ombrel
