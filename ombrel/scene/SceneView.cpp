#include "ombrel/scene/SceneView.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/scene/parts/SceneSketch.h"
#include "ombrel/scene/parts/ViewAngle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <vector>

namespace ombrel {

namespace {

/// For its own life, takes off the scene what is not part of the view: annotations, smooth edges, and the titles of the
/// x and y axes, which move back to where they are inside.
class ViewAlone {
public:
    explicit ViewAlone(C3DGraph& scene)
        : m_scene(scene)
        , m_antialiasMode(scene.GetAntialiasMode())
        , m_titles { scene.GetAxes()[0]->GetTitle(), scene.GetAxes()[1]->GetTitle() }
    {
        Hide(scene.GetLegend());
        for (int i = 0; scene.GetCaptionArray() && i < scene.GetCaptionArray()->GetSize(); ++i)
            Hide(scene.GetCaptionArray()->GetAt(i));
        for (int i = 0; scene.GetColourKeyArray() && i < scene.GetColourKeyArray()->GetSize(); ++i)
            Hide(scene.GetColourKeyArray()->GetAt(i));
        scene.SetAntialiasMode(0);
        for (int i = 0; i < 2; ++i)
            scene.GetAxes()[i]->SetTitle("");
    }
    ~ViewAlone()
    {
        for (int i = 0; i < 2; ++i)
            m_scene.GetAxes()[i]->SetTitle(m_titles[static_cast<std::size_t>(i)]);
        m_scene.SetAntialiasMode(m_antialiasMode);
        for (auto const& show : m_shows)
            show();
    }
    ViewAlone(ViewAlone const&) = delete;
    ViewAlone& operator=(ViewAlone const&) = delete;

private:
    template <class Annotation> void Hide(Annotation* annotation)
    {
        if (!annotation || !annotation->IsOn())
            return;
        annotation->SetOn(0);
        m_shows.push_back([annotation] { annotation->SetOn(1); });
    }

    C3DGraph& m_scene;
    int m_antialiasMode;
    std::array<CString, 2> m_titles;
    std::vector<std::function<void()>> m_shows;
};

bool IsCutAtSides(C3DGraph& scene, CSize size)
{
    // Labels that would be cut are left out and so end before the edge.
    int const margin = std::min(size.cx, size.cy) / 40;
    CRect const extent = SceneSketch(scene, CRect({ 0, 0 }, size)).Extent();
    return !extent.IsRectEmpty() && (extent.left < margin || extent.right > size.cx - margin);
}

/// With which a picture of that shape (width by height) is as wide as one of a wider shape is with the scene's own.
double ZoomOfWidth(C3DGraph const& scene, double shape, double wider)
{
    double const perspective = scene.GetPerspective();
    double const halfWidth = std::tan(ViewAngle(perspective, scene.GetZoomFactor(), wider) / 2.0) * wider;
    double const angle = 2.0 * std::atan(halfWidth / shape);
    // Below a square the angle grows by itself as the picture gets narrower, though not far enough.
    return ViewAngle(perspective, 1.0, 1.0) / (angle * std::min(shape, 1.0));
}

} // namespace

double ZoomToKeepWidth(C3DGraph& scene, CSize picture)
{
    // Proportions matter here, not pixels.
    constexpr double kHeight = 400.0;
    constexpr double kStep = 1.1;
    constexpr double kWidest = 8.0;
    double const shape = static_cast<double>(picture.cx) / std::max(picture.cy, 1);
    auto const sized = [](double aspect) {
        return CSize(static_cast<int>(std::lround(aspect * kHeight)), static_cast<int>(kHeight));
    };
    double wider = shape;
    {
        ViewAlone const viewAlone(scene);
        while (wider <= shape * kWidest && IsCutAtSides(scene, sized(wider)))
            wider *= kStep;
    }
    return wider > shape && wider <= shape * kWidest ? ZoomOfWidth(scene, shape, wider) : scene.GetZoomFactor();
}

} // namespace ombrel
