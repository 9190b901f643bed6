#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/gdi/RecordingSurface.h"
#include "tests/platform/gdi/Picture.h"

#include <cmath>
#include <gtest/gtest.h>

namespace ombrel {
namespace {

constexpr int kFar = 2147483647;

TEST(UtilsGeometry, SegmentsIntersectInWholePixels)
{
    using Case = std::tuple<CPoint, CPoint, CPoint, CPoint, int, CPoint>;
    Case const cases[] = {
        { { 0, 0 }, { 10, 10 }, { 0, 10 }, { 10, 0 }, 1, { 5, 5 } },
        { { 0, 0 }, { 10, 0 }, { 0, 5 }, { 10, 5 }, 2, {} },
        { { 0, 0 }, { 10, 0 }, { 5, 0 }, { 20, 0 }, 2, {} },
        { { 0, 0 }, { 1, 1 }, { 5, 0 }, { 6, -1 }, 0, {} },
        { { 0, 0 }, { 3, 1 }, { 1, -5 }, { 1, 5 }, 1, { 1, 0 } },
        { { 0, 0 }, { 3, 2 }, { 1, -5 }, { 1, 5 }, 1, { 1, 1 } },
        { { 0, 0 }, { -3, -2 }, { -1, -5 }, { -1, 5 }, 1, { -1, -1 } },
        { { 0, 0 }, { 10, 0 }, { 10, 0 }, { 10, 9 }, 1, { 10, 0 } },
        { { -kFar, -kFar }, { kFar, kFar }, { -kFar, kFar }, { kFar, -kFar }, 1, { 0, 0 } },
    };
    for (auto const& [a1, a2, b1, b2, result, crossing] : cases) {
        CPoint p;
        EXPECT_EQ(CVUtils::LinesIntersect(a1, a2, b1, b2, p), result) << a2.x << ' ' << a2.y;
        if (result == 1)
            EXPECT_EQ(p, crossing) << p.x << ' ' << p.y;
    }
}

TEST(UtilsGeometry, SegmentsCrossARectanglesEdgesInOrder)
{
    CRect const rect(10, 20, 110, 70);
    using Case = std::tuple<CPoint, CPoint, int, CPoint, CPoint>;
    Case const cases[] = {
        { { 0, 45 }, { 120, 45 }, 2, { 110, 45 }, { 10, 45 } },
        { { 60, 0 }, { 60, 100 }, 2, { 60, 20 }, { 60, 70 } },
        { { 60, 40 }, { 60, 100 }, 1, { 60, 70 }, {} },
        { { 60, 40 }, { 70, 50 }, 0, {}, {} },
        { { 0, 0 }, { 5, 100 }, 0, {}, {} },
        // Along an edge: that one is parallel, its neighbours are crossed at the corners.
        { { 0, 20 }, { 120, 20 }, 2, { 110, 20 }, { 10, 20 } },
    };
    for (auto const& [from, to, count, first, second] : cases) {
        CPoint i1;
        CPoint i2;
        EXPECT_EQ(CVUtils::LineRectIntersect(rect, from, to, i1, i2), count) << from.x << ' ' << from.y;
        EXPECT_EQ(i1, first) << from.x << ' ' << from.y;
        EXPECT_EQ(i2, second) << from.x << ' ' << from.y;
    }
}

TEST(UtilsGeometry, NormalsHaveUnitLengthAndFollowTheOrderOfTheCorners)
{
    CNormal n;
    CVUtils::NormalVector({ 3, 0, 0 }, { 0, 0, 0 }, { 0, 5, 0 }, n);
    EXPECT_EQ(n.Z(), -1.0);
    CVUtils::NormalVector({ 0, 5, 0 }, { 0, 0, 0 }, { 3, 0, 0 }, n);
    EXPECT_EQ(n.Z(), 1.0);
    CVUtils::NormalVector({ 1, 2, 3 }, { -4, 5, 6 }, { 7, -8, 10 }, n);
    EXPECT_NEAR(std::hypot(n.X(), n.Y(), n.Z()), 1.0, 1e-15);
    CVUtils::NormalVector({ 1, 1, 1 }, { 2, 2, 2 }, { 3, 3, 3 }, n);
    EXPECT_EQ(n.X(), 0.0);
    CVUtils::NormalVector({ std::nan(""), 1, 1 }, { 2, 2, 2 }, { 3, 3, 4 }, n);
    EXPECT_EQ(n.X(), 0.0);
}

TEST(UtilsGeometry, BilinearInterpolationMeetsTheCorners)
{
    for (auto const& [x, y, z] : { std::tuple(0, 0, 1), std::tuple(1, 0, 2), std::tuple(1, 1, 4), std::tuple(0, 1, 8) })
        EXPECT_EQ(CVUtils::InterpolateBilinear(1, 2, 4, 8, x, y), z);
    EXPECT_EQ(CVUtils::InterpolateBilinear(1, 2, 4, 8, 0.5, 0.5), 3.75);
}

TEST(UtilsGeometry, NormalisedPositionsTurnBack)
{
    CRect const device(7, 9, 207, 109);
    EXPECT_EQ(CVUtils::GetNormalisedPoint({ 50, 25 }, device), CRealPoint(0.25, 0.25));
    EXPECT_EQ(CVUtils::GetUnnormalisedPoint({ 0.25, 0.25 }, device), CPoint(50, 25));
    CRect const rect(20, 10, 120, 60);
    CRealRect const normalised = CVUtils::GetNormalisedRect(rect, device);
    EXPECT_EQ(normalised, CRealRect(0.1, 0.9, 0.6, 0.4));
    EXPECT_EQ(CVUtils::GetUnnormalisedRect(normalised, device), rect);
    // Nothing to be a fraction of: any result will do, as long as there is one.
    CRealRect const empty = CVUtils::GetNormalisedRect(rect, CRect());
    CVUtils::GetUnnormalisedRect(empty, device);
    EXPECT_FALSE(CVUtils::CheckSize(CRect(1, 2, 1, 5)));
    EXPECT_TRUE(CVUtils::CheckSize(CRect(5, 5, 1, 1)));
}

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
    LOGFONT expected;
    expected.lfHeight = 17;
    expected.lfWeight = 700;
    expected.lfItalic = 1;
    expected.lfEscapement = 900;
    expected.lfOutPrecision = 7;
    expected.lfQuality = 2;
    expected.lfPitchAndFamily = 0x32;
    expected.lfFaceName = "A face name of more than thirty";
    EXPECT_TRUE(*font.GetLogFont() == expected);

