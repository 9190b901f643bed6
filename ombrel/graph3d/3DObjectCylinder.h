#pragma once
#include "ombrel/graph3d/3DObject.h"

namespace ombrel {

/// A cylinder, a cone or a part of one about the z axis, before its placement.
class OMBREL_EXPORT C3DObjectCylinder : public C3DObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    using C3DObject::C3DObject;
    /// After SetEndpoints, the placement is stored without the radii and half height that it holds, which are stored
    /// beside it: a cylinder that is loaded is where it was.
    void Serialize(CArchive& ar) override;
    /// Besides the common ones: "stacks", "slices", "radii" (x and y), "radius" (both), "length", "endpoints" (two
    /// points), "topendratio", "hidetop", "hidebottom". Radii and length count for the endpoints that come after them.
    void SetProperty(C3DObjectFile& file, CString const& name, CString const& value) override;
    /// A point of the cylinder of radius 1 from z = −1 to 1.
    CVertex GetWorldVertex(CVertex const& v) const override;
    void MakeMesh(ObjectMesh& mesh, int most) const override;
    std::size_t CountPoints(int most) const override;

    /// Places the cylinder between two points, with the radii that it has now: what it was placed by is taken back, and
    /// radii and half height no longer move its points. Its bottom is at p1.
    void SetEndpoints(CVertex const& p1, CVertex const& p2);
    int GetEndpointsSet() const { return m_endpointsSet; }
    double GetRadiusX() const { return m_radiusX; }
    double GetRadiusY() const { return m_radiusY; }
    void SetRadii(double x, double y);
    double GetHalfHeight() const { return m_halfHeight; }
    void SetHalfHeight(double height) { Change(m_halfHeight, height); }
    /// The top radius by the bottom one: 1 for a cylinder, 0 for a cone.
    double GetScaleFac() const { return m_scaleFac; }
    void SetScaleFac(double ratio) { Change(m_scaleFac, ratio); }
    /// Around the z axis; fewer than 3 are stored, but drawn as 3.
    int GetSlices() const { return m_slices; }
    void SetSlices(int slices) { Change(m_slices, slices); }
    /// From end to end; fewer than 1 are stored, but drawn as 1.
    int GetStacks() const { return m_stacks; }
    void SetStacks(int stacks) { Change(m_stacks, stacks); }
    /// Whether the ends are closed.
    int GetTopShown() const { return m_topShown; }
    void SetTopShown(int on) { Change(m_topShown, on); }
    int GetBottomShown() const { return m_bottomShown; }
    void SetBottomShown(int on) { Change(m_bottomShown, on); }

private:
    /// Radii and half height as they shape the cylinder.
    std::array<double, 3> GetSize() const;

    double m_radiusX = 0.5;
    double m_radiusY = 0.5;
    double m_halfHeight = 0.5;
    double m_scaleFac = 1.0;
    int m_slices = 20;
    int m_stacks = 10;
    int m_topShown = 1;
    int m_bottomShown = 1;
    int m_endpointsSet = 0;
    /// Radii and half height that the placement holds.
    std::array<double, 3> m_placedSize { 1.0, 1.0, 1.0 };
};

} // namespace ombrel
