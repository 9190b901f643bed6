#include "ombrel/io/reading/DEMReader.h"
#include "ombrel/io/USGSDEM.h"
#include "ombrel/platform/framework/Number.h"
#include "ombrel/platform/host/Host.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>
#include <string>

namespace ombrel::io {

namespace {

constexpr char kNotDEM[] = "Data cannot be interpreted in DEM format";
constexpr char kTooEarlyEnd[] = "Read error or premature EOF on input";

template <typename... Args> CString Formatted(char const* format, Args const&... args)
{
    CString text;
    text.Format(format, args...);
    return text;
}

[[noreturn]] void Refuse(DEMRecords const& records, CString const& message, CString const& expected)
{
    DataFileFault fault = records.GetPlace();
    fault.expected = expected;
    throw new CVFileException(message, fault);
}

bool IsBlank(std::string_view field) { return field.find_first_not_of(' ') == std::string_view::npos; }

/// The fields of one record, by the columns that the standard gives them, counted from 1. A field that does not hold
/// what is asked for leaves the value as it was.
class Fields {
public:
    /// Exponents may be written with a D behind column 150.
    explicit Fields(std::string_view record)
        : m_record(record)
    {
        std::replace(m_record.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(150, m_record.size())),
            m_record.end(), 'D', 'E');
    }
    std::string_view Text(std::size_t first, std::size_t last) const
    {
        std::string_view const record = m_record;
        return record.substr(std::min(first - 1, record.size()), last - first + 1);
    }
    bool Short(std::size_t first, std::size_t last, std::int16_t& value) const
    {
        using Limits = std::numeric_limits<std::int16_t>;
        auto const number = ScanInteger(Text(first, last));
        if (!number || *number < Limits::min() || *number > Limits::max())
            return false;
        value = static_cast<std::int16_t>(*number);
        return true;
    }
    template <typename Real> void Number(std::size_t first, std::size_t last, Real& value) const
    {
        if (auto const number = ScanNumber(Text(first, last)))
            value = static_cast<Real>(*number);
    }
    /// Neighbours of equal width.
    template <typename Real> void Numbers(std::size_t first, std::size_t width, std::span<Real> values) const
    {
        for (Real& v : values) {
            Number(first, first + width - 1, v);
            first += width;
        }
    }

private:
    std::string m_record;
};

/// Two digits of the year and two of the month, or all four digits of the year.
void ReadDate(Fields const& fields, std::size_t first, std::int16_t& year, std::int16_t& month)
{
    fields.Short(first, first + 1, year);
    fields.Short(first + 2, first + 3, month);
    if (year > 0 && year < 22) {
        year = static_cast<std::int16_t>(year * 100 + month);
        month = 0;
    } else if (year >= 22) {
        year = static_cast<std::int16_t>(year + 1900);
    }
}

void ReadNewerFields(Fields const& fields, DEMHeader& h)
{
    std::string_view const lastOfDatum = fields.Text(892, 892);
    if (lastOfDatum.empty() || lastOfDatum[0] == ' ' || lastOfDatum[0] == '\0') {
        // A geographic model of 3 arc-seconds is one of the first, which all had the datum of 1972.
        bool const isOfFirst
            = h.referenceSystem == 0 && h.groundUnits == 3 && h.yResolution > 2.9F && h.yResolution < 3.1F;
        h.horizontalDatum = isOfFirst ? 2 : -1;
        h.dataEdition = -1;
        return;
    }
    fields.Short(865, 869, h.largestContourInterval);
    fields.Short(870, 870, h.largestContourUnits);
    fields.Short(871, 875, h.smallestContourInterval);
    fields.Short(876, 876, h.smallestContourUnits);
    ReadDate(fields, 877, h.sourceYear, h.sourceMonth);
    ReadDate(fields, 881, h.revisionYear, h.revisionMonth);
    h.inspectionFlag = fields.Text(885, 885)[0];
    h.validationFlag = -1;
    fields.Short(886, 886, h.validationFlag);
    fields.Short(887, 888, h.suspectAndVoid);
    fields.Short(889, 890, h.verticalDatum);
    fields.Short(891, 892, h.horizontalDatum);
    fields.Short(893, 896, h.dataEdition);
    fields.Short(897, 900, h.percentVoid);
}

void ReadCorners(DEMRecords const& records, Fields const& fields, DEMHeader& h)
{
    std::size_t first = 547;
    for (int i = 0; i < 8; ++i) {
        if (IsBlank(fields.Text(first, first + 23))) {
            Refuse(records,
                Formatted("Corner coordinate %s for corner %d %s\n", i % 2 == 0 ? "easting" : "westing", i / 2 + 1,
                    "not specified -- cannot get array dimensions"),
                Formatted("a number in columns %u to %u", first, first + 23));
        }
        fields.Number(first, first + 23, h.corners[i]);
        first += 24;
    }
}

double LowestNorthing(DEMHeader const& h)
{
    return std::min({ h.corners[1], h.corners[3], h.corners[5], h.corners[7] });
}

/// The rows from the lowest to the highest corner. In single precision, as the resolution is given.
std::int16_t CountRows(DEMRecords const& records, DEMHeader const& h)
{
    double const highest = std::max({ h.corners[1], h.corners[3], h.corners[5], h.corners[7] });
    float const top = std::ceil(static_cast<float>(highest) / h.yResolution);
    float const bottom = std::floor(static_cast<float>(LowestNorthing(h)) / h.yResolution);
    double const rows = static_cast<double>(top) - static_cast<double>(bottom) + 1.0;
    if (!(rows >= 1.0 && rows <= std::numeric_limits<std::int16_t>::max()))
        Refuse(records, kNotDEM, "corners that are 1 to 32767 rows apart");
    return static_cast<std::int16_t>(rows);
}

} // namespace

