#include "ombrel/drawing/DIB.h"

#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/host/Host.h"

#include <new>
#include <span>

namespace ombrel {

constinit CRuntimeClass const CDIB::kClass = DynamicClass<CObject>("CDIB");

namespace {

constexpr DWORD kFileHeaderSize = 14;

/// The bytes of a row, filled up to a multiple of four.
std::size_t RowBytes(BITMAPINFOHEADER const& header)
{
    return (static_cast<std::size_t>(header.biWidth) * header.biBitCount / 8 + 3) / 4 * 4;
}

/// Appends little-endian values to bytes of either kind.
template <typename Byte, typename Bytes> class ByteWriter {
public:
    explicit ByteWriter(Bytes& bytes)
        : m_bytes(bytes)
    {
    }
    void Word(WORD v)
    {
        m_bytes.push_back(static_cast<Byte>(v & 0xFF));
        m_bytes.push_back(static_cast<Byte>(v >> 8));
    }
    void Dword(DWORD v)
    {
        Word(static_cast<WORD>(v & 0xFFFF));
        Word(static_cast<WORD>(v >> 16));
    }

private:
    Bytes& m_bytes;
};

} // namespace

CDIB::~CDIB() = default;

int CDIB::Create(int width, int height, int bitsPerPixel, CDC* reference)
{
    Destroy();
    bool created = (bitsPerPixel == 24 || bitsPerPixel == 32) && width <= kMaxSide && height <= kMaxSide;
    if (created) {
        try {
            m_bitmap = std::make_unique<CBitmap>();
            created = m_bitmap->CreateBitmap(width, height, bitsPerPixel);
            if (created && (!m_dc || reference)) {
                m_dc = std::make_unique<CDC>();
                created = m_dc->CreateCompatibleDC(reference);
            }
        } catch (std::bad_alloc const&) {
            created = false;
        }
    }
    if (!created) {
        m_bitmap.reset();
        CString title;
        LoadStringResource(1003, title);
        MessageBox("Unable to create bitmap", title, MB_OK);
        throw new CResourceException;
    }
    m_header.biWidth = width;
    m_header.biHeight = height;
    m_header.biBitCount = static_cast<WORD>(bitsPerPixel);
    m_dc->SelectObject(m_bitmap.get());
    m_selected = true;
    return 1;
}

void CDIB::SetDotsPerInch(int dots)
{
    if (m_bitmap)
        m_bitmap->GetRaster()->SetDotsPerInch(dots);
}

void CDIB::Draw(CDC* target, int x, int y)
{
    if (m_bitmap)
        target->BitBlt(x, y, m_header.biWidth, m_header.biHeight, m_dc.get(), 0, 0, SRCCOPY);
}

void CDIB::Draw(CDC* target, int x, int y, int w, int h)
{
    if (CSize(w, h) == GetSize())
        Draw(target, x, y);
    else if (m_bitmap)
        target->StretchBlt(x, y, w, h, m_dc.get(), 0, 0, m_header.biWidth, m_header.biHeight, SRCCOPY);
}

namespace {

std::uint32_t WithAlpha(std::uint32_t pixel, BYTE alpha, int mode)
{
    constexpr std::uint32_t kColourBits = 0xFFFFFF;
    std::uint32_t const colour = pixel & kColourBits;
    if (mode == 2 && colour == kColourBits)
        return alpha * 0x010101U;
    if (mode == 3 && colour == 0)
        return 0;
    auto const scaled = [&](int shift) { return (pixel >> shift & 0xFF) * alpha / 255 << shift; };
    return scaled(0) | scaled(8) | scaled(16) | static_cast<std::uint32_t>(alpha) << 24;
}

} // namespace

void CDIB::SetAlpha(BYTE alpha, int mode)
{
    if (!m_bitmap || m_header.biBitCount != 32)
        return;
    for (int y = 0; y < m_header.biHeight; ++y) {
        for (std::uint32_t& pixel :
            std::span(m_bitmap->GetRaster()->Row(y), static_cast<std::size_t>(m_header.biWidth)))
            pixel = WithAlpha(pixel, alpha, mode);
    }
}

HBITMAP CDIB::Deselect()
{
    if (m_selected) {
        m_standIn.CreateCompatibleBitmap(m_dc.get(), m_header.biWidth, m_header.biHeight);
        m_dc->SelectObject(&m_standIn);
        m_selected = false;
    }
    return m_bitmap.get();
}

void CDIB::Destroy()
{
    if (m_selected) {
        m_dc->SelectObject(static_cast<CBitmap*>(nullptr));
        m_selected = false;
    }
    m_bitmap.reset();
    m_header = BITMAPINFOHEADER();
}

template <typename Byte, typename Bytes> void CDIB::AppendPacked(Bytes& bytes) const
{
    ByteWriter<Byte, Bytes> writer(bytes);
    std::size_t const rowBytes = RowBytes(m_header);
    BITMAPINFOHEADER const& h = m_header;
    writer.Dword(h.biSize);
    writer.Dword(static_cast<DWORD>(h.biWidth));
    writer.Dword(static_cast<DWORD>(h.biHeight));
    writer.Word(h.biPlanes);
    writer.Word(h.biBitCount);
    writer.Dword(h.biCompression);
    writer.Dword(static_cast<DWORD>(rowBytes * static_cast<std::size_t>(h.biHeight)));
    writer.Dword(static_cast<DWORD>(h.biXPelsPerMeter));
    writer.Dword(static_cast<DWORD>(h.biYPelsPerMeter));
    writer.Dword(h.biClrUsed);
    writer.Dword(h.biClrImportant);
    std::size_t const depth = h.biBitCount / 8U;
    std::size_t const begin = bytes.size();
    bytes.resize(begin + rowBytes * static_cast<std::size_t>(h.biHeight));
    Raster const& raster = *m_bitmap->GetRaster();
    for (int y = 0; y < h.biHeight; ++y) {
        Byte* out = bytes.data() + begin + rowBytes * static_cast<std::size_t>(h.biHeight - 1 - y);
        for (std::uint32_t const pixel : std::span(raster.Row(y), static_cast<std::size_t>(h.biWidth))) {
            for (std::size_t i = 0; i < depth; ++i)
                *out++ = static_cast<Byte>(pixel >> (8 * i) & 0xFF);
        }
    }
}

std::vector<std::byte> CDIB::CreateDIBitmap(int) const
{
    std::vector<std::byte> bytes;
    if (m_bitmap)
        AppendPacked<std::byte>(bytes);
    return bytes;
}

std::string CDIB::EncodeBmp() const
{
    std::string bytes;
    if (!m_bitmap)
        return bytes;
    DWORD const offset = kFileHeaderSize + m_header.biSize + PaletteSize();
    std::size_t const size = offset + RowBytes(m_header) * static_cast<std::size_t>(m_header.biHeight);
    bytes.reserve(size);
    bytes += "BM";
    ByteWriter<char, std::string> writer(bytes);
    writer.Dword(static_cast<DWORD>(size));
    writer.Dword(0);
    writer.Dword(offset);
    AppendPacked<char>(bytes);
    return bytes;
}

int CDIB::Save(CString const& path) const
{
    std::string const bytes = EncodeBmp();
    if (bytes.empty())
        return 0;
    return Succeeds([&] { WriteFileAtomically(path, std::as_bytes(std::span(bytes))); }) ? 1 : 0;
}

} // namespace ombrel
