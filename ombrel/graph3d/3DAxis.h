#pragma once
#include "ombrel/foundation/FontData.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/foundation/Vertex.h"
#include "ombrel/graph3d/Colour3.h"
#include "ombrel/model/GraphComponent.h"
#include "ombrel/model/NamesOtherThan.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Variant.h"

namespace ombrel {

class AxisGeometry;
class C3DGraph;
struct Picture3D;

/// Stored as ints; a document may hold any number.
enum AxisType : int { atXAxis = 1, atYAxis = 2, atZAxis = 3 };

/// One axis of a 3D graph: its line with ticks, labels and title, and the way from data units into the data box.
///
/// Units: ranges, ticks and steps are data units. Box units are those of the data box, whose sides are the scale
/// factors of the axes and whose centre is the origin. Errors: Serialize throws CArchiveException* (newly allocated).
class OMBREL_EXPORT C3DAxis : public CGraphComponent {
public:
    /// Which ticks there are: none; equal divisions of the range; one tick and a step. Further ticks at arbitrary
    /// values come with the last three.
    enum TickMode : int {
        tmNone = 0,
        tmDivisions = 1,
        tmStep = 2,
        tmArbitrary = 3,
        tmDivisionsArbitrary = 4,
        tmStepArbitrary = 5,
    };
    /// Numbers, or texts in the order of the ticks, or texts on the arbitrary ticks and numbers on the others.
    enum LabelMode : int { lmNumbers = 0, lmTexts = 1, lmNumbersAndTexts = 2 };
    /// The data's range widened to tidy numbers, the data's range, or the range that is set.
    enum RangeMode : int { rmTidy = 0, rmExact = 1, rmFixed = 2 };
    using FormatType = NumberFormat;

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading.
    C3DAxis();
    C3DAxis(C3DGraph* graph, AxisType type);
    ~C3DAxis() override;
    void Serialize(CArchive& ar) override;

    using CGraphComponent::Draw;
    /// Draws the axis into the graph's current 3D state, when it is on.
    void Draw() override;

    /// Takes over the view from the graph, and in the automatic range modes the range of the data.
    void UpdateGraphParameters() override;

    AxisType GetAxisType() const { return m_type; }
    int IsOn() const { return m_on; }
    void SetOn(int on) { Change(m_on, on); }

    // From data units to box units

    /// The place of a value along the axis: 0 in the middle of the range. With scaled non-zero the range is as long as
    /// the axis's scale factor, else 1 long. A range without width has every value in the middle.
    double GetViewVal(double value, int scaled) const { return Fraction(value) * (scaled ? GetScaleFac() : 1.0); }
    /// Back from there.
    double GetWorldVal(double view, int scaled) const;
    /// The length in the box, scaled, of a difference of data values.
    double GetViewDel(double difference) const { return GetViewVal(m_min + difference, 1) - GetViewVal(m_min, 1); }
    /// The range of the graph's data along this axis, or without data the axis's own; widened by 1 on either side when
    /// it has no width, and in RangeMode 0 to whole multiples of a tidy step.
    void GetRange(int mode, double& min, double& max) const;
    /// Takes the range from the data in the automatic range modes.
    void UpdateRange();

    double GetMin() const { return m_min; }
    double GetMax() const { return m_max; }
    /// Raises the z-value-property flag too, so that curves find their place in the box again.
    void SetMin(double min) { ChangeView(m_min, min); }
    void SetMax(double max) { ChangeView(m_max, max); }
    void SetRange(double min, double max);
    int GetRangeMode() const { return m_rangeMode; }
    void SetRangeMode(int mode) { ChangeView(m_rangeMode, mode); }
    void SetRangeMode(NamesOtherThan<RangeMode> auto) = delete;
    /// The sides of the data box along x, y and z.
    void GetScaleFacs(double& sx, double& sy, double& sz) const;
    void SetScaleFacs(double sx, double sy, double sz);
    /// That along this axis; 0 for an axis of another type.
    double GetScaleFac() const;

