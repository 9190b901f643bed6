#pragma once
#include <cstdint>
#include <type_traits>

namespace ombrel {

/// What the first record of an elevation model says, and the statistics of its last. Archives store the block as it
/// lies in memory; everything is 0 that the file does not say.
struct DEMHeader {
    /// Name of the quadrangle and what follows it, ending with a zero.
    char fileName[146];
    std::int16_t levelCode;
    /// 1 regular, 2 random.
    std::int16_t elevationPattern;
    /// 0 geographic, 1 UTM, 2 state plane.
    std::int16_t referenceSystem;
    std::int16_t zone;
    char padding1[6];
    double projectionParameters[15];
    /// 0 radians, 1 feet, 2 metres, 3 arc-seconds.
    std::int16_t groundUnits;
    /// 1 feet, 2 metres.
    std::int16_t elevationUnits;
    std::int16_t polygonSides;
    char padding2[2];
    /// South-west, north-west, north-east, south-east: easting and northing each, in ground units.
    double corners[8];
    double minElevation;
    double maxElevation;
    /// Radians.
    double rotationAngle;
    /// 1: statistics follow the profiles.
    std::int16_t accuracyCode;
    char padding3[2];
    /// Ground units; elevation units in z.
    float xResolution;
    float yResolution;
    float zResolution;
    std::int16_t profileRows;
    /// Profiles, from west to east: the grid's columns.
    std::int16_t profileColumns;
    std::int16_t largestContourInterval;
    std::int16_t largestContourUnits;
    std::int16_t smallestContourInterval;
    std::int16_t smallestContourUnits;
    /// Four digits where the file has two.
    std::int16_t sourceYear;
    std::int16_t sourceMonth;
    std::int16_t revisionYear;
    std::int16_t revisionMonth;
    char inspectionFlag;
    char padding4;
    /// −1 when the file leaves it blank.
    std::int16_t validationFlag;
    /// 1 suspect areas, 2 voids, 3 both.
    std::int16_t suspectAndVoid;
    std::int16_t verticalDatum;
    /// 1 NAD 27, 2 WGS 72, 3 WGS 84, 4 NAD 83; −1 not known.
    std::int16_t horizontalDatum;
    /// −1 in files of the older layout.
    std::int16_t dataEdition;
    std::int16_t percentVoid;
    /// Of the grid, from the northings of the corners and the y resolution.
    std::int16_t gridRows;
    // Statistics: an availability flag, root-mean-square errors in x, y and z, and the size of the sample; for the
    // file's datum and for the elevations against each other
    std::int16_t statistics[2][5];
    char unused[72];
};
static_assert(sizeof(DEMHeader) == 520 && std::is_trivially_copyable_v<DEMHeader>);

} // namespace ombrel
