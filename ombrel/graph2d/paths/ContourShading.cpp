#include "ombrel/graph2d/paths/ContourShading.h"
#include "ombrel/colour/ColourMap.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/foundation/Bilinear.h"
#include "ombrel/graph3d/Mesh.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace ombrel {

namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;

/// Device pixels that one pixel of a picture covers in each direction.
int PixelsPerDot(CDC const& dc)
{
    constexpr int kFinest = 300;
    int const resolution = std::max(dc.GetDeviceCaps(LOGPIXELSX), dc.GetDeviceCaps(LOGPIXELSY));
    return dc.IsPrinting() ? std::max(1, (resolution + kFinest - 1) / kFinest) : 1;
}

/// Device pixels from first to last of which each so many become one of a picture.
struct PixelRun {
    LONG first;
    LONG last;
    int size;

    std::size_t Count() const { return static_cast<std::size_t>((last - first + size - 1) / size); }
    /// Where the middle of each lies; unitsAt tells the data coordinate of a device pixel.
    template <typename UnitsAt> std::vector<double> Coordinates(UnitsAt const& unitsAt) const
    {
        std::vector<double> coordinates(Count());
        for (std::size_t i = 0; i < coordinates.size(); ++i) {
            LONG const middle = first + static_cast<LONG>(i) * size + size / 2;
            coordinates[i] = unitsAt(std::min(middle, last - 1));
        }
        return coordinates;
    }
};

/// A bitmap in a context of its own, for copying.
class Picture {
public:
    Picture(std::size_t width, std::size_t height, int bitsPerPixel)
    {
        if (!m_bitmap.CreateBitmap(static_cast<int>(width), static_cast<int>(height), bitsPerPixel))
            throw new CResourceException;
        m_dc.SelectObject(&m_bitmap);
    }
    Raster& Pixels() { return *m_bitmap.GetRaster(); }
    void CopyTo(CDC& to, CRect const& rect, DWORD operation)
    {
        CSize const size = m_bitmap.GetSize();
        to.StretchBlt(rect.left, rect.top, rect.Width(), rect.Height(), &m_dc, 0, 0, size.cx, size.cy, operation);
    }

private:
    CBitmap m_bitmap;
    CDC m_dc;
};

} // namespace

MeshSampler::Place MeshSampler::PlaceOf(double coordinate, double first, double step, int cells)
{
    double const at = (coordinate - first) / step;
    // Ends of the range that are not computed in the same way are left to the mesh.
    if (!(at >= 0.0 && at <= cells))
        return {};
    double const cell = std::min(std::floor(at), cells - 1.0);
    return { static_cast<std::size_t>(cell), at - cell, true };
}

MeshSampler::MeshSampler(CMesh const& mesh, std::span<double const> xs, std::span<double const> ys)
    : m_mesh(mesh)
    , m_xs(xs)
    , m_ys(ys)
{
    m_columns.reserve(xs.size());
    for (double const x : xs)
        m_columns.push_back(PlaceOf(x, mesh.GetXMin(), mesh.GetXDel(), mesh.GetNumCols()));
    m_rows.reserve(ys.size());
    for (double const y : ys)
        m_rows.push_back(PlaceOf(y, mesh.GetYMin(), mesh.GetYDel(), mesh.GetNumRows()));
}

void MeshSampler::ReadRow(std::size_t row, std::span<double> heights) const
{
    auto const [j, fy, rowIsInside] = m_rows[row];
    std::size_t const nodes = static_cast<std::size_t>(m_mesh.GetNumCols()) + 1;
    double const* const below = m_mesh.GetZVals().data() + j * nodes;
    double const* const above = below + nodes;
    for (std::size_t k = 0; k < m_columns.size(); ++k) {
        auto const [i, fx, columnIsInside] = m_columns[k];
        double const z0 = below[i];
        double const z1 = below[i + 1];
        double const z2 = above[i + 1];
        double const z3 = above[i];
        bool const isWhole
            = (z0 <= kGridGap) & (z1 <= kGridGap) & (z2 <= kGridGap) & (z3 <= kGridGap) & rowIsInside & columnIsInside;
        double const height = Bilinear(z0, z1, z2, z3, fx, fy);
        heights[k] = isWhole && !IsGridGap(height) ? height : m_mesh.Interpolate(m_xs[k], m_ys[row]);
    }
}

COLORREF HeightColours::ColourOf(double height) const
{
    return colours.empty() ? map->GetColour(height, mapMin, mapMax)
                           : colours[static_cast<std::size_t>(bands.Find(height))];
}

void HeightColours::Colour(std::span<double const> heights, std::span<std::uint32_t> pixels) const
{
    if (colours.empty()) {
        std::vector<COLORREF> found(heights.size());
        map->GetColours(heights, mapMin, mapMax, found);
        std::transform(found.begin(), found.end(), pixels.begin(), Raster::FromColour);
        return;
    }
    std::span<double const> const levels = bands.GetLevels();
    if (!std::is_sorted(levels.begin(), levels.end())) {
        std::transform(heights.begin(), heights.end(), pixels.begin(),
            [this](double height) { return Raster::FromColour(ColourOf(height)); });
        return;
    }
    // Neighbours mostly share a band.
    double low = 1.0;
    double high = 0.0;
    std::uint32_t pixel = 0;
    for (std::size_t i = 0; i < heights.size(); ++i) {
        double const v = heights[i];
        if (!(v > low && v <= high)) {
            auto const band = static_cast<std::size_t>(bands.Find(v));
            pixel = Raster::FromColour(colours[band]);
            low = band > 0 ? levels[band - 1] : -std::numeric_limits<double>::infinity();
            high = band < levels.size() ? levels[band] : std::numeric_limits<double>::infinity();
        }
        pixels[i] = pixel;
    }
}

void ShadeHeights(CPort& port, CRect const& rect, CMesh const& mesh, HeightColours const& colours)
{
    if (rect.left >= rect.right || rect.top >= rect.bottom || !mesh.HasNodes())
        return;
    CDC& dc = *port.GetDC();
    int const size = PixelsPerDot(dc);
    PixelRun const across { rect.left, rect.right, size };
    PixelRun const down { rect.top, rect.bottom, size };
    std::vector<double> const xs = across.Coordinates([&](LONG x) {
        return port.WindowToUnits(POINT { x, rect.top }).x;
    });
    std::vector<double> const ys = down.Coordinates([&](LONG y) {
        return port.WindowToUnits(POINT { rect.left, y }).y;
    });
    MeshSampler const sampler(mesh, xs, ys);
    Picture picture(across.Count(), down.Count(), 24);
    std::optional<Picture> mask;
    std::vector<double> heights(across.Count());
    for (std::size_t row = 0; row < down.Count(); ++row) {
        sampler.ReadRow(row, heights);
        std::span const pixels(picture.Pixels().Row(static_cast<int>(row)), heights.size());
        colours.Colour(heights, pixels);
        if (std::none_of(heights.begin(), heights.end(), [](double height) { return IsGridGap(height); }))
            continue;
        if (!mask)
            mask.emplace(across.Count(), down.Count(), 24);
        std::uint32_t* const masked = mask->Pixels().Row(static_cast<int>(row));
        for (std::size_t i = 0; i < heights.size(); ++i) {
            if (IsGridGap(heights[i])) {
                masked[i] = kWhite;
                pixels[i] = 0;
            }
        }
    }
    SavedDC const saved(dc);
    if (mask)
        mask->CopyTo(dc, rect, SRCAND);
    picture.CopyTo(dc, rect, mask ? SRCPAINT : SRCCOPY);
}

} // namespace ombrel
