#include "ombrel/colour/TextureMap.h"
#include "ombrel/colour/bitmap/BitmapFile.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/foundation/VException.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/host/Host.h"

#include <algorithm>
#include <bit>
#include <new>
#include <tuple>

namespace ombrel {

constinit CRuntimeClass const CTextureMap::kClass = PersistentClass<CTextureMap, CObject>("CTextureMap");

namespace {

using namespace bitmap;

constexpr char kTooEarlyEnd[] = "Unexpected end of file reached in texture map file.";
constexpr char kNoBitmap[] = "Texture map file must be a Windows bmp file.";
constexpr char kOtherPixels[] = "Texture map file must be a 24 bits per pixel or\n"
                                "8 bits per pixel (256 colour) Windows bmp file.";

[[noreturn]] void TellUser(char const* message)
{
    MessageBox(message, "Ombrel", MB_ICONEXCLAMATION);
    throw new CUserException(message);
}

/// Rows or columns of an image.
struct Part {
    std::int64_t first = 0;
    std::int64_t count = 0;
};

/// The part of size rows or columns between two fractions, none of it outside.
Part PartOf(std::int64_t size, double start, double end)
{
    start = std::clamp(start, 0.0, 1.0);
    end = std::clamp(end, 0.0, 1.0);
    auto const whole = static_cast<double>(size);
    std::int64_t const first = std::min<std::int64_t>(VUNearest(whole * start), size);
    std::int64_t const count = VUNearest((end - start) * whole);
    // Both are rounded: together they may be one too many.
    return { .first = first, .count = std::clamp<std::int64_t>(count, 0, size - first) };
}

/// The texels of a part of the pixels, which start with the first row of the file.
std::vector<BYTE> MakeTexels(
    BitmapInfo const& info, std::vector<BYTE> const& pixels, Part columns, Part rows, BYTE alpha)
{
    auto const stride = static_cast<std::size_t>(info.GetStride());
    auto const bytesPerPixel = static_cast<std::size_t>(info.bitsPerPixel / 8);
    std::vector<BYTE> texels(static_cast<std::size_t>(columns.count * rows.count * 4));
    BYTE* texel = texels.data();
    for (std::int64_t r = 0; r < rows.count; ++r) {
        std::int64_t const row = rows.first + r;
        std::int64_t const stored = info.runsDown ? info.height - 1 - row : row;
        BYTE const* pixel = pixels.data() + static_cast<std::size_t>(stored) * stride
            + static_cast<std::size_t>(columns.first) * bytesPerPixel;
        for (std::int64_t c = 0; c < columns.count; ++c, pixel += bytesPerPixel, texel += 4) {
            if (bytesPerPixel == 3)
                std::reverse_copy(pixel, pixel + 3, texel);
            else if (*pixel < info.colours.size())
                std::copy_n(info.colours[*pixel].begin(), 3, texel);
            // A colour that the table does not have stays black.
            texel[3] = alpha;
        }
    }
    return texels;
}

} // namespace

void CTextureMap::SetParams(TextureMapParams const& params)
{
    auto const image = [](TextureMapParams const& p) {
        return std::tie(p.fileName, p.imageXStart, p.imageXEnd, p.imageYStart, p.imageYEnd, p.opacity);
    };
    if (image(params) != image(m_params))
        m_reloadNeeded = 1;
    m_params = params;
}

int CTextureMap::Create()
{
    if (m_reloadNeeded == 0)
        return 1;
    Load();
    m_reloadNeeded = 0;
    return 1;
}

void CTextureMap::Load()
{
    CFile file(m_params.fileName, CFile::modeRead);
    constexpr std::size_t kFileHeader = 14;
    std::vector<BYTE> const header = ReadAtMost(file, kFileHeader);
    DataFileFault const place { .path = m_params.fileName };
    if (header.size() < kFileHeader)
        throw new CVFileException(kTooEarlyEnd, place);
    if (header[0] != 'B' || header[1] != 'M')
        throw new CVFileException(kNoBitmap, place);

    std::uint32_t const offset = TakeNumber(header, 10, 4);
    std::size_t const blockSize = offset - std::min<std::size_t>(offset, kFileHeader);
    std::vector<BYTE> const block = ReadAtMost(file, blockSize);
    BitmapInfo info;
    InfoFault const fault = ReadBitmapInfo(block, info);
    if (block.size() < blockSize || fault == InfoFault::TooShort)
        TellUser(kTooEarlyEnd);
    if ((info.bitsPerPixel != 24 && info.bitsPerPixel != 8) || info.isCompressed)
        TellUser(kOtherPixels);
    if (fault == InfoFault::NoSize)
        throw new CVFileException(kNoBitmap, place);

    TextureMapParams const& p = m_params;
    Part const columns = PartOf(info.width, p.imageXStart, p.imageXEnd);
    Part const rows = PartOf(info.height, p.imageYStart, p.imageYEnd);
    m_texels = {};
    m_size = CSize(0, 0);
    // The product of a stride below 2^33 and a height of 2^31 does not overflow.
    auto const imageBytes = static_cast<std::uint64_t>(info.GetStride()) * static_cast<std::uint64_t>(info.height);
    std::vector<BYTE> const pixels = ReadAtMost(file, imageBytes);
    if (pixels.size() < imageBytes)
        TellUser(kTooEarlyEnd);
    auto const alpha = static_cast<BYTE>(std::clamp(VUNearest(p.opacity * 255.0), 0, 255));
    m_texels = MakeTexels(info, pixels, columns, rows, alpha);
    if (!m_texels.empty())
        m_size = CSize(static_cast<int>(columns.count), static_cast<int>(rows.count));
    ScalePow2();
}

CSize CTextureMap::GetScaledSize(CSize size, int limit)
{
    constexpr int kLongest = 1024;
    int const most = std::clamp(limit, 1, kLongest);
    auto const scaled
        = [most](int side) { return static_cast<int>(std::bit_ceil(static_cast<unsigned>(std::min(side, most)))); };
    return CSize(scaled(size.cx), scaled(size.cy));
}

int CTextureMap::ScalePow2()
{
    if (!m_scaler)
        return 0;
    if (m_texels.empty())
        return 1;
    CSize const size = GetScaledSize(m_size, m_scaler->GetMaxSize());
    if (size == m_size)
        return 1;
    try {
        std::vector<BYTE> scaled(static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy) * 4);
        m_scaler->Scale(m_size, m_texels.data(), size, scaled.data());
        m_texels = std::move(scaled);
    } catch (std::bad_alloc const&) {
        return 0;
    }
    m_size = size;
    return 1;
}

