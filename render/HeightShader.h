#pragma once

namespace VtkCompatibility {
class Shaders;
}

/// Replaces lighting and colours of everything that the shaders draw by the height shader, the
/// resource ":/shader.vert". Its uniforms must be fed each time that a mapper updates its shader.
/// \return false, with nothing changed, when the resource cannot be read
[[nodiscard]] bool installHeightShader(const VtkCompatibility::Shaders &shaders);