    // Ticks

    TickMode GetTickMode() const { return m_tickMode; }
    void SetTickMode(TickMode mode) { Change(m_tickMode, mode); }
    /// Equal divisions: how many ticks, the ends of the range included.
    int GetNumTicks() const { return m_numTicks; }
    void SetNumTicks(int n) { Change(m_numTicks, n); }
    /// The parts that ticks are divided into by minor ones; 0 for none.
    int GetNumMinorDivs() const { return m_numMinorDivs; }
    void SetNumMinorDivs(int n) { Change(m_numMinorDivs, n); }
    /// One tick, and the distance between ticks; a distance that is not positive gives no ticks.
    double GetTickMin() const { return m_tickMin; }
    void SetTickMin(double v) { Change(m_tickMin, v); }
    double GetTickDel() const { return m_tickDel; }
    void SetTickDel(double v) { Change(m_tickDel, v); }
    CDoubleArray const& GetArbTickPosns() const { return m_arbitraryTicks; }
    void GetArbTickPosns(CDoubleArray& values) const { values = m_arbitraryTicks; }
    void SetArbTickPosns(CDoubleArray const& values) { Change(m_arbitraryTicks, values); }
    /// Takes the numbers of an array; anything else changes nothing.
    void SetArbTickPositions(VARIANT const& values);
    /// Only stored.
    int GetTickRangeMode() const { return m_tickRangeMode; }
    void SetTickRangeMode(int mode) { Change(m_tickRangeMode, mode); }
    double GetTickRangeMin() const { return m_tickRangeMin; }
    void SetTickRangeMin(double v) { Change(m_tickRangeMin, v); }
    double GetTickRangeMax() const { return m_tickRangeMax; }
    void SetTickRangeMax(double v) { Change(m_tickRangeMax, v); }
    /// Factors of the lengths of major and minor ticks, for x and y axes, and for z axes.
    void GetXYNotchScaleFacs(double& major, double& minor) const;
    void SetXYNotchScaleFacs(double major, double minor);
    void GetZNotchScaleFacs(double& major, double& minor) const;
    void SetZNotchScaleFacs(double major, double minor);

    // Labels and title

    int GetLabelMode() const { return m_labelMode; }
    void SetLabelMode(int mode) { Change(m_labelMode, mode); }
    void SetLabelMode(NamesOtherThan<LabelMode> auto) = delete;
    int GetLabelPrecision() const { return m_labelPrecision; }
    void SetLabelPrecision(int precision) { Change(m_labelPrecision, precision); }
    FormatType GetFormatType() const { return m_formatType; }
    void SetFormatType(FormatType type) { Change(m_formatType, type); }
    CStringArray const& GetLabels() const { return m_labels; }
    void GetLabels(CStringArray& labels) const { labels = m_labels; }
    void SetLabels(CStringArray const& labels) { Change(m_labels, labels); }
    /// The numbers of an array, as labels show numbers; anything else changes nothing.
    void SetLabels(VARIANT const& labels);
    CString GetTitle() const { return m_title; }
    void SetTitle(CString const& title) { Change(m_title, title); }
    /// Whether labels, and the title, are written from left to right rather than upwards.
    int GetLabelsHorizontal() const { return m_labelsHorizontal; }
    void SetLabelsHorizontal(int on) { Change(m_labelsHorizontal, on); }
    int GetHorizontal() const { return m_horizontal; }
    void SetHorizontal(int on) { Change(m_horizontal, on); }
    /// Only stored.
    int GetFaceViewer() const { return m_faceViewer; }
    void SetFaceViewer(int on) { Change(m_faceViewer, on); }
    CFontData const* GetLabelsFont() const { return &m_labelsFont; }
    void SetLabelsFont(CFontData const& font) { Change(m_labelsFont, font); }
    CFontData const* GetTitlesFont() const { return &m_titlesFont; }
    void SetTitlesFont(CFontData const& font) { Change(m_titlesFont, font); }

