#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Types.h"

#include <memory>
#include <string_view>

namespace ombrel {

class CArchive;
class CObject;

/// What an archive and a type test know of a class: one constant a class, shared by its objects.
struct OMBREL_EXPORT CRuntimeClass {
    char const* name;
    /// The schema stored with the class name; classes that archives cannot create have kNotPersistent.
    WORD schema;
    /// Makes an empty object for the archive to load into; null for classes that archives cannot create.
    std::unique_ptr<CObject> (*create)();
    /// The class derived from; null for CObject.
    CRuntimeClass const* base;

    static constexpr WORD kNotPersistent = 0xFFFF;
    bool IsDerivedFrom(CRuntimeClass const& other) const;
};

/// The root of the classes that have run-time class information and, where registered, an archive form.
class OMBREL_EXPORT CObject {
public:
    /// The record of the class itself, as every class below has one: what IsKindOf is asked for.
    static CRuntimeClass const kClass;
    CObject() = default;
    /// The record of the object's own class.
    virtual CRuntimeClass const& GetRuntimeClass() const { return kClass; }
    virtual ~CObject() = default;
    /// Stores the object in the archive or loads it from there; nothing for an object that keeps nothing.
    /// Throws CArchiveException* or CFileException* (newly allocated; the catcher deletes it).
    virtual void Serialize(CArchive& ar);
    /// Checks invariants, in classes that have some.
    virtual void AssertValid() const { }
    /// Whether the object is of this class or of one derived from it.
    bool IsKindOf(CRuntimeClass const& c) const { return GetRuntimeClass().IsDerivedFrom(c); }

protected:
    CObject(CObject const&) = default;
    CObject& operator=(CObject const&) = default;
};

/// The class record of a class that archives can create, under schema 1:
/// `constinit CRuntimeClass const CAxes::kClass = PersistentClass<CAxes, CGraphComponent>("CAxes");`
template <typename T, typename Base> constexpr CRuntimeClass PersistentClass(char const* name)
{
    return { name, 1, []() -> std::unique_ptr<CObject> { return std::make_unique<T>(); }, &Base::kClass };
}

/// The class record of a class that has a type but no archive form.
template <typename Base> constexpr CRuntimeClass DynamicClass(char const* name)
{
    return { name, CRuntimeClass::kNotPersistent, nullptr, &Base::kClass };
}

/// Lets archives create the class by its name. Registering a name again replaces the class; the record must outlive
/// every archive. Any thread may register and look up at any time.
OMBREL_EXPORT void RegisterClass(CRuntimeClass const& c);
/// The registered class of that name, or null.
OMBREL_EXPORT CRuntimeClass const* FindRegisteredClass(std::string_view name);
/// Whether any class is registered.
OMBREL_EXPORT bool HasRegisteredClasses();

/// The object as a T when it is one, else null.
template <typename T> T* DynamicDowncast(CObject* object)
{
    return object && object->IsKindOf(T::kClass) ? static_cast<T*>(object) : nullptr;
}
template <typename T> T const* DynamicDowncast(CObject const* object)
{
    return object && object->IsKindOf(T::kClass) ? static_cast<T const*>(object) : nullptr;
}

} // namespace ombrel