int CTextureMap::SetTexels(CSize size, std::span<BYTE const> texels)
{
    if (size.cx < 1 || size.cy < 1
        || texels.size() / 4 / static_cast<std::size_t>(size.cx) < static_cast<std::size_t>(size.cy))
        return 0;
    auto const count = static_cast<std::ptrdiff_t>(size.cx) * size.cy * 4;
    m_texels.assign(texels.begin(), texels.begin() + count);
    m_size = size;
    m_reloadNeeded = 0;
    ScalePow2();
    return 1;
}

int CTextureMap::GetCoordinates(double x, double y, Rows rows, double& s, double& t) const
{
    s = (x - m_params.xMin) / (m_params.xMax - m_params.xMin);
    t = (y - m_params.yMin) / (m_params.yMax - m_params.yMin);
    if (rows == Rows::Down)
        t = 1.0 - t;
    auto const isOn = [](double v) { return static_cast<float>(v) >= 0.0F && static_cast<float>(v) <= 1.0F; };
    return isOn(s) && isOn(t) ? 1 : 0;
}

void CTextureMap::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    f.Version(1);
    TextureMapParams& p = m_params;
    f.String(p.fileName).Double(p.imageXStart, p.imageXEnd, p.imageYStart, p.imageYEnd);
    f.Double(p.xMin, p.xMax, p.yMin, p.yMax);
    CSize size = m_size;
    f.Int(size.cx, size.cy, m_spare, m_reloadNeeded).Double(p.opacity);
    if (ar.IsStoring()) {
        ar.Write(m_texels.data(), m_texels.size());
        return;
    }
    m_texels = {};
    m_size = CSize(0, 0);
    if (size.cx < 1 || size.cy < 1)
        return;
    std::uint64_t const count = static_cast<std::uint64_t>(size.cx) * static_cast<std::uint64_t>(size.cy);
    ar.RequireRemaining(count, 4, "the texels of a texture map");
    m_texels.resize(static_cast<std::size_t>(count) * 4);
    ar.Read(m_texels.data(), m_texels.size());
    m_size = size;
}

} // namespace ombrel
