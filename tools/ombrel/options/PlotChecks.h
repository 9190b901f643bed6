#pragma once

namespace ombrel::host {

enum class PlotKind;
struct Options;

/// Refuses options that would do nothing or make no sense with the kind of plot. Throws Failure with kUsageFault.
void CheckPlotOptions(Options const& options);

/// What is shown of heights in a 3D scene: a surface, unless something else was asked for.
PlotKind SceneKindOf(Options const& options);

/// Whether the kind is one of 3D scenes and of nothing else.
bool IsSceneKind(PlotKind kind);

/// Refuses options that would do nothing with the kind of scene. Throws Failure with kUsageFault.
void CheckSceneOptions(Options const& options);

/// Refuses options that would do nothing with a mesh. Throws Failure with kUsageFault.
void CheckMeshOptions(Options const& options);

} // namespace ombrel::host
