#pragma once
#include "ombrel/graph3d/3DObject.h"

namespace ombrel {

/// A box about the origin, before its placement, with faces of n × n quads.
class OMBREL_EXPORT C3DObjectCube : public C3DObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    using C3DObject::C3DObject;
    void Serialize(CArchive& ar) override;
    /// Besides the common ones: "dimensions", the three half extents.
    void SetProperty(C3DObjectFile& file, CString const& name, CString const& value) override;
    /// A point of the cube whose corners are (±1, ±1, ±1).
    CVertex GetWorldVertex(CVertex const& v) const override;
    void MakeMesh(ObjectMesh& mesh, int most) const override;
    std::size_t CountPoints(int most) const override;

    /// Half extents.
    double GetRadiusX() const { return m_radiusX; }
    double GetRadiusY() const { return m_radiusY; }
    double GetRadiusZ() const { return m_radiusZ; }
    void SetRadii(double x, double y, double z);
    /// Of each face, along each side; fewer than 1 are stored, but drawn as 1.
    int GetNumDivisions() const { return m_divisions; }
    void SetNumDivisions(int divisions) { Change(m_divisions, divisions); }

private:
    double m_radiusX = 0.5;
    double m_radiusY = 0.5;
    double m_radiusZ = 0.5;
    int m_divisions = 10;
};

} // namespace ombrel
