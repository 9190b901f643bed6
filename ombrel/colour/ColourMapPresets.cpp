#include "ombrel/colour/ColourMap.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/gdi/Palette.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ombrel {
namespace {

constexpr char const* kSpectrum = "Spectrum";
constexpr char const* kExtendedSpectrum = "Extended Spectrum";
constexpr char const* kGreyscale = "Greyscale";

} // namespace

int CColourMap::IsPreset(CString const& name)
{
    return name == CString(kSpectrum) || name == CString(kExtendedSpectrum) || name == CString(kGreyscale) ? 1 : 0;
}

/// All channels with the same positions.
void CColourMap::Build(CString const& name, ColourMode mode, CDoubleArray const& positions,
    std::array<CByteArray, kChannels> const& values)
{
    Clear();
    m_name = name;
    m_colourMode = mode;
    for (std::size_t c = 0; c < values.size(); ++c)
        m_channels[c] = { positions, values[c] };
    Update();
}

void CColourMap::CreateSpectrum()
{
    SetRange(0.0, 1.0);
    Build(kSpectrum, cmHSL, { 0.0, 1.0 }, { { { 163, 0 }, { 238, 238 }, { 119, 119 } } });
}

void CColourMap::CreateExtendedSpectrum()
{
    SetRange(0.0, 1.0);
    Build(kExtendedSpectrum, cmHSL, { 0.0, 1.0 }, { { { 214, 0 }, { 238, 238 }, { 119, 119 } } });
}

void CColourMap::CreateGreyscale()
{
    constexpr int kPoints = 20;
    constexpr double kWhite = 238.0;
    CDoubleArray positions;
    std::array<CByteArray, kChannels> values;
    for (int i = 0; i < kPoints; ++i) {
        double const position = static_cast<double>(i) / (kPoints - 1);
        positions.Add(position);
        values[0].Add(0);
        values[1].Add(0);
        values[2].Add(static_cast<BYTE>(kWhite * std::sqrt(position)));
    }
    SetRange(0.0, 1.0);
    Build(kGreyscale, cmHSL, positions, values);
}

void CColourMap::CreateGraded(COLORREF colour)
{
    BYTE h = 0;
    BYTE s = 0;
    BYTE l = 0;
    CVUtils::RGBToHSL(GetRValue(colour), GetGValue(colour), GetBValue(colour), h, s, l);
    auto const lighter = static_cast<BYTE>(std::min(l + 75, 239));
    Build("Graded", cmHSL, { 0.0, 1.0 }, { { { h, h }, { s, s }, { l, lighter } } });
}

void CColourMap::CreateColourmap(CPalette const* palette)
{
    if (!palette)
        return;
    int const n = palette->GetEntryCount();
    std::vector<PALETTEENTRY> entries(static_cast<std::size_t>(n));
    palette->GetPaletteEntries(0, static_cast<UINT>(n), entries.data());
    CDoubleArray positions;
    std::array<CByteArray, kChannels> values;
    for (PALETTEENTRY const& entry : entries) {
        positions.Add(positions.GetSize());
        values[0].Add(entry.peRed);
        values[1].Add(entry.peGreen);
        values[2].Add(entry.peBlue);
    }
    SetRange(0.0, n - 1.0);
    Build("Colormap", cmRGB, positions, values);
}

} // namespace ombrel
