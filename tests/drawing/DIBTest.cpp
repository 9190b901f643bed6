#include "ombrel/drawing/DIB.h"

#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/host/Host.h"
#include "tests/model/ArchiveBytes.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;

/// A 3 × 2 bitmap: red, green, blue over black, white, (1, 2, 3).
void DrawSixPixels(CDIB& dib)
{
    COLORREF const colours[] = { RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255), 0, 0xFFFFFF, RGB(1, 2, 3) };
    for (int i = 0; i < 6; ++i)
        dib.GetDC()->SetPixel(i % 3, i / 3, colours[i]);
}

Bytes Header(int depth, int imageSize) { return Bytes().Int(40, 3, 2).Short(1, depth).Int(0, imageSize, 0, 0, 0, 0); }

TEST(DIB, PacksRowsFromTheBottomUpFilledToFourBytes)
{
    CDIB dib(3, 2, 24);
    DrawSixPixels(dib);
    // Blue, green, red of each pixel; three bytes fill the row.
    std::vector<std::byte> const packed = dib.CreateDIBitmap();
    ASSERT_EQ(packed.size(), 64U);
    EXPECT_EQ(Bytes::Of(std::span(packed).first(40)), Header(24, 24));
    int const rows[] = { 0, 0, 0, 255, 255, 255, 3, 2, 1, 0, 0, 0, 0, 0, 255, 0, 255, 0, 255, 0, 0, 0, 0, 0 };
    for (std::size_t i = 0; i < std::size(rows); ++i)
        EXPECT_EQ(std::to_integer<int>(packed[40 + i]), rows[i]) << i;
}

TEST(DIB, KeepsFourBytesAPixelAt32Bits)
{
    CDIB dib(3, 2, 32);
    DrawSixPixels(dib);
    Bytes const expected = Header(32, 24).Int(0, 0xFFFFFF, 0x010203, 0xFF0000, 0x00FF00, 0x0000FF);
    EXPECT_EQ(Bytes::Of(dib.CreateDIBitmap()), expected);
}

TEST(DIB, SavesABitmapFile)
{
    CDIB dib(3, 2, 24);
    DrawSixPixels(dib);
    std::filesystem::path const path = std::filesystem::path(testing::TempDir()) / "ombrel-dib-test.bmp";
    ASSERT_EQ(dib.Save(path.string()), 1);
    std::vector<std::byte> const file = ReadWholeFile(path.string());
    std::filesystem::remove(path);
    std::vector<std::byte> const packed = dib.CreateDIBitmap();
    EXPECT_EQ(Bytes::Of(file), Bytes().Short(0x4D42).Int(78, 0, 54).Add(Bytes::Of(packed)));
    EXPECT_EQ(dib.Save("/proc/no such directory/file.bmp"), 0);
    EXPECT_EQ(CDIB().Save(path.string()), 0);
}

TEST(DIB, ABitmapThatCannotBeIsToldAndThrown)
{
    std::vector<std::string> shown;
    SetMessageBoxFunction([&shown](CString const& text, CString const&, UINT) { shown.push_back(text.ToUtf8()); });
    CDIB dib(4, 4, 24);
    for (auto const& [width, height, depth] : { std::tuple(0, 5, 24), std::tuple(5, -1, 24), std::tuple(32768, 1, 24),
             std::tuple(1, 32768, 32), std::tuple(5, 5, 8) }) {
        try {
            dib.Create(width, height, depth);
            ADD_FAILURE() << width << ' ' << height << ' ' << depth;
        } catch (CResourceException* e) {
            e->Delete();
        }
        EXPECT_EQ(dib.GetHandle(), nullptr);
        EXPECT_EQ(dib.GetSize(), CSize(0, 0));
    }
    SetMessageBoxFunction(nullptr);
    EXPECT_EQ(shown, std::vector<std::string>(5, "Unable to create bitmap"));
    // And it can still be used.
    CDC* const dc = dib.GetDC();
    EXPECT_EQ(dib.Create(3, 2, 32), 1);
    EXPECT_EQ(dib.GetSize(), CSize(3, 2));
    EXPECT_EQ(dc->GetPixel(2, 1), 0U);
}

TEST(DIB, IsCopiedWholeOrStretched)
{
    CDIB dib(3, 2, 24);
    DrawSixPixels(dib);
    CDIB target(20, 10, 32);
    dib.Draw(target.GetDC(), 5, 6);
    EXPECT_EQ(target.GetDC()->GetPixel(5, 6), RGB(255, 0, 0));
    EXPECT_EQ(target.GetDC()->GetPixel(7, 7), RGB(1, 2, 3));
    EXPECT_EQ(target.GetDC()->GetPixel(8, 6), 0U);
    target.GetDC()->SetStretchBltMode(COLORONCOLOR);
    dib.Draw(target.GetDC(), 10, 0, 9, 8);
    EXPECT_EQ(target.GetDC()->GetPixel(10, 0), RGB(255, 0, 0));
    EXPECT_EQ(target.GetDC()->GetPixel(12, 3), RGB(255, 0, 0));
    EXPECT_EQ(target.GetDC()->GetPixel(18, 7), RGB(1, 2, 3));
}

TEST(DIB, AlphaLeavesOutWhiteOrBlack)
{
    // 200 · 100 / 255 = 78.4, 100 · 100 / 255 = 39.2, 3 · 100 / 255 = 1.2
    using Case = std::tuple<int, std::uint32_t, std::uint32_t, std::uint32_t>;
    for (auto const& [mode, black, white, other] : { Case { 0, 0x64000000, 0x64646464, 0x644E2701 },
             { 2, 0x64000000, 0x00646464, 0x644E2701 }, { 3, 0x00000000, 0x64646464, 0x644E2701 } }) {
        CDIB dib(3, 1, 32);
        dib.GetDC()->SetPixel(1, 0, 0xFFFFFF);
        dib.GetDC()->SetPixel(2, 0, RGB(200, 100, 3));
        dib.SetAlpha(100, mode);
        std::uint32_t const* const row = dib.GetBitmap().GetRaster()->Row(0);
        EXPECT_EQ(row[0], black) << mode;
        EXPECT_EQ(row[1], white) << mode;
        EXPECT_EQ(row[2], other) << mode;
    }
}

TEST(DIB, ADeselectedBitmapIsNoLongerDrawnOn)
{
    CDIB dib(3, 2, 24);
    DrawSixPixels(dib);
    HBITMAP const handle = dib.Deselect();
    EXPECT_EQ(handle, dib.GetHandle());
    dib.GetDC()->SetPixel(0, 0, RGB(9, 9, 9));
    EXPECT_EQ(handle->GetRaster()->Row(0)[0], 0xFF0000U);
    dib.Destroy();
    EXPECT_EQ(dib.GetHandle(), nullptr);
    EXPECT_TRUE(dib.EncodeBmp().empty());
}

} // namespace
} // namespace ombrel
