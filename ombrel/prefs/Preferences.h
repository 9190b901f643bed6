#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"

#include <span>

namespace ombrel {

/// A variable that a colour is written to: a COLORREF or, as many programs keep colours, an unsigned long.
class OMBREL_EXPORT ColourTarget {
public:
    ColourTarget(COLORREF& v)
        : m_colour(&v)
    {
    }
    ColourTarget(unsigned long& v)
        : m_long(&v)
    {
    }
    void Set(COLORREF colour) const
    {
        if (m_colour)
            *m_colour = colour;
        else
            *m_long = colour;
    }

private:
    COLORREF* m_colour = nullptr;
    unsigned long* m_long = nullptr;
};

/// The user's preferences for graphs, kept in the registry under three keys: general, 2D and 3D.
///
/// Nothing is kept here: every getter reads the registry and every setter writes it. The members s_... are the
/// built-in defaults.
/// Getters return 1 with the stored value or the default; but switches and the print rectangle return 1 only when a
/// value is stored (and, for the rectangle, can be read). A number that cannot be read gives the default, any other
/// text that cannot be read leaves the argument untouched. Setters return 1, or 0 when the value could not be stored.
class OMBREL_EXPORT CPreferences : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }

    // All graphs; meant for the host, which shows and edits them

    /// On paper; stored as left, top, width and height.
    static int GetPrintPosRect(CRect& v) { return Get(kPrintPosRect, v); }
    static int SetPrintPosRect(CRect const& v) { return Set(kPrintPosRect, v); }
    static CRect GetPrintPosRectDefault() { return s_PrintedGraphRect; }
    static int GetResizingOn(int& v) { return Get(kResizingOn, v); }
    static int SetResizingOn(int v) { return Set(kResizingOn, v); }
    static int GetResizingOnDefault() { return s_bGraphResizingOn; }
    static int GetShowAspectRatio(int& v) { return Get(kShowAspectRatio, v); }
    static int SetShowAspectRatio(int v) { return Set(kShowAspectRatio, v); }
    static int GetGridCellFloatFormat(int& v) { return Get(kGridCellFloatFormat, v); }
    static int SetGridCellFloatFormat(int v) { return Set(kGridCellFloatFormat, v); }
    static int GetGridCellFloatFormatDefault() { return s_iGridCellFloatFormat; }
    static int GetGridCellPrecision(int& v) { return Get(kGridCellPrecision, v); }
    static int SetGridCellPrecision(int v) { return Set(kGridCellPrecision, v); }
    static int GetGridCellPrecisionDefault() { return s_iGridCellPrecision; }
    static int GetGridCellMixedPrecision(int& v) { return Get(kGridCellMixedPrecision, v); }
    static int SetGridCellMixedPrecision(int v) { return Set(kGridCellMixedPrecision, v); }
    static int GetGridCellMixedPrecisionDefault() { return s_iGridCellMixedPrecision; }
    static int GetGridCellScientificPrecision(int& v) { return Get(kGridCellScientificPrecision, v); }
    static int SetGridCellScientificPrecision(int v) { return Set(kGridCellScientificPrecision, v); }
    static int GetGridCellScientificPrecisionDefault() { return s_iGridCellScientificPrecision; }
    static int GetGridCellDateFormat(CString& v) { return Get(kGridCellDateFormat, v); }
    static int SetGridCellDateFormat(CString const& v) { return Set(kGridCellDateFormat, v); }
    static CString GetGridCellDateFormatDefault() { return s_strGridCellDateFormat; }
    static int GetGridCellTimeFormat(CString& v) { return Get(kGridCellTimeFormat, v); }
    static int SetGridCellTimeFormat(CString const& v) { return Set(kGridCellTimeFormat, v); }
    static CString GetGridCellTimeFormatDefault() { return s_strGridCellTimeFormat; }
    static int GetUseDefaultDateFormat(int& v) { return Get(kUseDefaultDateFormat, v); }
    static int SetUseDefaultDateFormat(int v) { return Set(kUseDefaultDateFormat, v); }
    static int GetUseDefaultDateFormatDefault() { return s_bUseDefaultDateFormat; }

    // 2D graphs: colours, printing factors of line widths, and the display of the cursor's position (meant for the
    // host)

    static int GetAxesColour2D(ColourTarget v) { return Get(kAxesColour2D, v); }
    static int SetAxesColour2D(COLORREF v) { return Set(kAxesColour2D, v); }
    static COLORREF GetAxesColour2DDefault() { return s_clrAxes2D; }
    static int GetMajorLabelsColour2D(ColourTarget v) { return Get(kMajorLabelsColour2D, v); }
    static int SetMajorLabelsColour2D(COLORREF v) { return Set(kMajorLabelsColour2D, v); }
    static COLORREF GetMajorLabelsColour2DDefault() { return s_clrMajorLabels2D; }
    static int GetMinorLabelsColour2D(ColourTarget v) { return Get(kMinorLabelsColour2D, v); }
    static int SetMinorLabelsColour2D(COLORREF v) { return Set(kMinorLabelsColour2D, v); }
    static COLORREF GetMinorLabelsColour2DDefault() { return s_clrMinorLabels2D; }
    static int GetTitlesColour2D(ColourTarget v) { return Get(kTitlesColour2D, v); }
    static int SetTitlesColour2D(COLORREF v) { return Set(kTitlesColour2D, v); }
    static COLORREF GetTitlesColour2DDefault() { return s_clrTitles2D; }
    static int GetMajorGridLineColour2D(ColourTarget v) { return Get(kMajorGridLineColour2D, v); }
    static int SetMajorGridLineColour2D(COLORREF v) { return Set(kMajorGridLineColour2D, v); }
    static COLORREF GetMajorGridLineColour2DDefault() { return s_clrMajorGridLines2D; }
    static int GetMinorGridLineColour2D(ColourTarget v) { return Get(kMinorGridLineColour2D, v); }
    static int SetMinorGridLineColour2D(COLORREF v) { return Set(kMinorGridLineColour2D, v); }
    static COLORREF GetMinorGridLineColour2DDefault() { return s_clrMinorGridLines2D; }
    static int GetBackgroundColour2D(ColourTarget v) { return Get(kBackgroundColour2D, v); }
    static int SetBackgroundColour2D(COLORREF v) { return Set(kBackgroundColour2D, v); }
    static COLORREF GetBackgroundColour2DDefault() { return s_clrBackground2D; }
    static int GetGraphBackgroundColour2D(ColourTarget v) { return Get(kGraphBackgroundColour2D, v); }
    static int SetGraphBackgroundColour2D(COLORREF v) { return Set(kGraphBackgroundColour2D, v); }
    static COLORREF GetGraphBackgroundColour2DDefault() { return s_clrGraphBackground2D; }
    static int GetCurveThicknessScaleFac(float& v) { return Get(kCurveThicknessScaleFac, v); }
    static int SetCurveThicknessScaleFac(float v) { return Set(kCurveThicknessScaleFac, v); }
    static int GetAxesThicknessScaleFac(float& v) { return Get(kAxesThicknessScaleFac, v); }
    static int SetAxesThicknessScaleFac(float v) { return Set(kAxesThicknessScaleFac, v); }
    static int GetBorderThicknessScaleFac(float& v) { return Get(kBorderThicknessScaleFac, v); }
    static int SetBorderThicknessScaleFac(float v) { return Set(kBorderThicknessScaleFac, v); }
    static int GetSymbolThicknessScaleFac(float& v) { return Get(kSymbolThicknessScaleFac, v); }
    static int SetSymbolThicknessScaleFac(float v) { return Set(kSymbolThicknessScaleFac, v); }
    static int GetGridThicknessScaleFac(float& v) { return Get(kGridThicknessScaleFac, v); }
    static int SetGridThicknessScaleFac(float v) { return Set(kGridThicknessScaleFac, v); }
    static int GetShowCursorPos(int& v) { return Get(kShowCursorPos, v); }
    static int SetShowCursorPos(int v) { return Set(kShowCursorPos, v); }
    static int GetShowCursorPosDefault() { return s_bShowCursorPos; }
    static int GetCursorPosFloatFormat(int& v) { return Get(kCursorPosFloatFormat, v); }
    static int SetCursorPosFloatFormat(int v) { return Set(kCursorPosFloatFormat, v); }
    static int GetCursorPosFloatFormatDefault() { return s_iCursorPosFloatFormat; }
    static int GetCursorPosPrecision(int& v) { return Get(kCursorPosPrecision, v); }
    static int SetCursorPosPrecision(int v) { return Set(kCursorPosPrecision, v); }
    static int GetCursorPosPrecisionDefault() { return s_iCursorPosPrecision; }
    static int GetCursorPosDateFormat(CString& v) { return Get(kCursorPosDateFormat, v); }
    static int SetCursorPosDateFormat(CString const& v) { return Set(kCursorPosDateFormat, v); }
    static CString GetCursorPosDateFormatDefault() { return s_strCursorPosDateFormat; }
    static int GetCursorPosTimeFormat(CString& v) { return Get(kCursorPosTimeFormat, v); }
    static int SetCursorPosTimeFormat(CString const& v) { return Set(kCursorPosTimeFormat, v); }
    static CString GetCursorPosTimeFormatDefault() { return s_strCursorPosTimeFormat; }

    // 3D graphs: colours, printing factors of line widths, and the size of animations (meant for the host)

    static int GetAxesColour3D(ColourTarget v) { return Get(kAxesColour3D, v); }
    static int SetAxesColour3D(COLORREF v) { return Set(kAxesColour3D, v); }
    static COLORREF GetAxesColour3DDefault() { return s_clrAxes3D; }
    static int GetLabelsColour3D(ColourTarget v) { return Get(kLabelsColour3D, v); }
    static int SetLabelsColour3D(COLORREF v) { return Set(kLabelsColour3D, v); }
    static COLORREF GetLabelsColour3DDefault() { return s_clrLabels3D; }
    static int GetTitlesColour3D(ColourTarget v) { return Get(kTitlesColour3D, v); }
    static int SetTitlesColour3D(COLORREF v) { return Set(kTitlesColour3D, v); }
    static COLORREF GetTitlesColour3DDefault() { return s_clrTitles3D; }
    static int GetGridColour3D(ColourTarget v) { return Get(kGridColour3D, v); }
    static int SetGridColour3D(COLORREF v) { return Set(kGridColour3D, v); }
    static COLORREF GetGridColour3DDefault() { return s_clrGrid3D; }
    static int GetWallsColour3D(ColourTarget v) { return Get(kWallsColour3D, v); }
    static int SetWallsColour3D(COLORREF v) { return Set(kWallsColour3D, v); }
    static COLORREF GetWallsColour3DDefault() { return s_clrWalls3D; }
    static int GetBackgroundColour3D(ColourTarget v) { return Get(kBackgroundColour3D, v); }
    static int SetBackgroundColour3D(COLORREF v) { return Set(kBackgroundColour3D, v); }
    static COLORREF GetBackgroundColour3DDefault() { return s_clrBackground3D; }
    static int GetAxesThicknessScaleFac3D(float& v) { return Get(kAxesThicknessScaleFac3D, v); }
    static int SetAxesThicknessScaleFac3D(float v) { return Set(kAxesThicknessScaleFac3D, v); }
    static int GetGridThicknessScaleFac3D(float& v) { return Get(kGridThicknessScaleFac3D, v); }
    static int SetGridThicknessScaleFac3D(float v) { return Set(kGridThicknessScaleFac3D, v); }
    static int GetWireframeThicknessScaleFac3D(float& v) { return Get(kWireframeThicknessScaleFac3D, v); }
    static int SetWireframeThicknessScaleFac3D(float v) { return Set(kWireframeThicknessScaleFac3D, v); }
    static int GetContourThicknessScaleFac3D(float& v) { return Get(kContourThicknessScaleFac3D, v); }
    static int SetContourThicknessScaleFac3D(float v) { return Set(kContourThicknessScaleFac3D, v); }
    static int GetBorderThicknessScaleFac3D(float& v) { return Get(kBorderThicknessScaleFac3D, v); }
    static int SetBorderThicknessScaleFac3D(float v) { return Set(kBorderThicknessScaleFac3D, v); }
    static int GetAnimRowsCols(CSize& v) { return Get(kAnimRowsCols, v); }
    static int SetAnimRowsCols(CSize v) { return Set(kAnimRowsCols, v); }
    static CSize GetAnimRowsColsDefault() { return s_AnimRowsCols; }

    /// The printing factor of 2D line widths by kind: 0 curves, 1 axes, 2 borders, 3 symbols, 4 grids; 1 for others.
    static float GetThicknessScaleFac(int kind);
    /// That of 3D line widths: 0 axes, 1 grids, 2 contours, 3 wireframes, 4 borders; 1 for others.
    static float GetThicknessScaleFac3D(int kind);

    /// Reads "left,top,width,height"; 0, and rect untouched, without four numbers.
    static int ParseRectString(CString const& text, CRect& rect);
    /// The printf format that grid cells show numbers with: general, fixed or scientific by the float format; empty
    /// for another one.
    static CString GetGridCellFloatFormatString();
    /// Date format, blank, time format; empty when the default date format is to be used.
    static CString GetGridCellDateFormatString();

    static constexpr CRect s_PrintedGraphRect { 10, 10, 180, 100 };
    static constexpr int s_bGraphResizingOn = 0;
    static constexpr int s_bShowAspectRatio = 0;
    static constexpr int s_iGridCellFloatFormat = 0;
    static constexpr int s_iGridCellPrecision = 4;
    static constexpr int s_iGridCellMixedPrecision = 10;
    static constexpr int s_iGridCellScientificPrecision = 4;
    inline static CString const s_strGridCellDateFormat = "%d/%m/%Y";
    inline static CString const s_strGridCellTimeFormat = "%H:%M:%S";
    static constexpr int s_bUseDefaultDateFormat = 1;
    static constexpr COLORREF s_clrAxes2D = 0;
    static constexpr COLORREF s_clrMajorLabels2D = 0;
    static constexpr COLORREF s_clrMinorLabels2D = 0;
    static constexpr COLORREF s_clrTitles2D = 0;
    static constexpr COLORREF s_clrMajorGridLines2D = 0;
    static constexpr COLORREF s_clrMinorGridLines2D = 0xC0C0C0;
    static constexpr COLORREF s_clrBackground2D = 0xFFFFFF;
    static constexpr COLORREF s_clrGraphBackground2D = 0xFFFFFF;
    static constexpr float s_fCurveThicknessScaleFac = 1.0F;
    static constexpr float s_fAxesThicknessScaleFac = 1.0F;
    static constexpr float s_fBorderThicknessScaleFac = 0.5F;
    static constexpr float s_fSymbolThicknessScaleFac = 1.0F;
    static constexpr float s_fGridThicknessScaleFac = 1.0F;
    static constexpr int s_bShowCursorPos = 0;
    static constexpr int s_iCursorPosFloatFormat = 0;
    static constexpr int s_iCursorPosPrecision = 4;
    inline static CString const s_strCursorPosDateFormat = "%d/%m/%Y";
    inline static CString const s_strCursorPosTimeFormat = "%H:%M:%S";
    static constexpr COLORREF s_clrAxes3D = 0x282828;
    static constexpr COLORREF s_clrLabels3D = 0;
    static constexpr COLORREF s_clrTitles3D = 0;
    static constexpr COLORREF s_clrGrid3D = 0xEBEBEB;
    static constexpr COLORREF s_clrWalls3D = 0xD7D7D7;
    static constexpr COLORREF s_clrBackground3D = 0xFFFFFF;
    static constexpr float s_fAxesThicknessScaleFac3D = 1.0F;
    static constexpr float s_fGridThicknessScaleFac3D = 1.0F;
    static constexpr float s_fWireframeThicknessScaleFac3D = 0.5F;
    static constexpr float s_fContourThicknessScaleFac3D = 0.5F;
    static constexpr float s_fBorderThicknessScaleFac3D = 0.5F;
    static constexpr CSize s_AnimRowsCols { 50, 50 };

