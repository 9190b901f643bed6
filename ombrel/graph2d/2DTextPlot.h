#pragma once
#include "ombrel/foundation/FontData.h"
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/graph2d/2DPlot.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A curve that writes a text at each point, in the curve's colour.
///
/// There are as many texts as points and strings both have; one is left out when its point is missing or lies outside
/// the port's clip rectangle. Drawn whether or not the curve is valid.
class OMBREL_EXPORT C2DTextCurve : public C2DCurve {
public:
    /// Which part of the text lies at the point; any other value leaves its top left corner there (turned: its bottom
    /// left corner).
    enum Alignment : int { alBottom = 0, alTop = 1, alRight = 2, alLeft = 3, alCentre = 4 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// Black, whatever the graph's next colour is.
    explicit C2DTextCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    void Serialize(CArchive& ar) override;

    CStringArray& GetText() { return m_text; }
    CStringArray const& GetText() const { return m_text; }
    void SetText(CStringArray const& text) { Store(m_text, text); }
    /// alBottom (at first), alTop or alCentre.
    Alignment GetVertAlignment() const { return m_vertAlignment; }
    void SetVertAlignment(Alignment alignment) { Store(m_vertAlignment, alignment); }
    /// alLeft (at first: the text starts at the point), alRight or alCentre.
    Alignment GetHorzAlignment() const { return m_horzAlignment; }
    void SetHorzAlignment(Alignment alignment) { Store(m_horzAlignment, alignment); }
    /// Stored only; the font's own size factor scales the texts.
    double GetTextScaleFac() const { return m_textScaleFac; }
    void SetTextScaleFac(double factor) { m_textScaleFac = factor; }
    CFontData const& GetFont() const { return m_font; }
    void SetFont(CFontData const& font) { Store(m_font, font); }
    /// Non-zero: the texts run upwards.
    int GetRotate() const { return m_rotate; }
    void SetRotate(int on) { Store(m_rotate, on); }
    using C2DCurve::SetPoints;
    /// Takes the first n entries of each array; changes nothing when one of them is shorter.
    void SetPoints(CDoubleArray const* xs, CDoubleArray const* ys, CGStringArray const* strings, int n);

    /// Works out the font's height from the size of the graph.
    void SetDefaults(CPort* port);
    void Draw(CPort* port) override;
    void DrawStrings(CPort* port);
    /// With the device context's font and text colour.
    void DrawString(CPort* port, CRealPoint const& p, CString const& text);
    /// The device position of a text of that extent, in pixels unturned, which belongs at the device point.
    CPoint GetTextPosParams(CPoint at, CSize extent) const;
    /// Legends do not list texts.
    std::optional<LegendEntry> GetLegendEntry() const override { return {}; }

private:
    CStringArray m_text;
    Alignment m_vertAlignment = alBottom;
    Alignment m_horzAlignment = alLeft;
    double m_textScaleFac = 1.0;
    CFontData m_font;
    int m_rotate = 0;
    /// Pixels, worked out at each draw.
    int m_fontHeight = 0;
};

/// A plot of texts.
class OMBREL_EXPORT C2DTextPlot : public C2DPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C2DTextPlot(CGraph* graph = nullptr);
    void Serialize(CArchive& ar) override;
    /// A C2DTextCurve. Owned by the plot.
    CPlotComponent* CreateCurve() override;
};

} // namespace ombrel
