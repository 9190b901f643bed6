#include "ombrel/chart/CurvesCsv.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/graph3d/3DLineCurve.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/layout/AxisTicks.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/Description.h"
#include "ombrel/layout/Titles.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <optional>
#include <span>
#include <vector>

namespace ombrel {

namespace {

struct Column {
    std::string name;
    std::vector<double> values;
    bool hasDates = false;
    /// What stands for 1, 2, 3, ...; empty for numbers and dates.
    std::span<std::string const> words {};
};

std::string Quoted(std::string const& text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos && !text.starts_with(' ') && !text.ends_with(' '))
        return text;
    std::string quoted = "\"";
    for (char const c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

void AppendDigits(std::string& text, long long value, std::size_t digits, char before)
{
    std::string const number = std::to_string(value);
    if (before)
        text += before;
    text.append(digits - std::min(digits, number.size()), '0').append(number);
}

/// 2020-01-31, with the time to the millisecond where there is one. Days count from 30 December 1899; below zero the
/// time still runs forwards.
std::string IsoDate(double value)
{
    constexpr std::chrono::sys_days kOrigin { std::chrono::year { 1899 } / 12 / 30 };
    constexpr double kMostDays = 3e6;
    if (!(std::abs(value) < kMostDays))
        return {};
    double const whole = std::trunc(value);
    auto const time = kOrigin + std::chrono::days(static_cast<int>(whole))
        + std::chrono::milliseconds(std::llround(std::abs(value - whole) * 86400000.0));
    auto const day = std::chrono::floor<std::chrono::days>(time);
    std::chrono::year_month_day const date(day);
    std::string text;
    AppendDigits(text, static_cast<int>(date.year()), 4, 0);
    AppendDigits(text, static_cast<unsigned>(date.month()), 2, '-');
    AppendDigits(text, static_cast<unsigned>(date.day()), 2, '-');
    std::chrono::hh_mm_ss const clock(time - day);
    if (clock.to_duration().count() == 0)
        return text;
    AppendDigits(text, clock.hours().count(), 2, 'T');
    AppendDigits(text, clock.minutes().count(), 2, ':');
    AppendDigits(text, clock.seconds().count(), 2, ':');
    if (clock.subseconds().count() != 0)
        AppendDigits(text, clock.subseconds().count(), 3, '.');
    return text;
}

void AppendCell(std::string& text, Column const& column, std::size_t row)
{
    if (row >= column.values.size() || IsGap(column.values[row]))
        return;
    if (!column.words.empty()) {
        text += Quoted(column.words[static_cast<std::size_t>(column.values[row]) - 1]);
        return;
    }
    if (column.hasDates) {
        text += IsoDate(column.values[row]);
        return;
    }
    std::array<char, 32> digits;
    text.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), column.values[row]).ptr);
}

std::string Written(std::vector<Column> const& columns)
{
    std::string text;
    std::size_t rows = 0;
    for (Column const& column : columns) {
        text += (&column == columns.data() ? "" : ",") + Quoted(column.name);
        rows = std::max(rows, column.values.size());
    }
    text += '\n';
    for (std::size_t row = 0; row < rows; ++row) {
        for (Column const& column : columns) {
            if (&column != columns.data())
                text += ',';
            AppendCell(text, column, row);
        }
        text += '\n';
    }
    return text;
}

std::vector<double> RowOf(CTableData const& table, int row)
{
    double const* const values = table.GetRow(row);
    return { values, values + table.GetNumCols() };
}

/// What bars reach to each side, half their heights; none of bars that are only caps, which mark points.
std::vector<double> ErrorsOf(C2DErrorBarCurve const& bars)
{
    constexpr double kCap = 1e-12;
    std::vector<double> errors;
    bool hasBars = false;
    for (int i = 0; i < bars.GetHeights().GetSize(); ++i) {
        double const height = bars.GetHeights()[i];
        hasBars = hasBars || (!IsGap(height) && height > kCap);
        errors.push_back(IsGap(height) ? kGap : height / 2.0);
    }
    return hasBars ? errors : std::vector<double>();
}