private:
    /// The string resource that names the group's key.
    enum class Group : UINT { General = 1005, TwoD = 1006, ThreeD = 1007 };
    /// Where a preference is kept and what it is without a stored value.
    template <typename T> struct Entry {
        Group group;
        char const* name;
        T const& fallback;
    };
    struct Integer : Entry<int> { };
    struct Switch : Entry<int> { };
    struct Colour : Entry<COLORREF> { };
    struct Factor : Entry<float> { };
    struct Text : Entry<CString> { };
    struct Size : Entry<CSize> { };
    struct Rect : Entry<CRect> { };

    static int Get(Integer const& entry, int& v);
    static int Get(Switch const& entry, int& v);
    static int Get(Colour const& entry, ColourTarget v);
    static int Get(Factor const& entry, float& v);
    static int Get(Text const& entry, CString& v);
    static int Get(Size const& entry, CSize& v);
    static int Get(Rect const& entry, CRect& v);
    /// Shared by the kinds that give the default when what is stored is no number.
    template <typename T, typename Scan> static int GetNumber(Entry<T> const& entry, T& v, Scan const& scan);
    static float FactorOfKind(std::span<Factor const* const> factors, int kind);
    static int Set(Integer const& entry, int v);
    static int Set(Switch const& entry, int v);
    static int Set(Colour const& entry, COLORREF v);
    static int Set(Factor const& entry, float v);
    static int Set(Text const& entry, CString const& v);
    static int Set(Size const& entry, CSize v);
    static int Set(Rect const& entry, CRect const& v);

    static constexpr Rect kPrintPosRect { { Group::General, "Print Rect", s_PrintedGraphRect } };
    static constexpr Switch kResizingOn { { Group::General, "Resizing", s_bGraphResizingOn } };
    static constexpr Switch kShowAspectRatio { { Group::General, "Aspect", s_bShowAspectRatio } };
    static constexpr Integer kGridCellFloatFormat { { Group::General, "Grid Cell Float Format",
        s_iGridCellFloatFormat } };
    static constexpr Integer kGridCellPrecision { { Group::General, "Grid Cell Float Precision",
        s_iGridCellPrecision } };
    static constexpr Integer kGridCellMixedPrecision { { Group::General, "Grid Cell Mixed Precision",
        s_iGridCellMixedPrecision } };
    static constexpr Integer kGridCellScientificPrecision { { Group::General, "Grid Cell Scientific Precision",
        s_iGridCellScientificPrecision } };
    inline static Text const kGridCellDateFormat { { Group::General, "Grid Cell Date Format",
        s_strGridCellDateFormat } };
    inline static Text const kGridCellTimeFormat { { Group::General, "Grid Cell Time Format",
        s_strGridCellTimeFormat } };
    static constexpr Integer kUseDefaultDateFormat { { Group::General, "Use Default Date Format",
        s_bUseDefaultDateFormat } };
    static constexpr Colour kAxesColour2D { { Group::TwoD, "Axes Colour", s_clrAxes2D } };
    static constexpr Colour kMajorLabelsColour2D { { Group::TwoD, "Major Labels Colour", s_clrMajorLabels2D } };
    static constexpr Colour kMinorLabelsColour2D { { Group::TwoD, "Minor Labels Colour", s_clrMinorLabels2D } };
    static constexpr Colour kTitlesColour2D { { Group::TwoD, "Axes Titles Colour", s_clrTitles2D } };
    static constexpr Colour kMajorGridLineColour2D { { Group::TwoD, "Major Grid Lines Colour",
        s_clrMajorGridLines2D } };
    static constexpr Colour kMinorGridLineColour2D { { Group::TwoD, "Minor Grid Lines Colour",
        s_clrMinorGridLines2D } };
    static constexpr Colour kBackgroundColour2D { { Group::TwoD, "Background Colour", s_clrBackground2D } };
    static constexpr Colour kGraphBackgroundColour2D { { Group::TwoD, "Graph Background Colour",
        s_clrGraphBackground2D } };
    static constexpr Factor kCurveThicknessScaleFac { { Group::TwoD, "Curve Thickness Scale Factor",
        s_fCurveThicknessScaleFac } };
    static constexpr Factor kAxesThicknessScaleFac { { Group::TwoD, "Axes Thickness Scale Factor",
        s_fAxesThicknessScaleFac } };
    static constexpr Factor kBorderThicknessScaleFac { { Group::TwoD, "Border Thickness Scale Factor",
        s_fBorderThicknessScaleFac } };
    static constexpr Factor kSymbolThicknessScaleFac { { Group::TwoD, "Symbol Thickness Scale Factor",
        s_fSymbolThicknessScaleFac } };
    static constexpr Factor kGridThicknessScaleFac { { Group::TwoD, "Grid Thickness Scale Factor",
        s_fGridThicknessScaleFac } };
    static constexpr Integer kShowCursorPos { { Group::TwoD, "Show Cursor Pos", s_bShowCursorPos } };
    static constexpr Integer kCursorPosFloatFormat { { Group::TwoD, "Cursor Pos Float Format",
        s_iCursorPosFloatFormat } };
    static constexpr Integer kCursorPosPrecision { { Group::TwoD, "Cursor Pos Float Precision",
        s_iCursorPosPrecision } };
    inline static Text const kCursorPosDateFormat { { Group::TwoD, "Cursor Pos Date Format",
        s_strCursorPosDateFormat } };
    inline static Text const kCursorPosTimeFormat { { Group::TwoD, "Cursor Pos Time Format",
        s_strCursorPosTimeFormat } };
    static constexpr Colour kAxesColour3D { { Group::ThreeD, "Axes Colour", s_clrAxes3D } };
    static constexpr Colour kLabelsColour3D { { Group::ThreeD, "Labels Colour", s_clrLabels3D } };
    static constexpr Colour kTitlesColour3D { { Group::ThreeD, "Titles Colour", s_clrTitles3D } };
    static constexpr Colour kGridColour3D { { Group::ThreeD, "Grid Colour", s_clrGrid3D } };
    static constexpr Colour kWallsColour3D { { Group::ThreeD, "Walls Colour", s_clrWalls3D } };
    static constexpr Colour kBackgroundColour3D { { Group::ThreeD, "Background Colour", s_clrBackground3D } };
    static constexpr Factor kAxesThicknessScaleFac3D { { Group::ThreeD, "Axes Thickness Scale Factor",
        s_fAxesThicknessScaleFac3D } };
    static constexpr Factor kGridThicknessScaleFac3D { { Group::ThreeD, "Grid Thickness Scale Factor",
        s_fGridThicknessScaleFac3D } };
    static constexpr Factor kWireframeThicknessScaleFac3D { { Group::ThreeD, "Wireframe Thickness Scale Factor",
        s_fWireframeThicknessScaleFac3D } };
    static constexpr Factor kContourThicknessScaleFac3D { { Group::ThreeD, "Contour Thickness Scale Factor",
        s_fContourThicknessScaleFac3D } };
    static constexpr Factor kBorderThicknessScaleFac3D { { Group::ThreeD, "Border Thickness Scale Factor",
        s_fBorderThicknessScaleFac3D } };
    static constexpr Size kAnimRowsCols { { Group::ThreeD, "Animation", s_AnimRowsCols } };
};

} // namespace ombrel
