#include "ombrel/Init.h"
#include "ombrel/annotation/CaptionArray.h"
#include "ombrel/annotation/ColourKeyArray.h"
#include "ombrel/annotation/Legend.h"
#include "ombrel/colour/ColourMap.h"
#include "ombrel/colour/TextureMap.h"
#include "ombrel/foundation/CoordTransform.h"
#include "ombrel/foundation/FontData.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/foundation/Vertex.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DLinePlot.h"
#include "ombrel/graph2d/2DLineSeriesPlot.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/2DTextPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DBarCurve.h"
#include "ombrel/graph3d/3DBarPlot.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/graph3d/3DIrregularSurfacePlot.h"
#include "ombrel/graph3d/3DLineArrayCurve.h"
#include "ombrel/graph3d/3DLineArrayPlot.h"
#include "ombrel/graph3d/3DLineData.h"
#include "ombrel/graph3d/3DLinePlot.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DMeshPlot.h"
#include "ombrel/graph3d/3DObjectCube.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/graph3d/3DObjectCylinder.h"
#include "ombrel/graph3d/3DObjectGeneral.h"
#include "ombrel/graph3d/3DObjectPlot.h"
#include "ombrel/graph3d/3DObjectSphere.h"
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/graph3d/3DRowColCurve.h"
#include "ombrel/graph3d/3DScatterCurve.h"
#include "ombrel/graph3d/3DTextCurve.h"
#include "ombrel/graph3d/3DWireframeCurve.h"
#include "ombrel/graph3d/3DWireframePlot.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/SurfacePlot.h"
#include "ombrel/graph3d/Walls.h"
#include "ombrel/io/ScanTestHeader.h"
#include "ombrel/io/USGSDEM.h"
#include "ombrel/io/ZValsFile.h"

namespace ombrel {
namespace {

constexpr CRuntimeClass const* kPersistentClasses[] = {
    &CRealPoint::kClass,
    &CRealRect::kClass,
    &CVertex::kClass,
    &CNormal::kClass,
    &CCoordTransform::kClass,
    &CTransformArray::kClass,
    &CFontData::kClass,
    &CTableData::kClass,
    &CGraph::kClass,
    &CGraphComponent::kClass,
    &CPlotComponent::kClass,
    &CPlot::kClass,
    &CPlotArray::kClass,
    &CLegend::kClass,
    &CCaption::kClass,
    &CCaptionArray::kClass,
    &CColourKey::kClass,
    &CColourKeyArray::kClass,
    &CColourMap::kClass,
    &CTextureMap::kClass,
    &CScanTestHeader::kClass,
    &CUSGSDEM::kClass,
    &CZValsFile::kClass,
    &C2DGraph::kClass,
    &CAxes::kClass,
    &C2DGrid::kClass,
    &C2DPolarGrid::kClass,
    &C2DPlot::kClass,
    &C2DSeriesPlot::kClass,
    &C2DLinePlot::kClass,
    &C2DLineSeriesPlot::kClass,
    &C2DCurve::kClass,
    &C2DLine::kClass,
    &C2DLineSeriesLine::kClass,
    &C2DBarPlot::kClass,
    &C2DBarCurve::kClass,
    &C2DClusteredBarPlot::kClass,
    &C2DClusteredBarCurve::kClass,
    &C2DStackedBarPlot::kClass,
    &C2DStackedBarCurve::kClass,
    &C2DAreaPlot::kClass,
    &C2DAreaCurve::kClass,
    &C2DErrorBarPlot::kClass,
    &C2DErrorBarCurve::kClass,
    &C2DTextPlot::kClass,
    &C2DTextCurve::kClass,
    &C3DGraph::kClass,
    &C3DAxis::kClass,
    &C3DGrid::kClass,
    &CWalls::kClass,
    &C3DPlot::kClass,
    &C3DCurve::kClass,
    &C3DRowColCurve::kClass,
    &C3DLineData::kClass,
    &C3DObject::kClass,
    &C3DObjectSphere::kClass,
    &C3DObjectCylinder::kClass,
    &C3DObjectCube::kClass,
    &C3DObjectGeneral::kClass,
    &C3DObjectPlot::kClass,
    &C3DObjectCurve::kClass,
    &C3DMeshPlot::kClass,
    &C3DMeshCurve::kClass,
    &CMeshNodeSet::kClass,
    &CMeshPatch::kClass,
    &C3DLinePlot::kClass,
    &C3DLineCurve::kClass,
    &C3DScatterPlot::kClass,
    &C3DScatterCurve::kClass,
    &C3DTextPlot::kClass,
    &C3DTextCurve::kClass,
    &CSurfacePlot::kClass,
    &CSurface::kClass,
    &C3DIrregularSurfacePlot::kClass,
    &C3DIrregularSurfaceCurve::kClass,
    &C3DBarPlot::kClass,
    &C3DBarCurve::kClass,
    &C3DIrregBarPlot::kClass,
    &C3DIrregBarCurve::kClass,
    &C3DIrregLineArrayPlot::kClass,
    &C3DIrregLineArrayCurve::kClass,
    &C3DLineArrayPlot::kClass,
    &C3DLineArrayCurve::kClass,
    &C3DWireframePlot::kClass,
    &C3DWireframeCurve::kClass,
    &C2DContourPlot::kClass,
    &C2DContourCurve::kClass,
};

} // namespace

void OmbrelInit()
{
    for (CRuntimeClass const* const persistent : kPersistentClasses)
        RegisterClass(*persistent);
}

} // namespace ombrel
