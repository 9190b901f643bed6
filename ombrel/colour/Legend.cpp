#include "ombrel/colour/Legend.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const CLegend::kClass = PersistentClass<CLegend, CGraphComponent>("CLegend");

void CLegend::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_created, m_on, m_positioned);
    SerializeRect(f);
    f.Dword(m_textColour, m_backgroundColour, m_borderColour).Int(m_boundingRectOn, m_style).Nested(m_font);
    f.Double(m_fontScaleFactor).Nested(m_normalisedPosition).Double(m_lineSpacing);
}

void CLegend::Delete()
{
    Reset();
    m_lineSpacing = kLineSpacing;
    m_textColour = kBlack;
    m_backgroundColour = kWhite;
    m_borderColour = kBlack;
    m_boundingRectOn = 1;
    m_style = lsFill;
    m_fontScaleFactor = 1.0;
    SetModified(1);
}

} // namespace ombrel
