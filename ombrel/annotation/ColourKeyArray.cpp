#include "ombrel/annotation/ColourKeyArray.h"
#include "ombrel/model/Graph.h"

namespace ombrel {

constinit CRuntimeClass const CColourKeyArray::kClass
    = PersistentClass<CColourKeyArray, CGraphComponent>("CColourKeyArray");

void CColourKeyArray::GetCurves(CDWordArray& tags) const
{
    tags.RemoveAll();
    for (CColourKey const* key : GetItems())
        tags.Add(static_cast<DWORD>(key->GetCurveTag()));
}

void CColourKeyArray::Refresh()
{
    if (!GetGraph())
        return;
    for (int i = GetSize() - 1; i >= 0; --i) {
        CObject* const object = GetGraph()->GetObjectByTag(GetAt(i)->GetCurveTag());
        auto const* const curve = DynamicDowncast<CPlotComponent>(object);
        if (!object || (curve && !curve->NeedsColourKey()))
            RemoveAt(i);
    }
}

} // namespace ombrel
