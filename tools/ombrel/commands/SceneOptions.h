#pragma once
#include "ombrel/scene/ContourMap.h"
#include "ombrel/scene/Scene.h"
#include "tools/ombrel/commands/HeightFile.h"

namespace ombrel::host {

struct Options;

/// What the kind of scene that the options ask for needs of a file.
HeightShape ShapeFor(Options const& options);

/// An empty scene in the look and the view that the options ask for.
Scene SceneFor(Options const& options);

/// Adds the heights as the options ask for. Throws Failure, ChartError and Error.
void AddHeights(Scene& scene, Options const& options, HeightSource&& heights);

/// Adds a mesh, solid objects or a drawing. Throws ChartError and Error.
void AddMesh(Scene& scene, Options const& options, std::string const& path);

/// A map of the heights. Throws ChartError and Error.
ContourMap MapFor(Options const& options, HeightSource&& heights);

} // namespace ombrel::host