DEMHeader ReadDEMHeader(DEMRecords& records)
{
    if (!records.Next())
        Refuse(records, "Error reading first record of file", "a record of 1024 characters");
    Fields const fields(records.GetText());
    DEMHeader h {};
    std::string_view const name = fields.Text(1, 144);
    std::copy(name.begin(), name.end(), h.fileName);
    if (!fields.Short(145, 150, h.levelCode))
        Refuse(records, kNotDEM, "the level code, a number in columns 145 to 150");
    fields.Short(151, 156, h.elevationPattern);
    fields.Short(157, 162, h.referenceSystem);
    fields.Short(163, 168, h.zone);
    fields.Numbers<double>(169, 24, h.projectionParameters);
    fields.Short(529, 534, h.groundUnits);
    fields.Short(535, 540, h.elevationUnits);
    fields.Short(541, 546, h.polygonSides);
    ReadCorners(records, fields, h);
    fields.Number(739, 762, h.minElevation);
    fields.Number(763, 786, h.maxElevation);
    fields.Number(787, 810, h.rotationAngle);
    fields.Short(811, 816, h.accuracyCode);
    fields.Number(817, 828, h.xResolution);
    fields.Number(829, 840, h.yResolution);
    fields.Number(841, 852, h.zResolution);
    fields.Short(853, 858, h.profileRows);
    fields.Short(859, 864, h.profileColumns);
    ReadNewerFields(fields, h);

    if (!(h.xResolution > 0.0F) || !(h.yResolution > 0.0F)) {
        Refuse(records, Formatted("Grid spacing not specified -- %s\n", "cannot determine array dimensions"),
            "positive resolutions in columns 817 to 840");
    }
    if (h.elevationPattern != 1)
        Refuse(records, "Random data patterns are not supported", "a 1 in columns 151 to 156");
    if (h.elevationUnits != 1 && h.elevationUnits != 2)
        Refuse(records, "Invalid units field -- not DEM format", "a 1 or 2 in columns 535 to 540");
    if (h.profileRows != 1)
        Refuse(records, "Rectangular patches are not supported", "a 1 in columns 853 to 858");
    h.gridRows = CountRows(records, h);
    if (h.profileColumns < 1)
        Refuse(records, kNotDEM, "1 to 32767 profiles in columns 859 to 864");
    return h;
}