/// The columns of the curves, one after the other.
class Columns {
public:
    /// Titles of the axes, x, y and z, and the words along x.
    Columns(std::array<std::string, 3> titles, std::vector<std::string> words)
        : m_titles(std::move(titles))
        , m_words(std::move(words))
    {
    }

    void AddFlat(C2DCurve const& curve)
    {
        CTableData const& points = curve.GetPoints();
        if (!points.HasData())
            return;
        auto const* const bars = DynamicDowncast<C2DErrorBarCurve>(&curve);
        std::vector<double> errors = bars ? ErrorsOf(*bars) : std::vector<double>();
        if (bars && errors.empty())
            return;
        bool const hasDates = curve.GetXValMode() == C2DCurve::xvDates;
        Column x { NameOfX(hasDates), RowOf(points, 0), hasDates };
        if (!hasDates && std::all_of(x.values.begin(), x.values.end(), [this](double value) { return HasWord(value); }))
            x.words = m_words;
        AddX(std::move(x));
        std::string const name = NameOf(curve);
        m_columns.push_back({ name.empty() || bars ? Title(1) : name, RowOf(points, 1) });
        if (bars)
            m_columns.push_back({ name.empty() ? "error" : name, std::move(errors) });
    }

    void AddGrid(C3DRowColCurve const& grid, std::string const& name)
    {
        CTableData const& table = *grid.GetTableDataPtr();
        if (!table.HasData())
            return;
        std::array<std::vector<double>, 3> points;
        for (int r = 0; r < table.GetNumRows(); ++r) {
            for (int c = 0; c < table.GetNumCols(); ++c) {
                points[0].push_back(grid.GetTableXMin() + c * grid.GetTableXStep());
                points[1].push_back(grid.GetTableYMin() + r * grid.GetTableYStep());
                points[2].push_back(table.GetAt(r, c));
            }
        }
        AddPoints(std::move(points), name);
    }

    void AddInSpace(CPlotComponent& curve)
    {
        std::array<std::vector<double>, 3> points;
        auto const addTable = [&points](CTableData const& table) {
            for (int i = 0; table.HasData() && table.GetNumRows() >= 3 && i < 3; ++i)
                points[static_cast<std::size_t>(i)] = RowOf(table, i);
        };
        auto const addLine = [&points](C3DLineData const& line) {
            for (CVertex const& point : line.GetPoints()) {
                points[0].push_back(point.X());
                points[1].push_back(point.Y());
                points[2].push_back(point.Z());
            }
        };
        if (auto const* const grid = DynamicDowncast<C3DRowColCurve>(&curve)) {
            AddGrid(*grid, NameOf(curve));
            return;
        }
        if (auto* const surface = DynamicDowncast<C3DIrregularSurfaceCurve>(&curve))
            addTable(*surface->GetTableData());
        else if (auto* const bars = DynamicDowncast<C3DIrregBarCurve>(&curve))
            addTable(*bars->GetTableData());
        else if (auto* const series = DynamicDowncast<C3DIrregLineArrayCurve>(&curve))
            addLine(series->GetPoints());
        else if (auto const* const line = DynamicDowncast<C3DLineCurve>(&curve))
            addLine(line->GetPoints());
        if (points[0].empty())
            return;
        // Points that were taken nearer to the origin are moved back.
        auto const& shown = static_cast<C3DCurve const&>(curve);
        for (std::size_t i = 0; shown.GetNumTransforms() > 0 && i < points[0].size(); ++i) {
            if (!IsGap(points[0][i]) && !IsGap(points[1][i]) && !IsGap(points[2][i]))
                shown.Transform(&points[0][i], &points[1][i], &points[2][i]);
        }
        AddPoints(std::move(points), NameOf(curve));
    }

