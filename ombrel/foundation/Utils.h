#pragma once
#include "ombrel/foundation/FontData.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/foundation/Vertex.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/DateTime.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"
#include "ombrel/platform/gdi/GdiObjects.h"

#include <limits>

namespace ombrel {

class CPlotComponent;

/// The nearest whole number by adding a half and cutting off the fraction (so −0.7 gives 0 and −2.5 gives −2).
/// Limited to the int range; what is not a number gives 0.
inline int VUNearest(double x)
{
    double const shifted = x + 0.5;
    if (!(shifted < std::numeric_limits<int>::max()))
        return shifted == shifted ? std::numeric_limits<int>::max() : 0;
    if (shifted < std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();
    return static_cast<int>(shifted);
}

/// Steps of the calendar and the clock. Archives store the number.
enum class TimeUnit : int { Year = 0, Month = 1, Week = 2, Day = 3, Hour = 4, Minute = 5, Second = 6 };

/// How FormatDouble writes a number.
enum NumberFormat : int {
    /// At most precision significant digits, with an exponent where that is shorter.
    kGeneralFormat = 0,
    /// precision decimals.
    kFixedFormat = 1,
    /// precision significant digits and a metric prefix.
    kEngineeringFormat = 2,
};

/// What a font dialog starts from.
struct CHOOSEFONT {
    /// Not owned.
    LOGFONT* lpLogFont = nullptr;
};

/// Functions that the whole library shares; no state.
class OMBREL_EXPORT CVUtils {
public:
    // Rounding and comparison

    /// To the nearest whole number, halves away from zero; limited to the int range, 0 for what is not a number.
    static int Round(float f);
    /// −1 below zero, else 1.
    static int SignOf(float f) { return f < 0.0F ? -1 : 1; }
    static int SignOf(int n) { return n < 0 ? -1 : 1; }
    static bool IsEven(int n) { return n % 2 == 0; }
    /// The largest divisor of n that is not greater than d; 1 when d is below 1.
    static int GetNearestDivisor(int n, int d);
    /// −1, 0, 1 for a below, near, above b: near is within epsilon times the power of two above the larger operand.
    static int fcmp(double a, double b, double epsilon);
    /// Whether a and b agree to about seven significant digits.
    static bool FloatEq(double a, double b);

    // Numbers and text

    /// 1, 2 or 5 times a power of ten near x (round not 0) or not below it (round 0). x must be positive; anything
    /// else gives 0.
    static double NiceNum(double x, int round);
    /// The value as text by a NumberFormat; other modes give the empty text. Precisions outside 0 … 100 are limited,
    /// but a negative one means 6 in engineering format. The engineering format keeps a blank in the sign's place.
    static CString FormatDouble(int mode, double value, int precision);
    /// 1 and the value when the text is a number ("." is the decimal mark; leading blanks allowed, trailing ones
    /// not), else 0 with value untouched.
    static int StringToFloat(CString const& text, double& value);

    // Dates (OLE dates: days since 30 December 1899)

    /// 1 for 1 January 100 to 31 December 9999, else 0.
    static int IsValidDate(double d);
    /// Moves the date by n units, n of either sign. Year and month steps keep day and time of day; a day that does
    /// not exist makes the date invalid. An invalid or null date stays as it is.
    static void IncrementTime(int n, TimeUnit unit, COleDateTime& date);
    /// The date in the user's format, always with a time. (The zero date is the time alone.)
    static CString FormatODTFull(COleDateTime const& date);
    /// The pictures of the user's short date and time with ":" between.
    static CString GetDefaultDateTimeFormat();

    // Lines, fields, scripts

    /// Replaces fields by those of the line, cut at runs of blanks and tabs; empty fields never occur.
    static void SplitSpaceDelimitedString(CString const& line, CStringArray& fields);
    /// Replaces fields by those of the line, cut at every delimiter and trimmed. Fields may be empty, but a delimiter
    /// at the end adds none. Quotes mean nothing.
    static void SplitDelimitedString(CString const& line, CStringArray& fields, char16_t delimiter);
    static void SplitCSVString(CString const& line, CStringArray& fields);
    /// Takes the first line off the text; returns the index of its break's last character in the text, −1 when the
    /// whole text was the line.
    static int GetNextLine(CString& text, CString& line);
    /// The lines of the text, the last one counted without a break too; 0 for the empty text.
    static int GetNumScriptLines(CString const& text);
    /// Whether name, which stands at pos in text, is an identifier of its own and not a function's name.
    static bool IsVariableName(CString const& text, CString const& name, int pos);
    static bool FindVariableName(CString const& text, CString const& name);
    /// Whether the script assigns to name ("name =", without regard to case).
    static bool FindAssignmentLine(CString const& script, CString const& name);
    /// Appends the string resources from firstId on to script, up to "Script End" or a number without a resource.
    /// Returns 1 + the index from firstId of the last one that holds "Script segment code", 0 without any.
    static int GetScript(UINT firstId, CString& script);
    static void WriteTraceString(CString const&) { }

    // Colour spaces; channels 0 … 1, or as bytes red, green, blue 0 … 255 and hue, saturation, lightness 0 … 240

    static void RGBToHSL(double r, double g, double b, double* h, double* s, double* l);
    static void HSLToRGB(double h, double s, double l, double* r, double* g, double* b);
    static void RGBToHSL(BYTE r, BYTE g, BYTE b, BYTE& h, BYTE& s, BYTE& l);
    static void HSLToRGB(BYTE h, BYTE s, BYTE l, BYTE& r, BYTE& g, BYTE& b);

    // Tables of a spectrum from blue to red: lut points at three arrays of at least 1000 doubles, owned by the caller,
    // for red, green and blue, each 0 … 1

    static void MakeSpectrumLUT(double** lut);
    /// In bands of one colour each, at least 2. They are equally wide, unless useFirstWidth is not 0: then firstWidth
    /// is the fraction of the table that the first one takes (limited to 0 … 1), and the others share the rest.
    static void MakeSharpSpectrumLUT(double** lut, int steps, int useFirstWidth, double firstWidth);

    // Geometry

    /// Between z0 at (0, 0), z1 at (1, 0), z2 at (1, 1) and z3 at (0, 1).
    static double InterpolateBilinear(double z0, double z1, double z2, double z3, double fx, double fy);
    /// 0: the segments do not meet; 1: they do, in p (rounded); 2: they are parallel (apart or on one line), or one of
    /// them has no length.
    static int LinesIntersect(CPoint a1, CPoint a2, CPoint b1, CPoint b2, CPoint& p);
    /// How many edges (top, right, bottom, left in this order) the segment crosses, at most 2, and where.
    static int LineRectIntersect(CRect const& r, CPoint p1, CPoint p2, CPoint& i1, CPoint& i2);
    /// The unit normal (p3 − p2) × (p1 − p2); (0, 0, 0) when the points lie on one line.
    static void NormalVector(CVertex const& p1, CVertex const& p2, CVertex const& p3, CNormal& n);
    /// Fractions of a device rectangle's size. Points keep y down; rectangles have y up. The device rectangle's own
    /// corner is not added.
    static CRealPoint GetNormalisedPoint(CPoint p, CRect const& device);
    static CPoint GetUnnormalisedPoint(CRealPoint const& p, CRect const& device);
    static CRealRect GetNormalisedRect(CRect const& rect, CRect const& device);
    static CRect GetUnnormalisedRect(CRealRect const& rect, CRect const& device);
    static bool CheckSize(CRect const& r) { return r.right != r.left && r.bottom != r.top; }

    // Millimetres and device pixels: by the device's physical size, or (…2) by its logical inches

    static CSize MMToPixels(CDC* dc, CSize mm);
    static CSize MMToPixels2(CDC* dc, CSize mm);
    static CRealSize PixelsToMM(CDC* dc, CSize pixels);
    static CRealSize PixelsToMM2(CDC* dc, CSize pixels);

    // Fonts

    /// Makes the font with a height in pixels, times the data's size factor; vertical not 0 turns it by 90 degrees.
    static void ConfigureFont(CFont* font, CFontData const& data, int height, int vertical);
    static void ConfigureFont(CFont* font, CString const& face, int height, int vertical, LONG weight, int italic);
    /// Everything but the height, which becomes 0.
    static void ConfigureLOGFONT(LOGFONT& lf, CString const& face, LONG weight, int italic);
    /// A font of 10 points for the font dialog; cf points at lf.
    static void InitCHOOSEFONT(CHOOSEFONT& cf, LOGFONT& lf, CString const& face, LONG weight, int italic);

    // Drawing on a device context

    /// The outline with the current pen, through the corners (right, top), (right, bottom), (left, bottom).
    static void FrameRect(CDC* dc, CRect const& rect);
    static void DrawRect(CDC* dc, CRect const& rect) { FrameRect(dc, rect); }
    /// A dotted line: every other pixel from the first on. The fifth argument means nothing.
    static void LineDDA(int x1, int y1, int x2, int y2, int, CDC* dc, COLORREF colour);
    /// Draws the bitmap with its pixels of the transparent colour left out.
    static void DrawTransparentBitmap(HDC dc, HBITMAP bitmap, int x, int y, COLORREF transparent);

    // Drawing in a 3D graph, in the middle of its draw: with OpenGL's current matrices, material and settings. What
    // they do to the model-view matrix, they undo. At any other time nothing happens.

    /// The colour of both sides in ambient and diffuse light: red, green, blue.
    static void Material(BYTE const* rgb);
    static void DrawLine(CVertex const& p1, CVertex const& p2);
    /// From one colour to the other: red, green, blue each.
    static void DrawLine(CVertex const& p1, CVertex const& p2, BYTE const* c1, BYTE const* c2);
    static void DrawSphere(CVertex const& centre, double radius);
    /// Closed at the base.
    static void DrawCone(CVertex const& base, CVertex const& apex, double radius);
    /// Radius r1 at p1 and r2 at p2; a negative r2 means r1. Caps not 0: discs of radius r1 close both ends.
    static void DrawCylinderLine(CVertex const& p1, CVertex const& p2, double r1, double r2, int caps);
    /// The box from the centre minus to the centre plus (dx, dy, dz), with normals outwards.
    static void DrawCuboid(CVertex const& centre, double dx, double dy, double dz);

    // The system

    /// Whether the user wants windows drawn while they are dragged.
    static bool FullDragOn();
    /// Always false here.
    static bool IsWin95() { return false; }
    /// Of the screen.
    static int GetBitsPerPixel();
    /// The default value of a subkey of the library's own settings: 1, or 0 with value untouched when it is missing
    /// or longer than 511 units.
    static int GetRegSettingString(CString const& subkey, CString& value);
    /// 1, or 0 when it could not be stored.
    static int SetRegSettingString(CString const& subkey, CString const& value);

    // Messages to the user

    /// Tells that what was entered on a dialog page (and its sub-page, unless empty) is not valid.
    static void InvalidDataError(CString const& page, CString const& subPage, CString const& message);
    /// Tells of an error in a curve's data, naming the curve and its plot. Curves are the model's, which stands above:
    /// this folder declares the class without knowing it, and the model defines the function.
    static void PlotDialogErrMsg(CPlotComponent const* curve, CString const& message, CString const& detail);
};

} // namespace ombrel