namespace {

struct Profile {
    /// Of its southernmost elevation, counted from the south.
    int startRow = 0;
    std::vector<std::int16_t> elevations {};
};

/// The number in the six characters at p, when they are nothing but blanks and digits behind them; −1 for any other.
int ReadPlainField(char const* p)
{
    static_assert(std::endian::native == std::endian::little);
    std::uint32_t low = 0;
    std::uint16_t high = 0;
    std::memcpy(&low, p, sizeof low);
    std::memcpy(&high, p + sizeof low, sizeof high);
    // All characters at once, the first one lowest: a digit becomes its value, a blank 16.
    std::uint64_t const characters = (std::uint64_t { high } << 32 | low) ^ 0x303030303030;
    std::uint64_t const blanks = characters & 0x101010101010;
    std::uint64_t const blankBytes = (blanks >> 4) * 0xFF;
    std::uint64_t v = characters & ~blankBytes;
    bool const isPlain = (characters & blankBytes) == blanks && (blankBytes & (blankBytes + 1)) == 0
        && blankBytes != 0xFFFFFFFFFFFF && (((v + 0x767676767676) | v) & 0x808080808080) == 0;
    if (!isPlain)
        return -1;
    // Eight digits, the first two 0: pairs, fours, all.
    v <<= 16;
    v = (v * 10 + (v >> 8)) & 0x00FF00FF00FF00FF;
    v = (v * 100 + (v >> 16)) & 0x0000FFFF0000FFFF;
    v = (v * 10000 + (v >> 32)) & 0xFFFFFFFF;
    return static_cast<int>(v);
}

class ProfileReader {
public:
    ProfileReader(DEMRecords& records, DEMHeader const& header)
        : m_records(records)
        , m_header(header)
    {
    }
    /// All profiles, one after the other.
    DEMElevations Read();

private:
    Profile ReadProfile(int number);
    /// Appends count elevations of the record, from byte first on, to those of the profile.
    void ReadElevations(int number, std::size_t first, std::size_t count, std::vector<std::int16_t>& into);
    std::int16_t ReadElevation(int number, std::string_view field);
    void Place(std::vector<Profile> const& profiles);

