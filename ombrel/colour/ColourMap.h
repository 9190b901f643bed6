#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace ombrel {

class ArchiveFields;
class CPalette;

/// The control points of one channel of a colour map: positions ascending, as many values.
struct ColourChannel {
    CDoubleArray positions;
    /// 0 … 255 for red, green and blue; 0 … 240 for hue, saturation and lightness.
    CByteArray values;
};

/// A piecewise linear way from data values to entries of the colour table: values ascending, as many indices.
struct ColourScale {
    CDoubleArray values;
    /// Kept for the host, in any number.
    CDoubleArray auxiliaryValues;
    /// 0 … 999 each.
    CDWordArray indices;
};

/// Ten values that a host keeps in each map; the library stores them and never looks at them.
struct ColourMapSettings {
    int value1 = 5;
    int value2 = 4;
    double value3 = 0.2;
    double value4 = 0.0;
    int value5 = 1;
    int value6 = 5;
    int value7 = 4;
    double value8 = 50.0;
    double value9 = 0.0;
    int value10 = 2;
};

/// Turns data values into colours through a table of 1000 colours, computed from the control points of three channels.
///
/// Only the presets, Load and Update compute the table: after a change of the control points, call Update. A new map is
/// black everywhere. Maps are values: they may be copied.
/// Errors: where it is not said otherwise, only Serialize throws (CArchiveException*, newly allocated). What it has
/// read before that is kept, and is sound: no channel, table or scale is taken over in part.
class OMBREL_EXPORT CColourMap : public CObject {
public:
    static constexpr int kTableSize = 1000;
    static constexpr int kChannels = 3;
    /// What the channels hold. Other numbers are stored, and count as RGB.
    enum ColourMode : int { cmRGB = 0, cmHSL = 1 };
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CColourMap();
    /// The table is stored and loaded as it is. Indices above 999 are limited on loading; a channel or scale that is
    /// not ascending or has arrays of unequal length, or a table that has not 1000 entries, throws.
    void Serialize(CArchive& ar) override;

    // Presets: each replaces control points, scale and name, and computes the table

    /// Blue, cyan, green, yellow, red.
    void CreateSpectrum();
    /// From magenta on.
    void CreateExtendedSpectrum();
    /// The lightness follows the square root of the position.
    void CreateGreyscale();
    /// From the colour to a lighter one.
    void CreateGraded(COLORREF colour);
    /// The palette's colours at 0, 1, 2, …; not kept. Without one, nothing changes; without entries, the map is black.
    void CreateColourmap(CPalette const* palette);
    /// 1 for "Spectrum", "Extended Spectrum" and "Greyscale", which Load makes without a file.
    static int IsPreset(CString const& name);

    // Looking colours up

    /// The colour of a value when the map spans min to max (or, with min above max, the reverse). Values outside get
    /// the first or the last colour; so do values below and above a range of no width. What is not a number gets the
    /// first colour.
    COLORREF GetColour(double value, double min, double max) const
    {
        int const index
            = m_scale.values.GetArray().IsEmpty() ? TableIndex(value, min, max) : ScaledIndex(value, min, max);
        return m_table.GetData()[index];
    }
    /// The same for many values at once, and faster: colours[i] becomes that of values[i]. Without room for all of them
    /// CInvalidArgException* (newly allocated) is thrown.
    void GetColours(std::span<double const> values, double min, double max, std::span<COLORREF> colours) const;
    /// The colour, lighter by the value's place between min and max, where it must lie; as it is unless min < max.
    static COLORREF GetGradedColour(COLORREF colour, double value, double min, double max);
    /// Replaces out by the colours at count positions, evenly from the first control point to the last. One alone
    /// stands at the first; below one there are none.
    void GetColours(int count, CDWordArray& out) const;
    /// Computes the table from the control points.
    void Update() { GetColours(kTableSize, m_table); }
    CDWordArray const& GetColourTable() const { return m_table; }

    // Control points, scale, state; none of these computes the table

