#pragma once

/// Whether the graphics driver gives a context of OpenGL 3.2 or later. Needs an application object.
bool hasOpenGL32();
