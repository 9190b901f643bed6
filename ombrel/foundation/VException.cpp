#include "ombrel/foundation/VException.h"

namespace ombrel {

constinit CRuntimeClass const CVException::kClass = DynamicClass<CException>("CVException");

} // namespace ombrel