    /// channel 0 … 2; any other throws CInvalidArgException* (newly allocated).
    ColourChannel const& GetChannel(int channel) const { return m_channels[CheckedIndex(channel, kChannels)]; }
    /// Replaces the control points of channel 0 … 2: 1, or 0 with nothing changed when there is no such channel, the
    /// positions are not ascending or the numbers of positions and values differ.
    int SetChannel(int channel, CDoubleArray const& positions, CByteArray const& values);
    ColourScale const& GetScale() const { return m_scale; }
    /// Replaces the scale (an empty one for none): 1, or 0 with nothing changed when its values are not ascending, the
    /// numbers of values and indices differ or an index lies above 999.
    int SetScale(ColourScale const& scale);
    /// Two black control points, at the ends of the range, for channel 0 … 2; with −1 for all of them, and no scale.
    /// Ends that are not numbers count as 0 and 1.
    void Reset(int channel);
    int GetColourMode() const { return m_colourMode; }
    /// With convert, and where CheckOKToConvert allows it, the control points keep their colours; otherwise a change of
    /// the mode resets the map.
    void SetColourMode(int mode, int convert);
    /// 1 when all channels have the same positions, else 0.
    int CheckOKToConvert() const;
    /// 1 when every channel has two control points, 0 at position 0 and 0 at position 1; else 0.
    int IsDefault() const;
    /// Where Reset puts control points. Of no other effect.
    void GetRange(double& min, double& max) const;
    void SetRange(double min, double max);
    CString const& GetName() const { return m_name; }
    void SetName(CString const& name) { m_name = name; }

    // Files: an archive that holds one map; these return 1 when done, else 0

    /// A preset by its name, else a file. A file that cannot be opened changes nothing; one that is damaged leaves what
    /// was read before the damage.
    int Load(CString const& path);
    /// Whatever goes wrong, an earlier file stays as it was.
    int Save(CString const& path);
    /// The name that the file gives its map, without white space at its ends; 0 when there is none.
    static int GetNameFromFile(CString const& path, CString& name);
    /// The file or preset last loaded from or saved to.
    CString const& GetPathName() const { return m_pathName; }

    ColourMapSettings settings;

protected:
    /// Empties the channels and the scale.
    void Clear();
    /// One channel's value at a position; 0 outside its control points, and where there are fewer than two.
    BYTE GetYVal(double x, CDoubleArray const& positions, CByteArray const& values) const;
    /// Replaces out by one channel's values at count positions, as GetColours places them.
    void GetColours(int count, CDoubleArray const& positions, CByteArray const& values, CByteArray& out) const;

private:
    static int TableIndex(double value, double min, double max);
    int ScaledIndex(double value, double min, double max) const;
    static int LimitedIndex(double index);
    static bool IsWide(double min, double max);
    /// The largest value of a channel.
    int GetLimit() const { return m_colourMode == cmHSL ? 239 : 255; }
    void Build(CString const& name, ColourMode mode, CDoubleArray const& positions,
        std::array<CByteArray, kChannels> const& values);
    void SerializeChannel(ArchiveFields& fields, ColourChannel& channel);
    void SerializeTable(ArchiveFields& fields);
    void SerializeScale(ArchiveFields& fields, int version);

    std::array<ColourChannel, kChannels> m_channels;
    CDWordArray m_table;
    ColourScale m_scale;
    int m_colourMode = cmRGB;
    CString m_name;
    double m_rangeMin = 0.0;
    double m_rangeMax = 1.0;
    CString m_pathName;
};

inline int CColourMap::LimitedIndex(double index)
{
    // In this order, what is not a number becomes 0.
    return static_cast<int>(std::min(std::max(0.0, index), kTableSize - 1.0));
}

/// Whether everything that equals an end in single precision is nearest to that end's entry anyway.
inline bool CColourMap::IsWide(double min, double max)
{
    double const width = std::abs(max - min);
    double const most = std::max(std::abs(min), std::abs(max));
    return width > 1e-3 * most && width > 1e-30 && most < 1e38;
}

inline int CColourMap::TableIndex(double value, double min, double max)
{
    if (!IsWide(min, max)) {
        // The ends are compared as single precision: a value that was rounded on its way must not miss them.
        auto const same = [](double a, double b) { return static_cast<float>(a) == static_cast<float>(b); };
        if (same(value, min))
            return 0;
        if (same(value, max))
            return kTableSize - 1;
        if (same(min, max))
            return value > min ? kTableSize - 1 : 0;
    }
    return LimitedIndex((value - min) * (kTableSize - 1) / (max - min) + 0.5);
}

} // namespace ombrel