    /// Of line and ticks.
    unsigned long GetColour() const override { return m_colour.ToColour(); }
    void SetColour(unsigned long colour) override { Change(m_colour, Colour3(colour)); }
    unsigned long GetLabelsColour() const { return m_labelsColour.ToColour(); }
    void SetLabelsColour(unsigned long colour) { Change(m_labelsColour, Colour3(colour)); }
    unsigned long GetTitleColour() const { return m_titleColour.ToColour(); }
    void SetTitleColour(unsigned long colour) { Change(m_titleColour, Colour3(colour)); }

    // What the last draw worked out; places are box units

    OwnedArray<CVertex> const& GetNotchPositions() const { return m_notchPositions; }
    OwnedArray<CVertex> const& GetMinorNotchPositions() const { return m_minorNotchPositions; }
    OwnedArray<CVertex> const& GetLabelPositions() const { return m_labelPositions; }
    /// Data values, and 0 for automatic or 1 for arbitrary ticks.
    CDoubleArray const& GetNotchValues() const { return m_notchValues; }
    CDWordArray const& GetNotchKinds() const { return m_notchKinds; }
    CStringArray const& GetLabelTexts() const { return m_labelTexts; }

private:
    struct Factors {
        double major = 1.0;
        double minor = 1.0;
    };
    template <typename T, typename V> void ChangeView(T& setting, V const& value)
    {
        Change(setting, value);
        SetZValPropertyModified(1);
    }
    double Fraction(double value) const
    {
        double const width = m_max - m_min;
        return width != 0.0 ? (value - m_min) / width - 0.5 : 0.0;
    }
    C3DGraph* Get3DGraph() const;
    /// Fills the arrays of what the last draw worked out; returns the length of major ticks.
    double MakeNotches(AxisGeometry const& geometry);
    void MakeLabelTexts();
    void DrawLines(C3DGraph& graph, AxisGeometry const& geometry, double tickLength) const;
    void PlaceTexts(C3DGraph const& graph, Picture3D& picture, AxisGeometry const& geometry, double tickLength);
    Factors const& NotchFactors() const { return m_type == atZAxis ? m_zNotchFactors : m_xyNotchFactors; }

    AxisType m_type = atXAxis;
    int m_on = 1;
    double m_min = -10.0;
    double m_max = 10.0;
    int m_numTicks = 6;
    int m_numMinorDivs = 0;
    double m_scaleX = 1.0;
    double m_scaleY = 1.0;
    double m_scaleZ = 1.0;
    int m_rangeMode = rmExact;
    Factors m_xyNotchFactors;
    Factors m_zNotchFactors;
    CString m_title;
    int m_faceViewer = 1;
    int m_horizontal = 1;
    int m_labelsHorizontal = 1;
    TickMode m_tickMode = tmDivisions;
    int m_tickRangeMode = 0;
    double m_tickRangeMin = -10.0;
    double m_tickRangeMax = 10.0;
    int m_labelPrecision = 4;
    FormatType m_formatType = kGeneralFormat;
    double m_tickMin = -10.0;
    double m_tickDel = 1.0;
    int m_labelMode = lmNumbers;
    Colour3 m_colour;
    Colour3 m_labelsColour;
    Colour3 m_titleColour;
    CFontData m_labelsFont;
    CFontData m_titlesFont;
    CStringArray m_labels;
    CDoubleArray m_arbitraryTicks;

    CStringArray m_labelTexts;
    CDoubleArray m_notchValues;
    CDWordArray m_notchKinds;
    OwnedArray<CVertex> m_minorNotchPositions;
    OwnedArray<CVertex> m_notchPositions;
    OwnedArray<CVertex> m_labelPositions;
};

} // namespace ombrel
