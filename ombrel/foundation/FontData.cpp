#include "ombrel/foundation/FontData.h"

#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const CFontData::kClass = PersistentClass<CFontData, CObject>("CFontData");

CString CFontData::BuildString() const
{
    CString text = faceName;
    if (weight == kBoldWeight)
        text += " Bold";
    if (italic != 0)
        text += " Italic";
    return text;
}

void CFontData::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    f.Version(1);
    f.String(faceName).Int(weight, italic).Double(sizeFactor);
}

} // namespace ombrel
