#include "ombrel/graph3d/3DScatterCurve.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/render/ColourMapKey.h"
#include "ombrel/graph3d/render/ShapeBatch.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

constinit CRuntimeClass const C3DScatterCurve::kClass
    = PersistentClass<C3DScatterCurve, C3DLineCurve>("C3DScatterCurve");

struct C3DScatterCurve::Key {
    StickSettings sticks;
    std::uint64_t varRevision = 0;
    std::array<VariableUseType, 2> varUses {};
    int colourByZVal = 0;
    ColourMapKey map;
    /// The values of its ends where they are the curve's own; others follow from the data.
    bool hasRange = false;
    double low = 0.0;
    double high = 0.0;
    friend bool operator==(Key const& a, Key const& b) = default;
};

C3DScatterCurve::C3DScatterCurve(CPlot* plot, int useGraphColour)
    : C3DLineCurve(plot, useGraphColour)
    , m_key(std::make_unique<Key>())
{
    Look().lineMode = 1;
    Look().symbolsOn = 1;
    SetTitle("Scatter Curve");
    SetItemType(it3DScatterCurve);
    SetModified(0);
}

C3DScatterCurve::~C3DScatterCurve() = default;

void C3DScatterCurve::Serialize(CArchive& ar)
{
    C3DLineCurve::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.Int(m_sticks.on).Double(m_sticks.scaleFac).Dword(m_sticks.colour).Int(m_sticks.autoBaseline);
    f.Double(m_sticks.baseline).Int(m_sticks.look, m_sticks.type);
    if (version >= 2)
        f.Int(m_varUses[0], m_varUses[1], m_colourByZVal).Nested(m_varData);
    if (!ar.IsStoring())
        CalculateVarDataRanges();
}

// --- The variables

void C3DScatterCurve::SetVarData(CDoubleArray const* const* arrays, int n)
{
    CTableData table;
    table.Initialise(2, n, 0);
    for (int row = 0; row < table.GetNumRows(); ++row) {
        CDoubleArray const* const from = arrays ? arrays[row] : nullptr;
        double* const values = table.GetRow(row);
        for (int i = 0; i < n; ++i)
            values[i] = from && i < from->GetSize() ? (*from)[i] : kGap;
    }
    m_varData = std::move(table);
    SetModified(1);
    SetPlotDataModified(1);
    CalculateVarDataRanges();
}

void C3DScatterCurve::SetVarUse(std::size_t variable, VariableUseType use)
{
    ChangeData(m_varUses[variable], use);
    CalculateVarDataRanges();
}

double C3DScatterCurve::GetVarValue(int row, int i) const
{
    bool const isThere = row >= 0 && row < m_varData.GetNumRows() && i >= 0 && i < m_varData.GetNumCols();
    return isThere ? m_varData.GetAt(row, i) : kGap;
}

void C3DScatterCurve::CalculateVarDataRanges()
{
    m_colourVar = -1;
    m_sizeVar = -1;
    m_colourVarRange.reset();
    m_sizeVarRange.reset();
    for (int row = 0; row < 2; ++row) {
        VariableUseType const use = m_varUses[static_cast<std::size_t>(row)];
        if (use != vuColour && use != vuSize)
            continue;
        std::optional<Range> range;
        for (int i = 0; i < m_varData.GetNumCols(); ++i) {
            double const v = GetVarValue(row, i);
            if (!IsGap(v))
                range = range ? Range { std::min(range->min, v), std::max(range->max, v) } : Range { v, v };
        }
        (use == vuColour ? m_colourVar : m_sizeVar) = row;
        (use == vuColour ? m_colourVarRange : m_sizeVarRange) = range;
    }
}

void C3DScatterCurve::GetColourVarRange(double& min, double& max) const
{
    if (m_colourVarRange) {
        min = m_colourVarRange->min;
        max = m_colourVarRange->max;
    }
}

void C3DScatterCurve::GetSizeVarRange(double& min, double& max) const
{
    if (m_sizeVarRange) {
        min = m_sizeVarRange->min;
        max = m_sizeVarRange->max;
    }
}

std::optional<COLORREF> C3DScatterCurve::GetSymbolVarColour(int i) const
{
    double const value = GetVarValue(m_colourVar, i);
    if (IsGap(value))
        return {};
    return GetLUTColour(value);
}

double C3DScatterCurve::GetSymbolVarScaleFac(int i) const
{
    if (m_sizeVar < 0)
        return 1.0;
    double const value = GetVarValue(m_sizeVar, i);
    if (IsGap(value) || !m_sizeVarRange)
        return 0.0;
    return m_sizeVarRange->max == 0.0 ? 1.0 : std::fabs(value) / std::fabs(m_sizeVarRange->max);
}

// --- Colours

void C3DScatterCurve::GetUntransformedDataRange(double& min, double& max) const
{
    if (m_colourVar >= 0)
        GetColourVarRange(min, max);
    else
        GetPoints().GetZRange(min, max);
}

