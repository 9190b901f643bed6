#include "ombrel/foundation/VException.h"

namespace ombrel {

constinit CRuntimeClass const CVException::kClass = DynamicClass<CException>("CVException");

Error CVException::AsError() const { return { Error::Kind::Data, message.ToUtf8() }; }

} // namespace ombrel
