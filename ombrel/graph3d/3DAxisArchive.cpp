#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

void C3DAxis::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_type, m_on);
    // Stored twice; on loading the second one stays.
    f.Double(m_min, m_min, m_max).Int(m_numTicks).Double(m_scaleX, m_scaleY, m_scaleZ);
    f.Int(m_rangeMode, m_numMinorDivs);
    f.Double(m_xyNotchFactors.major, m_xyNotchFactors.minor, m_zNotchFactors.major, m_zNotchFactors.minor);
    f.String(m_title).Int(m_faceViewer, m_horizontal, m_labelsHorizontal);
    f.Int(m_tickMode, m_tickRangeMode).Double(m_tickRangeMin, m_tickRangeMax);
    f.Int(m_labelPrecision, m_formatType).Double(m_tickMin, m_tickDel).Int(m_labelMode);
    for (int channel = 0; channel < 3; ++channel)
        f.Byte(m_colour.rgb[channel], m_labelsColour.rgb[channel], m_titleColour.rgb[channel]);
    f.Nested(m_labelsFont, m_titlesFont).Strings(m_labels).Nested(m_arbitraryTicks);
    f.Strings(m_labelTexts).Nested(m_notchValues).Raw(m_notchKinds);
    f.Owned(m_minorNotchPositions).Owned(m_notchPositions).Owned(m_labelPositions);
}

} // namespace ombrel
