#include "ombrel/io/ScanTestHeader.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <type_traits>

namespace ombrel {

constinit CRuntimeClass const CScanTestHeader::kClass = PersistentClass<CScanTestHeader, CObject>("CScanTestHeader");

namespace {

CStringArray Words(CString const& text)
{
    CStringArray words;
    CVUtils::SplitSpaceDelimitedString(text, words);
    return words;
}

void ParseInteger(CString const& text, int& value) { value = _wtoi(text); }

void ParseReal(CString const& text, double& value) { CVUtils::StringToFloat(text, value); }

void ParseYesOrNo(CString const& text, int& flag)
{
    if (text.CompareNoCase("no") == 0)
        flag = 0;
    else if (text.CompareNoCase("yes") == 0)
        flag = 1;
}

void ParseSpeeds(CString const& text, std::array<double, 3>& speeds)
{
    CStringArray const words = Words(text);
    int const count = std::min(words.GetSize(), 3);
    for (int i = 0; i < count; ++i)
        ParseReal(words[i], speeds[static_cast<std::size_t>(i)]);
}

void ParseRadii(CString const& text, std::array<double, 2>& radii)
{
    CStringArray const words = Words(text);
    if (words.GetSize() != 2)
        return;
    ParseReal(words[0], radii[0]);
    ParseReal(words[1], radii[1]);
}

bool Names(CString const& line, char const* name) { return line.Find(name) >= 0; }

template <typename T> void StoreOrLoad(ArchiveFields& fields, ScanTestItem<T>& item)
{
    fields.String(item.text);
    if constexpr (std::is_same_v<T, int>) {
        fields.Int(item.value);
    } else if constexpr (std::is_same_v<T, double>) {
        fields.Double(item.value);
    } else {
        for (double& v : item.value)
            fields.Double(v);
    }
}

template <typename... T>
requires(sizeof...(T) > 1) void StoreOrLoad(ArchiveFields& fields, ScanTestItem<T>&... items)
{
    (StoreOrLoad(fields, items), ...);
}

} // namespace

void CScanTestHeader::Read(CStdioFile& file)
{
    CString const path = file.GetFilePath();
    m_items.fileName = path.Mid(std::max(path.ReverseFind(u'/'), path.ReverseFind(u'\\')) + 1);
    CString line;
    while (file.ReadString(line) && !Names(line, "Start Test")) {
        if (!line.Trim().IsEmpty())
            ParseItem(line);
    }
}

int CScanTestHeader::ParseItem(CString const& line)
{
    // Names contain one another ("Speed Mode", "Mode", "Speed"), so the order decides.
    using Setter = int (CScanTestHeader::*)(CString const&);
    static constexpr Setter kSetters[] = { &CScanTestHeader::SetStationNumber, &CScanTestHeader::SetTestName,
        &CScanTestHeader::SetComment, &CScanTestHeader::SetDateTime, &CScanTestHeader::SetGain,
        &CScanTestHeader::SetSectorsPerRev, &CScanTestHeader::SetHead, &CScanTestHeader::SetPriority,
        &CScanTestHeader::SetUnloadOnRetrace, &CScanTestHeader::SetTrackSize, &CScanTestHeader::SetSpeedMode,
        &CScanTestHeader::SetFlyHeight, &CScanTestHeader::SetDataFileNumber, &CScanTestHeader::SetMode,
        &CScanTestHeader::SetRevsPerTrack, &CScanTestHeader::SetAbortVoltage, &CScanTestHeader::SetAbortCount,
        &CScanTestHeader::SetMinDisplayVoltage, &CScanTestHeader::SetSpeed, &CScanTestHeader::SetZoneCount,
        &CScanTestHeader::SetRadii };
    for (Setter const set : kSetters) {
        if ((this->*set)(line) != 0)
            return 1;
    }
    return 0;
}

CString CScanTestHeader::GetItemValAsString(CString const& line) { return line.Mid(line.Find(u':') + 1).Trim(); }

int CScanTestHeader::Take(CString const& line, char const* name, CString& item)
{
    if (!Names(line, name))
        return 0;
    item = GetItemValAsString(line);
    return 1;
}

template <typename T> int CScanTestHeader::Take(
    CString const& line, char const* name, ScanTestItem<T>& item, void (*parse)(CString const& text, T& value))
{
    if (Take(line, name, item.text) == 0)
        return 0;
    parse(item.text, item.value);
    return 1;
}

int CScanTestHeader::Take(CString const& line, char const* name, ScanTestItem<int>& item)
{
    return Take(line, name, item, ParseInteger);
}

int CScanTestHeader::Take(CString const& line, char const* name, ScanTestItem<double>& item)
{
    return Take(line, name, item, ParseReal);
}

int CScanTestHeader::SetStationNumber(CString const& line)
{
    return Take(line, "Station Number", m_items.stationNumber);
}

int CScanTestHeader::SetTestName(CString const& line) { return Take(line, "Test Name", m_items.testName); }

int CScanTestHeader::SetComment(CString const& line) { return Take(line, "Comment", m_items.comment); }

int CScanTestHeader::SetDateTime(CString const& line) { return Take(line, "Date", m_items.date); }

int CScanTestHeader::SetGain(CString const& line) { return Take(line, "Gain", m_items.gain); }

int CScanTestHeader::SetSectorsPerRev(CString const& line) { return Take(line, "Sectors", m_items.sectorsPerRev); }

int CScanTestHeader::SetHead(CString const& line) { return Take(line, "Head", m_items.head); }

int CScanTestHeader::SetPriority(CString const& line) { return Take(line, "Priority", m_items.priority); }

int CScanTestHeader::SetUnloadOnRetrace(CString const& line)
{
    return Take(line, "Unload", m_items.unloadOnRetrace, ParseYesOrNo);
}

int CScanTestHeader::SetTrackSize(CString const& line) { return Take(line, "Track Size", m_items.trackSize); }

int CScanTestHeader::SetSpeedMode(CString const& line) { return Take(line, "Speed Mode", m_items.speedMode); }

int CScanTestHeader::SetFlyHeight(CString const& line)
{
    return Take(line, "Fly Height", m_items.flyHeight, ParseYesOrNo);
}

int CScanTestHeader::SetDataFileNumber(CString const& line)
{
    return Take(line, "Data File Number", m_items.dataFileNumber);
}

int CScanTestHeader::SetMode(CString const& line) { return Take(line, "Mode", m_items.mode); }

int CScanTestHeader::SetRevsPerTrack(CString const& line) { return Take(line, "Revs", m_items.revsPerTrack); }

int CScanTestHeader::SetAbortVoltage(CString const& line) { return Take(line, "Abort Voltage", m_items.abortVoltage); }

int CScanTestHeader::SetAbortCount(CString const& line) { return Take(line, "Abort Count", m_items.abortCount); }

int CScanTestHeader::SetMinDisplayVoltage(CString const& line)
{
    return Take(line, "Display", m_items.minDisplayVoltage);
}

int CScanTestHeader::SetSpeed(CString const& line) { return Take(line, "Speed", m_items.speeds, ParseSpeeds); }

int CScanTestHeader::SetZoneCount(CString const& line) { return Take(line, "Zone Count", m_items.zoneCount); }

int CScanTestHeader::SetRadii(CString const& line) { return Take(line, "Radii", m_items.radii, ParseRadii); }

void CScanTestHeader::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    int const version = f.Version(2);
    ScanTestItems& i = m_items;
    f.String(i.fileName);
    StoreOrLoad(f, i.stationNumber);
    f.String(i.testName, i.comment, i.date);
    StoreOrLoad(f, i.gain, i.sectorsPerRev);
    f.String(i.head, i.priority);
    StoreOrLoad(f, i.unloadOnRetrace, i.trackSize);
    f.String(i.speedMode);
    StoreOrLoad(f, i.flyHeight, i.dataFileNumber, i.revsPerTrack);
    f.String(i.mode);
    StoreOrLoad(f, i.abortVoltage, i.abortCount, i.minDisplayVoltage, i.speeds, i.zoneCount, i.radii);
    f.Int(i.value1).Double(i.value2, i.value3).Int(i.value4);
    if (version >= 2)
        f.Double(i.value5, i.value6);
}

} // namespace ombrel
