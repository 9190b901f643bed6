#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

#include <span>

namespace ombrel {

class CPort;

/// The shapes that mark points. Each is drawn into a device rectangle with the context's pen, filled with its brush.
class OMBREL_EXPORT C2DSymbol {
public:
    /// The shapes, by the numbers that archives have.
    enum SymbolType : int {
        None = 0,
        Circle = 1,
        Square = 2,
        Triangle = 3,
        InvertedTriangle = 4,
        Diamond = 5,
        Cross = 6,
        Plus = 7,
        Pixel = 8,
    };

    /// Draws nothing for an empty rectangle, but for a pixel, and for a type that is none of these. fill non-zero fills
    /// the closed shapes with fillColour.
    static void DrawSymbol(SymbolType type, CPort* port, CRect rect, COLORREF colour, int fill, COLORREF fillColour);
    /// As DrawSymbol round each of the centres (device pixels), with rectangles that reach half pixels to every side,
    /// one after the other: the same pixels at a small part of the cost. Each is as opaque as its colour, as a whole.
    static void DrawSymbols(SymbolType type, CPort* port, std::span<CPoint const> centres, int half, COLORREF colour,
        int fill, COLORREF fillColour);
    static void DrawCircle(CPort* port, CRect rect, COLORREF colour, int fill, COLORREF fillColour);
    static void DrawSquare(CPort* port, CRect rect, COLORREF colour, int fill, COLORREF fillColour);
    static void DrawTriangle(CPort* port, CRect rect, COLORREF colour, int fill, COLORREF fillColour);
    static void DrawInvertedTriangle(CPort* port, CRect rect, COLORREF colour, int fill, COLORREF fillColour);
    static void DrawDiamond(CPort* port, CRect rect, COLORREF colour, int fill, COLORREF fillColour);
    static void DrawCross(CPort* port, CRect rect, COLORREF colour);
    static void DrawPlus(CPort* port, CRect rect, COLORREF colour);
    /// One pixel; on a printer a square as large as one on a screen.
    static void DrawPixel(CPort* port, CRect rect, COLORREF colour);
};

} // namespace ombrel