    DEMRecords& m_records;
    DEMHeader const& m_header;
    DEMElevations m_elevations;
};

DEMElevations ProfileReader::Read()
{
    // The profiles as they come first, and the grid when all are there: what a header claims costs no memory.
    std::vector<Profile> profiles;
    for (int number = 1; number <= m_header.profileColumns; ++number)
        profiles.push_back(ReadProfile(number));
    Place(profiles);
    return std::move(m_elevations);
}

Profile ProfileReader::ReadProfile(int number)
{
    if (!m_records.NextFilled())
        Refuse(m_records, kTooEarlyEnd, Formatted("profile %d of %d", number, m_header.profileColumns));
    std::string_view rest = m_records.GetText();
    // Row, column, number of elevations
    int heads[3] = {};
    for (int& head : heads) {
        rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
        std::size_t used = 0;
        head = ScanInteger(rest.substr(0, 6), &used).value_or(0);
        rest.remove_prefix(used);
    }
    if (heads[1] != number) {
        Refuse(m_records,
            Formatted("Bad profile number = %d %s %d %s\n", heads[1], "in B record header --", number, "expected"),
            Formatted("profile %d of %d", number, m_header.profileColumns));
    }
    std::string_view const record = m_records.GetText();
    std::string northingText(record.substr(std::min<std::size_t>(48, record.size()), 24));
    std::replace(northingText.begin(), northingText.end(), 'D', 'E');
    double const northing = ScanNumber(northingText).value_or(0.0);
    double start = (northing - LowestNorthing(m_header)) / static_cast<double>(m_header.yResolution);
    // The resolution has seven digits: rounding must not move a profile by a row.
    if (start > 0.0)
        start += 1e-6 * (start + 1.0);
    if (!(std::trunc(start) >= 0.0))
        Refuse(m_records, Formatted("Profile %d starts below image frame\n", number), "a northing within the corners");
    Profile profile { .startRow = static_cast<int>(std::min<double>(start, m_header.gridRows)) };
    auto const wanted = static_cast<std::size_t>(std::max(heads[2], 0));

    constexpr std::size_t kWithHeader = 146;
    constexpr std::size_t kOfRecord = 170;
    std::size_t count = std::min(wanted, kWithHeader);
    ReadElevations(number, 144, count, profile.elevations);
    while (profile.elevations.size() < wanted) {
        if (!m_records.NextFilled())
            Refuse(m_records, kTooEarlyEnd, Formatted("%u elevations in profile %d", wanted, number));
        count = std::min(wanted - profile.elevations.size(), kOfRecord);
        ReadElevations(number, 0, count, profile.elevations);
    }
    return profile;
}

void ProfileReader::ReadElevations(int number, std::size_t first, std::size_t count, std::vector<std::int16_t>& into)
{
    constexpr std::size_t kWidth = 6;
    std::string_view const record = m_records.GetText();
    if (m_records.IsCut() && record.size() < first + count * kWidth)
        Refuse(m_records, kTooEarlyEnd, Formatted("%u elevations in the record", count));
    std::size_t const before = into.size();
    into.resize(before + count);
    std::int16_t* elevation = into.data() + before;
    std::size_t const start = std::min(first, record.size());
    std::size_t const whole = std::min((record.size() - start) / kWidth, count);
    char const* p = record.data() + start;
    for (std::size_t i = 0; i < whole; ++i, p += kWidth) {
        int const plain = ReadPlainField(p);
        constexpr int kMost = std::numeric_limits<std::int16_t>::max();
        *elevation++
            = plain >= 0 && plain <= kMost ? static_cast<std::int16_t>(plain) : ReadElevation(number, { p, kWidth });
    }
    // Blanks at the end of a record may be missing.
    for (std::size_t i = whole; i < count; ++i) {
        std::size_t const at = std::min(first + i * kWidth, record.size());
        *elevation++ = ReadElevation(number, record.substr(at, kWidth));
    }
}

std::int16_t ProfileReader::ReadElevation(int number, std::string_view field)
{
    char const* p = field.data();
    char const* const end = p + field.size();
    while (p != end && *p == ' ')
        ++p;
    if (p == end) {
        constexpr int kMostBlank = 10;
        if (++m_elevations.blank > kMostBlank)
            Refuse(m_records, "Too many missing entries -- giving up", "at most ten blank elevations");
        WriteOutput(Formatted("Missing entry for profile %d\n", number));
        return CUSGSDEM::kFillValue;
    }
    bool const negative = *p == '-';
    if (negative || *p == '+')
        ++p;
    int value = 0;
    char const* const digits = p;
    for (; p != end && static_cast<unsigned char>(*p - '0') < 10; ++p)
        value = value * 10 + (*p - '0');
    value = negative ? -value : value;
    if (p == digits || value != static_cast<std::int16_t>(value)) {
        ++m_elevations.damaged;
        return CUSGSDEM::kFillValue;
    }
    return static_cast<std::int16_t>(value);
}

void ProfileReader::Place(std::vector<Profile> const& profiles)
{
    auto const rows = static_cast<std::size_t>(m_header.gridRows);
    std::size_t const cols = profiles.size();
    constexpr std::size_t kAnyFile = std::size_t { 1 } << 20;
    if (rows * cols > std::max(m_records.GetBytesRead(), kAnyFile))
        Refuse(m_records, kNotDEM, Formatted("profiles that fill %u rows of %u cells", rows, cols));
    m_elevations.cells.assign(rows * cols, CUSGSDEM::kFillValue);
    // As many columns at once as lie beside each other in a line of the processor's cache.
    constexpr std::size_t kBlock = 32;
    for (std::size_t first = 0; first < cols; first += kBlock) {
        std::span const block = std::span(profiles).subspan(first, std::min(kBlock, cols - first));
        for (std::size_t row = 0; row < rows; ++row) {
            std::int16_t* const cells = m_elevations.cells.data() + (rows - 1 - row) * cols + first;
            for (std::size_t c = 0; c < block.size(); ++c) {
                // Rows before the profile's start wrap round to numbers beyond its end; what lies above the grid is
                // left out.
                std::size_t const k = row - static_cast<std::size_t>(block[c].startRow);
                if (k < block[c].elevations.size())
                    cells[c] = block[c].elevations[k];
            }
        }
    }
}

} // namespace

DEMElevations ReadDEMProfiles(DEMRecords& records, DEMHeader& header)
{
    DEMElevations elevations = ProfileReader(records, header).Read();
    if (header.accuracyCode == 1 && records.NextFilled()) {
        Fields const fields(records.GetText());
        std::size_t first = 1;
        for (auto& half : header.statistics) {
            for (std::int16_t& v : half) {
                fields.Short(first, first + 5, v);
                first += 6;
            }
        }
    }
    return elevations;
}

} // namespace ombrel::io