    std::vector<Column> const& Get() const { return m_columns; }

private:
    static std::string NameOf(CPlotComponent const& curve)
    {
        std::string name = OneLine(curve.GetTitle().ToUtf8());
        return name == FirstTitle(curve) ? std::string() : name;
    }
    std::string Title(std::size_t axis) const
    {
        return m_titles[axis].empty() ? std::string(1, "xyz"[axis]) : m_titles[axis];
    }
    bool HasWord(double value) const
    {
        return IsGap(value)
            || (value >= 1.0 && value <= static_cast<double>(m_words.size()) && value == std::floor(value));
    }
    std::string NameOfX(bool hasDates) const { return hasDates && m_titles[0].empty() ? "date" : Title(0); }
    void AddX(Column&& x)
    {
        auto const same = [&x](std::vector<double> const& values) {
            return std::equal(values.begin(), values.end(), x.values.begin(), x.values.end(),
                [](double a, double b) { return a == b || (IsGap(a) && IsGap(b)); });
        };
        if (m_x && m_columns[*m_x].hasDates == x.hasDates && same(m_columns[*m_x].values))
            return;
        m_x = m_columns.size();
        m_columns.push_back(std::move(x));
    }
    void AddPoints(std::array<std::vector<double>, 3>&& points, std::string const& name)
    {
        m_x.reset();
        for (std::size_t i = 0; i < 3; ++i)
            m_columns.push_back({ i == 2 && !name.empty() ? name : Title(i), std::move(points[i]) });
    }

    std::array<std::string, 3> m_titles;
    std::vector<std::string> m_words;
    std::vector<Column> m_columns;
    /// The last column of x values; none in space.
    std::optional<std::size_t> m_x;
};

std::array<std::string, 3> TitlesOf(CGraph& graph)
{
    std::array<std::string, 3> titles;
    if (auto* const flat = DynamicDowncast<C2DGraph>(&graph)) {
        AxisSettings const& x = flat->GetAxes()->GetAxis(CAxes::atX);
        titles[0] = OneLine(x.title.ToUtf8());
        if (x.timeUnitsOn)
            titles[0] = TitleWithoutDate(titles[0], x.min);
        titles[1] = OneLine(flat->GetAxes()->GetAxis(CAxes::atY).title.ToUtf8());
    } else if (auto* const scene = DynamicDowncast<C3DGraph>(&graph)) {
        for (std::size_t i = 0; i < 3; ++i)
            titles[i] = OneLine(scene->GetAxes()[i]->GetTitle().ToUtf8());
    }
    for (std::string& title : titles)
        title = TitleWithoutPower(title);
    return titles;
}

/// What stands along x in place of 1, 2, 3, ...; none where some were left out or shortened for want of room.
std::vector<std::string> WordsOf(CGraph& graph)
{
    auto* const flat = DynamicDowncast<C2DGraph>(&graph);
    if (!flat)
        return {};
    AxisSettings const& axis = flat->GetAxes()->GetAxis(CAxes::atX);
    std::vector<std::string> words = WordsAlong(axis);
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (axis.arbitraryTicks[static_cast<int>(i)] != static_cast<double>(i + 1) || words[i].ends_with("…"))
            return {};
    }
    return words;
}

} // namespace

std::string CurvesAsCsv(CGraph& graph)
{
    Columns columns(TitlesOf(graph), WordsOf(graph));
    if (CPlotArray const* const plots = graph.GetPlotArray()) {
        for (CPlot const* const plot : plots->GetPlots()) {
            for (CPlotComponent* const curve : plot->GetComponents()) {
                auto* const contours = DynamicDowncast<C2DContourCurve>(curve);
                auto const* const flat = DynamicDowncast<C2DCurve>(curve);
                if (contours)
                    columns.AddGrid(*contours->GetSurface(), contours->GetTitle().ToUtf8());
                else if (flat)
                    columns.AddFlat(*flat);
                else
                    columns.AddInSpace(*curve);
            }
        }
    }
    if (columns.Get().empty())
        throw ChartError(ChartError::Cause::Data, "no curve of the graph has points or a grid");
    return Written(columns.Get());
}

} // namespace ombrel
