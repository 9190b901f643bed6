#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"
#include "ombrel/platform/framework/Types.h"

#include <array>
#include <cstddef>
#include <memory>

namespace ombrel {

class C3DObjectCurve;
class C3DObjectFile;
struct ObjectMesh;

/// A solid shape in space, with a colour, transparency and a placement: what the kinds of objects have in common.
///
/// Units: world coordinates are data units of the curve's graph. Lifetime: owned by its curve.
/// Errors: reading throws as C3DObjectFile does, Serialize CArchiveException*.
class OMBREL_EXPORT C3DObject : public CObject {
public:
    /// The most slices, stacks or subdivisions that an object is drawn with: what asks for more has as many. Files that
    /// do are refused. A curve whose objects would have more than a million points together draws all of them with
    /// fewer.
    static constexpr int kMostDivisions = 1000;

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    C3DObject() = default;
    explicit C3DObject(C3DObjectCurve* curve)
        : m_curve(curve)
    {
    }
    void Serialize(CArchive& ar) override;

    // Reading

    /// The next property of a description (C3DObjectFile::ReadProperty): 1, or 0 at the object's end.
    static int GetProperty(C3DObjectFile& file, CString& name, CString& value);
    /// An object of the kind that a header line in lower case names: looked for are, in this order, "general",
    /// "sphere", "cylinder" and "cube". Null when it names none.
    static std::unique_ptr<C3DObject> CreateFromHeader(CString const& line, C3DObjectCurve* curve);
    /// Takes over the properties up to "endobject".
    void Read(C3DObjectFile& file);
    /// Takes over a property, whose name counts in any case; the file is where it stands. Unknown ones are noted there
    /// and change nothing.
    virtual void SetProperty(C3DObjectFile& file, CString const& name, CString const& value);

    // Place

    /// A point of the shape itself, as it is before placement, in world coordinates.
    virtual CVertex GetWorldVertex(CVertex const& v) const { return TransformVertex(v); }
    /// Takes a point through the placement, and the curve's own transforms behind it.
    CVertex TransformVertex(CVertex const& v) const;
    /// The same for a direction, which becomes of length 1; one that has no length gives (0, 0, 1).
    CNormal TransformNormal(CNormal const& n) const;
    /// Each of these goes behind what the placement does already, so that they apply in the order they are given.
    void Scale(double sx, double sy, double sz);
    void Translate(double tx, double ty, double tz);
    /// Degrees, about x first, then y, then z.
    void Rotate(double ax, double ay, double az);
    /// Degrees about a direction of any length.
    void RotateArbAxis(double x, double y, double z, double angle);
    /// Takes all of them back.
    void InitTransforms();
    /// 4 × 4, column by column.
    std::array<double, 16> const& GetTransform() const { return m_transform; }
    bool IsTransformIdentity() const;

    /// World-space bounds of what the object consists of; both stay as they are when it consists of nothing that is
    /// finite.
    virtual void GetRanges(CVertex& min, CVertex& max);

    // Drawing

    virtual void SetCurve(C3DObjectCurve* curve);
    /// Not owned.
    C3DObjectCurve* GetCurve() const { return m_curve; }
    /// Draws, within a draw of the graph, what the object does not give its curve to draw together with the faces of
    /// all others (MakeMesh); nothing here.
    virtual void Draw() { }
    /// Gives back what Draw keeps in OpenGL; the next one makes it again.
    virtual void InvalidateDeviceObjects() { }
    /// Brings up to date what follows from the settings: here the bounds.
    virtual void Construct();
    /// The data box has changed.
    virtual void RefreshZVals() { }
    /// Draws with few faces.
    virtual void SetCoarseMode(int on);
    /// Adds the faces that the curve draws for the object, none here; no division is finer than most.
    virtual void MakeMesh(ObjectMesh& mesh, int most) const;
    /// How many points MakeMesh adds.
    virtual std::size_t CountPoints(int most) const;
    /// The most divisions for a draw: few in coarse mode.
    int GetMostDrawnDivisions() const;

    // Settings. Each raises the modified flag, the curve's too.

    int Modified() const { return m_modified; }
    void SetModified(int modified) { m_modified = modified; }
    /// Whether the faces must be made anew.
    int GetReconstructFlag() const { return m_reconstruct; }
    void SetReconstructFlag(int on);
    COLORREF GetColour() const { return m_colour; }
    void SetColour(COLORREF colour) { Change(m_colour, colour); }
    COLORREF GetWireframeColour() const { return m_wireframeColour; }
    void SetWireframeColour(COLORREF colour) { Change(m_wireframeColour, colour); }
    /// 0 opaque … 1 invisible.
    double GetTransparency() const { return m_transparency; }
    void SetTransparency(double transparency) { Change(m_transparency, transparency); }
    /// Any transparency but 0 in single precision.
    bool IsTransparent() const { return static_cast<float>(m_transparency) != 0.0F; }
    int GetWireframeOn() const { return m_wireframeOn; }
    void SetWireframeOn(int on) { Change(m_wireframeOn, on); }
    /// Above 0 colours by value.
    int GetColourDescription() const { return m_colourDescription; }
    void SetColourDescription(int description) { Change(m_colourDescription, description); }
    /// The colour is lighter the higher a point lies.
    int GetGradationOn() const { return m_gradationOn; }
    virtual void SetGradationOn(int on) { Change(m_gradationOn, on); }
    /// The colour of a point at a height in world coordinates.
    COLORREF GetVertexColour(double worldZ) const;
    /// Red, green and blue of a colour, kept until the next call.
    BYTE* MakeColour(unsigned long colour);

protected:
    /// Stores a setting that the faces depend on.
    template <typename T, typename V> void Change(T& setting, V const& value)
    {
        setting = static_cast<T>(value);
        TellChanged();
    }
    /// Serialize with another placement in place of the object's own.
    void SerializeWith(CArchive& ar, std::array<double, 16>& transform);
    void Apply(std::array<double, 16> const& operation);
    void SetTransform(std::array<double, 16> const& transform) { Change(m_transform, transform); }
    /// A number of divisions as they are drawn: from least to most.
    static int GetDivisions(int count, int least, int most);

private:
    friend class C3DObjectCurve;
    void TellChanged();

    C3DObjectCurve* m_curve = nullptr;
    int m_modified = 0;
    int m_reconstruct = 1;
    COLORREF m_colour = 255;
    COLORREF m_wireframeColour = 0;
    double m_transparency = 0.0;
    int m_wireframeOn = 0;
    WORD m_colourDescription = 0;
    int m_gradationOn = 0;
    int m_reserved = 0;
    std::array<double, 16> m_transform { 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1 };
    std::array<BYTE, 3> m_colourBytes {};
    bool m_isCoarse = false;
    /// Set by the curve.
    int m_mostDivisions = kMostDivisions;
    /// Computed by Construct, which any later change makes necessary.
    bool m_hasRange = false;
    bool m_needsRange = true;
    CVertex m_rangeMin;
    CVertex m_rangeMax;
};

} // namespace ombrel
