#include "tests/platform/gdi/Picture.h"

#include "ombrel/platform/gdi/TextMetrics.h"
#include "tests/platform/gdi/Recorded.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

TEST(DeviceContext, SavedLevelsBringEverythingBack)
{
    CDC dc;
    CBitmap bitmap;
    bitmap.CreateBitmap(40, 30, 32);
    dc.SelectObject(&bitmap);
    EXPECT_FALSE(dc.RestoreDC(-1));
    EXPECT_EQ(dc.SaveDC(), 1);

    CPen pen(PS_SOLID, 1, RGB(1, 2, 3));
    CBrush brush(RGB(4, 5, 6));
    LOGFONT face;
    face.lfHeight = 31;
    CFont font;
    font.CreateFontIndirect(face);
    CRgn region;
    region.CreateRectRgn(9, 8, 3, 2);
    CPen* const firstPen = dc.SelectObject(&pen);
    CBrush* const firstBrush = dc.SelectObject(&brush);
    CFont* const firstFont = dc.SelectObject(&font);
    dc.SetBkColor(2);
    dc.SetTextAlign(TA_CENTER);
    dc.MoveTo(7, 8);
    dc.SetViewportOrg(1, 2);
    dc.SelectClipRgn(&region);
    region.DeleteObject();
    EXPECT_EQ(dc.SaveDC(), 2);
    EXPECT_EQ(dc.GetClipBox(), CRect(2, 0, 8, 6));
    EXPECT_EQ(dc.SaveDC(), 3);
    EXPECT_FALSE(dc.RestoreDC(4));
    EXPECT_FALSE(dc.RestoreDC(0));
    EXPECT_TRUE(dc.RestoreDC(2));
    EXPECT_EQ(dc.GetTextMetrics().tmHeight, MeasureFont(face).tmHeight);
    EXPECT_TRUE(dc.RestoreDC(-1));
    EXPECT_FALSE(dc.RestoreDC(1));
    EXPECT_EQ(dc.GetBkColor(), 0xFFFFFFU);
    EXPECT_EQ(dc.GetTextAlign(), static_cast<UINT>(TA_LEFT));
    EXPECT_EQ(dc.GetCurrentPosition(), CPoint(0, 0));
    EXPECT_EQ(dc.GetViewportOrg(), CPoint(0, 0));
    EXPECT_EQ(dc.GetClipBox(), CRect(0, 0, 40, 30));
    EXPECT_EQ(dc.SelectObject(firstPen), firstPen);
    EXPECT_EQ(dc.SelectObject(firstBrush), firstBrush);
    EXPECT_EQ(dc.SelectObject(firstFont), firstFont);
}

TEST(DeviceContext, ObjectsAreSelectedByValue)
{
    Picture picture(5, 1);
    {
        CPen pen(PS_SOLID, 1, kBrushColour);
        picture.DC().SelectObject(&pen);
    }
    picture.DC().MoveTo(0, 0);
    picture.DC().LineTo(5, 0);
    EXPECT_EQ(picture.Rows(), "ooooo\n");
    EXPECT_EQ(picture.DC().SelectObject(static_cast<CPen*>(nullptr)), nullptr);
}

TEST(DeviceContext, DrawsOnTheBitmapThatIsSelected)
{
    CDC dc;
    EXPECT_TRUE(dc.CreateCompatibleDC(nullptr));
    EXPECT_EQ(dc.GetClipBox(), CRect());
    EXPECT_EQ(dc.GetPixel(0, 0), CLR_INVALID);
    CBitmap first;
    CBitmap second;
    first.CreateBitmap(3, 3, 24);
    second.CreateBitmap(4, 4, 32);
    CBitmap* const none = dc.SelectObject(&first);
    dc.FillSolidRect({ 0, 0, 9, 9 }, RGB(5, 0, 0));
    EXPECT_EQ(dc.SelectObject(&second), &first);
    EXPECT_EQ(dc.GetPixel(0, 0), 0U);
    EXPECT_EQ(dc.SelectObject(none), &second);
    dc.FillSolidRect({ 0, 0, 9, 9 }, 5);
    dc.SelectObject(&first);
    EXPECT_EQ(dc.GetPixel(2, 2), RGB(5, 0, 0));
    EXPECT_EQ(dc.GetPixel(3, 2), CLR_INVALID);
}

TEST(DeviceContext, HasItsOwnSurfaceBackAfterALoan)
{
    CDC dc;
    CBitmap own;
    CBitmap next;
    own.CreateBitmap(3, 3, 24);
    next.CreateBitmap(3, 3, 24);
    dc.SelectObject(&own);
    auto const outer = std::make_shared<Raster>(5, 5, 24);
    auto const inner = std::make_shared<Raster>(5, 5, 24);
    {
        LentSurface const lent(dc, MakeRasterSurface(outer));
        dc.FillSolidRect({ 0, 0, 9, 9 }, 1);
        {
            LentSurface const lentAgain(dc, MakeRasterSurface(inner));
            dc.FillSolidRect({ 0, 0, 9, 9 }, 2);
        }
        EXPECT_EQ(dc.GetPixel(4, 4), 1u);
        CDC target(MakeRasterSurface(inner));
        target.BitBlt(0, 0, 1, 1, &dc, 0, 0, SRCCOPY);
        EXPECT_EQ(target.GetPixel(0, 0), 1u) << "copied from where the picture is";
        // Selected meanwhile, a bitmap waits for the end of the loan.
        EXPECT_EQ(dc.SelectObject(&next), &own);
        dc.FillSolidRect({ 0, 0, 9, 9 }, 3);
    }
    EXPECT_EQ(dc.GetPixel(4, 4), CLR_INVALID);
    EXPECT_EQ(dc.GetPixel(0, 0), 0u) << "nothing was drawn there";
    dc.FillSolidRect({ 0, 0, 9, 9 }, 4);
    EXPECT_EQ(Raster::ToColour(next.GetRaster()->Row(2)[2]), 4u);
    EXPECT_EQ(Raster::ToColour(outer->Row(0)[0]), 3u);
}

