#pragma once
#include "ombrel/graph3d/Colour3.h"
#include "ombrel/graph3d/WallType.h"
#include "ombrel/model/GraphComponent.h"
#include "ombrel/model/NamesOtherThan.h"
#include "ombrel/platform/framework/Export.h"

#include <array>
#include <vector>

namespace ombrel {

class C3DGraph;

/// What a grid has for each axis.
struct GridLines3D {
    /// How lines across this axis are placed; any other value counts as even.
    enum Mode : int { glEven = 0, glStep = 1 };
    /// Even lines over the box, its edges included; none below 2.
    int lines = 11;
    /// The parts that the space between two lines is divided into; below 1 counts as 1.
    int minorDivs = 1;
    int mode = glEven;
    /// One line and the distance between lines, in data units; a distance that is not positive gives no lines.
    double min = 0.0;
    double del = 2.0;
    /// On the wall across this axis.
    int planeOn = 1;
    /// Lines with their minor ones, as last worked out.
    int total = 11;
};

/// The grid on the three back walls of a 3D graph's data box. What its numbers mean, and what they are at first, stands
/// at the fields of GridLines3D. Errors: Serialize throws CArchiveException*.
class OMBREL_EXPORT C3DGrid : public CGraphComponent {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading.
    C3DGrid();
    explicit C3DGrid(C3DGraph* graph);
    void Serialize(CArchive& ar) override;

    using CGraphComponent::Draw;
    /// Draws the lines into the graph's current 3D state, when the grid is on: data is drawn over them.
    void Draw() override;

    /// Takes over the sides of the data box, and counts the lines.
    void UpdateGraphParameters() override;
    /// The walls that lie at the back in the view that is drawn.
    void SetWallTypes(WallType x, WallType y, WallType z) { m_wallTypes = { x, y, z }; }

    int IsOn() const { return m_on; }
    void SetOn(int on) { Change(m_on, on); }
    unsigned long GetColour() const override { return m_colour.ToColour(); }
    void GetColour(BYTE& r, BYTE& g, BYTE& b) const;
    void SetColour(unsigned long colour) override { Change(m_colour, Colour3(colour)); }
    void SetColour(BYTE r, BYTE g, BYTE b) { Change(m_colour, Colour3(r, g, b)); }
    int GetNumXLines() const { return m_x.lines; }
    void SetNumXLines(int n) { Change(m_x.lines, n); }
    int GetNumYLines() const { return m_y.lines; }
    void SetNumYLines(int n) { Change(m_y.lines, n); }
    int GetNumZLines() const { return m_z.lines; }
    void SetNumZLines(int n) { Change(m_z.lines, n); }
    int GetNumMinorXDivs() const { return m_x.minorDivs; }
    void SetNumMinorXDivs(int n) { Change(m_x.minorDivs, n); }
    int GetNumMinorYDivs() const { return m_y.minorDivs; }
    void SetNumMinorYDivs(int n) { Change(m_y.minorDivs, n); }
    int GetNumMinorZDivs() const { return m_z.minorDivs; }
    void SetNumMinorZDivs(int n) { Change(m_z.minorDivs, n); }
    int GetXLineMode() const { return m_x.mode; }
    void SetXLineMode(int mode) { Change(m_x.mode, mode); }
    void SetXLineMode(NamesOtherThan<GridLines3D::Mode> auto) = delete;
    int GetYLineMode() const { return m_y.mode; }
    void SetYLineMode(int mode) { Change(m_y.mode, mode); }
    void SetYLineMode(NamesOtherThan<GridLines3D::Mode> auto) = delete;
    int GetZLineMode() const { return m_z.mode; }
    void SetZLineMode(int mode) { Change(m_z.mode, mode); }
    void SetZLineMode(NamesOtherThan<GridLines3D::Mode> auto) = delete;
    double GetXLineMin() const { return m_x.min; }
    void SetXLineMin(double v) { Change(m_x.min, v); }
    double GetYLineMin() const { return m_y.min; }
    void SetYLineMin(double v) { Change(m_y.min, v); }
    double GetZLineMin() const { return m_z.min; }
    void SetZLineMin(double v) { Change(m_z.min, v); }
    double GetXLineDel() const { return m_x.del; }
    void SetXLineDel(double v) { Change(m_x.del, v); }
    double GetYLineDel() const { return m_y.del; }
    void SetYLineDel(double v) { Change(m_y.del, v); }
    double GetZLineDel() const { return m_z.del; }
    void SetZLineDel(double v) { Change(m_z.del, v); }
    /// Lines on the wall across x, on that across y, and on the floor or ceiling.
    int GetXPLaneOn() const { return m_x.planeOn; }
    void SetXPLaneOn(int on) { Change(m_x.planeOn, on); }
    int GetYPLaneOn() const { return m_y.planeOn; }
    void SetYPLaneOn(int on) { Change(m_y.planeOn, on); }
    int GetZPLaneOn() const { return m_z.planeOn; }
    void SetZPLaneOn(int on) { Change(m_z.planeOn, on); }
    /// Whether lines are lit like data; else they show their own colour.
    int GetUseLighting() const { return m_useLighting; }
    void SetUseLighting(int on) { Change(m_useLighting, on); }
    /// Only stored.
    int GetSynch() const { return m_synch; }
    void SetSynch(int on) { Change(m_synch, on); }

private:
    C3DGraph* Get3DGraph() const;
    GridLines3D const& Lines(int axis) const { return axis == 0 ? m_x : axis == 1 ? m_y : m_z; }
    /// The coordinates along an axis that have lines, in box units.
    std::vector<double> LinePlaces(C3DGraph const& graph, int axis) const;
    void RenderGrid(C3DGraph const& graph, WallType wall) const;

    int m_on = 1;
    std::array<WallType, 3> m_wallTypes { wtXMin, wtYMin, wtZMin };
    std::array<double, 3> m_scale { 1.0, 1.0, 1.0 };
    GridLines3D m_x;
    GridLines3D m_y;
    GridLines3D m_z;
    Colour3 m_colour;
    int m_synch = 1;
    int m_useLighting = 0;
};

} // namespace ombrel
