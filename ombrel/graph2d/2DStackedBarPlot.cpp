#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/graph2d/paths/BarPainter.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <vector>

namespace ombrel {

constinit CRuntimeClass const C2DStackedBarCurve::kClass
    = PersistentClass<C2DStackedBarCurve, C2DCurve>("C2DStackedBarCurve");
constinit CRuntimeClass const C2DStackedBarPlot::kClass
    = PersistentClass<C2DStackedBarPlot, C2DSeriesPlot>("C2DStackedBarPlot");

void C2DStackedBarPlot::Serialize(CArchive& ar)
{
    SeriesBarPlot::Serialize(ar);
    ArchiveFields f(ar);
    f.Int(m_noRangeMargin, m_scaleStacksOn).Double(m_stackTotal).Int(m_plotStyle);
}

namespace {

/// The sum, kept short of infinity and of a gap.
double Sum(double a, double b) { return std::clamp(a + b, -kMostReal, kMostReal); }

/// The curves that take part in the stacks of a plot.
class StackedCurves {
public:
    explicit StackedCurves(CPlot const& plot)
    {
        for (CPlotComponent* const component : plot.GetComponents()) {
            auto const* const curve = DynamicDowncast<C2DStackedBarCurve>(component);
            if (curve && curve->IsValid())
                m_curves.push_back(curve);
        }
    }
    std::size_t Count() const { return m_curves.size(); }
    C2DStackedBarCurve const& operator[](std::size_t k) const { return *m_curves[k]; }
    /// The gap marker when the curve has no such point.
    double Value(std::size_t k, int i) const
    {
        return i >= 0 && i < m_curves[k]->GetNumPoints() ? m_curves[k]->GetAt(i).y : kGap;
    }
    bool HasPositiveValue() const
    {
        return std::any_of(m_curves.begin(), m_curves.end(), [](C2DStackedBarCurve const* curve) {
            double min = 0.0;
            double max = 0.0;
            curve->GetYRange(min, max);
            return max > 0.0;
        });
    }

private:
    std::vector<C2DStackedBarCurve const*> m_curves;
};

/// One stack: its pieces from the lower end on. Made once for all stacks of a plot and filled for one after the other.
class Stack {
public:
    struct Piece {
        double height;
        std::size_t curve;
    };
    explicit Stack(StackedCurves const& curves)
        : m_curves(curves)
    {
        m_pieces.reserve(curves.Count());
    }
    /// Splits the values at point i: negative ones come first, the last curve's lowest, then the others in order.
    void Fill(int i)
    {
        m_pieces.clear();
        m_base = 0.0;
        for (std::size_t k = m_curves.Count(); k-- > 0;) {
            double const y = m_curves.Value(k, i);
            if (!IsGap(y) && y < 0.0) {
                m_base = Sum(m_base, y);
                m_pieces.push_back({ -y, k });
            }
        }
        for (std::size_t k = 0; k < m_curves.Count(); ++k) {
            double const y = m_curves.Value(k, i);
            if (!IsGap(y) && y >= 0.0)
                m_pieces.push_back({ y, k });
        }
    }
    double Base() const { return m_base; }
    void StartAtZero() { m_base = 0.0; }
    std::vector<Piece> const& Pieces() const { return m_pieces; }
    /// Makes the whole stack as high as total; one without height starts at 0.
    void ScaleTo(double total)
    {
        double height = 0.0;
        for (Piece const& piece : m_pieces)
            height = Sum(height, piece.height);
        if (CVUtils::FloatEq(height, 0.0)) {
            m_base = 0.0;
            return;
        }
        m_base = m_base / height * total;
        for (Piece& piece : m_pieces)
            piece.height = piece.height / height * total;
    }

private:
    StackedCurves const& m_curves;
    double m_base = 0.0;
    std::vector<Piece> m_pieces;
};

} // namespace

/// How the plot's settings change a stack of plain values.
struct C2DStackedBarPlot::Scaling {
    bool inPercent;
    bool startsAtZero;
    bool toTotal;
    double total;

    Scaling(C2DStackedBarPlot const& plot, StackedCurves const& curves)
        : inPercent(plot.m_plotStyle == psPercent)
        , startsAtZero(inPercent && !curves.HasPositiveValue())
        , toTotal(plot.m_scaleStacksOn != 0)
        , total(plot.m_stackTotal)
    {
    }
    void Apply(Stack& stack) const
    {
        if (inPercent)
            stack.ScaleTo(100.0);
        if (startsAtZero)
            stack.StartAtZero();
        if (toTotal)
            stack.ScaleTo(total);
    }
};

void C2DStackedBarPlot::GetXRange(double& min, double& max)
{
    if (m_noRangeMargin)
        C2DSeriesPlot::GetXRange(min, max); // NOLINT(bugprone-parent-virtual-call)
    else
        SeriesBarPlot::GetXRange(min, max);
}

void C2DStackedBarPlot::GetYRange(double& min, double& max)
{
    StackedCurves const curves(*this);
    if (curves.Count() == 0)
        return;
    bool const inPercent = m_plotStyle == psPercent;
    min = 0.0;
    max = 0.0;
    if (inPercent && !curves.HasPositiveValue()) {
        max = 100.0;
        return;
    }
    for (int i = 0, n = CountSharedPoints(); i < n; ++i) {
        double negative = 0.0;
        double positive = 0.0;
        for (std::size_t k = 0; k < curves.Count(); ++k) {
            double const y = curves.Value(k, i);
            if (!IsGap(y))
                (y < 0.0 ? negative : positive) = Sum(y < 0.0 ? negative : positive, y);
        }
        double const height = Sum(positive, -negative);
        if (inPercent && height > 0.0) {
            negative = negative / height * 100.0;
            positive = positive / height * 100.0;
        }
        min = std::min(min, negative);
        max = std::max(max, positive);
    }
}

int C2DStackedBarPlot::GetStackedBars(int i, double& base, double* heights, COLORREF* colours, int* patterns) const
{
    StackedCurves const curves(*this);
    Stack stack(curves);
    stack.Fill(i);
    Scaling(*this, curves).Apply(stack);
    base = stack.Base();
    int count = 0;
    for (Stack::Piece const& piece : stack.Pieces()) {
        heights[count] = piece.height;
        colours[count] = static_cast<COLORREF>(curves[piece.curve].GetColour());
        patterns[count++] = curves[piece.curve].GetFillPattern();
    }
    return count;
}

void C2DStackedBarPlot::PaintBars(BarPainter& painter, int points, double width) const
{
    StackedCurves const curves(*this);
    std::vector<VectorBrush> brushes;
    for (std::size_t k = 0; k < curves.Count(); ++k)
        brushes.push_back(MakePatternBrush(curves[k].GetFillPattern(), static_cast<COLORREF>(curves[k].GetColour())));
    Scaling const scaling(*this, curves);
    Stack stack(curves);
    auto const& first = static_cast<C2DCurve const&>(*GetComponents()[0]);
    for (int i = 0; i < points; ++i) {
        stack.Fill(i);
        scaling.Apply(stack);
        double const x = first.GetAt(i).x;
        double bottom = stack.Base();
        for (Stack::Piece const& piece : stack.Pieces()) {
            double const top = Sum(bottom, piece.height);
            painter.Paint(x, width, top, bottom, brushes[piece.curve]);
            bottom = top;
        }
    }
}

CPlotComponent* C2DStackedBarPlot::CreateCurve() { return AddNew<C2DStackedBarCurve>(); }

} // namespace ombrel
