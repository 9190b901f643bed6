#pragma once
#include "ombrel/foundation/FontData.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph3d/3DLineCurve.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

namespace ombrel {

class CDC;

/// Texts at points in space, written over the finished picture.
///
/// The texts' height is 1/30 of the graph's shorter side, at most 4 mm, times the font's size factor and the graph's
/// zoom. A text whose point lies outside of the data box, as drawn, is left out: the point without the deltas counts.
class OMBREL_EXPORT C3DTextCurve : public C3DLineCurve {
public:
    /// Which edge of a text stands at its point. Vertically: bottom, top (moves upright texts only), centre.
    /// Horizontally: right, left, centre.
    enum Alignment : int { alBottom = 0, alTop = 1, alRight = 2, alLeft = 3, alCentre = 4 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// Black, whatever the graph's next colour is.
    explicit C3DTextCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    void Serialize(CArchive& ar) override;

    using C3DLineCurve::SetPoints;
    /// Takes over n points and a text for each; fewer when an array has fewer entries. Texts that are not there are
    /// empty.
    void SetPoints(
        CDoubleArray const* x, CDoubleArray const* y, CDoubleArray const* z, CGStringArray const* texts, int n);
    CStringArray& GetText() { return m_text; }
    CStringArray const& GetText() const { return m_text; }
    void SetText(CStringArray const& text) { Change(m_text, text); }
    Alignment GetVertAlignment() const { return m_vertAlignment; }
    void SetVertAlignment(Alignment alignment) { Change(m_vertAlignment, alignment); }
    Alignment GetHorzAlignment() const { return m_horzAlignment; }
    void SetHorzAlignment(Alignment alignment) { Change(m_horzAlignment, alignment); }
    /// Only stored.
    double GetTextScaleFac() const { return m_textScaleFac; }
    void SetTextScaleFac(double factor) { Change(m_textScaleFac, factor); }
    CFontData const& GetFont() const { return m_font; }
    void SetFont(CFontData const& font) { Change(m_font, font); }
    /// 1: the texts run upwards.
    int GetRotate() const { return m_rotate; }
    void SetRotate(int on) { Change(m_rotate, on); }
    /// What is added to every point, in data units, before it is taken into the data box.
    void GetDeltas(double& dx, double& dy, double& dz) const;
    void SetDeltas(double dx, double dy, double dz) { Change(m_deltas, CVertex(dx, dy, dz)); }
    /// 1: texts of points behind something that is drawn are left out.
    int GetObscure() const { return m_obscure; }
    void SetObscure(int on) { Change(m_obscure, on); }

    /// Moves a point of the picture, in pixels and y down, to where a text of that size is written from, and gives
    /// what it covers then: from the upper left corner, or the lower left one of a text that runs upwards.
    void GetTextPosParams(CSize extent, CPoint& point, CRect& rect) const;
    void Render() override;
    /// Not listed.
    std::optional<LegendEntry> GetLegendEntry() const override { return {}; }

protected:
    CVertex GetOffset() const override { return m_deltas; }

private:
    void SetDefaultFontHeight(C3DGraph const& graph);

    CStringArray m_text;
    Alignment m_vertAlignment = alBottom;
    Alignment m_horzAlignment = alLeft;
    double m_textScaleFac = 1.0;
    CFontData m_font;
    int m_rotate = 0;
    CVertex m_deltas;
    int m_obscure = 1;
    /// Of the draw in progress.
    int m_fontHeight = 1;
    CFontData m_drawnFont;
};

} // namespace ombrel
