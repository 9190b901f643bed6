#pragma once
#include "ombrel/foundation/FontData.h"
#include "ombrel/graph2d/GridSettings.h"
#include "ombrel/model/GraphComponent.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

#include <optional>
#include <vector>

namespace ombrel {

class CDC;

/// The polar grid of a 2D graph: circles round the centre of the axis ranges, diameters at equal angles with their
/// degrees at both ends, and a scale of the radius at the left edge.
///
/// While it is on, the axes draw nothing and both ranges are symmetric about 0. Circles are as round as the plotting
/// area is square: they follow the scales of both axes.
/// In documents, angle labels other than plain numbers are kept in the switch of the grid: it is on and stores 2 or 3.
/// A document may hold any counts: divisions that are not positive draw nothing, and neither do more than kMaxTicks
/// circles, diameters or ticks of one pass.
/// Lifetime: owned by its graph. Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT C2DPolarGrid : public CGraphComponent {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading.
    C2DPolarGrid() = default;
    /// Off, in the user's preferred colours.
    explicit C2DPolarGrid(CGraph* graph);
    void Serialize(CArchive& ar) override;
    /// Measures, or draws (see GetDrawMode), when it is on; does nothing without a graph and its axes. The device
    /// context's state is as before afterwards.
    void Draw(CPort* port) override;
    using CGraphComponent::Draw;
    /// Between these, the texts of the radius scale are made and measured once and kept: no setting, range or graph
    /// rectangle, nor the device, may change in between. The mapping of the port may.
    void BeginLayout();
    void EndLayout();
    /// What the last Draw took up, in device pixels: the plotting area and the labels. Measuring leaves out the labels
    /// of angles, which stand round the circle: the host leaves a margin of some 1.5 label heights round the graph.
    CRect GetExtentRect() const { return m_extent; }

    /// How the ends of diameters are labelled: with the plain number of their angle, counterclockwise from the right;
    /// the same with a degree sign; or with a degree sign and clockwise from the top, as bearings are. With degree
    /// signs, large and small numbers at the scale of the radius are those of TidyNumbers.
    enum AngleLabels { alPlain, alDegrees, alBearings };
    AngleLabels GetAngleLabels() const { return m_angleLabels; }
    void SetAngleLabels(AngleLabels labels) { Change(m_angleLabels, labels); }
    int IsOn() const { return m_on; }
    void SetOn(int on) { Change(m_on, on); }
    /// Major divisions of the radius, and minor divisions of each; 5 and 4 at first.
    int GetNumMajorRDivs() const { return m_majorRadii; }
    void SetNumMajorRDivs(int n) { Change(m_majorRadii, n); }
    int GetNumMinorRDivs() const { return m_minorRadii; }
    void SetNumMinorRDivs(int n) { Change(m_minorRadii, n); }
    /// Major divisions of the full circle, and minor divisions of each; 8 and 2 at first.
    int GetNumMajorPhiDivs() const { return m_majorAngles; }
    void SetNumMajorPhiDivs(int n) { Change(m_majorAngles, n); }
    int GetNumMinorPhiDivs() const { return m_minorAngles; }
    void SetNumMinorPhiDivs(int n) { Change(m_minorAngles, n); }
    COLORREF GetMajorColour() const { return m_major.colour; }
    void SetMajorColour(COLORREF colour) { Change(m_major.colour, colour); }
    COLORREF GetMinorColour() const { return m_minor.colour; }
    void SetMinorColour(COLORREF colour) { Change(m_minor.colour, colour); }
    /// 0 dashed, 1 solid.
    int GetMajorLineStyle() const { return m_major.style; }
    void SetMajorLineStyle(int style) { Change(m_major.style, style); }
    int GetMinorLineStyle() const { return m_minor.style; }
    void SetMinorLineStyle(int style) { Change(m_minor.style, style); }

private:
    /// One walk round the grid.
    class Pass;
    struct Label {
        CString text;
        /// Pixels.
        CSize size;
    };
    /// Of the radius scale, from its first tick to its last.
    using Labels = std::vector<Label>;
    Labels MakeLabels(CDC& dc, Pass const& pass) const;

    int m_on = 0;
    AngleLabels m_angleLabels = alPlain;
    int m_majorRadii = 5;
    int m_majorAngles = 8;
    int m_minorRadii = 4;
    int m_minorAngles = 2;
    GridLine m_major;
    GridLine m_minor;
    CFontData m_labelFont;
    CRect m_extent;
    /// What measuring passes have in common, kept from BeginLayout to EndLayout.
    std::optional<Labels> m_labels;
    bool m_inLayout = false;
};

} // namespace ombrel
