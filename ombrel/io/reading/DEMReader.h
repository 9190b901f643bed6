#pragma once
#include "ombrel/io/DEMHeader.h"
#include "ombrel/io/reading/DEMRecords.h"

#include <cstdint>
#include <vector>

namespace ombrel::io {

/// What the first record holds; throws CVFileException* when it is no header, or one of a model that is not read here.
DEMHeader ReadDEMHeader(DEMRecords& records);

struct DEMElevations {
    /// Rows × columns, row 0 at the north.
    std::vector<std::int16_t> cells;
    /// Elevations that were blank, and that were no number.
    int blank = 0;
    int damaged = 0;
};

/// The profiles behind the header, in a grid of its size; then the statistics, where the header announces them and they
/// are there. Throws CVFileException*.
DEMElevations ReadDEMProfiles(DEMRecords& records, DEMHeader& header);

} // namespace ombrel::io