TEST(DeviceContext, CapabilitiesAreTheScreensWhateverIsSelected)
{
    Picture picture(7, 5, 1);
    for (auto const& [capability, value] :
        { std::pair<int, int>(HORZRES, 1024), { VERTRES, 768 }, { HORZSIZE, 271 }, { VERTSIZE, 203 },
            { LOGPIXELSX, 96 }, { LOGPIXELSY, 96 }, { BITSPIXEL, 32 }, { PLANES, 1 }, { TECHNOLOGY, 1 }, { 4711, 0 } })
        EXPECT_EQ(picture.DC().GetDeviceCaps(capability), value);
    DeviceCapabilities printer;
    printer.logPixelsX = 600;
    CDC page(std::make_shared<RecordingSurface>(CSize(100, 100), printer, true));
    EXPECT_EQ(page.SelectObject(&picture.Bitmap()), nullptr);
    EXPECT_EQ(page.GetDeviceCaps(LOGPIXELSX), 600);
    EXPECT_TRUE(page.IsPrinting());
    CDC memory;
    EXPECT_TRUE(memory.CreateCompatibleDC(&page));
    EXPECT_EQ(memory.GetDeviceCaps(LOGPIXELSX), 96);
}

TEST(DeviceContext, AlignmentMovesTheCell)
{
    auto const surface = std::make_shared<RecordingSurface>(CSize(300, 300));
    CDC dc(surface);
    CString const text = "Aligned";
    LOGFONT face;
    face.lfHeight = 20;
    // The cell is 60 × 20, its baseline 16 down.
    using Case = std::tuple<UINT, CPoint, CPoint>;
    for (auto const& [align, flat, upright] : { Case { TA_LEFT, { 100, 150 }, { 100, 150 } },
             { TA_RIGHT, { 40, 150 }, { 100, 210 } }, { TA_CENTER, { 70, 150 }, { 100, 180 } },
             { TA_BOTTOM, { 100, 130 }, { 80, 150 } }, { TA_RIGHT | TA_BASELINE, { 40, 134 }, { 84, 210 } } }) {
        for (int const escapement : { 0, 900 }) {
            face.lfEscapement = escapement;
            CFont font;
            font.CreateFontIndirect(face);
            dc.SelectObject(&font);
            dc.SetTextAlign(align);
            surface->Clear();
            dc.TextOut(100, 150, text);
            EXPECT_EQ(test::OfKind<primitive::Text>(surface->Primitives()).at(0).at, escapement == 0 ? flat : upright)
                << align;
        }
    }
}

TEST(DeviceContext, ViewportOriginMovesDrawingButNotTheClip)
{
    Picture picture(10, 3);
    picture.DC().SetViewportOrg(4, 1);
    picture.ClipTo({ 0, 0, 6, 3 });
    EXPECT_EQ(picture.DC().GetClipBox(), CRect(-4, -1, 2, 2));
    picture.DC().Polyline(std::vector<CPoint> { { 3, 0 }, { 3, 1 } });
    EXPECT_EQ(picture.DC().GetCurrentPosition(), CPoint(0, 0));
    picture.DC().MoveTo(-2, 0);
    picture.DC().LineTo(9, 0);
    picture.DC().SetPixel(-4, -1, kBrushColour);
    EXPECT_EQ(picture.Rows(), "o.........\n..####....\n..........\n");
    EXPECT_EQ(picture.DC().GetPixel(-4, -1), kBrushColour);
}

TEST(DeviceContext, OpaqueTextFillsItsCell)
{
    for (int const escapement : { 0, 900 }) {
        Picture picture(80, 80);
        LOGFONT face;
        face.lfHeight = 16;
        face.lfEscapement = escapement;
        CFont font;
        font.CreateFontIndirect(face);
        CDC& dc = picture.DC();
        dc.SelectObject(&font);
        dc.SetBkMode(OPAQUE);
        dc.SetBkColor(kBrushColour);
        dc.SetTextColor(kBrushColour);
        dc.TextOut(10, 70 - 60 * (escapement == 0), "Hg");
        CSize const size = dc.GetTextExtent("Hg");
        CRect const cell
            = escapement == 0 ? CRect(10, 10, 10 + size.cx, 10 + size.cy) : CRect(10, 70 - size.cx, 10 + size.cy, 70);
        EXPECT_EQ(picture.Rows(), Rows(Region::FromRect(cell), 80, 80));
    }
}

} // namespace
} // namespace ombrel
