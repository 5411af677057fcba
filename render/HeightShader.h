#pragma once

class vtkActor;

/// Replaces lighting and colours of everything that the actor draws by the height shader, the
/// resource
/// ":/shader.vert". Its uniforms must be fed each time that a mapper updates its shader.
/// \return false, with nothing changed, when the resource cannot be read
[[nodiscard]] bool installHeightShader(vtkActor &actor);

/// Gives the actor VTK's standard shaders back.
void removeHeightShader(vtkActor &actor);
