#pragma once
#include "ombrel/drawing/DIB.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/view/Camera.h"

#include <gtest/gtest.h>

namespace ombrel::test {

inline constexpr CSize kSize { 240, 200 };

/// A graph of nothing but its background, whose curve a test fills in.
class Draw3D : public testing::Test {
protected:
    Draw3D()
        : m_graph(1)
        , m_target(kSize.cx, kSize.cy, 24)
    {
        m_graph.SetGraphFrameOn(0);
        m_graph.GetGrid()->SetOn(0);
        for (C3DAxis** axis = m_graph.GetAxes(); axis != m_graph.GetAxes() + 3; ++axis)
            (*axis)->SetOn(0);
        m_graph.SetBackgroundColour(RGB(10, 20, 30));
    }
    void Draw(CRect const& rect = { { 0, 0 }, kSize }) { m_graph.Draw(m_target.GetDC(), rect, pmOffScreen); }
    COLORREF At(CPoint p) const { return m_target.GetDC()->GetPixel(p.x, p.y); }
    /// Where a point of the data box lies in a picture of the whole target.
    CPoint Place(CVertex const& v) const
    {
        ViewSettings settings;
        settings.azimuth = m_graph.GetViewingAzimuth();
        settings.elevation = m_graph.GetViewingElevation();
        settings.aspectRatio = static_cast<double>(kSize.cx) / kSize.cy;
        settings.viewportSize = kSize;
        CVertex const window = *Camera(settings).Project(v);
        return { static_cast<int>(window.X()), static_cast<int>(kSize.cy - window.Y()) };
    }
    /// How many pixels of the target have the colour.
    int Count(COLORREF colour) const
    {
        int count = 0;
        for (int y = 0; y < kSize.cy; ++y) {
            for (int x = 0; x < kSize.cx; ++x)
                count += At({ x, y }) == colour;
        }
        return count;
    }

    C3DGraph m_graph;
    CDIB m_target;
};

} // namespace ombrel::test
