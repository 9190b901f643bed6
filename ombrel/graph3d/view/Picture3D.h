#pragma once
#include "ombrel/drawing/DIB.h"
#include "ombrel/foundation/FontData.h"
#include "ombrel/graph3d/render/TransparentScene.h"
#include "ombrel/graph3d/view/Camera.h"
#include "ombrel/graph3d/view/LabelSpace.h"
#include "ombrel/platform/framework/Geometry.h"
#include "ombrel/platform/opengl/GLCanvas.h"

#include <optional>
#include <vector>

namespace ombrel {

/// The point that a text belongs to.
struct TextAnchor {
    /// Pixels, y up.
    CPoint pixel;
    /// As OpenGL's: 0 at the near plane … 1 at the far one.
    double depth = 0.0;
};

/// A text at its place in a picture: pixels, y down.
struct PlacedText {
    CString text;
    /// The upper left corner; of a text that runs upwards, the lower left one.
    CPoint origin;
    /// Everything that the text covers.
    CRect bounds;
    CFontData const* font = nullptr;
    int fontHeight = 0;
    bool isUpwards = false;
    COLORREF colour = 0;
    /// Of a text that is not written when its point lies behind what is drawn.
    std::optional<TextAnchor> anchor;
};

/// A picture that a 3D graph renders: what OpenGL draws on, the bitmap that it is read back to, and what is known
/// while, and after, it is drawn.
struct Picture3D {
    GLCanvas canvas;
    /// Where the picture is read back to, and texts are written; only while it is drawn. Not owned.
    CDIB* bitmap = nullptr;
    CRect graphRect;
    /// How many pixels of the picture there are to an inch of what it is shown on.
    double pixelsPerInch = 96.0;
    Camera camera;
    /// Whether the canvas holds what the camera saw.
    bool isDrawn = false;
    /// For labels: made anew by every pass.
    LabelSpace labelSpace;
    std::vector<PlacedText> texts;
    /// Only while it is drawn.
    TransparentScene transparent;
};

} // namespace ombrel
