#pragma once
#include "ombrel/graph3d/GridNodeCurve.h"
#include "ombrel/platform/framework/Export.h"

#include <memory>

namespace ombrel {

/// A grid as a net of lines, in the curve's colour or (colour description 1) each in the colours that the colour map
/// has for the z of its ends. A missing node tears the net.
///
/// Errors: those of C3DRowColCurve.
class OMBREL_EXPORT C3DWireframeCurve : public GridNodeCurve {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DWireframeCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    ~C3DWireframeCurve() override;
    void Serialize(CArchive& ar) override;

    // Only stored: grids of tables have a line through every node.

    /// Nodes between two lines of a formula's net, along rows and along columns.
    int GetNumIntermediateRowPts() const { return m_intermediateRowPts; }
    void SetNumIntermediateRowPts(int count) { Change(m_intermediateRowPts, count); }
    int GetNumIntermediateColPts() const { return m_intermediateColPts; }
    void SetNumIntermediateColPts(int count) { Change(m_intermediateColPts, count); }
    /// Box units; not in documents, as is the scale.
    double GetLineThickness() const { return m_lineThickness; }
    void SetLineThickness(double thickness) { Change(m_lineThickness, thickness); }
    double GetScale() const { return m_scale; }
    void SetScale(double scale) { Change(m_scale, scale); }

    int NeedsColourKey() const override { return GetColourDescription() == 1 ? 1 : 0; }
    void Render() override;
    void InvalidateDeviceObjects() override;

private:
    struct Drawing;

    double m_lineThickness = 0.0025;
    double m_scale = 1.0;
    int m_intermediateRowPts = 0;
    int m_intermediateColPts = 0;
    /// Kept as it was loaded.
    int m_furtherInt = 0;
    std::unique_ptr<Drawing> m_drawing;
};

} // namespace ombrel
