// Points in three dimensions, in colours of their heights.
#include <ombrel/scene/Scene.h>

#include <cmath>
#include <vector>

int main()
{
    std::vector<double> x;
    std::vector<double> y;
    std::vector<double> z;
    for (int i = 0; i < 300; ++i) {
        double const turn = i * 0.07;
        x.push_back((2.0 + turn / 7.0) * std::cos(turn));
        y.push_back((2.0 + turn / 7.0) * std::sin(turn));
        z.push_back(turn);
    }
    ombrel::Scene scene("The way of a drone");
    scene.Points(x, y, z);
    scene.X().Title("east / m");
    scene.Y().Title("north / m");
    scene.Z().Title("height / m");
    scene.Save("scatter_3d.png");
}
