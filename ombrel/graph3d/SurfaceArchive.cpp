#include "ombrel/graph3d/Surface.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

void CSurface::Serialize(CArchive& ar)
{
    C3DRowColCurve::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(6);
    WireframeSettings& w = m_wireframe;
    f.Short(w.rows, w.cols, w.savedRows, w.savedCols).Int(m_furtherInt, w.on, w.emissionOn).Short(w.colourDescription);
    f.String(m_wireframeLUTName, m_wireframeLUTString).Short(w.xFac, w.yFac);
    f.Byte(w.colour.rgb[0], w.colour.rgb[1], w.colour.rgb[2]);
    if (version >= 2) {
        ValueTableSettings& v = m_valueTableSettings;
        f.Int(m_useBoundary).Double(m_transparency).Int(v.use).Double(v.xMin, v.yMin, v.xStep, v.yStep);
        f.Nested(m_valueTable);
        f.Int(m_texture.use, m_texture.clamp, m_texture.useMeshRanges, m_texture.pin).Nested(m_textureMap);
        f.Int(m_contours.on).Nested(m_arbitraryLevels).Dword(m_contours.colour).Int(m_contours.colourMode);
        f.Double(m_contours.scaleFac).Nested(m_dem, m_wireframeColourmap);
    }
    if (version >= 3) {
        f.Int(m_contours.levelMode, m_contours.numBands).Double(m_contours.ref, m_contours.spacing);
        f.Int(m_contours.mode).Nested(m_contourColourmap);
    }
    if (version >= 4)
        f.Int(m_forceNormalAveraging);
    if (version >= 5)
        f.Int(w.mode);
    if (version >= 6)
        SerializeFiles(f);
    if (!ar.IsStoring())
        ConvertLoaded();
}

void CSurface::SerializeFiles(ArchiveFields& f)
{
    f.Int(m_fileType).Nested(m_zValsFile);
    m_zValsFile.SetOwner(this);
    f.Int(m_useRadialGrid);
    int hasHeader = m_scanTestHeader ? 1 : 0;
    f.Int(hasHeader);
    if (!f.GetArchive().IsStoring())
        m_scanTestHeader = hasHeader == 1 ? std::make_unique<CScanTestHeader>() : nullptr;
    if (m_scanTestHeader)
        f.Nested(*m_scanTestHeader);
}

void CSurface::ConvertLoaded()
{
    int const modified = Modified();
    if (IsLegacy()) {
        SetColourDescription(0);
        SetGradationOn(1);
        SetColour(0x0000FF);
    }
    // What was a ramp of its own is gradation today.
    if (GetColourDescription() == 1)
        SetColourDescription(0);
    SetModified(modified);
}

} // namespace ombrel
