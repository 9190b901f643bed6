#include "ombrel/colour/ColourMap.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace ombrel {

constinit CRuntimeClass const CColourMap::kClass = PersistentClass<CColourMap, CObject>("CColourMap");

namespace {

/// Without what is not a number.
bool IsAscending(CDoubleArray const& values)
{
    double previous = -std::numeric_limits<double>::infinity();
    for (double const v : values.GetArray()) {
        if (!(v >= previous))
            return false;
        previous = v;
    }
    return true;
}

bool IsSound(CDoubleArray const& positions, CByteArray const& values)
{
    return positions.GetSize() == values.GetSize() && IsAscending(positions);
}

/// A channel's value at x, which lies at or after the position of index k − 1 of an earlier call; k starts at 0. Gives
/// what GetUpperIndex and an interpolation would, without searching from the start each time.
BYTE ValueAt(double x, CDoubleArray const& positions, CByteArray const& values, int limit, int& k)
{
    int const n = positions.GetSize();
    auto const single = static_cast<float>(x);
    while (k < n && static_cast<float>(positions[k]) < single)
        ++k;
    if (k == n || n < 2)
        return 0;
    if (static_cast<float>(positions[k]) == single)
        return values[k];
    if (k == 0 || !(x < positions[k]))
        return 0;
    double const slope = (values[k] - values[k - 1]) / (positions[k] - positions[k - 1]);
    double const y = slope * (x - positions[k - 1]) + values[k - 1];
    if (y < 0.0)
        return 0;
    return static_cast<BYTE>(y > limit ? limit : VUNearest(y));
}

/// Whether the work on a file ends without an exception. A file may be larger than memory.
template <typename Work> bool SucceedsInMemory(Work const& work)
{
    try {
        return Succeeds(work);
    } catch (std::bad_alloc const&) {
        return false;
    }
}

/// The step from one of count positions to the next.
double StepOf(int count, double first, double last) { return count > 1 ? (last - first) / (count - 1) : 0.0; }

} // namespace

CColourMap::CColourMap()
{
    Reset(-1);
    m_table.SetSize(kTableSize);
}

void CColourMap::Clear()
{
    for (ColourChannel& channel : m_channels)
        channel = {};
    m_scale = {};
}

void CColourMap::Reset(int channel)
{
    if (channel < -1 || channel >= kChannels)
        return;
    if (channel == -1)
        Clear();
    bool const numbers = !std::isnan(m_rangeMin) && !std::isnan(m_rangeMax);
    // A range that runs downwards has the same two points: black at both ends.
    ColourChannel const black { numbers
            ? CDoubleArray { std::min(m_rangeMin, m_rangeMax), std::max(m_rangeMin, m_rangeMax) }
            : CDoubleArray { 0.0, 1.0 },
        { 0, 0 } };
    for (int c = 0; c < kChannels; ++c) {
        if (channel == -1 || channel == c)
            m_channels[static_cast<std::size_t>(c)] = black;
    }
}

int CColourMap::SetChannel(int channel, CDoubleArray const& positions, CByteArray const& values)
{
    if (channel < 0 || channel >= kChannels || !IsSound(positions, values))
        return 0;
    m_channels[static_cast<std::size_t>(channel)] = { positions, values };
    return 1;
}

int CColourMap::SetScale(ColourScale const& scale)
{
    bool const sound = scale.values.GetSize() == scale.indices.GetSize() && IsAscending(scale.values)
        && std::all_of(scale.indices.begin(), scale.indices.end(), [](DWORD i) { return i < kTableSize; });
    if (!sound)
        return 0;
    m_scale = scale;
    return 1;
}

void CColourMap::SetColourMode(int mode, int convert)
{
    if (mode == m_colourMode)
        return;
    m_colourMode = mode;
    if (convert == 0 || CheckOKToConvert() == 0) {
        Reset(-1);
        return;
    }
    auto& [first, second, third] = m_channels;
    for (int i = 0; i < first.values.GetSize(); ++i) {
        BYTE& a = first.values[i];
        BYTE& b = second.values[i];
        BYTE& c = third.values[i];
        if (mode == cmHSL)
            CVUtils::RGBToHSL(a, b, c, a, b, c);
        else if (mode == cmRGB)
            CVUtils::HSLToRGB(a, b, c, a, b, c);
    }
}

