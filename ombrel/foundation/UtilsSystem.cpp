#include "ombrel/foundation/Utils.h"

#include "ombrel/platform/host/Host.h"
#include "ombrel/platform/registry/Registry.h"

namespace ombrel {

namespace {

/// The host's maker segment in key paths and its name as title of messages.
CString MakerName()
{
    CString name;
    LoadStringResource(1003, name);
    return name;
}

CString SettingsKey(CString const& subkey) { return CString("Software\\") + MakerName() + "\\Tavolin\\" + subkey; }

} // namespace

bool CVUtils::FullDragOn()
{
    CString value;
    return ReadRegistryValue(HKEY_CURRENT_USER, "Control Panel\\Desktop", "DragFullWindows", value)
        && value.Left(1) == "1";
}

int CVUtils::GetRegSettingString(CString const& subkey, CString& value)
{
    // The reading buffer holds 512 units, the last of them for the terminator.
    constexpr int kLongest = 511;
    CString text;
    if (!ReadRegistryValue(HKEY_CURRENT_USER, SettingsKey(subkey), "", text) || text.GetLength() > kLongest)
        return 0;
    value = text;
    return 1;
}

int CVUtils::SetRegSettingString(CString const& subkey, CString const& value)
{
    return WriteRegistryValue(HKEY_CURRENT_USER, SettingsKey(subkey), "", value) ? 1 : 0;
}

void CVUtils::InvalidDataError(CString const& page, CString const& subPage, CString const& message)
{
    CString text = CString("Invalid Data on:\n\nPage: '") + page + "'";
    if (!subPage.IsEmpty())
        text += CString(", SubPage: '") + subPage;
    text += "'\n\n";
    MessageBox(text + message, "Invalid Data", MB_ICONEXCLAMATION);
}

} // namespace ombrel
