#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"

namespace ombrel {

/// The kind of a plot (odd values but 28, 32 and 34) and of a curve (its plot's value plus one). The values are written
/// into archives. Kinds without a class are names that a host may use; no factory creates them.
enum ItemType : int {
    itNone = 0,
    it2DLinePlot = 1,
    it2DLine = 2,
    it2DBarPlot = 3,
    it2DBarCurve = 4,
    it2DLineSeriesPlot = 5,
    it2DLineSeriesLine = 6,
    it2DStackedBarPlot = 7,
    it2DStackedBarCurve = 8,
    it2DClusteredBarPlot = 9,
    it2DClusteredBarCurve = 10,
    it2DAreaPlot = 11,
    it2DAreaCurve = 12,
    it2DTextPlot = 13,
    it2DTextCurve = 14,
    it2DErrorBarPlot = 15,
    it2DErrorBarCurve = 16,
    itBoxPlot = 17,
    itSurfacePlot = 19,
    itSurface = 20,
    it3DBarPlot = 21,
    it3DBarCurve = 22,
    it3DLinePlot = 23,
    it3DLineCurve = 24,
    it3DLineArrayPlot = 25,
    it3DLineArrayCurve = 26,
    itHistogramPlot = 27,
    itRegressionPlot = 28,
    itProbabilityPlot = 29,
    itDistributionsPlot = 32,
    itPPCCPlot = 34,
    it3DTextPlot = 35,
    it3DTextCurve = 36,
    it3DScatterPlot = 37,
    it3DScatterCurve = 38,
    it3DWireframePlot = 39,
    it3DWireframeCurve = 40,
    it3DObjectPlot = 43,
    it3DObjectCurve = 44,
    it3DIrregularSurfacePlot = 45,
    it3DIrregularSurfaceCurve = 46,
    it2DContourPlot = 47,
    it2DContourCurve = 48,
    it3DMeshPlot = 49,
    it3DMeshCurve = 50,
    it3DIrregBarPlot = 51,
    it3DIrregBarCurve = 52,
    it3DIrregLineArrayPlot = 53,
    it3DIrregLineArrayCurve = 54,
};

/// The description of a plot kind; empty for every other value.
OMBREL_EXPORT CString VUGetPlotDescription(ItemType type);

} // namespace ombrel
