#pragma once
#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/graph3d/WallType.h"
#include "ombrel/platform/framework/Export.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace ombrel {

class C3DAxis;
class C3DGrid;
class CPolygon;
class FaceBatch;
class CWalls;
struct Picture3D;

/// A light: where it stands, and whether it is on.
struct Light3D {
    /// Degrees: about the z axis from x to y, and from the z axis down.
    float azimuth = 0.0F;
    float polarAngle = 0.0F;
    int on = 0;
};

/// A three-dimensional graph: plots in a data box with axes, a grid and walls, drawn with OpenGL off screen.
///
/// A typical host makes a graph, adds a plot (AddPlot) and curves to it, gives them data, chooses a view and draws.
/// The data box has its centre in the origin and the axes' scale factors as its sides; what is in it is in box units.
/// OpenGL is loaded by the first draw and not before.
/// Errors: Draw throws CResourceException* when a bitmap cannot be made and Error when there is no OpenGL; the graph
/// stays as it was and can be stored, changed and drawn again. Serialize throws CArchiveException*.
class OMBREL_EXPORT C3DGraph : public CAnnotatedGraph {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading: without components.
    C3DGraph()
        : C3DGraph(0)
    {
    }
    /// With createComponents non-zero the graph has its standard components.
    explicit C3DGraph(int createComponents);
    ~C3DGraph() override;
    void Serialize(CArchive& ar) override;

    /// Of the kinds that 3D graphs have; null for any other. Owned by the graph.
    CPlot* AddPlot(ItemType type) override;
    /// Tells every defined curve to take its points into the data box again.
    void UpdateZVals() override;
    /// The graph rectangle becomes the whole window.
    void SetInitialSize() override;
    /// Switches the planes that cut off what lies outside of the data box.
    void SwitchClipping(bool on) override { EnableClip(on); }
    /// The legend follows the graph's rectangle, captions and colour keys the window.
    std::optional<AnnotationFrame> GetAnnotationFrame(AnnotationKind kind, CRect const& window) const override;
    using CAnnotatedGraph::AddCaption;
    /// Adds a caption "Caption Text" at a point given as fractions of the window; null where there are no captions.
    CCaption* AddCaption(double x, double y);

    /// The axes X, Y and Z, in this order; null in a graph without components. Owned by the graph.
    C3DAxis** GetAxes() { return m_axes.data(); }
    C3DAxis* const* GetAxes() const { return m_axes.data(); }
    /// Null in a graph without components.
    C3DGrid* GetGrid() const { return m_grid; }
    CWalls* GetWalls() const { return m_walls; }
    /// As CAnnotatedGraph; without a context, the picture is only kept. On a printer: off screen, the finished picture
    /// is stretched to the print rectangle (DrawToPrinter); directly, what OpenGL draws becomes an image of 300 pixels
    /// to the inch, and annotation is drawn over it as text and lines.
    void Draw(CDC* dc, CRect const& rect, PaintMode mode) override;
    /// Gives the bitmaps back afterwards.
    void DrawToPrinter(CDC* printer) override;

    /// Takes over all settings of three axes X, Y and Z; the graph keeps its own axes objects. Not owned.
    void ReplaceAxes(C3DAxis** axes);

    // The view

