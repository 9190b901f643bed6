// Heights as a map: bands of colour, with lines between them.
#include <ombrel/scene/ContourMap.h>

#include <cmath>
#include <vector>

int main()
{
    constexpr int kRows = 61;
    constexpr int kColumns = 81;
    std::vector<double> heights;
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            double const x = column * 0.1;
            double const y = row * 0.1;
            double const hill = std::exp(-std::pow(x - 2.5, 2) - std::pow(y - 3.5, 2) / 2);
            double const ridge = std::exp(-std::pow(x - 5.5, 2) / 3 - std::pow(y - 2.0, 2));
            heights.push_back(200 + 400 * hill + 600 * ridge);
        }
    }
    ombrel::ContourMap map(heights, kRows, kColumns, "Two hills");
    map.XRange(0, 8).YRange(0, 6).Bands(10).Name("height / m");
    map.XTitle("east / km").YTitle("north / km");
    map.Save("contour_map.png");
}
