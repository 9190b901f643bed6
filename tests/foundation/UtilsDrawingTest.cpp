#include "ombrel/foundation/Utils.h"

#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/RecordingSurface.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

constexpr COLORREF kWhite = 0xFFFFFF;

/// A white bitmap with a device context that draws on it.
struct Canvas {
    Canvas(int width, int height)
    {
        bitmap.CreateBitmap(width, height, 32);
        dc.SelectObject(&bitmap);
        dc.FillSolidRect(CRect(0, 0, width, height), kWhite);
    }
    int Count(COLORREF colour) const
    {
        int count = 0;
        for (int y = 0; y < bitmap.GetSize().cy; ++y) {
            for (int x = 0; x < bitmap.GetSize().cx; ++x)
                count += dc.GetPixel(x, y) == colour ? 1 : 0;
        }
        return count;
    }
    CBitmap bitmap;
    CDC dc;
};

TEST(UtilsDrawing, MillimetresFollowTheDeviceOrItsLogicalInches)
{
    DeviceCapabilities printer;
    printer.horzSize = 200;
    printer.vertSize = 100;
    printer.horzRes = 4800;
    printer.vertRes = 1250;
    printer.logPixelsX = 600;
    printer.logPixelsY = 300;
    CDC dc(std::make_shared<RecordingSurface>(CSize(100, 100), printer, true));
    EXPECT_EQ(CVUtils::MMToPixels(&dc, CSize(10, 10)), CSize(240, 125));
    EXPECT_EQ(CVUtils::MMToPixels2(&dc, CSize(10, 10)), CSize(236, 118));
    EXPECT_EQ(CVUtils::PixelsToMM(&dc, CSize(240, 125)), CRealSize(10.0, 10.0));
    CRealSize const logical = CVUtils::PixelsToMM2(&dc, CSize(600, 300));
    EXPECT_DOUBLE_EQ(logical.cx, 25.4);
    EXPECT_DOUBLE_EQ(logical.cy, 25.4);
}

TEST(UtilsDrawing, FontsComeFromTheirDescription)
{
    CFont font;
    CVUtils::ConfigureFont(&font, CFontData("A face name of more than thirty-one letters", 700, 1, 0.85), 20, 1);
    LOGFONT const& lf = *font.GetLogFont();
    EXPECT_EQ(lf.lfHeight, 17);
    EXPECT_EQ(lf.lfWeight, 700);
    EXPECT_EQ(lf.lfItalic, 1);
    EXPECT_EQ(lf.lfEscapement, 900);
    EXPECT_EQ(lf.lfOrientation, 0);
    EXPECT_EQ(lf.lfOutPrecision, 7);
    EXPECT_EQ(lf.lfQuality, 2);
    EXPECT_EQ(lf.lfPitchAndFamily, 0x32);
    EXPECT_EQ(lf.lfFaceName, "A face name of more than thirty");

    LOGFONT chosen;
    chosen.lfUnderline = 1;
    CHOOSEFONT dialog;
    CVUtils::InitCHOOSEFONT(dialog, chosen, "Arial", 400, 0);
    EXPECT_EQ(dialog.lpLogFont, &chosen);
    EXPECT_EQ(chosen.lfHeight, 13);
    EXPECT_EQ(chosen.lfUnderline, 0);
}

TEST(UtilsDrawing, FramesAreClosedOnePixelWideOutlines)
{
    Canvas canvas(20, 20);
    CVUtils::DrawRect(&canvas.dc, CRect(3, 4, 12, 14));
    // Unlike a filled rectangle's, the right and bottom edges are drawn on.
    for (CPoint const p : { CPoint(3, 4), CPoint(12, 4), CPoint(12, 14), CPoint(3, 14), CPoint(7, 14), CPoint(12, 9) })
        EXPECT_EQ(canvas.dc.GetPixel(p.x, p.y), 0U) << p.x << ' ' << p.y;
    EXPECT_EQ(canvas.Count(0), 2 * (9 + 10));
}

TEST(UtilsDrawing, DottedLinesSetEveryOtherPixelFromTheFirst)
{
    Canvas canvas(20, 5);
    CVUtils::LineDDA(2, 1, 9, 1, 99, &canvas.dc, RGB(255, 0, 0));
    for (int x = 0; x < 20; ++x)
        EXPECT_EQ(canvas.dc.GetPixel(x, 1), x == 2 || x == 4 || x == 6 || x == 8 ? RGB(255, 0, 0) : kWhite) << x;
    EXPECT_EQ(canvas.Count(RGB(255, 0, 0)), 4);
}

TEST(UtilsDrawing, TransparentPixelsShowTheBackground)
{
    constexpr COLORREF kKey = RGB(255, 0, 255);
    Canvas picture(4, 3);
    picture.dc.FillSolidRect(CRect(0, 0, 4, 3), kKey);
    picture.dc.SetPixel(1, 0, RGB(10, 20, 30));
    picture.dc.SetPixel(3, 1, 0);
    picture.dc.SetPixel(0, 2, RGB(254, 0, 255));
    Canvas canvas(10, 10);
    canvas.dc.FillSolidRect(CRect(0, 0, 10, 10), RGB(0, 128, 0));
    CVUtils::DrawTransparentBitmap(&canvas.dc, &picture.bitmap, 5, 6, kKey);
    EXPECT_EQ(canvas.dc.GetPixel(6, 6), RGB(10, 20, 30));
    EXPECT_EQ(canvas.dc.GetPixel(8, 7), 0U);
    EXPECT_EQ(canvas.dc.GetPixel(5, 8), RGB(254, 0, 255));
    EXPECT_EQ(canvas.Count(RGB(0, 128, 0)), 97);
    EXPECT_EQ(picture.Count(kKey), 9);
}

TEST(UtilsDrawing, TheScreenHas32BitsPerPixel) { EXPECT_EQ(CVUtils::GetBitsPerPixel(), 32); }

} // namespace
} // namespace ombrel