    /// Degrees. The azimuth counts modulo 360; the elevation is the angle from the zenith: 0 looks straight down.
    double GetViewingAzimuth() const { return m_azimuth; }
    void SetViewingAzimuth(double degrees) { Change(m_azimuth, degrees); }
    double GetViewingElevation() const { return m_elevation; }
    void SetViewingElevation(double degrees) { Change(m_elevation, degrees); }
    /// 0 the weakest, 1 the strongest; beyond 17/18 what is nearest to the eye is cut away.
    double GetPerspective() const { return m_perspective; }
    void SetPerspective(double perspective) { Change(m_perspective, perspective); }
    /// Divides the field of view; what is not above 0 counts as 1.
    double GetZoomFactor() const { return m_zoom; }
    void SetZoomFactor(double factor) { Change(m_zoom, factor); }
    /// Moves the picture, in box units at the box's centre.
    double GetXPos() const { return m_xPos; }
    void SetXPos(double x) { Change(m_xPos, x); }
    double GetYPos() const { return m_yPos; }
    void SetYPos(double y) { Change(m_yPos, y); }
    /// Width by height of the graph rectangle; every draw sets it.
    double GetAspectRatio() const { return m_aspectRatio; }
    void SetAspectRatio(double ratio) { Change(m_aspectRatio, ratio); }
    /// The quarter and the eighth of the circle that the azimuth lies in, and 1 for a view from below, else 0; −1
    /// before the first draw.
    int GetQuadrant() const { return m_quadrant; }
    void SetQuadrant(int quadrant) { m_quadrant = quadrant; }
    int GetOctant() const { return m_octant; }
    int GetLevel() const { return m_level; }
    void SetLevel(int level) { m_level = level; }
    /// The three walls that lie at the back.
    void GetWalls(WallType& x, WallType& y, WallType& z);
    /// Width by height of the data box in this view, without perspective.
    double GetGraphAspectRatio() const;
    /// The data units of what is seen under a pixel of the window in the last picture: 1, or 0 with the units untouched
    /// when only background is.
    int WindowToUnits(int x, int y, double& unitsX, double& unitsY, double& unitsZ);
    /// Where OpenGL draws: pixels of the window with y up, top being the lower edge.
    CRect GetViewportRect() const;
    /// A point with y up as one of the window.
    CPoint ViewportToWindow(CPoint p) const;

    // Colours and lights

    /// Of the whole picture.
    unsigned long GetBackgroundColour() const;
    void SetBackgroundColour(unsigned long colour);
    /// The light that comes from everywhere, 0 … 1.
    double GetAmbientLight() const { return m_ambientLight; }
    void SetAmbientLight(double level) { Change(m_ambientLight, level); }
    /// Only stored.
    double GetSpecularLight() const { return m_specularLight; }
    void SetSpecularLight(double level) { Change(m_specularLight, level); }
    /// Only stored.
    double GetMaterialShininess() const { return m_shininess; }
    void SetMaterialShininess(double shininess) { Change(m_shininess, shininess); }
    /// Degrees: about the z axis from x to y, and from the z axis down.
    void GetLight1Pos(double& azimuth, double& polarAngle) const;
    void SetLight1Pos(double azimuth, double polarAngle);
    int GetLight1On() const { return m_lights[0].on; }
    void SetLight1On(int on) { Change(m_lights[0].on, on); }
    void GetLight2Pos(double& azimuth, double& polarAngle) const;
    void SetLight2Pos(double azimuth, double polarAngle);
    int GetLight2On() const { return m_lights[1].on; }
    void SetLight2On(int on) { Change(m_lights[1].on, on); }
    /// Of both lights from the box's centre, in box units.
    double GetLightDistance() const { return m_lightDistance; }
    void SetLightDistance(double distance) { Change(m_lightDistance, distance); }
    /// Divides the light of both.
    double GetAttenuation() const { return m_attenuation; }
    void SetAttenuation(double attenuation) { Change(m_attenuation, attenuation); }
    /// 0: faces have their plain colours.
    int GetLightingOn() const { return m_lightingOn; }
    void SetLightingOn(int on) { Change(m_lightingOn, on); }

    // Modes

