#pragma once
#include "ombrel/graph3d/Colour3.h"
#include "ombrel/graph3d/WallType.h"
#include "ombrel/model/GraphComponent.h"
#include "ombrel/platform/framework/Export.h"

#include <array>

namespace ombrel {

class C3DGraph;

/// The walls behind the data of a 3D graph: the three faces of the data box that lie at the back, 1 % outside of it.
/// Errors: Serialize throws CArchiveException*.
class OMBREL_EXPORT CWalls : public CGraphComponent {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading.
    CWalls();
    explicit CWalls(C3DGraph* graph);
    void Serialize(CArchive& ar) override;

    using CGraphComponent::Draw;
    /// Draws the walls into the graph's current 3D state, when they are on.
    void Draw() override;

    /// Takes over the sides of the data box.
    void UpdateGraphParameters() override;
    /// The view that is drawn; see C3DGraph::GetQuadrant and GetLevel.
    void SetQuadrant(int quadrant) { m_quadrant = quadrant; }
    void SetLevel(int level) { m_level = level; }
    /// The three walls that lie at the back in that view.
    void GetWalls(WallType& x, WallType& y, WallType& z) const;
    void RenderWall(WallType wall);

    int IsOn() const { return m_on; }
    void SetOn(int on) { Change(m_on, on); }
    unsigned long GetColour() const override { return m_colour.ToColour(); }
    void GetColour(BYTE& r, BYTE& g, BYTE& b) const;
    void SetColour(unsigned long colour) override { Change(m_colour, Colour3(colour)); }
    void SetColour(BYTE r, BYTE g, BYTE b) { Change(m_colour, Colour3(r, g, b)); }
    int GetXWallOn() const { return m_xOn; }
    void SetXWallOn(int on) { Change(m_xOn, on); }
    int GetYWallOn() const { return m_yOn; }
    void SetYWallOn(int on) { Change(m_yOn, on); }
    /// Of the floor or ceiling.
    int GetFloorOn() const { return m_floorOn; }
    void SetFloorOn(int on) { Change(m_floorOn, on); }
    /// Whether walls are lit like data; else they show their own colour.
    int GetLit() const { return m_lit; }
    void SetLit(int on) { Change(m_lit, on); }

private:
    C3DGraph* Get3DGraph() const;

    int m_quadrant = 0;
    int m_level = 0;
    std::array<double, 3> m_scale { 1.0, 1.0, 1.0 };
    Colour3 m_colour;
    int m_on = 0;
    int m_xOn = 1;
    int m_yOn = 1;
    int m_floorOn = 1;
    int m_lit = 0;
};

} // namespace ombrel
