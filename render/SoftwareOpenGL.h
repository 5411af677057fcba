#pragma once

/// Whether the current OpenGL context draws with the processor instead of a graphics card.
bool isDrawnInSoftware();
