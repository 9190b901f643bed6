#pragma once
#include "ombrel/platform/framework/Geometry.h"
#include "ombrel/platform/gdi/Raster.h"
#include "ombrel/platform/opengl/GLObject.h"
#include "ombrel/platform/opengl/GLState.h"

#include <cstdint>
#include <vector>

namespace ombrel {

/// What OpenGL draws on in place of a window: a picture of 8 bits a channel with depth (24 bits) and stencil (8), and
/// sums of pictures.
///
/// Nothing of OpenGL is loaded before the first Scope. A canvas may be drawn on and destroyed in any thread; threads
/// with canvases of their own take turns. Rectangles are pixels, y down, as those of bitmaps.
class GLCanvas {
public:
    GLCanvas() = default;
    GLCanvas(GLCanvas const&) = delete;
    GLCanvas& operator=(GLCanvas const&) = delete;

    /// The size from the next Scope on, at least 1 × 1 whatever is said; at first 1 × 1. The picture is lost when it
    /// changes.
    void SetSize(CSize size);
    CSize GetSize() const { return m_size; }

    /// Drawing on a canvas: the process's context is current in this thread, the canvas bound, the viewport all of it.
    ///
    /// Any other thread that wants to draw waits until the outermost scope has ended; then the context is no longer
    /// current and its state is that of a new one. A scope within another one starts with the outer one's state, which
    /// comes back afterwards: binding, viewport, matrices, settings.
    /// Errors: Error (Resource) when OpenGL or a driver is missing (with what to install), and when the driver does not
    /// have pictures of that size; nothing has changed then.
    class Scope {
    public:
        explicit Scope(GLCanvas& canvas);
        ~Scope();
        Scope(Scope const&) = delete;
        Scope& operator=(Scope const&) = delete;

    private:
        class Entry {
        public:
            Entry() { GLContext::Process().Enter(); }
            ~Entry() { GLContext::Process().Leave(); }
            Entry(Entry const&) = delete;
            Entry& operator=(Entry const&) = delete;
        };
        Entry m_entry;
        GLState m_state;
        GLCanvas* m_outer;
    };

    // All that follows belongs within a Scope of this canvas.

    /// Writes the picture's pixels in the rectangle to pixels, which is where its upper left one goes: 0x00RRGGBB. The
    /// stride leads from a row to the one below it, in pixels. What lies outside of the picture is left out.
    void ReadPixels(CRect const& rect, std::uint32_t* pixels, std::ptrdiff_t stride);
    /// To the same place on a bitmap; what lies outside of it is left out.
    void ReadPixels(CRect const& rect, Raster& bitmap);
    /// Puts pixels into the picture, the other way round: colour only. Depth, stencil and all settings stay, and no
    /// setting (tests, masks, blending, clipping) holds the pixels up.
    void WritePixels(CRect const& rect, std::uint32_t const* pixels, std::ptrdiff_t stride);
    void WritePixels(CRect const& rect, Raster const& bitmap);

    /// Begins a sum of the pictures within a rectangle.
    void ClearAccumulation(CRect const& rect);
    /// Adds the picture's colours there to the sum: at most kMostAccumulated times.
    void Accumulate();
    /// The mean of what was added takes its place in the picture, rounded to the nearest; depth and stencil stay.
    /// Nothing happens when nothing was added. The sum is empty afterwards.
    void ReturnAccumulation();
    static constexpr int kMostAccumulated = 0xFFFF / 0xFF;

private:
    void Prepare();
    bool IsCurrent() const;
    /// From and to m_rows, the rectangle's rows from the bottom up; the rectangle lies in the picture.
    void ReadRows(CRect const& rect);
    void WriteRows(CRect const& rect);

    CSize m_size { 1, 1 };
    CSize m_madeSize {};
    GLObject m_framebuffer;
    GLObject m_colour;
    GLObject m_depth;
    std::vector<std::uint32_t> m_rows;
    /// Four channels a pixel, the rows from the bottom up.
    std::vector<std::uint16_t> m_sum;
    CRect m_sumRect;
    int m_numAccumulated = 0;
};

} // namespace ombrel
