#include "tools/ombrel/commands/MeshInfo.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObject.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/graph3d/MeshNodeSet.h"
#include "ombrel/graph3d/MeshPatch.h"
#include "ombrel/scene/MeshFile.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/SceneInfo.h"
#include "tools/ombrel/commands/TableFile.h"
#include "tools/ombrel/options/OptionValues.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace ombrel::host {

namespace {

constexpr char const* kIndent = "\n        ";

/// "x 0 to 1, y 0 to 2, z 3 to 4".
std::string BoxText(CVertex const& min, CVertex const& max)
{
    return "x " + NumberRange(min.X(), max.X()) + ", y " + NumberRange(min.Y(), max.Y()) + ", z "
        + NumberRange(min.Z(), max.Z());
}

/// The values' range in the row of a table; nothing without values.
std::string RowRange(CTableData const& table, int row)
{
    double min = 0.0;
    double max = 0.0;
    bool found = false;
    for (int i = 0; row < table.GetNumRows() && i < table.GetNumCols(); ++i) {
        double const value = table.GetAt(row, i);
        if (IsGap(value))
            continue;
        min = found ? std::min(min, value) : value;
        max = found ? std::max(max, value) : value;
        found = true;
    }
    return found ? " " + NumberRange(min, max) : " without values";
}

/// "; temp 1 to 2, load 3 to 4".
std::string VariablesText(CStringArray const& names, CTableData const& values)
{
    std::string text;
    for (int v = 0; v < names.GetSize(); ++v)
        text += (v == 0 ? "; " : ", ") + names[v].ToUtf8() + RowRange(values, v);
    return text;
}

std::string ElementsText(CMeshPatch const& patch)
{
    constexpr std::array<std::pair<char const*, char const*>, 5> kNames { { { "triangle", "triangles" },
        { "quad", "quads" }, { "polygon", "polygons" }, { "brick", "bricks" }, { "tetrahedron", "tetrahedra" } } };
    auto const type = static_cast<std::size_t>(patch.GetElementType());
    auto const [one, many] = type < kNames.size() ? kNames[type] : std::pair("element", "elements");
    return CountedInt(patch.GetElementCount(), one, many);
}

std::string DescribeNodeSet(C3DMeshCurve const& curve, CMeshNodeSet const& nodes)
{
    std::string text = kIndent + std::string("node set ") + QuoteForMessage(nodes.GetTitle().ToUtf8()) + ": "
        + CountedInt(nodes.GetNumNodes(), "node", "nodes");
    CTableData const& points = *nodes.GetPoints();
    if (nodes.GetNumNodes() > 0)
        text += "; x" + RowRange(points, 0) + ", y" + RowRange(points, 1) + ", z" + RowRange(points, 2);
    return text + VariablesText(curve.GetNodeVariables(), *nodes.GetNodeData());
}

std::string DescribePatch(C3DMeshCurve const& curve, CMeshPatch const& patch)
{
    std::string text = kIndent + std::string("patch: ") + ElementsText(patch) + " of node set "
        + QuoteForMessage(patch.GetNodesetTitle().ToUtf8());
    if (patch.GetColours()->GetSize() > 0)
        text += ", with colours of their own";
    return text + VariablesText(curve.GetElementVariables(), *patch.GetElementData());
}

} // namespace

std::string DescribeMesh(C3DMeshCurve const& curve)
{
    std::string text = ", " + CountedInt(curve.GetNodeSets().GetSize(), "node set", "node sets") + " and "
        + CountedInt(curve.GetPatches().GetSize(), "patch", "patches");
    CVertex min;
    CVertex max;
    double low = 0.0;
    double high = 0.0;
    if (curve.IsValid()) {
        curve.GetRanges(min, max, low, high);
        text += kIndent + BoxText(min, max);
    }
    for (int i = 0; i < curve.GetNodeSets().GetSize(); ++i)
        text += DescribeNodeSet(curve, *curve.GetNodeSets()[i]);
    for (int i = 0; i < curve.GetPatches().GetSize(); ++i)
        text += DescribePatch(curve, *curve.GetPatches()[i]);
    return text;
}

std::string DescribeObjects(C3DObjectCurve const& curve)
{
    int const count = curve.GetObjects().GetSize();
    std::string text = ", " + CountedInt(count, "object", "objects");
    std::map<std::string, std::size_t> kinds;
    for (int i = 0; i < count; ++i) {
        // What files call it.
        std::string const name = curve.GetObjects()[i]->GetRuntimeClass().name;
        ++kinds[LowerCase(name.substr(std::min(std::string_view("C3DObject").size(), name.size())))];
    }
    for (auto const& [name, number] : kinds)
        text += (name == kinds.begin()->first ? ": " : ", ") + std::to_string(number) + " " + name;
    if (count > 0 && curve.IsValid())
        text += RangesText(curve);
    return text;
}

std::string DescribeMeshFile(InputFile const& file, Messages const& messages)
{
    C3DGraph scene(1);
    ChartNotes notes;
    NotesTeller const teller([&] { return notes; }, messages);
    std::vector<C3DCurve*> const curves = AddMeshFile(scene, file.GetName(), notes);
    scene.UpdatePlots();
    std::string text;
    for (C3DCurve* const curve : curves)
        text += file.GetName() + ": " + (curve->IsKindOf(C3DMeshCurve::kClass) ? "mesh" : "objects")
            + DescribeSceneCurve(*curve).value_or("") + "\n";
    return text;
}

} // namespace ombrel::host
