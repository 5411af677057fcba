#pragma once

#include "Olvik3DViewerExport.h"

#include <cstddef>
#include <vector>

/// One colour on the normalised axis. A Gradient's components lie in 0..255, other values are kept
/// as given.
struct ColorPoint
{
    int r = 0;
    int g = 0;
    int b = 0;
    int a = 0;
    float val = 0.0f; ///< position, in [0, 1] for every point of a Gradient
};

/// Colour of all values on one side of the bounds.
struct BoundColor
{
    int r = 245;
    int g = 66;
    int b = 230;
    int a = 255;
};

/// The integer colour table inside every Gradient: colour points on a normalised axis in [0, 1], a
/// whole-number value range that maps data onto that axis, and one colour each for values below and
/// above the range.
///
/// A plain value without locking; one thread at a time, or any number of threads that only look up.
class OLVIK3DVIEWER_EXPORT ColorGradient
{
public:
    /// Both bounds 0 and the points of createDefaultHeatMapGradient().
    ColorGradient();

    /// Inserts behind existing points at the same position.
    /// \param value position, in [0, 1] to be reachable by a value inside the bounds
    /// \param red,green,blue,alpha components, truncated toward zero
    void addColorPoint(float value, float red, float green, float blue, float alpha);

    /// Replaces all points by blue, cyan, green, yellow and red in equal steps, with components 0
    /// and 1.
    void createDefaultHeatMapGradient();

    /// Removes all points; bounds and bound colours stay.
    void clear();

    /// In ascending order of position.
    const std::vector<ColorPoint> &colorPoints() const { return points; }

    /// A lookup needs at least one bound other than 0.
    void setMin(int bound);
    void setMax(int bound);
    int getMin() const { return min; }
    int getMax() const { return max; }

    /// Takes the length of the axis from the bounds; while both are 0 the last length stays.
    void calculateNormalize();

    void setBelowColor(const BoundColor &color) { below = color; }
    void setAboveColor(const BoundColor &color) { above = color; }
    const BoundColor &belowColor() const { return below; }
    const BoundColor &aboveColor() const { return above; }

    /// True when at least one point exists.
    bool isValid() const { return !points.empty(); }

    /// Linear between neighbouring points, the nearest end's colour outside them and the last
    /// point's for NaN. Leaves the outputs untouched while no point exists: fill them first.
    /// \param t normalised position
    /// \param[out] r,g,b,a components truncated toward zero; the smallest int beside a point at NaN
    void getColorAtValue(float t, int &r, int &g, int &b, int &a) const;

    /// Index of the first point above a height, which mixes the colour of heights inside the bounds
    /// with the point before it; the number of points when there is none.
    std::size_t pointAbove(float v) const;

    /// Leaves the outputs untouched while both bounds are 0 or, inside the bounds, while no point
    /// exists: fill them first.
    /// \param v height in the unit of the bounds
    void getColorRawValue(float v, int &r, int &g, int &b, int &a) const;

private:
    using Points = std::vector<ColorPoint>;

    float normalized(float v) const;
    Points::const_iterator firstAbove(float t) const;

    Points points;
    int min = 0;
    int max = 0;
    double normalize = 1.0;
    BoundColor below;
    BoundColor above;
};
