#include "ombrel/graph3d/MeshColouring.h"

namespace ombrel {

bool MeshColouring::IsHeight() const
{
    static CString const kHeight("thezvalue");
    return settings.variable == kHeight;
}

void MeshColouring::FindVariable()
{
    m_kind = -1;
    m_index = -1;
    for (auto const& [kind, names] : { std::pair(0, &nodeVariables), { 1, &elementVariables } }) {
        for (int i = 0; i < names->GetSize() && m_kind < 0; ++i) {
            if (names->GetAt(i).CompareNoCase(settings.variable) == 0) {
                m_kind = kind;
                m_index = i;
            }
        }
    }
}

int MeshColouring::GetVariableRow(MeshColourSource source) const
{
    if (source == MeshColourSource::ElementVariable)
        return m_index;
    return m_kind == 0 && !IsHeight() ? m_index : -1;
}

void MeshColouring::GetDataRange(double& lo, double& hi) const
{
    if (IsHeight()) {
        lo = height[0];
        hi = height[1];
        return;
    }
    CTableData const& ranges = m_kind == 0 ? nodeRanges : elementRanges;
    if (m_kind < 0 || m_index >= ranges.GetNumRows())
        return;
    lo = ranges.GetAt(m_index, 0);
    hi = ranges.GetAt(m_index, 1);
}

MeshColourSource MeshColouring::GetSource(int colourDescription, int gradation) const
{
    if (!settings.solidOn)
        return MeshColourSource::Plain;
    if (settings.elementColoursOn)
        return MeshColourSource::ElementColours;
    if (colourDescription == 0)
        return gradation ? MeshColourSource::Nodes : MeshColourSource::Plain;
    if (colourDescription != 1)
        return MeshColourSource::Plain;
    if (m_kind == 0 || IsHeight())
        return MeshColourSource::Nodes;
    return m_kind == 1 ? MeshColourSource::ElementVariable : MeshColourSource::Plain;
}

ContourColours MeshColouring::MakeContours(ColourOf const& colourOf) const
{
    double lo = 0.0;
    double hi = 0.0;
    GetDataRange(lo, hi);
    LevelSettings const levels { settings.contourLevelMode, settings.numContours, settings.contourRef,
        settings.contourSpacing,
        { settings.arbitraryLevels.GetData(), static_cast<std::size_t>(settings.arbitraryLevels.GetSize()) } };
    return { levels, lo, hi, colourOf };
}

} // namespace ombrel
