#include "ombrel/prefs/Preferences.h"

#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/host/Host.h"
#include "ombrel/prefs/RegEntry.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

#include <sys/wait.h>
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
    static void Store(char const* key, char const* name, CString const& text)
    {
        ASSERT_TRUE(WriteRegistryValue(HKEY_CURRENT_USER, CString("Software\\Ombrel\\") + key, name, text));
    }
    static std::string Stored(char const* key, char const* name)
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

struct ColourCase {
    int (*get)(ColourTarget);
    int (*set)(COLORREF);
    COLORREF (*fallback)();
    char const* key;
    char const* name;
    COLORREF expected;
};
using P = CPreferences;
ColourCase const kColours[] = {
    { P::GetAxesColour2D, P::SetAxesColour2D, P::GetAxesColour2DDefault, k2D, "Axes Colour", 0 },
    { P::GetMajorLabelsColour2D, P::SetMajorLabelsColour2D, P::GetMajorLabelsColour2DDefault, k2D,
        "Major Labels Colour", 0 },
    { P::GetMinorLabelsColour2D, P::SetMinorLabelsColour2D, P::GetMinorLabelsColour2DDefault, k2D,
        "Minor Labels Colour", 0 },
    { P::GetTitlesColour2D, P::SetTitlesColour2D, P::GetTitlesColour2DDefault, k2D, "Axes Titles Colour", 0 },
    { P::GetMajorGridLineColour2D, P::SetMajorGridLineColour2D, P::GetMajorGridLineColour2DDefault, k2D,
        "Major Grid Lines Colour", 0 },
    { P::GetMinorGridLineColour2D, P::SetMinorGridLineColour2D, P::GetMinorGridLineColour2DDefault, k2D,
        "Minor Grid Lines Colour", RGB(192, 192, 192) },
    { P::GetBackgroundColour2D, P::SetBackgroundColour2D, P::GetBackgroundColour2DDefault, k2D, "Background Colour",
        0xFFFFFF },
    { P::GetGraphBackgroundColour2D, P::SetGraphBackgroundColour2D, P::GetGraphBackgroundColour2DDefault, k2D,
        "Graph Background Colour", 0xFFFFFF },
    { P::GetAxesColour3D, P::SetAxesColour3D, P::GetAxesColour3DDefault, k3D, "Axes Colour", RGB(40, 40, 40) },
    { P::GetLabelsColour3D, P::SetLabelsColour3D, P::GetLabelsColour3DDefault, k3D, "Labels Colour", 0 },
    { P::GetTitlesColour3D, P::SetTitlesColour3D, P::GetTitlesColour3DDefault, k3D, "Titles Colour", 0 },
    { P::GetGridColour3D, P::SetGridColour3D, P::GetGridColour3DDefault, k3D, "Grid Colour", RGB(235, 235, 235) },
    { P::GetWallsColour3D, P::SetWallsColour3D, P::GetWallsColour3DDefault, k3D, "Walls Colour", RGB(215, 215, 215) },
    { P::GetBackgroundColour3D, P::SetBackgroundColour3D, P::GetBackgroundColour3DDefault, k3D, "Background Colour",
        0xFFFFFF },
};

struct FactorCase {
    int (*get)(float&);
    int (*set)(float);
    char const* key;
    char const* name;
    float expected;
};
FactorCase const kFactors[] = {
    { P::GetCurveThicknessScaleFac, P::SetCurveThicknessScaleFac, k2D, "Curve Thickness Scale Factor", 1.0F },
    { P::GetAxesThicknessScaleFac, P::SetAxesThicknessScaleFac, k2D, "Axes Thickness Scale Factor", 1.0F },
    { P::GetBorderThicknessScaleFac, P::SetBorderThicknessScaleFac, k2D, "Border Thickness Scale Factor", 0.5F },
    { P::GetSymbolThicknessScaleFac, P::SetSymbolThicknessScaleFac, k2D, "Symbol Thickness Scale Factor", 1.0F },
    { P::GetGridThicknessScaleFac, P::SetGridThicknessScaleFac, k2D, "Grid Thickness Scale Factor", 1.0F },
    { P::GetAxesThicknessScaleFac3D, P::SetAxesThicknessScaleFac3D, k3D, "Axes Thickness Scale Factor", 1.0F },
    { P::GetGridThicknessScaleFac3D, P::SetGridThicknessScaleFac3D, k3D, "Grid Thickness Scale Factor", 1.0F },
    { P::GetWireframeThicknessScaleFac3D, P::SetWireframeThicknessScaleFac3D, k3D, "Wireframe Thickness Scale Factor",
        0.5F },
    { P::GetContourThicknessScaleFac3D, P::SetContourThicknessScaleFac3D, k3D, "Contour Thickness Scale Factor", 0.5F },
    { P::GetBorderThicknessScaleFac3D, P::SetBorderThicknessScaleFac3D, k3D, "Border Thickness Scale Factor", 0.5F },
};

