#pragma once
#include "ombrel/platform/framework/Types.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ombrel {

class C3DObjectFile;
class CMeshNodeSet;
class CMeshPatch;

/// The 3DFACEs of a drawing in DXF, whatever else it holds.
struct DXFFaces {
    /// Of all corners, none of them merged.
    std::vector<double> x;
    std::vector<double> y;
    std::vector<double> z;
    /// Three or four, face by face.
    std::vector<BYTE> numCorners;
};

/// Reads the pairs of lines, group code and value, of a drawing as text; lines that stand where a code should be and
/// are none are skipped. A corner is there when one of its coordinates is, the others being 0 then. A face is a
/// triangle when its fourth corner equals its first or its third, or is not there; one without three corners is left
/// out. Throws CVFileException* (newly allocated) when there are no faces, or a coordinate is no number.
DXFFaces ReadDXFFaces(C3DObjectFile& file);

/// Makes nodes of the corners, numbered from 1, and polygons of the faces.
void TakeFaces(DXFFaces&& faces, CMeshNodeSet& nodes, CMeshPatch& patch);

} // namespace ombrel
