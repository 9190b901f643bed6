#pragma once
#include "ombrel/drawing/DIB.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/view/Camera.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace ombrel::test {

inline constexpr CSize kSize { 240, 200 };
inline constexpr COLORREF kBackground = RGB(10, 20, 30);

inline bool AreNear(COLORREF a, COLORREF b, int most = 3)
{
    for (int shift = 0; shift < 24; shift += 8) {
        if (std::abs(static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255)) > most)
            return false;
    }
    return true;
}

inline int Brightness(COLORREF c) { return static_cast<int>((c & 255) + (c >> 8 & 255) + (c >> 16 & 255)); }

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
        m_graph.SetBackgroundColour(kBackground);
    }
    void Draw(CRect const& rect = { { 0, 0 }, kSize }) { m_graph.Draw(m_target.GetDC(), rect, pmOffScreen); }
    void DrawAnew()
    {
        m_graph.SetModifiedFlag(1);
        Draw();
    }
    /// The curve of a new plot.
    template <typename Curve> Curve& Add(ItemType type)
    {
        return *static_cast<Curve*>(m_graph.AddPlot(type)->CreateCurve());
    }
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
    CVertex BoxPlace(double x, double y, double z) const
    {
        C3DAxis* const* const axes = m_graph.GetAxes();
        return { axes[0]->GetViewVal(x, 1), axes[1]->GetViewVal(y, 1), axes[2]->GetViewVal(z, 1) };
    }
    COLORREF AtBox(CVertex const& box) const { return At(Place(box)); }
    /// At a place in data units.
    COLORREF AtData(double x, double y, double z) const { return AtBox(BoxPlace(x, y, z)); }
    /// Whether the colour is within two pixels of the place.
    bool IsNear(CVertex const& box, COLORREF colour) const
    {
        CPoint const p = Place(box);
        for (int dy = -2; dy <= 2; ++dy) {
            for (int dx = -2; dx <= 2; ++dx) {
                if (AreNear(At({ p.x + dx, p.y + dy }), colour))
                    return true;
            }
        }
        return false;
    }
    std::vector<COLORREF> Pixels() const
    {
        std::vector<COLORREF> pixels;
        for (int y = 0; y < kSize.cy; ++y) {
            for (int x = 0; x < kSize.cx; ++x)
                pixels.push_back(At({ x, y }));
        }
        return pixels;
    }
    /// How many pixels of the target have the colour.
    int Count(COLORREF colour) const { return static_cast<int>(std::ranges::count(Pixels(), colour)); }

    C3DGraph m_graph;
    CDIB m_target;
};

} // namespace ombrel::test