struct IntegerCase {
    int (*get)(int&);
    int (*set)(int);
    int (*fallback)();
    char const* key;
    char const* name;
    int expected;
};
IntegerCase const kIntegers[] = {
    { P::GetGridCellFloatFormat, P::SetGridCellFloatFormat, P::GetGridCellFloatFormatDefault, kGeneral,
        "Grid Cell Float Format", 0 },
    { P::GetGridCellPrecision, P::SetGridCellPrecision, P::GetGridCellPrecisionDefault, kGeneral,
        "Grid Cell Float Precision", 4 },
    { P::GetGridCellMixedPrecision, P::SetGridCellMixedPrecision, P::GetGridCellMixedPrecisionDefault, kGeneral,
        "Grid Cell Mixed Precision", 10 },
    { P::GetGridCellScientificPrecision, P::SetGridCellScientificPrecision, P::GetGridCellScientificPrecisionDefault,
        kGeneral, "Grid Cell Scientific Precision", 4 },
    { P::GetUseDefaultDateFormat, P::SetUseDefaultDateFormat, P::GetUseDefaultDateFormatDefault, kGeneral,
        "Use Default Date Format", 1 },
    { P::GetShowCursorPos, P::SetShowCursorPos, P::GetShowCursorPosDefault, k2D, "Show Cursor Pos", 0 },
    { P::GetCursorPosFloatFormat, P::SetCursorPosFloatFormat, P::GetCursorPosFloatFormatDefault, k2D,
        "Cursor Pos Float Format", 0 },
    { P::GetCursorPosPrecision, P::SetCursorPosPrecision, P::GetCursorPosPrecisionDefault, k2D,
        "Cursor Pos Float Precision", 4 },
};

struct TextCase {
    int (*get)(CString&);
    int (*set)(CString const&);
    CString (*fallback)();
    char const* key;
    char const* name;
    char const* expected;
};
TextCase const kTexts[] = {
    { P::GetGridCellDateFormat, P::SetGridCellDateFormat, P::GetGridCellDateFormatDefault, kGeneral,
        "Grid Cell Date Format", "%d/%m/%Y" },
    { P::GetGridCellTimeFormat, P::SetGridCellTimeFormat, P::GetGridCellTimeFormatDefault, kGeneral,
        "Grid Cell Time Format", "%H:%M:%S" },
    { P::GetCursorPosDateFormat, P::SetCursorPosDateFormat, P::GetCursorPosDateFormatDefault, k2D,
        "Cursor Pos Date Format", "%d/%m/%Y" },
    { P::GetCursorPosTimeFormat, P::SetCursorPosTimeFormat, P::GetCursorPosTimeFormatDefault, k2D,
        "Cursor Pos Time Format", "%H:%M:%S" },
};

struct SwitchCase {
    int (*get)(int&);
    int (*set)(int);
    char const* name;
};
SwitchCase const kSwitches[] = {
    { P::GetResizingOn, P::SetResizingOn, "Resizing" },
    { P::GetShowAspectRatio, P::SetShowAspectRatio, "Aspect" },
};

