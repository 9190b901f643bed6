#pragma once
#include "ombrel/graph3d/ContourColours.h"
#include "ombrel/model/ColourKeySource.h"
#include "ombrel/model/TableData.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"
#include "ombrel/platform/framework/Types.h"

#include <array>
#include <functional>

namespace ombrel {

/// How the elements of a mesh are coloured and outlined.
struct MeshColourSettings {
    /// The node or element variable that colours elements; "thezvalue" is the nodes' height.
    CString variable = "thezvalue";
    int contoursOn = 0;
    /// 0 by number, 1 by reference and spacing, 2 arbitrary levels.
    int contourLevelMode = 0;
    /// Bands.
    int numContours = 6;
    double contourRef = 0.0;
    double contourSpacing = 0.0;
    CDoubleArray arbitraryLevels;
    int wireframeOn = 0;
    COLORREF wireframeColour = 0;
    /// Whether elements are filled; with a wireframe under its outlines.
    int solidOn = 1;
    /// Whether elements have the colours that their file gives them.
    int elementColoursOn = 0;
};

/// What is drawn on elements, as follows from the settings.
enum class MeshColourSource {
    /// One colour for all.
    Plain,
    /// Of each element, given with it.
    ElementColours,
    /// By a variable of each element.
    ElementVariable,
    /// By the nodes' height or one of their variables, through a texture.
    Nodes,
};

/// The variable that colours a mesh: its range, and its contour bands. What mesh curves and general objects share.
class OMBREL_EXPORT MeshColouring {
public:
    using ColourOf = ContourColours::ColourOf;
    /// Of values: smallest and largest, the other way round while there are none.
    using Range = std::array<double, 2>;

    MeshColourSettings settings;
    CStringArray nodeVariables;
    CStringArray elementVariables;
    /// A row a variable: smallest and largest value.
    CTableData nodeRanges;
    CTableData elementRanges;
    Range height { 0.0, 0.0 };
    /// As drawn.
    ContourColours contours;

    bool IsHeight() const;
    /// Finds the variable by its name, in any case: the first of the nodes, else of the elements.
    void FindVariable();
    /// The row of the variable in the data of nodes, or of elements with their variable as the source; −1 for the
    /// nodes' height, which stands in for anything that is no variable of the nodes.
    int GetVariableRow(MeshColourSource source) const;
    /// The range of the variable; unchanged when there is none of its name.
    void GetDataRange(double& lo, double& hi) const;
    MeshColourSource GetSource(int colourDescription, int gradation) const;

    /// Levels and band colours by the settings, of the variable that was found.
    ContourColours MakeContours(ColourOf const& colourOf) const;

private:
    /// Of the variable: 0 a node variable, 1 an element variable, −1 neither; and which one.
    int m_kind = -1;
    int m_index = -1;
};

} // namespace ombrel
