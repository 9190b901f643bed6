// Heights in three dimensions: a lit surface.
#include <ombrel/scene/Scene.h>

#include <cmath>
#include <vector>

int main()
{
    constexpr int kSide = 81;
    std::vector<double> heights;
    for (int row = 0; row < kSide; ++row) {
        for (int column = 0; column < kSide; ++column) {
            double const r = std::hypot(column - 40, row - 40) / 4.0;
            heights.push_back(std::cos(r) / (1.0 + 0.3 * r));
        }
    }
    ombrel::Scene scene("A drop on water");
    scene.Surface(heights, kSide, kSide).XRange(-10, 10).YRange(-10, 10).Name("height / mm");
    scene.X().Title("x / cm");
    scene.Y().Title("y / cm");
    scene.Save("surface_3d.png");
}
