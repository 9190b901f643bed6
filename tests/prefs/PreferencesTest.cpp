#include "ombrel/prefs/Preferences.h"

#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/host/Host.h"
#include "ombrel/prefs/RegEntry.h"

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <optional>

#include <unistd.h>

namespace ombrel {
namespace {

class Preferences : public testing::Test {
protected:
    Preferences()
    {
        std::string pattern = testing::TempDir() + "ombrel-preferences-XXXXXX";
        m_directory = mkdtemp(pattern.data());
        SetRegistryFile((m_directory / "registry").string());
    }
    ~Preferences() override
    {
        SetRegistryFile("");
        std::filesystem::remove_all(m_directory);
    }
    /// Stores a text as another program would.
    static void Store(CString const& key, CString const& name, CString const& text)
    {
        ASSERT_TRUE(WriteRegistryValue(HKEY_CURRENT_USER, CString("Software\\Ombrel\\") + key, name, text));
    }
    static std::string Stored(CString const& key, CString const& name)
    {
        CString text("(none)");
        ReadRegistryValue(HKEY_CURRENT_USER, CString("Software\\Ombrel\\") + key, name, text);
        return text.ToUtf8();
    }

    std::filesystem::path m_directory;
};

constexpr char const* kGeneral = "Graphs";
constexpr char const* k2D = "Graphs\\2D";
constexpr char const* k3D = "Graphs\\3D";

using P = CPreferences;

/// A preference of any type, under its key and name.
struct Setting {
    std::string key, name;
    std::function<int(int)> set;
    /// Holds the value against a number that was set, or against the default.
    std::function<void(std::optional<int>)> expect;
};

template <typename T> T FromNumber(int n)
{
    if constexpr (std::is_same_v<T, CString>)
        return std::to_string(n);
    else
        return static_cast<T>(n);
}

template <typename Argument, typename Value = std::remove_cvref_t<Argument>> Setting MakeSetting(std::string const& key,
    std::string const& name, auto get, int (*set)(Argument), std::type_identity_t<Value> const& fallback)
{
    return { key, name, [=](int n) { return set(FromNumber<Value>(n)); },
        [=](std::optional<int> number) {
            Value value = FromNumber<Value>(77);
            EXPECT_EQ(get(value), 1) << name;
            EXPECT_EQ(value, number ? FromNumber<Value>(*number) : fallback) << name;
        } };
}

#define SETTING(name, key, title, fallback) MakeSetting(key, title, P::Get##name, P::Set##name, fallback)

Setting const kSettings[] = {
    SETTING(AxesColour2D, k2D, "Axes Colour", 0),
    SETTING(MajorLabelsColour2D, k2D, "Major Labels Colour", 0),
    SETTING(MinorLabelsColour2D, k2D, "Minor Labels Colour", 0),
    SETTING(TitlesColour2D, k2D, "Axes Titles Colour", 0),
    SETTING(MajorGridLineColour2D, k2D, "Major Grid Lines Colour", 0),
    SETTING(MinorGridLineColour2D, k2D, "Minor Grid Lines Colour", RGB(192, 192, 192)),
    SETTING(BackgroundColour2D, k2D, "Background Colour", 0xFFFFFF),
    SETTING(GraphBackgroundColour2D, k2D, "Graph Background Colour", 0xFFFFFF),
    SETTING(AxesColour3D, k3D, "Axes Colour", RGB(40, 40, 40)),
    SETTING(LabelsColour3D, k3D, "Labels Colour", 0),
    SETTING(TitlesColour3D, k3D, "Titles Colour", 0),
    SETTING(GridColour3D, k3D, "Grid Colour", RGB(235, 235, 235)),
    SETTING(WallsColour3D, k3D, "Walls Colour", RGB(215, 215, 215)),
    SETTING(BackgroundColour3D, k3D, "Background Colour", 0xFFFFFF),
    SETTING(CurveThicknessScaleFac, k2D, "Curve Thickness Scale Factor", 1.0F),
    SETTING(AxesThicknessScaleFac, k2D, "Axes Thickness Scale Factor", 1.0F),
    SETTING(BorderThicknessScaleFac, k2D, "Border Thickness Scale Factor", 0.5F),
    SETTING(SymbolThicknessScaleFac, k2D, "Symbol Thickness Scale Factor", 1.0F),
    SETTING(GridThicknessScaleFac, k2D, "Grid Thickness Scale Factor", 1.0F),
    SETTING(AxesThicknessScaleFac3D, k3D, "Axes Thickness Scale Factor", 1.0F),
    SETTING(GridThicknessScaleFac3D, k3D, "Grid Thickness Scale Factor", 1.0F),
    SETTING(WireframeThicknessScaleFac3D, k3D, "Wireframe Thickness Scale Factor", 0.5F),
    SETTING(ContourThicknessScaleFac3D, k3D, "Contour Thickness Scale Factor", 0.5F),
    SETTING(BorderThicknessScaleFac3D, k3D, "Border Thickness Scale Factor", 0.5F),
    SETTING(GridCellFloatFormat, kGeneral, "Grid Cell Float Format", 0),
    SETTING(GridCellPrecision, kGeneral, "Grid Cell Float Precision", 4),
    SETTING(GridCellMixedPrecision, kGeneral, "Grid Cell Mixed Precision", 10),
    SETTING(GridCellScientificPrecision, kGeneral, "Grid Cell Scientific Precision", 4),
    SETTING(UseDefaultDateFormat, kGeneral, "Use Default Date Format", 1),
    SETTING(ShowCursorPos, k2D, "Show Cursor Pos", 0),
    SETTING(CursorPosFloatFormat, k2D, "Cursor Pos Float Format", 0),
    SETTING(CursorPosPrecision, k2D, "Cursor Pos Float Precision", 4),
    SETTING(GridCellDateFormat, kGeneral, "Grid Cell Date Format", "%d/%m/%Y"),
    SETTING(GridCellTimeFormat, kGeneral, "Grid Cell Time Format", "%H:%M:%S"),
    SETTING(CursorPosDateFormat, k2D, "Cursor Pos Date Format", "%d/%m/%Y"),
    SETTING(CursorPosTimeFormat, k2D, "Cursor Pos Time Format", "%H:%M:%S"),
};

struct {
    int (*get)(int&);
    int (*set)(int);
    char const* name;
} const kSwitches[] = {
    { P::GetResizingOn, P::SetResizingOn, "Resizing" },
    { P::GetShowAspectRatio, P::SetShowAspectRatio, "Aspect" },
};

TEST_F(Preferences, GiveTheirDefaultsWhenNothingIsStored)
{
    for (Setting const& s : kSettings)
        s.expect({});
    EXPECT_EQ(P::GetMinorGridLineColour2DDefault(), RGB(192, 192, 192));
    EXPECT_EQ(P::GetGridCellMixedPrecisionDefault(), 10);
    CSize size;
    EXPECT_EQ(P::GetAnimRowsCols(size), 1);
    EXPECT_EQ(size, CSize(50, 50));
    CRect rect;
    EXPECT_EQ(P::GetPrintPosRect(rect), 0);
    EXPECT_EQ(rect, CRect(10, 10, 180, 100));
}

TEST_F(Preferences, AreStoredUnderTheirOwnKeysAndNames)
{
    // All are set before any is read: two that shared a place would show.
    int n = 100;
    for (Setting const& s : kSettings)
        EXPECT_EQ(s.set(++n), 1) << s.name;
    n = 100;
    for (Setting const& s : kSettings) {
        s.expect(++n);
        bool const isFactor = s.name.ends_with("Factor");
        EXPECT_EQ(Stored(s.key, s.name), std::to_string(n) + (isFactor ? ".00" : ""));
    }
    for (auto const& c : kSwitches) {
        int on = 7;
        EXPECT_EQ(c.get(on), 0) << "nothing stored";
        EXPECT_EQ(on, 0);
        EXPECT_EQ(c.set(5), 1);
        EXPECT_EQ(Stored(kGeneral, c.name), "on");
        EXPECT_EQ(c.get(on), 1);
        EXPECT_EQ(on, 1);
        c.set(0);
        EXPECT_EQ(Stored(kGeneral, c.name), "off");
    }
}

TEST_F(Preferences, NumbersThatCannotBeReadGiveTheDefault)
{
    constexpr COLORREF kGrey = 0xC0C0C0;
    using Case = std::tuple<char const*, int, float, COLORREF>;
    Case const cases[] = {
        { "12abc", 12, 12.0F, 12 },
        { " 7 ", 7, 7.0F, 7 },
        { "-1", -1, -1.0F, 0xFFFFFFFF },
        { "0.33", 0, 0.33F, 0 },
        { "", 4, 1.0F, kGrey },
        { "inf", 4, 1.0F, kGrey },
        { "nan", 4, 1.0F, kGrey },
        { "1e300", 1, 1.0F, 1 },
    };
    for (auto const& [text, number, factor, colour] : cases) {
        Store(kGeneral, "Grid Cell Float Precision", text);
        Store(k2D, "Grid Thickness Scale Factor", text);
        Store(k2D, "Minor Grid Lines Colour", text);
        int i = -77;
        float f = -77.0F;
        COLORREF c = 77;
        EXPECT_EQ(P::GetGridCellPrecision(i), 1);
        EXPECT_EQ(P::GetGridThicknessScaleFac(f), 1);
        EXPECT_EQ(P::GetMinorGridLineColour2D(c), 1);
        EXPECT_EQ(std::tuple(text, i, f, c), std::tuple(text, number, factor, colour));
    }
    P::SetCurveThicknessScaleFac(0.333F);
    EXPECT_EQ(Stored(k2D, "Curve Thickness Scale Factor"), "0.33");
}

TEST_F(Preferences, OtherTextsThatCannotBeReadChangeNothing)
{
    for (auto const& [text, expected] : { std::pair("  ON ", 1), { "Off", 0 }, { "yes", 7 }, { "", 7 } }) {
        int on = 7;
        Store(kGeneral, "Resizing", text);
        EXPECT_EQ(P::GetResizingOn(on), 1) << text;
        EXPECT_EQ(on, expected) << text;
    }
    for (auto const& [text, expected] : { std::pair("20", CSize(1, 2)), { " 20, 30 ", CSize(20, 30) } }) {
        CSize size(1, 2);
        Store(k3D, "Animation", text);
        EXPECT_EQ(P::GetAnimRowsCols(size), 1);
        EXPECT_EQ(size, expected);
    }

    CRect rect(1, 2, 3, 4);
    Store(kGeneral, "Print Rect", "10,10,170");
    EXPECT_EQ(P::GetPrintPosRect(rect), 0);
    EXPECT_EQ(rect, CRect(1, 2, 3, 4));
    P::SetPrintPosRect(CRect(10, 10, 180, 100));
    EXPECT_EQ(Stored(kGeneral, "Print Rect"), "10,10,170,90");
    EXPECT_EQ(P::GetPrintPosRect(rect), 1);
    EXPECT_EQ(rect, CRect(10, 10, 180, 100));
    // The far edges stay within their type.
    EXPECT_EQ(P::ParseRectString("2147483647,-2147483648,1,-1", rect), 1);
    EXPECT_EQ(rect.right, 2147483647);
    // A blank may stand before a number but not before a comma.
    EXPECT_EQ(P::ParseRectString("1 ,2,3,4", rect), 0);
}

TEST_F(Preferences, ThicknessKindsChooseTheirFactors)
{
    int n = 0;
    for (Setting const& s : kSettings) {
        if (s.name.ends_with("Factor"))
            s.set(++n);
    }
    // From −1 to 5; in 3D axes, grid, contour, wireframe and border.
    float const expected2D[] = { 1, 1, 2, 3, 4, 5, 1 };
    float const expected3D[] = { 1, 6, 7, 9, 8, 10, 1 };
    for (int kind = -1; kind <= 5; ++kind) {
        EXPECT_EQ(P::GetThicknessScaleFac(kind), expected2D[kind + 1]);
        EXPECT_EQ(P::GetThicknessScaleFac3D(kind), expected3D[kind + 1]);
    }
}

TEST_F(Preferences, BuildFormatsForGridCells)
{
    int mode = 0;
    for (char const* const expected : { "%-1.10g", "%1.4f", "%1.4e", "" }) {
        P::SetGridCellFloatFormat(mode++);
        EXPECT_EQ(P::GetGridCellFloatFormatString(), expected);
    }
    P::SetGridCellFloatFormat(1);
    P::SetGridCellPrecision(6);
    EXPECT_EQ(P::GetGridCellFloatFormatString(), "%1.6f");
    EXPECT_EQ(P::GetGridCellDateFormatString(), "");
    P::SetUseDefaultDateFormat(0);
    EXPECT_EQ(P::GetGridCellDateFormatString(), "%d/%m/%Y %H:%M:%S");
}

TEST_F(Preferences, TheHostChoosesTheKeysAndItsExceptionsAreShown)
{
    SetStringResourceFunction([](UINT id, CString& text) {
        text = "Software\\Ombrel\\Host";
        return id == 1006;
    });
    P::SetShowCursorPos(1);
    EXPECT_EQ(Stored("Host", "Show Cursor Pos"), "1");
    int shown = 0;
    SetMessageBoxFunction([&shown](CString const&, CString const& title, UINT) { shown += title == "Ombrel"; });
    SetStringResourceFunction([](UINT, CString&) -> bool { throw new CResourceException; });
    int value = 7;
    EXPECT_EQ(P::GetGridCellPrecision(value), 0);
    EXPECT_EQ(P::SetGridCellPrecision(3), 0);
    SetStringResourceFunction(nullptr);
    SetMessageBoxFunction(nullptr);
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(value, 7);
}

TEST_F(Preferences, OfAFileThatMayNotBeWrittenAreTheDefaults)
{
    P::SetShowCursorPos(1);
    std::filesystem::permissions(m_directory, std::filesystem::perms(0755));
    std::filesystem::permissions(m_directory / "registry", std::filesystem::perms(0444));
    // A process of its own, which gives the rights of root away.
    EXPECT_EXIT(
        {
            bool const plain = geteuid() != 0 || setuid(65534) == 0;
            int on = 7;
            _exit(plain && P::GetShowCursorPos(on) == 1 && on == 0 && Stored(k2D, "Show Cursor Pos") == "1" ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(Preferences, EntriesReadAtMost1023UnitsAndGoDownToSubkeys)
{
    CRegEntry entry(HKEY_CURRENT_USER);
    ASSERT_TRUE(entry.LoadString(1005));
    CString value("untouched");
    EXPECT_EQ(entry.SetValue("Name", CString(u'x', 1023)), 1);
    EXPECT_EQ(entry.GetValue("name", value), 1);
    EXPECT_EQ(entry.SetValue("Name", CString(u'y', 1024)), 1);
    EXPECT_EQ(entry.GetValue("Name", value), 0);
    EXPECT_EQ(value, CString(u'x', 1023));

    EXPECT_EQ(entry.SetValue("Sub", "Name", "1"), 1);
    EXPECT_EQ(entry.SetValue("Sub", "Name", "2"), 1);
    EXPECT_EQ(entry, "Software\\Ombrel\\Graphs\\Sub\\Sub");
    EXPECT_EQ(Stored("Graphs\\Sub", "Name"), "1");
    CRegEntry const copy = entry;
    EXPECT_EQ(copy.GetValue("Name", value), 1);
    EXPECT_EQ(value, "2");
    EXPECT_FALSE(entry.LoadString(4));
    EXPECT_EQ(entry, copy);
}

} // namespace
} // namespace ombrel
