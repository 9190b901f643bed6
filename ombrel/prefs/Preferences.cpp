#include "ombrel/prefs/Preferences.h"

#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/Number.h"
#include "ombrel/platform/host/Host.h"
#include "ombrel/prefs/RegEntry.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <string>

namespace ombrel {

constinit CRuntimeClass const CPreferences::kClass = DynamicClass<CObject>("CPreferences");

namespace {

CRegEntry KeyOf(UINT resource)
{
    CRegEntry entry(HKEY_CURRENT_USER);
    entry.LoadString(resource);
    return entry;
}

/// Does the work; what goes wrong in it is shown to the user and gives 0.
template <typename Work> int Guarded(Work const& work)
{
    try {
        return WithErrors(work);
    } catch (Error const& error) {
        // The title is no string resource: that may be just what failed.
        MessageBox(error.what(), "Ombrel", MB_OK);
        return 0;
    }
}

/// The stored text without white space at its ends, or nothing.
template <typename Entry> std::optional<CString> StoredText(Entry const& entry)
{
    CString text;
    if (KeyOf(static_cast<UINT>(entry.group)).GetValue(entry.name, text) == 0)
        return std::nullopt;
    return text.Trim();
}

template <typename Entry> int Store(Entry const& entry, CString const& text)
{
    return Guarded([&] { return KeyOf(static_cast<UINT>(entry.group)).SetValue(entry.name, text); });
}

/// As scanf reads "%d,%d,…": how many of the numbers were there, in the text's order.
std::size_t ScanIntegers(CString const& text, std::span<int> numbers)
{
    std::string const characters = text.ToUtf8();
    std::string_view rest = characters;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        std::size_t consumed = 0;
        std::optional<int> const number = ScanInteger(rest, &consumed);
        if (!number)
            return i;
        numbers[i] = *number;
        rest.remove_prefix(consumed);
        if (!rest.starts_with(','))
            return i + 1;
        rest.remove_prefix(1);
    }
    return numbers.size();
}

/// A sum that stays in the int range.
int LimitedSum(int a, int b)
{
    long long const sum = static_cast<long long>(a) + b;
    constexpr long long kLeast = std::numeric_limits<int>::min();
    constexpr long long kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(sum, kLeast, kMost));
}

} // namespace

template <typename T, typename Scan> int CPreferences::GetNumber(Entry<T> const& entry, T& v, Scan const& scan)
{
    return Guarded([&] {
        std::optional<CString> const text = StoredText(entry);
        auto const number = text ? scan(text->ToUtf8()) : std::nullopt;
        v = number ? static_cast<T>(*number) : entry.fallback;
        return 1;
    });
}

int CPreferences::Get(Integer const& entry, int& v)
{
    return GetNumber(entry, v, [](std::string const& text) { return ScanInteger(text); });
}

int CPreferences::Get(Colour const& entry, ColourTarget v)
{
    COLORREF colour = 0;
    if (GetNumber(entry, colour, [](std::string const& text) { return ScanInteger(text); }) == 0)
        return 0;
    v.Set(colour);
    return 1;
}

int CPreferences::Get(Factor const& entry, float& v)
{
    return GetNumber(entry, v, [](std::string const& text) -> std::optional<double> {
        std::optional<double> const factor = ScanNumber(text);
        // A line width times infinity is no line width.
        return factor && std::fabs(*factor) <= std::numeric_limits<float>::max() ? factor : std::nullopt;
    });
}

int CPreferences::Get(Text const& entry, CString& v)
{
    return Guarded([&] {
        v = StoredText(entry).value_or(entry.fallback);
        return 1;
    });
}

int CPreferences::Get(Switch const& entry, int& v)
{
    return Guarded([&] {
        std::optional<CString> const text = StoredText(entry);
        if (!text) {
            v = entry.fallback;
            return 0;
        }
        if (text->CompareNoCase("on") == 0)
            v = 1;
        else if (text->CompareNoCase("off") == 0)
            v = 0;
        return 1;
    });
}

