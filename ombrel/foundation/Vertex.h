#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Index.h"
#include "ombrel/platform/framework/Object.h"

#include <array>
#include <cstddef>

namespace ombrel {

/// Three doubles x, y, z in one block: what vertices and normals have in common.
class OMBREL_EXPORT Triple : public CObject {
public:
    Triple() = default;
    Triple(double x, double y, double z)
        : m_values { x, y, z }
    {
    }
    double X() const { return m_values[0]; }
    double Y() const { return m_values[1]; }
    double Z() const { return m_values[2]; }
    /// The three components, x first.
    double* GetData() { return m_values.data(); }
    double const* GetData() const { return m_values.data(); }
    /// Component i, 0 … 2; any other throws CInvalidArgException* (newly allocated).
    double& operator[](int i) { return m_values[CheckedIndex(i, m_values.size())]; }
    double const& operator[](int i) const { return m_values[CheckedIndex(i, m_values.size())]; }
    /// Throws CArchiveException* (newly allocated).
    void Serialize(CArchive& ar) override;

protected:
    std::array<double, 3> m_values {};
};

/// A point in space.
class OMBREL_EXPORT CVertex : public Triple {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    using Triple::Triple;
    void GetComponents(double& x, double& y, double& z) const
    {
        x = X();
        y = Y();
        z = Z();
    }
    /// Multiplies all components by one factor.
    void Scale(double factor);
    /// Multiplies component i by factors[i], i = 0 … 2.
    void Scale(double const* factors);
    friend CVertex operator+(CVertex const& a, CVertex const& b)
    {
        return { a.X() + b.X(), a.Y() + b.Y(), a.Z() + b.Z() };
    }
    friend CVertex operator-(CVertex const& a, CVertex const& b)
    {
        return { a.X() - b.X(), a.Y() - b.Y(), a.Z() - b.Z() };
    }
    friend CVertex operator*(CVertex const& v, double factor)
    {
        return { v.X() * factor, v.Y() * factor, v.Z() * factor };
    }
    /// Exact: a component that is not a number makes vertices unequal.
    friend bool operator==(CVertex const& a, CVertex const& b) { return a.m_values == b.m_values; }
    /// 1 when the components agree after rounding to single precision, else 0.
    int FloatEq(CVertex const& other) const;
};

/// A direction in space, of unit length where surfaces use it.
class OMBREL_EXPORT CNormal : public Triple {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    using Triple::Triple;
};

/// A point on a surface and the surface's normal there.
class OMBREL_EXPORT CCoord : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CCoord() = default;
    CCoord(CVertex const& v, CNormal const& n)
        : vertex(v)
        , normal(n)
    {
    }

    CVertex vertex;
    CNormal normal;
};

} // namespace ombrel
