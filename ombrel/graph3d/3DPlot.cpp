#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C3DPlot::kClass = PersistentClass<C3DPlot, CPlot>("C3DPlot");

void C3DPlot::Serialize(CArchive& ar)
{
    CPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

void C3DPlot::Draw()
{
    for (CPlotComponent* curve : GetComponents()) {
        if (curve->IsDefined())
            curve->Render();
    }
}

} // namespace ombrel
