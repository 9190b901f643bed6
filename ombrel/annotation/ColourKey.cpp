#include "ombrel/annotation/ColourKey.h"
#include "ombrel/model/PlotComponent.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const CColourKey::kClass = PersistentClass<CColourKey, CGraphComponent>("CColourKey");

CColourKey::CColourKey()
{
    m_textColour = kWhite;
    m_backgroundColour = kBlack;
    m_borderColour = kWhite;
}

CColourKey::CColourKey(CGraph* graph, CPlotComponent const* curve)
    : CAnnotation(graph)
    , m_curveTag(curve ? static_cast<DWORD>(curve->GetTag()) : 0)
{
}

void CColourKey::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.Int(m_created, m_on, m_positioned).Dword(m_textColour, m_backgroundColour, m_borderColour);
    f.Int(m_boundingRectOn);
    SerializeRect(f);
    f.Double(m_normalisedFontHeight).Nested(m_font).Double(m_fontScaleFactor);
    f.Nested(m_normalisedPosition, m_secondPoint).Strings(m_arbitraryLabels).Raw(m_arbitraryColours);
    f.Int(m_labelMode).Double(m_labelMin, m_labelDel).Int(m_clampMode).Double(m_clampMin, m_clampMax);
    if (version >= 2)
        f.Dword(m_curveTag).Int(m_style, m_numTicks);
}

void CColourKey::Delete()
{
    Reset();
    SetModified(1);
}

void CColourKey::GetMinAndDel(double& min, double& del) const
{
    min = m_labelMin;
    del = m_labelDel;
}

void CColourKey::SetMinAndDel(double min, double del)
{
    m_labelMin = min;
    m_labelDel = del;
}

void CColourKey::GetClampRange(double& min, double& max) const
{
    min = m_clampMin;
    max = m_clampMax;
}

void CColourKey::SetClampRange(double min, double max)
{
    m_clampMin = min;
    m_clampMax = max;
}

void CColourKey::GetArbData(CDWordArray& colours, CStringArray& labels) const
{
    colours.Copy(m_arbitraryColours);
    labels.Copy(m_arbitraryLabels);
}

void CColourKey::SetArbData(CDWordArray const& colours, CStringArray const& labels)
{
    m_arbitraryColours.Copy(colours);
    m_arbitraryLabels.Copy(labels);
}

} // namespace ombrel
