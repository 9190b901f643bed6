#include "ombrel/foundation/VException.h"

namespace ombrel {

constinit CRuntimeClass const CVException::kClass = DynamicClass<CException>("CVException");
constinit CRuntimeClass const CVFileException::kClass = DynamicClass<CVException>("CVFileException");

Error CVException::AsError() const { return { Error::Kind::Data, message.ToUtf8() }; }

Error CVFileException::AsError() const
{
    CString text = fault.path.IsEmpty() ? CString("Data file") : fault.path;
    CString part;
    if (fault.line > 0)
        part.Format(", line %u: ", fault.line);
    else
        part.Format(", byte %u: ", fault.offset);
    text += part;
    // Messages are made for boxes: some have two lines, some end with a break.
    part = message;
    part.Trim().Replace("\n", " ");
    text += part;
    if (!fault.expected.IsEmpty()) {
        part.Format("; expected %s", fault.expected);
        text += part;
    }
    if (!fault.found.IsEmpty()) {
        part.Format(", found %s", fault.found);
        text += part;
    }
    text += u'.';
    ErrorPlace place { fault.path.ToUtf8(), fault.offset };
    if (fault.line > 0)
        place.line = fault.line;
    return { Error::Kind::Data, text.ToUtf8(), place };
}

} // namespace ombrel
