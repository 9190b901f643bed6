#include "ombrel/model/ItemType.h"

#include <array>

namespace ombrel {
namespace {

struct Description {
    ItemType type;
    char const* text;
};

constexpr std::array<Description, 27> kDescriptions { {
    { it2DLinePlot, " 2D Line Plot." },
    { it2DBarPlot, " 2D Bar Plot." },
    { it2DLineSeriesPlot, " 2D Constrained Line Plot." },
    { it2DStackedBarPlot, " 2D Stacked Bar Plot." },
    { it2DClusteredBarPlot, " 2D Clustered Bar Plot." },
    { it2DAreaPlot, " 2D Area Plot." },
    { it2DTextPlot, " 2D Text Plot." },
    { it2DErrorBarPlot, " 2D Error Bar Plot." },
    { itBoxPlot, " Box Plot." },
    { itSurfacePlot, " Surface Plot - Regular Grid." },
    { it3DBarPlot, " 3D Bar Plot - Regular Grid." },
    { it3DLinePlot, " 3D Line Plot." },
    { it3DLineArrayPlot, " Series Plot - Regular Grid." },
    { itHistogramPlot, " Histogram Plot." },
    { itRegressionPlot, " Regression Plot." },
    { itProbabilityPlot, " Probablity Plot." },
    { itDistributionsPlot, " Statistical Distributions Plot." },
    { itPPCCPlot, " PPCC Plot." },
    { it3DTextPlot, " 3D Text Plot." },
    { it3DScatterPlot, " 3D Scatter Plot." },
    { it3DWireframePlot, " Wireframe Plot." },
    { it3DObjectPlot, " Object Plot." },
    { it3DIrregularSurfacePlot, " Surface  Plot - Irregular Data." },
    { it2DContourPlot, " Contour Plot." },
    { it3DMeshPlot, " Mesh Plot." },
    { it3DIrregBarPlot, " 3D Bar Plot - Irregular Data." },
    { it3DIrregLineArrayPlot, " Series Plot - Irregular Data." },
} };

} // namespace

CString VUGetPlotDescription(ItemType type)
{
    for (Description const& d : kDescriptions) {
        if (d.type == type)
            return d.text;
    }
    return {};
}

} // namespace ombrel
