#pragma once

#include "Gradient.h"

#include <vector>

/// Heights of a square buffer, row-major.
using Heights = std::vector<float>;

/// A wavy surface between 60 and 140.
/// \param side values per profile and number of profiles
/// \param phase moves the waves, so that no stage can find that nothing has changed
Heights surface(int side, float phase);

/// Five stops over the heights of surface().
Gradient surfaceGradient();