    /// Draws fast while the view is dragged: curves may draw coarsely, and nothing is anti-aliased.
    int GetCoarseMeshMode() const { return m_coarseMeshMode; }
    void SetCoarseMeshMode(int on) { Change(m_coarseMeshMode, on); }
    /// Eight pictures, each moved by a part of a pixel, are made into one.
    int GetAntialiasMode() const { return m_antialiasMode; }
    void SetAntialiasMode(int on) { Change(m_antialiasMode, on); }
    /// Of the grid's lines, and of the axes'; both count when the whole is not anti-aliased.
    int GetGridLineAntialiasMode() const { return m_gridLineAntialiasMode; }
    void SetGridLineAntialiasMode(int on) { Change(m_gridLineAntialiasMode, on); }
    int GetAxisLineAntialiasMode() const { return m_axisLineAntialiasMode; }
    void SetAxisLineAntialiasMode(int on) { Change(m_axisLineAntialiasMode, on); }
    /// 1: the data box has the proportions of the axes' ranges; 0: it is a cube.
    int GetAutoscaleMode() const { return m_autoscaleMode; }
    void SetAutoscaleMode(int mode);
    /// Only stored, and not in documents.
    int GetBurnMode() const { return m_burnMode; }
    void SetBurnMode(int mode) { m_burnMode = mode; }
    /// Only stored.
    CString GetFontFaceName() const { return m_fontFaceName; }
    void SetFontFaceName(CString const& name) { Change(m_fontFaceName, name); }
    /// Only stored.
    double GetTextScaleFac() const { return m_textScaleFac; }
    void SetTextScaleFac(double factor) { Change(m_textScaleFac, factor); }
    double GetCombinedTextScaleFac() const { return m_textScaleFac * m_baseTextScale; }

    // Printing: set by the host before a draw to a printer, and back to the defaults after every draw

    /// How many times larger the picture is printed than it is drawn: widths of lines and heights of text are divided
    /// by it.
    double GetPrintScale() const { return m_printScale; }
    void SetPrintScale(double scale);
    /// Draw to a printer as on a screen: with the sizes that lines and text have there.
    int GetPrintingSuppressed() const { return m_printingSuppressed; }
    void SetPrintingSuppressed(int on) { m_printingSuppressed = on; }
    /// The printer of the draw in progress; else null. Not owned.
    CDC* GetPrinterDC() const { return m_printerDC; }
    /// The width in pixels of a line that is one pixel wide on a screen of 96 to the inch, in the draw in progress;
    /// kind as in CPreferences::GetThicknessScaleFac3D.
    double GetLineWidth(int kind) const;

    // The data

    /// The union of the ranges of the plots that have a defined curve. It starts from 0 … 0, which only the first plot,
    /// if it has one, replaces.
    void GetXRange(double& min, double& max) const;
    void GetYRange(double& min, double& max) const;
    void GetZRange(double& min, double& max) const;
    /// The proportions of the data box: those of the axes' ranges, which are brought up to date first, or a cube.
    void SetAutoScaleParams(int on);
    /// Whether a change of ranges, scale factors or data asks curves to take their points into the box again.
    int ZValPropertyModified() const;
    /// Whether some curve's objects must not be distorted: such a graph always has the proportions of the ranges.
    int HasObjectCurve() const;

    // OpenGL. Nothing of it is loaded before the first draw: what draws in 2D alone stays as small and as quick to
    // start as without it, and documents with 3D graphs can be worked on where there is no OpenGL. So the constructor
    // makes no context, which InitializeOpenGL does.

    /// Makes bitmap and context for pictures of that size: 1, or 0 when there is no OpenGL.
    int InitializeOpenGL(int width, int height, CDC* reference);
    /// Tell every component to release, and to make again, what belongs to the context.
    void InvalidateDeviceObjects();
    void RestoreDeviceObjects();

    // Steps of a draw, for components and curves while they draw themselves; outside of a draw they do nothing

