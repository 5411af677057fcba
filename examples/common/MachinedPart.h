#pragma once

/// What the simulated scanner looks at: a plate with chamfered edges, a round boss with a bore and
/// a bolt circle, a milled pocket, a slot and drilled corner holes, on a belt.
///
/// Lengths and heights are in tenths of a millimetre.
namespace MachinedPart {

/// Width of the belt, and distance from one part to the next.
constexpr double beltWidth = 1024.0;
constexpr double pitch = 960.0;

/// Height at which nothing comes back to the sensor.
constexpr float noEcho = 0.0F;

/// \param x across the belt, in [0, beltWidth]
/// \param y along the belt, in [0, pitch]
/// \return height above the sensor's zero, or noEcho within the holes
float heightAt(double x, double y);

} // namespace MachinedPart