TEST_F(Preferences, GiveTheirDefaultsWhenNothingIsStored)
{
    for (ColourCase const& c : kColours) {
        COLORREF colour = 0x123456;
        EXPECT_EQ(c.get(colour), 1) << c.name;
        EXPECT_EQ(colour, c.expected) << c.name;
        EXPECT_EQ(c.fallback(), c.expected) << c.name;
    }
    for (FactorCase const& c : kFactors) {
        float factor = -1.0F;
        EXPECT_EQ(c.get(factor), 1) << c.name;
        EXPECT_EQ(factor, c.expected) << c.name;
    }
    for (IntegerCase const& c : kIntegers) {
        int number = -1;
        EXPECT_EQ(c.get(number), 1) << c.name;
        EXPECT_EQ(number, c.expected) << c.name;
        EXPECT_EQ(c.fallback(), c.expected) << c.name;
    }
    for (TextCase const& c : kTexts) {
        CString text;
        EXPECT_EQ(c.get(text), 1) << c.name;
        EXPECT_EQ(text, c.expected) << c.name;
        EXPECT_EQ(c.fallback(), c.expected) << c.name;
    }
    for (SwitchCase const& c : kSwitches) {
        int on = 7;
        EXPECT_EQ(c.get(on), 0) << c.name;
        EXPECT_EQ(on, 0) << c.name;
    }
    CSize size;
    EXPECT_EQ(P::GetAnimRowsCols(size), 1);
    EXPECT_EQ(size, CSize(50, 50));
    CRect rect;
    EXPECT_EQ(P::GetPrintPosRect(rect), 0);
    EXPECT_EQ(rect, CRect(10, 10, 180, 100));
    EXPECT_EQ(P::GetPrintPosRectDefault(), rect);
}