    /// Gives OpenGL the graph's rectangle, or without one all of a window of that size. Returns 1.
    int Resize(int width, int height);
    /// Clears the picture, and sets camera and lights for a pass whose picture is moved by fractions of a pixel.
    void SetState(double jitterX, double jitterY);
    /// Cuts off what lies outside of the data box.
    void EnableClip(int on);
    /// Half the sides of what is left then: half a per cent more than the box, so that what lies on its faces stays.
    std::array<double, 3> GetClipBox() const;
    /// The lights that are on; and lighting as a whole, which stays off where the graph's is.
    void EnableLights(int on);
    void EnableLighting(int on);
    /// Turns what is drawn next towards the viewer, and back.
    int SetView();
    int UnsetView();
    /// Binds a texture of one or two dimensions, sampled without filtering, and modulates colours by it.
    void Set1DTextureState(int on, int texture);
    void SetTextureState(int on, int texture);
    /// Takes over a polygon that is drawn, with the others from the farthest to the nearest, after everything opaque.
    void AddTransparentPolygon(std::unique_ptr<CPolygon> polygon);
    /// The same of many faces, for what is drawn in this folder; the batch is not owned, and must stay as it is until
    /// the picture is drawn. Names of textures of one and of two dimensions, 0 for none.
    void AddTransparentFaces(FaceBatch const& batch, int texture, int image = 0);
    OwnedArray<CPolygon> const& GetTransparentPolygons() const { return m_polygons; }
    /// Leaves none of them to be drawn.
    void ClearPolygons();
    /// The picture that is being drawn; null outside of a draw. For what is drawn in this folder.
    Picture3D* GetPicture() const { return m_picture; }
    /// The height in pixels of labels' and titles' font, before its size factor: 1/30 of the graph's shorter side, at
    /// most 4 mm.
    int GetTextHeight() const;

protected:
    /// Adds each standard component that is missing.
    void CreateComponents();
    void ClearComponents() override;
    void FindComponents() override;
    void BeginDraw(CDC& target) override;
    void EndDraw() override;
    /// Brings data, ranges and the proportions of the data box up to date, in this order: the first picture of new data
    /// has the proportions of that data.
    void UpdateForDraw() override;
    bool IsDrawnOffScreen(CDC const& target, PaintMode mode) const override;
    void DrawBody(CDC& dc) override;
    void DrawAnnotation(CPort& port) override;
    void CopyPicture(CDC& target, CDIB& picture) override;
    CRect Embedded(CRect const& rect, CSize from, CSize to) const override;

    /// Draw the picture that GetPicture is: in one pass, or in eight whose average it becomes. Return 1.
    int Render();
    int RenderAntialias();
    /// Sorts the transparent polygons, the farthest first; and draws them.
    void BuildPolygonDistances();
    void RenderTransparentPolygons();

private:
    enum class PlotKind { Picture, Text };
    void SetLights() const;
    void MakeLabelSpace();
    void BeginPass(double jitterX, double jitterY);
    void DrawPlots(PlotKind kind);
    void DrawTransparentPolygons();
    void WriteTexts();
    void RenderOn(Picture3D& picture, CDIB& bitmap);
    void DrawElsewhere(CDC& dc);

    std::array<C3DAxis*, 3> m_axes {};
    C3DGrid* m_grid = nullptr;
    CWalls* m_walls = nullptr;
    double m_xPos = 0.0;
    double m_yPos = 0.0;
    double m_aspectRatio = 1.0;
    int m_quadrant = -1;
    int m_octant = -1;
    int m_level = -1;
    CString m_fontFaceName = "Arial";
    std::array<std::int16_t, 3> m_background {};
    double m_ambientLight = 0.2;
    double m_specularLight = 0.0;
    double m_azimuth = 330.0;
    double m_elevation = 70.0;
    std::array<Light3D, 2> m_lights { Light3D { 0.0F, 0.0F, 1 }, Light3D {} };
    float m_shininess = 60.0F;
    double m_attenuation = 1.0;
    double m_perspective = 0.5;
    double m_zoom = 1.0;
    double m_textScaleFac = 1.0;
    double m_baseTextScale = 0.05;
    int m_burnMode = 0;
    int m_lightingOn = 1;
    int m_coarseMeshMode = 0;
    int m_antialiasMode = 0;
    int m_gridLineAntialiasMode = 0;
    int m_axisLineAntialiasMode = 1;
    int m_autoscaleMode = 0;
    double m_lightDistance = 1.5;
    OwnedArray<CPolygon> m_polygons;
    std::unique_ptr<Picture3D> m_ownPicture;
    Picture3D* m_picture = nullptr;
    CDC* m_printerDC = nullptr;
    double m_printScale = 1.0;
    int m_printingSuppressed = 0;
};

} // namespace ombrel
