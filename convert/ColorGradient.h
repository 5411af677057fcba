#pragma once

#include "Olvik3DViewerExport.h"

#include <vector>

/// One colour on the normalised axis of a ColorGradient.
struct ColorPoint
{
    int r;
    int g;
    int b;
    int a;
    float val; ///< position, usually in [0, 1]
};

/// The integer colour table inside every Gradient: colour points on a normalised axis, a
/// whole-number value range that maps data onto that axis, and one colour each for values below and
/// above it.
///
/// A plain value without locking; one thread at a time.
class OLVIK3DVIEWER_EXPORT ColorGradient
{
public:
    struct Color
    {
        int r;
        int g;
        int b;
        int a;
    };

    /// Bounds 0 and 0, and the default heat map.
    ColorGradient();

    /// Inserts after existing points at the same position.
    /// \param value position on the normalised axis
    /// \param red,green,blue,alpha components, truncated toward zero
    void addColorPoint(float value, float red, float green, float blue, float alpha);

    /// Blue, cyan, green, yellow and red at components of 0 and 1, replacing all points.
    void createDefaultHeatMapGradient();
    void clearColorPoints();
    const std::vector<ColorPoint> &colorPoints() const { return points; }

    void setMin(int value);
    void setMax(int value);
    int getMin() const { return min; }
    int getMax() const { return max; }

    /// Takes the range over from the bounds, unless both are 0: then it stays as it was.
    void calculateNormalize();

    void setBelowColor(const Color &color) { below = color; }
    void setAboveColor(const Color &color) { above = color; }
    const Color &belowColor() const { return below; }
    const Color &aboveColor() const { return above; }

    /// Whether there is any colour point.
    bool isValid() const { return !points.empty(); }

    /// Interpolates linearly and truncates toward zero. Leaves the outputs untouched without
    /// points. \param t position on the normalised axis; positions outside the points take the
    /// nearest one's
    ///        colour, NaN the last one's
    void getColorAtValue(float t, int &r, int &g, int &b, int &a) const;

    /// Leaves the outputs untouched while both bounds are 0 or no point exists: fill them first.
    /// \param v height in the unit of the bounds
    void getColorRawValue(float v, int &r, int &g, int &b, int &a) const;

private:
    std::vector<ColorPoint> points; ///< sorted by position
    int min = 0;
    int max = 0;
    double normalize = 1.0;
    Color below;
    Color above;
};
