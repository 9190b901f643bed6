#include "ombrel/graph3d/RowColours.h"
#include "ombrel/foundation/PlatformRandom.h"

#include <array>

namespace ombrel {

COLORREF GetRowColour(int row)
{
    constexpr std::array kColours { RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255), RGB(255, 0, 255), RGB(0, 255, 255),
        RGB(255, 255, 0), RGB(255, 128, 0), RGB(255, 0, 128), RGB(192, 192, 0), RGB(128, 0, 255), RGB(0, 255, 128),
        RGB(0, 128, 255), RGB(128, 128, 0), RGB(128, 0, 128), RGB(0, 128, 128) };
    if (row < 0)
        return 0;
    auto const index = static_cast<std::size_t>(row);
    if (index < kColours.size())
        return kColours[index];
    PlatformRandom random(1234);
    random.Skip(3 * static_cast<DWORD>(row));
    return random.NextColour();
}

} // namespace ombrel
