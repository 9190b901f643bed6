#pragma once
#include "ombrel/graph3d/3DLineCurve.h"
#include "ombrel/model/TableData.h"
#include "ombrel/platform/framework/Export.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

namespace ombrel {

/// Lines from points down to a baseline, or up to it.
struct StickSettings {
    int on = 0;
    /// Of the radius of solid ones.
    double scaleFac = 1.0;
    COLORREF colour = 0x8B8368;
    /// 1: the baseline is the lower end of the z axis; 0: it is baseline, in data units.
    int autoBaseline = 1;
    double baseline = 0.0;
    /// 0 thin lines, otherwise solid.
    int look = 0;
    /// Of solid ones: 0 cylinders, otherwise square columns.
    int type = 0;
    friend bool operator==(StickSettings const& a, StickSettings const& b) = default;
};

/// Symbols at points in space, whose colours and sizes may tell of two more variables, with sticks to a baseline.
///
/// A point that lies outside of the data box has neither symbol nor stick; one on its face has. A point whose colour
/// is missing (IsGap) has the curve's; one whose size is missing has a stick but no symbol. What the numbers of sticks
/// mean stands at the fields of StickSettings.
class OMBREL_EXPORT C3DScatterCurve : public C3DLineCurve {
public:
    /// What a variable is shown by.
    enum VariableUseType : int { vuNone = 0, vuColour = 1, vuSize = 2 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DScatterCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    ~C3DScatterCurve() override;
    void Serialize(CArchive& ar) override;

    // The variables: a row each of a table, a column each point

    /// Takes over two arrays of n values, which the caller keeps; values that an array has not, or all of one that is
    /// null, are missing.
    void SetVarData(CDoubleArray const* const* arrays, int n);
    /// Owned by the curve. A change through it raises no flag.
    CTableData& GetVarData() { return m_varData; }
    CTableData const& GetVarData() const { return m_varData; }
    VariableUseType GetVar1Use() const { return m_varUses[0]; }
    void SetVar1Use(VariableUseType use) { SetVarUse(0, use); }
    VariableUseType GetVar2Use() const { return m_varUses[1]; }
    void SetVar2Use(VariableUseType use) { SetVarUse(1, use); }
    /// Whether symbols have the colours of their z, where no variable gives them.
    int GetColourByZVal() const { return m_colourByZVal; }
    void SetColourByZVal(int on) { Change(m_colourByZVal, on); }
    /// Finds the rows that colours and sizes come from, and their ranges; where both variables have the same use, the
    /// second one counts. Evaluation does so, too.
    void CalculateVarDataRanges();
    /// The row of the variable that is shown by colours or by sizes; −1 without one.
    int GetColourVar() const { return m_colourVar; }
    int GetSizeVar() const { return m_sizeVar; }
    /// Its smallest and largest value; both unchanged without any.
    void GetColourVarRange(double& min, double& max) const;
    void GetSizeVarRange(double& min, double& max) const;
    /// The colour that a point's variable has; nothing where it is missing or there is none.
    std::optional<COLORREF> GetSymbolVarColour(int i) const;
    /// What multiplies the size of a point's symbol: its variable by the largest one, without signs. 0 where it is
    /// missing; 1 without a variable, and where the largest is 0.
    double GetSymbolVarScaleFac(int i) const;

    StickSettings const& GetStickSettings() const { return m_sticks; }
    int GetSticksOn() const { return m_sticks.on; }
    void SetSticksOn(int on) { Change(m_sticks.on, on); }
    double GetStickScaleFac() const { return m_sticks.scaleFac; }
    void SetStickScaleFac(double factor) { Change(m_sticks.scaleFac, factor); }
    COLORREF GetStickColour() const { return m_sticks.colour; }
    void SetStickColour(COLORREF colour) { Change(m_sticks.colour, colour); }
    int GetAutoBaseline() const { return m_sticks.autoBaseline; }
    void SetAutoBaseline(int on) { Change(m_sticks.autoBaseline, on); }
    double GetBaseline() const { return m_sticks.baseline; }
    void SetBaseline(double z) { Change(m_sticks.baseline, z); }
    int GetStickLook() const { return m_sticks.look; }
    void SetStickLook(int look) { Change(m_sticks.look, look); }
    int GetStickType() const { return m_sticks.type; }
    void SetStickType(int type) { Change(m_sticks.type, type); }
    /// The lower end of the z axis; 0 without a graph.
    double GetAutoBaselineValue() const;

    /// The range of the variable that colours, else of the points' z as they were given.
    void GetUntransformedDataRange(double& min, double& max) const override;
    COLORREF GetLUTColour(double value) const override { return GetColourInRange(value); }
    int NeedsColourKey() const override { return m_colourVar >= 0 || m_colourByZVal ? 1 : 0; }
    bool CanHaveColourKey() const override { return true; }
    COLORREF GetColourOfValue(double value, double low, double high) const override
    {
        return GetColourmap()->GetColour(value, low, high);
    }
    std::optional<LegendEntry> GetLegendEntry() const override;
    int Evaluate() override;
    int GetDataSize() const override;

protected:
    std::uint64_t GetGeometryRevision() override;
    void BuildGeometry(Geometry const& geometry) override;
    double GetThinLineWidth() const override;
    /// Whether a point lies outside of the data box.
    bool VertexClipped(CVertex const& place) const;

private:
    struct Range {
        double min = 0.0;
        double max = 0.0;
    };
    void SetVarUse(std::size_t variable, VariableUseType use);
    double GetVarValue(int row, int i) const;
    void DrawStick(Geometry const& geometry, CVertex const& point, double symbolSize) const;

    StickSettings m_sticks;
    CTableData m_varData;
    std::array<VariableUseType, 2> m_varUses { vuNone, vuNone };
    int m_colourVar = -1;
    int m_sizeVar = -1;
    std::optional<Range> m_colourVarRange;
    std::optional<Range> m_sizeVarRange;
    int m_colourByZVal = 0;

    /// What geometry was last made from, beside what all line curves look at; and a number for it.
    struct Key;
    std::unique_ptr<Key> m_key;
    std::uint64_t m_keyRevision = 0;
};

} // namespace ombrel
