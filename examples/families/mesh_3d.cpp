// A mesh from a file: the beam that lies in the folder of examples.
#include <ombrel/scene/Scene.h>

#include <iostream>
#include <stdexcept>

int main(int count, char** arguments)
try {
    if (count != 2)
        throw std::runtime_error("expected the path of beam.tvm");
    ombrel::Scene scene("A loaded beam");
    scene.Mesh(arguments[1]).Variable("stress");
    scene.Save("mesh_3d.png");
} catch (std::exception const& error) {
    std::cerr << error.what() << "\n";
    return 1;
}
