#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"

#include <span>
#include <vector>

namespace ombrel {

/// Which image a texture map shows, and where.
struct TextureMapParams {
    /// Of a bitmap file.
    CString fileName {};
    /// The part of the image that is used, in fractions of its width and height; the lowest row is at 0.
    double imageXStart = 0.0;
    double imageXEnd = 1.0;
    double imageYStart = 0.0;
    double imageYEnd = 1.0;
    /// What it covers, in data units.
    double xMin = -10.0;
    double xMax = 10.0;
    double yMin = -10.0;
    double yMax = 10.0;
    /// 0 … 1.
    double opacity = 1.0;
};

/// Scales images to sides that textures may have: OpenGL does, where there is a 3D graph.
class OMBREL_EXPORT TextureScaler {
public:
    /// The longest side that a texture may have.
    virtual int GetMaxSize() = 0;
    /// from and to hold the texels of images of these sizes, four bytes each, row after row.
    virtual void Scale(CSize size, BYTE const* from, CSize scaledSize, BYTE* to) = 0;

protected:
    TextureScaler() = default;
    ~TextureScaler() = default;
    TextureScaler(TextureScaler const&) = default;
    TextureScaler& operator=(TextureScaler const&) = default;
};

/// An image that a surface drapes over itself: texels of 8 bits for red, green, blue and opacity, the lowest row first.
///
/// Texture maps are values: they may be copied.
/// Errors are those of Load; Serialize throws CArchiveException*. Whatever sizes a file or an archive claims, no more
/// memory is taken than its bytes can fill.
class OMBREL_EXPORT CTextureMap : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }

    TextureMapParams const& GetParams() const { return m_params; }
    /// The image is read again when the file, the part of it or the opacity differ from before.
    void SetParams(TextureMapParams const& params);
    void SetParams(CTextureMap const& other) { SetParams(other.m_params); }
    /// Who scales, or null; not owned.
    void SetScaler(TextureScaler* scaler) { m_scaler = scaler; }

    /// Reads the image unless that is done already. Returns 1; throws as Load.
    int Create();
    /// Reads the image of a Windows bitmap file with 24 or 8 bits per pixel, not compressed; its lowest row may come
    /// first or last. Throws, newly allocated: CFileException* when the file cannot be read; CVFileException* when it
    /// is no bitmap; CUserException*, after a message box, when it ends too early or its pixels are of other kinds.
    void Load();
    /// Scales the texels to sides that are powers of two, at most 1024 and what the scaler allows. Returns 1, or 0 with
    /// nothing changed when there is no scaler or not enough memory.
    int ScalePow2();
    /// The sides that an image of this size, not empty, is scaled to, where a texture's are at most limit.
    static CSize GetScaledSize(CSize size, int limit);
    /// An image from elsewhere: size.cx × size.cy texels of red, green, blue and opacity, the lowest row first. Returns
    /// 1, or 0 with nothing changed when there are not so many. It stays until parameters change that need Load.
    int SetTexels(CSize size, std::span<BYTE const> texels);

    /// 0 × 0 when there is no image.
    CSize GetSize() const { return m_size; }
    std::span<BYTE const> GetTexels() const { return m_texels; }
    /// 1 when Create will read the file.
    int GetReloadNeeded() const { return m_reloadNeeded; }

    /// Which way t goes: from the bottom of the image up, or from its top down.
    enum class Rows { Up, Down };
    /// Where a point given in data units lies on the image, s from left to right and t from bottom to top (or, with
    /// rows running down, from top to bottom): 1 when s and t, as single precision, are within 0 … 1, else 0.
    int GetCoordinates(double x, double y, Rows rows, double& s, double& t) const;

    void Serialize(CArchive& ar) override;

private:
    TextureMapParams m_params;
    CSize m_size { 0, 0 };
    std::vector<BYTE> m_texels;
    int m_reloadNeeded = 1;
    /// Kept for documents.
    int m_spare = 0;
    TextureScaler* m_scaler = nullptr;
};

} // namespace ombrel
