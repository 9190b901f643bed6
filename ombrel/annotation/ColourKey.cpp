#include "ombrel/annotation/ColourKey.h"
#include "ombrel/annotation/keys/ColourKeyLook.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const CColourKey::kClass = PersistentClass<CColourKey, CGraphComponent>("CColourKey");

CColourKey::CColourKey()
    : m_look(std::make_unique<Look>())
{
    m_textColour = kWhite;
    m_backgroundColour = kBlack;
    m_borderColour = kWhite;
}

CColourKey::CColourKey(CGraph* graph, CPlotComponent const* curve)
    : CAnnotation(graph)
    , m_curveTag(curve ? static_cast<DWORD>(curve->GetTag()) : 0)
    , m_look(std::make_unique<Look>())
{
}

CColourKey::~CColourKey() = default;

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

CPlotComponent* CColourKey::GetCurve() const
{
    return GetGraph() ? DynamicDowncast<CPlotComponent>(GetGraph()->GetObjectByTag(m_curveTag)) : nullptr;
}

void CColourKey::GetDataAndLUTRange(double& dataMin, double& dataMax, double& lutMin, double& lutMax)
{
    CPlotComponent const* const curve = GetCurve();
    if (!curve)
        return;
    ColourKeySource const source = curve->GetColourKeySource();
    dataMin = source.dataLow;
    dataMax = source.dataHigh;
    lutMin = source.low;
    lutMax = source.high;
}

void CColourKey::UpdateGraphParameters()
{
    CPlotComponent const* const curve = m_on ? GetCurve() : nullptr;
    if (!curve)
        return;
    bool const hasBands = curve->GetColourKeySource().style == ColourKeySource::Style::Bands;
    m_style = hasBands ? ksDiscrete : ksContinuous;
    m_keyMode = kmCurve;
    BuildLabels();
}

void CColourKey::BuildLabels()
{
    CPlotComponent const* const curve = GetCurve();
    if (!curve)
        return;
    Look& look = *m_look;
    double dataMin = 0.0;
    double dataMax = 0.0;
    GetDataAndLUTRange(dataMin, dataMax, look.range.low, look.range.high);
    look.swatchColours.RemoveAll();
    look.isEven = m_labelMode == lmEven || !(m_labelDel > 0.0);
    if (m_style == ksDiscrete) {
        ColourKeySource const source = curve->GetColourKeySource();
        look.swatchColours.Copy(source.bandColours);
        look.values = source.bandValues.GetArray().Values();
    } else if (look.isEven) {
        look.values = EvenKeyValues(look.range, m_numTicks);
    } else {
        look.values = SteppedKeyValues(look.range, m_labelMin, m_labelDel);
    }
    look.labels = FormatKeyValues(look.values, m_labelMode == lmSteppedTidy);
}

} // namespace ombrel
