#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/gdi/DC.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ombrel {

/// The 40-byte header of a device-independent bitmap. A positive height means rows from the bottom up.
struct BITMAPINFOHEADER {
    DWORD biSize = 40;
    LONG biWidth = 0;
    LONG biHeight = 0;
    WORD biPlanes = 1;
    WORD biBitCount = 0;
    DWORD biCompression = 0;
    DWORD biSizeImage = 0;
    LONG biXPelsPerMeter = 0;
    LONG biYPelsPerMeter = 0;
    DWORD biClrUsed = 0;
    DWORD biClrImportant = 0;
};

/// A bitmap of 24 or 32 bits per pixel with a memory device context that draws on it.
class OMBREL_EXPORT CDIB : public CObject {
public:
    /// The largest width and height.
    static constexpr int kMaxSide = kLongestBitmapSide;
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CDIB() = default;
    /// As Create.
    CDIB(int width, int height, int bitsPerPixel, CDC* reference = nullptr)
    {
        Create(width, height, bitsPerPixel, reference);
    }
    ~CDIB() override;
    CDIB(CDIB const&) = delete;
    CDIB& operator=(CDIB const&) = delete;

    /// Replaces the bitmap by a black one of that size and returns 1. The device context is made compatible with the
    /// reference (not kept), or with the screen; without a reference an existing one is kept. A size or depth that
    /// cannot be, or no memory, is told to the user and throws CResourceException* (newly allocated).
    int Create(int width, int height, int bitsPerPixel, CDC* reference = nullptr);
    /// How dense the bitmap is, which fonts and lines on it follow; 96 after Create. Nothing happens before it.
    void SetDotsPerInch(int dots);
    int GetDotsPerInch() const { return m_bitmap ? m_bitmap->GetRaster()->DotsPerInch() : 96; }
    /// Owned by this object; null before Create.
    CDC* GetDC() const { return m_dc.get(); }
    /// Owned by this object; null before Create.
    HBITMAP GetHandle() const { return m_bitmap.get(); }
    CBitmap const& GetBitmap() const { return *m_bitmap; }
    /// 0 × 0 before Create.
    CSize GetSize() const { return { m_header.biWidth, m_header.biHeight }; }
    int GetBitsPerPixel() const { return m_header.biBitCount; }
    BITMAPINFOHEADER const& GetHeader() const { return m_header; }

    /// Copies the whole bitmap to (x, y) of the target.
    void Draw(CDC* target, int x, int y);
    /// Copies the whole bitmap into the rectangle, stretched when the sizes differ.
    void Draw(CDC* target, int x, int y, int w, int h);
    /// 32-bit bitmaps: colours are multiplied by alpha / 255 and the alpha byte becomes alpha; but in mode 2 white
    /// pixels become (alpha, alpha, alpha) with alpha byte 0, in mode 3 black ones get alpha byte 0. Other depths
    /// stay as they are.
    void SetAlpha(BYTE alpha, int mode);
    /// Takes the bitmap out of the device context, which gets another one of its size, and returns it (still owned by
    /// this object).
    HBITMAP Deselect();
    /// Deletes the bitmap; the device context stays.
    void Destroy();

    /// The bitmap as a device-independent one in memory: the header, then rows from the bottom up, each filled up to
    /// a multiple of four bytes. Empty before Create. The argument means nothing.
    std::vector<std::byte> CreateDIBitmap(int = 0) const;
    /// The bytes of a bitmap file; empty before Create.
    std::string EncodeBmp() const;
    /// Writes a bitmap file: 1, or 0 when it cannot be written (an earlier file is left alone then).
    int Save(CString const& path) const;

protected:
    /// The bytes of the colour table after the header: there is none.
    WORD PaletteSize() const { return 0; }

private:
    /// Header and rows; Byte is what Bytes holds.
    template <typename Byte, typename Bytes> void AppendPacked(Bytes& bytes) const;

    /// In the device context while ours is not.
    CBitmap m_standIn;
    /// Declared before the context, which must go first.
    std::unique_ptr<CBitmap> m_bitmap;
    std::unique_ptr<CDC> m_dc;
    bool m_selected = false;
    BITMAPINFOHEADER m_header;
};

} // namespace ombrel
