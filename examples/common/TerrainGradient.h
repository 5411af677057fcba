#pragma once

#include <Gradient.h>

/// From blue over cyan and yellow to red, for heights from 0 to \a top.
Gradient terrainGradient(double top);
