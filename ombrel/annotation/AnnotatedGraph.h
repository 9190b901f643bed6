#pragma once
#include "ombrel/annotation/CaptionArray.h"
#include "ombrel/annotation/ColourKeyArray.h"
#include "ombrel/annotation/Legend.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A graph with annotation over its plots: a legend, captions and colour keys. The common part of 2D and 3D graphs;
/// in archives it does not appear.
class OMBREL_EXPORT CAnnotatedGraph : public CGraph {
public:
    CCaptionArray* GetCaptionArray() const override;
    CColourKeyArray* GetColourKeyArray() const override;
    CLegend* GetLegend() const override;
    CCaption* AddCaption(CPoint at) override;
    void ClearCaptions() override;

protected:
    /// Add the component, empty and switched off, when the graph has none yet.
    void CreateLegend();
    void CreateColourKeyArray();
    void CreateCaptionArray();
    /// Appends a key for the curve (null for none) to the colour keys, with its corner at a device point.
    CColourKey* AppendColourKey(CPoint at, CPlotComponent* curve);
    void ClearComponents() override;
    void FindComponents() override;
    /// Whether the component is the legend, the captions or the colour keys.
    bool IsAnnotation(CGraphComponent const* component) const;

private:
    CCaptionArray* m_captionArray = nullptr;
    CColourKeyArray* m_colourKeyArray = nullptr;
    CLegend* m_legend = nullptr;
};

} // namespace ombrel