std::optional<LegendEntry> C3DScatterCurve::GetLegendEntry() const
{
    // A colour key explains the colours then.
    if (NeedsColourKey())
        return {};
    return C3DLineCurve::GetLegendEntry();
}

int C3DScatterCurve::Evaluate()
{
    CalculateVarDataRanges();
    return C3DLineCurve::Evaluate();
}

int C3DScatterCurve::GetDataSize() const
{
    return C3DLineCurve::GetDataSize() + static_cast<int>(m_varData.GetDataSize());
}

// --- Drawing

double C3DScatterCurve::GetAutoBaselineValue() const
{
    C3DAxis const* const axis = Get3DGraph() ? Get3DGraph()->GetAxes()[2] : nullptr;
    return axis ? axis->GetMin() : 0.0;
}

double C3DScatterCurve::GetThinLineWidth() const
{
    // No preference scales sticks.
    constexpr int kNoKind = -1;
    return Get3DGraph()->GetLineWidth(kNoKind);
}

bool C3DScatterCurve::VertexClipped(CVertex const& place) const
{
    for (int i = 0; i < 3; ++i) {
        if (!(std::fabs(place[i]) <= 0.5 * GetNormalisedAxes()[static_cast<std::size_t>(i)].scale))
            return true;
    }
    return false;
}

std::uint64_t C3DScatterCurve::GetGeometryRevision()
{
    Key key;
    key.sticks = m_sticks;
    key.varRevision = std::as_const(m_varData).GetRevision();
    key.varUses = m_varUses;
    key.colourByZVal = m_colourByZVal;
    if (NeedsColourKey()) {
        key.hasRange = GetUseLUTMinMax() != 0;
        if (key.hasRange)
            GetLUTMinMax(key.low, key.high);
        key.map = ColourMapKey(*GetColourmap());
    }
    if (!(key == *m_key)) {
        *m_key = std::move(key);
        ++m_keyRevision;
    }
    return m_keyRevision;
}

void C3DScatterCurve::BuildGeometry(Geometry const& geometry)
{
    double dataMin = 0.0;
    double dataMax = 0.0;
    double low = 0.0;
    double high = 0.0;
    // Once for all points.
    GetUntransformedDataAndLUTRanges(dataMin, dataMax, low, high);
    auto const curveColour = static_cast<COLORREF>(GetColour());
    auto const colourOf = [&](int i) {
        if (m_colourVar < 0 && !m_colourByZVal)
            return curveColour;
        double const value = m_colourVar >= 0 ? GetVarValue(m_colourVar, i) : GetPoints()[i].Z();
        return IsGap(value) ? curveColour : GetColourOfValue(value, low, high);
    };
    int const count = std::min(GetNumNormalisedPoints(), GetNumPts());
    for (int i = 0; i < count; ++i) {
        CVertex const& place = GetNormalisedPoint(i);
        if (VertexClipped(place))
            continue;
        double const factor = GetPointSettings().symbolsOn ? GetSymbolVarScaleFac(i) : 0.0;
        if (factor > 0.0)
            DrawSymbol(geometry.shapes, place, factor, colourOf(i));
        if (m_sticks.on)
            DrawStick(geometry, place, GetSymbolSize() * factor);
    }
}

/// From the point, or from where its symbol ends, to the baseline.
void C3DScatterCurve::DrawStick(Geometry const& geometry, CVertex const& point, double symbolSize) const
{
    BoxAxis const& axis = GetNormalisedAxes()[2];
    double const baseline = axis.GetViewVal(m_sticks.autoBaseline ? GetAutoBaselineValue() : m_sticks.baseline);
    bool const isAbove = point.Z() > baseline;
    double shift = 0.0;
    switch (GetSymbolAlignMode()) {
    case 1:
        shift = isAbove ? -2.0 * symbolSize : 0.0;
        break;
    case 2:
        shift = isAbove ? 0.0 : 2.0 * symbolSize;
        break;
    default:
        shift = isAbove ? -symbolSize : symbolSize;
        break;
    }
    double const top = isAbove ? std::max(point.Z() + shift, baseline) : std::min(point.Z() + shift, baseline);
    CVertex const from(point.X(), point.Y(), top);
    CVertex const foot(point.X(), point.Y(), baseline);
    double const radius = m_sticks.scaleFac * GetLineThickness();
    if (m_sticks.look == 0) {
        CVertex const ends[] = { from, foot };
        AddThinLine(geometry.lines, ends, m_sticks.colour);
    } else if (m_sticks.type == 0) {
        geometry.shapes.AddCylinder(from, foot, radius, m_sticks.colour);
    } else {
        geometry.shapes.AddCuboid(
            (from + foot) * 0.5, { radius, radius, std::fabs(top - baseline) / 2.0 }, m_sticks.colour);
    }
}

} // namespace ombrel
