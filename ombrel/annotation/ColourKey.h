#pragma once
#include "ombrel/annotation/Annotation.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"

#include <memory>

namespace ombrel {

class CPlotComponent;

/// A box that explains the colours of one curve: a bar through its colour map, or a swatch for each of its bands.
///
/// The key knows its curve by tag only and asks it at every draw. It stands where it was put unless it would leave the
/// picture there: then it is drawn as far inside as it must. One that is higher than the picture is made as high: bands
/// lie close together then, and every second, fifth, tenth, … has a label. Lifetime: owned by the colour-key array.
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT CColourKey : public CAnnotation {
public:
    /// What is shown: nothing yet, the colours of the curve, or the labels and colours of SetArbData. The library never
    /// sets the last one: a host's own class does.
    enum KeyMode : int { kmNotUpdated = 0, kmCurve = 1, kmArbitrary = 2 };
    /// A swatch for each colour, or a bar that runs through them.
    enum Style : int { ksDiscrete = 0, ksContinuous = 1 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading: in white on black.
    CColourKey();
    explicit CColourKey(CGraph* graph)
        : CColourKey(graph, nullptr)
    {
    }
    /// A key for the curve, which may be null. The curve is not owned and only its tag is kept.
    CColourKey(CGraph* graph, CPlotComponent const* curve);
    ~CColourKey() override;
    void Serialize(CArchive& ar) override;

    /// Takes over style and labels of the curve; without one, or switched off, the key keeps what it has.
    void UpdateGraphParameters() override;
    /// Follows the curve and the graph's size, and draws.
    void Draw(CPort* port) override;
    using CGraphComponent::Draw;
    CSize Measure(CDC* dc) override;

    /// Switches the key off; everything else stays.
    void Delete();
    void SetOn(int on) { Change(m_on, on); }
    unsigned long GetCurveTag() const { return m_curveTag; }
    int GetStyle() const { return m_style; }
    KeyMode GetKeyMode() const { return m_keyMode; }
    /// Labels of a bar in label mode 0; 6 at first; more than 1000 count as 1000.
    int GetNumTicks() const { return m_numTicks; }
    void SetNumTicks(int n) { Change(m_numTicks, n); }
    /// Evenly spaced labels, GetNumTicks of them; otherwise labels at min + k × del, and evenly spaced ones while del
    /// is not above 0. Tidy ones, those of bands, too, are written as TidyNumbers does. Raises no flag.
    enum LabelMode { lmEven = 0, lmStepped = 1, lmSteppedTidy = 2 };
    int GetLabelMode() const { return m_labelMode; }
    void SetLabelMode(int mode) { m_labelMode = mode; }
    void GetMinAndDel(double& min, double& del) const;
    void SetMinAndDel(double min, double del);
    /// Clamp mode and range are stored only.
    int GetClampMode() const { return m_clampMode; }
    void SetClampMode(int mode) { m_clampMode = mode; }
    void GetClampRange(double& min, double& max) const;
    void SetClampRange(double min, double max);
    /// Copies of the colours and labels, one each an entry, that are shown in key mode 2.
    void GetArbData(CDWordArray& colours, CStringArray& labels) const;
    void SetArbData(CDWordArray const& colours, CStringArray const& labels);

protected:
    /// The steps of a draw that a host's own class may override, besides those of CAnnotation. Those without a context
    /// work on the one that is drawn on, and do nothing outside of a draw.

    void SetKeyMode(KeyMode mode) { m_keyMode = mode; }
    /// The curve in the graph; null when it is gone. Not owned.
    virtual CPlotComponent* GetCurve() const;
    /// The ranges of the curve's values and of its colours; without a curve, both stay.
    virtual void GetDataAndLUTRange(double& dataMin, double& dataMax, double& lutMin, double& lutMax);
    /// Makes labels and swatches anew as the curve has them now.
    virtual void BuildLabels();
    /// The extent of the widest label, the first of equals; (0, 0) without labels.
    virtual CSize GetMaxTextSize();
    virtual void UpdateCellParameters();
    /// The key's height from its cells and the number of labels.
    virtual void UpdateRectBottom();
    virtual void UpdateNormalisedFontHeight();
    virtual void DrawContinuousColourKey();
    virtual void DrawDiscreteColourKey();

private:
    struct Look;
    bool IsArbitrary() const { return m_keyMode == kmArbitrary; }
    CStringArray const& ShownLabels() const;
    COLORREF SwatchColour(int entry) const;
    long long NaturalHeight() const;
    /// Gives the key its size, and its place in the picture.
    void Enclose();
    void DrawCrowdedSwatches();
    void DrawBar(CRect const& bar);

    /// Font height by rectangle height; only archived.
    double m_normalisedFontHeight = 0.0;
    /// Only archived.
    CRealPoint m_secondPoint;
    CStringArray m_arbitraryLabels { "Scripted Colour Ramp" };
    CDWordArray m_arbitraryColours { 0 };
    int m_labelMode = lmEven;
    double m_labelMin = 0.0;
    double m_labelDel = 0.0;
    int m_clampMode = 0;
    double m_clampMin = 0.0;
    double m_clampMax = 0.0;
    DWORD m_curveTag = 0;
    int m_style = ksContinuous;
    int m_numTicks = 6;
    KeyMode m_keyMode = kmNotUpdated;
    /// What the curve has answered, and what follows from that.
    std::unique_ptr<Look> m_look;
};

} // namespace ombrel