int CColourMap::CheckOKToConvert() const
{
    auto const& [first, second, third] = m_channels;
    return first.positions == second.positions && first.positions == third.positions ? 1 : 0;
}

int CColourMap::IsDefault() const
{
    CDoubleArray const ends { 0.0, 1.0 };
    CByteArray const black { 0, 0 };
    return std::all_of(m_channels.begin(), m_channels.end(),
               [&](ColourChannel const& c) { return c.positions == ends && c.values == black; })
        ? 1
        : 0;
}

void CColourMap::GetRange(double& min, double& max) const
{
    min = m_rangeMin;
    max = m_rangeMax;
}

void CColourMap::SetRange(double min, double max)
{
    m_rangeMin = min;
    m_rangeMax = max;
}

// --- looking up ------------------------------------------------------------------------------------------------------

int CColourMap::ScaledIndex(double value, double min, double max) const
{
    int const n = m_scale.values.GetSize();
    double const* const values = m_scale.values.GetData();
    DWORD const* const indices = m_scale.indices.GetData();
    // How many lie below the value, halving what is left without a jump that depends on the data. The pair of scale
    // values that ends with the next one holds it; at the ends of the scale, a pair with the range's own end does.
    double const* rest = values;
    int left = n;
    while (left > 1) {
        int const half = left / 2;
        rest += half * static_cast<int>(rest[half - 1] < value);
        left -= half;
    }
    auto const below = (rest - values) + static_cast<int>(*rest < value);
    if (below == 0 && value == *values)
        return LimitedIndex(*indices);
    double const first = below > 0 ? values[below - 1] : min;
    double const firstIndex = below > 0 ? indices[below - 1] : 0.0;
    double const last = below < n ? values[below] : max;
    double const lastIndex = below < n ? indices[below] : kTableSize - 1.0;
    return LimitedIndex(firstIndex + VUNearest((lastIndex - firstIndex) * (value - first) / (last - first)));
}

void CColourMap::GetColours(std::span<double const> values, double min, double max, std::span<COLORREF> colours) const
{
    if (colours.size() < values.size())
        ThrowBadIndex(static_cast<int>(colours.size()), colours.size());
    if (!m_scale.values.GetArray().IsEmpty() || !IsWide(min, max)) {
        for (std::size_t i = 0; i < values.size(); ++i)
            colours[i] = GetColour(values[i], min, max);
        return;
    }
    // Indices and colours apart: several indices are computed at once then.
    constexpr std::size_t kBlock = 512;
    std::array<int, kBlock> indices;
    COLORREF const* const table = m_table.GetData();
    for (std::size_t first = 0; first < values.size(); first += kBlock) {
        std::size_t const count = std::min(kBlock, values.size() - first);
        for (std::size_t i = 0; i < count; ++i)
            indices[i] = LimitedIndex((values[first + i] - min) * (kTableSize - 1) / (max - min) + 0.5);
        for (std::size_t i = 0; i < count; ++i)
            colours[first + i] = table[indices[i]];
    }
}

COLORREF CColourMap::GetGradedColour(COLORREF colour, double value, double min, double max)
{
    if (!(static_cast<float>(min) < static_cast<float>(max)))
        return colour;
    BYTE h = 0;
    BYTE s = 0;
    BYTE l = 0;
    CVUtils::RGBToHSL(GetRValue(colour), GetGValue(colour), GetBValue(colour), h, s, l);
    int const top = std::min(l + 75, 239);
    double const added = (top - l) * ((value - min) / (max - min));
    // Cut towards zero, in bytes that wrap round; what no int can hold is limited, and not a number adds nothing.
    constexpr double kMost = std::numeric_limits<int>::max();
    int const whole = std::isnan(added) ? 0 : static_cast<int>(std::clamp(added, -kMost, kMost));
    BYTE r = 0;
    BYTE g = 0;
    BYTE b = 0;
    CVUtils::HSLToRGB(h, s, static_cast<BYTE>(l + static_cast<unsigned>(whole)), r, g, b);
    return RGB(r, g, b);
}

BYTE CColourMap::GetYVal(double x, CDoubleArray const& positions, CByteArray const& values) const
{
    int k = 0;
    return ValueAt(x, positions, values, GetLimit(), k);
}

