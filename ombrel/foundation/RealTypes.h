#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"

namespace ombrel {

/// A point in real (data) coordinates, y up.
///
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT CRealPoint : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CRealPoint() = default;
    CRealPoint(double px, double py)
        : x(px)
        , y(py)
    {
    }
    void Set(double px, double py)
    {
        x = px;
        y = py;
    }
    void SetX(double px) { x = px; }
    void SetY(double py) { y = py; }
    double XX() const { return x; }
    double Y() const { return y; }
    void ScaleY(double factor) { y *= factor; }
    void IncrementY() { y += 1.0; }
    friend CRealPoint operator+(CRealPoint const& a, CRealPoint const& b) { return { a.x + b.x, a.y + b.y }; }
    friend bool operator==(CRealPoint const& a, CRealPoint const& b) { return a.x == b.x && a.y == b.y; }
    void Serialize(CArchive& ar) override;

    double x = 0.0;
    double y = 0.0;
};

/// A width and a height in real coordinates.
class OMBREL_EXPORT CRealSize : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CRealSize() = default;
    CRealSize(double width, double height)
        : cx(width)
        , cy(height)
    {
    }
    /// Exchanges width and height.
    void Swap();
    friend bool operator==(CRealSize const& a, CRealSize const& b) { return a.cx == b.cx && a.cy == b.cy; }

    double cx = 0.0;
    double cy = 0.0;
};

/// A rectangle in real coordinates, y up: a well-formed one has its top above its bottom.
///
/// The corners are kept as given, never exchanged, so Width and Height may come out negative. left, right, top and
/// bottom mirror the corners for reading; Set is the one way to change them.
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT CRealRect : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CRealRect() = default;
    CRealRect(CRealPoint const& topLeft, CRealPoint const& bottomRight) { Set(topLeft, bottomRight); }
    CRealRect(double l, double t, double r, double b)
        : CRealRect(CRealPoint(l, t), CRealPoint(r, b))
    {
    }
    void Set(CRealPoint const& topLeft, CRealPoint const& bottomRight);
    double Width() const { return m_bottomRight.x - m_topLeft.x; }
    /// Top minus bottom: positive when well-formed.
    double Height() const { return m_topLeft.y - m_bottomRight.y; }
    CRealPoint TopLeft() const { return m_topLeft; }
    CRealPoint BottomRight() const { return m_bottomRight; }
    friend bool operator==(CRealRect const& a, CRealRect const& b)
    {
        return a.m_topLeft == b.m_topLeft && a.m_bottomRight == b.m_bottomRight;
    }
    void Serialize(CArchive& ar) override;

private:
    CRealPoint m_topLeft;
    CRealPoint m_bottomRight;

public:
    double left = 0.0;
    double right = 0.0;
    double top = 0.0;
    double bottom = 0.0;
};

} // namespace ombrel
