#pragma once
#include "ombrel/platform/framework/Export.h"

#include <string>
#include <vector>

namespace ombrel {
class CColourMap;

/// The names of all colour maps: presets first, then those of the files installed with the library or the
/// program, sorted.
OMBREL_EXPORT std::vector<std::string> ListColourMaps();

/// Loads a map by the name of a preset or an installed map (without regard to case; "-" and "_" stand for blanks too),
/// else from the file of that path. False when there is no such map or the file is damaged.
OMBREL_EXPORT bool LoadColourMap(std::string const& name, CColourMap& map);

/// Where a colour map comes from.
enum class ColourMapKind { Preset, Installed, File };

/// What LoadColourMap takes the name for.
OMBREL_EXPORT ColourMapKind KindOfColourMap(std::string const& name);

/// Who made an installed map; empty when that is not known.
OMBREL_EXPORT std::string AuthorsOfColourMap(std::string const& name);

} // namespace ombrel
