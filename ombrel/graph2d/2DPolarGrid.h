#pragma once
#include "ombrel/graph2d/GridLine.h"
#include "ombrel/model/GraphComponent.h"

namespace ombrel {

/// The polar grid of a 2D graph: circles round the centre of the axis ranges and diameters at equal angles.
///
/// While it is on, the axes draw nothing and both ranges are symmetric about 0.
/// Lifetime: owned by its graph. Errors: only Serialize throws (CArchiveException*, newly allocated).
class C2DPolarGrid : public CGraphComponent {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading.
    C2DPolarGrid() = default;
    /// Off, in the user's preferred colours.
    explicit C2DPolarGrid(CGraph* graph);
    void Serialize(CArchive& ar) override;

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
    int m_on = 0;
    int m_majorRadii = 5;
    int m_majorAngles = 8;
    int m_minorRadii = 4;
    int m_minorAngles = 2;
    GridLine m_major;
    GridLine m_minor;
};

} // namespace ombrel