int CPreferences::Get(Size const& entry, CSize& v)
{
    return Guarded([&] {
        std::optional<CString> const text = StoredText(entry);
        int numbers[2];
        if (!text)
            v = entry.fallback;
        else if (ScanIntegers(*text, numbers) == 2)
            v = CSize(numbers[0], numbers[1]);
        return 1;
    });
}

int CPreferences::Get(Rect const& entry, CRect& v)
{
    return Guarded([&] {
        std::optional<CString> const text = StoredText(entry);
        if (text)
            return ParseRectString(*text, v);
        v = entry.fallback;
        return 0;
    });
}

int CPreferences::Set(Integer const& entry, int v) { return Store(entry, CString(std::to_string(v))); }

int CPreferences::Set(Switch const& entry, int v) { return Store(entry, v != 0 ? "on" : "off"); }

int CPreferences::Set(Colour const& entry, COLORREF v)
{
    return Store(entry, CString(std::to_string(static_cast<int>(v))));
}

int CPreferences::Set(Factor const& entry, float v)
{
    return Store(entry, CString(FormatNumber(static_cast<double>(v), 'f', 2)));
}

int CPreferences::Set(Text const& entry, CString const& v) { return Store(entry, v); }

int CPreferences::Set(Size const& entry, CSize v)
{
    CString text;
    text.Format("%d,%d", v.cx, v.cy);
    return Store(entry, text);
}

int CPreferences::Set(Rect const& entry, CRect const& v)
{
    CString text;
    text.Format("%d,%d,%d,%d", v.left, v.top, v.Width(), v.Height());
    return Store(entry, text);
}

float CPreferences::GetThicknessScaleFac(int kind)
{
    static constexpr Factor const* kFactors[] = { &kCurveThicknessScaleFac, &kAxesThicknessScaleFac,
        &kBorderThicknessScaleFac, &kSymbolThicknessScaleFac, &kGridThicknessScaleFac };
    return FactorOfKind(kFactors, kind);
}

float CPreferences::GetThicknessScaleFac3D(int kind)
{
    static constexpr Factor const* kFactors[] = { &kAxesThicknessScaleFac3D, &kGridThicknessScaleFac3D,
        &kContourThicknessScaleFac3D, &kWireframeThicknessScaleFac3D, &kBorderThicknessScaleFac3D };
    return FactorOfKind(kFactors, kind);
}

float CPreferences::FactorOfKind(std::span<Factor const* const> factors, int kind)
{
    float factor = 1.0F;
    if (kind >= 0 && kind < static_cast<int>(factors.size()))
        Get(*factors[static_cast<std::size_t>(kind)], factor);
    return factor;
}

int CPreferences::ParseRectString(CString const& text, CRect& rect)
{
    int numbers[4];
    if (ScanIntegers(CString(text).Trim(), numbers) != 4)
        return 0;
    auto const [x, y, w, h] = numbers;
    rect = CRect(x, y, LimitedSum(x, w), LimitedSum(y, h));
    return 1;
}

CString CPreferences::GetGridCellFloatFormatString()
{
    int mode = 0;
    int precision = 0;
    GetGridCellFloatFormat(mode);
    char const* conversion = nullptr;
    switch (mode) {
    case 0:
        GetGridCellMixedPrecision(precision);
        conversion = "%%-1.%dg";
        break;
    case 1:
        GetGridCellPrecision(precision);
        conversion = "%%1.%df";
        break;
    case 2:
        GetGridCellScientificPrecision(precision);
        conversion = "%%1.%de";
        break;
    default:
        return {};
    }
    CString format;
    format.Format(conversion, precision);
    return format;
}

CString CPreferences::GetGridCellDateFormatString()
{
    int useDefault = s_bUseDefaultDateFormat;
    GetUseDefaultDateFormat(useDefault);
    if (useDefault != 0)
        return {};
    CString date;
    CString time;
    GetGridCellDateFormat(date);
    GetGridCellTimeFormat(time);
    return date + " " + time;
}

} // namespace ombrel
