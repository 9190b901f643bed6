#include "tools/ombrel/commands/InfoCommand.h"
#include "ombrel/chart/Document.h"
#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/layout/AxisTicks.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/model/ItemType.h"
#include "ombrel/scene/Heights.h"
#include "ombrel/scene/MeshFile.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/DocumentFile.h"
#include "tools/ombrel/commands/MeshInfo.h"
#include "tools/ombrel/commands/SceneInfo.h"
#include "tools/ombrel/commands/TableFile.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <limits>

namespace ombrel::host {

namespace {

std::string RangeText(double min, double max, bool dates)
{
    return dates ? DateText(min) + " to " + DateText(max) : NumberRange(min, max);
}

std::string ValueRange(TableColumn const& column)
{
    if (column.misfit)
        return "line " + std::to_string(column.misfit->line) + " holds " + column.misfit->found;
    double min = std::numeric_limits<double>::infinity();
    double max = -min;
    column.values.ForEach([&](double v) {
        min = v < min ? v : min;
        max = v > max ? v : max;
    });
    return min <= max ? RangeText(min, max, column.type == ColumnType::Date) : "";
}

std::string DescribeTable(Options const& options, InputFile& file, Messages const& messages)
{
    TableOptions reading { options.table };
    reading.texts = false;
    reading.dateFormat = options.dateFormat;
    Table const table = ReadTableFile(file, reading, messages);
    std::string text = file.GetName() + ": table of " + Counted(table.rows, "row", "rows") + " and "
        + Counted(table.columns.size(), "column", "columns") + "; separator " + SeparatorLabel(table.dialect.separator)
        + ", decimal " + (table.dialect.decimalMark == ',' ? "comma" : "point") + ", "
        + (table.dialect.hasHeader ? "with" : "without") + " names\n";
    std::vector<std::vector<std::string>> rows { { "column", "name", "type", "gaps", "range" } };
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        TableColumn const& column = table.columns[i];
        std::string name = column.name;
        std::replace_if(
            name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
        rows.push_back(
            { std::to_string(i + 1), name, TypeLabel(column.type), std::to_string(column.gaps), ValueRange(column) });
    }
    return text + FormatRows(rows, 2);
}

std::string Quoted(CString const& title) { return QuoteForMessage(title.ToUtf8()); }

std::string DescribeAxis(AxisSettings const& axis, bool hasDates)
{
    return RangeText(axis.min, axis.max, hasDates) + (axis.scaleMode ? " decades" : "") + ", title "
        + Quoted(axis.title) + "\n";
}

std::string DescribeAxes(CAxes const& axes)
{
    AxisSettings const& x = axes.GetAxis(CAxes::atX);
    return "    x " + DescribeAxis(x, x.timeUnitsOn != 0) + "    y " + DescribeAxis(axes.GetAxis(CAxes::atY), false);
}

std::string DescribeAxes(C3DAxis const& axis)
{
    constexpr std::string_view kNames = "xyz";
    auto const name = static_cast<std::size_t>(axis.GetAxisType() - atXAxis);
    return "    " + std::string(kNames.substr(std::min(name, kNames.size()), 1)) + " "
        + RangeText(axis.GetMin(), axis.GetMax(), false) + ", title " + Quoted(axis.GetTitle()) + "\n";
}

std::string DescribeView(C3DGraph const& scene)
{
    return "  view: azimuth " + ShortNumber(scene.GetViewingAzimuth()) + ", polar angle "
        + ShortNumber(scene.GetViewingElevation()) + ", zoom " + ShortNumber(scene.GetZoomFactor()) + ", perspective "
        + ShortNumber(scene.GetPerspective()) + "\n";
}

std::string DescribeLevels(C2DContourCurve const& curve)
{
    switch (curve.GetLevelMode()) {
    case C2DContourCurve::lmEven:
        return CountedInt(curve.GetNumContours(), "level", "levels");
    case C2DContourCurve::lmSpaced:
        return "levels at " + ShortNumber(curve.GetRef()) + " and every " + ShortNumber(curve.GetSpacing());
    default: {
        CDoubleArray const& levels = curve.GetSurface()->GetArbContourLevels();
        std::string text = CountedInt(levels.GetSize(), "level", "levels");
        if (levels.GetSize() > 0)
            text += ", " + RangeText(levels[0], levels[levels.GetSize() - 1], false);
        return text;
    }
    }
}

std::string DescribeCurve(CPlotComponent& component)
{
    std::string text = "      " + std::string(component.GetRuntimeClass().name) + " tag "
        + std::to_string(component.GetTag()) + ", item type " + std::to_string(component.GetItemType()) + ", title "
        + Quoted(component.GetTitle());
    if (auto const scene = DescribeSceneCurve(component))
        return text + *scene + "\n";
    if (auto const* const contours = DynamicDowncast<C2DContourCurve>(&component))
        return text + DescribeGrid(*contours->GetSurface()) + "\n        " + DescribeLevels(*contours) + "\n";
    auto const* const curve = DynamicDowncast<C2DCurve>(&component);
    if (!curve)
        return text + "\n";
    int const points = std::max(curve->GetNumPoints(), 0);
    text += ", " + Counted(static_cast<std::size_t>(points), "point", "points");
    if (points > 0) {
        double xMin = 0.0;
        double xMax = 0.0;
        double yMin = 0.0;
        double yMax = 0.0;
        curve->GetXRange(xMin, xMax);
        curve->GetYRange(yMin, yMax);
        text += "\n        x " + RangeText(xMin, xMax, curve->GetXValueKind() == C2DCurve::xvDates)
            + (curve->GetXScaleMode() == 1 ? " decades" : "") + ", y " + RangeText(yMin, yMax, false)
            + (curve->GetYScaleMode() == 1 ? " decades" : "");
    }
    return text + "\n";
}

std::string DescribePlot(CPlot& plot)
{
    std::string kind = VUGetPlotDescription(plot.GetItemType()).Trim().ToUtf8();
    if (!kind.empty() && kind.back() == '.')
        kind.pop_back();
    std::string text = "    " + std::string(plot.GetRuntimeClass().name) + " tag " + std::to_string(plot.GetTag())
        + ", item type " + std::to_string(plot.GetItemType()) + " (" + kind + "), title " + Quoted(plot.GetTitle())
        + ", " + Counted(static_cast<std::size_t>(plot.GetNumComponents()), "curve", "curves") + "\n";
    for (int i = 0; i < plot.GetNumComponents(); ++i)
        text += DescribeCurve(*plot.GetComponent(i));
    return text;
}

std::string DescribeDocument(Options const& options, InputFile& file, Messages const& messages)
{
    std::unique_ptr<CGraph> const graph = ReadDocument(options, file, messages);
    graph->UpdatePlots();
    std::string text = file.GetName() + ": document\n" + graph->GetRuntimeClass().name + " tag "
        + std::to_string(graph->GetTag()) + ", title " + Quoted(graph->GetTitle()) + ", "
        + Counted(static_cast<std::size_t>(graph->GetNumComponents()), "component", "components") + "\n";
    if (auto const* const scene = DynamicDowncast<C3DGraph>(graph.get()))
        text += DescribeView(*scene);
    for (int i = 0; i < graph->GetNumComponents(); ++i) {
        CGraphComponent* const component = graph->GetComponent(i);
        text += "  " + std::string(component->GetRuntimeClass().name) + " tag " + std::to_string(component->GetTag());
        auto const* const plots = DynamicDowncast<CPlotArray>(component);
        if (component->IsArray()) {
            auto const items = static_cast<std::size_t>(std::max(component->GetNumItems(), 0));
            text += plots ? ", " + Counted(items, "plot", "plots") : ", " + Counted(items, "item", "items");
        }
        text += "\n";
        if (auto const* const axes = DynamicDowncast<CAxes>(component))
            text += DescribeAxes(*axes);
        if (auto const* const axis = DynamicDowncast<C3DAxis>(component))
            text += DescribeAxes(*axis);
        for (int k = 0; plots && k < plots->GetSize(); ++k)
            text += DescribePlot(*plots->GetAt(k));
    }
    return text;
}

std::string DescribeHeights(InputFile& file, Messages const& messages)
{
    CSurface surface;
    ChartNotes notes;
    HeightTitles const titles = GiveHeights(HeightFile { file.GetName() }, surface, notes);
    messages.Tell(notes);
    surface.Evaluate();
    bool const isModel = surface.GetFileType() == CSurface::ftDEM;
    std::string text = file.GetName() + (isModel ? ": elevation model" : ": z values") + DescribeGrid(surface);
    text
        += "\n        spacing " + ShortNumber(surface.GetTableXStep()) + " and " + ShortNumber(surface.GetTableYStep());
    if (!isModel)
        return text + "\n";
    // Fields of a header are filled up with blanks.
    CString const name(std::string(surface.GetDEM().GetHeader().fileName).substr(0, 40));
    return text + ", " + titles.x + ", " + titles.y + ", " + titles.z + "\n        name " + Quoted(CString(name).Trim())
        + "\n";
}

} // namespace

std::string DescribeFile(Options const& options, InputFile& file, Messages const& messages)
{
    bool const isDocument = options.IsGiven(OptionId::InPlace) || LooksLikeDocument(file.Peek(kDocumentMarkLength));
    if (isDocument)
        return DescribeDocument(options, file, messages);
    if (IsMeshFile(file.GetName()))
        return DescribeMeshFile(file, messages);
    return IsHeightFile(file.GetName()) ? DescribeHeights(file, messages) : DescribeTable(options, file, messages);
}

} // namespace ombrel::host