void CColourMap::GetColours(int count, CDoubleArray const& positions, CByteArray const& values, CByteArray& out) const
{
    out.RemoveAll();
    out.SetSize(std::max(count, 0));
    int const n = positions.GetSize();
    if (n < 2)
        return;
    double const first = positions[0];
    double const step = StepOf(count, first, positions[n - 1]);
    int const limit = GetLimit();
    int k = 0;
    for (int i = 0; i < count; ++i)
        out[i] = ValueAt(first + i * step, positions, values, limit, k);
}

void CColourMap::GetColours(int count, CDWordArray& out) const
{
    std::array<CByteArray, kChannels> bytes;
    for (std::size_t c = 0; c < bytes.size(); ++c)
        GetColours(count, m_channels[c].positions, m_channels[c].values, bytes[c]);
    out.RemoveAll();
    out.SetSize(std::max(count, 0));
    for (int i = 0; i < count; ++i) {
        BYTE r = bytes[0][i];
        BYTE g = bytes[1][i];
        BYTE b = bytes[2][i];
        if (m_colourMode == cmHSL)
            CVUtils::HSLToRGB(r, g, b, r, g, b);
        out[i] = RGB(r, g, b);
    }
}

// --- archive and files -----------------------------------------------------------------------------------------------

void CColourMap::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.String(m_name).Double(m_rangeMin, m_rangeMax).Int(m_colourMode);
    f.Int(settings.value1, settings.value2).Double(settings.value3, settings.value4);
    f.Int(settings.value5, settings.value6, settings.value7);
    f.Double(settings.value8, settings.value9).Int(settings.value10);
    for (ColourChannel& channel : m_channels)
        SerializeChannel(f, channel);
    SerializeTable(f);
    SerializeScale(f, version);
}

void CColourMap::SerializeChannel(ArchiveFields& fields, ColourChannel& channel)
{
    ColourChannel whole = channel;
    fields.Nested(whole.positions).Raw(whole.values);
    if (fields.GetArchive().IsStoring())
        return;
    if (!IsSound(whole.positions, whole.values))
        fields.GetArchive().Fail(CArchiveException::badData, "ascending control points and as many values");
    channel = std::move(whole);
}

void CColourMap::SerializeTable(ArchiveFields& fields)
{
    CDWordArray whole = m_table;
    fields.Raw(whole);
    if (fields.GetArchive().IsStoring())
        return;
    if (whole.GetSize() != kTableSize)
        fields.GetArchive().Fail(CArchiveException::badData, "a table of 1000 colours");
    for (DWORD& colour : whole)
        colour &= 0xFFFFFF;
    m_table = std::move(whole);
}

void CColourMap::SerializeScale(ArchiveFields& fields, int version)
{
    ColourScale whole = m_scale;
    fields.Nested(whole.values).Raw(whole.indices);
    // Scales of earlier versions meant something else.
    if (version >= 2)
        fields.Nested(whole.auxiliaryValues);
    else
        whole = {};
    if (fields.GetArchive().IsStoring())
        return;
    for (DWORD& index : whole.indices)
        index = std::min<DWORD>(index, kTableSize - 1);
    if (SetScale(whole) == 0)
        fields.GetArchive().Fail(CArchiveException::badData, "an ascending scale and as many indices");
}

int CColourMap::Load(CString const& path)
{
    if (IsPreset(path)) {
        if (path == CString("Spectrum"))
            CreateSpectrum();
        else if (path == CString("Extended Spectrum"))
            CreateExtendedSpectrum();
        else
            CreateGreyscale();
        m_pathName = m_name;
        return 1;
    }
    bool const done = SucceedsInMemory([&] {
        CFile file(path, CFile::modeRead);
        CArchive ar(&file, CArchive::load);
        Clear();
        Serialize(ar);
    });
    if (!done)
        return 0;
    m_pathName = path;
    Update();
    return 1;
}

int CColourMap::Save(CString const& path)
{
    bool const done = SucceedsInMemory([&] {
        CMemFile memory;
        CArchive ar(&memory, CArchive::store);
        Serialize(ar);
        ar.Close();
        WriteFileAtomically(path, memory.GetBytes());
    });
    if (!done)
        return 0;
    m_pathName = path;
    return 1;
}

int CColourMap::GetNameFromFile(CString const& path, CString& name)
{
    bool const done = SucceedsInMemory([&] {
        CFile file(path, CFile::modeRead);
        CArchive ar(&file, CArchive::load);
        ArchiveFields f(ar);
        f.Version(2);
        f.String(name);
    });
    return done && !name.Trim().IsEmpty() ? 1 : 0;
}

} // namespace ombrel
