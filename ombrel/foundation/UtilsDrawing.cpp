#include "ombrel/foundation/Utils.h"

#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/LineDDA.h"

#include <algorithm>

namespace ombrel {

namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr int kScreenLogicalPixels = 96;

/// Pixels per millimetre of the device itself.
CRealSize PhysicalScale(CDC const& dc)
{
    return { static_cast<double>(dc.GetDeviceCaps(HORZRES)) / dc.GetDeviceCaps(HORZSIZE),
        static_cast<double>(dc.GetDeviceCaps(VERTRES)) / dc.GetDeviceCaps(VERTSIZE) };
}

/// Pixels per millimetre by the device's logical inches.
CRealSize LogicalScale(CDC const& dc)
{
    return { dc.GetDeviceCaps(LOGPIXELSX) / kMillimetresPerInch, dc.GetDeviceCaps(LOGPIXELSY) / kMillimetresPerInch };
}

CSize ToPixels(CRealSize const& scale, CSize mm)
{
    return { VUNearest(scale.cx * mm.cx), VUNearest(scale.cy * mm.cy) };
}

CRealSize ToMillimetres(CRealSize const& scale, CSize pixels) { return { pixels.cx / scale.cx, pixels.cy / scale.cy }; }

} // namespace

CSize CVUtils::MMToPixels(CDC* dc, CSize mm) { return ToPixels(PhysicalScale(*dc), mm); }

CSize CVUtils::MMToPixels2(CDC* dc, CSize mm) { return ToPixels(LogicalScale(*dc), mm); }

CRealSize CVUtils::PixelsToMM(CDC* dc, CSize pixels) { return ToMillimetres(PhysicalScale(*dc), pixels); }

CRealSize CVUtils::PixelsToMM2(CDC* dc, CSize pixels) { return ToMillimetres(LogicalScale(*dc), pixels); }

void CVUtils::ConfigureFont(CFont* font, CFontData const& data, int height, int vertical)
{
    ConfigureFont(font, data.faceName, VUNearest(height * data.sizeFactor), vertical, data.weight, data.italic);
}

void CVUtils::ConfigureFont(CFont* font, CString const& face, int height, int vertical, LONG weight, int italic)
{
    LOGFONT lf;
    ConfigureLOGFONT(lf, face, weight, italic);
    lf.lfHeight = height;
    if (vertical != 0)
        lf.lfEscapement = 900;
    font->DeleteObject();
    font->CreateFontIndirect(lf);
}

void CVUtils::ConfigureLOGFONT(LOGFONT& lf, CString const& face, LONG weight, int italic)
{
    constexpr BYTE kTrueTypeOnly = 7;
    constexpr BYTE kProofQuality = 2;
    constexpr BYTE kVariablePitchSwiss = 0x32;
    lf = LOGFONT();
    lf.lfWeight = weight;
    lf.lfItalic = static_cast<BYTE>(italic);
    lf.lfOutPrecision = kTrueTypeOnly;
    lf.lfQuality = kProofQuality;
    lf.lfPitchAndFamily = kVariablePitchSwiss;
    lf.lfFaceName = face.Left(LF_FACESIZE - 1);
}

void CVUtils::InitCHOOSEFONT(CHOOSEFONT& cf, LOGFONT& lf, CString const& face, LONG weight, int italic)
{
    constexpr int kPoints = 10;
    constexpr int kPointsPerInch = 72;
    ConfigureLOGFONT(lf, face, weight, italic);
    lf.lfHeight = VUNearest(static_cast<double>(kPoints) * kScreenLogicalPixels / kPointsPerInch);
    cf.lpLogFont = &lf;
}

void CVUtils::FrameRect(CDC* dc, CRect const& rect)
{
    dc->MoveTo(rect.left, rect.top);
    dc->LineTo(rect.right, rect.top);
    dc->LineTo(rect.right, rect.bottom);
    dc->LineTo(rect.left, rect.bottom);
    dc->LineTo(rect.left, rect.top);
}

void CVUtils::LineDDA(int x1, int y1, int x2, int y2, int, CDC* dc, COLORREF colour)
{
    bool set = true;
    ombrel::LineDDA(x1, y1, x2, y2, [&](int x, int y) {
        if (set)
            dc->SetPixel(x, y, colour);
        set = !set;
    });
}

void CVUtils::DrawTransparentBitmap(HDC dc, HBITMAP bitmap, int x, int y, COLORREF transparent)
{
    std::shared_ptr<Raster> const raster = bitmap->GetRaster();
    if (!raster)
        return;
    CDC source;
    source.CreateCompatibleDC(dc);
    CBitmap* const previous = source.SelectObject(bitmap);
    // The opaque runs are copied one by one: the target is never read, so that pages take the picture too.
    constexpr std::uint32_t kColourBits = 0xFFFFFF;
    std::uint32_t const left = Raster::FromColour(transparent);
    int const width = raster->Width();
    for (int row = 0; row < raster->Height(); ++row) {
        std::uint32_t const* const pixels = raster->Row(row);
        auto const isLeftOut = [left](std::uint32_t pixel) { return (pixel & kColourBits) == left; };
        for (int column = 0; column < width;) {
            std::uint32_t const* const begin = std::find_if_not(pixels + column, pixels + width, isLeftOut);
            std::uint32_t const* const end = std::find_if(begin, pixels + width, isLeftOut);
            int const first = static_cast<int>(begin - pixels);
            if (begin != end)
                dc->BitBlt(x + first, y + row, static_cast<int>(end - begin), 1, &source, first, row, SRCCOPY);
            column = static_cast<int>(end - pixels);
        }
    }
    source.SelectObject(previous);
}

int CVUtils::GetBitsPerPixel()
{
    CDC screen;
    return screen.GetDeviceCaps(BITSPIXEL) * screen.GetDeviceCaps(PLANES);
}

} // namespace ombrel
