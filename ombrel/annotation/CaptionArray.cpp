#include "ombrel/annotation/CaptionArray.h"

namespace ombrel {

constinit CRuntimeClass const CCaptionArray::kClass = PersistentClass<CCaptionArray, CGraphComponent>("CCaptionArray");

void CCaptionArray::UpdateGraphParameters()
{
    for (CCaption* caption : GetItems())
        caption->UpdateGraphParameters();
}

} // namespace ombrel
