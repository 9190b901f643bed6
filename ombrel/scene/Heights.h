#pragma once
#include "ombrel/platform/framework/Export.h"

#include <cstddef>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace ombrel {

class C3DRowColCurve;
class ChartNotes;

/// Evenly spaced coordinates of a grid's columns or rows.
struct GridAxis {
    double first = 0.0;
    double last = 1.0;
    /// At least 2.
    std::size_t count = 2;
    std::string title;

    double Step() const { return (last - first) / static_cast<double>(count - 1); }
    double At(std::size_t index) const { return first + static_cast<double>(index) * Step(); }
};

/// Heights over a grid.
struct Grid {
    GridAxis x;
    GridAxis y;
    /// What the heights are.
    std::string title;
    /// Row by row from the first y, x.count heights each; NaN is a gap.
    std::vector<double> heights;
    /// How errors and notes call it: the path of a file.
    std::string source = "heights";
};

/// Points in space; what is no number is NaN.
struct Points {
    std::vector<double> x;
    std::vector<double> y;
    std::vector<double> z;
    /// One a point each, or empty: what symbols are as large as, and coloured by, and the texts at the points.
    std::vector<double> sizes;
    std::vector<double> colours;
    std::vector<std::string> labels;
    std::string xTitle;
    std::string yTitle;
    std::string zTitle;
    std::string colourTitle;
    /// How errors and notes call them: the path of a file.
    std::string source = "points";

    std::size_t Count() const { return x.size(); }
};

/// The heights of a file that surfaces read by themselves: z values (.tvl) or an elevation model (.dem).
struct HeightFile {
    std::string path;
};

/// What surfaces, bars, series and nets are made of.
using HeightSource = std::variant<Grid, Points, HeightFile>;

/// What the axes and the colours of heights are called.
struct HeightTitles {
    std::string x;
    std::string y;
    std::string z;
    /// x and y are lengths of one unit: their axes should have the same scale.
    bool sameUnits = false;
};

/// A grid of rows × columns heights, row by row, the first row at the lowest y; NaN is a gap. Columns and rows lie at
/// 0, 1, 2, ... Throws ChartError when there are fewer than 2 × 2, or not as many heights.
OMBREL_EXPORT Grid MakeGrid(std::span<double const> heights, std::size_t rows, std::size_t columns);

/// Points in their order. Throws ChartError when there are not as many of all coordinates.
OMBREL_EXPORT Points MakePoints(std::span<double const> x, std::span<double const> y, std::span<double const> z);

/// The grid that the points form when there is one at each of its crossings, in any order; else the points.
OMBREL_EXPORT HeightSource GridOrPoints(Points points);

/// How errors and notes call it.
OMBREL_EXPORT std::string const& SourceOf(HeightSource const& heights);

/// Whether surfaces read the file by themselves, by the ending of its name.
OMBREL_EXPORT bool IsHeightFile(std::string const& path);

/// Hands the heights of a grid or a file over to the curve, as data of a table. Throws ChartError and Error.
OMBREL_EXPORT HeightTitles GiveHeights(HeightSource&& heights, C3DRowColCurve& curve, ChartNotes& notes);

} // namespace ombrel