TEST_F(Preferences, AreStoredUnderTheirOwnKeysAndNames)
{
    // All are set before any is read: two that shared a place would show.
    int n = 100;
    for (ColourCase const& c : kColours)
        EXPECT_EQ(c.set(static_cast<COLORREF>(++n)), 1) << c.name;
    for (FactorCase const& c : kFactors)
        EXPECT_EQ(c.set(static_cast<float>(++n)), 1) << c.name;
    for (IntegerCase const& c : kIntegers)
        EXPECT_EQ(c.set(++n), 1) << c.name;
    for (TextCase const& c : kTexts)
        EXPECT_EQ(c.set(std::to_string(++n)), 1) << c.name;

    n = 100;
    for (ColourCase const& c : kColours) {
        COLORREF colour = 0;
        EXPECT_EQ(Stored(c.key, c.name), std::to_string(++n));
        c.get(colour);
        EXPECT_EQ(colour, static_cast<COLORREF>(n)) << c.name;
    }
    for (FactorCase const& c : kFactors) {
        float factor = 0.0F;
        EXPECT_EQ(Stored(c.key, c.name), std::to_string(++n) + ".00");
        c.get(factor);
        EXPECT_EQ(factor, static_cast<float>(n)) << c.name;
    }
    for (IntegerCase const& c : kIntegers) {
        int number = 0;
        EXPECT_EQ(Stored(c.key, c.name), std::to_string(++n));
        c.get(number);
        EXPECT_EQ(number, n) << c.name;
    }
    for (TextCase const& c : kTexts) {
        CString text;
        EXPECT_EQ(Stored(c.key, c.name), std::to_string(++n));
        c.get(text);
        EXPECT_EQ(text, std::to_string(n)) << c.name;
    }
    for (SwitchCase const& c : kSwitches) {
        int on = 0;
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
    struct Case {
        char const* text;
        int integer;
        float factor;
        COLORREF colour;
    };
    COLORREF const grey = P::s_clrMinorGridLines2D;
    Case const cases[] = {
        { "12abc", 12, 12.0F, 12 },
        { " 7 ", 7, 7.0F, 7 },
        { "16777215", 16777215, 16777215.0F, 0xFFFFFF },
        { "-1", -1, -1.0F, 0xFFFFFFFF },
        { "0.33", 0, 0.33F, 0 },
        { "white", 4, 1.0F, grey },
        { "", 4, 1.0F, grey },
        { "inf", 4, 1.0F, grey },
        { "nan", 4, 1.0F, grey },
        { "1e300", 1, 1.0F, 1 },
    };
    for (Case const& c : cases) {
        Store(kGeneral, "Grid Cell Float Precision", c.text);
        Store(k2D, "Grid Thickness Scale Factor", c.text);
        Store(k2D, "Minor Grid Lines Colour", c.text);
        int integer = -77;
        float factor = -77.0F;
        COLORREF colour = 77;
        EXPECT_EQ(P::GetGridCellPrecision(integer), 1);
        EXPECT_EQ(P::GetGridThicknessScaleFac(factor), 1);
        EXPECT_EQ(P::GetMinorGridLineColour2D(colour), 1);
        EXPECT_EQ(integer, c.integer) << c.text;
        EXPECT_EQ(factor, c.factor) << c.text;
        EXPECT_EQ(colour, c.colour) << c.text;
    }
    P::SetCurveThicknessScaleFac(0.333F);
    EXPECT_EQ(Stored(k2D, "Curve Thickness Scale Factor"), "0.33");
}

TEST_F(Preferences, OtherTextsThatCannotBeReadChangeNothing)
{
    struct Case {
        char const* text;
        int expected;
    };
    for (auto const& [text, expected] : { Case { "  ON ", 1 }, { "Off", 0 }, { "yes", 7 }, { "", 7 } }) {
        int on = 7;
        Store(kGeneral, "Resizing", text);
        EXPECT_EQ(P::GetResizingOn(on), 1) << text;
        EXPECT_EQ(on, expected) << text;
    }
    CSize size(1, 2);
    Store(k3D, "Animation", "20");
    EXPECT_EQ(P::GetAnimRowsCols(size), 1);
    EXPECT_EQ(size, CSize(1, 2));
    Store(k3D, "Animation", " 20, 30 ");
    EXPECT_EQ(P::GetAnimRowsCols(size), 1);
    EXPECT_EQ(size, CSize(20, 30));

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
    float n = 1.0F;
    for (FactorCase const& c : kFactors)
        c.set(n++);
    float const expected2D[] = { 1, 2, 3, 4, 5 };
    // Axes, grid, contour, wireframe, border.
    float const expected3D[] = { 6, 7, 9, 8, 10 };
    for (int kind = 0; kind < 5; ++kind) {
        EXPECT_EQ(P::GetThicknessScaleFac(kind), expected2D[kind]);
        EXPECT_EQ(P::GetThicknessScaleFac3D(kind), expected3D[kind]);
    }
    for (int const kind : { -1, 5 }) {
        EXPECT_EQ(P::GetThicknessScaleFac(kind), 1.0F);
        EXPECT_EQ(P::GetThicknessScaleFac3D(kind), 1.0F);
    }
}

TEST_F(Preferences, BuildFormatsForGridCells)
{
    for (char const* const expected : { "%-1.10g", "%1.4f", "%1.4e", "" }) {
        EXPECT_EQ(P::GetGridCellFloatFormatString(), expected);
        int mode = 0;
        P::GetGridCellFloatFormat(mode);
        P::SetGridCellFloatFormat(mode + 1);
    }
    P::SetGridCellFloatFormat(1);
    P::SetGridCellPrecision(6);
    EXPECT_EQ(P::GetGridCellFloatFormatString(), "%1.6f");
    EXPECT_EQ(P::GetGridCellDateFormatString(), "");
    P::SetUseDefaultDateFormat(0);
    EXPECT_EQ(P::GetGridCellDateFormatString(), "%d/%m/%Y %H:%M:%S");
}

TEST_F(Preferences, AnExceptionInsideIsShownAndGivesZero)
{
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

TEST_F(Preferences, TheHostChoosesTheKeys)
{
    SetStringResourceFunction([](UINT id, CString& text) {
        text = "Software\\Host\\Settings";
        return id == 1006;
    });
    P::SetShowCursorPos(1);
    SetStringResourceFunction(nullptr);
    CString value;
    EXPECT_TRUE(ReadRegistryValue(HKEY_CURRENT_USER, "Software\\Host\\Settings", "Show Cursor Pos", value));
    int on = 7;
    P::GetShowCursorPos(on);
    EXPECT_EQ(on, 0);
}

TEST_F(Preferences, OfAFileThatMayNotBeWrittenAreTheDefaults)
{
    P::SetShowCursorPos(1);
    std::filesystem::permissions(m_directory, std::filesystem::perms(0755));
    std::filesystem::permissions(m_directory / "registry", std::filesystem::perms(0444));
    // A process of its own, which gives the rights of root away.
    pid_t const child = fork();
    if (child == 0) {
        bool const plain = geteuid() != 0 || setuid(65534) == 0;
        int on = 7;
        _exit(plain && P::GetShowCursorPos(on) == 1 && on == 0 && Stored(k2D, "Show Cursor Pos") == "1" ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST_F(Preferences, EntriesReadAtMost1023UnitsAndGoDownToSubkeys)
{
    CRegEntry entry(HKEY_CURRENT_USER);
    ASSERT_TRUE(entry.LoadString(1005));
    CString value("untouched");
    EXPECT_EQ(entry.GetValue("Name", value), 0);
    EXPECT_EQ(value, "untouched");
    EXPECT_EQ(entry.SetValue("Name", CString(u'x', 1023)), 1);
    EXPECT_EQ(entry.GetValue("name", value), 1);
    EXPECT_EQ(value.GetLength(), 1023);
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
