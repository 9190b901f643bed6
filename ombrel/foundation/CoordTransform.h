#pragma once
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"

namespace ombrel {

/// One step that moves, turns or scales points in space.
///
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT CCoordTransform : public CObject {
public:
    /// What the parameters mean: offsets; angles in degrees about the x, y and z axis; factors. A type that an archive
    /// brought along and that is none of these leaves points alone.
    enum Type : int { ctTranslate = 0, ctRotate = 1, ctScale = 2 };
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CCoordTransform() = default;
    CCoordTransform(Type type, double a, double b, double c)
        : m_type(type)
        , m_a(a)
        , m_b(b)
        , m_c(c)
    {
    }
    Type GetType() const { return m_type; }
    double GetA() const { return m_a; }
    double GetB() const { return m_b; }
    double GetC() const { return m_c; }
    /// Applies the step to the point in place.
    void Transform(double& x, double& y, double& z) const;
    /// Turns the point by a degrees about the x axis, then b about y, then c about z, right-handed each.
    void Rotate(double& x, double& y, double& z) const;
    void Serialize(CArchive& ar) override;

private:
    Type m_type = ctTranslate;
    double m_a = 0.0;
    double m_b = 0.0;
    double m_c = 0.0;
};

/// Steps applied in order, each to what the one before gave. Owns them; copies are deep.
///
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT CTransformArray : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CTransformArray() = default;
    CTransformArray(CTransformArray const& other);
    CTransformArray& operator=(CTransformArray const& other);
    int GetSize() const { return m_transforms.GetSize(); }
    /// Not owned by the caller; null outside the array.
    CCoordTransform* GetAt(int i) const { return m_transforms.GetAt(i); }
    CCoordTransform* operator[](int i) const { return GetAt(i); }
    /// Takes the transform over; returns its index.
    int Add(std::unique_ptr<CCoordTransform> transform) { return m_transforms.Add(std::move(transform)); }
    int Add(CCoordTransform const& transform) { return Add(std::make_unique<CCoordTransform>(transform)); }
    /// Deletes every transform.
    void Clear() { m_transforms.DeleteAll(); }
    /// Applies every step in order to the point in place.
    void Transform(double& x, double& y, double& z) const;
    void Serialize(CArchive& ar) override;

private:
    OwnedArray<CCoordTransform> m_transforms;
};

} // namespace ombrel
