#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"

#include <array>

namespace ombrel {

/// One parameter of a scan test: its text in the file, without white space at its ends, and what that stands for.
template <typename T> struct ScanTestItem {
    CString text {};
    T value {};
};

/// The named parameters of a scan test, in the order in which they are stored. Texts are empty and numbers 0 at first.
struct ScanTestItems {
    /// The file's name without its folder.
    CString fileName {};
    ScanTestItem<int> stationNumber {};
    CString testName {};
    CString comment {};
    CString date {};
    ScanTestItem<int> gain {};
    ScanTestItem<int> sectorsPerRev {};
    CString head {};
    CString priority {};
    /// 1 for yes, 0 for no.
    ScanTestItem<int> unloadOnRetrace {};
    ScanTestItem<int> trackSize {};
    CString speedMode {};
    /// 1 for yes, 0 for no.
    ScanTestItem<int> flyHeight {};
    ScanTestItem<int> dataFileNumber {};
    ScanTestItem<int> revsPerTrack {};
    CString mode {};
    ScanTestItem<double> abortVoltage {};
    ScanTestItem<int> abortCount {};
    ScanTestItem<double> minDisplayVoltage {};
    ScanTestItem<std::array<double, 3>> speeds {};
    ScanTestItem<int> zoneCount {};
    ScanTestItem<std::array<double, 2>> radii {};
    // Kept for hosts; the library stores them and never looks at them.
    int value1 = 1;
    double value2 = 0.0;
    double value3 = 0.0;
    int value4 = 1;
    double value5 = 0.0;
    double value6 = 0.0;
};

/// The head of a disk scan test's data file: lines of the form "name: value" before the line with "Start Test".
///
/// Headers are values: they may be copied. Nothing in a file is refused: what is not a number counts as 0 (whole
/// numbers) or leaves the value as it was. Errors: Read throws CFileException*, Serialize CArchiveException*.
class OMBREL_EXPORT CScanTestHeader : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }

    /// Takes the lines from the file's position on, up to and including the one with "Start Test" or to the file's
    /// end. Items that do not occur stay as they are.
    void Read(CStdioFile& file);

    int GetStationNumber() const { return m_items.stationNumber.value; }
    /// The data file number.
    int GetFileNumber() const { return m_items.dataFileNumber.value; }
    int GetGain() const { return m_items.gain.value; }
    int GetSectorsPerRev() const { return m_items.sectorsPerRev.value; }
    int GetRevsPerTrack() const { return m_items.revsPerTrack.value; }
    int GetTrackSize() const { return m_items.trackSize.value; }
    /// All of it.
    ScanTestItems const& GetItems() const { return m_items; }

    void Serialize(CArchive& ar) override;

protected:
    /// Gives the line to the first of the setters below, in their order, whose name occurs in it: 1, or 0 for none.
    int ParseItem(CString const& line);
    /// What stands behind the first colon, or the whole line, without white space at its ends.
    static CString GetItemValAsString(CString const& line);

    // Each takes a line: 1 when its name occurs anywhere in it (the case counts), else 0 with nothing changed
    int SetStationNumber(CString const& line);
    int SetTestName(CString const& line);
    int SetComment(CString const& line);
    int SetDateTime(CString const& line);
    int SetGain(CString const& line);
    int SetSectorsPerRev(CString const& line);
    int SetHead(CString const& line);
    int SetPriority(CString const& line);
    int SetUnloadOnRetrace(CString const& line);
    int SetTrackSize(CString const& line);
    int SetSpeedMode(CString const& line);
    int SetFlyHeight(CString const& line);
    int SetDataFileNumber(CString const& line);
    int SetMode(CString const& line);
    int SetRevsPerTrack(CString const& line);
    int SetAbortVoltage(CString const& line);
    int SetAbortCount(CString const& line);
    int SetMinDisplayVoltage(CString const& line);
    /// Up to three numbers between blanks; further words mean nothing.
    int SetSpeed(CString const& line);
    int SetZoneCount(CString const& line);
    /// Two numbers between blanks; with more or fewer words the numbers stay as they were.
    int SetRadii(CString const& line);

private:
    /// The line's value as an item, when the name occurs in the line.
    static int Take(CString const& line, char const* name, CString& item);
    static int Take(CString const& line, char const* name, ScanTestItem<int>& item);
    static int Take(CString const& line, char const* name, ScanTestItem<double>& item);
    template <typename T> static int Take(
        CString const& line, char const* name, ScanTestItem<T>& item, void (*parse)(CString const& text, T& value));

    ScanTestItems m_items;
};

} // namespace ombrel
