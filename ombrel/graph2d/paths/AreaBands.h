#pragma once
#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/paths/PointSummary.h"

#include <cstddef>
#include <span>
#include <vector>

namespace ombrel {

/// Curves that are stacked over shared x values, as stored. Nothing is owned.
struct AreaStack {
    struct Layer {
        double const* ys;
        /// Points beyond them count as 0.
        std::size_t count;
        /// log10 values are stacked.
        bool logarithmic;
        /// No value is missing.
        bool complete = false;
    };
    double const* xs = nullptr;
    /// Columns, each an x value with a value of every layer.
    std::size_t count = 0;
    bool xLogarithmic = false;
    /// No x is missing, and none is smaller than the one before.
    bool xAscends = false;
    std::vector<Layer> layers;

    /// Column i's x as it is drawn; a gap stays a gap.
    double X(std::size_t i) const;
    /// A layer's values in the columns first ≤ i < last as they are drawn; missing ones are 0. They are put into the
    /// buffer, or lie as they are where they are stored.
    double const* Load(std::size_t layer, std::size_t first, std::size_t last, double* buffer) const;
};

/// The smallest and largest of 0 and the totals through each value, added up in order.
Extremes TotalsOf(std::span<double const> values);

/// As TotalsOf over all columns; limited to half the largest double. Empty without columns or layers.
Extremes TotalsOf(AreaStack const& stack);

/// What the values of a column are divided by when it is scaled to span 1; 1 for a column without extent.
double NormalDivisor(Extremes const& totals);

/// The pixel columns left … right.
struct PixelStrip {
    int left;
    int right;
};

enum class Normalising { No, Yes };

/// The columns of a stack that its picture needs, ascending: of those that fall into one pixel column one after the
/// other the first, the last, and those with the smallest and largest total through each layer. Bands and outlines of
/// these alone cover the same pixels as those of all: what lies between the first and the last of them are upright
/// edges, which bound no pixel of a filling, and an outline passes over the pixels between the extremes. Of those
/// that lie one after the other on one side of the strip only the first and the last are kept. Those whose x is
/// missing are left out.
std::vector<std::size_t> VisibleColumns(
    AreaStack const& stack, PortMapping const& map, PixelStrip const& strip, Normalising normalising);

/// Divides each column of rows of equal length by its divisor.
void NormaliseColumns(std::span<double* const> rows, std::size_t count);

/// Points in real units.
struct RealPath {
    std::vector<double> xs;
    std::vector<double> ys;
    void Add(CRealPoint const& p);
};

/// The points whose pixels lie in the strip, and where the segments between points cross its edges, in the order in
/// which the line meets them and each once.
RealPath ClipToStrip(
    std::span<double const> xs, std::span<double const> ys, CPort const& port, PixelStrip const& strip);

/// Limits each corner of a polygon to the rows of the rectangle. Before a corner come the points where the edge from
/// the corner before it crosses the rectangle's top and bottom sides, in the order in which the edge meets them, so
/// that the outline runs along the sides and turns where the unlimited one left. The closing edge is not looked at.
std::vector<CPoint> ClipToRows(std::span<CPoint const> polygon, CRect const& rect);

/// How far the filling of a band goes.
enum class BandReach {
    Own,
    /// Also under the next band where that lies beyond it all along: viewers that smooth the edges of each filling by
    /// itself then have nothing light to show between the two.
    UnderNext,
};

/// The bands of rows of values over xs as polygons on the device, one a row: along the totals with the row's values,
/// then back along the totals without them, which start at 0. There is a reach for each row, or none.
std::vector<std::vector<CPoint>> MakeBands(std::span<double const> xs, std::span<std::span<double const> const> rows,
    PortMapping const& map, std::span<BandReach const> reaches = {});

} // namespace ombrel