    LOGFONT chosen;
    chosen.lfUnderline = 1;
    CHOOSEFONT dialog;
    CVUtils::InitCHOOSEFONT(dialog, chosen, "Arial", 400, 0);
    EXPECT_EQ(dialog.lpLogFont, &chosen);
    EXPECT_EQ(chosen.lfHeight + chosen.lfUnderline, 13);
}

TEST(UtilsDrawing, FramesAreClosedOnePixelWideOutlines)
{
    Picture picture(7, 5);
    CVUtils::DrawRect(&picture.DC(), CRect(1, 1, 5, 3));
    // Unlike a filled rectangle's, the right and bottom edges are drawn on.
    EXPECT_EQ(picture.Rows(), ".......\n.#####.\n.#...#.\n.#####.\n.......\n");
}

TEST(UtilsDrawing, DottedLinesSetEveryOtherPixelFromTheFirst)
{
    Picture picture(12, 2);
    CVUtils::LineDDA(2, 1, 9, 1, 99, &picture.DC(), kPenColour);
    EXPECT_EQ(picture.Rows(), "............\n..#.#.#.#...\n");
}

TEST(UtilsDrawing, TransparentPixelsShowTheBackground)
{
    constexpr COLORREF kKey = RGB(255, 0, 255);
    Picture source(4, 3);
    source.DC().FillSolidRect({ 0, 0, 4, 3 }, kKey);
    source.DC().SetPixel(1, 0, kPenColour);
    source.DC().SetPixel(3, 1, kBrushColour);
    source.DC().SetPixel(0, 2, RGB(254, 0, 255));
    Picture picture(7, 5);
    CVUtils::DrawTransparentBitmap(&picture.DC(), &source.Bitmap(), 2, 1, kKey);
    EXPECT_EQ(picture.Rows(), ".......\n...#...\n.....o.\n..?....\n.......\n");
}

} // namespace
} // namespace ombrel
