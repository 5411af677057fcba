#pragma once

#include "Olvik3DViewerExport.h"

#include <QImage>
#include <QVector>

#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>

#include <utility>

class Gradient;

/// Stateless conversions of height buffers: to points, to false-colour images, and their ranges.
///
/// A buffer is row-major: w values in each of h rows. Sizes that are not positive give no points or
/// an empty image, a product beyond 32 bits wraps as in the sensor's own drivers: 65536 x 65536
/// gives nothing, 65537 x 65537 the first 131073 samples. Re-entrant: any thread, several at once.
class OLVIK3DVIEWER_EXPORT DataConverter
{
public:
    DataConverter() = delete;

    /// One point (column, row, height) for each sample, zeros and NaN included; 32-bit floats.
    static vtkSmartPointer<vtkPoints> convertToPointData(float *buffer, int w, int h);

    /// The same without the samples that are +0 or -0, packed without holes.
    static vtkSmartPointer<vtkPoints> convertToPointDataNoZero(float *buffer, int w, int h);

    /// A cloud of these points, without cells.
    static vtkSmartPointer<vtkPolyData> convertToPolyData(float *buffer, int w, int h);
    static vtkSmartPointer<vtkPolyData> convertToPolyDataNoZero(float *buffer, int w, int h);

    /// Exchanges y and z of each point in place.
    static void swapzy(vtkSmartPointer<vtkPoints> points);
    static void swapzy(vtkSmartPointer<vtkPolyData> polyData);

    /// (min, max). A value that raises the maximum, which starts at 0, is not compared with the
    /// minimum; a maximum below 1 counts as 1. (Largest double, 1) without values.
    static std::pair<double, double> getminmax(float *values, long count);
    static std::pair<unsigned char, unsigned char> getminmax(unsigned char *values, long count);
    static std::pair<double, double> getminmax(QVector<double> values);

    /// Position of a value in a range, 0 at its low end to 255 at its top, truncated. Not clamped;
    /// a range of 0 gives the smallest int, whose low byte is 0.
    static int getDistance(float value, float min, float range);

    /// Hue ramp at full saturation: 0 is blue, 255 is red.
    /// \param r,g,b set to components in [0, 1]
    static void distanceToColor(unsigned char distance, float &r, float &g, float &b);
    /// \param r,g,b set to components in [0, 255]
    static void distanceToColor(
        unsigned char distance, unsigned char &r, unsigned char &g, unsigned char &b);

    /// False-colour image: grey by getDistance(), else by the gradient where it has stops, else by
    /// distanceToColor().
    /// \param out set to the image's pixels, RGB888 without padding. The image does not own them:
    /// keep
    ///        them as long as the image, then release them with free().
    static QImage generateImageRangeMap(
        float *values, int w, int h, unsigned char *&out, bool grey, Gradient gradient);
    static QImage generateImageRangeMap(
        unsigned char *values, int w, int h, unsigned char *&out, bool grey, Gradient gradient);
};
