#include "tools/ombrel/options/Options.h"

#include <array>

namespace ombrel::host {

namespace {

constexpr CommandSet kPlot = SetOf(Command::Plot);
constexpr CommandSet kSurface = SetOf(Command::Surface);
constexpr CommandSet kContour = SetOf(Command::Contour);
constexpr CommandSet kMesh = SetOf(Command::Mesh);
constexpr CommandSet kDraw = SetOf(Command::Draw);
constexpr CommandSet kConvert = SetOf(Command::Convert);
constexpr CommandSet kInfo = SetOf(Command::Info);
constexpr CommandSet kGallery = SetOf(Command::Gallery);
constexpr CommandSet kColours = SetOf(Command::Colours);
/// What draws grids.
constexpr CommandSet kHeights = kSurface | kContour;
/// What draws tables.
constexpr CommandSet kCharts = kPlot | kHeights;
/// What draws scenes in space, and what colours by value.
constexpr CommandSet kScenes = kSurface | kMesh;
constexpr CommandSet kColoured = kHeights | kMesh;
constexpr CommandSet kGraphs = kCharts | kMesh;
constexpr CommandSet kAll = kGraphs | kDraw | kConvert | kInfo | kGallery | kColours;
constexpr CommandSet kPictures = kGraphs | kDraw | kColours;

using std::string_view;
constexpr string_view kFormats[] { "png", "bmp", "pdf", "svg", "ps" };
constexpr string_view kKinds[] { "line", "steps", "pairs", "points", "filled", "bar", "clustered", "stacked", "area",
    "error", "text", "histogram", "surface", "bars", "series", "wireframe", "lines", "scatter" };
constexpr string_view kAxes[] { "x", "y", "xy" };
constexpr string_view kYesNo[] { "yes", "no" };
constexpr string_view kDecimalMarks[] { "point", "comma" };
constexpr string_view kGrids[] { "off", "major", "both" };
constexpr string_view kLegends[] { "auto", "off", "tl", "tr", "bl", "br", "ends" };
constexpr string_view kMatrices[] { "plain", "headed" };
constexpr string_view kCoordinates[] { "cartesian", "polar", "cylindrical", "geographical", "radial" };
constexpr string_view kContours[] { "off", "lines", "bands", "both" };
constexpr string_view kKeys[] { "auto", "off" };
constexpr string_view kColourings[] { "value", "plain", "columns", "rows" };
constexpr string_view kSymbols[] { "sphere", "cone", "inverted-cone", "cube" };
constexpr string_view kAlong[] { "x", "y" };
constexpr string_view kOnOff[] { "on", "off" };
constexpr string_view kVectors[] { "auto", "all" };
constexpr string_view kDateOrders[] { "dmy", "mdy", "ymd" };
constexpr string_view kThemes[] { "light", "dark", "print" };

constexpr std::array kOptions {
    // option, long, short, argument, help, commands, choices, kind of value
    OptionEntry { OptionId::Output, "output", 'o', "OUT",
        "Write the picture to OUT: .png .bmp .pdf .svg or .ps, or .ombrel for the graph as a document. Without it, "
        "FILE's name with .png in the current folder; - is standard output and needs --format. May be given several "
        "times.",
        kPictures | kConvert, {}, ValueKind::File, true },
    OptionEntry { OptionId::Format, "format", 0, "FORMAT", "png, bmp, pdf, svg or ps, whatever the extension of OUT.",
        kPictures, kFormats },
    OptionEntry { OptionId::XColumn, "x", 'x', "COL",
        "Column of the x values: its name or its number from 1; 0 counts the rows. Without it, the first column, or "
        "the rows when there is only one.",
        kCharts },
    OptionEntry { OptionId::YColumns, "y", 'y', "COL[,COL...]",
        "Columns of the y values, by name or number. Without it, all other columns of numbers.", kCharts, {},
        ValueKind::Text, true },
    OptionEntry { OptionId::GroupColumn, "by", 0, "COL",
        "Make a curve of each group: of the rows that have the same word or number in this column.", kPlot },
    OptionEntry { OptionId::Kind, "kind", 0, "KIND",
        "Of a plot: line, steps, pairs (points 1-2, 3-4 and so on joined), points, filled (down to zero), bar, "
        "clustered or stacked (bars), area (stacked), error (bars of --error), text (of --label) or histogram. Of a "
        "3D scene: surface, bars, series, wireframe; of points lines, scatter, text.",
        kPlot | kSurface, kKinds },
    OptionEntry { OptionId::Bins, "bins", 0, "N|auto", "Number of bars of a histogram; auto fits the data.", kPlot },
    OptionEntry { OptionId::Percent, "percent", 0, "", "Stacked bars show shares in percent.", kPlot },
    OptionEntry { OptionId::Normalised, "normalised", 0, "", "Stacked areas show shares of 1.", kPlot },
    OptionEntry { OptionId::ErrorColumns, "error", 0, "COL[,COL...]",
        "Columns of the errors, one for each y: bars reach from y - error to y + error.", kPlot, {}, ValueKind::Text,
        true },
    OptionEntry { OptionId::LabelColumn, "label", 0, "COL", "Column of the texts that are written at the points.",
        kPlot | kSurface },
    OptionEntry { OptionId::Polar, "polar", 0, "",
        "x is an angle in degrees, counter-clockwise from the right, and y the distance from the centre.", kPlot },
    OptionEntry { OptionId::Radians, "radians", 0, "", "Angles are in radians.", kPlot },
    OptionEntry { OptionId::North, "north", 0, "", "Angles run clockwise from the top, as bearings do.", kPlot },
    OptionEntry { OptionId::ZColumn, "z", 'z', "COL",
        "Column of the heights of points, by name or number. Without it, the column called z or the third of numbers.",
        kHeights },
    OptionEntry { OptionId::Matrix, "matrix", 0, "plain|headed",
        "The table is a matrix of heights, rows upwards: plain, or with x in the first row and y in the first column. "
        "Without it, what the table looks like: a matrix or columns of points.",
        kHeights, kMatrices },
    OptionEntry { OptionId::Coordinates, "coordinates", 0, "SYSTEM",
        "What x and y of the grid are: cartesian; polar (angles of a sphere), cylindrical (an angle and the height), "
        "geographical (longitude and latitude), all with the value as radius; or radial (radius and angle).",
        kSurface, kCoordinates },
    OptionEntry { OptionId::ColourMap, "colour-map", 0, "NAME|FILE",
        "Colours of the heights (ombrel colours lists the names); viridis without it.", kColoured, {},
        ValueKind::ColourMap },
    OptionEntry { OptionId::Levels, "levels", 0, "LEVELS",
        "Of lines and bands: how many bands, the levels themselves (10,20,50), or REFERENCE:STEP.", kColoured },
    OptionEntry { OptionId::Contours, "contours", 0, "off|lines|bands|both",
        "Lines along the levels, bands of one colour between them, or both, which contour draws by itself.", kColoured,
        kContours },
    OptionEntry { OptionId::LineColours, "line-colours", 0, "", "Each line in the colour of its level.", kHeights },
    OptionEntry { OptionId::Key, "key", 0, "auto|off", "A key that explains the colours.", kColoured, kKeys },
    OptionEntry { OptionId::View, "view", 0, "AZ,POLAR",
        "Where the box is looked at from, in degrees: its turn, and the angle from the zenith (0 from above, 90 from "
        "the side); 330,62 without it.",
        kScenes },
    OptionEntry {
        OptionId::Zoom, "zoom", 0, "FACTOR", "How large the box is drawn, 0.1 to 10; fitted without it.", kScenes },
    OptionEntry { OptionId::Perspective, "perspective", 0, "P", "From 0, weak, to 1, strong.", kScenes },
    OptionEntry { OptionId::VerticalScale, "vertical-scale", 0, "FACTOR",
        "Height of the box against its longer side on the ground.", kScenes },
    OptionEntry { OptionId::Wireframe, "wireframe", 0, "[N]",
        "Draw the grid over the surface, every Nth line, or a number that fits without N; the outlines of a mesh's "
        "elements.",
        kScenes, {}, ValueKind::Text, false, true },
    OptionEntry { OptionId::Transparency, "transparency", 0, "T", "From 0, opaque, to 1, invisible.", kSurface },
    OptionEntry { OptionId::Texture, "texture", 0, "IMAGE", "Drape a picture (.png or .bmp) over the surface.",
        kSurface, {}, ValueKind::File },
    OptionEntry { OptionId::Lights, "lights", 0, "off|AZ,POLAR[,AZ,POLAR]",
        "Where one or two lights stand, in degrees like the view.", kScenes },
    OptionEntry { OptionId::SizeColumn, "size-by", 0, "COL", "Column of the sizes of points.", kSurface },
    OptionEntry { OptionId::ColourColumn, "colour-by", 0, "COL",
        "Column of the values that points are coloured by. Without it, their heights.", kSurface },
    OptionEntry { OptionId::Sticks, "sticks", 0, "", "Points stand on sticks.", kSurface },
    OptionEntry { OptionId::Tubes, "tubes", 0, "", "Lines are tubes.", kSurface },
    OptionEntry { OptionId::Symbol, "symbol", 0, "SYMBOL",
        "What marks a point: sphere, cone, inverted-cone or cube; sphere without it.", kSurface, kSymbols },
    OptionEntry {
        OptionId::SymbolSize, "symbol-size", 0, "FACTOR", "How large symbols are; 1 without it.", kPlot | kSurface },
    OptionEntry { OptionId::Colouring, "colours", 0, "value|plain|columns|rows",
        "By the heights (without it), one colour, or a colour for each column or row of bars; series have one for each "
        "line.",
        kSurface, kColourings },
    OptionEntry { OptionId::Baseline, "baseline", 0, "Z",
        "Height that bars, series and sticks start at. Without it, 0 where the axis has it; sticks start at the lower "
        "end of the z axis.",
        kSurface },
    OptionEntry { OptionId::BarWidth, "bar-width", 0, "F[,F]",
        "Width of the bars against the usual one, along x and y.", kSurface },
    OptionEntry {
        OptionId::Along, "along", 0, "x|y", "The axis that series run along; x without it.", kSurface, kAlong },
    OptionEntry { OptionId::Variable, "variable", 0, "NAME",
        "Values of nodes or elements that a mesh is coloured by, or z. Without it, the colours that elements have, "
        "else the first values of the file.",
        kMesh },
    OptionEntry { OptionId::Clip, "clip", 0, "X0:X1,Y0:Y1,Z0:Z1",
        "Leave out the bricks and tetrahedra that do not lie inside of these ends; an end may be left out.", kMesh },
    OptionEntry { OptionId::Outline, "outline", 0, "", "Draw the outlines of elements alone.", kMesh },
    OptionEntry { OptionId::Solid, "solid", 0, "on|off", "Fill the elements; on without it.", kMesh, kOnOff },
    OptionEntry { OptionId::NoAntialias, "no-antialias", 0, "", "Do not smooth lines, nor the edges of a 3D picture.",
        kPlot | kScenes | kDraw },
    OptionEntry { OptionId::Title, "title", 0, "TEXT", "Title over the graph.", kGraphs },
    OptionEntry { OptionId::Description, "description", 0, "TEXT",
        "What the picture's file says for those who cannot see it. Without it, a sentence about kind, series and "
        "ranges.",
        kGraphs | kDraw },
    OptionEntry { OptionId::Footnote, "footnote", 0, "TEXT",
        "Small line below the graph, such as where data come from.", kGraphs },
    OptionEntry {
        OptionId::XTitle, "x-title", 0, "TEXT", "Title of the x axis. Without it, the column's name.", kGraphs },
    OptionEntry {
        OptionId::YTitle, "y-title", 0, "TEXT", "Title of the y axis. Without it, the columns' names.", kGraphs },
    OptionEntry { OptionId::ZTitle, "z-title", 0, "TEXT",
        "Title of the z axis or of the colour key. Without it, the column's name.", kColoured },
    OptionEntry { OptionId::XRange, "x-range", 0, "A:B",
        "Ends of the x axis, numbers or dates; an empty one is taken from the data.", kCharts },
    OptionEntry {
        OptionId::YRange, "y-range", 0, "A:B", "Ends of the y axis; an empty one is taken from the data.", kCharts },
    OptionEntry { OptionId::ZRange, "z-range", 0, "A:B",
        "Heights that colours reach from and to, and the z axis except with mesh.", kColoured },
    OptionEntry { OptionId::Log, "log", 0, "[x|y|xy]", "Logarithmic axes; y without a value.", kPlot, kAxes,
        ValueKind::Text, false, true },
    OptionEntry { OptionId::Reverse, "reverse", 0, "x|y|xy", "Axes that run backwards, to the left or down.", kPlot,
        kAxes, ValueKind::Text, true },
    OptionEntry { OptionId::Equal, "equal", 0, "",
        "A unit of x is as long as one of y: circles are round, and maps keep their shape.", kPlot },
    OptionEntry { OptionId::Grid, "grid", 0, "off|major|both", "Grid lines; major without it.", kPlot, kGrids },
    OptionEntry { OptionId::Legend, "legend", 0, "WHERE",
        "auto (where there is room, when there are several curves), off, a corner: tl, tr, bl or br, or ends (names at "
        "the ends of lines where there is room).",
        kPlot, kLegends },
    OptionEntry { OptionId::Caption, "caption", 0, "TEXT@X,Y",
        "A text with its top-left corner at fractions of the plotting area, 0,0 its top left; \\n starts a line.",
        kPlot, {}, ValueKind::Text, true },
    OptionEntry { OptionId::Palette, "palette", 0, "NAME",
        "Colours of the curves: distinct, grey, or colours from a colour map (ombrel colours lists them).", kPlot, {},
        ValueKind::Palette },
    OptionEntry { OptionId::Theme, "theme", 0, "light|dark|print", "Colours of the graph; light without it.",
        kGraphs | kGallery, kThemes },
    OptionEntry { OptionId::DateFormat, "date-format", 0, "FORMAT",
        "The x values are dates in this form, such as %d.%m.%Y (%Y %y %m %b %B %d %j %H %M %S). Without it, dates "
        "are found by themselves, also seconds and milliseconds since 1970; none keeps those numbers.",
        kPlot | kInfo },
    OptionEntry { OptionId::DateOrder, "date-order", 0, "dmy|mdy|ymd",
        "The order in dates like 01/02/2020; without it, a day above 12 in the column settles it.", kPlot,
        kDateOrders },
    OptionEntry { OptionId::Header, "header", 0, "yes|no",
        "The first row names the columns, or not. Without it, it does when one of its cells is a text.",
        kCharts | kInfo, kYesNo },
    OptionEntry { OptionId::Separator, "separator", 0, "CHAR",
        "What stands between cells: a character, tab, blanks (any number of them) or none. Without it, what the first "
        "lines look like.",
        kCharts | kInfo },
    OptionEntry { OptionId::Decimal, "decimal", 0, "point|comma",
        "The mark before the fraction of numbers. Without it, what the first lines look like.", kCharts | kInfo,
        kDecimalMarks },
    OptionEntry { OptionId::Missing, "missing", 0, "WORD[,WORD...]",
        "Cells of these words or numbers are gaps, besides empty ones, NA, N/A, NaN, null, - and ?.", kCharts | kInfo },
    OptionEntry { OptionId::Size, "size", 0, "WxH", "Size of a picture in pixels; 1000x640 without it.", kPictures },
    OptionEntry { OptionId::Scale, "scale", 0, "N",
        "Fonts, lines and marks of a picture N times as large, for dense screens; 1 without it.", kGraphs | kDraw },
    OptionEntry { OptionId::Page, "page", 0, "PAGE",
        "Size of a page (.pdf .svg .ps): A5, A4, A3 or Letter, which lie on their long side, or WxH in millimetres; A4 "
        "without it.",
        kPictures },
    OptionEntry { OptionId::Vector, "vector", 0, "auto|all",
        "Of marks on a page: auto leaves out those that others hide, and makes an image of 600 dots per inch of more "
        "than "
        "10,000 of a kind; all keeps each one as a shape. auto without it.",
        kPlot | kContour | kDraw, kVectors },
    OptionEntry { OptionId::LineWidth, "line-width", 0, "N",
        "Width of the lines in pixels at 96 to the inch; 2 without it, 1 in a 3D scene.", kPlot | kSurface },
    OptionEntry { OptionId::Opacity, "opacity", 0, "P",
        "How opaque lines, marks and fills are, 0.01 to 1; where marks lie over each other they are darker.", kPlot },
    OptionEntry { OptionId::Symbols, "symbols", 0, "",
        "Mark the points, each curve of a plot with a symbol of its own.", kPlot | kSurface },
    OptionEntry {
        OptionId::Save, "save", 0, "DOC", "Store the graph as a document.", kGraphs | kDraw, {}, ValueKind::File },
    OptionEntry { OptionId::InPlace, "in-place", 0, "CLASS",
        "The document holds the contents of a graph of CLASS (C2DGraph) and not a reference to one.",
        kDraw | kConvert | kInfo },
    OptionEntry { OptionId::Watch, "watch", 0, "",
        "Draw again whenever FILE changes, until Ctrl-C. When it cannot be drawn, the last picture stays.", kGraphs },
    OptionEntry {
        OptionId::Verbose, "verbose", 'v', "", "Tell what was assumed about the input, on standard error.", kAll },
    OptionEntry { OptionId::Help, "help", 'h', "", "Print this text.", kAll },
    OptionEntry { OptionId::Version, "version", 0, "", "Print the version.", kAll },
};

constexpr std::array kCommands {
    CommandEntry { Command::Plot, "plot", "ombrel plot [options] FILE...",
        "Draw columns of text tables (CSV, TSV, blanks; - is standard input)." },
    CommandEntry { Command::Surface, "surface", "ombrel surface FILE",
        "Draw heights in 3D, as a lit surface or what --kind says: a text table (matrix or columns x, y, z), a .tvl or "
        "a .dem file." },
    CommandEntry { Command::Contour, "contour", "ombrel contour FILE", "Draw the same as a map with contours." },
    CommandEntry { Command::Mesh, "mesh", "ombrel mesh FILE",
        "Draw a finite-element mesh (.tvm), solid objects (.tvo), or the faces of a drawing (.dxf)." },
    CommandEntry { Command::Draw, "draw", "ombrel draw DOCUMENT [options]", "Draw a stored graph document." },
    CommandEntry { Command::Convert, "convert", "ombrel convert DOCUMENT -o OUT",
        "Write a document of any age in the newest layout (.ombrel), or its curves as a table (.csv; standard output "
        "without -o)." },
    CommandEntry { Command::Info, "info", "ombrel info FILE...",
        "Print what is in a file: the object tree of a document; columns, types and gaps of a table." },
    CommandEntry { Command::Gallery, "gallery", "ombrel gallery DIRECTORY",
        "Draw a picture of every kind of plot, and a page to leaf through them." },
    CommandEntry { Command::Colours, "colours", "ombrel colours [NAME...] [-o OUT]", "List or draw colour maps." },
};

} // namespace

std::span<OptionEntry const> AllOptions() { return kOptions; }

std::span<CommandEntry const> AllCommands() { return kCommands; }

bool TakesOption(Command command, OptionEntry const& option)
{
    return command == Command::None || (option.commands & SetOf(command)) != 0;
}

} // namespace ombrel::host
