#include "ombrel/platform/framework/Object.h"

#include <map>
#include <string>

namespace ombrel {

constinit CRuntimeClass const CObject::kClass = { "CObject", CRuntimeClass::kNotPersistent, nullptr, nullptr };

namespace {

using Registry = std::map<std::string, CRuntimeClass const*, std::less<>>;

/// Made on first use, so that classes may register themselves from any static initialiser.
Registry& RegisteredClasses()
{
    static Registry registry;
    return registry;
}

} // namespace

bool CRuntimeClass::IsDerivedFrom(CRuntimeClass const& other) const
{
    for (CRuntimeClass const* c = this; c; c = c->base) {
        if (c == &other)
            return true;
    }
    return false;
}

void CObject::Serialize(CArchive&) { }

void RegisterClass(CRuntimeClass const& c) { RegisteredClasses().insert_or_assign(c.name, &c); }

CRuntimeClass const* FindRegisteredClass(std::string_view name)
{
    Registry const& registry = RegisteredClasses();
    auto const found = registry.find(name);
    return found == registry.end() ? nullptr : found->second;
}

} // namespace ombrel
