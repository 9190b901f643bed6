#include "ombrel/platform/gdi/page/SvgPath.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace ombrel {

std::string SvgNumber(double value)
{
    static constexpr double kLargest = 1e9;
    static constexpr double kDecimals = 1000.0;
    double const limited = std::isnan(value) ? 0.0 : std::clamp(value, -kLargest, kLargest);
    auto const thousandths = std::llround(limited * kDecimals);
    std::string digits = std::to_string(std::llabs(thousandths));
    if (digits.size() < 4)
        digits.insert(0, 4 - digits.size(), '0');
    std::string const whole = digits.substr(0, digits.size() - 3);
    std::string text = thousandths < 0 ? "-" : "";
    std::string decimals = digits.substr(digits.size() - 3);
    decimals.erase(decimals.find_last_not_of('0') + 1);
    if (whole != "0" || decimals.empty())
        text += whole;
    return decimals.empty() ? text : text.append(".").append(decimals);
}

namespace {

/// Path data: a command letter is left out where it repeats, a blank where a sign separates.
class PathText {
public:
    void Command(char command)
    {
        // Steps after "m" are lines without saying so.
        bool const implied = command == m_last || (command == 'l' && m_last == 'm');
        if (!implied || command == 'm' || command == 'z')
            m_text += command;
        m_fresh = m_text.empty() || m_text.back() == command;
        m_last = command;
    }
    void Number(double value) { Append(SvgNumber(value)); }
    void Step(int value)
    {
        char digits[16];
        auto const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        Append(std::string_view(digits, static_cast<std::size_t>(end - digits)));
    }
    std::string Take() { return std::move(m_text); }

private:
    void Append(std::string_view number)
    {
        if (!m_fresh && number.front() != '-')
            m_text += ' ';
        m_text += number;
        m_fresh = false;
    }
    std::string m_text;
    char m_last = 0;
    bool m_fresh = true;
};

void WriteFigure(PathText& path, std::span<CPoint const> points, bool closed)
{
    bool drawn = false;
    CPoint at = points.front();
    for (CPoint const& point : points.subspan(1)) {
        CPoint const step = point - at;
        at = point;
        if (step.x == 0 && step.y == 0)
            continue;
        drawn = true;
        path.Command(step.y == 0 ? 'h' : step.x == 0 ? 'v' : 'l');
        if (step.x != 0)
            path.Step(step.x);
        if (step.y != 0)
            path.Step(step.y);
    }
    if (closed) {
        path.Command('z');
    } else if (!drawn) {
        // A dot: round ends make it visible.
        path.Command('h');
        path.Step(0);
    }
}

/// The arc in two halves, so that each is determined by its ends.
void WriteArc(PathText& path, PageArc const& arc)
{
    auto const goTo = [&](double angle) {
        path.Number(arc.centreX + arc.radiusX * std::cos(angle));
        path.Number(arc.centreY + arc.radiusY * std::sin(angle));
    };
    path.Command('M');
    goTo(arc.start);
    for (double const part : { 0.5, 1.0 }) {
        path.Command('A');
        path.Number(arc.radiusX);
        path.Number(arc.radiusY);
        path.Number(0);
        path.Number(0);
        path.Number(arc.sweep > 0.0 ? 1 : 0);
        goTo(arc.start + part * arc.sweep);
    }
    if (arc.IsWhole())
        path.Command('z');
}

} // namespace

std::string SvgPath(PageShape const& shape)
{
    PathText path;
    CPoint at;
    bool first = true;
    for (std::size_t i = 0; i < shape.figures.size(); ++i) {
        auto const points = shape.PointsOf(i);
        if (points.empty())
            continue;
        // The first "m" counts from the origin.
        path.Command('m');
        path.Number(points.front().x - at.x + (first ? shape.offset : 0.0));
        path.Number(points.front().y - at.y + (first ? shape.offset : 0.0));
        first = false;
        WriteFigure(path, points, shape.figures[i].closed);
        at = shape.figures[i].closed ? points.front() : points.back();
    }
    for (PageArc const& arc : shape.arcs)
        if (arc.radiusX > 0.0 && arc.radiusY > 0.0)
            WriteArc(path, arc);
    return path.Take();
}

} // namespace ombrel
