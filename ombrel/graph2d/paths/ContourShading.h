#pragma once
#include "ombrel/graph3d/ContourLevels.h"
#include "ombrel/platform/framework/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace ombrel {

class CColourMap;
class CMesh;
class CPort;

/// Reads a mesh's heights at the crossings of columns and rows of pixels, as CMesh::Interpolate does, but many at once.
class MeshSampler {
public:
    /// The data coordinates of the pixels' columns and rows. None of it is owned.
    MeshSampler(CMesh const& mesh, std::span<double const> xs, std::span<double const> ys);
    /// The heights along a row of pixels, one for each column; the gap marker where there is none.
    void ReadRow(std::size_t row, std::span<double> heights) const;

private:
    struct Place {
        std::size_t cell = 0;
        double fraction = 0.0;
        bool inside = false;
    };
    static Place PlaceOf(double coordinate, double first, double step, int cells);

    CMesh const& m_mesh;
    std::span<double const> m_xs;
    std::span<double const> m_ys;
    std::vector<Place> m_columns;
    std::vector<Place> m_rows;
};

/// The colour of a height: that of its band, or of a colour map where there are no levels.
struct HeightColours {
    ContourBands bands;
    /// One more than there are levels; empty for the colour map.
    std::span<DWORD const> colours;
    CColourMap const* map = nullptr;
    double mapMin = 0.0;
    double mapMax = 0.0;

    COLORREF ColourOf(double height) const;
    /// The same for many; as pixels of a bitmap.
    void Colour(std::span<double const> heights, std::span<std::uint32_t> pixels) const;
};

/// Gives every pixel of the device rectangle the colour of the height at its place; pixels without a height stay as
/// they are. On pages a picture of at most 300 dots to the inch does so.
void ShadeHeights(CPort& port, CRect const& rect, CMesh const& mesh, HeightColours const& colours);

} // namespace ombrel
