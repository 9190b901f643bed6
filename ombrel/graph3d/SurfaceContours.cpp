#include "ombrel/foundation/Utils.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/render/ColourTexture.h"

namespace ombrel {
// --- Colours

COLORREF CSurface::GetContourLineLUTColour(double value) const
{
    double dataMin = 0.0;
    double dataMax = 0.0;
    double low = 0.0;
    double high = 0.0;
    GetUntransformedDataAndLUTRanges(dataMin, dataMax, low, high);
    return GetColourmap()->GetColour(value, low, high);
}

COLORREF CSurface::GetWireframeLUTColour(int i, int j) const
{
    Range const& range = HasRadius() ? m_untransformedR : m_untransformedZ;
    return m_wireframeColourmap.GetColour(GetFVal(i, j), range.min, range.max);
}

double CSurface::Get1DTextureCoord(int i, int j) const
{
    double min = 0.0;
    double max = 0.0;
    GetUntransformedDataRange(min, max);
    return GetTexelPlace(ColourValues()[m_surfaceMesh->GetIndex(i, j)], min, max);
}

std::vector<BYTE> CSurface::Make1DTexture() const
{
    double min = 0.0;
    double max = 0.0;
    GetUntransformedDataRange(min, max);
    bool const hasBands = m_contours.on && m_contours.mode != cmLines;
    return MakeTexels(min, max, [&](double value) { return hasBands ? GetContourColour(value) : GetLUTColour(value); });
}

ColourKeySource CSurface::GetColourKeySource() const
{
    ColourKeySource source = C3DRowColCurve::GetColourKeySource();
    if (m_contours.on) {
        source.style = ColourKeySource::Style::Bands;
        GetContourColourKeyEntries(source.bandColours, source.bandValues);
    }
    return source;
}

// --- Levels

ContourLevels CSurface::MakeContourLevels() const
{
    double lo = 0.0;
    double hi = 0.0;
    GetUntransformedDataRange(lo, hi);
    return MakeLevels(m_contours.GetLevels(m_arbitraryLevels), lo, hi);
}

ContourColours CSurface::MakeContourColours() const
{
    double lo = 0.0;
    double hi = 0.0;
    GetUntransformedDataRange(lo, hi);
    return { m_contours.GetLevels(m_arbitraryLevels), lo, hi, [this](double value) { return GetLUTColour(value); } };
}

void CSurface::BuildContours()
{
    m_contourColours.Replace(m_contours.on ? MakeContourColours() : ContourColours(), this);
    m_lineColours.RemoveAll();
    double lo = 0.0;
    double hi = 0.0;
    GetUntransformedDataRange(lo, hi);
    auto const n = static_cast<int>(GetContourLevels().size());
    double const step = n > 1 ? (hi - lo) / (n - 1) : 0.0;
    for (int k = 0; k < n; ++k)
        m_lineColours.Add(GetContourLineLUTColour(lo + k * step));
}

void CSurface::GetContourColourKeyEntries(CDWordArray& colours, CDoubleArray& values) const
{
    double lo = 0.0;
    double hi = 0.0;
    GetUntransformedDataRange(lo, hi);
    MakeContourColours().GetKeyEntries(UseColourmap() ? std::optional(lo) : std::nullopt, colours, values);
}

// --- Lines

void CSurface::MakeContourFinder() const
{
    CSurfaceMesh const& mesh = *m_surfaceMesh;
    ContourGrid grid { ColourValues(), mesh.GetNumCols(), mesh.GetNumRows(), mesh.GetXMin(), mesh.GetYMin(),
        mesh.GetXDel(), mesh.GetYDel(), {} };
    m_missing.clear();
    // Values of their own may be there where the node is missing.
    if (&ColourValues() != &mesh.GetZVals()) {
        m_missing.resize(mesh.GetZVals().size());
        for (std::size_t n = 0; n < m_missing.size(); ++n)
            m_missing[n] = IsGridGap(mesh.GetZVals()[n]) ? 1 : 0;
        grid.leftOut = m_missing;
    }
    m_contourFinder = std::make_unique<ContourFinder>(grid);
}

void CSurface::FindContourSegments(double level, std::vector<ContourSegment>& segments) const
{
    if (!m_surfaceMesh->HasRange())
        return;
    if (!m_contourFinder)
        MakeContourFinder();
    m_contourFinder->FindSegments(level, segments);
}

CVertex CSurface::GetContourPoint(ContourSegment const& segment, std::array<double, 2> const& point, double level) const
{
    double height = level;
    if (!m_surfaceMesh->GetValues().empty()) {
        int const i = segment.i;
        int const j = segment.j;
        CSurfaceMesh const& mesh = *m_surfaceMesh;
        height
            = CVUtils::InterpolateBilinear(GetFVal(i, j), GetFVal(i + 1, j), GetFVal(i + 1, j + 1), GetFVal(i, j + 1),
                (point[0] - mesh.GetMeshX(i)) / mesh.GetXDel(), (point[1] - mesh.GetMeshY(j)) / mesh.GetYDel());
    }
    return GetCartesian(point[0], point[1], height);
}

int CSurface::cell(double z0, double z1, double z2, double z3, double level)
{
    return GetContourCase({ 0.0, 0.0, 1.0, 1.0, { z0, z1, z2, z3 } }, level);
}

int CSurface::lines(int contourCase, ContourCell const& cell, double level, std::span<ContourSegment, 2> segments)
{
    return GetContourSegments(contourCase, cell, level, segments);
}

} // namespace ombrel
