#pragma once
#include "ombrel/foundation/CoordTransform.h"
#include "ombrel/model/ColourKeySource.h"
#include "ombrel/model/ItemType.h"
#include "ombrel/model/LegendEntry.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"

#include <array>
#include <optional>

namespace ombrel {

class CPlot;
class CPort;

/// What a script is for; stored with the active plot or curve and handed to RunScript.
enum ScriptType : int { stNone = 0 };

/// The common part of every curve: identity, colour, where its data comes from, and what has changed.
///
/// Formula, look-up-table, script, seed and sharp-spectrum settings are stored, returned and archived only: nothing
/// in the library computes with them. Lifetime: owned by its plot; the pointer to the plot is not owned.
class OMBREL_EXPORT CPlotComponent : public CObject {
public:
    /// Where the curve's data comes from. Formulas are not computed here: a curve of source dsFormula is not drawn,
    /// unless its class says otherwise. 2D curves are drawn from dsTable (what the host gave them), 3D curves from
    /// dsFile, too.
    enum DataSourceType : int { dsFormula = 0, dsTable = 1, dsFile = 2 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading: without a plot, black.
    CPlotComponent() = default;
    /// With useGraphColour non-zero the curve takes the graph's next free colour.
    CPlotComponent(CPlot* plot, int useGraphColour);
    void Serialize(CArchive& ar) override;

    /// Leaves the text unchanged: there are no scripts.
    virtual void GetScript(CString&) const { }
    virtual double GetMeshX(short) const { return 0.0; }
    virtual double GetMeshY(short) const { return 0.0; }
    virtual double GetMeshZ(double) const { return 0.0; }
    /// Smallest and largest z; leaves both unchanged here.
    virtual void GetZRange(double&, double&) const { }
    /// Brings the curve's points up to date; 1 when that succeeded.
    virtual int Evaluate() { return 1; }
    virtual int UsesInternalAutomationObject() const { return 0; }
    virtual unsigned long GetColour() const { return m_colour; }
    /// 0 for one colour, else how the curve is coloured by value.
    virtual int GetColourDescription() const { return m_colourDescription; }
    /// Whether the curve has something to be computed or drawn from.
    virtual int IsDefined() const;
    virtual void SetMeshZ(int, int, double) { }
    virtual void SetPlot(CPlot* plot) { m_plot = plot; }
    /// dsFormula at first; UpdatePlots after it makes the curve valid.
    virtual void SetDataSourceType(DataSourceType type) { Change(m_dataSourceType, type); }
    virtual void SetColour(unsigned long colour) { Change(m_colour, colour); }
    virtual void SetColourDescription(int description) { Change(m_colourDescription, description & 0xFFFF); }
    /// 3D drawing; does nothing here.
    virtual void Render() { }
    virtual int CheckForPlotUpdate(CPlotComponent*) { return 1; }
    /// 2D drawing; does nothing here.
    virtual void Draw(CPort*) { }
    /// Recomputes what depends on the graph; does nothing here.
    virtual void UpdateGraphParameters() { }
    /// Bytes of data held.
    virtual int GetDataSize() const { return 0; }
    /// Non-zero while the curve has colours that a key should explain.
    virtual int NeedsColourKey() const { return 0; }
    /// Whether hosts may offer a colour key for the curve.
    virtual bool CanHaveColourKey() const { return NeedsColourKey() != 0; }
    /// Automation objects are null.
    virtual CObject* GetAutomationObject() { return nullptr; }
    virtual CObject* GetAutomationObjectInt() { return nullptr; }
    /// Release and make again what belongs to a device; do nothing here.
    virtual void InvalidateDeviceObjects() { }
    virtual void RestoreDeviceObjects() { }

    /// How x values are to be read: 1 when they are dates.
    virtual int GetXValueKind() const { return 0; }
    /// How the curve is shown in a legend; nothing for curves that legends do not list.
    virtual std::optional<LegendEntry> GetLegendEntry() const { return {}; }
    /// How the curve is shown in a colour key: here by a bar from its smallest to its largest z.
    virtual ColourKeySource GetColourKeySource() const;
    /// The colour that such a bar has at a value, from low to high of the source; here the curve's own colour.
    virtual COLORREF GetColourOfValue(double /*value*/, double /*low*/, double /*high*/) const
    {
        return static_cast<COLORREF>(GetColour());
    }
    /// Whether each axis of a 2D graph is logarithmic (1) or not (0), told when that changes.
    virtual void TakeOverScaleModes(int, int) { }

