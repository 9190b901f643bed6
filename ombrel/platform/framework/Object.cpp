#include "ombrel/platform/framework/Object.h"

#include <map>
#include <mutex>
#include <shared_mutex>
#include <string>

namespace ombrel {

constinit CRuntimeClass const CObject::kClass = { "CObject", CRuntimeClass::kNotPersistent, nullptr, nullptr };

namespace {

/// The classes by name. Registering is rare and looking up frequent: a lookup waits for a registration only.
struct ClassTable {
    std::shared_mutex mutex;
    std::map<std::string, CRuntimeClass const*, std::less<>> classes;
};

/// Made on first use, so that classes may register themselves from any static initialiser.
ClassTable& RegisteredClasses()
{
    static ClassTable table;
    return table;
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

void RegisterClass(CRuntimeClass const& c)
{
    ClassTable& table = RegisteredClasses();
    std::unique_lock const lock(table.mutex);
    table.classes.insert_or_assign(c.name, &c);
}

CRuntimeClass const* FindRegisteredClass(std::string_view name)
{
    ClassTable& table = RegisteredClasses();
    std::shared_lock const lock(table.mutex);
    auto const found = table.classes.find(name);
    return found == table.classes.end() ? nullptr : found->second;
}

bool HasRegisteredClasses()
{
    ClassTable& table = RegisteredClasses();
    std::shared_lock const lock(table.mutex);
    return !table.classes.empty();
}

} // namespace ombrel
