#include "ombrel/model/PlotComponent.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/model/Graph.h"
#include "ombrel/model/Plot.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/host/Host.h"

namespace ombrel {

constinit CRuntimeClass const CPlotComponent::kClass = PersistentClass<CPlotComponent, CObject>("CPlotComponent");

namespace {

/// Version 4 of the layout was written with a 16-bit and with a 32-bit data source type; nothing in it says which.
/// What follows tells: after the type come the modified flag, two colours and the debug flag (16 bytes), and then the
/// mark of a wide string. Where both readings find the mark, the 16-bit one is taken, as in every earlier version.
bool HasShortDataSourceType(CArchive& ar)
{
    constexpr std::size_t kBetween = 4 * sizeof(LONG);
    constexpr std::size_t kMark = sizeof(WORD) + kBetween;
    auto const ahead = ar.Peek(kMark + 3);
    return ahead.size() == kMark + 3 && ahead[kMark] == std::byte { 0xFF } && ahead[kMark + 1] == std::byte { 0xFE }
    && ahead[kMark + 2] == std::byte { 0xFF };
}

} // namespace

CPlotComponent::CPlotComponent(CPlot* plot, int useGraphColour)
    : m_plot(plot)
{
    if (useGraphColour && plot && plot->GetGraph())
        m_colour = m_originalColour = static_cast<COLORREF>(plot->GetGraph()->GetColour());
}

ColourKeySource CPlotComponent::GetColourKeySource() const
{
    ColourKeySource source;
    GetZRange(source.dataLow, source.dataHigh);
    source.low = source.dataLow;
    source.high = source.dataHigh;
    return source;
}

void CPlotComponent::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    int const version = f.Version(5);
    f.Int(m_itemType).String(m_text, m_formula, m_title, m_lutString, m_lutName).Short(m_colourDescription);
    if (version < 4 || (version == 4 && HasShortDataSourceType(ar)))
        f.Short(m_dataSourceType);
    else
        f.Int(m_dataSourceType);
    f.Int(m_modified).Dword(m_colour, m_originalColour).Int(m_debug).String(m_fullScript).Int(m_useFullScript);
    f.Dword(m_tag).Int(m_numSharpSpectrumSteps, m_useFirstSharpSpectrumWidth).Double(m_firstSharpSpectrumWidth);
    f.Int(m_useLUTMinMax).Double(m_lutMin, m_lutMax).Int(m_scriptSegmentLine, m_scriptDebug);
    if (version >= 2)
        f.Int(m_numScriptLines);
    if (version >= 3)
        f.Nested(m_transforms);
    if (version >= 4)
        f.Int(m_seed);
}

int CPlotComponent::IsDefined() const { return !(m_useFullScript ? m_fullScript : m_formula).IsEmpty(); }

void CPlotComponent::SetFormulaString(CString const& formula)
{
    Change(m_formula, formula);
    SetPlotDataModified(1);
}

void CPlotComponent::SetTransforms(CTransformArray const& transforms)
{
    Change(m_transforms, transforms);
    TransformsChanged();
}

void CPlotComponent::GetLUTMinMax(double& min, double& max) const
{
    min = m_lutMin;
    max = m_lutMax;
}

void CPlotComponent::SetLUTMinMax(double min, double max)
{
    m_lutMin = min;
    m_lutMax = max;
}

void CPlotComponent::SetPlotDataModified(int modified)
{
    m_plotDataModified = modified;
    m_zValPropertyModified = modified;
}

void CPlotComponent::ResetModifiedFlags()
{
    m_modified = 0;
    SetPlotDataModified(0);
}

void CPlotComponent::SetGraphModified()
{
    if (m_plot && m_plot->GetGraph())
        m_plot->GetGraph()->SetModifiedFlag(1);
}

void CPlotComponent::GetPlotCurveIndices(int& plot, int& curve) const
{
    plot = m_plot && m_plot->GetGraph() ? m_plot->GetGraph()->GetPlotIndex(m_plot) : -1;
    curve = m_plot ? m_plot->GetCurveIndex(this) : -1;
}

BYTE* CPlotComponent::MakeColour(unsigned long colour)
{
    auto const c = static_cast<COLORREF>(colour);
    m_colourBytes = { GetRValue(c), GetGValue(c), GetBValue(c) };
    return m_colourBytes.data();
}

void CVUtils::PlotDialogErrMsg(CPlotComponent const* curve, CString const& message, CString const& detail)
{
    CPlot const* const plot = curve ? curve->GetPlot() : nullptr;
    CString text;
    text.Format("%s\n\nCurve: \"%s\"\n    Plot: \"%s\"\n\n%s", message, curve ? curve->GetTitle() : CString(),
        plot ? plot->GetTitle() : CString(), detail);
    CString title;
    LoadStringResource(1003, title);
    MessageBox(text, title, MB_OK);
}

} // namespace ombrel