    /// What legends call the curve.
    CString GetTitle() const { return m_title; }
    void SetTitle(CString const& title) { Change(m_title, title); }
    CString GetFormulaString() const { return m_formula; }
    /// Raises the plot-data-modified and z-value flags too.
    void SetFormulaString(CString const& formula);
    CString GetFullScriptString() const { return m_fullScript; }
    void SetFullScriptString(CString const& script) { Change(m_fullScript, script); }
    int GetUseFullScript() const { return m_useFullScript; }
    void SetUseFullScript(int on) { Change(m_useFullScript, on); }
    CString GetLUTString() const { return m_lutString; }
    void SetLUTString(CString const& text) { Change(m_lutString, text); }
    CString GetLUTName() const { return m_lutName; }
    void SetLUTName(CString const& name) { Change(m_lutName, name); }
    int GetUseLUTMinMax() const { return m_useLUTMinMax; }
    void SetUseLUTMinMax(int on) { m_useLUTMinMax = on; }
    void GetLUTMinMax(double& min, double& max) const;
    void SetLUTMinMax(double min, double max);
    int GetNumSharpSpectrumSteps() const { return m_numSharpSpectrumSteps; }
    void SetNumSharpSpectrumSteps(int steps) { Change(m_numSharpSpectrumSteps, steps); }
    int GetUseFirstSharpSpectrumWidth() const { return m_useFirstSharpSpectrumWidth; }
    void SetUseFirstSharpSpectrumWidth(int on) { m_useFirstSharpSpectrumWidth = on; }
    double GetFirstSharpSpectrumWidth() const { return m_firstSharpSpectrumWidth; }
    void SetFirstSharpSpectrumWidth(double width) { m_firstSharpSpectrumWidth = width; }
    int GetSeed() const { return m_seed; }
    void SetSeed(int seed) { m_seed = seed; }
    int GetDebug() const { return m_debug; }
    void SetDebug(int on) { Change(m_debug, on); }
    int GetScriptDebug() const { return m_scriptDebug; }
    void SetScriptDebug(int on) { Change(m_scriptDebug, on); }
    int GetScriptSegmentLine() const { return m_scriptSegmentLine; }
    int GetNumScriptLines() const { return m_numScriptLines; }
    DataSourceType GetDataSourceType() const { return m_dataSourceType; }
    ItemType GetItemType() const { return m_itemType; }
    /// The plot that owns the curve; null outside one.
    CPlot* GetPlot() const { return m_plot; }
    /// The one that the graph gave the curve when it was made.
    unsigned long GetOriginalColour() const { return m_originalColour; }
    /// The number by which its graph finds the curve.
    unsigned long GetTag() const { return m_tag; }
    void SetTag(unsigned long tag) { m_tag = static_cast<DWORD>(tag); }
    /// Non-zero once the curve was evaluated and can be drawn.
    int IsValid() const { return m_valid; }
    void SetValid(int valid) { m_valid = valid; }
    /// Non-zero after a change of a setting, until the next draw is done.
    int Modified() const { return m_modified; }
    void SetModified(int modified) { m_modified = modified; }
    /// Non-zero after a change of the data.
    int PlotDataModified() const { return m_plotDataModified; }
    /// Sets the z-value flag to the same.
    void SetPlotDataModified(int modified);
    /// Non-zero after a change that moves a 3D curve in its box.
    int ZValPropertyModified() const { return m_zValPropertyModified; }
    void SetZValPropertyModified(int modified) { m_zValPropertyModified = modified; }
    void ResetModifiedFlags();
    /// Copies of the transforms, in the order they are applied.
    CTransformArray GetTransforms() const { return m_transforms; }
    /// Raises the modified flag, and those of the data where the curve takes transforms over as it is evaluated.
    void SetTransforms(CTransformArray const& transforms);
    int GetNumTransforms() const { return m_transforms.GetSize(); }
    /// The plot's index in its graph and the curve's in its plot; −1 where there is none.
    void GetPlotCurveIndices(int& plot, int& curve) const;
    /// Always fails: there are no scripts.
    int RunScript(CString const&, ScriptType) { return 0; }
    void UpdateMeshRowsAndCols(int, int, double, double, double, double) { }
    /// Red, green and blue of a colour, kept until the next call.
    BYTE* MakeColour(unsigned long colour);

protected:
    virtual void UpdateMeshZVals(double, double, double, double, double, double, double, double, double, int) { }
    void SetItemType(ItemType type) { m_itemType = type; }
    /// The transforms have changed.
    virtual void TransformsChanged() { SetPlotDataModified(1); }
    /// The curve's own transforms, not copied.
    CTransformArray const& Transforms() const { return m_transforms; }
    /// Stores a setting and raises the modified flag.
    template <typename T, typename V> void Change(T& setting, V const& value)
    {
        setting = static_cast<T>(value);
        m_modified = 1;
    }
    /// Stores a setting and raises no flag of the curve's own; the graph's next draw is a complete one all the same.
    template <typename T, typename V> void Store(T& setting, V const& value)
    {
        setting = static_cast<T>(value);
        SetGraphModified();
    }
    /// The next draw of the graph, if there is one, is a complete one: after a change that no flag tells.
    void SetGraphModified();

private:
    CString m_text;
    CString m_formula;
    CString m_lutString;
    CString m_lutName = "Spectrum";
    WORD m_colourDescription = 0;
    DataSourceType m_dataSourceType = dsFormula;
    int m_modified = 0;
    int m_zValPropertyModified = 0;
    int m_plotDataModified = 0;
    COLORREF m_colour = 0;
    COLORREF m_originalColour = 0;
    int m_valid = 0;
    int m_useFirstSharpSpectrumWidth = 0;
    double m_firstSharpSpectrumWidth = 0.0;
    int m_useLUTMinMax = 0;
    double m_lutMin = 0.0;
    double m_lutMax = 0.0;
    int m_seed = 99;
    CPlot* m_plot = nullptr;
    CString m_title = "Untitled Curve";
    int m_numSharpSpectrumSteps = 6;
    ItemType m_itemType = itNone;
    int m_debug = 0;
    CString m_fullScript;
    int m_useFullScript = 0;
    DWORD m_tag = 0;
    int m_scriptSegmentLine = -1;
    int m_scriptDebug = 0;
    int m_numScriptLines = 0;
    std::array<BYTE, 3> m_colourBytes {};
    CTransformArray m_transforms;
};

} // namespace ombrel
